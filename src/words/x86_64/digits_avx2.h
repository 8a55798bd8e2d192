// The digits of whole words with AVX2, 32 characters a step; to be called only where the machine has it.
#pragma once

#include "words/word.h"

namespace kval::words::avx2 {

// As the functions of the same names in words/digits_steps.h. Where a step takes several words, those that are left
// over are the lowest; the answer is how many are done.
std::size_t write_hexadecimal_words(char* text, const Word* value, const Word* unknown, std::size_t size);
void write_binary_words(char* text, const Word* value, const Word* unknown, std::size_t size);
std::size_t read_hexadecimal_words(Word* value, Word* unknown, const char* text, std::size_t size);
bool read_binary_words(Word* value, Word* unknown, const char* text, std::size_t size);

}  // namespace kval::words::avx2
