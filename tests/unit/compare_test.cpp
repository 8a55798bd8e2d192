// Tests of the eighteen comparison operators: order by value bits, and four-state identity.
#include <gtest/gtest.h>

#include <string>

#include "kval.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;

// ---- order of two values ----

struct OrderRow {
    const char* name;
    KVAL_UINTEGER left;
    KVAL_UINTEGER right;
    int order;  // -1, 0 or 1: the left one is less, equal or greater
};

void expect_order(const KVAL_UINTEGER& left, const KVAL_UINTEGER& right, int order) {
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left >= right, order >= 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left <= right, order <= 0);
}

// All four operators in both orders; the operands stay as they are, text included.
void check(const OrderRow& row) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER left(row.left), right(row.right);
    cache_text(left);
    cache_text(right);
    expect_order(left, right, row.order);
    expect_order(right, left, -row.order);
    expect_order(left, left, 0);
    expect_order(right, right, 0);
    EXPECT_EQ(printed(left), printed(row.left));
    EXPECT_EQ(printed(right), printed(row.right));
    EXPECT_TRUE(keeps_text(left));
    EXPECT_TRUE(keeps_text(right));
}

TEST(CompareOrder, ValuesOfAnyWidth) {
    const OrderRow rows[] = {
        {"8 bits, less", from_words(8, {5}), from_words(8, {7}), -1},
        {"8 bits, equal", from_words(8, {5}), from_words(8, {5}), 0},
        {"one bit", from_words(1, {1}), from_words(1, {0}), 1},
        {"the width plays no part, compact", from_words(8, {5}), from_words(32, {5}), 0},
        {"32 bits are unsigned", from_words(32, {0x80000000}), from_words(32, {0x7FFFFFFF}), 1},
        {"64-bit words 0 1 and the largest of 32 bits", from_words(64, {0, 1}), from_words(32, {kOnes}), 1},
        {"64-bit words 7 0 and an 8-bit 7", from_words(64, {7, 0}), from_words(8, {7}), 0},
        {"64-bit words 6 0 and an 8-bit 7", from_words(64, {6, 0}), from_words(8, {7}), -1},
        {"64-bit words 8 0 and an 8-bit 7", from_words(64, {8, 0}), from_words(8, {7}), 1},
        {"33-bit words 0 1 and the largest of 32 bits", from_words(33, {0, 1}), from_words(32, {kOnes}), 1},
        {"33-bit words 5 0 and a 32-bit 5", from_words(33, {5, 0}), from_words(32, {5}), 0},
        {"65-bit words 0 0 1 and the largest of 64 bits", from_words(65, {0, 0, 1}), from_words(64, {kOnes, kOnes}), 1},
        {"96-bit words 0 0 1 and the largest of 64 bits", from_words(96, {0, 0, 1}), from_words(64, {kOnes, kOnes}), 1},
        {"96-bit words with 0 on top and the same in 64 bits", from_words(96, {3, 4, 0}), from_words(64, {3, 4}), 0},
        {"96-bit words with 0 on top and fewer in 64 bits", from_words(96, {3, 4, 0}), from_words(64, {4, 3}), 1},
        {"128-bit words with a gap and a compact value", from_words(128, {0, 0, 0, 1}), from_words(32, {kOnes}), 1},
        {"the highest differing word decides: it is word 1", from_words(64, {1, 2}), from_words(64, {2, 1}), 1},
        {"the highest differing word decides: not word 0", from_words(96, {9, 1, 5}), from_words(96, {0, 2, 5}), -1},
        {"the highest differing word decides: word 0 alone differs", from_words(96, {0, 5, 5}),
         from_words(96, {1, 5, 5}), -1},
        {"the highest differing word decides: over two lower ones", from_words(96, {9, 9, 4}),
         from_words(96, {0, 0, 5}), -1},
        {"words are unsigned", from_words(64, {0, 0x80000000}), from_words(64, {0, 1}), 1},
        {"zeros of 1 and 100 bits", from_words(1, {0}), from_words(100, {0}), 0},
    };
    for (const OrderRow& row : rows) check(row);
}

