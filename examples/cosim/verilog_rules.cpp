// Verilog's answers to unknown operands: the library's operators, and what has to be added to them.
#include "verilog_rules.h"

namespace verilog {

namespace {

// The value bits as a known number; what lies under an X reads 0.
KVAL_UINTEGER value_bits(const KVAL_UINTEGER& a) {
    KVAL_UINTEGER bits(0, a.bitwidth());
    for (int i = 0; i < a.get_size(); ++i) bits.set_uvalue_at(i, a.get_uvalue_at(i) & ~a.get_xmask_at(i));
    return bits;
}

// The X bits as a known number; all of them where the value is Z.
KVAL_UINTEGER unknown_bits(const KVAL_UINTEGER& a) {
    KVAL_UINTEGER bits(0, a.bitwidth());
    for (int i = 0; i < a.get_size(); ++i) bits.set_uvalue_at(i, a.is_z() ? ~0U : a.get_xmask_at(i));
    bits.EnforceWidth();
    return bits;
}

// Known value bits with X where `unknown` has a 1.
KVAL_UINTEGER with_unknown(KVAL_UINTEGER a, const KVAL_UINTEGER& unknown) {
    if (unknown.is_zero()) return a;
    a.force_x();  // flag X as well
    for (int i = 0; i < a.get_size(); ++i) a.set_xmask_at(i, unknown.get_uvalue_at(i));
    return a;
}

// What an operator takes a value for: a Z is X in every bit.
KVAL_UINTEGER operand(const KVAL_UINTEGER& a) { return a.is_z() ? unknown(a.bitwidth()) : a; }

// Any value in `width` bits, cut or extended by zeros.
KVAL_UINTEGER resized(const KVAL_UINTEGER& a, unsigned width) {
    KVAL_UINTEGER result(0, width);
    result = a;
    return result;
}

// An arithmetic shift right of known bits. Signed >> narrows, exactly; the width comes back by sign extension.
KVAL_UINTEGER filled_from_the_sign(const KVAL_UINTEGER& a, unsigned count) {
    KVAL_SINTEGER shifted = KVAL_SINTEGER(a) >> count;
    shifted.bitwidth(a.bitwidth());
    shifted.EnforceWidth();
    return KVAL_UINTEGER(shifted);
}

KVAL_UINTEGER one_bit(bool bit) { return {bit ? 1U : 0U, 1}; }

}  // namespace

KVAL_UINTEGER unknown(unsigned width) { return KVAL_UINTEGER(0, width).force_x(); }

bool has_unknown(const KVAL_UINTEGER& a) {
    bool any = a.is_z();
    for (int i = 0; i < a.get_size(); ++i) any = any || a.get_xmask_at(i) != 0;
    return any;
}

KVAL_UINTEGER part(const KVAL_UINTEGER& a, unsigned low, unsigned width) { return resized(a >> low, width); }

KVAL_UINTEGER bit_and(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    const KVAL_UINTEGER both = operand(a) & operand(b);
    return with_unknown(value_bits(both), unknown_bits(both) | (unknown_bits(a) & unknown_bits(b)));
}

KVAL_UINTEGER bit_or(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) { return operand(a) | operand(b); }

KVAL_UINTEGER bit_xor(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    return with_unknown(value_bits(a) ^ value_bits(b), unknown_bits(a) | unknown_bits(b));
}

KVAL_UINTEGER bit_not(const KVAL_UINTEGER& a) { return ~operand(a); }

KVAL_UINTEGER add(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    const unsigned width = a.bitwidth() + 1;
    return has_unknown(a) || has_unknown(b) ? unknown(width) : resized(a + b, width);
}

KVAL_UINTEGER subtract(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    const unsigned width = a.bitwidth() + 1;
    return has_unknown(a) || has_unknown(b) ? unknown(width) : resized(a, width) - resized(b, width);
}

// value_bits() drops flag X where it has outlived the X bits: `*` looks at the flag.
KVAL_UINTEGER multiply(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    if (has_unknown(a) || has_unknown(b)) return unknown(a.bitwidth() + b.bitwidth());
    return value_bits(a) * value_bits(b);
}

KVAL_UINTEGER multiply_signed(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    if (has_unknown(a) || has_unknown(b)) return unknown(a.bitwidth() + b.bitwidth());
    return KVAL_SINTEGER(value_bits(a)) * KVAL_SINTEGER(value_bits(b));
}

KVAL_UINTEGER divide(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    return has_unknown(a) || has_unknown(b) ? unknown(a.bitwidth()) : a / b;
}

KVAL_UINTEGER remainder(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    return has_unknown(a) || has_unknown(b) ? unknown(a.bitwidth()) : a % b;
}

// By 0 a Z stays a Z. Else a Z with zeros beside it is what this library holds as X.
KVAL_UINTEGER shift_left(const KVAL_UINTEGER& a, unsigned count) {
    return count == 0 ? a : resized(operand(a) << count, a.bitwidth());
}

KVAL_UINTEGER shift_right(const KVAL_UINTEGER& a, unsigned count) {
    return count == 0 ? a : resized(operand(a) >> count, a.bitwidth());
}

// The sign of each plane fills it: a known sign the value bits, an X sign the X bits. A Z fills itself with Z.
KVAL_UINTEGER shift_right_signed(const KVAL_UINTEGER& a, unsigned count) {
    if (a.is_z()) return a;
    return with_unknown(filled_from_the_sign(value_bits(a), count), filled_from_the_sign(unknown_bits(a), count));
}

KVAL_UINTEGER equal(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    const KVAL_UINTEGER known = ~(unknown_bits(a) | unknown_bits(b));
    if (!((value_bits(a) ^ value_bits(b)) & known).is_zero()) return one_bit(false);
    return has_unknown(a) || has_unknown(b) ? unknown(1) : one_bit(true);
}

KVAL_UINTEGER less_signed(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    return has_unknown(a) || has_unknown(b) ? unknown(1) : one_bit(KVAL_SINTEGER(a) < KVAL_SINTEGER(b));
}

}  // namespace verilog
