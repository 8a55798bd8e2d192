// Lets every allocation of every operation fail: std::bad_alloc comes through, and everything is as it was.
#include <gtest/gtest.h>

#include <new>
#include <vector>

#include "heap.h"
#include "operations.h"

namespace {

template <typename Run>
bool fails(std::size_t nth_allocation, Run run) {
    const heap::FailingAllocation failing(nth_allocation);
    try {
        run();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

std::vector<const char*> cached_texts(const Operands& operands) {
    std::vector<const char*> texts;
    for (const KVAL_UINTEGER* operand : operands.all()) texts.push_back(cached_text(*operand));
    return texts;
}

class Failure : public testing::TestWithParam<Theme> {};

TEST_P(Failure, changes_nothing_and_can_be_repaired) {
    std::size_t failures = 0;
    const std::vector<unsigned> widths{32, 33, 64, 65, 100, 1000};
    for_each_operation(GetParam(), widths, [&](const Operation& operation, auto prepare, const std::string& name) {
        Operands undisturbed = prepare();
        const std::size_t before = heap::allocations();
        operation.run(undisturbed);
        const std::size_t allocations = heap::allocations() - before;

        for (std::size_t n = 1; n <= allocations; ++n) {
            SCOPED_TRACE(name + ", allocation " + std::to_string(n));
            Operands operands = prepare();
            const Outcome untouched = observe(operands);
            const std::vector<const char*> texts = cached_texts(operands);
            const std::size_t live = heap::live_blocks();

            const bool failed = fails(n, [&] { operation.run(operands); });
            const std::size_t live_after = heap::live_blocks();

            EXPECT_TRUE(failed);
            EXPECT_EQ(live_after, live);
            EXPECT_EQ(observe(operands), untouched);
            EXPECT_EQ(cached_texts(operands), texts);

            operation.run(operands);
            EXPECT_EQ(observe(operands), observe(undisturbed));
            ++failures;
        }
    });
    EXPECT_GT(failures, 0U);
    EXPECT_EQ(heap::take_damages(), 0U);
}

INSTANTIATE_TEST_SUITE_P(, Failure, testing::ValuesIn(allocating_themes()),
                         [](const auto& instance) { return instance.param.name; });

// A width whose words cannot be counted fails like any other that there is no memory for.

constexpr unsigned kWidest = 0x7FFFFFE0;

TEST(FailureOfTooWide, construction) {
    const std::size_t live = heap::live_blocks();
    EXPECT_THROW(KVAL_UINTEGER(1, kWidest + 1), std::bad_alloc);
    EXPECT_THROW(KVAL_UINTEGER(1, 0x7FFFFFFF), std::bad_alloc);
    EXPECT_EQ(heap::live_blocks(), live);
}

TEST(FailureOfTooWide, resizing) {
    for (const unsigned width : {8U, 40U, 100U}) {
        KVAL_UINTEGER v(0x5A, width);
        v.set_x(3).force_wh().as_bin_string();
        const State untouched = observe(v);
        const std::size_t live = heap::live_blocks();
        EXPECT_THROW(v.bitwidth(kWidest + 1), std::bad_alloc);
        EXPECT_EQ(heap::live_blocks(), live);
        EXPECT_EQ(observe(v), untouched);
    }
}

TEST(FailureOfTooWide, signed_construction) {
    const std::size_t live = heap::live_blocks();
    EXPECT_THROW(KVAL_SINTEGER(-1, kWidest + 1), std::bad_alloc);
    EXPECT_EQ(heap::live_blocks(), live);
}

TEST(FailureOfTooWide, sign_extending) {
    for (const unsigned width : {8U, 40U, 100U}) {
        KVAL_SINTEGER v(-5, width);
        v.set_x(3).force_wh().as_bin_string();
        const State untouched = observe(v);
        const std::size_t live = heap::live_blocks();
        EXPECT_THROW(v.bitwidth(kWidest + 1), std::bad_alloc);
        EXPECT_EQ(heap::live_blocks(), live);
        EXPECT_EQ(observe(v), untouched);
    }
}

// The count is subtracted from the width in 32 bits, and may wrap to a width that is larger.
TEST(FailureOfTooWide, signed_right_shift) {
    for (const unsigned width : {8U, 40U, 100U}) {
        const KVAL_SINTEGER v(-5, width);
        const State untouched = observe(v);
        const std::size_t live = heap::live_blocks();
        EXPECT_THROW(v >> (width - (kWidest + 1)), std::bad_alloc);
        EXPECT_EQ(heap::live_blocks(), live);
        EXPECT_EQ(observe(v), untouched);
    }
}

TEST(FailureOfTooWide, left_shift) {
    for (const unsigned width : {8U, 40U, 100U}) {
        const KVAL_UINTEGER v(0x5A, width);
        const State untouched = observe(v);
        const std::size_t live = heap::live_blocks();
        EXPECT_THROW(v << (kWidest + 1 - width), std::bad_alloc);
        EXPECT_EQ(heap::live_blocks(), live);
        EXPECT_EQ(observe(v), untouched);
    }
}

}  // namespace
