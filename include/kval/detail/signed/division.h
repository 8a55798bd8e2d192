// Division with a signed operand, of 32-bit numbers.
//
// Each function tests in this order: a zero divisor gives X, a wide operand throws, a result out of range gives X.
// Deliberate: the texts that are thrown, and the bounds that some tests compare with.
#ifndef KVAL_DETAIL_SIGNED_DIVISION_H
#define KVAL_DETAIL_SIGNED_DIVISION_H

#include "../muldiv.h"
#include "representation.h"

namespace kval {
namespace detail {

[[noreturn]] KVAL_API void ThrowDivideUnsignedWidth();
[[noreturn]] KVAL_API void ThrowDivideSignedWidth();
[[noreturn]] KVAL_API void ThrowSignedRemainderWidth();
/// What a division comes to: X, or a number that is first put into `width` bits and then assigned to the result.
struct Quotient {
    bool is_x;
    unsigned number;
    unsigned width;
};

KVAL_INLINE Quotient x_quotient() noexcept { return {true, 0, 0}; }
KVAL_INLINE Quotient signed_quotient(bool negative, unsigned magnitude, unsigned width) noexcept {
    return {false, negative ? 0U - magnitude : magnitude, width};
}

/// The bits that a compact result stores of a quotient, and the number that they read as.
KVAL_INLINE Word stored_quotient(const Quotient& quotient, unsigned width) noexcept {
    const Word low = quotient.number & used_of_top_word(quotient.width);
    const bool negative = (low & maximum_negative(quotient.width)) != 0;
    return static_cast<Word>(assigned({low, 0}, quotient.width, negative, width).value);
}
KVAL_INLINE int number_stored(const Quotient& quotient, unsigned width) noexcept {
    const Word bits = stored_quotient(quotient, width);
    const bool negative = (bits & maximum_negative(width)) != 0;
    return static_cast<int>(negative ? bits | ones_from(width - 1) : bits);
}

/// A wide result is all X, or was made from low words alone.
KVAL_INLINE KVAL_SINTEGER result_of(const Quotient& quotient, unsigned width) {
    if (!is_small(width)) {
        const Planes planes =
            quotient.is_x ? AllXLarge(width) : ConstructSignedLarge(static_cast<int>(quotient.number), width);
        TrimLarge(planes.value, planes.mask, width);
        return any_result<KVAL_SINTEGER>(width, planes, quotient.is_x ? kX : 0U);
    }
    if (quotient.is_x) return all_x_result<KVAL_SINTEGER>(width, 0, 0);
    if (width <= 32) return small_result<KVAL_SINTEGER>(width, {stored_quotient(quotient, width), 0}, 0);
    const int number = static_cast<int>(quotient.number);
    return trimmed_result<KVAL_SINTEGER>(width, {static_cast<std::uint64_t>(number), 0}, 0);
}

KVAL_INLINE bool any_wide(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    return !a.IsCompact() || !b.IsCompact();
}
/// Whether the most negative number is divided by -1.
KVAL_INLINE bool quotient_overflows(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return b.signed_value() == -1 && a.negative() && a.absolute_value() >= a.maximum_negative();
}
/// Whether a remainder's magnitude is out of the range of its width, on the side of the dividend's sign.
KVAL_INLINE bool out_of_range(const KVAL_SINTEGER& a, unsigned magnitude, unsigned width) noexcept {
    return magnitude > (a.positive() ? maximum_positive(width) : maximum_negative(width));
}

// ---- truncating ----

KVAL_INLINE Quotient divided(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return x_quotient();
    if (any_wide(a, b)) ThrowDivideUnsignedWidth();
    if (quotient_overflows(a, b)) return x_quotient();
    return {false, static_cast<unsigned>(a.signed_value() / b.signed_value()), 32};
}

KVAL_INLINE Quotient divided(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return x_quotient();
    if (any_wide(a, b)) ThrowDivideSignedWidth();
    const unsigned magnitude = a.uint() / b.absolute_value();
    // The magnitude alone decides, even where the quotient will be negative.
    if (magnitude > maximum_positive(a.bitwidth())) return x_quotient();
    return signed_quotient(b.negative(), magnitude, a.bitwidth());
}

KVAL_INLINE Quotient divided(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (b.uint() == 0) return x_quotient();
    if (any_wide(a, b)) ThrowDivideSignedWidth();
    return signed_quotient(a.negative(), a.absolute_value() / b.uint(), a.bitwidth());
}

KVAL_INLINE Quotient remainder_of(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return x_quotient();
    if (any_wide(a, b)) ThrowSignedRemainderWidth();
    if (quotient_overflows(a, b)) return x_quotient();
    // Deliberate: the range is tested with the divisor's bits, not with its magnitude.
    if (out_of_range(a, a.absolute_value() % b.uint(), b.bitwidth())) return x_quotient();
    return {false, static_cast<unsigned>(a.signed_value() % b.signed_value()), b.bitwidth()};
}

KVAL_INLINE Quotient remainder_of(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    if (divided(a, b).is_x) return x_quotient();
    return {false, a.uint() % b.absolute_value(), 32};
}

KVAL_INLINE Quotient remainder_of(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (divided(a, b).is_x) return x_quotient();
    const unsigned magnitude = a.absolute_value() % b.uint();
    if (out_of_range(a, magnitude, b.bitwidth())) return x_quotient();
    return signed_quotient(a.negative(), magnitude, b.bitwidth());
}

// ---- Euclidean ----

KVAL_INLINE Quotient euclidean_quotient(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const Quotient remainder = remainder_of(a, b);
    if (remainder.is_x) return x_quotient();
    if (number_stored(remainder, b.bitwidth()) >= 0) return divided(a, b);
    const unsigned magnitude = a.absolute_value() / b.absolute_value();
    const bool negative = a.positive() != b.positive();
    if (negative && b.positive() && a.maximum_negative() <= magnitude) return x_quotient();
    if (!negative && b.negative() && a.maximum_positive() <= magnitude) return x_quotient();
    const unsigned truncated = negative ? 0U - magnitude : magnitude;
    return {false, b.positive() ? truncated - 1 : truncated + 1, a.bitwidth()};
}

KVAL_INLINE Quotient euclidean_quotient(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (b.uint() == 0) return x_quotient();
    if (a.positive() || a.absolute_value() % b.uint() == 0) return divided(a, b);
    // Deliberate: wide operands pass here, and are divided by their low words.
    const unsigned magnitude = a.absolute_value() / b.uint();
    if (a.maximum_negative() <= magnitude) return x_quotient();
    return signed_quotient(true, magnitude + 1, a.bitwidth());
}

KVAL_INLINE Quotient euclidean_remainder(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (euclidean_quotient(a, b).is_x) return x_quotient();
    const Quotient remainder = remainder_of(a, b);
    const int number = number_stored(remainder, b.bitwidth());
    if (number >= 0) return remainder;
    const unsigned sum = static_cast<unsigned>(number) + b.absolute_value();
    if (sum > b.maximum_positive()) return x_quotient();
    return {false, sum, b.bitwidth()};
}

KVAL_INLINE Quotient euclidean_remainder(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (euclidean_quotient(a, b).is_x) return x_quotient();
    const unsigned rest = a.absolute_value() % b.uint();
    if (rest == 0 || a.positive()) return remainder_of(a, b);
    const unsigned sum = b.uint() - rest;
    if (sum > maximum_positive(b.bitwidth())) return x_quotient();
    return {false, sum, b.bitwidth()};
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_SINTEGER operator/(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::result_of(kval::detail::divided(a, b), a.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER operator/(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::result_of(kval::detail::divided(a, b), a.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER operator/(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return kval::detail::result_of(kval::detail::divided(a, b), a.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER operator%(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::result_of(kval::detail::remainder_of(a, b), b.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER operator%(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::result_of(kval::detail::remainder_of(a, b), b.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER operator%(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return kval::detail::result_of(kval::detail::remainder_of(a, b), b.bitwidth());
}

KVAL_INLINE KVAL_SINTEGER posr_div(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::result_of(kval::detail::euclidean_quotient(a, b), a.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER posr_div(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return kval::detail::result_of(kval::detail::euclidean_quotient(a, b), a.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER posr_mod(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::result_of(kval::detail::euclidean_remainder(a, b), b.bitwidth());
}
KVAL_INLINE KVAL_SINTEGER posr_mod(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return kval::detail::result_of(kval::detail::euclidean_remainder(a, b), b.bitwidth());
}
// A dividend that is never negative leaves no negative remainder.
KVAL_INLINE KVAL_SINTEGER posr_div(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return a / b; }
KVAL_INLINE KVAL_SINTEGER posr_mod(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return a % b; }

#endif
