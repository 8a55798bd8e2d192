// What std::format and {fmt} are both required to make of values and formats. Needs no test framework: std::format is
// tested by a program of its own.
#pragma once

#include <kval.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace format_cases {

/// A value, and its digits worked out by hand.
struct Case {
    KVAL_SINTEGER value;
    const char* width;
    const char* bin;
    const char* oct;
    const char* hex;
};

inline std::vector<Case> cases() {
    KVAL_UINTEGER unknown(0x1A, 6);
    unknown.set_x(2);
    KVAL_UINTEGER floating(0, 9);
    floating.force_z();
    floating.set_x(0);
    KVAL_UINTEGER wide(0, 40);
    wide.set_uvalue_at(0, 0x345ABCDE);
    wide.set_uvalue_at(1, 0x12);
    KVAL_UINTEGER moved(1, 80);
    const KVAL_UINTEGER taken(std::move(moved));

    std::vector<Case> all;
    all.push_back({KVAL_UINTEGER(0xA5C, 12), "12", "101001011100", "5134", "A5C"});
    all.push_back({unknown, "6", "011X10", "3X", "1X"});
    all.push_back({floating, "9", "ZZZZZZZZX", "ZZX", "ZZX"});
    all.push_back({KVAL_SINTEGER(-2, 5), "5", "11110", "36", "1E"});
    all.push_back({KVAL_SINTEGER(-2, 33), "33", "111111111111111111111111111111110", "77777777776", "1FFFFFFFE"});
    all.push_back({wide, "40", "0001001000110100010110101011110011011110", "01106426536336", "12345ABCDE"});
    all.push_back({std::move(moved), "0", "", "", ""});
    return all;
}

struct Spec {
    std::string fill;  // a character in UTF-8, or none
    char align;        // 0: none
    bool alternate;
    bool zeros;
    std::size_t width;
    char type;  // 0: none
};

/// What is required, by the rules of the standard for numbers.
inline std::string required(const Case& of, const Spec& spec) {
    const bool bin = spec.type == 'b' || spec.type == 'B';
    const std::string digits = bin ? of.bin : spec.type == 'o' ? of.oct : of.hex;
    const char* letter = bin ? "'b" : spec.type == 'o' ? "'o" : "'h";
    const std::string prefix = spec.alternate ? of.width + std::string(letter) : "";
    const std::size_t length = prefix.size() + digits.size();
    const std::size_t padding = spec.width > length ? spec.width - length : 0;
    if (spec.zeros && spec.align == 0) return prefix + std::string(padding, '0') + digits;

    const std::size_t left = spec.align == '<' ? 0 : spec.align == '^' ? padding / 2 : padding;
    std::string text;
    for (std::size_t i = 0; i < left; ++i) text += spec.fill.empty() ? " " : spec.fill;
    text += prefix + digits;
    for (std::size_t i = left; i < padding; ++i) text += spec.fill.empty() ? " " : spec.fill;
    return text;
}

/// What stands between the braces; with a dynamic width its argument comes second.
inline std::string written(const Spec& spec, bool dynamic_width) {
    std::string text = ":" + spec.fill;
    if (spec.align != 0) text += spec.align;
    if (spec.alternate) text += '#';
    if (spec.zeros) text += '0';
    if (dynamic_width) {
        text += "{}";
    } else if (spec.width != 0) {
        text += std::to_string(spec.width);
    }
    if (spec.type != 0) text += spec.type;
    return "{" + text + "}";
}

