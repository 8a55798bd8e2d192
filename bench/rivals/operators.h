// operators.h: the operations of a rival whose values have C++'s own operators for them.
#ifndef BENCH_RIVALS_OPERATORS_H
#define BENCH_RIVALS_OPERATORS_H

#include <cstdint>

namespace bench {

/// What yields a new value.
template <typename V>
struct NewValues {
    static V copy(const V& v) { return v; }
    static V logic_and(const V& l, const V& r) requires requires { l& r; }
    { return l & r; }
    static V logic_or(const V& l, const V& r) requires requires { l | r; }
    { return l | r; }
    static V logic_xor(const V& l, const V& r) requires requires { l ^ r; }
    { return l ^ r; }
    static V logic_not(const V& v) requires requires { ~v; }
    { return ~v; }
    static V shift_right(const V& v, unsigned count) requires requires { v >> count; }
    { return v >> count; }
    static V shift_left(const V& v, unsigned count) requires requires { v << count; }
    { return v << count; }
    static V add(const V& l, const V& r) requires requires { l + r; }
    { return l + r; }
    static V subtract(const V& l, const V& r) requires requires { l - r; }
    { return l - r; }
    static V multiply(const V& l, const V& r) requires requires { l* r; }
    { return l * r; }
};

template <typename V>
struct Comparisons {
    static bool less(const V& l, const V& r) { return l < r; }
    static bool equal(const V& l, const V& r) { return l == r; }
};

/// What changes its left operand, whose width stays.
template <typename V>
struct InPlace {
    static V& and_assign(V& l, const V& r) requires requires { l &= r; }
    { return l &= r; }
    static V& or_assign(V& l, const V& r) requires requires { l |= r; }
    { return l |= r; }
    static V& add_assign(V& l, const V& r) requires requires { l += r; }
    { return l += r; }
    static V& subtract_assign(V& l, const V& r) requires requires { l -= r; }
    { return l -= r; }
    static V& shift_left_assign(V& v, unsigned count) requires requires { v <<= count; }
    { return v <<= count; }
    static V& shift_right_assign(V& v, unsigned count) requires requires { v >>= count; }
    { return v >>= count; }
    static V& increment(V& v) requires requires { ++v; }
    { return ++v; }
    static V& decrement(V& v) requires requires { --v; }
    { return --v; }
};

}  // namespace bench

#endif
