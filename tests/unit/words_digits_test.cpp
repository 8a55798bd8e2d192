// Words to digits and back against references that look at one digit at a time.
#include "words/digits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "words_support.h"

namespace {

using kval::words::Word;
using words_support::guarded;
using words_support::runs;
using words_support::Words;

// Every number of words that a step may leave over, after several of the widest steps.
constexpr std::size_t kManyWords = 21;
constexpr Word kAll = 0xFFFFFFFF;
const std::string kGuard = "#|";

// ---- writing ----

// X bits of several kinds: none, some in every word, in runs, in one word, everywhere.
std::vector<Words> unknown_samples(std::mt19937& random, std::size_t size) {
    Words some(size);
    for (Word& word : some) word = static_cast<Word>(random() & random() & random());
    Words one(size, 0);
    one[random() % size] = Word{1} << random() % 32;
    return {Words(size, 0), some, runs(random, size), one, Words(size, kAll)};
}

// What the lowest `digits` digits of `group` bits each must be.
std::string digits_of(const Words& value, const Words& unknown, unsigned group, std::size_t digits) {
    const Word low_bits = (Word{1} << group) - 1;
    std::string text;
    for (std::size_t digit = digits; digit-- > 0;) {
        const std::size_t bit = digit * group;
        const bool is_x = (unknown[bit / 32] >> bit % 32 & low_bits) != 0;
        text += is_x ? 'X' : "0123456789ABCDEF"[value[bit / 32] >> bit % 32 & low_bits];
    }
    return text;
}

// What a kernel writes, with the guards on both sides; no terminator is written.
template <typename Kernel>
std::string written(Kernel kernel, const Words& value, const Words& unknown, std::size_t digits, Word top_mask = kAll) {
    std::string text = kGuard + std::string(digits, '?') + kGuard;
    kernel(&text[kGuard.size()], digits, value.data(), unknown.data(), top_mask);
    return text;
}

// Every width up to many words: `group` bits a digit, and all X marks above the width to be left out.
template <typename Kernel>
void check_writing(Kernel kernel, unsigned group) {
    std::mt19937 random(61);
    for (std::size_t width = 1; width <= 32 * kManyWords; ++width) {
        const std::size_t size = (width + 31) / 32;
        const std::size_t digits = (width + group - 1) / group;
        const Word top_mask = kAll >> (32 * size - width);
        const Words value = runs(random, size);
        for (const Words& unknown : unknown_samples(random, size)) {
            Words shown = unknown;
            shown.back() &= top_mask;
            ASSERT_EQ(written(kernel, value, unknown, digits, top_mask),
                      kGuard + digits_of(value, shown, group, digits) + kGuard)
                << width << " bits";
        }
    }
}

TEST(WordsDigits, WriteHexadecimal) { check_writing(kval::words::write_hexadecimal, 4); }

TEST(WordsDigits, WriteBinary) { check_writing(kval::words::write_binary, 1); }

TEST(WordsDigits, WriteEveryHexadecimalDigitAtEveryPlace) {
    for (Word digit = 0; digit < 16; ++digit) {
        for (std::size_t at = 0; at < 8 * kManyWords; ++at) {
            Words value(kManyWords, 0x88888888);
            value[at / 8] = (value[at / 8] & ~(Word{15} << at % 8 * 4)) | digit << at % 8 * 4;
            std::string expected(8 * kManyWords, '8');
            expected[expected.size() - 1 - at] = "0123456789ABCDEF"[digit];
            const Words known(kManyWords, 0);
            ASSERT_EQ(written(kval::words::write_hexadecimal, value, known, expected.size()),
                      kGuard + expected + kGuard);
        }
    }
}

TEST(WordsDigits, WrittenByHand) {
    using kval::words::write_binary;
    using kval::words::write_hexadecimal;
    EXPECT_EQ(written(write_hexadecimal, {0x89ABCDEF}, {0}, 8), "#|89ABCDEF#|");
    EXPECT_EQ(written(write_hexadecimal, {0x89ABCDEF}, {0}, 3), "#|DEF#|");
    EXPECT_EQ(written(write_hexadecimal, {0x01234567}, {0x10008001}, 8), "#|X123X56X#|");
    EXPECT_EQ(written(write_hexadecimal, {0x89ABCDEF, 0x01234567}, {0x80000000, 1}, 16), "#|0123456XX9ABCDEF#|");
    EXPECT_EQ(written(write_hexadecimal, {0x3FFFFFFF}, {0xC0000000}, 8, 0x3FFFFFFF), "#|3FFFFFFF#|");
    EXPECT_EQ(written(write_hexadecimal, {0}, {0}, 0), "#|#|");
    EXPECT_EQ(written(write_binary, {0xF00F5000}, {0x80000003}, 32), "#|X11100000000111101010000000000XX#|");
    EXPECT_EQ(written(write_binary, {0xF00F5000, 2}, {0, 1}, 34), "#|1X11110000000011110101000000000000#|");
    EXPECT_EQ(written(write_binary, {0}, {0}, 0), "#|#|");
}

// ---- reading hexadecimal text ----

struct Read {
    Words value;
    Words unknown;
};

bool operator==(const Read& a, const Read& b) { return a.value == b.value && a.unknown == b.unknown; }

std::size_t chunks_of(std::size_t length, std::size_t digits_per_word) {
    return (length + digits_per_word - 1) / digits_per_word;
}

// Chunks of eight from the right, each by the rules of strtoul.
Read expected_of_hexadecimal(std::string text) {
    Read expected;
    while (!text.empty()) {
        const std::size_t from = text.size() < 8 ? 0 : text.size() - 8;
        expected.value.push_back(static_cast<Word>(std::strtoul(text.substr(from).c_str(), nullptr, 16)));
        expected.unknown.push_back(0);
        text.erase(from);
    }
    return {guarded(expected.value), guarded(expected.unknown)};
}

// The text lies in a block of exactly its length, without a terminator.
Read read_hexadecimal(const std::string& text) {
    const std::vector<char> exact(text.begin(), text.end());
    const Words before(chunks_of(text.size(), 8), 0xA5A5A5A5);
    Read read{guarded(before), guarded(before)};
    kval::words::read_hexadecimal(&read.value[1], &read.unknown[1], exact.data(), exact.size());
    return read;
}

TEST(WordsDigits, ReadHexadecimalOfEveryLengthAndBothCases) {
    std::mt19937 random(62);
    for (std::size_t length = 0; length <= 8 * kManyWords; ++length) {
        const Words value = runs(random, length / 8 + 1);
        const std::string upper = digits_of(value, Words(value.size(), 0), 4, length);
        std::string lower = upper;
        std::string mixed = upper;
        for (std::size_t i = 0; i < length; ++i) {
            lower[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(lower[i])));
            mixed[i] = random() % 2 == 0 ? lower[i] : upper[i];
        }
        const Read expected = expected_of_hexadecimal(upper);
        for (const std::string& text : {upper, lower, mixed}) {
            ASSERT_TRUE(read_hexadecimal(text) == expected) << text;
        }
    }
}

