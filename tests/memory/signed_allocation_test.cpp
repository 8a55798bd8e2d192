// The allocations of signed values in plain numbers, for the cases where a block too many is most easily taken.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "heap.h"
#include "kval.h"

namespace {

template <typename Run>
std::size_t blocks_taken(Run run) {
    const std::size_t before = heap::allocations();
    run();
    return heap::allocations() - before;
}

KVAL_UINTEGER ones(unsigned width) { return ~KVAL_UINTEGER(0, width); }
KVAL_SINTEGER largest(unsigned width) { return ones(width - 1).bitwidth(width); }
KVAL_SINTEGER smallest(unsigned width) { return KVAL_UINTEGER(1, 1) << (width - 1); }
// All stored words are ones, up to the end of the top word.
KVAL_SINTEGER raw(unsigned width) {
    KVAL_SINTEGER v(0, width);
    v = ones(width + 32);
    return v;
}

TEST(SignedAllocationExamples, a_sum_or_difference_that_grows_takes_no_more_than_its_result_needs) {
    const struct {
        unsigned width;
        std::size_t blocks;
    } rows[] = {{8, 0}, {31, 0}, {32, 0}, {33, 0}, {63, 0}, {64, 2}, {65, 2}, {96, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        const unsigned grown = row.width + 1;
        const KVAL_SINTEGER most = largest(row.width);
        const KVAL_SINTEGER least = smallest(row.width);
        const KVAL_UINTEGER zero(0, row.width);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((most + most).bitwidth(), grown); }), row.blocks);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((least + least).bitwidth(), grown); }), row.blocks);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((most - least).bitwidth(), grown); }), row.blocks);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((least - most).bitwidth(), grown); }), row.blocks);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((least + zero).bitwidth(), grown); }), row.blocks);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((zero - least).bitwidth(), grown); }), row.blocks);
    }
}

TEST(SignedAllocationExamples, a_sum_that_grows_by_two_bits_takes_no_more_than_its_result_needs) {
    const struct {
        unsigned width;
        std::size_t blocks;
    } rows[] = {{31, 0}, {63, 2}, {95, 2}};
    const KVAL_SINTEGER raw_byte = raw(8);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.width);
        const unsigned grown = row.width + 2;
        const KVAL_SINTEGER zero(0, row.width);
        const KVAL_UINTEGER all = ones(row.width);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((zero + all).bitwidth(), grown); }), row.blocks);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((all + zero).bitwidth(), grown); }), row.blocks);
        // Bits above the width carry out of the word, and leave a sum that reads as not negative.
        const KVAL_SINTEGER most = raw(row.width);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((most + raw_byte).bitwidth(), grown); }), row.blocks);
    }
    // They grow by two bits as well, and fill the word.
    const KVAL_SINTEGER below_a_word = raw(30);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((below_a_word + raw_byte).bitwidth(), 32U); }), 0U);
    const KVAL_SINTEGER below_two_words = raw(62);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((below_two_words + raw_byte).bitwidth(), 64U); }), 0U);
}

TEST(SignedAllocationExamples, an_unsigned_minus_a_signed_value_with_a_small_result_takes_nothing) {
    const KVAL_UINTEGER five(5, 8);
    const KVAL_UINTEGER large_three(3, 100);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((five - KVAL_SINTEGER(3, 32)).bitwidth(), 8U); }), 0U);
    const KVAL_SINTEGER three(3, 100);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((five - three).bitwidth(), 8U); }), 0U);
    const KVAL_SINTEGER signed_five(5, 8);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large_three - signed_five).bitwidth(), 8U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large_three - KVAL_SINTEGER(2, 8)).bitwidth(), 100U); }), 2U);
    for (const KVAL_SINTEGER& negative : {KVAL_SINTEGER(-3, 100), raw(100)}) {
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((five - negative).bitwidth(), 9U); }), 0U);
        const KVAL_UINTEGER word(5, 32);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((word - negative).bitwidth(), 33U); }), 0U);
        const KVAL_UINTEGER pair(5, 64);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((pair - negative).bitwidth(), 65U); }), 2U);
    }
}

TEST(SignedAllocationExamples, a_large_value_shifted_right_until_it_is_small_takes_nothing) {
    for (const KVAL_SINTEGER& large : {KVAL_SINTEGER(5, 100), KVAL_SINTEGER(-5, 100), raw(100)}) {
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 36U).bitwidth(), 64U); }), 0U);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 67U).bitwidth(), 33U); }), 0U);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 68U).bitwidth(), 32U); }), 0U);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 200U).bitwidth(), 1U); }), 0U);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 35U).bitwidth(), 65U); }), 2U);
    }
}

TEST(SignedAllocationExamples, small_operands_with_a_large_product_take_its_arrays_and_at_most_a_temporary) {
    const KVAL_SINTEGER least = smallest(32);
    for (const unsigned width : {33U, 64U}) {
        const KVAL_SINTEGER left = smallest(width);
        const std::size_t taken = blocks_taken([&] { EXPECT_EQ((left * least).bitwidth(), width + 32); });
        EXPECT_GE(taken, 2U) << width;
        EXPECT_LE(taken, 3U) << width;
    }
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((least * least).bitwidth(), 64U); }), 0U);
    const KVAL_SINTEGER half = raw(16);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((half * half).bitwidth(), 32U); }), 0U);
}

TEST(SignedAllocationExamples, a_value_that_becomes_small_gives_its_arrays_back) {
    const std::size_t live = heap::live_blocks();
    for (const unsigned width : {64U, 33U, 32U, 1U}) {
        KVAL_SINTEGER v(-5, 100);
        EXPECT_EQ(heap::live_blocks(), live + 2);
        v.bitwidth(width);
        EXPECT_EQ(heap::live_blocks(), live) << width;
    }
    EXPECT_EQ(heap::take_damages(), 0U);
}

TEST(SignedAllocationExamples, a_division_by_zero_takes_the_arrays_of_its_result) {
    const KVAL_SINTEGER dividend(-5, 100);
    const KVAL_SINTEGER zero(0, 8);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((dividend / zero).bitwidth(), 100U); }), 2U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((dividend % zero).bitwidth(), 8U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ(posr_div(zero, KVAL_SINTEGER(0, 8)).bitwidth(), 8U); }), 0U);
    const KVAL_SINTEGER small_dividend(-5, 64);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((small_dividend / zero).bitwidth(), 64U); }), 0U);
}

TEST(SignedAllocationExamples, sorting_rotating_and_growing_a_vector_take_nothing_for_its_values) {
    std::vector<KVAL_SINTEGER> values;
    for (unsigned i = 0; i < 40; ++i) values.emplace_back(static_cast<int>(i * 37 % 41) - 20, 45 + i);
    values.shrink_to_fit();
    EXPECT_EQ(blocks_taken([&] { std::sort(values.begin(), values.end()); }), 0U);
    EXPECT_EQ(blocks_taken([&] { std::rotate(values.begin(), values.begin() + 7, values.end()); }), 0U);
    EXPECT_EQ(blocks_taken([&] { values.reserve(values.capacity() + 1); }), 1U);
}

}  // namespace
