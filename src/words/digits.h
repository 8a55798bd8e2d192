// Words to digits and back: the inner steps of hexadecimal and binary text.
#pragma once

#include "words/word.h"

namespace kval::words {

/// The 8 hexadecimal digits of `value`, upper case, most significant first; 'X' for a digit with a bit of `unknown`.
void write_hexadecimal(char* digits, Word value, Word unknown);
/// The 32 binary digits of `value`, most significant first; 'X' for a bit of `unknown`.
void write_binary(char* digits, Word value, Word unknown);

/// Reads 1 to 8 hexadecimal digits of either case; false when some character is not a digit.
bool read_hexadecimal(const char* digits, std::size_t count, Word& value);

/// What 1 to 32 binary digits say: which bits are given as 0 or 1, and which of those as 1.
struct BinaryDigits {
    Word given;
    Word ones;
};
BinaryDigits read_binary(const char* digits, std::size_t count);

}  // namespace kval::words
