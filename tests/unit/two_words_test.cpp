// Tests of values of 33 to 64 bits, which take two words: both follow the rules of longer values, and what is stored
// above the width is read as it is.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "kval.h"
#include "operator_checks.h"
#include "signed_support.h"
#include "unit_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

constexpr unsigned kOnes = 0xFFFFFFFF;

/// Ones and X bits everywhere.
U full(unsigned width) { return from_words(width, {kOnes, kOnes}).force_x(); }

// ---- bits above the width ----

TEST(StrayBits, AreReadByTheOperatorsOfTwoValues) {
    const struct {
        BinaryRow row;
        U (*operation)(const U&, const U&);
    } rows[] = {
        {{"40 + 33 bits: the bit above is the grown one", from_words(40, {0x12345678, 0xFFFFFF80}),
          from_words(33, {5, 1}), "41 bits 00000181 1234567D"},
         [](const U& l, const U& r) { return l + r; }},
        {{"40 + 64 bits", from_words(40, {0x12345678, 0xFFFFFF80}), from_words(64, {5, 0x7F}),
          "64 bits FFFFFFFF 1234567D"},
         [](const U& l, const U& r) { return l + r; }},
        {{"40 + 100 bits: the ones above carry into word 2", from_words(40, {0x12345678, 0xFFFFFF80}),
          from_words(100, {0, 0x80, 0, 0}), "100 bits 00000000 00000001 00000000 12345678"},
         [](const U& l, const U& r) { return l + r; }},
        {{"64 - 40 bits", from_words(64, {0x12345678, 0}), from_words(40, {0x12345678, 0xFFFFFF80}),
          "64 bits 00000080 00000000"},
         [](const U& l, const U& r) { return l - r; }},
        {{"40 - 8 bits", from_words(40, {0x12345678, 0xFFFFFF80}), from_words(8, {0xF79}), "40 bits 00000080 123446FF"},
         [](const U& l, const U& r) { return l - r; }},
        {{"40 * 8 bits", from_words(40, {0x12345678, 0xFFFFFF80}), from_words(8, {2}), "48 bits 0000FF00 2468ACF0"},
         [](const U& l, const U& r) { return l * r; }},
        {{"40 * 24 bits", from_words(40, {0x12345678, 0xFFFFFF80}), from_words(24, {2}), "64 bits FFFFFF00 2468ACF0"},
         [](const U& l, const U& r) { return l * r; }},
        {{"40 * 25 bits", from_words(40, {0x12345678, 0xFFFFFF80}), from_words(25, {2}),
          "65 bits 00000001 FFFFFF00 2468ACF0"},
         [](const U& l, const U& r) { return l * r; }},
        {{"40 & 40 bits: not trimmed (required)", from_words(40, {0x12345678, 0xFFFFFF80}),
          from_words(40, {kOnes, 0xF0F}), "40 bits 00000F00 12345678"},
         [](const U& l, const U& r) { return l & r; }},
        {{"40 | 33 bits: not trimmed (required)", from_words(40, {0x12345678, 0xFFFFFF80}),
          from_words(33, {0, 1}, {0, 0xF000}), "40 bits FFFFFF81 12345678"},
         [](const U& l, const U& r) { return l | r; }},
        {{"40 ^ 8 bits: not trimmed (required)", from_words(40, {0x12345678, 0xFFFFFF80}, {1, 0xF00}),
          from_words(8, {0xFF}), "40 bits FFFFFF80 12345687 x 00000F00 00000001"},
         [](const U& l, const U& r) { return l ^ r; }},
    };
    for (const auto& row : rows) check_free(row.row, row.operation);
    const struct {
        BinaryRow row;
        U& (*operation)(U&, const U&);
    } in_place[] = {
        {{"64 += 40 bits", from_words(64, {0x88888888, 1}), from_words(40, {0x12345678, 0xFFFFFF80}),
          "64 bits FFFFFF81 9ABCDF00"},
         [](U& l, const U& r) -> U& { return l += r; }},
        {{"40 += 8 bits", from_words(40, {0xFFFFFF81, 0xFFFFFF80}), from_words(8, {0x7F}), "40 bits 00000081 00000000"},
         [](U& l, const U& r) -> U& { return l += r; }},
        {{"64 -= 40 bits", from_words(64, {0x12345678, 0}), from_words(40, {0x12345678, 0xFFFFFF80}),
          "64 bits 00000080 00000000"},
         [](U& l, const U& r) -> U& { return l -= r; }},
        {{"64 &= 40 bits", from_words(64, {kOnes, kOnes}), from_words(40, {0x12345678, 0xFFFFFF80}),
          "64 bits FFFFFF80 12345678"},
         [](U& l, const U& r) -> U& { return l &= r; }},
        {{"64 |= 40 bits", from_words(64, {0, 1}), from_words(40, {0x12345678, 0xFFFFFF80}, {0, 0xF00}),
          "64 bits FFFFF081 12345678 x 00000F00 00000000"},
         [](U& l, const U& r) -> U& { return l |= r; }},
    };
    for (const auto& row : in_place) check_in_place(row.row, row.operation);
}

