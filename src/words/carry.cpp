// Sums and differences over arrays of words, two words a step.
#include "words/carry.h"

#include <algorithm>

namespace kval::words {
namespace {

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

// Runs a carry chain through `step`, which serves limbs of two words and of one.
template <typename Step>
void chain(Word* out, const Word* a, const Word* b, std::size_t size, Step step) {
    std::size_t i = 0;
    for (; i + 2 <= size; i += 2) store_pair(out + i, step(load_pair(a + i), load_pair(b + i)));
    if (i < size) out[i] = step(a[i], b[i]);
}

// Runs a carry (`step` adds or subtracts it) through words until it dies; the words above are copied as they are.
template <typename Step>
bool ripple(Word* out, const Word* a, std::size_t size, bool carry, Step step) {
    std::size_t i = 0;
    for (; carry && i < size; ++i) out[i] = step(a[i], Word{0}, carry);
    if (out != a) std::copy(a + i, a + size, out + i);
    return carry;
}

}  // namespace

bool add(Word* out, const Word* a, const Word* b, std::size_t size) {
    bool carry = false;
    chain(out, a, b, size, [&carry](auto x, auto y) { return add_limbs(x, y, carry); });
    return carry;
}

bool add_carry(Word* out, const Word* a, std::size_t size, bool carry) {
    return ripple(out, a, size, carry, add_limbs<Word>);
}

bool subtract(Word* out, const Word* a, const Word* b, std::size_t size) {
    bool borrow = false;
    chain(out, a, b, size, [&borrow](auto x, auto y) { return subtract_limbs(x, y, borrow); });
    return borrow;
}

bool subtract_borrow(Word* out, const Word* a, std::size_t size, bool borrow) {
    return ripple(out, a, size, borrow, subtract_limbs<Word>);
}

// Above the lowest word that is not 0, negation is inversion.
void negate(Word* out, const Word* in, std::size_t size) {
    std::size_t i = 0;
    for (; i < size && in[i] == 0; ++i) out[i] = 0;
    if (i < size) out[i] = 0 - in[i];
    for (++i; i < size; ++i) out[i] = ~in[i];
}

}  // namespace kval::words