TEST(CompareOrder, XBitsAndFlagsPlayNoPartRequired) {
    const OrderRow rows[] = {
        {"all X, 5 and 7 underneath", from_words(8, {5}, {0xFF}, true), from_words(8, {7}, {0xFF}, true), -1},
        {"all X and a known value", from_words(8, {9}, {0xFF}, true), from_words(8, {7}), 1},
        {"all X over the same bits", from_words(8, {7}, {0xFF}, true), from_words(8, {7}), 0},
        {"different x-masks, wide", from_words(40, {7, 1}, {1, 0}), from_words(64, {7, 1}, {0, kOnes}, true), 0},
        {"different x-masks, wide, less", from_words(40, {7, 1}, {kOnes, 0xFF}, true), from_words(64, {7, 2}), -1},
        {"flags, compact", marked(from_words(8, {7}), "ZLH"), from_words(8, {7}), 0},
        {"flags, wide", marked(from_words(40, {7, 1}), "Z"), marked(from_words(64, {7, 1}), "LH"), 0},
    };
    for (const OrderRow& row : rows) check(row);
}

TEST(CompareOrder, StrayBitsCount) {
    const OrderRow rows[] = {
        {"compact", from_words(4, {0x15}), from_words(4, {0xF}), 1},
        {"compact, the same word in 8 bits", from_words(4, {0x15}), from_words(8, {0x15}), 0},
        {"wide", from_words(40, {0, 0x100}), from_words(40, {kOnes, 0xFF}), 1},
        {"wide and compact", from_words(40, {0x15, 0}), from_words(4, {0x15}), 0},
    };
    for (const OrderRow& row : rows) check(row);
}

// ---- identity of two values ----

struct IdentityRow {
    const char* name;
    KVAL_UINTEGER left;
    KVAL_UINTEGER right;
    bool identical;
};

// == and != in both orders; the operands stay as they are, text included.
void check(const IdentityRow& row) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER left(row.left), right(row.right);
    cache_text(left);
    cache_text(right);
    EXPECT_EQ(left == right, row.identical);
    EXPECT_EQ(right == left, row.identical);
    EXPECT_EQ(left != right, !row.identical);
    EXPECT_EQ(right != left, !row.identical);
    EXPECT_EQ(printed(left), printed(row.left));
    EXPECT_EQ(printed(right), printed(row.right));
    EXPECT_TRUE(keeps_text(left));
    EXPECT_TRUE(keeps_text(right));
}

TEST(CompareIdentity, ValueBitsOfAnyWidth) {
    const IdentityRow rows[] = {
        {"8 bits", from_words(8, {5}), from_words(8, {5}), true},
        {"8 bits differ", from_words(8, {5}), from_words(8, {4}), false},
        {"a 4-bit and a 100-bit 5", from_words(4, {5}), from_words(100, {5}), true},
        {"a 33-bit and a 32-bit 3", from_words(33, {3, 0}), from_words(32, {3}), true},
        {"a 33-bit and a 32-bit value differ in word 0", from_words(33, {3, 0}), from_words(32, {2}), false},
        {"word 1 against a missing one", from_words(64, {3, 1}), from_words(32, {3}), false},
        {"word 2 against a missing one", from_words(96, {3, 1, 1}), from_words(64, {3, 1}), false},
        {"word 2 of 0 against a missing one", from_words(96, {3, 1, 0}), from_words(64, {3, 1}), true},
        {"64 bits", from_words(64, {3, 1}), from_words(64, {3, 1}), true},
        {"64 bits differ in word 0", from_words(64, {3, 1}), from_words(64, {2, 1}), false},
        {"64 bits differ in word 1", from_words(64, {3, 1}), from_words(64, {3, 2}), false},
        {"65 bits differ in the top bit", from_words(65, {3, 1, 1}), from_words(65, {3, 1, 0}), false},
        {"zeros of 1 and 100 bits", from_words(1, {0}), from_words(100, {0}), true},
        {"stray bits, compact", from_words(4, {0x15}), from_words(4, {5}), false},
        {"stray bits, wide", from_words(40, {5, 0x101}), from_words(40, {5, 1}), false},
        {"stray bits of a narrower one", from_words(4, {0x15}), from_words(8, {0x15}), true},
    };
    for (const IdentityRow& row : rows) check(row);
}

