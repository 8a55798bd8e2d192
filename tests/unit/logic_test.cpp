// Tests of the four-state bitwise operators: & | ^ ~ and, in place, &= |=.
#include <gtest/gtest.h>

#include <string>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;

KVAL_UINTEGER& and_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l &= r; }
KVAL_UINTEGER& or_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l |= r; }
KVAL_UINTEGER bit_and(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l & r; }
KVAL_UINTEGER bit_or(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l | r; }
KVAL_UINTEGER bit_xor(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l ^ r; }

using Row = BinaryRow;

// ---- the truth tables ----

struct TruthRow {
    const char* name;
    char left;
    char right;
    char result;
};

// A value whose only bit that is not a plain 0 is `state` at `pos`; `under` is the value bit under an X.
KVAL_UINTEGER one_bit(unsigned width, unsigned pos, char state, bool under) {
    KVAL_UINTEGER v(0, width);
    const int word = static_cast<int>(pos / 32);
    const unsigned bit = 1U << pos % 32;
    v.set_uvalue_at(word, state == '1' || (state == 'X' && under) ? bit : 0);
    v.set_xmask_at(word, state == 'X' ? bit : 0);
    return v;
}

// A row at the first and last position of every form, with either value bit under every X; none is left under the
// result.
void check_truth(const TruthRow& row, KVAL_UINTEGER (*free)(const KVAL_UINTEGER&, const KVAL_UINTEGER&),
                 KVAL_UINTEGER& (*in_place)(KVAL_UINTEGER&, const KVAL_UINTEGER&)) {
    const struct {
        unsigned width;
        unsigned pos;
    } places[] = {{1, 0},   {8, 3},   {32, 0},  {32, 31}, {33, 31}, {33, 32},
                  {64, 32}, {64, 63}, {65, 63}, {65, 64}, {100, 99}};
    for (const auto& place : places) {
        for (const bool under_left : {false, true}) {
            for (const bool under_right : {false, true}) {
                SCOPED_TRACE(std::string(row.name) + ", bit " + std::to_string(place.pos));
                const std::string want = printed(one_bit(place.width, place.pos, row.result, false));
                const Row full = {row.name, one_bit(place.width, place.pos, row.left, under_left),
                                  one_bit(place.width, place.pos, row.right, under_right), want.c_str()};
                check_free(full, free);
                check_in_place(full, in_place);
            }
        }
    }
}

TEST(LogicAnd, TruthTable) {
    const TruthRow rows[] = {
        {"0 and 0 is 0", '0', '0', '0'},
        {"0 and 1 is 0", '0', '1', '0'},
        {"0 and X is 0", '0', 'X', '0'},
        {"1 and 0 is 0", '1', '0', '0'},
        {"1 and 1 is 1", '1', '1', '1'},
        {"1 and X is X", '1', 'X', 'X'},
        {"X and 0 is 0", 'X', '0', '0'},
        {"X and 1 is X", 'X', '1', 'X'},
        {"and of two unknown bits is a known zero (required)", 'X', 'X', '0'},
    };
    for (const TruthRow& row : rows) check_truth(row, bit_and, and_assign);
}

TEST(LogicOr, TruthTable) {
    const TruthRow rows[] = {
        {"0 or 0 is 0", '0', '0', '0'}, {"0 or 1 is 1", '0', '1', '1'}, {"0 or X is X", '0', 'X', 'X'},
        {"1 or 0 is 1", '1', '0', '1'}, {"1 or 1 is 1", '1', '1', '1'}, {"1 or X is 1", '1', 'X', '1'},
        {"X or 0 is X", 'X', '0', 'X'}, {"X or 1 is 1", 'X', '1', '1'}, {"X or X is X", 'X', 'X', 'X'},
    };
    for (const TruthRow& row : rows) check_truth(row, bit_or, or_assign);
}

// ---- & ----

