// Long multiplication by passes of several rows, and by single rows at the edges.
#include "words/multiply_long.h"

#include <algorithm>

#include "words/quad_word.h"

namespace kval::words {
namespace {

// out = (kAdd ? out : 0) + a * limb over `size` words, an even number; returns the limb above.
template <bool kAdd>
DoubleWord row(Word* out, const Word* a, std::size_t size, DoubleWord limb) {
    DoubleWord carry = 0;
    for (std::size_t i = 0; i < size; i += 2) {
        const QuadWord sum = multiply_add(load_pair(a + i), limb, kAdd ? load_pair(out + i) : 0, carry);
        store_pair(out + i, low_half(sum));
        carry = high_half(sum);
    }
    return carry;
}

}  // namespace

void add_row(Word* out, std::size_t size, const Word* a, std::size_t a_size, DoubleWord limb) {
    const std::size_t both = std::min(size, a_size);
    std::size_t i = both & ~std::size_t{1};
    DoubleWord carry = row<true>(out, a, i, limb);
    if (i < both) {
        const QuadWord sum = multiply_add(a[i], limb, out[i], carry);
        out[i] = static_cast<Word>(sum);
        carry = static_cast<DoubleWord>(sum >> kWordBits);
        ++i;
    }
    for (; carry != 0 && i < size; ++i) {
        const DoubleWord sum = static_cast<DoubleWord>(out[i]) + static_cast<Word>(carry);
        out[i] = static_cast<Word>(sum);
        carry = (carry >> kWordBits) + (sum >> kWordBits);
    }
}

// First the whole limbs of both factors, then the top word of one that has an odd number of words by the other factor.
void multiply_long(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size,
                   const RowLoops& loops) {
    constexpr std::size_t pass = 2 * kRows;
    const std::size_t a_even = a_size & ~std::size_t{1};
    const std::size_t b_even = b_size & ~std::size_t{1};
    std::size_t i = 0;
    if (b_even >= pass) {
        loops.multiply(out, a, a_even / 2, b);
        for (i = pass; i + pass <= b_even; i += pass) loops.add(out + i, a, a_even / 2, b + i);
    } else if (b_even > 0) {
        store_pair(out + a_even, row<false>(out, a, a_even, load_pair(b)));
        i = 2;
    }
    for (; i < b_even; i += 2) store_pair(out + a_even + i, row<true>(out + i, a, a_even, load_pair(b + i)));
    std::fill(out + (b_even > 0 ? a_even + b_even : 0), out + a_size + b_size, Word{0});
    if (a_size > a_even) add_row(out + a_even, b_size + 1, b, b_size, a[a_even]);
    if (b_size > b_even) add_row(out + b_even, a_size + 1, a, a_even, b[b_even]);
}

}  // namespace kval::words
