// Tests of the shifts: << >> and, in place, <<= >>=.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <new>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

constexpr unsigned kOnes = 0xFFFFFFFF;
constexpr unsigned kTwoTo31 = 0x80000000;

KVAL_UINTEGER& shift_left(KVAL_UINTEGER& v, unsigned count) { return v <<= count; }
KVAL_UINTEGER& shift_right(KVAL_UINTEGER& v, unsigned count) { return v >>= count; }
KVAL_UINTEGER shifted_left(const KVAL_UINTEGER& v, unsigned count) { return v << count; }
KVAL_UINTEGER shifted_right(const KVAL_UINTEGER& v, unsigned count) { return v >> count; }

using Row = NumberRow;

// ---- <<= ----

TEST(ShiftLeftInPlace, Value) {
    const Row rows[] = {
        {"16 bits by 1: the top bit is lost", from_words(16, {0x8001}), 1, "16 bits 00000002"},
        {"16 bits by 0", from_words(16, {0x8001}), 0, "16 bits 00008001"},
        {"16 bits by the width", from_words(16, {0x8001}), 16, "16 bits 00000000"},
        {"16 bits by 31", from_words(16, {0x8001}), 31, "16 bits 00000000"},
        {"32 bits by 31", from_words(32, {3}), 31, "32 bits 80000000"},
        {"one bit by 1", from_words(1, {1}), 1, "1 bits 00000000"},
        {"33 bits by 1", from_words(33, {0x80000001, 1}), 1, "33 bits 00000001 00000002"},
        {"33 bits by 32", from_words(33, {0x80000001, 0}), 32, "33 bits 00000001 00000000"},
        {"33 bits by the width", from_words(33, {kOnes, 1}), 33, "33 bits 00000000 00000000"},
        {"40 bits by 4", from_words(40, {kOnes, 0xFF}), 4, "40 bits 000000FF FFFFFFF0"},
        {"64 bits by 1: from word 0 into word 1", from_words(64, {0x80000000, 0}), 1, "64 bits 00000001 00000000"},
        {"64 bits by 0", from_words(64, {0x12345678, 0x9ABCDEF0}), 0, "64 bits 9ABCDEF0 12345678"},
        {"64 bits by 31", from_words(64, {0x80000003, 1}), 31, "64 bits C0000001 80000000"},
        {"64 bits by 32", from_words(64, {1, 2}), 32, "64 bits 00000001 00000000"},
        {"64 bits by 33", from_words(64, {0x80000001, 2}), 33, "64 bits 00000002 00000000"},
        {"64 bits by 63", from_words(64, {3, 0}), 63, "64 bits 80000000 00000000"},
        {"64 bits by the width", from_words(64, {kOnes, kOnes}), 64, "64 bits 00000000 00000000"},
        {"63 bits by 62", from_words(63, {3, 0}), 62, "63 bits 40000000 00000000"},
        {"65 bits by 64", from_words(65, {3, 0, 0}), 64, "65 bits 00000001 00000000 00000000"},
        {"65 bits by the width", from_words(65, {3, 0, 0}), 65, "65 bits 00000000 00000000 00000000"},
        {"96 bits by 36", from_words(96, {0x12345678, 0x9ABCDEF0, 0}), 36, "96 bits ABCDEF01 23456780 00000000"},
        {"40 bits by 1000", from_words(40, {kOnes, 0xFF}), 1000, "40 bits 00000000 00000000"},
        {"40 bits by 2^31 - 1", from_words(40, {kOnes, 0xFF}), INT_MAX, "40 bits 00000000 00000000"},
        {"40 bits by 2^31", from_words(40, {kOnes, 0xFF}), kTwoTo31, "40 bits 00000000 00000000"},
        {"40 bits by 2^32 - 1", from_words(40, {kOnes, 0xFF}), kOnes, "40 bits 00000000 00000000"},
    };
    for (const Row& row : rows) check_in_place(row, shift_left);
}

TEST(ShiftLeftInPlace, ACompactCountIsTakenModulo32Required) {
    const Row rows[] = {
        {"by 32: unchanged", from_words(16, {0x8001}), 32, "16 bits 00008001"},
        {"by 33: by 1", from_words(16, {0x8001}), 33, "16 bits 00000002"},
        {"32 bits by 32: unchanged", from_words(32, {0x80000001}, {0x40000002}), 32, "32 bits 80000001 x 40000002"},
        {"by 64: unchanged", from_words(16, {0x8001}), 64, "16 bits 00008001"},
        {"by 2^31: unchanged", from_words(16, {0x8001}), kTwoTo31, "16 bits 00008001"},
        {"by 2^31 + 1: by 1", from_words(16, {0x8001}), kTwoTo31 + 1, "16 bits 00000002"},
        {"by 2^32 - 1: by 31", from_words(32, {3}), kOnes, "32 bits 80000000"},
    };
    for (const Row& row : rows) check_in_place(row, shift_left);
}