TEST(LogicAnd, Free) {
    const Row rows[] = {
        {"8 bits", from_words(8, {0xCC}), from_words(8, {0xAA}), "8 bits 00000088"},
        {"3 and 5 bits: the wider width", from_words(3, {5}), from_words(5, {0x1F}), "5 bits 00000005"},
        {"5 and 3 bits: the wider width", from_words(5, {0x1F}), from_words(3, {5}), "5 bits 00000005"},
        {"32 bits", from_words(32, {0xF0F0FFFF}), from_words(32, {0xFF00F00F}), "32 bits F000F00F"},
        {"two wide values", from_words(64, {0xF0F0F0F0, 0x12345678}), from_words(64, {0xFF00FF00, 0xFFFF0000}),
         "64 bits 12340000 F000F000"},
        {"bits above the narrower within its top word are cleared", from_words(64, {kOnes, kOnes}),
         from_words(40, {0x0F0F0F0F, 0xAB}), "64 bits 000000AB 0F0F0F0F"},
        {"the same, narrower first", from_words(40, {0x0F0F0F0F, 0xAB}), from_words(64, {kOnes, kOnes}),
         "64 bits 000000AB 0F0F0F0F"},
        {"70 and 33 bits: word 1 of one bit", from_words(70, {0xA5A5A5A5, 0xFFFFFFFE, 0x3F}),
         from_words(33, {kOnes, 1}), "70 bits 0000003F 00000000 A5A5A5A5"},
        {"X bits of the left, right all ones, flag lost", from_words(40, {0x12345678, 0x5A}, {0x0000F0F0, 0xC3}, true),
         from_words(40, {kOnes, 0xFF}), "40 bits 00000018 12340608 x 000000C3 0000F0F0"},
        {"X bits of the right, left all ones, flag lost", from_words(40, {kOnes, 0xFF}),
         from_words(40, {0x12345678, 0x5A}, {0x0000F0F0, 0xC3}, true), "40 bits 00000018 12340608 x 000000C3 0000F0F0"},
        {"X bits against zeros", from_words(40, {0, 0}, {kOnes, 0xFF}, true), from_words(40, {0, 0}),
         "40 bits 00000000 00000000"},
    };
    for (const Row& row : rows) check_free(row, bit_and);
}

TEST(LogicAnd, FreeCopiesWordsBeyondTheShorterOperandRequired) {
    const KVAL_UINTEGER wide = from_words(70, {kOnes, 0x12345678, 0x2A}, {0, 0x00000F00, 0x15}, true);
    const Row rows[] = {
        {"70 and 16 bits", wide, from_words(16, {0xF00F}),
         "70 bits 0000002A 12345678 0000F00F x 00000015 00000F00 00000000"},
        {"16 and 70 bits", from_words(16, {0xF00F}), wide,
         "70 bits 0000002A 12345678 0000F00F x 00000015 00000F00 00000000"},
        {"70 and 64 bits", wide, from_words(64, {0, 0}),
         "70 bits 0000002A 00000000 00000000 x 00000015 00000000 00000000"},
        {"33 and 32 bits", from_words(33, {0xF0F0F0F0, 1}), from_words(32, {0xFF00FF00}), "33 bits 00000001 F000F000"},
        {"32 and 33 bits", from_words(32, {0xFF00FF00}), from_words(33, {0xF0F0F0F0, 1}), "33 bits 00000001 F000F000"},
        {"65 and 64 bits", from_words(65, {kOnes, kOnes, 1}), from_words(64, {5, 6}),
         "65 bits 00000001 00000006 00000005"},
        {"64 and 65 bits", from_words(64, {5, 6}), from_words(65, {kOnes, kOnes, 1}),
         "65 bits 00000001 00000006 00000005"},
    };
    for (const Row& row : rows) check_free(row, bit_and);
}

