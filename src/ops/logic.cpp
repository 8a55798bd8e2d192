// Bitwise logic on wide values: AND and OR by the four-state rules (kval/detail/four_state.h), XOR and NOT.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/transform.h"

// Deliberate, for & and | alike, binary and in place: only the words that both operands have are combined. Beyond the
// shorter operand the words of the longer one stand as they are, as if AND met all ones there; inside the shorter one's
// top word its missing bits are 0.

namespace kval::detail {

// The flags are united by the caller.
template <typename Rule>
KVAL_UINTEGER& Internals::CombineWide(KVAL_UINTEGER& v, const KVAL_UINTEGER& other, Rule rule) noexcept {
    const View from = Words(other);
    Word* value = v.uvalue.words;
    Word* mask = v.xmask.words;
    words::combine(value, mask, value, mask, from.value, from.mask, std::min(Size(v), from.size), rule);
    return ChangedWide(v);
}

template <typename Rule>
Planes Internals::CombinedWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) {
    const View a = Words(l);
    const View b = Words(r);
    const std::size_t both = std::min(a.size, b.size);
    const Planes result = take_planes(Wider(l, r).width);
    words::combine(result.value, result.mask, a.value, a.mask, b.value, b.mask, both, rule);
    if (a.size != b.size) {
        const View& longer = a.size > b.size ? a : b;
        words::copy(result.value + both, longer.value + both, longer.size - both);
        words::copy(result.mask + both, longer.mask + both, longer.size - both);
    }
    return result;
}

template KVAL_UINTEGER& Internals::CombineWide(KVAL_UINTEGER& v, const KVAL_UINTEGER& other, FourStateAnd rule);
template KVAL_UINTEGER& Internals::CombineWide(KVAL_UINTEGER& v, const KVAL_UINTEGER& other, FourStateOr rule);
template Planes Internals::CombinedWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, FourStateAnd rule);
template Planes Internals::CombinedWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, FourStateOr rule);

// The result starts as the wider operand, x-mask and flags included, and keeps them but for the value words that both
// have.
Planes Internals::XorWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const KVAL_UINTEGER& wider = Wider(l, r);
    const View from = Words(wider);
    const View other = Words(&wider == &l ? r : l);
    const bool all_x = l.is_x() || r.is_x();
    const std::size_t both = all_x ? 0 : std::min(from.size, other.size);
    const Planes result = take_planes(wider.width);
    words::map(result.value, from.value, other.value, both, Xor());
    words::copy(result.value + both, from.value + both, from.size - both);
    if (all_x) {
        std::fill_n(result.mask, from.size, ~Word{0});
        Trim(result, wider.width);
    } else {
        words::copy(result.mask, from.mask, from.size);
    }
    return result;
}

Planes Internals::NotWide(const KVAL_UINTEGER& v) {
    const View from = Words(v);
    const Planes result = take_planes(v.width);
    words::map(result.value, from.value, from.value, from.size, Not());
    words::copy(result.mask, from.mask, from.size);
    Trim(result, v.width);
    return result;
}

}  // namespace kval::detail
