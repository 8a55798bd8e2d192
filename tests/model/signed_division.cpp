// Model of the signed division and remainder, truncating and Euclidean, on the 32-bit read-outs of the operands.
#include <string>

#include "bits.h"
#include "signed_model.h"

namespace model::signed_value {

namespace {

// The slips in the wording are part of the interface.
const char* const kQuotientMessage = "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_UINTEGERs";
const char* const kRemainderMessage = "KVAL_SINTEGER operator% only supports division between 32 bit KVAL_SINTEGERs";
const char* const kMixedMessage = "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_SINTEGERs";

void require_narrow(const Value& a, const Value& b, const char* message) {
    if (a.width > kWordBits || b.width > kWordBits) throw std::string(message);
}

// Only the low word of a divisor is looked at.
bool is_zero_divisor(const Value& b) { return uint(b) == 0; }

int number(const Value& v) { return convert_to_signed_representation(v); }

Value unknown(unsigned width) {
    Value result = make(0, width);
    force_x(result);
    return result;
}

// A 32-bit outcome reaches the result through a temporary value and a signed assignment. The width of the temporary
// shows in a 1-bit result: a 1-bit temporary 1 is negative and stays 1, a wider one is positive and loses its only bit.
Value outcome(unsigned width, unsigned pattern, unsigned temporary_width) {
    Value result = make(0, width);
    assign_signed(result, make(static_cast<int>(pattern), temporary_width));
    return result;
}

unsigned with_sign(unsigned magnitude, bool minus) { return minus ? 0u - magnitude : magnitude; }

bool is_minimum_by_minus_one(const Value& a, const Value& b) {
    return uint(a) == maximum_negative(a) && number(b) == -1;
}

// Whether a remainder with the dividend's sign is too large for the divisor's width, which the result has.
bool remainder_overflows(const Value& dividend, unsigned remainder, const Value& divisor) {
    return remainder > (positive(dividend) ? maximum_positive(divisor) : maximum_negative(divisor));
}

}  // namespace

Value div_ss(const Value& a, const Value& b) {
    if (is_zero_divisor(b)) return unknown(a.width);
    require_narrow(a, b, kQuotientMessage);
    if (negative(a) && absolute_value(a) >= maximum_negative(a) && number(b) == -1) return unknown(a.width);
    return outcome(a.width, static_cast<unsigned>(number(a) / number(b)), 32);
}

// The overflow test takes the divisor's low word as it is, not its magnitude: deliberate.
Value rem_ss(const Value& a, const Value& b) {
    if (is_zero_divisor(b)) return unknown(b.width);
    require_narrow(a, b, kRemainderMessage);
    if (is_minimum_by_minus_one(a, b) || div_ss(a, b).x) return unknown(b.width);
    if (remainder_overflows(a, absolute_value(a) % uint(b), b)) return unknown(b.width);
    return outcome(b.width, static_cast<unsigned>(number(a) % number(b)), b.width);
}

// The overflow test comes before the sign, also for a negative quotient.
Value div_us(const Value& a, const Value& b) {
    if (is_zero_divisor(b)) return unknown(a.width);
    require_narrow(a, b, kMixedMessage);
    const unsigned quotient = uint(a) / absolute_value(b);
    if (quotient > maximum_positive(a)) return unknown(a.width);
    return outcome(a.width, with_sign(quotient, negative(b)), a.width);
}

// Unknown wherever the quotient is, although the remainder might fit.
Value rem_us(const Value& a, const Value& b) {
    if (div_us(a, b).x) return unknown(b.width);
    require_narrow(a, b, kMixedMessage);
    return outcome(b.width, uint(a) % absolute_value(b), 32);
}

Value div_su(const Value& a, const Value& b) {
    if (is_zero_divisor(b)) return unknown(a.width);
    require_narrow(a, b, kMixedMessage);
    return outcome(a.width, with_sign(absolute_value(a) / uint(b), negative(a)), a.width);
}

Value rem_su(const Value& a, const Value& b) {
    if (div_su(a, b).x) return unknown(b.width);
    require_narrow(a, b, kMixedMessage);
    const unsigned remainder = absolute_value(a) % uint(b);
    if (remainder_overflows(a, remainder, b)) return unknown(b.width);
    return outcome(b.width, with_sign(remainder, negative(a)), b.width);
}

Value posr_div_ss(const Value& a, const Value& b) {
    const Value remainder = rem_ss(a, b);
    const Value truncated = div_ss(a, b);
    if (is_zero_divisor(b)) return unknown(a.width);
    require_narrow(a, b, kRemainderMessage);
    if (remainder.x || is_minimum_by_minus_one(a, b)) return unknown(a.width);
    if (positive(remainder)) return truncated;

    const unsigned quotient = absolute_value(a) / absolute_value(b);
    const bool minus = positive(a) != positive(b);
    if (minus && positive(b) && maximum_negative(a) <= quotient) return unknown(a.width);
    if (!minus && negative(b) && maximum_positive(a) <= quotient) return unknown(a.width);
    return outcome(a.width, with_sign(quotient, minus) + (positive(b) ? ~0u : 1u), a.width);
}

Value posr_mod_ss(const Value& a, const Value& b) {
    const Value quotient = posr_div_ss(a, b);
    const Value remainder = rem_ss(a, b);
    if (quotient.x) return unknown(b.width);
    require_narrow(a, b, kRemainderMessage);
    if (positive(remainder)) return remainder;
    const unsigned sum = static_cast<unsigned>(number(remainder)) + absolute_value(b);
    if (sum > maximum_positive(remainder)) return unknown(b.width);
    return outcome(b.width, sum, b.width);
}

Value posr_div_us(const Value& a, const Value& b) { return div_us(a, b); }

Value posr_mod_us(const Value& a, const Value& b) { return rem_us(a, b); }

// A negative dividend that does not divide evenly is computed on the 32-bit read-outs at any width; only the other
// path, the truncating quotient, tests the widths.
Value posr_div_su(const Value& a, const Value& b) {
    if (is_zero_divisor(b)) return unknown(a.width);
    if (positive(a) || absolute_value(a) % uint(b) == 0) return div_su(a, b);
    const unsigned quotient = absolute_value(a) / uint(b);
    if (maximum_negative(a) <= quotient) return unknown(a.width);
    return outcome(a.width, with_sign(quotient, true) - 1, a.width);
}

Value posr_mod_su(const Value& a, const Value& b) {
    if (posr_div_su(a, b).x) return unknown(b.width);
    const unsigned remainder = absolute_value(a) % uint(b);
    if (positive(a) || remainder == 0) return rem_su(a, b);
    const unsigned complement = uint(b) - remainder;
    if (complement > maximum_positive(b)) return unknown(b.width);
    return outcome(b.width, complement, b.width);
}

}  // namespace model::signed_value
