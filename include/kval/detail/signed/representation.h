// The signed reading of a value: signs, extension, construction, assignment, resizing, negation and 32-bit readings.
#ifndef KVAL_DETAIL_SIGNED_REPRESENTATION_H
#define KVAL_DETAIL_SIGNED_REPRESENTATION_H

#include "../lifecycle.h"

namespace kval {
namespace detail {

/// The arrays of a large value made from a number. A negative one has ones up to the end of the top word.
KVAL_API Planes ConstructSignedLarge(int number, unsigned width);
/// As AssignLarge, but by the rule of signed assignment; and, for an unsigned source, never trimmed.
KVAL_API Planes AssignSignedLarge(std::uint64_t target, std::uint64_t target_mask, std::uint64_t from,
                                  std::uint64_t from_mask, unsigned width, unsigned from_width) noexcept;
KVAL_API Planes AssignUntrimmedLarge(std::uint64_t target, std::uint64_t target_mask, std::uint64_t from,
                                     std::uint64_t from_mask, unsigned width, unsigned from_width) noexcept;
/// As ResizeLarge, for a negative value.
KVAL_API Storage ResizeNegativeLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned capacity,
                                     unsigned new_width);
KVAL_API void NegateLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept;

/// Ones from bit `place` modulo 32 up.
KVAL_INLINE Word ones_from(unsigned place) noexcept { return 0xFFFFFFFFU << (place & 31U); }

/// The value bit at width - 1, X or not.
KVAL_INLINE bool top_bit(std::uint64_t value, unsigned width) noexcept {
    return (value >> ((width - 1) & 63U) & 1U) != 0;
}
KVAL_INLINE bool is_negative(const KVAL_UINTEGER& v) noexcept {
    const std::uint64_t value = Fields::value(v);
    const unsigned top = v.bitwidth() - 1;
    return is_small(v) ? top_bit(value, v.bitwidth()) : (array_of(value)[top / 32] >> top % 32 & 1U) != 0;
}

/// A small value as a number of 64 bits.
KVAL_INLINE std::uint64_t number(const KVAL_UINTEGER& v) noexcept { return Fields::value(v); }
KVAL_INLINE std::uint64_t number(const KVAL_SINTEGER& v) noexcept {
    const std::uint64_t value = Fields::value(v);
    const std::uint64_t sign = 0 - static_cast<std::uint64_t>(top_bit(value, v.bitwidth()));
    return value | sign << ((v.bitwidth() - 1) & 63U);
}

KVAL_INLINE const KVAL_UINTEGER& as_unsigned(const KVAL_SINTEGER& v) noexcept { return v; }

/// The low words of a negative source, with the ones that signed assignment adds to them for a small target.
KVAL_INLINE Planes sign_filled(Planes low, unsigned source_width, unsigned width) noexcept {
    const std::uint64_t ones = ~std::uint64_t{0};
    const unsigned place = source_width % 32;
    if (width <= 32) {
        // Deliberate: the ones start at the source's width modulo 32, even where the source has more words than one.
        return {place != 0 ? low.value | ones << place : low.value, low.mask};
    }
    // Deliberate, twice below: X marks in the word that is filled up with ones are dropped.
    if (source_width <= 32) return {low.value | ones << (source_width & 63U), place != 0 ? 0 : low.mask};
    if (place == 0) return low;
    // Deliberate: the ones start in the upper word, at the source's width modulo 32, even where the source has more
    // words than two.
    return {low.value | ones << (32 + place), source_width < 64 ? only(stored_bits(32), low).mask : low.mask};
}

/// The bits that a small target of `width` bits gets by signed assignment from the low 64 of a source.
KVAL_INLINE Planes assigned(Planes low, unsigned source_width, bool negative, unsigned width) noexcept {
    if (negative) return trimmed(sign_filled(low, source_width, width), width);
    // A source that is not negative never gives a negative target: the target's sign bit is cleared, and known.
    const std::uint64_t sign = std::uint64_t{1} << ((width - 1) & 63U);
    return trimmed((low.value & sign) != 0 ? only(~sign, low) : low, width);
}

KVAL_INLINE Planes constructed_signed(int number, unsigned width) {
    if (!is_small(width)) return ConstructSignedLarge(number, width);
    // Deliberate: a wide value is not trimmed, so that a negative one has ones above its width too.
    const std::uint64_t bits = static_cast<std::uint64_t>(number);
    return {width <= 32 ? bits & used_bits(width) : bits, 0};
}

/// The base of a new signed value made from a number.
KVAL_INLINE KVAL_UINTEGER signed_result(int number, unsigned width) {
    return any_result(width, constructed_signed(number, width), 0);
}

}  // namespace detail
}  // namespace kval

