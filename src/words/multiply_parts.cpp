// Which method multiplies factors of which sizes, and factors of unequal sizes.
#include "words/multiply_parts.h"

#include <utility>

#include "words/multiply_long.h"

namespace kval::words {
namespace {

enum class Method { kLong, kPieces, kKaratsuba, kToom };

// Whether the highest part of the longer factor has a counterpart in the shorter one.
bool reaches_last(std::size_t a_size, std::size_t b_size, std::size_t parts) {
    return b_size > (parts - 1) * part_size(a_size, parts);
}

// Karatsuba's and Toom's methods are for factors of about the same length.
Method method(const MultiplyPlan& plan, std::size_t a_size, std::size_t b_size) {
    if (b_size < plan.karatsuba) return Method::kLong;
    if (2 * a_size > 3 * b_size || !reaches_last(a_size, b_size, 2)) return Method::kPieces;
    return a_size >= plan.toom && reaches_last(a_size, b_size, 3) ? Method::kToom : Method::kKaratsuba;
}

// The words of the pieces that the longer factor is cut into, which are about as long as the shorter one.
std::size_t piece_size(std::size_t a_size, std::size_t b_size) {
    return part_size(a_size, std::max<std::size_t>(2, (a_size + b_size / 2) / b_size));
}

std::size_t pieces_scratch(std::size_t a_size, std::size_t b_size, const MultiplyPlan& plan) {
    const std::size_t piece = piece_size(a_size, b_size);
    const std::size_t last = (a_size - 1) % piece + 1;
    return b_size + std::max(plan.scratch(piece, b_size), plan.scratch(last, b_size));
}

// The products of the pieces overlap by the words of `b`: those are set aside while the next product takes their place,
// and then added to it.
void multiply_pieces(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size, Word* scratch,
                     const MultiplyPlan& plan) {
    Word* overlap = scratch;
    Word* rest = scratch + b_size;
    const std::size_t piece = piece_size(a_size, b_size);
    plan.multiply(out, a, piece, b, b_size, rest);
    for (std::size_t done = piece; done < a_size; done += piece) {
        const std::size_t next = std::min(piece, a_size - done);
        std::copy_n(out + done, b_size, overlap);
        plan.multiply(out + done, a + done, next, b, b_size, rest);
        add_to(out + done, next + b_size, overlap, b_size);
    }
}

}  // namespace

std::size_t MultiplyPlan::scratch(std::size_t a_size, std::size_t b_size) const {
    if (a_size < b_size) std::swap(a_size, b_size);
    switch (method(*this, a_size, b_size)) {
        case Method::kPieces:
            return pieces_scratch(a_size, b_size, *this);
        case Method::kKaratsuba:
            return karatsuba_scratch(a_size, b_size, *this);
        case Method::kToom:
            return toom_scratch(a_size, b_size, *this);
        default:
            return 0;
    }
}

void MultiplyPlan::multiply(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size,
                            Word* scratch_words) const {
    if (a_size < b_size) {
        std::swap(a, b);
        std::swap(a_size, b_size);
    }
    switch (method(*this, a_size, b_size)) {
        case Method::kPieces:
            return multiply_pieces(out, a, a_size, b, b_size, scratch_words, *this);
        case Method::kKaratsuba:
            return multiply_karatsuba(out, a, a_size, b, b_size, scratch_words, *this);
        case Method::kToom:
            return multiply_toom(out, a, a_size, b, b_size, scratch_words, *this);
        default:
            return multiply_long(out, a, a_size, b, b_size, loops);
    }
}

}  // namespace kval::words
