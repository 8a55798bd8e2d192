// Hexadecimal and binary text: written into a value's cache, and read into a value.
#include <algorithm>
#include <cstring>
#include <memory>

#include "kval.h"
#include "value/storage.h"
#include "words/digits.h"

namespace kval::detail {
namespace {

struct Radix {
    unsigned bits_per_digit;
    void (*write)(char* text, std::size_t digits, const Word* value, const Word* unknown, Word top_mask);
};
constexpr Radix kHexadecimal{4, words::write_hexadecimal};
constexpr Radix kBinary{1, words::write_binary};

// Puts the letter of a value marked Z, weak low or weak high in place of its digits. Deliberate: the letter goes to the
// mirrored place of its digit, an X to its own place. Where two fall on one place, the one that belongs to the higher
// digit stays. A place that gets neither is left as a zero byte.
void replace_by_letters(char* text, std::size_t digits, unsigned flags) {
    const char weak = (flags & kWeakLow) != 0 ? 'L' : 'H';
    const char letter = (flags & kZ) != 0 ? 'Z' : weak;
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

char* new_text(const Radix& radix, const Operand& v, unsigned flags) {
    const std::size_t digits = (std::size_t{v.width} + radix.bits_per_digit - 1) / radix.bits_per_digit;
    char* text = new char[digits + 1];
    // Deliberate: X marks above the width do not show, but value bits there do.
    radix.write(text, digits, v.value, v.mask, used_of_top_word(v.width));
    if ((flags & (kZ | kWeakLow | kWeakHigh)) != 0) replace_by_letters(text, digits, flags);
    text[digits] = '\0';
    return text;
}

// A text to be parsed, and the room for its copy. The room is taken before anything changes: it is new, or that of the
// cached text where this has the same length. The text to be parsed may be the cached one itself, or lie in it.
class Source {
  public:
    Source(const char* given, unsigned bits_per_digit, const char* cached)
        : text(given != nullptr ? given : ""), length(std::strlen(text)) {
        check_width(length * bits_per_digit);
        if (cached == nullptr || std::strlen(cached) != length) room_.reset(new char[length + 1]);
    }

    /// The copy, which takes the place of the cached text.
    char* copied(char* cached) {
        char* const copy = room_ != nullptr ? room_.release() : cached;
        std::memmove(copy, text, length + 1);
        if (copy != cached) delete[] cached;
        return copy;
    }

    const char* const text;
    const std::size_t length;

  private:
    std::unique_ptr<char[]> room_;
};

// Brings the value to the width of the text to be parsed. The cached text stays: the text to be parsed may lie in it.
void resize(Parsed& fields, std::size_t width) {
    if (width == fields.width && width != 0) return;  // a moved-from value has no width to keep
    Storage& storage = fields.storage;
    const unsigned new_width = at_least_one(static_cast<unsigned>(width));
    if (is_small(fields.width) && is_small(new_width)) {
        storage.planes = trimmed(storage.planes, new_width);
    } else {
        storage = ResizeLarge(storage.planes.value, storage.planes.mask, fields.width, storage.capacity, new_width);
    }
    fields.width = new_width;
}

}  // namespace

char* HexadecimalText(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned flags) {
    Copy copy;
    return new_text(kHexadecimal, Operand({value, mask}, width, copy), flags);
}

char* BinaryText(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned flags) {
    Copy copy;
    return new_text(kBinary, Operand({value, mask}, width, copy), flags);
}

void ParseHexadecimal(const char* text, Parsed& fields) {
    Source source(text, kHexadecimal.bits_per_digit, fields.text);
    resize(fields, source.length * kHexadecimal.bits_per_digit);
    Copy copy;
    const Target to(fields.storage.planes, fields.width, copy);
    words::read_hexadecimal(to.value, to.mask, source.text, source.length);
    fields.storage.planes = to.trimmed();
    fields.text = source.copied(fields.text);
}

void ParseBinary(const char* text, Parsed& fields) {
    Source source(text, kBinary.bits_per_digit, fields.text);
    resize(fields, source.length);
    Copy copy;
    const Target to(fields.storage.planes, fields.width, copy);
    if (std::memchr(source.text, 'X', source.length) != nullptr) {
        std::fill_n(to.mask, to.size, ~Word{0});
        to.trim();
        fields.flags = with_x(fields.flags);
    }
    // As set_bit does for each digit: a word left without X clears the flag, whatever the other words hold.
    if (words::read_binary(to.value, to.mask, source.text, source.length)) fields.flags = without_x(fields.flags);
    fields.storage.planes = to.trimmed();
    fields.text = source.copied(fields.text);
}

}  // namespace kval::detail

// These are inline everywhere, and yet in the library as well: a debugger calls them by their addresses.
[[gnu::used]] constexpr const char* (KVAL_UINTEGER::*kCallableInADebugger[])() const = {&KVAL_UINTEGER::as_hex_string,
                                                                                        &KVAL_UINTEGER::as_bin_string};
