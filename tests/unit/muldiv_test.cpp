// Tests of multiplication, division and remainder: * / %.
#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <string>
#include <utility>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;

KVAL_UINTEGER product(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l * r; }
KVAL_UINTEGER quotient(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l / r; }
KVAL_UINTEGER remainder(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l % r; }

using Row = BinaryRow;

void check_both_orders(const Row& row, KVAL_UINTEGER (*operation)(const KVAL_UINTEGER&, const KVAL_UINTEGER&)) {
    check_free(row, operation);
    check_free(Row{row.name, row.right, row.left, row.want}, operation);
}

// ---- * ----

TEST(Multiply, GivesTheFullProductInBothWidthsTogether) {
    const Row rows[] = {
        {"8 by 8 bits, both the largest", from_words(8, {0xFF}), from_words(8, {0xFF}), "16 bits 0000FE01"},
        {"1 by 1 bit", from_words(1, {1}), from_words(1, {1}), "2 bits 00000001"},
        {"4 by 8 bits", from_words(4, {15}), from_words(8, {200}), "12 bits 00000BB8"},
        {"16 by 16 bits: compact", from_words(16, {0xFFFF}), from_words(16, {0xFFFF}), "32 bits FFFE0001"},
        {"16 by 17 bits: wide", from_words(16, {0xFFFF}), from_words(17, {0x1FFFF}), "33 bits 00000001 FFFD0001"},
        {"31 by 1 bit", from_words(31, {0x7FFFFFFF}), from_words(1, {1}), "32 bits 7FFFFFFF"},
        {"32 by 1 bit", from_words(32, {kOnes}), from_words(1, {1}), "33 bits 00000000 FFFFFFFF"},
        {"32 by 32 bits, both the largest", from_words(32, {kOnes}), from_words(32, {kOnes}),
         "64 bits FFFFFFFE 00000001"},
        {"33 by 32 bits", from_words(33, {0, 1}), from_words(32, {kOnes}), "65 bits 00000000 FFFFFFFF 00000000"},
        {"33 by 31 bits: two full words", from_words(33, {kOnes, 1}), from_words(31, {2}), "64 bits 00000003 FFFFFFFE"},
        {"40 by 8 bits", from_words(40, {0x12345678, 0x9A}), from_words(8, {0x10}), "48 bits 000009A1 23456780"},
        {"40 by 40 bits, both the largest", from_words(40, {kOnes, 0xFF}), from_words(40, {kOnes, 0xFF}),
         "80 bits 0000FFFF FFFFFE00 00000001"},
        {"64 by 64 bits, both the largest", from_words(64, {kOnes, kOnes}), from_words(64, {kOnes, kOnes}),
         "128 bits FFFFFFFF FFFFFFFE 00000000 00000001"},
        {"100 by 1 bit: the same number", from_words(100, {0x12345678, 0x9ABCDEF0, 0x0FEDCBA9, 0x8}),
         from_words(1, {1}), "101 bits 00000008 0FEDCBA9 9ABCDEF0 12345678"},
        {"96 by 96 bits: words 1 1 1 squared", from_words(96, {1, 1, 1}), from_words(96, {1, 1, 1}),
         "192 bits 00000000 00000001 00000002 00000003 00000002 00000001"},
        {"96 by 64 bits, both the largest", from_words(96, {kOnes, kOnes, kOnes}), from_words(64, {kOnes, kOnes}),
         "160 bits FFFFFFFF FFFFFFFE FFFFFFFF 00000000 00000001"},
        {"8 bits by 0", from_words(8, {0xFF}), from_words(8, {0}), "16 bits 00000000"},
        {"70 bits by 0", from_words(70, {kOnes, kOnes, 0x3F}), from_words(8, {0}),
         "78 bits 00000000 00000000 00000000"},
    };
    for (const Row& row : rows) check_both_orders(row, product);
}

