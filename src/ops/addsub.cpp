// Addition and subtraction of wide values. Value bits only: x-masks and flags are carried along.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/transform.h"

using kval::words::Word;

namespace kval::detail {
namespace {

// Deliberate, and not to be fixed: behind the first word, the borrow of a difference with a compact right operand is
// still decided against that operand's word, though it is no longer subtracted there.
void subtract_compact(Word* out, const Word* l, std::size_t size, Word r) {
    bool borrow = false;
    for (std::size_t i = 0; i < size; ++i) {
        const Word word = l[i];
        out[i] = word - (i == 0 ? r : 0) - static_cast<Word>(borrow);
        borrow = word < r || (word == r && borrow);
    }
}

}  // namespace

// The end of a sum that may be the widest there is, and grow too wide.
void Internals::FinishWideSum(KVAL_UINTEGER& sum, unsigned width, bool carry) {
    if (width == kMaxWidth && SumGrows(PlanesOf(sum), width, carry)) throw std::bad_alloc();
    sum.width = FinishedSum(PlanesOf(sum), width, carry);
}

Planes Internals::AddWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned* width) {
    const KVAL_UINTEGER& wider = Wider(l, r);
    const View w = Words(wider);
    const View n = Words(&wider == &l ? r : l);
    KVAL_UINTEGER sum(wider.width, SumSize(wider.width), 0);  // owns the arrays as long as it may prove too wide
    const Planes planes = PlanesOf(sum);
    bool carry = words::add(planes.value, w.value, n.value, n.size);
    if (n.size < w.size) carry = words::add_carry(planes.value + n.size, w.value + n.size, w.size - n.size, carry);
    words::copy(planes.mask, w.mask, w.size);
    FinishWideSum(sum, wider.width, carry);
    *width = sum.width;
    sum.capacity = 0;
    return planes;
}

Planes Internals::SubWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const View from = Words(l);
    const View less = Words(r);
    const Planes result = take_planes(l.width);
    Word* value = result.value;
    if (r.IsCompact()) {
        subtract_compact(value, from.value, from.size, less.value[0]);
    } else {
        const std::size_t both = std::min(from.size, less.size);
        const bool borrow = words::subtract(value, from.value, less.value, both);
        if (both < from.size) words::subtract_borrow(value + both, from.value + both, from.size - both, borrow);
    }
    words::copy(result.mask, from.mask, from.size);
    Trim(result, l.width);
    return result;
}

}  // namespace kval::detail

using kval::detail::Internals;

KVAL_UINTEGER& KVAL_UINTEGER::AddAssignWide(const KVAL_UINTEGER& other) noexcept {
    const Internals::View more = Internals::Words(other);
    const std::size_t size = kval::word_count(width);
    const std::size_t both = std::min(size, more.size);
    const bool carry = kval::words::add(uvalue.words, uvalue.words, more.value, both);
    // Deliberate: the carry changes one word beyond the right operand and is then dropped, while += with a number
    // carries on.
    if (both < size) uvalue.words[both] += static_cast<Word>(carry);
    return Changed();
}

KVAL_UINTEGER& KVAL_UINTEGER::AddAssignWide(unsigned number) noexcept {
    const bool carry = kval::words::add(uvalue.words, uvalue.words, &number, 1);
    kval::words::add_carry(uvalue.words + 1, uvalue.words + 1, kval::word_count(width) - 1, carry);
    return Changed();
}

KVAL_UINTEGER& KVAL_UINTEGER::SubAssignWide(const KVAL_UINTEGER& other) noexcept {
    const Internals::View less = Internals::Words(other);
    const std::size_t size = kval::word_count(width);
    const std::size_t both = std::min(size, less.size);
    const bool borrow = kval::words::subtract(uvalue.words, uvalue.words, less.value, both);
    // Deliberate: as the carry of +=, the borrow changes one word beyond the right operand and is then dropped.
    if (both < size) uvalue.words[both] -= static_cast<Word>(borrow);
    return Changed();
}

KVAL_UINTEGER& KVAL_UINTEGER::SubAssignWide(unsigned number) noexcept {
    const bool borrow = kval::words::subtract(uvalue.words, uvalue.words, &number, 1);
    kval::words::subtract_borrow(uvalue.words + 1, uvalue.words + 1, kval::word_count(width) - 1, borrow);
    return Changed();
}
