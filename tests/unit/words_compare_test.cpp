// The comparisons of word arrays against a reference that looks at one bit at a time.
#include "words/compare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

#include "words_support.h"

namespace {

using namespace words_support;

// Less than 0, 0 or more than 0, decided by the highest bit that differs.
int order(const Words& a, const Words& b) {
    const auto bit_of = [](const Words& words, std::size_t bit) {
        return bit / 32 < words.size() ? static_cast<int>(words[bit / 32] >> bit % 32 & 1) : 0;
    };
    for (std::size_t bit = 32 * std::max(a.size(), b.size()); bit-- > 0;) {
        if (bit_of(a, bit) != bit_of(b, bit)) return bit_of(a, bit) - bit_of(b, bit);
    }
    return 0;
}

int sign(int number) { return number < 0 ? -1 : number > 0 ? 1 : 0; }

// Both kernels on one pair, in both orders.
void check(const Words& a, const Words& b) {
    using kval::words::compare;
    using kval::words::equal;
    const Words left = guarded(a), right = guarded(b);
    const Word* const l = left.data() + 1;
    const Word* const r = right.data() + 1;
    const int want = order(a, b);
    ASSERT_EQ(sign(compare(l, a.size(), r, b.size())), want) << a.size() << " and " << b.size();
    ASSERT_EQ(sign(compare(r, b.size(), l, a.size())), -want) << b.size() << " and " << a.size();
    ASSERT_EQ(equal(l, a.size(), r, b.size()), want == 0) << a.size() << " and " << b.size();
    ASSERT_EQ(equal(r, b.size(), l, a.size()), want == 0) << b.size() << " and " << a.size();
}

// Every pair of sizes: unrelated words, the same words cut or extended by zeros, and those with any one bit changed.
TEST(WordsCompare, EveryPairOfSizes) {
    std::mt19937 random(53);
    for (std::size_t a_size = 0; a_size <= kMostWords; ++a_size) {
        for (std::size_t b_size = 0; b_size <= kMostWords; ++b_size) {
            for (const Words& a : {Words(a_size, 0), Words(a_size, 0xFFFFFFFF), runs(random, a_size)}) {
                check(a, runs(random, b_size));
                Words b = a;
                b.resize(b_size, 0);
                check(a, b);
                for (std::size_t bit = 0; bit < 32 * b_size; ++bit) {
                    b[bit / 32] ^= Word{1} << bit % 32;
                    check(a, b);
                    b[bit / 32] ^= Word{1} << bit % 32;
                }
            }
        }
    }
}

// Arrays that long loops go through: one bit of any word is changed, at the ends of the word and inside.
TEST(WordsCompare, OneBitInAnyWordOfMany) {
    std::mt19937 random(61);
    for (std::size_t a_size = kMostWords + 1; a_size <= kManyWords; ++a_size) {
        for (const std::size_t b_size : {a_size, a_size + 1, a_size + 17}) {
            for (const Words& a : {Words(a_size, 0), Words(a_size, 0xFFFFFFFF), runs(random, a_size)}) {
                Words b = a;
                b.resize(b_size, 0);
                check(a, b);
                for (std::size_t word = 0; word < b_size; ++word) {
                    for (const unsigned bit : {0U, static_cast<unsigned>(1 + random() % 30), 31U}) {
                        b[word] ^= Word{1} << bit;
                        check(a, b);
                        b[word] ^= Word{1} << bit;
                    }
                }
            }
        }
    }
}

// The highest difference decides, whatever the words below it say.
TEST(WordsCompare, UnrelatedWordsBelowTheDifference) {
    std::mt19937 random(67);
    for (std::size_t size = 1; size <= kManyWords; ++size) {
        for (std::size_t highest = 0; highest < size; ++highest) {
            Words a = runs(random, size), b(a);
            for (std::size_t word = 0; word < highest; ++word) {
                a[word] = static_cast<Word>(random());
                b[word] = static_cast<Word>(random());
            }
            b[highest] = ~a[highest];
            check(a, b);
        }
    }
}

TEST(WordsCompare, AnArrayWithItself) {
    std::mt19937 random(59);
    for (std::size_t size = 1; size <= kManyWords; ++size) {
        const Words a = runs(random, size);
        EXPECT_TRUE(kval::words::equal(a.data(), size, a.data(), size)) << size << " words";
        EXPECT_EQ(kval::words::compare(a.data(), size, a.data(), size), 0) << size << " words";
    }
}

TEST(WordsCompare, TheHighestDifferingWordDecides) {
    const Words a = {0x00000000, 0xFFFFFFFF, 0x80000000};
    const Words b = {0xFFFFFFFF, 0x00000000, 0x80000000};
    EXPECT_GT(kval::words::compare(a.data(), 3, b.data(), 3), 0);
    EXPECT_LT(kval::words::compare(a.data(), 1, b.data(), 3), 0);
    EXPECT_GT(kval::words::compare(a.data(), 3, b.data(), 2), 0);
    EXPECT_FALSE(kval::words::equal(a.data(), 3, b.data(), 3));
}

TEST(WordsCompare, AllZero) {
    for (std::size_t size = 0; size <= kManyWords; ++size) {
        Words words = guarded(Words(size, 0));
        EXPECT_TRUE(kval::words::all_zero(words.data() + 1, size)) << size << " words";
        for (std::size_t bit = 0; bit < 32 * size; ++bit) {
            words[1 + bit / 32] = Word{1} << bit % 32;
            ASSERT_FALSE(kval::words::all_zero(words.data() + 1, size)) << "bit " << bit << " of " << size;
            words[1 + bit / 32] = 0;
        }
    }
}

}  // namespace