TEST(ShiftLeftInPlace, XBitsMoveAlongAndFlagsStay) {
    const Row rows[] = {
        {"compact", from_words(8, {0xA5}, {0x81}, true), 1, "8 bits 0000004A x 00000002 flags X"},
        {"compact, every X bit gone", from_words(8, {0xFF}, {0x80}, true), 1, "8 bits 000000FE flags X"},
        {"wide, into word 1", from_words(40, {0x80000001, 0}, {0x80000001, 0}, true), 1,
         "40 bits 00000001 00000002 x 00000001 00000002 flags X"},
        {"wide, by a word", from_words(64, {1, 0}, {0xF0, 0xF}, true), 32,
         "64 bits 00000001 00000000 x 000000F0 00000000 flags X"},
        {"wide, every X bit gone", from_words(40, {1, 0}, {0, 0x80}, true), 1, "40 bits 00000000 00000002 flags X"},
        {"wide, by the width", from_words(40, {1, 0}, {kOnes, 0xFF}, true), 40, "40 bits 00000000 00000000 flags X"},
        {"other flags, compact", marked(from_words(8, {1}), "ZLH"), 1, "8 bits 00000002 flags ZLH"},
        {"other flags, wide", marked(from_words(40, {1, 0}), "ZLH"), 1, "40 bits 00000000 00000002 flags ZLH"},
    };
    for (const Row& row : rows) check_in_place(row, shift_left);
}

TEST(ShiftLeftInPlace, StrayBitsAreTrimmed) {
    const Row rows[] = {
        {"compact", from_words(4, {0x1F}, {0x11}), 1, "4 bits 0000000E x 00000002"},
        {"compact by 0", from_words(4, {0x1F}, {0x11}), 0, "4 bits 0000000F x 00000001"},
        {"wide", from_words(40, {0, 0xF01}, {0, 0xF02}), 4, "40 bits 00000010 00000000 x 00000020 00000000"},
        {"wide by 0", from_words(40, {0, 0xF01}, {0, 0xF02}), 0, "40 bits 00000001 00000000 x 00000002 00000000"},
    };
    for (const Row& row : rows) check_in_place(row, shift_left);
}

// ---- >>= ----

TEST(ShiftRightInPlace, Value) {
    const Row rows[] = {
        {"16 bits by 4: the width stays", from_words(16, {0xABCD}), 4, "16 bits 00000ABC"},
        {"16 bits by 0", from_words(16, {0xABCD}), 0, "16 bits 0000ABCD"},
        {"16 bits by the width", from_words(16, {0xABCD}), 16, "16 bits 00000000"},
        {"32 bits by 31", from_words(32, {0xC0000000}), 31, "32 bits 00000001"},
        {"one bit by 1", from_words(1, {1}), 1, "1 bits 00000000"},
        {"33 bits by 1", from_words(33, {0, 1}), 1, "33 bits 00000000 80000000"},
        {"33 bits by 32", from_words(33, {kOnes, 1}), 32, "33 bits 00000000 00000001"},
        {"33 bits by the width", from_words(33, {kOnes, 1}), 33, "33 bits 00000000 00000000"},
        {"40 bits by 4", from_words(40, {0x12345678, 0x9A}), 4, "40 bits 00000009 A1234567"},
        {"64 bits by 0", from_words(64, {0x12345678, 0x9ABCDEF0}), 0, "64 bits 9ABCDEF0 12345678"},
        {"64 bits by 31", from_words(64, {0x80000000, 0xC0000001}), 31, "64 bits 00000001 80000003"},
        {"64 bits by 32", from_words(64, {1, 2}), 32, "64 bits 00000000 00000002"},
        {"64 bits by 63", from_words(64, {kOnes, 0xC0000000}), 63, "64 bits 00000000 00000001"},
        {"64 bits by the width", from_words(64, {kOnes, kOnes}), 64, "64 bits 00000000 00000000"},
        {"64 bits by more", from_words(64, {kOnes, kOnes}), 65, "64 bits 00000000 00000000"},
        {"65 bits by 64", from_words(65, {0, 0, 1}), 64, "65 bits 00000000 00000000 00000001"},
        {"65 bits by the width", from_words(65, {kOnes, kOnes, 1}), 65, "65 bits 00000000 00000000 00000000"},
        {"96 bits by 32", from_words(96, {1, 2, 3}), 32, "96 bits 00000000 00000003 00000002"},
        {"96 bits by 33", from_words(96, {1, 2, 3}), 33, "96 bits 00000000 00000001 80000001"},
        {"96 bits by 95", from_words(96, {kOnes, kOnes, 0x80000000}), 95, "96 bits 00000000 00000000 00000001"},
        {"40 bits by 2^31 - 1", from_words(40, {kOnes, 0xFF}), INT_MAX, "40 bits 00000000 00000000"},
        {"40 bits by 2^31", from_words(40, {kOnes, 0xFF}), kTwoTo31, "40 bits 00000000 00000000"},
        {"40 bits by 2^32 - 1", from_words(40, {kOnes, 0xFF}), kOnes, "40 bits 00000000 00000000"},
    };
    for (const Row& row : rows) check_in_place(row, shift_right);
}

