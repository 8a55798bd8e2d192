// The model against numbers worked out by hand from the rules, without the library.
#include "model.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace model {
namespace {

using Words = std::vector<unsigned>;
using Change = std::function<void(Value&)>;

// A value with every stored word given, low word first, stray bits included.
Value wide(unsigned width, const Words& value, const Words& mask = {}, const std::string& flags = "") {
    Value v = make(0, width);
    for (unsigned i = 0; i < value.size(); ++i) set_uvalue_at(v, static_cast<int>(i), value[i]);
    for (unsigned i = 0; i < mask.size(); ++i) set_xmask_at(v, static_cast<int>(i), mask[i]);
    v.x = flags.find('X') != std::string::npos;
    v.z = flags.find('Z') != std::string::npos;
    v.wl = flags.find('L') != std::string::npos;
    v.wh = flags.find('H') != std::string::npos;
    return v;
}

Value narrow(unsigned width, unsigned value, unsigned mask = 0, const std::string& flags = "") {
    return wide(width, {value}, {mask}, flags);
}

Value with_text(Value v, Text kind, const std::string& text) {
    v.kind = kind;
    v.text = text;
    return v;
}

Value after(Value v, std::initializer_list<Change> changes) {
    for (const Change& change : changes) change(v);
    return v;
}

// Everything that can be seen of a value, in one line.
std::string show(const Value& v) {
    std::ostringstream out;
    out << v.width << " bits, value" << std::hex;
    for (unsigned i = 0; i < v.words(); ++i) out << ' ' << v.word(i);
    out << ", mask";
    for (unsigned i = 0; i < v.words(); ++i) out << ' ' << v.mask_word(i);
    out << ", stored " << std::dec << v.value.size() << '+' << v.mask.size() << ", flags " << (v.x ? "X" : "")
        << (v.z ? "Z" : "") << (v.wl ? "L" : "") << (v.wh ? "H" : "");
    if (v.kind != Text::None) out << (v.kind == Text::Binary ? ", binary '" : ", hexadecimal '") << v.text << '\'';
    return out.str();
}

struct ValueRow {
    const char* name;
    Value got;
    Value want;
};

struct NumberRow {
    const char* name;
    unsigned got;
    unsigned want;
};

struct TextRow {
    const char* name;
    std::string got;
    std::string want;
};

void check(const std::vector<ValueRow>& rows) {
    for (const ValueRow& row : rows) EXPECT_EQ(show(row.got), show(row.want)) << row.name;
}

void check(const std::vector<NumberRow>& rows) {
    for (const NumberRow& row : rows) EXPECT_EQ(row.got, row.want) << row.name;
}

void check(const std::vector<TextRow>& rows) {
    for (const TextRow& row : rows) EXPECT_EQ(row.got, row.want) << row.name;
}

std::string thrown_by(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::string& message) {
        return message;
    }
    return "nothing thrown";
}

std::string hex(Value v) { return as_hex_string(v); }

std::string bin(Value v) { return as_bin_string(v); }

Change parse_hex(const std::string& text) {
    return [text](Value& v) { set_value_from_hex_string(v, text); };
}

Change parse_bin(const std::string& text) {
    return [text](Value& v) { set_value_from_bin_string(v, text); };
}

Change resize_to(unsigned width) {
    return [width](Value& v) { resize(v, width); };
}

Change assign_from(const Value& source) {
    return [source](Value& v) { assign(v, source); };
}

Change put_bit(int pos, unsigned bits) {
    return [pos, bits](Value& v) { set_bit(v, pos, bits); };
}

Change mark(int pos) {
    return [pos](Value& v) { set_x(v, pos); };
}

Change plus(const Value& other) {
    return [other](Value& v) { add_assign(v, other); };
}

Change plus(unsigned number) {
    return [number](Value& v) { add_assign(v, number); };
}

Change minus(const Value& other) {
    return [other](Value& v) { sub_assign(v, other); };
}

Change minus(unsigned number) {
    return [number](Value& v) { sub_assign(v, number); };
}

Change left(unsigned count) {
    return [count](Value& v) { shl_assign(v, count); };
}

Change right(unsigned count) {
    return [count](Value& v) { shr_assign(v, count); };
}

Change and_with(const Value& other) {
    return [other](Value& v) { and_assign(v, other); };
}

Change or_with(const Value& other) {
    return [other](Value& v) { or_assign(v, other); };
}

constexpr unsigned kOnes = 0xFFFFFFFF;

TEST(Model, Construction) {
    check({
        {"a number is cut to the width", make(kOnes, 4), narrow(4, 15)},
        {"width 0 becomes 1", make(5, 0), narrow(1, 1)},
        {"a width negative as a signed number becomes 1", make(5, 0x80000000), narrow(1, 1)},
        {"40 bits have two words", make(7, 40), wide(40, {7, 0})},
        {"a copy drops the text and keeps stray bits, marks and flags",
         copy(with_text(narrow(8, 0x1FF, 0x101, "XZLH"), Text::Binary, "1")), narrow(8, 0x1FF, 0x101, "XZLH")},
    });
}

