// The product of word arrays against long multiplication word by word: of each method from its smallest sizes on, with
// each of the row loops, and of the sizes round which one method takes over from another.
#include "words/multiply.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "words/multiply_parts.h"
#include "words_support.h"

namespace {

using namespace words_support;
using kval::words::MultiplyPlan;
using kval::words::RowLoops;

constexpr Word kOnes = 0xFFFFFFFF;
constexpr Word kUnwritten = 0xA5A5A5A5;
constexpr std::size_t kNever = ~std::size_t{0};

std::vector<Words> operands(std::mt19937& random, std::size_t size) {
    std::vector<Words> all = {Words(size, 0), Words(size, kOnes), runs(random, size), runs(random, size)};
    if (size > 0) {
        Words highest(size, 0);
        highest.back() = 0x80000000;
        all.push_back(highest);
        Words middle(size, 0);  // of three parts, the sum of the outer ones is less
        std::fill(middle.begin() + static_cast<std::ptrdiff_t>(size / 3),
                  middle.begin() + static_cast<std::ptrdiff_t>((2 * size + 2) / 3), kOnes);
        all.push_back(middle);
        Words sparse(size, 0);
        sparse[random() % size] = Word{1} << random() % 32;
        sparse[random() % size] |= Word{1} << random() % 32;
        all.push_back(sparse);
    }
    return all;
}

Words product(const Words& a, const Words& b) {
    Words result(a.size() + b.size(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            carry += std::uint64_t{a[i]} * b[j] + result[i + j];
            result[i + j] = static_cast<Word>(carry);
            carry >>= 32;
        }
        result[i + b.size()] = static_cast<Word>(carry);
    }
    return result;
}

Words fitted(Words words, std::size_t size) {
    words.resize(size, 0);
    return words;
}

// Multiplies between guard words, with exactly the scratch that is asked for; `b` may be the same array as `a`.
Words multiplied(const Words& a, const Words& b, std::size_t size) {
    const Words left = guarded(a);
    const Words other = guarded(b);
    const Words& right = &a == &b ? left : other;
    Words scratch = guarded(Words(kval::words::multiply_scratch(size, a.size(), b.size()), kUnwritten));
    Words out = guarded(Words(size, kUnwritten));
    kval::words::multiply(out.data() + 1, size, left.data() + 1, a.size(), right.data() + 1, b.size(),
                          scratch.data() + 1);
    EXPECT_EQ(scratch.front(), guarded({}).front());
    EXPECT_EQ(scratch.back(), guarded({}).back());
    return out;
}

Words multiplied(const MultiplyPlan& plan, const Words& a, const Words& b) {
    const Words left = guarded(a);
    const Words right = guarded(b);
    Words scratch = guarded(Words(plan.scratch(a.size(), b.size()), kUnwritten));
    Words out = guarded(Words(a.size() + b.size(), kUnwritten));
    plan.multiply(out.data() + 1, left.data() + 1, a.size(), right.data() + 1, b.size(), scratch.data() + 1);
    EXPECT_EQ(scratch.front(), guarded({}).front());
    EXPECT_EQ(scratch.back(), guarded({}).back());
    return out;
}

TEST(WordsMultiply, EverySizeOfOperandsAndResult) {
    std::mt19937 random(41);
    for (std::size_t a_size = 0; a_size <= 2 * kMostWords; ++a_size) {
        for (std::size_t b_size = 0; b_size <= 2 * kMostWords; ++b_size) {
            const std::vector<Words> right = operands(random, b_size);
            std::size_t partner = 0;
            for (const Words& a : operands(random, a_size)) {
                const Words& b = right[partner++ % right.size()];
                const Words want = product(a, b);
                for (std::size_t size = 0; size <= a_size + b_size + 3; ++size) {
                    ASSERT_EQ(multiplied(a, b, size), guarded(fitted(want, size)))
                        << a_size << " words by " << b_size << ", cut to " << size;
                }
            }
        }
    }
}

TEST(WordsMultiply, Square) {
    std::mt19937 random(43);
    for (std::size_t size : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 17, 60, 61, 450}) {
        for (const Words& a : operands(random, size)) {
            ASSERT_EQ(multiplied(a, a, 2 * size), guarded(product(a, a))) << size << " words";
        }
    }
}

// The square of 2^n - 1 is 2^2n - 2^(n+1) + 1: every partial product is its largest, and every carry is there.
TEST(WordsMultiply, AllOnes) {
    std::vector<std::size_t> sizes = {399, 400, 401, 1199, 1200, 1201, 2500, 7000};
    for (std::size_t size = 1; size <= 110; ++size) sizes.push_back(size);
    for (std::size_t size : sizes) {
        const Words ones(size, kOnes);
        Words want(2 * size, kOnes);
        want[0] = 1;
        std::fill_n(want.begin() + 1, size - 1, 0U);
        want[size] = kOnes - 1;
        EXPECT_EQ(multiplied(ones, Words(ones), 2 * size), guarded(want)) << size << " words";
    }
}

TEST(WordsMultiply, LongOperandsAndCutsOfAFewWords) {
    std::mt19937 random(47);
    const std::vector<std::size_t> sizes = {1,  2,   30,  46,  47,  48,  49,  50,  70,
                                            96, 267, 268, 398, 399, 400, 401, 402, 1001};
    for (std::size_t a_size : sizes) {
        for (std::size_t b_size : sizes) {
            const std::vector<Words> left = operands(random, a_size);
            const std::vector<Words> right = operands(random, b_size);
            const Words& a = left[random() % left.size()];
            const Words& b = right[random() % right.size()];
            const Words want = product(a, b);
            const std::size_t whole = a_size + b_size;
            for (std::size_t size : {whole, whole - 1, whole - 2, whole + 1}) {
                ASSERT_EQ(multiplied(a, b, size), guarded(fitted(want, size)))
                    << a_size << " words by " << b_size << ", cut to " << size;
            }
        }
    }
}

