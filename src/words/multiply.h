// Products of arrays of words, least significant word first.
#pragma once

#include "words/word.h"

namespace kval::words {

/// The words of scratch that `multiply` needs for these sizes: none for short factors, a few times the words of the
/// longer one for long ones.
std::size_t multiply_scratch(std::size_t size, std::size_t a_size, std::size_t b_size);

/// out = a * b, cut to `size` words. `out` and `scratch` overlap each other and the operands nowhere.
void multiply(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size,
              Word* scratch);

}  // namespace kval::words
