// Multiplication of wide values, and the messages of division and remainder, which are compact only.
#include <algorithm>

#include "kval.h"
#include "value/scratch.h"
#include "value/storage.h"
#include "words/multiply.h"

namespace {

// Thrown as char*, so that they cannot be constants.
char divide_width[] = "KVAL_UINTEGER operator / only supports division between 32 bit KVAL_UINTEGERs";
char remainder_width[] = "KVAL_UINTEGER operator % only supports division between 32 bit KVAL_UINTEGERs";

}  // namespace

namespace kval::detail {

KVAL_UINTEGER Internals::MulWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const unsigned width = KVAL_UINTEGER::AtLeastOne(l.width + r.width);
    if (l.is_x() || r.is_x()) {
        KVAL_UINTEGER all_x(0, width);
        all_x.force_x();
        return all_x;
    }
    // A wide operand has a compact product only where the sum of the widths wraps.
    if (KVAL_UINTEGER::IsCompact(static_cast<int>(width))) return TrimmedResult(width, {l.uint() * r.uint(), 0}, 0);
    const View a = Words(l);
    const View b = Words(r);
    const std::size_t size = word_count(width);
    KVAL_UINTEGER result(width, size, 0);
    Scratch scratch(words::multiply_scratch(size, a.size, b.size));
    words::multiply(result.uvalue.words, size, a.value, a.size, b.value, b.size, scratch.words());
    std::fill_n(result.xmask.words, size, Word{0});
    result.EnforceWidth();
    return result;
}

void Internals::ThrowDivideWidth() { throw static_cast<char*>(divide_width); }

void Internals::ThrowRemainderWidth() { throw static_cast<char*>(remainder_width); }

}  // namespace kval::detail
