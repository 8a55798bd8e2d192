// Tests of the unsigned operators with operands and results on both sides of 64 bits.
#include <gtest/gtest.h>

#include <string>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;

KVAL_UINTEGER sum(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l + r; }
KVAL_UINTEGER difference(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l - r; }
KVAL_UINTEGER product(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l * r; }
KVAL_UINTEGER bit_and(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l & r; }
KVAL_UINTEGER bit_or(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l | r; }
KVAL_UINTEGER bit_xor(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l ^ r; }
KVAL_UINTEGER shifted_left(const KVAL_UINTEGER& v, unsigned count) { return v << count; }
KVAL_UINTEGER shifted_right(const KVAL_UINTEGER& v, unsigned count) { return v >> count; }
KVAL_UINTEGER& add_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l += r; }
KVAL_UINTEGER& subtract_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l -= r; }
KVAL_UINTEGER& and_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l &= r; }
KVAL_UINTEGER& or_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l |= r; }

// ---- shifts ----

TEST(CrossingShift, Left) {
    const NumberRow rows[] = {
        {"1 bit by 63", from_words(1, {1}), 63, "64 bits 80000000 00000000"},
        {"1 bit by 64", from_words(1, {1}), 64, "65 bits 00000001 00000000 00000000"},
        {"1 bit by 96", from_words(1, {1}), 96, "97 bits 00000001 00000000 00000000 00000000"},
        {"31 bits by 33", from_words(31, {0x40000001}), 33, "64 bits 80000002 00000000"},
        {"31 bits by 34", from_words(31, {0x40000001}), 34, "65 bits 00000001 00000004 00000000"},
        {"32 bits by 32: every bit into word 1", from_words(32, {0x89ABCDEF}, {0x80000001}), 32,
         "64 bits 89ABCDEF 00000000 x 80000001 00000000"},
        {"32 bits by 33", from_words(32, {0x89ABCDEF}, {0x80000001}, true), 33,
         "65 bits 00000001 13579BDE 00000000 x 00000001 00000002 00000000 flags X"},
        {"33 bits by 31", from_words(33, {0x89ABCDEF, 1}, {0, 1}), 31, "64 bits C4D5E6F7 80000000 x 80000000 00000000"},
        {"33 bits by 32", from_words(33, {0x89ABCDEF, 1}, {0, 1}), 32,
         "65 bits 00000001 89ABCDEF 00000000 x 00000001 00000000 00000000"},
        {"40 bits by 24", from_words(40, {0x89ABCDEF, 0x12}, {0xFF000000, 0x80}, true), 24,
         "64 bits 1289ABCD EF000000 x 80FF0000 00000000 flags X"},
        {"40 bits by 25", from_words(40, {0x89ABCDEF, 0x92}, {0xFF000000, 0x80}, true), 25,
         "65 bits 00000001 2513579B DE000000 x 00000001 01FE0000 00000000 flags X"},
        {"40 bits by 56: whole words and a part", from_words(40, {0x89ABCDEF, 0x12}), 56,
         "96 bits 1289ABCD EF000000 00000000"},
        {"63 bits by 1", from_words(63, {0x80000001, 0x40000001}), 1, "64 bits 80000003 00000002"},
        {"63 bits by 2", from_words(63, {0x80000001, 0x40000001}), 2, "65 bits 00000001 00000006 00000004"},
        {"64 bits by 1", marked(from_words(64, {0x80000001, 0xC0000000}, {1, 0x80000000}, true), "ZLH"), 1,
         "65 bits 00000001 80000001 00000002 x 00000001 00000000 00000002 flags XZLH"},
        {"64 bits by 32", from_words(64, {1, 0x80000000}), 32, "96 bits 80000000 00000001 00000000"},
        {"64 bits by 63", from_words(64, {3, 0x80000000}), 63, "127 bits 40000000 00000001 80000000 00000000"},
        {"65 bits by 63", from_words(65, {3, 0x80000000, 1}), 63, "128 bits C0000000 00000001 80000000 00000000"},
        {"8 bits by 56: what is above the width leaves the words", from_words(8, {0xFFFFFF12}, {0x1F0}), 56,
         "64 bits 12000000 00000000 x F0000000 00000000"},
        {"8 bits by 57: what is above the width stays above it (required)", from_words(8, {0xFFFFFF12}, {0x1F0}), 57,
         "65 bits 01FFFFFE 24000000 00000000 x 00000003 E0000000 00000000"},
        {"40 bits by 24: what is above the width leaves the words", from_words(40, {0, 0x1FF}), 24,
         "64 bits FF000000 00000000"},
        {"40 bits by 25: what is above the width stays above it (required)", from_words(40, {0, 0x1FF}, {0, 0x100}), 25,
         "65 bits 00000003 FE000000 00000000 x 00000002 00000000 00000000"},
        {"63 bits by 1: the bit above the width leaves the words", from_words(63, {0, 0xC0000000}), 1,
         "64 bits 80000000 00000000"},
        {"63 bits by 2: the bit above the width stays above it (required)", from_words(63, {0, 0xC0000000}), 2,
         "65 bits 00000003 00000000 00000000"},
    };
    for (const NumberRow& row : rows) check_free(row, shifted_left);
}

