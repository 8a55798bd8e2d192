// Shifts over arrays of words, least significant word first, zeros in.
#pragma once

#include "words/word.h"

namespace kval::words {

/// Up to so many words a shift is done on the spot.
inline constexpr std::size_t kShortShift = 8;

/// out = in << count, cut or zero-extended from `in_size` to `out_size` words. `out` may be `in`.
void shift_left_long(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count);
inline void shift_left(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count) {
    if (out_size <= kShortShift)
        return shift_left_limbs(out, out_size, in, in_size, count / 64, count % 64, (out_size + 1) / 2);
    shift_left_long(out, out_size, in, in_size, count);
}

/// out = in >> count, cut or zero-extended from `in_size` to `out_size` words. `out` may be `in`.
void shift_right_long(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count);
inline void shift_right(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count) {
    if (out_size <= kShortShift) return shift_right_limbs(out, out_size, in, in_size, count / 64, count % 64);
    shift_right_long(out, out_size, in, in_size, count);
}

}  // namespace kval::words
