// Comparison of arrays of words as numbers, least significant word first; missing words count as 0.
#pragma once

#include "words/word.h"

namespace kval::words {

bool all_zero(const Word* a, std::size_t size);
bool equal(const Word* a, std::size_t a_size, const Word* b, std::size_t b_size);
/// Less than 0, 0 or more than 0 as `a` is less than, equal to or greater than `b`.
int compare(const Word* a, std::size_t a_size, const Word* b, std::size_t b_size);

}  // namespace kval::words
