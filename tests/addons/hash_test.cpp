// Tests of the hashes: what is == hashes alike, at every width and with every state, and what is not mostly differs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kval/hash.h"
#include "random/draw.h"
#include "random/run.h"
#include "support/twin.h"
#include "unit/unit_support.h"

namespace {

using twin::Content;
using twin::Twin;

std::size_t hash(const KVAL_UINTEGER& v) { return std::hash<KVAL_UINTEGER>()(v); }
std::size_t signed_hash(const KVAL_SINTEGER& v) { return std::hash<KVAL_SINTEGER>()(v); }

static_assert(std::is_nothrow_invocable_r_v<std::size_t, std::hash<KVAL_UINTEGER>, const KVAL_UINTEGER&>);
static_assert(std::is_nothrow_invocable_r_v<std::size_t, std::hash<KVAL_SINTEGER>, const KVAL_SINTEGER&>);
static_assert(std::is_default_constructible_v<std::hash<KVAL_UINTEGER>>);

unsigned draw_width(Draw& draw) { return draw.once_in(2) ? draw.one_of(boundary_widths()) : 1 + draw.below(140); }

// The same stored words at another width, the bits above it included.
Content at_width(Content content, unsigned width) {
    const std::size_t size = (width + 31) / 32;
    content.width = width;
    content.words.resize(size);
    content.mask.resize(size);
    return content;
}

TEST(Hash, WidthsDoNotCount) {
    for (const unsigned number : {0U, 1U, 5U, 0xFFFFFFFFU}) {
        const std::size_t required = hash(KVAL_UINTEGER(number, 32));
        for (const unsigned width : {33U, 64U, 65U, 96U, 97U, 1000U, 100000U})
            EXPECT_EQ(required, hash(KVAL_UINTEGER(number, width))) << number << " in " << width;
    }
    EXPECT_EQ(hash(KVAL_UINTEGER(5, 4)), hash(KVAL_UINTEGER(5, 100)));
    EXPECT_EQ(hash(from_words(65, {1, 2, 1})), hash(from_words(129, {1, 2, 1})));
    EXPECT_EQ(hash(from_words(40, {1, 2}, {0, 0x80})), hash(from_words(300, {1, 2}, {0, 0x80})));
}

TEST(Hash, NegativeNumbersAtEveryWidth) {
    for (const int number : {-1, -2, -3, -128}) {
        const std::size_t required = signed_hash(KVAL_SINTEGER(number, 8));
        for (const unsigned width : {9U, 31U, 32U, 33U, 40U, 63U, 64U, 65U, 96U, 97U, 1000U})
            EXPECT_EQ(required, signed_hash(KVAL_SINTEGER(number, width))) << number << " in " << width;
    }
    EXPECT_EQ(signed_hash(KVAL_SINTEGER(-1, 1)), signed_hash(KVAL_SINTEGER(-1, 128)));
    // Ones above the width or none: -3 in 40 bits either way.
    KVAL_SINTEGER trimmed(-3, 40);
    trimmed.EnforceWidth();
    EXPECT_EQ(signed_hash(KVAL_SINTEGER(-3, 40)), signed_hash(trimmed));
}

TEST(Hash, NegativeNumbersKnowNoXAndNoFlags) {
    KVAL_SINTEGER unknown(-3, 40);
    unknown.set_x(5);
    unknown.force_z();
    ASSERT_TRUE(unknown == KVAL_SINTEGER(-3, 8));
    EXPECT_EQ(signed_hash(KVAL_SINTEGER(-3, 8)), signed_hash(unknown));
}

TEST(Hash, SignedValuesThatAreNotNegativeHashAsTheirBits) {
    const KVAL_SINTEGER v(from_words(40, {7, 3}, {4, 0}, true));
    EXPECT_EQ(hash(v), signed_hash(v));
    EXPECT_NE(signed_hash(KVAL_SINTEGER(-1, 8)), signed_hash(KVAL_SINTEGER(255, 9)));
}

TEST(Hash, StatesDiffer) {
    const KVAL_UINTEGER plain(5, 8);
    std::set<std::size_t> seen = {hash(plain), hash(from_words(8, {5}, {1})), hash(from_words(8, {5}, {1}, true)),
                                  hash(from_words(8, {5}, {}, true)), hash(from_words(8, {5}, {4}))};
    for (const char* const letters : {"Z", "L", "H", "ZL", "ZH", "LH", "ZLH"})
        seen.insert(hash(marked(plain, letters)));
    EXPECT_EQ(12U, seen.size());
}

// Each of these is == to the first of its pair by the rules, whatever was drawn.
TEST(Hash, EqualUnsignedValues) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    for (unsigned i = 0; i < run_pairs(); ++i) {
        const Content content = draw_content(draw, draw_width(draw));
        const Twin a(content);
        const unsigned room = draw.below(100);
        const Twin b(at_width(content, static_cast<unsigned>(32 * content.words.size()) + room));
        const KVAL_UINTEGER& left = a.value;
        const KVAL_UINTEGER& right = b.value;
        ASSERT_TRUE(left == right) << twin::describe(left) << " and " << twin::describe(right);
        ASSERT_EQ(hash(left), hash(right)) << twin::describe(left) << " and " << twin::describe(right);
    }
}

