// Words to digits and back: the top word, which the text may hold in part only; the words below it are whole.
#include "words/digits.h"

#include <algorithm>
#include <cstdlib>

#include "words/digits_steps.h"

namespace kval::words {
namespace {

constexpr std::size_t kHexadecimalDigits = 8;  // of a word
constexpr std::size_t kBinaryDigits = 32;

// Stores the last `count` of eight characters.
void store_last(char* text, EightCharacters characters, std::size_t count) {
    if (count == 8) {
        store_eight(text, characters);
        return;
    }
    // The rightmost part lies in the lowest bytes.
    if ((count & 4) != 0) {
        const std::uint32_t bytes = __builtin_bswap32(static_cast<std::uint32_t>(characters));
        std::memcpy(text + count - 4, &bytes, sizeof bytes);
        characters >>= 32;
    }
    if ((count & 2) != 0) {
        const std::uint16_t bytes = __builtin_bswap16(static_cast<std::uint16_t>(characters));
        std::memcpy(text + (count & 1), &bytes, sizeof bytes);
        characters >>= 16;
    }
    if ((count & 1) != 0) text[0] = static_cast<char>(characters);
}

// 1 to 8 characters, with '0' for those that are missing on the left.
EightCharacters load_last(const char* text, std::size_t count) {
    if (count == 8) return load_eight(text);
    EightCharacters characters = '0' * kEachByte;
    if ((count & 1) != 0) characters = characters << 8 | static_cast<unsigned char>(text[0]);
    if ((count & 2) != 0) {
        std::uint16_t bytes;
        std::memcpy(&bytes, text + (count & 1), sizeof bytes);
        characters = characters << 16 | __builtin_bswap16(bytes);
    }
    if ((count & 4) != 0) {
        std::uint32_t bytes;
        std::memcpy(&bytes, text + count - 4, sizeof bytes);
        characters = characters << 32 | __builtin_bswap32(bytes);
    }
    return characters;
}

// The 1 to 8 digits of a top word. Where `words` whole ones follow there is room for eight characters, of which those
// too many are written over afterwards.
void store_top(char* text, EightCharacters characters, std::size_t count, std::size_t words) {
    if (words > 0) {
        store_eight(text, characters << 8 * (8 - count));
    } else {
        store_last(text, characters, count);
    }
}

// The 1 to 7 characters of a top word, as load_last(). Where `words` whole ones follow there are eight to be read.
EightCharacters load_top(const char* text, std::size_t count, std::size_t words) {
    if (words == 0) return load_last(text, count);
    return load_eight(text) >> 8 * (8 - count) | '0' * kEachByte << 8 * count;
}

// 1 to 31 binary digits.
BinaryDigits read_top_binary(const char* text, std::size_t count) {
    BinaryDigits top{0, 0};
    const Word wanted = (Word{1} << count) - 1;
    while (count > 0) {
        const std::size_t step = (count - 1) % 8 + 1;
        const BinaryDigits read = read_binary_digits(load_last(text, step));
        top = {top.given << 8 | read.given, top.ones << 8 | read.ones};
        text += step;
        count -= step;
    }
    return {top.given & wanted, top.ones & wanted};
}

// How many digits the top word has where it is not whole, else none, and how many whole words lie below it.
struct Split {
    std::size_t top;
    std::size_t words;
};

Split split_up(std::size_t digits, std::size_t digits_per_word) {
    return {digits % digits_per_word, digits / digits_per_word};
}

}  // namespace

void write_hexadecimal(char* text, std::size_t digits, const Word* value, const Word* unknown, Word top_mask) {
    if (digits == 0) return;
    Split split = split_up(digits, kHexadecimalDigits);
    if (split.top == 0 && top_mask != ~Word{0}) split = {kHexadecimalDigits, split.words - 1};
    if (split.top > 0) {
        const Word top_unknown = unknown[split.words] & top_mask;
        store_top(text, hexadecimal_digits(value[split.words], top_unknown), split.top, split.words);
    }
    if (split.words > 0) write_hexadecimal_words(text + split.top, value, unknown, split.words);
}

void write_binary(char* text, std::size_t digits, const Word* value, const Word* unknown, Word top_mask) {
    const Split split = split_up(digits, kBinaryDigits);
    for (std::size_t rest = split.top; rest > 0;) {
        const std::size_t count = (rest - 1) % 8 + 1;
        rest -= count;
        const Word top_unknown = unknown[split.words] & top_mask;
        store_last(text, binary_digits(value[split.words] >> rest, top_unknown >> rest), count);
        text += count;
    }
    if (split.words > 0) write_binary_words(text, value, unknown, split.words);
}

void read_hexadecimal(Word* value, Word* unknown, const char* text, std::size_t length) {
    const Split split = split_up(length, kHexadecimalDigits);
    if (split.top > 0) {
        Word& top = value[split.words];
        const EightCharacters characters = load_top(text, split.top, split.words);
        if (!read_hexadecimal_digits(characters, top)) top = read_leniently(text, split.top);
        unknown[split.words] = 0;
    }
    if (split.words > 0) read_hexadecimal_words(value, unknown, text + split.top, split.words);
}

bool read_binary(Word* value, Word* unknown, const char* text, std::size_t length) {
    const Split split = split_up(length, kBinaryDigits);
    bool some_known = false;
    if (split.top > 0) {
        some_known = set_given(value[split.words], unknown[split.words], read_top_binary(text, split.top));
    }
    if (split.words > 0) some_known |= read_binary_words(value, unknown, text + split.top, split.words);
    return some_known;
}

Word read_leniently(const char* characters, std::size_t count) {
    char chunk[kHexadecimalDigits + 1];
    std::copy_n(characters, count, chunk);
    chunk[count] = '\0';
    return static_cast<Word>(std::strtoul(chunk, nullptr, 16));
}

}  // namespace kval::words
