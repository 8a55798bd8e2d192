// Tests of reading the Verilog spelling: what each text gives, where a bad one goes wrong, and that what is printed
// reads back.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kval/verilog.h"
#include "model/model.h"
#include "random/draw.h"
#include "random/run.h"
#include "spelling.h"
#include "support/twin.h"
#include "unit/unit_support.h"

namespace {

using kval::Base;
using kval::from_verilog;
using kval::ParsedVerilog;
using kval::to_verilog;
using twin::Twin;

TEST(FromVerilog, Rows) {
    const struct {
        const char* text;
        const char* printed;  // as unit_support.h's printed()
    } rows[] = {
        // Bases, cases, underscores.
        {"40'h12345ABCDE", "40 bits 00000012 345ABCDE"},
        {"8'b01011010", "8 bits 0000005A"},
        {"8'B0101_1010", "8 bits 0000005A"},
        {"9'o777", "9 bits 000001FF"},
        {"9'O3_1_2", "9 bits 000000CA"},
        {"12'HaBc", "12 bits 00000ABC"},
        {"12'hA__b_C_", "12 bits 00000ABC"},
        {"1_2'habc", "12 bits 00000ABC"},
        {"012'habc", "12 bits 00000ABC"},
        {"8'shFF", "8 bits 000000FF"},
        {"8'SHff", "8 bits 000000FF"},
        // Fewer digits than the width, and more.
        {"8'h5", "8 bits 00000005"},
        {"40'hF", "40 bits 00000000 0000000F"},
        {"4'sh8", "4 bits 00000008"},
        {"8'sh8", "8 bits 00000008"},
        {"4'h0000A", "4 bits 0000000A"},
        {"33'h0_1_0000_0000", "33 bits 00000001 00000000"},
        {"3'h7", "3 bits 00000007"},
        {"32'o37777777777", "32 bits FFFFFFFF"},
        {"34'o100000000001", "34 bits 00000002 00000001"},
        // X.
        {"8'b010X1010", "8 bits 0000004A x 00000010 flags X"},
        {"8'bx0000000", "8 bits 00000000 x 00000080 flags X"},
        {"12'hAxC", "12 bits 00000A0C x 000000F0 flags X"},
        {"9'o7x1", "9 bits 000001C1 x 00000038 flags X"},
        {"8'hX", "8 bits 00000000 x 000000FF flags X"},
        {"8'hX1", "8 bits 00000001 x 000000F0 flags X"},
        {"8'h0X", "8 bits 00000000 x 0000000F flags X"},
        {"12'hX1", "12 bits 00000001 x 00000FF0 flags X"},
        {"8'h0x1", "8 bits 00000001 x 000000F0 flags X"},
        {"3'hX", "3 bits 00000000 x 00000007 flags X"},
        {"40'bX", "40 bits 00000000 00000000 x 000000FF FFFFFFFF flags X"},
        {"34'oX", "34 bits 00000000 00000000 x 00000003 FFFFFFFF flags X"},
        {"36'h100000000", "36 bits 00000001 00000000"},
        {"36'hX00000000", "36 bits 00000000 00000000 x 0000000F 00000000 flags X"},
        // Z.
        {"16'hZZZZ", "16 bits 00000000 flags Z"},
        {"16'hz", "16 bits 00000000 flags Z"},
        {"16'h?", "16 bits 00000000 flags Z"},
        {"70'bZ", "70 bits 00000000 00000000 00000000 flags Z"},
        {"4'h0Z", "4 bits 00000000 flags Z"},
        {"8'hZ1", "8 bits 00000001 x 000000F0 flags X"},
        {"8'h0Z", "8 bits 00000000 x 0000000F flags X"},
        {"8'b0Z", "8 bits 00000000 x 00000001 flags X"},
        {"12'hX0Z", "12 bits 00000000 x 00000F0F flags X"},
        {"8'hXZ", "8 bits 00000000 x 000000F0 flags XZ"},
        {"8'bZX", "8 bits 00000000 x 00000001 flags XZ"},
        // Weak levels.
        {"8'hLL", "8 bits 00000000 flags L"},
        {"8'hl", "8 bits 00000000 flags L"},
        {"8'bHHHHHHHH", "8 bits 00000000 flags H"},
        {"8'bX", "8 bits 00000000 x 000000FF flags X"},
        {"8'hXL", "8 bits 00000000 x 000000F0 flags XL"},
        {"8'bXHX", "8 bits 00000000 x 000000FD flags XH"},
        {"4'h00H", "4 bits 00000000 flags H"},
        // Without a width.
        {"'hFF", "32 bits 000000FF"},
        {"'b1", "32 bits 00000001"},
        {"'hX", "32 bits 00000000 x FFFFFFFF flags X"},
        {"'h123456789", "36 bits 00000001 23456789"},
        {"'h000000000", "36 bits 00000000 00000000"},
        {"'o37777777777", "33 bits 00000000 FFFFFFFF"},
        {"'b1_00000000_00000000_00000000_00000000", "33 bits 00000001 00000000"},
        {"'sh1", "32 bits 00000001"},
        // Decimal.
        {"8'd255", "8 bits 000000FF"},
        {"8'd000_2_55_", "8 bits 000000FF"},
        {"8'sd127", "8 bits 0000007F"},
        {"1'd1", "1 bits 00000001"},
        {"40'd4294967296", "40 bits 00000001 00000000"},
        {"64'd18446744073709551615", "64 bits FFFFFFFF FFFFFFFF"},
        {"63'd9223372036854775807", "63 bits 7FFFFFFF FFFFFFFF"},
        {"100'd18446744073709551615", "100 bits 00000000 00000000 FFFFFFFF FFFFFFFF"},
        {"'d10", "32 bits 0000000A"},
        {"'d4294967295", "32 bits FFFFFFFF"},
        {"'d4294967296", "33 bits 00000001 00000000"},
        {"'d18446744073709551615", "64 bits FFFFFFFF FFFFFFFF"},
        {"8'dX", "8 bits 00000000 x 000000FF flags X"},
        {"8'dx_", "8 bits 00000000 x 000000FF flags X"},
        {"40'dz", "40 bits 00000000 00000000 flags Z"},
        {"8'D?", "8 bits 00000000 flags Z"},
        {"8'dL", "8 bits 00000000 flags L"},
        {"'dH", "32 bits 00000000 flags H"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const ParsedVerilog parsed = from_verilog(row.text);
        EXPECT_TRUE(parsed) << parsed.position << ": expected " << parsed.expected;
        EXPECT_EQ(row.printed, printed(parsed.value));
        EXPECT_EQ(std::string_view(row.text).size(), parsed.position);
        EXPECT_EQ(nullptr, parsed.expected);
    }
}

TEST(FromVerilog, TellsWhetherThereIsAnS) {
    EXPECT_TRUE(from_verilog("8'shFF").is_signed);
    EXPECT_TRUE(from_verilog("8'Sd1").is_signed);
    EXPECT_FALSE(from_verilog("8'hFF").is_signed);
    EXPECT_EQ(-1, KVAL_SINTEGER(from_verilog("8'shFF").value).signed_value());
}

TEST(FromVerilog, PositionOfTheFirstBadCharacter) {
    const std::string width = "a width of 1 to 2147483616 bits";
    const std::string hexadecimal = "a hexadecimal digit, X, Z, L or H";
    const std::string fit = "digits that fit the width";
    const std::string weak = "the same weak level, or X, at every place";
    const struct {
        std::string_view text;
        std::size_t position;
        std::string expected;
    } rows[] = {
        {"", 0, "a width or an apostrophe"},
        {" 8'hFF", 0, "a width or an apostrophe"},
        {"hFF", 0, "a width or an apostrophe"},
        {"-8'hFF", 0, "a width or an apostrophe"},
        {"_8'hFF", 0, "a width or an apostrophe"},
        {"0'h1", 0, width},
        {"00'h1", 0, width},
        {"0", 0, width},
        {"2147483617'h1", 0, width},
        {"4294967304'h1", 0, width},
        {"18446744073709551624'h1", 0, width},
        {"99999999999999999999999999'h1", 0, width},
        {"8", 1, "an apostrophe"},
        {"12345ABCDE", 5, "an apostrophe"},
        {"8 'hFF", 1, "an apostrophe"},
        {"8h", 1, "an apostrophe"},
        {"'", 1, "the letter s, b, o, d or h"},
        {"8'", 2, "the letter s, b, o, d or h"},
        {"8'q1", 2, "the letter s, b, o, d or h"},
        {"8' hFF", 2, "the letter s, b, o, d or h"},
        {"8''hFF", 2, "the letter s, b, o, d or h"},
        {"8'x", 2, "the letter s, b, o, d or h"},
        {"8's", 3, "the letter b, o, d or h"},
        {"8'ssh1", 3, "the letter b, o, d or h"},
        {"8'h", 3, hexadecimal},
        {"8'h_1", 3, hexadecimal},
        {"8'h__", 3, hexadecimal},
        {"8'h 1", 3, hexadecimal},
        {"8'hG1", 3, hexadecimal},
        {"8'h1 ", 4, hexadecimal},
        {"8'h-1", 3, hexadecimal},
        {"8'h+1", 3, hexadecimal},
        {"8'h0x1F", 4, fit},
        {{"8'h1\0", 5}, 4, hexadecimal},
        {"8'h1\xB2", 4, hexadecimal},
        {"8'h1'", 4, hexadecimal},
        {"8'h1@", 4, hexadecimal},
        {"8'h1/", 4, hexadecimal},
        {"8'h1:", 4, hexadecimal},
        {"8'h1`", 4, hexadecimal},
        {"8'h1g", 4, hexadecimal},
        {"8'b12", 4, "a binary digit, X, Z, L or H"},
        {"8'b1A", 4, "a binary digit, X, Z, L or H"},
        {"8'o78", 4, "an octal digit, X, Z, L or H"},
        {"8'o", 3, "an octal digit, X, Z, L or H"},
        // Digits that are good, but not together with the width.
        {"4'hFF", 3, fit},
        {"4'h1F", 3, fit},
        {"4'h0_1F", 5, fit},
        {"3'h8", 3, fit},
        {"3'h0F", 4, fit},
        {"4'hXX", 3, fit},
        {"4'hZZ", 3, fit},
        {"4'hLL", 3, fit},
        {"32'o77777777777", 4, fit},
        {"1'b10", 3, fit},
        {"40'h1_00_0000_0000", 4, fit},
        {"4'hFFg", 5, hexadecimal},
        // Weak levels go with X alone.
        {"8'h1L", 4, weak},
        {"8'hL1", 4, weak},
        {"8'hLZ", 4, weak},
        {"8'hZH", 4, weak},
        {"8'hLH", 4, weak},
        {"8'b0L", 4, weak},
        {"12'hXL0", 6, weak},
        {"12'hXZL", 6, weak},
        // Decimal.
        {"8'd", 3, "a decimal digit, X, Z, L or H"},
        {"8'd_1", 3, "a decimal digit, X, Z, L or H"},
        {"8'dA", 3, "a decimal digit, X, Z, L or H"},
        {"8'd1A", 4, "a decimal digit"},
        {"8'd1X", 4, "a decimal digit"},
        {"8'd1Z", 4, "a decimal digit"},
        {"8'dX1", 4, "nothing more"},
        {"8'dX_X", 5, "nothing more"},
        {"8'd256", 5, fit},
        {"8'd2_56", 6, fit},
        {"8'd300", 5, fit},
        {"8'd2550", 6, fit},
        {"1'd2", 3, fit},
        {"3'd9", 3, fit},
        {"63'd9223372036854775808", 22, fit},
        {"64'd18446744073709551616", 23, "a decimal number of up to 64 bits"},
        {"100'd18446744073709551616", 24, "a decimal number of up to 64 bits"},
        {"'d18446744073709551616", 21, "a decimal number of up to 64 bits"},
        {"'d99999999999999999999999", 21, "a decimal number of up to 64 bits"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.text));
        const ParsedVerilog parsed = from_verilog(row.text);
        ASSERT_FALSE(parsed);
        EXPECT_EQ(row.position, parsed.position);
        EXPECT_EQ(row.expected, parsed.expected);
        EXPECT_EQ("1 bits 00000000", printed(parsed.value));
        EXPECT_FALSE(parsed.is_signed);
    }
}

// ---- against every bit worked out on its own ----

struct Digits {
    unsigned width;
    unsigned bits;     // of a digit
    std::string text;  // without underscores
};

bool is_known(char letter) { return letter == '0' || letter == '1'; }
bool is_weak(char letter) { return letter == 'L' || letter == 'H'; }

// The bits that a digit stands for.
std::string expanded(char digit, unsigned bits) {
    const std::size_t number = std::string("0123456789ABCDEF").find(digit);
    if (number == std::string::npos) return std::string(bits, digit);
    std::string text;
    for (unsigned pos = bits; pos-- > 0;) text += (number >> pos & 1U) != 0 ? '1' : '0';
    return text;
}

// The first digit that does not fit the width or does not go with the digits inside it before it; none where all is
// good.
std::optional<std::size_t> first_bad(const Digits& digits) {
    const std::size_t total = digits.text.size() * digits.bits;
    std::string inside;  // the letters so far
    for (std::size_t i = 0; i < digits.text.size(); ++i) {
        const std::size_t top = total - i * digits.bits;  // one above the digit's bits
        const std::string bits = expanded(digits.text[i], digits.bits);
        const bool partly_inside = top - digits.bits < digits.width;
        const std::size_t above =
            top > digits.width ? (partly_inside ? top - digits.width : std::size_t{digits.bits}) : 0;
        const bool letter = !is_known(bits[0]);
        if (letter ? !partly_inside : bits.find('1') < above) return i;
        if (!partly_inside) continue;
        const char state = letter ? bits[0] : '0';
        if (state == 'X') continue;
        const char former = inside.empty() ? state : inside[0];
        if ((is_weak(state) || is_weak(former)) && state != former) return i;
        inside += state;
    }
    return {};
}

// The letters of all bits, from the top.
std::string read_by_bits(const Digits& digits) {
    std::string bits;
    for (const char digit : digits.text) bits += expanded(digit, digits.bits);
    if (bits.size() < digits.width) bits.insert(0, digits.width - bits.size(), is_known(bits[0]) ? '0' : bits[0]);
    bits.erase(0, bits.size() - digits.width);
    if (bits.find_first_of("01") != std::string::npos) {
        for (char& bit : bits) bit = bit == 'Z' ? 'X' : bit;
    }
    return bits;
}

Digits draw_digits(Draw& draw) {
    static const std::vector<std::string> alphabets = {"01", "01X", "01Z", "01XZ", "0Z",  "Z",
                                                       "XZ", "L",   "XL",  "H",    "0XH", "XZLH01"};
    const Base base = draw.one_of(spelling::kBases);
    Digits digits{1 + draw.below(draw.once_in(4) ? 140 : 40), static_cast<unsigned>(base), {}};
    const std::string& alphabet = draw.one_of(alphabets);
    const unsigned count =
        (draw.once_in(3) ? 1 + draw.below(digits.width + 4) : digits.width + draw.below(3) * digits.bits) / digits.bits;
    for (unsigned i = 0; i < count || i == 0; ++i) {
        const char letter = draw.one_of(alphabet);
        digits.text += letter == '1' ? "0123456789ABCDEF"[draw.below(1U << digits.bits)] : letter;
    }
    return digits;
}

// The digits in a spelling of their own: any case, underscores; `places` gets where each is.
std::string draw_spelling(Draw& draw, const Digits& digits, std::vector<std::size_t>& places) {
    const char* const prefixes[] = {"'b", "'o", "'h"};
    std::string text = std::to_string(digits.width) + prefixes[digits.bits / 2];
    for (const char digit : digits.text) {
        while (!places.empty() && draw.once_in(5)) text += '_';
        places.push_back(text.size());
        const bool other = draw.once_in(2);
        text += digit == 'Z' && draw.once_in(4) ? '?'
                : digit >= 'A' && other         ? static_cast<char>(digit - 'A' + 'a')
                                                : digit;
    }
    return text;
}

TEST(FromVerilog, RandomDigitsBitByBit) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    unsigned good = 0;
    for (unsigned i = 0; i < run_pairs(); ++i) {
        const Digits digits = draw_digits(draw);
        std::vector<std::size_t> places;
        const std::string text = draw_spelling(draw, digits, places);
        const ParsedVerilog parsed = from_verilog(text);
        if (const auto bad = first_bad(digits)) {
            ASSERT_FALSE(parsed) << text;
            ASSERT_EQ(places[*bad], parsed.position) << text;
            continue;
        }
        ASSERT_TRUE(parsed) << text << ": " << parsed.position << ", " << parsed.expected;
        const std::string bits = read_by_bits(digits);
        ASSERT_EQ(digits.width, parsed.value.bitwidth());
        ASSERT_EQ(bits, to_verilog(parsed.value, Base::kBinary, false)) << text;
        ASSERT_EQ(bits.find('X') != std::string::npos, parsed.value.is_x()) << text;
        ++good;
    }
    EXPECT_GT(good, run_pairs() / 4);
    EXPECT_LT(good, run_pairs() - run_pairs() / 10);
}

