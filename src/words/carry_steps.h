// The inner loops of long sums and differences, which have a twin for each kind of machine.
#pragma once

#include "words/word.h"

namespace kval::words {

/// The words that one step of these loops takes.
inline constexpr std::size_t kCarryBlock = 8;

/// out = a + b over `blocks` blocks, at least one; returns the carry out. `out` may be `a` or `b`.
bool add_blocks(Word* out, const Word* a, const Word* b, std::size_t blocks);
/// out = a - b over `blocks` blocks, at least one; returns the borrow out. `out` may be `a` or `b`.
bool subtract_blocks(Word* out, const Word* a, const Word* b, std::size_t blocks);

}  // namespace kval::words
