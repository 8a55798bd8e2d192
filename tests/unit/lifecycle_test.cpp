// Tests of construction, copying, assignment, resizing, the size queries and the maintenance operations.
#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>
#include <type_traits>

#include "kval.h"
#include "unit_support.h"

namespace {

constexpr unsigned kWidestLegal = 0x7FFFFFE0;  // 2^31 - 32; one more, and the rounding up to words overflows

static_assert(!std::is_default_constructible<KVAL_UINTEGER>::value, "a value has a width");
static_assert(!std::is_convertible<unsigned, KVAL_UINTEGER>::value, "a number alone has no width");
static_assert(std::is_nothrow_destructible<KVAL_UINTEGER>::value, "");
static_assert(std::is_nothrow_assignable<KVAL_UINTEGER&, unsigned>::value, "");

// ---- size queries ----

TEST(Size, WordsOfAWidth) {
    const struct {
        const char* name;
        int bits;
        int words;
    } rows[] = {
        {"no bits", 0, 0},
        {"one bit", 1, 1},
        {"31 bits", 31, 1},
        {"32 bits fill one word", 32, 1},
        {"33 bits begin the second", 33, 2},
        {"64 bits fill two words", 64, 2},
        {"65 bits begin the third", 65, 3},
        {"1024 bits", 1024, 32},
        {"negative: the sum with 31 decides", -1, 0},
        {"-31 is the last with a sum of 0", -31, 0},
        {"-32 rounds down, the shift being arithmetic", -32, -1},
        {"-63 rounds down", -63, -1},
        {"-64 rounds down", -64, -2},
        {"the widest that does not overflow", INT_MAX - 31, 67108863},
        {"one more wraps (required)", INT_MAX - 30, -67108864},
        {"the widest of all wraps (required)", INT_MAX, -67108864},
        {"the lowest of all", INT_MIN, -67108864},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(KVAL_UINTEGER::get_size(row.bits), row.words) << row.name;
    }
}

TEST(Size, CompactBelow33AsASignedNumber) {
    for (const int bits : {INT_MIN, -1, 0, 1, 31, 32}) {
        EXPECT_TRUE(KVAL_UINTEGER::IsCompact(bits)) << bits;
    }
    for (const int bits : {33, 34, 64, 65, INT_MAX}) {
        EXPECT_FALSE(KVAL_UINTEGER::IsCompact(bits)) << bits;
    }
}

TEST(Size, OfAValue) {
    const struct {
        unsigned width;
        int words;
        unsigned top;
        bool compact;
    } rows[] = {
        {1, 1, 1, true},   {31, 1, 31, true},  {32, 1, 0, true},   {33, 2, 1, false},
        {40, 2, 8, false}, {63, 2, 31, false}, {64, 2, 0, false},  {65, 3, 1, false},
        {96, 3, 0, false}, {97, 4, 1, false},  {100, 4, 4, false}, {1024, 32, 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        const KVAL_UINTEGER v(0, row.width);
        EXPECT_EQ(v.bitwidth(), row.width);
        EXPECT_EQ(v.get_size(), row.words);
        EXPECT_EQ(v.get_top(), row.top);
        EXPECT_EQ(v.IsCompact(), row.compact);
    }
}

// ---- construction ----

TEST(Construct, NumberInAWidth) {
    const struct {
        const char* name;
        unsigned value;
        unsigned width;
        const char* expected;
    } rows[] = {
        {"truncated to 4 bits", 0xFFFFFFFF, 4, "4 bits 0000000F"},
        {"width 0 becomes 1", 5, 0, "1 bits 00000001"},
        {"width 0 becomes 1, and the value is truncated to it", 6, 0, "1 bits 00000000"},
        {"width 0x80000000 is negative and becomes 1", 7, 0x80000000, "1 bits 00000001"},
        {"width -1 becomes 1", 2, 0xFFFFFFFF, "1 bits 00000000"},
        {"one bit", 3, 1, "1 bits 00000001"},
        {"31 bits", 0xFFFFFFFF, 31, "31 bits 7FFFFFFF"},
        {"32 bits", 0xFFFFFFFF, 32, "32 bits FFFFFFFF"},
        {"33 bits", 0xFFFFFFFF, 33, "33 bits 00000000 FFFFFFFF"},
        {"40 bits have two words", 7, 40, "40 bits 00000000 00000007"},
        {"64 bits", 0xFFFFFFFF, 64, "64 bits 00000000 FFFFFFFF"},
        {"65 bits", 0x80000001, 65, "65 bits 00000000 00000000 80000001"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(KVAL_UINTEGER(row.value, row.width)), row.expected);
    }
}

TEST(Construct, WidthsWhoseWordsOverflowThrowBadAlloc) {
    for (const unsigned width : {kWidestLegal + 1, kWidestLegal + 2, 0x7FFFFFFFU}) {
        EXPECT_THROW(KVAL_UINTEGER(1, width), std::bad_alloc) << width;
    }
}

TEST(Construct, CopyIsExactAndWithoutText) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
    } rows[] = {
        {"one bit", from_words(1, {1})},
        {"compact with X bits", from_words(8, {0xAB}, {0x0C}, true)},
        {"X bits without flag X", from_words(8, {0xAB}, {0x0C})},
        {"all four flags", marked(from_words(8, {0xAB}, {0x0C}, true), "ZLH")},
        {"flag Z alone", marked(from_words(32, {0xDEADBEEF}), "Z")},
        {"wide", from_words(33, {0x89ABCDEF, 1}, {0x80000000, 1}, true)},
        {"wide with flags", marked(from_words(64, {1, 0x80000000}), "LH")},
        {"three words", from_words(65, {1, 2, 1}, {4, 5, 0}, true)},
        {"bits above the width are copied too", from_words(4, {0xFF}, {0xF0})},
        {"bits above the width are copied too, wide", from_words(40, {0, 0xFFF}, {0, 0xF00})},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER original(row.value);
        EXPECT_EQ(printed(original), printed(row.value));
        cache_text(original);
        const KVAL_UINTEGER copy(original);
        EXPECT_EQ(printed(copy), printed(row.value));
        EXPECT_FALSE(keeps_text(copy));
        EXPECT_TRUE(keeps_text(original));
    }
}

