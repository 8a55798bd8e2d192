// Text: the cached text of a value, and values from text.
#ifndef KVAL_DETAIL_TEXT_H
#define KVAL_DETAIL_TEXT_H

#include "storage.h"

namespace kval {
namespace detail {

/// A new text of a value of any width. Throws std::bad_alloc.
/// @{
KVAL_API char* HexadecimalText(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned flags);
KVAL_API char* BinaryText(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned flags);
/// @}

/// The fields of a value that is about to be parsed from a text. Its cached text is among them, as the text to be
/// parsed may lie in it.
struct Parsed {
    Storage storage;
    char* text;
    unsigned width;
    unsigned flags;
};
/// Changes the fields as the text says. Throws std::bad_alloc, and then has changed nothing.
/// @{
KVAL_API void ParseHexadecimal(const char* text, Parsed& fields);
KVAL_API void ParseBinary(const char* text, Parsed& fields);
/// @}

KVAL_INLINE Parsed before_parse(const KVAL_UINTEGER& v) noexcept {
    return {{Fields::planes(v), Fields::capacity(v)}, Fields::text(v), v.bitwidth(), Fields::flags(v)};
}
KVAL_INLINE KVAL_UINTEGER& after_parse(KVAL_UINTEGER& v, const Parsed& parsed, unsigned kind) noexcept {
    Fields::set_width(v, parsed.width);
    Fields::set_planes(v, parsed.storage.planes);
    Fields::set_capacity(v, parsed.storage.capacity);
    Fields::set_flags(v, parsed.flags);
    Fields::set_text(v, parsed.text, kind);
    return v;
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE const char* KVAL_UINTEGER::as_hex_string() const {
    using namespace kval::detail;
    if (text_cache != nullptr && !Fields::has_binary_text(*this)) return text_cache;
    char* const text = HexadecimalText(Fields::value(*this), Fields::mask(*this), width, flags);
    if (text_cache != nullptr) DeleteText(text_cache);
    Fields::set_text(*this, text, 0);
    return text;
}

KVAL_INLINE const char* KVAL_UINTEGER::as_bin_string() const {
    using namespace kval::detail;
    if (text_cache != nullptr && Fields::has_binary_text(*this)) return text_cache;
    char* const text = BinaryText(Fields::value(*this), Fields::mask(*this), width, flags);
    if (text_cache != nullptr) DeleteText(text_cache);
    Fields::set_text(*this, text, kBinaryText);
    return text;
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_value_from_hex_string(const char* text) {
    using namespace kval::detail;
    Parsed fields = before_parse(*this);
    ParseHexadecimal(text, fields);
    return after_parse(*this, fields, 0);
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::set_value_from_bin_string(const char* text) {
    using namespace kval::detail;
    Parsed fields = before_parse(*this);
    ParseBinary(text, fields);
    return after_parse(*this, fields, kBinaryText);
}

#endif
