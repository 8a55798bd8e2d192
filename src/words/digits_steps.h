// The inner steps of text: eight characters side by side in a 64-bit register, and loops over whole words.
#pragma once

#include "words/word.h"

namespace kval::words {

/// Eight characters as one number, the last of them in the lowest byte.
using EightCharacters = DoubleWord;

inline constexpr DoubleWord kEachByte = 0x0101010101010101;
inline constexpr DoubleWord kTopBits = 0x80 * kEachByte;

inline EightCharacters load_eight(const char* text) {
    DoubleWord bytes;
    std::memcpy(&bytes, text, sizeof bytes);
    return __builtin_bswap64(bytes);
}

inline void store_eight(char* text, EightCharacters characters) {
    const DoubleWord bytes = __builtin_bswap64(characters);
    std::memcpy(text, &bytes, sizeof bytes);
}

/// The nibbles of a word, each in a byte of its own.
inline DoubleWord spread_nibbles(Word word) {
    DoubleWord bytes = word;
    bytes = (bytes | bytes << 16) & 0x0000FFFF0000FFFF;
    bytes = (bytes | bytes << 8) & 0x00FF00FF00FF00FF;
    return (bytes | bytes << 4) & 0x0F0F0F0F0F0F0F0F;
}

/// The other way.
inline Word gather_nibbles(DoubleWord bytes) {
    bytes = (bytes | bytes >> 4) & 0x00FF00FF00FF00FF;
    bytes = (bytes | bytes >> 8) & 0x0000FFFF0000FFFF;
    return static_cast<Word>(bytes | bytes >> 16);
}

/// The low 8 bits, each as the 0 or 1 of a byte of its own.
inline DoubleWord spread_bits(Word bits) {
    const DoubleWord bytes = (bits & 0xFFU) * kEachByte & 0x8040201008040201;
    return (bytes + 0x7F * kEachByte) >> 7 & kEachByte;
}

/// The other way.
inline Word gather_bits(DoubleWord bytes) { return static_cast<Word>(bytes * 0x0102040810204080 >> 56); }

/// Characters with those replaced by 'X' whose byte in `unknown` is 1 and not 0.
inline EightCharacters blend_x(EightCharacters characters, DoubleWord unknown) {
    return (characters & ~(unknown * 0xFF)) | unknown * DoubleWord{'X'};
}

/// The 8 hexadecimal digits of `value`; 'X' for a digit with a bit of `unknown`.
inline EightCharacters hexadecimal_digits(Word value, Word unknown) {
    const DoubleWord nibbles = spread_nibbles(value);
    const DoubleWord above_nine = (nibbles + 6 * kEachByte) >> 4 & kEachByte;
    const EightCharacters digits = nibbles + '0' * kEachByte + above_nine * ('A' - '0' - 10);
    if (unknown == 0) return digits;
    const Word any = (unknown | unknown >> 1 | unknown >> 2 | unknown >> 3) & 0x11111111U;
    return blend_x(digits, spread_nibbles(any));
}

/// The low 8 binary digits of `value`; 'X' for a bit of `unknown`.
inline EightCharacters binary_digits(Word value, Word unknown) {
    return blend_x('0' * kEachByte + spread_bits(value), spread_bits(unknown));
}

/// Reads 8 hexadecimal digits of either case; false when some character is not a digit.
inline bool read_hexadecimal_digits(EightCharacters characters, Word& value) {
    // On seven bits, adding 0x80 - c carries into the top bit of a byte from the character c up.
    const DoubleWord low = characters & ~kTopBits;
    const DoubleWord lower_case = low | 0x20 * kEachByte;
    const DoubleWord number = (low + (0x80 - '0') * kEachByte) & ~(low + (0x7F - '9') * kEachByte);
    const DoubleWord letter = (lower_case + (0x80 - 'a') * kEachByte) & ~(lower_case + (0x7F - 'f') * kEachByte);
    const DoubleWord letters = letter >> 7 & kEachByte;
    value = gather_nibbles((low & 0x0F * kEachByte) + 9 * letters);
    return ((number | letter) & ~characters & kTopBits) == kTopBits;
}

/// What binary digits say: which bits are given as 0 or 1, and which of those as 1.
struct BinaryDigits {
    Word given;
    Word ones;
};

/// Reads 8 binary digits.
inline BinaryDigits read_binary_digits(EightCharacters characters) {
    const DoubleWord bits = characters ^ '0' * kEachByte;
    const DoubleWord others = bits & 0xFE * kEachByte;
    const DoubleWord neither = ((others & ~kTopBits) + 0x7F * kEachByte) | others;
    const DoubleWord given = ~neither >> 7 & kEachByte;
    return {gather_bits(given), gather_bits(bits & given)};
}

/// Puts the digits of one word, or of its lowest part, into effect. Whether that leaves it without an unknown bit.
inline bool set_given(Word& value, Word& unknown, BinaryDigits read) {
    value = (value & ~read.given) | read.ones;
    unknown &= ~read.given;
    return read.given != 0 && unknown == 0;
}

/// What strtoul makes of up to eight characters: signs, blanks, a prefix, or fewer digits.
Word read_leniently(const char* characters, std::size_t count);

/// A word from its chunk of 8 characters.
inline Word read_chunk(const char* characters) {
    Word value;
    return read_hexadecimal_digits(load_eight(characters), value) ? value : read_leniently(characters, 8);
}

// ---- loops over `size` whole words, written for each kind of machine ----

/// The 8 hexadecimal digits of every word, the highest word first.
void write_hexadecimal_words(char* text, const Word* value, const Word* unknown, std::size_t size);
/// The 32 binary digits of every word, the highest word first.
void write_binary_words(char* text, const Word* value, const Word* unknown, std::size_t size);
/// Every word from its chunk of 8 characters, the highest word first; all of them known.
void read_hexadecimal_words(Word* value, Word* unknown, const char* text, std::size_t size);
/// Every word from its 32 characters, the highest word first; answers as read_binary does.
bool read_binary_words(Word* value, Word* unknown, const char* text, std::size_t size);

}  // namespace kval::words
