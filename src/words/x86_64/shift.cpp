// The inner loops of long shifts on x86-64: two limbs a step. Its vector shifts by 64 give 0, unlike the language's.
#include <emmintrin.h>

#include "words/shift_steps.h"

namespace kval::words {
namespace {

__m128i load_limbs(const Word* words) { return load<__m128i>(words); }

__m128i count_of(unsigned bits) { return _mm_cvtsi32_si128(static_cast<int>(bits)); }

}  // namespace

void join_right(Word* out, const Word* in, std::size_t limbs, unsigned bits) {
    const __m128i down = count_of(bits);
    const __m128i up = count_of(64 - bits);
    const std::size_t even = limbs - limbs % 2;
    for (std::size_t i = 0; i < 2 * even; i += 4) {
        const __m128i low = _mm_srl_epi64(load_limbs(in + i), down);
        const __m128i high = _mm_sll_epi64(load_limbs(in + i + 2), up);
        store(out + i, _mm_or_si128(low, high));
    }
    if (even == limbs) return;
    const std::size_t last = 2 * even;
    store_pair(out + last, joined_right(load_pair(in + last + 2), load_pair(in + last), bits));
}

void join_left(Word* out, const Word* in, std::size_t limbs, unsigned bits) {
    const __m128i up = count_of(bits);
    const __m128i down = count_of(64 - bits);
    std::size_t i = 2 * limbs;
    for (; i >= 4; i -= 4) {
        const __m128i high = _mm_sll_epi64(load_limbs(in + i - 4), up);
        const __m128i low = _mm_srl_epi64(load_limbs(in + i - 6), down);
        store(out + i - 4, _mm_or_si128(high, low));
    }
    if (i != 0) store_pair(out, joined_left(load_pair(in), load_pair(in - 2), bits));
}

}  // namespace kval::words