TEST(CrossingShift, Right) {
    const NumberRow rows[] = {
        {"65 bits by 1: 64", from_words(65, {3, 1, 1}, {0, 1, 1}, true), 1,
         "64 bits 80000000 80000001 x 80000000 80000000 flags X"},
        {"65 bits by 2: 63", from_words(65, {7, 1, 1}), 2, "63 bits 40000000 40000001"},
        {"65 bits by 32: 33", from_words(65, {7, 0x80000001, 1}, {0, 0, 1}), 32,
         "33 bits 00000001 80000001 x 00000001 00000000"},
        {"65 bits by 33: 32", from_words(65, {7, 0x80000001, 1}, {0, 1, 1}), 33, "32 bits C0000000 x 80000000"},
        {"65 bits by 64: 1", from_words(65, {7, kOnes, 1}), 64, "1 bits 00000001"},
        {"65 bits by 65", from_words(65, {kOnes, kOnes, 1}, {0, 0, 1}, true), 65, "1 bits 00000000 flags X"},
        {"96 bits by 32: 64", from_words(96, {1, 2, 0x80000003}, {4, 5, 6}), 32,
         "64 bits 80000003 00000002 x 00000006 00000005"},
        {"96 bits by 33: 63", from_words(96, {1, 2, 0x80000003}), 33, "63 bits 40000001 80000001"},
        {"96 bits by 63: 33", from_words(96, {1, 0x80000000, 0x80000003}), 63, "33 bits 00000001 00000007"},
        {"96 bits by 64: 32", from_words(96, {1, 2, 0x80000003}), 64, "32 bits 80000003"},
        {"100 bits by 36: 64", marked(from_words(100, {1, 2, 0x80000003, 8}), "H"), 36,
         "64 bits 88000000 30000000 flags H"},
        {"100 bits by 35: 65, no crossing yet", from_words(100, {1, 2, 0x80000003, 8}), 35,
         "65 bits 00000001 10000000 60000000"},
        {"100 bits by 99: 1", from_words(100, {1, 2, 3, 8}), 99, "1 bits 00000001"},
        {"100 bits by 100", from_words(100, {1, 2, 3, 8}), 100, "1 bits 00000000"},
        {"64 bits by 31: 33", from_words(64, {kOnes, 0x80000001}), 31, "33 bits 00000001 00000003"},
        {"64 bits by 32: 32", from_words(64, {kOnes, 0x80000001}, {1, 0x80000000}, true), 32,
         "32 bits 80000001 x 80000000 flags X"},
        {"64 bits by 63: 1", from_words(64, {kOnes, 0x80000001}), 63, "1 bits 00000001"},
        {"64 bits by 64: 1, by no count modulo 64", from_words(64, {kOnes, kOnes}), 64, "1 bits 00000000"},
        {"64 bits by 65", from_words(64, {kOnes, kOnes}), 65, "1 bits 00000000"},
        {"33 bits by 64", from_words(33, {kOnes, 1}, {kOnes, 1}), 64, "1 bits 00000000"},
        {"33 bits by 96", from_words(33, {kOnes, 1}), 96, "1 bits 00000000"},
        {"65 bits by 2: bits above the width go", from_words(65, {0, 0, 0xFF}, {0, 0, 0xF0}), 2,
         "63 bits 40000000 00000000"},
        {"40 bits by 40: bits above the width go too", from_words(40, {kOnes, kOnes}), 40, "1 bits 00000000"},
    };
    for (const NumberRow& row : rows) check_free(row, shifted_right);
}

TEST(CrossingShift, InPlaceCountsOf64AndMore) {
    for (const unsigned width : {33U, 40U, 63U, 64U}) {
        for (const unsigned count : {64U, 65U, 95U, 96U, 97U, 128U, 160U, 0x80000000U, 0x80000040U, kOnes}) {
            SCOPED_TRACE(std::to_string(width) + " bits by " + std::to_string(count));
            const std::string zero = std::to_string(width) + " bits 00000000 00000000 flags XL";
            const KVAL_UINTEGER v = marked(from_words(width, {kOnes, kOnes}, {kOnes, kOnes}, true), "L");
            EXPECT_EQ(printed(KVAL_UINTEGER(v) <<= count), zero);
            EXPECT_EQ(printed(KVAL_UINTEGER(v) >>= count), zero);
        }
    }
}

