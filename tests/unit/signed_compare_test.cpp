// Tests of the comparisons with a signed operand, and of `!=`, which is deliberately the unsigned one.
#include <gtest/gtest.h>

#include <climits>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

/// A row: which operand is the greater one (-1: the left is less), and what `==` and `!=` say, each by its own rule.
template <class Left, class Right>
struct Comparison {
    const char* name;
    Left left;
    Right right;
    int order;
    bool equal;
    bool unequal;
};

/// Asks all six operators, both ways round, and checks that both operands stay as they are, text included.
template <class Left, class Right>
void expect_comparison(const Comparison<Left, Right>& row) {
    SCOPED_TRACE(row.name);
    Left l(row.left);
    Right r(row.right);
    cache_text(l);
    cache_text(r);
    const Left& left = l;
    const Right& right = r;
    EXPECT_EQ(left < right, row.order < 0);
    EXPECT_EQ(left <= right, row.order <= 0);
    EXPECT_EQ(left > right, row.order > 0);
    EXPECT_EQ(left >= right, row.order >= 0);
    EXPECT_EQ(right > left, row.order < 0);
    EXPECT_EQ(right >= left, row.order <= 0);
    EXPECT_EQ(right<left, row.order> 0);
    EXPECT_EQ(right <= left, row.order >= 0);
    EXPECT_EQ(left == right, row.equal);
    EXPECT_EQ(right == left, row.equal);
    EXPECT_EQ(left != right, row.unequal);
    EXPECT_EQ(right != left, row.unequal);
    EXPECT_EQ(printed(l), printed(row.left));
    EXPECT_EQ(printed(r), printed(row.right));
    EXPECT_TRUE(keeps_text(l));
    EXPECT_TRUE(keeps_text(r));
}

TEST(SignedCompare, OrdersAsNumbers) {
    const Comparison<S, S> rows[] = {
        {"-8 in 4 bits and 1 in 8: the signs decide", S(-8, 4), S(1, 8), -1, false, true},
        {"-1 in 4 bits and -1 in 8: equal, yet != (required)", S(-1, 4), S(-1, 8), 0, true, true},
        {"-2 in 4 bits and -2 in 8: equal, yet != (required)", S(-2, 4), S(-2, 8), 0, true, true},
        {"-1 in 4 bits and -2 in 8", S(-1, 4), S(-2, 8), 1, false, true},
        {"-1 in 40 bits and -1 in 3", signed_words(40, {~0U, 0xFF}), S(-1, 3), 0, true, true},
        {"64 bits with all ones on top are not -1", signed_words(64, {0xFFFFFFFE, ~0U}), S(-1, 32), -1, false, true},
        {"-1 in 64 bits and -1 in 32", signed_words(64, {~0U, ~0U}), S(-1, 32), 0, true, true},
        {"64 bits whose low word alone is all ones", signed_words(64, {~0U, 0xFFFFFFFE}), S(-1, 32), -1, false, true},
        {"-1 in 33 bits and -1 in 65", signed_words(33, {~0U, 1}), signed_words(65, {~0U, ~0U, 1}), 0, true, true},
        {"65 bits against 33, the words on top decide", signed_words(65, {~0U, 0, 1}), S(-1, 33), -1, false, true},
        {"equal widths, both negative", S(-128, 8), S(-127, 8), -1, false, true},
        {"equal widths, the same number", S(-5, 8), S(-5, 8), 0, true, false},
        {"1-bit -1 and 0", S(-1, 1), S(0, 1), -1, false, true},
        {"1-bit -1 and 8-bit -1", S(-1, 1), S(-1, 8), 0, true, true},
        {"not negative, another width", S(5, 8), S(5, 40), 0, true, false},
        {"not negative", S(127, 8), S(128, 16), -1, false, true},
        {"32-bit extremes", signed_words(32, {0x80000000}), S(INT_MAX, 32), -1, false, true},
        {"32 bits against 64 below zero", signed_words(32, {0x80000000}), signed_words(64, {0x7FFFFFFF, ~0U}), 1, false,
         true},
        {"the least in 64 bits against -1 in 8", signed_words(64, {0, 0x80000000}), S(-1, 8), -1, false, true},
    };
    for (const auto& row : rows) {
        expect_comparison(row);
    }
}

TEST(SignedCompare, XBitsAndFlags) {
    const Comparison<S, S> rows[] = {
        {"below zero == ignores x-masks (required)", signed_words(8, {0x85}, {1}), S(-123, 8), 0, true, true},
        {"below zero == ignores flags (required)", signed_marked(S(-1, 8), "Z"), S(-1, 8), 0, true, true},
        {"below zero and wide == ignores x-masks (required)", signed_words(40, {5, 0x80}, {0, 1}, true),
         signed_words(40, {5, 0x80}), 0, true, true},
        {"from zero up == compares x-masks", signed_words(8, {5}, {1}), S(5, 8), 0, false, true},
        {"from zero up == compares flags", signed_marked(S(5, 8), "L"), S(5, 8), 0, false, true},
        {"from zero up equal x-masks are equal", signed_words(8, {5}, {1}, true), signed_words(40, {5}, {1}, true), 0,
         true, false},
        {"an X sign counts by its value bit", signed_words(8, {0x80}, {0x80}, true), S(0, 8), -1, false, true},
        {"an X sign over a value bit of 0", signed_words(8, {0}, {0x80}, true), S(-1, 8), 1, false, true},
    };
    for (const auto& row : rows) {
        expect_comparison(row);
    }
}

