// Products of factors of a few words, as whole limbs whatever the number of words.
#include "words/multiply_short.h"

#include <algorithm>

#include "words/multiply_rows.h"
#include "words/quad_word.h"

namespace kval::words {
namespace {

// out = the limbs of a product, cut or zero-extended to `size` words.
template <std::size_t kLimbs>
void store_product(Word* out, std::size_t size, const DoubleWord (&limbs)[kLimbs]) {
    std::size_t i = 0;
    for (; i < kLimbs && 2 * i + 2 <= size; ++i) store_pair(out + 2 * i, limbs[i]);
    if (2 * i == size) return;
    if (i < kLimbs) {
        out[2 * i] = static_cast<Word>(limbs[i]);
    } else {
        std::fill(out + 2 * i, out + size, Word{0});
    }
}

void multiply_one_limb(Word* out, std::size_t size, DoubleWord a, DoubleWord b) {
    const QuadWord product = multiply_add(a, b, 0, 0);
    store_product(out, size, {low_half(product), high_half(product)});
}

void multiply_two_limbs(Word* out, std::size_t size, const DoubleWord (&a)[2], const DoubleWord (&b)[2]) {
    const QuadWord low = multiply_add(a[0], b[0], 0, 0);
    const QuadWord first = multiply_add(a[1], b[0], high_half(low), 0);
    const QuadWord second = multiply_add(a[0], b[1], low_half(first), 0);
    const QuadWord high = multiply_add(a[1], b[1], high_half(first), high_half(second));
    store_product(out, size, {low_half(low), low_half(second), low_half(high), high_half(high)});
}

// One pass over `a`, of one limb at least, with all rows of `b`: into `out` where the whole limbs have room there.
void multiply_rows(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    static_assert(kShort == 2 * kRows);
    Word factors[2 * kShort];
    Word product[2 * kShort];
    for (std::size_t i = 0; i < kRows; ++i) {
        store_pair(factors + 2 * i, limb_at(a, a_size, i));
        store_pair(factors + kShort + 2 * i, limb_at(b, b_size, i));
    }
    const std::size_t limbs = std::max<std::size_t>(1, (a_size + 1) / 2);
    const std::size_t whole = 2 * (limbs + kRows);
    row_loops().multiply(size < whole ? product : out, factors, limbs, factors + kShort);
    if (size < whole) {
        copy_limbs(out, product, size);
    } else {
        std::fill(out + whole, out + size, Word{0});
    }
}

}  // namespace

void multiply_short(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    if (b_size <= 2) {
        multiply_one_limb(out, size, limb_at(a, a_size, 0), limb_at(b, b_size, 0));
    } else if (b_size <= 4) {
        multiply_two_limbs(out, size, {limb_at(a, a_size, 0), limb_at(a, a_size, 1)},
                           {limb_at(b, b_size, 0), limb_at(b, b_size, 1)});
    } else {
        multiply_rows(out, size, a, a_size, b, b_size);
    }
}

}  // namespace kval::words
