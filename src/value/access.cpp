// Access to large values, and the messages of the bit accessors.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/compare.h"

namespace kval::detail {

bool IsNumberLarge(std::uint64_t value, unsigned width, unsigned number) noexcept {
    return words::equal(array_of(value), word_count(width), &number, 1);
}

bool SetBitLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned pos, Word bits) noexcept {
    const std::size_t index = pos / words::kWordBits;
    if (index >= word_count(width)) return false;
    const Word others = ~(Word{1} << pos % words::kWordBits);
    Word& word = array_of(value)[index];
    word = (word & others) | bits << pos % words::kWordBits;
    return (array_of(mask)[index] &= others) == 0;
}

void ForceXLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept {
    std::fill_n(array_of(mask), word_count(width), ~Word{0});
    TrimLarge(value, mask, width);
}

void ThrowBitPosition() { throw "KVAL_UINTEGER::bit() called with illegal bit_position"; }

void ThrowSetBitPosition() { throw "KVAL_UINTEGER::set_bit() called with illegal bit_position"; }

}  // namespace kval::detail