TEST(ShiftRightInPlace, ACompactCountIsTakenModulo32Required) {
    const Row rows[] = {
        {"by 32: unchanged", from_words(16, {0xABCD}), 32, "16 bits 0000ABCD"},
        {"by 33: by 1", from_words(16, {0xABCD}), 33, "16 bits 000055E6"},
        {"32 bits by 32: unchanged", from_words(32, {0x80000001}, {0x40000002}), 32, "32 bits 80000001 x 40000002"},
        {"by 64: unchanged", from_words(16, {0xABCD}), 64, "16 bits 0000ABCD"},
        {"by 2^31: unchanged", from_words(16, {0xABCD}), kTwoTo31, "16 bits 0000ABCD"},
        {"by 2^31 + 1: by 1", from_words(16, {0xABCD}), kTwoTo31 + 1, "16 bits 000055E6"},
        {"by 2^32 - 1: by 31", from_words(32, {0xC0000000}), kOnes, "32 bits 00000001"},
    };
    for (const Row& row : rows) check_in_place(row, shift_right);
}

TEST(ShiftRightInPlace, XBitsMoveAlongAndFlagsStay) {
    const Row rows[] = {
        {"compact", from_words(8, {0xA5}, {0x81}, true), 1, "8 bits 00000052 x 00000040 flags X"},
        {"compact, every X bit gone", from_words(8, {0xFF}, {1}, true), 1, "8 bits 0000007F flags X"},
        {"wide, into word 0", from_words(40, {0, 1}, {0, 1}, true), 1,
         "40 bits 00000000 80000000 x 00000000 80000000 flags X"},
        {"wide, by a word", from_words(64, {0, 5}, {0xF0, 0xF}, true), 32,
         "64 bits 00000000 00000005 x 00000000 0000000F flags X"},
        {"wide, every X bit gone", from_words(40, {0, 0xFF}, {0xFFFF, 0}, true), 16,
         "40 bits 00000000 00FF0000 flags X"},
        {"wide, by the width", from_words(64, {1, 1}, {kOnes, kOnes}, true), 64, "64 bits 00000000 00000000 flags X"},
        {"other flags, compact", marked(from_words(8, {2}), "ZLH"), 1, "8 bits 00000001 flags ZLH"},
        {"other flags, wide", marked(from_words(40, {2, 0}), "ZLH"), 41, "40 bits 00000000 00000000 flags ZLH"},
    };
    for (const Row& row : rows) check_in_place(row, shift_right);
}

TEST(ShiftRightInPlace, StrayBitsMoveInAndTheRestIsTrimmed) {
    const Row rows[] = {
        {"compact", from_words(4, {0xF5}, {0xF1}), 1, "4 bits 0000000A x 00000008"},
        {"compact by 0", from_words(4, {0xF5}, {0xF1}), 0, "4 bits 00000005 x 00000001"},
        {"wide", from_words(40, {0, 0x300}, {0, 0x100}), 1, "40 bits 00000080 00000000 x 00000080 00000000"},
        {"wide by 0", from_words(40, {0, 0xF01}), 0, "40 bits 00000001 00000000"},
        {"wide by width - 1", from_words(40, {0, 0x100}), 39, "40 bits 00000000 00000002"},
        {"wide by the width: all goes", from_words(40, {0, 0xFFFFFF00}, {0, 0xFFFFFF00}), 40,
         "40 bits 00000000 00000000"},
    };
    for (const Row& row : rows) check_in_place(row, shift_right);
}

