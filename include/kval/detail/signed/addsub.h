// Sums and differences with a signed operand.
#ifndef KVAL_DETAIL_SIGNED_ADDSUB_H
#define KVAL_DETAIL_SIGNED_ADDSUB_H

#include "../addsub.h"
#include "representation.h"

namespace kval {
namespace detail {

/// Sums and differences where an operand or the result is large, in this order: signed + signed, signed + unsigned,
/// signed - signed, signed - unsigned, unsigned - signed. AddSignedLarge also takes small operands with bits above
/// their width. `flags` are those of the operand that the result takes its flags from. They throw std::bad_alloc.
/// @{
KVAL_API Result AddSignedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask,
                               unsigned a_width, unsigned b_width, unsigned flags);
KVAL_API Result AddMixedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask,
                              unsigned a_width, unsigned b_width, unsigned flags);
KVAL_API Result SubSignedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask,
                               unsigned a_width, unsigned b_width, unsigned flags);
KVAL_API Result SubMixedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask,
                              unsigned a_width, unsigned b_width, unsigned flags);
KVAL_API Result SubFromUnsignedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask,
                                     unsigned a_width, unsigned b_width, unsigned flags);
/// @}

/// Whether a difference at the common width shows the wrong sign. The right one, that of `a`, is then one bit further
/// up.
KVAL_INLINE bool difference_overflows(bool a_negative, bool b_negative, bool negative) noexcept {
    return a_negative != b_negative && negative != a_negative;
}

/// An operand or result in registers. A sum may have 65 bits, of which the lower 64 are here.
struct Register {
    unsigned width;
    std::uint64_t value;
    std::uint64_t mask;
    unsigned flags;

    KVAL_INLINE bool negative() const noexcept { return width > 64 || top_bit(value, width); }
    KVAL_INLINE void trim() noexcept {
        value &= used_bits(width);
        mask &= used_bits(width);
    }
    /// Sets the top bit as set_bit() does: the bit is known, and flag X goes when its word holds no X mark.
    KVAL_INLINE void set_top(bool top) noexcept {
        const unsigned place = (width - 1) & 63U;
        const std::uint64_t bit = std::uint64_t{1} << place;
        value = top ? value | bit : value & ~bit;
        mask &= ~bit;
        if (mask >> (place & 32U) == 0) flags = without_x(flags);
    }
    /// As if assigned to a signed value of another small width.
    KVAL_INLINE void assign(unsigned new_width) noexcept {
        const Planes bits = assigned({value, mask}, width, negative(), new_width);
        value = bits.value;
        mask = bits.mask;
        width = new_width;
    }
};

/// A small operand at the common width. An operand that already has this width is read as it is.
KVAL_INLINE Register extended(const KVAL_UINTEGER& v, bool negative, unsigned width) noexcept {
    const Planes bits = Fields::planes(v);
    Register result = {width, bits.value, bits.mask, Fields::flags(v)};
    if (v.bitwidth() == width) return result;
    if (negative) result.value |= ~std::uint64_t{0} << (v.bitwidth() & 63U);
    result.trim();
    return result;
}
KVAL_INLINE Register extended(const KVAL_SINTEGER& v, unsigned width) noexcept {
    return extended(v, is_negative(v), width);
}
KVAL_INLINE Register extended(const KVAL_UINTEGER& v, unsigned width) noexcept { return extended(v, false, width); }

/// The unsigned sum and difference of two operands of one width.
KVAL_INLINE Register unsigned_sum(const Register& a, const Register& b) noexcept {
    const std::uint64_t sum = a.value + b.value;
    Register result = {width_of_sum(sum, a.value, a.width), sum, b.mask, b.flags};
    if (is_small(result.width)) result.trim();
    return result;
}
KVAL_INLINE Register unsigned_difference(const Register& a, const Register& b) noexcept {
    Register result = {a.width, a.value - b.value, a.mask, a.flags};
    result.trim();
    return result;
}

KVAL_INLINE KVAL_SINTEGER result_of(const Register& r) noexcept {
    return small_result<KVAL_SINTEGER>(r.width, {r.value, r.mask}, r.flags);
}

// ---- by the rules of each operator, of small operands ----

/// Whether a small value has no value bits above its width.
KVAL_INLINE bool is_clean(const KVAL_UINTEGER& v) noexcept {
    return (Fields::value(v) & ~used_bits(v.bitwidth())) == 0;
}