TEST(Model, Assignment) {
    const Value source = wide(40, {0x12345678, 0x9A}, {0x80000001, 1}, "XL");
    check({
        {"a narrower target keeps the low bits and takes all flags",
         after(with_text(narrow(16, 1, 0, "Z"), Text::Binary, "1"), {assign_from(source)}),
         narrow(16, 0x5678, 1, "XL")},
        {"a wider target is filled with zeros",
         after(wide(40, {kOnes, 0xFF}, {kOnes, 0xFF}), {assign_from(narrow(16, 0xABCD, 2))}),
         wide(40, {0xABCD, 0}, {2, 0})},
        {"equal widths copy stray bits", after(narrow(8, 0), {assign_from(narrow(8, 0x180))}), narrow(8, 0x180)},
        {"unequal widths trim", after(narrow(9, 0), {assign_from(narrow(8, 0x380))}), narrow(9, 0x180)},
        {"self-assignment keeps the text",
         after(with_text(narrow(8, 1), Text::Binary, "1"), {[](Value& v) { assign(v, v); }}),
         with_text(narrow(8, 1), Text::Binary, "1")},
        {"a number clears marks, flags and text",
         after(with_text(wide(40, {1, 2}, {3, 4}, "XZLH"), Text::Binary, "1"), {[](Value& v) { assign(v, 9u); }}),
         wide(40, {9, 0})},
        {"a number is cut to a compact width", after(narrow(4, 0), {[](Value& v) { assign(v, 0xABu); }}),
         narrow(4, 11)},
    });
}

TEST(Model, Resizing) {
    const Value cached = with_text(narrow(8, 0x1AB), Text::Hexadecimal, "AB");
    check({
        {"to wide", after(make(0xAB, 8), {resize_to(40)}), wide(40, {0xAB, 0})},
        {"to wide and back", after(make(0xAB, 8), {resize_to(40), resize_to(4)}), make(0xB, 4)},
        {"40 to 64 keeps two words", after(wide(40, {1, 2}), {resize_to(64)}), wide(64, {1, 2})},
        {"64 to 65 takes three words", after(wide(64, {1, kOnes}), {resize_to(65)}), wide(65, {1, kOnes, 0})},
        {"100 to 40 trims the top word", after(wide(100, {1, 0xABC, 3, 4}), {resize_to(40)}), wide(40, {1, 0xBC})},
        {"100 to 40 and back finds zeros", after(wide(100, {1, 0xABC, 3, 4}), {resize_to(40), resize_to(100)}),
         wide(100, {1, 0xBC, 0, 0})},
        {"the same width changes nothing", after(cached, {resize_to(8)}), cached},
        {"a stray bit becomes a value bit", after(cached, {resize_to(9)}), narrow(9, 0x1AB)},
        {"width 0 on 1 bit trims and drops the text", after(with_text(narrow(1, 3), Text::Binary, "1"), {resize_to(0)}),
         narrow(1, 1)},
        {"marks below the new width and flags stay", after(narrow(8, 0, 0x81, "X"), {resize_to(4)}),
         narrow(4, 0, 1, "X")},
    });
}

TEST(Model, ShiftedCopy) {
    check({
        {"left widens", shifted_copy(make(0x81, 8), 4, true), narrow(12, 0x810)},
        {"right keeps the width", shifted_copy(make(0x81, 8), 4, false), narrow(8, 0x08)},
        {"wide right by its width is 0", shifted_copy(wide(40, {kOnes, 0xFF}, {1, 1}, "X"), 40, false),
         wide(40, {0, 0}, {0, 0}, "X")},
        {"wide right by more is 0", shifted_copy(wide(40, {kOnes, 0xFF}), 41, false), wide(40, {0, 0})},
        {"compact right by 32 is unchanged", shifted_copy(make(0x81, 8), 32, false), narrow(8, 0x81)},
        {"left does not trim stray bits", shifted_copy(narrow(8, 0x181), 4, true), narrow(12, 0x1810)},
    });
}

