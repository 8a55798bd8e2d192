// Tests of the heap memory that text and hashes take: one block for a text, the arrays of a value that is read, and
// nothing else.
#include <gtest/gtest.h>

#include <kval/hash.h>
#include <kval/verilog.h>

#include <cstddef>
#include <functional>
#include <new>
#include <string>

#include "memory/heap.h"

namespace {

using kval::Base;

template <typename Function>
std::size_t blocks_of(Function function) {
    const std::size_t before = heap::allocations();
    function();
    return heap::allocations() - before;
}

TEST(TextMemory, OneBlockForAText) {
    const KVAL_UINTEGER value(0, 1000);
    EXPECT_EQ(1U, blocks_of([&] { kval::to_verilog(value); }));
    EXPECT_EQ(1U, blocks_of([&] { kval::to_verilog(value, Base::kBinary, false); }));
}

TEST(TextMemory, NoneForShortTexts) {
    const KVAL_UINTEGER value(0, 32);  // 32'h00000000 fits into a std::string
    EXPECT_EQ(0U, blocks_of([&] { kval::to_verilog(value); }));
}

TEST(TextMemory, NoneForWritingAndHashing) {
    const KVAL_UINTEGER value(0, 1000);
    const KVAL_SINTEGER negative(-1, 1000);
    char buffer[1100];
    EXPECT_EQ(0U, blocks_of([&] { kval::write_digits(kval::write_prefix(buffer, value), value, Base::kBinary); }));
    EXPECT_EQ(0U, blocks_of([&] { std::hash<KVAL_UINTEGER>()(value); }));
    EXPECT_EQ(0U, blocks_of([&] { std::hash<KVAL_SINTEGER>()(negative); }));
}

TEST(TextMemory, TheArraysOfAValueThatIsRead) {
    const std::string digits(250, '5');
    const std::string wide = "1000'h" + digits;
    EXPECT_EQ(2U, blocks_of([&] { EXPECT_TRUE(kval::from_verilog(wide)); }));
    EXPECT_EQ(2U, blocks_of([&] { EXPECT_TRUE(kval::from_verilog("1000'dX")); }));
    EXPECT_EQ(0U, blocks_of([&] { EXPECT_TRUE(kval::from_verilog("32'hXF0")); }));
    // A text that is bad takes none, however wide it says it is.
    EXPECT_EQ(0U, blocks_of([&] { EXPECT_FALSE(kval::from_verilog("2147483616'hG")); }));
    EXPECT_EQ(0U, blocks_of([&] { EXPECT_FALSE(kval::from_verilog("2147483616'h1L")); }));
}

TEST(TextMemory, WhereMemoryRunsOut) {
    const KVAL_UINTEGER value(0, 1000);
    const std::size_t live = heap::live_blocks();
    {
        const heap::FailingAllocation failing(1);
        EXPECT_THROW(kval::to_verilog(value), std::bad_alloc);
    }
    for (const std::size_t nth : {1U, 2U}) {
        const heap::FailingAllocation failing(nth);
        EXPECT_THROW(kval::from_verilog("1000'hX"), std::bad_alloc);
    }
    EXPECT_EQ(live, heap::live_blocks());
    EXPECT_EQ(0U, heap::take_damages());
}

}  // namespace
