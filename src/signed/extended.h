// Signed and unsigned operands read at a common width.
#pragma once

#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/fit.h"

namespace kval::detail {

using words::Word;

/// An operand as it is read at a common width: a negative one is extended by ones, any other by zeros. One that has
/// this width already is read as it is, bits above the width included.
struct Operand {
    Operand(const KVAL_SINTEGER& v) : number(v), negative(SignedInternals::Negative(v)) {}
    Operand(const KVAL_UINTEGER& v) : number(v), negative(false) {}

    /// The extended words: the stored ones where they will do, else they are written to `out`.
    const Word* words(unsigned width, Word* out) const {
        const Internals::View own = Internals::Words(number);
        if (number.bitwidth() == width) return own.value;
        const std::size_t size = word_count(width);
        words::copy(out, own.value, own.size);
        if (negative) out[own.size - 1] |= top_ones();
        std::fill(out + own.size, out + size, negative ? ~Word{0} : Word{0});
        out[size - 1] &= Internals::TopMask(width);
        return out;
    }
    /// X bits are extended by known ones.
    void copy_mask(unsigned width, Word* out) const {
        const Internals::View own = Internals::Words(number);
        const std::size_t size = word_count(width);
        words::fit(out, size, own.mask, own.size);
        if (number.bitwidth() != width) out[size - 1] &= Internals::TopMask(width);
    }
    /// What extension by ones adds to the top word.
    [[nodiscard]] Word top_ones() const { return number.get_top() != 0 ? OnesFrom(number.get_top()) : 0; }

    const KVAL_UINTEGER& number;
    bool negative;
};

/// What signed assignment makes of the words that were copied from a source of `source_width` bits into the arrays of a
/// wide target of `width` bits: extends or cuts them in place.
void assign_signed(Word* value, Word* mask, unsigned source_width, bool negative, unsigned width);

}  // namespace kval::detail
