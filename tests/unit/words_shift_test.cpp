// The shifts of word arrays against a reference that moves one bit at a time.
#include "words/shift.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "words_support.h"

namespace {

using namespace words_support;

// Every word boundary of the larger array with its neighbours, some in between, and counts far beyond it.
std::vector<std::size_t> counts(std::size_t words) {
    std::vector<std::size_t> all = {0,   1,   2,    7,          16,         30,         45,      77,
                                    150, 211, 1000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, SIZE_MAX};
    for (std::size_t boundary = 32; boundary <= 32 * (words + 1); boundary += 32) {
        all.insert(all.end(), {boundary - 1, boundary, boundary + 1});
    }
    return all;
}

Words left_shifted(const Words& in, std::size_t out_size, std::size_t count) {
    Words out(out_size, 0);
    for (std::size_t bit = count; bit < 32 * out_size && bit - count < 32 * in.size(); ++bit) {
        const std::size_t from = bit - count;
        out[bit / 32] |= (in[from / 32] >> from % 32 & 1) << bit % 32;
    }
    return out;
}

Words right_shifted(const Words& in, std::size_t out_size, std::size_t count) {
    Words out(out_size, 0);
    for (std::size_t from = count; from < 32 * in.size() && from - count < 32 * out_size; ++from) {
        const std::size_t bit = from - count;
        out[bit / 32] |= (in[from / 32] >> from % 32 & 1) << bit % 32;
    }
    return out;
}

// All that are short, and of the longer ones every number of limbs that a step of the loops may leave over, with and
// without an odd word.
std::vector<std::size_t> sizes() {
    std::vector<std::size_t> all = {12, 13, 14, 15, 16, 17, 20, 21, 26, 27};
    for (std::size_t size = 0; size <= kMostWords + 1; ++size) all.push_back(size);
    return all;
}

// Runs a shift into an array of its own and in place, where words that belong to the input alone stay as they are.
template <typename Kernel, typename Reference>
void check(Kernel kernel, Reference reference, const Words& in, std::size_t out_size, std::size_t count) {
    const Words want = reference(in, out_size, count);
    const Words from = guarded(in);
    Words out = guarded(Words(out_size, 0xA5A5A5A5));
    kernel(out.data() + 1, out_size, from.data() + 1, in.size(), count);
    ASSERT_EQ(out, guarded(want)) << in.size() << " words to " << out_size << " by " << count;

    Words place = in;
    place.resize(std::max(in.size(), out_size), 0xA5A5A5A5);
    Words want_place = place;
    std::copy(want.begin(), want.end(), want_place.begin());
    place = guarded(place);
    kernel(place.data() + 1, out_size, place.data() + 1, in.size(), count);
    ASSERT_EQ(place, guarded(want_place)) << in.size() << " words to " << out_size << " in place by " << count;
}

template <typename Kernel, typename Reference>
void check_all(Kernel kernel, Reference reference) {
    std::mt19937 random(29);
    for (const std::size_t in_size : sizes()) {
        for (const Words& in : {Words(in_size, 0xFFFFFFFF), runs(random, in_size), runs(random, in_size)}) {
            for (const std::size_t out_size : sizes()) {
                for (const std::size_t count : counts(std::max(in_size, out_size))) {
                    check(kernel, reference, in, out_size, count);
                    if (testing::Test::HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(WordsShift, Left) { check_all(kval::words::shift_left, left_shifted); }

TEST(WordsShift, Right) { check_all(kval::words::shift_right, right_shifted); }

// The reference is itself code that can be wrong, so a few results stand here as numbers.
TEST(WordsShift, ByHand) {
    const Words in = {0x80000001, 0xC0000003};
    Words out(3);
    kval::words::shift_left(out.data(), 3, in.data(), 2, 1);
    EXPECT_EQ(out, (Words{0x00000002, 0x80000007, 0x00000001}));
    kval::words::shift_left(out.data(), 3, in.data(), 2, 36);
    EXPECT_EQ(out, (Words{0x00000000, 0x00000010, 0x00000038}));
    kval::words::shift_right(out.data(), 3, in.data(), 2, 1);
    EXPECT_EQ(out, (Words{0xC0000000, 0x60000001, 0x00000000}));
    kval::words::shift_right(out.data(), 3, in.data(), 2, 36);
    EXPECT_EQ(out, (Words{0x0C000000, 0x00000000, 0x00000000}));
}

}  // namespace
