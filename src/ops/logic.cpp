// Bitwise logic on wide values: AND and OR by the four-state rules (kval/detail/four_state.h), XOR and NOT.
#include <algorithm>
#include <functional>

#include "kval.h"
#include "value/storage.h"
#include "words/transform.h"

using kval::detail::FourStateAnd;
using kval::detail::FourStateOr;
using kval::detail::Internals;
using kval::words::Word;

// Deliberate, for & and | alike, binary and in place: only the words that both operands have are combined. Beyond the
// shorter operand the words of the longer one stand as they are, as if AND met all ones there; inside the shorter one's
// top word its missing bits are 0.

namespace {

template <typename Rule>
void combine_in_place(Word* value, Word* mask, std::size_t size, const Internals::View& r, Rule rule) {
    kval::words::combine_in_place(value, mask, r.value, r.mask, std::min(size, r.size), rule);
}

template <typename Rule>
void combine(Word* value, Word* mask, const Internals::View& l, const Internals::View& r, Rule rule) {
    const Internals::View& longer = l.size > r.size ? l : r;
    const std::size_t both = std::min(l.size, r.size);
    kval::words::combine(value, mask, l.value, l.mask, r.value, r.mask, both, rule);
    std::copy(longer.value + both, longer.value + longer.size, value + both);
    std::copy(longer.mask + both, longer.mask + longer.size, mask + both);
}

}  // namespace

KVAL_UINTEGER& KVAL_UINTEGER::AndAssignWide(const KVAL_UINTEGER& other) noexcept {
    combine_in_place(uvalue.words, xmask.words, kval::word_count(width), Internals::Words(other), FourStateAnd());
    UniteFlags(other);
    return Changed();
}

KVAL_UINTEGER& KVAL_UINTEGER::OrAssignWide(const KVAL_UINTEGER& other) noexcept {
    combine_in_place(uvalue.words, xmask.words, kval::word_count(width), Internals::Words(other), FourStateOr());
    UniteFlags(other);
    return Changed();
}

namespace kval::detail {

KVAL_UINTEGER Internals::AndWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const unsigned width = Wider(l, r).width;
    KVAL_UINTEGER result(width, word_count(width), 0);
    combine(result.uvalue.words, result.xmask.words, Words(l), Words(r), FourStateAnd());
    return result;
}

KVAL_UINTEGER Internals::OrWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const unsigned width = Wider(l, r).width;
    KVAL_UINTEGER result(width, word_count(width), 0);
    combine(result.uvalue.words, result.xmask.words, Words(l), Words(r), FourStateOr());
    return result;
}

// The result starts as the wider operand, x-mask and flags included, and keeps them but for the value words that both
// have.
KVAL_UINTEGER Internals::XorWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const KVAL_UINTEGER& wider = Wider(l, r);
    const View from = Words(wider);
    const View other = Words(&wider == &l ? r : l);
    const bool all_x = l.is_x() || r.is_x();
    const std::size_t both = all_x ? 0 : std::min(from.size, other.size);
    KVAL_UINTEGER result(wider.width, from.size, Flags(wider));
    Word* value = result.uvalue.words;
    std::transform(from.value, from.value + both, other.value, value, std::bit_xor<>());
    std::copy(from.value + both, from.value + from.size, value + both);
    if (all_x) {
        result.force_x();
    } else {
        std::copy_n(from.mask, from.size, result.xmask.words);
    }
    return result;
}

KVAL_UINTEGER Internals::NotWide(const KVAL_UINTEGER& v) {
    const View from = Words(v);
    KVAL_UINTEGER result(v.width, from.size, Flags(v));
    std::transform(from.value, from.value + from.size, result.uvalue.words, std::bit_not<>());
    std::copy_n(from.mask, from.size, result.xmask.words);
    result.EnforceWidth();
    return result;
}

}  // namespace kval::detail
