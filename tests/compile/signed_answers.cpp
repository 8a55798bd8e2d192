// Asks the questions about signed values, alone and together with unsigned ones and with numbers.
#include <algorithm>
#include <utility>

#include "ask.h"

namespace {

enum Number { kFive = 5, kSix };

// A signed value with a name; everything else it inherits.
struct Named : KVAL_SINTEGER {
    Named(int value, unsigned bits, const char* its_name) : KVAL_SINTEGER(value, bits), name(its_name) {}
    const char* name;
};

KVAL_SINTEGER with_x(KVAL_SINTEGER v, int position) {
    v.set_x(position);
    return v;
}

// Without the ones above the width that construction from a negative number leaves in a wide value.
KVAL_SINTEGER trimmed(KVAL_SINTEGER v) {
    v.EnforceWidth();
    return v;
}

const KVAL_SINTEGER zero(0, 8);
const KVAL_SINTEGER one(1, 8);
const KVAL_SINTEGER two(2, 8);
const KVAL_SINTEGER three(3, 8);
const KVAL_SINTEGER five(5, 8);
const KVAL_SINTEGER wide_five(5, 100);
const KVAL_SINTEGER minus_one(-1, 8);
const KVAL_SINTEGER minus_two(-2, 8);
const KVAL_SINTEGER minus_seven(-7, 8);
const KVAL_SINTEGER narrow_minus_one(-1, 4);
const KVAL_SINTEGER raw_minus_one(-1, 40);
const KVAL_SINTEGER wide_minus_one = trimmed(raw_minus_one);
const KVAL_SINTEGER largest(127, 8);
const KVAL_SINTEGER smallest(-128, 8);
const KVAL_SINTEGER unknown_five = with_x(five, 7);
const KVAL_SINTEGER unknown_minus_one = with_x(minus_one, 0);

const KVAL_UINTEGER u2(2, 8);
const KVAL_UINTEGER u5(5, 16);
const KVAL_UINTEGER u15(15, 4);
const KVAL_UINTEGER u200(200, 8);
const KVAL_UINTEGER u255(255, 8);

// == compares numbers and != patterns, so that they are not opposites.
void ask_about_identity() {
    ASK(five == five);
    ASK(five != five);
    ASK(five == three);
    ASK(five != three);
    ASK(five == wide_five);
    ASK(wide_five != five);
    ASK(minus_one == minus_one);
    ASK(minus_one != minus_one);
    ASK(minus_one == minus_two);
    ASK(minus_one != minus_two);
    ASK(narrow_minus_one == minus_one);
    ASK(minus_one == narrow_minus_one);
    ASK(narrow_minus_one != minus_one);
    ASK(minus_one != narrow_minus_one);
    ASK(!(narrow_minus_one == minus_one));
    ASK(!(narrow_minus_one != minus_one));
    ASK(raw_minus_one == minus_one);
    ASK(raw_minus_one != minus_one);
    ASK(raw_minus_one == wide_minus_one);
    ASK(raw_minus_one != wide_minus_one);
    ASK(KVAL_SINTEGER(5, 3) == five);
    ASK(KVAL_SINTEGER(5, 3) != five);
    ASK(five != KVAL_SINTEGER(5, 3));
    ASK(unknown_five == five);
    ASK(unknown_five != five);
    ASK(unknown_five == unknown_five);
    ASK(unknown_minus_one == minus_one);
    ASK(unknown_minus_one != minus_one);
    ASK(five + zero == five);
    ASK(minus_one == ~zero);
}

void ask_about_identity_with_unsigned_values() {
    ASK(five == u5);
    ASK(u5 == five);
    ASK(five != u5);
    ASK(u5 != five);
    ASK(three == u5);
    ASK(u5 == three);
    ASK(three != u5);
    ASK(u5 != three);
    ASK(minus_one == u255);
    ASK(u255 == minus_one);
    ASK(minus_one != u255);
    ASK(u255 != minus_one);
    ASK(narrow_minus_one == u255);
    ASK(u255 == narrow_minus_one);
    ASK(narrow_minus_one != u255);
    ASK(u255 != narrow_minus_one);
    ASK(u15 == narrow_minus_one);
    ASK(u15 != narrow_minus_one);
    ASK(unknown_five == u5);
    ASK(u5 != unknown_five);
    ASK(unknown_minus_one == u255);
    ASK(unknown_minus_one != u255);
}

// Numbers meet the pattern, read as unsigned.
void ask_about_identity_with_numbers() {
    ASK(five == 5);
    ASK(5 == five);
    ASK(five != 5);
    ASK(5 != five);
    ASK(five == 5u);
    ASK(5u == five);
    ASK(five == kFive);
    ASK(kSix != five);
    ASK(zero == 0);
    ASK(0 == zero);
    ASK(0 != zero);
    ASK(minus_one == 255);
    ASK(255 == minus_one);
    ASK(minus_one != 255);
    ASK(255 != minus_one);
    ASK(minus_one == -1);
    ASK(-1 == minus_one);
    ASK(minus_one != -1);
    ASK(-1 != minus_one);
    ASK(KVAL_SINTEGER(-1, 32) == -1);
    ASK(-1 != KVAL_SINTEGER(-1, 32));
    ASK(wide_minus_one == -1);
    ASK(-1 != wide_minus_one);
    ASK(unknown_five == 5);
    ASK(5 != unknown_five);
}

void ask_about_order() {
    ASK(minus_one < zero);
    ASK(zero < minus_one);
    ASK(smallest < largest);
    ASK(smallest >= largest);
    ASK(narrow_minus_one < minus_two);
    ASK(minus_two < narrow_minus_one);
    ASK(minus_one < narrow_minus_one);
    ASK(minus_one <= narrow_minus_one);
    ASK(narrow_minus_one >= minus_one);
    ASK(wide_minus_one > minus_two);
    ASK(wide_five > minus_one);
    ASK(wide_five > five);
    ASK(wide_five <= five);
    ASK(minus_one < raw_minus_one);
    ASK(minus_one < u15);
    ASK(minus_one <= u15);
    ASK(minus_one > u15);
    ASK(minus_one >= u15);
    ASK(u15 < minus_one);
    ASK(u15 <= minus_one);
    ASK(u15 > minus_one);
    ASK(u15 >= minus_one);
    ASK(five < u5);
    ASK(five <= u5);
    ASK(u5 >= five);
    ASK(u5 > three);
    ASK(minus_one < 5);
    ASK(5 < minus_one);
    ASK(minus_one >= 255);
    ASK(255 <= minus_one);
    ASK(minus_one > -1);
    ASK(-1 > minus_one);
}

void ask_about_derived_values() {
    const Named same(-1, 16, "same");
    ASK(same == minus_one);
    ASK(minus_one == same);
    ASK(same != minus_one);
    ASK(minus_one != same);
    ASK(same == same);
    ASK(same != same);
    ASK(same == u255);
    ASK(u255 == same);
    ASK(u255 != same);
    ASK(same == 0xFFFF);
    ASK(0xFFFF != same);
    ASK(same < zero);
    ASK(u15 > same);
    ASK(same + five);
    ASK(same - u5);
    ASK(same << 4);
}

void ask_about_sums_and_differences() {
    ASK(one + two);
    ASK(largest + one);
    ASK(minus_one + minus_one);
    ASK(smallest + smallest);
    ASK(five + KVAL_SINTEGER(-3, 8));
    ASK(three + KVAL_SINTEGER(-5, 8));
    ASK(narrow_minus_one + one);
    ASK(zero + u255);
    ASK(u255 + zero);
    ASK(two + u2);
    ASK(minus_one + KVAL_UINTEGER(0, 8));
    ASK(one + u255);
    ASK(minus_one + u255);
    ASK(u255 + minus_one);
    ASK(KVAL_SINTEGER(0, 31) + KVAL_UINTEGER(0x7FFFFFFF, 31));
    ASK(smallest - one);
    ASK(largest - minus_one);
    ASK(five - three);
    ASK(KVAL_SINTEGER(-0x7FFFFFFF - 1, 32) - KVAL_SINTEGER(1, 32));
    ASK(minus_one - KVAL_UINTEGER(1, 8));
    ASK(zero - u255);
    ASK(KVAL_UINTEGER(5, 8) - three);
    ASK(KVAL_UINTEGER(3, 8) - five);
    ASK(KVAL_UINTEGER(5, 8) - KVAL_SINTEGER(-3, 8));
    ASK(u200 - five);
    ASK(u255 - minus_one);
    ASK(unknown_five + three);
    ASK(three + unknown_five);
    ASK(unknown_five - three);
    ASK(three - unknown_five);
}

void ask_about_products_and_shifts() {
    ASK(KVAL_SINTEGER(-3, 8) * five);
    ASK(smallest * smallest);
    ASK(narrow_minus_one * u15);
    ASK(u15 * narrow_minus_one);
    ASK(unknown_five * three);
    ASK(raw_minus_one * wide_minus_one);
    ASK(KVAL_SINTEGER(-16, 8) >> 2);
    ASK(KVAL_SINTEGER(-16, 8) >> 8u);
    ASK(KVAL_SINTEGER(-16, 8) >> 100);
    ASK(KVAL_SINTEGER(112, 8) >> 4);
    ASK(KVAL_SINTEGER(112, 8) >> 8);
    ASK(wide_minus_one >> 32);
    ASK(minus_one << 4);
}

void ask_about_divisions() {
    const KVAL_SINTEGER seven(7, 8);
    ASK(minus_seven / two);
    ASK(minus_seven % two);
    ASK(posr_div(minus_seven, two));
    ASK(posr_mod(minus_seven, two));
    ASK(posr_div(minus_seven, minus_two));
    ASK(posr_mod(minus_seven, minus_two));
    ASK(posr_div(seven, minus_two));
    ASK(posr_mod(seven, minus_two));
    ASK(smallest / minus_one);
    ASK(smallest / one);
    ASK(five / zero);
    ASK(u200 / one);
    ASK(u200 / minus_two);
    ASK(u200 % one);
    ASK(minus_seven / u2);
    ASK(minus_seven % u2);
    ASK(posr_div(minus_seven, u2));
    ASK(posr_mod(minus_seven, u2));
    ASK(posr_div(KVAL_UINTEGER(7, 8), two));
    ASK(posr_mod(KVAL_UINTEGER(7, 8), two));
    ASK(KVAL_SINTEGER(150, 16) % u200);
    ASK(KVAL_SINTEGER(300, 16) % u200);
    ASK(KVAL_SINTEGER(200, 16) % KVAL_SINTEGER(-3, 8));
    ASK(KVAL_SINTEGER(100, 16) % KVAL_SINTEGER(-3, 8));
}

void ask_about_inherited_operators() {
    ASK(~five);
    ASK(five & three);
    ASK(minus_one | five);
    ASK(minus_one ^ narrow_minus_one);
    ASK(five & u15);
    ASK(u15 | minus_one);
    ASK((~five) + five);
}

void ask_about_readings() {
    ASK(minus_one.signed_value());
    ASK(KVAL_SINTEGER(200, 8).convert_to_signed_representation());
    ASK(five.signed_value());
    ASK(minus_one.positive());
    ASK(minus_one.negative());
    ASK(zero.positive());
    ASK(smallest.absolute_value());
    ASK(smallest.maximum_negative());
    ASK(smallest.maximum_positive());
    ASK(KVAL_SINTEGER(0, 1).maximum_positive());
    ASK(five.SignExtendedChunk(0));
    ASK(minus_one.uint());
}

void ask_about_construction() {
    ASK(KVAL_SINTEGER(-1, 8));
    ASK(KVAL_SINTEGER{-1, 8});
    ASK(KVAL_SINTEGER(300, 8));
    ASK(KVAL_SINTEGER(5, 0));
    ASK(KVAL_SINTEGER(kFive, kSix));
    ASK(KVAL_SINTEGER(-1, 40));
    ASK(KVAL_SINTEGER(u255));
    ASK(KVAL_SINTEGER(u255).signed_value());
    ASK(KVAL_UINTEGER(minus_one));
    ASK(KVAL_SINTEGER(~five));
    ASK(minus_two.twos_complement());
}

void ask_about_changes() {
    KVAL_SINTEGER wide(0, 40);
    ASK(wide = KVAL_SINTEGER(-16, 8));
    ASK(wide = KVAL_UINTEGER(0xF0, 8));
    ASK(wide = minus_two);
    ASK(wide = u255);

    KVAL_SINTEGER v(0, 8);
    ASK(v = KVAL_SINTEGER(128, 16));
    ASK(v = KVAL_SINTEGER(-129, 16));
    ASK(v += 200);
    ASK(v += minus_one);
    ASK(v += u2);
    ASK(v -= five);
    ASK(v -= 5u);
    ASK(++v);
    ASK(--v);
    ASK(v <<= 1);
    ASK(v >>= 1);
    ASK(v = smallest);
    ASK(v >>= 2);
    ASK(v.complement_me());
    ASK(v.complement_me().bitwidth(16));
    ASK(v.bitwidth());
    ASK(v.bitwidth(4));
    ASK(v = minus_one);
    ASK(v &= five);
    ASK(v |= u2);
    ASK(v.set_bit(3, 1));
    ASK(v == narrow_minus_one);
    ASK(static_cast<KVAL_UINTEGER&>(v) = 5);
    ASK(v = KVAL_UINTEGER(0x1FF, 16));
    ASK(v.uint());
    ASK(v.set_value_from_hex_string("F0").bitwidth());
    ASK(v.negative());
}

void ask_about_moves() {
    KVAL_SINTEGER source(five);
    const KVAL_SINTEGER taken(std::move(source));
    ASK(taken);
    ASK(source.bitwidth());
    ASK(source.uint());
    ASK(source.as_hex_string());
    ASK(source = wide_minus_one);
    KVAL_UINTEGER emptied(std::move(source));
    ASK(emptied);
    ASK(source.bitwidth());
    ASK(static_cast<KVAL_UINTEGER&>(source) = 7);

    const KVAL_SINTEGER filled(std::move(emptied));
    ASK(filled);
    ASK(emptied.bitwidth());
    ASK(emptied = minus_one);
    KVAL_SINTEGER refilled(std::move(emptied));
    const KVAL_SINTEGER gone(std::move(refilled));
    ASK(refilled = KVAL_UINTEGER(0xF0, 40));

    KVAL_SINTEGER target(0, 16);
    ASK(target = KVAL_SINTEGER(-2, 8));
    ASK(target = KVAL_UINTEGER(0xF0, 8));
    ASK(target = KVAL_SINTEGER(-2, 16));
    KVAL_UINTEGER unsigned_target(0, 16);
    ASK(unsigned_target = KVAL_SINTEGER(-2, 8));
    KVAL_SINTEGER wide_target(-5, 40);
    ASK(wide_target = KVAL_SINTEGER(3, 40));
    ASK(wide_target = KVAL_SINTEGER(-3, 40));
    ASK(wide_target = KVAL_UINTEGER(4, 40));

    KVAL_SINTEGER a(-5, 8);
    KVAL_SINTEGER b(3, 40);
    swap(a, b);
    ASK(a);
    ASK(b);
    std::swap(a, b);
    ASK(a);
    ASK(b);
    {
        using std::swap;
        swap(a, b);
    }
    ASK(a);
    ASK(b);
    KVAL_SINTEGER& itself = b;
    b = std::move(itself);
    ASK(b);
}

void ask_about_sorting() {
    KVAL_SINTEGER values[] = {KVAL_SINTEGER(300, 16), KVAL_SINTEGER(-1, 4),   trimmed(KVAL_SINTEGER(-5, 40)),
                              KVAL_SINTEGER(5, 8),    KVAL_SINTEGER(-128, 8), KVAL_SINTEGER(0, 33)};
    std::sort(values, values + 6);
    ASK(values[0]);
    ASK(values[1]);
    ASK(values[2]);
    ASK(values[3]);
    ASK(values[4]);
    ASK(values[5]);
    std::rotate(values, values + 2, values + 6);
    ASK(values[0]);
    ASK(values[4]);
    ASK(*std::max_element(values, values + 6));
    ASK(*std::min_element(values, values + 6));
    ASK(*std::find(values, values + 6, minus_one));
    ASK(*std::find(values, values + 6, u5));
    ASK(*std::find(values, values + 6, 300));
    ASK(static_cast<unsigned>(std::count(values, values + 6, 15)));
    ASK(static_cast<unsigned>(std::count(values, values + 6, u15)));
}

}  // namespace

void ask_about_signed_values() {
    ask_about_identity();
    ask_about_identity_with_unsigned_values();
    ask_about_identity_with_numbers();
    ask_about_order();
    ask_about_derived_values();
    ask_about_sums_and_differences();
    ask_about_products_and_shifts();
    ask_about_divisions();
    ask_about_inherited_operators();
    ask_about_readings();
    ask_about_construction();
    ask_about_changes();
    ask_about_moves();
    ask_about_sorting();
}
