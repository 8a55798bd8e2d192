// hash.h: values as keys of unordered containers.
#ifndef KVAL_HASH_H
#define KVAL_HASH_H

#if __cplusplus < 201703L
#error "kval/hash.h needs C++17"
#endif

#include <kval.h>

#include <cstddef>
#include <cstdint>
#include <functional>

namespace kval {
namespace detail {

// The finish of SplitMix64 (G. Steele, D. Lea, C. Flood): every bit of the input reaches every bit of the output.
constexpr std::uint64_t mixed(std::uint64_t bits) noexcept {
    bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ bits >> 27) * 0x94D049BB133111EBU;
    return bits ^ bits >> 31;
}

// The hash of a plane of words as a number: `word` gives the word of an index, 0 behind `size`. High words of 0 leave
// no trace, so that a number hashes alike at every width.
template <typename Word>
std::uint64_t plane_hash(int size, Word word) noexcept {
    while (size > 0 && word(size - 1) == 0) --size;
    std::uint64_t hash = 0;
    for (int i = (size - 1) & ~1; i >= 0; i -= 2) {
        const std::uint64_t high = i + 1 < size ? word(i + 1) : 0;
        hash = mixed(hash + 0x9E3779B97F4A7C15U + (high << 32 | word(i)));
    }
    return hash;
}

inline std::uint64_t identity_hash(const KVAL_UINTEGER& value) noexcept {
    const std::uint64_t bits = plane_hash(value.get_size(), [&](int i) noexcept { return value.get_uvalue_at(i); });
    const std::uint64_t mask = plane_hash(value.get_size(), [&](int i) noexcept { return value.get_xmask_at(i); });
    const unsigned flags =
        (value.is_x() ? 1U : 0U) | (value.is_z() ? 2U : 0U) | (value.is_wl() ? 4U : 0U) | (value.is_wh() ? 8U : 0U);
    return mixed(mixed(bits) + mask * 3 + flags);
}

// Of the inverted bits: what a sign extension adds is 0 then.
inline std::uint64_t negative_hash(const KVAL_SINTEGER& value) noexcept {
    const auto inverted = [&](int i) noexcept { return ~value.SignExtendedChunk(i); };
    return mixed(~plane_hash(value.get_size(), inverted));
}

inline bool is_negative(const KVAL_SINTEGER& value) noexcept {
    return (value.get_uvalue_at(value.get_size() - 1) >> ((value.bitwidth() - 1) & 31U) & 1U) != 0;
}

}  // namespace detail
}  // namespace kval

/// The hash that goes with `==` of unsigned values: equal values have equal hashes. So the width does not count, but
/// value bits, X bits and the flags X, Z, WL and WH do. Reads every word; allocates nothing and throws nothing. Do not
/// store it: another version may hash otherwise.
///
/// It is not made of get_hash(), for which the same number in more words is another one, and all values with the same
/// bits alike, X or not: equal values could hash differently, and different ones too often alike.
template <>
struct std::hash<KVAL_UINTEGER> {
    /// The hash of a value; a moved-from one hashes as 0 does.
    std::size_t operator()(const KVAL_UINTEGER& value) const noexcept {
        return static_cast<std::size_t>(kval::detail::identity_hash(value));
    }
};

/// The hash that goes with `==` of signed values. One that is not negative hashes as its unsigned reading; for a
/// negative one, its value bits alone count, continued by the sign: 4-bit 1111 and 8-bit 11111111 are both -1.
template <>
struct std::hash<KVAL_SINTEGER> {
    /// The hash of a value.
    std::size_t operator()(const KVAL_SINTEGER& value) const noexcept {
        return static_cast<std::size_t>(kval::detail::is_negative(value) ? kval::detail::negative_hash(value)
                                                                         : kval::detail::identity_hash(value));
    }
};

#endif
