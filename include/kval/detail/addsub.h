// Addition and subtraction of value bits; x-masks and flags are carried along.
#ifndef KVAL_DETAIL_ADDSUB_H
#define KVAL_DETAIL_ADDSUB_H

#include "storage.h"

namespace kval {
namespace detail {

/// A sum where one operand is large: its arrays, which may be one word longer than it needs, and its width. AddLarge
/// throws std::bad_alloc.
struct Sum {
    Planes planes;
    unsigned width;
};
KVAL_API Sum AddLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                      unsigned r_width);
/// The length of those arrays, from the wider operand's width.
KVAL_INLINE unsigned capacity_of_sum(unsigned width) noexcept { return width / 32 + 1; }
/// The arrays of a 65-bit sum: these lower 64 bits, and a known 1 above them. Throws std::bad_alloc.
KVAL_API Planes CarryOut(std::uint64_t value, std::uint64_t mask);
/// The planes of a difference, in the left operand's width, where one operand is large. Throws std::bad_alloc.
KVAL_API Planes SubLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                         unsigned r_width);
/// The planes of the left operand after the operation in place, where one operand is large.
KVAL_API Planes AddAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask,
                               unsigned l_width, unsigned r_width) noexcept;
KVAL_API Planes SubAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask,
                               unsigned l_width, unsigned r_width) noexcept;
/// Adds a number to a large value in place, or subtracts one, with a carry or borrow as far as it goes.
KVAL_API void AddNumberLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned number) noexcept;
KVAL_API void SubNumberLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned number) noexcept;

/// The width of the sum of two small operands, the wider of which has `width` bits. It is one bit more where the sum
/// reaches the bit above the width, or carries out of the stored words. Operands that hold bits above their width may
/// do the latter without the former.
KVAL_INLINE unsigned width_of_sum(std::uint64_t sum, std::uint64_t operand, unsigned width) noexcept {
    const bool carry = sum < operand || (sum & ~stored_bits(width)) != 0;
    const std::uint64_t reached = sum >> 1 >> ((width - 1) & 63U) & 1U;
    return width + (static_cast<unsigned>(carry) | static_cast<unsigned>(reached));
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_UINTEGER operator+(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    const Wider from = wider(l, r);
    if (!is_small(from.width)) {
        const Sum sum = binary_large(AddLarge, l, r);
        return Fields::make<KVAL_UINTEGER>(sum.width, sum.planes, from.flags, capacity_of_sum(from.width));
    }
    const Planes sum = {Fields::value(l) + Fields::value(r), from.planes.mask};
    const unsigned width = width_of_sum(sum.value, Fields::value(l), from.width);
    if (is_small(width)) return trimmed_result(width, sum, from.flags);
    return any_result(width, CarryOut(sum.value, sum.mask), from.flags);
}

// Up to 64 bits, the rules for carries and borrows between words come to plain 64-bit arithmetic.

KVAL_INLINE KVAL_UINTEGER operator-(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    const unsigned width = l.bitwidth();
    const Planes bits = Fields::planes(l);
    if (are_small(l, r)) return trimmed_result(width, {bits.value - Fields::value(r), bits.mask}, Fields::flags(l));
    return any_result(width, binary_large(SubLarge, l, r), Fields::flags(l));
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator+=(const KVAL_UINTEGER& other) noexcept {
    using namespace kval::detail;
    if (are_small(*this, other)) return changed_value(*this, uvalue.bits + other.uvalue.bits);
    return changed_large(*this, binary_large(AddAssignLarge, *this, other));
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator-=(const KVAL_UINTEGER& other) noexcept {
    using namespace kval::detail;
    if (are_small(*this, other)) return changed_value(*this, uvalue.bits - other.uvalue.bits);
    return changed_large(*this, binary_large(SubAssignLarge, *this, other));
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator+=(unsigned number) noexcept {
    using namespace kval::detail;
    if (is_small(width)) return changed_value(*this, uvalue.bits + number);
    unary_large(AddNumberLarge, *this, number);
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator-=(unsigned number) noexcept {
    using namespace kval::detail;
    if (is_small(width)) return changed_value(*this, uvalue.bits - number);
    unary_large(SubNumberLarge, *this, number);
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator++() noexcept { return *this += 1U; }
KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator--() noexcept { return *this -= 1U; }

#endif