// (2^n - 1)^2 = 2^2n - 2^(n+1) + 1, at widths where sums of many partial products come together.
TEST(Multiply, IsExactAtLargeWidths) {
    for (const unsigned width : {1024U, 4096U, 65536U}) {
        KVAL_UINTEGER ones = ~KVAL_UINTEGER(0, width);
        const KVAL_UINTEGER square = ones * ones;
        ASSERT_EQ(square.bitwidth(), 2 * width);
        const int half = ones.get_size();
        EXPECT_EQ(square.get_uvalue_at(0), 1U) << width;
        for (int i = 1; i < half; ++i) ASSERT_EQ(square.get_uvalue_at(i), 0U) << width << ", word " << i;
        EXPECT_EQ(square.get_uvalue_at(half), 0xFFFFFFFEU) << width;
        for (int i = half + 1; i < 2 * half; ++i) ASSERT_EQ(square.get_uvalue_at(i), kOnes) << width << ", word " << i;
    }
}

TEST(Multiply, AnXFlagMakesAllX) {
    const Row rows[] = {
        {"compact", from_words(8, {3}, {1}, true), from_words(8, {5}), "16 bits 00000000 x 0000FFFF flags X"},
        {"compact operands, wide result", from_words(32, {3}, {1}, true), from_words(8, {5}),
         "40 bits 00000000 00000000 x 000000FF FFFFFFFF flags X"},
        {"of the narrower", from_words(40, {3, 4}), from_words(8, {5}, {1}, true),
         "48 bits 00000000 00000000 x 0000FFFF FFFFFFFF flags X"},
        {"of the wider", from_words(40, {3, 4}, {1, 0}, true), from_words(8, {5}),
         "48 bits 00000000 00000000 x 0000FFFF FFFFFFFF flags X"},
        {"of both", from_words(33, {3, 1}, {1, 0}, true), from_words(32, {5}, {1}, true),
         "65 bits 00000000 00000000 00000000 x 00000001 FFFFFFFF FFFFFFFF flags X"},
        {"without any X bit", from_words(8, {3}, {0}, true), from_words(8, {5}), "16 bits 00000000 x 0000FFFF flags X"},
        {"beside a zero", from_words(8, {0}), from_words(8, {5}, {1}, true), "16 bits 00000000 x 0000FFFF flags X"},
        {"other flags are lost", marked(from_words(8, {3}, {1}, true), "Z"), marked(from_words(8, {5}), "LH"),
         "16 bits 00000000 x 0000FFFF flags X"},
    };
    for (const Row& row : rows) check_both_orders(row, product);
}

TEST(Multiply, XBitsWithoutTheFlagDoNotCountRequired) {
    const Row rows[] = {
        {"compact", from_words(8, {0xFF}, {0xFF}), from_words(8, {2}), "16 bits 000001FE"},
        {"wide", from_words(40, {3, 4}, {kOnes, 0xFF}), from_words(8, {2}, {0xFF}), "48 bits 00000008 00000006"},
    };
    for (const Row& row : rows) check_both_orders(row, product);
}

TEST(Multiply, OtherFlagsAreLost) {
    const Row rows[] = {
        {"compact", marked(from_words(8, {3}), "ZLH"), marked(from_words(8, {2}), "Z"), "16 bits 00000006"},
        {"wide", marked(from_words(40, {3, 4}), "ZLH"), marked(from_words(8, {2}), "H"), "48 bits 00000008 00000006"},
    };
    for (const Row& row : rows) check_both_orders(row, product);
}

TEST(Multiply, StrayBitsCountAndTheProductIsTrimmed) {
    const Row rows[] = {
        {"compact, within the result", from_words(4, {0x15}), from_words(4, {3}), "8 bits 0000003F"},
        {"compact, beyond the result", from_words(4, {0xFF}), from_words(4, {0xF}), "8 bits 000000F1"},
        {"compact operands, wide result", from_words(20, {kOnes}), from_words(20, {kOnes}),
         "40 bits 000000FE 00000001"},
        {"wide, within the result", from_words(40, {0, 0x101}), from_words(8, {1}), "48 bits 00000101 00000000"},
        {"wide, beyond the result's words", from_words(40, {0, kOnes}), from_words(8, {0xFF}),
         "48 bits 0000FF01 00000000"},
        {"a compact one beside a wide one", from_words(64, {1, 0}), from_words(4, {0x100}),
         "68 bits 00000000 00000000 00000100"},
    };
    for (const Row& row : rows) check_both_orders(row, product);
}

