// hand.h: the plain code that a user would write instead of using the library, as a measure for it. It is not tuned.
//
// Up to 64 bits a value is a struct of two 64-bit planes and its results are returned; above, it has two arrays of
// 64-bit limbs of a fixed capacity, and results are written into a value that is there already, so that nothing is
// allocated. Width, x-mask and flags come out as the library's do, for operands of one width; the library's rules for
// operands of unlike sizes are not repeated here.
#ifndef BENCH_HAND_H
#define BENCH_HAND_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace hand {

using Limb = std::uint64_t;
constexpr unsigned kLimbBits = 64;

enum Flag : std::uint8_t { kX = 1, kZ = 2, kWeakLow = 4, kWeakHigh = 8 };

/// The used bits of the top limb.
inline Limb top_mask(unsigned width) { return ~Limb{0} >> (-width % kLimbBits); }

inline std::size_t limb_count(unsigned width) { return (std::size_t{width} + kLimbBits - 1) / kLimbBits; }

// ---- up to 64 bits ----

struct Small {
    Limb value;
    Limb mask;
    unsigned width;
    std::uint8_t flags;

    bool operator==(const Small& other) const {
        return value == other.value && mask == other.mask && flags == other.flags;
    }
    bool operator<(const Small& other) const { return value < other.value; }
};

inline Small make(Limb number, unsigned width) { return {number & top_mask(width), 0, width, 0}; }

inline Small trimmed(Limb value, Limb mask, unsigned width, std::uint8_t flags) {
    const Limb top = top_mask(width);
    return {value & top, mask & top, width, flags};
}

inline Small all_x(unsigned width) { return {0, top_mask(width), width, kX}; }

/// The operand that gives the result its width and flags.
inline const Small& wider(const Small& l, const Small& r) { return l.width > r.width ? l : r; }

inline Small operator&(const Small& l, const Small& r) {
    const Limb l_ones = l.value & ~l.mask;
    const Limb r_ones = r.value & ~r.mask;
    return {l_ones & r_ones, (l_ones & r.mask) | (r_ones & l.mask), std::max(l.width, r.width), 0};
}

inline Small operator|(const Small& l, const Small& r) {
    const Limb l_ones = l.value & ~l.mask;
    const Limb r_ones = r.value & ~r.mask;
    return {l_ones | r_ones, (l.mask & ~r_ones) | (r.mask & ~l_ones), std::max(l.width, r.width), 0};
}

inline Small operator^(const Small& l, const Small& r) {
    const Small& wide = wider(l, r);
    if ((l.flags | r.flags) & kX) {
        return {wide.value, top_mask(wide.width), wide.width, static_cast<std::uint8_t>(wide.flags | kX)};
    }
    return {l.value ^ r.value, wide.mask, wide.width, wide.flags};
}

inline Small operator~(const Small& v) { return {~v.value & top_mask(v.width), v.mask, v.width, v.flags}; }

/// Of 63 bits at most, so that the sum fits the plane.
inline Small operator+(const Small& l, const Small& r) {
    const Small& wide = wider(l, r);
    const Limb sum = l.value + r.value;
    return {sum, wide.mask, wide.width + static_cast<unsigned>(sum >> wide.width & 1), wide.flags};
}

inline Small operator-(const Small& l, const Small& r) {
    return {(l.value - r.value) & top_mask(l.width), l.mask, l.width, l.flags};
}

/// The product has 64 bits at most.
inline Small operator*(const Small& l, const Small& r) {
    if ((l.flags | r.flags) & kX) return all_x(l.width + r.width);
    return {l.value * r.value, 0, l.width + r.width, 0};
}

inline Small operator/(const Small& l, const Small& r) {
    if (r.value == 0) return all_x(l.width);
    return {l.value / r.value, 0, l.width, 0};
}

inline Small operator%(const Small& l, const Small& r) {
    if (r.value == 0) return all_x(r.width);
    return {l.value % r.value & top_mask(r.width), 0, r.width, 0};
}

/// By less than the width.
inline Small operator>>(const Small& v, unsigned count) {
    return {v.value >> count, v.mask >> count, v.width - count, v.flags};
}

/// The result has 64 bits at most.
inline Small operator<<(const Small& v, unsigned count) {
    return {v.value << count, v.mask << count, v.width + count, v.flags};
}

inline Small& operator&=(Small& l, const Small& r) {
    const Limb l_ones = l.value & ~l.mask;
    const Limb r_ones = r.value & ~r.mask;
    l.value = l_ones & r_ones;
    l.mask = (l_ones & r.mask) | (r_ones & l.mask);
    l.flags |= r.flags;
    return l;
}

