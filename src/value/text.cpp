// Hexadecimal and binary text: written into a value's cache, and read into a value.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "kval.h"
#include "value/storage.h"
#include "words/digits.h"

using kval::detail::Internals;
using kval::words::Word;

namespace {

struct Radix {
    unsigned bits_per_digit;
    unsigned digits_per_word;
    int nibble;  // the second argument of is_x() that asks for one digit
    void (*write_word)(char* digits, Word value, Word unknown);
};
constexpr Radix kHexadecimal{4, 8, 1, kval::words::write_hexadecimal};
constexpr Radix kBinary{1, 32, 0, kval::words::write_binary};

// Straight digits, the low word last.
void write_digits(char* text, std::size_t digits, const KVAL_UINTEGER& v, const Radix& radix) {
    const Internals::View words = Internals::Words(v);
    for (std::size_t i = 0; i < words.size; ++i) {
        // X marks above the width do not show, value bits there do: deliberate.
        const Word unknown = words.mask[i] & (i + 1 == words.size ? Internals::TopMask(v.bitwidth()) : ~Word{0});
        if (digits >= radix.digits_per_word) {
            digits -= radix.digits_per_word;
            radix.write_word(text + digits, words.value[i], unknown);
        } else {
            char whole_word[32];
            radix.write_word(whole_word, words.value[i], unknown);
            std::memcpy(text, whole_word + radix.digits_per_word - digits, digits);
        }
    }
}

// The letters of a value marked Z, weak low or weak high. Deliberate: a letter goes to the mirrored place of its digit,
// an X to its own. They may fall on each other, and a place may be left as a zero byte.
void write_letters(char* text, std::size_t digits, const KVAL_UINTEGER& v, const Radix& radix) {
    const char weak = v.is_wl() ? 'L' : 'H';
    const char letter = v.is_z() ? 'Z' : weak;
    std::fill_n(text, digits, '\0');
    for (std::size_t i = 0; i < digits; ++i) {
        if (v.is_x(static_cast<int>(i), radix.nibble)) {
            text[digits - 1 - i] = 'X';
        } else {
            text[i] = letter;
        }
    }
}

char* new_text(const KVAL_UINTEGER& v, const Radix& radix) {
    const std::size_t digits = (std::size_t{v.bitwidth()} + radix.bits_per_digit - 1) / radix.bits_per_digit;
    char* text = new char[digits + 1];
    const auto write = v.is_z() || v.is_wl() || v.is_wh() ? write_letters : write_digits;
    write(text, digits, v, radix);
    text[digits] = '\0';
    return text;
}

// A text to be parsed, copied before anything else: it may be the cached text of the value that it is parsed into.
struct Source {
    Source(const char* given, unsigned bits_per_digit) : length(given != nullptr ? std::strlen(given) : 0) {
        kval::check_width(length * bits_per_digit);
        text.reset(new char[length + 1]);
        std::copy_n(given, length, text.get());
        text[length] = '\0';
    }

    // Calls read(word_index, digits, count) for the digits of every word, the rightmost first.
    template <typename Read>
    void for_each_word(std::size_t digits_per_word, Read read) const {
        int index = 0;
        for (std::size_t rest = length; rest > 0; ++index) {
            const std::size_t count = std::min(rest, digits_per_word);
            rest -= count;
            read(index, text.get() + rest, count);
        }
    }

    std::size_t length;
    std::unique_ptr<char[]> text;
};

// What strtoul makes of a run of characters that are not all digits: signs, blanks, a prefix, or fewer digits.
Word read_leniently(const char* characters, std::size_t count) {
    char chunk[9];
    std::copy_n(characters, count, chunk);
    chunk[count] = '\0';
    return static_cast<Word>(std::strtoul(chunk, nullptr, 16));
}

}  // namespace

// Caches a text in place of the old one.
const char* KVAL_UINTEGER::KeepText(char* text, std::uint8_t kind) const noexcept {
    delete[] text_cache;
    text_cache = text;
    flags = static_cast<std::uint8_t>((flags & ~kBinaryText) | kind);
    return text;
}

const char* KVAL_UINTEGER::as_hex_string() const {
    if (text_cache != nullptr && (flags & kBinaryText) == 0) return text_cache;
    return KeepText(new_text(*this, kHexadecimal), 0);
}

const char* KVAL_UINTEGER::as_bin_string() const {
    if (text_cache != nullptr && (flags & kBinaryText) != 0) return text_cache;
    return KeepText(new_text(*this, kBinary), kBinaryText);
}

KVAL_UINTEGER& KVAL_UINTEGER::set_value_from_bin_string(const char* text) {
    Source source(text, kBinary.bits_per_digit);
    bitwidth(static_cast<unsigned>(source.length));
    if (std::memchr(source.text.get(), 'X', source.length) != nullptr) force_x();
    source.for_each_word(kBinary.digits_per_word, [this](int index, const char* digits, std::size_t count) {
        const kval::words::BinaryDigits read = kval::words::read_binary(digits, count);
        const Word mask = get_xmask_at(index) & ~read.given;
        set_uvalue_at(index, (get_uvalue_at(index) & ~read.given) | read.ones);
        set_xmask_at(index, mask);
        // As set_bit does for each of these digits: a word left without X clears the flag.
        if (read.given != 0 && mask == 0) flags = static_cast<std::uint8_t>(flags & ~kX);
    });
    KeepText(source.text.release(), kBinaryText);
    EnforceWidth();
    return *this;
}

KVAL_UINTEGER& KVAL_UINTEGER::set_value_from_hex_string(const char* text) {
    Source source(text, kHexadecimal.bits_per_digit);
    bitwidth(static_cast<unsigned>(source.length) * kHexadecimal.bits_per_digit);
    source.for_each_word(kHexadecimal.digits_per_word, [this](int index, const char* digits, std::size_t count) {
        Word value = 0;
        if (!kval::words::read_hexadecimal(digits, count, value)) value = read_leniently(digits, count);
        set_uvalue_at(index, value);
        set_xmask_at(index, 0);
    });
    KeepText(source.text.release(), 0);
    EnforceWidth();
    return *this;
}
