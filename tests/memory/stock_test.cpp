// Tests of the arrays that a thread keeps of its dead values: which are taken again, how many are kept, and that the
// heap has them back in the end.
#include <gtest/gtest.h>
#include <pthread.h>

#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "heap.h"
#include "kval.h"

namespace {

constexpr unsigned kLongestKept = 65536 + 1024;  // bits

// Under AddressSanitizer, as under Valgrind's memcheck, nothing is kept: they are to see every array go.
bool keeps_arrays() {
    const heap::KeptArrays kept;
    { const KVAL_UINTEGER dead(1, 100); }
    const std::size_t before = heap::allocations();
    const KVAL_UINTEGER next(1, 100);
    return heap::allocations() == before;
}

class Stock : public testing::Test {
  protected:
    void SetUp() override {
        if (!keeps_arrays()) GTEST_SKIP() << "this build keeps no arrays";
    }
};

TEST_F(Stock, gives_the_arrays_of_a_dead_value_to_the_next_of_its_length) {
    for (const unsigned width : {65U, 96U, 97U, 128U, 1024U, 1025U, 1152U, 1153U, 4096U, kLongestKept}) {
        const heap::KeptArrays kept;
        { const KVAL_UINTEGER dead(0x1234, width); }
        const std::size_t before = heap::allocations();
        const KVAL_UINTEGER next(7, width);
        EXPECT_EQ(heap::allocations(), before) << width;
        EXPECT_TRUE(next == 7U) << width;
    }
}

TEST_F(Stock, gives_the_arrays_of_a_value_that_becomes_small_to_the_next_of_their_length) {
    const heap::KeptArrays kept;
    KVAL_UINTEGER shrunk(1, 1000);
    shrunk.bitwidth(64);
    const std::size_t before = heap::allocations();
    const KVAL_UINTEGER next(7, 1000);
    EXPECT_EQ(heap::allocations(), before);
    EXPECT_TRUE(next == 7U);
    EXPECT_TRUE(shrunk == 1U);
}

TEST_F(Stock, takes_new_arrays_where_none_are_kept) {
    const heap::KeptArrays kept;
    for (const unsigned width : {65U, 256U, 257U, kLongestKept}) {
        const std::size_t before = heap::live_blocks();
        const std::vector<KVAL_UINTEGER> alive(50, KVAL_UINTEGER(1, width));
        EXPECT_GE(heap::live_blocks(), before + 2 * alive.size()) << width;
    }
}

TEST_F(Stock, goes_by_the_length_of_the_arrays_not_by_the_width_of_the_value) {
    const heap::KeptArrays kept;
    {
        KVAL_UINTEGER shrunk(1, 1000);
        shrunk.bitwidth(300);
    }
    const std::size_t before = heap::allocations();
    const KVAL_UINTEGER narrow(1, 300);
    EXPECT_EQ(heap::allocations(), before + 2);
    const KVAL_UINTEGER wide(1, 1000);
    EXPECT_EQ(heap::allocations(), before + 2);
}

TEST_F(Stock, keeps_nothing_longer_than_its_longest_shelf) {
    const heap::KeptArrays kept;
    { const KVAL_UINTEGER dead(1, kLongestKept + 1); }
    const std::size_t before = heap::allocations();
    const KVAL_UINTEGER next(1, kLongestKept + 1);
    EXPECT_EQ(heap::allocations(), before + 2);
}

TEST_F(Stock, keeps_256_KiB_at_most) {
    const std::size_t before = heap::live_bytes();
    {
        const heap::KeptArrays kept;
        for (unsigned width = 65; width <= 2000; width += 32) {
            const std::vector<KVAL_UINTEGER> dead(100, KVAL_UINTEGER(1, width));
        }
        for (unsigned width = kLongestKept - 20 * 32; width <= kLongestKept + 32; width += 32) {
            const KVAL_UINTEGER dead(1, width);
        }
        EXPECT_GT(heap::live_bytes(), before);
        EXPECT_LE(heap::live_bytes(), before + std::size_t{256} * 1024);
    }
    EXPECT_EQ(heap::live_bytes(), before);
    EXPECT_EQ(heap::take_damages(), 0U);
}

void in_a_thread(void (*work)()) { std::thread(work).join(); }

TEST_F(Stock, goes_back_to_the_heap_with_its_thread) {
    in_a_thread([] {});  // what the first thread of a program takes for itself
    const std::size_t blocks = heap::live_blocks();
    in_a_thread([] {
        const std::size_t before = heap::live_blocks();
        { const KVAL_UINTEGER dead(1, 500); }
        EXPECT_EQ(heap::live_blocks(), before + 3) << "two arrays and the stock itself";
    });
    EXPECT_EQ(heap::live_blocks(), blocks);
}

TEST_F(Stock, is_not_made_for_a_thread_that_has_small_values_only) {
    in_a_thread([] {
        const std::size_t before = heap::allocations();
        {
            KVAL_UINTEGER pair(3, 64);
            const KVAL_UINTEGER copy(pair);
            pair = pair - copy;
            EXPECT_TRUE(pair == 0U);
        }
        EXPECT_EQ(heap::allocations(), before);
    });
}

TEST_F(Stock, takes_the_arrays_of_values_from_other_threads) {
    const std::size_t blocks = heap::live_blocks();
    std::optional<KVAL_UINTEGER> here(std::in_place, 1, 200);
    std::thread([&here] { here.reset(); }).join();
    std::thread([&here] { here.emplace(2, 300); }).join();
    EXPECT_TRUE(*here == 2U);
    here.reset();
    EXPECT_EQ(heap::live_blocks(), blocks);
    EXPECT_EQ(heap::take_damages(), 0U);
}

// Keys are ended in the order of their making, again and again while one of them is set: this one after the stock's.
TEST_F(Stock, serves_values_that_outlive_it) {
    { const heap::KeptArrays made_first; }
    static pthread_key_t key;
    ASSERT_EQ(pthread_key_create(&key,
                                 [](void* last) {
                                     const std::unique_ptr<KVAL_UINTEGER> value(static_cast<KVAL_UINTEGER*>(last));
                                     const KVAL_UINTEGER sum = *value + *value;
                                     EXPECT_TRUE(sum == 6U);
                                 }),
              0);
    in_a_thread([] {});
    const std::size_t blocks = heap::live_blocks();
    in_a_thread([] { EXPECT_EQ(pthread_setspecific(key, std::make_unique<KVAL_UINTEGER>(3, 150).release()), 0); });
    EXPECT_EQ(heap::live_blocks(), blocks);
    EXPECT_EQ(heap::take_damages(), 0U);
    pthread_key_delete(key);
}

TEST_F(Stock, is_done_without_where_there_is_no_memory_for_it) {
    in_a_thread([] {
        const heap::FailingAllocation first(1);
        const std::size_t before = heap::allocations();
        const KVAL_UINTEGER value(5, 100);
        EXPECT_TRUE(value == 5U);
        EXPECT_EQ(heap::allocations(), before + 2);
    });
}

TEST_F(Stock, leaves_a_failing_allocation_of_arrays_as_it_is) {
    for (const std::size_t failing : {2U, 3U}) {  // the first is the stock's own
        const std::size_t blocks = heap::live_blocks();
        std::thread([failing] {
            const heap::FailingAllocation one(failing);
            EXPECT_THROW(KVAL_UINTEGER(5, 100), std::bad_alloc);
        }).join();
        EXPECT_EQ(heap::live_blocks(), blocks);
    }
}

TEST_F(Stock, is_not_used_once_nothing_is_to_be_kept) {
    { const heap::KeptArrays kept; }
    { const KVAL_UINTEGER dead(1, 100); }
    const std::size_t before = heap::allocations();
    const KVAL_UINTEGER next(1, 100);
    EXPECT_EQ(heap::allocations(), before + 2);
}

}  // namespace