TEST(CrossingShift, Copies) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int count;
        bool left;
        const char* want;
    } rows[] = {
        {"32 bits left by 32", from_words(32, {0x89ABCDEF}, {1}, true), 32, true,
         "64 bits 89ABCDEF 00000000 x 00000001 00000000 flags X"},
        {"32 bits left by 33", from_words(32, {0x89ABCDEF}, {1}, true), 33, true,
         "65 bits 00000001 13579BDE 00000000 x 00000000 00000002 00000000 flags X"},
        {"64 bits left by 1", from_words(64, {0x80000001, 0x80000001}, {0, 0x80000000}), 1, true,
         "65 bits 00000001 00000003 00000002 x 00000001 00000000 00000000"},
        {"64 bits left by 0", from_words(64, {5, 0x80000001}), 0, true, "64 bits 80000001 00000005"},
        {"40 bits left by 88", from_words(40, {5, 0x81}), 88, true, "128 bits 81000000 05000000 00000000 00000000"},
        {"40 bits left by 24: a bit above the width leaves the words", from_words(40, {5, 0x181}), 24, true,
         "64 bits 81000000 05000000"},
        {"40 bits left by 20: a bit above the width stays above it (required)", from_words(40, {5, 0x181}), 20, true,
         "60 bits 18100000 00500000"},
        {"64 bits right by 1", from_words(64, {1, 0x80000001}, {2, 1}), 1, false,
         "64 bits 40000000 80000000 x 00000000 80000001"},
        {"64 bits right by 63", from_words(64, {1, 0x80000001}), 63, false, "64 bits 00000000 00000001"},
        {"64 bits right by 64", from_words(64, {kOnes, kOnes}, {kOnes, kOnes}), 64, false, "64 bits 00000000 00000000"},
        {"40 bits right by 64", from_words(40, {kOnes, 0xFF}, {kOnes, 0xFF}, true), 64, false,
         "40 bits 00000000 00000000 flags X"},
        {"40 bits right by 72", from_words(40, {kOnes, 0xFF}), 72, false, "40 bits 00000000 00000000"},
        {"65 bits right by 1: three words still", from_words(65, {1, 0, 1}), 1, false,
         "65 bits 00000000 80000000 00000000"},
        {"65 bits right by 64", from_words(65, {1, 0, 1}), 64, false, "65 bits 00000000 00000000 00000001"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(KVAL_UINTEGER(row.value, row.count, row.left)), row.want);
    }
}

// ---- sums and differences ----

TEST(CrossingAdd, GrowsFrom64To65AndAroundIt) {
    const BinaryRow rows[] = {
        {"64 bits, the top bits alone carry", from_words(64, {1, 0x80000000}), from_words(64, {2, 0x80000000}),
         "65 bits 00000001 00000000 00000003"},
        {"64 and 8 bits", from_words(64, {0xFFFFFF01, kOnes}), from_words(8, {0xFF}),
         "65 bits 00000001 00000000 00000000"},
        {"64 and 8 bits, one less: no carry", from_words(64, {0xFFFFFF00, kOnes}), from_words(8, {0xFF}),
         "64 bits FFFFFFFF FFFFFFFF"},
        {"32 and 64 bits", from_words(32, {kOnes}), from_words(64, {1, kOnes}), "65 bits 00000001 00000000 00000000"},
        {"33 and 64 bits", from_words(33, {0, 1}), from_words(64, {5, kOnes}), "65 bits 00000001 00000000 00000005"},
        {"64 and 63 bits", from_words(64, {0, 0x80000001}), from_words(63, {7, 0x7FFFFFFF}),
         "65 bits 00000001 00000000 00000007"},
        {"63 bits to 64", from_words(63, {kOnes, 0x7FFFFFFF}), from_words(63, {kOnes, 0x7FFFFFFF}),
         "64 bits FFFFFFFF FFFFFFFE"},
        {"63 and 64 bits", from_words(63, {kOnes, 0x7FFFFFFF}), from_words(64, {1, 0}), "64 bits 80000000 00000000"},
        {"64 and 65 bits: no growth, the carry has a place", from_words(64, {kOnes, kOnes}),
         from_words(65, {kOnes, kOnes, 0}), "65 bits 00000001 FFFFFFFF FFFFFFFE"},
        {"64 and 65 bits: to 66", from_words(64, {kOnes, kOnes}), from_words(65, {1, 0, 1}),
         "66 bits 00000002 00000000 00000000"},
        {"100 and 40 bits: the carry passes words 1 and 2", from_words(100, {kOnes, kOnes, kOnes, 7}),
         from_words(40, {1, 0}), "100 bits 00000008 00000000 00000000 00000000"},
        {"40 and 100 bits to 101", from_words(40, {1, 0}), from_words(100, {kOnes, kOnes, kOnes, 0xF}),
         "101 bits 00000010 00000000 00000000 00000000"},
        {"X bits and flags of the wider, grown", from_words(63, {kOnes, 0}, {1, 1}, true),
         marked(from_words(64, {1, kOnes}, {0, 0x80000000}), "L"),
         "65 bits 00000001 00000000 00000000 x 00000000 80000000 00000000 flags L"},
        {"X bits and flags of the right one of equal widths, grown", from_words(64, {1, 0}, {1, 1}, true),
         marked(from_words(64, {kOnes, kOnes}, {0, 2}), "H"),
         "65 bits 00000001 00000000 00000000 x 00000000 00000002 00000000 flags H"},
        {"bits above 40 carry out of 64", from_words(40, {1, kOnes}), from_words(64, {kOnes, 0}),
         "65 bits 00000001 00000000 00000000"},
        {"bits above the width carry out of both words: one bit more, and the carry is lost (required)",
         from_words(40, {0, kOnes}), from_words(40, {0, 0x80}), "41 bits 0000007F 00000000"},
        {"63 bits, both with the bit above: one bit more, and the carry is lost (required)",
         from_words(63, {3, 0x80000000}), from_words(63, {4, 0x80000001}), "64 bits 00000001 00000007"},
        {"63 bits, one with the bit above: it is the grown bit (required)", from_words(63, {3, 0x80000000}),
         from_words(63, {4, 1}), "64 bits 80000001 00000007"},
        {"8 bits with bits above and 64", from_words(8, {kOnes}), from_words(64, {1, kOnes}),
         "65 bits 00000001 00000000 00000000"},
    };
    for (const BinaryRow& row : rows) check_free(row, sum);
}

