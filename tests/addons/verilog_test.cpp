// Tests of the text of a value: letters, digits and their number in every base, the prefix, and what is left alone.
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <list>
#include <string>
#include <utility>

#include "kval/verilog.h"
#include "random/draw.h"
#include "random/run.h"
#include "spelling.h"
#include "support/twin.h"
#include "unit/unit_support.h"

namespace {

using kval::Base;
using kval::to_verilog;
using twin::Content;
using twin::Twin;

TEST(ToVerilog, Rows) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        const char* bin;
        const char* oct;
        const char* hex;
    } rows[] = {
        {"the width decides the number of digits", from_words(8, {0x5A}), "8'b01011010", "8'o132", "8'h5A"},
        {"zero has all its digits", from_words(9, {0}), "9'b000000000", "9'o000", "9'h000"},
        {"one bit", from_words(1, {1}), "1'b1", "1'o1", "1'h1"},
        {"letters are upper case", from_words(12, {0xFED}), "12'b111111101101", "12'o7755", "12'hFED"},
        {"an octal digit over a word border", from_words(36, {0x80000001, 0xD}),
         "36'b110110000000000000000000000000000001", "36'o660000000001", "36'hD80000001"},
        {"64 bits", from_words(64, {0x89ABCDEF, 0x01234567}),
         "64'b0000000100100011010001010110011110001001101010111100110111101111", "64'o0004432126361152746757",
         "64'h0123456789ABCDEF"},
        {"one X bit makes an X digit", from_words(6, {0x1A}, {4}), "6'b011X10", "6'o3X", "6'h1X"},
        {"X in a partial top digit", from_words(10, {0}, {0x200}), "10'bX000000000", "10'oX000", "10'hX00"},
        {"the bit under an X does not show", from_words(4, {0xF}, {0xF}), "4'bXXXX", "4'oXX", "4'hX"},
        {"flag X alone does not show", from_words(8, {0x5A}, {}, true), "8'b01011010", "8'o132", "8'h5A"},
        {"flag Z", marked(from_words(16, {0x1234}), "Z"), "16'bZZZZZZZZZZZZZZZZ", "16'oZZZZZZ", "16'hZZZZ"},
        {"weak low", marked(from_words(5, {1}), "L"), "5'bLLLLL", "5'oLL", "5'hLL"},
        {"weak high", marked(from_words(5, {1}), "H"), "5'bHHHHH", "5'oHH", "5'hHH"},
        {"Z before the weak levels", marked(from_words(2, {1}), "ZLH"), "2'bZZ", "2'oZ", "2'hZ"},
        {"weak low before weak high", marked(from_words(2, {1}), "LH"), "2'bLL", "2'oL", "2'hL"},
        {"X before Z, at straight places", marked(from_words(8, {0}, {0x81}), "Z"), "8'bXZZZZZZX", "8'oXZX", "8'hXX"},
        {"X at the left end stays there", marked(from_words(12, {0}, {0x800}), "L"), "12'bXLLLLLLLLLLL", "12'oXLLL",
         "12'hXLL"},
        {"bits above the width do not show", from_words(10, {0xF7F}, {0xC00}), "10'b1101111111", "10'o1577", "10'h37F"},
        {"nor do they in a wide value", from_words(33, {0, 0xFE}, {0, 0xE}), "33'b000000000000000000000000000000000",
         "33'o00000000000", "33'h000000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.bin, to_verilog(row.value, Base::kBinary));
        EXPECT_EQ(row.oct, to_verilog(row.value, Base::kOctal));
        EXPECT_EQ(row.hex, to_verilog(row.value));
    }
}

TEST(ToVerilog, SignedValuesPrintTheBitsTheyHave) {
    EXPECT_EQ("8'hFD", to_verilog(KVAL_SINTEGER(-3, 8)));
    EXPECT_EQ("7'b1111101", to_verilog(KVAL_SINTEGER(-3, 7), Base::kBinary));
    // Ones up to the top word's end; but 40 bits are ten digits.
    EXPECT_EQ("40'hFFFFFFFFFD", to_verilog(KVAL_SINTEGER(-3, 40)));
    EXPECT_EQ("34'h3FFFFFFFD", to_verilog(KVAL_SINTEGER(-3, 34)));
    EXPECT_EQ("34'o177777777775", to_verilog(KVAL_SINTEGER(-3, 34), Base::kOctal));
}

TEST(ToVerilog, MovedFromValuesHaveNoDigits) {
    for (const unsigned width : {8U, 80U}) {
        KVAL_UINTEGER moved(1, width);
        const KVAL_UINTEGER taken(std::move(moved));
        EXPECT_EQ("0'h", to_verilog(moved));
        EXPECT_EQ("0'o", to_verilog(moved, Base::kOctal));
        EXPECT_EQ("0'b", to_verilog(moved, Base::kBinary));
        EXPECT_EQ("", to_verilog(moved, Base::kHexadecimal, false));
        EXPECT_EQ(0U, kval::digit_count(moved));
    }
}

