// Where the bits of a value are, and the steps that every operation is made of. Read this one first.
//
// Two pairs of words are kept apart. Small (1 to 64 bits) and large (65 and up) say where the bits are: in the object,
// or in two arrays. Compact (1 to 32 bits, one word) and wide (33 and up) say which rules apply, as IsCompact() tells.
//
// An operation has one body for small operands, here in the headers, in 64-bit registers. Where an operand or the
// result is large, the operation is one call of a function ...Large of the library. This takes and returns planes,
// which are bits or arrays as the width says: bits of a small value, arrays of a large one.
#ifndef KVAL_DETAIL_STORAGE_H
#define KVAL_DETAIL_STORAGE_H

#include "four_state.h"
#include "planes.h"

namespace kval {
namespace detail {

/// A cached text and its kind: kBinaryText, or 0 for hexadecimal.
struct Kept {
    char* text;
    unsigned kind;
};

/// Processors are slow to read in one piece what was just written in parts. So this keeps compilers from joining two
/// neighbouring fields in a vector, where they are written one by one. A constant stays a constant.
KVAL_INLINE std::uint64_t apart(std::uint64_t field) noexcept {
    if (!__builtin_constant_p(field)) __asm__("" : "+r"(field));
    return field;
}

/// The one way to the fields of a value.
struct Fields {
    static_assert(sizeof(KVAL_UINTEGER) == 40, "the object layout is part of the binary interface");
    static_assert(offsetof(KVAL_UINTEGER, width) == 0 && offsetof(KVAL_UINTEGER, uvalue) == 8 &&
                      offsetof(KVAL_UINTEGER, xmask) == 16 && offsetof(KVAL_UINTEGER, text_cache) == 24 &&
                      offsetof(KVAL_UINTEGER, flags) == 32 && offsetof(KVAL_UINTEGER, capacity) == 36,
                  "the order of the fields is part of the binary interface");

    KVAL_INLINE static Planes planes(const KVAL_UINTEGER& v) noexcept { return {v.uvalue.bits, v.xmask.bits}; }
    KVAL_INLINE static std::uint64_t value(const KVAL_UINTEGER& v) noexcept { return v.uvalue.bits; }
    KVAL_INLINE static std::uint64_t mask(const KVAL_UINTEGER& v) noexcept { return v.xmask.bits; }
    /// The flags to be carried along. They include kBinaryText, which means nothing without a text.
    KVAL_INLINE static unsigned flags(const KVAL_UINTEGER& v) noexcept { return v.flags; }
    /// The flags to be compared.
    KVAL_INLINE static unsigned marks(const KVAL_UINTEGER& v) noexcept { return v.flags & kFourState; }
    KVAL_INLINE static unsigned capacity(const KVAL_UINTEGER& v) noexcept { return v.capacity; }
    KVAL_INLINE static char* text(const KVAL_UINTEGER& v) noexcept { return v.text_cache; }
    KVAL_INLINE static bool has_binary_text(const KVAL_UINTEGER& v) noexcept { return (v.flags & kBinaryText) != 0; }

    KVAL_INLINE static void set_width(KVAL_UINTEGER& v, unsigned width) noexcept { v.width = width; }
    KVAL_INLINE static void set_planes(KVAL_UINTEGER& v, Planes planes) noexcept {
        v.uvalue.bits = planes.value;
        v.xmask.bits = apart(planes.mask);
    }
    /// New value bits for a small value; both planes are trimmed.
    KVAL_INLINE static void set_value(KVAL_UINTEGER& v, std::uint64_t value) noexcept;
    KVAL_INLINE static void set_capacity(KVAL_UINTEGER& v, unsigned capacity) noexcept { v.capacity = capacity; }
    KVAL_INLINE static void set_flags(KVAL_UINTEGER& v, unsigned flags) noexcept {
        v.flags = static_cast<std::uint8_t>(flags);
    }
    /// The text, and which kind it is, may change in a value that is otherwise const.
    KVAL_INLINE static void set_text(const KVAL_UINTEGER& v, char* text, unsigned kind) noexcept {
        v.text_cache = text;
        v.flags = static_cast<std::uint8_t>((v.flags & kFourState) | kind);
    }

    KVAL_INLINE static Kept take_text(KVAL_UINTEGER& v) noexcept {
        const Kept kept = {v.text_cache, v.flags & static_cast<unsigned>(kBinaryText)};
        v.text_cache = nullptr;
        return kept;
    }

