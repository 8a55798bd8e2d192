// The arrays of wide values: the one place where they are taken and given back.
#pragma once

#include "words/word.h"

namespace kval {

/// The two arrays of a wide value.
struct Planes {
    words::Word* value;
    words::Word* mask;
};

/// The widest value, in bits: beyond it the word count wraps.
inline constexpr unsigned kMaxWidth = 0x7FFFFFFFU - 31;

/// Throws std::bad_alloc for a width above kMaxWidth.
void check_width(std::size_t width);

inline std::size_t word_count(std::size_t width) { return (width + words::kWordBits - 1) / words::kWordBits; }

/// Two arrays of `size` words, not yet written. Throws std::bad_alloc, and leaves nothing behind.
Planes allocate_planes(std::size_t size);
void release_planes(Planes planes) noexcept;

}  // namespace kval
