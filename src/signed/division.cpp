// Division with a signed operand: its wide results, which are X or come from low words alone, and its messages.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"

namespace kval::detail {

Planes SignedInternals::DivisionWide(Quotient quotient, unsigned width) {
    const Planes planes = take_planes(width);
    const std::size_t size = word_count(width);
    const bool negative = static_cast<int>(quotient.number) < 0;
    planes.value[0] = quotient.number;
    std::fill(planes.value + 1, planes.value + size, negative ? ~Word{0} : Word{0});
    std::fill_n(planes.mask, size, quotient.is_x ? ~Word{0} : Word{0});
    Internals::Trim(planes, width);
    return planes;
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