TEST(Model, Bits) {
    const std::string illegal_read = "KVAL_UINTEGER::bit() called with illegal bit_position";
    const std::string illegal_write = "KVAL_UINTEGER::set_bit() called with illegal bit_position";
    Value byte = make(0xFF, 8);
    check({
        {"bit 9 of 8 bits throws", thrown_by([&] { bit(byte, 9); }), illegal_read},
        {"bit 2^32 - 1 of 8 bits throws", thrown_by([&] { bit(byte, kOnes); }), illegal_read},
        {"setting bit 9 of 8 bits throws", thrown_by([&] { set_bit(byte, 9, 1); }), illegal_write},
        {"setting a negative bit passes", thrown_by([&] { set_bit(byte, -1, 0); }), "nothing thrown"},
    });
    check({
        {"bit 8 of 8 bits is 0", bit(make(0xFF, 8), 8), 0},
        {"bit 32 of 32 bits is bit 0", bit(make(1, 32), 32), 1},
        {"bit 64 of 64 bits reads 0", bit(wide(64, {kOnes, kOnes}), 64), 0},
        {"the low word is not masked by X", uint(wide(40, {5, 1}, {kOnes, 0})), 5},
        {"zero is judged on value bits", is_zero(narrow(10, 0, 0x3FF, "X")), true},
        {"a stray bit is not zero", is_zero(narrow(8, 0x100)), false},
        {"one", is_one(wide(40, {1, 0}, {1, 0}, "X")), true},
        {"a high word makes it more than one", is_one(wide(40, {1, 1})), false},
        {"zero is not one", is_one(make(0, 8)), false},
        {"word 1 of a compact value is 0", get_uvalue_at(make(7, 8), 1), 0},
        {"word -1 is 0", get_uvalue_at(wide(64, {1, 2}), -1), 0},
        {"word 1", get_uvalue_at(wide(64, {1, 2}), 1), 2},
        {"mask word 1", get_xmask_at(wide(64, {0, 0}, {1, 2}), 1), 2},
        {"mask word 2 of two words is 0", get_xmask_at(wide(64, {0, 0}, {1, 2}), 2), 0},
    });
    check({
        {"bit 8 of 8 bits is written above the width", after(make(0, 8), {put_bit(8, 1)}), narrow(8, 0x100)},
        {"trimming clears it again", after(make(0, 8), {put_bit(8, 1), enforce_width}), narrow(8, 0)},
        {"3 sets two bits", after(make(0, 8), {put_bit(2, 3)}), narrow(8, 0x0C)},
        {"bits do not cross into the next word", after(make(0, 64), {put_bit(31, 3)}), wide(64, {0x80000000, 0})},
        {"the last mark gone clears flag X", after(make(0, 8), {mark(3), put_bit(3, 1)}), narrow(8, 8)},
        {"another mark keeps flag X", after(make(0, 8), {mark(3), mark(4), put_bit(3, 1)}), narrow(8, 8, 0x10, "X")},
        {"a mark in another word does not keep flag X", after(make(0, 64), {mark(3), mark(40), put_bit(3, 1)}),
         wide(64, {8, 0}, {0, 0x100})},
        {"bit 64 of 64 bits writes nothing but drops the text",
         after(with_text(wide(64, {1, 2}, {0, 0}, "X"), Text::Binary, "1"), {put_bit(64, 1)}),
         wide(64, {1, 2}, {0, 0}, "X")},
        {"bit -1 of 64 bits writes nothing", after(wide(64, {1, 2}, {0, 0}, "X"), {put_bit(-1, 1)}),
         wide(64, {1, 2}, {0, 0}, "X")},
        {"bit -1 of a compact value is bit 31", after(make(0, 8), {put_bit(-1, 1)}), narrow(8, 0x80000000)},
        {"a compact word store ignores the index", after(make(0, 8), {[](Value& v) { set_uvalue_at(v, 1, 0x107); }}),
         narrow(8, 0x107)},
        {"a wide word store outside does nothing", after(make(0, 64), {[](Value& v) { set_xmask_at(v, 2, 7); }}),
         wide(64, {0, 0})},
        {"a word store keeps the text",
         after(with_text(make(0, 8), Text::Binary, "1"), {[](Value& v) { set_xmask_at(v, 0, 7); }}),
         with_text(narrow(8, 0, 7), Text::Binary, "1")},
    });
}

TEST(Model, Marks) {
    const Value cached = with_text(make(1, 10), Text::Hexadecimal, "001");
    const Value group = wide(10, {0}, {0x100}, "X");
    check({
        {"marking the width does nothing", after(cached, {mark(10)}), cached},
        {"marking -1 does nothing", after(cached, {mark(-1)}), cached},
        {"marking bit 9 drops the text", after(cached, {mark(9)}), narrow(10, 1, 0x200, "X")},
        {"forced X keeps the value bits and trims both planes", after(narrow(10, 0xC05), {force_x}),
         narrow(10, 5, 0x3FF, "X")},
        {"forced Z", after(cached, {force_z}), narrow(10, 1, 0, "Z")},
        {"forced weak low", after(cached, {force_wl}), narrow(10, 1, 0, "L")},
        {"forced weak high", after(cached, {force_wh}), narrow(10, 1, 0, "H")},
    });
    check({
        {"bit 40 is still marked", is_x(wide(64, {0, 0}, {0, 0x100}), 40, 0), true},
        {"bit 64 of 64 reads no mark", is_x(wide(64, {0, 0}, {kOnes, kOnes}), 64, 0), false},
        {"bit -1 of 64 reads no mark", is_x(wide(64, {0, 0}, {kOnes, kOnes}), -1, 0), false},
        {"the top group looks at bits 8 and 9", is_x(group, 2, 1), true},
        {"the top group does not look at bit 10", is_x(narrow(10, 0, 0xC00, "X"), 2, 1), false},
        {"a group above the width holds no mark", is_x(narrow(10, 0, kOnes, "X"), 3, 1), false},
        {"a full group", is_x(wide(64, {0, 0}, {0, 0x80}), 9, 1), true},
        {"its neighbour", is_x(wide(64, {0, 0}, {0, 0x80}), 10, 1), false},
        {"a group far above the width", is_x(wide(64, {0, 0}, {kOnes, kOnes}), 0x7FFFFFFF, 1), false},
        {"a group far below zero", is_x(wide(64, {0, 0}, {kOnes, kOnes}), -0x7FFFFFFF - 1, 1), false},
        {"a negative group of a compact value is taken modulo 8", is_x(narrow(8, 0, 0x80000000), -1, 1), true},
    });
}

