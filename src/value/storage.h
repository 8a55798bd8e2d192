// The words of operands and results, wherever their bits are: a small value's in registers, a large one's in arrays.
#pragma once

#include <new>

#include "kval.h"
#include "value/stock.h"
#include "words/word.h"

namespace kval {

using detail::Planes;

/// The widest value, in bits: beyond it the word count wraps.
inline constexpr unsigned kMaxWidth = 0x7FFFFFFFU - 31;

/// Throws std::bad_alloc for a width above kMaxWidth.
inline void check_width(std::size_t width) {
    if (width > kMaxWidth) throw std::bad_alloc();
}

/// Here, in the library, most values are large.
inline bool is_large(unsigned width) { return __builtin_expect(width > 64, true); }

inline std::size_t word_count(std::size_t width) { return (width + words::kWordBits - 1) / words::kWordBits; }

/// How many words of a value are read. A moved-from value has one, too.
inline std::size_t stored_words(unsigned width) {
    if (is_large(width)) return word_count(width);
    return width <= words::kWordBits ? 1 : 2;
}

/// Arrays as planes.
inline Planes planes_of(const Arrays& arrays) {
    return {reinterpret_cast<std::uintptr_t>(arrays.value), reinterpret_cast<std::uintptr_t>(arrays.mask)};
}
inline Arrays arrays_of(Planes planes) { return {detail::array_of(planes.value), detail::array_of(planes.mask)}; }

/// The arrays of a new value of `width` bits, not yet written. Throws std::bad_alloc.
inline Arrays arrays_for(unsigned width) {
    check_width(width);
    return take_arrays(word_count(width));
}

/// Clears the bits above a width whose top word is at `top`. What was written in one piece is slow to read in another,
/// so this takes two words at a time where the kernels have written the top word that way.
inline void trim(const Arrays& arrays, std::size_t top, unsigned width) {
    Word* const value = arrays.value + top;
    Word* const mask = arrays.mask + top;
    const Word used = detail::used_of_top_word(width);
    if (top % 2 != 0) {
        const words::DoubleWord used_pair = static_cast<words::DoubleWord>(used) << 32 | 0xFFFFFFFFU;
        words::store_pair(value - 1, words::load_pair(value - 1) & used_pair);
        words::store_pair(mask - 1, words::load_pair(mask - 1) & used_pair);
    } else {
        *value &= used;
        *mask &= used;
    }
}
/// The same for the arrays of a large value.
inline void trim(const Arrays& arrays, unsigned width) { trim(arrays, (width - 1) / words::kWordBits, width); }

/// Room for the words of a small value. It is apart from the Operand or Target that points to it, so that these can
/// stay in registers.
struct Copy {
    Word value[2];
    Word mask[2];
};

/// An operand of any width, to be read as words: those of its arrays, or a copy of its bits.
struct Operand {
    Operand(const Planes& planes, unsigned bit_width, Copy& copy)
        : width(bit_width), size(stored_words(bit_width)), value(copy.value), mask(copy.mask) {
        if (is_large(width)) {
            value = detail::array_of(planes.value);
            mask = detail::array_of(planes.mask);
        } else {
            words::store_pair(copy.value, planes.value);
            words::store_pair(copy.mask, planes.mask);
        }
    }

    /// The value bit at width - 1, X or not.
    [[nodiscard]] bool is_negative() const { return (value[size - 1] >> ((width - 1) % words::kWordBits) & 1U) != 0; }

    unsigned width;
    std::size_t size;
    const Word* value;
    const Word* mask;
};

/// What an operation writes: the arrays of a large value, or the words of a small one until they are taken as bits.
struct Target {
    /// For a value that exists already.
    Target(const Planes& planes, unsigned bit_width, Copy& copy)
        : Target(bit_width, is_large(bit_width) ? arrays_of(planes) : Arrays{copy.value, copy.mask}) {
        if (is_large(width)) return;
        words::store_pair(value, planes.value);
        words::store_pair(mask, planes.mask);
    }
    /// For a new value, not yet written. Throws std::bad_alloc.
    Target(unsigned bit_width, Copy& copy)
        : Target(bit_width, is_large(bit_width) ? arrays_for(bit_width) : Arrays{copy.value, copy.mask}) {}

    void trim() const { kval::trim({value, mask}, size - 1, width); }
    /// The planes, which own the arrays.
    [[nodiscard]] Planes planes() const {
        if (is_large(width)) return planes_of({value, mask});
        return {words::limb_at(value, size, 0), words::limb_at(mask, size, 0)};
    }
    [[nodiscard]] Planes trimmed() const {
        trim();
        return planes();
    }

    unsigned width;
    std::size_t size;
    Word* value;
    Word* mask;

  private:
    Target(unsigned bit_width, const Arrays& arrays)
        : width(bit_width), size(stored_words(bit_width)), value(arrays.value), mask(arrays.mask) {}
};

}  // namespace kval