    /// A value with these fields, as they are.
    template <typename Value>
    KVAL_INLINE static Value make(unsigned width, Planes planes, unsigned flags, unsigned capacity) noexcept {
        return Value(width, planes, flags, capacity);
    }
};

// ---- small and large ----

/// The small case comes first: compilers lay it out as the straight way.
KVAL_INLINE bool is_small(unsigned width) noexcept { return __builtin_expect(width <= 64, true); }
KVAL_INLINE bool is_small(const KVAL_UINTEGER& v) noexcept { return is_small(v.bitwidth()); }
KVAL_INLINE bool are_small(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    return is_small(l) && is_small(r);
}
KVAL_INLINE unsigned at_least_one(unsigned width) noexcept { return static_cast<int>(width) > 0 ? width : 1; }
KVAL_INLINE unsigned word_count(unsigned width) noexcept { return (width + 31) / 32; }

// ---- calls into the library ----

/// Calls a function ...Large with the fields of its operands, each as an argument of its own: g++ would first put a
/// struct together in memory.
template <typename Made, typename... Parameters, typename... More>
KVAL_INLINE Made unary_large(Made (*function)(Parameters...), const KVAL_UINTEGER& v, More... more) {
    return function(Fields::value(v), Fields::mask(v), v.bitwidth(), more...);
}
template <typename Made, typename... Parameters, typename... More>
KVAL_INLINE Made binary_large(Made (*function)(Parameters...), const KVAL_UINTEGER& l, const KVAL_UINTEGER& r,
                              More... more) {
    return function(Fields::value(l), Fields::mask(l), Fields::value(r), Fields::mask(r), l.bitwidth(), r.bitwidth(),
                    more...);
}

// ---- bits in registers ----

/// The bits within a small width.
KVAL_INLINE std::uint64_t used_bits(unsigned width) noexcept { return ~std::uint64_t{0} >> (-width & 63U); }
/// The bits of the stored words of a small width.
KVAL_INLINE std::uint64_t stored_bits(unsigned width) noexcept { return ~std::uint64_t{0} >> (width > 32 ? 0 : 32); }
/// The used bits of the top word of any width.
KVAL_INLINE Word used_of_top_word(unsigned width) noexcept { return 0xFFFFFFFFU >> (-width & 31U); }
KVAL_INLINE void Fields::set_value(KVAL_UINTEGER& v, std::uint64_t value) noexcept {
    const std::uint64_t used = used_bits(v.width);
    v.uvalue.bits = apart(value & used);
    v.xmask.bits &= used;
}
KVAL_INLINE Planes only(std::uint64_t which, Planes bits) noexcept { return {bits.value & which, bits.mask & which}; }
KVAL_INLINE Planes trimmed(Planes bits, unsigned width) noexcept { return only(used_bits(width), bits); }

/// The array of a plane of a large value.
KVAL_INLINE Word* array_of(std::uint64_t plane) noexcept {
    return reinterpret_cast<Word*>(plane);  // NOLINT(performance-no-int-to-ptr)
}

// ---- flags ----

KVAL_INLINE unsigned with_x(unsigned flags) noexcept { return flags | kX; }
KVAL_INLINE unsigned without_x(unsigned flags) noexcept { return flags & ~static_cast<unsigned>(kX); }
/// Flag X where one of the operands has it, else 0.
KVAL_INLINE unsigned any_x(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    return (Fields::flags(l) | Fields::flags(r)) & kX;
}

// ---- the wider operand ----

/// What a result starts from where the rule says "the wider operand". Of two equally wide operands, that is the right
/// one. The fields are chosen one by one: a reference to one of two values would keep both of them in memory.
struct Wider {
    unsigned width;
    unsigned flags;
    Planes planes;
};
KVAL_INLINE Wider wider(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    const bool left = l.bitwidth() > r.bitwidth();
    const Planes of_l = Fields::planes(l);
    const Planes of_r = Fields::planes(r);
    return {left ? l.bitwidth() : r.bitwidth(),
            left ? Fields::flags(l) : Fields::flags(r),
            {left ? of_l.value : of_r.value, left ? of_l.mask : of_r.mask}};
}
KVAL_INLINE unsigned wider_width(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    return l.bitwidth() > r.bitwidth() ? l.bitwidth() : r.bitwidth();
}

// ---- results ----

/// The length of the arrays of a result.
KVAL_INLINE unsigned capacity_of(unsigned width) noexcept { return is_small(width) ? 0 : word_count(width); }

/// A small result with its bits as they are.
template <typename Value = KVAL_UINTEGER>
KVAL_INLINE Value small_result(unsigned width, Planes bits, unsigned flags) noexcept {
    return Fields::make<Value>(width, bits, flags, 0);
}
template <typename Value = KVAL_UINTEGER>
KVAL_INLINE Value trimmed_result(unsigned width, Planes bits, unsigned flags) noexcept {
    return small_result<Value>(width, trimmed(bits, width), flags);
}
/// A small result with every bit X, over the given value bits.
template <typename Value = KVAL_UINTEGER>
KVAL_INLINE Value all_x_result(unsigned width, std::uint64_t value, unsigned flags) noexcept {
    return trimmed_result<Value>(width, {value, ~std::uint64_t{0}}, with_x(flags));
}
/// A result from a function of the library, of any width.
template <typename Value = KVAL_UINTEGER>
KVAL_INLINE Value any_result(unsigned width, Planes planes, unsigned flags) noexcept {
    return Fields::make<Value>(width, planes, flags, capacity_of(width));
}
/// What a function of the library returns where it decides on the width or on flag X.
struct Result {
    Storage storage;
    unsigned width;
    unsigned flags;
};
template <typename Value = KVAL_UINTEGER>
KVAL_INLINE Value any_result(const Result& result) noexcept {
    return Fields::make<Value>(result.width, result.storage.planes, result.flags, result.storage.capacity);
}

// ---- changes in place ----

/// Ends an operation in place on a small value.
template <typename Value>
KVAL_INLINE Value& changed(Value& v, Planes bits) noexcept {
    Fields::set_planes(v, bits);
    v.DeleteString();
    return v;
}
template <typename Value>
KVAL_INLINE Value& changed_trimmed(Value& v, Planes bits) noexcept {
    return changed(v, trimmed(bits, v.bitwidth()));
}
/// Ends an operation in place that was done in the library.
template <typename Value>
KVAL_INLINE Value& changed_large(Value& v, Planes planes) noexcept {
    Fields::set_planes(v, planes);
    v.DeleteString();
    return v;
}
/// Ends an operation in place that changes only the value bits of a small value; both planes are trimmed.
template <typename Value>
KVAL_INLINE Value& changed_value(Value& v, std::uint64_t value) noexcept {
    Fields::set_value(v, value);
    v.DeleteString();
    return v;
}

}  // namespace detail
}  // namespace kval

#endif