TEST(LogicAnd, InPlace) {
    const Row rows[] = {
        {"8 bits", from_words(8, {0xCC}), from_words(8, {0xAA}), "8 bits 00000088"},
        {"the left width stays", from_words(8, {0xFF}), from_words(16, {0xABCD}), "8 bits 000000CD"},
        {"compact left: only the low word of a wide right counts", from_words(16, {0xFFFF}),
         from_words(70, {0x1234ABCD, 0, 0}), "16 bits 0000ABCD"},
        {"two wide values", from_words(64, {0xF0F0F0F0, 0x12345678}), from_words(64, {0xFF00FF00, 0xFFFF0000}),
         "64 bits 12340000 F000F000"},
        {"wide left, wider right", from_words(33, {kOnes, 1}), from_words(70, {0x0F0F0F0F, 0xFFFFFFFE, 0x3F}),
         "33 bits 00000000 0F0F0F0F"},
        {"bits above the right width within its top word are cleared", from_words(96, {kOnes, kOnes, kOnes}),
         from_words(40, {kOnes, 0xFF}), "96 bits FFFFFFFF 000000FF FFFFFFFF"},
        {"X bits", from_words(40, {0x12345678, 0x5A}, {0x0000F0F0, 0xC3}, true), from_words(40, {kOnes, 0xFF}),
         "40 bits 00000018 12340608 x 000000C3 0000F0F0 flags X"},
        {"X bits of a wide right in a compact left", from_words(8, {0xFF}), from_words(40, {0, 0}, {0x12345678, 0xFF}),
         "8 bits 00000000 x 00000078"},
    };
    for (const Row& row : rows) check_in_place(row, and_assign);
}

TEST(LogicAnd, InPlaceKeepsWordsBeyondTheRightOperandRequired) {
    const Row rows[] = {
        {"96 by 16 bits", from_words(96, {kOnes, 0xAAAAAAAA, 0x55555555}, {0, 0, 0xF}), from_words(16, {0x00FF}),
         "96 bits 55555555 AAAAAAAA 000000FF x 0000000F 00000000 00000000"},
        {"96 by 64 bits", from_words(96, {kOnes, 0xAAAAAAAA, 0x55555555}), from_words(64, {0, 0}),
         "96 bits 55555555 00000000 00000000"},
        {"33 by 32 bits", from_words(33, {kOnes, 1}), from_words(32, {0}), "33 bits 00000001 00000000"},
    };
    for (const Row& row : rows) check_in_place(row, and_assign);
}

TEST(LogicAnd, WithASeparateCopyOfAllXIsKnownZeroRequired) {
    KVAL_UINTEGER compact(0xA5, 8), wide(0xA5, 40);
    compact.force_x();
    wide.force_x();
    check_in_place({"8 bits; the flag stays", compact, compact, "8 bits 00000000 flags X"}, and_assign);
    check_in_place({"40 bits; the flag stays", wide, wide, "40 bits 00000000 00000000 flags X"}, and_assign);
    check_free({"8 bits, free; no flag", compact, compact, "8 bits 00000000"}, bit_and);
    check_free({"40 bits, free; no flag", wide, wide, "40 bits 00000000 00000000"}, bit_and);
}

// ---- | ----

