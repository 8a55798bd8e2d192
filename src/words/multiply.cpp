// Products of arrays of words: what is short, and what is cut.
#include "words/multiply.h"

#include <algorithm>
#include <utility>

#include "words/multiply_long.h"
#include "words/multiply_parts.h"
#include "words/multiply_short.h"

namespace kval::words {
namespace {

// Measured. Karatsuba's method gains a tenth at 48 words, and more above; in plain C++ it gains from 60 on, and loses
// little before. Between 240 and 1000 words Toom's and Karatsuba's are about even, one or the other ahead as the sizes
// of their parts suit the row loops.
constexpr std::size_t kKaratsuba = 48;
constexpr std::size_t kToom = 400;

MultiplyPlan fastest_plan() { return {kKaratsuba, kToom, row_loops()}; }

// The words of the longer factor whose product with the shorter one fits into `size` words: all, or whole limbs.
std::size_t uncut(std::size_t size, std::size_t longer_size, std::size_t shorter_size) {
    return longer_size + shorter_size <= size ? longer_size : (size - shorter_size) & ~std::size_t{1};
}

// What fits into `size` words as the plan has it, then the limbs above, row by row. Values have one such row at most:
// the sum of two widths never has fewer words than the two sizes by more than one.
void multiply_cut(Word* out, std::size_t size, const Word* longer, std::size_t longer_size, const Word* shorter,
                  std::size_t shorter_size, Word* scratch) {
    const std::size_t whole = uncut(size, longer_size, shorter_size);
    const bool any = whole > 0 && shorter_size > 0;
    if (any) fastest_plan().multiply(out, longer, whole, shorter, shorter_size, scratch);
    std::fill(out + (any ? whole + shorter_size : 0), out + size, Word{0});
    for (std::size_t i = whole; i < longer_size; i += 2) {
        add_row(out + i, size - i, shorter, shorter_size, limb_at(longer, longer_size, i / 2));
    }
}

}  // namespace

std::size_t multiply_scratch(std::size_t size, std::size_t a_size, std::size_t b_size) {
    const std::size_t shorter = std::min({size, a_size, b_size});
    if (shorter < kKaratsuba) return 0;
    return fastest_plan().scratch(uncut(size, std::min(size, std::max(a_size, b_size)), shorter), shorter);
}

void multiply(Word* out, std::size_t size, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size,
              Word* scratch) {
    if (size == 2) return store_pair(out, limb_at(a, a_size, 0) * limb_at(b, b_size, 0));
    if (a_size > b_size) {
        std::swap(a, b);
        std::swap(a_size, b_size);
    }
    a_size = std::min(a_size, size);
    b_size = std::min(b_size, size);
    if (b_size <= kShort) {
        multiply_short(out, size, a, a_size, b, b_size);
    } else {
        multiply_cut(out, size, b, b_size, a, a_size, scratch);
    }
}

}  // namespace kval::words
