// Tests of the sums and differences with a signed operand: widths, repairs of the sign, x-masks and flags.
#include <gtest/gtest.h>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

TEST(SignedSum, IsExact) {
    expect_all<S, S>(
        {
            {"1 + 2", S(1, 8), S(2, 8), "8 bits 00000003"},
            {"127 + 1 grows by a bit and stays positive", S(127, 8), S(1, 8), "9 bits 00000080"},
            {"-1 + -1", S(-1, 8), S(-1, 8), "9 bits 000001FE"},
            {"-128 + -128", S(-128, 8), S(-128, 8), "9 bits 00000100"},
            {"5 + -3 carries: 9 bits", S(5, 8), S(-3, 8), "9 bits 00000002"},
            {"-3 + 5 carries: 9 bits", S(-3, 8), S(5, 8), "9 bits 00000002"},
            {"3 + -5", S(3, 8), S(-5, 8), "8 bits 000000FE"},
            {"-5 + 3", S(-5, 8), S(3, 8), "8 bits 000000FE"},
            {"5 + -5 carries: 9 bits of zero", S(5, 8), S(-5, 8), "9 bits 00000000"},
            {"127 + -128 does not carry", S(127, 8), S(-128, 8), "8 bits 000000FF"},
            {"4-bit -1 + 8-bit 1", S(-1, 4), S(1, 8), "9 bits 00000000"},
            {"8-bit 1 + 4-bit -1", S(1, 8), S(-1, 4), "9 bits 00000000"},
            {"4-bit -8 + 8-bit -128", S(-8, 4), S(-128, 8), "9 bits 00000178"},
            {"1-bit -1 + 1-bit -1", S(-1, 1), S(-1, 1), "2 bits 00000002"},
            {"1-bit 0 + 1-bit -1", S(0, 1), S(-1, 1), "1 bits 00000001"},
            {"31 bits grow to 32, still compact", S(0x3FFFFFFF, 31), S(1, 31), "32 bits 40000000"},
            {"31 bits, both negative", S(-1, 31), S(-1, 31), "32 bits FFFFFFFE"},
            {"32 bits overflow into the wide form", S(0x7FFFFFFF, 32), S(1, 32), "33 bits 00000000 80000000"},
            {"32 bits, both negative", S(-1, 32), S(-1, 32), "33 bits 00000001 FFFFFFFE"},
            {"32 bits carry and the sum is positive", S(5, 32), S(-3, 32), "33 bits 00000000 00000002"},
            {"32 bits, the least twice", signed_words(32, {0x80000000}), signed_words(32, {0x80000000}),
             "33 bits 00000001 00000000"},
            {"33 bits overflow", signed_words(33, {~0U, 0}), S(1, 33), "34 bits 00000001 00000000"},
            {"40 bits carry", S(1, 40), signed_words(40, {~0U, 0xFF}), "41 bits 00000000 00000000"},
            {"8-bit -1 + 40-bit 1", S(-1, 8), S(1, 40), "41 bits 00000000 00000000"},
            {"8-bit 127 + 40-bit 1", S(127, 8), S(1, 40), "40 bits 00000000 00000080"},
            {"63 bits grow to 64", signed_words(63, {~0U, 0x3FFFFFFF}), S(1, 63), "64 bits 40000000 00000000"},
            {"64 bits grow to 65", signed_words(64, {~0U, 0x7FFFFFFF}), S(1, 64), "65 bits 00000000 80000000 00000000"},
            {"64 bits, both negative", S(-1, 64), S(-1, 64), "65 bits 00000001 FFFFFFFF FFFFFFFE"},
            {"100-bit 5 + -5 carries: 101 bits of zero", S(5, 100), signed_words(100, {0xFFFFFFFB, ~0U, ~0U, 0xF}),
             "101 bits 00000000 00000000 00000000 00000000"},
            {"100-bit 3 + -5", S(3, 100), signed_words(100, {0xFFFFFFFB, ~0U, ~0U, 0xF}),
             "100 bits 0000000F FFFFFFFF FFFFFFFF FFFFFFFE"},
            {"8-bit 5 + 100-bit -5", S(5, 8), signed_words(100, {0xFFFFFFFB, ~0U, ~0U, 0xF}),
             "101 bits 00000000 00000000 00000000 00000000"},
            {"100-bit 3 + 8-bit -5", S(3, 100), S(-5, 8), "100 bits 0000000F FFFFFFFF FFFFFFFF FFFFFFFE"},
        },
        [](const S& a, const S& b) { return a + b; });
}

