// The steps of sums that make a result wider, at the widest width: on arrays that are taken but hardly written, so that
// no memory is spent.
#include <gtest/gtest.h>

#include <new>

#include "kval.h"
#include "signed/extended.h"
#include "value/storage.h"

namespace {

using kval::Growing;
using kval::kMaxWidth;

// A sum under way, of whose words only the top one is written: no step looks at another.
struct SumUnderWay : Growing {
    explicit SumUnderWay(unsigned common_width) : Growing(common_width, 0) {
        const std::size_t top = kval::word_count(common_width) - 1;
        value()[top] = mask()[top] = 0;
    }
};

TEST(Widest, IsTwoToThe31Minus32Bits) {
    EXPECT_EQ(kMaxWidth, 0x7FFFFFE0U);
    EXPECT_NO_THROW(kval::check_width(0x7FFFFFE0U));
    EXPECT_THROW(kval::check_width(0x7FFFFFE1U), std::bad_alloc);
}

TEST(Widest, ASumWithoutACarryKeepsItAndACarryIsRefused) {
    SumUnderWay sum(kMaxWidth);
    EXPECT_NO_THROW(sum.finish_sum(false));
    EXPECT_EQ(sum.width, kMaxWidth);
    EXPECT_THROW(sum.finish_sum(true), std::bad_alloc);
    EXPECT_EQ(sum.width, kMaxWidth);
}

TEST(Widest, ASumThatIsOneBitShortOfItMayGrow) {
    SumUnderWay sum(kMaxWidth - 1);
    EXPECT_NO_THROW(sum.finish_sum(true));
    EXPECT_EQ(sum.width, kMaxWidth);
}

TEST(Widest, ASignedSumThatNeedsOneBitMoreMayReachItAndIsRefusedBeyond) {
    SumUnderWay sum(kMaxWidth - 1);
    EXPECT_NO_THROW(sum.widen());
    EXPECT_EQ(sum.width, kMaxWidth);
    EXPECT_THROW(sum.widen(), std::bad_alloc);
    EXPECT_EQ(sum.width, kMaxWidth);
}

TEST(Widest, ASignedAssignmentToOneBitMoreIsRefused) {
    SumUnderWay sum(kMaxWidth);
    EXPECT_THROW(sum.assign(kMaxWidth + 1), std::bad_alloc);
    EXPECT_EQ(sum.width, kMaxWidth);
}

}  // namespace