TEST(FromVerilog, RandomDecimalNumbers) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    for (unsigned i = 0; i < run_pairs() / 10; ++i) {
        const unsigned size = 1 + draw.below(64);
        const std::uint64_t number = (std::uint64_t{draw.word()} << 32 | draw.word()) >> (64 - size);
        const unsigned width = 1 + draw.below(100);
        const ParsedVerilog parsed = from_verilog(std::to_string(width) + "'d" + std::to_string(number));
        if (width < 64 && number >> width != 0) {
            ASSERT_FALSE(parsed) << width << ' ' << number;
            continue;
        }
        ASSERT_TRUE(parsed) << width << ' ' << number;
        const auto low = static_cast<unsigned>(number);
        const auto high = static_cast<unsigned>(number >> 32);
        ASSERT_EQ(width > 32 ? from_words(width, {low, high}) : from_words(width, {low}), parsed.value);
        ASSERT_EQ(width, parsed.value.bitwidth());
    }
}

// ---- what is printed reads back ----

// What is left of a value when it is printed digit by digit: nothing under an X or a letter, no bits above the width,
// one flag of Z, L and H, and flag X as the digits say.
void expect_printed_state(const Twin& v, const std::string& text, Base base) {
    const ParsedVerilog parsed = from_verilog(text);
    ASSERT_TRUE(parsed) << text << ": " << parsed.position << ", " << parsed.expected;
    ASSERT_EQ(text, to_verilog(parsed.value, base));
    ASSERT_EQ(v.value.bitwidth(), parsed.value.bitwidth());
    if (base != Base::kBinary) return;

    const std::string bits = spelling::digits(v.model, base);
    model::Value required = model::make(0, v.value.bitwidth());
    for (std::size_t pos = 0; pos < bits.size(); ++pos) {
        const char bit = bits[bits.size() - 1 - pos];
        required.value[pos] = bit == '1';
        required.mask[pos] = bit == 'X';
        required.x = required.x || bit == 'X';
        required.z = required.z || bit == 'Z';
        required.wl = required.wl || bit == 'L';
        required.wh = required.wh || bit == 'H';
    }
    ASSERT_TRUE(twin::same_content(parsed.value, required)) << text;
}

