// Tests of addition and subtraction: + - and, in place, += -= ++ --.
#include <gtest/gtest.h>

#include <string>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;

KVAL_UINTEGER& add_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l += r; }
KVAL_UINTEGER& subtract_assign(KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l -= r; }
KVAL_UINTEGER& add_number(KVAL_UINTEGER& v, unsigned number) { return v += number; }
KVAL_UINTEGER& subtract_number(KVAL_UINTEGER& v, unsigned number) { return v -= number; }
KVAL_UINTEGER sum(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l + r; }
KVAL_UINTEGER difference(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l - r; }

using Row = BinaryRow;

// A value with every flag and some X bits, which sums and differences in place leave alone.
KVAL_UINTEGER all_marks(unsigned width) { return marked(from_words(width, {0x35}, {0x81}, true), "ZLH"); }

// ---- += ----

TEST(AddInPlace, Value) {
    const Row rows[] = {
        {"8 bits wrap", from_words(8, {0xFF}), from_words(8, {1}), "8 bits 00000000"},
        {"8 bits, wider right: wraps in the left width", from_words(8, {0x21}), from_words(16, {0xABE0}),
         "8 bits 00000001"},
        {"one bit", from_words(1, {1}), from_words(1, {1}), "1 bits 00000000"},
        {"32 bits wrap", from_words(32, {kOnes}), from_words(32, {2}), "32 bits 00000001"},
        {"compact left: only the low word of a wide right counts", from_words(16, {2}), from_words(70, {0xFFFF, 5, 5}),
         "16 bits 00000001"},
        {"wide left, compact right, carry into word 1", from_words(64, {kOnes, 7}), from_words(8, {1}),
         "64 bits 00000008 00000000"},
        {"33 bits wrap", from_words(33, {kOnes, 1}), from_words(32, {1}), "33 bits 00000000 00000000"},
        {"40 bits, carry into word 1", from_words(40, {kOnes, 0}), from_words(40, {1, 0}), "40 bits 00000001 00000000"},
        {"40 bits wrap", from_words(40, {kOnes, 0xFF}), from_words(40, {1, 0}), "40 bits 00000000 00000000"},
        {"64 bits wrap", from_words(64, {kOnes, kOnes}), from_words(64, {1, 0}), "64 bits 00000000 00000000"},
        {"carry in and out of a word of ones and ones", from_words(96, {kOnes, kOnes, 0}),
         from_words(96, {kOnes, kOnes, 0}), "96 bits 00000001 FFFFFFFF FFFFFFFE"},
        {"carry through a word of ones and 0", from_words(96, {kOnes, kOnes, 3}), from_words(96, {1, 0, 0}),
         "96 bits 00000004 00000000 00000000"},
        {"carry into a word of 0 and ones", from_words(96, {kOnes, 0, 3}), from_words(96, {1, kOnes, 0}),
         "96 bits 00000004 00000000 00000000"},
        {"wide left, wider right: its words above do not count", from_words(33, {1, 1}), from_words(100, {2, 2, 9, 9}),
         "33 bits 00000001 00000003"},
        {"zero", from_words(40, {5, 6}), from_words(8, {0}), "40 bits 00000006 00000005"},
    };
    for (const Row& row : rows) check_in_place(row, add_assign);
}

TEST(AddInPlace, ACarryTravelsOneWordBeyondTheRightOperandRequired) {
    const Row rows[] = {
        {"96 by 1 bit: the carry out of word 1 is dropped", from_words(96, {kOnes, kOnes, 0}), from_words(1, {1}),
         "96 bits 00000000 00000000 00000000"},
        {"96 by 1 bit: word 1 takes the carry", from_words(96, {kOnes, 6, 5}), from_words(1, {1}),
         "96 bits 00000005 00000007 00000000"},
        {"128 by 64 bits: the carry out of word 2 is dropped", from_words(128, {kOnes, kOnes, kOnes, 7}),
         from_words(64, {1, 0}), "128 bits 00000007 00000000 00000000 00000000"},
        {"128 by 33 bits: the same", from_words(128, {kOnes, kOnes, kOnes, 7}), from_words(33, {1, 0}),
         "128 bits 00000007 00000000 00000000 00000000"},
        {"128 by 65 bits: no word is left out", from_words(128, {kOnes, kOnes, kOnes, 7}), from_words(65, {1, 0, 0}),
         "128 bits 00000008 00000000 00000000 00000000"},
    };
    for (const Row& row : rows) check_in_place(row, add_assign);
}

