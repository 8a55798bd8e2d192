// A sum and a difference of single limbs, of one word or two, with the carry or borrow that comes in and goes out.
#pragma once

#include "words/word.h"

namespace kval::words {

template <typename Limb>
Limb add_limbs(Limb a, Limb b, bool& carry) {
    Limb sum;
    const bool first = __builtin_add_overflow(a, b, &sum);
    const bool second = __builtin_add_overflow(sum, static_cast<Limb>(carry), &sum);
    carry = first || second;
    return sum;
}

template <typename Limb>
Limb subtract_limbs(Limb a, Limb b, bool& borrow) {
    Limb difference;
    const bool first = __builtin_sub_overflow(a, b, &difference);
    const bool second = __builtin_sub_overflow(difference, static_cast<Limb>(borrow), &difference);
    borrow = first || second;
    return difference;
}

/// Runs a carry chain through `step`, one of the two above, a double word at a time.
template <typename Step>
bool chain(Word* out, const Word* a, const Word* b, std::size_t size, bool carry, Step step) {
    std::size_t i = 0;
    for (; i + 2 <= size; i += 2) store_pair(out + i, step(load_pair(a + i), load_pair(b + i), carry));
    if (i < size) out[i] = step(a[i], b[i], carry);
    return carry;
}

inline constexpr auto kAddStep = [](auto a, auto b, bool& carry) { return add_limbs(a, b, carry); };
inline constexpr auto kSubtractStep = [](auto a, auto b, bool& borrow) { return subtract_limbs(a, b, borrow); };

}  // namespace kval::words
