// Products with a signed operand, and the arithmetic right shifts.
#ifndef KVAL_DETAIL_SIGNED_MULSHIFT_H
#define KVAL_DETAIL_SIGNED_MULSHIFT_H

#include "../muldiv.h"
#include "../shift.h"
#include "representation.h"

namespace kval {
namespace detail {

/// Whether the operands of a product are negative.
struct Signs {
    bool l;
    bool r;
};
/// The planes of a product without X, where it or an operand is large. Throws std::bad_alloc.
KVAL_API Planes MulSignedLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask,
                               unsigned l_width, unsigned r_width, Signs signs);
/// A negative large value shifted right in place.
KVAL_API void ShrAssignNegativeLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count) noexcept;

template <typename Right>
KVAL_INLINE KVAL_SINTEGER product(const KVAL_SINTEGER& a, const Right& b, bool b_negative) {
    const unsigned width = at_least_one(a.bitwidth() + b.bitwidth());
    const unsigned flags = any_x(a, b);
    if (is_small(width) && are_small(a, b)) {
        if (flags != 0) return all_x_result<KVAL_SINTEGER>(width, 0, flags);
        return trimmed_result<KVAL_SINTEGER>(width, {number(a) * number(b), 0}, 0);
    }
    if (flags != 0) return any_result<KVAL_SINTEGER>(width, AllXLarge(width), flags);
    const Signs signs = {is_negative(a), b_negative};
    return any_result<KVAL_SINTEGER>(width, binary_large(MulSignedLarge, a, b, signs), 0);
}

/// Whether a shift in place leaves nothing of a negative value. Deliberate: width and count are compared as signed
/// numbers, so that counts of 2^31 and above are not taken for too large.
KVAL_INLINE bool shifted_out(unsigned width, unsigned count) noexcept {
    return static_cast<int>(count) >= static_cast<int>(width);
}

/// The lowest bit of those that are filled with ones when a negative value is shifted in place. Deliberate, and not to
/// be fixed: the fill is exact for compact widths other than 32. Otherwise it has more ones than bits were shifted out,
/// in wide values whole words of them.
KVAL_INLINE std::size_t fill_start(unsigned width, unsigned count) noexcept {
    const unsigned top = width % 32;
    // Where the width is a multiple of 32, the place is wrong: the pattern of the fill, ones from bit 32 - count up, is
    // itself taken for the place, modulo 32.
    const unsigned place = (top != 0 ? top - count : ones_from(32U - count)) & 31U;
    if (width <= 32) return place;
    const unsigned words = word_count(width);
    const unsigned filled = (top + count + 31U) / 32U;
    return filled < words ? std::size_t{32} * (words - 1 - filled) + place : 0;
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::product(a, b, kval::detail::is_negative(b));
}

KVAL_INLINE KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return kval::detail::product(a, b, false);
}

KVAL_INLINE KVAL_SINTEGER operator*(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return b * a; }

// No bit needs to be filled in: the sign comes down to the new top bit.
KVAL_INLINE KVAL_SINTEGER operator>>(const KVAL_SINTEGER& a, unsigned count) {
    using namespace kval::detail;
    const int rest = static_cast<int>(a.bitwidth() - count);
    const unsigned width = rest > 0 ? static_cast<unsigned>(rest) : 1;
    if (rest <= 0 && is_negative(a)) return small_result<KVAL_SINTEGER>(1, {1, 0}, 0);
    if (!a.IsCompact()) {
        // Only counts above 2^31 give a large result for a small operand.
        const Planes planes = is_small(width) ? narrowed(a, count, width) : unary_large(ShrLarge, a, count, width);
        return any_result<KVAL_SINTEGER>(width, planes, Fields::flags(a));
    }
    // Deliberate: a compact value is shifted by the count modulo 32 and not trimmed. Neither X bits nor flags come
    // along.
    const std::uint64_t value = Fields::value(a) >> (count & 31U);
    if (is_small(width)) return small_result<KVAL_SINTEGER>(width, {value, 0}, 0);
    return any_result<KVAL_SINTEGER>(width, ConstructLarge(static_cast<unsigned>(value), width), 0);
}

KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::operator>>=(unsigned count) noexcept {
    using namespace kval::detail;
    if (!is_negative(*this)) {
        KVAL_UINTEGER::operator>>=(count);
        return *this;
    }
    if (!is_small(width)) {
        unary_large(ShrAssignNegativeLarge, *this, count);
        DeleteString();
        return *this;
    }
    Planes bits = Fields::planes(*this);
    if (shifted_out(width, count)) return changed_trimmed(*this, {~std::uint64_t{0}, bits.mask});
    bits = shifted_right(bits, count, width);
    return changed_trimmed(*this, {bits.value | ~std::uint64_t{0} << fill_start(width, count), bits.mask});
}

#endif