TEST(ToVerilog, PrefixOfEveryLength) {
    for (const unsigned width : {1U, 9U, 10U, 99U, 100U, 999U, 1000U, 1048576U}) {
        const KVAL_UINTEGER value(0, width);
        for (const Base base : spelling::kBases) {
            std::string prefix;
            kval::write_prefix(std::back_inserter(prefix), value, base);
            EXPECT_EQ(spelling::prefix(width, base), prefix);
            EXPECT_EQ(prefix.size(), kval::prefix_length(value));
        }
    }
}

// Every width of up to 70 bits with one X bit at every place, and all sixteen sets of flags.
TEST(ToVerilog, XAtEveryPlaceUnderEveryFlag) {
    const std::string letters = "XZLH";
    for (unsigned width = 1; width <= 70; ++width) {
        for (unsigned place = 0; place <= width; ++place) {  // at the width: no X at all
            for (unsigned set = 0; set < 16; ++set) {
                Content content{width, {0x89ABCDEF, 0x01234567, 0x2A}, {0, 0, 0}, {}, {}};
                if (place < width) content.mask[place / 32] = 1U << place % 32;
                for (unsigned i = 0; i < 4; ++i) {
                    if ((set >> i & 1U) != 0) content.flags += letters[i];
                }
                const Twin v(content);
                for (const Base base : spelling::kBases)
                    ASSERT_EQ(spelling::digits(v.model, base), to_verilog(v.value, base, false))
                        << width << " bits, X at " << place << ", flags " << content.flags;
            }
        }
    }
}

TEST(ToVerilog, RandomValues) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    for (unsigned i = 0; i < run_pairs() / 10; ++i) {
        const unsigned width = draw.once_in(2) ? draw.one_of(boundary_widths()) : 1 + draw.below(70);
        Twin v(draw_content(draw, width));
        for (const Base base : spelling::kBases) {
            const std::string digits = spelling::digits(v.model, base);
            ASSERT_EQ(digits, to_verilog(v.value, base, false)) << twin::describe(v.value);
            ASSERT_EQ(spelling::prefix(width, base) + digits, to_verilog(v.value, base));
            ASSERT_EQ(digits.size(), kval::digit_count(v.value, base));
        }
        ASSERT_TRUE(same(v, draw_kind(draw))) << "printing has changed the value or its text";
    }
}

TEST(ToVerilog, KeepsTheCachedTextWhereItIs) {
    for (const unsigned width : {9U, 65U}) {
        KVAL_UINTEGER v(0x155, width);
        const char* const before = v.as_hex_string();
        const std::string text = before;
        for (const Base base : spelling::kBases) to_verilog(v, base);
        EXPECT_EQ(text, before);
        EXPECT_EQ(before, v.as_hex_string());

        cache_text(v);
        for (const Base base : spelling::kBases) to_verilog(v, base);
        EXPECT_TRUE(keeps_text(v));
    }
}

TEST(ToVerilog, CachesNoText) {
    for (const unsigned width : {9U, 65U}) {
        KVAL_UINTEGER v(0, width);
        for (const Base base : spelling::kBases) to_verilog(v, base);
        v.set_uvalue_at(0, 1);  // a raw store: would leave a text that is there
        EXPECT_EQ('1', std::string(v.as_hex_string()).back());
    }
}

TEST(WriteDigits, ToAnyOutputIterator) {
    const KVAL_UINTEGER v = from_words(34, {0x5A, 2}, {0x100});
    std::string appended = "<";
    kval::write_digits(std::back_inserter(appended), v);
    EXPECT_EQ("<200000X5A", appended);

    std::list<char> inserted;
    kval::write_digits(std::front_inserter(inserted), v, Base::kOctal);
    EXPECT_EQ("23X000000001", std::string(inserted.begin(), inserted.end()));

    char buffer[] = "..............";
    char* const end = kval::write_digits(kval::write_prefix(buffer, v), v);
    EXPECT_EQ("34'h200000X5A.", std::string(buffer));
    EXPECT_EQ(13, end - buffer);
}

// A cost that grew with the square of the width would take hours here.
TEST(ToVerilog, FourMillionBits) {
    constexpr unsigned width = 1U << 22;
    KVAL_UINTEGER v(0, width);
    v.set_uvalue_at(0, 0x12345678);
    v.set_uvalue_at(v.get_size() - 1, 0xA0000000);
    v.set_x(64);
    const std::string middle((width - 32 - 96) / 4, '0');
    EXPECT_EQ("A0000000" + middle + "0000000X0000000012345678", to_verilog(v, Base::kHexadecimal, false));
    EXPECT_EQ(width, to_verilog(v, Base::kBinary, false).size());
    EXPECT_EQ((width + 2) / 3, to_verilog(v, Base::kOctal, false).size());
}

}  // namespace
