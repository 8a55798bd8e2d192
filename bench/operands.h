// operands.h: the named, fixed sets of operands, as plain bits that every rival makes its values from.
#ifndef BENCH_OPERANDS_H
#define BENCH_OPERANDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// A four-state number: words of 32 bits, the low one first, value bits and x-mask.
struct Bits {
    unsigned width = 1;
    std::vector<std::uint32_t> value;
    std::vector<std::uint32_t> mask;
    std::optional<bool> flag_x;  ///< of a result; a rival may not know flags

    bool has_x() const;
    /// A plane as 64-bit limbs.
    static std::vector<std::uint64_t> limbs(const std::vector<std::uint32_t>& plane);
    /// Made from 64-bit limbs, of which there may be more or less than the width needs.
    static std::vector<std::uint32_t> words(const std::uint64_t* limbs, std::size_t count, unsigned width);
};

struct Pair {
    Bits left;
    Bits right;
};

/// The pairs of a set: sixteen, or fewer where more would leave the first-level cache. The sets:
///   known     random, the two top bits 0, so that neither an unsigned nor a signed sum is wider than its operands
///   x         the same with a random eighth of the bits unknown, but for the two top bits
///   grows     random, the two top bits 1: unsigned sums carry out; as signed numbers, both are negative
///   carry     all ones but for the top bit, and 1: a carry runs through the whole sum
///   low       equal but for the lowest bit
///   low_x     the same with an eighth of the bits unknown, alike in both
///   equal     equal
///   equal_x   the same with an eighth of the bits unknown
///   top       they differ at the top, and at random below
///   divide    random numerators over random denominators of half the width, with both signs
std::vector<Pair> operands(std::string_view set, unsigned width);

/// By how much values of this width are shifted: across words, where there are enough of them.
unsigned shift_count(unsigned width);

/// As digits, upper case; hexadecimal ones cannot say X.
std::string hexadecimal(const Bits& bits);
std::string binary(const Bits& bits);

}  // namespace bench

#endif
