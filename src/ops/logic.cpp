// Bitwise logic on wide values: AND, OR, XOR and NOT. The four-state rules of AND and OR stand in kval/detail/inline.h.
#include <algorithm>
#include <functional>

#include "kval.h"
#include "value/storage.h"
#include "words/transform.h"

using kval::detail::FourStateAnd;
using kval::detail::FourStateOr;
using kval::words::Word;

namespace kval::detail {

// Deliberate, for & and | alike: only the words that both operands have are combined. Beyond the shorter operand the words of
// the longer one stand as they are, as if AND met all ones there; inside the shorter one's top word its missing bits are 0.

template <typename Rule>
KVAL_UINTEGER& Internals::CombineInPlace(KVAL_UINTEGER& target, const KVAL_UINTEGER& other, Rule rule) noexcept {
    const View r = Words(other);
    const std::size_t both = std::min(Words(target).size, r.size);
    words::combine_in_place(target.uvalue.words, target.xmask.words, r.value, r.mask, both, rule);
    target.UniteFlags(other);
    return target.Changed();
}

template <typename Rule>
KVAL_UINTEGER Internals::Combine(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) {
    const View a = Words(l);
    const View b = Words(r);
    const View& longer = a.size > b.size ? a : b;
    const std::size_t both = std::min(a.size, b.size);
    KVAL_UINTEGER result(Wider(l, r).width, longer.size, 0);
    Word* value = result.uvalue.words;
    Word* mask = result.xmask.words;
    words::combine(value, mask, a.value, a.mask, b.value, b.mask, both, rule);
    std::copy(longer.value + both, longer.value + longer.size, value + both);
    std::copy(longer.mask + both, longer.mask + longer.size, mask + both);
    return result;
}

KVAL_UINTEGER Internals::AndWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    return Combine(l, r, FourStateAnd());
}

KVAL_UINTEGER Internals::OrWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return Combine(l, r, FourStateOr()); }

// The result starts as the wider operand, x-mask and flags included, and keeps them but for the value words that both have.
KVAL_UINTEGER Internals::XorWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const KVAL_UINTEGER& wider = Wider(l, r);
    const View from = Words(wider);
    const View other = Words(&wider == &l ? r : l);
    const bool all_x = l.is_x() || r.is_x();
    const std::size_t both = all_x ? 0 : std::min(from.size, other.size);
    KVAL_UINTEGER result(wider.width, from.size, FourState(wider));
    Word* value = result.uvalue.words;
    std::transform(from.value, from.value + both, other.value, value, std::bit_xor<Word>());
    std::copy(from.value + both, from.value + from.size, value + both);
    if (all_x) return result.force_x();
    std::copy_n(from.mask, from.size, result.xmask.words);
    return result;
}

KVAL_UINTEGER Internals::NotWide(const KVAL_UINTEGER& v) {
    const View from = Words(v);
    KVAL_UINTEGER result(v.width, from.size, FourState(v));
    std::transform(from.value, from.value + from.size, result.uvalue.words, std::bit_not<Word>());
    std::copy_n(from.mask, from.size, result.xmask.words);
    result.EnforceWidth();
    return result;
}

}  // namespace kval::detail

using kval::detail::Internals;

KVAL_UINTEGER& KVAL_UINTEGER::AndAssignWide(const KVAL_UINTEGER& other) noexcept {
    return Internals::CombineInPlace(*this, other, FourStateAnd());
}

KVAL_UINTEGER& KVAL_UINTEGER::OrAssignWide(const KVAL_UINTEGER& other) noexcept {
    return Internals::CombineInPlace(*this, other, FourStateOr());
}
