// Comparison of arrays of words, the highest difference first.
#include "words/compare.h"

#include <algorithm>

namespace kval::words {

bool all_zero(const Word* a, std::size_t size) {
    return std::all_of(a, a + size, [](Word word) { return word == 0; });
}

bool equal(const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    const std::size_t both = std::min(a_size, b_size);
    return std::memcmp(a, b, both * sizeof(Word)) == 0 && all_zero(a + both, a_size - both) &&
           all_zero(b + both, b_size - both);
}

int compare(const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    const std::size_t both = std::min(a_size, b_size);
    if (!all_zero(a + both, a_size - both)) return 1;
    if (!all_zero(b + both, b_size - both)) return -1;
    for (std::size_t i = both; i-- > 0;) {
        if (a[i] != b[i]) return a[i] > b[i] ? 1 : -1;
    }
    return 0;
}

}  // namespace kval::words