TEST(Construct, CopiesShareNothing) {
    for (const unsigned width : {8U, 32U, 33U, 65U}) {
        SCOPED_TRACE(width);
        KVAL_UINTEGER original = from_words(width, {0x5A}, {0x11}, true);
        const std::string before = printed(original);
        KVAL_UINTEGER copy(original);
        copy.force_z();
        copy = 0x33U;
        EXPECT_EQ(printed(original), before);
        EXPECT_EQ(copy.uint(), 0x33U);
    }
}

// ---- shifted copy ----

TEST(ShiftedCopy, LeftWidensByTheCount) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int count;
        const char* expected;
    } rows[] = {
        {"8 bits by 4", from_words(8, {0x81}), 4, "12 bits 00000810"},
        {"X bits move along", from_words(8, {0x81}, {0x18}, true), 4, "12 bits 00000810 x 00000180 flags X"},
        {"flags are kept", marked(from_words(8, {0x81}, {}, true), "ZLH"), 4, "12 bits 00000810 flags XZLH"},
        {"by nothing", from_words(8, {0x81}, {1}), 0, "8 bits 00000081 x 00000001"},
        {"to 32 bits", from_words(8, {0x81}, {0xFF}), 24, "32 bits 81000000 x FF000000"},
        {"to 33 bits", from_words(8, {0x81}, {0xFF}), 25, "33 bits 00000001 02000000 x 00000001 FE000000"},
        {"32 bits by 1", from_words(32, {0x80000001}), 1, "33 bits 00000001 00000002"},
        {"32 bits by 31", from_words(32, {0x80000001}), 31, "63 bits 40000000 80000000"},
        {"32 bits by a whole word", from_words(32, {0x80000001}), 32, "64 bits 80000001 00000000"},
        {"32 bits by a word and a bit", from_words(32, {0x80000001}), 33, "65 bits 00000001 00000002 00000000"},
        {"wide by 4", from_words(40, {0x89ABCDEF, 0x12}), 4, "44 bits 00000128 9ABCDEF0"},
        {"wide X bits move along", marked(from_words(40, {0, 0}, {0xF0000000, 1}, true), "Z"), 4,
         "44 bits 00000000 00000000 x 0000001F 00000000 flags XZ"},
        {"wide by two words", from_words(40, {0x89ABCDEF, 0x12}), 64, "104 bits 00000012 89ABCDEF 00000000 00000000"},
        {"wide by three words and 4 bits", from_words(40, {0x89ABCDEF, 0x12}), 100,
         "140 bits 00000128 9ABCDEF0 00000000 00000000 00000000"},
        {"64 bits by 1", from_words(64, {0xFFFFFFFF, 0xFFFFFFFF}), 1, "65 bits 00000001 FFFFFFFF FFFFFFFE"},
        {"33 bits by nothing", from_words(33, {5, 1}), 0, "33 bits 00000001 00000005"},
        {"bits above the width move along untrimmed (required)", from_words(8, {0x181}, {0x100}), 4,
         "12 bits 00001810 x 00001000"},
        {"bits above the width move along untrimmed, into wide form (required)", from_words(8, {0x181}), 32,
         "40 bits 00000181 00000000"},
        {"bits above the width move along untrimmed, wide (required)", from_words(40, {0, 0x1FF}), 4,
         "44 bits 00001FF0 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(KVAL_UINTEGER(row.value, row.count, true)), row.expected);
    }
}

