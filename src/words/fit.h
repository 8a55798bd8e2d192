// Copies of arrays of words into arrays of another length.
#pragma once

#include <algorithm>

#include "words/transform.h"

namespace kval::words {

/// out = in, cut or zero-extended from `in_size` to `size` words. The arrays do not overlap.
inline void fit(Word* out, std::size_t size, const Word* in, std::size_t in_size) {
    const std::size_t both = std::min(size, in_size);
    copy(out, in, both);
    if (both < size) std::fill(out + both, out + size, Word{0});
}

}  // namespace kval::words
