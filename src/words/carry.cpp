// Sums and differences over arrays of words: long ones in blocks, what is left two words a step.
#include "words/carry.h"

#include "words/carry_steps.h"
#include "words/transform.h"

namespace kval::words {
namespace {

// A carry chain over a block of words at least: `blocks` for as many whole blocks as there are, `step` for the rest.
template <typename Blocks, typename Step>
bool whole_chain(Word* out, const Word* a, const Word* b, std::size_t size, Blocks blocks, Step step) {
    const std::size_t done = size - size % kCarryBlock;
    const bool carry = blocks(out, a, b, done / kCarryBlock);
    return chain_limbs(out + done, a + done, b + done, size - done, carry, step);
}

// Runs a carry (`step` adds or subtracts it) through words until it dies; the words above are copied as they are.
template <typename Step>
bool ripple(Word* out, const Word* a, std::size_t size, bool carry, Step step) {
    std::size_t i = 0;
    for (; carry && i < size; ++i) out[i] = step(a[i], Word{0}, carry);
    if (out != a) copy(out + i, a + i, size - i);
    return carry;
}

}  // namespace

bool add_long(Word* out, const Word* a, const Word* b, std::size_t size) {
    return whole_chain(out, a, b, size, add_blocks, AddStep());
}

bool add_carry(Word* out, const Word* a, std::size_t size, bool carry) {
    return ripple(out, a, size, carry, AddStep());
}

bool subtract_long(Word* out, const Word* a, const Word* b, std::size_t size) {
    return whole_chain(out, a, b, size, subtract_blocks, SubtractStep());
}

bool subtract_borrow(Word* out, const Word* a, std::size_t size, bool borrow) {
    return ripple(out, a, size, borrow, SubtractStep());
}

// Above the lowest word that is not 0, negation is inversion.
void negate(Word* out, const Word* in, std::size_t size) {
    std::size_t i = 0;
    for (; i < size && in[i] == 0; ++i) out[i] = 0;
    if (i < size) out[i] = 0 - in[i];
    for (++i; i < size; ++i) out[i] = ~in[i];
}

}  // namespace kval::words
