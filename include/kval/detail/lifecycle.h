// Construction, copying, assignment, resizing and release.
#ifndef KVAL_DETAIL_LIFECYCLE_H
#define KVAL_DETAIL_LIFECYCLE_H

#include "storage.h"

namespace kval {
namespace detail {

/// New arrays for large values. Both functions throw std::bad_alloc, and then leave nothing behind.
KVAL_API Planes ConstructLarge(unsigned number, unsigned width);
KVAL_API Planes CopyLarge(std::uint64_t value, std::uint64_t mask, unsigned width);
/// The storage at another width, where the old or the new width is large. The old storage is used up: its arrays are
/// kept or released. Bits above the new width are cleared. Throws std::bad_alloc, and then has changed nothing.
KVAL_API Storage ResizeLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned capacity,
                             unsigned new_width);

/// The planes of a target after assignment, where it or the source is large: the source's bits, cut or zero-extended,
/// and trimmed where the widths differ. A large target keeps its arrays.
KVAL_API Planes AssignLarge(std::uint64_t target, std::uint64_t target_mask, std::uint64_t from,
                            std::uint64_t from_mask, unsigned width, unsigned from_width) noexcept;
KVAL_API void AssignNumberLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned number) noexcept;
/// Clears the bits above a large width.
KVAL_API void TrimLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept;

KVAL_API void ReleaseLarge(std::uint64_t value, std::uint64_t mask, unsigned capacity) noexcept;
KVAL_API void DeleteText(const char* text) noexcept;
/// Sets whether this thread keeps the arrays of its dead values from now on. Those that it has kept so far go back to
/// the heap. For tests and tools that count what is taken from the heap, or that watch the bounds of arrays.
KVAL_API void KeepArrays(bool keep) noexcept;

KVAL_INLINE Planes constructed(unsigned number, unsigned width) {
    if (!is_small(width)) return ConstructLarge(number, width);
    return {number & used_bits(width), 0};
}
KVAL_INLINE Planes copied(const KVAL_UINTEGER& v) {
    return is_small(v) ? Fields::planes(v) : unary_large(CopyLarge, v);
}

/// Copy assignment to a moved-from value, which takes the width as well.
KVAL_INLINE void adopt(KVAL_UINTEGER& v, const KVAL_UINTEGER& other) {
    Fields::set_planes(v, copied(other));
    Fields::set_capacity(v, capacity_of(other.bitwidth()));
    Fields::set_width(v, other.bitwidth());
    Fields::set_flags(v, Fields::flags(other));
    v.DeleteString();
}

/// Moves everything but the text into `v`, which owns no arrays and perhaps a text. `from` is left moved-from: no
/// width, no bits, no flags and no text.
KVAL_INLINE void take(KVAL_UINTEGER& v, KVAL_UINTEGER& from) noexcept {
    v.DeleteString();
    Fields::set_width(v, from.bitwidth());
    Fields::set_planes(v, Fields::planes(from));
    Fields::set_capacity(v, Fields::capacity(from));
    Fields::set_flags(v, Fields::flags(from));
    from.DeleteString();
    Fields::set_width(from, 0);
    Fields::set_planes(from, {0, 0});
    Fields::set_capacity(from, 0);
    Fields::set_flags(from, 0);
}

/// Exchanges the planes and flags of two values. The second loses its text; the caller sees to that of the first.
KVAL_INLINE void exchange_planes(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept {
    const Planes planes = Fields::planes(a);
    const unsigned capacity = Fields::capacity(a);
    const unsigned flags = Fields::marks(a);
    Fields::set_planes(a, Fields::planes(b));
    Fields::set_capacity(a, Fields::capacity(b));
    Fields::set_flags(a, Fields::marks(b));
    Fields::set_planes(b, planes);
    Fields::set_capacity(b, capacity);
    Fields::set_flags(b, flags);
    b.DeleteString();
}

/// Exchanges everything.
KVAL_INLINE void exchange(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept {
    const unsigned width = a.bitwidth();
    const Kept text_of_a = Fields::take_text(a);
    const Kept text_of_b = Fields::take_text(b);
    exchange_planes(a, b);
    Fields::set_width(a, b.bitwidth());
    Fields::set_width(b, width);
    Fields::set_text(a, text_of_b.text, text_of_b.kind);
    Fields::set_text(b, text_of_a.text, text_of_a.kind);
}

}  // namespace detail
}  // namespace kval

// A delegating constructor would keep the object in memory: the compiler must be able to destroy it should the body
// still throw. So no constructor delegates to another one.

KVAL_INLINE KVAL_UINTEGER::KVAL_UINTEGER(unsigned bit_width, kval::detail::Planes planes, unsigned state,
                                         unsigned words) noexcept
    : width(bit_width), text_cache(nullptr), flags(static_cast<std::uint8_t>(state)), capacity(words) {
    kval::detail::Fields::set_planes(*this, planes);
}

