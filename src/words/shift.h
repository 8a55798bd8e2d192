// Shifts over arrays of words, least significant word first, zeros in.
#pragma once

#include "words/word.h"

namespace kval::words {

/// out = in << count, cut or zero-extended from `in_size` to `out_size` words. `out` may be `in`.
void shift_left(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count);
/// out = in >> count, cut or zero-extended from `in_size` to `out_size` words. `out` may be `in`.
void shift_right(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count);

}  // namespace kval::words
