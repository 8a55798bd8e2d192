// The storage word, and the step over two of them at once that the kernels take where they can.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kval::words {

using Word = std::uint32_t;
using DoubleWord = std::uint64_t;

inline constexpr unsigned kWordBits = 32;

// Two neighbouring words are one double word in memory: the less significant first.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);

inline DoubleWord load_pair(const Word* words) {
    DoubleWord pair;
    std::memcpy(&pair, words, sizeof pair);
    return pair;
}

inline void store_pair(Word* words, DoubleWord pair) { std::memcpy(words, &pair, sizeof pair); }

}  // namespace kval::words
