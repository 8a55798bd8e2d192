// Multiplication; division and remainder, which are for compact operands.
#ifndef KVAL_DETAIL_MULDIV_H
#define KVAL_DETAIL_MULDIV_H

#include "storage.h"

namespace kval {
namespace detail {

/// The planes of a product, all X or of the value bits, where it or an operand is large. Throws std::bad_alloc.
KVAL_API Planes MulLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                         unsigned r_width, unsigned x_flag);
/// The planes of a result of any width that is all X, over zeros. Throws std::bad_alloc.
KVAL_API Planes AllXLarge(unsigned width);
[[noreturn]] KVAL_API void ThrowDivideWidth();
[[noreturn]] KVAL_API void ThrowRemainderWidth();

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_UINTEGER operator*(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using namespace kval::detail;
    // The widths of very wide operands add up to what is read as negative, and becomes 1.
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