// A width of 2^31 reads negative, and so becomes 1. The one operand takes 256 MiB.
TEST(Multiply, OfWidthsThatReachTwoToThe31HasOneBitRequired) {
    std::optional<KVAL_UINTEGER> half;
    try {
        half.emplace(7, 1U << 30);
    } catch (const std::bad_alloc&) {
        GTEST_SKIP() << "256 MiB are refused here";
    }
    EXPECT_EQ(printed(*half * *half), "1 bits 00000001");
    half->set_bit(0, 0);
    EXPECT_EQ(printed(*half * *half), "1 bits 00000000");
    half->set_bit(0, 1);
    KVAL_SINTEGER half_signed(std::move(*half));
    EXPECT_EQ(printed(half_signed * half_signed), "1 bits 00000001");
    half_signed.set_x(1);
    EXPECT_EQ(printed(half_signed * half_signed), "1 bits 00000000 x 00000001 flags X");
}

TEST(Multiply, OneObjectAsBothOperandsAndAsTheTarget) {
    KVAL_UINTEGER compact = from_words(8, {0x12});
    EXPECT_EQ(printed(compact * compact), "16 bits 00000144");
    compact = compact * compact;
    EXPECT_EQ(printed(compact), "8 bits 00000044");
    KVAL_UINTEGER wide = from_words(64, {0, 0x10000});
    EXPECT_EQ(printed(wide * wide), "128 bits 00000001 00000000 00000000 00000000");
    wide = from_words(64, {3, 1});
    wide = wide * wide;
    EXPECT_EQ(printed(wide), "64 bits 00000006 00000009");
}

// ---- / and % ----

TEST(Divide, GivesTheWidthOfTheDividendRequired) {
    const Row rows[] = {
        {"8-bit 200 by 4-bit 7", from_words(8, {200}), from_words(4, {7}), "8 bits 0000001C"},
        {"4-bit 7 by 8-bit 200", from_words(4, {7}), from_words(8, {200}), "4 bits 00000000"},
        {"one bit", from_words(1, {1}), from_words(1, {1}), "1 bits 00000001"},
        {"32 bits by 1", from_words(32, {kOnes}), from_words(1, {1}), "32 bits FFFFFFFF"},
        {"32 bits by the same", from_words(32, {kOnes}), from_words(32, {kOnes}), "32 bits 00000001"},
        {"32 bits are unsigned", from_words(32, {kOnes}), from_words(32, {0x80000000}), "32 bits 00000001"},
        {"by a greater one", from_words(32, {0x80000000}), from_words(32, {kOnes}), "32 bits 00000000"},
        {"zero", from_words(8, {0}), from_words(4, {7}), "8 bits 00000000"},
    };
    for (const Row& row : rows) check_free(row, quotient);
}

TEST(Remainder, GivesTheWidthOfTheDivisorRequired) {
    const Row rows[] = {
        {"8-bit 200 by 4-bit 7", from_words(8, {200}), from_words(4, {7}), "4 bits 00000004"},
        {"4-bit 7 by 8-bit 200", from_words(4, {7}), from_words(8, {200}), "8 bits 00000007"},
        {"one bit", from_words(1, {1}), from_words(1, {1}), "1 bits 00000000"},
        {"32-bit dividend, 16-bit divisor", from_words(32, {kOnes}), from_words(16, {0x10}), "16 bits 0000000F"},
        {"32 bits by the same", from_words(32, {kOnes}), from_words(32, {kOnes}), "32 bits 00000000"},
        {"32 bits are unsigned", from_words(32, {kOnes}), from_words(32, {0x80000000}), "32 bits 7FFFFFFF"},
        {"zero", from_words(8, {0}), from_words(4, {7}), "4 bits 00000000"},
    };
    for (const Row& row : rows) check_free(row, remainder);
}

