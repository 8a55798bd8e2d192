// Tests of values of up to 32 bits: whatever is stored in them, or shifted or carried out of them, nothing but one word
// of each plane ever shows, neither in them nor in what is made of them.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>

#include "kval.h"
#include "signed_support.h"
#include "unit_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

constexpr unsigned kOnes = 0xFFFFFFFF;

/// Ones and X bits everywhere.
U full(unsigned width) {
    U v = from_words(width, {kOnes, kOnes, kOnes, kOnes});
    return v.force_x();
}

/// Everything that could show more than `word` and `mask`. `changed(check)` makes the value anew and hands it to the
/// check as it is, neither copied nor moved.
template <class Value, class Changed>
void expect_one_word(Changed changed, unsigned width, unsigned word, unsigned mask) {
    bool x = false;
    changed([&](Value& v) {
        x = v.is_x();
        EXPECT_EQ(v.bitwidth(), width);
        EXPECT_EQ(v.get_uvalue_at(0), word);
        EXPECT_EQ(v.get_xmask_at(0), mask);
        for (const int index : {-1, 1, 2}) {
            EXPECT_EQ(v.get_uvalue_at(index), 0U) << index;
            EXPECT_EQ(v.get_xmask_at(index), 0U) << index;
        }
        EXPECT_EQ(v.uint(), word);
        EXPECT_EQ(v.is_zero(), word == 0);
        EXPECT_EQ(v.is_one(), word == 1);
        EXPECT_EQ(v.get_hash(32), twang_uinthash(word));
    });
    const auto in = [&](unsigned wide) { return from_words(wide, {word}, {mask}, x); };
    for (const unsigned wide : {33U, 40U, 64U, 65U, 100U}) {
        changed([&](U& v) { EXPECT_EQ(printed(v.bitwidth(wide)), printed(in(wide))) << "resized"; });
        changed([&](U& v) { EXPECT_EQ(printed(U(v).bitwidth(wide)), printed(in(wide))) << "copied, resized"; });
        changed([&](Value& v) {
            Value taken(std::move(v));
            EXPECT_EQ(printed(static_cast<U&>(taken).bitwidth(wide)), printed(in(wide))) << "moved, resized";
        });
        changed([&](U& v) {
            U target = full(wide);
            target = v;
            EXPECT_EQ(printed(target), printed(in(wide))) << "assigned";
        });
    }
    changed([&](U& v) {
        EXPECT_TRUE(v >= from_words(64, {word}) && v <= from_words(64, {word}));
        EXPECT_FALSE(v > from_words(64, {word}) || v < from_words(64, {word}));
        EXPECT_FALSE(v > from_words(32, {word}) || v < from_words(32, {word}));
        EXPECT_TRUE(v < from_words(33, {0, 1}));
        EXPECT_TRUE(v >= word && v <= word);
        EXPECT_FALSE(v > word || v < word);
        EXPECT_EQ(v == word, !x);
        EXPECT_TRUE(v == in(64) && in(64) == v && v == in(32) && in(100) == v);
        EXPECT_EQ(printed(v << 32), printed(from_words(width + 32, {0, word}, {0, mask}, x)));
        EXPECT_EQ(printed(v + U(0, 64)), printed(from_words(64, {word})));
        EXPECT_EQ(printed(from_words(64, {word, 5}) - v), printed(from_words(64, {0, 5})));
        EXPECT_EQ(printed(from_words(64, {0, 5}) += v), printed(from_words(64, {word, 5})));
        EXPECT_EQ(printed(from_words(64, {word, 5}) -= v), printed(from_words(64, {0, 5})));
        EXPECT_EQ(printed(from_words(64, {kOnes, 5}) & v), printed(from_words(64, {word & ~mask, 5}, {mask})));
        EXPECT_EQ(printed(from_words(64, {0, 5}) | v), printed(from_words(64, {word & ~mask, 5}, {mask})));
        if (x) return;
        EXPECT_EQ(printed(from_words(64, {0, 5}) ^ v), printed(from_words(64, {word, 5})));
        EXPECT_EQ(printed(v * from_words(64, {1})), printed(from_words(width + 64, {word})));
        EXPECT_EQ(printed(v * U(1, 32)), printed(from_words(width + 32, {word})));
    });
    changed([&](Value& v) {
        S extended(v);
        const unsigned above = width < 32 ? kOnes << width : 0;
        const bool negative = (word >> (width - 1) & 1) != 0;
        const U want = negative ? from_words(64, {word | above, kOnes}, {mask}, x) : in(64);
        EXPECT_EQ(printed(extended.bitwidth(64)), printed(want)) << "sign-extended";
    });
    if (mask != 0) return;
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08X", word);
    changed([&](Value& v) { EXPECT_STREQ(v.as_hex_string(), digits + 8 - (width + 3) / 4); });
}

