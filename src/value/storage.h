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

inline std::size_t word_count(std::size_t width) { return (width + words::kWordBits - 1) / words::kWordBits; }

/// How many words are read of a value: a moved-from one has one, too.
inline std::size_t stored_words(unsigned width) { return width <= words::kWordBits ? 1 : word_count(width); }

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

/// Clears the bits above the width. Two words at a time where the kernels have written the top word so: what was
/// written in one piece is slow to read in another.
inline void trim(const Arrays& arrays, unsigned width) {
    const std::size_t top = stored_words(width) - 1;
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

/// An operand of any width, to be read as words: those of its arrays, or a copy of its bits.
class Operand {
  public:
    Operand(Planes planes, unsigned bit_width) : width(bit_width), size(stored_words(bit_width)) {
        if (detail::is_small(width)) {
            words::store_pair(copy_, planes.value);
            words::store_pair(copy_ + 2, planes.mask);
            value = copy_;
            mask = copy_ + 2;
        } else {
            value = detail::array_of(planes.value);
            mask = detail::array_of(planes.mask);
        }
    }
    Operand(const Operand&) = delete;
    Operand& operator=(const Operand&) = delete;

    /// The value bit at width - 1, X or not.
    [[nodiscard]] bool is_negative() const { return (value[size - 1] >> ((width - 1) % words::kWordBits) & 1U) != 0; }

    const unsigned width;
    const std::size_t size;
    const Word* value;
    const Word* mask;

  private:
    Word copy_[4];
};

/// What an operation writes: the arrays of a large value, or the words of a small one until they are taken as bits.
class Target {
  public:
    /// A value that is there already.
    Target(Planes planes, unsigned bit_width) : Target(bit_width, arrays_of(planes)) {
        if (!detail::is_small(width)) return;
        words::store_pair(copy_, planes.value);
        words::store_pair(copy_ + 2, planes.mask);
    }
    /// A new one, not yet written. Throws std::bad_alloc.
    explicit Target(unsigned bit_width)
        : Target(bit_width, detail::is_small(bit_width) ? Arrays{} : arrays_for(bit_width)) {}
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    void trim() const { kval::trim({value, mask}, width); }
    /// The planes, which own the arrays.
    [[nodiscard]] Planes planes() const {
        if (!detail::is_small(width)) return planes_of({value, mask});
        return {words::limb_at(value, size, 0), words::limb_at(mask, size, 0)};
    }
    [[nodiscard]] Planes trimmed() const {
        trim();
        return planes();
    }

    const unsigned width;
    const std::size_t size;
    Word* const value;
    Word* const mask;

  private:
    Target(unsigned bit_width, const Arrays& arrays)
        : width(bit_width),
          size(stored_words(bit_width)),
          value(detail::is_small(bit_width) ? copy_ : arrays.value),
          mask(detail::is_small(bit_width) ? copy_ + 2 : arrays.mask) {}

    Word copy_[4];
};

}  // namespace kval