TEST(AddInPlace, Number) {
    const NumberRow rows[] = {
        {"8 bits wrap", from_words(8, {0xFF}), 1, "8 bits 00000000"},
        {"8 bits, a number with more", from_words(8, {1}), 0x1FF, "8 bits 00000000"},
        {"one bit", from_words(1, {1}), 1, "1 bits 00000000"},
        {"32 bits wrap", from_words(32, {kOnes}), kOnes, "32 bits FFFFFFFE"},
        {"33 bits, carry", from_words(33, {kOnes, 0}), 1, "33 bits 00000001 00000000"},
        {"33 bits wrap", from_words(33, {kOnes, 1}), 1, "33 bits 00000000 00000000"},
        {"64 bits, the largest number", from_words(64, {kOnes, 1}), kOnes, "64 bits 00000002 FFFFFFFE"},
        {"64 bits, the largest number without a carry", from_words(64, {0, 1}), kOnes, "64 bits 00000001 FFFFFFFF"},
        {"64 bits, zero", from_words(64, {5, 6}), 0, "64 bits 00000006 00000005"},
        {"96 bits: the carry goes as far as it must (required)", from_words(96, {kOnes, kOnes, 0}), 1,
         "96 bits 00000001 00000000 00000000"},
        {"96 bits wrap", from_words(96, {kOnes, kOnes, kOnes}), 1, "96 bits 00000000 00000000 00000000"},
        {"128 bits: the carry stops where it can", from_words(128, {kOnes, 5, kOnes, 0}), 2,
         "128 bits 00000000 FFFFFFFF 00000006 00000001"},
    };
    for (const NumberRow& row : rows) check_in_place(row, add_number);
}

// ---- -= ----

TEST(SubtractInPlace, Value) {
    const Row rows[] = {
        {"8 bits wrap", from_words(8, {0}), from_words(8, {1}), "8 bits 000000FF"},
        {"16 bits wrap", from_words(16, {3}), from_words(16, {5}), "16 bits 0000FFFE"},
        {"8 bits, wider right", from_words(8, {5}), from_words(16, {0xAB03}), "8 bits 00000002"},
        {"one bit", from_words(1, {0}), from_words(1, {1}), "1 bits 00000001"},
        {"32 bits wrap", from_words(32, {0}), from_words(32, {1}), "32 bits FFFFFFFF"},
        {"compact left: only the low word of a wide right counts", from_words(16, {5}), from_words(70, {3, 9, 9}),
         "16 bits 00000002"},
        {"wide left, compact right, borrow from word 1", from_words(64, {0, 8}), from_words(8, {1}),
         "64 bits 00000007 FFFFFFFF"},
        {"64 bits, borrow", from_words(64, {0, 1}), from_words(64, {1, 0}), "64 bits 00000000 FFFFFFFF"},
        {"40 bits wrap", from_words(40, {0, 0}), from_words(40, {1, 0}), "40 bits 000000FF FFFFFFFF"},
        {"33 bits wrap", from_words(33, {0, 0}), from_words(32, {1}), "33 bits 00000001 FFFFFFFF"},
        {"borrow through equal words", from_words(96, {0, 5, 9}), from_words(96, {1, 5, 0}),
         "96 bits 00000008 FFFFFFFF FFFFFFFF"},
        {"borrow and a word of ones", from_words(96, {0, 0, 3}), from_words(96, {1, kOnes, 0}),
         "96 bits 00000002 00000000 FFFFFFFF"},
        {"a borrow that a greater word stops", from_words(96, {0, 6, 9}), from_words(96, {1, 5, 0}),
         "96 bits 00000009 00000000 FFFFFFFF"},
        {"wide left, wider right: its words above do not count", from_words(40, {5, 5}), from_words(100, {1, 2, 9, 9}),
         "40 bits 00000003 00000004"},
        {"zero", from_words(40, {5, 6}), from_words(8, {0}), "40 bits 00000006 00000005"},
    };
    for (const Row& row : rows) check_in_place(row, subtract_assign);
}

