// Access to large values, and the messages of the bit accessors.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/compare.h"

namespace kval::detail {

bool IsNumberLarge(std::uint64_t value, unsigned width, unsigned number) noexcept {
    return words::equal(array_of(value), word_count(width), &number, 1);
}

void ForceXLarge(Planes planes, unsigned width) noexcept {
    std::fill_n(array_of(planes.mask), word_count(width), ~Word{0});
    TrimLarge(planes, width);
}

void ThrowBitPosition() { throw "KVAL_UINTEGER::bit() called with illegal bit_position"; }

void ThrowSetBitPosition() { throw "KVAL_UINTEGER::set_bit() called with illegal bit_position"; }

}  // namespace kval::detail
