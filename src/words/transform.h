// Loops over arrays of words that treat every position on its own, without carries.
#pragma once

#include "words/word.h"

namespace kval::words {

/// From how many words on a loop takes four at a time. Short values are better off with two: what has just been written
/// in pieces of two words is slow to read in pieces of four.
inline constexpr std::size_t kLong = 16;

/// out[i] = rule(l[i], r[i]) for `size` words in both planes, which are many; the outputs may be one of the inputs.
template <typename Rule>
void combine_long(Word* value, Word* mask, const Word* l_value, const Word* l_mask, const Word* r_value,
                  const Word* r_mask, std::size_t size, Rule rule) {
    using Bits = FourState<Vector>;
    const std::size_t done = size - size % 4;
    for (std::size_t i = 0; i < done; i += 4) {
        const Bits bits = rule(Bits{load<Vector>(l_value + i), load<Vector>(l_mask + i)},
                               Bits{load<Vector>(r_value + i), load<Vector>(r_mask + i)});
        store(value + i, bits.value);
        store(mask + i, bits.mask);
    }
    combine_limbs(value + done, mask + done, l_value + done, l_mask + done, r_value + done, r_mask + done, size - done,
                  rule);
}
/// The same of any number of words.
template <typename Rule>
void combine(Word* value, Word* mask, const Word* l_value, const Word* l_mask, const Word* r_value, const Word* r_mask,
             std::size_t size, Rule rule) {
    if (size >= kLong) return combine_long(value, mask, l_value, l_mask, r_value, r_mask, size, rule);
    combine_limbs(value, mask, l_value, l_mask, r_value, r_mask, size, rule);
}

/// out[i] = rule(a[i], b[i]) for `size` words. `out` may be `a` or `b`.
template <typename Rule>
void map(Word* out, const Word* a, const Word* b, std::size_t size, Rule rule) {
    const std::size_t done = size < kLong ? 0 : size - size % 4;
    for (std::size_t i = 0; i < done; i += 4) store(out + i, rule(load<Vector>(a + i), load<Vector>(b + i)));
    map_limbs(out + done, a + done, b + done, size - done, rule);
}

/// out[i] = in[i] for `size` words. The arrays do not overlap.
inline void copy(Word* out, const Word* in, std::size_t size) {
    if (size < kLong) {
        copy_limbs(out, in, size);
    } else {
        std::memcpy(out, in, size * sizeof(Word));
    }
}

}  // namespace kval::words
