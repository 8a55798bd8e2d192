// Tests of the heap that the memory tests rest on: that it counts, sees what is damaged, and fails when told to.
#include "heap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

#include "kval.h"

namespace {

// Plain calls of the operators, since a compiler may leave out the allocation of a new expression.
unsigned char* take(std::size_t size) { return static_cast<unsigned char*>(::operator new[](size)); }
void give_back(unsigned char* block) { ::operator delete[](block); }

TEST(Heap, counts_allocations_and_live_blocks) {
    const std::size_t allocations = heap::allocations();
    const std::size_t live = heap::live_blocks();
    unsigned char* first = take(10);
    unsigned char* second = take(20);
    EXPECT_EQ(heap::allocations(), allocations + 2);
    EXPECT_EQ(heap::live_blocks(), live + 2);
    give_back(first);
    give_back(second);
    EXPECT_EQ(heap::allocations(), allocations + 2);
    EXPECT_EQ(heap::live_blocks(), live);
    EXPECT_EQ(heap::take_damages(), 0U);
}

TEST(Heap, serves_the_shared_library) {
    const std::size_t allocations = heap::allocations();
    const KVAL_UINTEGER large(1, 65);
    EXPECT_EQ(heap::allocations(), allocations + 2);
}

TEST(Heap, notices_a_write_just_before_or_behind_a_block) {
    for (const std::ptrdiff_t offset : {-16, -1, 10, 25}) {
        unsigned char* block = take(10);
        unsigned char* volatile outside = block + offset;
        *outside = 0;
        give_back(block);
        EXPECT_EQ(heap::take_damages(), 1U) << "write at byte " << offset;
    }
}

TEST(Heap, notices_an_array_released_as_a_single_object) {
    void* volatile block = take(10);
    ::operator delete(block);
    EXPECT_EQ(heap::take_damages(), 1U);
}

TEST(Heap, fills_fresh_memory) {
    for (const std::uint8_t pattern : {std::uint8_t{0x00}, std::uint8_t{0x5A}}) {
        heap::fill_fresh_memory_with(pattern);
        unsigned char* block = take(3);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(block[i], pattern);
        give_back(block);
    }
}

TEST(Heap, fails_the_chosen_allocation_and_no_other) {
    const std::size_t live = heap::live_blocks();
    unsigned char* blocks[2] = {};
    bool failed = false;
    {
        const heap::FailingAllocation failing(2);
        blocks[0] = take(1);
        try {
            take(1);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        blocks[1] = take(1);
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(heap::live_blocks(), live + 2);
    for (unsigned char* block : blocks) give_back(block);
}

TEST(Heap, fails_nothing_once_the_request_is_over) {
    { const heap::FailingAllocation failing(1); }
    EXPECT_NO_THROW(give_back(take(1)));
}

}  // namespace
