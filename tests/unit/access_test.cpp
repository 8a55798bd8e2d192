// Tests of bit and word access, X marks and whole-value flags, and of what each access does to the cached text.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "kval.h"
#include "unit_support.h"

namespace {

const char* const kBitMessage = "KVAL_UINTEGER::bit() called with illegal bit_position";
const char* const kSetBitMessage = "KVAL_UINTEGER::set_bit() called with illegal bit_position";

/// The message that `call` throws, "nothing thrown" when it returns.
template <class Call>
std::string thrown_by(Call call) {
    try {
        call();
    } catch (const char* message) {
        return message;
    }
    return "nothing thrown";
}

/// A value of which the words above were cut off, and were all ones.
KVAL_UINTEGER shrunk(unsigned from, unsigned to) {
    KVAL_UINTEGER v = ~KVAL_UINTEGER(0, from);
    v.force_x().bitwidth(to);
    return v;
}
/// 96 bits in arrays that may be longer.
KVAL_UINTEGER shrunk_to_96_bits() { return shrunk(160, 96); }
/// 64 bits that were in arrays.
KVAL_UINTEGER shrunk_to_64_bits() { return shrunk(128, 64); }

// ---- reading ----

TEST(Bit, ReadsTheValueBit) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        unsigned pos;
        unsigned expected;
    } rows[] = {
        {"lowest", from_words(8, {0x81}), 0, 1},
        {"inside", from_words(8, {0x81}), 1, 0},
        {"highest", from_words(8, {0x81}), 7, 1},
        {"an X bit reads its value bit, 1", from_words(8, {0x08}, {0xFF}, true), 3, 1},
        {"an X bit reads its value bit, 0", from_words(8, {0x08}, {0xFF}, true), 4, 0},
        {"8 bits at 8: passes, and is 0 (required)", from_words(8, {0xFF}), 8, 0},
        {"8 bits at 8: the stored bit above the width", from_words(8, {0x100}), 8, 1},
        {"32 bits at 32: bit 0 of the only word, set (required)", from_words(32, {1}), 32, 1},
        {"32 bits at 32: bit 0 of the only word, clear (required)", from_words(32, {~1U}), 32, 0},
        {"wide, bit 31", from_words(33, {0x80000000, 0}), 31, 1},
        {"wide, bit 32", from_words(33, {0, 1}), 32, 1},
        {"33 bits at 33: passes, and is 0", from_words(33, {~0U, 1}), 33, 0},
        {"33 bits at 33: the stored bit above the width", from_words(33, {0, 2}), 33, 1},
        {"64 bits at 63", from_words(64, {0, 0x80000000}), 63, 1},
        {"64 bits at 64: outside the storage, 0", from_words(64, {~0U, ~0U}), 64, 0},
        {"64 bits at 64, cut from more: outside the value, 0", shrunk_to_64_bits(), 64, 0},
        {"96 bits at 96 in longer arrays: outside the value, 0", shrunk_to_96_bits(), 96, 0},
        {"65 bits at 64", from_words(65, {0, 0, 1}), 64, 1},
        {"65 bits at 65: passes, and is 0", from_words(65, {~0U, ~0U, 1}), 65, 0},
        {"one bit at 1: passes, and is 0", from_words(1, {1}), 1, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.value.bit(row.pos), row.expected) << row.name;
    }
}