TEST(Model, TextOut) {
    check({
        {"8 bits, hexadecimal", hex(make(0x5A, 8)), "5A"},
        {"8 bits, binary", bin(make(0x5A, 8)), "01011010"},
        {"10 bits have three digits", hex(make(0x3FF, 10)), "3FF"},
        {"a mark without the flag, hexadecimal", hex(narrow(12, 0, 0x20)), "0X0"},
        {"a mark without the flag, binary", bin(narrow(12, 0, 0x20)), "000000X00000"},
        {"Z, hexadecimal", hex(narrow(10, 5, 0, "Z")), "ZZZ"},
        {"Z, binary", bin(narrow(3, 5, 0, "Z")), "ZZZ"},
        {"weak low", hex(narrow(8, 5, 0, "LH")), "LL"},
        {"weak high", hex(narrow(8, 5, 0, "H")), "HH"},
        {"Z around an X digit", hex(narrow(12, 0, 0x20, "XZ")), "ZXZ"},
        {"Z overwrites an X digit and leaves a zero byte", hex(narrow(8, 0, 1, "XZ")), std::string("\0Z", 2)},
        {"the digit of the top group shows stray bits", hex(narrow(6, 0xC5)), "C5"},
        {"a stray mark does not show", hex(narrow(6, 0x05, 0xC0)), "05"},
        {"a wide value", hex(wide(36, {0x23456789, 1})), "123456789"},
    });
    check({
        {"the text stays cached", after(make(0x5A, 8), {[](Value& v) { as_hex_string(v); }}),
         with_text(make(0x5A, 8), Text::Hexadecimal, "5A")},
        {"the other kind replaces it", after(make(2, 2), {as_hex_string, as_bin_string}),
         with_text(make(2, 2), Text::Binary, "10")},
    });
}

TEST(Model, TextIn) {
    const Value x_and_text = with_text(narrow(8, 0xFF, 0xFF, "X"), Text::Binary, "XXXXXXXX");
    check({
        {"binary 1X0", after(make(0, 8), {parse_bin("1X0")}), with_text(narrow(3, 4, 2, "X"), Text::Binary, "1X0")},
        {"its text is the input", after(make(0, 8), {parse_bin("1X0"), as_bin_string}),
         with_text(narrow(3, 4, 2, "X"), Text::Binary, "1X0")},
        {"foreign characters leave their bits", after(make(0xFF, 8), {parse_bin("0z 0")}),
         with_text(narrow(4, 6), Text::Binary, "0z 0")},
        {"an empty binary text keeps bit 0", after(make(0xFF, 8), {parse_bin("")}),
         with_text(narrow(1, 1), Text::Binary, "")},
        {"an empty hexadecimal text keeps bit 0 and its mark", after(narrow(8, 0xFF, 0xFF, "X"), {parse_hex("")}),
         with_text(narrow(1, 1, 1, "X"), Text::Hexadecimal, "")},
        {"a known low word clears flag X of a marked wide value",
         after(make(0, 8), {parse_bin("X" + std::string(32, '1'))}),
         with_text(wide(33, {kOnes, 0}, {0, 1}), Text::Binary, "X" + std::string(32, '1'))},
        {"hexadecimal of nine digits", after(make(0, 8), {parse_hex("123456789")}),
         with_text(wide(36, {0x23456789, 1}), Text::Hexadecimal, "123456789")},
        {"a foreign character ends a chunk", after(make(0, 8), {parse_hex("1G"), as_hex_string}),
         with_text(narrow(8, 1), Text::Hexadecimal, "1G")},
        {"lower case is accepted and returned", after(make(0, 8), {parse_hex("ff"), as_hex_string}),
         with_text(narrow(8, 0xFF), Text::Hexadecimal, "ff")},
        {"a sign counts within its chunk", after(make(0, 8), {parse_hex("-1")}),
         with_text(narrow(8, 0xFF), Text::Hexadecimal, "-1")},
        {"marks go and flag X stays", after(x_and_text, {parse_hex("12")}),
         with_text(narrow(8, 0x12, 0, "X"), Text::Hexadecimal, "12")},
        {"from the value's own text",
         after(make(0x12, 8), {as_hex_string, [](Value& v) { set_value_from_bin_string(v, v.text); }}),
         with_text(narrow(2, 2), Text::Binary, "12")},
    });
}

TEST(Model, Hashing) {
    const Value v = make(0x12345678, 32);
    check({
        {"the integer hash of 0", twang_uinthash(0), 0x4636B9C9},
        {"no bits wanted means all", get_hash(v, 0), twang_uinthash(0x12345678)},
        {"32 bits wanted", get_hash(v, 32), twang_uinthash(0x12345678)},
        {"8 bits wanted are the low 8 bits", get_hash(v, 8), twang_uinthash(0x12345678) & 0xFF},
        {"31 bits wanted", get_hash(v, 31), twang_uinthash(0x12345678) & 0x7FFFFFFF},
        {"a zero word counts", get_hash(wide(40, {0x12345678, 0}), 32), twang_uinthash(0x12345678) ^ 0x4636B9C9},
        {"marks and flags do not count", get_hash(narrow(32, 0x12345678, kOnes, "XZLH"), 32), get_hash(v, 32)},
        {"the byte ff adds -1", static_cast<unsigned>(one_at_a_time("\xFF")), 0x124A2494},
        {"an empty key", static_cast<unsigned>(one_at_a_time("")), 0},
    });
}

