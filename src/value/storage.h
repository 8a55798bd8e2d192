// The widths and word counts of wide values.
#pragma once

#include <new>

#include "kval.h"
#include "words/word.h"

namespace kval {

/// The widest value, in bits: beyond it the word count wraps.
inline constexpr unsigned kMaxWidth = 0x7FFFFFFFU - 31;

/// Throws std::bad_alloc for a width above kMaxWidth.
inline void check_width(std::size_t width) {
    if (width > kMaxWidth) throw std::bad_alloc();
}

inline std::size_t word_count(std::size_t width) { return (width + words::kWordBits - 1) / words::kWordBits; }

/// The arrays of a new value of `width` bits, not yet written.
inline detail::Planes take_planes(unsigned width) {
    check_width(width);
    return detail::TakePlanes(word_count(width));
}

}  // namespace kval
