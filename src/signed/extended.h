// Operands at a common width, and results in progress, for large sums and differences with a signed operand.
#pragma once

#include <algorithm>

#include "ops/addsub.h"
#include "value/storage.h"
#include "words/fit.h"

namespace kval {

using detail::Result;

/// An operand as it is read at a common width: a negative one is extended by ones, any other by zeros. An operand that
/// already has this width is read as it is, bits above the width included.
struct Extended {
    /// The extended words: the stored ones where these will do, else the ones that are written to `out`.
    const Word* words(unsigned width, Word* out) const {
        if (own.width == width) return own.value;
        const std::size_t size = word_count(width);
        words::copy(out, own.value, own.size);
        if (negative) out[own.size - 1] |= top_ones();
        std::fill(out + own.size, out + size, negative ? ~Word{0} : Word{0});
        out[size - 1] &= detail::used_of_top_word(width);
        return out;
    }
    /// The bits added by extension are known: the x-mask is extended by zeros.
    void copy_mask(unsigned width, Word* out) const {
        const std::size_t size = word_count(width);
        words::fit(out, size, own.mask, own.size);
        if (own.width != width) out[size - 1] &= detail::used_of_top_word(width);
    }
    /// What extension by ones adds to the top word.
    [[nodiscard]] Word top_ones() const { return own.width % words::kWordBits != 0 ? detail::ones_from(own.width) : 0; }

    const Operand& own;
    bool negative;
};

/// A signed operand, and an unsigned one.
inline Extended by_sign(const Operand& v) { return {v, v.is_negative()}; }
inline Extended by_zeros(const Operand& v) { return {v, false}; }

/// A result in progress, with room for the two bits by which it may outgrow the common width. It owns its arrays until
/// they are handed out. At a small common width, its words are in this object.
class Growing {
  public:
    /// Throws std::bad_alloc.
    Growing(unsigned common_width, unsigned result_flags);
    ~Growing() {
        if (is_large(common_width_) && arrays_.value != nullptr) give_arrays(arrays_, capacity());
    }
    Growing(const Growing&) = delete;
    Growing& operator=(const Growing&) = delete;

    [[nodiscard]] Word* value() const { return arrays_.value; }
    [[nodiscard]] Word* mask() const { return arrays_.mask; }
    [[nodiscard]] bool is_negative() const {
        return (arrays_.value[(width - 1) / words::kWordBits] >> (width - 1) % words::kWordBits & 1U) != 0;
    }
    void trim() const { kval::trim(arrays_, width); }

    /// Ends an unsigned sum of this width; throws std::bad_alloc where it grows too wide.
    void finish_sum(bool carry) { width = finished_sum(arrays_, width, carry); }
    /// Adds a zero bit at the top; throws std::bad_alloc where that makes it too wide.
    void widen();
    /// Sets the top bit as set_bit() does: the bit is known, and flag X goes when its word holds no X mark.
    void set_top(bool top);
    /// As if assigned to a signed value of another width, which is large where the common one is; throws std::bad_alloc
    /// where that is too wide.
    void assign(unsigned new_width);

    /// Hands out the arrays, or the bits of a small result. Throws std::bad_alloc.
    Result result();

    unsigned width;
    unsigned flags;

  private:
    [[nodiscard]] std::size_t capacity() const { return word_count(std::size_t{common_width_} + 2); }

    unsigned common_width_;
    Word few_[6];
    Arrays arrays_;
};

/// Completes signed assignment to a large target of `width` bits. Its arrays already have the words copied from a
/// source of `source_width` bits, which are extended or cut in place.
void assign_signed(const Arrays& target, unsigned source_width, bool negative, unsigned width);

}  // namespace kval
