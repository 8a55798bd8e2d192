// The inner loops of long multiplication, which have a twin for each kind of machine. A limb is two words.
#pragma once

#include "words/word.h"

namespace kval::words {

/// The limbs of the second factor that a loop takes at once: one pass over the first factor serves so many rows.
inline constexpr std::size_t kRows = 4;

/// One way to run the two loops. Both multiply `limbs` limbs, at least one, of `a` by kRows limbs of `b`.
struct RowLoops {
    using Loop = void (*)(Word* out, const Word* a, std::size_t limbs, const Word* b);
    /// out = a * b; writes limbs + kRows limbs.
    Loop multiply;
    /// out += a * b, where `out` has `limbs` limbs; the kRows limbs above them are written as well, but not read.
    Loop add;
};

/// The fastest on this processor.
const RowLoops& row_loops();
/// Those that any processor of its kind can run.
const RowLoops& plain_row_loops();

}  // namespace kval::words
