// Large products with a signed operand, and the arithmetic right shift of large values in place.
#include <algorithm>

#include "kval.h"
#include "ops/muldiv.h"
#include "value/scratch.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/multiply.h"

namespace kval::detail {
namespace {

// A number of up to 128 bits, sign-extended to 128, and its sign: all ones where it is negative, else 0.
struct SignedNumber {
    SignedNumber(const Operand& v, bool negative)
        : sign(words::QuadWord{0} - static_cast<words::QuadWord>(negative)),
          number(number_of(v) | sign << ((v.width - 1) & 127U)) {}

    words::QuadWord sign;
    words::QuadWord number;
};

// A negative factor reads as 2^128 too much, so the product has 2^128 times the other factor too much.
words::QuadPair short_product(const SignedNumber& a, const SignedNumber& b) {
    const words::QuadPair product = words::multiply_quads(a.number, b.number);
    return {product.low, product.high - (a.sign & b.number) - (b.sign & a.number)};
}

// The words of an operand's magnitude: the stored ones where it is not negative, else the negated words, in `scratch`.
const Word* magnitude_words(const Operand& v, bool negative, Word* scratch) {
    if (!negative) return v.value;
    words::negate(scratch, v.value, v.size);
    scratch[v.size - 1] &= used_of_top_word(v.width);
    return scratch;
}

}  // namespace

// The product of the magnitudes, negated when the signs differ.
Planes MulSignedLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                      unsigned r_width, Signs signs) {
    const unsigned width = at_least_one(l_width + r_width);
    Copy a_copy;
    const Operand a({l, l_mask}, l_width, a_copy);
    Copy b_copy;
    const Operand b({r, r_mask}, r_width, b_copy);
    // Where the sum of the widths is too large to be a width, a single bit is left.
    if (width == 1) return {a.value[0] & b.value[0] & 1U, 0};
    if (l_width <= kShortFactor && r_width <= kShortFactor)
        return known_planes(short_product({a, signs.l}, {b, signs.r}), width);
    const std::size_t a_scratch = signs.l ? a.size : 0;
    const std::size_t magnitudes = a_scratch + (signs.r ? b.size : 0);
    Scratch scratch(magnitudes + words::multiply_scratch(word_count(width), a.size, b.size));
    const Word* const x = magnitude_words(a, signs.l, scratch.words());
    const Word* const y = magnitude_words(b, signs.r, scratch.words() + a_scratch);
    Copy out_copy;
    Target out(width, out_copy);
    words::multiply(out.value, out.size, x, a.size, y, b.size, scratch.words() + magnitudes);
    std::fill_n(out.mask, out.size, Word{0});
    if (signs.l != signs.r) words::negate(out.value, out.value, out.size);
    return out.trimmed();
}

void ShrAssignNegativeLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count) noexcept {
    const Arrays out = arrays_of({value, mask});
    const std::size_t size = word_count(width);
    const bool out_of_range = shifted_out(width, count);
    if (!out_of_range) ShrAssignLarge(value, mask, width, count);
    const std::size_t start = out_of_range ? 0 : fill_start(width, count);
    const std::size_t first = start / words::kWordBits;
    out.value[first] |= ones_from(static_cast<unsigned>(start));
    std::fill(out.value + first + 1, out.value + size, ~Word{0});
    trim(out, width);
}

}  // namespace kval::detail
