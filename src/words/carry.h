// Sums and differences over arrays of words, least significant word first, with their carries and borrows.
#pragma once

#include "words/word.h"

namespace kval::words {

/// Below so many words a chain is done on the spot.
inline constexpr std::size_t kShortChain = 17;

/// out = a + b over `size` words, for add_long not less than that; returns the carry out. `out` may be `a` or `b`.
bool add_long(Word* out, const Word* a, const Word* b, std::size_t size);
inline bool add(Word* out, const Word* a, const Word* b, std::size_t size) {
    return size < kShortChain ? chain_limbs(out, a, b, size, false, AddStep()) : add_long(out, a, b, size);
}
/// out = a + carry over `size` words; returns the carry out. `out` may be `a`.
bool add_carry(Word* out, const Word* a, std::size_t size, bool carry);

/// out = a - b over `size` words, likewise; returns the borrow out. `out` may be `a` or `b`.
bool subtract_long(Word* out, const Word* a, const Word* b, std::size_t size);
inline bool subtract(Word* out, const Word* a, const Word* b, std::size_t size) {
    return size < kShortChain ? chain_limbs(out, a, b, size, false, SubtractStep()) : subtract_long(out, a, b, size);
}
/// out = a - borrow over `size` words; returns the borrow out. `out` may be `a`.
bool subtract_borrow(Word* out, const Word* a, std::size_t size, bool borrow);

/// out = -in over `size` words. `out` may be `in`.
void negate(Word* out, const Word* in, std::size_t size);

}  // namespace kval::words
