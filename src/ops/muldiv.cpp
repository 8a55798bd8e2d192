// Multiplication of wide values, and the messages of division and remainder, which are compact only.
#include <algorithm>
#include <cstdio>

#include "kval.h"
#include "value/storage.h"
#include "words/multiply.h"

namespace {

// A message that outlives its throw: formatted once, into storage of its own.
struct Message {
    explicit Message(const char* format) { std::snprintf(text, sizeof text, format, 32); }
    char text[96];
};

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
    const View& longer = a.size > b.size ? a : b;
    const View& shorter = a.size > b.size ? b : a;
    const std::size_t size = word_count(width);
    KVAL_UINTEGER result(width, size, 0);
    words::multiply(result.uvalue.words, size, longer.value, longer.size, shorter.value, shorter.size);
    std::fill_n(result.xmask.words, size, Word{0});
    result.EnforceWidth();
    return result;
}

void Internals::ThrowDivideWidth() {
    static Message message("KVAL_UINTEGER operator / only supports division between %d bit KVAL_UINTEGERs");
    throw static_cast<char*>(message.text);
}

void Internals::ThrowRemainderWidth() {
    static Message message("KVAL_UINTEGER operator %% only supports division between %d bit KVAL_UINTEGERs");
    throw static_cast<char*>(message.text);
}

}  // namespace kval::detail
