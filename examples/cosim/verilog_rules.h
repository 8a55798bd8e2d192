// Verilog's answers to unknown operands, in the values of this library. The library's own rules differ from these on
// purpose: they are said here, in one place, and the model computes with these functions wherever an operand may be
// unknown. Both operands are equally wide, and so is the result where nothing else is said.
//
//            Verilog                                     the library                      here
//   a & b    X and X is X                                X and X is 0                     & and these X bits
//   a | b    bit by bit                                  the same                         |
//   ~a       bit by bit                                  the same                         ~
//   a ^ b    bit by bit                                  X everywhere by flag X           ^ and the X bits of both
//   a + b    X everywhere if any bit is X, carry too     X bits ignored                   X everywhere, or +
//   a - b    likewise, borrow too                        X bits ignored                   X everywhere, or -
//   a * b    likewise                                    by flag X, not by the bits       X everywhere, or *
//   a / b    likewise; and for a divisor of 0            only for a divisor of 0          X everywhere, or /
//   a << n   X bits move along                           the same                         <<
//   a >>> n  likewise; an X in the sign fills            filled from the value bit        both planes of bits by >>
//   a == b   0 if known bits differ, else X if any is    identity: X equals X             by hand
//   a < b    X if any bit is X                           X bits ignored                   X, or <
//
// In Verilog a Z as an operand counts as an X; the library's operators do not look at flag Z.
#pragma once

#include <kval.h>

namespace verilog {

// `width` bits of X.
KVAL_UINTEGER unknown(unsigned width);

// Whether any bit is X or Z: by the bits, since flag X is kept loosely.
bool has_unknown(const KVAL_UINTEGER& a);

// Bits `low` to `low` + `width` - 1. A Z stays a Z, as in any plain copy.
KVAL_UINTEGER part(const KVAL_UINTEGER& a, unsigned low, unsigned width);

KVAL_UINTEGER bit_and(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);
KVAL_UINTEGER bit_or(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);
KVAL_UINTEGER bit_xor(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);
KVAL_UINTEGER bit_not(const KVAL_UINTEGER& a);

KVAL_UINTEGER add(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);              // one bit wider: {carry, sum}
KVAL_UINTEGER subtract(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);         // one bit wider: {borrow, difference}
KVAL_UINTEGER multiply(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);         // twice as wide
KVAL_UINTEGER multiply_signed(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);  // twice as wide
KVAL_UINTEGER divide(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);           // up to 32 bits
KVAL_UINTEGER remainder(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);        // up to 32 bits

// The count is known.
KVAL_UINTEGER shift_left(const KVAL_UINTEGER& a, unsigned count);
KVAL_UINTEGER shift_right(const KVAL_UINTEGER& a, unsigned count);
KVAL_UINTEGER shift_right_signed(const KVAL_UINTEGER& a, unsigned count);

// One bit.
KVAL_UINTEGER equal(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);
KVAL_UINTEGER less_signed(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);

}  // namespace verilog
