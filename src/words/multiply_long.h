// Long multiplication: every limb of one factor by every limb of the other. A limb is two words.
#pragma once

#include "words/multiply_rows.h"

namespace kval::words {

/// out = a * b, a_size + b_size words; `a` has at least as many words as `b`, which has at least one.
void multiply_long(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size,
                   const RowLoops& loops);

/// out += a * limb, cut to `size` words.
void add_row(Word* out, std::size_t size, const Word* a, std::size_t a_size, DoubleWord limb);

}  // namespace kval::words
