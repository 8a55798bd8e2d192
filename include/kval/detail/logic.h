// Bitwise logic: four-state AND and OR, binary and in place, and XOR and NOT.
#ifndef KVAL_DETAIL_LOGIC_H
#define KVAL_DETAIL_LOGIC_H

#include "storage.h"

namespace kval {
namespace detail {

/// The arrays of a large result, as wide as the wider operand. These functions throw std::bad_alloc.
KVAL_API Planes AndLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                         unsigned r_width);
KVAL_API Planes OrLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                        unsigned r_width);
KVAL_API Planes XorLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                         unsigned r_width, unsigned x_flag);
KVAL_API Planes NotLarge(std::uint64_t value, std::uint64_t mask, unsigned width);
/// The planes of the left operand after the operation in place, where one operand is large.
KVAL_API Planes AndAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask,
                               unsigned l_width, unsigned r_width) noexcept;
KVAL_API Planes OrAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask,
                              unsigned l_width, unsigned r_width) noexcept;

/// AND or OR of small operands. Deliberate: only the words that both operands have are combined. Where one is compact
/// and the other wide, the upper word is the wide one's as it stands, as if AND met all ones there.
template <typename Rule>
KVAL_INLINE Planes combined(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned width, Rule rule) noexcept {
    const Planes bits = rule(Fields::planes(l), Fields::planes(r));
    if (__builtin_expect(width <= 32 || (!l.IsCompact() && !r.IsCompact()), true)) return bits;
    const Planes upper = only(~stored_bits(32), l.IsCompact() ? Fields::planes(r) : Fields::planes(l));
    const Planes lower = only(stored_bits(32), bits);
    return {upper.value | lower.value, upper.mask | lower.mask};
}

/// The flags of both operands in the left one.
KVAL_INLINE void unite_flags(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    Fields::set_flags(l, Fields::flags(l) | Fields::flags(r));
}

}  // namespace detail
}  // namespace kval

// Deliberate: no flag of either operand reaches the result of & or |, not even where the result holds X bits. The forms
// in place, by contrast, unite the flags.

KVAL_INLINE KVAL_UINTEGER operator&(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    const unsigned width = wider_width(l, r);
    if (is_small(width)) return small_result(width, combined(l, r, width, FourStateAnd()), 0);
    return any_result(width, binary_large(AndLarge, l, r), 0);
}

KVAL_INLINE KVAL_UINTEGER operator|(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    const unsigned width = wider_width(l, r);
    if (is_small(width)) return small_result(width, combined(l, r, width, FourStateOr()), 0);
    return any_result(width, binary_large(OrLarge, l, r), 0);
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator&=(const KVAL_UINTEGER& other) noexcept {
    using namespace kval::detail;
    // Deliberate: a value ANDed into itself keeps even its X bits and its text.
    if (this == &other) return *this;
    unite_flags(*this, other);
    if (are_small(*this, other)) return changed_trimmed(*this, combined(*this, other, width, FourStateAnd()));
    return changed_large(*this, binary_large(AndAssignLarge, *this, other));
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator|=(const KVAL_UINTEGER& other) noexcept {
    using namespace kval::detail;
    if (this == &other) return *this;
    unite_flags(*this, other);
    if (are_small(*this, other)) return changed_trimmed(*this, combined(*this, other, width, FourStateOr()));
    return changed_large(*this, binary_large(OrAssignLarge, *this, other));
}

// The result starts as the wider operand, x-mask and flags included. It becomes all X where either operand has flag X.
KVAL_INLINE KVAL_UINTEGER operator^(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    const Wider from = wider(l, r);
    const unsigned flags = from.flags | any_x(l, r);
    if (!is_small(from.width)) return any_result(from.width, binary_large(XorLarge, l, r, flags & kX), flags);
    if ((flags & kX) != 0) return trimmed_result(from.width, {from.planes.value, ~std::uint64_t{0}}, flags);
    const Planes of_l = Fields::planes(l);
    const Planes of_r = Fields::planes(r);
    // Deliberate: X marks without flag X cancel each other in a compact result, as value bits do. A wide result keeps
    // the wider operand's.
    const std::uint64_t mask = from.width <= 32 ? of_l.mask ^ of_r.mask : from.planes.mask;
    return small_result(from.width, {of_l.value ^ of_r.value, mask}, flags);
}

KVAL_INLINE KVAL_UINTEGER operator~(const KVAL_UINTEGER& v) {
    using namespace kval::detail;
    const unsigned width = v.bitwidth();
    if (!is_small(width)) return any_result(width, unary_large(NotLarge, v), Fields::flags(v));
    const Planes bits = Fields::planes(v);
    return trimmed_result(width, {~bits.value, bits.mask}, Fields::flags(v));
}

#endif