inline std::vector<Spec> specs() {
    std::vector<Spec> all;
    for (const char align : {'\0', '<', '>', '^'}) {
        for (const char* const fill : {"", "*", "0", "#", "<", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
            if (align == 0 && *fill != '\0') continue;  // a fill needs an alignment
            for (const bool alternate : {false, true}) {
                for (const bool zeros : {false, true}) {
                    for (const std::size_t width : {0U, 1U, 2U, 3U, 9U, 10U, 14U, 15U, 50U}) {
                        for (const char type : {'\0', 'x', 'X', 'o', 'b', 'B'})
                            all.push_back({fill, align, alternate, zeros, width, type});
                    }
                }
            }
        }
    }
    return all;
}

/// The table of docs/text.md.
template <typename Expect>
void expect_documented(Expect expect) {
    const struct {
        const char* format;
        const char* known;
        const char* unknown;
        const char* floating;
    } rows[] = {
        {"{}", "05A", "XA", "ZZ"},
        {"{:#}", "12'h05A", "8'hXA", "8'hZZ"},
        {"{:#b}", "12'b000001011010", "8'b100X1010", "8'bZZZZZZZZ"},
        {"{:>6}", "   05A", "    XA", "    ZZ"},
        {"{:_^6o}", "_0132_", "_2X2__", "_ZZZ__"},
        {"{:#08}", "12'h005A", "8'h000XA", "8'h000ZZ"},
    };
    const KVAL_SINTEGER known(0x5A, 12);
    KVAL_SINTEGER unknown(0x8A, 8);
    unknown.set_x(4);
    KVAL_SINTEGER floating(0, 8);
    floating.force_z();
    for (const auto& row : rows) {
        expect(row.known, row.format, known, 0);
        expect(row.unknown, row.format, unknown, 0);
        expect(row.floating, row.format, floating, 0);
    }
}

/// Everything that goes wrong, with `format(format, value, width)`, which gives no text where the format is refused.
template <typename Format>
std::vector<std::string> faults(Format format) {
    std::vector<std::string> found;
    const auto expect = [&](const std::optional<std::string>& required_text, const std::string& text,
                            const KVAL_SINTEGER& value, long long width) {
        for (const bool is_signed : {false, true}) {
            const std::optional<std::string> got =
                is_signed ? format(text, value, width) : format(text, static_cast<const KVAL_UINTEGER&>(value), width);
            if (got == required_text) continue;
            found.push_back(text + " gives " + (got ? '"' + *got + '"' : "an error") + ", required is " +
                            (required_text ? '"' + *required_text + '"' : "an error"));
        }
    };

    for (const Case& of : cases()) {
        expect(std::string(of.hex), "{}", of.value, 0);
        expect(std::string(of.hex), "{:}", of.value, 0);
        expect("<" + std::string(of.hex) + "|" + of.bin + ">", "<{0:x}|{0:b}>", of.value, 0);
        for (const Spec& spec : specs()) {
            expect(required(of, spec), written(spec, false), of.value, 0);
            expect(required(of, spec), written(spec, true), of.value, static_cast<long long>(spec.width));
        }
    }

    expect_documented(expect);

    const KVAL_SINTEGER value(0x5A, 8);
    expect("[      5A]", "[{0:{1}}]", value, 8);
    expect("[5A      ]", "[{0:<{1}x}]", value, 8);
    for (const char* const bad : {"{:d}",   "{:h}",          "{:xx}",
                                  "{:x }",  "{:c}",          "{:s}",
                                  "{:f}",   "{:+}",          "{:-}",
                                  "{: }",   "{:.3}",         "{:8.3x}",
                                  "{:L}",   "{:8#}",         "{:##}",
                                  "{:*}",   "{:**<8}",       "{:<<<8}",
                                  "{:{<8}", "{:2147483648}", "{:99999999999999999999}",
                                  "{:{:}}", "{:{x}}",        "{:{-1}}",
                                  "{:{1}",  "{:{1",          "{:",
                                  "{:8",    "{:#",           "{:*<",
                                  "{:{2}}", "{:{0}}"})
        expect(std::nullopt, bad, value, 8);
    expect(std::nullopt, "{:{}}", value, -1);
    expect(std::nullopt, "{:{}}", value, 2147483648LL);
    expect(std::nullopt, "{0:{}}", value, 8);
    expect(std::nullopt, "{:{1}}", value, 8);

    KVAL_UINTEGER kept(0x155, 65);
    const char* const text = kept.as_bin_string();
    format("{:#x} {0:b}", kept, 0LL);
    if (text != kept.as_bin_string()) found.push_back("the cached text is not kept");
    return found;
}

}  // namespace format_cases
