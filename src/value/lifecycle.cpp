// Construction, copying, assignment, resizing and release of wide values.
#include <algorithm>
#include <memory>

#include "kval.h"
#include "value/storage.h"
#include "words/fit.h"
#include "words/shift.h"

using kval::detail::Internals;
using kval::words::fit;
using kval::words::Word;

// Arrays longer than any that are kept, and the one place where a value may turn out too wide.
void KVAL_UINTEGER::AllocateLong(std::size_t words) {
    kval::check_width(width);
    OwnPlanes(kval::detail::NewPlanes(words), words);
}

void KVAL_UINTEGER::ConstructWide(unsigned value) {
    AllocateWide(kval::word_count(width));
    AssignWide(value);
}

void KVAL_UINTEGER::CopyWide(const KVAL_UINTEGER& other) {
    const std::size_t size = kval::word_count(width);
    AllocateWide(size);
    kval::words::copy(uvalue.words, other.uvalue.words, size);
    kval::words::copy(xmask.words, other.xmask.words, size);
}

void KVAL_UINTEGER::ShiftedCopyWide(const KVAL_UINTEGER& other, unsigned count, bool left) {
    const std::size_t size = kval::word_count(width);
    AllocateWide(size);
    const Internals::View from = Internals::Words(other);
    const auto shift = left ? kval::words::shift_left : kval::words::shift_right;
    // A right shift clears even the bits that `other` may hold above its width once the count reaches the width.
    const std::size_t words = left || count < width ? from.size : 0;
    shift(uvalue.words, size, from.value, words, count);
    shift(xmask.words, size, from.mask, words, count);
    if (!left || Wrapped(other, count)) EnforceWidth();
}

KVAL_UINTEGER& KVAL_UINTEGER::AssignWide(const KVAL_UINTEGER& other) noexcept {
    const std::size_t size = kval::word_count(width);
    const Internals::View from = Internals::Words(other);
    fit(uvalue.words, size, from.value, from.size);
    fit(xmask.words, size, from.mask, from.size);
    flags = other.flags;
    if (width != other.width) EnforceWidth();
    DeleteString();
    return *this;
}

// The flags are cleared by the caller.
KVAL_UINTEGER& KVAL_UINTEGER::AssignWide(unsigned value) noexcept {
    const std::size_t size = kval::word_count(width);
    std::fill_n(uvalue.words, size, Word{0});
    std::fill_n(xmask.words, size, Word{0});
    uvalue.words[0] = value;
    DeleteString();
    return *this;
}

// Copy assignment to a moved-from value, which takes the width as well.
KVAL_UINTEGER& KVAL_UINTEGER::AdoptCopy(const KVAL_UINTEGER& other) {
    KVAL_UINTEGER copy(other);
    TakeFrom(copy);
    return *this;
}

// Resizes from or to a wide width. New arrays are taken only when the word count grows; a value that shrinks keeps its
// longer ones.
void KVAL_UINTEGER::ResizeWide(unsigned new_width) {
    const std::size_t size = kval::word_count(new_width);
    const Internals::View old = Internals::Words(*this);
    if (size > old.size) {
        kval::check_width(new_width);
        const kval::detail::Planes grown = kval::detail::TakePlanes(size);
        fit(grown.value, size, old.value, old.size);
        fit(grown.mask, size, old.mask, old.size);
        DeleteData();
        OwnPlanes(grown, size);
    } else if (IsCompact(static_cast<int>(new_width))) {
        const Word value = old.value[0];
        const Word mask = old.mask[0];
        DeleteData();
        uvalue.word = value;
        xmask.word = mask;
    }
    width = new_width;
    Changed();
}

void Internals::DeleteText(const char* text) noexcept { const std::unique_ptr<const char[]> released(text); }