TEST(Divide, AZeroDivisorGivesAllXRequired) {
    const KVAL_UINTEGER zero(0, 3);
    const Row rows[] = {
        {"16-bit 5 by 3-bit 0", from_words(16, {5}), zero, "16 bits 00000000 x 0000FFFF flags X"},
        {"one bit", from_words(1, {1}), zero, "1 bits 00000000 x 00000001 flags X"},
        {"32 bits", from_words(32, {kOnes}), from_words(32, {0}), "32 bits 00000000 x FFFFFFFF flags X"},
        {"zero by zero", from_words(8, {0}), zero, "8 bits 00000000 x 000000FF flags X"},
        {"a divisor of X bits over zeros", from_words(8, {5}), from_words(3, {0}, {7}, true),
         "8 bits 00000000 x 000000FF flags X"},
        {"X bits over zeros without the flag", from_words(8, {5}), from_words(3, {0}, {7}),
         "8 bits 00000000 x 000000FF flags X"},
        {"other flags are lost", marked(from_words(8, {5}), "L"), marked(zero, "ZH"),
         "8 bits 00000000 x 000000FF flags X"},
    };
    for (const Row& row : rows) check_free(row, quotient);
}

TEST(Remainder, AZeroDivisorGivesAllXRequired) {
    const KVAL_UINTEGER zero(0, 3);
    const Row rows[] = {
        {"16-bit 5 by 3-bit 0", from_words(16, {5}), zero, "3 bits 00000000 x 00000007 flags X"},
        {"a divisor of one bit", from_words(8, {5}), from_words(1, {0}), "1 bits 00000000 x 00000001 flags X"},
        {"32 bits", from_words(8, {5}), from_words(32, {0}), "32 bits 00000000 x FFFFFFFF flags X"},
        {"zero by zero", from_words(8, {0}), zero, "3 bits 00000000 x 00000007 flags X"},
        {"a divisor of X bits over zeros", from_words(8, {5}), from_words(3, {0}, {7}, true),
         "3 bits 00000000 x 00000007 flags X"},
        {"X bits over zeros without the flag", from_words(8, {5}), from_words(3, {0}, {7}),
         "3 bits 00000000 x 00000007 flags X"},
        {"other flags are lost", marked(from_words(8, {5}), "L"), marked(zero, "ZH"),
         "3 bits 00000000 x 00000007 flags X"},
    };
    for (const Row& row : rows) check_free(row, remainder);
}

TEST(DivideRemainder, XBitsAndFlagsOfTheOperandsPlayNoPart) {
    const KVAL_UINTEGER dividend = marked(from_words(8, {200}, {0xF0}, true), "Z");
    const KVAL_UINTEGER divisor = marked(from_words(4, {7}, {0x3}, true), "LH");
    check_free({"/", dividend, divisor, "8 bits 0000001C"}, quotient);
    check_free({"%", dividend, divisor, "4 bits 00000004"}, remainder);
    check_free({"/, X divisor", from_words(8, {200}), divisor, "8 bits 0000001C"}, quotient);
    check_free({"%, X divisor", from_words(8, {200}), divisor, "4 bits 00000004"}, remainder);
}

TEST(DivideRemainder, StrayBitsCountAndTheResultIsTrimmed) {
    check_free({"/, dividend", from_words(4, {0xF5}), from_words(4, {1}), "4 bits 00000005"}, quotient);
    check_free(
        {"/, divisor that is not zero by them alone", from_words(8, {0x25}), from_words(4, {0x10}), "8 bits 00000002"},
        quotient);
    check_free(
        {"%, divisor that is not zero by them alone", from_words(8, {0x25}), from_words(4, {0x10}), "4 bits 00000005"},
        remainder);
    check_free({"%, remainder wider than the divisor", from_words(8, {0x3F}), from_words(4, {0x20}), "4 bits 0000000F"},
               remainder);
}

TEST(DivideRemainder, OneObjectAsBothOperandsAndAsTheTarget) {
    KVAL_UINTEGER a(6, 8);
    EXPECT_EQ(printed(a / a), "8 bits 00000001");
    EXPECT_EQ(printed(a % a), "8 bits 00000000");
    a = a / a;
    EXPECT_EQ(printed(a), "8 bits 00000001");
}