/// A value that is changed, and the only word of each plane afterwards.
template <class Value>
struct ChangeRow {
    const char* name;
    Value start;
    void (*change)(Value&);
    unsigned width;
    unsigned word;
    unsigned mask;
};

template <class Value>
void expect_one_word(const ChangeRow<Value>& row) {
    SCOPED_TRACE(row.name);
    const auto changed = [&row](auto check) {
        Value v(row.start);
        row.change(v);
        check(v);
    };
    expect_one_word<Value>(changed, row.width, row.word, row.mask);
}

/// An operand, and the only word of each plane of the result.
template <class Value>
struct ResultRow {
    const char* name;
    Value operand;
    Value (*operation)(const Value&);
    unsigned width;
    unsigned word;
    unsigned mask;
};

template <class Value>
void expect_one_word(const ResultRow<Value>& row) {
    SCOPED_TRACE(row.name);
    const auto made = [&row](auto check) {
        Value v = row.operation(row.operand);
        check(v);
    };
    expect_one_word<Value>(made, row.width, row.word, row.mask);
}

// ---- unsigned values ----

TEST(UpperWord, IsOutOfReachOfStores) {
    const ChangeRow<U> rows[] = {
        {"32 bits, set_bit(31, 3)", from_words(32, {0}), [](U& v) { v.set_bit(31, 3); }, 32, 0x80000000, 0},
        {"32 bits, set_bit(30, 7)", from_words(32, {1}), [](U& v) { v.set_bit(30, 7); }, 32, 0xC0000001, 0},
        {"32 bits, set_bit(32, 1): bit 0", from_words(32, {0}), [](U& v) { v.set_bit(32, 1); }, 32, 1, 0},
        {"32 bits, set_bit(32, ones)", from_words(32, {0}), [](U& v) { v.set_bit(32, kOnes); }, 32, kOnes, 0},
        {"31 bits, set_bit(31, 3)", from_words(31, {1}), [](U& v) { v.set_bit(31, 3); }, 31, 0x80000001, 0},
        {"8 bits, set_bit(8, ones)", from_words(8, {0x5A}), [](U& v) { v.set_bit(8, kOnes); }, 8, 0xFFFFFF5A, 0},
        {"value word 1 stored: the only one", from_words(8, {0x5A}), [](U& v) { v.set_uvalue_at(1, 0x89ABCDEF); }, 8,
         0x89ABCDEF, 0},
        {"value word -1 stored: the only one", from_words(32, {0x5A}), [](U& v) { v.set_uvalue_at(-1, kOnes); }, 32,
         kOnes, 0},
        {"x-mask word 1 stored: the only one", from_words(32, {0x5A}), [](U& v) { v.set_xmask_at(1, 0x89ABCDEF); }, 32,
         0x5A, 0x89ABCDEF},
        {"32 bits, force_x", from_words(32, {5}), [](U& v) { v.force_x(); }, 32, 5, kOnes},
        {"8 bits with bits above, force_x", from_words(8, {kOnes}), [](U& v) { v.force_x(); }, 8, 0xFF, 0xFF},
        {"32 bits, set_x(31)", from_words(32, {5}), [](U& v) { v.set_x(31).set_x(32); }, 32, 5, 0x80000000},
        {"32 bits, all inverted by randomize", from_words(32, {5}), [](U& v) { v.randomize(32); }, 32, ~5U, 0},
    };
    for (const auto& row : rows) expect_one_word(row);
}