TEST(LogicOr, Free) {
    const Row rows[] = {
        {"8 bits", from_words(8, {0xCC}), from_words(8, {0xAA}), "8 bits 000000EE"},
        {"3 and 5 bits: the wider width", from_words(3, {5}), from_words(5, {0x12}), "5 bits 00000017"},
        {"5 and 3 bits: the wider width", from_words(5, {0x12}), from_words(3, {5}), "5 bits 00000017"},
        {"32 bits stay compact", from_words(32, {0xF0F00000}), from_words(32, {0x00000F0F}), "32 bits F0F00F0F"},
        {"two wide values", from_words(64, {0xF0F0F0F0, 0x12345678}), from_words(64, {0x0F000F00, 0xFFFF0000}),
         "64 bits FFFF5678 FFF0FFF0"},
        {"64 and 40 bits", from_words(64, {0, 0x12000000}), from_words(40, {0x0F0F0F0F, 0xAB}),
         "64 bits 120000AB 0F0F0F0F"},
        {"40 and 64 bits", from_words(40, {0x0F0F0F0F, 0xAB}), from_words(64, {0, 0x12000000}),
         "64 bits 120000AB 0F0F0F0F"},
        {"X bits of the left, right zero, flag lost", from_words(40, {0x12345678, 0x5A}, {0x0000F0F0, 0xC3}, true),
         from_words(40, {0, 0}), "40 bits 00000018 12340608 x 000000C3 0000F0F0"},
        {"X bits of the right, left zero, flag lost", from_words(40, {0, 0}),
         from_words(40, {0x12345678, 0x5A}, {0x0000F0F0, 0xC3}, true), "40 bits 00000018 12340608 x 000000C3 0000F0F0"},
        {"X bits against ones", from_words(40, {0, 0}, {kOnes, 0xFF}, true), from_words(40, {kOnes, 0xFF}),
         "40 bits 000000FF FFFFFFFF"},
    };
    for (const Row& row : rows) check_free(row, bit_or);
}

TEST(LogicOr, FreeCopiesWordsBeyondTheShorterOperandRequired) {
    const KVAL_UINTEGER wide = from_words(70, {0x80000001, 0x12345678, 0x2A}, {0, 0x00000F00, 0x15}, true);
    const Row rows[] = {
        {"70 and 16 bits: the bits under copied X bits stay", wide, from_words(16, {0xF00F}),
         "70 bits 0000002A 12345678 8000F00F x 00000015 00000F00 00000000"},
        {"16 and 70 bits", from_words(16, {0xF00F}), wide,
         "70 bits 0000002A 12345678 8000F00F x 00000015 00000F00 00000000"},
        {"33 and 32 bits", from_words(33, {0x0F, 1}), from_words(32, {0xF0}), "33 bits 00000001 000000FF"},
        {"32 and 33 bits", from_words(32, {0xF0}), from_words(33, {0x0F, 1}), "33 bits 00000001 000000FF"},
        {"65 and 64 bits", from_words(65, {0, 0, 1}), from_words(64, {5, 6}), "65 bits 00000001 00000006 00000005"},
        {"64 and 65 bits", from_words(64, {5, 6}), from_words(65, {0, 0, 1}), "65 bits 00000001 00000006 00000005"},
    };
    for (const Row& row : rows) check_free(row, bit_or);
}

TEST(LogicOr, InPlace) {
    const Row rows[] = {
        {"8 bits", from_words(8, {0xCC}), from_words(8, {0xAA}), "8 bits 000000EE"},
        {"compact left, wide right: the low word, trimmed", from_words(8, {1}), from_words(40, {0xABCD12F0, 0xFF}),
         "8 bits 000000F1"},
        {"X bits of a wide right, trimmed", from_words(8, {0}), from_words(40, {0, 0}, {0xFF00000F, 0xFF}),
         "8 bits 00000000 x 0000000F"},
        {"wide left, compact right", from_words(40, {0x0F, 0x12}), from_words(8, {0xF0}), "40 bits 00000012 000000FF"},
        {"wide left, wider right, trimmed", from_words(33, {1, 0}), from_words(70, {2, kOnes, 0x3F}),
         "33 bits 00000001 00000003"},
        {"words beyond the right operand stay", from_words(96, {1, 0xAAAAAAAA, 0x55555555}, {0, 0xF0, 0xF}),
         from_words(16, {0xFF00}), "96 bits 55555555 AAAAAAAA 0000FF01 x 0000000F 000000F0 00000000"},
        {"the bits under X bits of a shared word become 0", from_words(64, {0xFF, 0xFF}, {0xF0, 0xF0}),
         from_words(64, {0, 0}), "64 bits 0000000F 0000000F x 000000F0 000000F0"},
    };
    for (const Row& row : rows) check_in_place(row, or_assign);
}

// ---- flags, same object and stray bits of & and | ----

