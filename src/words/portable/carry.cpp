// Long sums and differences in plain C++.
#include "words/carry_limbs.h"
#include "words/carry_steps.h"

namespace kval::words {

bool add_blocks(Word* out, const Word* a, const Word* b, std::size_t blocks) {
    return chain(out, a, b, blocks * kCarryBlock, false, kAddStep);
}

bool subtract_blocks(Word* out, const Word* a, const Word* b, std::size_t blocks) {
    return chain(out, a, b, blocks * kCarryBlock, false, kSubtractStep);
}

}  // namespace kval::words
