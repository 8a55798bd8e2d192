// Tests of the products with a signed operand and of the arithmetic right shifts.
#include <gtest/gtest.h>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

TEST(SignedProduct, IsExact) {
    expect_all<S, S>(
        {
            {"-3 * 5", S(-3, 8), S(5, 8), "16 bits 0000FFF1"},
            {"3 * -5", S(3, 8), S(-5, 8), "16 bits 0000FFF1"},
            {"-3 * -5", S(-3, 8), S(-5, 8), "16 bits 0000000F"},
            {"-128 * -128", S(-128, 8), S(-128, 8), "16 bits 00004000"},
            {"-128 * 127", S(-128, 8), S(127, 8), "16 bits 0000C080"},
            {"0 * -5 stays 0", S(0, 8), S(-5, 8), "16 bits 00000000"},
            {"1-bit -1 * -1", S(-1, 1), S(-1, 1), "2 bits 00000001"},
            {"1-bit -1 * 4-bit 3", S(-1, 1), S(3, 4), "5 bits 0000001D"},
            {"a result of 32 bits is compact", S(-1, 16), S(1, 16), "32 bits FFFFFFFF"},
            {"a result of 33 bits is wide", S(-1, 17), S(1, 16), "33 bits 00000001 FFFFFFFF"},
            {"32-bit least squared", signed_words(32, {0x80000000}), signed_words(32, {0x80000000}),
             "64 bits 40000000 00000000"},
            {"32-bit least * -1", signed_words(32, {0x80000000}), S(-1, 32), "64 bits 00000000 80000000"},
            {"40-bit least squared", signed_words(40, {0, 0x80}), signed_words(40, {0, 0x80}),
             "80 bits 00004000 00000000 00000000"},
            {"33-bit -1 * 0", signed_words(33, {~0U, 1}), S(0, 8), "41 bits 00000000 00000000"},
            {"64-bit -1 squared", S(-1, 64), S(-1, 64), "128 bits 00000000 00000000 00000000 00000001"},
            {"64-bit -1 * 1-bit 0", S(-1, 64), S(0, 1), "65 bits 00000000 00000000 00000000"},
        },
        [](const S& a, const S& b) { return a * b; });
}

TEST(SignedProduct, XFlagMakesItAllX) {
    expect_all<S, S>(
        {
            {"one factor flagged X", signed_words(8, {3}, {1}, true), S(5, 8), "16 bits 00000000 x 0000FFFF flags X"},
            {"signs differ: negated, still all X", signed_words(8, {0xFD}, {1}, true), S(5, 8),
             "16 bits 00000000 x 0000FFFF flags X"},
            {"flag X alone is enough", S(5, 8), signed_words(8, {3}, {}, true), "16 bits 00000000 x 0000FFFF flags X"},
            {"wide", signed_words(40, {3, 0x80}, {1}, true), S(5, 8),
             "48 bits 00000000 00000000 x 0000FFFF FFFFFFFF flags X"},
            {"compact factors, wide result", signed_words(20, {3}, {1}, true), S(-5, 20),
             "40 bits 00000000 00000000 x 000000FF FFFFFFFF flags X"},
            {"X bits without flag X do not count", signed_words(8, {3}, {0xFF}), S(5, 8), "16 bits 0000000F"},
            {"other flags do not reach the product", signed_marked(S(3, 8), "ZLH"), signed_marked(S(-5, 8), "ZLH"),
             "16 bits 0000FFF1"},
            {"no X flag reaches it from the x-mask of a wide factor", signed_words(40, {3, 0x80}, {1, 1}), S(0, 8),
             "48 bits 00000000 00000000"},
        },
        [](const S& a, const S& b) { return a * b; });
}

TEST(SignedProduct, ReadsBitsAboveTheWidth) {
    expect_all<S, S>(
        {
            {"compact, not negative (required)", signed_words(8, {0x105}), S(2, 8), "16 bits 0000020A"},
            {"compact, negative: the negation trims", signed_words(8, {0x1FB}), S(2, 8), "16 bits 0000FFF6"},
            {"wide -1 with ones above", S(-1, 40), S(5, 8), "48 bits 0000FFFF FFFFFFFB"},
            {"wide -1 with ones above, squared", S(-1, 40), S(-1, 40), "80 bits 00000000 00000000 00000001"},
            {"wide, not negative (required)", signed_words(40, {0, 0x100}), S(2, 8), "48 bits 00000200 00000000"},
        },
        [](const S& a, const S& b) { return a * b; });
}