/// The exact sum of clean operands. It is one bit wider where the unsigned sum carries out, or where two operands that
/// are not negative reach the sign. For two negative operands, the added bit is the sign. Otherwise it is set to 0 as
/// set_bit() does, and flag X goes when its word holds no X mark.
KVAL_INLINE Register exact_sum(const Register& a, const Register& b) noexcept {
    const unsigned width = a.width;
    const std::uint64_t sum = a.value + b.value;
    const unsigned carry =
        static_cast<unsigned>(sum >> 1 >> ((width - 1) & 63U) & 1U) | static_cast<unsigned>(sum < a.value);
    const unsigned a_negative = static_cast<unsigned>(a.negative());
    const unsigned b_negative = static_cast<unsigned>(b.negative());
    const unsigned reached = static_cast<unsigned>(top_bit(sum, width)) & ~(a_negative | b_negative);
    const unsigned grows = carry | reached;
    const unsigned sign = a_negative & b_negative;
    const std::uint64_t value = (sum & used_bits(width)) | static_cast<std::uint64_t>(sign) << (width & 63U);
    const bool no_x = b.mask >> (width & 32U) == 0;
    const unsigned flags = (grows & ~sign) != 0 && no_x ? without_x(b.flags) : b.flags;
    return {width + grows, value, b.mask, flags};
}

KVAL_INLINE Register sum_of(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    const unsigned width = wider_width(a, b);
    Register sum = unsigned_sum(extended(a, width), extended(b, width));
    if (is_negative(a)) {
        // This is b minus the magnitude of a; it wraps at the common width.
        sum.width = width;
        sum.trim();
    }
    sum.assign(width + 1);
    if (!is_negative(a) && sum.negative()) {
        // Deliberate: the sum shows a sign although no operand has one. The sign is cleared; but where the width of the
        // sum is a multiple of 32, it stays, and the sum grows by a zero bit.
        sum.width += static_cast<unsigned>(sum.width % 32 == 0);
        sum.set_top(false);
    }
    return sum;
}

KVAL_INLINE Register difference_of(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const unsigned width = wider_width(a, b);
    Register difference = unsigned_difference(extended(a, width), extended(b, width));
    // As signed assignment to the same width does, this drops the X marks in the top word of a wide negative value.
    if (width > 32) difference.assign(width);
    if (difference_overflows(is_negative(a), is_negative(b), difference.negative())) {
        // The sign moves up into one more bit. Only a sign of 1 is stored there, as set_bit() does.
        difference.width = width + 1;
        if (is_negative(a)) difference.set_top(true);
    }
    return difference;
}

KVAL_INLINE Register difference_of(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    const unsigned width = wider_width(a, b);
    return unsigned_difference(extended(a, width), extended(b, width));
}

/// Deliberate: the width comes from one operand. It may be less than the common one, and bits beyond it are lost.
KVAL_INLINE unsigned width_of_difference(unsigned a_width, unsigned b_width, bool b_negative, bool less) noexcept {
    if (b_negative) return a_width + 1;
    return less ? b_width : a_width;
}

KVAL_INLINE Register difference_of(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const unsigned width = wider_width(a, b);
    const Register x = extended(a, width);
    Register y = extended(b, width);
    const bool less = Fields::value(a) < Fields::value(b);
    const unsigned result_width = width_of_difference(a.bitwidth(), b.bitwidth(), is_negative(b), less);
    if (!is_negative(b)) {
        y = unsigned_difference(x, y);
    } else {
        y.value = 0 - y.value;
        y.trim();
        y = unsigned_sum(x, y);
    }
    if (is_small(result_width)) {
        y.assign(result_width);
    } else {
        y.width = result_width;
    }
    return y;
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using namespace kval::detail;
    if (are_small(a, b)) {
        const unsigned width = wider_width(a, b);
        const Register x = extended(a, width);
        const Register y = extended(b, width);
        if (__builtin_expect(is_clean(a) && is_clean(b) && (y.mask & ~used_bits(width)) == 0, true)) {
            const Register sum = exact_sum(x, y);
            if (is_small(sum.width)) return result_of(sum);
        }
    }
    return any_result<KVAL_SINTEGER>(binary_large(AddSignedLarge, a, b, Fields::flags(b)));
}

KVAL_INLINE KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using namespace kval::detail;
    if (are_small(a, b) && wider_width(a, b) < 64) {
        const Register sum = sum_of(a, b);
        if (is_small(sum.width)) return result_of(sum);
    }
    return any_result<KVAL_SINTEGER>(binary_large(AddMixedLarge, a, b, Fields::flags(b)));
}

KVAL_INLINE KVAL_SINTEGER operator+(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return b + a; }

KVAL_INLINE KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using namespace kval::detail;
    if (are_small(a, b)) {
        const Register difference = difference_of(a, b);
        if (is_small(difference.width)) return result_of(difference);
    }
    return any_result<KVAL_SINTEGER>(binary_large(SubSignedLarge, a, b, Fields::flags(a)));
}

KVAL_INLINE KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using namespace kval::detail;
    if (are_small(a, b)) return result_of(difference_of(a, b));
    return any_result<KVAL_SINTEGER>(binary_large(SubMixedLarge, a, b, Fields::flags(a)));
}

KVAL_INLINE KVAL_SINTEGER operator-(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    using namespace kval::detail;
    if (are_small(a, b)) {
        const Register difference = difference_of(a, b);
        if (is_small(difference.width)) return result_of(difference);
    }
    const unsigned flags = is_negative(b) ? Fields::flags(b) : Fields::flags(a);
    return any_result<KVAL_SINTEGER>(binary_large(SubFromUnsignedLarge, a, b, flags));
}

#endif
