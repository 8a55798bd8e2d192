// Tests of signed values on both sides of 64 bits at once: operands and results, targets and sources.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

/// A negative value with other bits and X bits in every word, and flag X.
S negative(unsigned width) {
    const unsigned values[] = {0x12345678, 0x9ABCDEF1, 0x8FEDCBA9, 0xFA};
    const unsigned masks[] = {0xF0, 0x80000001, 0x80000001, 0x0F};
    S v(from_words(width, {}, {}, true));
    const int top = v.get_size() - 1;
    for (int i = 0; i <= top; ++i) v.set_uvalue_at(i, values[i]).set_xmask_at(i, masks[i]);
    v.set_uvalue_at(top, v.get_uvalue_at(top) | 1U << (width - 1) % 32);
    v.EnforceWidth();
    return v;
}

/// Ones, X bits and flags everywhere, so that whatever an assignment leaves shows.
U full(unsigned width) {
    U v = marked(from_words(width, {~0U, ~0U, ~0U, ~0U}, {}, true), "ZLH");
    return v.force_x();
}

// ---- widths ----

TEST(CrossingSignedResize, SignExtendsANegativeValue) {
    const struct {
        const char* name;
        S value;
        unsigned width;
        const char* want;
    } rows[] = {
        {"negative 1 to 65", S(-1, 1), 65, "65 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"negative 8 to 100", signed_words(8, {0x85}, {0x81}, true), 100,
         "100 bits 0000000F FFFFFFFF FFFFFFFF FFFFFF85 x 00000000 00000000 00000000 00000081 flags X"},
        {"negative 32 to 65", signed_words(32, {0x80000001}, {0x80000001}), 65,
         "65 bits 00000001 FFFFFFFF 80000001 x 00000000 00000000 80000001"},
        {"negative 33 to 65", negative(33), 65,
         "65 bits 00000001 FFFFFFFF 12345678 x 00000000 00000001 000000F0 flags X"},
        {"negative 33 to 64", negative(33), 64, "64 bits FFFFFFFF 12345678 x 00000001 000000F0 flags X"},
        {"negative 40 to 100", negative(40), 100,
         "100 bits 0000000F FFFFFFFF FFFFFFF1 12345678 x 00000000 00000000 00000001 000000F0 flags X"},
        {"negative 63 to 64", negative(63), 64, "64 bits DABCDEF1 12345678 x 00000001 000000F0 flags X"},
        {"negative 63 to 65", negative(63), 65,
         "65 bits 00000001 DABCDEF1 12345678 x 00000000 00000001 000000F0 flags X"},
        {"negative 64 to 65: the x-mask is not extended", negative(64), 65,
         "65 bits 00000001 9ABCDEF1 12345678 x 00000000 80000001 000000F0 flags X"},
        {"negative 64 to 128", negative(64), 128,
         "128 bits FFFFFFFF FFFFFFFF 9ABCDEF1 12345678 x 00000000 00000000 80000001 000000F0 flags X"},
        {"negative 65 to 64", negative(65), 64, "64 bits 9ABCDEF1 12345678 x 80000001 000000F0 flags X"},
        {"negative 65 to 63", negative(65), 63, "63 bits 1ABCDEF1 12345678 x 00000001 000000F0 flags X"},
        {"negative 65 to 33", negative(65), 33, "33 bits 00000001 12345678 x 00000001 000000F0 flags X"},
        {"negative 65 to 32", negative(65), 32, "32 bits 12345678 x 000000F0 flags X"},
        {"negative 96 to 64", negative(96), 64, "64 bits 9ABCDEF1 12345678 x 80000001 000000F0 flags X"},
        {"negative 100 to 40", negative(100), 40, "40 bits 000000F1 12345678 x 00000001 000000F0 flags X"},
        {"negative 100 to 1", negative(100), 1, "1 bits 00000000 flags X"},
        {"not negative 64 to 65", signed_words(64, {5, 0x7FFFFFFF}), 65, "65 bits 00000000 7FFFFFFF 00000005"},
        {"not negative 65 to 64 becomes negative", signed_words(65, {5, 0x80000000, 0}), 64,
         "64 bits 80000000 00000005"},
        {"-1 with ones above 40 to 65", S(-1, 40), 65, "65 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"-1 with ones above 40 to 33", S(-1, 40), 33, "33 bits 00000001 FFFFFFFF"},
        {"-1 with ones above 65 to 64", S(-1, 65), 64, "64 bits FFFFFFFF FFFFFFFF"},
        {"not negative, a bit above 40 comes to life in 65 (required)", signed_words(40, {5, 0x100}), 65,
         "65 bits 00000000 00000100 00000005"},
        {"negative, an X bit above 40 comes to life in 65 (required)", signed_words(40, {5, 0x80}, {0, 0x100}), 65,
         "65 bits 00000001 FFFFFF80 00000005 x 00000000 00000100 00000000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        S v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.bitwidth(row.width), &v);
        EXPECT_EQ(printed(v), row.want);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(CrossingSignedResize, UpAndDownAndUpAgain) {
    S v(-123, 8);
    EXPECT_EQ(printed(v.bitwidth(64)), "64 bits FFFFFFFF FFFFFF85");
    EXPECT_EQ(printed(v.bitwidth(65)), "65 bits 00000001 FFFFFFFF FFFFFF85");
    EXPECT_EQ(printed(v.bitwidth(40)), "40 bits 000000FF FFFFFF85");
    EXPECT_EQ(printed(v.bitwidth(128)), "128 bits FFFFFFFF FFFFFFFF FFFFFFFF FFFFFF85");
    EXPECT_EQ(printed(v.bitwidth(7)), "7 bits 00000005");
    EXPECT_EQ(printed(v.bitwidth(64)), "64 bits 00000000 00000005");
    EXPECT_EQ(printed(v.bitwidth(65)), "65 bits 00000000 00000000 00000005");
}

// ---- assignment ----

/// By copy and by move, into a full target; the source stays alive in its own width.
template <class Target, class Source>
void expect_assigned(unsigned width, const Source& value, const char* want) {
    Target target(full(width));
    cache_text(target);
    Source source(value);
    cache_text(source);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(printed(target), want);
    EXPECT_FALSE(keeps_text(target));
    EXPECT_EQ(printed(source), printed(value));
    EXPECT_TRUE(keeps_text(source));

    Target moved_to(full(width));
    moved_to = std::move(source);
    EXPECT_EQ(printed(moved_to), want);
    source = U(1, 8);
    EXPECT_EQ(source.bitwidth(), value.bitwidth());
    EXPECT_EQ(printed(moved_to), want) << "nothing is shared with the source";
}

// The word that takes the source's top word gets its sign filled in and loses its X bits. The target's top word gets
// ones from bit (source width % 32) up as well, whichever word of the source is in it, unless that bit is bit 0.
TEST(CrossingSignedAssign, ANegativeSourceByTheRemainderOfItsWidthRequired) {
    const struct {
        const char* name;
        unsigned from;
        unsigned to;
        const char* want;
    } rows[] = {
        {"33 bits into 8", 33, 8, "8 bits 000000FE x 000000F0 flags X"},
        {"33 bits into 32", 33, 32, "32 bits FFFFFFFE x 000000F0 flags X"},
        {"33 bits into 40", 33, 40, "40 bits 000000FF 12345678 x 00000000 000000F0 flags X"},
        {"33 bits into 63", 33, 63, "63 bits 7FFFFFFF 12345678 x 00000000 000000F0 flags X"},
        {"33 bits into 64", 33, 64, "64 bits FFFFFFFF 12345678 x 00000000 000000F0 flags X"},
        {"33 bits into 65", 33, 65, "65 bits 00000001 FFFFFFFF 12345678 x 00000000 00000000 000000F0 flags X"},
        {"33 bits into 96", 33, 96, "96 bits FFFFFFFF FFFFFFFF 12345678 x 00000000 00000000 000000F0 flags X"},
        {"33 bits into 100", 33, 100,
         "100 bits 0000000F FFFFFFFF FFFFFFFF 12345678 x 00000000 00000000 00000000 000000F0 flags X"},
        {"40 bits into 8", 40, 8, "8 bits 00000078 x 000000F0 flags X"},
        {"40 bits into 32", 40, 32, "32 bits FFFFFF78 x 000000F0 flags X"},
        {"40 bits into 33", 40, 33, "33 bits 00000001 12345678 x 00000000 000000F0 flags X"},
        {"40 bits into 63", 40, 63, "63 bits 7FFFFFF1 12345678 x 00000000 000000F0 flags X"},
        {"40 bits into 64", 40, 64, "64 bits FFFFFFF1 12345678 x 00000000 000000F0 flags X"},
        {"40 bits into 65", 40, 65, "65 bits 00000001 FFFFFFF1 12345678 x 00000000 00000000 000000F0 flags X"},
        {"40 bits into 96", 40, 96, "96 bits FFFFFFFF FFFFFFF1 12345678 x 00000000 00000000 000000F0 flags X"},
        {"40 bits into 100", 40, 100,
         "100 bits 0000000F FFFFFFFF FFFFFFF1 12345678 x 00000000 00000000 00000000 000000F0 flags X"},
        {"63 bits into 8", 63, 8, "8 bits 00000078 x 000000F0 flags X"},
        {"63 bits into 32", 63, 32, "32 bits 92345678 x 000000F0 flags X"},
        {"63 bits into 33", 63, 33, "33 bits 00000001 12345678 x 00000000 000000F0 flags X"},
        {"63 bits into 40", 63, 40, "40 bits 000000F1 12345678 x 00000000 000000F0 flags X"},
        {"63 bits into 64", 63, 64, "64 bits DABCDEF1 12345678 x 00000000 000000F0 flags X"},
        {"63 bits into 65", 63, 65, "65 bits 00000001 DABCDEF1 12345678 x 00000000 00000000 000000F0 flags X"},
        {"63 bits into 96", 63, 96, "96 bits FFFFFFFF DABCDEF1 12345678 x 00000000 00000000 000000F0 flags X"},
        {"63 bits into 100", 63, 100,
         "100 bits 0000000F FFFFFFFF DABCDEF1 12345678 x 00000000 00000000 00000000 000000F0 flags X"},
        {"64 bits into 8", 64, 8, "8 bits 00000078 x 000000F0 flags X"},
        {"64 bits into 32", 64, 32, "32 bits 12345678 x 000000F0 flags X"},
        {"64 bits into 33", 64, 33, "33 bits 00000001 12345678 x 00000001 000000F0 flags X"},
        {"64 bits into 40", 64, 40, "40 bits 000000F1 12345678 x 00000001 000000F0 flags X"},
        {"64 bits into 63", 64, 63, "63 bits 1ABCDEF1 12345678 x 00000001 000000F0 flags X"},
        {"64 bits into 65", 64, 65, "65 bits 00000001 9ABCDEF1 12345678 x 00000000 80000001 000000F0 flags X"},
        {"64 bits into 96", 64, 96, "96 bits FFFFFFFF 9ABCDEF1 12345678 x 00000000 80000001 000000F0 flags X"},
        {"64 bits into 100", 64, 100,
         "100 bits 0000000F FFFFFFFF 9ABCDEF1 12345678 x 00000000 00000000 80000001 000000F0 flags X"},
        {"65 bits into 8", 65, 8, "8 bits 000000FE x 000000F0 flags X"},
        {"65 bits into 32", 65, 32, "32 bits FFFFFFFE x 000000F0 flags X"},
        {"65 bits into 33", 65, 33, "33 bits 00000001 12345678 x 00000001 000000F0 flags X"},
        {"65 bits into 40", 65, 40, "40 bits 000000FF 12345678 x 00000001 000000F0 flags X"},
        {"65 bits into 63", 65, 63, "63 bits 7FFFFFFF 12345678 x 00000001 000000F0 flags X"},
        {"65 bits into 64", 65, 64, "64 bits FFFFFFFF 12345678 x 80000001 000000F0 flags X"},
        {"65 bits into 96", 65, 96, "96 bits FFFFFFFF 9ABCDEF1 12345678 x 00000000 80000001 000000F0 flags X"},
        {"65 bits into 100", 65, 100,
         "100 bits 0000000F FFFFFFFF 9ABCDEF1 12345678 x 00000000 00000000 80000001 000000F0 flags X"},
        {"96 bits into 8", 96, 8, "8 bits 00000078 x 000000F0 flags X"},
        {"96 bits into 32", 96, 32, "32 bits 12345678 x 000000F0 flags X"},
        {"96 bits into 33", 96, 33, "33 bits 00000001 12345678 x 00000001 000000F0 flags X"},
        {"96 bits into 40", 96, 40, "40 bits 000000F1 12345678 x 00000001 000000F0 flags X"},
        {"96 bits into 63", 96, 63, "63 bits 1ABCDEF1 12345678 x 00000001 000000F0 flags X"},
        {"96 bits into 64", 96, 64, "64 bits 9ABCDEF1 12345678 x 80000001 000000F0 flags X"},
        {"96 bits into 65", 96, 65, "65 bits 00000001 9ABCDEF1 12345678 x 00000001 80000001 000000F0 flags X"},
        {"96 bits into 100", 96, 100,
         "100 bits 0000000F 8FEDCBA9 9ABCDEF1 12345678 x 00000000 80000001 80000001 000000F0 flags X"},
        {"100 bits into 8", 100, 8, "8 bits 000000F8 x 000000F0 flags X"},
        {"100 bits into 32", 100, 32, "32 bits FFFFFFF8 x 000000F0 flags X"},
        {"100 bits into 33", 100, 33, "33 bits 00000001 12345678 x 00000001 000000F0 flags X"},
        {"100 bits into 40", 100, 40, "40 bits 000000F1 12345678 x 00000001 000000F0 flags X"},
        {"100 bits into 63", 100, 63, "63 bits 7FFFFFF1 12345678 x 00000001 000000F0 flags X"},
        {"100 bits into 64", 100, 64, "64 bits FFFFFFF1 12345678 x 80000001 000000F0 flags X"},
        {"100 bits into 65", 100, 65, "65 bits 00000001 9ABCDEF1 12345678 x 00000001 80000001 000000F0 flags X"},
        {"100 bits into 96", 100, 96, "96 bits FFFFFFF9 9ABCDEF1 12345678 x 80000001 80000001 000000F0 flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        expect_assigned<S, S>(row.to, negative(row.from), row.want);
    }
}

TEST(CrossingSignedAssign, ANegativeCompactSource) {
    expect_assigned<S, S>(64, signed_words(8, {0x85}, {0x81}, true), "64 bits FFFFFFFF FFFFFF85 flags X");
    expect_assigned<S, S>(65, signed_words(8, {0x85}, {0x81}, true), "65 bits 00000001 FFFFFFFF FFFFFF85 flags X");
    expect_assigned<S, S>(64, signed_words(32, {0x80000005}, {0x81}), "64 bits FFFFFFFF 80000005 x 00000000 00000081");
    expect_assigned<S, S>(65, signed_words(32, {0x80000005}, {0x81}),
                          "65 bits 00000001 FFFFFFFF 80000005 x 00000000 00000000 00000081");
}

TEST(CrossingSignedAssign, ASourceThatIsNotNegativeNeverGivesANegativeTarget) {
    const struct {
        const char* name;
        unsigned to;
        S source;
        const char* want;
    } rows[] = {
        {"40 bits into 65", 65, signed_words(40, {5, 0x7F}, {0, 0x80}),
         "65 bits 00000000 0000007F 00000005 x 00000000 00000080 00000000"},
        {"64 bits into 100", 100, signed_words(64, {5, 0x7FFFFFFF}, {1, 0x80000000}),
         "100 bits 00000000 00000000 7FFFFFFF 00000005 x 00000000 00000000 80000000 00000001"},
        {"65 bits into 64: the sign is cleared, with its X (required)", 64,
         signed_words(65, {5, 0x80000001, 0}, {0, 0x80000002, 0}, true),
         "64 bits 00000001 00000005 x 00000002 00000000 flags X"},
        {"65 bits into 63: the sign is cleared (required)", 63, signed_words(65, {5, 0x40000001, 0}),
         "63 bits 00000001 00000005"},
        {"100 bits into 33: the sign is cleared (required)", 33, signed_words(100, {5, 1, 0, 0}),
         "33 bits 00000000 00000005"},
        {"100 bits into 32: the sign is cleared (required)", 32, signed_words(100, {0x80000005, 1, 2, 3}),
         "32 bits 00000005"},
        {"64 bits into 40, no sign in the way", 40, signed_words(64, {5, 0x7FFFFF12}), "40 bits 00000012 00000005"},
        {"40 bits with a bit above into 65 (required)", 65, signed_words(40, {5, 0x100}),
         "65 bits 00000000 00000100 00000005"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        expect_assigned<S, S>(row.to, row.source, row.want);
    }
}

TEST(CrossingSignedAssign, ToAndFromUnsigned) {
    const struct {
        const char* name;
        unsigned to;
        U source;
        const char* want;
    } rows[] = {
        {"64 bits into 65: zeros above", 65, from_words(64, {5, 0x80000000}, {1, 0x80000000}, true),
         "65 bits 00000000 80000000 00000005 x 00000000 80000000 00000001 flags X"},
        {"40 bits with bits above into 100 (required)", 100, from_words(40, {5, 0xFFFFFF80}),
         "100 bits 00000000 00000000 FFFFFF80 00000005"},
        {"65 bits into 64: whole words", 64, from_words(65, {5, 0x80000000, 1}, {1, 0x80000000, 1}),
         "64 bits 80000000 00000005 x 80000000 00000001"},
        {"65 bits into 63: the top word stays whole (required)", 63,
         from_words(65, {5, 0x80000001, 1}, {1, 0xC0000000, 1}), "63 bits 80000001 00000005 x C0000000 00000001"},
        {"65 bits into 33: the top word stays whole (required)", 33,
         from_words(65, {5, 0x89ABCDEF, 1}, {1, 0xC0000000, 1}), "33 bits 89ABCDEF 00000005 x C0000000 00000001"},
        {"65 bits into 8: the low word stays whole, and that word alone (required)", 8,
         from_words(65, {0x89ABCDEF, 0x12345678, 1}, {0xFFFFFF00, 7, 1}, true), "8 bits 89ABCDEF x FFFFFF00 flags X"},
        {"100 bits into 40: the top word stays whole (required)", 40, from_words(100, {5, 0x89ABCDEF, 1, 2}),
         "40 bits 89ABCDEF 00000005"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        expect_assigned<S, U>(row.to, row.source, row.want);
    }
    expect_assigned<U, S>(65, S(-1, 64), "65 bits 00000000 FFFFFFFF FFFFFFFF");
    expect_assigned<U, S>(65, S(-1, 40), "65 bits 00000000 FFFFFFFF FFFFFFFF");
    expect_assigned<U, S>(64, S(-1, 65), "64 bits FFFFFFFF FFFFFFFF");
    expect_assigned<U, S>(40, S(-1, 100), "40 bits 000000FF FFFFFFFF");
}

TEST(CrossingSignedAssign, BitsLeftAboveTheWidthComeToLifeWhenItGrows) {
    S v(0, 40);
    v = from_words(100, {5, 0x89ABCD6F, 1, 2});
    EXPECT_EQ(printed(S(v).bitwidth(64)), "64 bits 89ABCD6F 00000005") << "not negative: as they are (required)";
    EXPECT_EQ(printed(S(v).bitwidth(65)), "65 bits 00000000 89ABCD6F 00000005")
        << "not negative: as they are (required)";
    v = from_words(100, {5, 0x89ABCDEF, 1, 2});
    EXPECT_EQ(printed(S(v).bitwidth(64)), "64 bits FFFFFFEF 00000005") << "negative: filled with ones";
    EXPECT_EQ(printed(S(v).bitwidth(100)), "100 bits 0000000F FFFFFFFF FFFFFFEF 00000005");
    S compact(0, 8);
    compact = from_words(64, {0x89ABCD6F, 0x12345678});
    EXPECT_EQ(printed(compact.bitwidth(64)), "64 bits 00000000 89ABCD6F") << "the low word and no more (required)";
}

// ---- moves ----

TEST(CrossingSignedMove, EveryPairOfWidths) {
    const unsigned widths[] = {33, 40, 63, 64, 65, 96, 100};
    for (const unsigned left : widths) {
        for (const unsigned right : widths) {
            SCOPED_TRACE(std::to_string(left) + " and " + std::to_string(right) + " bits");
            S a = negative(left), b(-5, right);
            const std::string first = printed(a), second = printed(b);
            swap(a, b);
            EXPECT_EQ(printed(a), second);
            EXPECT_EQ(printed(b), first);
            S taken(std::move(b));
            EXPECT_EQ(printed(taken), first);
            b = std::move(a);
            EXPECT_EQ(printed(b), second) << "a moved-from target takes the width, and bits above it";
            U plain(negative(left));
            a = std::move(plain);
            EXPECT_EQ(printed(a), first) << "from an unsigned value too";
            EXPECT_EQ(printed(S(std::move(plain)).bitwidth(65)), printed(S(0, 65))) << "which is moved from now";
            S copied_to(0, left);
            const S former(std::move(copied_to));
            copied_to = static_cast<const S&>(b);
            EXPECT_EQ(printed(copied_to.bitwidth(128)), "128 bits FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFB");
            EXPECT_EQ(printed(b), second) << "nothing is shared";
        }
    }
}

}  // namespace