inline Small& operator|=(Small& l, const Small& r) {
    const Limb l_ones = l.value & ~l.mask;
    const Limb r_ones = r.value & ~r.mask;
    l.value = l_ones | r_ones;
    l.mask = (l.mask & ~r_ones) | (r.mask & ~l_ones);
    l.flags |= r.flags;
    return l;
}

inline Small& operator+=(Small& l, const Small& r) {
    l.value = (l.value + r.value) & top_mask(l.width);
    return l;
}

inline Small& operator-=(Small& l, const Small& r) {
    l.value = (l.value - r.value) & top_mask(l.width);
    return l;
}

inline Small& operator<<=(Small& v, unsigned count) {
    v.value = v.value << count & top_mask(v.width);
    v.mask = v.mask << count & top_mask(v.width);
    return v;
}

inline Small& operator>>=(Small& v, unsigned count) {
    v.value >>= count;
    v.mask >>= count;
    return v;
}

inline Small& operator++(Small& v) {
    v.value = (v.value + 1) & top_mask(v.width);
    return v;
}

inline Small& operator--(Small& v) {
    v.value = (v.value - 1) & top_mask(v.width);
    return v;
}

/// Assignment keeps the target's width.
inline Small& assign(Small& to, const Small& from) {
    const Limb top = top_mask(to.width);
    to.value = from.value & top;
    to.mask = from.mask & top;
    to.flags = from.flags;
    return to;
}

inline Small& assign(Small& to, Limb number) {
    to.value = number & top_mask(to.width);
    to.mask = 0;
    to.flags = 0;
    return to;
}

// ---- up to 64 bits, signed ----

struct SmallSigned : Small {};

inline std::int64_t number(const SmallSigned& v) {
    const unsigned above = kLimbBits - v.width;
    return static_cast<std::int64_t>(v.value << above) >> above;
}

inline bool negative(const Small& v) { return (v.value >> (v.width - 1) & 1) != 0; }

inline SmallSigned make_signed(std::int64_t number, unsigned width) { return {make(static_cast<Limb>(number), width)}; }

/// Of 63 bits at most. A bit wider when the bits carry out or the sum needs it.
inline SmallSigned operator+(const SmallSigned& a, const SmallSigned& b) {
    const unsigned width = std::max(a.width, b.width);
    const Limb common = top_mask(width);
    const auto x = static_cast<Limb>(number(a));
    const auto y = static_cast<Limb>(number(b));
    const Limb carry = ((x & common) + (y & common)) >> width & 1;
    const Limb sum = x + y;
    const Limb overflow = (sum >> width ^ sum >> (width - 1)) & 1;
    const unsigned grown = width + static_cast<unsigned>(carry | overflow);
    return {{sum & top_mask(grown), b.mask, grown, b.flags}};
}

/// Of 63 bits at most. A bit wider when the difference needs it.
inline SmallSigned operator-(const SmallSigned& a, const SmallSigned& b) {
    const unsigned width = std::max(a.width, b.width);
    const Limb difference = static_cast<Limb>(number(a)) - static_cast<Limb>(number(b));
    const unsigned grown = width + static_cast<unsigned>((difference >> width ^ difference >> (width - 1)) & 1);
    return {{difference & top_mask(grown), a.mask, grown, a.flags}};
}

/// The product has 64 bits at most.
inline SmallSigned operator*(const SmallSigned& a, const SmallSigned& b) {
    const unsigned width = a.width + b.width;
    if ((a.flags | b.flags) & kX) return {all_x(width)};
    return {{static_cast<Limb>(number(a) * number(b)) & top_mask(width), 0, width, 0}};
}

/// Of 32 bits at most, by less than the width: X bits and flags are lost.
inline SmallSigned operator>>(const SmallSigned& a, unsigned count) {
    return {{a.value >> count, 0, a.width - count, 0}};
}

inline bool operator<(const SmallSigned& a, const SmallSigned& b) { return number(a) < number(b); }

/// Toward zero; of 32 bits at most. The most negative number by -1 is out of range.
inline SmallSigned operator/(const SmallSigned& a, const SmallSigned& b) {
    const auto dividend = static_cast<std::int32_t>(number(a));
    const auto divisor = static_cast<std::int32_t>(number(b));
    const bool most_negative = a.value == Limb{1} << (a.width - 1);
    if (divisor == 0 || (most_negative && divisor == -1)) return {all_x(a.width)};
    return make_signed(dividend / divisor, a.width);
}