TEST(Hash, EqualNegativeValues) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    for (unsigned i = 0; i < run_pairs(); ++i) {
        Content content = draw_content(draw, draw_width(draw));
        const unsigned sign = content.width - 1;
        content.words[sign / 32] |= 1U << sign % 32;
        const Twin a(content);
        KVAL_SINTEGER other = a.value;
        other.EnforceWidth();
        other.bitwidth(content.width + draw.below(100));  // continues the sign
        if (draw.once_in(2)) other.set_x(static_cast<int>(draw.below(content.width)));
        if (draw.once_in(2)) other.force_z();
        ASSERT_TRUE(a.value == other) << twin::describe(a.value) << " and " << twin::describe(other);
        ASSERT_EQ(signed_hash(a.value), signed_hash(other))
            << twin::describe(a.value) << " and " << twin::describe(other);
    }
}

TEST(Hash, WhateverIsEqualHashesAlike) {
    SCOPED_TRACE(replay_line());
    Draw draw(run_seed());
    unsigned equal = 0;
    unsigned signed_equal = 0;
    for (unsigned i = 0; i < run_pairs(); ++i) {
        const Content content = draw_content(draw, draw_width(draw));
        const Twin a(content);
        const unsigned width = std::max(content.width, draw_width(draw));
        const Twin b(draw.once_in(2) ? draw_similar(draw, width, content) : at_width(content, width));
        const KVAL_UINTEGER& left = a.value;
        const KVAL_UINTEGER& right = b.value;
        if (left == right) {
            ++equal;
            ASSERT_EQ(hash(left), hash(right)) << twin::describe(left) << " and " << twin::describe(right);
        }
        if (a.value == b.value) {
            ++signed_equal;
            ASSERT_EQ(signed_hash(a.value), signed_hash(b.value))
                << twin::describe(left) << " and " << twin::describe(right);
        }
    }
    EXPECT_GT(equal, run_pairs() / 10);
    EXPECT_GT(signed_equal, run_pairs() / 10);
}

// All pairs of all values of up to 3 bits, with all x-masks, flags X and Z, and two bits above the width.
TEST(Hash, EveryPairOfTinyValues) {
    std::vector<KVAL_SINTEGER> values;
    for (unsigned width = 1; width <= 3; ++width) {
        for (unsigned bits = 0; bits < 4U << width; ++bits) {
            for (unsigned mask = 0; mask < 1U << width; ++mask) {
                for (const char* const flags : {"", "X", "Z"})
                    values.push_back(Twin(Content{width, {bits}, {mask}, flags, {}}).value);
            }
        }
    }
    for (const KVAL_SINTEGER& a : values) {
        for (const KVAL_SINTEGER& b : values) {
            const KVAL_UINTEGER& left = a;
            const KVAL_UINTEGER& right = b;
            ASSERT_TRUE(left != right || hash(left) == hash(right)) << printed(a) << " and " << printed(b);
            ASSERT_TRUE(!(a == b) || signed_hash(a) == signed_hash(b)) << printed(a) << " and " << printed(b);
        }
    }
}

// ---- distribution ----

