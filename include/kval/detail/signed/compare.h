// Order and equality as signed numbers: by the signs first, then by the value bits.
#ifndef KVAL_DETAIL_SIGNED_COMPARE_H
#define KVAL_DETAIL_SIGNED_COMPARE_H

#include "../compare.h"
#include "addsub.h"

namespace kval {
namespace detail {

/// Of two negative values, where one is large.
/// @{
KVAL_API bool EqualNegativeLarge(std::uint64_t a, std::uint64_t b, unsigned a_width, unsigned b_width) noexcept;
KVAL_API bool LessNegativeLarge(std::uint64_t a, std::uint64_t b, unsigned a_width, unsigned b_width) noexcept;
/// @}

// Small values of one width. There is no branch on the sign, which is hard to predict.

KVAL_INLINE bool equal_of_one_width(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const std::uint64_t value = Fields::value(a) ^ Fields::value(b);
    if (value << (-a.bitwidth() & 63U) != 0) return false;
    const std::uint64_t others = value | (Fields::mask(a) ^ Fields::mask(b)) | (Fields::marks(a) ^ Fields::marks(b));
    return (static_cast<unsigned>(top_bit(Fields::value(a), a.bitwidth())) | static_cast<unsigned>(others == 0)) != 0;
}

KVAL_INLINE bool less_of_one_width(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const unsigned less = static_cast<unsigned>(Fields::value(a) < Fields::value(b));
    const unsigned negative = static_cast<unsigned>(top_bit(Fields::value(a), a.bitwidth()));
    return (negative == static_cast<unsigned>(top_bit(Fields::value(b), a.bitwidth())) ? less : negative) != 0;
}

}  // namespace detail
}  // namespace kval

// Negative values are equal when their value bits are: x-masks, flags and bits above the width play no part.
KVAL_INLINE bool operator==(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using namespace kval::detail;
    if (a.bitwidth() == b.bitwidth() && is_small(a)) return equal_of_one_width(a, b);
    const bool negative = is_negative(a);
    if (negative != is_negative(b)) return false;
    if (!negative) return as_unsigned(a) == as_unsigned(b);
    if (are_small(a, b)) return number(a) == number(b);
    return EqualNegativeLarge(Fields::value(a), Fields::value(b), a.bitwidth(), b.bitwidth());
}

KVAL_INLINE bool operator==(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    return !kval::detail::is_negative(a) && kval::detail::as_unsigned(a) == b;
}

KVAL_INLINE bool operator==(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b == a; }

KVAL_INLINE bool operator<(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using namespace kval::detail;
    if (a.bitwidth() == b.bitwidth() && is_small(a)) return less_of_one_width(a, b);
    const bool negative = is_negative(a);
    if (negative != is_negative(b)) return negative;
    // Values that are not negative order as unsigned numbers do, and so do negative ones of one width; bits above the
    // width count.
    if (!negative || a.bitwidth() == b.bitwidth()) return as_unsigned(a) < as_unsigned(b);
    const unsigned width = wider_width(a, b);
    if (is_small(width)) return extended(a, width).value < extended(b, width).value;
    return LessNegativeLarge(Fields::value(a), Fields::value(b), a.bitwidth(), b.bitwidth());
}

KVAL_INLINE bool operator<(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    return kval::detail::is_negative(a) || kval::detail::as_unsigned(a) < b;
}

KVAL_INLINE bool operator<(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return !kval::detail::is_negative(b) && a < kval::detail::as_unsigned(b);
}

KVAL_INLINE bool operator>(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b < a; }
KVAL_INLINE bool operator>(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept { return b < a; }
KVAL_INLINE bool operator>(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b < a; }
KVAL_INLINE bool operator<=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(b < a); }
KVAL_INLINE bool operator<=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept { return !(b < a); }
KVAL_INLINE bool operator<=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(b < a); }
KVAL_INLINE bool operator>=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(a < b); }
KVAL_INLINE bool operator>=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept { return !(a < b); }
KVAL_INLINE bool operator>=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(a < b); }

KVAL_INLINE bool operator!=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return kval::detail::as_unsigned(a) != kval::detail::as_unsigned(b);
}
KVAL_INLINE bool operator!=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    return kval::detail::as_unsigned(a) != b;
}
KVAL_INLINE bool operator!=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return a != kval::detail::as_unsigned(b);
}

#endif