TEST(LogicFlags, FreeAndOrLoseEveryFlagRequired) {
    for (const unsigned width : {8U, 40U}) {
        for (const unsigned other : {8U, 40U}) {
            const KVAL_UINTEGER left = marked(from_words(width, {0xF0}, {0}, true), "ZLH");
            const KVAL_UINTEGER right = marked(from_words(other, {0x3C}, {0}, true), "ZLH");
            EXPECT_EQ(flags(left & right), "") << width << " and " << other << " bits";
            EXPECT_EQ(flags(left | right), "") << width << " or " << other << " bits";
            EXPECT_EQ((left & right).uint(), 0x30u);
            EXPECT_EQ((left | right).uint(), 0xFCu);
        }
    }
}

TEST(LogicFlags, InPlaceUnitesEveryFlag) {
    const KVAL_UINTEGER plain(0, 8);
    const struct {
        const char* name;
        KVAL_UINTEGER left;
        KVAL_UINTEGER right;
        const char* want;
    } rows[] = {
        {"none", plain, plain, ""},
        {"X of the left", from_words(8, {0}, {0}, true), plain, "X"},
        {"X of the right, though it has no X bit", plain, from_words(8, {0}, {0}, true), "X"},
        {"Z of the left", marked(plain, "Z"), plain, "Z"},
        {"Z of the right", plain, marked(plain, "Z"), "Z"},
        {"weak low of the left", marked(plain, "L"), plain, "L"},
        {"weak low of the right", plain, marked(plain, "L"), "L"},
        {"weak high of the left", marked(plain, "H"), plain, "H"},
        {"weak high of the right", plain, marked(plain, "H"), "H"},
        {"one of each side", marked(plain, "Z"), marked(plain, "H"), "ZH"},
        {"all", marked(from_words(8, {0}, {0}, true), "L"), marked(plain, "ZH"), "XZLH"},
    };
    for (const auto& row : rows) {
        for (const unsigned left_width : {8U, 40U}) {
            for (const unsigned right_width : {8U, 40U}) {
                KVAL_UINTEGER left(row.left), right(row.right);
                left.bitwidth(left_width);
                right.bitwidth(right_width);
                EXPECT_EQ(flags(KVAL_UINTEGER(left) &= right), row.want) << row.name;
                EXPECT_EQ(flags(KVAL_UINTEGER(left) |= right), row.want) << row.name;
            }
        }
    }
}

// Neither X bits nor flags, stray bits nor the text change where both sides are one object.
TEST(LogicSameObject, InPlaceChangesNothingRequired) {
    const KVAL_UINTEGER values[] = {
        from_words(8, {0xA5}, {0xFF}, true),
        marked(from_words(4, {0xFF}, {0xF0}), "ZL"),
        from_words(40, {0x12345678, 0x9A}, {kOnes, 0xFF}, true),
        from_words(40, {0, kOnes}, {0, 0xFFFFFF00}),
    };
    for (const KVAL_UINTEGER& value : values) {
        for (const auto operation : {and_assign, or_assign}) {
            KVAL_UINTEGER v(value);
            cache_text(v);
            EXPECT_EQ(&operation(v, v), &v);
            EXPECT_EQ(printed(v), printed(value));
            EXPECT_TRUE(keeps_text(v));
        }
    }
}

TEST(LogicSameObject, FreeOperatorsTakeOneObjectAsBothOperands) {
    const KVAL_UINTEGER compact = from_words(8, {0x5A}, {0x0F});
    const KVAL_UINTEGER wide = from_words(40, {0x5A, 0x5A}, {0x0F, 0x0F});
    EXPECT_EQ(printed(compact & compact), "8 bits 00000050");
    EXPECT_EQ(printed(compact | compact), "8 bits 00000050 x 0000000F");
    EXPECT_EQ(printed(compact ^ compact), "8 bits 00000000");
    EXPECT_EQ(printed(wide & wide), "40 bits 00000050 00000050");
    EXPECT_EQ(printed(wide | wide), "40 bits 00000050 00000050 x 0000000F 0000000F");
    EXPECT_EQ(printed(wide ^ wide), "40 bits 00000000 00000000 x 0000000F 0000000F");
}

