// mac.h: a signed multiply-accumulate unit with saturation, modelled register by register with four-state values.
#ifndef DEMO_MAC_H
#define DEMO_MAC_H

#include <kval.h>

/// One clock multiplies `a` and `b`, adds the product to the accumulator, and puts the accumulator, without its low 11
/// bits, to the output. Read as fractions, a, b and the output have 11 bits behind the point, product and accumulator
/// 22.
///
/// Unknown bits: the product is all X as soon as one bit of `a` or `b` is X, be the other operand 0 or not. Such a
/// product is not added: accumulator and output hold what they have.
struct Mac {
    static constexpr unsigned kOperandBits = 12;
    static constexpr unsigned kProductBits = 2 * kOperandBits;
    static constexpr unsigned kAccumulatorBits = 28;  // room for 32 of the largest products
    static constexpr unsigned kDroppedBits = 11;
    static constexpr unsigned kOutputBits = 16;  // one less than the accumulator leaves: this saturates as well

    void clock(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);

    KVAL_SINTEGER product{0, kProductBits};
    KVAL_SINTEGER accumulator{0, kAccumulatorBits};
    KVAL_SINTEGER output{0, kOutputBits};
};

#endif
