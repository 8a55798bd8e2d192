// Tests of printing and parsing: digits, X digits, mirrored flag letters, the cached text, and odd texts of every kind.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "kval.h"
#include "unit_support.h"

namespace {

using namespace std::string_literals;  // "..."s holds zero bytes

// ---- printing ----

TEST(Print, DigitsWithLeadingZeros) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        const char* hex;
        const char* bin;
    } rows[] = {
        {"8 bits", from_words(8, {0x5A}), "5A", "01011010"},
        {"zero", from_words(8, {0}), "00", "00000000"},
        {"one bit, 0", from_words(1, {0}), "0", "0"},
        {"one bit, 1", from_words(1, {1}), "1", "1"},
        {"4 bits", from_words(4, {0xA}), "A", "1010"},
        {"5 bits take two digits", from_words(5, {0x15}), "15", "10101"},
        {"10 bits take three digits", from_words(10, {0x3FF}), "3FF", "1111111111"},
        {"32 bits", from_words(32, {0xDEADBEEF}), "DEADBEEF", "11011110101011011011111011101111"},
        {"33 bits", from_words(33, {0x00000005, 1}), "100000005", "100000000000000000000000000000101"},
        {"36 bits", from_words(36, {0x00000001, 0xA}), "A00000001", "101000000000000000000000000000000001"},
        {"64 bits, every digit", from_words(64, {0x89ABCDEF, 0x01234567}), "0123456789ABCDEF",
         "0000000100100011010001010110011110001001101010111100110111101111"},
        {"65 bits", from_words(65, {2, 0x80000000, 1}), "18000000000000002",
         "11000000000000000000000000000000000000000000000000000000000000010"},
        {"flag X alone does not show", from_words(8, {0x5A}, {}, true), "5A", "01011010"},
        {"an X digit, without flag X: the x-mask alone counts (required)", from_words(12, {0}, {0x20}), "0X0",
         "000000X00000"},
        {"an X digit with flag X", from_words(12, {0xFFF}, {0x20}, true), "FXF", "111111X11111"},
        {"X in the partial top digit", from_words(10, {0}, {0x200}), "X00", "X000000000"},
        {"X in the only bit", from_words(1, {1}, {1}), "X", "X"},
        {"X on both sides of a word border", from_words(40, {0, 0}, {0x80000000, 1}), "0XX0000000",
         "0000000XX0000000000000000000000000000000"},
        {"X in the top bit of 65", from_words(65, {0, 0, 0}, {0, 0, 1}), "X0000000000000000",
         "X0000000000000000000000000000000000000000000000000000000000000000"},
        {"the top digit shows stored bits above the width (required)", from_words(10, {0xF7F}), "F7F", "1101111111"},
        {"but no digits beyond it", from_words(8, {0xFFFFF5A}), "5A", "01011010"},
        {"the top digit shows stored bits above the width, wide (required)", from_words(33, {0, 0xFE}), "E00000000",
         "000000000000000000000000000000000"},
        {"X marks above the width do not show", from_words(10, {0x3FF}, {0xC00}), "3FF", "1111111111"},
        {"X marks above the width do not show, wide", from_words(33, {0, 1}, {0, 0xE}), "100000000",
         "100000000000000000000000000000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const KVAL_UINTEGER v(row.value);
        EXPECT_STREQ(v.as_hex_string(), row.hex);
        EXPECT_STREQ(v.as_bin_string(), row.bin);
        EXPECT_EQ(printed(v), printed(row.value)) << "printing changes nothing but the text";
    }
}

TEST(Print, FlagLetters) {
    const struct {
        const char* name;
        const char* flags;
        char letter;
    } rows[] = {
        {"high impedance", "Z", 'Z'},
        {"weak low", "L", 'L'},
        {"weak high", "H", 'H'},
        {"Z comes before weak low and weak high", "ZLH", 'Z'},
        {"Z comes before weak high", "ZH", 'Z'},
        {"weak low comes before weak high", "LH", 'L'},
    };
    for (const auto& row : rows) {
        for (const unsigned width : {1U, 8U, 10U, 32U, 33U, 64U, 65U}) {
            SCOPED_TRACE(std::string(row.name) + ", " + std::to_string(width) + " bits");
            const KVAL_UINTEGER v = marked(KVAL_UINTEGER(0x5A, width), row.flags);
            EXPECT_EQ(v.as_hex_string(), std::string((width + 3) / 4, row.letter));
            EXPECT_EQ(v.as_bin_string(), std::string(width, row.letter));
        }
    }
}

