// Tests of unsigned values on both sides of 64 bits at once: operands and results, targets and sources.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;
const unsigned kWidths[] = {1, 31, 32, 33, 40, 63, 64, 65, 96, 100};

/// Other bits and X bits in every word, the lowest and the highest among them; flags X and Z.
KVAL_UINTEGER sample(unsigned width) {
    const unsigned values[] = {0x89ABCDEF, 0x92345679, 0xFEDCBA97, 0x8F1E2D3F};
    const unsigned masks[] = {0x0F0000F1, 0x8F00000F, 0x000F00F1, 0x8000000F};
    KVAL_UINTEGER v = marked(from_words(width, {}, {}, true), "Z");
    for (int i = 0; i < v.get_size(); ++i) v.set_uvalue_at(i, values[i]).set_xmask_at(i, masks[i]);
    v.EnforceWidth();
    return v;
}

/// Ones, X bits and flags everywhere, so that whatever an operation leaves shows.
KVAL_UINTEGER full(unsigned width) {
    KVAL_UINTEGER v = marked(from_words(width, {kOnes, kOnes, kOnes, kOnes}, {}, true), "ZLH");
    return v.force_x();
}

// ---- widths ----

struct ResizeRow {
    const char* name;
    KVAL_UINTEGER value;
    unsigned width;
    const char* want;
};

