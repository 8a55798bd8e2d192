// Products of factors of a few words.
#pragma once

#include "words/word.h"

namespace kval::words {

/// The words of a factor that is still short.
inline constexpr std::size_t kShort = 8;

/// out = a * b, cut to `size` words; `a` has no more words than `b`, and `b` no more than kShort.
void multiply_short(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size);

}  // namespace kval::words
