// Words to digits and back: hexadecimal and binary text of arrays of words, least significant word first.
#pragma once

#include "words/word.h"

namespace kval::words {

/// The lowest `digits` hexadecimal digits of `value`, upper case, most significant first; 'X' for a digit
/// with a bit of `unknown`, of whose highest word only the bits in `top_mask` count. Both arrays have the
/// (digits + 7) / 8 words that these digits take.
void write_hexadecimal(char* text, std::size_t digits, const Word* value, const Word* unknown, Word top_mask);
/// The same with binary digits, which take (digits + 31) / 32 words.
void write_binary(char* text, std::size_t digits, const Word* value, const Word* unknown, Word top_mask);

/// Writes the (length + 7) / 8 words that a text of `length` characters stands for, taken in chunks of eight from the
/// right, and clears as many of `unknown`. A chunk that is not all digits, of either case, is read by the rules of
/// strtoul.
void read_hexadecimal(Word* value, Word* unknown, const char* text, std::size_t length);
/// Writes the bits that a text of `length` characters gives as '0' or '1', and clears them in `unknown`; every other
/// bit of the two arrays stays. Whether there is a word that was given a bit and is left without any unknown one.
bool read_binary(Word* value, Word* unknown, const char* text, std::size_t length);

}  // namespace kval::words
