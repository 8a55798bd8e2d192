// Runs every operation around the word boundaries: nothing outside a block is written, nothing is read unwritten.
#include <gtest/gtest.h>

#include <vector>

#include "heap.h"
#include "operations.h"

namespace {

class Guard : public testing::TestWithParam<Theme> {};

const std::vector<unsigned> kWidths{31, 32, 33, 34, 63, 64, 65, 66, 95, 96, 97, 127, 128, 129};

TEST_P(Guard, stays_inside_its_blocks_and_ignores_what_fresh_memory_holds) {
    for_each_operation(GetParam(), kWidths, [](const Operation& operation, auto prepare, const std::string& name) {
        const auto run_over = [&](unsigned char pattern) {
            heap::fill_fresh_memory_with(pattern);
            Operands operands = prepare();
            operation.run(operands);
            return observe(operands);
        };
        EXPECT_EQ(run_over(0x00), run_over(0xA5)) << name;
        EXPECT_EQ(heap::take_damages(), 0U) << name;
    });
}

// The arrays of a kept pair hold what their last value left there.
TEST_P(Guard, gives_the_same_on_arrays_of_dead_values) {
    heap::fill_fresh_memory_with(0x00);
    for_each_operation(GetParam(), kWidths, [](const Operation& operation, auto prepare, const std::string& name) {
        const auto run = [&] {
            Operands operands = prepare();
            operation.run(operands);
            return observe(operands);
        };
        const Outcome on_fresh_arrays = run();
        {
            const heap::KeptArrays kept;
            run();
            EXPECT_EQ(run(), on_fresh_arrays) << name;
        }
        EXPECT_EQ(heap::take_damages(), 0U) << name;
    });
}

INSTANTIATE_TEST_SUITE_P(, Guard, testing::ValuesIn(all_themes()),
                         [](const auto& instance) { return instance.param.name; });

}  // namespace