// Digit i of n, counted from the right, goes to place n-1-i when it is X, but to place i when it is a flag letter. Of
// two digits that meet at a place the later wins. A place that none reaches holds a zero byte, which ends the text.
TEST(Print, MirroredFlagLettersMeetXDigits_Required) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        std::string hex;  // every byte before the last, which is 0
    } rows[] = {
        {"2 digits, X on the right: overwritten, and the text is empty", marked(from_words(8, {0}, {0x01}), "Z"),
         "\0Z"s},
        {"2 digits, X on the left: overwrites, and the text ends", marked(from_words(8, {0}, {0x10}), "Z"), "X\0"s},
        {"2 digits, both X", marked(from_words(8, {0}, {0x11}), "Z"), "XX"s},
        {"3 digits, X on the right: the text is empty", marked(from_words(12, {0}, {0x008}), "L"), "\0LL"s},
        {"3 digits, X in the middle meets no other", marked(from_words(12, {0}, {0x020}), "L"), "LXL"s},
        {"3 digits, X on the left: the text ends early", marked(from_words(12, {0}, {0x100}), "L"), "XL\0"s},
        {"3 digits, X on both ends", marked(from_words(12, {0}, {0x101}), "L"), "XLX"s},
        {"3 digits, X on the right and in the middle", marked(from_words(12, {0}, {0x011}), "L"), "\0XL"s},
        {"3 digits, X on the left and in the middle", marked(from_words(12, {0}, {0x110}), "L"), "XX\0"s},
        {"4 digits, X second from the right: a hole", marked(from_words(16, {0}, {0x0010}), "H"), "H\0HH"s},
        {"4 digits, X second from the left: a hole", marked(from_words(16, {0}, {0x0100}), "H"), "HX\0H"s},
        {"1 digit, X", marked(from_words(3, {0}, {0x4}), "H"), "X"s},
        {"a partial top digit", marked(from_words(10, {0}, {0x200}), "Z"), "XZ\0"s},
        {"32 bits, X on the right", marked(from_words(32, {0}, {1}), "Z"), "\0ZZZZZZZ"s},
        {"32 bits, X on the left", marked(from_words(32, {0}, {0x80000000}), "Z"), "XZZZZZZ\0"s},
        {"33 bits, X in the middle", marked(from_words(33, {0, 0}, {0x00010000, 0}), "Z"), "ZZZZXZZZZ"s},
        {"33 bits, X on the left", marked(from_words(33, {0, 0}, {0, 1}), "L"), "XLLLLLLL\0"s},
        {"64 bits, X in the lowest digit of word 1", marked(from_words(64, {0, 0}, {0, 1}), "H"), "HHHHHHHX\0HHHHHHH"s},
        {"65 bits, X on the right", marked(from_words(65, {0, 0, 0}, {1, 0, 0}), "Z"), "\0ZZZZZZZZZZZZZZZZ"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(std::string(row.value.as_hex_string(), row.hex.size() + 1), row.hex + "\0"s);
    }
}

TEST(Print, MirroredFlagLettersMeetXBits_Required) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        std::string bin;  // every byte before the last, which is 0
    } rows[] = {
        {"2 bits, X on the right: the text is empty", marked(from_words(2, {0}, {1}), "Z"), "\0Z"s},
        {"2 bits, X on the left", marked(from_words(2, {0}, {2}), "Z"), "X\0"s},
        {"3 bits, X in the middle", marked(from_words(3, {0}, {2}), "L"), "LXL"s},
        {"3 bits, X on the left", marked(from_words(3, {0}, {4}), "L"), "XL\0"s},
        {"4 bits, X second from the right", marked(from_words(4, {0}, {2}), "H"), "H\0HH"s},
        {"4 bits, X second from the left", marked(from_words(4, {0}, {4}), "H"), "HX\0H"s},
        {"4 bits, all X", marked(from_words(4, {0}, {0xF}), "ZLH"), "XXXX"s},
        {"33 bits, X in the middle", marked(from_words(33, {0, 0}, {0x10000, 0}), "Z"),
         "ZZZZZZZZZZZZZZZZXZZZZZZZZZZZZZZZZ"s},
        {"33 bits, X on the left", marked(from_words(33, {0, 0}, {0, 1}), "Z"), "XZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ\0"s},
        {"33 bits, X on the right", marked(from_words(33, {0, 0}, {1, 0}), "Z"), "\0ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(std::string(row.value.as_bin_string(), row.bin.size() + 1), row.bin + "\0"s);
    }
}

