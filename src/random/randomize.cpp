// Random bits for values.
#include <algorithm>
#include <cstdlib>
#include <memory>

#include "kval.h"
#include "random/generator.h"
#include "value/storage.h"

namespace kval::detail {
namespace {

// Draws positions below `count` until each has come up. `drawn` has a bit for each position, all 0 at first.
void draw_each(int count, Word* drawn) {
    for (int rest = count; rest > 0;) {
        const auto position = static_cast<unsigned>(std::rand() % count);
        Word& word = drawn[position / words::kWordBits];
        const Word bit = Word{1} << position % words::kWordBits;
        if ((word & bit) != 0) continue;
        word |= bit;
        --rest;
    }
}

}  // namespace

std::uint64_t DrawWords(unsigned width) noexcept {
    const auto low = static_cast<Word>(kval_random());
    return width <= words::kWordBits ? low : static_cast<std::uint64_t>(static_cast<Word>(kval_random())) << 32 | low;
}

void RandomizeLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept {
    const Arrays arrays = arrays_of({value, mask});
    const std::size_t size = word_count(width);
    draw_words(arrays.value, size);
    arrays.value[size - 1] &= used_of_top_word(width);
    // The x-mask is cleared, and so needs no trimming: reading one word back at once could take longer than all the
    // rest.
    std::fill_n(arrays.mask, size, Word{0});
}

void DrawPositions(int count) noexcept {
    Word drawn[2] = {};
    draw_each(count, drawn);
}

// In the end every position below `count` has come up, so that all these bits are inverted.
void InvertLarge(std::uint64_t value, int count) {
    const std::size_t size = word_count(static_cast<unsigned>(count));
    const std::unique_ptr<Word[]> drawn = std::make_unique<Word[]>(size);
    draw_each(count, drawn.get());
    for (std::size_t i = 0; i < size; ++i) array_of(value)[i] ^= drawn[i];
}

}  // namespace kval::detail
