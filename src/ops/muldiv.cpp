// Multiplication of large values, and the messages of division and remainder, which are for compact ones.
#include "ops/muldiv.h"

#include <algorithm>

#include "kval.h"
#include "value/scratch.h"
#include "words/multiply.h"

namespace {

// These are thrown as char*, and so cannot be constants.
char divide_width[] = "KVAL_UINTEGER operator / only supports division between 32 bit KVAL_UINTEGERs";
char remainder_width[] = "KVAL_UINTEGER operator % only supports division between 32 bit KVAL_UINTEGERs";

}  // namespace

namespace kval::detail {

Planes AllXLarge(unsigned width) {
    Copy out_copy;
    Target out(width, out_copy);
    std::fill_n(out.value, out.size, Word{0});
    std::fill_n(out.mask, out.size, ~Word{0});
    return out.trimmed();
}

Planes MulLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                unsigned r_width, unsigned x_flag) {
    const unsigned width = at_least_one(l_width + r_width);
    if (x_flag != 0) return AllXLarge(width);
    Copy a_copy;
    const Operand a({l, l_mask}, l_width, a_copy);
    Copy b_copy;
    const Operand b({r, r_mask}, r_width, b_copy);
    // Where the sum of the widths is too large to be a width, a single bit is left.
    if (width == 1) return {a.value[0] & b.value[0] & 1U, 0};
    if (l_width <= kShortFactor && r_width <= kShortFactor)
        return known_planes(words::multiply_quads(number_of(a), number_of(b)), width);
    Scratch scratch(words::multiply_scratch(word_count(width), a.size, b.size));
    Copy out_copy;
    Target out(width, out_copy);
    words::multiply(out.value, out.size, a.value, a.size, b.value, b.size, scratch.words());
    std::fill_n(out.mask, out.size, Word{0});
    return out.trimmed();
}

void ThrowDivideWidth() { throw static_cast<char*>(divide_width); }

void ThrowRemainderWidth() { throw static_cast<char*>(remainder_width); }

}  // namespace kval::detail