TEST(SubtractInPlace, ABorrowTravelsOneWordBeyondTheRightOperandRequired) {
    const Row rows[] = {
        {"96 by 1 bit: the borrow out of word 1 is dropped", from_words(96, {0, 0, 1}), from_words(1, {1}),
         "96 bits 00000001 FFFFFFFF FFFFFFFF"},
        {"96 by 1 bit: word 1 gives the borrow", from_words(96, {0, 6, 5}), from_words(1, {1}),
         "96 bits 00000005 00000005 FFFFFFFF"},
        {"128 by 64 bits: the borrow out of word 2 is dropped", from_words(128, {0, 0, 0, 7}), from_words(64, {1, 0}),
         "128 bits 00000007 FFFFFFFF FFFFFFFF FFFFFFFF"},
        {"128 by 33 bits: the same", from_words(128, {0, 0, 0, 7}), from_words(33, {1, 0}),
         "128 bits 00000007 FFFFFFFF FFFFFFFF FFFFFFFF"},
        {"128 by 65 bits: no word is left out", from_words(128, {0, 0, 0, 7}), from_words(65, {1, 0, 0}),
         "128 bits 00000006 FFFFFFFF FFFFFFFF FFFFFFFF"},
        {"unlike -, no borrow is decided against a compact right operand", from_words(96, {5, 2, 1}),
         from_words(2, {3}), "96 bits 00000001 00000002 00000002"},
    };
    for (const Row& row : rows) check_in_place(row, subtract_assign);
}

TEST(SubtractInPlace, Number) {
    const NumberRow rows[] = {
        {"8 bits wrap", from_words(8, {0}), 1, "8 bits 000000FF"},
        {"8 bits, a number with more", from_words(8, {1}), 0x102, "8 bits 000000FF"},
        {"one bit", from_words(1, {0}), 1, "1 bits 00000001"},
        {"32 bits wrap", from_words(32, {0}), 1, "32 bits FFFFFFFF"},
        {"33 bits wrap", from_words(33, {0, 0}), 1, "33 bits 00000001 FFFFFFFF"},
        {"64 bits, borrow", from_words(64, {5, 1}), 6, "64 bits 00000000 FFFFFFFF"},
        {"64 bits, to zero in word 0", from_words(64, {5, 1}), 5, "64 bits 00000001 00000000"},
        {"64 bits, zero", from_words(64, {5, 6}), 0, "64 bits 00000006 00000005"},
        {"64 bits wrap", from_words(64, {0, 0}), 1, "64 bits FFFFFFFF FFFFFFFF"},
        {"96 bits: the borrow goes as far as it must (required)", from_words(96, {0, 0, 1}), 1,
         "96 bits 00000000 FFFFFFFF FFFFFFFF"},
        {"128 bits, the largest number", from_words(128, {0, 0, 0, 3}), kOnes,
         "128 bits 00000002 FFFFFFFF FFFFFFFF 00000001"},
        {"128 bits: the borrow stops where it can", from_words(128, {0, 6, 0, 3}), 1,
         "128 bits 00000003 00000000 00000005 FFFFFFFF"},
    };
    for (const NumberRow& row : rows) check_in_place(row, subtract_number);
}

// ---- ++ and -- ----

TEST(Increment, WrapsAndCarries) {
    const NumberRow rows[] = {
        {"one bit", from_words(1, {0}), 0, "1 bits 00000001"},
        {"one bit wraps", from_words(1, {1}), 0, "1 bits 00000000"},
        {"8 bits wrap", from_words(8, {0xFF}), 0, "8 bits 00000000"},
        {"32 bits wrap", from_words(32, {kOnes}), 0, "32 bits 00000000"},
        {"33 bits carry", from_words(33, {kOnes, 0}), 0, "33 bits 00000001 00000000"},
        {"33 bits wrap", from_words(33, {kOnes, 1}), 0, "33 bits 00000000 00000000"},
        {"64 bits of ones wrap", from_words(64, {kOnes, kOnes}), 0, "64 bits 00000000 00000000"},
        {"65 bits carry twice", from_words(65, {kOnes, kOnes, 0}), 0, "65 bits 00000001 00000000 00000000"},
        {"96 bits, the carry stops where it can", from_words(96, {kOnes, 7, 5}), 0,
         "96 bits 00000005 00000008 00000000"},
        {"96 bits, no carry", from_words(96, {6, 7, 5}), 0, "96 bits 00000005 00000007 00000007"},
    };
    for (const NumberRow& row : rows)
        check_in_place(row, [](KVAL_UINTEGER& v, unsigned) -> KVAL_UINTEGER& { return ++v; });
}

