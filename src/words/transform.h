// Loops over two planes of words that apply a rule to every position on its own, without carries.
#pragma once

#include "kval/detail/four_state.h"
#include "words/word.h"

namespace kval::words {

using detail::FourState;

/// out[i] = rule(l[i], r[i]) for `size` words; the outputs overlap no input.
template <typename Rule>
void combine(Word* __restrict value, Word* __restrict mask, const Word* l_value, const Word* l_mask,
             const Word* r_value, const Word* r_mask, std::size_t size, Rule rule) {
    for (std::size_t i = 0; i < size; ++i) {
        const FourState<Word> bits =
            rule(FourState<Word>{l_value[i], l_mask[i]}, FourState<Word>{r_value[i], r_mask[i]});
        value[i] = bits.value;
        mask[i] = bits.mask;
    }
}

/// target[i] = rule(target[i], r[i]) for `size` words; the target overlaps no input.
template <typename Rule>
void combine_in_place(Word* __restrict value, Word* __restrict mask, const Word* r_value, const Word* r_mask,
                      std::size_t size, Rule rule) {
    for (std::size_t i = 0; i < size; ++i) {
        const FourState<Word> bits = rule(FourState<Word>{value[i], mask[i]}, FourState<Word>{r_value[i], r_mask[i]});
        value[i] = bits.value;
        mask[i] = bits.mask;
    }
}

}  // namespace kval::words