// ---- construction and release ----

KVAL_INLINE KVAL_SINTEGER::KVAL_SINTEGER(unsigned bit_width, kval::detail::Planes planes, unsigned state,
                                         unsigned words) noexcept
    : KVAL_UINTEGER(bit_width, planes, state, words) {}

KVAL_INLINE KVAL_SINTEGER::KVAL_SINTEGER(int value, unsigned bit_width)
    : KVAL_UINTEGER(kval::detail::signed_result(value, kval::detail::at_least_one(bit_width))) {}

KVAL_INLINE KVAL_SINTEGER::KVAL_SINTEGER(const KVAL_UINTEGER& other) : KVAL_UINTEGER(other) {}
KVAL_INLINE KVAL_SINTEGER::KVAL_SINTEGER(KVAL_UINTEGER&& other) noexcept
    : KVAL_UINTEGER(static_cast<KVAL_UINTEGER&&>(other)) {}
// Not defaulted: these must be inlined, like everything that takes a reference to a value.
// NOLINTNEXTLINE(modernize-use-equals-default)
KVAL_INLINE KVAL_SINTEGER::KVAL_SINTEGER(const KVAL_SINTEGER& other) : KVAL_UINTEGER(other) {}
KVAL_INLINE KVAL_SINTEGER::KVAL_SINTEGER(KVAL_SINTEGER&& other) noexcept
    : KVAL_UINTEGER(static_cast<KVAL_UINTEGER&&>(other)) {}
// NOLINTNEXTLINE(modernize-use-equals-default)
KVAL_INLINE KVAL_SINTEGER::~KVAL_SINTEGER() {}

KVAL_INLINE void swap(KVAL_SINTEGER& a, KVAL_SINTEGER& b) noexcept { kval::detail::exchange(a, b); }

// ---- assignment ----