TEST(UpperWord, IsOutOfReachOfOperatorsInPlace) {
    const ChangeRow<U> rows[] = {
        {"32 bits, <<= 1", from_words(32, {kOnes}, {0xC0000001}), [](U& v) { v <<= 1; }, 32, 0xFFFFFFFE, 0x80000002},
        {"32 bits, <<= 31", from_words(32, {kOnes}, {kOnes}), [](U& v) { v <<= 31; }, 32, 0x80000000, 0x80000000},
        {"32 bits, <<= 63: as by 31 (required)", from_words(32, {kOnes}), [](U& v) { v <<= 63; }, 32, 0x80000000, 0},
        {"32 bits, <<= 32: as by 0 (required)", from_words(32, {0x89ABCDEF}), [](U& v) { v <<= 32; }, 32, 0x89ABCDEF,
         0},
        {"8 bits with bits above, <<= 28", from_words(8, {kOnes}, {kOnes}), [](U& v) { v <<= 28; }, 8, 0, 0},
        {"32 bits, >>= 33: as by 1 (required)", from_words(32, {kOnes}), [](U& v) { v >>= 33; }, 32, 0x7FFFFFFF, 0},
        {"32 bits, +=", from_words(32, {kOnes}), [](U& v) { v += U(kOnes, 32); }, 32, 0xFFFFFFFE, 0},
        {"32 bits, += 64 bits", from_words(32, {kOnes}),
         [](U& v) {
             v += from_words(64, {2, 7});
         },
         32, 1, 0},
        {"32 bits, += a number", from_words(32, {kOnes}), [](U& v) { v += 1U; }, 32, 0, 0},
        {"32 bits, ++", from_words(32, {kOnes}), [](U& v) { ++v; }, 32, 0, 0},
        {"32 bits, -=", from_words(32, {0}), [](U& v) { v -= U(1, 8); }, 32, kOnes, 0},
        {"32 bits, -= 65 bits", from_words(32, {0}),
         [](U& v) {
             v -= from_words(65, {1, 7, 1});
         },
         32, kOnes, 0},
        {"32 bits, -= a number", from_words(32, {0}), [](U& v) { v -= 1U; }, 32, kOnes, 0},
        {"32 bits, --", from_words(32, {0}), [](U& v) { --v; }, 32, kOnes, 0},
        {"8 bits, --", from_words(8, {0}), [](U& v) { --v; }, 8, 0xFF, 0},
        {"32 bits, &= 64 bits", from_words(32, {kOnes}),
         [](U& v) {
             v &= from_words(64, {5, kOnes}, {8, kOnes});
         },
         32, 5, 8},
        {"8 bits, |= 64 bits", from_words(8, {1}),
         [](U& v) {
             v |= from_words(64, {0xF04, kOnes}, {0xFFFFFF08, kOnes});
         },
         8, 5, 8},
    };
    for (const auto& row : rows) expect_one_word(row);
}

TEST(UpperWord, GoesWhereAValueBecomesCompact) {
    const ChangeRow<U> rows[] = {
        {"a number assigned", from_words(8, {kOnes}), [](U& v) { v = kOnes; }, 8, 0xFF, 0},
        {"64 bits assigned", from_words(32, {0}), [](U& v) { v = static_cast<const U&>(full(64)); }, 32, kOnes, kOnes},
        {"100 bits assigned", from_words(8, {0}), [](U& v) { v = static_cast<const U&>(full(100)); }, 8, 0xFF, 0xFF},
        {"64 bits moved in", from_words(32, {0}), [](U& v) { v = full(64); }, 32, kOnes, kOnes},
        {"100 bits moved in", from_words(8, {0}), [](U& v) { v = full(100); }, 8, 0xFF, 0xFF},
        {"64 bits to 32", from_words(64, {5, kOnes}, {8, kOnes}), [](U& v) { v.bitwidth(32); }, 32, 5, 8},
        {"64 bits to 8", from_words(64, {kOnes, kOnes}), [](U& v) { v.bitwidth(8); }, 8, 0xFF, 0},
        {"33 bits to 32", from_words(33, {5, kOnes}, {8, kOnes}), [](U& v) { v.bitwidth(32); }, 32, 5, 8},
        {"100 bits to 32", from_words(100, {5, kOnes, kOnes, 0xF}), [](U& v) { v.bitwidth(32); }, 32, 5, 0},
        {"64 bits parsed to 32", from_words(64, {kOnes, kOnes}, {8, 8}),
         [](U& v) { v.set_value_from_hex_string("89abCDEF"), v.DeleteString(); }, 32, 0x89ABCDEF, 0},
        {"64 bits parsed to 5", from_words(64, {kOnes, kOnes}),
         [](U& v) { v.set_value_from_bin_string("--0--"), v.DeleteString(); }, 5, 0x1B, 0},
        {"moved from, then a number", from_words(64, {kOnes, kOnes}),
         [](U& v) {
             const U taken(std::move(v));
             v = 5U;
         },
         32, 5, 0},
        {"moved from, then resized", from_words(64, {kOnes, kOnes}),
         [](U& v) {
             const U taken(std::move(v));
             v.bitwidth(8);
         },
         8, 0, 0},
        {"exchanged with 64 bits", from_words(64, {kOnes, kOnes}),
         [](U& v) {
             U other(5, 32);
             swap(v, other);
         },
         32, 5, 0},
        {"exchanged with 100 bits", from_words(100, {kOnes, kOnes, kOnes, 1}),
         [](U& v) {
             U other(5, 8);
             swap(v, other);
         },
         8, 5, 0},
    };
    for (const auto& row : rows) expect_one_word(row);
}

