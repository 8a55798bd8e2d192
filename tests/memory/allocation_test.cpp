// Counts what every operation takes from the heap: nothing where the result is compact, two arrays where it is wide.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "heap.h"
#include "operations.h"

namespace {

class Allocation : public testing::TestWithParam<Theme> {};

TEST_P(Allocation, takes_the_stated_number_of_blocks) {
    const std::vector<unsigned> widths{1, 8, 31, 32, 33, 40, 64, 65, 96, 97, 100, 1000};
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
    } rows[] = {{8, 0}, {31, 0}, {32, 2}, {33, 2}, {63, 2}, {64, 2}, {96, 2}};
    for (const auto& row : rows) {
        const KVAL_UINTEGER left = ones(row.width);
        const KVAL_UINTEGER right(1, row.width);
        EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((left + right).bitwidth(), row.width + 1); }), row.blocks) << row.width;
    }
}

TEST(AllocationExamples, a_wide_value_shifted_right_into_compact_form_takes_nothing) {
    const KVAL_UINTEGER wide = ones(100);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((wide >> 68U).bitwidth(), 32U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((wide >> 200U).bitwidth(), 1U); }), 0U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((wide >> 67U).bitwidth(), 33U); }), 2U);
}

TEST(AllocationExamples, compact_operands_with_a_wide_product_take_its_arrays_and_at_most_a_temporary) {
    const KVAL_UINTEGER left = ones(32);
    const std::size_t taken = blocks_taken([&] { EXPECT_EQ((left * left).bitwidth(), 64U); });
    EXPECT_GE(taken, 2U);
    EXPECT_LE(taken, 3U);
    EXPECT_EQ(blocks_taken([&] { EXPECT_EQ((ones(16) * ones(16)).bitwidth(), 32U); }), 0U);
}

TEST(AllocationExamples, the_same_text_is_made_once) {
    const KVAL_UINTEGER v = ones(32);
    EXPECT_EQ(blocks_taken([&] { v.as_hex_string(); }), 1U);
    EXPECT_EQ(blocks_taken([&] { v.as_hex_string(); }), 0U);
    EXPECT_EQ(blocks_taken([&] { v.as_bin_string(); }), 1U);
    EXPECT_EQ(blocks_taken([&] { v.as_hex_string(); }), 1U);
}

std::vector<KVAL_UINTEGER> values_of_mixed_widths() {
    std::vector<KVAL_UINTEGER> values;
    for (unsigned i = 0; i < 40; ++i) values.emplace_back(i * 37 % 41, 20 + i);
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
        KVAL_UINTEGER wide = ones(100);
        wide.DeleteData();
        EXPECT_EQ(heap::live_blocks(), live);
    }
    EXPECT_EQ(heap::live_blocks(), live);
    EXPECT_EQ(heap::take_damages(), 0U);
}

}  // namespace
