// The multiply-accumulate unit: what it does in one clock.
#include "mac.h"

namespace {

// The number in `width` bits, or the nearest one that they hold.
KVAL_SINTEGER saturate(KVAL_SINTEGER number, unsigned width) {
    KVAL_SINTEGER highest(static_cast<int>((1U << (width - 1)) - 1), width);
    KVAL_SINTEGER lowest = ~highest;  // 0111 and 1000
    if (number > highest) return highest;
    if (number < lowest) return lowest;
    number.bitwidth(width);
    return number;
}

}  // namespace

// Signed sums and products are as wide as they have to be, and >> takes off the bits that it drops: nothing is lost
// before saturate() decides.
void Mac::clock(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    product = a * b;
    if (product.is_x()) return;
    accumulator = saturate(accumulator + product, kAccumulatorBits);
    output = saturate(accumulator >> kDroppedBits, kOutputBits);
}