TEST(CrossingAdd, ASumMayReplaceItsOperand) {
    KVAL_UINTEGER v = from_words(64, {kOnes, kOnes});
    KVAL_UINTEGER grown = v + v;
    EXPECT_EQ(printed(grown), "65 bits 00000001 FFFFFFFF FFFFFFFE");
    grown = grown + grown;
    EXPECT_EQ(printed(grown), "65 bits 00000001 FFFFFFFF FFFFFFFC");
    v = v + v;
    EXPECT_EQ(printed(v), "64 bits FFFFFFFF FFFFFFFE");
    v += v;
    EXPECT_EQ(printed(v), "64 bits FFFFFFFF FFFFFFFC");
    grown += grown;
    EXPECT_EQ(printed(grown), "65 bits 00000001 FFFFFFFF FFFFFFF8");
    const KVAL_UINTEGER& same = grown;
    grown -= same;
    EXPECT_EQ(printed(grown), "65 bits 00000000 00000000 00000000");
}

TEST(CrossingSubtract, KeepsTheLeftWidth) {
    const BinaryRow rows[] = {
        {"64 less 65 bits: word 2 does not count", from_words(64, {5, 5}), from_words(65, {6, 1, 1}),
         "64 bits 00000003 FFFFFFFF"},
        {"64 less 65 bits wraps", from_words(64, {0, 0}), from_words(65, {1, 0, 0}), "64 bits FFFFFFFF FFFFFFFF"},
        {"40 less 100 bits", from_words(40, {0, 0}), from_words(100, {1, kOnes, 9, 9}), "40 bits 00000000 FFFFFFFF"},
        {"32 less 65 bits", from_words(32, {5}), from_words(65, {6, 1, 1}), "32 bits FFFFFFFF"},
        {"65 less 64 bits", from_words(65, {0, 0, 1}), from_words(64, {1, 0}), "65 bits 00000000 FFFFFFFF FFFFFFFF"},
        {"65 less 64 bits wraps", from_words(65, {0, 0, 0}), from_words(64, {kOnes, kOnes}),
         "65 bits 00000001 00000000 00000001"},
        {"100 less 33 bits: the borrow goes as far as it must", from_words(100, {0, 0, 0, 1}), from_words(33, {0, 1}),
         "100 bits 00000000 FFFFFFFF FFFFFFFF 00000000"},
        {"96 less 64 bits: none is decided against the right words", from_words(96, {7, 8, 2}), from_words(64, {5, 8}),
         "96 bits 00000002 00000000 00000002"},
        {"33 less 8 bits", from_words(33, {0, 1}), from_words(8, {1}), "33 bits 00000000 FFFFFFFF"},
        {"33 less 32 bits wraps", from_words(33, {0, 0}), from_words(32, {kOnes}), "33 bits 00000001 00000001"},
        {"64 less 32 bits: word 1 below the right one decides nothing", from_words(64, {9, 2}), from_words(32, {5}),
         "64 bits 00000002 00000004"},
        {"64 less 32 bits wraps", from_words(64, {4, 0}), from_words(32, {5}), "64 bits FFFFFFFF FFFFFFFF"},
        {"63 less 8 bits wraps", from_words(63, {0, 0}), from_words(8, {1}), "63 bits 7FFFFFFF FFFFFFFF"},
        {"65 less 32 bits: word 1 below the right one costs word 2 a borrow (required)", from_words(65, {9, 2, 1}),
         from_words(32, {5}), "65 bits 00000000 00000002 00000004"},
        {"65 less 32 bits: word 1 not below it costs nothing", from_words(65, {9, 5, 1}), from_words(32, {5}),
         "65 bits 00000001 00000005 00000004"},
        {"65 less 32 bits: an equal word 1 passes the borrow on (required)", from_words(65, {4, 5, 1}),
         from_words(32, {5}), "65 bits 00000000 00000004 FFFFFFFF"},
        {"100 less 1 bit: words of 0 borrow one from another (required)", from_words(100, {1, 0, 0, 8}),
         from_words(1, {1}), "100 bits 00000007 FFFFFFFF 00000000 00000000"},
        {"X bits and flags of the left", marked(from_words(65, {0, 0, 1}, {1, 1, 1}), "L"),
         from_words(64, {1, 0}, {2, 2}, true),
         "65 bits 00000000 FFFFFFFF FFFFFFFF x 00000001 00000001 00000001 flags L"},
        {"bits above 40 count", from_words(65, {0, 0, 1}), from_words(40, {1, kOnes}),
         "65 bits 00000000 00000000 FFFFFFFF"},
        {"bits above 8 count", from_words(64, {0, 1}), from_words(8, {kOnes}), "64 bits 00000000 00000001"},
        {"bits above the left width lend, and are trimmed", from_words(40, {0, 0x100}), from_words(65, {1, 0, 0}),
         "40 bits 000000FF FFFFFFFF"},
    };
    for (const BinaryRow& row : rows) check_free(row, difference);
}