TEST(WordsMultiply, FactorsOf1024BitsNeedNoScratch) {
    EXPECT_EQ(kval::words::multiply_scratch(64, 32, 32), 0U);
    EXPECT_EQ(kval::words::multiply_scratch(1032, 1000, 32), 0U);
    EXPECT_EQ(kval::words::multiply_scratch(1032, 32, 1000), 0U);
}

struct Plan {
    const char* name;
    std::size_t karatsuba;
    std::size_t toom;
    bool plain;
    MultiplyPlan plan() const {
        return {karatsuba, toom, plain ? kval::words::plain_row_loops() : kval::words::row_loops()};
    }
};

void PrintTo(const Plan& plan, std::ostream* out) { *out << plan.name; }

class WordsMultiplyBy : public testing::TestWithParam<Plan> {};

TEST_P(WordsMultiplyBy, AgreesWithLongMultiplicationWordByWord) {
    const MultiplyPlan plan = GetParam().plan();
    std::mt19937 random(53);
    for (std::size_t a_size = 1; a_size <= 90; ++a_size) {
        for (std::size_t b_size = 1; b_size <= a_size; b_size += 1 + b_size / 16) {
            const std::vector<Words> right = operands(random, b_size);
            for (const Words& a : operands(random, a_size)) {
                const Words& b = right[random() % right.size()];
                ASSERT_EQ(multiplied(plan, a, b), guarded(product(a, b))) << a_size << " words by " << b_size;
            }
        }
    }
}

TEST_P(WordsMultiplyBy, VeryUnequalFactors) {
    const MultiplyPlan plan = GetParam().plan();
    std::mt19937 random(59);
    for (std::size_t a_size : {500, 501, 640}) {
        for (std::size_t b_size = 1; b_size <= 120; b_size += 7) {
            const std::vector<Words> right = operands(random, b_size);
            for (const Words& a : operands(random, a_size)) {
                const Words& b = right[random() % right.size()];
                const Words want = guarded(product(a, b));
                ASSERT_EQ(multiplied(plan, a, b), want) << a_size << " words by " << b_size;
                ASSERT_EQ(multiplied(plan, b, a), want) << b_size << " words by " << a_size;
            }
        }
    }
}

// In three parts, a factor's value at -1 is 0, and those at 1 and 2 have their largest carries.
TEST_P(WordsMultiplyBy, EqualAndBalancingParts) {
    const MultiplyPlan plan = GetParam().plan();
    for (std::size_t part = 1; part <= 20; ++part) {
        for (Word outer : {Word{1}, Word{0x7FFFFFFF}, kOnes}) {
            Words a(3 * part, outer);
            const Words ones(3 * part, kOnes);
            ASSERT_EQ(multiplied(plan, a, ones), guarded(product(a, ones))) << "parts of " << part << " words";
            std::fill_n(a.begin() + static_cast<std::ptrdiff_t>(part), part, 2 * outer);
            ASSERT_EQ(multiplied(plan, a, ones), guarded(product(a, ones))) << "parts of " << part << " words";
            ASSERT_EQ(multiplied(plan, a, a), guarded(product(a, a))) << "parts of " << part << " words";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, WordsMultiplyBy,
                         testing::Values(Plan{"Long", kNever, kNever, false}, Plan{"LongPlain", kNever, kNever, true},
                                         Plan{"Karatsuba", 4, kNever, false}, Plan{"KaratsubaFrom9", 9, kNever, true},
                                         Plan{"Toom", 4, 24, false}, Plan{"ToomOverLong", 24, 24, true},
                                         Plan{"ToomOverKaratsuba", 9, 60, false}),
                         [](const auto& test) { return std::string(test.param.name); });

class WordsMultiplyRows : public testing::TestWithParam<bool> {
  protected:
    const RowLoops& loops() const { return GetParam() ? kval::words::plain_row_loops() : kval::words::row_loops(); }
};

TEST_P(WordsMultiplyRows, WriteAndAddProducts) {
    constexpr std::size_t kRowWords = 2 * kval::words::kRows;
    std::mt19937 random(61);
    for (std::size_t limbs = 1; limbs <= 11; ++limbs) {
        for (const Words& a : operands(random, 2 * limbs)) {
            for (const Words& b : operands(random, kRowWords)) {
                const Words left = guarded(a), right = guarded(b);
                Words out = guarded(Words(2 * limbs + kRowWords, kUnwritten));
                loops().multiply(out.data() + 1, left.data() + 1, limbs, right.data() + 1);
                Words sum = product(a, b);
                ASSERT_EQ(out, guarded(sum)) << limbs << " limbs";

                std::fill_n(out.begin() + 1, 2 * limbs, kOnes);  // the largest sum; what is above is not read
                loops().add(out.data() + 1, left.data() + 1, limbs, right.data() + 1);
                std::uint64_t carry = 0;
                for (std::size_t i = 0; i < sum.size(); ++i) {
                    carry += std::uint64_t{sum[i]} + (i < 2 * limbs ? kOnes : 0);
                    sum[i] = static_cast<Word>(carry);
                    carry >>= 32;
                }
                ASSERT_EQ(out, guarded(sum)) << limbs << " limbs";
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Loops, WordsMultiplyRows, testing::Values(false, true),
                         [](const auto& test) { return test.param ? "Plain" : "Fastest"; });

}  // namespace
