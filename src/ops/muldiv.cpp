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

Planes Internals::MulWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    const unsigned width = l.width + r.width;
    const std::size_t size = word_count(width);
    const bool all_x = l.is_x() || r.is_x();
    const View a = Words(l);
    const View b = Words(r);
    Scratch scratch(all_x ? 0 : words::multiply_scratch(size, a.size, b.size));
    const Planes result = take_planes(width);
    if (all_x) {
        std::fill_n(result.value, size, Word{0});
    } else {
        words::multiply(result.value, size, a.value, a.size, b.value, b.size, scratch.words());
    }
    std::fill_n(result.mask, size, all_x ? ~Word{0} : Word{0});
    Trim(result, width);
    return result;
}

void Internals::ThrowDivideWidth() { throw static_cast<char*>(divide_width); }

void Internals::ThrowRemainderWidth() { throw static_cast<char*>(remainder_width); }

}  // namespace kval::detail
