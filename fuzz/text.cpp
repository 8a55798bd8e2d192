// Texts parsed into values of any form: what the bytes of an input mean.
//
// A byte of options, one of the width, the flags and, word by word, what the value holds; the rest is the text.
#include <array>
#include <cstddef>
#include <ostream>
#include <utility>

#include "interpret.h"
#include "reader.h"
#include "rows.h"
#include "text_case.h"

namespace fuzz {

namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;
using twin::Text;
using twin::Twin;

Text other(Text kind) { return kind == Text::Binary ? Text::Hexadecimal : Text::Binary; }

Twin& move_out(Twin& v) {
    const KVAL_SINTEGER taken = std::move(v.value);
    v.model = model::make(0, 1);  // as every parser finds it
    return v;
}

void parse_nothing(Twin& v, Text kind) {
    if (kind == Text::Binary) {
        v.value.set_value_from_bin_string(nullptr);
        model::set_value_from_bin_string(v.model, "");
    } else {
        v.value.set_value_from_hex_string(nullptr);
        model::set_value_from_hex_string(v.model, "");
    }
}

// The text of the content, not the one that was parsed.
AssertionResult same_anew(Twin& v, Text kind) {
    v.value.DeleteString();
    model::delete_string(v.model);
    return same(v, kind);
}

// Parses the value's own text, printed in this base.
AssertionResult print_and_parse(Twin& v, Text kind) {
    const AssertionResult printed = same_anew(v, kind);
    if (!printed) return printed;
    const std::string text = v.model.text;
    parse(v, text, kind);
    return same(v, kind);
}

AssertionResult same_hash(const std::string& text) {
    const int hash = one_at_a_time(text.data(), static_cast<int>(text.size()));
    const int required = model::one_at_a_time(text);
    if (hash == required) return AssertionSuccess();
    return AssertionFailure() << "  one_at_a_time answers " << hash << ", required " << required;
}

AssertionResult parse_and_print(Twin& v, const TextCase& test) {
    test.null ? parse_nothing(v, test.kind) : parse(v, test.text, test.kind);
    AssertionResult result = same(v, Text::None);  // the text that was parsed is cached
    for (const Text kind : {test.kind, other(test.kind)}) {
        if (result) result = same_anew(v, kind);
    }
    for (const Text kind : {Text::Binary, Text::Hexadecimal}) {
        if (result) result = print_and_parse(v, kind);
    }
    return result ? same_hash(test.text) : result;
}

const char* name(Text kind) {
    constexpr std::array<const char*, 3> names = {"Text::None", "Text::Hexadecimal", "Text::Binary"};
    return names.at(static_cast<std::size_t>(kind));
}

void tell(std::ostream& out, const std::vector<unsigned>& words) {
    out << '{';
    for (const unsigned word : words) out << "0x" << std::hex << word << std::dec << ", ";
    out << "}, ";
}

void tell(std::ostream& out, const TextCase& test) {
    out << "    {{" << test.content.width << ", ";
    tell(out, test.content.words);
    tell(out, test.content.mask);
    out << literal(test.content.flags) << ", " << name(test.content.text) << "}, " << std::boolalpha << test.moved_from
        << ", " << name(test.kind) << ", " << test.null << ", " << literal(test.text) << "},\n"
        << std::flush;
}

// All words that a byte selects are this value, or the ones that follow.
std::vector<unsigned> read_words(Reader& reader, unsigned width) {
    const unsigned pattern = reader.byte();
    std::vector<unsigned> words;
    for (unsigned i = 0; i < (width + 31) / 32; ++i) {
        switch (pattern & 3) {
            case 0:
                words.push_back(0);
                break;
            case 1:
                words.push_back(~0U);
                break;
            case 2:
                words.push_back(pattern * 0x01020408U + i);
                break;
            default:
                words.push_back(static_cast<unsigned>(reader.number(4)));
                break;
        }
    }
    return words;
}

TextCase read_case(Reader& reader) {
    TextCase test;
    const unsigned options = reader.byte();
    test.kind = (options & 1) != 0 ? Text::Binary : Text::Hexadecimal;
    test.moved_from = (options >> 1 & 7) == 7;
    test.null = (options >> 4 & 15) == 15;
    const unsigned state = reader.byte();
    for (unsigned i = 0; i < 4; ++i) {
        if ((state >> i & 1) != 0) test.content.flags += "XZLH"[i];
    }
    constexpr std::array<Text, 4> cached = {Text::None, Text::None, Text::Hexadecimal, Text::Binary};
    test.content.text = cached.at(state >> 4 & 3);
    test.content.width = 1 + reader.byte() * (state >> 6 == 3 ? 9 : 1);
    test.content.words = read_words(reader, test.content.width);
    test.content.mask = read_words(reader, test.content.width);
    const std::string rest = reader.rest();
    test.text = rest.c_str();  // to the first zero byte
    return test;
}

}  // namespace

AssertionResult run(const TextCase& test) {
    Twin v(test.content);
    const std::string before = test.moved_from ? "a moved-from value" : twin::describe(v.model);
    const AssertionResult result = parse_and_print(test.moved_from ? move_out(v) : v, test);
    if (result) return result;
    return AssertionFailure() << '\n'
                              << (test.kind == Text::Binary ? "binary " : "hexadecimal ")
                              << (test.null ? "null" : testing::PrintToString(test.text)) << "\n  into     " << before
                              << '\n'
                              << result.message();
}

AssertionResult run_text(const std::uint8_t* data, std::size_t size, std::ostream* rows) {
    Reader reader(data, size);
    const TextCase test = read_case(reader);
    if (rows != nullptr) tell(*rows, test);
    return run(test);
}

}  // namespace fuzz