TEST(Bit, ThrowsBeyondTheWidth) {
    for (const unsigned width : {1U, 8U, 32U, 33U, 64U, 65U}) {
        const KVAL_UINTEGER v(1, width);
        for (const unsigned pos : {width + 1, width + 31, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
            EXPECT_EQ(thrown_by([&] { v.bit(pos); }), kBitMessage) << width << " bits at " << pos;
        }
        EXPECT_EQ(thrown_by([&] { v.bit(width); }), "nothing thrown") << width;
    }
}

TEST(Read, LowWordZeroAndOne) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        unsigned uint;
        bool zero;
        bool one;
    } rows[] = {
        {"zero", from_words(8, {0}), 0, true, false},
        {"one", from_words(8, {1}), 1, false, true},
        {"two", from_words(8, {2}), 2, false, false},
        {"32 bits", from_words(32, {0x80000001}), 0x80000001, false, false},
        {"zero under X bits, marked X", from_words(8, {0}, {0xFF}, true), 0, true, false},
        {"one under X bits", from_words(8, {1}, {0xFF}), 1, false, true},
        {"zero with all flags", marked(from_words(8, {0}, {}, true), "ZLH"), 0, true, false},
        {"one with all flags", marked(from_words(40, {1}, {}, true), "ZLH"), 1, false, true},
        {"a bit above the width counts against zero", from_words(8, {0x100}), 0x100, false, false},
        {"a bit above the width counts against one", from_words(8, {0x101}), 0x101, false, false},
        {"wide zero", from_words(33, {0, 0}), 0, true, false},
        {"wide one", from_words(33, {1, 0}), 1, false, true},
        {"only the top word", from_words(33, {0, 1}), 0, false, false},
        {"one and a top word", from_words(33, {1, 1}), 1, false, false},
        {"only a middle word", from_words(65, {0, 4, 0}), 0, false, false},
        {"one and a middle word", from_words(65, {1, 4, 0}), 1, false, false},
        {"one and a third word", from_words(65, {1, 0, 1}), 1, false, false},
        {"wide zero under X bits", from_words(65, {0, 0, 0}, {~0U, ~0U, 1}, true), 0, true, false},
        {"wide, a bit above the width counts against zero", from_words(40, {0, 0x100}), 0, false, false},
        {"wide, a bit above the width counts against one", from_words(40, {1, 0x100}), 1, false, false},
        {"words that were cut off do not count", from_words(128, {1, 0, ~0U, ~0U}).bitwidth(64), 1, false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.value.uint(), row.uint);
        EXPECT_EQ(row.value.is_zero(), row.zero);
        EXPECT_EQ(row.value.is_one(), row.one);
    }
}

TEST(Words, ReadAt) {
    const KVAL_UINTEGER compact = from_words(8, {0x5A}, {0x18});
    const KVAL_UINTEGER wide = from_words(65, {1, 2, 0xF1}, {4, 5, 0xF6});
    const KVAL_UINTEGER cut = shrunk_to_64_bits();
    const KVAL_UINTEGER in_longer_arrays = shrunk_to_96_bits();
    const struct {
        const char* name;
        const KVAL_UINTEGER& value;
        int index;
        unsigned word;
        unsigned mask;
    } rows[] = {
        {"the only word", compact, 0, 0x5A, 0x18},
        {"a second word of a compact value is 0", compact, 1, 0, 0},
        {"compact at -1 is 0", compact, -1, 0, 0},
        {"compact at the highest index is 0", compact, INT_MAX, 0, 0},
        {"compact at the lowest index is 0", compact, INT_MIN, 0, 0},
        {"wide, word 0", wide, 0, 1, 4},
        {"wide, word 1", wide, 1, 2, 5},
        {"wide, the top word as it is stored", wide, 2, 0xF1, 0xF6},
        {"wide, beyond the top word is 0", wide, 3, 0, 0},
        {"wide at -1 is 0", wide, -1, 0, 0},
        {"wide at the highest index is 0", wide, INT_MAX, 0, 0},
        {"wide at the lowest index is 0", wide, INT_MIN, 0, 0},
        {"wide, beyond the top word where words were cut off is 0", cut, 2, 0, 0},
        {"wide, beyond the top word in longer arrays is 0", in_longer_arrays, 3, 0, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.value.get_uvalue_at(row.index), row.word) << row.name;
        EXPECT_EQ(row.value.get_xmask_at(row.index), row.mask) << row.name;
    }
}

