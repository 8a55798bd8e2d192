// Tests of the signed value itself: construction, assignment, resizing, negation, read-outs, moves and swapping.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

// ---- construction ----

TEST(SignedConstruct, FromANumber) {
    const struct {
        const char* name;
        int number;
        unsigned width;
        const char* expected;
    } rows[] = {
        {"-1 in 8 bits", -1, 8, "8 bits 000000FF"},
        {"200 in 8 bits is truncated", 200, 8, "8 bits 000000C8"},
        {"a width of 0 becomes 1", 5, 0, "1 bits 00000001"},
        {"a width that reads negative becomes 1", -1, 0x80000000, "1 bits 00000001"},
        {"-2 in 1 bit", -2, 1, "1 bits 00000000"},
        {"-1 in 31 bits", -1, 31, "31 bits 7FFFFFFF"},
        {"-1 in 32 bits", -1, 32, "32 bits FFFFFFFF"},
        {"the least in 31 bits", INT_MIN, 31, "31 bits 00000000"},
        {"-1 in 33 bits: ones up to the top word's end (required)", -1, 33, "33 bits FFFFFFFF FFFFFFFF"},
        {"-1 in 40 bits: ones up to the top word's end (required)", -1, 40, "40 bits FFFFFFFF FFFFFFFF"},
        {"the least in 33 bits", INT_MIN, 33, "33 bits FFFFFFFF 80000000"},
        {"the largest in 33 bits", INT_MAX, 33, "33 bits 00000000 7FFFFFFF"},
        {"-5 in 64 bits", -5, 64, "64 bits FFFFFFFF FFFFFFFB"},
        {"-5 in 65 bits", -5, 65, "65 bits FFFFFFFF FFFFFFFF FFFFFFFB"},
        {"5 in 65 bits", 5, 65, "65 bits 00000000 00000000 00000005"},
        {"0 in 100 bits", 0, 100, "100 bits 00000000 00000000 00000000 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const S v(row.number, row.width);
        EXPECT_EQ(printed(v), row.expected);
    }
}

/// Values of both signs and forms, on both sides of every word border, with X bits, flags and bits above the width.
std::vector<S> shapes() {
    return {
        S(-1, 1),
        S(5, 8),
        signed_words(8, {0x85}, {0x81}, true),
        signed_marked(signed_words(8, {0x5A}), "ZLH"),
        signed_words(8, {0x1F0}),
        signed_words(8, {0x170}),
        signed_words(32, {0x80000001}, {0x10}),
        S(INT_MAX, 32),
        signed_words(33, {0x89ABCDEF, 1}, {1, 1}, true),
        signed_words(40, {0x89ABCDEF, 0x12}),
        S(-1, 40),
        signed_marked(signed_words(64, {1, 0x80000000}, {~0U, ~0U}, true), "L"),
        signed_words(65, {1, 2, 1}, {4, 0, 1}),
        signed_words(100, {1, 2, 3, 4}),
        signed_marked(signed_words(100, {1, 0x80, 3, 8}, {0, 1, 0, 1}), "H"),
    };
}

TEST(SignedConstruct, CopyFromEitherClassTakesEverythingButTheText) {
    for (const S& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        S source(shape);
        cache_text(source);
        const S copy(source);
        EXPECT_EQ(printed(copy), printed(shape));
        EXPECT_FALSE(keeps_text(copy));
        U plain(shape);
        EXPECT_EQ(printed(plain), printed(shape));
        cache_text(plain);
        const S from_unsigned(plain);
        EXPECT_EQ(printed(from_unsigned), printed(shape));
        EXPECT_FALSE(keeps_text(from_unsigned));
        EXPECT_TRUE(keeps_text(source));
        EXPECT_TRUE(keeps_text(plain));
    }
    EXPECT_EQ(S(U(0xFF, 8)).signed_value(), -1) << "a set top bit makes it negative";
}

// ---- assignment ----

/// A target of `width` bits full of ones, X bits and flags, so that whatever an assignment leaves shows.
template <class Target>
Target full_target(unsigned width) {
    Target target(U(0, width));
    for (int i = 0; i < target.get_size(); ++i) target.set_uvalue_at(i, ~0U);
    target.force_x();
    target.force_z();
    target.force_wl();
    target.force_wh();
    target.EnforceWidth();
    cache_text(target);
    return target;
}

template <class Source>
struct Assignment {
    const char* name;
    unsigned width;
    Source source;
    const char* expected;
};

/// Assigns by copy and by move, and checks result, reference, text and source.
template <class Target, class Source>
void expect_assignment(const Assignment<Source>& row) {
    SCOPED_TRACE(row.name);
    Target full = full_target<Target>(row.width);
    Target target(full);
    cache_text(target);
    Source source(row.source);
    cache_text(source);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(printed(target), row.expected);
    EXPECT_FALSE(keeps_text(target));
    EXPECT_EQ(printed(source), printed(row.source));
    EXPECT_TRUE(keeps_text(source));

    Target moved_to(full);
    cache_text(moved_to);
    EXPECT_EQ(&(moved_to = std::move(source)), &moved_to);
    EXPECT_EQ(printed(moved_to), row.expected);
    EXPECT_FALSE(keeps_text(moved_to));
    EXPECT_EQ(source.bitwidth(), row.source.bitwidth()) << "the source stays alive in its own width";
    source = U(1, 8);
    EXPECT_EQ(source.uint(), row.source.bitwidth() == 0 ? 0U : 1U);
    EXPECT_EQ(printed(moved_to), row.expected) << "nothing is shared with the source";
}

TEST(SignedAssign, FromUnsignedZeroExtendsAndDoesNotTrim) {
    const Assignment<U> rows[] = {
        {"equal widths", 8, U(0xF0, 8), "8 bits 000000F0"},
        {"8 bits to 40: zeros above", 40, U(0xF0, 8), "40 bits 00000000 000000F0"},
        {"8 bits to 16", 16, U(0xF0, 8), "16 bits 000000F0"},
        {"32 bits to 33", 33, U(0x80000000, 32), "33 bits 00000000 80000000"},
        {"a wider compact source leaves its bits above the width (required)", 4, from_words(8, {0xF5}, {0xA0}, true),
         "4 bits 000000F5 x 000000A0 flags X"},
        {"a wide source leaves its low word whole (required)", 8, from_words(40, {0x89ABCDEF, 0x12}, {1, 2}),
         "8 bits 89ABCDEF x 00000001"},
        {"wide: the top word stays whole (required)", 40, from_words(64, {1, 0x89ABCDEF}, {0, 0xF0000000}, true),
         "40 bits 89ABCDEF 00000001 x F0000000 00000000 flags X"},
        {"65 bits from 100: the top word stays whole (required)", 65, from_words(100, {1, 2, 3, 4}),
         "65 bits 00000003 00000002 00000001"},
        {"40 bits to 100", 100, from_words(40, {1, 0xFF}, {2, 0x80}),
         "100 bits 00000000 00000000 000000FF 00000001 x 00000000 00000000 00000080 00000002"},
        {"64 bits to 65", 65, from_words(64, {1, 0x80000000}), "65 bits 00000000 80000000 00000001"},
        {"the flags come along", 8, marked(from_words(8, {1}), "ZLH"), "8 bits 00000001 flags ZLH"},
        {"the flags of a wide source come along", 40, marked(from_words(40, {1}), "L"),
         "40 bits 00000000 00000001 flags L"},
        {"bits above a source's width, equal widths", 8, from_words(8, {0x1F0}), "8 bits 000001F0"},
        {"bits above a source's width, to wide", 40, from_words(8, {0x1F0}), "40 bits 00000000 000001F0"},
    };
    for (const auto& row : rows) {
        expect_assignment<S>(row);
    }
}

TEST(SignedAssign, FromSignedSignExtends) {
    const Assignment<S> rows[] = {
        {"-16 from 8 bits to 40", 40, S(-16, 8), "40 bits 000000FF FFFFFFF0"},
        {"-16 from 8 bits to 16", 16, S(-16, 8), "16 bits 0000FFF0"},
        {"-16 from 8 bits to 32", 32, S(-16, 8), "32 bits FFFFFFF0"},
        {"127 from 8 bits to 40", 40, S(127, 8), "40 bits 00000000 0000007F"},
        {"-1 from 1 bit to 65", 65, S(-1, 1), "65 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"128 from 16 bits to 8: the sign is cleared (required)", 8, S(0x80, 16), "8 bits 00000000"},
        {"-129 from 16 bits to 8 becomes positive (required)", 8, S(-129, 16), "8 bits 0000007F"},
        {"1 from 2 bits to 1: the sign is cleared", 1, S(1, 2), "1 bits 00000000"},
        {"negative 40 bits to 16: ones from bit 8 of the low word (required)", 16, signed_words(40, {0x1234, 0x80}),
         "16 bits 0000FF34"},
        {"negative 33 bits to 8: ones from bit 1 (required)", 8, signed_words(33, {5, 1}), "8 bits 000000FF"},
        {"negative 33 bits to 32: ones from bit 1 (required)", 32, signed_words(33, {4, 1}), "32 bits FFFFFFFE"},
        {"negative 64 bits to 16: the low word as it is", 16, signed_words(64, {0x1234, 0x80000000}),
         "16 bits 00001234"},
        {"not negative, 64 bits to 8: the sign is cleared", 8, signed_words(64, {0x80, 1}), "8 bits 00000000"},
        {"negative 32 bits to 64", 64, signed_words(32, {0x80000001}), "64 bits FFFFFFFF 80000001"},
        {"negative 40 bits to 64", 64, signed_words(40, {5, 0x80}), "64 bits FFFFFF80 00000005"},
        {"negative 100 bits to 40: ones from bit 4 of the top word (required)", 40, signed_words(100, {1, 2, 3, 8}),
         "40 bits 000000F2 00000001"},
        {"negative 100 bits to 64 (required)", 64, signed_words(100, {1, 2, 3, 8}), "64 bits FFFFFFF2 00000001"},
        {"negative 96 bits to 40 becomes positive", 40, signed_words(96, {1, 2, 0x80000000}),
         "40 bits 00000002 00000001"},
        {"negative 65 bits to 33 becomes positive", 33, signed_words(65, {5, 6, 1}), "33 bits 00000000 00000005"},
        {"not negative, 100 bits to 40: the sign is cleared", 40, signed_words(100, {1, 0x80, 3, 4}),
         "40 bits 00000000 00000001"},
        {"40 bits to 100", 100, signed_words(40, {1, 0x7F}), "100 bits 00000000 00000000 0000007F 00000001"},
    };
    for (const auto& row : rows) {
        expect_assignment<S>(row);
    }
}

TEST(SignedAssign, FromSignedCarriesXBitsAndFlags) {
    const Assignment<S> rows[] = {
        {"compact, equal widths", 8, signed_words(8, {0x85}, {0x81}, true), "8 bits 00000085 x 00000081 flags X"},
        {"compact, wider: all X bits stay", 16, signed_words(8, {0x85}, {0x81}, true),
         "16 bits 0000FF85 x 00000081 flags X"},
        {"compact, narrower", 4, signed_words(8, {0x85}, {0x81}, true), "4 bits 00000005 x 00000001 flags X"},
        {"negative to wide: X bits of the top word are dropped (required)", 40, signed_words(8, {0x85}, {0x81}, true),
         "40 bits 000000FF FFFFFF85 flags X"},
        {"not negative to wide: they stay", 40, signed_words(8, {5}, {0x81}),
         "40 bits 00000000 00000005 x 00000000 00000081"},
        {"negative 32 bits to wide: they stay", 40, signed_words(32, {0x80000001}, {0x10}),
         "40 bits 000000FF 80000001 x 00000000 00000010"},
        {"negative 40 bits to 100: those of word 1 are dropped (required)", 100, signed_words(40, {5, 0x80}, {1, 2}),
         "100 bits 0000000F FFFFFFFF FFFFFF80 00000005 x 00000000 00000000 00000000 00000001"},
        {"negative 64 bits to 100: they stay", 100, signed_words(64, {5, 0x80000000}, {1, 2}),
         "100 bits 0000000F FFFFFFFF 80000000 00000005 x 00000000 00000000 00000002 00000001"},
        {"negative 100 bits to 40: they stay", 40, signed_words(100, {1, 2, 3, 8}, {1, 2, 4, 8}),
         "40 bits 000000F2 00000001 x 00000002 00000001"},
        {"clearing the sign clears its X, flag X is the source's", 8, signed_words(16, {0x80}, {0x80}, true),
         "8 bits 00000000 flags X"},
        {"the same in wide form", 40, signed_words(100, {1, 0x80, 3, 4}, {0, 0x80}, true),
         "40 bits 00000000 00000001 flags X"},
        {"an X sign counts by its value bit", 16, signed_words(8, {0x80}, {0x80}), "16 bits 0000FF80 x 00000080"},
        {"flags", 40, signed_marked(S(1, 8), "ZLH"), "40 bits 00000000 00000001 flags ZLH"},
    };
    for (const auto& row : rows) {
        expect_assignment<S>(row);
    }
}

TEST(SignedAssign, FromSignedTrimsBitsAboveTheWidth) {
    const Assignment<S> rows[] = {
        {"negative, compact to 16", 16, signed_words(8, {0x1F0}), "16 bits 0000FFF0"},
        {"negative, compact to 8", 8, signed_words(8, {0x1F0}), "8 bits 000000F0"},
        {"not negative, to 9: the bit above is the new sign, cleared (required)", 9, signed_words(8, {0x170}),
         "9 bits 00000070"},
        {"not negative, to 16: the bit above becomes a value bit (required)", 16, signed_words(8, {0x170}),
         "16 bits 00000170"},
        {"not negative, to 8", 8, signed_words(8, {0x170}), "8 bits 00000070"},
        {"not negative, to wide (required)", 40, signed_words(8, {0x170}), "40 bits 00000000 00000170"},
        {"wide -1 to 40", 40, S(-1, 40), "40 bits 000000FF FFFFFFFF"},
        {"wide -1 to 64", 64, S(-1, 40), "64 bits FFFFFFFF FFFFFFFF"},
        {"wide -1 to 8", 8, S(-1, 40), "8 bits 000000FF"},
    };
    for (const auto& row : rows) {
        expect_assignment<S>(row);
    }
}

TEST(SignedAssign, ToAnUnsignedTargetIsTheUnsignedRule) {
    const Assignment<S> rows[] = {
        {"8 bits to 40: zeros above", 40, S(-16, 8), "40 bits 00000000 000000F0"},
        {"40 bits to 8", 8, S(-16, 40), "8 bits 000000F0"},
        {"equal widths: bits above the width are copied (required)", 8, signed_words(8, {0x1F0}), "8 bits 000001F0"},
        {"equal wide widths: bits above the width are copied (required)", 40, S(-1, 40), "40 bits FFFFFFFF FFFFFFFF"},
        {"another width: trimmed", 64, S(-1, 40), "64 bits FFFFFFFF FFFFFFFF"},
        {"another width, narrower: trimmed", 33, S(-1, 40), "33 bits 00000001 FFFFFFFF"},
        {"X bits and flags come along", 40, signed_words(8, {0x85}, {0x81}, true),
         "40 bits 00000000 00000085 x 00000000 00000081 flags X"},
    };
    for (const auto& row : rows) {
        expect_assignment<U>(row);
    }
}

TEST(SignedAssign, ByTheSourcesStaticType) {
    const S source(-16, 8);
    const U& base = source;
    S target(0, 40);
    target = base;
    EXPECT_EQ(printed(target), "40 bits 00000000 000000F0");
    S other(0, 40);
    static_cast<U&>(other) = source;
    EXPECT_EQ(printed(other), "40 bits 00000000 000000F0");
}

TEST(SignedAssign, ToItselfChangesNothing) {
    for (const S& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        S v(shape);
        cache_text(v);
        S& itself = v;
        U& as_base = v;
        EXPECT_EQ(&(v = itself), &v);
        EXPECT_EQ(&(v = as_base), &v);
        EXPECT_EQ(&(v = std::move(itself)), &v);
        EXPECT_EQ(&(v = std::move(as_base)), &v);
        EXPECT_EQ(printed(v), printed(shape));
        EXPECT_TRUE(keeps_text(v));
    }
}

// ---- resizing ----

TEST(SignedResize, SignExtendsANegativeValue) {
    const struct {
        const char* name;
        S value;
        unsigned width;
        const char* expected;
    } rows[] = {
        {"negative 8 to 16", S(-123, 8), 16, "16 bits 0000FF85"},
        {"negative 8 to 32", S(-123, 8), 32, "32 bits FFFFFF85"},
        {"negative 8 to 33", S(-123, 8), 33, "33 bits 00000001 FFFFFF85"},
        {"negative 8 to 64", S(-123, 8), 64, "64 bits FFFFFFFF FFFFFF85"},
        {"negative 8 to 4", S(-123, 8), 4, "4 bits 00000005"},
        {"negative and odd to 0: 1 bit", S(-123, 8), 0, "1 bits 00000001"},
        {"negative and even to 0: 1 bit", S(-124, 8), 0, "1 bits 00000000"},
        {"negative to a width that reads negative: 1 bit", S(-123, 8), 0x80000000, "1 bits 00000001"},
        {"negative 32 to 33", signed_words(32, {0x80000000}), 33, "33 bits 00000001 80000000"},
        {"negative 33 to 64", signed_words(33, {5, 1}), 64, "64 bits FFFFFFFF 00000005"},
        {"negative 33 to 65", signed_words(33, {5, 1}), 65, "65 bits 00000001 FFFFFFFF 00000005"},
        {"negative 33 to 32", signed_words(33, {5, 1}), 32, "32 bits 00000005"},
        {"negative 64 to 65", signed_words(64, {1, 0x80000000}), 65, "65 bits 00000001 80000000 00000001"},
        {"negative 64 to 100", signed_words(64, {1, 0x80000000}), 100, "100 bits 0000000F FFFFFFFF 80000000 00000001"},
        {"negative 100 to 40", signed_words(100, {1, 2, 3, 8}), 40, "40 bits 00000002 00000001"},
        {"negative 100 to 99", signed_words(100, {1, 2, 3, 8}), 99, "99 bits 00000000 00000003 00000002 00000001"},
        {"not negative 8 to 64", S(0x7F, 8), 64, "64 bits 00000000 0000007F"},
        {"not negative 16 to 8 may become negative", S(0x80, 16), 8, "8 bits 00000080"},
        {"not negative 100 to 40", signed_words(100, {1, 2, 3, 4}), 40, "40 bits 00000002 00000001"},
        {"not negative to 0: 1 bit", S(0x7F, 8), 0, "1 bits 00000001"},
        {"X bits are zero-extended, flags stay", signed_marked(signed_words(8, {0x85}, {0x81}, true), "Z"), 40,
         "40 bits 000000FF FFFFFF85 x 00000000 00000081 flags XZ"},
        {"X bits above the old width stay (required)", signed_words(8, {0x85}, {0x181}), 16,
         "16 bits 0000FF85 x 00000181"},
        {"bits above the width of a negative value", S(-1, 40), 64, "64 bits FFFFFFFF FFFFFFFF"},
        {"bits above the width of a negative value, down", S(-1, 40), 33, "33 bits 00000001 FFFFFFFF"},
        {"bits above the width become value bits (required)", signed_words(8, {0x170}), 16, "16 bits 00000170"},
        {"the same, to wide (required)", signed_words(8, {0x170}), 40, "40 bits 00000000 00000170"},
        {"the same, in the top word (required)", signed_words(40, {0, 0x100}), 64, "64 bits 00000100 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.bitwidth(row.width), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(SignedResize, ToTheSameWidthChangesNothing) {
    for (const S& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        S v(shape);
        cache_text(v);
        v.bitwidth(shape.bitwidth());
        EXPECT_EQ(printed(v), printed(shape)) << "bits above the width included";
        EXPECT_TRUE(keeps_text(v));
    }
}

TEST(SignedResize, DownAndUpAgain) {
    S v = signed_words(100, {1, 0x82, 3, 8}, {1, 1, 1, 1});
    EXPECT_EQ(printed(v.bitwidth(40)), "40 bits 00000082 00000001 x 00000001 00000001");
    EXPECT_EQ(printed(v.bitwidth(100)),
              "100 bits 0000000F FFFFFFFF FFFFFF82 00000001 x 00000000 00000000 00000001 00000001");
    EXPECT_EQ(printed(v.bitwidth(8)), "8 bits 00000001 x 00000001");
    EXPECT_EQ(printed(v.bitwidth(40)), "40 bits 00000000 00000001 x 00000000 00000001");
}

TEST(SignedResize, ThroughTheBaseZeroExtends) {
    S v(-123, 8);
    EXPECT_EQ(printed(static_cast<U&>(v).bitwidth(16)), "16 bits 00000085");
}

// ---- negation ----

TEST(SignedNegate, WithinTheWidth) {
    const struct {
        const char* name;
        S value;
        const char* expected;
    } rows[] = {
        {"the most negative number stays", S(-128, 8), "8 bits 00000080"},
        {"0", S(0, 8), "8 bits 00000000"},
        {"1", S(1, 8), "8 bits 000000FF"},
        {"-1", S(-1, 8), "8 bits 00000001"},
        {"1 bit", S(-1, 1), "1 bits 00000001"},
        {"32 bits, 1", S(1, 32), "32 bits FFFFFFFF"},
        {"32 bits, the most negative", signed_words(32, {0x80000000}), "32 bits 80000000"},
        {"33 bits, the most negative", signed_words(33, {0, 1}), "33 bits 00000001 00000000"},
        {"40 bits, 1", S(1, 40), "40 bits 000000FF FFFFFFFF"},
        {"64 bits, 2^32: the carry passes word 0", signed_words(64, {0, 1}), "64 bits FFFFFFFF 00000000"},
        {"65 bits, 0: the carry passes every word", S(0, 65), "65 bits 00000000 00000000 00000000"},
        {"65 bits, the most negative", signed_words(65, {0, 0, 1}), "65 bits 00000001 00000000 00000000"},
        {"ones above the width are trimmed", S(-1, 40), "40 bits 00000000 00000001"},
        {"compact ones above the width are trimmed", signed_words(8, {0x1FF}), "8 bits 00000001"},
        {"X bits and flags stay", signed_marked(signed_words(8, {1}, {0x30}, true), "ZLH"),
         "8 bits 000000FF x 00000030 flags XZLH"},
        {"wide X bits and flags stay", signed_words(40, {1, 0}, {1, 2}, true),
         "40 bits 000000FF FFFFFFFF x 00000002 00000001 flags X"},
        {"X bits above the width are trimmed", signed_words(8, {1}, {0x130}), "8 bits 000000FF x 00000030"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        const S negated = static_cast<const S&>(v).twos_complement();
        EXPECT_EQ(printed(negated), row.expected);
        EXPECT_FALSE(keeps_text(negated));
        EXPECT_EQ(printed(v), printed(row.value));
        EXPECT_TRUE(keeps_text(v));
        cache_text(v);
        EXPECT_EQ(&v.complement_me(), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_FALSE(keeps_text(v));
    }
}

// ---- read-outs ----

TEST(SignedRead, NumberSignAndMagnitudeOfTheLowWord) {
    const struct {
        const char* name;
        S value;
        int number;
        unsigned magnitude;
    } rows[] = {
        {"1 bit", S(-1, 1), -1, 1},
        {"-16 in 8 bits", S(-16, 8), -16, 16},
        {"200 in 8 bits", S(200, 8), -56, 56},
        {"zero is positive", S(0, 8), 0, 0},
        {"127", S(127, 8), 127, 127},
        {"31 bits", S(-1, 31), -1, 1},
        {"the least in 32 bits", signed_words(32, {0x80000000}), INT_MIN, 0x80000000},
        {"33 bits, negative: the low word as it is (required)", signed_words(33, {5, 1}), 5, 5},
        {"33 bits, negative, bit 31 set", signed_words(33, {0x80000000, 1}), INT_MIN, 0x80000000},
        {"40 bits, negative: ones from bit 7 (required)", signed_words(40, {5, 0x80}), -123, 123},
        {"64 bits, negative: bit 31 is set (required)", signed_words(64, {5, 0x80000000}), -2147483643, 2147483643},
        {"65 bits, negative: the low word as it is (required)", signed_words(65, {5, 0, 1}), 5, 5},
        {"97 bits, negative: the low word as it is (required)", signed_words(97, {5, 0, 0, 1}), 5, 5},
        {"66 bits, negative: ones from bit 1 (required)", signed_words(66, {4, 0, 2}), -2, 2},
        {"40 bits, not negative, bit 31 set: reads negative (required)", signed_words(40, {0x80000000, 0}), INT_MIN,
         0x80000000},
        {"33 bits, not negative, bit 31 set", signed_words(33, {0xFFFFFFFF, 0}), -1, 1},
        {"an X sign counts by its value bit", signed_words(8, {0xF0}, {0xFF}, true), -16, 16},
        {"negative with bits above the width", signed_words(8, {0x1F0}), -16, 16},
        {"not negative with bits above the width: read as they are (required)", signed_words(8, {0x170}), 0x170, 0x170},
        {"wide -1 with ones above", S(-1, 40), -1, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        EXPECT_EQ(v.convert_to_signed_representation(), row.number);
        EXPECT_EQ(v.signed_value(), row.number);
        EXPECT_EQ(v.positive(), row.number >= 0);
        EXPECT_EQ(v.negative(), row.number < 0);
        EXPECT_EQ(v.absolute_value(), row.magnitude);
        EXPECT_TRUE(keeps_text(v));
    }
}

TEST(SignedRead, ExtremesOfTheWidth) {
    const struct {
        unsigned width;
        unsigned negative;
        unsigned positive;
    } rows[] = {
        {1, 1, 0xFFFFFFFF},           {2, 2, 1},           {8, 0x80, 0x7F},        {31, 0x40000000, 0x3FFFFFFF},
        {32, 0x80000000, 0x7FFFFFFF}, {33, 1, 0xFFFFFFFF}, {40, 0x80, 0xFFFFFFFF}, {64, 0x80000000, 0xFFFFFFFF},
        {65, 1, 0xFFFFFFFF},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        EXPECT_EQ(S(0, row.width).maximum_negative(), row.negative);
        EXPECT_EQ(S(0, row.width).maximum_positive(), row.positive) << "all ones for 1 bit (required)";
        EXPECT_EQ(S(-1, row.width).maximum_negative(), row.negative) << "whatever the value";
        EXPECT_EQ(S(-1, row.width).maximum_positive(), row.positive) << "whatever the value";
    }
}

TEST(SignedRead, SignExtendedChunk) {
    const struct {
        const char* name;
        S value;
        int index;
        unsigned word;
    } rows[] = {
        {"ones above the width, though positive (required)", S(5, 8), 0, 0xFFFFFF05},
        {"negative", S(-128, 8), 0, 0xFFFFFF80},
        {"compact, another index: the word itself (required)", S(5, 8), 1, 5},
        {"compact, a negative index: the word itself", S(5, 8), -1, 5},
        {"32 bits", S(0x12345678, 32), 0, 0x12345678},
        {"40 bits, word 0", signed_words(40, {5, 0x80}), 0, 5},
        {"40 bits, word 1", signed_words(40, {5, 0x80}), 1, 0xFFFFFF80},
        {"40 bits, positive, word 1", signed_words(40, {5, 0x7F}), 1, 0xFFFFFF7F},
        {"33 bits, word 1", signed_words(33, {5, 0}), 1, 0xFFFFFFFE},
        {"64 bits, word 1", signed_words(64, {5, 6}), 1, 6},
        {"beyond the words", signed_words(64, {5, 6}), 2, 0},
        {"below the words", signed_words(64, {5, 6}), -1, 0},
        {"ones above the width", S(-1, 40), 1, 0xFFFFFFFF},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.value.SignExtendedChunk(row.index), row.word);
    }
}

TEST(SignedRead, BitsAboveTheWidthAreReadRaw) {
    const S raw(-1, 33);
    const S trimmed = signed_words(33, {~0U, 1});
    EXPECT_STREQ(trimmed.as_hex_string(), "1FFFFFFFF");
    EXPECT_STREQ(raw.as_hex_string(), "FFFFFFFFF") << "the top digit is read from the stored word";
    EXPECT_EQ(std::string(raw.as_bin_string()), std::string(33, '1'));
    EXPECT_EQ(raw.get_hash(32), 0U) << "equal words cancel";
    EXPECT_EQ(trimmed.get_hash(32), twang_uinthash(~0U) ^ twang_uinthash(1));
    EXPECT_EQ(raw.get_uvalue_at(1), ~0U);
    EXPECT_TRUE(static_cast<const U&>(raw) > trimmed);
    EXPECT_FALSE(static_cast<const U&>(raw) == static_cast<const U&>(trimmed));
    EXPECT_EQ(printed(U(raw) + U(0, 8)), "34 bits 00000003 FFFFFFFF");
    EXPECT_EQ(printed(U(raw) * U(1, 1)), "34 bits 00000003 FFFFFFFF");
    const S shifted = S(0x70, 8) >> 32U;
    EXPECT_FALSE(shifted.is_zero());
    EXPECT_EQ(shifted.uint(), 0x70U);
    EXPECT_STREQ(shifted.as_bin_string(), "0");
    EXPECT_EQ(shifted.get_hash(32), twang_uinthash(0x70));
    EXPECT_TRUE(shifted == 0x70U);
}

TEST(SignedRead, OperatorsOfTheBaseWorkOnTheBits) {
    S v(-1, 8);
    EXPECT_EQ(printed(v & S(0x0F, 8)), "8 bits 0000000F");
    EXPECT_EQ(printed(v | U(0, 16)), "16 bits 000000FF");
    EXPECT_EQ(printed(v ^ S(1, 8)), "8 bits 000000FE");
    EXPECT_EQ(printed(~v), "8 bits 00000000");
    EXPECT_EQ(printed(++v), "8 bits 00000000");
    EXPECT_EQ(printed(--v), "8 bits 000000FF");
    EXPECT_EQ(printed(v += S(-1, 4)), "8 bits 0000000E") << "zero-extended, as unsigned values are";
    EXPECT_EQ(printed(v -= U(15, 4)), "8 bits 000000FF");
    EXPECT_EQ(printed(v += 1U), "8 bits 00000000");
    EXPECT_EQ(printed(v -= 1U), "8 bits 000000FF");
    EXPECT_EQ(printed(v &= S(0x3C, 8)), "8 bits 0000003C");
    EXPECT_EQ(printed(v |= S(-128, 8)), "8 bits 000000BC");
}

// ---- moves ----

/// That `v` is as a moved-from value has to be: without width, bits, flags and text, and safe to read.
void expect_moved_from(const U& v) {
    EXPECT_EQ(v.bitwidth(), 0U);
    EXPECT_TRUE(v.IsCompact());
    EXPECT_EQ(flags(v), "");
    EXPECT_EQ(v.uint(), 0U);
    EXPECT_EQ(v.get_xmask_at(0), 0U);
    EXPECT_STREQ(v.as_hex_string(), "");
    EXPECT_STREQ(v.as_bin_string(), "");
}

TEST(SignedMove, ConstructionTakesEverythingButTheText) {
    for (const S& shape : shapes()) {
        SCOPED_TRACE(printed(shape));
        S signed_source(shape);
        cache_text(signed_source);
        const S from_signed(std::move(signed_source));
        EXPECT_EQ(printed(from_signed), printed(shape));
        EXPECT_FALSE(keeps_text(from_signed));
        expect_moved_from(signed_source);
        EXPECT_EQ(signed_source.signed_value(), 0);
        EXPECT_FALSE(signed_source.negative());
        EXPECT_EQ(signed_source.absolute_value(), 0U);

        U unsigned_source(shape);
        cache_text(unsigned_source);
        const S from_unsigned(std::move(unsigned_source));
        EXPECT_EQ(printed(from_unsigned), printed(shape));
        EXPECT_FALSE(keeps_text(from_unsigned));
        expect_moved_from(unsigned_source);

        S for_unsigned(shape);
        const U to_unsigned(std::move(for_unsigned));
        EXPECT_EQ(printed(to_unsigned), printed(shape));
        expect_moved_from(for_unsigned);
    }
}

/// Values without X bits and without bits above their width: every kind of assignment in their own width keeps them.
std::vector<S> plain_shapes() {
    return {S(-1, 1),
            S(5, 8),
            S(-5, 8),
            signed_words(32, {0x80000001}),
            signed_marked(signed_words(33, {5, 1}), "Z"),
            signed_words(64, {1, 2}),
            signed_marked(signed_words(100, {1, 2, 3, 8}), "LH")};
}

TEST(SignedMove, AMovedFromValueTakesTheWidthOfTheNextAssignment) {
    for (const S& shape : plain_shapes()) {
        for (const unsigned former : {8U, 40U}) {
            SCOPED_TRACE(printed(shape) + " into what had " + std::to_string(former) + " bits");
            const auto moved_from = [former](S& v) -> S& {
                v.bitwidth(former);
                const S taken(std::move(v));
                return v;
            };
            S v(-1, 8);
            moved_from(v) = shape;
            EXPECT_EQ(printed(v), printed(shape)) << "copied from a signed value";
            moved_from(v) = static_cast<const U&>(shape);
            EXPECT_EQ(printed(v), printed(shape)) << "copied from an unsigned value";
            S signed_source(shape);
            moved_from(v) = std::move(signed_source);
            EXPECT_EQ(printed(v), printed(shape)) << "moved from a signed value";
            expect_moved_from(signed_source);
            U unsigned_source(shape);
            moved_from(v) = std::move(unsigned_source);
            EXPECT_EQ(printed(v), printed(shape)) << "moved from an unsigned value";
            expect_moved_from(unsigned_source);
            EXPECT_EQ(printed(v = U(1, 8)), printed(U(1, shape.bitwidth()))) << "the width is taken once only";
        }
    }
}

TEST(SignedMove, AMoveIntoAMovedFromValueTakesBitsAboveTheWidthToo) {
    S target(0, 8);
    const S taken(std::move(target));
    target = S(-1, 40);
    EXPECT_EQ(printed(target), "40 bits FFFFFFFF FFFFFFFF");
}

TEST(SignedMove, AMovedFromValueCanBeResizedParsedAndNegated) {
    const auto fresh = [] {
        S v(-1, 40);
        const S taken(std::move(v));
        return v;  // built from a moved-from value, so one itself
    };
    S v = fresh();
    EXPECT_EQ(printed(v.bitwidth(40)), "40 bits 00000000 00000000");
    S parsed = fresh();
    parsed.set_value_from_hex_string("F0");
    EXPECT_EQ(printed(parsed), "8 bits 000000F0");
    EXPECT_EQ(parsed.signed_value(), -16);
    S negated = fresh();
    negated.complement_me();
    EXPECT_EQ(negated.uint() & 1U, negated.uint());
    S shifted = fresh();
    shifted >>= 1U;
    EXPECT_EQ(shifted.uint(), 0U);
}

// What operators give for a moved-from value means nothing; but none may crash, throw, or write outside its storage,
// not even where the value was changed after the move.
TEST(SignedMove, AChangedMovedFromValueIsSafeInEveryOperator) {
    const auto left_behind = [](S& v) { const S taken(std::move(v)); };
    const auto reads_as_a_value = [](const U& v) {
        S copy(v);
        return copy.bitwidth(100).bitwidth() == 100 && std::string(copy.as_bin_string()).size() <= 100;
    };
    void (*const changes[])(S&) = {
        [](S&) {},
        [](S& v) { --v; },
        [](S& v) { v.force_x(); },
        [](S& v) { v += 0x80000000U; },
        [](S& v) { v.randomize(); },
    };
    for (const auto change : changes) {
        for (const unsigned width : {1U, 8U, 32U, 33U, 64U, 100U, 128U, 256U}) {
            for (const int number : {-3, 5}) {
                S moved(-1, 40);
                left_behind(moved);
                change(moved);
                const S s(number, width);
                const U u(static_cast<unsigned>(number), width);
                for (const S& result :
                     {moved + s, s + moved, moved - s, s - moved, moved * s, s * moved, moved + u, u + moved, moved - u,
                      u - moved, moved * u, u * moved, moved * moved, moved >> 1, moved >> 99}) {
                    EXPECT_TRUE(reads_as_a_value(result)) << width;
                }
                EXPECT_NE(moved < s, moved >= s) << width;
                EXPECT_NE(moved < u, moved >= u) << width;
                EXPECT_NE(u < moved, u >= moved) << width;
                EXPECT_EQ(moved == s, s == moved) << width;
                S target(s);
                target = moved;
                EXPECT_EQ(target.bitwidth(), width);
                moved >>= 3;
                moved.complement_me();
                EXPECT_EQ(moved.bitwidth(0).bitwidth(), 1U);
            }
        }
    }
}

TEST(SignedMove, AssignmentOfAMovedFromValueGivesZero) {
    for (const unsigned width : {8U, 40U}) {
        S source(-1, 40);
        const S taken(std::move(source));
        S copied_to(-1, width);
        copied_to = source;
        EXPECT_TRUE(copied_to.is_zero());
        EXPECT_EQ(copied_to.bitwidth(), width);
        S moved_to(-1, width);
        moved_to = std::move(source);
        EXPECT_TRUE(moved_to.is_zero());
        EXPECT_EQ(moved_to.bitwidth(), width);
    }
}

TEST(SignedMove, ToALiveTargetIsAsCopyAssignment) {
    for (const S& target : shapes()) {
        for (const S& shape : shapes()) {
            SCOPED_TRACE(printed(target) + " = " + printed(shape));
            S copied_to(target);
            copied_to = shape;
            S moved_to(target);
            S source(shape);
            moved_to = std::move(source);
            EXPECT_EQ(printed(moved_to), printed(copied_to));

            S copied_from_base(target);
            copied_from_base = static_cast<const U&>(shape);
            S moved_from_base(target);
            U plain(shape);
            moved_from_base = std::move(plain);
            EXPECT_EQ(printed(moved_from_base), printed(copied_from_base));

            U base_copied_to(target);
            base_copied_to = shape;
            U base_moved_to(target);
            S other(shape);
            base_moved_to = std::move(other);
            EXPECT_EQ(printed(base_moved_to), printed(base_copied_to));
        }
    }
}

// The source may get the target's old words, but a text is nobody's but the value's that made it.
TEST(SignedMove, TheSourceNeverGetsTheTargetsText) {
    for (const S& target : shapes()) {
        for (const S& shape : shapes()) {
            SCOPED_TRACE(printed(target) + " = " + printed(shape));
            S moved_to(target);
            cache_text(moved_to);
            S source(shape);
            moved_to = std::move(source);
            EXPECT_FALSE(keeps_text(source));
        }
    }
}

TEST(SignedSwap, ExchangesEverything) {
    for (const S& left : shapes()) {
        for (const S& right : shapes()) {
            SCOPED_TRACE(printed(left) + " with " + printed(right));
            S a(left);
            S b(right);
            cache_text(a);
            using std::swap;
            swap(a, b);
            EXPECT_EQ(printed(a), printed(right));
            EXPECT_EQ(printed(b), printed(left));
            EXPECT_FALSE(keeps_text(a));
            EXPECT_TRUE(keeps_text(b));
            std::swap<S>(a, b);
            EXPECT_EQ(printed(a), printed(left));
            EXPECT_EQ(printed(b), printed(right));
        }
    }
}

static_assert(std::is_nothrow_swappable<S>::value, "");
static_assert(!std::is_swappable_with<S&, U&>::value, "a signed and an unsigned value do not swap");
static_assert(!std::is_swappable_with<U&, S&>::value, "a signed and an unsigned value do not swap");

TEST(SignedVector, SortsAndGrowsWithMixedWidths) {
    const unsigned widths[] = {8, 40, 32, 100, 33, 9, 64, 65};
    std::vector<S> values;
    for (int i = 0; i < 64; ++i) {
        S v(i * 37 % 64 - 32, 8);
        v.bitwidth(widths[i % 8]);
        values.push_back(v);
    }
    std::vector<S> stable(values);
    std::sort(values.begin(), values.end());
    std::stable_sort(stable.begin(), stable.end());
    for (int i = 0; i < 64; ++i) {
        const S& v = values[static_cast<std::size_t>(i)];
        EXPECT_TRUE(v == S(i - 32, 8)) << printed(v) << " at " << i;
        EXPECT_EQ(printed(v), printed(stable[static_cast<std::size_t>(i)]));
    }
    std::rotate(values.begin(), values.begin() + 20, values.end());
    EXPECT_TRUE(values.front() == S(-12, 8));
    values.insert(values.begin() + 1, signed_words(100, {1, 2, 3, 8}));
    EXPECT_EQ(printed(values[1]), "100 bits 00000008 00000003 00000002 00000001");
    EXPECT_EQ(values.size(), 65U);
    EXPECT_TRUE(values.back() == S(-13, 8));
}

}  // namespace