TEST(StrayBits, AreReadByShiftsAndInversion) {
    const struct {
        NumberRow row;
        U (*operation)(const U&, unsigned);
    } rows[] = {
        {{"<< 0: not trimmed (required)", from_words(40, {0x12345678, 0xFFFFFF80}), 0, "40 bits FFFFFF80 12345678"},
         [](const U& v, unsigned n) { return v << n; }},
        {{"<< 4: not trimmed (required)", from_words(40, {0x12345678, 0xFFFFFF80}, {0, 0xF00}), 4,
          "44 bits FFFFF801 23456780 x 0000F000 00000000"},
         [](const U& v, unsigned n) { return v << n; }},
        {{"<< 24", from_words(40, {0x12345678, 0xFFFFFF80}), 24, "64 bits 80123456 78000000"},
         [](const U& v, unsigned n) { return v << n; }},
        {{">> 0: trimmed", from_words(40, {0x12345678, 0xFFFFFF80}), 0, "40 bits 00000080 12345678"},
         [](const U& v, unsigned n) { return v >> n; }},
        {{">> 4: trimmed", from_words(40, {0x12345678, 0xFFFFFF80}), 4, "36 bits 00000008 01234567"},
         [](const U& v, unsigned n) { return v >> n; }},
    };
    for (const auto& row : rows) check_free(row.row, row.operation);
    const struct {
        NumberRow row;
        U& (*operation)(U&, unsigned);
    } in_place[] = {
        {{">>= 4: they come in", from_words(40, {0x12345678, 0xFFFFFF80}, {0, 0xF00}), 4,
          "40 bits 000000F8 01234567 x 000000F0 00000000"},
         [](U& v, unsigned n) -> U& { return v >>= n; }},
        {{">>= 39: they come in", from_words(40, {0x12345678, 0xFFFFFF80}), 39, "40 bits 00000000 01FFFFFF"},
         [](U& v, unsigned n) -> U& { return v >>= n; }},
        {{">>= 40: all goes", from_words(40, {0x12345678, 0xFFFFFF80}), 40, "40 bits 00000000 00000000"},
         [](U& v, unsigned n) -> U& { return v >>= n; }},
        {{"<<= 4", from_words(40, {0x12345678, 0xFFFFFF80}), 4, "40 bits 00000001 23456780"},
         [](U& v, unsigned n) -> U& { return v <<= n; }},
        {{"+= a number", from_words(40, {0x12345678, 0xFFFFFFFF}), 0xFFFFFFFF, "40 bits 00000000 12345677"},
         [](U& v, unsigned n) -> U& { return v += n; }},
        {{"-= a number", from_words(40, {0x12345678, 0xFFFFFF00}), 0xFFFFFFFF, "40 bits 000000FF 12345679"},
         [](U& v, unsigned n) -> U& { return v -= n; }},
    };
    for (const auto& row : in_place) check_in_place(row.row, row.operation);
    EXPECT_EQ(printed(~from_words(40, {0x12345678, 0xFFFFFF80}, {0, 0xF00})), "40 bits 0000007F EDCBA987");
}