TEST(IsX, OfABit) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int pos;
        bool expected;
    } rows[] = {
        {"marked", from_words(8, {0}, {0x08}), 3, true},
        {"not marked", from_words(8, {0xFF}, {0x08}), 2, false},
        {"flag X says nothing about a bit", from_words(8, {0}, {}, true), 3, false},
        {"compact: the position is taken modulo 32 in the only word (required)", from_words(8, {0}, {0x08}), 35, true},
        {"compact, at the width: as stored", from_words(8, {0}, {0x100}), 8, true},
        {"bit 31", from_words(32, {0}, {0x80000000}), 31, true},
        {"wide, bit 31", from_words(33, {0}, {0x80000000, 0}), 31, true},
        {"wide, bit 32", from_words(33, {0}, {0, 1}), 32, true},
        {"wide, the other word", from_words(64, {0}, {0, 1}), 0, false},
        {"wide, at the width: as stored", from_words(40, {0}, {0, 0x100}), 40, true},
        {"64 bits at 64: outside the storage", from_words(64, {0}, {~0U, ~0U}), 64, false},
        {"64 bits at 64, cut from more: outside the value", shrunk_to_64_bits(), 64, false},
        {"96 bits at 96 in longer arrays: outside the value", shrunk_to_96_bits(), 96, false},
        {"wide at -1: outside the storage", from_words(64, {0}, {~0U, ~0U}), -1, false},
        {"wide at the highest position: outside the storage", from_words(64, {0}, {~0U, ~0U}), INT_MAX, false},
        {"wide at the lowest position: outside the storage", from_words(64, {0}, {~0U, ~0U}), INT_MIN, false},
    };
    for (const auto& row : rows) {
        for (const int nibble : {0, 2, -1}) {
            EXPECT_EQ(row.value.is_x(row.pos, nibble), row.expected) << row.name << ", nibble " << nibble;
        }
    }
}

TEST(IsX, OfANibble) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int pos;
        bool expected;
    } rows[] = {
        {"its lowest bit", from_words(12, {0}, {0x010}), 1, true},
        {"its highest bit", from_words(12, {0}, {0x080}), 1, true},
        {"the bit below", from_words(12, {0}, {0x008}), 1, false},
        {"the bit above", from_words(12, {0}, {0x100}), 1, false},
        {"flag X says nothing about a nibble", from_words(12, {0}, {}, true), 1, false},
        {"10 bits: the top group is bits 8 and 9", from_words(10, {0}, {0x200}), 2, true},
        {"10 bits: the top group does not look at bit 7", from_words(10, {0}, {0x0FF}), 2, false},
        {"10 bits: the top group does not look above the width", from_words(10, {0}, {0xC00}), 2, false},
        {"10 bits: a group wholly above the width is not X", from_words(10, {0}, {0xFFFFFFFF}), 3, false},
        {"11 bits: three bits in the top group, not the fourth", from_words(11, {0}, {0x800}), 2, false},
        {"11 bits: the third bit of the top group", from_words(11, {0}, {0x400}), 2, true},
        {"12 bits: a whole top group", from_words(12, {0}, {0x800}), 2, true},
        {"one bit", from_words(1, {0}, {1}), 0, true},
        {"one bit, as stored above", from_words(1, {0}, {0xE}), 0, false},
        {"32 bits, the top group", from_words(32, {0}, {0x10000000}), 7, true},
        {"32 bits, a group above", from_words(32, {0}, {0xFFFFFFFF}), 8, false},
        {"33 bits, the group below the top one", from_words(33, {0}, {0x10000000, 0}), 7, true},
        {"33 bits: the top group is bit 32", from_words(33, {0}, {0, 1}), 8, true},
        {"33 bits: the top group does not look above the width", from_words(33, {0}, {~0U, 0xE}), 8, false},
        {"36 bits: a whole top group in word 1", from_words(36, {0}, {0, 8}), 8, true},
        {"64 bits, the top group", from_words(64, {0}, {0, 0x80000000}), 15, true},
        {"64 bits, a group above", from_words(64, {0}, {~0U, ~0U}), 16, false},
        {"64 bits, a group above, cut from more", shrunk_to_64_bits(), 16, false},
        {"96 bits, a group above in longer arrays", shrunk_to_96_bits(), 24, false},
        {"65 bits: the top group is bit 64", from_words(65, {0}, {0, 0, 1}), 16, true},
        {"wide, a negative group is outside the storage", from_words(64, {0}, {~0U, ~0U}), -1, false},
        {"wide, the lowest group is outside the storage", from_words(64, {0}, {~0U, ~0U}), INT_MIN, false},
        {"a group whose bits begin at 2^32 is above the width", from_words(8, {0}, {0xFF}), 0x40000000, false},
        {"wide, a group whose bits begin at 2^32 is above the width", from_words(64, {0}, {~0U, ~0U}), 0x40000000,
         false},
        {"a group whose bits begin at 2^31 is above the width", from_words(64, {0}, {~0U, ~0U}), 0x20000000, false},
        {"the highest group", from_words(64, {0}, {~0U, ~0U}), INT_MAX, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.value.is_x(row.pos, 1), row.expected) << row.name;
    }
}