TEST(Model, LogicTable) {
    struct TruthRow {
        const char* name;
        const char* l;
        const char* r;
        const char* both;
        const char* either;
    };
    const TruthRow rows[] = {
        {"0 and 0", "0", "0", "0", "0"}, {"0 and 1", "0", "1", "0", "1"}, {"0 and X", "0", "X", "0", "X"},
        {"1 and 0", "1", "0", "0", "1"}, {"1 and 1", "1", "1", "1", "1"}, {"1 and X", "1", "X", "X", "1"},
        {"X and 0", "X", "0", "0", "X"}, {"X and 1", "X", "1", "X", "1"}, {"X and X", "X", "X", "0", "X"},
    };
    for (const TruthRow& row : rows) {
        const Value l = after(make(1, 1), {parse_bin(row.l)});
        const Value r = after(make(1, 1), {parse_bin(row.r)});
        EXPECT_EQ(bin(bit_and(l, r)), row.both) << row.name;
        EXPECT_EQ(bin(bit_or(l, r)), row.either) << row.name;
    }
}

TEST(Model, Logic) {
    const Value all_x = after(make(0xFF, 8), {force_x});
    const Value cached = with_text(all_x, Text::Binary, "XXXXXXXX");
    const Value three_words = wide(70, {kOnes, 0x12345678, 0x3F}, {0, 0, 1}, "X");
    check({
        {"and into itself changes nothing", after(cached, {[](Value& v) { and_assign(v, v); }}), cached},
        {"or into itself changes nothing", after(cached, {[](Value& v) { or_assign(v, v); }}), cached},
        {"all X anded with a copy is a known 0 with flag X", after(all_x, {and_with(all_x)}), narrow(8, 0, 0, "X")},
        {"flags are ored in place", after(narrow(8, 3, 0, "Z"), {or_with(narrow(8, 4, 0, "LH"))}),
         narrow(8, 7, 0, "ZLH")},
        {"marks without the flag", bit_and(wide(40, {0, 0}, {5, 1}, "X"), wide(40, {kOnes, 0xFF})),
         wide(40, {0, 0}, {5, 1})},
        {"and copies whole words beyond the shorter operand", bit_and(three_words, narrow(16, 0xABCD)),
         wide(70, {0xABCD, 0x12345678, 0x3F}, {0, 0, 1})},
        {"from either side", bit_and(narrow(16, 0xABCD), three_words), wide(70, {0xABCD, 0x12345678, 0x3F}, {0, 0, 1})},
        {"and in place keeps them", after(three_words, {and_with(narrow(16, 0xABCD))}),
         wide(70, {0xABCD, 0x12345678, 0x3F}, {0, 0, 1}, "X")},
        {"or of 3 and 5 bits", bit_or(make(5, 3), make(0x12, 5)), narrow(5, 0x17)},
        {"or of 32 bits", bit_or(make(0xF0000000, 32), make(15, 32)), narrow(32, 0xF000000F)},
        {"exclusive-or with flag X is all X", bit_xor(narrow(8, 3), narrow(5, 1, 0, "X")), narrow(8, 3, 0xFF, "X")},
        {"on equal widths it is built on the right one", bit_xor(narrow(8, 3, 0, "X"), narrow(8, 5, 0, "Z")),
         narrow(8, 5, 0xFF, "XZ")},
        {"compact marks are exclusive-ored", bit_xor(narrow(8, 3, 6), narrow(8, 5, 5)), narrow(8, 6, 3)},
        {"wide marks are the wider operand's", bit_xor(wide(40, {3, 1}, {6, 0}), wide(33, {5, 1}, {5, 1})),
         wide(40, {6, 0}, {6, 0})},
        {"not of 4 bits", bit_not(make(5, 4)), narrow(4, 10)},
        {"not of 33 zeros", bit_not(make(0, 33)), wide(33, {kOnes, 1})},
        {"not keeps marks", bit_not(narrow(4, 5, 2, "X")), narrow(4, 10, 2, "X")},
    });
}