KVAL_INLINE KVAL_UINTEGER::KVAL_UINTEGER(unsigned value, unsigned bit_width)
    : width(kval::detail::at_least_one(bit_width)),
      text_cache(nullptr),
      flags(0),
      capacity(kval::detail::capacity_of(width)) {
    kval::detail::Fields::set_planes(*this, kval::detail::constructed(value, width));
}

KVAL_INLINE KVAL_UINTEGER::KVAL_UINTEGER(const KVAL_UINTEGER& other)
    : width(other.width),
      text_cache(nullptr),
      flags(static_cast<std::uint8_t>(kval::detail::Fields::flags(other))),
      capacity(kval::detail::capacity_of(width)) {
    kval::detail::Fields::set_planes(*this, kval::detail::copied(other));
}

KVAL_INLINE KVAL_UINTEGER::KVAL_UINTEGER(KVAL_UINTEGER&& other) noexcept : text_cache(nullptr) {
    kval::detail::take(*this, other);
}

KVAL_INLINE KVAL_UINTEGER::~KVAL_UINTEGER() {
    DeleteString();
    if (__builtin_expect(capacity != 0, false)) kval::detail::ReleaseLarge(uvalue.bits, xmask.bits, capacity);
}

// Where the widths are equal, even bits above them are copied.
KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator=(const KVAL_UINTEGER& other) {
    using namespace kval::detail;
    if (this == &other) return *this;
    if (width == other.width && is_small(width)) {
        Fields::set_planes(*this, Fields::planes(other));
    } else if (is_small(width) && is_small(other) && width != 0) {
        Fields::set_planes(*this, trimmed(Fields::planes(other), width));
    } else if (width != 0) {
        Fields::set_planes(*this, binary_large(AssignLarge, *this, other));
    } else {
        adopt(*this, other);
        return *this;
    }
    Fields::set_flags(*this, Fields::flags(other));
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator=(KVAL_UINTEGER&& other) noexcept {
    using namespace kval::detail;
    if (this == &other) return *this;
    const unsigned state = Fields::flags(other);
    if (width == other.width && is_small(width)) {
        Fields::set_planes(*this, Fields::planes(other));
    } else if (is_small(width) && is_small(other) && width != 0) {
        Fields::set_planes(*this, trimmed(Fields::planes(other), width));
    } else if (width == other.width || width == 0) {
        exchange_planes(*this, other);
        if (width == 0) {  // a moved-from target takes the width as well, and leaves the source moved-from
            width = other.width;
            other.width = 0;
        }
    } else {
        Fields::set_planes(*this, binary_large(AssignLarge, *this, other));
    }
    Fields::set_flags(*this, state);
    DeleteString();
    return *this;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::operator=(unsigned value) noexcept {
    using namespace kval::detail;
    Fields::set_flags(*this, 0);
    if (is_small(width)) {
        if (width == 0) width = 32;
        return changed_trimmed(*this, {value, 0});
    }
    unary_large(AssignNumberLarge, *this, value);
    DeleteString();
    return *this;
}

KVAL_INLINE void swap(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept { kval::detail::exchange(a, b); }

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::bitwidth(unsigned new_width) {
    using namespace kval::detail;
    // A moved-from value has no width to keep, not even when asked for 0 bits, which means 1.
    if (new_width == width && width != 0) return *this;
    new_width = at_least_one(new_width);
    if (is_small(width) && is_small(new_width)) {
        width = new_width;
        return changed_trimmed(*this, Fields::planes(*this));
    }
    const Storage resized = unary_large(ResizeLarge, *this, capacity, new_width);
    Fields::set_planes(*this, resized.planes);
    capacity = resized.capacity;
    width = new_width;
    DeleteString();
    return *this;
}

KVAL_INLINE void KVAL_UINTEGER::EnforceWidth() noexcept {
    using namespace kval::detail;
    if (is_small(width)) {
        Fields::set_planes(*this, trimmed(Fields::planes(*this), width));
    } else {
        unary_large(TrimLarge, *this);
    }
}

KVAL_INLINE void KVAL_UINTEGER::DeleteString() noexcept {
    if (__builtin_expect(text_cache == nullptr, true)) return;
    kval::detail::DeleteText(text_cache);
    text_cache = nullptr;
}

KVAL_INLINE void KVAL_UINTEGER::DeleteData() noexcept {
    if (kval::detail::is_small(width)) return;
    kval::detail::ReleaseLarge(uvalue.bits, xmask.bits, capacity);
    kval::detail::Fields::set_planes(*this, {0, 0});
    capacity = 0;
}

#endif
