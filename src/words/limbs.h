// Arrays of words, least significant word first, and the loops over them that are short enough to be inline: in limbs
// of two words, and an odd word at the end.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kval/detail/four_state.h"

namespace kval::words {

using detail::Word;
using DoubleWord = std::uint64_t;

constexpr unsigned kWordBits = 32;

/// The same bit positions of both planes.
template <typename Unit>
struct FourState {
    Unit value;
    Unit mask;
};

// Two neighbouring words are one double word in memory: the less significant first.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "words are stored with their least significant byte first");

/// A unit of some words at any address.
template <typename Unit>
Unit load(const Word* words) noexcept {
    Unit unit;
    __builtin_memcpy(&unit, words, sizeof unit);
    return unit;
}

template <typename Unit>
void store(Word* words, Unit unit) noexcept {
    __builtin_memcpy(words, &unit, sizeof unit);
}

inline DoubleWord load_pair(const Word* words) noexcept { return load<DoubleWord>(words); }
inline void store_pair(Word* words, DoubleWord pair) noexcept { store(words, pair); }

/// The next index of a loop over limbs. Hidden from the compiler, which would else turn a loop of two or three steps
/// into vector code: longer than the loop, and slow to read what has just been written limb by limb.
inline std::size_t next_limb(std::size_t i) noexcept {
    i += 2;
    __asm__("" : "+r"(i));
    return i;
}

/// out[i] = rule(a[i], b[i]) for `size` words. `out` may be `a` or `b`.
template <typename Rule>
void map_limbs(Word* out, const Word* a, const Word* b, std::size_t size, Rule rule) noexcept {
    std::size_t i = 0;
    for (; i + 2 <= size; i = next_limb(i)) store_pair(out + i, rule(load_pair(a + i), load_pair(b + i)));
    if (i < size) out[i] = rule(a[i], b[i]);
}

inline void copy_limbs(Word* out, const Word* in, std::size_t size) noexcept {
    std::size_t i = 0;
    for (; i + 2 <= size; i = next_limb(i)) store_pair(out + i, load_pair(in + i));
    if (i < size) out[i] = in[i];
}

/// The same in both planes at once, by a four-state rule.
template <typename Rule>
__attribute__((always_inline)) inline void combine_limbs(Word* value, Word* mask, const Word* l_value,
                                                         const Word* l_mask, const Word* r_value, const Word* r_mask,
                                                         std::size_t size, Rule rule) noexcept {
    std::size_t i = 0;
    for (; i + 2 <= size; i = next_limb(i)) {
        const FourState<DoubleWord> bits = rule(FourState<DoubleWord>{load_pair(l_value + i), load_pair(l_mask + i)},
                                                FourState<DoubleWord>{load_pair(r_value + i), load_pair(r_mask + i)});
        store_pair(value + i, bits.value);
        store_pair(mask + i, bits.mask);
    }
    if (i == size) return;
    const FourState<Word> bits = rule(FourState<Word>{l_value[i], l_mask[i]}, FourState<Word>{r_value[i], r_mask[i]});
    value[i] = bits.value;
    mask[i] = bits.mask;
}

/// a + b + carry, and the new carry.
struct AddStep {
    template <typename Limb>
    Limb operator()(Limb a, Limb b, bool& carry) const noexcept {
        Limb sum;
        const bool first = __builtin_add_overflow(a, b, &sum);
        const bool second = __builtin_add_overflow(sum, static_cast<Limb>(carry), &sum);
        carry = first || second;
        return sum;
    }
};

/// a - b - borrow, and the new borrow.
struct SubtractStep {
    template <typename Limb>
    Limb operator()(Limb a, Limb b, bool& borrow) const noexcept {
        Limb difference;
        const bool first = __builtin_sub_overflow(a, b, &difference);
        const bool second = __builtin_sub_overflow(difference, static_cast<Limb>(borrow), &difference);
        borrow = first || second;
        return difference;
    }
};

/// Runs a carry or borrow through `size` words by one of these steps, and returns it. `out` may be `a` or `b`.
template <typename Step>
bool chain_limbs(Word* out, const Word* a, const Word* b, std::size_t size, bool carry, Step step) noexcept {
    std::size_t i = 0;
    for (; i + 2 <= size; i += 2) store_pair(out + i, step(load_pair(a + i), load_pair(b + i), carry));
    if (i < size) out[i] = step(a[i], b[i], carry);
    return carry;
}

/// Limb `limb` of `size` words: the odd word at the end is the low half of one, and beyond it, or before the first,
/// there are zeros.
inline DoubleWord limb_at(const Word* words, std::size_t size, std::size_t limb) noexcept {
    if (limb < size / 2) return load_pair(words + 2 * limb);
    return limb == size / 2 && size % 2 != 0 ? words[size - 1] : 0;
}

/// Stores limb `limb` of `size` words, or its low half where only that is one of them.
inline void store_limb(Word* words, std::size_t size, std::size_t limb, DoubleWord value) noexcept {
    if (limb < size / 2) {
        store_pair(words + 2 * limb, value);
    } else {
        words[size - 1] = static_cast<Word>(value);
    }
}

__extension__ using QuadWord = unsigned __int128;

/// The number in up to four words.
inline QuadWord load_quad(const Word* words, std::size_t size) noexcept {
    return static_cast<QuadWord>(limb_at(words, size, 1)) << 64 | limb_at(words, size, 0);
}

/// Four words, and four more above them.
struct QuadPair {
    QuadWord low;
    QuadWord high;
};

inline QuadPair multiply_quads(QuadWord a, QuadWord b) noexcept {
    const QuadWord a0 = static_cast<DoubleWord>(a);
    const QuadWord b0 = static_cast<DoubleWord>(b);
    const QuadWord low = a0 * b0;
    const QuadWord first = (a >> 64) * b0 + (low >> 64);
    const QuadWord second = a0 * (b >> 64) + static_cast<DoubleWord>(first);
    const QuadWord high = (a >> 64) * (b >> 64) + (first >> 64) + (second >> 64);
    return {second << 64 | static_cast<DoubleWord>(low), high};
}

/// Stores as many words as there are, three at least, of the eight. Inline always: as an argument, the number would go
/// through memory.
__attribute__((always_inline)) inline void store_quads(Word* words, std::size_t size, const QuadPair& quads) noexcept {
    store_limb(words, size, 0, static_cast<DoubleWord>(quads.low));
    store_limb(words, size, 1, static_cast<DoubleWord>(quads.low >> 64));
    if (size > 4) store_limb(words, size, 2, static_cast<DoubleWord>(quads.high));
    if (size > 6) store_limb(words, size, 3, static_cast<DoubleWord>(quads.high >> 64));
}

/// Two neighbouring limbs shifted by 0 to 63 bits: what comes to lie in the place of the low one, and of the high one.
inline DoubleWord joined_right(DoubleWord high, DoubleWord low, unsigned bits) noexcept {
    return low >> bits | high << 1 << (63 - bits);
}
inline DoubleWord joined_left(DoubleWord high, DoubleWord low, unsigned bits) noexcept {
    return high << bits | low >> 1 >> (63 - bits);
}

/// Limbs `from` and up of out = in >> (64 * skip + bits), cut or zero-extended from `in_size` to `out_size` words.
/// Upwards, so that `out` may be `in`: no limb is overwritten before it is read.
inline void shift_right_limbs(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t skip,
                              unsigned bits, std::size_t from = 0) noexcept {
    DoubleWord low = limb_at(in, in_size, from + skip);
    for (; 2 * from < out_size; ++from) {
        const DoubleWord high = limb_at(in, in_size, from + skip + 1);
        store_limb(out, out_size, from, joined_right(high, low, bits));
        low = high;
    }
}

/// The limbs below `end` and not below `from` of out = in << (64 * skip + bits), from `in_size` words to `out_size`.
/// Downwards, for the same reason.
inline void shift_left_limbs(Word* out, std::size_t out_size, const Word* in, std::size_t in_size, std::size_t skip,
                             unsigned bits, std::size_t end, std::size_t from = 0) noexcept {
    DoubleWord high = limb_at(in, in_size, end - 1 - skip);
    for (; end != from; --end) {
        const DoubleWord low = limb_at(in, in_size, end - 2 - skip);
        store_limb(out, out_size, end - 1, joined_left(high, low, bits));
        high = low;
    }
}

/// Whether all `size` words are the same.
inline bool same(const Word* a, const Word* b, std::size_t size) noexcept {
    constexpr std::size_t few = 16;
    if (size > few) return __builtin_memcmp(a, b, size * sizeof(Word)) == 0;
    std::size_t i = 0;
    for (; i + 2 <= size; i = next_limb(i)) {
        if (load_pair(a + i) != load_pair(b + i)) return false;
    }
    return i == size || a[i] == b[i];
}

/// Less than 0, 0 or more than 0 as `a` is less than, equal to or greater than `b`, from the top down.
inline int compare_limbs(const Word* a, const Word* b, std::size_t size) noexcept {
    if (size % 2 != 0) {
        --size;
        if (a[size] != b[size]) return a[size] > b[size] ? 1 : -1;
    }
    for (; size != 0; size -= 2) {
        const DoubleWord x = load_pair(a + size - 2);
        const DoubleWord y = load_pair(b + size - 2);
        if (x != y) return x > y ? 1 : -1;
    }
    return 0;
}

}  // namespace kval::words
