// Operands for the tests of the word kernels: arrays of words in long runs of equal bits, between guard words.
#pragma once

#include <cstddef>
#include <random>
#include <vector>

#include "words/word.h"

namespace words_support {

using kval::words::Word;
using Words = std::vector<Word>;

// Every pair of sizes up to this one.
constexpr std::size_t kMostWords = 9;
// Beyond several steps of every loop over long arrays, with all that a step may leave over.
constexpr std::size_t kManyWords = 42;

// `size` words in runs of 1 to 64 equal bits: carries and borrows travel far along them, partial products carry far,
// and a bit that was moved to the wrong place shows.
inline Words runs(std::mt19937& random, std::size_t size) {
    Words words(size, 0);
    bool ones = random() % 2 == 1;
    std::size_t left = 1 + random() % 64;
    for (std::size_t bit = 0; bit < 32 * size; ++bit) {
        if (left == 0) {
            ones = !ones;
            left = 1 + random() % 64;
        }
        --left;
        if (ones) words[bit / 32] |= Word{1} << bit % 32;
    }
    return words;
}

// The words between two guard words, which no kernel may write, nor take for a part of its operands.
inline Words guarded(const Words& words) {
    Words all = {0xDEADBEEF};
    all.insert(all.end(), words.begin(), words.end());
    all.push_back(0xFEEDFACE);
    return all;
}

}  // namespace words_support