TEST(MixedProduct, UnsignedOperandIsNeverNegative) {
    const std::initializer_list<Case<S, U>> rows = {
        {"4-bit -1 * 15", S(-1, 4), U(15, 4), "8 bits 000000F1"},
        {"-1 * 255", S(-1, 8), U(255, 8), "16 bits 0000FF01"},
        {"127 * 255", S(127, 8), U(255, 8), "16 bits 00007E81"},
        {"-128 * 255", S(-128, 8), U(255, 8), "16 bits 00008080"},
        {"0 * 255", S(0, 8), U(255, 8), "16 bits 00000000"},
        {"-1 * 0", S(-1, 8), U(0, 8), "16 bits 00000000"},
        {"1-bit -1 * 1-bit 1", S(-1, 1), U(1, 1), "2 bits 00000003"},
        {"64-bit -1 * the largest", S(-1, 64), from_words(64, {~0U, ~0U}),
         "128 bits FFFFFFFF FFFFFFFF 00000000 00000001"},
        {"compact operands, wide result", S(-3, 20), U(7, 20), "40 bits 000000FF FFFFFFEB"},
        {"40-bit -1 with ones above its width", S(-1, 40), U(5, 8), "48 bits 0000FFFF FFFFFFFB"},
        {"an unsigned bit above the width counts (required)", S(2, 8), from_words(8, {0x1FF}), "16 bits 000003FE"},
        {"flag X of the signed operand", signed_words(8, {0xFD}, {}, true), U(5, 4),
         "12 bits 00000000 x 00000FFF flags X"},
        {"flag X of the unsigned operand", S(-3, 8), from_words(4, {5}, {1}, true),
         "12 bits 00000000 x 00000FFF flags X"},
        {"X bits without flag X, other flags", signed_words(8, {0xFD}, {1}), marked(from_words(8, {5}, {1}), "ZLH"),
         "16 bits 0000FFF1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(applied(row.left, row.right, [](const S& s, const U& u) { return s * u; }), row.expected);
        EXPECT_EQ(applied(row.right, row.left, [](const U& u, const S& s) { return u * s; }), row.expected);
    }
}

/// A row of a table of shifts.
struct Shift {
    const char* name;
    S value;
    unsigned count;
    const char* expected;
};

TEST(SignedShiftRight, NarrowsByTheCount) {
    const Shift rows[] = {
        {"-16 by 2", S(-16, 8), 2, "6 bits 0000003C"},
        {"0x70 by 4", S(0x70, 8), 4, "4 bits 00000007"},
        {"by 0", S(-16, 8), 0, "8 bits 000000F0"},
        {"-7 by 1 rounds down", S(-7, 8), 1, "7 bits 0000007C"},
        {"negative, by width - 1", S(-16, 8), 7, "1 bits 00000001"},
        {"negative, by the width", S(-16, 8), 8, "1 bits 00000001"},
        {"negative, by more", S(-16, 8), 100, "1 bits 00000001"},
        {"negative, by 2^31", S(-16, 8), 0x80000000, "1 bits 00000001"},
        {"not negative, by the width", S(0x70, 8), 8, "1 bits 00000000"},
        {"compact by 32: the whole word stays in a width of 1 (required)", S(0x70, 8), 32, "1 bits 00000070"},
        {"compact by 33: as by 1 (required)", S(0x70, 8), 33, "1 bits 00000038"},
        {"compact by a count that reads as -32: wider (required)", S(0x70, 8), 0xFFFFFFE0, "40 bits 00000000 00000070"},
        {"compact by a count that reads as -47: wider, shifted by 17 (required)", S(0x12340000, 32), 0xFFFFFFD1,
         "79 bits 00000000 00000000 0000091A"},
        {"32 bits by 32, not negative (required)", S(0x12345678, 32), 32, "1 bits 12345678"},
        {"32 bits by 31", signed_words(32, {0x80000000}), 31, "1 bits 00000001"},
        {"32 bits by 32, negative", signed_words(32, {0x80000000}), 32, "1 bits 00000001"},
        {"compact X bits and flags are lost (required)", signed_marked(signed_words(8, {0xF0}, {0x0F}, true), "ZLH"), 2,
         "6 bits 0000003C"},
        {"compact X bits and flags are lost by 0 too (required)", signed_words(8, {0xF0}, {0x0F}, true), 0,
         "8 bits 000000F0"},
        {"a compact bit above the width stays above (required)", signed_words(8, {0x1F0}), 4, "4 bits 0000001F"},
        {"wide X bits and flags come along", signed_marked(signed_words(40, {0, 0x80}, {0x100, 2}, true), "Z"), 4,
         "36 bits 00000008 00000000 x 00000000 20000010 flags XZ"},
        {"wide by 0", signed_words(40, {5, 0x80}, {1}), 0, "40 bits 00000080 00000005 x 00000000 00000001"},
        {"40 bits to 33", signed_words(40, {0, 0x80}), 7, "33 bits 00000001 00000000"},
        {"40 bits to 32, compact", signed_words(40, {0x12345678, 0x80}), 8, "32 bits 80123456"},
        {"40 bits to 1", signed_words(40, {0, 0x80}), 39, "1 bits 00000001"},
        {"wide and negative by the width: known, without flags", signed_words(40, {0, 0x80}, {1, 1}, true), 40,
         "1 bits 00000001"},
        {"wide and not negative by the width: 0 with the flags", signed_words(40, {5, 0x10}, {1}, true), 40,
         "1 bits 00000000 flags X"},
        {"100 bits by 37", signed_words(100, {0, 0x20, 0, 8}), 37, "63 bits 40000000 00000001"},
        {"64 bits by 32", signed_words(64, {1, 0x80000002}), 32, "32 bits 80000002"},
        {"wide -1 with ones above its width", S(-1, 40), 4, "36 bits 0000000F FFFFFFFF"},
        {"wide -1 with ones above, to compact", S(-1, 40), 9, "31 bits 7FFFFFFF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        const S& operand = v;
        const S result = operand >> row.count;
        EXPECT_EQ(printed(result), row.expected);
        EXPECT_EQ(printed(v), printed(row.value));
        EXPECT_TRUE(keeps_text(v));
        EXPECT_FALSE(keeps_text(result));
    }
}

TEST(SignedShiftRightInPlace, FillsInTheSign) {
    const S minus_four = signed_words(32, {0xFFFFFFFC});
    const S minus_2_32 = signed_words(40, {0, 0xFF});
    const S least_64 = signed_words(64, {0, 0x80000000});
    const Shift rows[] = {
        {"-112 by 2", S(-112, 8), 2, "8 bits 000000E4"},
        {"-112 by 0", S(-112, 8), 0, "8 bits 00000090"},
        {"-112 by 7", S(-112, 8), 7, "8 bits 000000FF"},
        {"-112 by 8", S(-112, 8), 8, "8 bits 000000FF"},
        {"-112 by 100", S(-112, 8), 100, "8 bits 000000FF"},
        {"by 2^31 the count reads negative: as by 0 (required)", S(-112, 8), 0x80000000, "8 bits 00000090"},
        {"by 2^32 - 1 the count reads negative: as by 31 (required)", S(-112, 8), 0xFFFFFFFF, "8 bits 00000000"},
        {"31 bits by 4", signed_words(31, {0x40000000}), 4, "31 bits 7C000000"},
        {"1 bit by 0", S(-1, 1), 0, "1 bits 00000001"},
        {"1 bit by 1", S(-1, 1), 1, "1 bits 00000001"},
        {"32 bits by 0", minus_four, 0, "32 bits FFFFFFFC"},
        {"32 bits by 1: all ones (required)", minus_four, 1, "32 bits FFFFFFFF"},
        {"32 bits by 27: all ones (required)", minus_four, 27, "32 bits FFFFFFFF"},
        {"32 bits by 28 (required)", minus_four, 28, "32 bits FFFF000F"},
        {"32 bits by 29 (required)", minus_four, 29, "32 bits FF000007"},
        {"32 bits by 30 (required)", minus_four, 30, "32 bits F0000003"},
        {"32 bits by 31 (required)", minus_four, 31, "32 bits C0000001"},
        {"32 bits by 32", minus_four, 32, "32 bits FFFFFFFF"},
        {"33 bits by 1 (required)", signed_words(33, {0, 1}), 1, "33 bits 00000001 FFFFFFFF"},
        {"33 bits by 2 (required)", signed_words(33, {0, 1}), 2, "33 bits 00000001 C0000000"},
        {"33 bits by 33", signed_words(33, {0, 1}), 33, "33 bits 00000001 FFFFFFFF"},
        {"40 bits by 2 (required)", minus_2_32, 2, "40 bits 000000FF FFFFFFC0"},
        {"40 bits by 0 (required)", minus_2_32, 0, "40 bits 000000FF FFFFFF00"},
        {"40 bits by 2^31 (required)", minus_2_32, 0x80000000, "40 bits 000000FF FFFFFFFF"},
        {"40 bits by 2^32 - 1 (required)", minus_2_32, 0xFFFFFFFF, "40 bits 000000FF FFFFFE00"},
        {"64 bits by 0 changes nothing", least_64, 0, "64 bits 80000000 00000000"},
        {"64 bits by 1 (required)", least_64, 1, "64 bits FFFFFFFF FFFFFFFF"},
        {"64 bits by 28 (required)", least_64, 28, "64 bits FFFFFFFF FFFF0000"},
        {"64 bits by 32 (required)", least_64, 32, "64 bits FFFFFFFF 80000000"},
        {"64 bits by 63", least_64, 63, "64 bits FFFFFFFF FFFFFFFF"},
        {"64 bits by 64", least_64, 64, "64 bits FFFFFFFF FFFFFFFF"},
        {"65 bits by 1 (required)", signed_words(65, {0, 0, 1}), 1, "65 bits 00000001 FFFFFFFF 00000000"},
        {"100 bits by 40 (required)", signed_words(100, {0, 0, 0, 8}), 40,
         "100 bits 0000000F FFFFFFFF F8000000 00000000"},
        {"X bits shift unfilled, flags stay", signed_marked(signed_words(8, {0x90}, {0x0C}, true), "Z"), 2,
         "8 bits 000000E4 x 00000003 flags XZ"},
        {"by the width: X bits stay (required)", signed_words(8, {0x90}, {0x0C}, true), 8,
         "8 bits 000000FF x 0000000C flags X"},
        {"wide: X bits shift unfilled", signed_words(40, {0, 0x80}, {1, 2}, true), 4,
         "40 bits 000000FF FFFFFFF0 x 00000000 20000000 flags X"},
        {"wide by the width: X bits stay (required)", signed_words(40, {0, 0x80}, {1, 2}), 40,
         "40 bits 000000FF FFFFFFFF x 00000002 00000001"},
        {"a compact bit above the width is shifted in, then trimmed", signed_words(8, {0x1F0}), 4, "8 bits 000000FF"},
        {"wide ones above the width are trimmed", S(-1, 40), 0, "40 bits 000000FF FFFFFFFF"},
        {"all ones are trimmed", S(-1, 40), 40, "40 bits 000000FF FFFFFFFF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        EXPECT_EQ(&(v >>= row.count), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(SignedShiftRightInPlace, OfAValueNotNegativeIsTheUnsignedShift) {
    const S values[] = {S(0x70, 8),
                        signed_words(8, {0x70}, {0xFF}, true),
                        signed_words(8, {0x170}),
                        S(0x7FFFFFFF, 32),
                        signed_words(33, {~0U, 0}, {1, 1}),
                        signed_words(40, {5, 0x10}, {0xF0, 0xF}, true),
                        signed_words(64, {1, 2}),
                        signed_words(100, {1, 2, 3, 4}, {5, 6, 7, 8})};
    for (const S& value : values) {
        for (const unsigned count :
             {0U, 1U, 7U, 8U, 31U, 32U, 33U, 39U, 40U, 41U, 64U, 100U, 0x80000000U, 0xFFFFFFFFU}) {
            SCOPED_TRACE(printed(value) + " >>= " + std::to_string(count));
            U plain(value);
            plain >>= count;
            S v(value);
            cache_text(v);
            v >>= count;
            EXPECT_EQ(printed(v), printed(plain));
            EXPECT_FALSE(keeps_text(v));
        }
    }
    S by_its_width = signed_words(40, {5, 0x10}, {1, 1}, true);
    EXPECT_EQ(printed(by_its_width >>= 40), "40 bits 00000000 00000000 flags X");
    S compact_by_32(0x70, 8);
    EXPECT_EQ(printed(compact_by_32 >>= 32), "8 bits 00000070") << "the count is taken modulo 32";
}

TEST(SignedShiftLeft, IsTheUnsignedOne) {
    const S v(-1, 8);
    EXPECT_EQ(printed(v << 4U), "12 bits 00000FF0");
    S in_place(-1, 8);
    EXPECT_EQ(printed(in_place <<= 4U), "8 bits 000000F0");
    EXPECT_EQ(printed(S(-1, 40) << 0U), "40 bits FFFFFFFF FFFFFFFF") << "bits above the width are copied, not trimmed";
}

}  // namespace
