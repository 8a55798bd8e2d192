// Wide signed values: construction, assignment, resizing and negation in two's complement.
#include <algorithm>

#include "kval.h"
#include "signed/extended.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/fit.h"

using kval::detail::Internals;
using kval::detail::OnesFrom;
using kval::detail::SignedInternals;
using kval::words::Word;

namespace kval::detail {

void assign_signed(Word* value, Word* mask, unsigned source_width, bool negative, unsigned width) {
    const std::size_t size = word_count(width);
    const std::size_t source_size = word_count(source_width);
    const unsigned source_top = source_width % words::kWordBits;
    const bool ones = negative && source_top != 0;
    if (source_size < size) {
        std::fill(value + source_size, value + size, negative ? ~Word{0} : Word{0});
        std::fill(mask + source_size, mask + size, Word{0});
    }
    // Deliberate: unknown bits in the word that is filled up with ones are dropped.
    if (ones && source_size <= size) {
        value[source_size - 1] |= OnesFrom(source_top);
        mask[source_size - 1] = 0;
    }
    // Deliberate: the target's top word gets the same ones again, although they start where the source's width says.
    if (ones) value[size - 1] |= OnesFrom(source_top);
    const Word top_mask = Internals::TopMask(width);
    value[size - 1] &= top_mask;
    mask[size - 1] &= top_mask;
    // A source that is not negative never gives a negative target.
    const Word sign = top_mask ^ top_mask >> 1;
    if (!negative && (value[size - 1] & sign) != 0) {
        value[size - 1] &= ~sign;
        mask[size - 1] &= ~sign;
    }
}

}  // namespace kval::detail

// Deliberate: the top word is not trimmed, so that its bits above the width are ones too.
void KVAL_SINTEGER::FillOnesWide() noexcept { std::fill_n(uvalue.words + 1, get_size() - 1, ~Word{0}); }

// Deliberate: not trimmed, so that bits of a wider source stay above the width.
KVAL_SINTEGER& KVAL_SINTEGER::AssignUnsignedWide(const KVAL_UINTEGER& other) noexcept {
    const std::size_t size = kval::word_count(width);
    const Internals::View from = Internals::Words(other);
    kval::words::fit(uvalue.words, size, from.value, from.size);
    kval::words::fit(xmask.words, size, from.mask, from.size);
    CopyFlags(other);
    DeleteString();
    return *this;
}

// The words alone: flags and text are the caller's.
KVAL_SINTEGER& KVAL_SINTEGER::AssignSignedWide(const KVAL_SINTEGER& other) noexcept {
    const Internals::View from = Internals::Words(other);
    const std::size_t both = std::min(from.size, kval::word_count(width));
    kval::words::copy(uvalue.words, from.value, both);
    kval::words::copy(xmask.words, from.mask, both);
    kval::detail::assign_signed(uvalue.words, xmask.words, other.width, SignedInternals::Negative(other), width);
    return *this;
}

void KVAL_SINTEGER::ResizeNegativeWide(unsigned new_width) {
    const unsigned old_width = width;
    const std::size_t old_size = kval::word_count(old_width);
    ResizeWide(new_width);
    if (new_width <= old_width) return;
    if (old_width % kval::words::kWordBits != 0) uvalue.words[old_size - 1] |= OnesFrom(old_width);
    std::fill(uvalue.words + old_size, uvalue.words + kval::word_count(new_width), ~Word{0});
    EnforceWidth();
}

KVAL_SINTEGER& KVAL_SINTEGER::ComplementWide() noexcept {
    kval::words::negate(uvalue.words, uvalue.words, kval::word_count(width));
    Changed();
    return *this;
}