// ---- << ----

TEST(ShiftLeft, WidensByTheCount) {
    const Row rows[] = {
        {"8 bits by 4", from_words(8, {0xFF}), 4, "12 bits 00000FF0"},
        {"8 bits by 0", from_words(8, {0xFF}), 0, "8 bits 000000FF"},
        {"one bit by 1", from_words(1, {1}), 1, "2 bits 00000002"},
        {"8 bits by 24: 32 bits, compact", from_words(8, {0xFF}), 24, "32 bits FF000000"},
        {"8 bits by 25: 33 bits, wide", from_words(8, {0xFF}), 25, "33 bits 00000001 FE000000"},
        {"30 bits by 2: 32 bits, compact", from_words(30, {0x3FFFFFFF}), 2, "32 bits FFFFFFFC"},
        {"30 bits by 3: 33 bits, the top one in word 1", from_words(30, {0x3FFFFFFF}), 3, "33 bits 00000001 FFFFFFF8"},
        {"one bit by 31", from_words(1, {1}), 31, "32 bits 80000000"},
        {"one bit by 32: no modulo where the result is wide", from_words(1, {1}), 32, "33 bits 00000001 00000000"},
        {"32 bits by 1", from_words(32, {kOnes}), 1, "33 bits 00000001 FFFFFFFE"},
        {"8 bits by 32", from_words(8, {0xFF}), 32, "40 bits 000000FF 00000000"},
        {"8 bits by 56: two full words", from_words(8, {0xFF}), 56, "64 bits FF000000 00000000"},
        {"8 bits by 57: a third word", from_words(8, {0xFF}), 57, "65 bits 00000001 FE000000 00000000"},
        {"8 bits by 100", from_words(8, {0x81}), 100, "108 bits 00000810 00000000 00000000 00000000"},
        {"40 bits by 0", from_words(40, {0x12345678, 0x9A}), 0, "40 bits 0000009A 12345678"},
        {"40 bits by 4", from_words(40, {0x12345678, 0x9A}), 4, "44 bits 000009A1 23456780"},
        {"40 bits by 24: two full words", from_words(40, {0x12345678, 0x9A}), 24, "64 bits 9A123456 78000000"},
        {"40 bits by 25: a third word", from_words(40, {0x12345678, 0x9A}), 25, "65 bits 00000001 342468AC F0000000"},
        {"40 bits by 32", from_words(40, {0x12345678, 0x9A}), 32, "72 bits 0000009A 12345678 00000000"},
        {"64 bits by 64", from_words(64, {1, 0x80000000}), 64, "128 bits 80000000 00000001 00000000 00000000"},
    };
    for (const Row& row : rows) check_free(row, shifted_left);
}

TEST(ShiftLeft, XBitsMoveAlongAndFlagsStay) {
    const Row rows[] = {
        {"compact", marked(from_words(8, {0xA5}, {0x81}, true), "ZLH"), 4, "12 bits 00000A50 x 00000810 flags XZLH"},
        {"compact to wide", marked(from_words(8, {0xA5}, {0x81}, true), "Z"), 28,
         "36 bits 0000000A 50000000 x 00000008 10000000 flags XZ"},
        {"wide", from_words(40, {1, 0}, {0x80000000, 0x80}, true), 33,
         "73 bits 00000000 00000002 00000000 x 00000101 00000000 00000000 flags X"},
        {"no flag though there are X bits", from_words(40, {0, 0}, {1, 0}), 1,
         "41 bits 00000000 00000000 x 00000000 00000002"},
    };
    for (const Row& row : rows) check_free(row, shifted_left);
}

TEST(ShiftLeft, StrayBitsAreNotTrimmedRequired) {
    const Row rows[] = {
        {"compact", from_words(4, {0xF5}, {0x10}), 2, "6 bits 000003D4 x 00000040"},
        {"compact to wide", from_words(4, {0xF5}), 32, "36 bits 000000F5 00000000"},
        {"wide", from_words(40, {0, 0x1FF}), 4, "44 bits 00001FF0 00000000"},
    };
    for (const Row& row : rows) check_free(row, shifted_left);
}