TEST(SignedSum, MaskAndFlagsAreTheRightOperands) {
    const S marked_left = signed_marked(signed_words(8, {1}, {0x0F}, true), "ZH");
    expect_all<S, S>(
        {
            {"equal widths", marked_left, signed_marked(signed_words(8, {2}, {0x10}), "L"),
             "8 bits 00000003 x 00000010 flags L"},
            {"the right operand is narrower", signed_words(16, {1}, {0xFF}, true), signed_words(8, {2}, {0x10}),
             "16 bits 00000003 x 00000010"},
            {"the right operand is wider", marked_left, signed_words(40, {2}, {0, 1}, true),
             "40 bits 00000000 00000003 x 00000001 00000000 flags X"},
            {"the sign is the value bit, X or not", S(3, 8), signed_words(8, {0xFB}, {0x80}, true),
             "8 bits 000000FE x 00000080 flags X"},
            {"clearing the carry keeps flag X while the word holds an X", S(5, 8),
             signed_words(8, {0xFD}, {0x10}, true), "9 bits 00000002 x 00000010 flags X"},
            {"clearing the carry clears flag X without an X in the word", S(5, 8), signed_words(8, {0xFD}, {}, true),
             "9 bits 00000002"},
            {"wide: flag X goes although the low word holds an X (required)", S(5, 40),
             signed_words(8, {0xFE}, {0x10}, true), "41 bits 00000000 00000003 x 00000000 00000010"},
            {"an X mark above the width is cut off", S(1, 8), signed_words(8, {2}, {0x110}),
             "8 bits 00000003 x 00000010"},
            {"an X mark above the width comes to life in the bit by which two negative operands grow (required)",
             S(-1, 8), signed_words(8, {0xFF}, {0x100}), "9 bits 000001FE x 00000100"},
            {"100 bits: clearing the carry keeps flag X while the top word holds an X", S(5, 100),
             signed_words(100, {0xFFFFFFFB, ~0U, ~0U, 0xF}, {0, 0, 0, 2}, true),
             "101 bits 00000000 00000000 00000000 00000000 x 00000002 00000000 00000000 00000000 flags X"},
            {"overflow without an X bit clears flag X", S(127, 8), signed_words(8, {1}, {}, true), "9 bits 00000080"},
            {"overflow keeps the X bits", S(127, 8), signed_words(8, {1}, {0x80}, true),
             "9 bits 00000080 x 00000080 flags X"},
            {"overflow into a new word clears flag X (required)", S(0x7FFFFFFF, 32), signed_words(32, {1}, {1}, true),
             "33 bits 00000000 80000000 x 00000000 00000001"},
            {"no repair, flag X as it is", S(1, 8), signed_words(8, {2}, {}, true), "8 bits 00000003 flags X"},
        },
        [](const S& a, const S& b) { return a + b; });
}

TEST(SignedSum, ReadsBitsAboveTheWidth) {
    expect_all<S, S>(
        {
            {"-1 in 40 bits with ones above", S(1, 40), S(-1, 40), "41 bits 00000000 00000000"},
            {"-1 + -1, both with ones above", S(-1, 40), S(-1, 40), "41 bits 000001FF FFFFFFFE"},
            {"a compact bit above the width widens (required)", signed_words(8, {0x17F}), S(1, 8), "10 bits 00000180"},
            {"a narrower operand's becomes part of the sum (required)", signed_words(8, {0x170}), S(0, 16),
             "16 bits 00000170"},
            {"a wider operand's widens (required)", signed_words(8, {0x170}), S(0, 4), "10 bits 00000170"},
            {"a wide one's widens (required)", signed_words(40, {0, 0x100}), S(0, 40), "42 bits 00000100 00000000"},
            {"bits above the width hide the carry of two negative values (required)", signed_words(40, {0, 0x180}),
             signed_words(40, {0, 0x80}), "41 bits 00000100 00000000"},
            {"a carry out of the word below 32 bits stays inline (required)", signed_words(8, {0xFFFFFF80}), S(-128, 8),
             "10 bits 00000200"},
        },
        [](const S& a, const S& b) { return a + b; });
}

