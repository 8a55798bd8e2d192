// Long sums and differences in plain C++.
#include "words/carry_steps.h"

namespace kval::words {

bool add_blocks(Word* out, const Word* a, const Word* b, std::size_t blocks) {
    return chain_limbs(out, a, b, blocks * kCarryBlock, false, AddStep());
}

bool subtract_blocks(Word* out, const Word* a, const Word* b, std::size_t blocks) {
    return chain_limbs(out, a, b, blocks * kCarryBlock, false, SubtractStep());
}

}  // namespace kval::words
