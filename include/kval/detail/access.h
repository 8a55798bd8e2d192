// Access to bits, words and X marks.
#ifndef KVAL_DETAIL_ACCESS_H
#define KVAL_DETAIL_ACCESS_H

#include "storage.h"

namespace kval {
namespace detail {

/// Whether the value bits of a large value read `number`.
KVAL_API bool IsNumberLarge(std::uint64_t value, unsigned width, unsigned number) noexcept;
/// set_bit() in a large value. Returns whether the bit's x-mask word then holds no X; false outside the stored words,
/// where nothing is written.
KVAL_API bool SetBitLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned pos, Word bits) noexcept;
/// Every bit of a large value becomes X; both planes are trimmed.
KVAL_API void ForceXLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept;
[[noreturn]] KVAL_API void ThrowBitPosition();
[[noreturn]] KVAL_API void ThrowSetBitPosition();

KVAL_INLINE bool reads_number(const KVAL_UINTEGER& v, unsigned number) noexcept {
    if (is_small(v)) return Fields::value(v) == number;
    return IsNumberLarge(Fields::value(v), v.bitwidth(), number);
}

/// Word `index` of a plane, 0 outside the value.
KVAL_INLINE Word word_at(std::uint64_t plane, unsigned width, unsigned index) noexcept {
    if (is_small(width)) return index < 2 ? static_cast<Word>(plane >> 32 * index) : 0;
    return index < word_count(width) ? array_of(plane)[index] : 0;
}

/// The plane after a raw store of word `index`; a large one is changed in its array. A compact value has only one word,
/// and every index means that one. Other values ignore an index outside the value.
KVAL_INLINE std::uint64_t with_word(std::uint64_t plane, unsigned width, unsigned index, Word word) noexcept {
    if (width <= 32) return word;
    if (is_small(width)) {
        const unsigned shift = 32 * (index & 1U);
        const std::uint64_t others = plane & ~(std::uint64_t{0xFFFFFFFFU} << shift);
        return index < 2 ? others | static_cast<std::uint64_t>(word) << shift : plane;
    }
    if (index < word_count(width)) array_of(plane)[index] = word;
    return plane;
}

/// The place of bit `pos` in the plane of a small value; a place of 64 or more is outside. A compact value has only one
/// word, and takes every position modulo 32.
KVAL_INLINE unsigned place_of(unsigned pos, unsigned width) noexcept { return width <= 32 ? pos % 32 : pos; }

/// Bit `pos` of a plane, 0 outside the stored words.
KVAL_INLINE unsigned bit_at(std::uint64_t plane, unsigned width, unsigned pos) noexcept {
    if (!is_small(width)) return word_at(plane, width, pos >> 5) >> (pos & 31U) & 1U;
    const unsigned place = place_of(pos, width);
    return place < 64 ? static_cast<unsigned>(plane >> place) & 1U : 0;
}

KVAL_INLINE KVAL_UINTEGER& flagged(KVAL_UINTEGER& v, unsigned flag) noexcept {
    Fields::set_flags(v, Fields::flags(v) | flag);
    v.DeleteString();
    return v;
}

}  // namespace detail
}  // namespace kval

// ---- reading ----

KVAL_INLINE unsigned KVAL_UINTEGER::uint() const noexcept {
    using namespace kval::detail;
    return is_small(width) ? static_cast<unsigned>(uvalue.bits) : array_of(uvalue.bits)[0];
}

KVAL_INLINE bool KVAL_UINTEGER::is_zero() const noexcept { return kval::detail::reads_number(*this, 0); }
KVAL_INLINE bool KVAL_UINTEGER::is_one() const noexcept { return kval::detail::reads_number(*this, 1); }

KVAL_INLINE unsigned KVAL_UINTEGER::get_uvalue_at(int index) const noexcept {
    return kval::detail::word_at(uvalue.bits, width, static_cast<unsigned>(index));
}

KVAL_INLINE unsigned KVAL_UINTEGER::get_xmask_at(int index) const noexcept {
    return kval::detail::word_at(xmask.bits, width, static_cast<unsigned>(index));
}

KVAL_INLINE unsigned KVAL_UINTEGER::bit(unsigned pos) const {
    if (pos > width) kval::detail::ThrowBitPosition();
    return kval::detail::bit_at(uvalue.bits, width, pos);
}

KVAL_INLINE bool KVAL_UINTEGER::is_x(int pos, int nibble) const noexcept {
    using namespace kval::detail;
    if (nibble != 1) return bit_at(xmask.bits, width, static_cast<unsigned>(pos)) != 0;
    const unsigned index = IsCompact() ? 0 : static_cast<unsigned>(pos >> 3);
    Word group = word_at(xmask.bits, width, index) >> (4U * (static_cast<unsigned>(pos) & 7U)) & 15U;
    // The partial top group ends at the width, and a group above the width has no bits.
    const std::int64_t rest = static_cast<std::int64_t>(width) - 4 * static_cast<std::int64_t>(pos);
    if (rest <= 3) group &= rest > 0 ? (1U << rest) - 1U : 0U;
    return group != 0;
}

// ---- writing ----

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_uvalue_at(int index, unsigned word) noexcept {
    uvalue.bits = kval::detail::with_word(uvalue.bits, width, static_cast<unsigned>(index), word);
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_xmask_at(int index, unsigned word) noexcept {
    xmask.bits = kval::detail::with_word(xmask.bits, width, static_cast<unsigned>(index), word);
    return *this;
}

// Deliberate: the x-mask word of this bit alone decides on flag X, even where another word still holds X bits. And a
// `value` of more than one bit reaches into the bits above `pos`, though not beyond the word.
KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_bit(int pos, unsigned value) {
    using namespace kval::detail;
    if (static_cast<int>(width) < pos) ThrowSetBitPosition();
    const unsigned place = place_of(static_cast<unsigned>(pos), width);
    bool known = false;
    if (!is_small(width)) {
        known = unary_large(SetBitLarge, *this, place, value);
    } else if (place < 64) {
        const std::uint64_t others = ~(std::uint64_t{1} << place);
        const std::uint64_t bits = static_cast<std::uint64_t>(value << (place & 31U)) << (place & 32U);
        Fields::set_planes(*this, {(uvalue.bits & others) | bits, xmask.bits & others});
        known = static_cast<Word>(xmask.bits >> (place & 32U)) == 0;
    }
    if (known) Fields::set_flags(*this, without_x(Fields::flags(*this)));
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_x(int pos) noexcept {
    using namespace kval::detail;
    if (pos < 0 || pos >= static_cast<int>(width)) return *this;
    const unsigned place = static_cast<unsigned>(pos);
    if (is_small(width)) {
        xmask.bits |= std::uint64_t{1} << (place & 63U);
    } else {
        array_of(xmask.bits)[place / 32] |= 1U << place % 32;
    }
    return flagged(*this, kX);
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::force_x() noexcept {
    using namespace kval::detail;
    if (is_small(width)) {
        Fields::set_planes(*this, trimmed({uvalue.bits, ~std::uint64_t{0}}, width));
    } else {
        unary_large(ForceXLarge, *this);
    }
    return flagged(*this, kX);
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::force_z() noexcept { return kval::detail::flagged(*this, kval::detail::kZ); }
KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::force_wl() noexcept {
    return kval::detail::flagged(*this, kval::detail::kWeakLow);
}
KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::force_wh() noexcept {
    return kval::detail::flagged(*this, kval::detail::kWeakHigh);
}

#endif
