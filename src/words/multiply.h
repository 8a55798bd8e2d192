// Products of arrays of words, least significant word first.
#pragma once

#include "words/word.h"

namespace kval::words {

/// out = a * b, cut to `size` words. `out` overlaps neither operand.
void multiply(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size);

}  // namespace kval::words