TEST(CrossingInPlace, AddKeepsTheWidth) {
    const BinaryRow rows[] = {
        {"64 by 65 bits: word 2 does not count", from_words(64, {kOnes, 5}), from_words(65, {1, 1, 1}),
         "64 bits 00000007 00000000"},
        {"64 by 65 bits wraps", from_words(64, {kOnes, kOnes}), from_words(65, {1, 0, 1}), "64 bits 00000000 00000000"},
        {"40 by 100 bits", from_words(40, {kOnes, 0xFF}), from_words(100, {2, 0x300, 9, 9}),
         "40 bits 00000000 00000001"},
        {"32 by 65 bits", from_words(32, {kOnes}), from_words(65, {2, 1, 1}), "32 bits 00000001"},
        {"65 by 64 bits: word 2 takes the carry", from_words(65, {kOnes, kOnes, 0}), from_words(64, {1, 0}),
         "65 bits 00000001 00000000 00000000"},
        {"65 by 64 bits wraps", from_words(65, {kOnes, kOnes, 1}), from_words(64, {1, 0}),
         "65 bits 00000000 00000000 00000000"},
        {"65 by 33 bits: word 2 takes the carry", from_words(65, {kOnes, kOnes, 0}), from_words(33, {1, 0}),
         "65 bits 00000001 00000000 00000000"},
        {"65 by 32 bits: the carry out of word 1 is dropped (required)", from_words(65, {kOnes, kOnes, 0}),
         from_words(32, {1}), "65 bits 00000000 00000000 00000000"},
        {"100 by 40 bits: the carry out of word 2 is dropped (required)", from_words(100, {kOnes, kOnes, kOnes, 1}),
         from_words(40, {1, 0}), "100 bits 00000001 00000000 00000000 00000000"},
        {"100 by 65 bits: word 3 takes the carry", from_words(100, {kOnes, kOnes, kOnes, 1}), from_words(65, {1, 0, 0}),
         "100 bits 00000002 00000000 00000000 00000000"},
        {"64 by 8 bits: word 1 takes the carry", from_words(64, {kOnes, 5}), from_words(8, {1}),
         "64 bits 00000006 00000000"},
        {"100 by 40 bits with bits above", from_words(100, {0, 1, 5, 1}), from_words(40, {0, kOnes}),
         "100 bits 00000001 00000006 00000000 00000000"},
        {"X bits and flags of the left", marked(from_words(64, {1, 0}, {4, 8}, true), "Z"),
         marked(from_words(65, {1, 0, 0}, {0, 0, 1}, true), "L"),
         "64 bits 00000000 00000002 x 00000008 00000004 flags XZ"},
    };
    for (const BinaryRow& row : rows) check_in_place(row, add_assign);
}

TEST(CrossingInPlace, SubtractKeepsTheWidth) {
    const BinaryRow rows[] = {
        {"64 by 65 bits: word 2 does not count", from_words(64, {0, 5}), from_words(65, {1, 1, 1}),
         "64 bits 00000003 FFFFFFFF"},
        {"40 by 100 bits wraps", from_words(40, {0, 0}), from_words(100, {1, 0x300, 9, 9}),
         "40 bits 000000FF FFFFFFFF"},
        {"32 by 65 bits", from_words(32, {0}), from_words(65, {2, 1, 1}), "32 bits FFFFFFFE"},
        {"65 by 64 bits: word 2 gives the borrow", from_words(65, {0, 0, 1}), from_words(64, {1, 0}),
         "65 bits 00000000 FFFFFFFF FFFFFFFF"},
        {"65 by 33 bits: word 2 gives the borrow", from_words(65, {0, 0, 1}), from_words(33, {0, 1}),
         "65 bits 00000000 FFFFFFFF 00000000"},
        {"65 by 32 bits: the borrow out of word 1 is dropped (required)", from_words(65, {0, 0, 1}),
         from_words(32, {1}), "65 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"100 by 40 bits: the borrow out of word 2 is dropped (required)", from_words(100, {0, 0, 0, 8}),
         from_words(40, {1, 0}), "100 bits 00000008 FFFFFFFF FFFFFFFF FFFFFFFF"},
        {"100 by 65 bits: word 3 gives the borrow", from_words(100, {0, 0, 0, 8}), from_words(65, {1, 0, 0}),
         "100 bits 00000007 FFFFFFFF FFFFFFFF FFFFFFFF"},
        {"64 by 8 bits: word 1 gives the borrow", from_words(64, {0, 5}), from_words(8, {1}),
         "64 bits 00000004 FFFFFFFF"},
        {"65 by 32 bits: unlike -, a word below the right one borrows nothing", from_words(65, {9, 2, 1}),
         from_words(32, {5}), "65 bits 00000001 00000002 00000004"},
    };
    for (const BinaryRow& row : rows) check_in_place(row, subtract_assign);
}