TEST(UpperWord, IsNoPartOfACompactResult) {
    const ResultRow<U> rows[] = {
        {"~ of 32 bits", from_words(32, {5}), [](const U& v) { return ~v; }, 32, ~5U, 0},
        {"~ of 8 bits", from_words(8, {5}, {1}), [](const U& v) { return ~v; }, 8, 0xFA, 1},
        {"32 bits less 32", from_words(32, {0}), [](const U& v) { return v - U(1, 32); }, 32, kOnes, 0},
        {"32 bits less 64", from_words(32, {0}),
         [](const U& v) {
             return v - from_words(64, {1, 9});
         },
         32, kOnes, 0},
        {"31 and 31 bits: 32", from_words(31, {0x7FFFFFFF}), [](const U& v) { return v + v; }, 32, 0xFFFFFFFE, 0},
        {"a carry out of bit 31 below 32 bits: one bit more, and the carry is lost (required)",
         from_words(8, {0xFFFFFF80}, {0x100}), [](const U& v) { return v + v; }, 9, 0x100, 0x100},
        {"16 by 16 bits with bits above: 32", from_words(16, {kOnes}), [](const U& v) { return v * v; }, 32, 1, 0},
        {"8 by 8 bits with bits above: 16", from_words(8, {kOnes}), [](const U& v) { return v * v; }, 16, 1, 0},
        {"8 bits with bits above & 32 bits", from_words(8, {kOnes}, {0xF00}),
         [](const U& v) { return v & U(kOnes, 32); }, 32, 0xFFFFF0FF, 0xF00},
        {"^ of 32 bits", from_words(32, {0}, {1}), [](const U& v) { return v ^ from_words(32, {kOnes}, {3}); }, 32,
         kOnes, 2},
        {"64 bits >> 32", from_words(64, {kOnes, 5}, {kOnes, 8}), [](const U& v) { return v >> 32; }, 32, 5, 8},
        {"64 bits >> 40", from_words(64, {kOnes, 0xFFFFFF00}), [](const U& v) { return v >> 40; }, 24, 0xFFFFFF, 0},
        {"40 bits with bits above >> 8", from_words(40, {kOnes, kOnes}), [](const U& v) { return v >> 8; }, 32, kOnes,
         0},
        {"100 bits >> 68", from_words(100, {1, 2, 0x30, 8}), [](const U& v) { return v >> 68; }, 32, 0x80000003, 0},
        {"28 bits with bits above << 4", from_words(28, {kOnes}, {kOnes}), [](const U& v) { return v << 4; }, 32,
         0xFFFFFFF0, 0xFFFFFFF0},
        {"8 bits with bits above << 4: they stay above (required)", from_words(8, {kOnes}),
         [](const U& v) { return v << 4; }, 12, 0xFFFFFFF0, 0},
        {"32 bits by 1", from_words(32, {kOnes}), [](const U& v) { return v / U(1, 1); }, 32, kOnes, 0},
    };
    for (const auto& row : rows) expect_one_word(row);
}

// ---- signed values ----

