// Tests of signed division and remainder, truncating and Euclidean: results, messages and the order of the checks.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>

#include "kval.h"
#include "signed_support.h"

namespace {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

/// Stands for an all-X result in the tables.
constexpr std::int64_t kX = INT64_MAX;

/// `number` in two's complement, or all X over value bits of 0, in `width` bits (64 at most), as printed() has it.
std::string result_text(std::int64_t number, unsigned width) {
    const std::uint64_t bits = ~std::uint64_t{0} >> (64 - width);
    const auto digits = [width](std::uint64_t plane) {
        char buffer[20];
        if (width > 32) {
            std::snprintf(buffer, sizeof buffer, " %08X %08X", static_cast<unsigned>(plane >> 32),
                          static_cast<unsigned>(plane));
        } else {
            std::snprintf(buffer, sizeof buffer, " %08X", static_cast<unsigned>(plane));
        }
        return std::string(buffer);
    };
    const std::string start = std::to_string(width) + " bits";
    return number == kX ? start + digits(0) + " x" + digits(bits) + " flags X"
                        : start + digits(static_cast<std::uint64_t>(number) & bits);
}

/// A row: the four results, kX for an all-X one. Quotients have the dividend's width, remainders the divisor's.
template <class Dividend, class Divisor>
struct Division {
    const char* name;
    Dividend a;
    Divisor b;
    std::int64_t quotient;
    std::int64_t remainder;
    std::int64_t euclidean_quotient;
    std::int64_t euclidean_remainder;
};

template <class Dividend, class Divisor>
void expect_division(const Division<Dividend, Divisor>& row) {
    SCOPED_TRACE(row.name);
    const unsigned quotient_width = row.a.bitwidth();
    const unsigned remainder_width = row.b.bitwidth();
    using A = const Dividend&;
    using B = const Divisor&;
    EXPECT_EQ(applied(row.a, row.b, [](A a, B b) { return a / b; }), result_text(row.quotient, quotient_width))
        << "a / b";
    EXPECT_EQ(applied(row.a, row.b, [](A a, B b) { return a % b; }), result_text(row.remainder, remainder_width))
        << "a % b";
    EXPECT_EQ(applied(row.a, row.b, [](A a, B b) { return posr_div(a, b); }),
              result_text(row.euclidean_quotient, quotient_width))
        << "posr_div";
    EXPECT_EQ(applied(row.a, row.b, [](A a, B b) { return posr_mod(a, b); }),
              result_text(row.euclidean_remainder, remainder_width))
        << "posr_mod";
}

TEST(SignedDivision, OfSignedBySigned) {
    const S least_32 = signed_words(32, {0x80000000});
    const S minus_96 = signed_words(4, {0U - 96});  // bits above the width count (required)
    const Division<S, S> rows[] = {
        {"7 by 2", S(7, 8), S(2, 8), 3, 1, 3, 1},
        {"-7 by 2", S(-7, 8), S(2, 8), -3, -1, -4, 1},
        {"7 by -2", S(7, 8), S(-2, 8), -3, 1, -3, 1},
        {"-7 by -2", S(-7, 8), S(-2, 8), 3, -1, 4, 1},
        {"6 by 3", S(6, 8), S(3, 8), 2, 0, 2, 0},
        {"-6 by 3", S(-6, 8), S(3, 8), -2, 0, -2, 0},
        {"0 by -5", S(0, 8), S(-5, 8), 0, 0, 0, 0},
        {"-1 by -128", S(-1, 8), S(-128, 8), 0, -1, 1, 127},
        {"-128 by -1 is X everywhere", S(-128, 8), S(-1, 8), kX, kX, kX, kX},
        {"-128 by 1", S(-128, 8), S(1, 8), -128, 0, -128, 0},
        {"-127 by -1", S(-127, 8), S(-1, 8), 127, 0, 127, 0},
        {"32-bit least by -1 is X without a machine fault", least_32, S(-1, 32), kX, kX, kX, kX},
        {"32-bit least by 8-bit -1", least_32, S(-1, 8), kX, kX, kX, kX},
        {"32-bit least by 3", least_32, S(3, 32), -715827882, -2, -715827883, 1},
        {"32-bit least by -3", least_32, S(-3, 32), 715827882, -2, 715827883, 1},
        {"32-bit largest by -1", S(INT_MAX, 32), S(-1, 32), -INT_MAX, 0, -INT_MAX, 0},
        {"16 bits by 8: quotient of 16, remainder of 8", S(-1000, 16), S(7, 8), -142, -6, -143, 1},
        {"8 bits by 16: quotient of 8, remainder of 16", S(100, 8), S(1000, 16), 0, 100, 0, 100},
        {"100 by -3 in 8 bits", S(100, 16), S(-3, 8), -33, 1, -33, 1},
        {"127 by -3: just in range of the divisor's pattern (required)", S(127, 16), S(-3, 8), -42, 1, -42, 1},
        {"128 by -3: the divisor's pattern decides, X (required)", S(128, 16), S(-3, 8), -42, kX, kX, kX},
        {"200 by -3: the divisor's pattern decides, X (required)", S(200, 16), S(-3, 8), -66, kX, kX, kX},
        {"-128 by -3: just in range below zero (required)", S(-128, 16), S(-3, 8), 42, -2, 43, 1},
        {"-129 by -3: X below zero (required)", S(-129, 16), S(-3, 8), 43, kX, kX, kX},
        {"1-bit -1 by 1-bit -1", S(-1, 1), S(-1, 1), kX, kX, kX, kX},
        {"1-bit -1 by 8-bit 2", S(-1, 1), S(2, 8), 0, -1, -1, 1},
        {"1-bit 0 by 1-bit -1", S(0, 1), S(-1, 1), 0, 0, 0, 0},
        {"5 by 1-bit -1", S(5, 8), S(-1, 1), -5, 0, -5, 0},
        {"-8 by 3 in 4 bits", S(-8, 4), S(3, 8), -2, -2, -3, 1},
        {"by zero", S(7, 8), S(0, 4), kX, kX, kX, kX},
        {"wide by zero: X, no throw", S(7, 40), S(0, 4), kX, kX, kX, kX},
        {"by a wide value whose low word is 0: X, no throw (required)", S(7, 8), signed_words(40, {0, 1}), kX, kX, kX,
         kX},
        {"by X over zero", S(7, 8), signed_words(8, {0}, {1}, true), kX, kX, kX, kX},
        {"X bits and flags play no part", signed_marked(signed_words(8, {0xF9}, {0xFF}, true), "ZLH"),
         signed_words(8, {2}, {0xFF}, true), -3, -1, -4, 1},
        {"a divisor's bit above the width counts (required)", S(7, 8), signed_words(8, {0x102}), 0, 7, 0, 7},
        {"-1 by a 4-bit 20: the Euclidean remainder 19 is X", S(-1, 8), signed_words(4, {0x14}), 0, -1, -1, kX},
        {"a 4-bit -96 by 13: the Euclidean quotient is just in range", minus_96, S(13, 8), -7, -5, -8, 8},
        {"a 4-bit -96 by 12: no remainder, and -8 fits", minus_96, S(12, 8), -8, 0, -8, 0},
        {"a 4-bit -96 by 11: the Euclidean quotient -9 is X", minus_96, S(11, 8), -8, -8, kX, kX},
        {"a 4-bit -96 by 7: the quotient is cut, the Euclidean one X", minus_96, S(7, 8), -13, -5, kX, kX},
        {"a 4-bit -96 by -15: the Euclidean quotient is just in range", minus_96, S(-15, 8), 6, -6, 7, 9},
        {"a 4-bit -96 by -13: the Euclidean quotient 8 is X", minus_96, S(-13, 8), 7, -5, kX, kX},
        {"13 by a 1-bit 20: the remainder reads -1, and the quotient goes down", S(13, 8), signed_words(1, {20}), 0, -1,
         -1, 1},
        {"13 by a 1-bit -20: the remainder reads -1, and the quotient goes up", S(13, 8), signed_words(1, {0U - 20}), 0,
         -1, 1, 1},
        {"a dividend's bit above the width counts, the quotient's sign is cleared (required)", signed_words(8, {0x107}),
         S(2, 8), 131 - 128, 1, 131 - 128, 1},
    };
    for (const auto& row : rows) {
        expect_division(row);
    }
}

TEST(SignedDivision, OfUnsignedBySigned) {
    const Division<U, S> rows[] = {
        {"100 by 7", U(100, 8), S(7, 8), 14, 2, 14, 2},
        {"100 by -7: the remainder is never negative", U(100, 8), S(-7, 8), -14, 2, -14, 2},
        {"127 by 1", U(127, 8), S(1, 8), 127, 0, 127, 0},
        {"128 by 1 is X", U(128, 8), S(1, 8), kX, kX, kX, kX},
        {"128 by -1 is X, although -128 would fit (required)", U(128, 8), S(-1, 8), kX, kX, kX, kX},
        {"200 by 1 is X, the remainder too (required)", U(200, 8), S(1, 8), kX, kX, kX, kX},
        {"200 by -1 is X", U(200, 8), S(-1, 8), kX, kX, kX, kX},
        {"200 by -2", U(200, 8), S(-2, 8), -100, 0, -100, 0},
        {"255 by -128", U(255, 8), S(-128, 8), -1, 127, -1, 127},
        {"200 by 3 in 16 bits", U(200, 8), S(3, 16), 66, 2, 66, 2},
        {"1-bit 1 by 1 is never X (required)", U(1, 1), S(1, 8), 1, 0, 1, 0},
        {"1-bit 1 by -1", U(1, 1), S(-1, 8), -1, 0, -1, 0},
        {"32-bit largest by 2", U(~0U, 32), S(2, 32), 0x7FFFFFFF, 1, 0x7FFFFFFF, 1},
        {"32-bit largest by 1 is X", U(~0U, 32), S(1, 32), kX, kX, kX, kX},
        {"2^31 by -1 is X", U(0x80000000, 32), S(-1, 32), kX, kX, kX, kX},
        {"2^31 by the least", U(0x80000000, 32), signed_words(32, {0x80000000}), -1, 0, -1, 0},
        {"by zero", U(5, 16), S(0, 3), kX, kX, kX, kX},
        {"wide by zero", U(5, 40), S(0, 3), kX, kX, kX, kX},
        {"by a wide value whose low word is 0 (required)", U(5, 8), signed_words(40, {0, 0xFF}), kX, kX, kX, kX},
        {"X bits and flags play no part", marked(from_words(8, {100}, {0xFF}, true), "ZLH"),
         signed_words(8, {7}, {0xFF}, true), 14, 2, 14, 2},
    };
    for (const auto& row : rows) {
        expect_division(row);
    }
}

TEST(SignedDivision, OfSignedByUnsigned) {
    const S least_32 = signed_words(32, {0x80000000});
    const Division<S, U> rows[] = {
        {"7 by 2", S(7, 8), U(2, 8), 3, 1, 3, 1},
        {"-7 by 2", S(-7, 8), U(2, 8), -3, -1, -4, 1},
        {"-128 by 1", S(-128, 8), U(1, 8), -128, 0, -128, 0},
        {"-128 by 255", S(-128, 8), U(255, 8), 0, -128, -1, 127},
        {"-128 by 200", S(-128, 8), U(200, 8), 0, -128, -1, 72},
        {"150 by 200: the remainder is X (required)", S(150, 16), U(200, 8), 0, kX, 0, kX},
        {"300 by 200", S(300, 16), U(200, 8), 1, 100, 1, 100},
        {"-150 by 200: the truncated remainder is X", S(-150, 16), U(200, 8), 0, kX, -1, 50},
        {"-100 by 200", S(-100, 16), U(200, 8), 0, -100, -1, 100},
        {"-50 by 200: the Euclidean remainder is X", S(-50, 16), U(200, 8), 0, -50, -1, kX},
        {"1-bit -1 by 2", S(-1, 1), U(2, 8), 0, -1, -1, 1},
        {"-7 by 1-bit 1", S(-7, 8), U(1, 1), -7, 0, -7, 0},
        {"the least by the largest", least_32, U(~0U, 32), 0, -2147483648LL, -1, 0x7FFFFFFF},
        {"by zero", S(-7, 8), U(0, 4), kX, kX, kX, kX},
        {"wide by zero", S(-7, 40), U(0, 4), kX, kX, kX, kX},
        {"by a wide value whose low word is 0 (required)", S(-7, 8), from_words(40, {0, 1}), kX, kX, kX, kX},
        {"X bits and flags play no part", signed_marked(signed_words(8, {0xF9}, {0xFF}, true), "ZLH"),
         from_words(8, {2}, {0xFF}, true), -3, -1, -4, 1},
    };
    for (const auto& row : rows) {
        expect_division(row);
    }
}

const char* const kSaysUnsigned = "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_UINTEGERs";
const char* const kSaysRemainder = "KVAL_SINTEGER operator% only supports division between 32 bit KVAL_SINTEGERs";
const char* const kSaysSigned = "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_SINTEGERs";

/// The message that `op(l, r)` throws as a constant character string, or that it threw none; operands have to stay as
/// they are.
template <class Left, class Right, class Operation>
std::string thrown(const Left& l, const Right& r, Operation op) {
    Left left(l);
    Right right(r);
    cache_text(left);
    cache_text(right);
    std::string message = "nothing thrown";
    try {
        op(static_cast<const Left&>(left), static_cast<const Right&>(right));
    } catch (const char* text) {
        message = text;
    }
    EXPECT_EQ(printed(left), printed(l));
    EXPECT_EQ(printed(right), printed(r));
    EXPECT_TRUE(keeps_text(left));
    EXPECT_TRUE(keeps_text(right));
    return message;
}

/// What each of the four functions throws for these operands.
template <class Dividend, class Divisor>
void expect_thrown(const Dividend& dividend, const Divisor& divisor, const char* by_quotient, const char* by_others) {
    SCOPED_TRACE(printed(dividend) + " by " + printed(divisor));
    using A = const Dividend&;
    using B = const Divisor&;
    EXPECT_EQ(thrown(dividend, divisor, [](A a, B b) { a / b; }), by_quotient);
    EXPECT_EQ(thrown(dividend, divisor, [](A a, B b) { a % b; }), by_others);
    EXPECT_EQ(thrown(dividend, divisor, [](A a, B b) { posr_div(a, b); }), by_others);
    EXPECT_EQ(thrown(dividend, divisor, [](A a, B b) { posr_mod(a, b); }), by_others);
}

TEST(SignedDivision, WideOperandsThrowTheMessagesAsTheyStand) {
    expect_thrown(S(7, 33), S(1, 8), kSaysUnsigned, kSaysRemainder);
    expect_thrown(S(7, 8), S(1, 33), kSaysUnsigned, kSaysRemainder);
    expect_thrown(S(7, 100), S(1, 64), kSaysUnsigned, kSaysRemainder);
    expect_thrown(signed_words(33, {0, 1}), S(-1, 8), kSaysUnsigned, kSaysRemainder);
    expect_thrown(U(7, 33), S(1, 8), kSaysSigned, kSaysSigned);
    expect_thrown(U(7, 8), S(-1, 33), kSaysSigned, kSaysSigned);
    expect_thrown(U(200, 8), S(1, 33), kSaysSigned, kSaysSigned);
    expect_thrown(S(7, 33), U(1, 8), kSaysSigned, kSaysSigned);
    expect_thrown(S(7, 8), U(2, 33), kSaysSigned, kSaysSigned);
    expect_thrown(S(-10, 8), U(5, 40), kSaysSigned, kSaysSigned);
}

TEST(SignedDivision, EuclideanBelowZeroWithARemainderDividesWideOperands) {
    const S minus_7 = signed_words(40, {0xFFFFFFF9, 0xFF});
    const S minus_1000 = signed_words(40, {0xFFFFFC18, 0xFF});
    EXPECT_EQ(printed(posr_div(minus_7, U(2, 8))), result_text(-4, 40));
    EXPECT_EQ(printed(posr_mod(minus_7, U(2, 8))), result_text(1, 8));
    EXPECT_EQ(printed(posr_div(S(-7, 8), U(5, 40))), result_text(-2, 8));
    EXPECT_EQ(printed(posr_mod(S(-7, 8), U(5, 40))), result_text(3, 40));
    EXPECT_EQ(printed(posr_div(minus_1000, U(3, 8))), result_text(-35, 40)) << "the 32-bit reading is -104 (required)";
    EXPECT_EQ(printed(posr_mod(minus_1000, U(3, 8))), result_text(1, 8));
    EXPECT_EQ(thrown(minus_7, U(2, 8), [](const S& a, const U& b) { a / b; }), kSaysSigned);
    EXPECT_EQ(thrown(minus_7, U(2, 8), [](const S& a, const U& b) { a % b; }), kSaysSigned);
}

TEST(SignedDivision, EuclideanQuotientOfWideOperandsIsBoundByTheLowWord) {
    // A 33-bit result counts 2^0 as its most negative number, so that every quotient of 1 and more is X (required).
    EXPECT_EQ(printed(posr_div(signed_words(33, {0xFFFFFFF9, 1}), U(2, 8))), result_text(kX, 33));
    EXPECT_EQ(printed(posr_mod(signed_words(33, {0xFFFFFFF9, 1}), U(2, 8))), result_text(kX, 8));
    EXPECT_EQ(printed(posr_div(signed_words(33, {0xFFFFFFF9, 1}), U(10, 8))), result_text(-1, 33));
    EXPECT_EQ(printed(posr_mod(signed_words(33, {0xFFFFFFF9, 1}), U(10, 8))), result_text(3, 8));
}

TEST(SignedDivision, OfAValueByItself) {
    const S v(-7, 8);
    EXPECT_EQ(printed(v / v), "8 bits 00000001");
    EXPECT_EQ(printed(v % v), "8 bits 00000000");
    EXPECT_EQ(printed(posr_div(v, v)), "8 bits 00000001");
    EXPECT_EQ(printed(posr_mod(v, v)), "8 bits 00000000");
}

TEST(SignedDivision, EuclideanIdentityHoldsForAllPairsOf5Bits) {
    for (int a = -16; a < 16; ++a) {
        for (int b = -16; b < 16; ++b) {
            if (b == 0 || (a == -16 && b == -1)) continue;
            const int m = ((a % b) + (b < 0 ? -b : b)) % (b < 0 ? -b : b);
            SCOPED_TRACE(std::to_string(a) + " by " + std::to_string(b));
            // In 16 bits no divisor's pattern gets in the way: it is larger than every dividend here.
            EXPECT_EQ(printed(posr_mod(S(a, 16), S(b, 16))), result_text(m, 16));
            EXPECT_EQ(printed(posr_div(S(a, 16), S(b, 16))), result_text((a - m) / b, 16));
        }
    }
}

}  // namespace
