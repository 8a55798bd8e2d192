// Tests of the heap of pages: that an access outside an array, or to a released one, ends the program and is named.
#include "page_heap.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstring>

#include "kval.h"

namespace {

using page_heap::Placement;

// Plain calls of the operators, since a compiler may leave out the allocation of a new expression. Volatile, since it
// may leave out an access too, and warns of one outside the array while it can follow the pointer.
volatile unsigned char* take(Placement placement, std::size_t size) {
    page_heap::place_at(placement);
    void* volatile block = ::operator new[](size);
    return static_cast<unsigned char*>(block);
}
void give_back(volatile unsigned char* block) { ::operator delete[](const_cast<unsigned char*>(block)); }

bool is_page_boundary(const volatile void* address) {
    return reinterpret_cast<std::uintptr_t>(address) % static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE)) == 0;
}

constexpr std::size_t kSizes[] = {1, 8, 12, 41, 260, 1026};

TEST(PageHeap, gives_whole_arrays) {
    for (const Placement placement : {Placement::End, Placement::Beginning}) {
        for (const std::size_t size : kSizes) {
            volatile unsigned char* block = take(placement, size);
            for (std::size_t i = 0; i < size; ++i) block[i] = static_cast<unsigned char>(i);
            for (std::size_t i = 0; i < size; ++i) EXPECT_EQ(block[i], static_cast<unsigned char>(i));
            EXPECT_TRUE(is_page_boundary(placement == Placement::End ? block + size : block));
            give_back(block);
        }
    }
}

TEST(PageHeap, serves_the_words_and_texts_of_the_shared_library) {
    for (const Placement placement : {Placement::End, Placement::Beginning}) {
        page_heap::place_at(placement);
        const std::size_t before = page_heap::allocations();
        const KVAL_UINTEGER large(1, 65);
        EXPECT_EQ(page_heap::allocations(), before + 2);
        const char* text = large.as_bin_string();
        EXPECT_EQ(page_heap::allocations(), before + 3);
        EXPECT_TRUE(is_page_boundary(placement == Placement::End ? text + 66 : text));
    }
}

TEST(PageHeap, uses_its_pages_again) {
    for (int i = 0; i < 10000; ++i) {
        const page_heap::ReleasedFaults released_faults;
        volatile unsigned char* block = take(Placement::End, 8);
        *block = 1;
        give_back(block);
    }
}

const testing::KilledBySignal kKilled(SIGSEGV);

void load(const volatile unsigned char* address) { [[maybe_unused]] const unsigned char byte = *address; }
void store(volatile unsigned char* address) { *address = 0; }

TEST(PageHeapDeathTest, an_access_behind_an_array_is_a_fault) {
    for (const std::size_t size : kSizes) {
        volatile unsigned char* block = take(Placement::End, size);
        EXPECT_EXIT(load(block + size), kKilled, "fault in no task, arrays end where their page ends");
        EXPECT_EXIT(store(block + size), kKilled, "fault");
        EXPECT_EXIT(load(block + size + 3), kKilled, "fault");
        give_back(block);
    }
}

TEST(PageHeapDeathTest, an_access_before_an_array_is_a_fault) {
    for (const std::size_t size : kSizes) {
        volatile unsigned char* block = take(Placement::Beginning, size);
        EXPECT_EXIT(load(block - 1), kKilled, "fault in no task, arrays begin where their page begins");
        EXPECT_EXIT(store(block - 1), kKilled, "fault");
        EXPECT_EXIT(load(block - 4), kKilled, "fault");
        give_back(block);
    }
}

TEST(PageHeapDeathTest, an_access_to_a_released_array_is_a_fault) {
    for (const Placement placement : {Placement::End, Placement::Beginning}) {
        const page_heap::ReleasedFaults released_faults;
        volatile unsigned char* block = take(placement, 12);
        volatile unsigned char* volatile released = block;
        give_back(block);
        EXPECT_EXIT(load(released), kKilled, "fault");
        EXPECT_EXIT(store(released + 11), kKilled, "fault");
        give_back(take(placement, 12));
        EXPECT_EXIT(load(released), kKilled, "fault") << "after the next array";
    }
}

TEST(PageHeapDeathTest, a_fault_names_its_task) {
    volatile unsigned char* block = take(Placement::End, 12);
    {
        const page_heap::Task task("a sum, 65 and 96 bits");
        EXPECT_EXIT(load(block + 12), kKilled, "fault in a sum, 65 and 96 bits, arrays end");
    }
    EXPECT_EXIT(load(block + 12), kKilled, "fault in no task");
    give_back(block);
}

}  // namespace
