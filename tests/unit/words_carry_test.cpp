// The sums and differences of word arrays against a reference that works bit by bit.
#include "words/carry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

#include "words_support.h"

namespace {

using namespace words_support;

// The shapes that matter most, then runs.
std::vector<Words> operands(std::size_t size) {
    std::vector<Words> all = {Words(size, 0), Words(size, 0xFFFFFFFF), Words(size, 0x55555555)};
    if (size > 0) {
        Words lowest(size, 0), highest(size, 0), without_lowest(size, 0xFFFFFFFF);
        lowest.front() = 1;
        highest.back() = 0x80000000;
        without_lowest.front() = 0xFFFFFFFE;
        all.insert(all.end(), {lowest, highest, without_lowest});
    }
    std::mt19937 random(17);
    for (int i = 0; i < 16; ++i) all.push_back(runs(random, size));
    return all;
}

struct Reference {
    Words words;
    bool out;  // the carry or borrow out of the last word
};

bool bit_of(const Words& words, std::size_t bit) { return (words[bit / 32] >> bit % 32 & 1) != 0; }

Reference sum(const Words& a, const Words& b, bool carry) {
    Words words(a.size(), 0);
    for (std::size_t bit = 0; bit < 32 * a.size(); ++bit) {
        const int ones = int{bit_of(a, bit)} + int{bit_of(b, bit)} + int{carry};
        if (ones % 2 == 1) words[bit / 32] |= Word{1} << bit % 32;
        carry = ones >= 2;
    }
    return {words, carry};
}

Reference difference(const Words& a, const Words& b, bool borrow) {
    Words words(a.size(), 0);
    for (std::size_t bit = 0; bit < 32 * a.size(); ++bit) {
        const int rest = int{bit_of(a, bit)} - int{bit_of(b, bit)} - int{borrow};
        if (rest % 2 != 0) words[bit / 32] |= Word{1} << bit % 32;
        borrow = rest < 0;
    }
    return {words, borrow};
}

// Runs a kernel of two operands into an array of its own, into either operand, and on one array as all three.
template <typename Kernel>
void check_two(Kernel kernel, Reference (*reference)(const Words&, const Words&, bool)) {
    for (std::size_t size = 0; size <= kManyWords; ++size) {
        const std::vector<Words> all = operands(size);
        for (const Words& a : all) {
            for (const Words& b : all) {
                const Reference want = reference(a, b, false);
                Words left = guarded(a), right = guarded(b), out = guarded(Words(size, 0xA5A5A5A5));
                ASSERT_EQ(kernel(out.data() + 1, left.data() + 1, right.data() + 1, size), want.out) << size;
                ASSERT_EQ(out, guarded(want.words));
                ASSERT_EQ(left, guarded(a));
                ASSERT_EQ(right, guarded(b));

                ASSERT_EQ(kernel(left.data() + 1, left.data() + 1, right.data() + 1, size), want.out) << size;
                ASSERT_EQ(left, guarded(want.words));

                left = guarded(a);
                ASSERT_EQ(kernel(right.data() + 1, left.data() + 1, right.data() + 1, size), want.out) << size;
                ASSERT_EQ(right, guarded(want.words));
            }
            const Reference want = reference(a, a, false);
            Words both = guarded(a);
            Word* const words = both.data() + 1;
            ASSERT_EQ(kernel(words, words, words, size), want.out) << size;
            ASSERT_EQ(both, guarded(want.words));
        }
    }
}

// Runs a kernel of one operand and a carry or borrow into an array of its own and in place.
template <typename Kernel>
void check_one(Kernel kernel, Reference (*reference)(const Words&, const Words&, bool)) {
    for (std::size_t size = 0; size <= kManyWords; ++size) {
        for (const Words& a : operands(size)) {
            for (const bool in : {false, true}) {
                const Reference want = reference(a, Words(size, 0), in);
                Words same = guarded(a), out = guarded(Words(size, 0xA5A5A5A5));
                ASSERT_EQ(kernel(out.data() + 1, same.data() + 1, size, in), want.out) << size;
                ASSERT_EQ(out, guarded(want.words));
                ASSERT_EQ(same, guarded(a));

                ASSERT_EQ(kernel(same.data() + 1, same.data() + 1, size, in), want.out) << size;
                ASSERT_EQ(same, guarded(want.words));
            }
        }
    }
}

TEST(WordsCarry, Add) { check_two(kval::words::add, sum); }

TEST(WordsCarry, AddCarry) { check_one(kval::words::add_carry, sum); }

TEST(WordsCarry, Subtract) { check_two(kval::words::subtract, difference); }

TEST(WordsCarry, SubtractBorrow) { check_one(kval::words::subtract_borrow, difference); }

TEST(WordsCarry, ACarryTravelsThroughEveryWord) {
    for (std::size_t size = 1; size <= kManyWords; ++size) {
        Words one(size, 0);
        one.front() = 1;
        Words words(size, 0xFFFFFFFF);
        EXPECT_TRUE(kval::words::add(words.data(), words.data(), one.data(), size));
        EXPECT_EQ(words, Words(size, 0));
        EXPECT_TRUE(kval::words::subtract(words.data(), words.data(), one.data(), size));
        EXPECT_EQ(words, Words(size, 0xFFFFFFFF));
        EXPECT_TRUE(kval::words::add_carry(words.data(), words.data(), size, true));
        EXPECT_EQ(words, Words(size, 0));
        EXPECT_TRUE(kval::words::subtract_borrow(words.data(), words.data(), size, true));
        EXPECT_EQ(words, Words(size, 0xFFFFFFFF));
    }
}

// Of a carry that dies in the middle, the words above stay what they are, in place and in an array of their own.
TEST(WordsCarry, ACarryThatDiesLeavesTheWordsAboveAsTheyAre) {
    for (std::size_t size = 1; size <= kManyWords; ++size) {
        for (std::size_t last = 0; last < size; ++last) {
            Words full(size, 0x12345678), empty(full);
            std::fill_n(full.begin(), last, 0xFFFFFFFF);
            std::fill_n(empty.begin(), last, 0U);
            Words more(empty), less(full);
            more[last] = 0x12345679;
            less[last] = 0x12345677;
            Words out = guarded(Words(size, 0xA5A5A5A5));
            EXPECT_FALSE(kval::words::add_carry(out.data() + 1, full.data(), size, true));
            EXPECT_EQ(out, guarded(more)) << last << " of " << size;
            EXPECT_FALSE(kval::words::subtract_borrow(out.data() + 1, empty.data(), size, true));
            EXPECT_EQ(out, guarded(less)) << last << " of " << size;
        }
    }
}

// Whatever is behind the words: a further 0 is no part of the number.
TEST(WordsCarry, NegationEndsWithTheWords) {
    const Words zeros_and_more = {0, 0, 0, 7};
    for (std::size_t size = 0; size < 3; ++size) {
        Words out(4, 0xA5A5A5A5);
        Words want = out;
        std::fill_n(want.begin(), size, Word{0});
        kval::words::negate(out.data(), zeros_and_more.data(), size);
        EXPECT_EQ(out, want) << size << " words";
    }
}

TEST(WordsCarry, NoWordsPassTheCarryOn) {
    Word word = 5;
    EXPECT_FALSE(kval::words::add(&word, &word, &word, 0));
    EXPECT_FALSE(kval::words::subtract(&word, &word, &word, 0));
    for (const bool in : {false, true}) {
        EXPECT_EQ(kval::words::add_carry(&word, &word, 0, in), in);
        EXPECT_EQ(kval::words::subtract_borrow(&word, &word, 0, in), in);
    }
    EXPECT_EQ(word, 5U);
}

}  // namespace
