// Tests of moving: the moved-from state, move assignment into live and moved-from targets, swapping, and the standard
// algorithms and containers that move their elements.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "kval.h"
#include "unit_support.h"

namespace {

static_assert(std::is_nothrow_move_constructible<KVAL_UINTEGER>::value, "else a growing vector would copy");
static_assert(std::is_nothrow_move_assignable<KVAL_UINTEGER>::value, "");
static_assert(std::is_nothrow_swappable<KVAL_UINTEGER>::value, "");
static_assert(
    std::is_same<decltype(std::declval<KVAL_UINTEGER&>() = std::declval<KVAL_UINTEGER>()), KVAL_UINTEGER&>::value, "");

/// Values of both forms, on both sides of every word border, with and without X bits, flags and bits above the width.
std::vector<KVAL_UINTEGER> shapes() {
    std::vector<KVAL_UINTEGER> values;
    values.push_back(from_words(1, {1}));
    values.push_back(from_words(8, {0xAB}, {0x0C}, true));
    values.push_back(marked(from_words(8, {0x5A}), "ZLH"));
    values.push_back(from_words(8, {0x15A}, {0x300}));
    values.push_back(from_words(32, {0xDEADBEEF}, {0x80000000}));
    values.push_back(from_words(33, {0x89ABCDEF, 1}, {1, 1}, true));
    values.push_back(from_words(40, {0x89ABCDEF, 0x12}));
    values.push_back(marked(from_words(40, {1, 0x1FF}, {0, 0xF00}, true), "L"));
    values.push_back(from_words(64, {1, 0x80000000}, {~0U, ~0U}, true));
    values.push_back(from_words(65, {1, 2, 1}, {4, 0, 1}));
    values.push_back(marked(from_words(100, {1, 2, 3, 4}), "H"));
    return values;
}

/// Every value as printed(), in order.
std::vector<std::string> all_printed(const std::vector<KVAL_UINTEGER>& values) {
    std::vector<std::string> texts;
    std::transform(values.begin(), values.end(), std::back_inserter(texts), printed);
    return texts;
}

/// That `v` is as a moved-from value has to be: without width, bits, flags and text, and safe to read.
void expect_moved_from(const KVAL_UINTEGER& v) {
    EXPECT_EQ(v.bitwidth(), 0U);
    EXPECT_EQ(v.get_size(), 0);
    EXPECT_EQ(v.get_top(), 0U);
    EXPECT_TRUE(v.IsCompact());
    EXPECT_EQ(flags(v), "");
    EXPECT_EQ(v.uint(), 0U);
    EXPECT_TRUE(v.is_zero());
    EXPECT_FALSE(v.is_one());
    EXPECT_EQ(v.bit(0), 0U);
    EXPECT_ANY_THROW(v.bit(1));
    EXPECT_EQ(v.get_uvalue_at(0), 0U);
    EXPECT_EQ(v.get_xmask_at(0), 0U);
    EXPECT_FALSE(v.is_x(0, 0));
    EXPECT_FALSE(v.is_x(0, 1));
    EXPECT_EQ(v.get_hash(32), twang_uinthash(0));
    EXPECT_TRUE(v == 0U);
    EXPECT_TRUE(v == KVAL_UINTEGER(0, 8));
    EXPECT_TRUE(v == KVAL_UINTEGER(0, 40));
    EXPECT_TRUE(v < KVAL_UINTEGER(1, 40));
    EXPECT_STREQ(v.as_hex_string(), "");
    EXPECT_STREQ(v.as_bin_string(), "");
}

/// A value that has just been moved from.
KVAL_UINTEGER& move_out_of(KVAL_UINTEGER& v) {
    const KVAL_UINTEGER taken(std::move(v));
    return v;
}

// ---- move construction and the moved-from state ----

TEST(MoveConstruct, TakesEverythingButTheTextAndLeavesTheSourceMovedFrom) {
    for (const KVAL_UINTEGER& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        KVAL_UINTEGER source(shape);
        cache_text(source);
        const KVAL_UINTEGER target(std::move(source));
        EXPECT_EQ(printed(target), printed(shape));
        EXPECT_FALSE(keeps_text(target));
        expect_moved_from(source);
    }
}

TEST(MoveConstruct, FromAMovedFromValueGivesAnother) {
    KVAL_UINTEGER source(7, 40);
    KVAL_UINTEGER target(std::move(move_out_of(source)));
    expect_moved_from(source);
    expect_moved_from(target);
    target = 5U;
    EXPECT_EQ(printed(target), "32 bits 00000005");
}

TEST(MovedFrom, CopyReadsAsZero) {
    KVAL_UINTEGER source(7, 40);
    const KVAL_UINTEGER copy(move_out_of(source));
    EXPECT_TRUE(copy.is_zero());
    EXPECT_EQ(flags(copy), "");
}

TEST(MovedFrom, TakesTheWidthOfTheNextAssignment) {
    for (const KVAL_UINTEGER& shape : shapes()) {
        for (const unsigned former : {8U, 40U, 100U}) {
            SCOPED_TRACE(printed(shape) + " into what had " + std::to_string(former) + " bits");
            KVAL_UINTEGER copied_to(~0U, former);
            KVAL_UINTEGER& copied = (move_out_of(copied_to) = shape);
            EXPECT_EQ(&copied, &copied_to);
            EXPECT_EQ(printed(copied_to), printed(shape));

            KVAL_UINTEGER moved_to(~0U, former);
            KVAL_UINTEGER source(shape);
            KVAL_UINTEGER& moved = (move_out_of(moved_to) = std::move(source));
            EXPECT_EQ(&moved, &moved_to);
            EXPECT_EQ(printed(moved_to), printed(shape));
            expect_moved_from(source);
        }
    }
}

TEST(MovedFrom, ACopyAssignedToItOwnsItsWords) {
    const KVAL_UINTEGER source = from_words(64, {1, 2}, {3, 4}, true);
    KVAL_UINTEGER target(0, 8);
    move_out_of(target) = source;
    target = 9U;
    EXPECT_EQ(printed(source), "64 bits 00000002 00000001 x 00000004 00000003 flags X");
    EXPECT_EQ(printed(target), "64 bits 00000000 00000009");
}

TEST(MovedFrom, TakesTheWidthOnceOnly) {
    KVAL_UINTEGER v(0, 100);
    move_out_of(v) = KVAL_UINTEGER(7, 8);
    v = from_words(64, {0x1FF, 1});
    EXPECT_EQ(printed(v), "8 bits 000000FF");
}

TEST(MovedFrom, ANumberGivesIt32Bits) {
    for (const unsigned former : {1U, 32U, 33U, 100U}) {
        SCOPED_TRACE(former);
        KVAL_UINTEGER v = marked(from_words(former, {1}, {1}, true), "ZLH");
        KVAL_UINTEGER& result = (move_out_of(v) = 0xDEADBEEFU);
        EXPECT_EQ(&result, &v);
        EXPECT_EQ(printed(v), "32 bits DEADBEEF");
    }
}

TEST(MovedFrom, TextOfTheFormerLifeIsGone) {
    KVAL_UINTEGER v(0, 8);
    cache_text(v);
    move_out_of(v) = KVAL_UINTEGER(1, 8);
    EXPECT_FALSE(keeps_text(v));
}

// The text of a moved-from value is empty. Where the next assignment kept it, the new digits would not show.
TEST(MovedFrom, AnEmptyTextThatWasAskedForIsGoneWithTheNextAssignment) {
    for (const KVAL_UINTEGER& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        const std::string digits = KVAL_UINTEGER(shape).as_hex_string();
        KVAL_UINTEGER copied_to(0, 8);
        EXPECT_STREQ(move_out_of(copied_to).as_hex_string(), "");
        copied_to = shape;
        EXPECT_EQ(copied_to.as_hex_string(), digits);

        KVAL_UINTEGER moved_to(0, 8);
        EXPECT_STREQ(move_out_of(moved_to).as_hex_string(), "");
        moved_to = KVAL_UINTEGER(shape);
        EXPECT_EQ(moved_to.as_hex_string(), digits);
    }
}

TEST(MovedFrom, ResizingGivesZeroInThatWidth) {
    const struct {
        unsigned former;
        unsigned width;
        const char* expected;
    } rows[] = {
        {8, 8, "8 bits 00000000"},  {8, 32, "32 bits 00000000"},           {8, 33, "33 bits 00000000 00000000"},
        {40, 8, "8 bits 00000000"}, {40, 40, "40 bits 00000000 00000000"}, {40, 0x80000000, "1 bits 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.expected);
        KVAL_UINTEGER v = marked(from_words(row.former, {~0U}, {1}, true), "Z");
        EXPECT_EQ(&move_out_of(v).bitwidth(row.width), &v);
        EXPECT_EQ(printed(v), row.expected);
    }
}

TEST(MovedFrom, ParsingWorksAsEver) {
    const struct {
        const char* text;
        const char* from_hex;
        const char* from_bin;
    } rows[] = {
        {"10", "8 bits 00000010", "2 bits 00000002"},
        {"101010101", "36 bits 00000001 01010101", "9 bits 00000155"},
        {"100000000000000000000000000000001", "132 bits 00000001 00000000 00000000 00000000 00000001",
         "33 bits 00000001 00000001"},
        {"X1", "8 bits 00000000", "2 bits 00000001 x 00000002 flags X"},
        {"", "1 bits 00000000", "1 bits 00000000"},
    };
    for (const auto& row : rows) {
        for (const unsigned former : {8U, 40U}) {
            SCOPED_TRACE("\"" + std::string(row.text) + "\" into what had " + std::to_string(former) + " bits");
            KVAL_UINTEGER hex(~0U, former);
            move_out_of(hex).set_value_from_hex_string(row.text);
            EXPECT_EQ(printed(hex), row.from_hex);
            EXPECT_STREQ(hex.as_hex_string(), row.text);

            KVAL_UINTEGER bin(~0U, former);
            move_out_of(bin).set_value_from_bin_string(row.text);
            EXPECT_EQ(printed(bin), row.from_bin);
            EXPECT_STREQ(bin.as_bin_string(), row.text);
        }
    }
}

// ---- move assignment ----

TEST(MoveAssign, ToALiveTargetIsAsCopyAssignment) {
    for (const KVAL_UINTEGER& target : shapes()) {
        for (const KVAL_UINTEGER& shape : shapes()) {
            SCOPED_TRACE(printed(target) + " = " + printed(shape));
            KVAL_UINTEGER copied_to(target);
            copied_to = shape;

            KVAL_UINTEGER moved_to(target);
            KVAL_UINTEGER source(shape);
            cache_text(moved_to);
            cache_text(source);
            KVAL_UINTEGER& result = (moved_to = std::move(source));
            EXPECT_EQ(&result, &moved_to);
            EXPECT_EQ(printed(moved_to), printed(copied_to));
            EXPECT_EQ(moved_to.bitwidth(), target.bitwidth());
            EXPECT_FALSE(keeps_text(moved_to));

            EXPECT_EQ(source.bitwidth(), shape.bitwidth()) << "the source stays alive in its own width";
            source = 1U;
            EXPECT_EQ(printed(source), printed(KVAL_UINTEGER(1, shape.bitwidth())));
            EXPECT_EQ(printed(moved_to), printed(copied_to)) << "nothing is shared with the source";
        }
    }
}

// The source may get the target's old words, but a text is nobody's but the value's that made it.
TEST(MoveAssign, TheSourceNeverGetsTheTargetsText) {
    for (const KVAL_UINTEGER& target : shapes()) {
        for (const KVAL_UINTEGER& shape : shapes()) {
            SCOPED_TRACE(printed(target) + " = " + printed(shape));
            KVAL_UINTEGER moved_to(target);
            cache_text(moved_to);
            KVAL_UINTEGER source(shape);
            moved_to = std::move(source);
            EXPECT_FALSE(keeps_text(source));
        }
    }
}

TEST(MoveAssign, TruncatesAndExtends) {
    KVAL_UINTEGER compact(0, 16);
    compact = from_words(40, {0x89ABCDEF, 0x12}, {0, 1}, true);
    EXPECT_EQ(printed(compact), "16 bits 0000CDEF flags X");

    KVAL_UINTEGER wide = from_words(40, {~0U, 0xFF}, {~0U, 0xFF}, true);
    wide = KVAL_UINTEGER(0x5A, 8);
    EXPECT_EQ(printed(wide), "40 bits 00000000 0000005A");

    KVAL_UINTEGER shorter = from_words(40, {0, 0});
    shorter = from_words(100, {1, ~0U, 3, 4});
    EXPECT_EQ(printed(shorter), "40 bits 000000FF 00000001");

    KVAL_UINTEGER longer = from_words(100, {~0U, ~0U, ~0U, 0xF});
    longer = from_words(40, {1, 0xFF});
    EXPECT_EQ(printed(longer), "100 bits 00000000 00000000 000000FF 00000001");
}

TEST(MoveAssign, StorageThatChangedHandsStillGrowsAndShrinks) {
    KVAL_UINTEGER shrunk = from_words(128, {1, 2, 3, 4});
    shrunk.bitwidth(40);
    KVAL_UINTEGER v = from_words(40, {5, 6});
    v = std::move(shrunk);
    EXPECT_EQ(printed(v.bitwidth(128)), "128 bits 00000000 00000000 00000002 00000001");
    EXPECT_EQ(printed(v.bitwidth(200)), "200 bits 00000000 00000000 00000000 00000000 00000000 00000002 00000001");
    shrunk = 7U;
    EXPECT_EQ(printed(shrunk.bitwidth(128)), "128 bits 00000000 00000000 00000000 00000007");
}

TEST(MoveAssign, OfAMovedFromValueIsZeroInTheTargetsWidth) {
    for (const KVAL_UINTEGER& target : shapes()) {
        SCOPED_TRACE(printed(target));
        KVAL_UINTEGER moved_from(7, 40);
        move_out_of(moved_from);
        const std::string zero = printed(KVAL_UINTEGER(0, target.bitwidth()));

        KVAL_UINTEGER copied_to(target);
        copied_to = moved_from;
        EXPECT_EQ(printed(copied_to), zero);

        KVAL_UINTEGER moved_to(target);
        moved_to = std::move(moved_from);
        EXPECT_EQ(printed(moved_to), zero);
    }
}

TEST(MoveAssign, BetweenMovedFromValuesChangesNothing) {
    KVAL_UINTEGER a(7, 40);
    KVAL_UINTEGER b(7, 8);
    move_out_of(a) = std::move(move_out_of(b));
    expect_moved_from(a);
    expect_moved_from(b);
}

TEST(MoveAssign, ToItselfChangesNothing) {
    for (const KVAL_UINTEGER& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        KVAL_UINTEGER v(shape);
        cache_text(v);
        KVAL_UINTEGER& itself = v;
        KVAL_UINTEGER& result = (v = std::move(itself));
        EXPECT_EQ(&result, &v);
        EXPECT_EQ(printed(v), printed(shape));
        EXPECT_TRUE(keeps_text(v));
    }
    KVAL_UINTEGER moved_from(7, 40);
    KVAL_UINTEGER& itself = move_out_of(moved_from);
    moved_from = std::move(itself);
    expect_moved_from(moved_from);
}

// ---- swapping ----

TEST(Swap, StandardTemplateExchangesWidthsBitsAndFlags) {
    for (const KVAL_UINTEGER& left : shapes()) {
        for (const KVAL_UINTEGER& right : shapes()) {
            SCOPED_TRACE(printed(left) + " with " + printed(right));
            KVAL_UINTEGER a(left);
            KVAL_UINTEGER b(right);
            std::swap<KVAL_UINTEGER>(a, b);
            EXPECT_EQ(printed(a), printed(right));
            EXPECT_EQ(printed(b), printed(left));
        }
    }
}

TEST(Swap, FoundByArgumentExchangesTheTextToo) {
    for (const KVAL_UINTEGER& left : shapes()) {
        for (const KVAL_UINTEGER& right : shapes()) {
            SCOPED_TRACE(printed(left) + " with " + printed(right));
            KVAL_UINTEGER a(left);
            KVAL_UINTEGER b(right);
            cache_text(a);
            using std::swap;
            swap(a, b);
            EXPECT_EQ(printed(a), printed(right));
            EXPECT_EQ(printed(b), printed(left));
            EXPECT_FALSE(keeps_text(a));
            EXPECT_TRUE(keeps_text(b));
        }
    }
}

TEST(Swap, BothTextsAndTheirKindsChangeHands) {
    KVAL_UINTEGER a(0, 1);
    KVAL_UINTEGER b(0, 1);
    a.set_value_from_hex_string("0000000abc");
    b.set_value_from_bin_string("1?0");
    const char* const text_of_a = a.as_hex_string();
    const char* const text_of_b = b.as_bin_string();
    swap(a, b);
    EXPECT_EQ(a.as_bin_string(), text_of_b);
    EXPECT_EQ(b.as_hex_string(), text_of_a);
    EXPECT_STREQ(a.as_bin_string(), "1?0");
    EXPECT_STREQ(b.as_hex_string(), "0000000abc");
}

TEST(Swap, CapacityChangesHandsWithTheArrays) {
    KVAL_UINTEGER a = from_words(160, {1, 2, 3, 4, 5});
    a.bitwidth(72);
    KVAL_UINTEGER b = from_words(96, {5, 6, 7});
    swap(a, b);
    EXPECT_EQ(printed(a.bitwidth(160)), "160 bits 00000000 00000000 00000007 00000006 00000005");
    EXPECT_EQ(printed(b.bitwidth(160)), "160 bits 00000000 00000000 00000003 00000002 00000001");
}

TEST(Swap, ASmallAndALargeValueChangeHands) {
    KVAL_UINTEGER a = from_words(64, {1, 2}, {4, 8});
    KVAL_UINTEGER b = from_words(65, {5, 6, 1});
    swap(a, b);
    EXPECT_EQ(printed(a), "65 bits 00000001 00000006 00000005");
    EXPECT_EQ(printed(b), "64 bits 00000002 00000001 x 00000008 00000004");
}

// The field stands at byte 36: the layout is part of the binary interface.
std::uint32_t capacity(const KVAL_UINTEGER& v) {
    std::uint32_t words = 0;
    std::memcpy(&words, reinterpret_cast<const char*>(&v) + 36, sizeof words);
    return words;
}

TEST(Capacity, IsTheLengthOfTheArraysOfALargeValue) {
    KVAL_UINTEGER a(0, 160);
    EXPECT_EQ(capacity(a), 5U);
    a.bitwidth(70);
    EXPECT_EQ(capacity(a), 5U) << "a value that shrinks keeps its arrays";
    const KVAL_UINTEGER copy(a);
    EXPECT_EQ(capacity(copy), 3U);
    KVAL_UINTEGER moved_to(std::move(a));
    EXPECT_EQ(capacity(moved_to), 5U) << "the arrays are those of the source";
    KVAL_UINTEGER b(0, 96);
    swap(moved_to, b);
    EXPECT_EQ(capacity(moved_to), 3U);
    EXPECT_EQ(capacity(b), 5U);
    b.bitwidth(161);
    EXPECT_EQ(capacity(b), 6U);
    EXPECT_EQ(capacity(b << 64), 8U);
}

TEST(Capacity, IsZeroForASmallValueWhichOwnsNone) {
    KVAL_UINTEGER a(0, 64);
    EXPECT_EQ(capacity(a), 0U);
    a.bitwidth(65);
    EXPECT_EQ(capacity(a), 3U);
    a.bitwidth(64);
    EXPECT_EQ(capacity(a), 0U);
    EXPECT_EQ(capacity(a << 1), 3U);
    EXPECT_EQ(capacity(KVAL_UINTEGER(1, 100) >> 36), 0U);
}

TEST(Swap, WithItselfChangesNothing) {
    for (const KVAL_UINTEGER& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        KVAL_UINTEGER v(shape);
        cache_text(v);
        swap(v, v);
        EXPECT_EQ(printed(v), printed(shape));
        EXPECT_TRUE(keeps_text(v));
        std::swap<KVAL_UINTEGER>(v, v);
        EXPECT_EQ(printed(v), printed(shape));
    }
}

TEST(Swap, WithAMovedFromValue) {
    for (const KVAL_UINTEGER& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        KVAL_UINTEGER v(shape);
        KVAL_UINTEGER moved_from(7, 40);
        swap(v, move_out_of(moved_from));
        expect_moved_from(v);
        EXPECT_EQ(printed(moved_from), printed(shape));
    }
}

// ---- algorithms ----

/// `count` values with numbers that repeat out of order, in the width that `width_of` gives for their place.
template <class WidthOf>
std::vector<KVAL_UINTEGER> scattered(unsigned count, WidthOf width_of) {
    std::vector<KVAL_UINTEGER> values;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned number = i * 37 % 53;
        const unsigned width = width_of(i);
        values.push_back(from_words(width, {number}, {i & 3}));
        values.back().set_uvalue_at(static_cast<int>(width - 1) / 32, number);  // wide: the top word counts too
    }
    return values;
}

struct Widths {
    const char* name;
    unsigned (*width_of)(unsigned place);
};

const Widths kWidths[] = {
    {"all compact", [](unsigned) { return 8U; }},
    {"all of 32 bits", [](unsigned) { return 32U; }},
    {"all of 38 bits", [](unsigned) { return 38U; }},
    {"all of three words", [](unsigned) { return 90U; }},
    {"compact widths mixed", [](unsigned i) { return 6 + i % 27; }},
    {"wide widths mixed", [](unsigned i) { return 38 + 32 * (i % 4); }},
    {"both forms mixed", [](unsigned i) { return 6 + 16 * (i % 7); }},
};

TEST(Algorithms, SortKeepsEveryElementWhole) {
    for (const Widths& widths : kWidths) {
        for (const unsigned count : {2U, 5U, 16U, 17U, 200U}) {
            SCOPED_TRACE(std::string(widths.name) + ", " + std::to_string(count) + " elements");
            std::vector<KVAL_UINTEGER> values = scattered(count, widths.width_of);
            std::vector<std::string> before = all_printed(values);
            std::sort(values.begin(), values.end());
            EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
            std::vector<std::string> after = all_printed(values);
            std::sort(before.begin(), before.end());
            std::sort(after.begin(), after.end());
            EXPECT_EQ(after, before);
        }
    }
}

TEST(Algorithms, StableSortKeepsTheOrderOfEqualNumbers) {
    for (const Widths& widths : kWidths) {
        for (const unsigned count : {2U, 16U, 17U, 200U}) {
            SCOPED_TRACE(std::string(widths.name) + ", " + std::to_string(count) + " elements");
            std::vector<KVAL_UINTEGER> values = scattered(count, widths.width_of);
            std::vector<const KVAL_UINTEGER*> places;
            const std::vector<KVAL_UINTEGER> originals(values);
            for (const KVAL_UINTEGER& original : originals) {
                places.push_back(&original);
            }
            std::stable_sort(places.begin(), places.end(),
                             [](const KVAL_UINTEGER* l, const KVAL_UINTEGER* r) { return *l < *r; });
            std::vector<std::string> expected;
            for (const KVAL_UINTEGER* place : places) {
                expected.push_back(printed(*place));
            }
            std::stable_sort(values.begin(), values.end());
            EXPECT_EQ(all_printed(values), expected);
        }
    }
}

TEST(Algorithms, RotateAndReverseKeepEveryElementWhole) {
    for (std::size_t by = 0; by <= shapes().size(); ++by) {
        SCOPED_TRACE(by);
        std::vector<KVAL_UINTEGER> values = shapes();
        std::vector<std::string> expected = all_printed(values);
        const auto offset = static_cast<std::ptrdiff_t>(by);
        std::rotate(values.begin(), values.begin() + offset, values.end());
        std::rotate(expected.begin(), expected.begin() + offset, expected.end());
        EXPECT_EQ(all_printed(values), expected);
        std::reverse(values.begin(), values.end());
        std::reverse(expected.begin(), expected.end());
        EXPECT_EQ(all_printed(values), expected);
    }
}

// ---- vectors ----

TEST(Vector, InsertKeepsEveryElementWhole) {
    const KVAL_UINTEGER inserted = marked(from_words(70, {1, 2, 3}, {4, 5, 6}, true), "Z");
    for (const bool grows : {true, false}) {
        for (std::size_t at = 0; at <= shapes().size(); ++at) {
            SCOPED_TRACE(std::to_string(at) + (grows ? ", growing" : ", in place"));
            std::vector<KVAL_UINTEGER> values = shapes();
            std::vector<std::string> expected = all_printed(values);
            if (grows) {
                values.shrink_to_fit();
            } else {
                values.reserve(values.size() + 8);
            }
            const auto offset = static_cast<std::ptrdiff_t>(at);

            values.insert(values.begin() + offset, inserted);
            expected.insert(expected.begin() + offset, printed(inserted));
            EXPECT_EQ(all_printed(values), expected);

            values.insert(values.begin() + offset, KVAL_UINTEGER(7, 5));
            expected.insert(expected.begin() + offset, "5 bits 00000007");
            EXPECT_EQ(all_printed(values), expected);

            const KVAL_UINTEGER several[] = {KVAL_UINTEGER(1, 33), KVAL_UINTEGER(2, 3), KVAL_UINTEGER(3, 65)};
            values.insert(values.begin() + offset, std::begin(several), std::end(several));
            expected.insert(expected.begin() + offset,
                            {"33 bits 00000000 00000001", "3 bits 00000002", "65 bits 00000000 00000000 00000003"});
            EXPECT_EQ(all_printed(values), expected);
        }
    }
}

TEST(Vector, GrowthKeepsEveryElementWhole) {
    std::vector<KVAL_UINTEGER> values;
    std::vector<std::string> expected;
    for (int round = 0; round < 5; ++round) {
        for (const KVAL_UINTEGER& shape : shapes()) {
            values.push_back(shape);
            expected.push_back(printed(shape));
        }
        EXPECT_EQ(all_printed(values), expected);
    }
    values.reserve(1000);
    EXPECT_EQ(all_printed(values), expected);
    values.shrink_to_fit();
    EXPECT_EQ(all_printed(values), expected);
}

TEST(Vector, EraseOnEqualWidthsClosesTheGap) {
    for (const unsigned width : {8U, 32U, 33U, 100U}) {
        for (std::ptrdiff_t at = 0; at < 5; ++at) {
            SCOPED_TRACE(std::to_string(width) + " bits at " + std::to_string(at));
            std::vector<KVAL_UINTEGER> values;
            for (unsigned i = 0; i < 5; ++i) {
                values.push_back(from_words(width, {i}, {i}, i % 2 == 1));
            }
            std::vector<std::string> expected = all_printed(values);
            values.erase(values.begin() + at);
            expected.erase(expected.begin() + at);
            EXPECT_EQ(all_printed(values), expected);
        }
    }
}

TEST(Vector, EraseOnMixedWidthsTruncatesToTheWidthsInPlace_Required) {
    std::vector<KVAL_UINTEGER> values;
    values.emplace_back(0x11U, 8U);
    values.push_back(from_words(40, {0x89ABCDEF, 0x12}, {0x80, 1}, true));
    values.emplace_back(0x1234U, 16U);
    values.push_back(from_words(100, {1, 0xFFFF0002, 3, 4}));
    values.emplace_back(0x5AU, 8U);
    values.erase(values.begin());
    const std::vector<std::string> expected = {
        "8 bits 000000EF x 00000080 flags X",
        "40 bits 00000000 00001234",
        "16 bits 00000001",
        "100 bits 00000000 00000000 00000000 0000005A",
    };
    EXPECT_EQ(all_printed(values), expected);
}

TEST(Vector, EraseOfTheLastElementsKeepsTheOthersWhole) {
    std::vector<KVAL_UINTEGER> values = shapes();
    std::vector<std::string> expected = all_printed(values);
    values.erase(values.end() - 3, values.end());
    expected.erase(expected.end() - 3, expected.end());
    EXPECT_EQ(all_printed(values), expected);
}

}  // namespace
