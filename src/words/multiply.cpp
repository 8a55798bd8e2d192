// Products of arrays of words: long multiplication in limbs of two words.
#include "words/multiply.h"

#include <algorithm>

namespace kval::words {
namespace {

__extension__ using QuadWord = unsigned __int128;

// out += a * limb, cut to `size` words. No step overflows: a limb times a limb plus two limbs still fits in two.
void add_product(Word* out, std::size_t size, const Word* a, std::size_t a_size, DoubleWord limb) {
    const std::size_t both = std::min(size, a_size);
    DoubleWord carry = 0;
    std::size_t i = 0;
    for (; i + 2 <= both; i += 2) {
        const QuadWord sum = static_cast<QuadWord>(load_pair(a + i)) * limb + load_pair(out + i) + carry;
        store_pair(out + i, static_cast<DoubleWord>(sum));
        carry = static_cast<DoubleWord>(sum >> 64);
    }
    if (i < both) {
        const QuadWord sum = static_cast<QuadWord>(a[i]) * limb + out[i] + carry;
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

}  // namespace

void multiply(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    std::fill_n(out, size, Word{0});
    for (std::size_t i = 0; i < b_size && i < size; i += 2) {
        const DoubleWord limb = i + 2 <= b_size ? load_pair(b + i) : b[i];
        add_product(out + i, size - i, a, a_size, limb);
    }
}

}  // namespace kval::words
