// The inner loops of long shifts, which have a twin for each kind of machine.
#pragma once

#include "words/word.h"

namespace kval::words {

/// out[i] = limbs i and i + 1 of `in`, joined and shifted right by 0 to 63 bits, for `limbs` limbs, upwards. Reads one
/// limb more than it writes.
void join_right(Word* out, const Word* in, std::size_t limbs, unsigned bits);
/// out[i] = limbs i and i - 1 of `in`, joined and shifted left by 0 to 63 bits, for `limbs` limbs, downwards. Reads one
/// limb before `in`.
void join_left(Word* out, const Word* in, std::size_t limbs, unsigned bits);

}  // namespace kval::words
