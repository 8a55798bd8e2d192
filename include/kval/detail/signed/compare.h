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

}  // namespace detail
}  // namespace kval

KVAL_INLINE bool operator==(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using namespace kval::detail;
    const bool negative = is_negative(a);
    if (negative != is_negative(b)) return false;
    // Negative values are equal by their value bits alone: x-masks and flags play no part, nor do bits above the width.
    if (!negative) return as_unsigned(a) == as_unsigned(b);
    if (are_small(a, b)) return number(a) == number(b);
    return EqualNegativeLarge(Fields::planes(a).value, Fields::planes(b).value, a.bitwidth(), b.bitwidth());
}

KVAL_INLINE bool operator==(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    return !kval::detail::is_negative(a) && kval::detail::as_unsigned(a) == b;
}

KVAL_INLINE bool operator==(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b == a; }

KVAL_INLINE bool operator<(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using namespace kval::detail;
    const bool negative = is_negative(a);
    if (negative != is_negative(b)) return negative;
    // Patterns of one sign and width order as unsigned numbers do; bits above the width count.
    if (!negative || a.bitwidth() == b.bitwidth()) return as_unsigned(a) < as_unsigned(b);
    const unsigned width = wider_width(a, b);
    if (is_small(width)) return extended(a, width).value < extended(b, width).value;
    return LessNegativeLarge(Fields::planes(a).value, Fields::planes(b).value, a.bitwidth(), b.bitwidth());
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
