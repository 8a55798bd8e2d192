// Hexadecimal and binary text: written into a value's cache, and read into a value.
#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "kval.h"
#include "value/storage.h"
#include "words/digits.h"

using kval::detail::Internals;
using kval::words::Word;

namespace {

struct Radix {
    unsigned bits_per_digit;
    void (*write)(char* text, std::size_t digits, const Word* value, const Word* unknown, Word top_mask);
};
constexpr Radix kHexadecimal{4, kval::words::write_hexadecimal};
constexpr Radix kBinary{1, kval::words::write_binary};

// The letters of a value marked Z, weak low or weak high, in place of its digits. Deliberate: a letter goes to the
// mirrored place of its digit, an X to its own. They may fall on each other, where the one that belongs to the higher
// digit stays, and a place may be left as a zero byte.
void replace_by_letters(char* text, std::size_t digits, const KVAL_UINTEGER& v) {
    const char weak = v.is_wl() ? 'L' : 'H';
    const char letter = v.is_z() ? 'Z' : weak;
    if (std::memchr(text, 'X', digits) == nullptr) {
        std::memset(text, letter, digits);
        return;
    }
    for (std::size_t left = 0; 2 * left < digits; ++left) {
        char& high = text[left];
        char& low = text[digits - 1 - left];
        const bool high_is_x = high == 'X';
        const bool low_is_x = low == 'X';
        const char unless_low = low_is_x ? '\0' : letter;
        const char if_low = low_is_x ? 'X' : '\0';
        high = high_is_x ? 'X' : unless_low;
        low = high_is_x ? if_low : letter;
    }
}

template <const Radix& kRadix>
char* new_text(const KVAL_UINTEGER& v) {
    const std::size_t digits = (std::size_t{v.bitwidth()} + kRadix.bits_per_digit - 1) / kRadix.bits_per_digit;
    char* text = new char[digits + 1];
    const Internals::View words = Internals::Words(v);
    // X marks above the width do not show, value bits there do: deliberate.
    kRadix.write(text, digits, words.value, words.mask, Internals::TopMask(v.bitwidth()));
    if (v.is_z() || v.is_wl() || v.is_wh()) replace_by_letters(text, digits, v);
    text[digits] = '\0';
    return text;
}

// A text to be parsed, with the room for its copy, which is taken before anything changes: new, or that of the cached
// text where it has the same length. The text may be the cached one itself, or lie in it.
class Source {
  public:
    Source(const char* given, unsigned bits_per_digit, const char* cached)
        : text(given != nullptr ? given : ""), length(std::strlen(text)) {
        kval::check_width(length * bits_per_digit);
        if (cached == nullptr || std::strlen(cached) != length) room_.reset(new char[length + 1]);
    }

    /// The copy; `cached` is the cached text still.
    char* copied(char* cached) {
        char* const copy = room_ != nullptr ? room_.release() : cached;
        std::memmove(copy, text, length + 1);
        return copy;
    }

    const char* const text;
    const std::size_t length;

  private:
    std::unique_ptr<char[]> room_;
};

// Holds the cached text of a value that changes its width, since the text to be parsed may lie in it; then puts it
// back, whether there was memory for the new width or not.
class HeldText {
  public:
    explicit HeldText(char*& text_cache) : place_(text_cache), text_(std::exchange(text_cache, nullptr)) {}
    ~HeldText() { place_ = text_; }
    HeldText(const HeldText&) = delete;
    HeldText& operator=(const HeldText&) = delete;

  private:
    char*& place_;
    char* text_;
};

}  // namespace

// Caches a text in place of the old one.
const char* KVAL_UINTEGER::KeepText(char* text, std::uint8_t kind) const noexcept {
    if (text != text_cache) delete[] text_cache;
    text_cache = text;
    flags = static_cast<std::uint8_t>((flags & ~kBinaryText) | kind);
    return text;
}

const char* KVAL_UINTEGER::as_hex_string() const {
    if (text_cache != nullptr && (flags & kBinaryText) == 0) return text_cache;
    return KeepText(new_text<kHexadecimal>(*this), 0);
}

const char* KVAL_UINTEGER::as_bin_string() const {
    if (text_cache != nullptr && (flags & kBinaryText) != 0) return text_cache;
    return KeepText(new_text<kBinary>(*this), kBinaryText);
}

KVAL_UINTEGER& KVAL_UINTEGER::set_value_from_bin_string(const char* text) {
    Source source(text, kBinary.bits_per_digit, text_cache);
    {
        const HeldText held(text_cache);
        bitwidth(static_cast<unsigned>(source.length));
        if (std::memchr(source.text, 'X', source.length) != nullptr) force_x();
    }
    Word* const value = IsCompact() ? &uvalue.word : uvalue.words;
    Word* const mask = IsCompact() ? &xmask.word : xmask.words;
    // As set_bit does for each digit: a word left without X clears the flag, whatever the other words hold.
    if (kval::words::read_binary(value, mask, source.text, source.length)) {
        flags = static_cast<std::uint8_t>(flags & ~kX);
    }
    KeepText(source.copied(text_cache), kBinaryText);
    EnforceWidth();
    return *this;
}

KVAL_UINTEGER& KVAL_UINTEGER::set_value_from_hex_string(const char* text) {
    Source source(text, kHexadecimal.bits_per_digit, text_cache);
    {
        const HeldText held(text_cache);
        bitwidth(static_cast<unsigned>(source.length) * kHexadecimal.bits_per_digit);
    }
    Word* const value = IsCompact() ? &uvalue.word : uvalue.words;
    Word* const mask = IsCompact() ? &xmask.word : xmask.words;
    kval::words::read_hexadecimal(value, mask, source.text, source.length);
    KeepText(source.copied(text_cache), 0);
    EnforceWidth();
    return *this;
}