TEST(LogicSameObject, AResultMayReplaceAnOperand) {
    KVAL_UINTEGER a = from_words(40, {0xFF, 0x0F});
    a = a & from_words(40, {0x3C, 0xFC});
    EXPECT_EQ(printed(a), "40 bits 0000000C 0000003C");
    a = a | a;
    EXPECT_EQ(printed(a), "40 bits 0000000C 0000003C");
    a = a ^ from_words(70, {1, 1, 1});
    EXPECT_EQ(printed(a), "40 bits 0000000D 0000003D");
    a = ~a;
    EXPECT_EQ(printed(a), "40 bits 000000F2 FFFFFFC2");
}

// Operands with bits above the width: the free operators take the words as they stand and do not trim.
TEST(LogicStrayBits, FreeOperatorsKeepThemRequired) {
    check_free({"and, compact", from_words(4, {0xF5}), from_words(4, {0xFF}), "4 bits 000000F5"}, bit_and);
    check_free({"and, compact, wider right", from_words(4, {0xFF}), from_words(8, {0x3C}), "8 bits 0000003C"}, bit_and);
    check_free({"and, wide", from_words(40, {0, 0xFFF}), from_words(40, {0, 0xABC}), "40 bits 00000ABC 00000000"},
               bit_and);
    check_free({"or, compact", from_words(4, {0xF5}), from_words(4, {0x0A}), "4 bits 000000FF"}, bit_or);
    check_free({"or, copied top word", from_words(70, {0, 0, 0xFFF}, {0, 0, 0xF00}), from_words(8, {1}),
                "70 bits 00000FFF 00000000 00000001 x 00000F00 00000000 00000000"},
               bit_or);
    check_free({"xor, compact", from_words(4, {0xF5}), from_words(4, {0x03}), "4 bits 000000F6"}, bit_xor);
    check_free({"xor, wide", from_words(40, {0, 0xFFF}), from_words(40, {0, 0x0FF}), "40 bits 00000F00 00000000"},
               bit_xor);
}

TEST(LogicStrayBits, InPlaceTrimsBothPlanes) {
    check_in_place({"and, compact", from_words(4, {0xF5}), from_words(4, {0xFF}), "4 bits 00000005"}, and_assign);
    check_in_place({"and, wide, of the left and of the right", from_words(40, {0, 0xFFF}), from_words(40, {0, 0xABC}),
                    "40 bits 000000BC 00000000"},
                   and_assign);
    check_in_place({"and, wide, of a word that is kept", from_words(40, {3, 0xFFF}, {0, 0xF01}), from_words(8, {1}),
                    "40 bits 000000FF 00000001 x 00000001 00000000"},
                   and_assign);
    check_in_place({"or, compact", from_words(4, {0xF1}, {0xF2}), from_words(4, {0x24}), "4 bits 00000005 x 00000002"},
                   or_assign);
    check_in_place({"or, wide", from_words(40, {0, 0xF01}), from_words(40, {0, 0}, {0, 0xF02}),
                    "40 bits 00000001 00000000 x 00000002 00000000"},
                   or_assign);
}

// ---- ^ ----

