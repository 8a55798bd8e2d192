// Comparison of arrays of words, the highest difference first.
#include "words/compare.h"

#include <algorithm>

namespace kval::words {
namespace {

constexpr std::size_t kBlock = 16;

// Whether two blocks differ.
bool differ(const Word* a, const Word* b) {
    Vector difference{};
    for (std::size_t i = 0; i < kBlock; i += 4) difference |= load<Vector>(a + i) ^ load<Vector>(b + i);
    return (difference[0] | difference[1]) != 0;
}

int compare_equally_long(const Word* a, const Word* b, std::size_t size) {
    while (size >= kBlock && !differ(a + size - kBlock, b + size - kBlock)) size -= kBlock;
    return compare_limbs(a, b, size);
}

}  // namespace

bool all_zero(const Word* a, std::size_t size) {
    return std::all_of(a, a + size, [](Word word) { return word == 0; });
}

bool equal(const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    const std::size_t both = std::min(a_size, b_size);
    return same(a, b, both) && all_zero(a + both, a_size - both) && all_zero(b + both, b_size - both);
}

int compare(const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    if (a_size == b_size) return compare_equally_long(a, b, a_size);
    const std::size_t both = std::min(a_size, b_size);
    if (!all_zero(a + both, a_size - both)) return 1;
    if (!all_zero(b + both, b_size - both)) return -1;
    return compare_equally_long(a, b, both);
}

}  // namespace kval::words