/// With the sign of the dividend; of 32 bits at most. The range is tested with the divisor's bits.
inline SmallSigned operator%(const SmallSigned& a, const SmallSigned& b) {
    const auto dividend = static_cast<std::int32_t>(number(a));
    const auto divisor = static_cast<std::int32_t>(number(b));
    const bool most_negative = a.value == Limb{1} << (a.width - 1);
    if (divisor == 0 || (most_negative && divisor == -1)) return {all_x(b.width)};
    const std::uint32_t magnitude = dividend < 0 ? 0U - static_cast<std::uint32_t>(dividend) : dividend;
    const Limb most_positive = b.width == 1 ? 0xFFFFFFFF : top_mask(b.width - 1);
    const Limb bound = dividend < 0 ? Limb{1} << (b.width - 1) : most_positive;
    if (magnitude % static_cast<std::uint32_t>(b.value) > bound) return {all_x(b.width)};
    return make_signed(dividend % divisor, b.width);
}

// ---- above 64 bits ----

struct Large {
    explicit Large(unsigned capacity_in_bits)
        : value(new Limb[limb_count(capacity_in_bits)]()), mask(new Limb[limb_count(capacity_in_bits)]()) {}

    std::size_t size() const { return limb_count(width); }

    std::unique_ptr<Limb[]> value;
    std::unique_ptr<Limb[]> mask;
    unsigned width = 1;
    std::uint8_t flags = 0;
};

inline void trim(Large& v) {
    const Limb top = top_mask(v.width);
    v.value[v.size() - 1] &= top;
    v.mask[v.size() - 1] &= top;
}

inline void force_x(Large& v) {
    std::fill_n(v.mask.get(), v.size(), ~Limb{0});
    v.flags |= kX;
    trim(v);
}

inline void make(Large& out, Limb number, unsigned width) {
    out.width = width;
    out.flags = 0;
    std::fill_n(out.value.get(), out.size(), Limb{0});
    std::fill_n(out.mask.get(), out.size(), Limb{0});
    out.value[0] = number;
    trim(out);
}

inline void copy(Large& out, const Large& from) {
    out.width = from.width;
    out.flags = from.flags;
    std::copy_n(from.value.get(), from.size(), out.value.get());
    std::copy_n(from.mask.get(), from.size(), out.mask.get());
}

/// Assignment keeps the target's width.
inline void assign(Large& to, const Large& from) {
    const std::size_t both = std::min(to.size(), from.size());
    std::copy_n(from.value.get(), both, to.value.get());
    std::copy_n(from.mask.get(), both, to.mask.get());
    std::fill_n(to.value.get() + both, to.size() - both, Limb{0});
    std::fill_n(to.mask.get() + both, to.size() - both, Limb{0});
    to.flags = from.flags;
    trim(to);
}

inline void assign(Large& to, Limb number) { make(to, number, to.width); }

inline void and_planes(Limb* value, Limb* mask, const Limb* lv, const Limb* lm, const Limb* rv, const Limb* rm,
                       std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        const Limb l_ones = lv[i] & ~lm[i];
        const Limb r_ones = rv[i] & ~rm[i];
        const Limb unknown = (l_ones & rm[i]) | (r_ones & lm[i]);
        value[i] = l_ones & r_ones;
        mask[i] = unknown;
    }
}

inline void or_planes(Limb* value, Limb* mask, const Limb* lv, const Limb* lm, const Limb* rv, const Limb* rm,
                      std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        const Limb l_ones = lv[i] & ~lm[i];
        const Limb r_ones = rv[i] & ~rm[i];
        const Limb unknown = (lm[i] & ~r_ones) | (rm[i] & ~l_ones);
        value[i] = l_ones | r_ones;
        mask[i] = unknown;
    }
}

inline void bit_and(Large& out, const Large& l, const Large& r) {
    out.width = l.width;
    out.flags = 0;
    and_planes(out.value.get(), out.mask.get(), l.value.get(), l.mask.get(), r.value.get(), r.mask.get(), l.size());
}

inline void bit_or(Large& out, const Large& l, const Large& r) {
    out.width = l.width;
    out.flags = 0;
    or_planes(out.value.get(), out.mask.get(), l.value.get(), l.mask.get(), r.value.get(), r.mask.get(), l.size());
}

inline void bit_xor(Large& out, const Large& l, const Large& r) {
    copy(out, r);
    if ((l.flags | r.flags) & kX) {
        force_x(out);
        return;
    }
    Limb* value = out.value.get();
    const Limb* from = l.value.get();
    for (std::size_t i = 0; i < r.size(); ++i) value[i] ^= from[i];
}