// ---- writing ----

TEST(SetBit, StoresABitAndMakesItKnown) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int pos;
        unsigned bits;
        const char* expected;
    } rows[] = {
        {"sets", from_words(8, {0x00}), 3, 1, "8 bits 00000008"},
        {"clears", from_words(8, {0xFF}), 3, 0, "8 bits 000000F7"},
        {"3 sets two bits (required)", from_words(8, {0x00}), 3, 3, "8 bits 00000018"},
        {"2 clears the bit and sets the next (required)", from_words(8, {0xFF}), 3, 2, "8 bits 000000F7"},
        {"2 sets the next bit only", from_words(8, {0x08}), 3, 2, "8 bits 00000010"},
        {"more than one bit reaches above the width (required)", from_words(8, {0x00}), 7, 3, "8 bits 00000180"},
        {"only the mark of the one bit goes", from_words(8, {0x00}, {0x18}, true), 3, 3,
         "8 bits 00000018 x 00000010 flags X"},
        {"the last X mark takes flag X along", from_words(8, {0x00}, {0x08}, true), 3, 1, "8 bits 00000008"},
        {"the last X mark takes flag X along when cleared too", from_words(8, {0xFF}, {0x08}, true), 3, 0,
         "8 bits 000000F7"},
        {"flag X without any mark goes", from_words(8, {0x00}, {}, true), 3, 1, "8 bits 00000008"},
        {"another mark keeps flag X", from_words(8, {0x00}, {0x28}, true), 3, 1, "8 bits 00000008 x 00000020 flags X"},
        {"a mark above the width keeps flag X", from_words(8, {0x00}, {0x108}, true), 3, 1,
         "8 bits 00000008 x 00000100 flags X"},
        {"marks without flag X do not set it", from_words(8, {0x00}, {0x28}), 3, 1, "8 bits 00000008 x 00000020"},
        {"Z, WL and WH stay", marked(from_words(8, {0x00}, {0x08}, true), "ZLH"), 3, 1, "8 bits 00000008 flags ZLH"},
        {"8 bits at 8: sets bit 8 of the only word (required)", from_words(8, {0x01}), 8, 1, "8 bits 00000101"},
        {"8 bits at 8: clears bit 8 of the only word", from_words(8, {0x101}, {0x100}, true), 8, 0, "8 bits 00000001"},
        {"32 bits at 31", from_words(32, {0}), 31, 1, "32 bits 80000000"},
        {"32 bits at 32: bit 0, modulo 32 (required)", from_words(32, {0}, {1}, true), 32, 1, "32 bits 00000001"},
        {"compact at -1: bit 31, modulo 32 (required)", from_words(32, {0}), -1, 1, "32 bits 80000000"},
        {"compact at -32: bit 0, modulo 32 (required)", from_words(32, {0}), -32, 1, "32 bits 00000001"},
        {"wide, bit 31", from_words(33, {0, 0}), 31, 1, "33 bits 00000000 80000000"},
        {"wide, bit 32", from_words(33, {0, 0}), 32, 1, "33 bits 00000001 00000000"},
        {"wide, clears", from_words(33, {~0U, 1}), 32, 0, "33 bits 00000000 FFFFFFFF"},
        {"wide: 3 at bit 31 does not reach the next word (required)", from_words(40, {0, 0}), 31, 3,
         "40 bits 00000000 80000000"},
        {"33 bits at 33: sets the stored bit above the width", from_words(33, {0, 0}), 33, 1,
         "33 bits 00000002 00000000"},
        {"65 bits at 64", from_words(65, {0, 0, 0}), 64, 1, "65 bits 00000001 00000000 00000000"},
        {"wide, the last mark of the word, and of the value", from_words(64, {0, 0}, {8, 0}, true), 3, 1,
         "64 bits 00000000 00000008"},
        {"wide, the last mark of the word: flag X goes although word 1 is marked (required)",
         from_words(64, {0, 0}, {8, 0x100}, true), 3, 1, "64 bits 00000000 00000008 x 00000100 00000000"},
        {"wide, the last mark of the upper word: flag X goes although word 0 is marked (required)",
         from_words(64, {0, 0}, {8, 0x100}, true), 40, 1, "64 bits 00000100 00000000 x 00000000 00000008"},
        {"wide, a word that never was marked: flag X goes (required)", from_words(64, {0, 0}, {0, 0x100}, true), 3, 1,
         "64 bits 00000000 00000008 x 00000100 00000000"},
        {"wide, another mark in the word keeps flag X", from_words(64, {0, 0}, {0x28, 0x100}, true), 3, 1,
         "64 bits 00000000 00000008 x 00000100 00000020 flags X"},
        {"wide, marks without flag X do not set it", from_words(64, {0, 0}, {0x28, 0x100}), 3, 1,
         "64 bits 00000000 00000008 x 00000100 00000020"},
        {"wide, Z, WL and WH stay", marked(from_words(64, {0, 0}, {8, 0}, true), "ZLH"), 3, 1,
         "64 bits 00000000 00000008 flags ZLH"},
        {"64 bits at 64: outside the storage, nothing", from_words(64, {0, 0}, {8, 8}, true), 64, 1,
         "64 bits 00000000 00000000 x 00000008 00000008 flags X"},
        {"64 bits at 64: flag X without marks stays too", from_words(64, {0, 0}, {0, 0}, true), 64, 1,
         "64 bits 00000000 00000000 flags X"},
        {"wide at -1: outside the storage, nothing", from_words(40, {0, 0}, {8, 8}, true), -1, 1,
         "40 bits 00000000 00000000 x 00000008 00000008 flags X"},
        {"wide at the lowest position: nothing", from_words(40, {0, 0}, {0, 0}, true), INT_MIN, 1,
         "40 bits 00000000 00000000 flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.set_bit(row.pos, row.bits), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(SetBit, TheNextTrimmingClearsWhatItSetAboveTheWidth) {
    KVAL_UINTEGER v(1, 8);
    v.set_bit(8, 1).EnforceWidth();
    EXPECT_EQ(printed(v), "8 bits 00000001");
}

TEST(SetBit, XMarksOfOtherWordsStayWhenFlagXGoes) {
    KVAL_UINTEGER v(0, 64);
    v.set_x(3).set_x(40);
    v.set_bit(3, 1);
    EXPECT_FALSE(v.is_x());
    EXPECT_FALSE(v.is_x(3, 0));
    EXPECT_TRUE(v.is_x(40, 0));
}

TEST(SetBit, OutsideTheValueWritesNothingIntoLongerArrays) {
    for (const unsigned width : {64U, 96U}) {
        KVAL_UINTEGER v = shrunk(width + 64, width);
        v.set_bit(static_cast<int>(width), 1).bitwidth(width + 1);
        EXPECT_EQ(v.bit(width), 0U);
        EXPECT_FALSE(v.is_x(static_cast<int>(width), 0));
    }
}

TEST(SetBit, ThrowsBeyondTheWidthAndChangesNothing) {
    for (const unsigned width : {1U, 8U, 32U, 33U, 64U, 65U}) {
        for (const int pos : {static_cast<int>(width) + 1, static_cast<int>(width) + 32, INT_MAX}) {
            SCOPED_TRACE(std::to_string(width) + " bits at " + std::to_string(pos));
            KVAL_UINTEGER v = marked(from_words(width, {1}, {1}, true), "Z");
            const std::string before = printed(v);
            cache_text(v);
            EXPECT_EQ(thrown_by([&] { v.set_bit(pos, 1); }), kSetBitMessage);
            EXPECT_EQ(printed(v), before);
            EXPECT_TRUE(keeps_text(v));
        }
    }
}

TEST(Words, RawStoresLeaveEverythingElseAsItWas) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int index;
        const char* value_stored;
        const char* mask_stored;
    } rows[] = {
        {"compact", from_words(8, {0x12}, {0x34}), 0, "8 bits 00000007 x 00000034", "8 bits 00000012 x 00000007"},
        {"compact at 1: the only word all the same (required)", from_words(8, {0x12}, {0x34}), 1,
         "8 bits 00000007 x 00000034", "8 bits 00000012 x 00000007"},
        {"compact at -1: the only word all the same (required)", from_words(8, {0x12}, {0x34}), -1,
         "8 bits 00000007 x 00000034", "8 bits 00000012 x 00000007"},
        {"compact at the highest index: the only word all the same (required)", from_words(32, {0x12}, {0x34}), INT_MAX,
         "32 bits 00000007 x 00000034", "32 bits 00000012 x 00000007"},
        {"not trimmed (required)", from_words(2, {1}, {2}), 0, "2 bits 00000007 x 00000002",
         "2 bits 00000001 x 00000007"},
        {"flags stay: known", from_words(8, {0x12}, {0}), 0, "8 bits 00000007", "8 bits 00000012 x 00000007"},
        {"flags stay: X", marked(from_words(8, {0x12}, {1}, true), "ZLH"), 0, "8 bits 00000007 x 00000001 flags XZLH",
         "8 bits 00000012 x 00000007 flags XZLH"},
        {"wide, word 0", from_words(40, {1, 2}, {3, 4}), 0, "40 bits 00000002 00000007 x 00000004 00000003",
         "40 bits 00000002 00000001 x 00000004 00000007"},
        {"wide, word 1", from_words(40, {1, 2}, {3, 4}), 1, "40 bits 00000007 00000001 x 00000004 00000003",
         "40 bits 00000002 00000001 x 00000007 00000003"},
        {"wide, not trimmed (required)", from_words(33, {1, 0}, {3, 1}, true), 1,
         "33 bits 00000007 00000001 x 00000001 00000003 flags X",
         "33 bits 00000000 00000001 x 00000007 00000003 flags X"},
        {"wide at 2: ignored", from_words(40, {1, 2}, {3, 4}), 2, "40 bits 00000002 00000001 x 00000004 00000003",
         "40 bits 00000002 00000001 x 00000004 00000003"},
        {"wide at -1: ignored", from_words(40, {1, 2}, {3, 4}), -1, "40 bits 00000002 00000001 x 00000004 00000003",
         "40 bits 00000002 00000001 x 00000004 00000003"},
        {"wide at the lowest index: ignored", from_words(65, {1, 2, 0}, {3, 4, 0}), INT_MIN,
         "65 bits 00000000 00000002 00000001 x 00000000 00000004 00000003",
         "65 bits 00000000 00000002 00000001 x 00000000 00000004 00000003"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER value_side(row.value);
        cache_text(value_side);
        EXPECT_EQ(&value_side.set_uvalue_at(row.index, 7), &value_side);
        EXPECT_EQ(printed(value_side), row.value_stored);
        EXPECT_TRUE(keeps_text(value_side));

        KVAL_UINTEGER mask_side(row.value);
        cache_text(mask_side);
        EXPECT_EQ(&mask_side.set_xmask_at(row.index, 7), &mask_side);
        EXPECT_EQ(printed(mask_side), row.mask_stored);
        EXPECT_TRUE(keeps_text(mask_side));
    }
}