TEST(Model, AdditionInPlace) {
    const Value long_run = wide(96, {kOnes, kOnes, 0});
    check({
        {"8-bit ff plus 1 wraps", after(make(0xFF, 8), {plus(1)}), narrow(8, 0)},
        {"a carry travels one word beyond the right operand", after(wide(96, {kOnes, 0, 0}), {plus(make(1, 1))}),
         wide(96, {0, 1, 0})},
        {"and is dropped beyond that", after(long_run, {plus(make(1, 1))}), wide(96, {0, 0, 0})},
        {"from a number it ripples on", after(long_run, {plus(1)}), wide(96, {0, 0, 1})},
        {"++ ripples on", after(long_run, {increment}), wide(96, {0, 0, 1})},
        {"++ of all ones", after(wide(64, {kOnes, kOnes}), {increment}), wide(64, {0, 0})},
        {"a compact value adds the low word only", after(make(1, 8), {plus(wide(64, {2, 3}))}), narrow(8, 3)},
        {"onto itself", after(wide(64, {0x80000001, 1}), {[](Value& v) { add_assign(v, v); }}), wide(64, {2, 3})},
        {"marks and flag stay, the text goes", after(with_text(narrow(8, 1, 1, "X"), Text::Binary, "1"), {plus(1)}),
         narrow(8, 2, 1, "X")},
        {"stray bits take part and are trimmed", after(narrow(8, 1), {plus(narrow(8, 0xF01))}), narrow(8, 2)},
    });
}

TEST(Model, SubtractionInPlace) {
    check({
        {"a borrow travels one word beyond the right operand", after(wide(96, {0, 1, 1}), {minus(make(1, 1))}),
         wide(96, {kOnes, 0, 1})},
        {"and is dropped beyond that", after(wide(96, {0, 0, 1}), {minus(make(1, 1))}), wide(96, {kOnes, kOnes, 1})},
        {"from a number it ripples on", after(wide(96, {0, 0, 1}), {minus(1)}), wide(96, {kOnes, kOnes, 0})},
        {"-- of 64 zeros", after(make(0, 64), {decrement}), wide(64, {kOnes, kOnes})},
        {"-- of 8 zeros", after(make(0, 8), {decrement}), narrow(8, 0xFF)},
        {"a compact value subtracts the low word only", after(make(9, 8), {minus(wide(64, {2, 3}))}), narrow(8, 7)},
        {"from itself", after(wide(64, {5, 6}), {[](Value& v) { sub_assign(v, v); }}), wide(64, {0, 0})},
    });
}

TEST(Model, Sum) {
    check({
        {"8-bit ff plus 8-bit 1 grows", add(make(0xFF, 8), make(1, 8)), narrow(9, 0x100)},
        {"32 bits grow into a second word", add(narrow(32, kOnes, kOnes, "X"), make(1, 8)),
         wide(33, {0, 1}, {kOnes, 0}, "X")},
        {"40 bits without a carry", add(wide(40, {kOnes, 0x7F}), wide(40, {1, 0})), wide(40, {0, 0x80})},
        {"40 bits with a carry", add(wide(40, {kOnes, 0xFF}), wide(40, {1, 0})), wide(41, {0, 0x100})},
        {"64 bits with a carry", add(wide(64, {kOnes, kOnes}), make(1, 1)), wide(65, {0, 0, 1})},
        {"31 bits with a carry", add(make(0x7FFFFFFF, 31), make(1, 1)), narrow(32, 0x80000000)},
        {"the narrower operand's marks vanish", add(narrow(8, 1, 0x80, "L"), narrow(4, 2, 15, "X")),
         narrow(8, 3, 0x80, "L")},
        {"on equal widths the right one's stay", add(narrow(8, 1, 1, "X"), narrow(8, 2, 2, "Z")), narrow(8, 3, 2, "Z")},
        {"40 bits plus 32 bits", add(wide(40, {0x345ABCDE, 0x12}), make(0xFFFFFFFF, 32)), wide(40, {0x345ABCDD, 0x13})},
        {"stray bits that carry out of the word grow by one bit", add(narrow(8, 0xFFFFFFFF), narrow(8, 2)),
         narrow(9, 1)},
        {"of a wide value likewise", add(wide(40, {kOnes, kOnes}), wide(40, {2, 0})), wide(41, {1, 0})},
        {"a stray bit just above the width grows it", add(narrow(8, 0x301, 0x300), narrow(4, 2)),
         narrow(9, 0x103, 0x100)},
    });
}

TEST(Model, Difference) {
    check({
        {"16-bit 3 minus 5 wraps", sub(make(3, 16), make(5, 16)), narrow(16, 0xFFFE)},
        {"8 bits minus 64 subtract the low word", sub(make(9, 8), wide(64, {2, 3})), narrow(8, 7)},
        {"a compact right operand decides every borrow", sub(wide(96, {5, 2, 1}), make(3, 2)), wide(96, {2, 2, 0})},
        {"a wide shorter one counts as 0 beyond its end", sub(wide(96, {0, 0, 2}), wide(64, {1, 0})),
         wide(96, {kOnes, kOnes, 1})},
        {"where the borrow ripples on", sub(wide(128, {0, 0, 0, 2}), wide(64, {1, 0})),
         wide(128, {kOnes, kOnes, kOnes, 1})},
        {"marks and flags are the left one's", sub(narrow(8, 9, 1, "X"), narrow(8, 1, 2, "Z")), narrow(8, 8, 1, "X")},
        {"from itself", sub(wide(64, {1, 2}), wide(64, {1, 2})), wide(64, {0, 0})},
    });
}