// ---- products ----

TEST(CrossingMultiply, IsAsWideAsBothOperands) {
    const BinaryRow rows[] = {
        {"32 by 32 bits", from_words(32, {0x89ABCDEF}), from_words(32, {0xFEDCBA98}), "64 bits 890F2A50 AD05EBE8"},
        {"33 by 31 bits", from_words(33, {kOnes, 1}), from_words(31, {0x7FFFFFFF}), "64 bits FFFFFFFD 80000001"},
        {"33 by 32 bits", from_words(33, {kOnes, 1}), from_words(32, {kOnes}), "65 bits 00000001 FFFFFFFD 00000001"},
        {"31 by 32 bits", from_words(31, {0x7FFFFFFF}), from_words(32, {kOnes}), "63 bits 7FFFFFFE 80000001"},
        {"1 by 32 bits", from_words(1, {1}), from_words(32, {kOnes}), "33 bits 00000000 FFFFFFFF"},
        {"1 by 63 bits", from_words(1, {1}), from_words(63, {kOnes, 0x7FFFFFFF}), "64 bits 7FFFFFFF FFFFFFFF"},
        {"1 by 64 bits", from_words(1, {1}), from_words(64, {5, 0x80000001}), "65 bits 00000000 80000001 00000005"},
        {"1 by 64 bits, 0", from_words(1, {0}), from_words(64, {kOnes, kOnes}), "65 bits 00000000 00000000 00000000"},
        {"16 by 48 bits", from_words(16, {0xFFFF}), from_words(48, {kOnes, 0xFFFF}), "64 bits FFFEFFFF FFFF0001"},
        {"16 by 49 bits", from_words(16, {0xFFFF}), from_words(49, {kOnes, 0x1FFFF}),
         "65 bits 00000001 FFFDFFFF FFFF0001"},
        {"40 by 25 bits", from_words(40, {kOnes, 0xFF}), from_words(25, {0x1FFFFFF}),
         "65 bits 00000001 FFFFFEFF FE000001"},
        {"33 by 33 bits", from_words(33, {kOnes, 1}), from_words(33, {kOnes, 1}), "66 bits 00000003 FFFFFFFC 00000001"},
        {"64 by 64 bits", from_words(64, {kOnes, kOnes}), from_words(64, {kOnes, kOnes}),
         "128 bits FFFFFFFF FFFFFFFE 00000000 00000001"},
        {"64 by 64 bits, low words of 0", from_words(64, {0, 0x89ABCDEF}), from_words(64, {0, 0xFEDCBA98}),
         "128 bits 890F2A50 AD05EBE8 00000000 00000000"},
        {"65 by 1 bit", from_words(65, {1, 2, 1}), from_words(1, {1}), "66 bits 00000001 00000002 00000001"},
        {"65 by 63 bits", from_words(65, {kOnes, kOnes, 1}), from_words(63, {kOnes, 0x7FFFFFFF}),
         "128 bits FFFFFFFF FFFFFFFD 80000000 00000001"},
        {"flag X, 64 bits", from_words(32, {1}, {1}, true), from_words(32, {1}),
         "64 bits 00000000 00000000 x FFFFFFFF FFFFFFFF flags X"},
        {"flag X, 65 bits", from_words(33, {1, 0}), from_words(32, {1}, {}, true),
         "65 bits 00000000 00000000 00000000 x 00000001 FFFFFFFF FFFFFFFF flags X"},
        {"X bits without the flag do not count (required)", from_words(33, {3, 0}, {kOnes, 1}),
         from_words(32, {5}, {kOnes}), "65 bits 00000000 00000000 0000000F"},
        {"33 bits with bits above, a product of 64", from_words(33, {kOnes, kOnes}), from_words(31, {3}),
         "64 bits FFFFFFFF FFFFFFFD"},
        {"33 bits with bits above, a product of 65: no word is lost on the way", from_words(33, {kOnes, kOnes}),
         from_words(32, {kOnes}), "65 bits 00000000 FFFFFFFF 00000001"},
        {"40 bits with bits above, a product of 80", from_words(40, {1, 0x80000000}), from_words(40, {0, 0x80}),
         "80 bits 00000000 00000080 00000000"},
        {"20 bits with bits above, a product of 40", from_words(20, {kOnes}), from_words(20, {kOnes}),
         "40 bits 000000FE 00000001"},
        {"16 bits with bits above, a product of 32", from_words(16, {kOnes}), from_words(16, {kOnes}),
         "32 bits 00000001"},
    };
    for (const BinaryRow& row : rows) {
        check_free(row, product);
        check_free({row.name, row.right, row.left, row.want}, product);
    }
}

