// Random bits for values.
#include <algorithm>
#include <cstdlib>
#include <memory>

#include "kval.h"
#include "random/generator.h"
#include "value/storage.h"

using kval::words::Word;

KVAL_UINTEGER& KVAL_UINTEGER::randomize() noexcept {
    if (IsCompact()) {
        uvalue.word = static_cast<Word>(kval_random()) & TopMask(width);
        xmask.word = 0;
    } else {
        const std::size_t size = kval::word_count(width);
        kval::draw_words(uvalue.words, size);
        uvalue.words[size - 1] &= TopMask(width);
        // Cleared, and so not trimmed: to read one word back at once could take longer than all the rest.
        std::fill_n(xmask.words, size, Word{0});
    }
    flags = static_cast<std::uint8_t>(flags & ~kFourState);
    DeleteString();
    return *this;
}

// Deliberate: positions are drawn below `count`, not below the width, until each of them was drawn once, and the cached
// text is not dropped.
KVAL_UINTEGER& KVAL_UINTEGER::randomize(int count) {
    if (static_cast<unsigned>(count) > width) return *this;  // a negative count too
    Word one_word = 0;
    const std::unique_ptr<Word[]> many = IsCompact() ? nullptr : std::make_unique<Word[]>(kval::word_count(width));
    Word* drawn = many ? many.get() : &one_word;
    for (int rest = count; rest > 0;) {
        const auto position = static_cast<unsigned>(std::rand() % count);
        const unsigned index = position / kval::words::kWordBits;
        const Word bit = Word{1} << position % kval::words::kWordBits;
        if ((drawn[index] & bit) != 0) continue;
        drawn[index] |= bit;
        StoreAt(uvalue, index, WordAt(uvalue, index) ^ bit);
        --rest;
    }
    return *this;
}