TEST(ShiftedCopy, RightKeepsTheWidth) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        int count;
        const char* expected;
    } rows[] = {
        {"8 bits by 4", from_words(8, {0x81}), 4, "8 bits 00000008"},
        {"X bits move along", from_words(8, {0x81}, {0x18}, true), 4, "8 bits 00000008 x 00000001 flags X"},
        {"flag X stays when the X bits are shifted out", from_words(8, {0x81}, {0x01}, true), 4,
         "8 bits 00000008 flags X"},
        {"flags are kept", marked(from_words(8, {0x81}), "ZLH"), 1, "8 bits 00000040 flags ZLH"},
        {"by nothing", from_words(8, {0x81}), 0, "8 bits 00000081"},
        {"compact by the width", from_words(8, {0x81}), 8, "8 bits 00000000"},
        {"compact by 31", from_words(32, {0x80000001}), 31, "32 bits 00000001"},
        {"compact 8 bits by 32: the count is taken modulo 32 (required)", from_words(8, {0x81}), 32, "8 bits 00000081"},
        {"compact 32 bits by 32: the count is taken modulo 32 (required)", from_words(32, {0x80000001}, {3}), 32,
         "32 bits 80000001 x 00000003"},
        {"compact by 36: as by 4 (required)", from_words(8, {0x81}), 36, "8 bits 00000008"},
        {"33 bits by 1", from_words(33, {0x80000001, 1}), 1, "33 bits 00000000 C0000000"},
        {"33 bits by 32", from_words(33, {0x80000001, 1}, {0, 1}), 32, "33 bits 00000000 00000001 x 00000000 00000001"},
        {"33 bits by 33", from_words(33, {0x80000001, 1}, {0, 1}), 33, "33 bits 00000000 00000000"},
        {"40 bits by 39", from_words(40, {0xFFFFFFFF, 0xFF}), 39, "40 bits 00000000 00000001"},
        {"40 bits by 40: all zero", from_words(40, {0xFFFFFFFF, 0xFF}, {1, 1}, true), 40,
         "40 bits 00000000 00000000 flags X"},
        {"40 bits by 41: all zero", from_words(40, {0xFFFFFFFF, 0xFF}), 41, "40 bits 00000000 00000000"},
        {"40 bits by more than the words hold: all zero", from_words(40, {0xFFFFFFFF, 0xFF}), INT_MAX,
         "40 bits 00000000 00000000"},
        {"40 bits by 40: bits above the width do not come in", from_words(40, {0, ~0U}, {0, ~0U}), 40,
         "40 bits 00000000 00000000"},
        {"40 bits by 39: bits above the width come in", from_words(40, {0, 0xF80}), 39, "40 bits 00000000 0000001F"},
        {"64 bits by 63", from_words(64, {0, 0x80000000}), 63, "64 bits 00000000 00000001"},
        {"64 bits by 32", from_words(64, {1, 0x89ABCDEF}), 32, "64 bits 00000000 89ABCDEF"},
        {"100 bits by a word and 4 bits", from_words(100, {0x11111111, 0x22222222, 0x33333333, 0x4}), 36,
         "100 bits 00000000 00000000 43333333 32222222"},
        {"bits above the width come in, and the rest is trimmed", from_words(8, {0x1F81}, {0x1F00}), 4,
         "8 bits 000000F8 x 000000F0"},
        {"bits above the width come in, and the rest is trimmed, wide", from_words(40, {0, 0xFFFF}), 4,
         "40 bits 000000FF F0000000"},
        {"by nothing, trimmed", from_words(8, {0x181}), 0, "8 bits 00000081"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(KVAL_UINTEGER(row.value, row.count, false)), row.expected);
    }
}

