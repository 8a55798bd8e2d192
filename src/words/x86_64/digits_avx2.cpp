// The digits of whole words with AVX2, 32 characters a step.
#include "words/x86_64/digits_avx2.h"

#include <immintrin.h>

#include "words/digits_steps.h"

#define KVAL_AVX2 __attribute__((target("avx2")))

namespace kval::words::avx2 {
namespace {

constexpr std::size_t kWords = 4;  // of a step over hexadecimal digits

KVAL_AVX2 __m256i each(int byte) { return _mm256_set1_epi8(static_cast<char>(byte)); }

KVAL_AVX2 __m256i load(const char* text) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text)); }

KVAL_AVX2 void store(char* text, __m256i characters) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(text), characters);
}

KVAL_AVX2 __m128i load_words(const Word* words) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(words)); }

KVAL_AVX2 void store_words(Word* words, __m128i value) { _mm_storeu_si128(reinterpret_cast<__m128i*>(words), value); }

KVAL_AVX2 __m128i descending() { return _mm_set_epi64x(0x0001020304050607, 0x08090A0B0C0D0E0F); }

// The 32 nibbles of four words, each in a byte of its own, the most significant in the lowest byte.
KVAL_AVX2 __m256i spread_nibbles(__m128i words) {
    const __m256i bytes = _mm256_cvtepu8_epi16(_mm_shuffle_epi8(words, descending()));
    return _mm256_and_si256(_mm256_or_si256(_mm256_srli_epi16(bytes, 4), _mm256_slli_epi16(bytes, 8)), each(0x0F));
}

// 'X' is greater than every digit: the larger one of a digit and of 'X' or 0 is the one to be shown.
KVAL_AVX2 __m256i blend_x(__m256i digits, __m256i cover) {
    return _mm256_max_epu8(digits, _mm256_and_si256(cover, each('X')));
}

// The 32 hexadecimal digits of four words.
KVAL_AVX2 __m256i hexadecimal_digits(__m128i value, __m128i unknown) {
    const __m128i all = _mm_loadu_si128(reinterpret_cast<const __m128i*>("0123456789ABCDEF"));
    const __m256i digits = _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(all), spread_nibbles(value));
    if (_mm_testz_si128(unknown, unknown) != 0) return digits;
    return blend_x(digits, _mm256_cmpgt_epi8(spread_nibbles(unknown), _mm256_setzero_si256()));
}

// All ones for every bit of the word that is set, the most significant in the lowest byte.
KVAL_AVX2 __m256i set_bits(Word word) {
    const __m256i places = _mm256_set_epi64x(0, kEachByte, 2 * kEachByte, 3 * kEachByte);
    const __m256i bits = _mm256_set1_epi64x(0x0102040810204080);
    const __m256i spread = _mm256_shuffle_epi8(_mm256_set1_epi32(static_cast<int>(word)), places);
    return _mm256_cmpeq_epi8(_mm256_and_si256(spread, bits), bits);
}

// Whether the bytes are at most `limit`, without their signs.
KVAL_AVX2 __m256i at_most(__m256i bytes, int limit) {
    return _mm256_cmpeq_epi8(_mm256_min_epu8(bytes, each(limit)), bytes);
}

// Reads 32 hexadecimal digits of either case; false when some character is not a digit.
KVAL_AVX2 bool read_hexadecimal_digits(__m256i characters, __m128i& value) {
    const __m256i lower_case = _mm256_or_si256(characters, each(0x20));
    const __m256i number = at_most(_mm256_sub_epi8(characters, each('0')), 9);
    const __m256i letter = at_most(_mm256_sub_epi8(lower_case, each('a')), 5);
    const __m256i nibbles =
        _mm256_add_epi8(_mm256_and_si256(characters, each(0x0F)), _mm256_and_si256(letter, each(9)));
    // Of two neighbours the first counts sixteen times.
    const __m256i joined = _mm256_maddubs_epi16(nibbles, _mm256_set1_epi16(0x0110));
    const __m128i bytes = _mm_packus_epi16(_mm256_castsi256_si128(joined), _mm256_extracti128_si256(joined, 1));
    value = _mm_shuffle_epi8(bytes, descending());
    return _mm256_movemask_epi8(_mm256_or_si256(number, letter)) == -1;
}

KVAL_AVX2 Word where(__m256i characters, char c) {
    return static_cast<Word>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(characters, each(c))));
}

KVAL_AVX2 BinaryDigits read_binary_digits(__m256i characters) {
    const __m256i halves = _mm256_shuffle_epi8(characters, _mm256_broadcastsi128_si256(descending()));
    const __m256i reversed = _mm256_permute4x64_epi64(halves, _MM_SHUFFLE(1, 0, 3, 2));
    const Word ones = where(reversed, '1');
    return {ones | where(reversed, '0'), ones};
}

}  // namespace

KVAL_AVX2 std::size_t write_hexadecimal_words(char* text, const Word* value, const Word* unknown, std::size_t size) {
    std::size_t i = size;
    for (; i >= kWords; text += 32) {
        i -= kWords;
        store(text, hexadecimal_digits(load_words(value + i), load_words(unknown + i)));
    }
    return size - i;
}

KVAL_AVX2 void write_binary_words(char* text, const Word* value, const Word* unknown, std::size_t size) {
    for (std::size_t i = size; i-- > 0; text += 32) {
        const __m256i digits = _mm256_sub_epi8(each('0'), set_bits(value[i]));
        store(text, blend_x(digits, set_bits(unknown[i])));
    }
}

KVAL_AVX2 std::size_t read_hexadecimal_words(Word* value, Word* unknown, const char* text, std::size_t size) {
    std::size_t i = size;
    for (; i >= kWords; text += 32) {
        i -= kWords;
        __m128i words;
        const bool valid = read_hexadecimal_digits(load(text), words);
        store_words(value + i, words);
        store_words(unknown + i, _mm_setzero_si128());
        for (std::size_t chunk = 0; !valid && chunk < kWords; ++chunk) {
            value[i + kWords - 1 - chunk] = read_chunk(text + 8 * chunk);
        }
    }
    return size - i;
}

KVAL_AVX2 bool read_binary_words(Word* value, Word* unknown, const char* text, std::size_t size) {
    bool some_known = false;
    for (std::size_t i = size; i-- > 0; text += 32) {
        some_known |= set_given(value[i], unknown[i], read_binary_digits(load(text)));
    }
    return some_known;
}

}  // namespace kval::words::avx2