TEST(LogicXor, KnownBits) {
    const Row rows[] = {
        {"8 bits", from_words(8, {0xCC}), from_words(8, {0xAA}), "8 bits 00000066"},
        {"1 bit", from_words(1, {1}), from_words(1, {1}), "1 bits 00000000"},
        {"3 and 5 bits: the wider width", from_words(3, {5}), from_words(5, {0x1F}), "5 bits 0000001A"},
        {"5 and 3 bits: the wider width", from_words(5, {0x1F}), from_words(3, {5}), "5 bits 0000001A"},
        {"32 bits", from_words(32, {0xF0F0F0F0}), from_words(32, {kOnes}), "32 bits 0F0F0F0F"},
        {"33 and 32 bits: word 1 is kept", from_words(33, {0xF0F0F0F0, 1}), from_words(32, {kOnes}),
         "33 bits 00000001 0F0F0F0F"},
        {"32 and 33 bits: word 1 is kept", from_words(32, {kOnes}), from_words(33, {0xF0F0F0F0, 1}),
         "33 bits 00000001 0F0F0F0F"},
        {"64 bits", from_words(64, {0x12345678, kOnes}), from_words(64, {kOnes, 0x12345678}),
         "64 bits EDCBA987 EDCBA987"},
        {"65 and 64 bits", from_words(65, {1, 2, 1}), from_words(64, {3, 3}), "65 bits 00000001 00000001 00000002"},
        {"70 and 16 bits: words 1 and 2 are kept", from_words(70, {kOnes, 0x12345678, 0x2A}), from_words(16, {0xF00F}),
         "70 bits 0000002A 12345678 FFFF0FF0"},
        {"16 and 70 bits", from_words(16, {0xF00F}), from_words(70, {kOnes, 0x12345678, 0x2A}),
         "70 bits 0000002A 12345678 FFFF0FF0"},
    };
    for (const Row& row : rows) check_free(row, bit_xor);
}

TEST(LogicXor, FlagsComeFromTheWiderOperandAndFromTheRightOneOfEqualWidthsRequired) {
    const Row rows[] = {
        {"wider left", marked(from_words(40, {1, 1}), "H"), marked(from_words(8, {2}), "Z"),
         "40 bits 00000001 00000003 flags H"},
        {"wider right", marked(from_words(8, {2}), "Z"), marked(from_words(40, {1, 1}), "H"),
         "40 bits 00000001 00000003 flags H"},
        {"wider left, both compact", marked(from_words(9, {1}), "ZL"), marked(from_words(8, {2}), "H"),
         "9 bits 00000003 flags ZL"},
        {"equal widths, compact", marked(from_words(8, {0x12}), "Z"), marked(from_words(8, {0x34}), "L"),
         "8 bits 00000026 flags L"},
        {"equal widths, wide", marked(from_words(64, {1, 2}), "Z"), marked(from_words(64, {4, 8}), "L"),
         "64 bits 0000000A 00000005 flags L"},
        {"equal widths, flags only on the left", marked(from_words(8, {1}), "ZLH"), from_words(8, {2}),
         "8 bits 00000003"},
    };
    for (const Row& row : rows) check_free(row, bit_xor);
}

TEST(LogicXor, AnXFlagMakesAllXRequired) {
    const Row rows[] = {
        {"of the left; the right one's bits stay underneath", from_words(8, {0xCC}, {0}, true), from_words(8, {0xAA}),
         "8 bits 000000AA x 000000FF flags X"},
        {"of the right", from_words(8, {0xCC}), from_words(8, {0xAA}, {1}, true), "8 bits 000000AA x 000000FF flags X"},
        {"of the narrower right", from_words(40, {1, 2}), from_words(8, {0xAA}, {0}, true),
         "40 bits 00000002 00000001 x 000000FF FFFFFFFF flags X"},
        {"of the narrower left", from_words(8, {0xAA}, {0}, true), from_words(40, {1, 2}),
         "40 bits 00000002 00000001 x 000000FF FFFFFFFF flags X"},
        {"of the wider", from_words(33, {1, 0}, {4, 0}, true), from_words(32, {7}),
         "33 bits 00000000 00000001 x 00000001 FFFFFFFF flags X"},
        {"of both, equal wide widths", from_words(64, {1, 2}, {1, 0}, true), from_words(64, {3, 4}, {1, 0}, true),
         "64 bits 00000004 00000003 x FFFFFFFF FFFFFFFF flags X"},
        {"other flags as ever, of the right", marked(from_words(8, {1}, {0}, true), "Z"),
         marked(from_words(8, {2}), "H"), "8 bits 00000002 x 000000FF flags XH"},
        {"stray bits underneath are trimmed", from_words(4, {1}, {0}, true), from_words(4, {0xF5}),
         "4 bits 00000005 x 0000000F flags X"},
    };
    for (const Row& row : rows) check_free(row, bit_xor);
}

