// Words to digits and back, eight characters side by side in one 64-bit register.
#include "words/digits.h"

namespace kval::words {
namespace {

constexpr DoubleWord kEachByte = 0x0101010101010101;

// The nibbles of a word, each in a byte of its own: nibble 0 in the lowest.
DoubleWord spread_nibbles(Word word) {
    DoubleWord bytes = word;
    bytes = (bytes | bytes << 16) & 0x0000FFFF0000FFFF;
    bytes = (bytes | bytes << 8) & 0x00FF00FF00FF00FF;
    return (bytes | bytes << 4) & 0x0F0F0F0F0F0F0F0F;
}

// The low 8 bits, each as the 0 or 1 of a byte of its own: bit 7 in the lowest byte, so that it is stored first.
DoubleWord spread_bits(Word bits) {
    const DoubleWord bytes = (bits & 0xFFU) * kEachByte & 0x0102040810204080;
    return (bytes + 0x7F * kEachByte) >> 7 & kEachByte;
}

// Characters with those replaced by 'X' whose byte in `unknown` is 1 and not 0.
DoubleWord blend_x(DoubleWord characters, DoubleWord unknown) {
    const DoubleWord cover = unknown * 0xFF;
    return (characters & ~cover) | (unknown * static_cast<DoubleWord>('X'));
}

// A value for every character: 0 to 15 for a hexadecimal digit, 16 for any other.
constexpr unsigned digit_value(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
    return 16;
}

}  // namespace

void write_hexadecimal(char* digits, Word value, Word unknown) {
    const DoubleWord nibbles = spread_nibbles(value);
    const DoubleWord above_nine = (nibbles + 6 * kEachByte) >> 4 & kEachByte;
    DoubleWord characters = nibbles + '0' * kEachByte + above_nine * ('A' - '0' - 10);
    if (unknown != 0) {
        const Word any = (unknown | unknown >> 1 | unknown >> 2 | unknown >> 3) & 0x11111111U;
        characters = blend_x(characters, spread_nibbles(any));
    }
    characters = __builtin_bswap64(characters);
    std::memcpy(digits, &characters, sizeof characters);
}

void write_binary(char* digits, Word value, Word unknown) {
    for (unsigned low = kWordBits; low > 0; digits += 8) {
        low -= 8;
        const DoubleWord ones_and_zeros = '0' * kEachByte + spread_bits(value >> low);
        const DoubleWord characters = blend_x(ones_and_zeros, spread_bits(unknown >> low));
        std::memcpy(digits, &characters, sizeof characters);
    }
}

bool read_hexadecimal(const char* digits, std::size_t count, Word& value) {
    Word read = 0;
    unsigned seen = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned digit = digit_value(digits[i]);
        seen |= digit;
        read = read << 4 | digit;
    }
    value = read;
    return seen < 16;
}

BinaryDigits read_binary(const char* digits, std::size_t count) {
    BinaryDigits read{0, 0};
    for (std::size_t i = 0; i < count; ++i) {
        const Word one = digits[i] == '1' ? 1 : 0;
        const Word given = digits[i] == '0' ? 1 : one;
        read = {read.given << 1 | given, read.ones << 1 | one};
    }
    return read;
}

}  // namespace kval::words
