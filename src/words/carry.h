// Sums and differences over arrays of words, least significant word first, with their carries and borrows.
#pragma once

#include "words/word.h"

namespace kval::words {

/// out = a + b over `size` words; returns the carry out. `out` may be `a` or `b`.
bool add(Word* out, const Word* a, const Word* b, std::size_t size);
/// out = a + carry over `size` words; returns the carry out. `out` may be `a`.
bool add_carry(Word* out, const Word* a, std::size_t size, bool carry);
/// out = a - b over `size` words; returns the borrow out. `out` may be `a` or `b`.
bool subtract(Word* out, const Word* a, const Word* b, std::size_t size);
/// out = a - borrow over `size` words; returns the borrow out. `out` may be `a`.
bool subtract_borrow(Word* out, const Word* a, std::size_t size, bool borrow);
/// out = -in over `size` words. `out` may be `in`.
void negate(Word* out, const Word* in, std::size_t size);

}  // namespace kval::words