TEST(CompareIdentity, AnXBitEqualsAnXBitOverTheSameValueBitRequired) {
    const IdentityRow rows[] = {
        {"the same x-mask", from_words(8, {5}, {2}, true), from_words(8, {5}, {2}, true), true},
        {"X and the known value", from_words(8, {5}, {4}, true), from_words(8, {5}), false},
        {"different x-masks", from_words(8, {5}, {2}, true), from_words(8, {5}, {1}, true), false},
        {"different x-masks and no flag", from_words(8, {5}, {2}), from_words(8, {5}), false},
        {"the value bits under the X bits differ", from_words(8, {0}, {0xFF}, true), from_words(8, {1}, {0xFF}, true),
         false},
        {"all X of 8 bits each", from_words(8, {9}, {0xFF}, true), from_words(8, {9}, {0xFF}, true), true},
        {"all X of 8 and 16 bits", from_words(8, {9}, {0xFF}, true), from_words(16, {9}, {0xFFFF}, true), false},
        {"wide, the same x-mask", from_words(64, {5, 6}, {0, 2}, true), from_words(64, {5, 6}, {0, 2}, true), true},
        {"wide, x-masks differ in word 0", from_words(64, {5, 6}, {1, 2}, true), from_words(64, {5, 6}, {0, 2}, true),
         false},
        {"wide, x-masks differ in word 1", from_words(64, {5, 6}, {0, 2}, true), from_words(64, {5, 6}, {0, 3}, true),
         false},
        {"x-mask word 1 against a missing one", from_words(40, {5, 0}, {1, 1}, true), from_words(8, {5}, {1}, true),
         false},
        {"x-mask word 1 of 0 against a missing one", from_words(40, {5, 0}, {1, 0}, true),
         from_words(8, {5}, {1}, true), true},
        {"x-mask word 2 against a missing one", from_words(96, {5, 0, 0}, {0, 0, 1}), from_words(64, {5, 0}), false},
    };
    for (const IdentityRow& row : rows) check(row);
}

TEST(CompareIdentity, TheFourFlagsCount) {
    const KVAL_UINTEGER plain(5, 8);
    const KVAL_UINTEGER x = from_words(8, {5}, {0}, true);
    const IdentityRow rows[] = {
        {"X and none, the x-masks agree", x, plain, false},
        {"X and X", x, x, true},
        {"Z and none", marked(plain, "Z"), plain, false},
        {"Z and Z", marked(plain, "Z"), marked(plain, "Z"), true},
        {"weak low and none", marked(plain, "L"), plain, false},
        {"weak low and weak low", marked(plain, "L"), marked(plain, "L"), true},
        {"weak high and none", marked(plain, "H"), plain, false},
        {"weak high and weak high", marked(plain, "H"), marked(plain, "H"), true},
        {"X and Z", x, marked(plain, "Z"), false},
        {"Z and weak low", marked(plain, "Z"), marked(plain, "L"), false},
        {"weak low and weak high", marked(plain, "L"), marked(plain, "H"), false},
        {"all", marked(x, "ZLH"), marked(x, "ZLH"), true},
        {"all and all but weak high", marked(x, "ZLH"), marked(x, "ZL"), false},
    };
    for (const IdentityRow& row : rows) {
        check(row);
        IdentityRow wide = row;
        wide.left.bitwidth(40);
        wide.right.bitwidth(70);
        check(wide);
        wide.right.bitwidth(8);
        check(wide);
    }
}

TEST(CompareIdentity, TheKindOfTheCachedTextDoesNotCountRequired) {
    for (const unsigned width : {8U, 32U, 33U, 40U}) {
        for (const unsigned other : {8U, 32U, 33U, 40U}) {
            const KVAL_UINTEGER left(3, width), right(3, other);
            left.as_bin_string();
            right.as_hex_string();
            EXPECT_TRUE(left == right) << width << " and " << other << " bits";
            EXPECT_TRUE(right == left) << width << " and " << other << " bits";
            EXPECT_FALSE(left != right) << width << " and " << other << " bits";
        }
    }
}

// ---- value and number ----

struct NumberRow {
    const char* name;
    KVAL_UINTEGER value;
    unsigned number;
    int order;  // -1, 0 or 1: the value is less, equal or greater by its value bits
    bool equal;
};