TEST(MixedSum, HasOneBitMoreThanTheWiderOperand) {
    const std::initializer_list<Case<S, U>> rows = {
        {"0 + 255", S(0, 8), U(255, 8), "9 bits 000000FF"},
        {"2 + 3", S(2, 8), U(3, 8), "9 bits 00000005"},
        {"-1 + 0", S(-1, 8), U(0, 8), "9 bits 000001FF"},
        {"-5 + 3", S(-5, 8), U(3, 8), "9 bits 000001FE"},
        {"-5 + 8", S(-5, 8), U(8, 8), "9 bits 00000003"},
        {"-128 + 0", S(-128, 8), U(0, 8), "9 bits 00000180"},
        {"-128 + 128", S(-128, 8), U(128, 8), "9 bits 00000000"},
        {"1 + 255 is 0 (required)", S(1, 8), U(255, 8), "9 bits 00000000"},
        {"-1 + 255 is -2 (required)", S(-1, 8), U(255, 8), "9 bits 000001FE"},
        {"127 + 255 loses its carry (required)", S(127, 8), U(255, 8), "9 bits 0000007E"},
        {"a narrower signed operand is sign-extended", S(-1, 4), U(5, 8), "9 bits 00000004"},
        {"a narrower unsigned operand is zero-extended", S(5, 16), U(15, 4), "17 bits 00000014"},
        {"1-bit -1 + 1-bit 1", S(-1, 1), U(1, 1), "2 bits 00000000"},
        {"31 bits: at a multiple of 32 only the bit above is cleared (required)", S(0, 31), U(0x7FFFFFFF, 31),
         "33 bits 00000000 FFFFFFFF"},
        {"31 bits, the sum carries (required)", S(1, 31), U(0x7FFFFFFF, 31), "33 bits 00000000 80000000"},
        {"31 bits, a sum without the top bit stays at 32", S(1, 31), U(2, 31), "32 bits 00000003"},
        {"31 bits, a negative sum stays at 32", S(-1, 31), U(0, 31), "32 bits FFFFFFFF"},
        {"63 bits (required)", S(0, 63), from_words(63, {~0U, 0x7FFFFFFF}), "65 bits 00000000 FFFFFFFF FFFFFFFF"},
        {"32 bits", S(0, 32), U(~0U, 32), "33 bits 00000000 FFFFFFFF"},
        {"32 bits, 1 + the largest is 0 (required)", S(1, 32), U(~0U, 32), "33 bits 00000000 00000000"},
        {"32 bits, a negative sum", S(-7, 32), U(2, 32), "33 bits 00000001 FFFFFFFB"},
        {"33 bits", S(-1, 33), U(5, 33), "34 bits 00000000 00000004"},
        {"64 bits, 1 + the largest is 0 (required)", S(1, 64), from_words(64, {~0U, ~0U}),
         "65 bits 00000000 00000000 00000000"},
        {"8-bit -1 + 40-bit 0", S(-1, 8), U(0, 40), "41 bits 000001FF FFFFFFFF"},
        {"40-bit -1 with ones above its width", S(-1, 40), U(5, 40), "41 bits 00000000 00000004"},
        {"a signed bit above the width goes with the carry (required)", signed_words(8, {0x170}), U(0, 8),
         "9 bits 00000070"},
        {"an unsigned bit above the width goes with the carry (required)", S(0, 8), from_words(8, {0x101}),
         "9 bits 00000001"},
        {"an unsigned bit above the width is trimmed by the difference", S(-1, 8), from_words(8, {0x101}),
         "9 bits 00000000"},
        {"mask and flags of the unsigned operand", signed_words(8, {1}, {0x0F}, true),
         marked(from_words(8, {2}, {0x40}), "ZL"), "9 bits 00000003 x 00000040 flags ZL"},
        {"the same below zero", signed_words(8, {0xFF}, {0x0F}), from_words(8, {0}, {1}, true),
         "9 bits 000001FF x 00000001 flags X"},
        {"wide and negative: X bits of the word with the sign are dropped (required)", S(-1, 40),
         from_words(40, {0, 0}, {1, 2}, true), "41 bits 000001FF FFFFFFFF x 00000000 00000001 flags X"},
        {"clearing the sign clears flag X without an X bit", S(0, 8), from_words(8, {0xFF}, {}, true),
         "9 bits 000000FF"},
        {"clearing the sign keeps flag X with an X bit", S(0, 8), from_words(8, {0xFF}, {1}, true),
         "9 bits 000000FF x 00000001 flags X"},
        {"growing to 33 bits clears flag X (required)", S(0, 31), from_words(31, {0x7FFFFFFF}, {1}, true),
         "33 bits 00000000 FFFFFFFF x 00000000 00000001"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(applied(row.left, row.right, [](const S& a, const U& b) { return a + b; }), row.expected);
        EXPECT_EQ(applied(row.right, row.left, [](const U& b, const S& a) { return b + a; }), row.expected);
    }
}

TEST(SignedDifference, IsExact) {
    expect_all<S, S>(
        {
            {"5 - 3", S(5, 8), S(3, 8), "8 bits 00000002"},
            {"3 - 5", S(3, 8), S(5, 8), "8 bits 000000FE"},
            {"-128 - 1", S(-128, 8), S(1, 8), "9 bits 0000017F"},
            {"127 - -1", S(127, 8), S(-1, 8), "9 bits 00000080"},
            {"-128 - -128", S(-128, 8), S(-128, 8), "8 bits 00000000"},
            {"0 - -128", S(0, 8), S(-128, 8), "9 bits 00000080"},
            {"-1 - 127 fits", S(-1, 8), S(127, 8), "8 bits 00000080"},
            {"4-bit -8 - 8-bit 127", S(-8, 4), S(127, 8), "9 bits 00000179"},
            {"8-bit 127 - 4-bit -1", S(127, 8), S(-1, 4), "9 bits 00000080"},
            {"1-bit 0 - 1-bit -1", S(0, 1), S(-1, 1), "2 bits 00000001"},
            {"1-bit -1 - 1-bit 0", S(-1, 1), S(0, 1), "1 bits 00000001"},
            {"31 bits grow to 32, still compact", signed_words(31, {0x40000000}), S(1, 31), "32 bits BFFFFFFF"},
            {"32 bits, -2147483649 in the wide form", signed_words(32, {0x80000000}), S(1, 32),
             "33 bits 00000001 7FFFFFFF"},
            {"32 bits, 2147483648 in the wide form", S(0x7FFFFFFF, 32), S(-1, 32), "33 bits 00000000 80000000"},
            {"63 bits grow to 64", signed_words(63, {0, 0x40000000}), S(1, 63), "64 bits BFFFFFFF FFFFFFFF"},
            {"64 bits grow to 65, negative", signed_words(64, {0, 0x80000000}), S(1, 64),
             "65 bits 00000001 7FFFFFFF FFFFFFFF"},
            {"64 bits grow to 65, positive", signed_words(64, {~0U, 0x7FFFFFFF}), S(-1, 64),
             "65 bits 00000000 80000000 00000000"},
            {"8-bit -1 - 40-bit 1", S(-1, 8), S(1, 40), "40 bits 000000FF FFFFFFFE"},
            {"40-bit 0 - 8-bit -1", S(0, 40), S(-1, 8), "40 bits 00000000 00000001"},
            {"40-bit -1 with ones above its width", S(-1, 40), S(1, 40), "40 bits 000000FF FFFFFFFE"},
            {"a compact bit above the width is trimmed", signed_words(8, {0x170}), S(1, 8), "8 bits 0000006F"},
            {"a narrower operand's becomes part of the difference (required)", signed_words(8, {0x170}), S(0, 16),
             "16 bits 00000170"},
        },
        [](const S& a, const S& b) { return a - b; });
}

TEST(SignedDifference, MaskAndFlagsAreTheLeftOperands) {
    expect_all<S, S>(
        {
            {"equal widths", signed_marked(signed_words(8, {5}, {3}, true), "H"), signed_words(8, {3}, {0xF0}),
             "8 bits 00000002 x 00000003 flags XH"},
            {"the left operand is narrower", signed_words(8, {5}, {3}), signed_words(16, {3}, {0xF000}, true),
             "16 bits 00000002 x 00000003"},
            {"setting the new sign clears flag X without an X bit", signed_words(8, {0x80}, {}, true), S(1, 8),
             "9 bits 0000017F"},
            {"widening alone leaves flag X (required)", signed_words(8, {0x7F}, {}, true), S(-1, 8),
             "9 bits 00000080 flags X"},
            {"a new word with the sign clears flag X (required)", signed_words(32, {0x80000000}, {1}, true), S(1, 32),
             "33 bits 00000001 7FFFFFFF x 00000000 00000001"},
            {"a new word without the sign leaves flag X", signed_words(32, {0x7FFFFFFF}, {1}, true), S(-1, 32),
             "33 bits 00000000 80000000 x 00000000 00000001 flags X"},
            {"wide and negative: X bits of the top word are dropped (required)",
             signed_words(40, {5, 0x80}, {1, 2}, true), S(1, 40),
             "40 bits 00000080 00000004 x 00000000 00000001 flags X"},
        },
        [](const S& a, const S& b) { return a - b; });
}

TEST(SignedMinusUnsigned, WrapsAtTheCommonWidth) {
    expect_all<S, U>(
        {
            {"-1 - 1", S(-1, 8), U(1, 8), "8 bits 000000FE"},
            {"0 - 255 wraps to 1 (required)", S(0, 8), U(255, 8), "8 bits 00000001"},
            {"-128 - 1 wraps to 127 (required)", S(-128, 8), U(1, 8), "8 bits 0000007F"},
            {"a narrower signed operand is sign-extended", S(-128, 8), U(1, 16), "16 bits 0000FF7F"},
            {"a narrower unsigned operand is zero-extended", S(-1, 8), U(15, 4), "8 bits 000000F0"},
            {"32 bits wrap", signed_words(32, {0x80000000}), U(1, 32), "32 bits 7FFFFFFF"},
            {"8-bit -1 - 40-bit 1", S(-1, 8), U(1, 40), "40 bits 000000FF FFFFFFFE"},
            {"40-bit 0 - 8-bit 1", S(0, 40), U(1, 8), "40 bits 000000FF FFFFFFFF"},
            {"40-bit -1 with ones above its width is trimmed", S(-1, 40), U(0, 40), "40 bits 000000FF FFFFFFFF"},
            {"mask and flags of the signed operand", signed_marked(signed_words(8, {1}, {3}, true), "Z"),
             from_words(8, {1}, {0xF0}), "8 bits 00000000 x 00000003 flags XZ"},
            {"wide and negative: all X bits stay", signed_words(40, {5, 0x80}, {1, 2}, true), U(1, 40),
             "40 bits 00000080 00000004 x 00000002 00000001 flags X"},
            {"sign extension gives known bits", signed_words(8, {0x85}, {0x81}), U(0, 40),
             "40 bits 000000FF FFFFFF85 x 00000000 00000081"},
        },
        [](const S& a, const U& b) { return a - b; });
}

TEST(UnsignedMinusSigned, ChoosesItsWidthByComparison) {
    expect_all<U, S>(
        {
            {"5 - 3", U(5, 8), S(3, 8), "8 bits 00000002"},
            {"3 - 5", U(3, 8), S(5, 8), "8 bits 000000FE"},
            {"5 - -3", U(5, 8), S(-3, 8), "9 bits 00000008"},
            {"200 - 5 reads -61 (required)", U(200, 8), S(5, 8), "8 bits 000000C3"},
            {"255 - -1 reads -256 (required)", U(255, 8), S(-1, 8), "9 bits 00000100"},
            {"200 - -5 is sign-extended (required)", U(200, 8), S(-5, 8), "9 bits 000001CD"},
            {"1 - -128 is sign-extended (required)", U(1, 8), S(-128, 8), "9 bits 00000181"},
            {"not less: the unsigned width", U(300, 16), S(5, 8), "16 bits 00000127"},
            {"equal: the unsigned width", U(5, 16), S(5, 8), "16 bits 00000000"},
            {"less: the signed width", U(3, 8), S(5, 16), "16 bits 0000FFFE"},
            {"less: the signed width, the narrower one", U(3, 16), S(5, 8), "8 bits 000000FE"},
            {"not less, truncated: the sign is cleared (required)", U(200, 8), S(5, 16), "8 bits 00000043"},
            {"a negative operand: the unsigned width + 1", U(1, 8), S(-2, 16), "9 bits 00000003"},
            {"a negative operand, truncated: the sign is cleared (required)", U(1, 8), S(-300, 16), "9 bits 0000002D"},
            {"a negative operand, truncated to 0 (required)", U(255, 8), S(-1, 32), "9 bits 00000000"},
            {"a wide negative operand, nearly the least: the sign is cleared (required)", U(3, 8),
             signed_words(100, {5, 0, 0, 0xF}), "9 bits 000000FE"},
            {"31 bits - -1 in 32 bits", U(0x7FFFFFFF, 31), S(-1, 8), "32 bits 80000000"},
            {"32 bits - -1 in the wide form", U(~0U, 32), S(-1, 32), "33 bits 00000001 00000000"},
            {"40 bits - -1", from_words(40, {~0U, 0xFF}), S(-1, 8), "41 bits 00000100 00000000"},
            {"a wide operand with a compact result, less", U(3, 40), S(5, 8), "8 bits 000000FE"},
            {"a wide operand with a compact result, not less", U(7, 8), S(3, 40), "8 bits 00000004"},
            {"a wide negative operand with a compact result", U(200, 8), signed_words(40, {~0U, 0xFF}),
             "9 bits 000000C9"},
            {"a negative operand with ones above its width", U(5, 8), S(-3, 40), "9 bits 00000008"},
            {"a magnitude with a low word of 0", U(5, 40), signed_words(40, {0, 0xFF}), "41 bits 00000001 00000005"},
            {"a magnitude with a low word of 0, compact result", U(5, 8), signed_words(40, {0, 0xFF}),
             "9 bits 00000005"},
            {"100 bits, compact result of a sum that reads negative: ones from bit 4 up (required)", U(5, 8),
             signed_words(100, {0, 0, 0, 8}), "9 bits 000001F5"},
            {"100 bits, it just reads negative", U(5, 8), signed_words(100, {5, 0, 0, 8}), "9 bits 000001F0"},
            {"100 bits, it just does not: the sign is cleared", U(5, 8), signed_words(100, {6, 0, 0, 8}),
             "9 bits 000000FF"},
            {"100 bits, it does not by a higher word", U(5, 8), signed_words(100, {0, 1, 0, 8}), "9 bits 00000005"},
            {"a sum of 65 bits, cut to 64: ones from bit 33 up (required)", U(signed_words(63, {~0U, ~0U})),
             signed_words(64, {0, 0x80000000}), "64 bits FFFFFFFF FFFFFFFF"},
            {"the magnitude 2^32 in 33 bits reads negative, and fills up from bit 1 (required)", U(5, 8),
             signed_words(33, {0, 1}), "9 bits 000001FF"},
            {"an unsigned bit above the width is compared, then trimmed", from_words(8, {0x105}), S(3, 8),
             "8 bits 00000002"},
            {"a signed bit above the width is compared (required)", U(5, 16), signed_words(8, {0x103}),
             "8 bits 00000002"},
            {"not negative: mask and flags of the left", marked(from_words(8, {5}, {1}, true), "Z"),
             signed_marked(signed_words(8, {3}, {2}), "L"), "8 bits 00000002 x 00000001 flags XZ"},
            {"negative: mask and flags of the right", marked(from_words(8, {5}, {1}, true), "Z"),
             signed_marked(signed_words(8, {0xFD}, {2}), "L"), "9 bits 00000008 x 00000002 flags L"},
            {"negative and wide: the X bits stay", U(5, 40), signed_words(40, {0xFFFFFFFD, 0xFF}, {2, 0x80}),
             "41 bits 00000000 00000008 x 00000080 00000002"},
        },
        [](const U& a, const S& b) { return a - b; });
}

TEST(SignedSums, OfAValueWithItself) {
    S v = signed_words(8, {0x80}, {4}, true);
    EXPECT_EQ(printed(v + v), "9 bits 00000100 x 00000004 flags X");
    EXPECT_EQ(printed(v - v), "8 bits 00000000 x 00000004 flags X");
    v = v + v;
    EXPECT_EQ(printed(v), "8 bits 00000000 x 00000004 flags X");
}

}  // namespace
