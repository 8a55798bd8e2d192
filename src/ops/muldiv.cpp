// Multiplication of large values, and the messages of division and remainder, which are for compact ones.
#include "ops/muldiv.h"

#include <algorithm>

#include "kval.h"
#include "value/scratch.h"
#include "words/multiply.h"

namespace {

// Thrown as char*, so that they cannot be constants.
char divide_width[] = "KVAL_UINTEGER operator / only supports division between 32 bit KVAL_UINTEGERs";
char remainder_width[] = "KVAL_UINTEGER operator % only supports division between 32 bit KVAL_UINTEGERs";

}  // namespace

namespace kval::detail {

Planes AllXLarge(unsigned width) {
    Target out(width);
    std::fill_n(out.value, out.size, Word{0});
    std::fill_n(out.mask, out.size, ~Word{0});
    return out.trimmed();
}

Planes MulLarge(Planes l, Planes r, unsigned l_width, unsigned r_width, bool all_x) {
    const unsigned width = at_least_one(l_width + r_width);
    if (all_x) return AllXLarge(width);
    const Operand a(l, l_width);
    const Operand b(r, r_width);
    // Where the sum of the widths is too large to be one, a single bit is left.
    if (width == 1) return {a.value[0] & b.value[0] & 1U, 0};
    if (l_width <= kShortFactor && r_width <= kShortFactor)
        return known_planes(words::multiply_quads(number_of(a), number_of(b)), width);
    Scratch scratch(words::multiply_scratch(word_count(width), a.size, b.size));
    Target out(width);
    words::multiply(out.value, out.size, a.value, a.size, b.value, b.size, scratch.words());
    std::fill_n(out.mask, out.size, Word{0});
    return out.trimmed();
}

void ThrowDivideWidth() { throw static_cast<char*>(divide_width); }

void ThrowRemainderWidth() { throw static_cast<char*>(remainder_width); }

}  // namespace kval::detail