TEST(ShiftedCopy, HasNoTextAndLeavesTheSourceAlone) {
    for (const unsigned width : {8U, 40U}) {
        for (const bool left : {true, false}) {
            SCOPED_TRACE(std::to_string(width) + (left ? " left" : " right"));
            KVAL_UINTEGER source = from_words(width, {0x81}, {0x10}, true);
            const std::string before = printed(source);
            cache_text(source);
            const KVAL_UINTEGER shifted(source, 0, left);
            EXPECT_FALSE(keeps_text(shifted));
            EXPECT_EQ(printed(source), before);
            EXPECT_TRUE(keeps_text(source));
        }
    }
}

TEST(ShiftedCopy, LeftBeyondTheWidestThrowsBadAlloc) {
    EXPECT_THROW(KVAL_UINTEGER(KVAL_UINTEGER(1, 8), 0x7FFFFFE0 - 7, true), std::bad_alloc);
    EXPECT_THROW(KVAL_UINTEGER(KVAL_UINTEGER(1, 40), INT_MAX - 40, true), std::bad_alloc);
}

TEST(ShiftedCopy, LeftWithAWidthThatTurnsNegativeIsOneBit) {
    const int whole_words = 0x7FFFFFE0;
    EXPECT_EQ(printed(KVAL_UINTEGER(from_words(32, {0x81}, {0x83}), whole_words, true)), "1 bits 00000001 x 00000001");
    EXPECT_EQ(printed(KVAL_UINTEGER(from_words(40, {0x81, 0x7F}), whole_words, true)), "1 bits 00000001");
    EXPECT_EQ(printed(KVAL_UINTEGER(from_words(8, {0x81}), INT_MAX, true)), "1 bits 00000000");
    EXPECT_EQ(printed(KVAL_UINTEGER(from_words(65, {0x81, 0, 1}), INT_MAX, true)), "1 bits 00000000");
}

// ---- assignment ----