TEST(CrossingResize, KeepsWhatBothWidthsHold) {
    const ResizeRow rows[] = {
        {"1 bit to 65", from_words(1, {1}, {1}, true), 65,
         "65 bits 00000000 00000000 00000001 x 00000000 00000000 00000001 flags X"},
        {"8 bits to 100", from_words(8, {0xA5}, {0x81}), 100,
         "100 bits 00000000 00000000 00000000 000000A5 x 00000000 00000000 00000000 00000081"},
        {"32 bits to 65", sample(32), 65, "65 bits 00000000 00000000 89ABCDEF x 00000000 00000000 0F0000F1 flags XZ"},
        {"33 bits to 65", sample(33), 65, "65 bits 00000000 00000001 89ABCDEF x 00000000 00000001 0F0000F1 flags XZ"},
        {"40 bits to 96", sample(40), 96, "96 bits 00000000 00000079 89ABCDEF x 00000000 0000000F 0F0000F1 flags XZ"},
        {"63 bits to 65", sample(63), 65, "65 bits 00000000 12345679 89ABCDEF x 00000000 0F00000F 0F0000F1 flags XZ"},
        {"64 bits to 65", sample(64), 65, "65 bits 00000000 92345679 89ABCDEF x 00000000 8F00000F 0F0000F1 flags XZ"},
        {"64 bits to 100", sample(64), 100,
         "100 bits 00000000 00000000 92345679 89ABCDEF x 00000000 00000000 8F00000F 0F0000F1 flags XZ"},
        {"64 bits to 128", sample(64), 128,
         "128 bits 00000000 00000000 92345679 89ABCDEF x 00000000 00000000 8F00000F 0F0000F1 flags XZ"},
        {"65 bits to 64: the third word goes", sample(65), 64,
         "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"65 bits to 63", sample(65), 63, "63 bits 12345679 89ABCDEF x 0F00000F 0F0000F1 flags XZ"},
        {"65 bits to 33", sample(65), 33, "33 bits 00000001 89ABCDEF x 00000001 0F0000F1 flags XZ"},
        {"65 bits to 32: compact at once", sample(65), 32, "32 bits 89ABCDEF x 0F0000F1 flags XZ"},
        {"96 bits to 64", sample(96), 64, "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"96 bits to 40", sample(96), 40, "40 bits 00000079 89ABCDEF x 0000000F 0F0000F1 flags XZ"},
        {"100 bits to 64", sample(100), 64, "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"100 bits to 33", sample(100), 33, "33 bits 00000001 89ABCDEF x 00000001 0F0000F1 flags XZ"},
        {"100 bits to 31: compact at once", sample(100), 31, "31 bits 09ABCDEF x 0F0000F1 flags XZ"},
        {"100 bits to 1", sample(100), 1, "1 bits 00000001 x 00000001 flags XZ"},
        {"128 bits to 0: one bit", sample(128), 0, "1 bits 00000001 x 00000001 flags XZ"},
        {"all flags stay, up", marked(from_words(64, {1, 0}, {}, true), "ZLH"), 65,
         "65 bits 00000000 00000000 00000001 flags XZLH"},
        {"all flags stay, down, though the X bits go", marked(from_words(65, {1, 0, 0}, {0, 0, 1}, true), "ZLH"), 64,
         "64 bits 00000000 00000001 flags XZLH"},
        {"64 bits to 65: every bit is inside the width", from_words(64, {kOnes, kOnes}, {kOnes, kOnes}), 65,
         "65 bits 00000000 FFFFFFFF FFFFFFFF x 00000000 FFFFFFFF FFFFFFFF"},
        {"40 bits to 65: bits above the width come to life (required)", from_words(40, {7, 0xFFFFFF12}, {0, 0xF00}), 65,
         "65 bits 00000000 FFFFFF12 00000007 x 00000000 00000F00 00000000"},
        {"63 bits to 100: the bit above the width comes to life (required)",
         from_words(63, {7, 0x80000001}, {0, 0xC0000000}), 100,
         "100 bits 00000000 00000000 80000001 00000007 x 00000000 00000000 C0000000 00000000"},
        {"8 bits to 65: bits above the width come to life (required)", from_words(8, {0x89ABCDEF}, {0xF00}), 65,
         "65 bits 00000000 00000000 89ABCDEF x 00000000 00000000 00000F00"},
        {"65 bits to 64: bits above the width go", from_words(65, {1, 2, kOnes}, {4, 5, 0xF00}), 64,
         "64 bits 00000002 00000001 x 00000005 00000004"},
    };
    for (const ResizeRow& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        cache_text(v);
        EXPECT_EQ(&v.bitwidth(row.width), &v);
        EXPECT_EQ(printed(v), row.want);
        EXPECT_FALSE(keeps_text(v));
    }
}

TEST(CrossingResize, NothingComesBackThatWasCutOff) {
    for (const unsigned wide : {65U, 96U, 100U, 128U}) {
        for (const unsigned narrow : {1U, 31U, 32U, 33U, 40U, 63U, 64U}) {
            SCOPED_TRACE(std::to_string(wide) + " bits by way of " + std::to_string(narrow));
            KVAL_UINTEGER v = full(wide);
            v.bitwidth(narrow);
            EXPECT_EQ(printed(v), printed(full(narrow)));
            v.bitwidth(wide);
            const unsigned low = narrow < 32 ? (1U << narrow) - 1 : kOnes;
            const unsigned high = narrow <= 32 ? 0 : narrow == 64 ? kOnes : (1U << (narrow - 32)) - 1;
            EXPECT_EQ(printed(v), printed(marked(from_words(wide, {low, high}, {low, high}, true), "ZLH")));
        }
    }
}

TEST(CrossingResize, UpAndDownAndUpAgain) {
    KVAL_UINTEGER v = from_words(40, {0x89ABCDEF, 0x12}, {1, 0x80});
    EXPECT_EQ(printed(v.bitwidth(65)), "65 bits 00000000 00000012 89ABCDEF x 00000000 00000080 00000001");
    v.set_bit(64, 1).set_bit(63, 1).set_x(62);
    EXPECT_EQ(printed(v.bitwidth(64)), "64 bits 80000012 89ABCDEF x 40000080 00000001 flags X");
    EXPECT_EQ(printed(v.bitwidth(128)),
              "128 bits 00000000 00000000 80000012 89ABCDEF x 00000000 00000000 40000080 00000001 flags X");
    EXPECT_EQ(printed(v.bitwidth(64)), "64 bits 80000012 89ABCDEF x 40000080 00000001 flags X");
    EXPECT_EQ(printed(v.bitwidth(8)), "8 bits 000000EF x 00000001 flags X");
    EXPECT_EQ(printed(v.bitwidth(64)), "64 bits 00000000 000000EF x 00000000 00000001 flags X");
    EXPECT_EQ(printed(v.bitwidth(65)), "65 bits 00000000 00000000 000000EF x 00000000 00000000 00000001 flags X");
}

// ---- copies, assignment, moves ----

TEST(CrossingCopy, OfAValueThatCrossedSharesNothing) {
    for (const unsigned former : kWidths) {
        for (const unsigned width : kWidths) {
            SCOPED_TRACE(std::to_string(former) + " bits that became " + std::to_string(width));
            KVAL_UINTEGER original = sample(former);
            original.bitwidth(width);
            const std::string before = printed(original);
            KVAL_UINTEGER copy(original);
            EXPECT_EQ(printed(copy), before);
            overwrite(original);
            EXPECT_EQ(printed(copy), before);
            EXPECT_EQ(printed(copy.bitwidth(128)), printed(sample(former < width ? former : width).bitwidth(128)));
        }
    }
}

struct AssignRow {
    const char* name;
    unsigned width;
    KVAL_UINTEGER source;
    const char* want;
};

// By copy and by move, into a target full of ones, X bits and flags.
TEST(CrossingAssign, TruncatesOrZeroExtendsIntoTheTargetsWidth) {
    const AssignRow rows[] = {
        {"8 bits into 65", 65, from_words(8, {0xA5}, {0x81}, true),
         "65 bits 00000000 00000000 000000A5 x 00000000 00000000 00000081 flags X"},
        {"32 bits into 100", 100, sample(32),
         "100 bits 00000000 00000000 00000000 89ABCDEF x 00000000 00000000 00000000 0F0000F1 flags XZ"},
        {"33 bits into 65", 65, sample(33), "65 bits 00000000 00000001 89ABCDEF x 00000000 00000001 0F0000F1 flags XZ"},
        {"40 bits into 96", 96, sample(40), "96 bits 00000000 00000079 89ABCDEF x 00000000 0000000F 0F0000F1 flags XZ"},
        {"63 bits into 65", 65, sample(63), "65 bits 00000000 12345679 89ABCDEF x 00000000 0F00000F 0F0000F1 flags XZ"},
        {"64 bits into 65", 65, sample(64), "65 bits 00000000 92345679 89ABCDEF x 00000000 8F00000F 0F0000F1 flags XZ"},
        {"64 bits into 128", 128, sample(64),
         "128 bits 00000000 00000000 92345679 89ABCDEF x 00000000 00000000 8F00000F 0F0000F1 flags XZ"},
        {"65 bits into 64", 64, sample(65), "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"65 bits into 63", 63, sample(65), "63 bits 12345679 89ABCDEF x 0F00000F 0F0000F1 flags XZ"},
        {"65 bits into 33", 33, sample(65), "33 bits 00000001 89ABCDEF x 00000001 0F0000F1 flags XZ"},
        {"65 bits into 32", 32, sample(65), "32 bits 89ABCDEF x 0F0000F1 flags XZ"},
        {"96 bits into 64", 64, sample(96), "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"100 bits into 64", 64, sample(100), "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"100 bits into 40", 40, sample(100), "40 bits 00000079 89ABCDEF x 0000000F 0F0000F1 flags XZ"},
        {"100 bits into 31", 31, sample(100), "31 bits 09ABCDEF x 0F0000F1 flags XZ"},
        {"100 bits into 1", 1, sample(100), "1 bits 00000001 x 00000001 flags XZ"},
        {"40 bits into 65: bits above the source's width come along (required)", 65,
         from_words(40, {7, 0xFFFFFF12}, {0, 0xF00}),
         "65 bits 00000000 FFFFFF12 00000007 x 00000000 00000F00 00000000"},
        {"8 bits into 100: bits above the source's width come along (required)", 100, from_words(8, {0x89ABCDEF}),
         "100 bits 00000000 00000000 00000000 89ABCDEF"},
        {"65 bits into 64: bits above the source's width go", 64, from_words(65, {1, 2, kOnes}),
         "64 bits 00000002 00000001"},
        {"65 bits into 40: word 1 is trimmed", 40, from_words(65, {1, 0xFFFFFF02, 1}, {0, 0xFFFFFF04, 0}),
         "40 bits 00000002 00000001 x 00000004 00000000"},
    };
    for (const AssignRow& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER target = full(row.width), source(row.source);
        cache_text(target);
        cache_text(source);
        EXPECT_EQ(&(target = source), &target);
        EXPECT_EQ(printed(target), row.want);
        EXPECT_FALSE(keeps_text(target));
        EXPECT_EQ(printed(source), printed(row.source));
        EXPECT_TRUE(keeps_text(source));

        KVAL_UINTEGER moved_to = full(row.width);
        EXPECT_EQ(&(moved_to = std::move(source)), &moved_to);
        EXPECT_EQ(printed(moved_to), row.want);
        source = 1U;
        EXPECT_EQ(printed(source), printed(KVAL_UINTEGER(1, row.source.bitwidth()))) << "alive, in its own width";
        EXPECT_EQ(printed(moved_to), row.want) << "nothing is shared with the source";
    }
}

TEST(CrossingMove, EveryPairOfWidths) {
    for (const unsigned left : kWidths) {
        for (const unsigned right : kWidths) {
            SCOPED_TRACE(std::to_string(left) + " and " + std::to_string(right) + " bits");
            KVAL_UINTEGER a = sample(left), b = from_words(right, {1, 1, 1, 1}, {2, 2, 2, 2});
            b.EnforceWidth();
            const std::string first = printed(a), second = printed(b);
            swap(a, b);
            EXPECT_EQ(printed(a), second);
            EXPECT_EQ(printed(b), first);
            std::swap<KVAL_UINTEGER>(a, b);
            EXPECT_EQ(printed(a), first);
            EXPECT_EQ(printed(b), second);
            KVAL_UINTEGER taken(std::move(a));
            EXPECT_EQ(printed(taken), first);
            a = std::move(b);
            EXPECT_EQ(printed(a), second) << "a moved-from target takes the width";
            EXPECT_EQ(printed(b.bitwidth(100)), "100 bits 00000000 00000000 00000000 00000000")
                << "moved from, resized";
            EXPECT_EQ(printed(a.bitwidth(128).bitwidth(right)), second);
            b = taken;
            EXPECT_EQ(printed(b), printed(sample(left).bitwidth(100))) << "a resized one keeps its width";
            overwrite(taken);
            EXPECT_EQ(printed(b), printed(sample(left).bitwidth(100)));
        }
    }
}

// ---- text ----

TEST(CrossingParse, SetsTheWidthFromTheText) {
    const auto run = [](std::size_t count, char digit) { return std::string(count, digit); };
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        std::string text;
        bool hexadecimal;
        const char* want;
    } rows[] = {
        {"100 bits become 64", sample(100), "fedcba9876543210", true, "64 bits FEDCBA98 76543210 flags XZ"},
        {"100 bits become 36", sample(100), "876543210", true, "36 bits 00000008 76543210 flags XZ"},
        {"100 bits become 32", sample(100), "76543210", true, "32 bits 76543210 flags XZ"},
        {"8 bits become 64", from_words(8, {0xA5}, {0x81}, true), "fedcba9876543210", true,
         "64 bits FEDCBA98 76543210 flags X"},
        {"8 bits become 68", from_words(8, {0xA5}, {0x81}), "afedcba9876543210", true,
         "68 bits 0000000A FEDCBA98 76543210"},
        {"64 bits become 68", sample(64), "afedcba9876543210", true, "68 bits 0000000A FEDCBA98 76543210 flags XZ"},
        {"40 bits become 128", sample(40), "89abcdef01234567fedcba9876543210", true,
         "128 bits 89ABCDEF 01234567 FEDCBA98 76543210 flags XZ"},
        {"64 bits stay 64", sample(64), run(16, '8'), true, "64 bits 88888888 88888888 flags XZ"},
        {"64 ones into 8 bits", from_words(8, {0}), run(64, '1'), false, "64 bits FFFFFFFF FFFFFFFF"},
        {"65 digits into 64 bits", sample(64), run(1, '1') + run(31, '0') + run(33, '1'), false,
         "65 bits 00000001 00000001 FFFFFFFF flags Z"},
        {"64 digits into 65 bits", sample(65), run(31, '0') + run(33, '1'), false, "64 bits 00000001 FFFFFFFF flags Z"},
        {"33 digits into 100 bits", sample(100), run(1, '1') + run(32, '0'), false,
         "33 bits 00000001 00000000 flags Z"},
        {"65 dashes: 40 bits keep what they hold", sample(40), run(65, '-'), false,
         "65 bits 00000000 00000079 89ABCDEF x 00000000 0000000F 0F0000F1 flags XZ"},
        {"64 dashes: 100 bits keep their low 64", sample(100), run(64, '-'), false,
         "64 bits 92345679 89ABCDEF x 8F00000F 0F0000F1 flags XZ"},
        {"64 digits, one X in word 1: flag X goes with the marks of word 0 (required)", sample(8),
         run(31, '0') + run(1, 'X') + run(32, '1'), false, "64 bits 00000000 FFFFFFFF x 00000001 00000000 flags Z"},
        {"64 digits, one X in word 0: flag X goes with the marks of word 1, and word 0 does not bring it back "
         "(required)",
         sample(8), run(32, '0') + run(31, '1') + run(1, 'X'), false,
         "64 bits 00000000 FFFFFFFF x 00000000 00000001 flags Z"},
        {"65 digits, one X on top: the same (required)", sample(8), run(1, 'X') + run(32, '0') + run(32, '1'), false,
         "65 bits 00000000 00000000 FFFFFFFF x 00000001 00000000 00000000 flags Z"},
        {"33 digits, one X on top, into 100 bits: the same (required)", sample(100), run(1, 'X') + run(32, '0'), false,
         "33 bits 00000001 00000000 x 00000001 00000000 flags Z"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        if (row.hexadecimal) {
            EXPECT_EQ(&v.set_value_from_hex_string(row.text.c_str()), &v);
            EXPECT_EQ(v.as_hex_string(), row.text);
        } else {
            EXPECT_EQ(&v.set_value_from_bin_string(row.text.c_str()), &v);
            EXPECT_EQ(v.as_bin_string(), row.text);
        }
        EXPECT_EQ(printed(v), row.want);
    }
}

// ---- comparison and hash ----

TEST(CrossingCompare, MissingWordsCountAs0) {
    const struct {
        const char* name;
        KVAL_UINTEGER left;
        KVAL_UINTEGER right;
        int order;
        bool equal;
    } rows[] = {
        {"2^64 - 1 and 2^64", from_words(64, {kOnes, kOnes}), from_words(65, {0, 0, 1}), -1, false},
        {"the same number in 64 and 65 bits", from_words(64, {5, 0x80000006}), from_words(65, {5, 0x80000006, 0}), 0,
         true},
        {"the same number in 33 and 100 bits", from_words(33, {5, 1}), from_words(100, {5, 1, 0, 0}), 0, true},
        {"the same number in 32 and 64 bits", from_words(32, {5}), from_words(64, {5, 0}), 0, true},
        {"2^32 - 1 and 2^32", from_words(32, {kOnes}), from_words(33, {0, 1}), -1, false},
        {"32 and 65 bits, word 1 decides", from_words(32, {kOnes}), from_words(65, {0, 1, 0}), -1, false},
        {"64 bits, the low words the other way round", from_words(64, {0, 0x80000001}),
         from_words(64, {kOnes, 0x80000000}), 1, false},
        {"40 and 96 bits, word 0 decides", from_words(40, {6, 7}), from_words(96, {5, 7, 0}), 1, false},
        {"a bit above 40 and the same word in 65 bits", from_words(40, {0, 0x100}), from_words(65, {0, 0x100, 0}), 0,
         true},
        {"a bit above 40 against 40 clean bits", from_words(40, {0, 0x100}), from_words(40, {kOnes, 0xFF}), 1, false},
        {"a bit above 8 against 64 bits", from_words(8, {0x100}), from_words(64, {0xFF, 0}), 1, false},
        {"X bits in word 1 of one", from_words(64, {5, 6}, {0, 1}), from_words(65, {5, 6, 0}), 0, false},
        {"X bits in word 2 of one", from_words(64, {5, 6}), from_words(65, {5, 6, 0}, {0, 0, 1}), 0, false},
        {"the same X bits", from_words(64, {5, 6}, {1, 2}, true), from_words(65, {5, 6, 0}, {1, 2, 0}, true), 0, true},
        {"another flag", marked(from_words(64, {5, 6}), "H"), from_words(65, {5, 6, 0}), 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const KVAL_UINTEGER &l = row.left, &r = row.right;
        EXPECT_EQ((l > r) - (l < r), row.order);
        EXPECT_EQ((r < l) - (r > l), row.order);
        EXPECT_EQ(l >= r, row.order >= 0);
        EXPECT_EQ(l <= r, row.order <= 0);
        EXPECT_EQ(l == r, row.equal);
        EXPECT_EQ(r == l, row.equal);
        EXPECT_EQ(l != r, !row.equal);
    }
}

TEST(CrossingCompare, TheHashCountsEveryWordOfTheWidth) {
    KVAL_UINTEGER v = from_words(64, {1, 2});
    EXPECT_EQ(v.get_hash(32), twang_uinthash(1) ^ twang_uinthash(2));
    EXPECT_EQ(v.bitwidth(65).get_hash(32), twang_uinthash(1) ^ twang_uinthash(2) ^ twang_uinthash(0));
    EXPECT_EQ(v.bitwidth(33).get_hash(32), twang_uinthash(1) ^ twang_uinthash(0));
    EXPECT_EQ(v.bitwidth(32).get_hash(32), twang_uinthash(1));
    EXPECT_EQ(from_words(40, {1, 0x102}).get_hash(0), twang_uinthash(1) ^ twang_uinthash(0x102))
        << "a bit above the width";
}

}  // namespace
