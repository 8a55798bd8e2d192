// Asks questions wherever a language mode could pick another operator, conversion or move, and prints the answers.
#include <algorithm>
#include <utility>

#include "ask.h"

namespace {

enum Number { kZero, kFive = 5, kSix };
enum Byte : unsigned char { kByteFive = 5 };

// Converts to a number of its own accord.
struct Count {
    operator unsigned() const { return number; }
    unsigned number;
};

// A value with a name; everything else it inherits.
struct Named : KVAL_UINTEGER {
    Named(unsigned value, unsigned bits, const char* its_name) : KVAL_UINTEGER(value, bits), name(its_name) {}
    const char* name;
};

KVAL_UINTEGER with_x(KVAL_UINTEGER v, int position) { return v.set_x(position); }
KVAL_UINTEGER high_impedance(KVAL_UINTEGER v) { return v.force_z(); }

const KVAL_UINTEGER zero(0, 8);
const KVAL_UINTEGER one(1, 8);
const KVAL_UINTEGER three(3, 8);
const KVAL_UINTEGER five(5, 8);
const KVAL_UINTEGER wide_five(5, 100);
const KVAL_UINTEGER ones(0xFFFFFFFF, 32);
const KVAL_UINTEGER big = KVAL_UINTEGER(1, 32) << 32;  // 2 to the power of 32, in 64 bits
const KVAL_UINTEGER unknown = with_x(five, 7);
const KVAL_UINTEGER floating = high_impedance(five);

void ask_about_identity_of_values() {
    const KVAL_UINTEGER same_unknown(unknown);
    const KVAL_UINTEGER other_unknown = with_x(five, 6);
    ASK(five == five);
    ASK(five != five);
    ASK(five == three);
    ASK(five != three);
    ASK(five == wide_five);
    ASK(wide_five == five);
    ASK(five != wide_five);
    ASK(wide_five != five);
    ASK(big == zero);
    ASK(big != zero);
    ASK(five == unknown);
    ASK(unknown == five);
    ASK(five != unknown);
    ASK(unknown == same_unknown);
    ASK(unknown != same_unknown);
    ASK(unknown == other_unknown);
    ASK(unknown != other_unknown);
    ASK(five == floating);
    ASK(floating != five);
    ASK(five + zero == five);
    ASK(five == KVAL_UINTEGER(5, 3));
    ASK(KVAL_UINTEGER(5, 3) != five);
}

void ask_about_identity_with_numbers() {
    const int int_five = 5;
    const Count count_five = {5};
    ASK(five == 5);
    ASK(5 == five);
    ASK(five != 5);
    ASK(5 != five);
    ASK(five == 5u);
    ASK(5u == five);
    ASK(five != 6u);
    ASK(6u != five);
    ASK(five == 5L);
    ASK(5UL == five);
    ASK(five == '\5');
    ASK(five == int_five);
    ASK(int_five != five);
    ASK(five == kFive);
    ASK(kFive == five);
    ASK(five != kFive);
    ASK(kSix != five);
    ASK(five == kByteFive);
    ASK(kByteFive == five);
    ASK(five == count_five);
    ASK(count_five == five);
    ASK(count_five != five);
    ASK(five != count_five);
    ASK(zero == 0);
    ASK(0 == zero);
    ASK(zero != 0);
    ASK(0 != zero);
    ASK(zero == 0u);
    ASK(zero == kZero);
    ASK(five == 0);
    ASK(0 != five);
    ASK(one == true);
    ASK(false == zero);
    ASK(ones == -1);
    ASK(-1 == ones);
    ASK(-1 != ones);
    ASK(wide_five == 5);
    ASK(5 == wide_five);
    ASK(big == 0);
    ASK(0 == big);
    ASK(0 != big);
    ASK(unknown == 5);
    ASK(5 == unknown);
    ASK(unknown != 5);
    ASK(5 != unknown);
    ASK(unknown == kFive);
    ASK(floating == 5);
    ASK(5 != floating);
}

void ask_about_order() {
    const Count count_five = {5};
    ASK(five > three);
    ASK(five >= five);
    ASK(five < three);
    ASK(three <= five);
    ASK(big > ones);
    ASK(ones < big);
    ASK(wide_five >= five);
    ASK(wide_five > five);
    ASK(five > 4);
    ASK(4 > five);
    ASK(five >= 5);
    ASK(5 >= five);
    ASK(five < 6);
    ASK(6 < five);
    ASK(five <= 4);
    ASK(4 <= five);
    ASK(zero > 0);
    ASK(0 < five);
    ASK(zero >= 0);
    ASK(0 <= zero);
    ASK(five < kSix);
    ASK(kSix > five);
    ASK(five <= count_five);
    ASK(count_five < five);
    ASK(five < -1);
    ASK(big > -1);
    ASK(-1 > big);
    ASK(unknown > 4);
    ASK(unknown >= five);
    ASK(unknown > floating);
}

void ask_about_derived_values() {
    const Named same(5, 16, "same");
    const Named other(7, 8, "other");
    ASK(same == five);
    ASK(five == same);
    ASK(same != five);
    ASK(five != same);
    ASK(same == same);
    ASK(same == other);
    ASK(same != other);
    ASK(same == 5);
    ASK(5 == same);
    ASK(0 != same);
    ASK(same == kFive);
    ASK(kSix == same);
    ASK(same < other);
    ASK(other >= five);
    ASK(other > 6);
    ASK(same + other);
    ASK(same << 4);
    ASK(~other);
    ASK((same == five) == (five == same));
}

void ask_about_results() {
    ASK(five + three);
    ASK(ones + one);
    ASK(three - five);
    ASK(five * three);
    ASK(five / three);
    ASK(five % KVAL_UINTEGER(3, 4));
    ASK(five / zero);
    ASK(five % zero);
    ASK(five & three);
    ASK(five | three);
    ASK(five ^ three);
    ASK(~five);
    ASK(five << 4u);
    ASK(five << 4);
    ASK(five << 0);
    ASK(five >> 1u);
    ASK(five >> kFive);
    ASK(five >> 8);
    ASK(big >> 32);
    ASK(unknown & ones);
    ASK((unknown & unknown).is_x());
    ASK(unknown | three);
    ASK(unknown ^ three);
    ASK(unknown + three);
    ASK(three + unknown);
    ASK(unknown - three);
    ASK(unknown * three);
    ASK(floating);
    ASK(~floating);
}

void ask_about_changes() {
    KVAL_UINTEGER v(0xF0, 8);
    ASK(v += 0);
    ASK(v += 0x11);
    ASK(v += three);
    ASK(v -= 0);
    ASK(v -= kFive);
    ASK(v -= five);
    ASK(v |= five);
    ASK(v &= three);
    ASK(v <<= 2);
    ASK(v >>= 1);
    ASK(++v);
    ASK(--v);
    ASK(v -= 4);
    ASK(v = five);
    ASK(v = 0);
    ASK(v = 0x1FF);
    ASK(v = kFive);
    ASK(v = true);
    ASK(v = -1);
    ASK(v = wide_five);
    ASK(v += v);
    ASK(v -= v);
    ASK(v.set_bit(3, 1));
    ASK(v.bitwidth(4));
    ASK(v.bitwidth(40));
    ASK(v.set_value_from_hex_string("fF").bitwidth());
    ASK(v.set_value_from_bin_string("1x0").bitwidth());
    ASK(v.as_bin_string());
}

void ask_about_construction() {
    ASK(KVAL_UINTEGER(5, 8));
    ASK(KVAL_UINTEGER(5u, 8u));
    ASK(KVAL_UINTEGER(kFive, kSix));
    ASK(KVAL_UINTEGER(-1, 4));
    ASK(KVAL_UINTEGER(5, 0));
    ASK(KVAL_UINTEGER(5, -1));
    ASK(KVAL_UINTEGER(five, 4, true));
    ASK(KVAL_UINTEGER(five, 1, false));
    ASK(KVAL_UINTEGER{5, 8});
    ASK(KVAL_UINTEGER(KVAL_UINTEGER(5, 8)));
}

void ask_about_moves() {
    KVAL_UINTEGER source(five);
    const KVAL_UINTEGER taken(std::move(source));
    ASK(taken);
    ASK(source.bitwidth());
    ASK(source.uint());
    ASK(source.is_zero());
    ASK(source.as_hex_string());
    ASK(source == zero);
    ASK(source == 0);
    ASK(source = wide_five);

    KVAL_UINTEGER numbered(five);
    const KVAL_UINTEGER gone(std::move(numbered));
    ASK(numbered = 7);

    KVAL_UINTEGER target(0, 8);
    ASK(target = KVAL_UINTEGER(0x123, 64));
    ASK(target = std::move(source));

    KVAL_UINTEGER a(5, 8);
    KVAL_UINTEGER b(0x123, 40);
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
    KVAL_UINTEGER& itself = b;
    b = std::move(itself);
    ASK(b);
}

void ask_about_sorting() {
    KVAL_UINTEGER values[] = {big, KVAL_UINTEGER(300, 16), five, KVAL_UINTEGER(0, 33), KVAL_UINTEGER(2, 4)};
    std::sort(values, values + 5);
    ASK(values[0]);
    ASK(values[1]);
    ASK(values[2]);
    ASK(values[3]);
    ASK(values[4]);
    std::rotate(values, values + 2, values + 5);
    ASK(values[0]);
    ASK(values[3]);
    ASK(*std::max_element(values, values + 5));
    ASK(*std::find(values, values + 5, 300));
    ASK(*std::find(values, values + 5, wide_five));
    ASK(static_cast<unsigned>(std::count(values, values + 5, 0)));
}

}  // namespace

int main() {
    ask_about_identity_of_values();
    ask_about_identity_with_numbers();
    ask_about_order();
    ask_about_derived_values();
    ask_about_results();
    ask_about_changes();
    ask_about_construction();
    ask_about_moves();
    ask_about_sorting();
    ask_about_signed_values();
}
