// Tests of random bits: randomize() against the generator, randomize(int) against a scripted rand().
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "kval.h"
#include "signed_support.h"

namespace {

/// What rand() gives next, and how often it was asked.
struct Script {
    std::vector<int> draws;
    std::size_t asked;
};
Script script;

/// The script for one call of randomize(int).
void play(std::vector<int> draws) {
    script.draws = std::move(draws);
    script.asked = 0;
}

}  // namespace

/// The test program's own rand(), to which the library's calls go. Beyond the script it counts from 0 up, so that every
/// loop ends.
int rand() noexcept {
    const std::size_t place = script.asked++;
    return place < script.draws.size() ? script.draws[place] : static_cast<int>(place - script.draws.size());
}

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

static_assert(std::is_same<decltype(std::declval<U&>().randomize()), U&>::value, "");
static_assert(std::is_same<decltype(std::declval<U&>().randomize(1)), U&>::value, "");
static_assert(noexcept(std::declval<U&>().randomize()), "");

/// The generator in a known state for the time of one test.
class Randomize : public testing::Test {
  protected:
    Randomize() : former_(kval_initstate(2024, state_, 256)) {}
    ~Randomize() override { EXPECT_NE(kval_setstate(former_), nullptr); }

    /// The next `count` numbers from the seed on; the generator then stands at the seed again.
    static std::vector<std::int64_t> NumbersAhead(int count) {
        kval_srandom(2024);
        std::vector<std::int64_t> numbers;
        for (int i = 0; i < count; ++i) {
            numbers.push_back(kval_random());
        }
        kval_srandom(2024);
        return numbers;
    }

  private:
    char state_[512];
    void* former_;
};

TEST_F(Randomize, TakesOneNumberAWordWord0First) {
    const struct {
        unsigned width;
        int draws;
        unsigned top_mask;
    } rows[] = {
        {1, 1, 1},           {5, 1, 0x1F},        {31, 1, 0x7FFFFFFF}, {32, 1, 0xFFFFFFFF}, {33, 2, 1},
        {63, 2, 0x7FFFFFFF}, {64, 2, 0xFFFFFFFF}, {65, 3, 1},          {70, 3, 0x3F},       {100, 4, 0xF},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        const std::vector<std::int64_t> numbers = NumbersAhead(row.draws + 1);
        U v(~0U, row.width);
        v.force_x();
        v.force_z();
        v.force_wl();
        v.force_wh();
        cache_text(v);
        EXPECT_EQ(&v.randomize(), &v);
        ASSERT_EQ(v.get_size(), row.draws);
        for (int i = 0; i < row.draws; ++i) {
            const unsigned mask = i == row.draws - 1 ? row.top_mask : ~0U;
            EXPECT_EQ(v.get_uvalue_at(i), static_cast<unsigned>(numbers[static_cast<std::size_t>(i)]) & mask)
                << "word " << i;
            EXPECT_EQ(v.get_xmask_at(i), 0U) << "word " << i;
        }
        EXPECT_EQ(flags(v), "");
        EXPECT_EQ(v.bitwidth(), row.width);
        EXPECT_FALSE(keeps_text(v));
        EXPECT_EQ(kval_random(), numbers.back()) << "no number more was taken";
    }
}

/// Draws `ahead` numbers from a state of `bytes` at an address out of alignment by `offset`, then one for each word of
/// a value, by randomize() or number by number, and then some more. Returns all but the first ones.
std::vector<unsigned> drawn_words(unsigned long bytes, std::size_t offset, int ahead, int words, bool by_randomize) {
    char state[512 + 8];
    void* const former = kval_initstate(7, state + offset, bytes);
    for (int i = 0; i < ahead; ++i) {
        kval_random();
    }
    std::vector<unsigned> drawn;
    if (by_randomize) {
        U v(0, 32U * static_cast<unsigned>(words));
        v.randomize();
        for (int i = 0; i < words; ++i) {
            drawn.push_back(v.get_uvalue_at(i));
        }
    }
    const int rest = 70 + (by_randomize ? 0 : words);
    for (int i = 0; i < rest; ++i) {
        drawn.push_back(static_cast<unsigned>(kval_random()));
    }
    EXPECT_EQ(kval_setstate(former), state + offset);
    return drawn;
}

TEST(RandomizeWide, OneNumberAWordFromEveryTypeAndPosition) {
    for (const unsigned long bytes : {8UL, 32UL, 64UL, 128UL, 256UL}) {
        for (int ahead = 0; ahead <= 65; ++ahead) {
            for (const int words : {2, 3, 7, 15, 16, 17, 31, 63, 64, 200}) {
                const std::size_t offset = static_cast<std::size_t>(ahead + words) % 8;
                ASSERT_EQ(drawn_words(bytes, offset, ahead, words, true),
                          drawn_words(bytes, offset, ahead, words, false))
                    << bytes << " bytes, position " << ahead << ", " << words << " words";
            }
        }
    }
}

TEST_F(Randomize, AFiveBitValueStaysBelow32) {
    U v(0, 5);
    for (int i = 0; i < 100; ++i) {
        EXPECT_TRUE(v.randomize() < 32U);
    }
}

TEST_F(Randomize, TrimsASignedValueToo) {
    const std::vector<std::int64_t> numbers = NumbersAhead(2);
    S v(-1, 40);
    v.randomize();
    EXPECT_EQ(v.get_uvalue_at(0), static_cast<unsigned>(numbers[0]));
    EXPECT_EQ(v.get_uvalue_at(1), static_cast<unsigned>(numbers[1]) & 0xFF);
}

