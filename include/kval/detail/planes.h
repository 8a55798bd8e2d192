// What a value is made of, as functions take and return it: by value, never as a reference to the value itself.
#ifndef KVAL_DETAIL_PLANES_H
#define KVAL_DETAIL_PLANES_H

#include <cstddef>
#include <cstdint>

// A value lives in registers as long as its address never leaves the function that it is local to. One call with a
// reference to it is enough to move it into memory for the whole of that function, even where the call is never made.
// So whatever takes a reference to a value is always inlined, except at -O0, where a debugger should step as one
// expects, and where the program is built for size.
#if defined(__OPTIMIZE__) && !defined(__OPTIMIZE_SIZE__)
#define KVAL_INLINE __attribute__((always_inline)) inline
#else
#define KVAL_INLINE inline
#endif

namespace kval {
namespace detail {

/// The unit in which a large value is stored and in which the rules count.
using Word = std::uint32_t;

/// Both planes of a value, value bits and x-mask. The width says what they are: the bits themselves of a small value
/// (up to 64 bits), or the addresses of the two arrays that a large one owns. Compilers would keep a union of bits and
/// pointer in memory, so both are plain numbers, in two registers.
struct Planes {
    std::uint64_t value;
    std::uint64_t mask;
};

/// Planes, and the length in words of the arrays that they own: 0 for those of a small value, which own none.
struct Storage {
    Planes planes;
    unsigned capacity;
};

/// The bits of the field `flags`. kBinaryText says that the cached text is binary, and means nothing without a text.
enum Flag : unsigned { kX = 1, kZ = 2, kWeakLow = 4, kWeakHigh = 8, kFourState = 15, kBinaryText = 16 };

}  // namespace detail
}  // namespace kval

#endif
