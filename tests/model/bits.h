// Planes of single bits: reads that are safe at any position, and the 32 bits of a word to and from a number.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace model {

using Bits = std::vector<unsigned char>;  // one 0 or 1 in each: quicker than packed bits

constexpr unsigned kWordBits = 32;

inline bool at(const Bits& plane, std::size_t index) { return index < plane.size() && plane[index]; }

inline unsigned word_at(const Bits& plane, std::size_t index) {
    const std::size_t first = kWordBits * index;
    const std::size_t end = std::min(plane.size(), first + kWordBits);
    unsigned word = 0;
    for (std::size_t pos = first; pos < end; ++pos) word |= static_cast<unsigned>(plane[pos]) << (pos - first);
    return word;
}

// Writes nothing beyond the end of the plane.
inline void put_word(Bits& plane, std::size_t index, unsigned word) {
    for (unsigned i = 0; i < kWordBits; ++i) {
        const std::size_t pos = kWordBits * index + i;
        if (pos < plane.size()) plane[pos] = (word >> i & 1u) != 0;
    }
}

inline void flip(Bits& plane) {
    for (auto& bit : plane) bit = bit == 0;
}

inline Bits bits_of(unsigned number) {
    Bits plane(kWordBits);
    put_word(plane, 0, number);
    return plane;
}

}  // namespace model
