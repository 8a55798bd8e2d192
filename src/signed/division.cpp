// Division with a signed operand: its wide results, which are X or come from low words alone, and its messages.
#include "kval.h"

namespace kval::detail {

KVAL_SINTEGER SignedInternals::DivisionWide(const Quotient& quotient, unsigned width) {
    KVAL_SINTEGER result(static_cast<int>(quotient.number), width);
    result.EnforceWidth();
    if (quotient.is_x) result.force_x();
    return result;
}

// The texts are part of the interface, slips included: the operator is spelled with two strokes, and the first one says
// that its signed operands are unsigned.
void SignedInternals::ThrowDivideUnsignedWidth() {
    throw "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_UINTEGERs";
}

void SignedInternals::ThrowDivideSignedWidth() {
    throw "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_SINTEGERs";
}

void SignedInternals::ThrowRemainderWidth() {
    throw "KVAL_SINTEGER operator% only supports division between 32 bit KVAL_SINTEGERs";
}

}  // namespace kval::detail