TEST(Decrement, WrapsAndBorrows) {
    const NumberRow rows[] = {
        {"one bit", from_words(1, {1}), 0, "1 bits 00000000"},
        {"one bit wraps", from_words(1, {0}), 0, "1 bits 00000001"},
        {"8 bits wrap", from_words(8, {0}), 0, "8 bits 000000FF"},
        {"32 bits wrap", from_words(32, {0}), 0, "32 bits FFFFFFFF"},
        {"33 bits borrow", from_words(33, {0, 1}), 0, "33 bits 00000000 FFFFFFFF"},
        {"33 bits wrap", from_words(33, {0, 0}), 0, "33 bits 00000001 FFFFFFFF"},
        {"64 bits of zeros wrap", from_words(64, {0, 0}), 0, "64 bits FFFFFFFF FFFFFFFF"},
        {"65 bits borrow twice", from_words(65, {0, 0, 1}), 0, "65 bits 00000000 FFFFFFFF FFFFFFFF"},
        {"96 bits, the borrow stops where it can", from_words(96, {0, 7, 5}), 0, "96 bits 00000005 00000006 FFFFFFFF"},
        {"96 bits, no borrow", from_words(96, {6, 7, 5}), 0, "96 bits 00000005 00000007 00000005"},
    };
    for (const NumberRow& row : rows)
        check_in_place(row, [](KVAL_UINTEGER& v, unsigned) -> KVAL_UINTEGER& { return --v; });
}

// ---- what every operation in place shares ----

TEST(AddSubInPlace, XBitsAndFlagsOfTheLeftStayAndThoseOfTheRightPlayNoPart) {
    const KVAL_UINTEGER right = marked(from_words(8, {2}, {0x7E}, true), "Z");
    for (const unsigned width : {8U, 40U}) {
        const std::string bits = std::to_string(width) + " bits" + (width == 40 ? " 00000000" : "");
        const std::string mask = std::string(" x") + (width == 40 ? " 00000000" : "") + " 00000081 flags XZLH";
        check_in_place({"+=", all_marks(width), right, (bits + " 00000037" + mask).c_str()}, add_assign);
        check_in_place({"-=", all_marks(width), right, (bits + " 00000033" + mask).c_str()}, subtract_assign);
        check_in_place({"+= number", all_marks(width), 2, (bits + " 00000037" + mask).c_str()}, add_number);
        check_in_place({"-= number", all_marks(width), 2, (bits + " 00000033" + mask).c_str()}, subtract_number);
        KVAL_UINTEGER v = all_marks(width);
        EXPECT_EQ(printed(++v), bits + " 00000036" + mask);
        EXPECT_EQ(printed(--v), bits + " 00000035" + mask);

        KVAL_UINTEGER plain(0x35, width);
        plain += right;
        plain -= right;
        EXPECT_EQ(printed(plain), bits + " 00000035");
    }
}

TEST(AddSubInPlace, StrayBitsCountAndAreTrimmedAtTheEnd) {
    check_in_place({"+=, compact", from_words(4, {0x17}, {0xF1}), from_words(4, {0x21}), "4 bits 00000008 x 00000001"},
                   add_assign);
    check_in_place({"+=, wide left", from_words(40, {kOnes, 0x1FF}, {0, 0xF01}), from_words(40, {1, 0}),
                    "40 bits 00000000 00000000 x 00000001 00000000"},
                   add_assign);
    check_in_place({"+=, compact right", from_words(64, {0, 0}), from_words(8, {0x1FF}), "64 bits 00000000 000001FF"},
                   add_assign);
    check_in_place({"+=, wide right", from_words(64, {0, 1}), from_words(40, {0, 0xFFF}), "64 bits 00001000 00000000"},
                   add_assign);
    check_in_place({"-=, compact", from_words(4, {0x15}, {0xF1}), from_words(4, {0x21}), "4 bits 00000004 x 00000001"},
                   subtract_assign);
    check_in_place({"-=, wide left", from_words(40, {0, 0x100}), from_words(40, {1, 0}), "40 bits 000000FF FFFFFFFF"},
                   subtract_assign);
    check_in_place(
        {"-=, wide right", from_words(64, {0, 0x1000}), from_words(40, {0, 0xFFF}), "64 bits 00000001 00000000"},
        subtract_assign);
    check_in_place({"+= number, compact", from_words(4, {0x1F}), 1, "4 bits 00000000"}, add_number);
    check_in_place({"+= number, wide", from_words(70, {kOnes, kOnes, 0x7F}), 1, "70 bits 00000000 00000000 00000000"},
                   add_number);
    check_in_place({"-= number, compact", from_words(4, {0x10}), 1, "4 bits 0000000F"}, subtract_number);
    check_in_place({"-= number, wide", from_words(40, {0, 0x100}), 1, "40 bits 000000FF FFFFFFFF"}, subtract_number);
    KVAL_UINTEGER compact = from_words(4, {0x1F}, {0x18});
    EXPECT_EQ(printed(++compact), "4 bits 00000000 x 00000008");
    KVAL_UINTEGER wide = from_words(40, {kOnes, kOnes}, {0, 0x180});
    EXPECT_EQ(printed(++wide), "40 bits 00000000 00000000 x 00000080 00000000");
    compact.set_uvalue_at(0, 0x10);
    EXPECT_EQ(printed(--compact), "4 bits 0000000F x 00000008");
    wide.set_uvalue_at(1, 0x100);
    EXPECT_EQ(printed(--wide), "40 bits 000000FF FFFFFFFF x 00000080 00000000");
}

