// Products of long factors from products of their parts: which method serves which sizes, and the steps they share.
#pragma once

#include <algorithm>

#include "words/carry.h"
#include "words/compare.h"
#include "words/multiply_rows.h"

namespace kval::words {

/// Which method serves which sizes, in words, and which loops long multiplication runs.
struct MultiplyPlan {
    /// From so many words of the shorter factor on, by Karatsuba's method; at least 4.
    std::size_t karatsuba;
    /// From so many words of the longer factor on, by Toom's method in three parts; at least 24.
    std::size_t toom;
    const RowLoops& loops;

    /// The words of scratch for factors of these sizes.
    std::size_t scratch(std::size_t a_size, std::size_t b_size) const;
    /// out = a * b, a_size + b_size words. Both factors have at least one word.
    void multiply(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size, Word* scratch) const;
};

/// The words of the lower part where `size` words are cut into 2 or 3 parts: whole limbs, no upper part has more.
inline std::size_t part_size(std::size_t size, std::size_t parts) {
    return ((size + parts - 1) / parts + 1) & ~std::size_t{1};
}

/// Both methods multiply as MultiplyPlan::multiply does, each with the scratch that it asks for; `b` has no more words
/// than `a`, and more than the lower parts of `a`.
std::size_t karatsuba_scratch(std::size_t a_size, std::size_t b_size, const MultiplyPlan& plan);
void multiply_karatsuba(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size, Word* scratch,
                        const MultiplyPlan& plan);
std::size_t toom_scratch(std::size_t a_size, std::size_t b_size, const MultiplyPlan& plan);
void multiply_toom(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size, Word* scratch,
                   const MultiplyPlan& plan);

/// sum += addend, cut to `size` words; returns the carry out.
inline bool add_to(Word* sum, std::size_t size, const Word* addend, std::size_t addend_size) {
    const std::size_t both = std::min(size, addend_size);
    const bool carry = add(sum, sum, addend, both);
    return add_carry(sum + both, sum + both, size - both, carry);
}

/// number -= subtrahend, which is not greater and has no more words.
inline void subtract_from(Word* number, std::size_t size, const Word* subtrahend, std::size_t subtrahend_size) {
    const bool borrow = subtract(number, number, subtrahend, subtrahend_size);
    subtract_borrow(number + subtrahend_size, number + subtrahend_size, size - subtrahend_size, borrow);
}

/// out = |a - b|, a_size words, of which `b` has no more; returns whether a < b. `out` may be `a`.
inline bool difference(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size) {
    const bool negative = compare(a, a_size, b, b_size) < 0;
    const bool borrow = negative ? subtract(out, b, a, b_size) : subtract(out, a, b, b_size);
    // Of a smaller `a` the words above are 0, and there is no borrow.
    subtract_borrow(out + b_size, a + b_size, a_size - b_size, borrow);
    return negative;
}

}  // namespace kval::words
