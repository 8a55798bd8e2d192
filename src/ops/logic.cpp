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
Planes combined_large(Planes l, Planes r, unsigned l_width, unsigned r_width, Rule rule) {
    const Operand a(l, l_width);
    const Operand b(r, r_width);
    const std::size_t both = std::min(a.size, b.size);
    Target out(std::max(l_width, r_width));
    words::combine(out.value, out.mask, a.value, a.mask, b.value, b.mask, both, rule);
    if (both < out.size) {
        const Operand& longer = a.size > b.size ? a : b;
        words::copy(out.value + both, longer.value + both, longer.size - both);
        words::copy(out.mask + both, longer.mask + both, longer.size - both);
    }
    return out.planes();
}

template <typename Rule>
Planes combine_large(Planes l, Planes r, unsigned l_width, unsigned r_width, Rule rule) noexcept {
    Target out(l, l_width);
    const Operand other(r, r_width);
    words::combine(out.value, out.mask, out.value, out.mask, other.value, other.mask, std::min(out.size, other.size),
                   rule);
    return out.trimmed();
}

}  // namespace

Planes AndLarge(Planes l, Planes r, unsigned l_width, unsigned r_width) {
    return combined_large(l, r, l_width, r_width, FourStateAnd());
}

Planes OrLarge(Planes l, Planes r, unsigned l_width, unsigned r_width) {
    return combined_large(l, r, l_width, r_width, FourStateOr());
}

Planes AndAssignLarge(Planes l, Planes r, unsigned l_width, unsigned r_width) noexcept {
    return combine_large(l, r, l_width, r_width, FourStateAnd());
}

Planes OrAssignLarge(Planes l, Planes r, unsigned l_width, unsigned r_width) noexcept {
    return combine_large(l, r, l_width, r_width, FourStateOr());
}

// The result starts as the wider operand, x-mask included, and keeps it but for the value words that both have.
Planes XorLarge(Planes l, Planes r, unsigned l_width, unsigned r_width, bool all_x) {
    const bool left = l_width > r_width;
    const Operand wide(left ? l : r, left ? l_width : r_width);
    const Operand narrow(left ? r : l, left ? r_width : l_width);
    const std::size_t both = all_x ? 0 : narrow.size;
    Target out(wide.width);
    words::map(out.value, wide.value, narrow.value, both, Xor());
    words::copy(out.value + both, wide.value + both, wide.size - both);
    if (!all_x) {
        words::copy(out.mask, wide.mask, wide.size);
        return out.planes();
    }
    std::fill_n(out.mask, out.size, ~Word{0});
    return out.trimmed();
}

Planes NotLarge(Planes v, unsigned width) {
    const Operand from(v, width);
    Target out(width);
    words::map(out.value, from.value, from.value, from.size, Not());
    words::copy(out.mask, from.mask, from.size);
    return out.trimmed();
}

}  // namespace kval::detail
