// Model of the signed products, by magnitudes, and of the arithmetic right shifts.
#include <cassert>

#include "bits.h"
#include "signed_model.h"

namespace model::signed_value {

namespace {

[[maybe_unused]] constexpr int kWidthLimit = 10000;

// The magnitude of a factor at its own width; the most negative value is its own, read unsigned.
Value factor(const Value& v) {
    Value result = copy(v);
    if (sign(v)) assign_signed(result, twos_complement(v));
    return result;
}

Value product(const Value& l, const Value& r, bool negate) {
    Value result = make(0, l.width + r.width);
    assign_unsigned(result, mul(l, r));
    if (negate) complement_me(result);
    return result;
}

// Where the ones that fill in the sign start within their word. With a full top word the shift is applied twice, which
// sets more bits than were vacated: deliberate.
unsigned fill_start(unsigned top, unsigned count) {
    if (top != 0) return (top - count % kWordBits) % kWordBits;
    return (~0u << (kWordBits - count) % kWordBits) % kWordBits;
}

}  // namespace

Value mul_ss(const Value& a, const Value& b) { return product(factor(a), factor(b), sign(a) != sign(b)); }

Value mul_su(const Value& a, const Value& b) { return product(factor(a), b, sign(a)); }

Value mul_us(const Value& a, const Value& b) { return mul_su(b, a); }

// The narrowing brings the sign bit down to the new top bit, so nothing is filled in. The width is a signed 32-bit
// difference: a count of almost 2^32 widens. From a compact operand only the word is taken, by a count modulo 32 and
// not trimmed, without marks and flags; from a wide one everything. Deliberate.
Value shr(const Value& a, unsigned count) {
    const int width = static_cast<int>(a.width - count);
    assert(width < kWidthLimit);
    Value result = make(0, width < 1 ? 1 : static_cast<unsigned>(width));
    if (sign(a) && width <= 0) {
        set_uvalue_at(result, 0, 1);
    } else if (a.width <= kWordBits) {
        set_uvalue_at(result, 0, uint(a) >> count % kWordBits);
    } else {
        assign_unsigned(result, model::shr(a, count));
    }
    return result;
}

// The comparison of the count with the width is a signed one, so counts of 2^31 and above shift, then fill. The fill
// goes over whole words from the top down, as many as the count and the top word's bits need, rounded up: more than the
// shift vacated. Required as it stands.
void shr_assign(Value& target, unsigned count) {
    const bool negative = sign(target);
    if (negative && static_cast<int>(count) >= static_cast<int>(target.width)) {
        target.value.assign(target.value.size(), true);
        enforce_width(target);
        delete_string(target);
        return;
    }
    model::shr_assign(target, count);
    if (!negative) return;

    const unsigned top = target.width % kWordBits;
    const unsigned partial = ~0u << fill_start(top, count);
    const unsigned full_words = target.width <= kWordBits ? 0 : (top + count + 31) / kWordBits;
    for (unsigned i = 0; i <= full_words && i < target.words(); ++i) {
        const unsigned index = target.words() - 1 - i;
        put_word(target.value, index, i < full_words ? ~0u : target.word(index) | partial);
    }
    enforce_width(target);
}

}  // namespace model::signed_value