// ---- bits ----

TEST(CrossingLogic, AndCopiesWordsBeyondTheShorterOperandRequired) {
    const BinaryRow rows[] = {
        {"65 and 64 bits", from_words(65, {0xFFFF0000, 0x89ABCDEF, 1}, {0x00F00000, 0x00F0000F, 1}, true),
         from_words(64, {kOnes, 0xF}), "65 bits 00000001 00000000 FF0F0000 x 00000001 0000000F 00F00000"},
        {"65 and 32 bits", from_words(65, {0xFFFF0000, 0x89ABCDEF, 1}, {0x00F00000, 0x00F0000F, 1}, true),
         from_words(32, {kOnes}), "65 bits 00000001 89ABCDEF FF0F0000 x 00000001 00F0000F 00F00000"},
        {"64 and 32 bits", from_words(64, {0xFFFF0000, 0x89ABCDEF}, {0x00F00000, 0x00F0000F}),
         from_words(32, {0x0FF00000}), "64 bits 89ABCDEF 0F000000 x 00F0000F 00F00000"},
        {"64 and 1 bit", from_words(64, {kOnes, 0x89ABCDEF}, {0x00F00000, 0x00F0000F}), from_words(1, {1}),
         "64 bits 89ABCDEF 00000001 x 00F0000F 00000000"},
        {"33 and 8 bits with bits above", from_words(33, {kOnes, 1}, {0, 1}), from_words(8, {0x89ABCDEF}),
         "33 bits 00000001 89ABCDEF x 00000001 00000000"},
        {"40 bits with bits above and 8 bits: they are copied", from_words(40, {kOnes, 0xFFFFFF80}),
         from_words(8, {0x0F}), "40 bits FFFFFF80 0000000F"},
        {"40 bits with bits above and 100 bits", from_words(40, {kOnes, 0xFFFFFF80}),
         from_words(100, {7, 0x12345678, 5, 6}, {0, 0, 1, 2}),
         "100 bits 00000006 00000005 12345600 00000007 x 00000002 00000001 00000000 00000000"},
        {"100 and 64 bits", from_words(100, {7, 7, 5, 6}, {0, 8, 1, 2}, true), from_words(64, {kOnes, kOnes}),
         "100 bits 00000006 00000005 00000007 00000007 x 00000002 00000001 00000008 00000000"},
    };
    for (const BinaryRow& row : rows) {
        check_free(row, bit_and);
        check_free({row.name, row.right, row.left, row.want}, bit_and);
    }
}

TEST(CrossingLogic, OrCopiesWordsBeyondTheShorterOperandRequired) {
    const BinaryRow rows[] = {
        {"65 and 64 bits", from_words(65, {0xF0, 0x89ABCDEF, 1}, {0xF00, 0x00F0000F, 1}, true),
         from_words(64, {0x0F, 0xF}), "65 bits 00000001 890BCDEF 000000FF x 00000001 00F00000 00000F00"},
        {"65 and 32 bits", from_words(65, {0xF0, 0x89ABCDEF, 1}, {0xF00, 0x00F0000F, 1}), from_words(32, {0x100}),
         "65 bits 00000001 89ABCDEF 000001F0 x 00000001 00F0000F 00000E00"},
        {"64 and 32 bits", from_words(64, {0xF0, 0x89ABCDEF}, {0xF00, 0x00F0000F}), from_words(32, {0x100}, {1}),
         "64 bits 89ABCDEF 000001F0 x 00F0000F 00000E01"},
        {"33 and 8 bits with bits above", from_words(33, {1, 1}, {0, 1}), from_words(8, {0x89ABCDE0}),
         "33 bits 00000001 89ABCDE1 x 00000001 00000000"},
        {"40 bits with bits above and 8 bits: they are copied", from_words(40, {0, 0xFFFFFF80}), from_words(8, {0x0F}),
         "40 bits FFFFFF80 0000000F"},
        {"40 bits with bits above and 100 bits", from_words(40, {0, 0xFFFFFF80}),
         from_words(100, {7, 7, 5, 6}, {0, 0, 1, 2}),
         "100 bits 00000006 00000005 FFFFFF87 00000007 x 00000002 00000001 00000000 00000000"},
    };
    for (const BinaryRow& row : rows) {
        check_free(row, bit_or);
        check_free({row.name, row.right, row.left, row.want}, bit_or);
    }
}

