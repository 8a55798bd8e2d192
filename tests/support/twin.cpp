// Twins: the same content put into a value and into a model, and the comparison of all that a caller can see.
#include "twin.h"

#include <cstddef>
#include <cstring>
#include <iomanip>
#include <sstream>

namespace twin {

namespace {

bool has(const std::string& flags, char letter) { return flags.find(letter) != std::string::npos; }

unsigned word_of(const std::vector<unsigned>& words, int index) {
    const auto position = static_cast<std::size_t>(index);
    return position < words.size() ? words[position] : 0;
}

// An x-mask word under which no value prints the text that it prints under `low_word`: all X, unless the lowest digit
// is X. With the lowest digit known, fewer than all digits are X; with it unknown, not every place gets a digit or a
// letter.
unsigned odd_mask(unsigned low_word, unsigned width, Text kind) {
    const unsigned digit = kind == Text::Binary || width == 1 ? 1 : width < 4 ? (1u << width) - 1 : 15;
    return (low_word & digit) != 0 ? 0 : ~0u;
}

const char* request(const KVAL_UINTEGER& value, Text kind) {
    return kind == Text::Binary ? value.as_bin_string() : value.as_hex_string();
}

std::string request(model::Value& value, Text kind) {
    return kind == Text::Binary ? model::as_bin_string(value) : model::as_hex_string(value);
}

void cache_odd_text(model::Value& value, Text kind) {
    const std::vector<unsigned char> mask = value.mask;
    value.mask.assign(mask.size(), odd_mask(value.mask_word(0), value.width, kind) != 0);
    request(value, kind);
    value.mask = mask;
}

KVAL_UINTEGER build_value(const Content& content) {
    KVAL_UINTEGER value(0, content.width);
    if (has(content.flags, 'X')) value.force_x();
    if (has(content.flags, 'Z')) value.force_z();
    if (has(content.flags, 'L')) value.force_wl();
    if (has(content.flags, 'H')) value.force_wh();
    for (int i = 0; i < value.get_size(); ++i) {
        value.set_uvalue_at(i, word_of(content.words, i));
        value.set_xmask_at(i, word_of(content.mask, i));
    }
    return value;
}

model::Value build_model(const Content& content) {
    model::Value value = model::make(0, content.width);
    value.x = has(content.flags, 'X');
    value.z = has(content.flags, 'Z');
    value.wl = has(content.flags, 'L');
    value.wh = has(content.flags, 'H');
    for (int i = 0; i < static_cast<int>(value.words()); ++i) {
        model::set_uvalue_at(value, i, word_of(content.words, i));
        model::set_xmask_at(value, i, word_of(content.mask, i));
    }
    return value;
}

std::string spell(const std::vector<unsigned>& words) {
    std::ostringstream out;
    out << std::hex << std::setfill('0') << '{';
    for (const unsigned& word : words) out << (&word == words.data() ? "0x" : ", 0x") << std::setw(8) << word;
    out << '}';
    return out.str();
}

std::string spell(const Content& content) {
    std::ostringstream out;
    out << '{' << content.width << ", " << spell(content.words) << ", " << spell(content.mask) << ", \""
        << content.flags << "\"}";
    return out.str();
}

std::string letters(bool x, bool z, bool wl, bool wh) {
    return std::string(x ? "X" : "") + (z ? "Z" : "") + (wl ? "L" : "") + (wh ? "H" : "");
}

Content content_of(const KVAL_UINTEGER& value) {
    Content content;
    content.width = value.bitwidth();
    content.flags = letters(value.is_x(), value.is_z(), value.is_wl(), value.is_wh());
    for (int i = 0; i < value.get_size(); ++i) {
        content.words.push_back(value.get_uvalue_at(i));
        content.mask.push_back(value.get_xmask_at(i));
    }
    return content;
}

Content content_of(const model::Value& value) {
    Content content;
    content.width = value.width;
    content.flags = letters(value.x, value.z, value.wl, value.wh);
    for (unsigned i = 0; i < value.words(); ++i) {
        content.words.push_back(value.word(i));
        content.mask.push_back(value.mask_word(i));
    }
    return content;
}

bool same_words(const KVAL_UINTEGER& value, const model::Value& required) {
    for (unsigned i = 0; i < required.words(); ++i) {
        const int index = static_cast<int>(i);
        if (value.get_uvalue_at(index) != required.word(i)) return false;
        if (value.get_xmask_at(index) != required.mask_word(i)) return false;
    }
    return true;
}

// In a quoted form that shows zero bytes.
std::string quote(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '\0' ? std::string("\\0") : std::string(1, c);
    return quoted + '"';
}

// A text with zero bytes inside is compared as bytes and has to end where it must; any other ends at its zero byte.
std::string bytes_of(const char* text, const std::string& required) {
    if (!has(required, '\0')) return text;
    const std::size_t size = required.size();
    return std::string(text, text[size] == '\0' ? size : size + 1);
}

}  // namespace

Twin::Twin(const Content& content) : value(build_value(content)), model(build_model(content)) {
    if (content.text == Text::None) return;
    cache_odd_text(value, content.text);
    cache_odd_text(model, content.text);
}

Twin::Twin(const Twin& original) : value(original.value), model(original.model) {
    if (model.kind != Text::None) cache_odd_text(value, model.kind);
}

void cache_odd_text(KVAL_UINTEGER& value, Text kind) {
    const int size = value.get_size();
    if (size == 0) return;  // moved from: there is but the empty text
    std::vector<unsigned> mask;
    for (int i = 0; i < size; ++i) mask.push_back(value.get_xmask_at(i));
    const unsigned odd = odd_mask(mask.front(), value.bitwidth(), kind);
    for (int i = 0; i < size; ++i) value.set_xmask_at(i, odd);
    request(value, kind);
    for (int i = 0; i < size; ++i) value.set_xmask_at(i, word_of(mask, i));
}

void parse(Twin& target, const std::string& text, Text kind) {
    const std::vector<char> block(text.c_str(), text.c_str() + std::strlen(text.c_str()) + 1);
    if (kind == Text::Binary) {
        target.value.set_value_from_bin_string(block.data());
        model::set_value_from_bin_string(target.model, text);
    } else {
        target.value.set_value_from_hex_string(block.data());
        model::set_value_from_hex_string(target.model, text);
    }
}

std::string describe(const KVAL_UINTEGER& value) { return spell(content_of(value)); }

std::string describe(const model::Value& value) {
    std::string content = spell(content_of(value));
    if (value.kind == Text::None) return content;
    return content + (value.kind == Text::Binary ? " with binary text " : " with hexadecimal text ") +
           quote(value.text);
}

testing::AssertionResult same_content(const KVAL_UINTEGER& value, const model::Value& required) {
    if (value.bitwidth() == required.width && static_cast<unsigned>(value.get_size()) == required.words() &&
        same_words(value, required) && value.is_x() == required.x && value.is_z() == required.z &&
        value.is_wl() == required.wl && value.is_wh() == required.wh) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "  result   " << describe(value) << "\n  required " << describe(required);
}

testing::AssertionResult same_content(const Twin& twin) { return same_content(twin.value, twin.model); }

testing::AssertionResult same(const KVAL_UINTEGER& value, model::Value& required, Text ask) {
    testing::AssertionResult content = same_content(value, required);
    if (!content) return content;

    const bool cached = required.kind != Text::None;
    const Text kind = cached ? required.kind : ask;
    const std::string required_text = request(required, kind);
    const std::string text = bytes_of(request(value, kind), required_text);
    if (text == required_text) return content;
    return testing::AssertionFailure() << "  " << describe(value) << "\n  answers  " << quote(text) << "\n  required "
                                       << quote(required_text) << (cached ? ", as cached" : ", made anew");
}

testing::AssertionResult same(Twin& twin, Text ask) { return same(twin.value, twin.model, ask); }

}  // namespace twin