TEST(LogicXor, CompactXMasksAreXoredRequired) {
    const Row rows[] = {
        {"equal widths", from_words(8, {0x00}, {0x0F}), from_words(8, {0xFF}, {0x3C}), "8 bits 000000FF x 00000033"},
        {"wider left", from_words(8, {0}, {0xFF}), from_words(4, {0}, {0xF}), "8 bits 00000000 x 000000F0"},
        {"wider right", from_words(4, {0}, {0xF}), from_words(32, {0}, {0x80000001}), "32 bits 00000000 x 8000000E"},
    };
    for (const Row& row : rows) check_free(row, bit_xor);
}

TEST(LogicXor, AWideResultTakesTheXMaskOfTheWiderOperandRequired) {
    const Row rows[] = {
        {"equal widths: of the right", from_words(40, {1, 1}, {0xF, 0}), from_words(40, {2, 2}, {0xF0, 1}),
         "40 bits 00000003 00000003 x 00000001 000000F0"},
        {"equal widths: not of the left", from_words(40, {1, 1}, {0xF, 3}), from_words(40, {2, 2}),
         "40 bits 00000003 00000003"},
        {"wider left", from_words(65, {1, 1, 1}, {0xF, 0, 1}), from_words(40, {2, 2}, {0xF0, 1}),
         "65 bits 00000001 00000003 00000003 x 00000001 00000000 0000000F"},
        {"wider right, compact left", from_words(32, {1}, {kOnes}), from_words(33, {2, 0}, {5, 0}),
         "33 bits 00000000 00000003 x 00000000 00000005"},
    };
    for (const Row& row : rows) check_free(row, bit_xor);
}

// ---- ~ ----

TEST(LogicNot, InvertsTheValueBitsOnly) {
    const struct {
        const char* name;
        KVAL_UINTEGER operand;
        const char* want;
    } rows[] = {
        {"0101 in 4 bits", from_words(4, {5}), "4 bits 0000000A"},
        {"one bit", from_words(1, {0}), "1 bits 00000001"},
        {"32 bits", from_words(32, {0x0F0F1234}), "32 bits F0F0EDCB"},
        {"33 zeros", from_words(33, {0, 0}), "33 bits 00000001 FFFFFFFF"},
        {"64 bits", from_words(64, {0x12345678, kOnes}), "64 bits 00000000 EDCBA987"},
        {"65 zeros", from_words(65, {0, 0, 0}), "65 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"X bits stay X, the bits under them are inverted", from_words(8, {0xA5}, {0x0F}, true),
         "8 bits 0000005A x 0000000F flags X"},
        {"X bits of a wide value", from_words(40, {0xFF, 0x81}, {1, 0x80}),
         "40 bits 0000007E FFFFFF00 x 00000080 00000001"},
        {"flags stay", marked(from_words(40, {0, 0}), "ZLH"), "40 bits 000000FF FFFFFFFF flags ZLH"},
        {"stray bits, compact", from_words(4, {0xF5}, {0xF1}), "4 bits 0000000A x 00000001"},
        {"stray bits, wide", from_words(40, {0, 0xF0F}, {0, 0xF01}), "40 bits 000000F0 FFFFFFFF x 00000001 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER operand(row.operand);
        cache_text(operand);
        KVAL_UINTEGER result = ~operand;
        EXPECT_EQ(printed(result), row.want);
        EXPECT_FALSE(keeps_text(result));
        overwrite(result);
        EXPECT_EQ(printed(operand), printed(row.operand));
        EXPECT_TRUE(keeps_text(operand));
    }
}

}  // namespace