// ---- widths that / and % refuse ----

using Binary = KVAL_UINTEGER (*)(const KVAL_UINTEGER&, const KVAL_UINTEGER&);

const std::string kDivideMessage = "KVAL_UINTEGER operator / only supports division between 32 bit KVAL_UINTEGERs";
const std::string kRemainderMessage = "KVAL_UINTEGER operator % only supports division between 32 bit KVAL_UINTEGERs";

// What `operation` throws as a char*; null when it throws nothing. Anything else passes on and fails the test.
char* thrown(Binary operation, const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    try {
        operation(l, r);
    } catch (char* message) {
        return message;
    }
    return nullptr;
}

TEST(DivideRemainder, MoreThan32BitsThrowTheMessageByteByByteRequired) {
    const struct {
        const char* name;
        KVAL_UINTEGER left;
        KVAL_UINTEGER right;
    } rows[] = {
        {"33 by 1 bit", from_words(33, {5, 1}), from_words(1, {1})},
        {"1 by 33 bits", from_words(1, {1}), from_words(33, {5, 1})},
        {"33 by 33 bits", from_words(33, {5, 1}), from_words(33, {5, 0})},
        {"100 by 32 bits", from_words(100, {5}), from_words(32, {1})},
        {"33 bits by zero: the width is looked at first", from_words(33, {5, 1}), from_words(3, {0})},
        {"by 33 bits of zero: the width is looked at first", from_words(8, {5}), from_words(33, {0, 0})},
        {"X bits and flags play no part", marked(from_words(40, {5, 1}, {1, 1}, true), "Z"), from_words(3, {7})},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER left(row.left), right(row.right);
        cache_text(left);
        cache_text(right);
        const char* message = thrown(quotient, left, right);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(message, kDivideMessage);
        message = thrown(remainder, left, right);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(message, kRemainderMessage);
        EXPECT_EQ(printed(left), printed(row.left));
        EXPECT_EQ(printed(right), printed(row.right));
        EXPECT_TRUE(keeps_text(left));
        EXPECT_TRUE(keeps_text(right));
    }
}

TEST(DivideRemainder, UpTo32BitsThrowNothing) {
    EXPECT_EQ(thrown(quotient, from_words(32, {5}), from_words(32, {1})), nullptr);
    EXPECT_EQ(thrown(remainder, from_words(32, {5}), from_words(32, {1})), nullptr);
    EXPECT_EQ(thrown(quotient, from_words(32, {5}), from_words(32, {0})), nullptr);
    EXPECT_EQ(thrown(remainder, from_words(32, {5}), from_words(32, {0})), nullptr);
}

TEST(DivideRemainder, TheMessageCanBeCaughtAsAPointerToConstToo) {
    const KVAL_UINTEGER wide(5, 33);
    std::string caught;
    try {
        (void)(wide / wide);
    } catch (const char* message) {
        caught = message;
    }
    EXPECT_EQ(caught, kDivideMessage);
    try {
        (void)(wide % wide);
    } catch (const char* message) {
        caught = message;
    }
    EXPECT_EQ(caught, kRemainderMessage);
}

// The buffer outlives the throw, is the same each time and may be written; the two operators have one each.
TEST(DivideRemainder, EachMessageStandsInOneWritableBufferRequired) {
    const KVAL_UINTEGER wide(5, 33), wider(5, 100);
    char* const divide = thrown(quotient, wide, wide);
    char* const remains = thrown(remainder, wide, wide);
    ASSERT_NE(divide, nullptr);
    ASSERT_NE(remains, nullptr);
    EXPECT_NE(divide, remains);
    EXPECT_EQ(thrown(quotient, wider, wide), divide);
    EXPECT_EQ(thrown(remainder, wide, wider), remains);
    for (char* const message : {divide, remains}) {
        const char first = message[0];
        message[0] = '*';
        EXPECT_EQ(message[0], '*');
        message[0] = first;
    }
    EXPECT_EQ(divide, kDivideMessage);
    EXPECT_EQ(remains, kRemainderMessage);
}

}  // namespace