// Signs, blanks, prefixes and the letters of unknown bits: whatever stands where concerns its own chunk only.
TEST(WordsDigits, ReadHexadecimalWithEveryOtherCharacter) {
    for (int code = 0; code < 256; ++code) {
        for (const std::size_t length : {1, 2, 7, 8, 9, 15, 16, 17, 24, 31, 63, 64, 72, 93, 131}) {
            for (std::size_t at = 0; at < length; ++at) {
                std::string text(length, '7');
                text[at] = static_cast<char>(code);
                ASSERT_TRUE(read_hexadecimal(text) == expected_of_hexadecimal(text))
                    << "character " << code << " at " << at << " of " << length;
            }
            const std::string alike(length, static_cast<char>(code));
            ASSERT_TRUE(read_hexadecimal(alike) == expected_of_hexadecimal(alike))
                << length << " times character " << code;
        }
    }
}

TEST(WordsDigits, ReadHexadecimalByHand) {
    const struct {
        const char* text;
        Words value;
    } rows[] = {
        {"", {}},
        {"f", {0xF}},
        {"0123456789abcDEF", {0x89ABCDEF, 0x01234567}},
        {"-1", {0xFFFFFFFF}},
        {"5-0000001", {0xFFFFFFFF, 5}},
        {"1X2345678", {0, 1}},
        {"12345678 0x1X345", {0x1, 0x12345678}},
    };
    for (const auto& row : rows) {
        const Words known(row.value.size(), 0);
        EXPECT_TRUE(read_hexadecimal(row.text) == (Read{guarded(row.value), guarded(known)})) << row.text;
    }
}