TEST(Words, RawStoresBeyondTheTopWordAreIgnoredInLongerArrays) {
    KVAL_UINTEGER longer = shrunk_to_96_bits();
    longer.set_uvalue_at(3, 7).set_xmask_at(3, 7).bitwidth(97);
    EXPECT_EQ(printed(longer),
              "97 bits 00000000 FFFFFFFF FFFFFFFF FFFFFFFF x 00000000 FFFFFFFF FFFFFFFF FFFFFFFF flags X");
    KVAL_UINTEGER v = shrunk_to_64_bits();
    v.set_uvalue_at(2, 7).set_xmask_at(2, 7).bitwidth(96);
    EXPECT_EQ(printed(v), "96 bits 00000000 FFFFFFFF FFFFFFFF x 00000000 FFFFFFFF FFFFFFFF flags X");
}

TEST(Words, AKeptTextIsTheOldOneUntilItIsDropped) {
    KVAL_UINTEGER v(0, 1);
    v.set_value_from_hex_string("ab");
    v.set_uvalue_at(0, 0x1CD);
    EXPECT_STREQ(v.as_hex_string(), "ab");
    v.EnforceWidth();
    EXPECT_STREQ(v.as_hex_string(), "ab");
    v.DeleteString();
    EXPECT_STREQ(v.as_hex_string(), "CD");
}

