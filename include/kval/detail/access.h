// Access to bits, words and X marks.
#ifndef KVAL_DETAIL_ACCESS_H
#define KVAL_DETAIL_ACCESS_H

#include "storage.h"

namespace kval {
namespace detail {

/// Whether the value bits of a large value read `number`.
KVAL_API bool IsNumberLarge(std::uint64_t value, unsigned width, unsigned number) noexcept;
/// Every bit of a large value becomes X; both planes are trimmed.
KVAL_API void ForceXLarge(Planes planes, unsigned width) noexcept;
[[noreturn]] KVAL_API void ThrowBitPosition();
[[noreturn]] KVAL_API void ThrowSetBitPosition();

KVAL_INLINE bool reads_number(const KVAL_UINTEGER& v, unsigned number) noexcept {
    if (is_small(v)) return Fields::planes(v).value == number;
    return IsNumberLarge(Fields::planes(v).value, v.bitwidth(), number);
}

/// The word that holds bit `pos`. A compact value has one word, which every position falls into, modulo 32.
KVAL_INLINE unsigned word_of_bit(const KVAL_UINTEGER& v, int pos) noexcept {
    return v.IsCompact() ? 0 : static_cast<unsigned>(pos >> 5);
}

KVAL_INLINE void store_value_word(KVAL_UINTEGER& v, unsigned index, Word word) noexcept {
    Planes planes = Fields::planes(v);
    planes.value = with_word(planes.value, v.bitwidth(), index, word);
    Fields::set_planes(v, planes);
}
KVAL_INLINE void store_mask_word(KVAL_UINTEGER& v, unsigned index, Word word) noexcept {
    Planes planes = Fields::planes(v);
    planes.mask = with_word(planes.mask, v.bitwidth(), index, word);
    Fields::set_planes(v, planes);
}
/// Whether raw stores reach a word of this index, and into which one: a compact value has one for every index.
KVAL_INLINE bool has_word(const KVAL_UINTEGER& v, unsigned* index) noexcept {
    if (v.IsCompact()) *index = 0;
    return v.IsCompact() || *index < word_count(v.bitwidth());
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
    using namespace kval::detail;
    if (pos > width) ThrowBitPosition();
    // A width of whole words has no word for the position equal to it, unless it is compact: 32 is then 0.
    const unsigned word = word_at(uvalue.bits, width, word_of_bit(*this, static_cast<int>(pos)));
    return word >> (pos & 31U) & 1U;
}

KVAL_INLINE bool KVAL_UINTEGER::is_x(int pos, int nibble) const noexcept {
    using namespace kval::detail;
    const unsigned place = static_cast<unsigned>(pos);
    if (nibble != 1) return (word_at(xmask.bits, width, word_of_bit(*this, pos)) >> (place & 31U) & 1U) != 0;
    const unsigned index = IsCompact() ? 0 : static_cast<unsigned>(pos >> 3);
    Word group = word_at(xmask.bits, width, index) >> (4U * (place & 7U)) & 15U;
    // The partial top group ends at the width, and a group above the width has no bits.
    const std::int64_t rest = static_cast<std::int64_t>(width) - 4 * static_cast<std::int64_t>(pos);
    if (rest <= 3) group &= rest > 0 ? (1U << rest) - 1U : 0U;
    return group != 0;
}

// ---- writing ----

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_uvalue_at(int index, unsigned word) noexcept {
    unsigned at = static_cast<unsigned>(index);
    if (kval::detail::has_word(*this, &at)) kval::detail::store_value_word(*this, at, word);
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_xmask_at(int index, unsigned word) noexcept {
    unsigned at = static_cast<unsigned>(index);
    if (kval::detail::has_word(*this, &at)) kval::detail::store_mask_word(*this, at, word);
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_bit(int pos, unsigned value) {
    using namespace kval::detail;
    if (static_cast<int>(width) < pos) ThrowSetBitPosition();
    unsigned index = static_cast<unsigned>(pos) >> 5;
    if (has_word(*this, &index)) {
        const unsigned place = static_cast<unsigned>(pos) & 31U;
        const Word others = ~(1U << place);
        const Word mask = word_at(xmask.bits, width, index) & others;
        store_value_word(*this, index, (word_at(uvalue.bits, width, index) & others) | value << place);
        store_mask_word(*this, index, mask);
        // Deliberate: this one x-mask word decides, even where another word still holds X bits.
        if (mask == 0) Fields::set_flags(*this, without_x(Fields::flags(*this)));
    }
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_x(int pos) noexcept {
    using namespace kval::detail;
    if (pos < 0 || pos >= static_cast<int>(width)) return *this;
    const unsigned index = static_cast<unsigned>(pos) >> 5;
    store_mask_word(*this, index, word_at(xmask.bits, width, index) | 1U << (static_cast<unsigned>(pos) & 31U));
    return flagged(*this, kX);
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::force_x() noexcept {
    using namespace kval::detail;
    if (is_small(width)) {
        Fields::set_planes(*this, trimmed({uvalue.bits, ~std::uint64_t{0}}, width));
    } else {
        ForceXLarge(Fields::planes(*this), width);
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