TEST(AddSubInPlace, TheTextGoesEvenWhereNoBitChanges) {
    for (const char* digits : {"ff", "ffffffffff"}) {
        KVAL_UINTEGER v(0, 1);
        v.set_value_from_hex_string(digits);
        ASSERT_STREQ(v.as_hex_string(), digits);
        v += 0U;
        EXPECT_EQ(std::string(v.as_hex_string()), std::string(v.bitwidth() / 4, 'F'));
    }
}

TEST(AddSubInPlace, OneObjectAsBothSides) {
    const struct {
        const char* name;
        KVAL_UINTEGER& (*operation)(KVAL_UINTEGER&, const KVAL_UINTEGER&);
        KVAL_UINTEGER value;
        const char* want;
    } rows[] = {
        {"+=, 8 bits", add_assign, from_words(8, {0x81}, {3}), "8 bits 00000002 x 00000003"},
        {"+=, 32 bits", add_assign, from_words(32, {0xC0000000}), "32 bits 80000000"},
        {"+=, 64 bits", add_assign, from_words(64, {0x80000001, 0xC0000000}), "64 bits 80000001 00000002"},
        {"+=, 96 bits of ones", add_assign, from_words(96, {kOnes, kOnes, kOnes}),
         "96 bits FFFFFFFF FFFFFFFF FFFFFFFE"},
        {"-=, 8 bits", subtract_assign, from_words(8, {0x81}, {3}, true), "8 bits 00000000 x 00000003 flags X"},
        {"-=, 70 bits", subtract_assign, from_words(70, {0, 5, 0x3F}, {0, 0, 1}, true),
         "70 bits 00000000 00000000 00000000 x 00000001 00000000 00000000 flags X"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KVAL_UINTEGER v(row.value);
        cache_text(v);
        EXPECT_EQ(&row.operation(v, v), &v);
        EXPECT_EQ(printed(v), row.want);
        EXPECT_FALSE(keeps_text(v));
    }
}

// ---- + ----

TEST(Add, TheSumGrowsByOneBitWhereItCarriesOutOfTheWidthRequired) {
    const Row rows[] = {
        {"8 bits grow", from_words(8, {0xFF}), from_words(8, {1}), "9 bits 00000100"},
        {"8 bits stay", from_words(8, {0xFE}), from_words(8, {1}), "8 bits 000000FF"},
        {"one bit grows", from_words(1, {1}), from_words(1, {1}), "2 bits 00000002"},
        {"one bit stays", from_words(1, {1}), from_words(1, {0}), "1 bits 00000001"},
        {"3 and 8 bits", from_words(3, {7}), from_words(8, {0xF8}), "8 bits 000000FF"},
        {"8 and 3 bits grow", from_words(8, {0xF9}), from_words(3, {7}), "9 bits 00000100"},
        {"31 bits grow and stay compact", from_words(31, {0x7FFFFFFF}), from_words(31, {1}), "32 bits 80000000"},
        {"31 bits, both the largest", from_words(31, {0x7FFFFFFF}), from_words(31, {0x7FFFFFFF}), "32 bits FFFFFFFE"},
        {"32 bits stay", from_words(32, {0x7FFFFFFF}), from_words(32, {0x80000000}), "32 bits FFFFFFFF"},
        {"32 bits grow and become wide", from_words(32, {kOnes}), from_words(32, {1}), "33 bits 00000001 00000000"},
        {"32 bits, both the largest", from_words(32, {kOnes}), from_words(32, {kOnes}), "33 bits 00000001 FFFFFFFE"},
        {"32 and 1 bit become wide", from_words(32, {kOnes}), from_words(1, {1}), "33 bits 00000001 00000000"},
        {"33 bits grow", from_words(33, {kOnes, 1}), from_words(33, {1, 0}), "34 bits 00000002 00000000"},
        {"33 and 32 bits", from_words(33, {kOnes, 0}), from_words(32, {1}), "33 bits 00000001 00000000"},
        {"32 and 33 bits grow", from_words(32, {1}), from_words(33, {kOnes, 1}), "34 bits 00000002 00000000"},
        {"40 bits without a carry out of bit 39", from_words(40, {kOnes, 0x7F}), from_words(40, {1, 0x7F}),
         "40 bits 000000FF 00000000"},
        {"40 bits with a carry out of bit 39", from_words(40, {kOnes, 0xFF}), from_words(40, {1, 0}),
         "41 bits 00000100 00000000"},
        {"40 bits, both the largest", from_words(40, {kOnes, 0xFF}), from_words(40, {kOnes, 0xFF}),
         "41 bits 000001FF FFFFFFFE"},
        {"63 bits grow to two full words", from_words(63, {kOnes, 0x7FFFFFFF}), from_words(63, {1, 0}),
         "64 bits 80000000 00000000"},
        {"64 bits grow by a word", from_words(64, {kOnes, kOnes}), from_words(64, {1, 0}),
         "65 bits 00000001 00000000 00000000"},
        {"64 bits, both the largest", from_words(64, {kOnes, kOnes}), from_words(64, {kOnes, kOnes}),
         "65 bits 00000001 FFFFFFFF FFFFFFFE"},
        {"64 and 1 bit grow by a word", from_words(64, {kOnes, kOnes}), from_words(1, {1}),
         "65 bits 00000001 00000000 00000000"},
        {"64 and 65 bits", from_words(64, {kOnes, kOnes}), from_words(65, {1, 0, 0}),
         "65 bits 00000001 00000000 00000000"},
        {"1 and 128 bits: the carry goes as far as it must", from_words(1, {1}),
         from_words(128, {kOnes, kOnes, kOnes, 0}), "128 bits 00000001 00000000 00000000 00000000"},
        {"128 and 64 bits: the same", from_words(128, {kOnes, kOnes, kOnes, 7}), from_words(64, {1, 0}),
         "128 bits 00000008 00000000 00000000 00000000"},
        {"ones and 0 with a carry in", from_words(96, {kOnes, kOnes, 3}), from_words(96, {1, 0, 4}),
         "96 bits 00000008 00000000 00000000"},
        {"0 and ones with a carry in", from_words(96, {1, 0, 4}), from_words(96, {kOnes, kOnes, 3}),
         "96 bits 00000008 00000000 00000000"},
        {"0 and 0 with a carry in", from_words(96, {kOnes, 0, 4}), from_words(96, {1, 0, 3}),
         "96 bits 00000007 00000001 00000000"},
        {"zero and zero", from_words(40, {0, 0}), from_words(8, {0}), "40 bits 00000000 00000000"},
    };
    for (const Row& row : rows) check_free(row, sum);
}

TEST(Add, XBitsAndFlagsAreThoseOfTheWiderOperandAndOfTheRightOneOfEqualWidthsRequired) {
    const KVAL_UINTEGER narrow = marked(from_words(8, {1}, {0x0F}, true), "Z");
    const KVAL_UINTEGER wider = marked(from_words(16, {2}, {0x8001}, true), "L");
    const KVAL_UINTEGER wide = marked(from_words(40, {4, 0}, {3, 0x80}, true), "H");
    const Row rows[] = {
        {"wider right", narrow, wider, "16 bits 00000003 x 00008001 flags XL"},
        {"wider left", wider, narrow, "16 bits 00000003 x 00008001 flags XL"},
        {"wide right", narrow, wide, "40 bits 00000000 00000005 x 00000080 00000003 flags XH"},
        {"wide left", wide, narrow, "40 bits 00000000 00000005 x 00000080 00000003 flags XH"},
        {"X bits of the narrower vanish", narrow, from_words(16, {2}), "16 bits 00000003"},
        {"X bits of the narrower vanish, wide", from_words(40, {2, 0}), narrow, "40 bits 00000000 00000003"},
        {"equal widths: of the right", from_words(8, {2}, {0xF0}, true), narrow, "8 bits 00000003 x 0000000F flags XZ"},
        {"equal widths: not of the left", narrow, from_words(8, {2}), "8 bits 00000003"},
        {"equal wide widths: of the right", from_words(40, {2, 0}, {0x70, 0}), wide,
         "40 bits 00000000 00000006 x 00000080 00000003 flags XH"},
        {"equal wide widths: not of the left", wide, from_words(40, {2, 0}), "40 bits 00000000 00000006"},
    };
    for (const Row& row : rows) check_free(row, sum);
}

TEST(Add, TheGrownBitIsNotX) {
    const Row rows[] = {
        {"compact", from_words(8, {1}), from_words(8, {0xFF}, {0xFF}, true), "9 bits 00000100 x 000000FF flags X"},
        {"compact to wide: the new top word of the x-mask is 0", from_words(32, {1}),
         from_words(32, {kOnes}, {kOnes}, true), "33 bits 00000001 00000000 x 00000000 FFFFFFFF flags X"},
        {"wide", from_words(40, {1, 0}), from_words(40, {kOnes, 0xFF}, {kOnes, 0xFF}, true),
         "41 bits 00000100 00000000 x 000000FF FFFFFFFF flags X"},
        {"wide by a word", from_words(1, {1}), from_words(64, {kOnes, kOnes}, {kOnes, kOnes}, true),
         "65 bits 00000001 00000000 00000000 x 00000000 FFFFFFFF FFFFFFFF flags X"},
    };
    for (const Row& row : rows) check_free(row, sum);
}

TEST(Add, StrayBitsCount) {
    const Row rows[] = {
        {"a carry out of bit 31 below 32 bits: one bit more, trimmed, compact (required)", from_words(4, {0xFFFFFFF0}),
         from_words(4, {0x15}), "5 bits 00000005"},
        {"the bit above the width set: one bit more", from_words(4, {0x15}), from_words(4, {1}), "5 bits 00000016"},
        {"the bit above the width clear: no growth", from_words(4, {0x25}), from_words(4, {1}), "4 bits 00000006"},
        {"the x-mask is trimmed to the width of the sum", from_words(4, {1}), from_words(4, {0xF}, {0xF1}),
         "5 bits 00000010 x 00000011"},
        {"of a compact operand beside a wide one", from_words(40, {0, 0}), from_words(4, {0x10F}),
         "40 bits 00000000 0000010F"},
        {"wide: the bit above the width set", from_words(40, {0, 0x300}), from_words(40, {0, 0}),
         "41 bits 00000100 00000000"},
        {"wide: the bit above the width clear", from_words(40, {0, 0x200}), from_words(40, {0, 1}),
         "40 bits 00000001 00000000"},
        {"wide: a carry out of the top word (required)", from_words(40, {0, kOnes}), from_words(40, {5, 3}),
         "41 bits 00000002 00000005"},
    };
    for (const Row& row : rows) check_free(row, sum);
}

// ---- - ----

TEST(Subtract, KeepsTheLeftWidthAndWraps) {
    const Row rows[] = {
        {"8 bits", from_words(8, {5}), from_words(8, {3}), "8 bits 00000002"},
        {"16 bits, 3 minus 5", from_words(16, {3}), from_words(16, {5}), "16 bits 0000FFFE"},
        {"one bit", from_words(1, {0}), from_words(1, {1}), "1 bits 00000001"},
        {"8 and 16 bits", from_words(8, {5}), from_words(16, {0xAB03}), "8 bits 00000002"},
        {"16 and 8 bits", from_words(16, {0x100}), from_words(8, {1}), "16 bits 000000FF"},
        {"32 bits wrap", from_words(32, {0}), from_words(32, {1}), "32 bits FFFFFFFF"},
        {"8 and 64 bits: only the low word counts", from_words(8, {5}), from_words(64, {2, kOnes}), "8 bits 00000003"},
        {"33 and 32 bits", from_words(33, {0, 1}), from_words(32, {kOnes}), "33 bits 00000000 00000001"},
        {"40 bits wrap", from_words(40, {0, 0}), from_words(40, {1, 0}), "40 bits 000000FF FFFFFFFF"},
        {"64 bits, borrow", from_words(64, {0, 1}), from_words(64, {1, 0}), "64 bits 00000000 FFFFFFFF"},
        {"borrow through equal words", from_words(96, {0, 5, 9}), from_words(96, {1, 5, 0}),
         "96 bits 00000008 FFFFFFFF FFFFFFFF"},
        {"borrow and a word of ones", from_words(96, {0, 0, 3}), from_words(96, {1, kOnes, 0}),
         "96 bits 00000002 00000000 FFFFFFFF"},
        {"40 and 100 bits: the words above do not count", from_words(40, {5, 5}), from_words(100, {6, 1, 9, 9}),
         "40 bits 00000003 FFFFFFFF"},
        {"wide right of fewer words: the borrow is decided against 0", from_words(96, {5, 2, 1}),
         from_words(64, {3, 0}), "96 bits 00000001 00000002 00000002"},
        {"wide right of fewer words: the borrow goes as far as it must", from_words(128, {0, 0, 0, 5}),
         from_words(33, {1, 0}), "128 bits 00000004 FFFFFFFF FFFFFFFF FFFFFFFF"},
    };
    for (const Row& row : rows) check_free(row, difference);
}

TEST(Subtract, ACompactRightOperandDecidesTheBorrowOfEveryWordRequired) {
    const Row rows[] = {
        {"words 5 2 1 minus 3: word 1 is below 3, so word 2 loses 1", from_words(96, {5, 2, 1}), from_words(2, {3}),
         "96 bits 00000000 00000002 00000002"},
        {"a word equal to the right one passes a borrow on", from_words(96, {2, 3, 9}), from_words(2, {3}),
         "96 bits 00000008 00000002 FFFFFFFF"},
        {"a word equal to the right one starts no borrow", from_words(96, {5, 3, 9}), from_words(2, {3}),
         "96 bits 00000009 00000003 00000002"},
        {"words 5 0 0 9 minus 4: every word of 0 borrows", from_words(128, {5, 0, 0, 9}), from_words(3, {4}),
         "128 bits 00000008 FFFFFFFF 00000000 00000001"},
        {"greater words borrow only where they must", from_words(96, {0, 7, 7}), from_words(1, {1}),
         "96 bits 00000007 00000006 FFFFFFFF"},
        {"a borrow through a word of 0", from_words(96, {0, 0, 7}), from_words(1, {1}),
         "96 bits 00000006 FFFFFFFF FFFFFFFF"},
        {"two words: the borrow out of the last has no word to go to", from_words(33, {5, 1}), from_words(2, {3}),
         "33 bits 00000001 00000002"},
        {"0 never borrows", from_words(96, {0, 0, 1}), from_words(8, {0}), "96 bits 00000001 00000000 00000000"},
        {"32 bits, the largest", from_words(96, {kOnes, 5, 5}), from_words(32, {kOnes}),
         "96 bits 00000004 00000005 00000000"},
    };
    for (const Row& row : rows) check_free(row, difference);
}

TEST(Subtract, XBitsAndFlagsAreThoseOfTheLeft) {
    const KVAL_UINTEGER narrow = marked(from_words(8, {6}, {0x0F}, true), "Z");
    const KVAL_UINTEGER wide = marked(from_words(40, {4, 0}, {3, 0x80}, true), "H");
    const Row rows[] = {
        {"compact", narrow, from_words(16, {1}, {0xFFFF}), "8 bits 00000005 x 0000000F flags XZ"},
        {"wide left", wide, narrow, "40 bits 000000FF FFFFFFFE x 00000080 00000003 flags XH"},
        {"wide right", narrow, wide, "8 bits 00000002 x 0000000F flags XZ"},
        {"those of the right vanish, compact", from_words(8, {8}), narrow, "8 bits 00000002"},
        {"those of the right vanish, wide", from_words(40, {8, 0}), wide, "40 bits 00000000 00000004"},
    };
    for (const Row& row : rows) check_free(row, difference);
}

TEST(Subtract, StrayBitsCountAndAreTrimmedAtTheEnd) {
    const Row rows[] = {
        {"compact left", from_words(4, {0x15}, {0xF1}), from_words(4, {1}), "4 bits 00000004 x 00000001"},
        {"compact right", from_words(8, {0x20}), from_words(4, {0x13}), "8 bits 0000000D"},
        {"wide left", from_words(40, {0, 0x100}, {0, 0x101}), from_words(40, {1, 0}),
         "40 bits 000000FF FFFFFFFF x 00000001 00000000"},
        {"wide right", from_words(64, {0, 0x1000}), from_words(40, {0, 0xFFF}), "64 bits 00000001 00000000"},
    };
    for (const Row& row : rows) check_free(row, difference);
}

// ---- one object as several operands of + and - ----

TEST(AddSub, OneObjectAsBothOperandsAndAsTheTarget) {
    KVAL_UINTEGER compact = from_words(8, {0x81});
    EXPECT_EQ(printed(compact + compact), "9 bits 00000102");
    EXPECT_EQ(printed(compact - compact), "8 bits 00000000");
    compact = compact + compact;
    EXPECT_EQ(printed(compact), "8 bits 00000002");
    KVAL_UINTEGER wide = from_words(64, {0x80000001, 0xC0000000}, {1, 0});
    EXPECT_EQ(printed(wide + wide), "65 bits 00000001 80000001 00000002 x 00000000 00000000 00000001");
    EXPECT_EQ(printed(wide - wide), "64 bits 00000000 00000000 x 00000000 00000001");
    wide = wide + wide;
    EXPECT_EQ(printed(wide), "64 bits 80000001 00000002 x 00000000 00000001");
    wide = wide - wide;
    EXPECT_EQ(printed(wide), "64 bits 00000000 00000000 x 00000000 00000001");
}

}  // namespace