TEST(SetX, MarksABitInsideTheWidthAndNothingOutside) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int pos;
        const char* expected;
        bool keeps_text;
    } rows[] = {
        {"the value bit stays", from_words(8, {0xFF}), 3, "8 bits 000000FF x 00000008 flags X", false},
        {"beside other marks", from_words(8, {0x00}, {0x80}), 0, "8 bits 00000000 x 00000081 flags X", false},
        {"marked already", from_words(8, {0x00}, {0x01}, true), 0, "8 bits 00000000 x 00000001 flags X", false},
        {"other flags stay", marked(from_words(8, {0x00}), "ZLH"), 7, "8 bits 00000000 x 00000080 flags XZLH", false},
        {"at the width: nothing, not even the text", from_words(8, {0x00}), 8, "8 bits 00000000", true},
        {"at -1: nothing, not even the text", from_words(8, {0x00}), -1, "8 bits 00000000", true},
        {"at the highest position: nothing", from_words(8, {0x00}), INT_MAX, "8 bits 00000000", true},
        {"at the lowest position: nothing", from_words(8, {0x00}), INT_MIN, "8 bits 00000000", true},
        {"32 bits at 31", from_words(32, {0}), 31, "32 bits 00000000 x 80000000 flags X", false},
        {"32 bits at 32: nothing", from_words(32, {0}), 32, "32 bits 00000000", true},
        {"33 bits at 31", from_words(33, {0, 0}), 31, "33 bits 00000000 00000000 x 00000000 80000000 flags X", false},
        {"33 bits at 32", from_words(33, {0, 1}), 32, "33 bits 00000001 00000000 x 00000001 00000000 flags X", false},
        {"33 bits at 33: nothing", from_words(33, {0, 0}), 33, "33 bits 00000000 00000000", true},
        {"64 bits at 63", from_words(64, {0, 0}), 63, "64 bits 00000000 00000000 x 80000000 00000000 flags X", false},
        {"64 bits at 64: nothing", from_words(64, {0, 0}), 64, "64 bits 00000000 00000000", true},
        {"wide at -1: nothing", from_words(64, {0, 0}), -1, "64 bits 00000000 00000000", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.set_x(row.pos), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_EQ(keeps_text(v), row.keeps_text);
    }
}