// The texts as the rule builds them, digit by digit, for widths with every number of digits left over from long steps.

struct Texts {
    std::string hex;
    std::string bin;
};

Texts texts_by_the_rule(const KVAL_UINTEGER& v, char letter) {
    const auto digits = [&](unsigned group, int nibble) {
        const unsigned count = (v.bitwidth() + group - 1) / group;
        std::string text(count, '\0');
        for (unsigned i = 0; i < count; ++i) {
            const unsigned word = v.get_uvalue_at(static_cast<int>(i * group / 32));
            const char digit = "0123456789ABCDEF"[word >> i * group % 32 & ((1U << group) - 1)];
            if (v.is_x(static_cast<int>(i), nibble)) {
                text[count - 1 - i] = 'X';
            } else if (letter != '\0') {
                text[i] = letter;
            } else {
                text[count - 1 - i] = digit;
            }
        }
        return text;
    };
    return {digits(4, 1), digits(1, 0)};
}

void check_texts(const KVAL_UINTEGER& v, char letter) {
    const Texts expected = texts_by_the_rule(v, letter);
    ASSERT_EQ(std::string(v.as_hex_string(), expected.hex.size() + 1), expected.hex + '\0') << printed(v);
    ASSERT_EQ(std::string(v.as_bin_string(), expected.bin.size() + 1), expected.bin + '\0') << printed(v);
}

TEST(Print, EveryWidthWithAndWithoutXAndFlags) {
    std::mt19937 random(67);
    for (unsigned width = 1; width <= 600; ++width) {
        KVAL_UINTEGER known(0, width);
        KVAL_UINTEGER with_x(0, width);
        for (int i = 0; i < known.get_size(); ++i) {
            known.set_uvalue_at(i, static_cast<unsigned>(random()));
            with_x.set_uvalue_at(i, static_cast<unsigned>(random()));
            with_x.set_xmask_at(i, static_cast<unsigned>(random() & random() & random()));
        }
        if (width % 2 == 0) known.EnforceWidth();  // else both may hold bits above the width
        check_texts(known, '\0');
        check_texts(with_x, '\0');
        check_texts(marked(known, "Z"), 'Z');
        check_texts(marked(with_x, "L"), 'L');
    }
}

// ---- the cached text ----

TEST(Cache, ARepeatedRequestGivesTheSameText) {
    for (const unsigned width : {8U, 40U}) {
        const KVAL_UINTEGER v(0x5A, width);
        const char* const hex = v.as_hex_string();
        EXPECT_EQ(v.as_hex_string(), hex);
        const char* const bin = v.as_bin_string();
        EXPECT_EQ(v.as_bin_string(), bin);
    }
}

TEST(Cache, TheOtherKindReplacesIt) {
    KVAL_UINTEGER v(0, 1);
    v.set_value_from_hex_string("f5");
    EXPECT_STREQ(v.as_hex_string(), "f5");
    EXPECT_STREQ(v.as_bin_string(), "11110101");
    EXPECT_STREQ(v.as_hex_string(), "F5");

    v.set_value_from_bin_string("1-01");
    EXPECT_STREQ(v.as_bin_string(), "1-01");
    EXPECT_STREQ(v.as_hex_string(), "D");
    EXPECT_STREQ(v.as_bin_string(), "1101");
}

TEST(Cache, AChangeIsPrinted) {
    KVAL_UINTEGER v(0x5A, 8);
    EXPECT_STREQ(v.as_hex_string(), "5A");
    v.set_x(0);
    EXPECT_STREQ(v.as_hex_string(), "5X");
    v.force_z();
    EXPECT_EQ(std::string(v.as_hex_string(), 3), "\0Z\0"s);
    v = 0x33U;
    EXPECT_STREQ(v.as_hex_string(), "33");
    v.bitwidth(40);
    EXPECT_STREQ(v.as_hex_string(), "0000000033");
}

