// Known results of up to eight words, from numbers in registers.
#pragma once

#include "value/storage.h"

namespace kval {

/// The widest operand of a product that is done in registers.
inline constexpr unsigned kShortFactor = 128;

/// The number in an operand of up to kShortFactor bits.
inline words::QuadWord number_of(const Operand& v) { return words::load_quad(v.value, v.size); }

/// A new large known value of up to 256 bits. It is trimmed before it is stored, because what is stored in parts is
/// slow to read again.
inline Planes known_planes(const words::QuadPair& number, unsigned width) {
    const words::QuadWord used = ~words::QuadWord{0} >> (-width & 127U);
    const Arrays out = arrays_for(width);
    const std::size_t size = word_count(width);
    words::store_quads(out.value, size, {width <= 128 ? number.low & used : number.low, number.high & used});
    words::store_quads(out.mask, size, {0, 0});
    return planes_of(out);
}

}  // namespace kval
