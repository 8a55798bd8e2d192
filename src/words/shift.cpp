// Shifts over arrays of words: whole words move with the bits, two words a step between the edges.
#include "words/shift.h"

#include <algorithm>

namespace kval::words {

// Downwards, so that in place no word is overwritten before it is read. Output word i joins the input words i - skip
// and i - skip - 1; where one of them is missing, it counts as 0.
void shift_left(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count) {
    const std::size_t skip = count / kWordBits;
    const unsigned bits = count % kWordBits;
    const auto joined = [=](std::size_t i) {
        const DoubleWord high = i - skip < in_size ? in[i - skip] : 0;
        const DoubleWord low = i - skip - 1 < in_size ? in[i - skip - 1] : 0;
        return static_cast<Word>((high << kWordBits | low) >> (kWordBits - bits));
    };
    std::size_t i = out_size;
    const std::size_t last_whole = std::min(out_size, skip + in_size);
    for (; i > last_whole; --i) out[i - 1] = joined(i - 1);
    for (; i >= skip + 3; i -= 2) {
        const Word* from = in + (i - 2 - skip);
        const DoubleWord carried = static_cast<DoubleWord>(from[-1]) << bits >> kWordBits;
        store_pair(out + i - 2, load_pair(from) << bits | carried);
    }
    for (; i > skip; --i) out[i - 1] = joined(i - 1);
    std::fill_n(out, i, Word{0});
}

// Upwards, for the same reason. Output word i joins the input words i + skip and i + skip + 1.
void shift_right(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t count) {
    const std::size_t skip = count / kWordBits;
    const unsigned bits = count % kWordBits;
    std::size_t i = 0;
    for (; i + 2 <= out_size && i + skip + 3 <= in_size; i += 2) {
        const Word* from = in + i + skip;
        const DoubleWord carried = static_cast<DoubleWord>(from[2]) << kWordBits << (kWordBits - bits);
        store_pair(out + i, load_pair(from) >> bits | carried);
    }
    for (; i < out_size && i + skip < in_size; ++i) {
        const DoubleWord high = i + skip + 1 < in_size ? in[i + skip + 1] : 0;
        out[i] = static_cast<Word>((high << kWordBits | in[i + skip]) >> bits);
    }
    std::fill(out + i, out + out_size, Word{0});
}

}  // namespace kval::words
