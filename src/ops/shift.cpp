// Shifts of wide values: value bits and x-mask alike, flags kept.
#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/shift.h"

using kval::words::Word;

namespace kval::detail {

// Takes only the words that the narrower result needs; `width` is the result's, more than 32 bits.
Planes Internals::ShrWide(const KVAL_UINTEGER& v, unsigned count, unsigned width) {
    const View from = Words(v);
    const std::size_t size = word_count(width);
    const Planes result = take_planes(width);
    words::shift_right(result.value, size, from.value, from.size, count);
    words::shift_right(result.mask, size, from.mask, from.size, count);
    Trim(result, width);
    return result;
}

}  // namespace kval::detail

KVAL_UINTEGER& KVAL_UINTEGER::ShlAssignWide(unsigned count) noexcept {
    const std::size_t size = kval::word_count(width);
    kval::words::shift_left(uvalue.words, size, uvalue.words, size, count);
    kval::words::shift_left(xmask.words, size, xmask.words, size, count);
    return Changed();
}

KVAL_UINTEGER& KVAL_UINTEGER::ShrAssignWide(unsigned count) noexcept {
    const std::size_t size = kval::word_count(width);
    // From the width on everything is gone, bits that were stored above the width included.
    const std::size_t kept = count < width ? size : 0;
    kval::words::shift_right(uvalue.words, size, uvalue.words, kept, count);
    kval::words::shift_right(xmask.words, size, xmask.words, kept, count);
    return Changed();
}