TEST(FromVerilog, WhatIsPrintedReadsBack) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    for (unsigned i = 0; i < run_pairs() / 5; ++i) {
        const unsigned width = draw.once_in(2) ? draw.one_of(boundary_widths()) : 1 + draw.below(70);
        const Twin v(draw_content(draw, width));
        for (const Base base : spelling::kBases) {
            expect_printed_state(v, to_verilog(v.value, base), base);
            if (HasFatalFailure()) return;
        }
    }
}

// An exclamation mark is good nowhere, so it is the first bad character wherever it stands.
TEST(FromVerilog, BadCharacterAtEveryPlace) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    for (unsigned i = 0; i < run_pairs() / 50; ++i) {
        const Twin v(draw_content(draw, 1 + draw.below(70)));
        const std::string text = to_verilog(v.value, draw.one_of(spelling::kBases));
        for (std::size_t place = 0; place < text.size(); ++place) {
            std::string bad = text;
            bad[place] = '!';
            const ParsedVerilog parsed = from_verilog(bad);
            ASSERT_FALSE(parsed) << bad;
            ASSERT_EQ(place, parsed.position) << bad;
        }
        for (std::size_t end = 0; end <= text.find('\'') + 2; ++end) {  // all that ends before the first digit
            const ParsedVerilog parsed = from_verilog(std::string_view(text).substr(0, end));
            ASSERT_FALSE(parsed) << text << " up to " << end;
            ASSERT_EQ(end, parsed.position) << text << " up to " << end;
        }
    }
}

