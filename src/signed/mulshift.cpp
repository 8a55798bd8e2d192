// Products with a signed operand that are wide, and the arithmetic right shifts of wide values.
#include <algorithm>

#include "kval.h"
#include "signed/extended.h"
#include "value/scratch.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/multiply.h"

namespace kval::detail {
namespace {

// By the stored words, of which a moved-from value has one.
std::size_t scratch_size(const KVAL_UINTEGER& v, bool negative) { return negative ? Internals::Words(v).size : 0; }

// The words of an operand's magnitude: the stored ones where it is not negative, else negated ones in `scratch`.
Internals::View magnitude(const KVAL_UINTEGER& v, bool negative, Word* scratch) {
    Internals::View words = Internals::Words(v);
    if (!negative) return words;
    words::negate(scratch, words.value, words.size);
    scratch[words.size - 1] &= Internals::TopMask(v.bitwidth());
    words.value = scratch;
    return words;
}

}  // namespace

// The product of the magnitudes, negated when the signs differ; an unsigned operand is never negative.
KVAL_SINTEGER SignedInternals::ProductWide(const KVAL_UINTEGER& a, bool a_negative, const KVAL_UINTEGER& b,
                                           bool b_negative) {
    const unsigned width = KVAL_UINTEGER::AtLeastOne(a.width + b.width);
    if (a.is_x() || b.is_x()) {
        KVAL_SINTEGER all_x(0, width);
        all_x.force_x();
        return all_x;
    }
    // Where the sum of the widths is too large to be one, a single bit is left.
    if (width == 1) return Result(1, {a.uint() & b.uint() & 1U, 0}, 0);
    const std::size_t a_scratch = scratch_size(a, a_negative);
    const std::size_t magnitudes = a_scratch + scratch_size(b, b_negative);
    const std::size_t size = word_count(width);
    Scratch scratch(magnitudes + words::multiply_scratch(size, Internals::Words(a).size, Internals::Words(b).size));
    const Internals::View x = magnitude(a, a_negative, scratch.words());
    const Internals::View y = magnitude(b, b_negative, scratch.words() + a_scratch);
    const bool negative = a_negative != b_negative;
    KVAL_SINTEGER product(width, size, 0);
    words::multiply(product.uvalue.words, size, x.value, x.size, y.value, y.size, scratch.words() + magnitudes);
    std::fill_n(product.xmask.words, size, Word{0});
    if (negative) words::negate(product.uvalue.words, product.uvalue.words, size);
    product.EnforceWidth();
    return product;
}

KVAL_SINTEGER SignedInternals::MulWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return ProductWide(a, Negative(a), b, Negative(b));
}

KVAL_SINTEGER SignedInternals::MulWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return ProductWide(a, Negative(a), b, false);
}

}  // namespace kval::detail

using kval::detail::OnesFrom;
using kval::detail::SignedInternals;
using kval::words::Word;

KVAL_SINTEGER& KVAL_SINTEGER::ShrAssignNegativeWide(unsigned count) noexcept {
    const std::size_t size = kval::word_count(width);
    if (SignedInternals::ShiftedOut(width, count)) {
        std::fill_n(uvalue.words, size, ~Word{0});
        Changed();
        return *this;
    }
    ShrAssignWide(count);
    const unsigned filled = SignedInternals::FilledWords(get_top(), count);
    const std::size_t whole = std::min<std::size_t>(filled, size);
    std::fill_n(uvalue.words + (size - whole), whole, ~Word{0});
    if (filled < size) uvalue.words[size - 1 - filled] |= OnesFrom(SignedInternals::FillStart(get_top(), count));
    EnforceWidth();
    return *this;
}
