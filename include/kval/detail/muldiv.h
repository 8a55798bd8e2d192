// Multiplication of any operands; division and remainder of compact ones.
#ifndef KVAL_DETAIL_MULDIV_H
#define KVAL_DETAIL_MULDIV_H

#include "storage.h"

namespace kval {
namespace detail {

/// The planes of a product, where it or an operand is large: all X where `x_flag` is set, else the product of the value
/// bits. Throws std::bad_alloc.
KVAL_API Planes MulLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                         unsigned r_width, unsigned x_flag);
/// The planes of an all-X result of any width, over value bits of 0. Throws std::bad_alloc.
KVAL_API Planes AllXLarge(unsigned width);
[[noreturn]] KVAL_API void ThrowDivideWidth();
[[noreturn]] KVAL_API void ThrowRemainderWidth();

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_UINTEGER operator*(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    // The widths of very wide operands add up to 2^31 or more, which reads as negative and becomes 1.
    const unsigned width = at_least_one(l.bitwidth() + r.bitwidth());
    const unsigned flags = any_x(l, r);
    if (!is_small(width) || !are_small(l, r)) return any_result(width, binary_large(MulLarge, l, r, flags), flags);
    if (flags != 0) return all_x_result(width, 0, flags);
    return trimmed_result(width, {Fields::value(l) * Fields::value(r), 0}, 0);
}

KVAL_INLINE KVAL_UINTEGER operator/(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    if (!l.IsCompact() || !r.IsCompact()) ThrowDivideWidth();
    if (r.is_zero()) return all_x_result(l.bitwidth(), 0, 0);
    return trimmed_result(l.bitwidth(), {l.uint() / r.uint(), 0}, 0);
}

KVAL_INLINE KVAL_UINTEGER operator%(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    if (!l.IsCompact() || !r.IsCompact()) ThrowRemainderWidth();
    if (r.is_zero()) return all_x_result(r.bitwidth(), 0, 0);
    return trimmed_result(r.bitwidth(), {l.uint() % r.uint(), 0}, 0);
}

#endif
