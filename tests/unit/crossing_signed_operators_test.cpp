// Tests of the operators with a signed operand, with operands and results on both sides of 64 bits.
#include <gtest/gtest.h>

#include <string>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

// ---- sums ----

TEST(CrossingSignedSum, IsExact) {
    expect_all<S, S>(
        {
            {"63 bits grow to 64, positive", signed_words(63, {~0U, 0x3FFFFFFF}), S(1, 63),
             "64 bits 40000000 00000000"},
            {"63 bits grow to 64, negative", signed_words(63, {0, 0x40000000}), signed_words(63, {~0U, 0x7FFFFFFF}),
             "64 bits BFFFFFFF FFFFFFFF"},
            {"63 bits, the signs differ and it carries", S(5, 63), signed_words(63, {0xFFFFFFFD, 0x7FFFFFFF}),
             "64 bits 00000000 00000002"},
            {"64 bits grow to 65, positive", signed_words(64, {~0U, 0x7FFFFFFF}), signed_words(64, {~0U, 0x7FFFFFFF}),
             "65 bits 00000000 FFFFFFFF FFFFFFFE"},
            {"64 bits grow to 65, the least twice", signed_words(64, {0, 0x80000000}),
             signed_words(64, {0, 0x80000000}), "65 bits 00000001 00000000 00000000"},
            {"64 bits, the signs differ and it carries: 65", S(5, 64), S(-3, 64), "65 bits 00000000 00000000 00000002"},
            {"64 bits, the signs differ and it does not carry: 64", S(3, 64), S(-5, 64), "64 bits FFFFFFFF FFFFFFFE"},
            {"64 bits, to 0: 65", S(5, 64), S(-5, 64), "65 bits 00000000 00000000 00000000"},
            {"65 bits grow to 66, positive", signed_words(65, {~0U, ~0U, 0}), S(1, 65),
             "66 bits 00000001 00000000 00000000"},
            {"65 bits grow to 66, negative", signed_words(65, {0, 0, 1}), signed_words(65, {~0U, ~0U, 1}),
             "66 bits 00000002 FFFFFFFF FFFFFFFF"},
            {"64 and 65 bits, negative", S(-1, 64), signed_words(65, {0, 0x80000000, 1}),
             "66 bits 00000003 7FFFFFFF FFFFFFFF"},
            {"64 and 65 bits, positive, no growth", signed_words(64, {~0U, 0x7FFFFFFF}), signed_words(65, {1, 0, 0}),
             "65 bits 00000000 80000000 00000000"},
            {"8 and 64 bits, negative: 65", S(-1, 8), signed_words(64, {0, 0x80000000}),
             "65 bits 00000001 7FFFFFFF FFFFFFFF"},
            {"64 and 8 bits, positive: 65", signed_words(64, {~0U, 0x7FFFFFFF}), S(1, 8),
             "65 bits 00000000 80000000 00000000"},
            {"32 and 64 bits: the sign fills word 1", signed_words(32, {0x80000000}), S(1, 64),
             "64 bits FFFFFFFF 80000001"},
            {"40 and 100 bits, both negative", signed_words(40, {5, 0x80}), signed_words(100, {~0U, ~0U, ~0U, 0xF}),
             "101 bits 0000001F FFFFFFFF FFFFFF80 00000004"},
            {"100 and 64 bits, the signs differ", signed_words(100, {0, 0, 0, 1}), S(-1, 64),
             "101 bits 00000000 FFFFFFFF FFFFFFFF FFFFFFFF"},
            {"-1 in 40 bits with ones above and 64 bits", S(-1, 40), S(1, 64), "65 bits 00000000 00000000 00000000"},
            {"-1 in 65 bits: the ones above hide the carry of two negative values (required)", S(-1, 65), S(-1, 8),
             "67 bits 00000005 FFFFFFFF FFFFFFFE"},
            {"a bit above 63 is the grown bit, and then the sign (required)", signed_words(63, {5, 0x80000000}),
             S(1, 63), "65 bits 00000000 80000000 00000006"},
            {"bits above 40 hide the carry of two negative values (required)", signed_words(40, {0, 0xFFFFFF80}),
             signed_words(40, {0, 0x80}), "42 bits 00000200 00000000"},
            {"X bits and flags of b; growing into word 2 clears flag X (required)",
             signed_words(64, {~0U, 0x7FFFFFFF}, {1, 1}),
             signed_marked(signed_words(64, {1, 0}, {2, 0x80000000}, true), "L"),
             "65 bits 00000000 80000000 00000000 x 00000000 80000000 00000002 flags L"},
        },
        [](const S& a, const S& b) { return a + b; });
}

