// Products of factors of a few words, as whole limbs whatever the number of words.
#include "words/multiply_short.h"

#include <algorithm>

#include "words/multiply_rows.h"
#include "words/quad_word.h"

namespace kval::words {
namespace {

// The words of a product from `from` on, of which there is nothing.
void fill_above(Word* out, std::size_t size, std::size_t from) {
    if (from < size) std::fill(out + from, out + size, Word{0});
}

void multiply_one_limb(Word* out, std::size_t size, DoubleWord a, DoubleWord b) {
    const QuadWord product = multiply_add(a, b, 0, 0);
    const std::size_t whole = std::min<std::size_t>(size, 4);
    if (whole > 0) store_limb(out, whole, 0, low_half(product));
    if (whole > 2) store_limb(out, whole, 1, high_half(product));
    fill_above(out, size, 4);
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
        store_quads(out, std::min<std::size_t>(size, 8), multiply_quads(load_quad(a, a_size), load_quad(b, b_size)));
        fill_above(out, size, 8);
    } else {
        multiply_rows(out, size, a, a_size, b, b_size);
    }
}

}  // namespace kval::words