TEST(Model, ShiftsInPlace) {
    const Value top_x = wide(64, {1, 0}, {0x80000000, 1}, "X");
    check({
        {"16-bit 8001 left by 1", after(make(0x8001, 16), {left(1)}), narrow(16, 2)},
        {"by 32 unchanged", after(with_text(make(0x8001, 16), Text::Binary, "1"), {left(32)}), narrow(16, 0x8001)},
        {"by 33 as by 1", after(make(0x8001, 16), {left(33)}), narrow(16, 2)},
        {"right by 32 unchanged", after(make(0x8001, 16), {right(32)}), narrow(16, 0x8001)},
        {"a bit crosses words", after(wide(64, {0x80000000, 0}), {left(1)}), wide(64, {0, 1})},
        {"64 bits left by 64", after(wide(64, {1, 2}, {3, 4}), {left(64)}), wide(64, {0, 0})},
        {"64 bits right by 64 keep flag X", after(top_x, {right(64)}), wide(64, {0, 0}, {0, 0}, "X")},
        {"64 bits right by 2^32 - 1", after(top_x, {right(kOnes)}), wide(64, {0, 0}, {0, 0}, "X")},
        {"64 bits left by 2^32 - 1", after(top_x, {left(kOnes)}), wide(64, {0, 0}, {0, 0}, "X")},
        {"marks move along", after(top_x, {right(31)}), wide(64, {0, 0}, {3, 0}, "X")},
        {"40 bits right by 40 lose stray bits", after(wide(40, {0, 0xF00}), {right(40)}), wide(40, {0, 0})},
        {"40 bits right by 39 take stray bits in", after(wide(40, {0, 0xF00}), {right(39)}), wide(40, {0x1E, 0})},
    });
}

TEST(Model, FreeShifts) {
    check({
        {"8-bit ff left by 4", shl(make(0xFF, 8), 4), narrow(12, 0xFF0)},
        {"30 bits left by 2 stay compact", shl(make(0x3FFFFFFF, 30), 2), narrow(32, 0xFFFFFFFC)},
        {"30 bits left by 3 become wide", shl(make(0x3FFFFFFF, 30), 3), wide(33, {0xFFFFFFF8, 1})},
        {"8 bits left by 64", shl(narrow(8, 0x81, 1, "X"), 64), wide(72, {0, 0, 0x81}, {0, 0, 1}, "X")},
        {"16-bit abcd right by 4", shr(make(0xABCD, 16), 4), narrow(12, 0xABC)},
        {"8 bits right by 0", shr(make(0xAB, 8), 0), narrow(8, 0xAB)},
        {"8-bit ff right by 8", shr(make(0xFF, 8), 8), narrow(1, 0)},
        {"8-bit ff right by 32 is its bit 0", shr(make(0xFF, 8), 32), narrow(1, 1)},
        {"with marks", shr(narrow(8, 0xFF, 2, "X"), 33), narrow(1, 1, 1, "X")},
        {"by 2^31", shr(make(1, 8), 0x80000000), narrow(1, 1)},
        {"by 2^32 - 1 it is stored bit 31", shr(narrow(8, 0x80000000), kOnes), narrow(1, 1)},
        {"40 bits right by 40", shr(wide(40, {kOnes, 0xFF}, {kOnes, 0xFF}, "X"), 40), narrow(1, 0, 0, "X")},
        {"40 bits right by 2^32 - 1", shr(wide(40, {kOnes, 0xFF}), kOnes), narrow(1, 0)},
        {"100 bits right by 37 are bits 37 to 99", shr(wide(100, {kOnes, 0x00000020, 0x80000001, 0xF}), 37),
         wide(63, {0x08000001, 0x7C000000})},
    });
}

TEST(Model, Products) {
    const Value hundred = wide(100, {0x12345678, 0x9ABCDEF0, 0x0FEDCBA9, 0x8});
    check({
        {"8-bit 255 squared", mul(make(255, 8), make(255, 8)), narrow(16, 65025)},
        {"32 ones squared", mul(make(kOnes, 32), make(kOnes, 32)), wide(64, {1, 0xFFFFFFFE})},
        {"1 times 100 bits", mul(make(1, 1), hundred), wide(101, {0x12345678, 0x9ABCDEF0, 0x0FEDCBA9, 0x8})},
        {"100 bits times 1", mul(hundred, make(1, 1)), wide(101, {0x12345678, 0x9ABCDEF0, 0x0FEDCBA9, 0x8})},
        {"64 ones squared", mul(wide(64, {kOnes, kOnes}), wide(64, {kOnes, kOnes})),
         wide(128, {1, 0, 0xFFFFFFFE, kOnes})},
        {"flag X gives all X", mul(narrow(8, 1, 0, "X"), make(1, 30)), wide(38, {0, 0}, {kOnes, 0x3F}, "X")},
        {"marks without it do not count", mul(narrow(4, 3, 15, "Z"), make(5, 4)), narrow(8, 15)},
        {"stray bits take part", mul(narrow(8, 0x101), make(3, 8)), narrow(16, 0x303)},
        {"and are cut off at the result's words", mul(narrow(4, 0x80000001), make(3, 4)), narrow(8, 3)},
    });
}