// That no two of so few hashes agree is not required of a hash; that many do would tell of bits that are lost. Hashes
// are the same in every run.
void expect_spread(const std::vector<std::size_t>& hashes, unsigned buckets) {
    EXPECT_EQ(hashes.size(), std::set<std::size_t>(hashes.begin(), hashes.end()).size());
    for (const unsigned shift : {0U, 16U, 32U, 48U}) {  // wherever a container takes its bits from
        std::vector<unsigned> count(buckets);
        for (const std::size_t one : hashes) ++count[(one >> shift) % buckets];
        // In so large a bucket none of them would be more than once in a million runs, were they drawn by lot.
        const double mean = static_cast<double>(hashes.size()) / buckets;
        EXPECT_LT(*std::max_element(count.begin(), count.end()), mean * 2) << shift;
        EXPECT_GT(*std::min_element(count.begin(), count.end()), mean / 3) << shift;
    }
}

TEST(Hash, SmallNumbersSpread) {
    std::vector<std::size_t> hashes;
    for (unsigned number = 0; number < 65536; ++number) hashes.push_back(hash(KVAL_UINTEGER(number, 32)));
    expect_spread(hashes, 512);
}

TEST(Hash, SmallSignedNumbersSpread) {
    std::vector<std::size_t> hashes;
    for (int number = -32768; number < 32768; ++number) hashes.push_back(signed_hash(KVAL_SINTEGER(number, 20)));
    expect_spread(hashes, 512);
}

TEST(Hash, MultiplesOfALargePowerSpread) {
    std::vector<std::size_t> hashes;
    for (unsigned number = 0; number < 16384; ++number)
        hashes.push_back(hash(from_words(128, {0, 0, 0, number << 16})));
    expect_spread(hashes, 128);
}

TEST(Hash, PairsOfWordsSpread) {
    std::vector<std::size_t> hashes;
    for (unsigned low = 0; low < 128; ++low) {
        for (unsigned high = 0; high < 128; ++high) hashes.push_back(hash(from_words(128, {low, 0, high, 0})));
    }
    expect_spread(hashes, 128);
}

TEST(Hash, PlacesOfOneBitSpread) {
    std::vector<std::size_t> hashes;
    for (int place = 0; place < 8192; ++place) {
        KVAL_UINTEGER v(0, 8192);
        v.set_bit(place, 1);
        hashes.push_back(hash(v));
        v.set_bit(place, 0);
        v.set_x(place);
        hashes.push_back(hash(v));
    }
    expect_spread(hashes, 128);
}

// ---- in use ----

TEST(Hash, UnorderedSetsOfValues) {
    std::unordered_set<KVAL_UINTEGER> seen;
    for (unsigned i = 0; i < 1000; ++i) seen.emplace(i, 10 + i % 100);
    EXPECT_EQ(1000U, seen.size());
    EXPECT_EQ(1U, seen.count(KVAL_UINTEGER(7, 4)));
    EXPECT_EQ(0U, seen.count(KVAL_UINTEGER(1000, 40)));
    EXPECT_EQ(0U, seen.count(marked(KVAL_UINTEGER(7, 17), "Z")));
    EXPECT_FALSE(seen.emplace(7U, 70U).second);
}

TEST(Hash, UnorderedMapsOfSignedValues) {
    std::unordered_map<KVAL_SINTEGER, std::string> names;
    names.emplace(KVAL_SINTEGER(-1, 4), "minus one");
    names.emplace(KVAL_SINTEGER(15, 8), "fifteen");
    names.emplace(KVAL_SINTEGER(-1, 80), "again");
    EXPECT_EQ(2U, names.size());
    EXPECT_EQ("minus one", names.at(KVAL_SINTEGER(-1, 1000)));
    EXPECT_EQ("fifteen", names.at(KVAL_SINTEGER(15, 5)));
}

TEST(Hash, MovedFromValuesHashAsZero) {
    for (const unsigned width : {8U, 80U}) {
        KVAL_SINTEGER moved(-1, width);
        const KVAL_SINTEGER taken(std::move(moved));
        EXPECT_EQ(hash(KVAL_UINTEGER(0, 8)), hash(moved));
        EXPECT_EQ(signed_hash(KVAL_SINTEGER(0, 8)), signed_hash(moved));
    }
}

TEST(Hash, KeepsTheCachedText) {
    KVAL_UINTEGER v(0x155, 65);
    cache_text(v);
    hash(v);
    signed_hash(v);
    EXPECT_TRUE(keeps_text(v));
}

}  // namespace
