// The messages of division with a signed operand.
#include "kval.h"

namespace kval::detail {

// The texts are part of the interface, slips included: the operator / is spelled with two strokes, and the first text
// calls its signed operands unsigned.
void ThrowDivideUnsignedWidth() {
    throw "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_UINTEGERs";
}

void ThrowDivideSignedWidth() { throw "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_SINTEGERs"; }

void ThrowSignedRemainderWidth() {
    throw "KVAL_SINTEGER operator% only supports division between 32 bit KVAL_SINTEGERs";
}

}  // namespace kval::detail
