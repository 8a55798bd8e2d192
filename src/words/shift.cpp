// Shifts over arrays of words: whole limbs of two words move with the bits. Between the edges the limbs are joined in
// long loops; the edges, where a limb or its neighbour is missing or half, are done limb by limb.
#include "words/shift.h"

#include <algorithm>

#include "words/shift_steps.h"

namespace kval::words {
namespace {

constexpr unsigned kLimbBits = 64;

std::size_t limb_count(std::size_t words) { return (words + 1) / 2; }

}  // namespace

void shift_left_long(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count) {
    const std::size_t skip = std::min(count / kLimbBits, limb_count(out_size));
    const unsigned bits = count % kLimbBits;
    // The limbs that are whole, as are their two sources: from `joined` up to `edge`.
    const std::size_t joined = skip + 1;
    const std::size_t edge = std::max(joined, std::min(out_size / 2, skip + in_size / 2));
    // Above the limb into which the highest bits move, there are zeros.
    const std::size_t end = std::min(limb_count(out_size), skip + limb_count(in_size) + 1);
    if (2 * end < out_size) std::fill(out + 2 * end, out + out_size, Word{0});
    if (edge < end) shift_left_limbs(out, out_size, in, in_size, skip, bits, end, edge);
    if (edge > joined) join_left(out + 2 * joined, in + 2, edge - joined, bits);
    if (end > skip) shift_left_limbs(out, out_size, in, in_size, skip, bits, std::min(end, joined), skip);
    std::fill_n(out, std::min(2 * skip, out_size), Word{0});
}

void shift_right_long(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count) {
    const std::size_t skip = std::min(count / kLimbBits, limb_count(in_size));
    const unsigned bits = count % kLimbBits;
    // The limbs that are whole, as are their two sources.
    const std::size_t whole = in_size / 2;
    const std::size_t edge = std::min(out_size / 2, whole > skip + 1 ? whole - skip - 1 : 0);
    if (edge != 0) join_right(out, in + 2 * skip, edge, bits);
    // Above the last limb that has a source, there are zeros.
    const std::size_t filled = std::min(out_size, 2 * (limb_count(in_size) - skip));
    shift_right_limbs(out, filled, in, in_size, skip, bits, edge);
    std::fill(out + filled, out + out_size, Word{0});
}

}  // namespace kval::words