TEST(Assign, ValueTruncatesOrZeroExtendsIntoTheTargetsWidth) {
    const struct {
        const char* name;
        KVAL_UINTEGER target;
        KVAL_UINTEGER source;
        const char* expected;
    } rows[] = {
        {"equal widths, compact", from_words(8, {0xFF}, {0xFF}, true), from_words(8, {0x5A}), "8 bits 0000005A"},
        {"equal widths, wide", from_words(40, {1, 2}, {3, 4}, true), from_words(40, {0x89ABCDEF, 0x12}, {5, 6}),
         "40 bits 00000012 89ABCDEF x 00000006 00000005"},
        {"40 bits into 16", from_words(16, {0xFFFF}), from_words(40, {0x89ABCDEF, 0x12}, {0x80018001, 0xFF}, true),
         "16 bits 0000CDEF x 00008001 flags X"},
        {"40 bits into 32", from_words(32, {0}), from_words(40, {0x89ABCDEF, 0x12}), "32 bits 89ABCDEF"},
        {"33 bits into 32", from_words(32, {0}), from_words(33, {0x89ABCDEF, 1}), "32 bits 89ABCDEF"},
        {"16 bits into 40: word 1 is zero-filled", from_words(40, {1, 0xFF}, {0, 0xFF}, true), from_words(16, {0xCDEF}),
         "40 bits 00000000 0000CDEF"},
        {"32 bits into 33", from_words(33, {0, 1}, {0, 1}), from_words(32, {0xFFFFFFFF}, {0x80000000}, true),
         "33 bits 00000000 FFFFFFFF x 00000000 80000000 flags X"},
        {"16 bits into 8", from_words(8, {0}), from_words(16, {0xABCD}, {0x0F0F}, true),
         "8 bits 000000CD x 0000000F flags X"},
        {"8 bits into 16", from_words(16, {0xFFFF}, {0xFFFF}, true), from_words(8, {0xCD}), "16 bits 000000CD"},
        {"64 bits into 65", from_words(65, {0, 0, 1}, {0, 0, 1}), from_words(64, {1, 0x80000000}, {2, 0x40000000}),
         "65 bits 00000000 80000000 00000001 x 00000000 40000000 00000002"},
        {"65 bits into 64", from_words(64, {7, 7}), from_words(65, {1, 0x80000000, 1}), "64 bits 80000000 00000001"},
        {"100 bits into 40", from_words(40, {7, 7}), from_words(100, {1, 0xFFFFFFFF, 3, 4}, {0, 0xFFFFFFFF, 0, 0}),
         "40 bits 000000FF 00000001 x 000000FF 00000000"},
        {"one bit", from_words(1, {0}), from_words(64, {0xFFFFFFFF, 0xFFFFFFFF}), "1 bits 00000001"},
        {"the target's flags give way to the source's", marked(from_words(8, {1}, {}, true), "ZL"),
         marked(from_words(8, {2}), "H"), "8 bits 00000002 flags H"},
        {"a known source clears all flags", marked(from_words(8, {1}, {}, true), "ZLH"), from_words(8, {2}),
         "8 bits 00000002"},
        {"all flags come along, also where the X bits are cut off", from_words(8, {1}),
         marked(from_words(40, {2, 0}, {0, 1}, true), "ZLH"), "8 bits 00000002 flags XZLH"},
        {"X bits without flag X come along", from_words(8, {1}), from_words(8, {2}, {4}), "8 bits 00000002 x 00000004"},
        {"equal widths copy bits above the width (required)", from_words(8, {0}), from_words(8, {0x15A}, {0x100}),
         "8 bits 0000015A x 00000100"},
        {"equal widths copy bits above the width, wide (required)", from_words(40, {0, 0}), from_words(40, {0, 0x100}),
         "40 bits 00000100 00000000"},
        {"unequal widths are trimmed", from_words(8, {0}), from_words(4, {0x15A}, {0x100}), "8 bits 0000005A"},
        {"unequal widths are trimmed, wide", from_words(40, {0, 0}), from_words(36, {0, 0x15A}),
         "40 bits 0000005A 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER target(row.target);
        cache_text(target);
        KVAL_UINTEGER& result = (target = row.source);
        EXPECT_EQ(&result, &target);
        EXPECT_EQ(printed(target), row.expected);
        EXPECT_FALSE(keeps_text(target));
    }
}

TEST(Assign, TheSourceKeepsItsTextAndTheTargetHasNone) {
    KVAL_UINTEGER source(0, 1);
    source.set_value_from_hex_string("ab");
    KVAL_UINTEGER target(0xAB, 8);
    target = source;
    EXPECT_STREQ(target.as_hex_string(), "AB");
    EXPECT_STREQ(source.as_hex_string(), "ab");
}

TEST(Assign, ToItselfKeepsEvenTheText) {
    for (const unsigned width : {8U, 40U}) {
        SCOPED_TRACE(width);
        KVAL_UINTEGER v = marked(from_words(width, {0x1AB}, {0x1C0}, true), "Z");
        const std::string before = printed(v);
        cache_text(v);
        const KVAL_UINTEGER& itself = v;
        EXPECT_EQ(&(v = itself), &v);
        EXPECT_EQ(printed(v), before);
        EXPECT_TRUE(keeps_text(v));
    }
}

TEST(Assign, AnEqualValueStillDropsTheText) {
    for (const unsigned width : {8U, 40U}) {
        SCOPED_TRACE(width);
        KVAL_UINTEGER v(0x5A, width);
        const KVAL_UINTEGER same(v);
        cache_text(v);
        v = same;
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(Assign, NumberClearsXBitsFlagsAndText) {
    const struct {
        const char* name;
        unsigned width;
        unsigned number;
        const char* expected;
    } rows[] = {
        {"one bit", 1, 2, "1 bits 00000000"},
        {"truncated to 8 bits", 8, 0xFFFFFF5A, "8 bits 0000005A"},
        {"31 bits", 31, 0xFFFFFFFF, "31 bits 7FFFFFFF"},
        {"32 bits", 32, 0xFFFFFFFF, "32 bits FFFFFFFF"},
        {"33 bits: the upper word becomes 0", 33, 0xFFFFFFFF, "33 bits 00000000 FFFFFFFF"},
        {"64 bits: the upper word becomes 0", 64, 7, "64 bits 00000000 00000007"},
        {"65 bits: both upper words become 0", 65, 0, "65 bits 00000000 00000000 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v = marked(from_words(row.width, {~0U}, {}, true), "ZLH");
        for (int i = 0; i < v.get_size(); ++i) {
            v.set_uvalue_at(i, ~0U).set_xmask_at(i, ~0U);
        }
        cache_text(v);
        KVAL_UINTEGER& result = (v = row.number);
        EXPECT_EQ(&result, &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_FALSE(keeps_text(v));
    }
}

// ---- resizing ----

TEST(Resize, KeepsWhatBothWidthsHold) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        unsigned width;
        const char* expected;
    } rows[] = {
        {"8 bits to 40: into wide form", from_words(8, {0xAB}, {0x0F}, true), 40,
         "40 bits 00000000 000000AB x 00000000 0000000F flags X"},
        {"40 bits to 4: into compact form", from_words(40, {0xAB, 0xFF}, {0x1E, 1}, true), 4,
         "4 bits 0000000B x 0000000E flags X"},
        {"8 bits to 16", from_words(8, {0xAB}), 16, "16 bits 000000AB"},
        {"16 bits to 8", from_words(16, {0xCDAB}, {0x0180}), 8, "8 bits 000000AB x 00000080"},
        {"32 bits to 33", from_words(32, {0x80000001}, {1}), 33, "33 bits 00000000 80000001 x 00000000 00000001"},
        {"33 bits to 32", from_words(33, {0x80000001, 1}, {1, 1}), 32, "32 bits 80000001 x 00000001"},
        {"40 bits to 64: the same two words", from_words(40, {1, 0xFF}, {2, 0x80}), 64,
         "64 bits 000000FF 00000001 x 00000080 00000002"},
        {"40 bits to 65: three words", from_words(40, {1, 0xFF}, {2, 0x80}), 65,
         "65 bits 00000000 000000FF 00000001 x 00000000 00000080 00000002"},
        {"64 bits to 65", from_words(64, {1, ~0U}), 65, "65 bits 00000000 FFFFFFFF 00000001"},
        {"65 bits to 64", from_words(65, {1, ~0U, 1}, {0, 0, 1}, true), 64, "64 bits FFFFFFFF 00000001 flags X"},
        {"100 bits to 40: the lower two words, trimmed", from_words(100, {1, ~0U, 3, 4}, {~0U, ~0U, 5, 6}), 40,
         "40 bits 000000FF 00000001 x 000000FF FFFFFFFF"},
        {"to 0: one bit", from_words(8, {0xAB}), 0, "1 bits 00000001"},
        {"to a negative width: one bit", from_words(8, {0xAA}, {1}), 0x80000000, "1 bits 00000000 x 00000001"},
        {"wide to 0: one bit", from_words(65, {0xAB, 1, 1}), 0, "1 bits 00000001"},
        {"wide to a negative width: one bit", from_words(40, {0xAB, 1}), 0xFFFFFFFF, "1 bits 00000001"},
        {"flags stay", marked(from_words(8, {0xAB}, {0x80}, true), "ZLH"), 4, "4 bits 0000000B flags XZLH"},
        {"flags stay, wide", marked(from_words(40, {1, 0}, {}, true), "ZLH"), 100,
         "100 bits 00000000 00000000 00000000 00000001 flags XZLH"},
        {"bits above the old width and below the new one stay (required)", from_words(8, {0xF1AB}, {0x100}), 12,
         "12 bits 000001AB x 00000100"},
        {"bits above the old width stay, into wide form (required)", from_words(8, {0xF1AB}), 40,
         "40 bits 00000000 0000F1AB"},
        {"bits above the old width stay, the same words (required)", from_words(40, {0, 0xF1AB}), 44,
         "44 bits 000001AB 00000000"},
        {"bits above the old width stay, more words (required)", from_words(40, {0, 0xF1AB}), 65,
         "65 bits 00000000 0000F1AB 00000000"},
        {"the same width: nothing is trimmed", from_words(8, {0x1AB}), 8, "8 bits 000001AB"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        EXPECT_EQ(&v.bitwidth(row.width), &v);
        EXPECT_EQ(printed(v), row.expected);
    }
}

TEST(Resize, NothingComesBackThatWasCutOff) {
    const struct {
        const char* name;
        unsigned width;
        unsigned smaller;
        const char* expected;
    } rows[] = {
        {"8, 4, 8", 8, 4, "8 bits 0000000F x 0000000F flags X"},
        {"40, 4, 40", 40, 4, "40 bits 00000000 0000000F x 00000000 0000000F flags X"},
        {"64, 33, 64 in the same two words", 64, 33, "64 bits 00000001 FFFFFFFF x 00000001 FFFFFFFF flags X"},
        {"65, 64, 65: the third word was cut off", 65, 64,
         "65 bits 00000000 FFFFFFFF FFFFFFFF x 00000000 FFFFFFFF FFFFFFFF flags X"},
        {"100, 40, 100: two words were cut off", 100, 40,
         "100 bits 00000000 00000000 000000FF FFFFFFFF x 00000000 00000000 000000FF FFFFFFFF flags X"},
        {"100, 32, 100: by way of compact form", 100, 32,
         "100 bits 00000000 00000000 00000000 FFFFFFFF x 00000000 00000000 00000000 FFFFFFFF flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(0, row.width);
        v.force_x();
        for (int i = 0; i < v.get_size(); ++i) {
            v.set_uvalue_at(i, ~0U);
        }
        v.EnforceWidth();
        v.bitwidth(row.smaller).bitwidth(row.width);
        EXPECT_EQ(printed(v), row.expected);
    }
}

TEST(Resize, ByStepsThroughBothForms) {
    KVAL_UINTEGER v(0xAB, 8);
    EXPECT_EQ(printed(v.bitwidth(40)), "40 bits 00000000 000000AB");
    EXPECT_EQ(printed(v.bitwidth(4)), "4 bits 0000000B");
    EXPECT_EQ(printed(v.bitwidth(64)), "64 bits 00000000 0000000B");
    EXPECT_EQ(printed(v.bitwidth(65)), "65 bits 00000000 00000000 0000000B");
}

TEST(Resize, DropsTheTextUnlessTheWidthIsTheSame) {
    const struct {
        const char* name;
        unsigned from;
        unsigned to;
        bool keeps;
    } rows[] = {
        {"the same width", 8, 8, true},
        {"the same width, wide", 40, 40, true},
        {"wider", 8, 9, false},
        {"narrower", 8, 7, false},
        {"into wide form", 32, 33, false},
        {"into compact form", 33, 32, false},
        {"wider in the same words", 40, 64, false},
        {"wider by a word", 64, 65, false},
        {"narrower in the same words", 64, 40, false},
        {"narrower by words", 100, 40, false},
        {"one bit to one bit", 1, 1, true},
        {"one bit to 0, which becomes 1: the width asked for was another one (required)", 1, 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(1, row.from);
        cache_text(v);
        v.bitwidth(row.to);
        EXPECT_EQ(keeps_text(v), row.keeps);
    }
}

TEST(Resize, WidthsWhoseWordsOverflowThrowBadAllocAndChangeNothing) {
    for (const unsigned width : {8U, 32U, 33U, 64U, 100U}) {
        for (const unsigned too_wide : {kWidestLegal + 1, 0x7FFFFFFFU}) {
            SCOPED_TRACE(std::to_string(width) + " to " + std::to_string(too_wide));
            KVAL_UINTEGER v = marked(from_words(width, {0x5A}, {0x18}, true), "Z");
            const std::string before = printed(v);
            cache_text(v);
            EXPECT_THROW(v.bitwidth(too_wide), std::bad_alloc);
            EXPECT_EQ(printed(v), before);
            EXPECT_TRUE(keeps_text(v));
        }
    }
}

// ---- maintenance ----

TEST(Maintenance, EnforceWidthTrimsTheTopWordOfBothPlanes) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        const char* expected;
    } rows[] = {
        {"one bit", from_words(1, {~0U}, {~0U}), "1 bits 00000001 x 00000001"},
        {"10 bits", from_words(10, {~0U}, {~0U}), "10 bits 000003FF x 000003FF"},
        {"31 bits", from_words(31, {~0U}, {~0U}), "31 bits 7FFFFFFF x 7FFFFFFF"},
        {"32 bits: nothing to trim", from_words(32, {~0U}, {~0U}), "32 bits FFFFFFFF x FFFFFFFF"},
        {"33 bits", from_words(33, {~0U, ~0U}, {~0U, ~0U}), "33 bits 00000001 FFFFFFFF x 00000001 FFFFFFFF"},
        {"64 bits: nothing to trim", from_words(64, {~0U, ~0U}, {~0U, ~0U}),
         "64 bits FFFFFFFF FFFFFFFF x FFFFFFFF FFFFFFFF"},
        {"65 bits", from_words(65, {~0U, ~0U, ~0U}, {0, 0, ~0U}),
         "65 bits 00000001 FFFFFFFF FFFFFFFF x 00000001 00000000 00000000"},
        {"flags stay, flag X too where the X bits go", marked(from_words(8, {0}, {0x100}, true), "ZLH"),
         "8 bits 00000000 flags XZLH"},
        {"no flag X where X bits stay", from_words(8, {0}, {0x180}), "8 bits 00000000 x 00000080"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        cache_text(v);
        v.EnforceWidth();
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_TRUE(keeps_text(v));
    }
}

TEST(Maintenance, DeleteStringDropsTheTextAndNothingElse) {
    for (const unsigned width : {8U, 40U}) {
        SCOPED_TRACE(width);
        KVAL_UINTEGER v = marked(from_words(width, {0x1AB}, {0x10F}, true), "ZLH");
        const std::string before = printed(v);
        cache_text(v);
        v.DeleteString();
        v.DeleteString();
        EXPECT_EQ(printed(v), before);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(Maintenance, DeleteDataDoesNothingToACompactValue) {
    KVAL_UINTEGER v = from_words(32, {0x89ABCDEF}, {0x0F}, true);
    const std::string before = printed(v);
    cache_text(v);
    v.DeleteData();
    EXPECT_EQ(printed(v), before);
    EXPECT_TRUE(keeps_text(v));
}

TEST(Maintenance, DeleteDataOfAWideValueKeepsTheWidthAndMayBeRepeated) {
    for (const unsigned width : {33U, 100U}) {
        KVAL_UINTEGER v(7, width);
        v.DeleteData();
        v.DeleteData();
        EXPECT_EQ(v.bitwidth(), width);
    }
}

}  // namespace
