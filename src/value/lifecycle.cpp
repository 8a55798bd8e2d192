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

namespace kval::detail {
namespace {

void write_number(const Planes& planes, std::size_t size, unsigned value) {
    std::fill_n(planes.value, size, Word{0});
    std::fill_n(planes.mask, size, Word{0});
    planes.value[0] = value;
}

}  // namespace

Planes Internals::ConstructedWide(unsigned value, unsigned width) {
    const Planes planes = take_planes(width);
    write_number(planes, word_count(width), value);
    return planes;
}

Planes Internals::CopiedWide(const KVAL_UINTEGER& v) {
    const Planes planes = take_planes(v.width);
    words::copy(planes.value, v.uvalue.words, Size(v));
    words::copy(planes.mask, v.xmask.words, Size(v));
    return planes;
}

// A left shift whose width wrapped has lost bits, and may have some above its width.
Planes Internals::ShiftedWide(const KVAL_UINTEGER& v, unsigned count, bool left, unsigned width) {
    const Planes planes = take_planes(width);
    const std::size_t size = word_count(width);
    const View from = Words(v);
    const auto shift = left ? words::shift_left : words::shift_right;
    // A right shift clears even the bits that `v` may hold above its width once the count reaches the width.
    const std::size_t words = left || count < width ? from.size : 0;
    shift(planes.value, size, from.value, words, count);
    shift(planes.mask, size, from.mask, words, count);
    if (!left || std::uint64_t{v.width} + count != width) Trim(planes, width);
    return planes;
}

}  // namespace kval::detail

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
    kval::detail::write_number(Internals::PlanesOf(*this), kval::word_count(width), value);
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