TEST(UpperWord, IsOutOfReachOfSignedChanges) {
    const ChangeRow<S> rows[] = {
        {"-1 in 32 bits", S(-1, 32), [](S&) {}, 32, kOnes, 0},
        {"-1 in 8 bits", S(-1, 8), [](S&) {}, 8, 0xFF, 0},
        {"0 negated in 32 bits", S(0, 32), [](S& v) { v.complement_me(); }, 32, 0, 0},
        {"1 negated in 32 bits", S(1, 32), [](S& v) { v.complement_me(); }, 32, kOnes, 0},
        {"0 negated in 8 bits", signed_words(8, {0xF00}, {0xF01}), [](S& v) { v.complement_me(); }, 8, 0, 1},
        {"64 unsigned bits assigned: the low word whole (required)", S(0, 8),
         [](S& v) {
             v = from_words(64, {0x89ABCD6F, kOnes}, {0xF00, kOnes});
         },
         8, 0x89ABCD6F, 0xF00},
        {"100 unsigned bits assigned: the low word whole (required)", S(0, 32),
         [](S& v) {
             v = from_words(100, {0x89ABCDEF, kOnes, 1, 2});
         },
         32, 0x89ABCDEF, 0},
        {"64 negative bits assigned", S(0, 32),
         [](S& v) {
             v = signed_words(64, {5, 0x80000000}, {0, kOnes});
         },
         32, 5, 0},
        {"40 negative bits assigned: ones from bit 8 up (required)", S(0, 32),
         [](S& v) {
             v = signed_words(40, {5, 0x80});
         },
         32, 0xFFFFFF05, 0},
        {"32 bits, >>= 1: all ones (required)", signed_words(32, {0x80000000}), [](S& v) { v >>= 1; }, 32, kOnes, 0},
        {"32 bits, >>= 32", signed_words(32, {0x80000000}), [](S& v) { v >>= 32; }, 32, kOnes, 0},
        {"8 bits, >>= 9", signed_words(8, {0x80}, {0x0F}), [](S& v) { v >>= 9; }, 8, 0xFF, 0x0F},
        {"64 negative bits to 32", signed_words(64, {5, kOnes}), [](S& v) { v.bitwidth(32); }, 32, 5, 0},
        {"33 negative bits to 8", S(-1, 33), [](S& v) { v.bitwidth(8); }, 8, 0xFF, 0},
        {"100 negative bits to 32", S(-5, 100), [](S& v) { v.bitwidth(32); }, 32, 0xFFFFFFFB, 0},
    };
    for (const auto& row : rows) expect_one_word(row);
}

TEST(UpperWord, IsNoPartOfASignedCompactResult) {
    const ResultRow<S> rows[] = {
        {"negated copy", S(5, 32), [](const S& v) { return v.twos_complement(); }, 32, 0xFFFFFFFB, 0},
        {"8 bits, >> 32: the word stays whole (required)", S(0x70, 8), [](const S& v) { return v >> 32; }, 1, 0x70, 0},
        {"64 bits, >> 32", signed_words(64, {5, 0x80000005}), [](const S& v) { return v >> 32; }, 32, 0x80000005, 0},
        {"-1 in 40 bits with ones above, >> 8", S(-1, 40), [](const S& v) { return v >> 8; }, 32, kOnes, 0},
        {"31 and 31 negative bits: 32", S(-1, 31), [](const S& v) { return v + v; }, 32, 0xFFFFFFFE, 0},
        {"32 bits less an unsigned one", S(0, 32), [](const S& v) { return v - U(1, 32); }, 32, kOnes, 0},
        {"unsigned 8 bits less -1 of 64: 9", S(-1, 64), [](const S& v) { return U(5, 8) - v; }, 9, 6, 0},
        {"16 by 16 bits, negated: 32", S(-1, 16), [](const S& v) { return v * S(1, 16); }, 32, kOnes, 0},
        {"-7 by 2", S(-7, 32), [](const S& v) { return v / S(2, 8); }, 32, 0xFFFFFFFD, 0},
        {"all X by zero", S(-7, 32), [](const S& v) { return v / S(0, 8); }, 32, 0, kOnes},
    };
    for (const auto& row : rows) expect_one_word(row);
}

// ---- moved-from values ----

TEST(UpperWord, AMovedFromValueHasNone) {
    for (const unsigned former : {8U, 32U, 33U, 40U, 64U, 65U, 100U}) {
        for (const unsigned width : {1U, 32U, 33U, 64U, 65U, 128U}) {
            SCOPED_TRACE(std::to_string(former) + " bits before, " + std::to_string(width) + " after");
            U v = full(former);
            const U taken(std::move(v));
            EXPECT_EQ(printed(taken), printed(full(former)));
            for (const int index : {-1, 0, 1, 2}) {
                EXPECT_EQ(v.get_uvalue_at(index), 0U) << index;
                EXPECT_EQ(v.get_xmask_at(index), 0U) << index;
            }
            EXPECT_EQ(v.get_hash(32), twang_uinthash(0));
            EXPECT_TRUE(v.is_zero());
            EXPECT_TRUE(v == U(0, 64));
            EXPECT_EQ(printed(v.bitwidth(width)), printed(U(0, width)));
        }
    }
}

}  // namespace
