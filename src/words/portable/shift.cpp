// The inner loops of long shifts in plain C++.
#include "words/shift_steps.h"

namespace kval::words {

void join_right(Word* out, const Word* in, std::size_t limbs, unsigned bits) {
    for (std::size_t i = 0; i < 2 * limbs; i += 2)
        store_pair(out + i, joined_right(load_pair(in + i + 2), load_pair(in + i), bits));
}

void join_left(Word* out, const Word* in, std::size_t limbs, unsigned bits) {
    for (std::size_t i = 2 * limbs; i != 0; i -= 2)
        store_pair(out + i - 2, joined_left(load_pair(in + i - 2), load_pair(in + i - 4), bits));
}

}  // namespace kval::words