TEST(ForceX, MarksEveryBitAndKeepsTheValueUnderneath) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        const char* expected;
    } rows[] = {
        {"one bit", from_words(1, {1}), "1 bits 00000001 x 00000001 flags X"},
        {"10 bits", from_words(10, {0x155}), "10 bits 00000155 x 000003FF flags X"},
        {"32 bits", from_words(32, {0x89ABCDEF}), "32 bits 89ABCDEF x FFFFFFFF flags X"},
        {"33 bits", from_words(33, {0x89ABCDEF, 1}), "33 bits 00000001 89ABCDEF x 00000001 FFFFFFFF flags X"},
        {"64 bits", from_words(64, {1, 2}), "64 bits 00000002 00000001 x FFFFFFFF FFFFFFFF flags X"},
        {"65 bits", from_words(65, {1, 2, 0}),
         "65 bits 00000000 00000002 00000001 x 00000001 FFFFFFFF FFFFFFFF flags X"},
        {"other flags stay", marked(from_words(8, {0}), "ZLH"), "8 bits 00000000 x 000000FF flags XZLH"},
        {"value bits above the width are trimmed", from_words(8, {0x1AB}), "8 bits 000000AB x 000000FF flags X"},
        {"value bits above the width are trimmed, wide", from_words(40, {5, 0x1AB}),
         "40 bits 000000AB 00000005 x 000000FF FFFFFFFF flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.force_x(), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(ForceX, ZeroIsStillJudgedByTheValueBits) {
    EXPECT_TRUE(KVAL_UINTEGER(0, 10).force_x().is_zero());
    EXPECT_FALSE(KVAL_UINTEGER(4, 10).force_x().is_zero());
    EXPECT_TRUE(KVAL_UINTEGER(1, 40).force_x().is_one());
}

TEST(Flags, EachForceSetsItsOwnFlagAndNothingElse) {
    for (const unsigned width : {8U, 40U}) {
        SCOPED_TRACE(width);
        const KVAL_UINTEGER original = from_words(width, {0x1AB}, {0x10F});
        const std::string before = printed(original);
        KVAL_UINTEGER v(original);

        cache_text(v);
        EXPECT_EQ(&v.force_z(), &v);
        EXPECT_EQ(printed(v), before + " flags Z");
        EXPECT_FALSE(keeps_text(v));

        cache_text(v);
        EXPECT_EQ(&v.force_wl(), &v);
        EXPECT_EQ(printed(v), before + " flags ZL");
        EXPECT_FALSE(keeps_text(v));

        cache_text(v);
        EXPECT_EQ(&v.force_wh(), &v);
        EXPECT_EQ(printed(v), before + " flags ZLH");
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(Flags, AFlagThatIsSetAlreadyStillDropsTheText) {
    KVAL_UINTEGER v = marked(KVAL_UINTEGER(1, 8), "Z");
    cache_text(v);
    v.force_z();
    EXPECT_FALSE(keeps_text(v));
}

TEST(Read, KeepsTheText) {
    const struct {
        const char* name;
        std::function<void(const KVAL_UINTEGER&)> read;
    } rows[] = {
        {"bit", [](const KVAL_UINTEGER& v) { v.bit(3); }},
        {"bit that throws", [](const KVAL_UINTEGER& v) { EXPECT_ANY_THROW(v.bit(v.bitwidth() + 1)); }},
        {"uint", [](const KVAL_UINTEGER& v) { v.uint(); }},
        {"is_zero, is_one", [](const KVAL_UINTEGER& v) { v.is_zero(), v.is_one(); }},
        {"words", [](const KVAL_UINTEGER& v) { v.get_uvalue_at(0), v.get_xmask_at(1); }},
        {"is_x of a bit and of a nibble", [](const KVAL_UINTEGER& v) { v.is_x(1, 0), v.is_x(1, 1); }},
        {"flags", [](const KVAL_UINTEGER& v) { v.is_x(), v.is_z(), v.is_wl(), v.is_wh(); }},
        {"sizes", [](const KVAL_UINTEGER& v) { v.bitwidth(), v.get_size(), v.get_top(), v.IsCompact(); }},
        {"get_hash", [](const KVAL_UINTEGER& v) { v.get_hash(32); }},
    };
    for (const auto& row : rows) {
        for (const unsigned width : {8U, 64U}) {
            SCOPED_TRACE(std::string(row.name) + ", " + std::to_string(width) + " bits");
            KVAL_UINTEGER v = marked(from_words(width, {0x5A}, {0x18}, true), "Z");
            const std::string before = printed(v);
            cache_text(v);
            row.read(v);
            EXPECT_EQ(printed(v), before);
            EXPECT_TRUE(keeps_text(v));
        }
    }
}

}  // namespace