TEST(ShiftLeft, AWidthThatNoValueHasIsRefused) {
    EXPECT_THROW(KVAL_UINTEGER(1, 1) << 0x7FFFFFE0, std::bad_alloc);
    EXPECT_THROW(KVAL_UINTEGER(1, 8) << 0x7FFFFFD9, std::bad_alloc);
    EXPECT_THROW(KVAL_UINTEGER(1, 40) << 0x7FFFFFB9, std::bad_alloc);
}

// ---- >> ----

TEST(ShiftRight, NarrowsByTheCountDownToOneBit) {
    const Row rows[] = {
        {"16 bits by 4", from_words(16, {0xABCD}), 4, "12 bits 00000ABC"},
        {"16 bits by 0", from_words(16, {0xABCD}), 0, "16 bits 0000ABCD"},
        {"8 bits by 7", from_words(8, {0xFF}), 7, "1 bits 00000001"},
        {"8 bits by the width: one bit, 0", from_words(8, {0xFF}), 8, "1 bits 00000000"},
        {"8 bits by 31: one bit, 0", from_words(8, {0xFF}), 31, "1 bits 00000000"},
        {"32 bits by 31", from_words(32, {0x80000000}), 31, "1 bits 00000001"},
        {"one bit by 1", from_words(1, {1}), 1, "1 bits 00000000"},
        {"33 bits by 1: compact", from_words(33, {kOnes, 1}), 1, "32 bits FFFFFFFF"},
        {"33 bits by 32", from_words(33, {0, 1}), 32, "1 bits 00000001"},
        {"33 bits by the width", from_words(33, {kOnes, 1}), 33, "1 bits 00000000"},
        {"40 bits by 0", from_words(40, {0x12345678, 0x9A}), 0, "40 bits 0000009A 12345678"},
        {"40 bits by 39", from_words(40, {0, 0x80}), 39, "1 bits 00000001"},
        {"40 bits by the width", from_words(40, {kOnes, 0xFF}), 40, "1 bits 00000000"},
        {"40 bits by 41", from_words(40, {kOnes, 0xFF}), 41, "1 bits 00000000"},
        {"40 bits by 64", from_words(40, {kOnes, 0xFF}), 64, "1 bits 00000000"},
        {"40 bits by 1000", from_words(40, {kOnes, 0xFF}), 1000, "1 bits 00000000"},
        {"64 bits by 31: 33 bits, wide", from_words(64, {0x89ABCDEF, 0x01234567}), 31, "33 bits 00000000 02468ACF"},
        {"64 bits by 32: compact", from_words(64, {0x89ABCDEF, 0x01234567}), 32, "32 bits 01234567"},
        {"65 bits by 1: two full words", from_words(65, {0, 0, 1}), 1, "64 bits 80000000 00000000"},
        {"65 bits by 32: 33 bits, wide", from_words(65, {0, 0xABCDEF01, 1}), 32, "33 bits 00000001 ABCDEF01"},
        {"65 bits by 33: compact", from_words(65, {0, 0xABCDEF01, 1}), 33, "32 bits D5E6F780"},
        {"100 bits by 37: bits 37 to 99", from_words(100, {0x11111111, 0x89ABCDEF, 0x01234567, 0xA}), 37,
         "63 bits 50091A2B 3C4D5E6F"},
        {"128 bits by 64", from_words(128, {1, 2, 3, 4}), 64, "64 bits 00000004 00000003"},
    };
    for (const Row& row : rows) check_free(row, shifted_right);
}

TEST(ShiftRight, ACompactCountIsTakenModulo32Required) {
    const Row rows[] = {
        {"8 bits by 32: bit 0, set", from_words(8, {0xFF}), 32, "1 bits 00000001"},
        {"8 bits by 32: bit 0, clear", from_words(8, {0xFE}), 32, "1 bits 00000000"},
        {"8 bits by 33: bit 1, set", from_words(8, {0x02}), 33, "1 bits 00000001"},
        {"8 bits by 33: bit 1, clear", from_words(8, {0xFD}), 33, "1 bits 00000000"},
        {"8 bits by 39: bit 7", from_words(8, {0x80}), 39, "1 bits 00000001"},
        {"8 bits by 40: bit 8, which is 0", from_words(8, {0xFF}), 40, "1 bits 00000000"},
        {"32 bits by 32: bit 0", from_words(32, {0x80000001}), 32, "1 bits 00000001"},
        {"32 bits by 63: bit 31", from_words(32, {0x80000000}), 63, "1 bits 00000001"},
        {"32 bits by 64: bit 0", from_words(32, {1}), 64, "1 bits 00000001"},
        {"an X bit", from_words(8, {0}, {0x04}, true), 34, "1 bits 00000000 x 00000001 flags X"},
    };
    for (const Row& row : rows) check_free(row, shifted_right);
}

