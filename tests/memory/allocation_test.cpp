// Counts what every operation takes from the heap: nothing where the result is small, two arrays where it is large.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "heap.h"
#include "operations.h"

namespace {

class Allocation : public testing::TestWithParam<Theme> {};

TEST_P(Allocation, takes_the_stated_number_of_blocks) {
    const std::vector<unsigned> widths{1, 8, 31, 32, 33, 63, 64, 65, 96, 97, 100, 1000};
    for_each_operation(GetParam(), widths, [](const Operation& operation, auto prepare, const std::string& name) {
        Operands operands = prepare();
        const std::size_t before = heap::allocations();
        operation.run(operands);
        const std::size_t taken = heap::allocations() - before;
        const std::size_t stated = stated_allocations(operation, operands);
        EXPECT_GE(taken, stated) << name;
        EXPECT_LE(taken, stated + operation.temporaries) << name;
    });
}

TEST_P(Allocation, gives_every_block_back) {
    const std::vector<unsigned> widths{1, 32, 33, 64, 65, 100};
    for_each_operation(GetParam(), widths, [](const Operation& operation, auto prepare, const std::string& name) {
        const std::size_t before = heap::live_blocks();
        {
            Operands operands = prepare();
            operation.run(operands);
        }
        EXPECT_EQ(heap::live_blocks(), before) << name;
    });
    EXPECT_EQ(heap::take_damages(), 0U);
}

INSTANTIATE_TEST_SUITE_P(, Allocation, testing::ValuesIn(all_themes()),
                         [](const auto& instance) { return instance.param.name; });

template <typename Run>
std::size_t blocks_taken(Run run) {
    const std::size_t before = heap::allocations();
    run();
    return heap::allocations() - before;
}

KVAL_UINTEGER ones(unsigned width) { return ~KVAL_UINTEGER(0, width); }

// The same table in plain numbers, for the cases where a block too many is most easily taken.

TEST(AllocationExamples, a_sum_that_grows_takes_no_more_than_its_result_needs) {
    const struct {
        unsigned width;
        std::size_t blocks;
    } rows[] = {{8, 0}, {31, 0}, {32, 0}, {33, 0}, {63, 0}, {64, 2}, {65, 2}, {96, 2}};
    for (const auto& row : rows) {
        const KVAL_UINTEGER left = ones(row.width);
        const KVAL_UINTEGER right(1, row.width);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((left + right).bitwidth(), row.width + 1); }), row.blocks) << row.width;
    }
}

TEST(AllocationExamples, a_large_value_shifted_right_until_it_is_small_takes_nothing) {
    const KVAL_UINTEGER large = ones(100);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 36U).bitwidth(), 64U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 67U).bitwidth(), 33U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 68U).bitwidth(), 32U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 200U).bitwidth(), 1U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((large >> 35U).bitwidth(), 65U); }), 2U);
}

TEST(AllocationExamples, a_small_value_shifted_left_takes_arrays_from_65_bits_on) {
    const KVAL_UINTEGER small = ones(40);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((small << 24U).bitwidth(), 64U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((small << 25U).bitwidth(), 65U); }), 2U);
}

TEST(AllocationExamples, small_operands_with_a_large_product_take_its_arrays_and_at_most_a_temporary) {
    for (const auto& [left_width, right_width] : {std::pair(33U, 32U), std::pair(1U, 64U), std::pair(64U, 64U)}) {
        const KVAL_UINTEGER left = ones(left_width);
        const KVAL_UINTEGER right = ones(right_width);
        const unsigned width = left_width + right_width;
        const std::size_t taken = blocks_taken([&] { EXPECT_EQ((left * right).bitwidth(), width); });
        EXPECT_GE(taken, 2U) << width;
        EXPECT_LE(taken, 3U) << width;
    }
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((ones(32) * ones(32)).bitwidth(), 64U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((ones(33) * ones(31)).bitwidth(), 64U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((ones(16) * ones(16)).bitwidth(), 32U); }), 0U);
}

TEST(AllocationExamples, a_resized_value_takes_arrays_where_it_becomes_large_or_grows_in_words) {
    const struct {
        unsigned from;
        unsigned to;
        std::size_t blocks;
    } rows[] = {{8, 64, 0},  {32, 33, 0},  {33, 64, 0},   {8, 65, 2},   {40, 70, 2},  {64, 65, 2},
                {65, 96, 0}, {70, 100, 2}, {100, 128, 0}, {100, 70, 0}, {100, 40, 0}, {100, 8, 0}};
    for (const auto& row : rows) {
        KVAL_UINTEGER v = ones(row.from);
        EXPECT_EQ(blocks_taken([&] { v.bitwidth(row.to); }), row.blocks) << row.from << " to " << row.to;
    }
}

TEST(AllocationExamples, a_value_that_becomes_small_gives_its_arrays_back) {
    const std::size_t live = heap::live_blocks();
    for (const unsigned width : {64U, 33U, 32U, 1U}) {
        KVAL_UINTEGER v = ones(100);
        EXPECT_EQ(heap::live_blocks(), live + 2);
        v.bitwidth(width);
        EXPECT_EQ(heap::live_blocks(), live) << width;
    }
    EXPECT_EQ(heap::take_damages(), 0U);
}

TEST(AllocationExamples, the_same_text_is_made_once) {
    for (const unsigned width : {32U, 64U, 65U}) {
        SCOPED_TRACE(width);
        const KVAL_UINTEGER v = ones(width);
        EXPECT_EQ(blocks_taken([&] { v.as_hex_string(); }), 1U);
        EXPECT_EQ(blocks_taken([&] { v.as_hex_string(); }), 0U);
        EXPECT_EQ(blocks_taken([&] { v.as_bin_string(); }), 1U);
        EXPECT_EQ(blocks_taken([&] { v.as_hex_string(); }), 1U);
    }
}

// Small and large ones.
std::vector<KVAL_UINTEGER> values_of_mixed_widths() {
    std::vector<KVAL_UINTEGER> values;
    for (unsigned i = 0; i < 40; ++i) values.emplace_back(i * 37 % 41, 45 + i);
    return values;
}

TEST(AllocationExamples, sorting_rotating_and_growing_a_vector_take_nothing_for_its_values) {
    std::vector<KVAL_UINTEGER> values = values_of_mixed_widths();
    values.shrink_to_fit();
    EXPECT_EQ(blocks_taken([&] { std::sort(values.begin(), values.end()); }), 0U);
    EXPECT_EQ(blocks_taken([&] { std::rotate(values.begin(), values.begin() + 7, values.end()); }), 0U);
    EXPECT_EQ(blocks_taken([&] { values.reserve(values.capacity() + 1); }), 1U);
}

TEST(AllocationExamples, released_data_is_not_released_again) {
    const std::size_t live = heap::live_blocks();
    {
        KVAL_UINTEGER large = ones(100);
        large.DeleteData();
        EXPECT_EQ(heap::live_blocks(), live);
    }
    EXPECT_EQ(heap::live_blocks(), live);
    EXPECT_EQ(heap::take_damages(), 0U);
}

}  // namespace
