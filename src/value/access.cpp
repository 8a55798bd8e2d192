// Access to wide values, and the messages of the bit accessors.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/compare.h"

using kval::words::Word;

bool KVAL_UINTEGER::IsNumberWide(unsigned number) const noexcept {
    return kval::words::equal(uvalue.words, kval::word_count(width), &number, 1);
}

KVAL_UINTEGER& KVAL_UINTEGER::ForceXWide() noexcept {
    std::fill_n(xmask.words, kval::word_count(width), ~Word{0});
    EnforceWidth();
    return SetFlag(kX);
}

void KVAL_UINTEGER::ThrowBitPosition() { throw "KVAL_UINTEGER::bit() called with illegal bit_position"; }

void KVAL_UINTEGER::ThrowSetBitPosition() { throw "KVAL_UINTEGER::set_bit() called with illegal bit_position"; }