TEST(StrayBits, AreComparedHashedAndPrintedAsDigits) {
    const U raw = from_words(40, {1, 0x102});
    EXPECT_TRUE(raw > from_words(40, {1, 2}) && raw > from_words(64, {1, 0x101}) && raw < from_words(100, {2, 0x102}));
    EXPECT_TRUE(raw == from_words(64, {1, 0x102}) && raw != from_words(40, {1, 2}));
    EXPECT_TRUE(from_words(40, {1, 0x100}) != 1U && from_words(40, {1, 0x100}) > 1U);
    EXPECT_FALSE(from_words(40, {1, 0x100}).is_one());
    EXPECT_FALSE(from_words(40, {0, 0x100}).is_zero());
    EXPECT_FALSE(from_words(40, {1, 2}, {0, 0x100}) == from_words(40, {1, 2})) << "X bits above the width count too";
    EXPECT_EQ(raw.get_hash(32), twang_uinthash(1) ^ twang_uinthash(0x102));
    EXPECT_EQ(raw.bit(40), 1U);
    EXPECT_TRUE(from_words(40, {1, 2}, {0, 0x100}).is_x(40, 0));
    const struct {
        const char* name;
        U value;
        const char* digits;
    } rows[] = {
        {"33 bits: the top digit is read whole (required)", from_words(33, {0x89ABCDEF, 0xFFFFFFF3}), "389ABCDEF"},
        {"62 bits: the top digit is read whole (required)", from_words(62, {0, 0xC0000000}), "C000000000000000"},
        {"63 bits: the top digit is read whole (required)", from_words(63, {0, 0x80000001}), "8000000100000000"},
        {"40 bits: full digits, nothing above", from_words(40, {0x89ABCDEF, 0xFFFFFF12}), "1289ABCDEF"},
        {"33 bits: an X above the width is no X digit", from_words(33, {0x89ABCDEF, 1}, {0, 0xE}), "189ABCDEF"},
        {"33 bits: an X below it is", from_words(33, {0x89ABCDEF, 1}, {0, 0xF}), "X89ABCDEF"},
    };
    for (const auto& row : rows) EXPECT_STREQ(row.value.as_hex_string(), row.digits) << row.name;
    EXPECT_EQ(std::string(from_words(33, {0, kOnes}).as_bin_string()), "1" + std::string(32, '0'));
}

TEST(StrayBits, StayWhereNothingTrims) {
    for (const unsigned width : {33U, 40U, 63U}) {
        SCOPED_TRACE(width);
        const std::string bits = std::to_string(width) + " bits";
        const U raw = from_words(width, {5, kOnes}, {6, 0xFFFFFFF0});
        U v(0, width);
        v = raw;
        EXPECT_EQ(printed(v), bits + " FFFFFFFF 00000005 x FFFFFFF0 00000006") << "equal widths";
        EXPECT_EQ(printed(U(std::move(v))), bits + " FFFFFFFF 00000005 x FFFFFFF0 00000006") << "moved";
        v = U(raw).set_x(3).set_bit(0, 0).force_z();
        EXPECT_EQ(printed(v), bits + " FFFFFFFF 00000004 x FFFFFFF0 0000000E flags XZ") << "changed below";
        EXPECT_EQ(printed(S(-5, width)), bits + " FFFFFFFF FFFFFFFB") << "made from a negative number (required)";
        v.force_x();
        EXPECT_EQ(v.get_uvalue_at(1), kOnes >> (64 - width)) << "trimmed with its X bits";
        EXPECT_EQ(v.get_xmask_at(1), kOnes >> (64 - width));
    }
}

// ---- the rules of longer values ----

TEST(TwoWords, PositionsAreNotTakenModulo32) {
    const U low = from_words(64, {8}, {8}, true), high = from_words(64, {0, 8}, {0, 8}, true);
    EXPECT_TRUE(low.is_x(3, 0) && high.is_x(35, 0) && low.is_x(0, 1) && high.is_x(8, 1));
    EXPECT_FALSE(low.is_x(35, 0) || high.is_x(3, 0) || low.is_x(67, 0) || high.is_x(67, 0) || high.is_x(99, 0));
    EXPECT_FALSE(low.is_x(8, 1) || high.is_x(0, 1) || low.is_x(16, 1) || high.is_x(16, 1) || high.is_x(-1, 0));
    EXPECT_EQ(low.bit(3) + high.bit(35), 2U);
    EXPECT_EQ(low.bit(35) + high.bit(3), 0U);
    const U ones = full(64);
    EXPECT_EQ(ones.bit(63), 1U);
    EXPECT_EQ(ones.bit(64), 0U) << "outside both words";
    EXPECT_ANY_THROW(ones.bit(65));
    EXPECT_FALSE(ones.is_x(64, 0));
    EXPECT_EQ(ones.get_uvalue_at(2) | ones.get_uvalue_at(-1) | ones.get_xmask_at(2) | ones.get_xmask_at(-1), 0U);
}