TEST(CrossingMixedSum, HasOneBitMoreThanTheWiderOperand) {
    const std::initializer_list<Case<S, U>> rows = {
        {"63 bits: 64, which takes 65 where it reads negative (required)", S(0, 63), from_words(63, {5, 0x40000000}),
         "65 bits 00000000 C0000000 00000005"},
        {"63 bits, a carry: 65 (required)", S(1, 63), from_words(63, {~0U, 0x7FFFFFFF}),
         "65 bits 00000000 80000000 00000000"},
        {"63 bits, a sum without the top bit: 64", S(1, 63), from_words(63, {5, 0x20000000}),
         "64 bits 20000000 00000006"},
        {"63 bits, a negative sum: 64", S(-7, 63), U(5, 63), "64 bits FFFFFFFF FFFFFFFE"},
        {"63 bits, from below zero to above: 64", S(-7, 63), from_words(63, {5, 1}), "64 bits 00000000 FFFFFFFE"},
        {"64 bits: 65", S(7, 64), from_words(64, {~0U, 0x7FFFFFFF}), "65 bits 00000000 80000000 00000006"},
        {"64 bits, the sum carries and the carry is lost (required)", S(7, 64), from_words(64, {~0U, ~0U}),
         "65 bits 00000000 00000000 00000006"},
        {"64 bits, a negative sum: 65", S(-7, 64), U(5, 64), "65 bits 00000001 FFFFFFFF FFFFFFFE"},
        {"64 bits, the least and the largest (required)", signed_words(64, {0, 0x80000000}), from_words(64, {~0U, ~0U}),
         "65 bits 00000000 7FFFFFFF FFFFFFFF"},
        {"65 bits: 66", S(7, 65), from_words(65, {5, 5, 0}), "66 bits 00000000 00000005 0000000C"},
        {"65 bits, a negative sum: 66", S(-7, 65), from_words(65, {5, 0, 0}), "66 bits 00000003 FFFFFFFF FFFFFFFE"},
        {"8 and 64 bits", S(-1, 8), from_words(64, {0, 1}), "65 bits 00000000 00000000 FFFFFFFF"},
        {"32 and 63 bits, a negative sum", signed_words(32, {0x80000000}), U(5, 63), "64 bits FFFFFFFF 80000005"},
        {"100 and 40 bits", signed_words(100, {0, 0, 0, 8}), from_words(40, {5, 0xFF}),
         "101 bits 00000018 00000000 000000FF 00000005"},
        {"64 and 65 bits: the sign fills word 2", S(-5, 64), from_words(65, {3, 0, 1}),
         "66 bits 00000000 FFFFFFFF FFFFFFFE"},
        {"-1 in 40 bits with ones above and 64 bits", S(-1, 40), from_words(64, {0, 5}),
         "65 bits 00000000 00000004 FFFFFFFF"},
        {"bits above 40 of the unsigned one and 64 bits (required)", S(1, 64), from_words(40, {~0U, 0xFFFFFF00}),
         "65 bits 00000000 FFFFFF01 00000000"},
        {"X bits and flags of the unsigned one, growing into word 2 (required)", S(0, 63),
         marked(from_words(63, {~0U, 0x7FFFFFFF}, {1, 2}, true), "H"),
         "65 bits 00000000 FFFFFFFF FFFFFFFF x 00000000 00000000 00000001 flags H"},
        {"below zero, 64 bits: no word with a sign of its own, X bits stay", S(-7, 64),
         from_words(64, {5, 0}, {1, 0x80000000}, true),
         "65 bits 00000001 FFFFFFFF FFFFFFFE x 00000000 80000000 00000001 flags X"},
        {"below zero, 63 bits: X bits of word 1 are dropped (required)", S(-7, 63),
         from_words(63, {5, 0}, {1, 2}, true), "64 bits FFFFFFFF FFFFFFFE x 00000000 00000001 flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(applied(row.left, row.right, [](const S& a, const U& b) { return a + b; }), row.expected);
        EXPECT_EQ(applied(row.right, row.left, [](const U& b, const S& a) { return b + a; }), row.expected);
    }
}

// ---- differences ----

TEST(CrossingSignedDifference, IsExact) {
    expect_all<S, S>(
        {
            {"63 bits grow to 64, positive", signed_words(63, {~0U, 0x3FFFFFFF}), S(-1, 63),
             "64 bits 40000000 00000000"},
            {"64 bits grow to 65, positive", signed_words(64, {~0U, 0x7FFFFFFF}), signed_words(64, {0, 0x80000000}),
             "65 bits 00000000 FFFFFFFF FFFFFFFF"},
            {"64 bits grow to 65, negative", signed_words(64, {0, 0x80000000}), signed_words(64, {~0U, 0x7FFFFFFF}),
             "65 bits 00000001 00000000 00000001"},
            {"65 bits grow to 66, negative", signed_words(65, {0, 0, 1}), S(1, 65),
             "66 bits 00000002 FFFFFFFF FFFFFFFF"},
            {"65 bits grow to 66, positive", S(0, 65), signed_words(65, {0, 0, 1}),
             "66 bits 00000001 00000000 00000000"},
            {"64 less 65 bits", signed_words(64, {0, 0x80000000}), S(1, 65), "65 bits 00000001 7FFFFFFF FFFFFFFF"},
            {"65 less 64 bits", S(0, 65), signed_words(64, {0, 0x80000000}), "65 bits 00000000 80000000 00000000"},
            {"8 less 64 bits: 65", S(5, 8), signed_words(64, {0, 0x80000000}), "65 bits 00000000 80000000 00000005"},
            {"64 less 8 bits: 65", signed_words(64, {0, 0x80000000}), S(1, 8), "65 bits 00000001 7FFFFFFF FFFFFFFF"},
            {"100 less 40 bits", signed_words(100, {0, 0, 1, 0}), signed_words(40, {~0U, 0x7F}),
             "100 bits 00000000 00000000 FFFFFF80 00000001"},
            {"-1 in 40 bits with ones above less 100 bits", S(-1, 40), S(1, 100),
             "100 bits 0000000F FFFFFFFF FFFFFFFF FFFFFFFE"},
            {"a bit above 40 and 64 bits (required)", signed_words(40, {5, 0x100}), S(1, 64),
             "64 bits 00000100 00000004"},
            {"X bits and flags of a; a word with the sign clears flag X (required)",
             signed_marked(signed_words(64, {0, 0x80000000}, {1, 2}, true), "L"), S(1, 64),
             "65 bits 00000001 7FFFFFFF FFFFFFFF x 00000000 00000002 00000001 flags L"},
            {"X bits and flags of a; a word without it leaves flag X",
             signed_words(64, {~0U, 0x7FFFFFFF}, {1, 2}, true), S(-1, 64),
             "65 bits 00000000 80000000 00000000 x 00000000 00000002 00000001 flags X"},
        },
        [](const S& a, const S& b) { return a - b; });
}

TEST(CrossingSignedMinusUnsigned, WrapsAtTheCommonWidth) {
    expect_all<S, U>(
        {
            {"64 bits wrap", signed_words(64, {0, 0x80000000}), U(1, 64), "64 bits 7FFFFFFF FFFFFFFF"},
            {"64 less 65 bits: the sign fills word 2", S(-1, 64), from_words(65, {0, 0, 1}),
             "65 bits 00000000 FFFFFFFF FFFFFFFF"},
            {"8 less 64 bits", S(-1, 8), from_words(64, {0, 1}), "64 bits FFFFFFFE FFFFFFFF"},
            {"65 less 40 bits", S(0, 65), from_words(40, {1, 0x80}), "65 bits 00000001 FFFFFF7F FFFFFFFF"},
            {"-1 in 40 bits with ones above less 65 bits", S(-1, 40), from_words(65, {1, 0, 0}),
             "65 bits 00000001 FFFFFFFF FFFFFFFE"},
        },
        [](const S& a, const U& b) { return a - b; });
}

// The width is that of the greater operand where the signed one is not negative, else the unsigned one's and 1.
TEST(CrossingUnsignedMinusSigned, ByAnOperandThatIsNotNegative) {
    expect_all<U, S>(
        {
            {"100 bits, not less: 100", from_words(100, {5, 0, 0, 1}), S(7, 8),
             "100 bits 00000000 FFFFFFFF FFFFFFFF FFFFFFFE"},
            {"65 bits, less: 8; ones from bit 1 up (required)", U(3, 65), S(5, 8), "8 bits 000000FE"},
            {"64 bits, less: 8; the low word as it is", U(3, 64), S(5, 8), "8 bits 000000FE"},
            {"96 bits, less: 40; the low words as they are", U(3, 96), S(5, 40), "40 bits 000000FF FFFFFFFE"},
            {"100 bits, less: 40; ones from bit 4 of word 1 up (required)", U(3, 100), signed_words(40, {5, 1}),
             "40 bits 000000FE FFFFFFFE"},
            {"100 bits, less: 64; ones from bit 4 of word 1 up (required)", U(3, 100), signed_words(64, {5, 0x12}),
             "64 bits FFFFFFFD FFFFFFFE"},
            {"64 bits, less: 65", U(3, 64), signed_words(65, {5, 0, 0}), "65 bits 00000001 FFFFFFFF FFFFFFFE"},
            {"8 bits, less: 65", U(3, 8), signed_words(65, {5, 7, 0}), "65 bits 00000001 FFFFFFF8 FFFFFFFE"},
            {"8 bits, not less than 65: 8", U(7, 8), S(5, 65), "8 bits 00000002"},
            {"8 bits, not less than 65: 8, and the sign is cleared (required)", U(0x87, 8), S(5, 65),
             "8 bits 00000002"},
            {"64 bits, not less than 100: 64, and the sign is cleared (required)", from_words(64, {5, 0x80000007}),
             S(5, 100), "64 bits 00000007 00000000"},
            {"64 bits, not less than 65: 64", from_words(64, {5, 7}), signed_words(65, {6, 6, 0}),
             "64 bits 00000000 FFFFFFFF"},
            {"64 bits, equal to 65: 64", from_words(64, {5, 7}), signed_words(65, {5, 7, 0}),
             "64 bits 00000000 00000000"},
            {"a bit above 40 is compared and counts (required)", from_words(65, {0, 0x100, 0}),
             signed_words(40, {1, 0x100}), "40 bits 000000FF FFFFFFFF"},
            {"X bits and flags of the left, cut from 100 bits",
             marked(from_words(100, {3, 0, 0, 0}, {9, 9, 9, 9}, true), "Z"), signed_words(40, {5, 0}),
             "40 bits 000000FF FFFFFFFE x 00000009 00000009 flags XZ"},
        },
        [](const U& a, const S& b) { return a - b; });
}

TEST(CrossingUnsignedMinusSigned, ByANegativeOperand) {
    expect_all<U, S>(
        {
            {"8 bits less -1 of 65: 9", U(5, 8), S(-1, 65), "9 bits 00000006"},
            {"8 bits less the least of 65: ones from bit 1 up (required)", U(4, 8), signed_words(65, {0, 0, 1}),
             "9 bits 000001FE"},
            {"32 bits less the least of 65: 33", U(4, 32), signed_words(65, {0, 0, 1}), "33 bits 00000000 00000004"},
            {"40 bits less the least of 100: ones from bit 4 of word 1 up (required)", from_words(40, {4, 2}),
             signed_words(100, {0, 0, 0, 8}), "41 bits 000001F2 00000004"},
            {"40 bits less -2^64 of 100, cut to 41", from_words(40, {4, 2}), signed_words(100, {0, 0, ~0U, 0xF}),
             "41 bits 00000002 00000004"},
            {"63 bits less the least of 65: ones from bit 1 of word 1 up (required)", from_words(63, {4, 8}),
             signed_words(65, {0, 0, 1}), "64 bits FFFFFFFE 00000004"},
            {"63 bits less -1 of 65: 64", from_words(63, {~0U, 0x7FFFFFFF}), S(-1, 65), "64 bits 00000000 00000000"},
            {"63 bits less -2^63 of 65: 64, and the sign is cleared (required)", from_words(63, {4, 8}),
             signed_words(65, {0, 0x80000000, 1}), "64 bits 00000008 00000004"},
            {"63 bits less the least of 64: 64", from_words(63, {4, 8}), signed_words(64, {0, 0x80000000}),
             "64 bits 80000008 00000004"},
            {"63 bits less the least of 63: 64, sign-extended (required)", from_words(63, {4, 8}),
             signed_words(63, {0, 0x40000000}), "64 bits C0000008 00000004"},
            {"64 bits less -1 of 64, a carry: 65", from_words(64, {~0U, ~0U}), S(-1, 64),
             "65 bits 00000001 00000000 00000000"},
            {"64 bits less the least of 64, a carry: 65", from_words(64, {4, 0x80000000}),
             signed_words(64, {0, 0x80000000}), "65 bits 00000001 00000000 00000004"},
            {"64 bits less the least of 64, no carry: 65, sign-extended (required)", from_words(64, {4, 8}),
             signed_words(64, {0, 0x80000000}), "65 bits 00000001 80000008 00000004"},
            {"64 bits less -1 of 8, a carry: 65", from_words(64, {~0U, ~0U}), S(-1, 8),
             "65 bits 00000001 00000000 00000000"},
            {"64 bits less the least of 65: 65", from_words(64, {4, 8}), signed_words(65, {0, 0, 1}),
             "65 bits 00000001 00000008 00000004"},
            {"64 bits less the least of 96: 65; the low words and a 0", from_words(64, {4, 8}),
             signed_words(96, {0, 0, 0x80000000}), "65 bits 00000000 00000008 00000004"},
            {"64 bits less -1 of 100: 65", from_words(64, {~0U, ~0U}), S(-1, 100),
             "65 bits 00000000 00000000 00000000"},
            {"65 bits less -1 of 65, a carry: 66", from_words(65, {~0U, ~0U, 1}), S(-1, 65),
             "66 bits 00000002 00000000 00000000"},
            {"100 bits less -1 of 40 with ones above", from_words(100, {~0U, ~0U, 0, 0}), S(-1, 40),
             "101 bits 00000000 00000001 00000000 00000000"},
            {"31 bits less the least of 100: 32, ones from bit 4 up (required)", U(5, 31),
             signed_words(100, {0, 0, 0, 8}), "32 bits FFFFFFF5"},
            {"X bits and flags of the right, cut from 100 bits", from_words(40, {4, 2}, {1, 1}, true),
             signed_marked(signed_words(100, {~0U, ~0U, ~0U, 0xF}, {6, 7, 8, 9}), "H"),
             "41 bits 00000002 00000005 x 00000007 00000006 flags H"},
        },
        [](const U& a, const S& b) { return a - b; });
}

// ---- products ----

TEST(CrossingSignedProduct, IsAsWideAsBothOperands) {
    expect_all<S, S>(
        {
            {"32 by 32 bits", S(-5, 32), signed_words(32, {0x80000000}), "64 bits 00000002 80000000"},
            {"33 by 31 bits", signed_words(33, {0, 1}), S(3, 31), "64 bits FFFFFFFD 00000000"},
            {"33 by 32 bits", signed_words(33, {0, 1}), signed_words(32, {0x80000000}),
             "65 bits 00000000 80000000 00000000"},
            {"33 by 32 bits, -1 with ones above", S(-1, 33), S(3, 32), "65 bits 00000001 FFFFFFFF FFFFFFFD"},
            {"1 by 64 bits", S(-1, 1), signed_words(64, {0, 0x80000000}), "65 bits 00000000 80000000 00000000"},
            {"63 by 1 bit", signed_words(63, {5, 0x40000000}), S(-1, 1), "64 bits 3FFFFFFF FFFFFFFB"},
            {"64 by 64 bits, the least twice", signed_words(64, {0, 0x80000000}), signed_words(64, {0, 0x80000000}),
             "128 bits 40000000 00000000 00000000 00000000"},
            {"40 by 25 bits", S(-7, 40), S(9, 25), "65 bits 00000001 FFFFFFFF FFFFFFC1"},
            {"a bit above 40 counts (required)", signed_words(40, {3, 0x100}), S(-1, 24), "64 bits FFFFFEFF FFFFFFFD"},
            {"flag X, 65 bits, then negated", signed_words(33, {3, 0}, {}, true), S(-1, 32),
             "65 bits 00000000 00000000 00000000 x 00000001 FFFFFFFF FFFFFFFF flags X"},
        },
        [](const S& a, const S& b) { return a * b; });
    expect_all<S, U>(
        {
            {"32 by 32 bits", S(-1, 32), U(~0U, 32), "64 bits FFFFFFFF 00000001"},
            {"33 by 31 bits", signed_words(33, {0, 1}), U(0x7FFFFFFF, 31), "64 bits 80000001 00000000"},
            {"64 by 1 bit", signed_words(64, {0, 0x80000000}), U(1, 1), "65 bits 00000001 80000000 00000000"},
            {"8 by 64 bits", S(-128, 8), from_words(64, {~0U, ~0U}), "72 bits 00000080 00000000 00000080"},
            {"-1 in 40 bits with ones above, by 25", S(-1, 40), U(0x1FFFFFF, 25), "65 bits 00000001 FFFFFFFF FE000001"},
        },
        [](const S& a, const U& b) { return a * b; });
}

// ---- shifts ----

struct Shift {
    const char* name;
    S value;
    unsigned count;
    const char* want;
};

TEST(CrossingSignedShiftRight, NarrowsByTheCount) {
    const Shift rows[] = {
        {"65 bits by 1: 64", signed_words(65, {3, 1, 1}, {2, 1, 1}, true), 1,
         "64 bits 80000000 80000001 x 80000000 80000001 flags X"},
        {"65 bits by 2: 63", signed_words(65, {7, 0, 1}), 2, "63 bits 40000000 00000001"},
        {"65 bits by 32: 33", signed_words(65, {7, 0x80000001, 1}), 32, "33 bits 00000001 80000001"},
        {"65 bits by 33: 32", signed_words(65, {7, 0x80000001, 1}), 33, "32 bits C0000000"},
        {"65 bits by 64: 1", signed_words(65, {7, 0x80000001, 1}), 64, "1 bits 00000001"},
        {"65 bits by 65, negative: -1 without X bits and flags", signed_words(65, {7, 0, 1}, {1, 1, 1}, true), 65,
         "1 bits 00000001"},
        {"65 bits by 65, not negative: 0 with the flags", signed_words(65, {7, 9, 0}, {1, 1, 1}, true), 65,
         "1 bits 00000000 flags X"},
        {"100 bits by 36: 64", signed_words(100, {1, 2, 3, 8}), 36, "64 bits 80000000 30000000"},
        {"100 bits by 67: 33", signed_words(100, {1, 2, 8, 8}), 67, "33 bits 00000001 00000001"},
        {"100 bits by 68: 32", signed_words(100, {1, 2, 0x30, 8}), 68, "32 bits 80000003"},
        {"64 bits by 31: 33", signed_words(64, {1, 0x80000001}), 31, "33 bits 00000001 00000002"},
        {"64 bits by 63: 1", signed_words(64, {1, 0x80000001}), 63, "1 bits 00000001"},
        {"64 bits by 64, negative", signed_words(64, {1, 0x80000001}, {1, 1}, true), 64, "1 bits 00000001"},
        {"64 bits by 64, not negative", signed_marked(signed_words(64, {1, 1}), "H"), 64, "1 bits 00000000 flags H"},
        {"33 bits by 96, not negative", signed_words(33, {~0U, 0}), 96, "1 bits 00000000"},
        {"33 bits by 1: 32", signed_words(33, {5, 1}, {4, 1}), 1, "32 bits 80000002 x 80000002"},
        {"-1 in 65 bits with ones above, by 1", S(-1, 65), 1, "64 bits FFFFFFFF FFFFFFFF"},
        {"-1 in 40 bits with ones above, by 8: 32", S(-1, 40), 8, "32 bits FFFFFFFF"},
        {"32 bits by a count that reads as -32: 64 (required)", S(0x12345678, 32), 0xFFFFFFE0,
         "64 bits 00000000 12345678"},
        {"8 bits by a count that reads as -57: 65, no sign is filled in (required)", S(-1, 8), 0xFFFFFFC7,
         "65 bits 00000000 00000000 00000001"},
    };
    for (const Shift& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(row.value >> row.count), row.want);
    }
}

