// The steps between a word and its digits against a reference that looks at one digit at a time.
#include "words/digits.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace {

using kval::words::Word;

const std::string kGuard = "#|";

// Words in runs of equal bits, single bits and all but one bit.
std::vector<Word> samples() {
    std::vector<Word> all = {0, 0xFFFFFFFF, 0x01234567, 0x89ABCDEF, 0xAAAAAAAA, 0x55555555};
    for (unsigned bit = 0; bit < 32; ++bit) {
        all.insert(all.end(), {Word{1} << bit, ~(Word{1} << bit)});
    }
    std::mt19937 random(61);
    for (int i = 0; i < 64; ++i) {
        const Word from = 0xFFFFFFFFU >> random() % 32;
        const Word to = 0xFFFFFFFFU << random() % 32;
        all.push_back(from ^ to);
    }
    return all;
}

// What the digits of `group` bits each must be.
std::string digits_of(Word value, Word unknown, unsigned group) {
    std::string text;
    for (unsigned at = 32; at > 0; at -= group) {
        const Word low_bits = (Word{1} << group) - 1;
        const bool is_x = (unknown >> (at - group) & low_bits) != 0;
        text += is_x ? 'X' : "0123456789ABCDEF"[value >> (at - group) & low_bits];
    }
    return text;
}

// What a kernel writes, with the guards on both sides; no terminator is written.
template <typename Kernel>
std::string written(Kernel kernel, Word value, Word unknown, std::size_t digits) {
    std::string text = kGuard + std::string(digits, '?') + kGuard;
    kernel(&text[kGuard.size()], value, unknown);
    return text;
}

TEST(WordsDigits, WriteHexadecimal) {
    for (const Word value : samples()) {
        for (const Word unknown : samples()) {
            ASSERT_EQ(written(kval::words::write_hexadecimal, value, unknown, 8),
                      kGuard + digits_of(value, unknown, 4) + kGuard);
        }
    }
}

TEST(WordsDigits, WriteBinary) {
    for (const Word value : samples()) {
        for (const Word unknown : samples()) {
            ASSERT_EQ(written(kval::words::write_binary, value, unknown, 32),
                      kGuard + digits_of(value, unknown, 1) + kGuard);
        }
    }
}

TEST(WordsDigits, WrittenByHand) {
    EXPECT_EQ(written(kval::words::write_hexadecimal, 0x89ABCDEF, 0, 8), "#|89ABCDEF#|");
    EXPECT_EQ(written(kval::words::write_hexadecimal, 0x01234567, 0x10008001, 8), "#|X123X56X#|");
    EXPECT_EQ(written(kval::words::write_binary, 0xF00F5000, 0x80000003, 32), "#|X11100000000111101010000000000XX#|");
}

TEST(WordsDigits, ReadHexadecimalOfEveryLengthAndBothCases) {
    for (const Word sample : samples()) {
        for (std::size_t count = 1; count <= 8; ++count) {
            const Word want = count == 8 ? sample : sample & ((Word{1} << 4 * count) - 1);
            std::string upper = digits_of(want, 0, 4).substr(8 - count);
            std::string lower = upper;
            for (char& digit : lower) {
                if (digit >= 'A') digit = static_cast<char>(digit - 'A' + 'a');
            }
            for (const std::string& digits : {upper, lower}) {
                Word value = ~want;
                ASSERT_TRUE(kval::words::read_hexadecimal(digits.data(), count, value)) << digits;
                ASSERT_EQ(value, want) << digits;
            }
        }
    }
}

// Signs, blanks, prefixes and the letters of unknown bits are no digits, wherever they stand.
TEST(WordsDigits, ReadHexadecimalRefusesEveryOtherCharacter) {
    const std::string digits = "0123456789ABCDEFabcdef";
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const bool is_digit = code != 0 && digits.find(character) != std::string::npos;
        for (std::size_t count = 1; count <= 8; ++count) {
            for (std::size_t at = 0; at < count; ++at) {
                std::string text(count, '7');
                text[at] = character;
                Word value = 0;
                ASSERT_EQ(kval::words::read_hexadecimal(text.data(), count, value), is_digit)
                    << "character " << code << " at " << at << " of " << count;
            }
        }
    }
}

TEST(WordsDigits, ReadBinaryOfEveryLength) {
    for (const Word sample : samples()) {
        for (std::size_t count = 1; count <= 32; ++count) {
            const Word all = count == 32 ? 0xFFFFFFFF : (Word{1} << count) - 1;
            const std::string digits = digits_of(sample & all, 0, 1).substr(32 - count);
            const kval::words::BinaryDigits read = kval::words::read_binary(digits.data(), count);
            ASSERT_EQ(read.given, all) << digits;
            ASSERT_EQ(read.ones, sample & all) << digits;
        }
    }
}

TEST(WordsDigits, ReadBinaryLeavesOutWhatIsX) {
    for (const Word value : samples()) {
        for (const Word unknown : samples()) {
            const std::string digits = digits_of(value, unknown, 1);
            const kval::words::BinaryDigits read = kval::words::read_binary(digits.data(), 32);
            ASSERT_EQ(read.given, ~unknown) << digits;
            ASSERT_EQ(read.ones, value & ~unknown) << digits;
        }
    }
}

TEST(WordsDigits, ReadBinaryTakesOnlyZeroAndOneAsGiven) {
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const bool is_digit = character == '0' || character == '1';
        for (std::size_t count = 1; count <= 32; ++count) {
            for (std::size_t at = 0; at < count; ++at) {
                std::string text(count, '1');
                text[at] = character;
                const Word bit = Word{1} << (count - 1 - at);
                const Word all = count == 32 ? 0xFFFFFFFF : (Word{1} << count) - 1;
                const kval::words::BinaryDigits read = kval::words::read_binary(text.data(), count);
                ASSERT_EQ(read.given, is_digit ? all : all & ~bit) << "character " << code << " at " << at;
                ASSERT_EQ(read.ones, character == '1' ? all : all & ~bit) << "character " << code << " at " << at;
            }
        }
    }
}

}  // namespace