TEST(TwoWords, ABitIsSetInItsWordAndInNoOther) {
    const struct {
        const char* name;
        U value;
        int pos;
        unsigned bits;
        const char* want;
    } rows[] = {
        {"3 at 31 does not reach word 1 (required)", from_words(64, {0, 0}), 31, 3, "64 bits 00000000 80000000"},
        {"ones at 4 stay in word 0 (required)", from_words(40, {0, 0}), 4, kOnes, "40 bits 00000000 FFFFFFF0"},
        {"3 at 63", from_words(64, {0, 0}), 63, 3, "64 bits 80000000 00000000"},
        {"ones at 33", from_words(40, {1, 1}), 33, kOnes, "40 bits FFFFFFFF 00000001"},
        {"at 32, cleared", from_words(33, {kOnes, 1}), 32, 0, "33 bits 00000000 FFFFFFFF"},
        {"64 bits at 64: nothing, nor does flag X go", from_words(64, {1, 1}, {}, true), 64, 1,
         "64 bits 00000001 00000001 flags X"},
        {"33 bits at 33: above the width", from_words(33, {0, 0}), 33, 1, "33 bits 00000002 00000000"},
        {"the last X bit of word 0: flag X goes, though word 1 has one (required)",
         from_words(64, {0, 0}, {8, 0x100}, true), 3, 1, "64 bits 00000000 00000008 x 00000100 00000000"},
        {"the last X bit of word 1: flag X goes, though word 0 has one (required)",
         from_words(64, {0, 0}, {8, 0x100}, true), 40, 1, "64 bits 00000100 00000000 x 00000000 00000008"},
        {"one of two X bits of word 1: flag X stays", from_words(64, {0, 0}, {0, 0x101}, true), 40, 1,
         "64 bits 00000100 00000000 x 00000001 00000000 flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        U v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.set_bit(row.pos, row.bits), &v);
        EXPECT_EQ(printed(v), row.want);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(TwoWords, RawStoresReachBothAndNoThird) {
    U v(0, 33);
    cache_text(v);
    v.set_uvalue_at(0, 1).set_uvalue_at(1, 0xF2).set_xmask_at(0, 3).set_xmask_at(1, 0xF4);
    for (const int index : {-1, 2, 3}) v.set_uvalue_at(index, kOnes).set_xmask_at(index, kOnes);
    EXPECT_EQ(printed(v), "33 bits 000000F2 00000001 x 000000F4 00000003");
    EXPECT_TRUE(keeps_text(v));
    v.EnforceWidth();
    EXPECT_EQ(printed(v), "33 bits 00000000 00000001 x 00000000 00000003");
    EXPECT_EQ(printed(v.bitwidth(65)), "65 bits 00000000 00000000 00000001 x 00000000 00000000 00000003");
    v.set_uvalue_at(2, 1).set_xmask_at(2, 1);
    EXPECT_EQ(printed(v), "65 bits 00000001 00000000 00000001 x 00000001 00000000 00000003");
}

TEST(TwoWords, CountsAreNotTakenModulo32) {
    const struct {
        unsigned count;
        const char* left;
        const char* right;
    } rows[] = {
        {0, "40 bits 000000A5 00000001", "40 bits 000000A5 00000001"},
        {1, "40 bits 0000004A 00000002", "40 bits 00000052 80000000"},
        {31, "40 bits 00000000 80000000", "40 bits 00000000 0000014A"},
        {32, "40 bits 00000001 00000000", "40 bits 00000000 000000A5"},
        {33, "40 bits 00000002 00000000", "40 bits 00000000 00000052"},
        {39, "40 bits 00000080 00000000", "40 bits 00000000 00000001"},
        {40, "40 bits 00000000 00000000", "40 bits 00000000 00000000"},
    };
    const U v = from_words(40, {1, 0xA5});
    for (const auto& row : rows) {
        SCOPED_TRACE(row.count);
        EXPECT_EQ(printed(U(v) <<= row.count), row.left);
        EXPECT_EQ(printed(U(v) >>= row.count), row.right);
        EXPECT_EQ(printed(U(v, static_cast<int>(row.count), false)), row.right);
    }
}

TEST(TwoWords, MayBeDeletedBeforeTheirTime) {
    for (const unsigned width : {33U, 40U, 64U}) {
        U v = full(width);
        cache_text(v);
        v.DeleteData();
        v.DeleteData();
        EXPECT_EQ(v.bitwidth(), width);
        S s(-1, width);
        s.DeleteData();
        EXPECT_EQ(s.bitwidth(), width);
    }
}

// An unsigned division asks for the width before it asks for zero, a signed one the other way round.
TEST(TwoWords, AreTooWideForDivisionRequired) {
    for (const unsigned width : {33U, 40U, 64U}) {
        EXPECT_THROW(U(5, width) / U(1, 8), char*);
        EXPECT_THROW(U(5, 8) % U(1, width), char*);
        EXPECT_THROW(U(5, 8) / U(0, width), char*);
        EXPECT_THROW(S(5, width) / S(1, 8), const char*);
        EXPECT_EQ(printed(S(5, 8) / S(0, width)), "8 bits 00000000 x 000000FF flags X");
    }
}

}  // namespace