// A negative value gets its whole top word filled, and part of the next below, on either side of 64 bits alike.
TEST(CrossingSignedShiftRight, InPlaceFillsMoreThanTheSignRequired) {
    const Shift rows[] = {
        {"48 bits by 0", signed_words(48, {5, 0x8000}), 0, "48 bits 0000FFFF FFFF0005"},
        {"48 bits by 1", signed_words(48, {5, 0x8000}), 1, "48 bits 0000FFFF FFFF8002"},
        {"48 bits by 16", signed_words(48, {5, 0x8000}), 16, "48 bits 0000FFFF FFFFFFFF"},
        {"48 bits by 17", signed_words(48, {5, 0x8000}), 17, "48 bits 0000FFFF FFFFFFFF"},
        {"48 bits by 47", signed_words(48, {5, 0x8000}), 47, "48 bits 0000FFFF FFFFFFFF"},
        {"48 bits by 48", signed_words(48, {5, 0x8000}), 48, "48 bits 0000FFFF FFFFFFFF"},
        {"63 bits by 0", signed_words(63, {5, 0x40000000}), 0, "63 bits 7FFFFFFF 80000005"},
        {"63 bits by 1", signed_words(63, {5, 0x40000000}), 1, "63 bits 7FFFFFFF C0000002"},
        {"63 bits by 31", signed_words(63, {0, 0x40000000}), 31, "63 bits 7FFFFFFF FFFFFFFF"},
        {"63 bits by 62", signed_words(63, {0, 0x40000000}), 62, "63 bits 7FFFFFFF FFFFFFFF"},
        {"64 bits by 0", signed_words(64, {5, 0x80000000}), 0, "64 bits 80000000 00000005"},
        {"64 bits by 27", signed_words(64, {5, 0x80000000}), 27, "64 bits FFFFFFFF FFFFFFFF"},
        {"64 bits by 31", signed_words(64, {5, 0x80000000}), 31, "64 bits FFFFFFFF C0000000"},
        {"64 bits by 33", signed_words(64, {5, 0x80000000}), 33, "64 bits FFFFFFFF FFFFFFFF"},
        {"64 bits by 2^31", signed_words(64, {5, 0x80000000}), 0x80000000, "64 bits FFFFFFFF FFFFFFFF"},
        {"64 bits by 2^32 - 1", signed_words(64, {5, 0x80000000}), 0xFFFFFFFF, "64 bits C0000000 00000000"},
        {"65 bits by 0", signed_words(65, {5, 0, 1}), 0, "65 bits 00000001 FFFFFFFE 00000005"},
        {"65 bits by 2", signed_words(65, {5, 0, 1}), 2, "65 bits 00000001 C0000000 00000001"},
        {"65 bits by 32", signed_words(65, {0, 0, 1}), 32, "65 bits 00000001 FFFFFFFF FFFFFFFE"},
        {"65 bits by 33", signed_words(65, {0, 0, 1}), 33, "65 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"96 bits by 1", signed_words(96, {5, 0, 0x80000000}), 1, "96 bits FFFFFFFF FFFFFFFF 00000002"},
        {"96 bits by 31", signed_words(96, {5, 0, 0x80000000}), 31, "96 bits FFFFFFFF C0000000 00000000"},
        {"96 bits by 60", signed_words(96, {5, 0, 0x80000000}), 60, "96 bits FFFFFFFF FFFFFFFF FFFF0000"},
        {"100 bits by 4", signed_words(100, {5, 0, 0, 8}), 4, "100 bits 0000000F FFFFFFFF 00000000 00000000"},
        {"100 bits by 36", signed_words(100, {5, 0, 0, 8}), 36, "100 bits 0000000F FFFFFFFF FFFFFFFF 00000000"},
        {"40 bits with ones above by 4", S(-16, 40), 4, "40 bits 000000FF FFFFFFFF"},
        {"40 bits by 40: X bits stay", signed_words(40, {5, 0x80}, {1, 2}, true), 40,
         "40 bits 000000FF FFFFFFFF x 00000002 00000001 flags X"},
        {"40 bits by 4: X bits shift unfilled", signed_words(40, {5, 0x80}, {0x10, 2}, true), 4,
         "40 bits 000000FF FFFFFFF0 x 00000000 20000001 flags X"},
    };
    for (const Shift& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        EXPECT_EQ(&(v >>= row.count), &v);
        EXPECT_EQ(printed(v), row.want);
        EXPECT_FALSE(keeps_text(v));
    }
}

// ---- comparison ----

template <class Left, class Right>
struct Comparison {
    const char* name;
    Left left;
    Right right;
    int order;
    bool equal;
    bool unequal;
};

template <class Left, class Right>
void expect_comparison(const Comparison<Left, Right>& row) {
    SCOPED_TRACE(row.name);
    const Left& l = row.left;
    const Right& r = row.right;
    EXPECT_EQ(l < r, row.order < 0);
    EXPECT_EQ(r > l, row.order < 0);
    EXPECT_EQ(l > r, row.order > 0);
    EXPECT_EQ(l <= r, row.order <= 0);
    EXPECT_EQ(l >= r, row.order >= 0);
    EXPECT_EQ(l == r, row.equal);
    EXPECT_EQ(r == l, row.equal);
    EXPECT_EQ(l != r, row.unequal);
}

TEST(CrossingSignedCompare, ByTheSignAndThenTheExtendedBits) {
    const Comparison<S, S> rows[] = {
        {"-1 in 64 bits and in 65: equal, yet != (required)", signed_words(64, {~0U, ~0U}),
         signed_words(65, {~0U, ~0U, 1}), 0, true, true},
        {"-1 in 8 bits and in 100: equal, yet != (required)", S(-1, 8), signed_words(100, {~0U, ~0U, ~0U, 0xF}), 0,
         true, true},
        {"-2^63 in 64 bits and in 65", signed_words(64, {0, 0x80000000}), signed_words(65, {0, 0x80000000, 1}), 0, true,
         true},
        {"-2^63 in 64 bits and -2^64 in 65", signed_words(64, {0, 0x80000000}), signed_words(65, {0, 0, 1}), 1, false,
         true},
        {"33 bits and 65, word 0 decides", signed_words(33, {4, 1}), signed_words(65, {5, ~0U, 1}), -1, false, true},
        {"40 bits and 100, word 2 decides", signed_words(40, {4, 0x80}), signed_words(100, {5, ~0U, 0, 0xF}), 1, false,
         true},
        {"the signs decide, 64 and 65 bits", signed_words(64, {~0U, 0x7FFFFFFF}), signed_words(65, {0, 0, 1}), 1, false,
         true},
        {"not negative, 64 and 65 bits", signed_words(64, {5, 6}), signed_words(65, {5, 6, 0}), 0, true, false},
        {"-1 in 40 bits with ones above and trimmed in 65: equal", S(-1, 40), signed_words(65, {~0U, ~0U, 1}), 0, true,
         true},
        {"-1 in 65 bits with ones above and in 40 bits: greater, though equal (required)", S(-1, 65), S(-1, 40), 1,
         true, true},
        {"below zero X bits do not count for ==", signed_words(64, {5, 0x80000000}, {1, 1}, true),
         signed_words(65, {5, 0x80000000, 1}), 0, true, true},
        {"a bit above 40 counts from zero up", signed_words(40, {5, 0x100}), signed_words(65, {5, 0, 0}), 1, false,
         true},
    };
    for (const auto& row : rows) expect_comparison(row);
    const Comparison<S, U> mixed[] = {
        {"-1 in 64 bits and the same bits", signed_words(64, {~0U, ~0U}), from_words(65, {~0U, ~0U, 0}), -1, false,
         false},
        {"64 bits and the same number in 65", signed_words(64, {5, 6}), from_words(65, {5, 6, 0}), 0, true, false},
        {"66 bits and 64, word 2 decides", signed_words(66, {0, 0, 1}), from_words(64, {~0U, ~0U}), 1, false, true},
        {"32 bits and 64, word 1 decides", signed_words(32, {0x7FFFFFFF}), from_words(64, {0, 1}), -1, false, true},
    };
    for (const auto& row : mixed) expect_comparison(row);
}

// ---- division ----

// A divisor whose low word is 0 counts as zero, whatever its other words hold, and is asked for before any width.
TEST(CrossingSignedDivision, AZeroDivisorGivesAllXInAnyWidth) {
    const auto all_x = [](unsigned width) { return printed(KVAL_UINTEGER(0, width).force_x()); };
    EXPECT_EQ(all_x(65), "65 bits 00000000 00000000 00000000 x 00000001 FFFFFFFF FFFFFFFF flags X");
    for (const unsigned left : {1U, 32U, 33U, 40U, 63U, 64U, 65U, 100U}) {
        for (const unsigned right : {1U, 32U, 33U, 40U, 63U, 64U, 65U, 100U}) {
            SCOPED_TRACE(std::to_string(left) + " by " + std::to_string(right) + " bits");
            U dividend(5, left), divisor(0, right);
            if (right > 32) divisor.set_bit(static_cast<int>(right) - 1, 1).set_bit(32, 1);
            const S a(dividend), b(divisor);
            for (const S& quotient :
                 {a / b, dividend / b, a / divisor, posr_div(a, b), posr_div(dividend, b), posr_div(a, divisor)}) {
                EXPECT_EQ(printed(quotient), all_x(left));
            }
            for (const S& remainder :
                 {a % b, dividend % b, a % divisor, posr_mod(a, b), posr_mod(dividend, b), posr_mod(a, divisor)}) {
                EXPECT_EQ(printed(remainder), all_x(right));
            }
        }
    }
}

// Below zero and with a remainder, the Euclidean functions by an unsigned divisor work on the low words in any width.
TEST(CrossingSignedDivision, EuclideanOfWideOperandsByTheirLowWordsRequired) {
    const struct {
        const char* name;
        S dividend;
        U divisor;
        const char* quotient;
        const char* remainder;
    } rows[] = {
        {"-7 in 64 bits by 2", S(-7, 64), U(2, 8), "64 bits FFFFFFFF FFFFFFFC", "8 bits 00000001"},
        {"-7 in 63 bits with a one above, by 2", S(-7, 63), U(2, 8), "63 bits 7FFFFFFF FFFFFFFC", "8 bits 00000001"},
        {"40 bits: the low word reads -123", signed_words(40, {5, 0x80}), U(10, 40), "40 bits 000000FF FFFFFFF3",
         "40 bits 00000000 00000007"},
        {"64 bits: the low word reads -2147483643", signed_words(64, {5, 0x80000000}), U(0x10000, 64),
         "64 bits FFFFFFFF FFFF8000", "64 bits 00000000 00000005"},
        {"65 bits, a quotient of 1 and more is X", signed_words(65, {0xFFFFFFF9, ~0U, 1}), U(2, 65),
         "65 bits 00000000 00000000 00000000 x 00000001 FFFFFFFF FFFFFFFF flags X",
         "65 bits 00000000 00000000 00000000 x 00000001 FFFFFFFF FFFFFFFF flags X"},
        {"65 bits, a quotient below 1", signed_words(65, {0xFFFFFFF9, ~0U, 1}), U(10, 65),
         "65 bits 00000001 FFFFFFFF FFFFFFFF", "65 bits 00000000 00000000 00000003"},
        {"100 bits: the low word reads -8", signed_words(100, {0x18, 0, 0, 8}), U(3, 100),
         "100 bits 0000000F FFFFFFFF FFFFFFFF FFFFFFFD", "100 bits 00000000 00000000 00000000 00000001"},
        {"8 bits by 64 with more words than the low one", S(-7, 8), from_words(64, {5, 9}), "8 bits 000000FE",
         "64 bits 00000000 00000003"},
        {"8 bits by 65 with more words than the low one", S(-7, 8), from_words(65, {5, 9, 1}), "8 bits 000000FE",
         "65 bits 00000000 00000000 00000003"},
        {"40 bits, not negative in fact, but the low word reads so", signed_words(40, {0xFFFFFFF9, 1}), U(2, 64),
         "40 bits 000000FF FFFFFFFC", "64 bits 00000000 00000001"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(applied(row.dividend, row.divisor, [](const S& a, const U& b) { return posr_div(a, b); }),
                  row.quotient);
        EXPECT_EQ(applied(row.dividend, row.divisor, [](const S& a, const U& b) { return posr_mod(a, b); }),
                  row.remainder);
    }
}

}  // namespace