// All six operators with the number on either side; the value stays as it is, text included.
void check(const NumberRow& row) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER value(row.value);
    cache_text(value);
    EXPECT_EQ(value > row.number, row.order > 0);
    EXPECT_EQ(value >= row.number, row.order >= 0);
    EXPECT_EQ(value < row.number, row.order < 0);
    EXPECT_EQ(value <= row.number, row.order <= 0);
    EXPECT_EQ(value == row.number, row.equal);
    EXPECT_EQ(value != row.number, !row.equal);
    EXPECT_EQ(row.number > value, row.order < 0);
    EXPECT_EQ(row.number >= value, row.order <= 0);
    EXPECT_EQ(row.number<value, row.order> 0);
    EXPECT_EQ(row.number <= value, row.order >= 0);
    EXPECT_EQ(row.number == value, row.equal);
    EXPECT_EQ(row.number != value, !row.equal);
    EXPECT_EQ(printed(value), printed(row.value));
    EXPECT_TRUE(keeps_text(value));
}

TEST(CompareNumber, KnownValues) {
    const NumberRow rows[] = {
        {"8 bits, equal", from_words(8, {5}), 5, 0, true},
        {"8 bits, greater", from_words(8, {6}), 5, 1, false},
        {"8 bits, less", from_words(8, {4}), 5, -1, false},
        {"8 bits, a number with more", from_words(8, {5}), 0x105, -1, false},
        {"one bit", from_words(1, {1}), 1, 0, true},
        {"zero", from_words(8, {0}), 0, 0, true},
        {"32 bits, the largest", from_words(32, {kOnes}), kOnes, 0, true},
        {"32 bits are unsigned", from_words(32, {0x80000000}), 0x7FFFFFFF, 1, false},
        {"wide, equal", from_words(64, {5, 0}), 5, 0, true},
        {"wide, greater in word 0", from_words(64, {6, 0}), 5, 1, false},
        {"wide, less in word 0", from_words(64, {4, 0}), 5, -1, false},
        {"wide, greater in word 1", from_words(64, {5, 1}), 5, 1, false},
        {"wide, greater in word 1, less in word 0", from_words(64, {0, 1}), kOnes, 1, false},
        {"wide, greater in the last word only", from_words(96, {0, 0, 1}), kOnes, 1, false},
        {"wide, equal in word 0, greater in the last", from_words(128, {7, 0, 0, 1}), 7, 1, false},
        {"33 bits, the top bit", from_words(33, {0, 1}), 0, 1, false},
        {"33 bits, zero", from_words(33, {0, 0}), 0, 0, true},
        {"33 bits, the largest number", from_words(33, {kOnes, 0}), kOnes, 0, true},
        {"stray bits, compact", from_words(4, {0x15}), 5, 1, false},
        {"stray bits, compact, counted in", from_words(4, {0x15}), 0x15, 0, true},
        {"stray bits, wide", from_words(40, {5, 0x100}), 5, 1, false},
    };
    for (const NumberRow& row : rows) check(row);
}

TEST(CompareNumber, AValueWithAFlagEqualsNoNumberRequired) {
    const NumberRow rows[] = {
        {"5 with flag X and the number 5", from_words(8, {5}, {0xFF}, true), 5, 0, false},
        {"5 with flag X and 0", from_words(8, {5}, {0xFF}, true), 0, 1, false},
        {"flag X without X bits", from_words(8, {5}, {0}, true), 5, 0, false},
        {"flag Z", marked(from_words(8, {5}), "Z"), 5, 0, false},
        {"flag weak low", marked(from_words(8, {5}), "L"), 5, 0, false},
        {"flag weak high", marked(from_words(8, {5}), "H"), 5, 0, false},
        {"flag weak low, zero", marked(from_words(8, {0}), "L"), 0, 0, false},
        {"wide, flag X", from_words(40, {5, 0}, {kOnes, 0xFF}, true), 5, 0, false},
        {"wide, flag X, less", from_words(40, {5, 0}, {kOnes, 0xFF}, true), 6, -1, false},
        {"wide, flag Z", marked(from_words(40, {5, 0}), "Z"), 5, 0, false},
        {"wide, flag weak low", marked(from_words(40, {5, 0}), "L"), 5, 0, false},
        {"wide, flag weak high", marked(from_words(40, {5, 0}), "H"), 5, 0, false},
    };
    for (const NumberRow& row : rows) check(row);
}

TEST(CompareNumber, XBitsWithoutTheFlagDoNotCountRequired) {
    const NumberRow rows[] = {
        {"compact", from_words(8, {5}, {0xFF}), 5, 0, true},
        {"wide", from_words(40, {5, 0}, {kOnes, 0xFF}), 5, 0, true},
    };
    for (const NumberRow& row : rows) check(row);
}

}  // namespace
