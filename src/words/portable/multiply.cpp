// The rows of long multiplication in plain C++.
#include "words/multiply_rows.h"
#include "words/quad_word.h"

namespace kval::words {
namespace {

// `w0` to `w3` are the part of the sum that is not stored yet: every limb of `a` adds four products to it, and its
// lowest limb is finished. They are no array, because g++ would keep that in memory.
template <bool kAdd>
void pass(Word* out, const Word* a, std::size_t limbs, const Word* b) {
    const DoubleWord b0 = load_pair(b), b1 = load_pair(b + 2), b2 = load_pair(b + 4), b3 = load_pair(b + 6);
    DoubleWord w0 = 0, w1 = 0, w2 = 0, w3 = 0;
    for (; limbs > 0; --limbs, a += 2, out += 2) {
        const DoubleWord limb = load_pair(a);
        QuadWord sum = multiply_add(limb, b0, w0, kAdd ? load_pair(out) : 0);
        store_pair(out, low_half(sum));
        sum = multiply_add(limb, b1, w1, high_half(sum));
        w0 = low_half(sum);
        sum = multiply_add(limb, b2, w2, high_half(sum));
        w1 = low_half(sum);
        sum = multiply_add(limb, b3, w3, high_half(sum));
        w2 = low_half(sum);
        w3 = high_half(sum);
    }
    store_pair(out, w0);
    store_pair(out + 2, w1);
    store_pair(out + 4, w2);
    store_pair(out + 6, w3);
}

constexpr RowLoops kPlain = {pass<false>, pass<true>};

}  // namespace

const RowLoops& row_loops() { return kPlain; }
const RowLoops& plain_row_loops() { return kPlain; }

}  // namespace kval::words