// Deliberate: what comes from an unsigned value is not trimmed, so that bits of a wider source stay above the width.
KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::operator=(const KVAL_UINTEGER& other) {
    using namespace kval::detail;
    if (this == &other) return *this;
    if (is_small(width) && is_small(other) && width != 0) {
        Fields::set_planes(*this, only(stored_bits(width), Fields::planes(other)));
    } else if (width != 0) {
        Fields::set_planes(*this, binary_large(AssignUntrimmedLarge, *this, other));
    } else {
        adopt(*this, other);
        return *this;
    }
    Fields::set_flags(*this, Fields::flags(other));
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::operator=(const KVAL_SINTEGER& other) {
    using namespace kval::detail;
    if (this == &other) return *this;
    if (is_small(width) && is_small(other) && width != 0) {
        Fields::set_planes(*this, assigned(Fields::planes(other), other.bitwidth(), is_negative(other), width));
    } else if (width != 0) {
        Fields::set_planes(*this, binary_large(AssignSignedLarge, *this, other));
    } else {
        adopt(*this, other);
        return *this;
    }
    Fields::set_flags(*this, Fields::flags(other));
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::operator=(KVAL_UINTEGER&& other) noexcept {
    using namespace kval::detail;
    // Where the base's move takes over storage, it does what is needed here. Where it copies, it trims, which must not
    // happen here.
    if (width == 0 || (!is_small(width) && width == other.bitwidth())) {
        KVAL_UINTEGER::operator=(static_cast<KVAL_UINTEGER&&>(other));
        return *this;
    }
    return *this = static_cast<const KVAL_UINTEGER&>(other);
}

KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::operator=(KVAL_SINTEGER&& other) noexcept {
    using namespace kval::detail;
    if (this == &other) return *this;
    if (width == 0) {
        take(*this, other);
    } else if (!is_small(width) && width == other.bitwidth()) {
        exchange_planes(*this, other);
        // The words are now its own; this does to them what copy assignment would.
        binary_large(AssignSignedLarge, *this, *this);
        DeleteString();
    } else {
        *this = static_cast<const KVAL_SINTEGER&>(other);
    }
    return *this;
}

// ---- width and negation ----

KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::bitwidth(unsigned new_width) {
    using namespace kval::detail;
    if (!is_negative(*this)) {
        KVAL_UINTEGER::bitwidth(new_width);
        return *this;
    }
    if (new_width == width && width != 0) return *this;
    new_width = at_least_one(new_width);
    if (is_small(width) && is_small(new_width)) {
        const Planes bits = Fields::planes(*this);
        const std::uint64_t ones = width < 64 ? ~std::uint64_t{0} << width : 0;
        Fields::set_width(*this, new_width);
        return changed_trimmed(*this, {bits.value | ones, bits.mask});
    }
    const Storage resized = unary_large(ResizeNegativeLarge, *this, capacity, new_width);
    Fields::set_planes(*this, resized.planes);
    Fields::set_capacity(*this, resized.capacity);
    Fields::set_width(*this, new_width);
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_SINTEGER& KVAL_SINTEGER::complement_me() noexcept {
    using namespace kval::detail;
    if (is_small(*this)) return changed_value(*this, 0 - Fields::planes(*this).value);
    unary_large(NegateLarge, *this);
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_SINTEGER KVAL_SINTEGER::twos_complement() const {
    KVAL_SINTEGER copy(*this);
    copy.complement_me();
    return copy;
}

// ---- 32-bit readings ----

KVAL_INLINE int KVAL_SINTEGER::convert_to_signed_representation() const noexcept {
    using namespace kval::detail;
    const unsigned place = (bitwidth() - 1) & 31U;
    // Deliberate: where the sign is the only bit of the top word, the low word stays as it is.
    const bool alone = place == 0 && !IsCompact();
    return static_cast<int>(is_negative(*this) && !alone ? uint() | ones_from(place) : uint());
}

KVAL_INLINE int KVAL_SINTEGER::signed_value() const noexcept { return convert_to_signed_representation(); }
KVAL_INLINE bool KVAL_SINTEGER::positive() const noexcept { return signed_value() >= 0; }
KVAL_INLINE bool KVAL_SINTEGER::negative() const noexcept { return !positive(); }

KVAL_INLINE unsigned KVAL_SINTEGER::absolute_value() const noexcept {
    return positive() ? uint() : 0U - static_cast<unsigned>(signed_value());
}

KVAL_INLINE unsigned KVAL_SINTEGER::SignExtendedChunk(int index) const noexcept {
    const unsigned word = IsCompact() ? uint() : get_uvalue_at(index);
    return index == get_size() - 1 && get_top() != 0 ? word | kval::detail::ones_from(get_top()) : word;
}

namespace kval {
namespace detail {

KVAL_INLINE unsigned maximum_negative(unsigned width) noexcept { return 1U << ((width - 1) & 31U); }
KVAL_INLINE unsigned maximum_positive(unsigned width) noexcept {
    // Deliberate: the shift is taken modulo 32, so that a width of 1 gives all ones.
    return width > 32 ? 0xFFFFFFFFU : 0xFFFFFFFFU >> ((33U - width) & 31U);
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE unsigned KVAL_SINTEGER::maximum_negative() const noexcept {
    return kval::detail::maximum_negative(bitwidth());
}
KVAL_INLINE unsigned KVAL_SINTEGER::maximum_positive() const noexcept {
    return kval::detail::maximum_positive(bitwidth());
}

#endif
