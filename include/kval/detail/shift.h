// Shifts: value bits and x-mask alike, zeros in, flags kept.
#ifndef KVAL_DETAIL_SHIFT_H
#define KVAL_DETAIL_SHIFT_H

#include "storage.h"

namespace kval {
namespace detail {

/// The planes of a shifted value in `new_width` bits, where the result or the operand is large, or bits are lost. Both
/// functions throw std::bad_alloc.
KVAL_API Planes ShlLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count, unsigned new_width);
KVAL_API Planes ShrLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count, unsigned new_width);
KVAL_API void ShlAssignLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count) noexcept;
KVAL_API void ShrAssignLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count) noexcept;

/// The planes of a small value, shifted within its width and not yet trimmed. Deliberate, in every compact shift: the
/// count is taken modulo 32, so that 32 shifts by nothing. A wide shift by the width or more leaves nothing, not even
/// bits that were stored above the width.
KVAL_INLINE Planes shifted_left(Planes bits, unsigned count, unsigned width) noexcept {
    if (width <= 32) count &= 31U;
    if (count >= 64) return {0, 0};
    return {bits.value << count, bits.mask << count};
}
KVAL_INLINE Planes shifted_right(Planes bits, unsigned count, unsigned width) noexcept {
    if (width <= 32) {
        count &= 31U;
    } else if (count >= width) {
        return {0, 0};
    }
    return {bits.value >> count, bits.mask >> count};
}

/// The planes of a value shifted left into a result with room for all of its bits, so that nothing needs to be trimmed.
/// Bits are lost only where width + count is too large to be a width; the library sees to that.
KVAL_INLINE Planes widened(const KVAL_UINTEGER& v, unsigned count, unsigned new_width) {
    if (!is_small(new_width) || count >= 64) return unary_large(ShlLarge, v, count, new_width);
    const Planes bits = Fields::planes(v);
    return only(stored_bits(new_width), {bits.value << count, bits.mask << count});
}

/// The planes of a value shifted right into a result that is not wider.
KVAL_INLINE Planes narrowed(const KVAL_UINTEGER& v, unsigned count, unsigned new_width) {
    if (!is_small(v)) return unary_large(ShrLarge, v, count, new_width);
    return trimmed(shifted_right(Fields::planes(v), count, v.bitwidth()), new_width);
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_UINTEGER operator<<(const KVAL_UINTEGER& v, unsigned count) {
    using namespace kval::detail;
    const unsigned width = v.bitwidth() + count;
    if (count < 64 && width - 1 < 64) return small_result(width, widened(v, count, width), Fields::flags(v));
    const unsigned valid = at_least_one(width);
    return any_result(valid, unary_large(ShlLarge, v, count, valid), Fields::flags(v));
}

KVAL_INLINE KVAL_UINTEGER operator>>(const KVAL_UINTEGER& v, unsigned count) {
    using namespace kval::detail;
    const unsigned width = count < v.bitwidth() ? v.bitwidth() - count : 1;
    if (is_small(v)) return small_result(width, narrowed(v, count, width), Fields::flags(v));
    return any_result(width, unary_large(ShrLarge, v, count, width), Fields::flags(v));
}

KVAL_INLINE KVAL_UINTEGER::KVAL_UINTEGER(const KVAL_UINTEGER& other, int count, bool left)
    : width(left ? kval::detail::at_least_one(other.width + static_cast<unsigned>(count)) : other.width),
      text_cache(nullptr),
      flags(static_cast<std::uint8_t>(kval::detail::Fields::flags(other))),
      capacity(kval::detail::capacity_of(width)) {
    using namespace kval::detail;
    const unsigned places = static_cast<unsigned>(count);
    Fields::set_planes(*this, left ? widened(other, places, width) : narrowed(other, places, width));
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator<<=(unsigned count) noexcept {
    using namespace kval::detail;
    if (is_small(width)) return changed_trimmed(*this, shifted_left(Fields::planes(*this), count, width));
    unary_large(ShlAssignLarge, *this, count);
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator>>=(unsigned count) noexcept {
    using namespace kval::detail;
    if (is_small(width)) return changed_trimmed(*this, shifted_right(Fields::planes(*this), count, width));
    unary_large(ShrAssignLarge, *this, count);
    DeleteString();
    return *this;
}

#endif
