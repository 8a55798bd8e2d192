// Bitwise logic on large values: AND and OR by the four-state rules (kval/detail/four_state.h), XOR and NOT.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/transform.h"

// Deliberate, for & and | alike, binary and in place: only the words that both operands have are combined. Beyond the
// shorter operand the words of the longer one stand as they are, as if AND met all ones there; inside the shorter one's
// top word its missing bits are 0.

namespace kval::detail {
namespace {

template <typename Rule>
__attribute__((always_inline)) inline Planes combined_large(const Operand& a, const Operand& b, Rule rule) {
    const std::size_t both = std::min(a.size, b.size);
    Copy out_copy;
    Target out(std::max(a.width, b.width), out_copy);
    words::combine(out.value, out.mask, a.value, a.mask, b.value, b.mask, both, rule);
    if (both < out.size) {
        const bool a_longer = a.size > both;
        words::copy(out.value + both, (a_longer ? a.value : b.value) + both, out.size - both);
        words::copy(out.mask + both, (a_longer ? a.mask : b.mask) + both, out.size - both);
    }
    return out.planes();
}

template <typename Rule>
__attribute__((always_inline)) inline Planes combine_large(const Target& out, const Operand& other, Rule rule) {
    words::combine(out.value, out.mask, out.value, out.mask, other.value, other.mask, std::min(out.size, other.size),
                   rule);
    return out.trimmed();
}

}  // namespace

Planes AndLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                unsigned r_width) {
    Copy l_copy;
    Copy r_copy;
    return combined_large(Operand({l, l_mask}, l_width, l_copy), Operand({r, r_mask}, r_width, r_copy), FourStateAnd());
}

Planes OrLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
               unsigned r_width) {
    Copy l_copy;
    Copy r_copy;
    return combined_large(Operand({l, l_mask}, l_width, l_copy), Operand({r, r_mask}, r_width, r_copy), FourStateOr());
}

Planes AndAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                      unsigned r_width) noexcept {
    Copy l_copy;
    Copy r_copy;
    return combine_large(Target({l, l_mask}, l_width, l_copy), Operand({r, r_mask}, r_width, r_copy), FourStateAnd());
}

Planes OrAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                     unsigned r_width) noexcept {
    Copy l_copy;
    Copy r_copy;
    return combine_large(Target({l, l_mask}, l_width, l_copy), Operand({r, r_mask}, r_width, r_copy), FourStateOr());
}

// The result is the wider operand, x-mask included, with the value words that both operands have XORed. With flag X it
// is all X, over the wider operand's value bits.
Planes XorLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                unsigned r_width, unsigned x_flag) {
    const bool left = l_width > r_width;
    Copy wide_copy;
    const Operand wide(left ? Planes{l, l_mask} : Planes{r, r_mask}, left ? l_width : r_width, wide_copy);
    Copy narrow_copy;
    const Operand narrow(left ? Planes{r, r_mask} : Planes{l, l_mask}, left ? r_width : l_width, narrow_copy);
    const bool all_x = x_flag != 0;
    const std::size_t both = all_x ? 0 : narrow.size;
    Copy out_copy;
    Target out(wide.width, out_copy);
    words::map(out.value, wide.value, narrow.value, both, Xor());
    words::copy(out.value + both, wide.value + both, wide.size - both);
    if (!all_x) {
        words::copy(out.mask, wide.mask, wide.size);
        return out.planes();
    }
    std::fill_n(out.mask, out.size, ~Word{0});
    return out.trimmed();
}

Planes NotLarge(std::uint64_t value, std::uint64_t mask, unsigned width) {
    Copy from_copy;
    const Operand from({value, mask}, width, from_copy);
    Copy out_copy;
    Target out(width, out_copy);
    words::map(out.value, from.value, from.value, from.size, Not());
    words::copy(out.mask, from.mask, from.size);
    return out.trimmed();
}

}  // namespace kval::detail
