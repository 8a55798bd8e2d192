// Random bits for values.
#include <cstdlib>
#include <memory>

#include "kval.h"
#include "value/storage.h"

using kval::words::Word;

KVAL_UINTEGER& KVAL_UINTEGER::randomize() noexcept {
    const int size = IsCompact() ? 1 : get_size();
    for (int i = 0; i < size; ++i) {
        set_uvalue_at(i, static_cast<Word>(kval_random()));
        set_xmask_at(i, 0);
    }
    flags = static_cast<std::uint8_t>(flags & ~kFourState);
    return Changed();
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