inline void bit_not(Large& out, const Large& v) {
    out.width = v.width;
    out.flags = v.flags;
    Limb* value = out.value.get();
    const Limb* from = v.value.get();
    for (std::size_t i = 0; i < v.size(); ++i) value[i] = ~from[i];
    std::copy_n(v.mask.get(), v.size(), out.mask.get());
    trim(out);
}

inline bool add_planes(Limb* out, const Limb* l, const Limb* r, std::size_t size) {
    bool carry = false;
    for (std::size_t i = 0; i < size; ++i) {
        Limb sum;
        const bool first = __builtin_add_overflow(l[i], r[i], &sum);
        carry = __builtin_add_overflow(sum, Limb{carry}, &out[i]) || first;
    }
    return carry;
}

inline bool subtract_planes(Limb* out, const Limb* l, const Limb* r, std::size_t size) {
    bool borrow = false;
    for (std::size_t i = 0; i < size; ++i) {
        Limb difference;
        const bool first = __builtin_sub_overflow(l[i], r[i], &difference);
        borrow = __builtin_sub_overflow(difference, Limb{borrow}, &out[i]) || first;
    }
    return borrow;
}

/// Adds a bit above the width; a capacity for it must be there.
inline void widen(Large& v, bool top) {
    const unsigned position = v.width++ % kLimbBits;
    const std::size_t last = v.size() - 1;
    if (position == 0) v.value[last] = v.mask[last] = 0;
    v.value[last] = (v.value[last] & ~(Limb{1} << position)) | Limb{top} << position;
    trim(v);
}

/// The carry of a sum whose limbs gave `limb_carry`: for a partial top limb it is the bit above the width.
inline bool carry_out(const Large& sum, bool limb_carry) {
    const unsigned top = sum.width % kLimbBits;
    return top == 0 ? limb_carry : (sum.value[sum.size() - 1] >> top & 1) != 0;
}

inline void add(Large& out, const Large& l, const Large& r) {
    out.width = r.width;
    out.flags = r.flags;
    const bool limb_carry = add_planes(out.value.get(), l.value.get(), r.value.get(), r.size());
    std::copy_n(r.mask.get(), r.size(), out.mask.get());
    if (carry_out(out, limb_carry)) {
        widen(out, true);
    } else {
        trim(out);
    }
}

inline void subtract(Large& out, const Large& l, const Large& r) {
    out.width = l.width;
    out.flags = l.flags;
    subtract_planes(out.value.get(), l.value.get(), r.value.get(), l.size());
    std::copy_n(l.mask.get(), l.size(), out.mask.get());
    trim(out);
}

inline void shift_right_plane(Limb* out, std::size_t size, const Limb* from, std::size_t from_size, unsigned count) {
    const std::size_t limbs = count / kLimbBits;
    const unsigned bits = count % kLimbBits;
    if (bits == 0) {
        std::copy_n(from + limbs, size, out);
        return;
    }
    for (std::size_t i = 0; i + 1 < size; ++i)
        out[i] = from[i + limbs] >> bits | from[i + limbs + 1] << (kLimbBits - bits);
    const std::size_t last = size - 1 + limbs;
    out[size - 1] = from[last] >> bits | (last + 1 < from_size ? from[last + 1] << (kLimbBits - bits) : 0);
}

inline void shift_left_plane(Limb* out, std::size_t size, const Limb* from, std::size_t from_size, unsigned count) {
    const std::size_t limbs = count / kLimbBits;
    const unsigned bits = count % kLimbBits;
    if (bits == 0) {
        std::copy_backward(from, from + (size - limbs), out + size);
    } else {
        const std::size_t last = size - 1 - limbs;
        const Limb below = last > 0 ? from[last - 1] >> (kLimbBits - bits) : 0;
        out[size - 1] = (last < from_size ? from[last] << bits : 0) | below;
        for (std::size_t i = last; i-- > 1;) out[i + limbs] = from[i] << bits | from[i - 1] >> (kLimbBits - bits);
        if (last > 0) out[limbs] = from[0] << bits;
    }
    std::fill_n(out, limbs, Limb{0});
}

/// By less than the width.
inline void shift_right(Large& out, const Large& v, unsigned count) {
    out.width = v.width - count;
    out.flags = v.flags;
    shift_right_plane(out.value.get(), out.size(), v.value.get(), v.size(), count);
    shift_right_plane(out.mask.get(), out.size(), v.mask.get(), v.size(), count);
    trim(out);
}