TEST_F(Randomize, DoesNotAskRand) {
    play({});
    U(0, 100).randomize();
    EXPECT_EQ(script.asked, 0U);
}

TEST_F(Randomize, SomeBitsDoNotAskTheGenerator) {
    const std::vector<std::int64_t> numbers = NumbersAhead(1);
    play({});
    U v(0, 40);
    v.randomize(40);
    EXPECT_EQ(kval_random(), numbers[0]);
}

TEST(RandomizeSome, InvertsTheLowBitsInTheOrderDrawn) {
    const struct {
        const char* name;
        U value;
        int count;
        std::vector<int> draws;
        std::size_t asked;
        const char* expected;
    } rows[] = {
        {"all of 8 bits", U(0x0F, 8), 8, {7, 6, 5, 4, 3, 2, 1, 0}, 8, "8 bits 000000F0"},
        {"positions that were drawn before are drawn again",
         U(0x0F, 8),
         4,
         {0, 4, 1, 3, 7, 3, 2},
         7,
         "8 bits 00000000"},
        {"draws are taken modulo the count", U(0, 8), 3, {300, 301, 302}, 3, "8 bits 00000007"},
        {"the largest draws", U(0, 8), 3, {RAND_MAX, RAND_MAX - 1, RAND_MAX - 2}, 3, "8 bits 00000007"},
        {"one bit", U(0, 1), 1, {5}, 1, "1 bits 00000001"},
        {"one bit of many", U(0xFF, 8), 1, {5}, 1, "8 bits 000000FE"},
        {"nothing", U(0x0F, 8), 0, {}, 0, "8 bits 0000000F"},
        {"nothing, wide", U(0x0F, 40), 0, {}, 0, "40 bits 00000000 0000000F"},
        {"31 bits in order", U(0, 31), 31, {}, 31, "31 bits 7FFFFFFF"},
        {"32 bits in order", U(0, 32), 32, {}, 32, "32 bits FFFFFFFF"},
        {"33 bits in order", U(0, 33), 33, {}, 33, "33 bits 00000001 FFFFFFFF"},
        {"33 of 65 bits", from_words(65, {1, 2, 1}), 33, {32, 32, 0}, 3 + 32, "65 bits 00000001 00000003 FFFFFFFE"},
        {"31 of 40 bits", from_words(40, {0, 0x12}), 31, {}, 31, "40 bits 00000012 7FFFFFFF"},
        {"32 of 40 bits", from_words(40, {0, 0x12}), 32, {}, 32, "40 bits 00000012 FFFFFFFF"},
        {"64 bits in order", from_words(64, {1, 2}), 64, {}, 64, "64 bits FFFFFFFD FFFFFFFE"},
        {"65 bits in order", from_words(65, {1, 2, 0}), 65, {}, 65, "65 bits 00000001 FFFFFFFD FFFFFFFE"},
        {"X bits and flags stay",
         marked(from_words(8, {0x0F}, {0xAA}, true), "ZLH"),
         8,
         {},
         8,
         "8 bits 000000F0 x 000000AA flags XZLH"},
        {"wide X bits and flags stay",
         from_words(40, {1, 0}, {2, 3}, true),
         2,
         {},
         2,
         "40 bits 00000000 00000002 x 00000003 00000002 flags X"},
        {"bits above the width stay (required)", from_words(8, {0x10F}), 8, {}, 8, "8 bits 000001F0"},
        {"wide bits above the width stay (required)",
         from_words(40, {0, 0x100}),
         40,
         {},
         40,
         "40 bits 000001FF FFFFFFFF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        U v(row.value);
        play(row.draws);
        EXPECT_EQ(&v.randomize(row.count), &v);
        EXPECT_EQ(printed(v), row.expected);
        EXPECT_EQ(script.asked, row.asked);

        U with_text(row.value);
        cache_text(with_text);
        play(row.draws);
        with_text.randomize(row.count);
        EXPECT_EQ(printed(with_text), row.expected);
        EXPECT_TRUE(keeps_text(with_text)) << "the cached text stays (required)";
    }
}

TEST(RandomizeSome, TheOldTextStays) {
    U v(0x50, 8);
    EXPECT_STREQ(v.as_hex_string(), "50");
    play({});
    v.randomize(4);
    EXPECT_EQ(printed(v), "8 bits 0000005F");
    EXPECT_STREQ(v.as_hex_string(), "50") << "required";
    EXPECT_STREQ(v.as_bin_string(), "01011111");
}

TEST(RandomizeSome, ACountOutsideTheWidthChangesAndDrawsNothing) {
    for (const unsigned width : {1U, 8U, 32U, 40U, 64U}) {
        for (const int count : {-1, -8, static_cast<int>(width) + 1, 100, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
            SCOPED_TRACE(std::to_string(count) + " of " + std::to_string(width));
            U v = marked(from_words(width, {0x1}, {0x1}, true), "Z");
            const std::string before = printed(v);
            cache_text(v);
            play({});
            EXPECT_EQ(&v.randomize(count), &v);
            EXPECT_EQ(printed(v), before);
            EXPECT_TRUE(keeps_text(v));
            EXPECT_EQ(script.asked, 0U);
        }
    }
}

TEST(RandomizeSome, OfASignedValue) {
    S v(-1, 40);
    play({39, 0});
    v.randomize(40);
    EXPECT_EQ(printed(v), "40 bits FFFFFF00 00000000");
    EXPECT_EQ(script.asked, 2U + 39) << "the script, then 0 again and 1 to 38";
}

}  // namespace