// ---- reading binary text ----

struct ReadBits {
    Read words;
    bool some_known;
};

// Every '0' and '1' sets its bit and makes it known.
ReadBits expected_of_binary(const std::string& text, Words value, Words unknown) {
    Words given(value.size(), 0);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t place = text.size() - 1 - i;
        const Word bit = Word{1} << place % 32;
        if (text[i] != '0' && text[i] != '1') continue;
        value[place / 32] = text[i] == '1' ? value[place / 32] | bit : value[place / 32] & ~bit;
        unknown[place / 32] &= ~bit;
        given[place / 32] |= bit;
    }
    bool some_known = false;
    for (std::size_t i = 0; i < value.size(); ++i) some_known |= given[i] != 0 && unknown[i] == 0;
    return {{guarded(value), guarded(unknown)}, some_known};
}

void check_reading_binary(const std::string& text, const Words& value, const Words& unknown) {
    const std::vector<char> exact(text.begin(), text.end());
    Read read{guarded(value), guarded(unknown)};
    const bool some_known = kval::words::read_binary(&read.value[1], &read.unknown[1], exact.data(), exact.size());
    const ReadBits expected = expected_of_binary(text, value, unknown);
    ASSERT_TRUE(read == expected.words) << text;
    ASSERT_EQ(some_known, expected.some_known) << text;
}

std::string draw_text(std::mt19937& random, std::size_t length, const std::string& characters) {
    std::string text(length, ' ');
    std::generate(text.begin(), text.end(), [&] { return characters[random() % characters.size()]; });
    return text;
}

TEST(WordsDigits, ReadBinaryOfEveryLength) {
    std::mt19937 random(63);
    for (std::size_t length = 0; length <= 32 * kManyWords; ++length) {
        const std::size_t size = chunks_of(length, 32);
        for (const char* characters : {"01", "01X", "-", "X", "0X-/2x1 "}) {
            const std::string text = draw_text(random, length, characters);
            check_reading_binary(text, runs(random, size), Words(size, 0));
            check_reading_binary(text, runs(random, size), runs(random, size));
            check_reading_binary(text, runs(random, size), Words(size, kAll));
        }
    }
}

TEST(WordsDigits, ReadBinaryTakesOnlyZeroAndOneAsGiven) {
    for (int code = 0; code < 256; ++code) {
        for (const std::size_t length : {1, 8, 31, 32, 33, 40, 300}) {
            const std::size_t size = chunks_of(length, 32);
            for (std::size_t at = 0; at < length; ++at) {
                std::string text(length, '1');
                text[at] = static_cast<char>(code);
                check_reading_binary(text, Words(size, 0), Words(size, kAll));
            }
            check_reading_binary(std::string(length, static_cast<char>(code)), Words(size, 0), Words(size, kAll));
        }
    }
}

// An X in one word of many does not hide that the others are known, and an X in each of them does.
TEST(WordsDigits, ReadBinaryTellsOfAWordWithoutUnknownBits) {
    for (std::size_t size = 1; size <= kManyWords; ++size) {
        std::string all_unknown;
        for (std::size_t i = 0; i < size; ++i) all_unknown += std::string(31, '0') + "X";
        Words value(size, 0);
        Words unknown(size, kAll);
        EXPECT_FALSE(kval::words::read_binary(value.data(), unknown.data(), all_unknown.data(), all_unknown.size()));
        EXPECT_EQ(unknown, Words(size, 1));
        for (std::size_t known = 0; known < size; ++known) {
            std::string text = all_unknown;
            text[32 * known + 31] = '0';
            unknown.assign(size, kAll);
            EXPECT_TRUE(kval::words::read_binary(value.data(), unknown.data(), text.data(), text.size()));
        }
    }
}

}  // namespace