TEST(ShiftRight, XBitsMoveAlongAndFlagsStay) {
    const Row rows[] = {
        {"compact", marked(from_words(8, {0xA5}, {0x81}, true), "ZLH"), 4, "4 bits 0000000A x 00000008 flags XZLH"},
        {"compact, every X bit gone", from_words(8, {0xA5}, {0x0F}, true), 4, "4 bits 0000000A flags X"},
        {"wide", from_words(70, {0, 0, 3}, {0, 1, 2}, true), 33,
         "37 bits 00000001 80000000 x 00000001 00000000 flags X"},
        {"wide to compact", from_words(40, {0, 0x12}, {kOnes, 0x81}, true), 32, "8 bits 00000012 x 00000081 flags X"},
        {"wide, every X bit gone", from_words(40, {0, 0x12}, {kOnes, 0}, true), 32, "8 bits 00000012 flags X"},
        {"wide by the width", marked(from_words(40, {kOnes, 0xFF}, {kOnes, 0xFF}, true), "L"), 40,
         "1 bits 00000000 flags XL"},
    };
    for (const Row& row : rows) check_free(row, shifted_right);
}

TEST(ShiftRight, StrayBitsMoveInAndTheRestIsTrimmed) {
    const Row rows[] = {
        {"compact", from_words(4, {0xF5}, {0x11}), 1, "3 bits 00000002"},
        {"wide", from_words(40, {0, 0x1FF}), 8, "32 bits FF000000"},
        {"wide, word 1", from_words(70, {0, 0, 0xFFF}, {0, 0, 0xF40}), 1, "69 bits 0000001F 80000000 00000000"},
        {"compact by the width: the bit above comes down", from_words(8, {0x100}, {0x100}), 8,
         "1 bits 00000001 x 00000001"},
        {"wide by the width: all goes", from_words(40, {0, 0xFFFFFF00}, {0, 0xFFFFFF00}), 40, "1 bits 00000000"},
    };
    for (const Row& row : rows) check_free(row, shifted_right);
}

// ---- counts of 2^31 and above, whose results are free ----

// Whatever value comes out is one: all of it can be read, and the operand stays as it is.
TEST(ShiftFree, CountsOf2To31AndAboveDoNoHarm) {
    const KVAL_UINTEGER values[] = {
        from_words(1, {1}),
        from_words(8, {0xFF}, {0x0F}, true),
        from_words(32, {kOnes}),
        from_words(40, {kOnes, 0xFF}, {kOnes, 0}),
        from_words(100, {kOnes, kOnes, kOnes, 0xF}),
    };
    for (const KVAL_UINTEGER& value : values) {
        for (const unsigned count : {kTwoTo31, kTwoTo31 + 1, 0xFFFFFF00U, 0xFFFFFFC0U, 0xFFFFFFE0U, kOnes - 1, kOnes}) {
            KVAL_UINTEGER operand(value);
            KVAL_UINTEGER left = operand << count;
            EXPECT_GE(left.bitwidth(), 1U) << printed(value) << " << " << count;
            EXPECT_EQ(std::strlen(left.as_bin_string()), left.bitwidth()) << printed(value) << " << " << count;
            KVAL_UINTEGER right = operand >> count;
            EXPECT_GE(right.bitwidth(), 1U) << printed(value) << " >> " << count;
            EXPECT_EQ(std::strlen(right.as_bin_string()), right.bitwidth()) << printed(value) << " >> " << count;
            EXPECT_EQ(printed(operand), printed(value)) << count;
        }
    }
}

TEST(ShiftFree, AResultMayReplaceItsOperand) {
    KVAL_UINTEGER compact = from_words(8, {0x81});
    compact = compact << 3;
    EXPECT_EQ(printed(compact), "8 bits 00000008");
    compact = compact >> 3;
    EXPECT_EQ(printed(compact), "8 bits 00000001");
    KVAL_UINTEGER wide = from_words(40, {0x12345678, 0x9A});
    wide = wide << 32;
    EXPECT_EQ(printed(wide), "40 bits 00000078 00000000");
    wide = wide >> 36;
    EXPECT_EQ(printed(wide), "40 bits 00000000 00000007");
}

}  // namespace
