// Signed and unsigned operands read at a common width, word by word, without a copy.
#pragma once

#include <algorithm>

#include "kval.h"
#include "value/storage.h"
#include "words/fit.h"

namespace kval::detail {

using words::DoubleWord;
using words::Word;

/// An operand extended to `width` bits: by ones where it is negative and signed, else by zeros. One that has this width
/// already is read as it is, bits above the width included.
class ExtendedWords {
  public:
    ExtendedWords(const KVAL_UINTEGER& v, unsigned width, bool negative)
        : own_(Internals::Words(v)), size_(word_count(width)), plain_(size_), fill_(negative ? ~Word{0} : 0) {
        if (v.bitwidth() == width) return;
        plain_ = std::min(own_.size - 1, size_);
        if (negative && v.get_top() != 0) ones_ = OnesFrom(v.get_top());
        top_mask_ = Internals::TopMask(width);
    }
    ExtendedWords(const KVAL_SINTEGER& v, unsigned width) : ExtendedWords(v, width, SignedInternals::Negative(v)) {}
    ExtendedWords(const KVAL_UINTEGER& v, unsigned width) : ExtendedWords(v, width, false) {}

    /// The words of the common width.
    [[nodiscard]] std::size_t size() const { return size_; }
    /// How many low words are the stored ones as they are.
    [[nodiscard]] std::size_t plain() const { return plain_; }
    [[nodiscard]] const Word* stored() const { return own_.value; }

    [[nodiscard]] Word value(std::size_t i) const {
        Word word = i < own_.size ? own_.value[i] : fill_;
        if (i + 1 == own_.size) word |= ones_;
        return i + 1 == size_ ? word & top_mask_ : word;
    }
    void copy_mask(Word* out) const {
        words::fit(out, size_, own_.mask, own_.size);
        out[size_ - 1] &= top_mask_;
    }
    [[nodiscard]] Word low_mask() const { return own_.mask[0]; }

  private:
    Internals::View own_;
    std::size_t size_;
    std::size_t plain_;
    Word ones_ = 0;             // what sign extension adds to the own top word
    Word fill_;                 // the words beyond it
    Word top_mask_ = ~Word{0};  // the used bits of the common top word
};

/// The two's complement of a negative operand at the width at which it is read: its magnitude.
class NegatedWords {
  public:
    NegatedWords(const ExtendedWords& words, unsigned width) : words_(words), top_mask_(Internals::TopMask(width)) {
        while (lowest_ + 1 < words.size() && words.value(lowest_) == 0) ++lowest_;
    }

    [[nodiscard]] std::size_t size() const { return words_.size(); }
    /// Above the lowest word that is not 0, negation is inversion.
    [[nodiscard]] Word value(std::size_t i) const {
        Word word = 0;
        if (i == lowest_) word = 0 - words_.value(i);
        if (i > lowest_) word = ~words_.value(i);
        return i + 1 == words_.size() ? word & top_mask_ : word;
    }

  private:
    const ExtendedWords& words_;
    std::size_t lowest_ = 0;
    Word top_mask_;
};

/// Whether `a` < `b` as unsigned numbers; words beyond either end count as 0.
template <typename A, typename B>
bool less(const A& a, const B& b) {
    for (std::size_t i = std::max(a.size(), b.size()); i-- > 0;) {
        const Word x = i < a.size() ? a.value(i) : 0;
        const Word y = i < b.size() ? b.value(i) : 0;
        if (x != y) return x < y;
    }
    return false;
}

/// What signed assignment makes of the words that were copied from a source of `source_width` bits into the arrays of a
/// wide target of `width` bits: extends or cuts them in place.
void assign_signed(Word* value, Word* mask, unsigned source_width, bool negative, unsigned width);

}  // namespace kval::detail