TEST(SignedCompare, ReadsBitsAboveTheWidth) {
    const Comparison<S, S> rows[] = {
        {"-1 with ones above is == to the trimmed one and yet greater (required)", S(-1, 40),
         signed_words(40, {~0U, 0xFF}), 1, true, true},
        {"-1 with ones above has the words of -1 in 64 bits: not != (required)", S(-1, 40),
         signed_words(64, {~0U, ~0U}), 0, true, false},
        {"compact, below zero (required)", signed_words(8, {0x1F0}), S(-16, 8), 1, true, true},
        {"compact, from zero up", signed_words(8, {0x105}), S(5, 8), 1, false, true},
        {"compact, from zero up, as the number of all bits", signed_words(8, {0x105}), S(0x105, 16), 0, true, false},
        {"wide, from zero up", signed_words(40, {5, 0x100}), S(5, 40), 1, false, true},
    };
    for (const auto& row : rows) {
        expect_comparison(row);
    }
    const Comparison<S, U> mixed[] = {
        {"from zero up", signed_words(8, {0x105}), U(0x105, 16), 0, true, false},
        {"below zero, the same words", signed_words(8, {0x1F0}), from_words(8, {0x1F0}), -1, false, false},
    };
    for (const auto& row : mixed) {
        expect_comparison(row);
    }
}

TEST(MixedCompare, NegativeIsLessThanEveryUnsigned) {
    const Comparison<S, U> rows[] = {
        {"-128 and 0", S(-128, 8), U(0, 8), -1, false, true},
        {"-128 and 255", S(-128, 8), U(255, 8), -1, false, true},
        {"the same bits: neither == nor != (required)", S(-128, 8), U(0x80, 8), -1, false, false},
        {"the same bits, wide (required)", signed_words(40, {5, 0x80}), from_words(40, {5, 0x80}), -1, false, false},
        {"-1 in 8 bits and 40 bits of ones", S(-1, 8), from_words(40, {~0U, 0xFF}), -1, false, true},
        {"-1 in 40 bits and 0 in 1", S(-1, 40), U(0, 1), -1, false, true},
        {"an all-X unsigned value", S(-1, 8), U(0, 8).force_x(), -1, false, true},
        {"5 in 8 bits and 5 in 16", S(5, 8), U(5, 16), 0, true, false},
        {"5 in 40 bits and 5 in 8", S(5, 40), U(5, 8), 0, true, false},
        {"127 and 255", S(127, 8), U(255, 8), -1, false, true},
        {"127 and 1", S(127, 8), U(1, 8), 1, false, true},
        {"2^32 and the largest word", signed_words(64, {0, 1}), U(~0U, 32), 1, false, true},
        {"7 and 2^32", S(7, 8), from_words(64, {0, 1}), -1, false, true},
        {"equal numbers, another x-mask", signed_words(8, {5}, {1}), U(5, 8), 0, false, true},
        {"equal numbers and x-masks, another flag", S(5, 8), marked(U(5, 8), "H"), 0, false, true},
        {"zero", S(0, 1), U(0, 100), 0, true, false},
    };
    for (const auto& row : rows) {
        expect_comparison(row);
    }
}

TEST(SignedCompare, OfAValueWithItself) {
    const S values[] = {S(5, 8), S(-5, 8), S(-1, 40), signed_words(8, {0x85}, {0xFF}, true),
                        signed_words(100, {1, 2, 3, 8})};
    for (const S& v : values) {
        SCOPED_TRACE(printed(v));
        const S& same = v;
        EXPECT_TRUE(v <= same);
        EXPECT_TRUE(v >= same);
        EXPECT_TRUE(v == same);
        EXPECT_FALSE(v < same);
        EXPECT_FALSE(v > same);
        EXPECT_FALSE(v != same);
    }
}

TEST(SignedCompare, WithANumberIsUnsigned) {
    const S minus_one(-1, 8);
    EXPECT_TRUE(minus_one == 255U);
    EXPECT_TRUE(255U == minus_one);
    EXPECT_FALSE(minus_one != 255U);
    EXPECT_TRUE(minus_one > 254U);
    EXPECT_TRUE(minus_one >= 255U);
    EXPECT_TRUE(254U < minus_one);
    EXPECT_FALSE(minus_one < 255U);
    EXPECT_TRUE(S(-1, 40) > ~0U);
    EXPECT_TRUE(signed_words(8, {0xFF}, {1}, true) != 255U) << "an X flag makes it unequal to every number";
}

}  // namespace
