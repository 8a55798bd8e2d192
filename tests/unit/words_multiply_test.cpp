// The product of word arrays against a reference that doubles and adds, one bit of an operand at a time.
#include "words/multiply.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <vector>

#include "words_support.h"

namespace {

using namespace words_support;

std::vector<Words> operands(std::mt19937& random, std::size_t size) {
    std::vector<Words> all = {Words(size, 0), Words(size, 0xFFFFFFFF), runs(random, size), runs(random, size)};
    if (size > 0) {
        Words highest(size, 0);
        highest.back() = 0x80000000;
        all.push_back(highest);
    }
    return all;
}

// sum += addend, which has no more words than the sum and whose carry stays within it.
void add_to(Words& sum, const Words& addend) {
    unsigned carry = 0;
    for (std::size_t bit = 0; bit < 32 * sum.size(); ++bit) {
        const unsigned own = sum[bit / 32] >> bit % 32 & 1;
        const unsigned other = bit < 32 * addend.size() ? addend[bit / 32] >> bit % 32 & 1 : 0;
        const unsigned ones = own + other + carry;
        sum[bit / 32] ^= (own ^ (ones & 1)) << bit % 32;
        carry = ones >> 1;
    }
}

// The full product: from the highest bit of `a` down, what there is so far is doubled, and `b` added for a 1.
Words product(const Words& a, const Words& b) {
    Words result(a.size() + b.size(), 0);
    for (std::size_t bit = 32 * a.size(); bit-- > 0;) {
        add_to(result, Words(result));
        if ((a[bit / 32] >> bit % 32 & 1) != 0) add_to(result, b);
    }
    return result;
}

TEST(WordsMultiply, EverySizeOfOperandsAndResult) {
    std::mt19937 random(41);
    for (std::size_t a_size = 0; a_size <= kMostWords; ++a_size) {
        for (std::size_t b_size = 0; b_size <= kMostWords; ++b_size) {
            const std::vector<Words> right = operands(random, b_size);
            std::size_t partner = 0;
            for (const Words& a : operands(random, a_size)) {
                const Words& b = right[partner++ % right.size()];
                const Words want = product(a, b), left = guarded(a), other = guarded(b);
                for (std::size_t size = 0; size <= a_size + b_size; ++size) {
                    const Words cut(want.begin(), want.begin() + static_cast<std::ptrdiff_t>(size));
                    Words out = guarded(Words(size, 0xA5A5A5A5));
                    kval::words::multiply(out.data() + 1, size, left.data() + 1, a_size, other.data() + 1, b_size);
                    ASSERT_EQ(out, guarded(cut)) << a_size << " words by " << b_size << ", cut to " << size;
                }
            }
        }
    }
}

TEST(WordsMultiply, Square) {
    std::mt19937 random(43);
    for (std::size_t size = 0; size <= kMostWords; ++size) {
        for (const Words& a : operands(random, size)) {
            const Words both = guarded(a);
            Words out = guarded(Words(2 * size, 0xA5A5A5A5));
            kval::words::multiply(out.data() + 1, 2 * size, both.data() + 1, size, both.data() + 1, size);
            ASSERT_EQ(out, guarded(product(a, a))) << size << " words";
        }
    }
}

// The square of 2^n - 1 is 2^2n - 2^(n+1) + 1: every partial product is its largest, and every carry is there.
TEST(WordsMultiply, AllOnes) {
    for (std::size_t size = 1; size <= 64; ++size) {
        const Words ones(size, 0xFFFFFFFF);
        Words want(2 * size, 0);
        want[0] = 1;
        for (std::size_t i = size; i < 2 * size; ++i) want[i] = 0xFFFFFFFF;
        want[size] = 0xFFFFFFFE;
        Words out(2 * size);
        kval::words::multiply(out.data(), 2 * size, ones.data(), size, ones.data(), size);
        EXPECT_EQ(out, want) << size << " words";
    }
}

}  // namespace
