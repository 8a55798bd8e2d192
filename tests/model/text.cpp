// Model of text: hexadecimal and binary digits out of a value and into it, and the text cached on the way.
#include <cstddef>
#include <cstdlib>
#include <string>

#include "bits.h"
#include "model.h"

namespace model {

namespace {

char marker(const Value& v) {
    if (v.z) return 'Z';
    if (v.wl) return 'L';
    return v.wh ? 'H' : '\0';
}

// The digit is read from the stored bits, those above the width included.
char digit(const Value& v, std::size_t index, unsigned digit_bits) {
    unsigned number = 0;
    for (unsigned i = 0; i < digit_bits; ++i) {
        if (at(v.value, digit_bits * index + i)) number |= 1u << i;
    }
    return "0123456789ABCDEF"[number];
}

// The letter of a whole-value marker goes to the mirrored position `i`, not to `count - 1 - i`. Deliberate: beside X
// digits it may overwrite an 'X' and leave a zero byte elsewhere.
std::string spell(const Value& v, unsigned digit_bits) {
    const std::size_t count = (v.width + digit_bits - 1) / digit_bits;
    std::string text(count, '\0');
    for (std::size_t i = 0; i < count; ++i) {
        if (is_x(v, static_cast<int>(i), digit_bits == 4 ? 1 : 0)) {
            text[count - 1 - i] = 'X';
        } else if (marker(v) != '\0') {
            text[i] = marker(v);
        } else {
            text[count - 1 - i] = digit(v, i, digit_bits);
        }
    }
    return text;
}

void keep_text(Value& v, Text kind, const std::string& text) {
    v.kind = kind;
    v.text = text;
}

// The text ends at its first zero byte. A copy, because it may be the target's own cached text.
std::string as_c_text(const std::string& text) { return text.substr(0, text.find('\0')); }

}  // namespace

std::string as_hex_string(Value& v) {
    if (v.kind != Text::Hexadecimal) keep_text(v, Text::Hexadecimal, spell(v, 4));
    return v.text;
}

std::string as_bin_string(Value& v) {
    if (v.kind != Text::Binary) keep_text(v, Text::Binary, spell(v, 1));
    return v.text;
}

// One 'X' anywhere marks every bit; a '0' or '1' then clears its own mark again, as set_bit does, flag X included.
// Any other character leaves its bit as it was.
void set_value_from_bin_string(Value& target, const std::string& text) {
    const std::string digits = as_c_text(text);
    resize(target, static_cast<unsigned>(digits.size()));
    if (digits.find('X') != std::string::npos) force_x(target);
    for (std::size_t j = 0; j < digits.size(); ++j) {
        const int pos = static_cast<int>(digits.size() - 1 - j);
        if (digits[j] == '0') set_bit(target, pos, 0);
        if (digits[j] == '1') set_bit(target, pos, 1);
    }
    enforce_width(target);
    keep_text(target, Text::Binary, digits);
}

// Eight characters from the right make one word, each chunk read by strtoul alone: its rules for signs, blanks, "0x"
// and foreign characters hold chunk by chunk. Flags stay, so a value that was X stays flagged X with a clear x-mask.
// An empty text has no chunk: it gives width 1 and keeps bit 0.
void set_value_from_hex_string(Value& target, const std::string& text) {
    const std::string digits = as_c_text(text);
    resize(target, static_cast<unsigned>(4 * digits.size()));
    std::size_t end = digits.size();
    for (std::size_t index = 0; end > 0; ++index) {
        const std::size_t begin = end > 8 ? end - 8 : 0;
        const std::string chunk = digits.substr(begin, end - begin);
        put_word(target.value, index, static_cast<unsigned>(std::strtoul(chunk.c_str(), nullptr, 16)));
        put_word(target.mask, index, 0);
        end = begin;
    }
    enforce_width(target);
    keep_text(target, Text::Hexadecimal, digits);
}

}  // namespace model
