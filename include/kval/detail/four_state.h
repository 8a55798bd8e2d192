// The four-state rules of AND and OR, and the value bits of XOR and NOT. Each is stated once, for as many bits at a
// time as a type holds. For AND and OR that type has both planes, `value` and `mask`.
#ifndef KVAL_DETAIL_FOUR_STATE_H
#define KVAL_DETAIL_FOUR_STATE_H

#include "planes.h"

namespace kval {
namespace detail {

//   left right | AND OR
//    0     0   |  0   0
//    0     1   |  0   1
//    0     X   |  0   X
//    1     1   |  1   1
//    1     X   |  X   1
//    X     X   |  0   X      AND of two unknowns is a known 0. Deliberate: only a known 1 on the other
//                            side lets an unknown through. Do not "correct" it.
// The value bit under an X of the result is 0.

struct FourStateAnd {
    template <typename Bits>
    KVAL_INLINE Bits operator()(Bits l, Bits r) const noexcept {
        const auto l_ones = l.value & ~l.mask;
        const auto r_ones = r.value & ~r.mask;
        return {l_ones & r_ones, (l_ones & r.mask) | (r_ones & l.mask)};
    }
};

struct FourStateOr {
    template <typename Bits>
    KVAL_INLINE Bits operator()(Bits l, Bits r) const noexcept {
        const auto l_ones = l.value & ~l.mask;
        const auto r_ones = r.value & ~r.mask;
        return {l_ones | r_ones, (l.mask & ~r_ones) | (r.mask & ~l_ones)};
    }
};

/// XOR and NOT of value bits alone.
struct Xor {
    template <typename Unit>
    KVAL_INLINE Unit operator()(Unit l, Unit r) const noexcept {
        return l ^ r;
    }
};

struct Not {
    template <typename Unit>
    KVAL_INLINE Unit operator()(Unit v, Unit) const noexcept {
        return ~v;
    }
};

}  // namespace detail
}  // namespace kval

#endif