TEST(FromVerilog, CachesNoText) {
    ParsedVerilog parsed = from_verilog("40'habcdef0123");
    ASSERT_TRUE(parsed);
    parsed.value.set_uvalue_at(0, 1);  // a raw store: would leave a text that is there
    EXPECT_STREQ("AB00000001", parsed.value.as_hex_string());
}

// A cost that grew with the square of the length would take hours here.
TEST(FromVerilog, FourMillionBits) {
    constexpr unsigned width = 1U << 22;
    for (const Base base : spelling::kBases) {
        const std::string digits((width - 1) / static_cast<unsigned>(base) - 1, '1');
        const std::string text = spelling::prefix(width, base) + 'X' + digits;
        const ParsedVerilog parsed = from_verilog(text);
        ASSERT_TRUE(parsed);
        EXPECT_EQ(digits,
                  to_verilog(parsed.value, base, false).substr(kval::digit_count(parsed.value, base) - digits.size()));
        EXPECT_TRUE(parsed.value.is_x(static_cast<int>(width) - 1, 0));
    }
    EXPECT_TRUE(from_verilog(std::to_string(width) + "'h" + std::string(width, '0')));
    EXPECT_TRUE(from_verilog(std::to_string(width) + "'d" + std::string(width, '0') + "1"));
    EXPECT_EQ(0U, from_verilog(std::string(width, '1')).position);
}

}  // namespace
