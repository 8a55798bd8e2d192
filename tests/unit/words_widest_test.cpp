// The steps of sums that make a result wider, at the widest width: on arrays that are taken but hardly written, so that
// no memory is spent.
#include <gtest/gtest.h>

#include <new>

#include "kval.h"
#include "value/storage.h"

namespace {

using kval::kMaxWidth;
using kval::detail::Internals;
using kval::detail::SignedInternals;

// A sum under way, of whose words only the top one is written: no step looks at another.
KVAL_SINTEGER sum_under_way(unsigned width) {
    KVAL_SINTEGER sum = SignedInternals::Room(width, 0);
    sum.set_uvalue_at(sum.get_size() - 1, 0).set_xmask_at(sum.get_size() - 1, 0);
    return sum;
}

TEST(Widest, IsTwoToThe31Minus32Bits) {
    EXPECT_EQ(kMaxWidth, 0x7FFFFFE0U);
    EXPECT_NO_THROW(kval::check_width(0x7FFFFFE0U));
    EXPECT_THROW(kval::check_width(0x7FFFFFE1U), std::bad_alloc);
}

TEST(Widest, ASumWithoutACarryKeepsItAndACarryIsRefused) {
    KVAL_SINTEGER sum = sum_under_way(kMaxWidth);
    EXPECT_NO_THROW(Internals::FinishWideSum(sum, kMaxWidth, false));
    EXPECT_EQ(sum.bitwidth(), kMaxWidth);
    EXPECT_THROW(Internals::FinishWideSum(sum, kMaxWidth, true), std::bad_alloc);
}

TEST(Widest, ASumThatIsOneBitShortOfItMayGrow) {
    KVAL_SINTEGER sum = sum_under_way(kMaxWidth - 1);
    EXPECT_NO_THROW(Internals::FinishWideSum(sum, kMaxWidth - 1, true));
    EXPECT_EQ(sum.bitwidth(), kMaxWidth);
}

TEST(Widest, ASignedSumThatNeedsOneBitMoreMayReachItAndIsRefusedBeyond) {
    KVAL_SINTEGER sum = sum_under_way(kMaxWidth);
    Internals::FinishWideSum(sum, kMaxWidth - 1, false);
    EXPECT_NO_THROW(SignedInternals::WidenInPlace(sum));
    EXPECT_EQ(sum.bitwidth(), kMaxWidth);
    EXPECT_THROW(SignedInternals::WidenInPlace(sum), std::bad_alloc);
    EXPECT_EQ(sum.bitwidth(), kMaxWidth);
}

TEST(Widest, ASignedAssignmentToOneBitMoreIsRefused) {
    KVAL_SINTEGER sum = sum_under_way(kMaxWidth);
    EXPECT_THROW(SignedInternals::AssignInPlace(sum, kMaxWidth + 1), std::bad_alloc);
    EXPECT_EQ(sum.bitwidth(), kMaxWidth);
}

}  // namespace
