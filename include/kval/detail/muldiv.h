// Multiplication; division and remainder, which are for compact operands.
#ifndef KVAL_DETAIL_MULDIV_H
#define KVAL_DETAIL_MULDIV_H

#include "storage.h"

namespace kval {
namespace detail {

/// The planes of a product, all X or of the value bits, where it or an operand is large. Throws std::bad_alloc.
KVAL_API Planes MulLarge(Planes l, Planes r, unsigned l_width, unsigned r_width, bool all_x);
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
    const bool all_x = any_x(l, r);
    const unsigned flags = all_x ? with_x(0) : 0;
    if (!is_small(width) || !are_small(l, r)) {
        const Planes planes = MulLarge(Fields::planes(l), Fields::planes(r), l.bitwidth(), r.bitwidth(), all_x);
        return any_result(width, planes, flags);
    }
    const std::uint64_t product = Fields::planes(l).value * Fields::planes(r).value;
    return trimmed_result(width, all_x ? Planes{0, ~std::uint64_t{0}} : Planes{product, 0}, flags);
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