inline void shift_left(Large& out, const Large& v, unsigned count) {
    out.width = v.width + count;
    out.flags = v.flags;
    shift_left_plane(out.value.get(), out.size(), v.value.get(), v.size(), count);
    shift_left_plane(out.mask.get(), out.size(), v.mask.get(), v.size(), count);
}

inline Large& operator&=(Large& l, const Large& r) {
    and_planes(l.value.get(), l.mask.get(), l.value.get(), l.mask.get(), r.value.get(), r.mask.get(), l.size());
    l.flags |= r.flags;
    return l;
}

inline Large& operator|=(Large& l, const Large& r) {
    or_planes(l.value.get(), l.mask.get(), l.value.get(), l.mask.get(), r.value.get(), r.mask.get(), l.size());
    l.flags |= r.flags;
    return l;
}

inline Large& operator+=(Large& l, const Large& r) {
    add_planes(l.value.get(), l.value.get(), r.value.get(), l.size());
    trim(l);
    return l;
}

inline Large& operator-=(Large& l, const Large& r) {
    subtract_planes(l.value.get(), l.value.get(), r.value.get(), l.size());
    trim(l);
    return l;
}

inline Large& operator++(Large& v) {
    for (std::size_t i = 0; i < v.size() && ++v.value[i] == 0; ++i) {
    }
    trim(v);
    return v;
}

inline Large& operator--(Large& v) {
    for (std::size_t i = 0; i < v.size() && v.value[i]-- == 0; ++i) {
    }
    trim(v);
    return v;
}

/// By less than the width.
inline Large& operator>>=(Large& v, unsigned count) {
    const std::size_t rest = v.size() - count / kLimbBits;
    for (Limb* plane : {v.value.get(), v.mask.get()}) {
        shift_right_plane(plane, rest, plane, v.size(), count);
        std::fill_n(plane + rest, v.size() - rest, Limb{0});
    }
    return v;
}

/// By less than the width.
inline Large& operator<<=(Large& v, unsigned count) {
    for (Limb* plane : {v.value.get(), v.mask.get()}) shift_left_plane(plane, v.size(), plane, v.size(), count);
    trim(v);
    return v;
}

inline bool operator==(const Large& l, const Large& r) {
    return l.flags == r.flags && std::equal(l.value.get(), l.value.get() + l.size(), r.value.get()) &&
           std::equal(l.mask.get(), l.mask.get() + l.size(), r.mask.get());
}

inline bool operator<(const Large& l, const Large& r) {
    const Limb* a = l.value.get();
    const Limb* b = r.value.get();
    for (std::size_t i = l.size(); i-- > 0;) {
        if (a[i] != b[i]) return a[i] < b[i];
    }
    return false;
}

/// Schoolbook.
inline void multiply(Large& out, const Large& l, const Large& r) {
    make(out, 0, l.width + r.width);
    if ((l.flags | r.flags) & kX) {
        force_x(out);
        return;
    }
    Limb* product = out.value.get();
    const std::size_t size = out.size();
    for (std::size_t i = 0; i < l.size(); ++i) {
        Limb carry = 0;
        for (std::size_t j = 0; j < r.size(); ++j) {
            const unsigned __int128 sum =
                static_cast<unsigned __int128>(l.value[i]) * r.value[j] + product[i + j] + carry;
            product[i + j] = static_cast<Limb>(sum);
            carry = static_cast<Limb>(sum >> kLimbBits);
        }
        if (i + r.size() < size) product[i + r.size()] = carry;
    }
}

// ---- above 64 bits, signed ----

inline bool negative(const Large& v) { return (v.value[v.size() - 1] >> ((v.width - 1) % kLimbBits) & 1) != 0; }

/// A bit wider when the bits carry out or the sum needs it.
inline void add_signed(Large& out, const Large& a, const Large& b) {
    out.width = b.width;
    out.flags = b.flags;
    const bool limb_carry = add_planes(out.value.get(), a.value.get(), b.value.get(), b.size());
    std::copy_n(b.mask.get(), b.size(), out.mask.get());
    const bool overflow = negative(a) == negative(b) && negative(out) != negative(a);
    if (carry_out(out, limb_carry) || overflow) {
        widen(out, overflow ? negative(a) : negative(out));
    } else {
        trim(out);
    }
}

/// A bit wider when the difference needs it.
inline void subtract_signed(Large& out, const Large& a, const Large& b) {
    subtract(out, a, b);
    if (negative(a) != negative(b) && negative(out) != negative(a)) widen(out, negative(a));
}

inline bool less_signed(const Large& a, const Large& b) { return negative(a) != negative(b) ? negative(a) : a < b; }

}  // namespace hand

#endif