TEST(CrossingLogic, XorKeepsTheXMaskOfTheWiderOperandRequired) {
    const BinaryRow rows[] = {
        {"64 and 32 bits", from_words(64, {kOnes, 5}, {0xF0, 0x80000001}), from_words(32, {0x0F}, {0x33}),
         "64 bits 00000005 FFFFFFF0 x 80000001 000000F0"},
        {"33 and 1 bit", from_words(33, {kOnes, 1}, {1, 1}), from_words(1, {1}, {1}),
         "33 bits 00000001 FFFFFFFE x 00000001 00000001"},
        {"65 and 64 bits", from_words(65, {kOnes, 5, 1}, {0xF0, 1, 1}), from_words(64, {0x0F, 6}, {0x33, 2}),
         "65 bits 00000001 00000003 FFFFFFF0 x 00000001 00000001 000000F0"},
        {"65 and 8 bits", from_words(65, {kOnes, 5, 1}, {0xF0, 1, 1}), from_words(8, {0x0F}, {0x33}),
         "65 bits 00000001 00000005 FFFFFFF0 x 00000001 00000001 000000F0"},
        {"100 and 40 bits with bits above", marked(from_words(100, {1, 1, 1, 1}, {2, 2, 2, 2}), "H"),
         from_words(40, {0, 0xFFFFFF80}),
         "100 bits 00000001 00000001 FFFFFF81 00000001 x 00000002 00000002 00000002 00000002 flags H"},
        {"8 bits with bits above and 64", from_words(8, {0x89ABCDEF}), from_words(64, {0, 5}),
         "64 bits 00000005 89ABCDEF"},
        {"flag X of the narrower: 64 bits all X, the wider one's bits underneath", from_words(64, {1, 2}),
         from_words(8, {0xFF}, {}, true), "64 bits 00000002 00000001 x FFFFFFFF FFFFFFFF flags X"},
        {"flag X of the wider: 65 bits all X", from_words(64, {1, 2}), from_words(65, {3, 4, 1}, {}, true),
         "65 bits 00000001 00000004 00000003 x 00000001 FFFFFFFF FFFFFFFF flags X"},
    };
    for (const BinaryRow& row : rows) {
        check_free(row, bit_xor);
        check_free({row.name, row.right, row.left, row.want}, bit_xor);
    }
    check_free({"64 bits: the right one's x-mask", from_words(64, {1, 2}, {5, 6}), from_words(64, {4, 8}, {0xF, 0xE}),
                "64 bits 0000000A 00000005 x 0000000E 0000000F"},
               bit_xor);
}

TEST(CrossingLogic, InPlaceKeepsWordsBeyondTheRightOperandRequired) {
    const BinaryRow and_rows[] = {
        {"65 by 64 bits", from_words(65, {kOnes, kOnes, 1}, {0, 1, 1}, true), from_words(64, {5, 6}),
         "65 bits 00000001 00000006 00000005 x 00000001 00000000 00000000 flags X"},
        {"65 by 32 bits", from_words(65, {kOnes, kOnes, 1}, {0, 1, 1}), from_words(32, {5}),
         "65 bits 00000001 FFFFFFFF 00000005 x 00000001 00000001 00000000"},
        {"64 by 32 bits", from_words(64, {kOnes, 0x89ABCDEF}, {0, 0xF}), marked(from_words(32, {5}, {8}, true), "Z"),
         "64 bits 89ABCDEF 00000005 x 0000000F 00000008 flags XZ"},
        {"40 by 8 bits: bits above the width are trimmed", from_words(40, {kOnes, 0xFFFFFF81}, {0, 0xFFFFFF01}),
         from_words(8, {5}), "40 bits 00000081 00000005 x 00000001 00000000"},
        {"64 by 65 bits: no word of the left is left out", from_words(64, {kOnes, kOnes}),
         from_words(65, {5, 6, 1}, {8, 0, 1}), "64 bits 00000006 00000005 x 00000000 00000008"},
        {"32 by 65 bits", from_words(32, {kOnes}), from_words(65, {5, 6, 1}, {8, 9, 1}), "32 bits 00000005 x 00000008"},
    };
    for (const BinaryRow& row : and_rows) check_in_place(row, and_assign);
    const BinaryRow or_rows[] = {
        {"65 by 64 bits", from_words(65, {1, 0, 1}, {0, 1, 1}, true), from_words(64, {4, 6}),
         "65 bits 00000001 00000006 00000005 x 00000001 00000001 00000000 flags X"},
        {"65 by 32 bits", from_words(65, {1, 0, 1}, {0, 1, 1}), from_words(32, {4}),
         "65 bits 00000001 00000000 00000005 x 00000001 00000001 00000000"},
        {"64 by 32 bits", from_words(64, {1, 0x89ABCDEF}, {0, 0xF}), marked(from_words(32, {4}, {8}, true), "Z"),
         "64 bits 89ABCDEF 00000005 x 0000000F 00000008 flags XZ"},
        {"40 by 8 bits: bits above the width are trimmed", from_words(40, {1, 0xFFFFFF81}, {0, 0xFFFFFF01}),
         from_words(8, {4}), "40 bits 00000081 00000005 x 00000001 00000000"},
        {"64 by 65 bits: no word of the left is left out", from_words(64, {1, 2}),
         from_words(65, {4, 8, 1}, {16, 0, 1}), "64 bits 0000000A 00000005 x 00000000 00000010"},
        {"32 by 65 bits", from_words(32, {1}), from_words(65, {4, 8, 1}, {16, 9, 1}), "32 bits 00000005 x 00000010"},
    };
    for (const BinaryRow& row : or_rows) check_in_place(row, or_assign);
}

}  // namespace