TEST(Cache, HoldsACopyOfTheParsedText) {
    char hex[] = "ab";
    char bin[] = "1-";
    KVAL_UINTEGER from_hex(0, 1);
    KVAL_UINTEGER from_bin(0, 1);
    from_hex.set_value_from_hex_string(hex);
    from_bin.set_value_from_bin_string(bin);
    std::memset(hex, '7', sizeof hex);
    std::memset(bin, '7', sizeof bin);
    EXPECT_STREQ(from_hex.as_hex_string(), "ab");
    EXPECT_STREQ(from_bin.as_bin_string(), "1-");
}

TEST(Cache, AParsedTextIsReturnedWhateverTheFlagsSay) {
    KVAL_UINTEGER v = marked(KVAL_UINTEGER(0, 8), "Z");
    v.set_value_from_hex_string("ab");
    EXPECT_STREQ(v.as_hex_string(), "ab");
    EXPECT_STREQ(v.as_bin_string(), "ZZZZZZZZ");
    EXPECT_STREQ(v.as_hex_string(), "ZZ");
}

// ---- parsing binary text ----

TEST(ParseBin, SetsWidthBitsAndXMarks) {
    const KVAL_UINTEGER compact = from_words(8, {0xAB});
    const struct {
        const char* name;
        KVAL_UINTEGER before;
        const char* text;
        const char* expected;
    } rows[] = {
        {"digits", compact, "0101", "4 bits 00000005"},
        {"one digit", compact, "0", "1 bits 00000000"},
        {"X between digits", from_words(8, {0}), "1X0", "3 bits 00000004 x 00000002 flags X"},
        {"X between digits, over an old bit 1", compact, "1X0", "3 bits 00000006 x 00000002 flags X"},
        {"X keeps the value bit underneath", compact, "X1X1", "4 bits 0000000F x 0000000A flags X"},
        {"all X", compact, "XXXX", "4 bits 0000000B x 0000000F flags X"},
        {"empty: one bit, the old bit 0, set", compact, "", "1 bits 00000001"},
        {"empty: one bit, the old bit 0, clear", from_words(8, {0xAA}), "", "1 bits 00000000"},
        {"empty: one bit, with its X mark and the flags", marked(from_words(40, {1, 2}, {3, 4}, true), "L"), "",
         "1 bits 00000001 x 00000001 flags XL"},
        {"null counts as empty", compact, nullptr, "1 bits 00000001"},
        {"null counts as empty, wide", from_words(40, {1, 2}), nullptr, "1 bits 00000001"},
        {"other characters keep the bit as it was", compact, "1Z x-2", "6 bits 0000002B"},
        {"a lower-case x is not X", from_words(8, {0xFF}), "1x0", "3 bits 00000006"},
        {"other characters keep an X mark", from_words(8, {0xFF}, {0xFF}, true), "1-0",
         "3 bits 00000006 x 00000002 flags X"},
        {"digits alone clear all X marks and flag X", from_words(3, {0}, {7}, true), "101", "3 bits 00000005"},
        {"X marks are cut off by the narrower width, flag X goes with the next digit", from_words(8, {0}, {0xF0}, true),
         "-1", "2 bits 00000001"},
        {"X marks are cut off by the narrower width, flag X stays without a digit", from_words(8, {0}, {0xF0}, true),
         "--", "2 bits 00000000 flags X"},
        {"an X mark above the width keeps flag X, though it is trimmed then", from_words(8, {0}, {0x100}, true),
         "11111111", "8 bits 000000FF flags X"},
        {"Z, WL and WH stay", marked(compact, "ZLH"), "10", "2 bits 00000002 flags ZLH"},
        {"the same width is trimmed", from_words(8, {0x1AB}, {0x100}), "--------", "8 bits 000000AB"},
        {"old bits go on into a wider value", compact, "----------------", "16 bits 000000AB"},
        {"32 digits", compact, "10000000000000000000000000000001", "32 bits 80000001"},
        {"32 digits, X on top keeps flag X", compact, "X0000000000000000000000000000001",
         "32 bits 00000001 x 80000000 flags X"},
        {"33 digits", compact, "100000000000000000000000000000010", "33 bits 00000001 00000002"},
        {"33 characters, old bits go on into wide form", compact, "---------------------------------",
         "33 bits 00000000 000000AB"},
        {"wide to compact, old bits stay", from_words(100, {0x89ABCDEF, 1, 2, 3}), "--------", "8 bits 000000EF"},
        {"wide to fewer words, old bits stay", from_words(100, {0x89ABCDEF, ~0U, 2, 3}),
         "---------------------------------", "33 bits 00000001 89ABCDEF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.before);
        EXPECT_EQ(&v.set_value_from_bin_string(row.text), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_STREQ(v.as_bin_string(), row.text == nullptr ? "" : row.text);
    }
}

// Bits are set from the most significant down, each clearing flag X once its own word has no X left. So flag X survives
// only where every word ends with an X of its own.
TEST(ParseBin, FlagXGoesWithTheFirstWordThatHasNoXLeft_Required) {
    const std::string word_of_zeros(32, '0');
    const std::string word_with_x = word_of_zeros.substr(1) + "X";
    const struct {
        const char* name;
        std::string text;
        const char* expected;
    } rows[] = {
        {"X in word 1 only: flag X goes with the last bit of word 0", "X0000000" + word_of_zeros,
         "40 bits 00000000 00000000 x 00000080 00000000"},
        {"X in word 0 only: flag X goes with the last bit of word 1", "00000000" + word_with_x,
         "40 bits 00000000 00000000 x 00000000 00000001"},
        {"X in both words: flag X stays", "0000000X" + word_with_x,
         "40 bits 00000000 00000000 x 00000001 00000001 flags X"},
        {"33 bits, X on top", "X" + word_of_zeros, "33 bits 00000000 00000000 x 00000001 00000000"},
        {"33 bits, X at the bottom", "0" + word_with_x, "33 bits 00000000 00000000 x 00000000 00000001"},
        {"33 bits, X at both ends", "X" + word_with_x, "33 bits 00000000 00000000 x 00000001 00000001 flags X"},
        {"64 bits, X on top", "X" + word_of_zeros.substr(1) + word_of_zeros,
         "64 bits 00000000 00000000 x 80000000 00000000"},
        {"64 bits, X in both words", word_with_x + word_with_x,
         "64 bits 00000000 00000000 x 00000001 00000001 flags X"},
        {"65 bits, X in two of three words", "X" + word_with_x + word_of_zeros,
         "65 bits 00000000 00000000 00000000 x 00000001 00000001 00000000"},
        {"65 bits, X in all three words", "X" + word_with_x + word_with_x,
         "65 bits 00000000 00000000 00000000 x 00000001 00000001 00000001 flags X"},
        {"other characters leave a word all X", std::string(33, '-') + "X" + word_of_zeros,
         "66 bits 00000000 00000000 00000000 x 00000003 FFFFFFFF 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(0, 8);
        v.set_value_from_bin_string(row.text.c_str());
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_EQ(v.as_bin_string(), row.text);
    }
}

// ---- parsing hexadecimal text ----

TEST(ParseHex, SetsWidthAndBits) {
    const KVAL_UINTEGER compact = from_words(8, {0xAB});
    const struct {
        const char* name;
        KVAL_UINTEGER before;
        const char* text;
        const char* expected;
    } rows[] = {
        {"one digit", compact, "7", "4 bits 00000007"},
        {"lower case", compact, "ff", "8 bits 000000FF"},
        {"8 digits", compact, "DEADBEEF", "32 bits DEADBEEF"},
        {"9 digits", compact, "123456789", "36 bits 00000001 23456789"},
        {"16 digits", compact, "0123456789aBcDeF", "64 bits 01234567 89ABCDEF"},
        {"17 digits", compact, "50123456789abcdef", "68 bits 00000005 01234567 89ABCDEF"},
        {"leading zeros count for the width", compact, "000000001", "36 bits 00000000 00000001"},
        {"wide to compact", from_words(100, {~0U, ~0U, ~0U, 0xF}), "12", "8 bits 00000012"},
        {"wide to fewer words", from_words(100, {~0U, ~0U, ~0U, 0xF}), "123456789", "36 bits 00000001 23456789"},
        {"empty: one bit, the old bit 0, set", compact, "", "1 bits 00000001"},
        {"empty: one bit, the old bit 0, clear", from_words(8, {0xAA}), "", "1 bits 00000000"},
        {"empty: one bit, with its X mark", from_words(40, {1, 2}, {3, 4}, true), "",
         "1 bits 00000001 x 00000001 flags X"},
        {"null counts as empty", compact, nullptr, "1 bits 00000001"},
        {"null counts as empty, wide", from_words(40, {1, 2}), nullptr, "1 bits 00000001"},
        {"the x-mask is cleared, flag X stays (required)", from_words(8, {0}, {0xFF}, true), "5A",
         "8 bits 0000005A flags X"},
        {"the x-mask is cleared, wide", from_words(64, {0, 0}, {~0U, ~0U}, true), "123456789",
         "36 bits 00000001 23456789 flags X"},
        {"Z, WL and WH stay", marked(compact, "ZLH"), "12", "8 bits 00000012 flags ZLH"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.before);
        EXPECT_EQ(&v.set_value_from_hex_string(row.text), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_STREQ(v.as_hex_string(), row.text == nullptr ? "" : row.text);
    }
}

TEST(ParseHex, EachChunkOfEightFollowsStrtoul) {
    const struct {
        const char* name;
        const char* text;
        const char* expected;
    } rows[] = {
        {"digits end at a letter beyond F", "1G", "8 bits 00000001"},
        {"no digit at all", "G", "4 bits 00000000"},
        {"X is no digit, and marks nothing (required)", "X", "4 bits 00000000"},
        {"X ends the digits (required)", "1X2", "12 bits 00000001"},
        {"Z is no digit (required)", "ZZ", "8 bits 00000000"},
        {"a blank ends the digits", "1 2", "12 bits 00000001"},
        {"leading blanks", "  7", "12 bits 00000007"},
        {"all white space", "\t\n\v\f\r 7", "28 bits 00000007"},
        {"nothing but blanks", "   ", "12 bits 00000000"},
        {"plus sign", "+A", "8 bits 0000000A"},
        {"minus sign: the negative in 32 bits, cut to the width", "-1", "8 bits 000000FF"},
        {"minus sign in 32 bits", "-FFFFFFF", "32 bits F0000001"},
        {"minus sign after blanks", "  -2", "16 bits 0000FFFE"},
        {"minus sign and blank: nothing", "- 1", "12 bits 00000000"},
        {"two signs: nothing", "+-1", "12 bits 00000000"},
        {"a sign alone", "-", "4 bits 00000000"},
        {"0x", "0x12", "16 bits 00000012"},
        {"0X", "0X1F", "16 bits 0000001F"},
        {"minus sign and 0x", "-0x1", "16 bits 0000FFFF"},
        {"0x without a digit is the digit 0", "0x", "8 bits 00000000"},
        {"0x before no digit is the digit 0", "0xG", "12 bits 00000000"},
        {"a byte of 0xFF is no digit", "1\xFF", "8 bits 00000001"},
        {"0x in the upper chunk", "0x123456789", "44 bits 00000001 23456789"},
        {"0x alone in the upper chunk", "0x12345678", "40 bits 00000000 12345678"},
        {"0 and x in two chunks: the lower begins with x (required)", "0x1234567", "36 bits 00000000 00000000"},
        {"a sign in the upper chunk reaches that chunk only", "-100000005", "40 bits 000000FF 00000005"},
        {"a sign in the lower chunk reaches that chunk only", "12-0000001", "40 bits 00000012 FFFFFFFF"},
        {"a sign in both chunks: the upper one ends where it ends", "+5-0000001", "40 bits 00000005 FFFFFFFF"},
        {"0x in the lower chunk", "120x000003", "40 bits 00000012 00000003"},
        {"a blank in the lower chunk", "12 000 003", "40 bits 00000012 00000000"},
        {"a letter ends its own chunk only", "123G56789", "36 bits 00000001 00000023"},
        {"a letter in the middle chunk of three", "F00000G0012345678", "68 bits 0000000F 00000000 12345678"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(0, 1);
        v.set_value_from_hex_string(row.text);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_STREQ(v.as_hex_string(), row.text);
    }
}

TEST(Parse, TextsFarLongerThanTheStorage) {
    std::string hex;
    std::string bin;
    for (int word = 0; word < 40; ++word) {
        hex += "89abcdef";
        bin += "01111111111111111111111111111110";
    }
    for (const unsigned width : {1U, 32U, 33U, 100U}) {
        SCOPED_TRACE(width);
        KVAL_UINTEGER v(1, width);
        v.set_value_from_hex_string(hex.c_str());
        EXPECT_EQ(v.bitwidth(), 1280U);
        EXPECT_EQ(value_words(v), std::vector<unsigned>(40, 0x89ABCDEF));
        EXPECT_EQ(v.as_hex_string(), hex);

        KVAL_UINTEGER w(1, width);
        w.set_value_from_bin_string(bin.c_str());
        EXPECT_EQ(w.bitwidth(), 1280U);
        EXPECT_EQ(value_words(w), std::vector<unsigned>(40, 0x7FFFFFFE));
        EXPECT_EQ(w.as_bin_string(), bin);
    }
}

TEST(Parse, PrintedDigitsReadBack) {
    for (const unsigned width : {4U, 32U, 36U, 64U, 68U, 128U}) {
        SCOPED_TRACE(width);
        KVAL_UINTEGER v = from_words(width, {0x89ABCDEF, 0x01234567, 0xDEADBEEF, 0x80000001});
        v.EnforceWidth();
        KVAL_UINTEGER hex(0, 1);
        hex.set_value_from_hex_string(v.as_hex_string());
        EXPECT_EQ(printed(hex), printed(v));
        KVAL_UINTEGER bin(0, 1);
        bin.set_value_from_bin_string(v.as_bin_string());
        EXPECT_EQ(printed(bin), printed(v));
    }
}

TEST(Parse, AValueMayBeSetFromItsOwnText) {
    const struct {
        const char* name;
        const char* before;
        std::size_t from;
        const char* expected;
        const char* text;
    } rows[] = {
        {"whole", "ab", 0, "8 bits 000000AB", "ab"},
        {"its tail", "abc", 1, "8 bits 000000BC", "bc"},
        {"its end, the empty text", "ab", 2, "1 bits 00000001", ""},
        {"whole, wide", "123456789a", 0, "40 bits 00000012 3456789A", "123456789a"},
        {"its tail, wide", "123456789a", 1, "36 bits 00000002 3456789A", "23456789a"},
        {"its tail, compact", "123456789a", 8, "8 bits 0000009A", "9a"},
        {"its tail, in fewer words", "f0123456789abcdef", 1, "64 bits 01234567 89ABCDEF", "0123456789abcdef"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(0, 1);
        v.set_value_from_hex_string(row.before);
        v.set_value_from_hex_string(v.as_hex_string() + row.from);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_STREQ(v.as_hex_string(), row.text);
    }
}

TEST(Parse, AValueMayBeSetFromItsOwnBinaryText) {
    KVAL_UINTEGER v(0, 1);
    v.set_value_from_bin_string("1X-1");
    v.set_value_from_bin_string(v.as_bin_string() + 1);
    EXPECT_EQ(printed(v), "3 bits 00000001 x 00000006 flags X");
    EXPECT_STREQ(v.as_bin_string(), "X-1");

    const std::string wide = "1" + std::string(31, '0') + "11";
    v.set_value_from_bin_string(wide.c_str());
    v.set_value_from_bin_string(v.as_bin_string());
    EXPECT_EQ(printed(v), "34 bits 00000002 00000003");
    v.set_value_from_bin_string(v.as_bin_string() + 1);
    EXPECT_EQ(printed(v), "33 bits 00000000 00000003");
    v.set_value_from_bin_string(v.as_bin_string() + 31);
    EXPECT_EQ(printed(v), "2 bits 00000003");

    const std::string with_x = "X1" + std::string(60, '0') + "1X01";
    v.set_value_from_bin_string(with_x.c_str());
    v.set_value_from_bin_string(v.as_bin_string());
    EXPECT_EQ(printed(v), "66 bits 00000001 00000000 00000009 x 00000002 00000000 00000004");
    v.set_value_from_bin_string(v.as_bin_string() + 1);
    EXPECT_EQ(printed(v), "65 bits 00000001 00000000 00000009 x 00000000 00000000 00000004");
    EXPECT_EQ(v.as_bin_string(), with_x.substr(1));
}

TEST(Parse, AValueMayBeSetFromItsOwnTextAsTheOtherKind) {
    KVAL_UINTEGER v(0x10, 8);
    v.set_value_from_bin_string(v.as_hex_string());
    EXPECT_EQ(printed(v), "2 bits 00000002");
    EXPECT_STREQ(v.as_bin_string(), "10");
    v.set_value_from_hex_string(v.as_bin_string());
    EXPECT_EQ(printed(v), "8 bits 00000010");
    EXPECT_STREQ(v.as_hex_string(), "10");

    KVAL_UINTEGER wide = from_words(36, {0x00000001, 1});
    wide.set_value_from_hex_string(wide.as_bin_string());
    EXPECT_EQ(printed(wide), "144 bits 00000001 00000000 00000000 00000000 00000001");
}

}  // namespace
