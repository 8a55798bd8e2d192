// What a value is made of, as it goes in and out of functions: by value, never by a reference to the value.
#ifndef KVAL_DETAIL_PLANES_H
#define KVAL_DETAIL_PLANES_H

#include <cstddef>
#include <cstdint>

// A value lives in registers as long as its address never leaves the function that it is local to. One call with a
// reference to it is enough to move it into memory for the whole of that function, even where the call is never made.
// So whatever takes a reference to a value is inlined, always; but not at -O0, where a debugger should step as one
// expects, nor where the program is to be small.
#if defined(__OPTIMIZE__) && !defined(__OPTIMIZE_SIZE__)
#define KVAL_INLINE __attribute__((always_inline)) inline
#else
#define KVAL_INLINE inline
#endif

namespace kval {
namespace detail {

/// The unit in which a large value is stored and in which the rules count.
using Word = std::uint32_t;

/// Both planes of a value, value bits and x-mask, as its width says: of a small one (up to 64 bits) the bits themselves,
/// of a large one the addresses of the two arrays that it owns. Two registers; as numbers, since compilers keep a union
/// in memory that is now bits and now a pointer.
struct Planes {
    std::uint64_t value;
    std::uint64_t mask;
};

/// Planes that own arrays of `capacity` words; 0 for those of a small value, which own none.
struct Storage {
    Planes planes;
    unsigned capacity;
};

/// The bits of the field `flags`. kBinaryText tells which kind of text is cached, while one is.
enum Flag : unsigned { kX = 1, kZ = 2, kWeakLow = 4, kWeakHigh = 8, kFourState = 15, kBinaryText = 16 };

}  // namespace detail
}  // namespace kval

#endif
