// Tests of the signed operators between values of many widths: numbers in two's complement, digit by digit.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kval.h"

namespace {

using S = KVAL_SINTEGER;
using Digits = std::string;  // binary, the sign first

S value_of(const Digits& digits) {
    S value(0, 1);
    value.set_value_from_bin_string(digits.c_str());
    return value;
}

Digits extended(const Digits& digits, std::size_t width) { return Digits(width - digits.size(), digits[0]) + digits; }

Digits sum_of(const Digits& a, const Digits& b, bool carry) {
    Digits sum = a;
    for (std::size_t i = a.size(); i-- > 0;) {
        const int digit = (a[i] == '1') + (b[i] == '1') + (carry ? 1 : 0);
        sum[i] = digit % 2 != 0 ? '1' : '0';
        carry = digit >= 2;
    }
    return sum;
}

Digits inverted(Digits digits) {
    for (char& digit : digits) digit = digit == '0' ? '1' : '0';
    return digits;
}

bool less(Digits a, Digits b) {
    std::swap(a[0], b[0]);  // the sign counts the other way round
    return a < b;
}

const std::vector<std::size_t> kWidths{33, 40, 64, 65, 96, 100, 256, 257, 288, 1000};

// The ends of the range, numbers next to them, and ones and zeros that begin or end at or beside a word.
std::vector<Digits> numbers_of(std::size_t width) {
    std::vector<Digits> numbers{Digits(width, '0'), Digits(width, '1')};
    for (const std::size_t low :
         {std::size_t{1}, std::size_t{31}, std::size_t{32}, std::size_t{33}, width - 33, width - 2, width - 1}) {
        if (low == 0 || low >= width) continue;
        numbers.push_back(Digits(width - low, '0') + Digits(low, '1'));
        numbers.push_back(Digits(width - low, '1') + Digits(low, '0'));
    }
    return numbers;
}

template <typename Check>
void for_each_pair(Check check) {
    for (const std::size_t a_width : kWidths) {
        for (const std::size_t b_width : kWidths) {
            for (const Digits& a : numbers_of(a_width)) {
                for (const Digits& b : numbers_of(b_width)) check(a, b);
            }
        }
    }
}

TEST(SignedLengths, SumsAndDifferencesAreExact) {
    for_each_pair([](const Digits& a, const Digits& b) {
        const std::size_t width = std::max(a.size(), b.size()) + 2;
        const S x = value_of(a);
        const S y = value_of(b);
        const Digits sum = sum_of(extended(a, width), extended(b, width), false);
        const Digits difference = sum_of(extended(a, width), inverted(extended(b, width)), true);
        ASSERT_EQ(extended((x + y).as_bin_string(), width), sum) << a << " + " << b;
        ASSERT_EQ(extended((x - y).as_bin_string(), width), difference) << a << " - " << b;
    });
}

TEST(SignedLengths, OrderAndEqualityAreThoseOfTheNumbers) {
    for_each_pair([](const Digits& a, const Digits& b) {
        const std::size_t width = std::max(a.size(), b.size());
        const S x = value_of(a);
        const S y = value_of(b);
        ASSERT_EQ(x < y, less(extended(a, width), extended(b, width))) << a << " < " << b;
        ASSERT_EQ(x == y, extended(a, width) == extended(b, width)) << a << " == " << b;
    });
}

TEST(SignedLengths, RightShiftsRoundDown) {
    for (const std::size_t width : kWidths) {
        for (const Digits& number : numbers_of(width)) {
            const S value = value_of(number);
            for (const std::size_t count : {std::size_t{1}, std::size_t{32}, width - 32, width - 31, width - 1}) {
                if (count >= width) continue;
                ASSERT_EQ((value >> static_cast<unsigned>(count)).as_bin_string(), number.substr(0, width - count))
                    << number << " >> " << count;
            }
        }
    }
}

TEST(SignedLengths, ANegativeValueShiftedOutInPlaceIsMinusOne) {
    for (const std::size_t width : {std::size_t{65}, std::size_t{100}, std::size_t{128}, std::size_t{1000}}) {
        for (const std::size_t count : {width - 1, width, width + 1}) {
            S value = value_of("10" + Digits(width - 2, '0'));
            value >>= static_cast<unsigned>(count);
            EXPECT_EQ(value.as_bin_string(), Digits(width, '1')) << width << " bits >>= " << count;
        }
    }
}

}  // namespace
