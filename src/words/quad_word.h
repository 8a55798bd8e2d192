// Four words in one number: the product of two limbs of two words each.
#pragma once

#include "words/word.h"

namespace kval::words {

inline DoubleWord low_half(QuadWord quad) { return static_cast<DoubleWord>(quad); }
inline DoubleWord high_half(QuadWord quad) { return static_cast<DoubleWord>(quad >> 2 * kWordBits); }

/// a * b + c + d, which cannot overflow: even of the largest limbs it is the largest QuadWord.
inline QuadWord multiply_add(DoubleWord a, DoubleWord b, DoubleWord c, DoubleWord d) {
    return static_cast<QuadWord>(a) * b + c + d;
}

}  // namespace kval::words
