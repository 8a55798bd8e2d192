// Tests of the hash of a value and of the two hash functions, against results worked out apart from the library.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <type_traits>
#include <utility>

#include "kval.h"
#include "unit_support.h"

namespace {

using namespace std::string_literals;  // "..."s holds zero bytes

static_assert(std::is_same<decltype(twang_uinthash(0U)), unsigned>::value, "");
static_assert(std::is_same<decltype(one_at_a_time("", 0)), int>::value, "the hash is the signed state itself");
static_assert(std::is_same<decltype(std::declval<const KVAL_UINTEGER&>().get_hash(0U)), unsigned>::value, "");

TEST(Twang, MixesAWord) {
    const struct {
        unsigned key;
        unsigned hash;
    } rows[] = {
        {0x00000000, 0x4636B9C9}, {0x00000001, 0x62BAF5A0}, {0x00000002, 0xFF4D1170}, {0x00010000, 0x203A860C},
        {0x12345678, 0x09237EFD}, {0x7FFFFFFF, 0x7BA824B9}, {0x80000000, 0xA31BDCE4}, {0x89ABCDEF, 0xC6237166},
        {0xDEADBEEF, 0xCD42A50D}, {0xFFFFFFFF, 0xDC8B039A},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(twang_uinthash(row.key), row.hash) << std::hex << row.key;
    }
}

TEST(GetHash, MixesEveryWordAndKeepsTheLowBits) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        unsigned bits;
        unsigned hash;
    } rows[] = {
        {"compact, all bits", from_words(32, {0xDEADBEEF}), 32, 0xCD42A50D},
        {"0 bits: all, as for 32 (required)", from_words(32, {0xDEADBEEF}), 0, 0xCD42A50D},
        {"33 bits: all", from_words(32, {0xDEADBEEF}), 33, 0xCD42A50D},
        {"a negative count is large: all", from_words(32, {0xDEADBEEF}), 0xFFFFFFFF, 0xCD42A50D},
        {"31 bits", from_words(32, {0xDEADBEEF}), 31, 0x4D42A50D},
        {"16 bits", from_words(32, {0xDEADBEEF}), 16, 0x0000A50D},
        {"8 bits", from_words(32, {0xDEADBEEF}), 8, 0x0000000D},
        {"1 bit, set", from_words(32, {0xDEADBEEF}), 1, 1},
        {"1 bit, clear", from_words(32, {0x89ABCDEF}), 1, 0},
        {"zero", from_words(8, {0}), 32, 0x4636B9C9},
        {"the same word in another compact width", from_words(31, {0xAB}), 32, 0x71EC515E},
        {"8 bits wide", from_words(8, {0xAB}), 32, 0x71EC515E},
        {"a bit above the width is hashed", from_words(8, {0x1AB}), 32, 0xE9724CA4},
        {"40 bits whose word 1 is 0 hash that word too", from_words(40, {0x89ABCDEF, 0}), 32, 0x8015C8AF},
        {"the same word 0 in 32 bits hashes otherwise", from_words(32, {0x89ABCDEF}), 32, 0xC6237166},
        {"wide, low bits", from_words(40, {0x89ABCDEF, 0}), 8, 0xAF},
        {"equal words cancel", from_words(64, {1, 1}), 32, 0},
        {"three words", from_words(65, {1, 2, 3}), 32, 0xB607861F},
        {"three words, 31 bits", from_words(65, {1, 2, 3}), 31, 0x3607861F},
        {"the order of words does not matter", from_words(65, {3, 1, 2}), 0, 0xB607861F},
        {"wide zero", from_words(33, {0, 0}), 32, 0},
        {"words that were cut off are not hashed", from_words(128, {1, 2, ~0U, ~0U}).bitwidth(64), 32, 0x9DF7E4D0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.value.get_hash(row.bits), row.hash) << row.name;
    }
}

TEST(GetHash, IgnoresXMarksAndFlags) {
    EXPECT_EQ(from_words(8, {0xAB}, {0xFF}, true).get_hash(32), 0x71EC515EU);
    EXPECT_EQ(marked(from_words(8, {0xAB}), "ZLH").get_hash(32), 0x71EC515EU);
    EXPECT_EQ(marked(from_words(65, {1, 2, 3}, {~0U, ~0U, 1}, true), "ZLH").get_hash(32), 0xB607861FU);
}

TEST(GetHash, IgnoresTheWidthWhereTheWordsAreEqual) {
    EXPECT_EQ(KVAL_UINTEGER(0xAB, 8).get_hash(0), KVAL_UINTEGER(0xAB, 32).get_hash(0));
    EXPECT_EQ(from_words(33, {7, 1}).get_hash(0), from_words(64, {7, 1}).get_hash(0));
}

TEST(OneAtATime, HashesSignedBytesOnASignedState) {
    const struct {
        const char* name;
        std::string key;
        unsigned hash;
    } rows[] = {
        {"one letter", "a", 0xCA2E9442},
        {"another letter", "b", 0x00DB819B},
        {"three letters", "abc", 0xED131F5B},
        {"a zero byte", "\0"s, 0},
        {"a zero byte inside, right shifts keep the sign (required)", "a\0b"s, 0x8C01E716},
        {"right shifts keep the sign (required)", "The quick brown fox jumps over the lazy dog", 0x7647F758},
        {"right shifts keep the sign, once more (required)", "0123456789ABCDEF", 0x8AC35D69},
        {"the highest positive byte", "\x7F", 0xEAF3D5C4},
        {"0xFF adds -1, not 255 (required)", "\xFF", 0x124A2494},
        {"0x80 adds -128 (required)", "\x80", 0x2725CE27},
        {"0x80 and a zero byte", "\x80\0"s, 0x50CA9155},
        {"two bytes above 0x7F", "\xC3\xA9", 0xF5ACA6AE},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(static_cast<unsigned>(one_at_a_time(row.key.data(), static_cast<int>(row.key.size()))), row.hash)
            << row.name;
    }
}

TEST(OneAtATime, EveryByteOnce) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(static_cast<unsigned>(one_at_a_time(bytes.data(), 256)), 0x7C3CEE71U);
}

TEST(OneAtATime, ReadsNoFurtherThanTheLength) {
    EXPECT_EQ(one_at_a_time("abc", 1), one_at_a_time("a", 1));
    EXPECT_NE(one_at_a_time("abc", 2), one_at_a_time("abc", 3));
}

TEST(OneAtATime, NoLengthGivesZero) {
    for (const int length : {0, -1, INT_MIN}) {
        EXPECT_EQ(one_at_a_time("abc", length), 0) << length;
        EXPECT_EQ(one_at_a_time(nullptr, length), 0) << length;
    }
}

}  // namespace
