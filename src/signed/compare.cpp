// Equality and order of negative values where one is wide.
#include "kval.h"
#include "signed/extended.h"

namespace kval::detail {

// Value bits only, sign-extended: x-masks and flags play no part, and neither do bits above the width.
bool SignedInternals::EqualNegativeWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    const ExtendedWords x(a, width);
    const ExtendedWords y(b, width);
    const std::size_t top = x.size() - 1;
    for (std::size_t i = 0; i < top; ++i) {
        if (x.value(i) != y.value(i)) return false;
    }
    return ((x.value(top) ^ y.value(top)) & Internals::TopMask(width)) == 0;
}

// At one width, negative patterns order as unsigned numbers do; bits above the width count.
bool SignedInternals::LessNegativeWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    return less(ExtendedWords(a, width), ExtendedWords(b, width));
}

}  // namespace kval::detail
