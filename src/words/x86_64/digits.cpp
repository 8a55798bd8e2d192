// The digits of whole words on x86-64: sixteen characters a step with SSE2, or many words with AVX2 where it is there.
#include <emmintrin.h>

#include "words/digits_steps.h"
#include "words/x86_64/digits_avx2.h"

namespace kval::words {
namespace {

// From so many words up the wider steps repay their start.
constexpr std::size_t kWide = 8;

#ifdef KVAL_BASELINE
constexpr bool kHasAvx2 = false;
#else
// What uses the kernels before this is initialised finds it false, and takes the plain steps.
const bool kHasAvx2 = __builtin_cpu_supports("avx2") != 0;
#endif

__m128i each(int byte) { return _mm_set1_epi8(static_cast<char>(byte)); }

void store(char* text, __m128i characters) { _mm_storeu_si128(reinterpret_cast<__m128i*>(text), characters); }

__m128i load(const char* text) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text)); }

// The 16 nibbles of two words, each in a byte of its own, the most significant in the lowest byte.
__m128i spread_nibbles(DoubleWord pair) {
    const __m128i bytes = _mm_cvtsi64_si128(static_cast<long long>(__builtin_bswap64(pair)));
    const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), each(0x0F));
    return _mm_unpacklo_epi8(high, _mm_and_si128(bytes, each(0x0F)));
}

// 'X' is greater than every digit: the larger one of a digit and of 'X' or 0 is the one to be shown.
__m128i blend_x(__m128i digits, __m128i cover) { return _mm_max_epu8(digits, _mm_and_si128(cover, each('X'))); }

// The 16 hexadecimal digits of two words.
__m128i digits_of_pair(DoubleWord value, DoubleWord unknown) {
    const __m128i nibbles = spread_nibbles(value);
    const __m128i letters = _mm_cmpgt_epi8(nibbles, each(9));
    const __m128i above_nine = _mm_and_si128(letters, each('A' - '0' - 10));
    const __m128i digits = _mm_add_epi8(_mm_add_epi8(nibbles, each('0')), above_nine);
    if (unknown == 0) return digits;
    return blend_x(digits, _mm_cmpgt_epi8(spread_nibbles(unknown), _mm_setzero_si128()));
}

// Every byte of a word eight times side by side: bytes 3 and 2 in `high`, bytes 1 and 0 in `low`.
struct Spread {
    explicit Spread(Word word) {
        const __m128i bytes = _mm_cvtsi32_si128(static_cast<int>(word));
        const __m128i twice = _mm_unpacklo_epi8(bytes, bytes);
        const __m128i four_times = _mm_unpacklo_epi16(twice, twice);
        high = _mm_shuffle_epi32(four_times, _MM_SHUFFLE(2, 2, 3, 3));
        low = _mm_shuffle_epi32(four_times, _MM_SHUFFLE(0, 0, 1, 1));
    }
    __m128i high;
    __m128i low;
};

// All ones for every bit that is set.
__m128i set_bits(__m128i spread) {
    const __m128i bits = _mm_set1_epi64x(0x0102040810204080);
    return _mm_cmpeq_epi8(_mm_and_si128(spread, bits), bits);
}

__m128i binary_digits(__m128i value, __m128i unknown) {
    return blend_x(_mm_sub_epi8(each('0'), set_bits(value)), set_bits(unknown));
}

// Whether the bytes are at most `limit`, without their signs.
__m128i at_most(__m128i bytes, int limit) { return _mm_cmpeq_epi8(_mm_min_epu8(bytes, each(limit)), bytes); }

// Reads 16 hexadecimal digits of either case; false when some character is not a digit.
bool read_hexadecimal_digits(__m128i characters, DoubleWord& value) {
    const __m128i lower_case = _mm_or_si128(characters, each(0x20));
    const __m128i number = at_most(_mm_sub_epi8(characters, each('0')), 9);
    const __m128i letter = at_most(_mm_sub_epi8(lower_case, each('a')), 5);
    const __m128i nibbles = _mm_add_epi8(_mm_and_si128(characters, each(0x0F)), _mm_and_si128(letter, each(9)));
    // Of two neighbours the first is the high half of a byte.
    const __m128i joined = _mm_or_si128(_mm_slli_epi16(nibbles, 4), _mm_srli_epi16(nibbles, 8));
    const __m128i bytes = _mm_packus_epi16(_mm_and_si128(joined, _mm_set1_epi16(0xFF)), _mm_setzero_si128());
    value = __builtin_bswap64(static_cast<DoubleWord>(_mm_cvtsi128_si64(bytes)));
    return _mm_movemask_epi8(_mm_or_si128(number, letter)) == 0xFFFF;
}

// 16 characters, the first in the highest byte.
__m128i load_reversed(const char* text) {
    const __m128i high = _mm_cvtsi64_si128(static_cast<long long>(load_eight(text)));
    const __m128i low = _mm_cvtsi64_si128(static_cast<long long>(load_eight(text + 8)));
    return _mm_unpacklo_epi64(low, high);
}

Word where(__m128i characters, char c) {
    return static_cast<Word>(_mm_movemask_epi8(_mm_cmpeq_epi8(characters, each(c))));
}

BinaryDigits read_binary_digits(const char* text) {
    const __m128i high = load_reversed(text);
    const __m128i low = load_reversed(text + 16);
    const Word ones = where(high, '1') << 16 | where(low, '1');
    return {ones | where(high, '0') << 16 | where(low, '0'), ones};
}

}  // namespace

void write_hexadecimal_words(char* text, const Word* value, const Word* unknown, std::size_t size) {
    if (kHasAvx2 && size >= kWide) {
        const std::size_t done = avx2::write_hexadecimal_words(text, value, unknown, size);
        text += 8 * done;
        size -= done;
    }
    for (; size >= 2; text += 16) {
        size -= 2;
        store(text, digits_of_pair(load_pair(value + size), load_pair(unknown + size)));
    }
    if (size > 0) store_eight(text, hexadecimal_digits(value[0], unknown[0]));
}

void write_binary_words(char* text, const Word* value, const Word* unknown, std::size_t size) {
    if (kHasAvx2 && size >= kWide) {
        avx2::write_binary_words(text, value, unknown, size);
        return;
    }
    for (std::size_t i = size; i-- > 0; text += 32) {
        const Spread bits(value[i]);
        const Spread hidden(unknown[i]);
        store(text, binary_digits(bits.high, hidden.high));
        store(text + 16, binary_digits(bits.low, hidden.low));
    }
}

void read_hexadecimal_words(Word* value, Word* unknown, const char* text, std::size_t size) {
    if (kHasAvx2 && size >= kWide) {
        const std::size_t done = avx2::read_hexadecimal_words(value, unknown, text, size);
        text += 8 * done;
        size -= done;
    }
    for (; size >= 2; text += 16) {
        size -= 2;
        DoubleWord pair;
        if (!read_hexadecimal_digits(load(text), pair)) {
            pair = DoubleWord{read_chunk(text)} << kWordBits | read_chunk(text + 8);
        }
        store_pair(value + size, pair);
        store_pair(unknown + size, 0);
    }
    if (size > 0) {
        value[0] = read_chunk(text);
        unknown[0] = 0;
    }
}

bool read_binary_words(Word* value, Word* unknown, const char* text, std::size_t size) {
    if (kHasAvx2 && size >= kWide) return avx2::read_binary_words(value, unknown, text, size);
    bool some_known = false;
    for (std::size_t i = size; i-- > 0; text += 32) {
        some_known |= set_given(value[i], unknown[i], read_binary_digits(text));
    }
    return some_known;
}

}  // namespace kval::words