TEST(Model, Division) {
    const std::string division = "KVAL_UINTEGER operator / only supports division between 32 bit KVAL_UINTEGERs";
    const std::string remainder = "KVAL_UINTEGER operator % only supports division between 32 bit KVAL_UINTEGERs";
    check({
        {"200 / 7 has the dividend's width", div(make(200, 8), make(7, 4)), narrow(8, 28)},
        {"200 % 7 has the divisor's width", rem(make(200, 8), make(7, 4)), narrow(4, 4)},
        {"5 / 0 is all X", div(make(5, 16), make(0, 3)), narrow(16, 0, 0xFFFF, "X")},
        {"5 % 0 is all X", rem(make(5, 16), make(0, 3)), narrow(3, 0, 7, "X")},
        {"a marked zero divisor is zero", div(make(5, 16), narrow(3, 0, 7, "X")), narrow(16, 0, 0xFFFF, "X")},
        {"a marked other divisor divides", div(narrow(8, 9, 1, "XZ"), narrow(3, 2, 7, "X")), narrow(8, 4)},
        {"32 ones / 1", div(make(kOnes, 32), make(1, 1)), narrow(32, kOnes)},
        {"32 ones / (2^32 - 1)", div(make(kOnes, 32), make(kOnes, 32)), narrow(32, 1)},
        {"32 ones % 2^31", rem(make(kOnes, 32), make(0x80000000, 32)), narrow(32, 0x7FFFFFFF)},
    });
    check({
        {"33 bits / 1", thrown_by([] { div(make(1, 33), make(1, 1)); }), division},
        {"1 / 33 bits", thrown_by([] { div(make(1, 1), make(0, 33)); }), division},
        {"33 bits % 1", thrown_by([] { rem(make(1, 33), make(1, 1)); }), remainder},
    });
}

TEST(Model, Ordering) {
    const Value two_words = wide(64, {0, 1});
    const Value seven = wide(64, {7, 0});
    const Value top_only = wide(96, {0, 0, 1});
    const Value unknown = after(make(9, 8), {force_x});
    check({
        {"(0, 1) > 32 ones", greater(two_words, make(kOnes, 32)), true},
        {"32 ones > (0, 1)", greater(make(kOnes, 32), two_words), false},
        {"wide 7 >= 7", greater_equal(seven, make(7, 8)), true},
        {"7 >= wide 7", greater_equal(make(7, 8), seven), true},
        {"wide 7 > 7", greater(seven, make(7, 8)), false},
        {"7 > wide 7", greater(make(7, 8), seven), false},
        {"word 2 decides", greater(top_only, wide(64, {kOnes, kOnes})), true},
        {"and from the other side", greater_equal(wide(64, {kOnes, kOnes}), top_only), false},
        {"the highest differing word decides", greater(wide(64, {0, 2}), wide(64, {kOnes, 1})), true},
        {"X is compared by its value bits", greater(unknown, make(8, 8)), true},
        {"and not greater", greater(unknown, make(9, 8)), false},
        {"stray bits count", greater(narrow(8, 0x101), narrow(8, 2)), true},
        {"wide > number", greater(two_words, kOnes), true},
        {"number > wide", greater(kOnes, two_words), false},
        {"number >= wide", greater_equal(kOnes, two_words), false},
        {"wide 7 >= 7u", greater_equal(seven, 7u), true},
        {"7u >= wide 7", greater_equal(7u, seven), true},
        {"8u > wide 7", greater(8u, seven), true},
        {"compact 5 > 4u", greater(make(5, 4), 4u), true},
        {"5u > compact 5", greater(5u, make(5, 4)), false},
    });
}

TEST(Model, Equality) {
    const Value all_x = after(make(9, 8), {force_x});
    check({
        {"flag X is unequal to its number", equal(narrow(8, 5, 0, "X"), 5u), false},
        {"and to 0", equal(narrow(8, 5, 0, "X"), 0u), false},
        {"weak high is unequal to its number", equal(narrow(8, 5, 0, "H"), 5u), false},
        {"marks alone are not looked at", equal(narrow(8, 5, 1), 5u), true},
        {"wide and number", equal(wide(64, {5, 0}), 5u), true},
        {"a high word", equal(wide(64, {5, 1}), 5u), false},
        {"two all-X values", equal(all_x, after(make(9, 8), {force_x})), true},
        {"value bits under marks count", equal(all_x, after(make(8, 8), {force_x})), false},
        {"marks count", equal(narrow(8, 9, 1, "X"), narrow(8, 9, 2, "X")), false},
        {"marks in a word the other lacks count", equal(wide(64, {9, 0}, {0, 1}), make(9, 8)), false},
        {"flags count", equal(narrow(8, 9, 0, "Z"), narrow(8, 9)), false},
        {"weak low is not weak high", equal(narrow(8, 9, 0, "L"), narrow(8, 9, 0, "H")), false},
        {"widths do not", equal(make(3, 33), make(3, 32)), true},
        {"4-bit 5 and 100-bit 5", equal(make(5, 4), make(5, 100)), true},
        {"the kind of text does not", equal(with_text(make(3, 8), Text::Binary, "1"), make(3, 8)), true},
    });
}

}  // namespace
}  // namespace model
