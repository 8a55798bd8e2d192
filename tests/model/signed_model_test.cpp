// The model of signed values and of the generator against numbers worked out by hand, without the library.
#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "bits.h"
#include "generator_model.h"
#include "signed_model.h"

namespace model::signed_value {
namespace {

using Words = std::vector<unsigned>;
using Change = std::function<void(Value&)>;
using Operator = Value (*)(const Value&, const Value&);

// A value with every stored word given, low word first, stray bits included.
Value raw(unsigned width, const Words& value, const Words& mask = {}, const std::string& flags = "") {
    Value v = model::make(0, width);
    for (unsigned i = 0; i < value.size(); ++i) put_word(v.value, i, value[i]);
    for (unsigned i = 0; i < mask.size(); ++i) put_word(v.mask, i, mask[i]);
    v.x = flags.find('X') != std::string::npos;
    v.z = flags.find('Z') != std::string::npos;
    v.wl = flags.find('L') != std::string::npos;
    v.wh = flags.find('H') != std::string::npos;
    return v;
}

Value s8(int number) { return make(number, 8); }

Value u8(unsigned number) { return model::make(number, 8); }

Value with_text(Value v) {
    v.kind = Text::Hexadecimal;
    v.text = "text";
    return v;
}

Value after(Value v, std::initializer_list<Change> changes) {
    for (const Change& change : changes) change(v);
    return v;
}

Change assign_signed_from(const Value& source) {
    return [source](Value& v) { assign_signed(v, source); };
}

Change assign_unsigned_from(const Value& source) {
    return [source](Value& v) { assign_unsigned(v, source); };
}

Change resize_to(unsigned width) {
    return [width](Value& v) { signed_value::resize(v, width); };
}

Change shift_by(unsigned count) {
    return [count](Value& v) { signed_value::shr_assign(v, count); };
}

Value shifted(const Value& v, unsigned count) { return signed_value::shr(v, count); }

Value all_x(unsigned width) { return after(model::make(0, width), {force_x}); }

// Everything that can be seen of a value, in one line.
std::string show(const Value& v) {
    std::ostringstream out;
    out << v.width << " bits, value" << std::hex;
    for (unsigned i = 0; i < v.words(); ++i) out << ' ' << v.word(i);
    out << ", mask";
    for (unsigned i = 0; i < v.words(); ++i) out << ' ' << v.mask_word(i);
    out << ", stored " << std::dec << v.value.size() << '+' << v.mask.size() << ", flags " << (v.x ? "X" : "")
        << (v.z ? "Z" : "") << (v.wl ? "L" : "") << (v.wh ? "H" : "");
    if (v.kind != Text::None) out << ", text '" << v.text << '\'';
    return out.str();
}

// The whole signed number of a value of at most 64 bits, bits above the width left out.
std::int64_t reads(const Value& v) {
    std::int64_t number = at(v.value, v.width - 1) ? -1 : 0;
    for (unsigned i = v.width - 1; i-- > 0;) number = 2 * number + (at(v.value, i) ? 1 : 0);
    return number;
}

struct ValueRow {
    const char* name;
    Value got;
    Value want;
};

// A result without marks and flags, by its width and the signed number it reads.
struct ReadRow {
    const char* name;
    Value got;
    unsigned width;
    std::int64_t number;
};

struct NumberRow {
    const char* name;
    std::int64_t got;
    std::int64_t want;
};

void check(const std::vector<ValueRow>& rows) {
    for (const ValueRow& row : rows) EXPECT_EQ(show(row.got), show(row.want)) << row.name;
}

void check(const std::vector<ReadRow>& rows) {
    for (const ReadRow& row : rows) {
        EXPECT_EQ(row.got.width, row.width) << row.name;
        EXPECT_EQ(reads(row.got), row.number) << row.name;
        EXPECT_FALSE(row.got.x || row.got.z || row.got.wl || row.got.wh) << row.name;
        EXPECT_EQ(row.got.mask, Bits(row.got.mask.size())) << row.name;
    }
}

void check(const std::vector<NumberRow>& rows) {
    for (const NumberRow& row : rows) EXPECT_EQ(row.got, row.want) << row.name;
}

std::string thrown_by(Operator apply, const Value& a, const Value& b) {
    try {
        apply(a, b);
    } catch (const std::string& message) {
        return message;
    }
    return "nothing thrown";
}

// Calls `test` with every pair of signed values of every pair of widths up to 5.
void for_small_pairs(const std::function<void(const Value&, const Value&)>& test) {
    for (unsigned wa = 1; wa <= 5; ++wa) {
        for (unsigned wb = 1; wb <= 5; ++wb) {
            for (unsigned a = 0; a < 1u << wa; ++a) {
                for (unsigned b = 0; b < 1u << wb; ++b) test(model::make(a, wa), model::make(b, wb));
            }
        }
    }
}

TEST(SignedModel, ConstructsFromANumber) {
    check({
        ValueRow{"-1 at 40 bits fills the top word", make(-1, 40), raw(40, {~0u, ~0u})},
        ValueRow{"-16 at 100 bits", make(-16, 100), raw(100, {0xFFFFFFF0, ~0u, ~0u, ~0u})},
        ValueRow{"a positive number at 40 bits", make(7, 40), raw(40, {7, 0})},
        ValueRow{"-1 at 8 bits", s8(-1), raw(8, {0xFF})},
        ValueRow{"200 at 8 bits", s8(200), raw(8, {0xC8})},
        ValueRow{"width 0 becomes 1", make(5, 0), raw(1, {1})},
    });
}

TEST(SignedModel, AssignsFromAnUnsignedValue) {
    const Value f0 = u8(0xF0);
    check({
        ValueRow{"zero-extends", after(make(-1, 40), {assign_unsigned_from(f0)}), raw(40, {0xF0, 0})},
        ValueRow{"keeps bits above a compact width", after(s8(0), {assign_unsigned_from(raw(16, {0xA5C3}))}),
                 raw(8, {0xA5C3})},
        ValueRow{"keeps bits and marks above a wide width",
                 after(make(0, 40), {assign_unsigned_from(raw(96, {1, 0xF00, 3}, {4, 0x500, 6}, "X"))}),
                 raw(40, {1, 0xF00}, {4, 0x500}, "X")},
        ValueRow{"takes all flags and drops the text",
                 after(with_text(s8(1)), {assign_unsigned_from(raw(8, {2}, {1}, "ZLH"))}), raw(8, {2}, {1}, "ZLH")},
    });
    Value self = with_text(raw(8, {0x123}));
    assign_unsigned(self, self);
    check({ValueRow{"itself", self, with_text(raw(8, {0x123}))}});
}

TEST(SignedModel, AssignsFromASignedValue) {
    check({
        ValueRow{"sign-extends", after(make(0, 40), {assign_signed_from(raw(8, {0xF0}))}), raw(40, {0xFFFFFFF0, 0xFF})},
        ValueRow{"128 does not become negative", after(s8(0), {assign_signed_from(raw(16, {0x0080}))}), raw(8, {0})},
        ValueRow{"nor does its mark stay on the cleared bit",
                 after(s8(0), {assign_signed_from(raw(16, {0x0080}, {0x0080}, "X"))}), raw(8, {0}, {0}, "X")},
        ValueRow{"-129 becomes positive", after(s8(0), {assign_signed_from(raw(16, {0xFF7F}))}), raw(8, {0x7F})},
        ValueRow{"ones start at the source's width modulo 32",
                 after(make(0, 16), {assign_signed_from(raw(40, {0x00000005, 0x80}, {0x8101, 0}))}),
                 raw(16, {0xFF05}, {0x8101})},
        ValueRow{"the word of the source's top word loses its marks",
                 after(make(0, 70), {assign_signed_from(raw(40, {5, 0x80}, {3, 0xF}, "XZ"))}),
                 raw(70, {5, 0xFFFFFF80, 0x3F}, {3, 0, 0}, "XZ")},
        ValueRow{"the word of a compact negative source too",
                 after(make(0, 40), {assign_signed_from(raw(8, {0x80}, {0xF}, "X"))}),
                 raw(40, {0xFFFFFF80, 0xFF}, {0, 0}, "X")},
        ValueRow{"but not at a full top word", after(make(0, 70), {assign_signed_from(raw(32, {1u << 31}, {0xF}))}),
                 raw(70, {1u << 31, ~0u, 0x3F}, {0xF, 0, 0})},
        ValueRow{"the target's top word takes the ones again, and keeps its marks",
                 after(make(0, 64), {assign_signed_from(raw(100, {1, 2, 0, 8}, {0, 3, 0, 1}, "X"))}),
                 raw(64, {1, 0xFFFFFFF2}, {0, 3}, "X")},
        ValueRow{"trims bits above the width",
                 after(make(0, 40), {assign_signed_from(raw(40, {0, 0x180}, {0, 0x100}))}), raw(40, {0, 0x80}, {0, 0})},
        ValueRow{"drops the text", after(with_text(s8(1)), {assign_signed_from(s8(2))}), raw(8, {2})},
    });
    Value self = with_text(raw(8, {0x1FF}));
    assign_signed(self, self);
    check({ValueRow{"itself", self, with_text(raw(8, {0x1FF}))}});
}

TEST(SignedModel, Resizes) {
    check({
        ValueRow{"negative to 64", after(s8(-16), {resize_to(64)}), raw(64, {0xFFFFFFF0, ~0u})},
        ValueRow{"non-negative to 64", after(s8(0x70), {resize_to(64)}), raw(64, {0x70, 0})},
        ValueRow{"negative to 0", after(raw(8, {0x81}), {resize_to(0)}), raw(1, {1})},
        ValueRow{"negative within the word", after(raw(4, {0x8}, {0x7}, "X"), {resize_to(6)}),
                 raw(6, {0x38}, {0x7}, "X")},
        ValueRow{"negative, narrower", after(raw(100, {5, 6, 7, 8}), {resize_to(40)}), raw(40, {5, 6})},
        ValueRow{"negative, wide to compact", after(raw(40, {0x1234, 0x80}), {resize_to(8)}), raw(8, {0x34})},
        ValueRow{"marks above the old width stay", after(raw(4, {0x8}, {0x30}), {resize_to(40)}),
                 raw(40, {0xFFFFFFF8, 0xFF}, {0x30, 0})},
        ValueRow{"to the same width keeps all", after(with_text(make(-1, 40)), {resize_to(40)}),
                 with_text(raw(40, {~0u, ~0u}))},
        ValueRow{"drops the text", after(with_text(s8(-1)), {resize_to(9)}), raw(9, {0x1FF})},
    });
}

TEST(SignedModel, Negates) {
    check({
        ValueRow{"the most negative", after(s8(-128), {complement_me}), raw(8, {0x80})},
        ValueRow{"zero", after(s8(0), {complement_me}), raw(8, {0})},
        ValueRow{"one, with marks and flags", after(with_text(raw(8, {1}, {6}, "XL")), {complement_me}),
                 raw(8, {0xFF}, {6}, "XL")},
        ValueRow{"across words", twos_complement(raw(70, {0, 0, 1})), raw(70, {0, 0, 0x3F})},
        ValueRow{"stray bits go", twos_complement(make(-1, 40)), raw(40, {1, 0})},
    });
}

TEST(SignedModel, ReadsOut) {
    const Value top40 = raw(40, {1u << 31, 0});
    check({
        NumberRow{"width 1", convert_to_signed_representation(raw(1, {1})), -1},
        NumberRow{"width 8", convert_to_signed_representation(raw(8, {0xF0})), -16},
        NumberRow{"200 at width 8", convert_to_signed_representation(s8(200)), -56},
        NumberRow{"width 32", convert_to_signed_representation(raw(32, {1u << 31})), INT32_MIN},
        NumberRow{"width 33", convert_to_signed_representation(raw(33, {5, 1})), 5},
        NumberRow{"width 40", convert_to_signed_representation(raw(40, {5, 0x80})), -123},
        NumberRow{"width 64", convert_to_signed_representation(raw(64, {5, 1u << 31})), -2147483643},
        NumberRow{"width 40, sign 0", convert_to_signed_representation(top40), INT32_MIN},
        NumberRow{"zero is positive", positive(s8(0)), true},
        NumberRow{"a wide positive value tests by its low word", positive(top40), false},
        NumberRow{"and is negative", negative(top40), true},
        NumberRow{"magnitude", absolute_value(s8(-16)), 16},
        NumberRow{"magnitude of a positive value", absolute_value(s8(16)), 16},
        NumberRow{"largest magnitude", absolute_value(raw(32, {1u << 31})), 0x80000000},
        NumberRow{"chunk of a positive value", SignExtendedChunk(s8(5), 0), 0xFFFFFF05},
        NumberRow{"chunk at any index in compact form", SignExtendedChunk(s8(5), 3), 5},
        NumberRow{"chunk below the top", SignExtendedChunk(raw(40, {5, 0x80}), 0), 5},
        NumberRow{"top chunk", SignExtendedChunk(raw(40, {5, 0x80}), 1), 0xFFFFFF80},
        NumberRow{"chunk of a full word", SignExtendedChunk(make(5, 32), 0), 5},
    });
}

TEST(SignedModel, KnowsTheExtremesOfAWidth) {
    struct Row {
        unsigned width;
        unsigned negative;
        unsigned positive;
    };
    for (const Row& row :
         {Row{1, 1, ~0u}, Row{2, 2, 1}, Row{8, 0x80, 0x7F}, Row{31, 0x40000000, 0x3FFFFFFF},
          Row{32, 0x80000000, 0x7FFFFFFF}, Row{33, 1, ~0u}, Row{40, 0x80, ~0u}, Row{64, 0x80000000, ~0u}}) {
        EXPECT_EQ(maximum_negative(make(0, row.width)), row.negative) << row.width;
        EXPECT_EQ(maximum_positive(make(0, row.width)), row.positive) << row.width;
    }
}

TEST(SignedModel, AddsSignedValues) {
    check({
        ReadRow{"127 + 1", add_ss(s8(127), s8(1)), 9, 128},
        ReadRow{"-1 + -1", add_ss(s8(-1), s8(-1)), 9, -2},
        ReadRow{"-128 + -128", add_ss(s8(-128), s8(-128)), 9, -256},
        ReadRow{"5 + -3", add_ss(s8(5), s8(-3)), 9, 2},
        ReadRow{"3 + -5", add_ss(s8(3), s8(-5)), 8, -2},
        ReadRow{"1 + 2", add_ss(s8(1), s8(2)), 8, 3},
        ReadRow{"4-bit -1 + 1", add_ss(make(-1, 4), s8(1)), 9, 0},
        ReadRow{"32 bits into a new word", add_ss(make(INT32_MAX, 32), make(1, 32)), 33, 2147483648},
    });
    check({
        ValueRow{"marks and flags of the right operand", add_ss(raw(8, {1}, {8}, "L"), raw(8, {2}, {4}, "XZ")),
                 raw(8, {3}, {4}, "XZ")},
        ValueRow{"widening into an unmarked word drops flag X", add_ss(make(INT32_MAX, 32), raw(32, {1}, {4}, "XH")),
                 raw(33, {1u << 31, 0}, {4, 0}, "H")},
        ValueRow{"widening within the marked word keeps it", add_ss(s8(127), raw(8, {1}, {4}, "X")),
                 raw(9, {0x80}, {4}, "X")},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        EXPECT_EQ(reads(add_ss(a, b)), reads(a) + reads(b)) << show(a) << " + " << show(b);
    });
}

TEST(SignedModel, AddsSignedAndUnsignedValues) {
    check({
        ReadRow{"0 + 255", add_su(s8(0), u8(255)), 9, 255},
        ReadRow{"2 + 3", add_su(s8(2), u8(3)), 9, 5},
        ReadRow{"-1 + 0", add_su(s8(-1), u8(0)), 9, -1},
        ReadRow{"1 + 255", add_su(s8(1), u8(255)), 9, 0},
        ReadRow{"-1 + 255", add_su(s8(-1), u8(255)), 9, -2},
        ReadRow{"255 + -1", add_us(u8(255), s8(-1)), 9, -2},
        ReadRow{"31 bits", add_su(make(0, 31), model::make(0x7FFFFFFF, 31)), 33, 4294967295},
    });
    check({
        ValueRow{"marks and flags of the unsigned operand", add_us(raw(8, {2}, {4}, "XZ"), raw(8, {1}, {8}, "L")),
                 raw(9, {3}, {4}, "XZ")},
        ValueRow{"the new word at a multiple of 32 drops flag X", add_su(make(0, 31), raw(31, {0x7FFFFFFF}, {1}, "XH")),
                 raw(33, {~0u, 0}, {1, 0}, "H")},
    });
    // Exact while the unsigned operand leaves the top bit of the common width free.
    for_small_pairs([](const Value& a, const Value& b) {
        const unsigned common = a.width > b.width ? a.width : b.width;
        if (uint(b) >= 1u << (common - 1)) return;
        EXPECT_EQ(reads(add_su(a, b)), reads(a) + uint(b)) << show(a) << " + unsigned " << show(b);
    });
}

TEST(SignedModel, Subtracts) {
    check({
        ReadRow{"-128 - 1", sub_ss(s8(-128), s8(1)), 9, -129},
        ReadRow{"127 - -1", sub_ss(s8(127), s8(-1)), 9, 128},
        ReadRow{"5 - 3", sub_ss(s8(5), s8(3)), 8, 2},
        ReadRow{"32 bits into a new word", sub_ss(make(INT32_MIN, 32), make(1, 32)), 33, -2147483649},
        ReadRow{"-1 - unsigned 1", sub_su(s8(-1), u8(1)), 8, -2},
        ReadRow{"0 - unsigned 255", sub_su(s8(0), u8(255)), 8, 1},
        ReadRow{"unsigned 5 - 3", sub_us(u8(5), s8(3)), 8, 2},
        ReadRow{"unsigned 3 - 5", sub_us(u8(3), s8(5)), 8, -2},
        ReadRow{"unsigned 5 - -3", sub_us(u8(5), s8(-3)), 9, 8},
        ReadRow{"unsigned 200 - 5", sub_us(u8(200), s8(5)), 8, -61},
        ReadRow{"unsigned 255 - -1", sub_us(u8(255), s8(-1)), 9, -256},
        ReadRow{"4-bit 5 - 8-bit 3", sub_us(model::make(5, 4), s8(3)), 4, 2},
        ReadRow{"4-bit 5 - 8-bit 7", sub_us(model::make(5, 4), s8(7)), 8, -2},
        ReadRow{"8-bit 5 - 4-bit 7", sub_us(u8(5), make(7, 4)), 4, -2},
        ReadRow{"4-bit 5 - 8-bit -3", sub_us(model::make(5, 4), s8(-3)), 5, 8},
        ReadRow{"8-bit 5 - 4-bit -3", sub_us(u8(5), make(-3, 4)), 9, 8},
    });
    check({
        ValueRow{"the storage grows", sub_ss(make(INT32_MIN, 32), make(1, 32)), raw(33, {0x7FFFFFFF, 1})},
        ValueRow{"marks and flags of the left operand", sub_ss(raw(8, {3}, {4}, "XZ"), raw(8, {1}, {8}, "L")),
                 raw(8, {2}, {4}, "XZ")},
        ValueRow{"a new set top bit in an unmarked word drops flag X",
                 sub_ss(raw(32, {1u << 31}, {4}, "XH"), make(1, 32)), raw(33, {0x7FFFFFFF, 1}, {4, 0}, "H")},
        ValueRow{"a new clear top bit keeps it", sub_ss(raw(32, {0x7FFFFFFF}, {4}, "X"), make(-1, 32)),
                 raw(33, {1u << 31, 0}, {4, 0}, "X")},
        ValueRow{"a wide negative difference loses the top word's marks",
                 sub_ss(raw(40, {0, 0}, {1, 1}, "X"), make(1, 40)), raw(40, {~0u, 0xFF}, {1, 0}, "X")},
        ValueRow{"minus an unsigned value it does not", sub_su(raw(40, {0, 0}, {1, 1}, "X"), model::make(1, 40)),
                 raw(40, {~0u, 0xFF}, {1, 1}, "X")},
        ValueRow{"a magnitude brings the marks of its operand", sub_us(u8(5), raw(8, {0xFD}, {2}, "X")),
                 raw(9, {8}, {2}, "X")},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        EXPECT_EQ(reads(sub_ss(a, b)), reads(a) - reads(b)) << show(a) << " - " << show(b);
    });
}

TEST(SignedModel, ComparesSignedValues) {
    const Value minus_two_in_a_word = raw(64, {0xFFFFFFFE, ~0u});
    check({
        NumberRow{"-8 < 1", less_ss(make(-8, 4), s8(1)), true},
        NumberRow{"4-bit -1 == 8-bit -1", equal_ss(make(-1, 4), s8(-1)), true},
        NumberRow{"8-bit -1 == 4-bit -1", equal_ss(s8(-1), make(-1, 4)), true},
        NumberRow{"4-bit -2 == 8-bit -2", equal_ss(make(-2, 4), s8(-2)), true},
        NumberRow{"-1 < -2", less_ss(make(-1, 4), s8(-2)), false},
        NumberRow{"-2 < -1", less_ss(s8(-2), make(-1, 4)), true},
        NumberRow{"40 ones == 3 ones", equal_ss(raw(40, {~0u, 0xFF}), raw(3, {7})), true},
        NumberRow{"top word of ones, low word not", equal_ss(minus_two_in_a_word, make(-1, 32)), false},
        NumberRow{"negative values apart in marks", equal_ss(raw(8, {0x80}, {1}, "X"), s8(-128)), true},
        NumberRow{"non-negative values apart in marks", equal_ss(raw(8, {5}, {1}), s8(5)), false},
        NumberRow{"a raw -1 equals a trimmed one", equal_ss(make(-1, 40), raw(40, {~0u, 0xFF})), true},
        NumberRow{"and is above it", greater_ss(make(-1, 40), raw(40, {~0u, 0xFF})), true},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        const std::string names = show(a) + " and " + show(b);
        EXPECT_EQ(equal_ss(a, b), reads(a) == reads(b)) << names;
        EXPECT_EQ(less_ss(a, b), reads(a) < reads(b)) << names;
        EXPECT_EQ(less_equal_ss(a, b), reads(a) <= reads(b)) << names;
        EXPECT_EQ(greater_ss(a, b), reads(a) > reads(b)) << names;
        EXPECT_EQ(greater_equal_ss(a, b), reads(a) >= reads(b)) << names;
    });
}

TEST(SignedModel, ComparesSignedWithUnsignedValues) {
    check({
        NumberRow{"5 == wider 5", equal_su(s8(5), model::make(5, 16)), true},
        NumberRow{"wider 5 == 5", equal_us(model::make(5, 16), s8(5)), true},
        NumberRow{"marks count", equal_su(raw(8, {5}, {2}), u8(5)), false},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        const std::string names = show(a) + " and " + show(b);
        const std::int64_t s = reads(a);
        const std::int64_t u = uint(b);
        EXPECT_EQ(equal_su(a, b), s == u) << names;
        EXPECT_EQ(equal_us(b, a), u == s) << names;
        EXPECT_EQ(less_su(a, b), s < u) << names;
        EXPECT_EQ(less_us(b, a), u < s) << names;
        EXPECT_EQ(less_equal_su(a, b), s <= u) << names;
        EXPECT_EQ(less_equal_us(b, a), u <= s) << names;
        EXPECT_EQ(greater_su(a, b), s > u) << names;
        EXPECT_EQ(greater_us(b, a), u > s) << names;
        EXPECT_EQ(greater_equal_su(a, b), s >= u) << names;
        EXPECT_EQ(greater_equal_us(b, a), u >= s) << names;
    });
}

TEST(SignedModel, Multiplies) {
    check({
        ReadRow{"-3 * 5", mul_ss(s8(-3), s8(5)), 16, -15},
        ReadRow{"-128 * -128", mul_ss(s8(-128), s8(-128)), 16, 16384},
        ReadRow{"-1 * unsigned 15", mul_su(make(-1, 4), model::make(15, 4)), 8, -15},
        ReadRow{"unsigned 15 * -1", mul_us(model::make(15, 4), make(-1, 4)), 8, -15},
        ReadRow{"0 * -1", mul_ss(s8(0), s8(-1)), 16, 0},
    });
    check({
        ValueRow{"an X factor", mul_ss(raw(8, {3}, {1}, "X"), s8(5)), all_x(16)},
        ValueRow{"an X factor and a negative one", mul_ss(raw(8, {3}, {1}, "X"), s8(-5)), all_x(16)},
        ValueRow{"marks without the flag", mul_su(raw(8, {3}, {1}, "Z"), u8(5)), raw(16, {15})},
        ValueRow{"stray bits of a non-negative factor count", mul_su(raw(4, {0x13}), model::make(2, 8)),
                 raw(12, {0x26})},
        ValueRow{"those of a negative one do not", mul_ss(make(-1, 40), make(1, 1)), raw(41, {1, 0})},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        EXPECT_EQ(reads(mul_ss(a, b)), reads(a) * reads(b)) << show(a) << " * " << show(b);
        EXPECT_EQ(reads(mul_su(a, b)), reads(a) * uint(b)) << show(a) << " * unsigned " << show(b);
    });
}

TEST(SignedModel, ShiftsRightToANarrowerValue) {
    check({
        ValueRow{"-16 >> 2", shifted(s8(-16), 2), raw(6, {0x3C})},
        ValueRow{"0x70 >> 4", shifted(s8(0x70), 4), raw(4, {7})},
        ValueRow{"negative >> width", shifted(s8(-16), 8), raw(1, {1})},
        ValueRow{"negative >> 100", shifted(s8(-16), 100), raw(1, {1})},
        ValueRow{"0x70 >> width", shifted(s8(0x70), 8), raw(1, {0})},
        ValueRow{"a count of 32 acts as 0 and nothing is trimmed", shifted(make(0x12345678, 32), 32),
                 raw(1, {0x12345678})},
        ValueRow{"a compact operand leaves marks and flags behind", shifted(raw(8, {0x70}, {0xF0}, "XZ"), 4),
                 raw(4, {7})},
        ValueRow{"a wide one does not", shifted(raw(40, {0x120, 0x80}, {0x30, 1}, "XZ"), 4),
                 raw(36, {0x12, 8}, {0x10000003, 0}, "XZ")},
        ValueRow{"wide and non-negative >> width", shifted(raw(40, {~0u, 0x7F}, {0, 0}, "L"), 40),
                 raw(1, {0}, {0}, "L")},
        ValueRow{"wide and negative >> width", shifted(raw(40, {0, 0x80}, {1, 1}, "X"), 40), raw(1, {1})},
        ValueRow{"a count just below 2^32 widens", shifted(make(0x50000000, 32), 0xFFFFFFFE), raw(34, {1, 0})},
        ValueRow{"into the wide form", shifted(s8(-16), 0xFFFFFFE0), raw(40, {0xF0, 0})},
        ValueRow{"a wide operand too", shifted(raw(40, {0, 0x80}, {1, 1}, "X"), 0xFFFFFFE0),
                 raw(72, {0, 0, 0}, {}, "X")},
        ValueRow{"2^31", shifted(s8(-16), 0x80000000), raw(1, {1})},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        const unsigned count = uint(b) % a.width;
        const Value result = shifted(a, count);
        EXPECT_EQ(result.width, a.width - count) << show(a) << " >> " << count;
        EXPECT_EQ(reads(result), reads(a) >> count) << show(a) << " >> " << count;
    });
}

TEST(SignedModel, ShiftsRightInPlace) {
    const Value forty = raw(40, {0, 0xFF}, {0xF0, 0x10}, "X");
    check({
        ValueRow{"-112 by 2", after(with_text(raw(8, {0x90})), {shift_by(2)}), raw(8, {0xE4})},
        ValueRow{"-112 by its width", after(with_text(raw(8, {0x90}, {1}, "XL")), {shift_by(8)}),
                 raw(8, {0xFF}, {1}, "XL")},
        ValueRow{"32 bits by 1", after(raw(32, {0xFFFFFFFC}), {shift_by(1)}), raw(32, {~0u})},
        ValueRow{"32 bits by 27", after(raw(32, {0xFFFFFFFC}), {shift_by(27)}), raw(32, {~0u})},
        ValueRow{"32 bits by 28", after(raw(32, {0xFFFFFFFC}), {shift_by(28)}), raw(32, {0xFFFF000F})},
        ValueRow{"32 bits by 31", after(raw(32, {0xFFFFFFFC}), {shift_by(31)}), raw(32, {0xC0000001})},
        ValueRow{"40 bits by 2", after(forty, {shift_by(2)}), raw(40, {0xFFFFFFC0, 0xFF}, {0x3C, 4}, "X")},
        ValueRow{"40 bits by 0", after(forty, {shift_by(0)}), raw(40, {0xFFFFFF00, 0xFF}, {0xF0, 0x10}, "X")},
        ValueRow{"64 bits by 0", after(raw(64, {0, 1u << 31}), {shift_by(0)}), raw(64, {0, 1u << 31})},
        ValueRow{"40 bits by 40", after(forty, {shift_by(40)}), raw(40, {~0u, 0xFF}, {0xF0, 0x10}, "X")},
        ValueRow{"a count of 2^31 shifts by 0 in compact form", after(raw(8, {0x90}), {shift_by(0x80000000)}),
                 raw(8, {0x90})},
        ValueRow{"2^31 + 4 shifts by 4 there", after(raw(8, {0x90}), {shift_by(0x80000004)}), raw(8, {0xF9})},
        ValueRow{"2^31 fills every word of a wide value", after(forty, {shift_by(0x80000000)}),
                 raw(40, {~0u, 0xFF}, {0, 0}, "X")},
        ValueRow{"2^32 - 8: the word count wraps to 0 and the fill falls above the width",
                 after(forty, {shift_by(0xFFFFFFF8)}), raw(40, {0, 0}, {0, 0}, "X")},
        ValueRow{"non-negative: the unsigned shift",
                 after(with_text(raw(40, {~0u, 0x7F}, {0, 0x40}, "X")), {shift_by(4)}), raw(40, {~0u, 7}, {0, 4}, "X")},
        ValueRow{"non-negative by its width", after(raw(40, {~0u, 0x7F}, {1, 1}, "X"), {shift_by(40)}),
                 raw(40, {0, 0}, {0, 0}, "X")},
    });
}

TEST(SignedModel, DividesAndTruncates) {
    const auto u200 = u8(200);
    check({
        ReadRow{"-7 / 2", div_ss(s8(-7), s8(2)), 8, -3},
        ReadRow{"-7 % 2", rem_ss(s8(-7), make(2, 4)), 4, -1},
        ReadRow{"-128 / 1", div_ss(s8(-128), s8(1)), 8, -128},
        ReadRow{"-128 / unsigned 1", div_su(s8(-128), u8(1)), 8, -128},
        ReadRow{"unsigned 200 / -2", div_us(u200, s8(-2)), 8, -100},
        ReadRow{"300 % unsigned 200", rem_su(make(300, 16), u200), 8, 100},
        ReadRow{"-100 % unsigned 200", rem_su(make(-100, 16), u200), 8, -100},
        ReadRow{"100 % -3", rem_ss(make(100, 16), s8(-3)), 8, 1},
        ReadRow{"16 bits / 8 bits", div_ss(make(1000, 16), s8(-3)), 16, -333},
        ReadRow{"unsigned 100 % -3", rem_us(u8(100), s8(-3)), 8, 1},
        ReadRow{"unsigned 1 / 1 at 1 bit", div_us(model::make(1, 1), s8(1)), 1, -1},
    });
    check({
        ValueRow{"-128 / -1", div_ss(s8(-128), s8(-1)), all_x(8)},
        ValueRow{"-128 % -1", rem_ss(s8(-128), s8(-1)), all_x(8)},
        ValueRow{"the most negative word / -1", div_ss(make(INT32_MIN, 32), make(-1, 32)), all_x(32)},
        ValueRow{"5 / 0", div_ss(s8(5), make(0, 3)), all_x(8)},
        ValueRow{"5 % 0", rem_ss(s8(5), make(0, 3)), all_x(3)},
        ValueRow{"a wide divisor with a zero low word", div_ss(s8(5), raw(40, {0, 1})), all_x(8)},
        ValueRow{"as a remainder", rem_su(s8(5), raw(40, {0, 1})), all_x(40)},
        ValueRow{"unsigned 200 / 1", div_us(u200, s8(1)), all_x(8)},
        ValueRow{"unsigned 200 / -1", div_us(u200, s8(-1)), all_x(8)},
        ValueRow{"unsigned 200 % 1", rem_us(u200, s8(1)), all_x(8)},
        ValueRow{"150 % unsigned 200", rem_su(make(150, 16), u200), all_x(8)},
        ValueRow{"200 % -3", rem_ss(make(200, 16), s8(-3)), all_x(8)},
        ValueRow{"marks and flags of operands play no part", div_ss(raw(8, {9}, {9}, "XZ"), raw(8, {2}, {1}, "X")),
                 raw(8, {4})},
    });
}

TEST(SignedModel, DividesByEuclid) {
    check({
        ReadRow{"-7 div 2", posr_div_ss(s8(-7), s8(2)), 8, -4},
        ReadRow{"-7 mod 2", posr_mod_ss(s8(-7), s8(2)), 8, 1},
        ReadRow{"-7 div -2", posr_div_ss(s8(-7), s8(-2)), 8, 4},
        ReadRow{"-7 mod -2", posr_mod_ss(s8(-7), s8(-2)), 8, 1},
        ReadRow{"7 div -2", posr_div_ss(s8(7), s8(-2)), 8, -3},
        ReadRow{"7 mod -2", posr_mod_ss(s8(7), s8(-2)), 8, 1},
        ReadRow{"-7 div unsigned 2", posr_div_su(s8(-7), u8(2)), 8, -4},
        ReadRow{"-7 mod unsigned 2", posr_mod_su(s8(-7), u8(2)), 8, 1},
        ReadRow{"unsigned 7 div -2", posr_div_us(u8(7), s8(-2)), 8, -3},
        ReadRow{"unsigned 7 mod -2", posr_mod_us(u8(7), s8(-2)), 8, 1},
        ReadRow{"wide negative operands compute on the low words", posr_div_su(make(-7, 40), model::make(2, 40)), 40,
                -4},
        ReadRow{"and so does the remainder", posr_mod_su(make(-7, 40), model::make(2, 40)), 40, 1},
    });
    check({
        ValueRow{"-128 div -1", posr_div_ss(s8(-128), s8(-1)), all_x(8)},
        ValueRow{"-128 mod -1", posr_mod_ss(s8(-128), s8(-1)), all_x(8)},
        ValueRow{"div 0", posr_div_ss(s8(7), make(0, 40)), all_x(8)},
        ValueRow{"a remainder above an 8-bit maximum", posr_mod_su(s8(-7), u8(200)), all_x(8)},
        ValueRow{"stray bits make a divisor too large", posr_mod_ss(s8(-7), raw(8, {0x105})), all_x(8)},
        ValueRow{"and a dividend, by a positive divisor", posr_div_ss(raw(4, {0xFFFFFFA1}), s8(3)), all_x(4)},
        ValueRow{"and by a negative one", posr_div_ss(raw(4, {0xFFFFFFA1}), s8(-3)), all_x(4)},
        ValueRow{"33 bits: the bound is that of the top word", posr_div_su(make(-7, 33), u8(2)), all_x(33)},
        ValueRow{"a wide remainder of 2^31 and above is extended as a negative number",
                 posr_mod_su(s8(-7), raw(40, {0xF0000000, 1})), raw(40, {0xEFFFFFF9, 0xFF})},
        ValueRow{"mod 0", posr_mod_su(s8(7), model::make(0, 40)), all_x(40)},
    });
    for_small_pairs([](const Value& a, const Value& b) {
        const Value quotient = posr_div_ss(a, b);
        const Value remainder = posr_mod_ss(a, b);
        // At 1 bit no bound holds the positive quotient 1 back, so it comes out as -1.
        if (quotient.x || remainder.x || a.width == 1) return;
        EXPECT_EQ(reads(a), reads(b) * reads(quotient) + reads(remainder)) << show(a) << " by " << show(b);
        EXPECT_GE(reads(remainder), 0) << show(a) << " by " << show(b);
    });
}

TEST(SignedModel, RefusesWideDivision) {
    const std::string quotient = "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_UINTEGERs";
    const std::string remainder = "KVAL_SINTEGER operator% only supports division between 32 bit KVAL_SINTEGERs";
    const std::string mixed = "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_SINTEGERs";
    struct Row {
        Operator apply;
        std::string message;
    };
    for (const Row& row :
         {Row{div_ss, quotient}, Row{rem_ss, remainder}, Row{posr_div_ss, remainder}, Row{posr_mod_ss, remainder},
          Row{div_us, mixed}, Row{rem_us, mixed}, Row{posr_div_us, mixed}, Row{posr_mod_us, mixed}, Row{div_su, mixed},
          Row{rem_su, mixed}, Row{posr_div_su, mixed}, Row{posr_mod_su, mixed}}) {
        EXPECT_EQ(thrown_by(row.apply, make(1, 33), make(1, 8)), row.message);
        EXPECT_EQ(thrown_by(row.apply, make(1, 8), make(1, 33)), row.message);
        EXPECT_EQ(thrown_by(row.apply, make(1, 33), make(0, 33)), "nothing thrown");
    }
}

TEST(GeneratorModel, StartsFromItsFixedState) {
    Generator g = initial_generator();
    EXPECT_EQ(g.type, 3);
    EXPECT_EQ(g.buffer.size(), 32u);
    EXPECT_EQ(g.buffer[0], 3u);
    EXPECT_EQ(g.buffer[1], 0xFFFFFFFFCD38F625u);
    EXPECT_EQ(g.buffer[31], 0x798F8829u);
    EXPECT_EQ(next(g), 269167349);
    EXPECT_EQ(g.buffer[4], 0x201655EBu);
    EXPECT_EQ(saved_position(g), 5 * 1 + 3);
}

TEST(GeneratorModel, ChoosesTheTypeByTheSizeOfTheBuffer) {
    struct Row {
        unsigned long bytes;
        int type;
        unsigned degree;
    };
    for (const Row& row : {Row{8, 0, 0}, Row{31, 0, 0}, Row{32, 1, 7}, Row{63, 1, 7}, Row{64, 2, 15}, Row{127, 2, 15},
                           Row{128, 3, 31}, Row{255, 3, 31}, Row{256, 4, 63}, Row{1000, 4, 63}}) {
        EXPECT_EQ(init_generator(1, row.bytes).type, row.type) << row.bytes;
        EXPECT_EQ(degree(row.type), row.degree);
    }
}

TEST(GeneratorModel, StepsALinearCongruenceAtType0) {
    Generator g = init_generator(1, 16);
    EXPECT_EQ(g.buffer, (std::vector<std::uint64_t>{0, 1}));
    EXPECT_EQ(next(g), 1103527590);
    EXPECT_EQ(saved_position(g), 0);
    g.buffer[1] = ~std::uint64_t{0};
    EXPECT_EQ(next(g), INT64_MAX - 1103502899);
}

// Each word of the sequence is the sum of the two words `degree` and `separation` places before it.
TEST(GeneratorModel, FollowsItsRecurrence) {
    struct Row {
        unsigned long bytes;
        std::size_t degree;
        std::size_t separation;
    };
    for (const Row& row : {Row{32, 7, 3}, Row{64, 15, 1}, Row{128, 31, 3}, Row{256, 63, 1}}) {
        for (const std::uint32_t seed : {0u, 1u, 0xFFFFFFFFu}) {
            std::deque<std::uint64_t> words{seed};
            while (words.size() < row.degree) words.push_back(words.back() * 1103515145u + 12345u);
            for (std::size_t i = 0; i < row.separation; ++i) {  // the word in front comes first
                words.push_back(words.front());
                words.pop_front();
            }
            Generator g = init_generator(seed, row.bytes);
            EXPECT_EQ(g.buffer[0], g.rear * 5u + static_cast<unsigned>(g.type));
            for (std::size_t i = 0; i < 14 * row.degree; ++i) {
                words.push_back(words[0] + words[row.degree - row.separation]);
                words.pop_front();
                if (i < 10 * row.degree) continue;  // discarded by the seeding
                ASSERT_EQ(next(g), static_cast<std::int64_t>(words.back() >> 1))
                    << row.bytes << ", " << seed << ", " << i;
            }
        }
    }
}

TEST(GeneratorModel, SavesItsPosition) {
    const Generator g{3, 7, 4, std::vector<std::uint64_t>(32)};
    EXPECT_EQ(saved_position(g), 23);
}

TEST(GeneratorModel, RandomisesAValue) {
    Generator g = initial_generator();
    Generator same = g;
    Value v = with_text(raw(70, {1, 2, 3}, {4, 5, 6}, "XZLH"));
    randomize(v, g);
    const auto low = static_cast<unsigned>(next(same));
    const auto middle = static_cast<unsigned>(next(same));
    const auto high = static_cast<unsigned>(next(same));
    check({ValueRow{"70 bits", v, raw(70, {low, middle, high & 0x3F})}});
    EXPECT_EQ(next(g), next(same));

    Generator fresh = initial_generator();
    Value five = raw(5, {0}, {0x1F}, "X");
    randomize(five, fresh);
    check({ValueRow{"5 bits of 0x100B2AF5", five, raw(5, {0x15})}});
}

TEST(GeneratorModel, InvertsTheLowBits) {
    unsigned calls = 0;
    const auto draw = [&calls] {
        const int draws[] = {3, 11, 0, 9, 2};  // modulo 4: 3, 3 again, 0, 1, 2
        return draws[calls++];
    };
    Value v = with_text(raw(8, {0x0F}, {0xF}, "X"));
    randomize(v, 0, draw);
    check({ValueRow{"no bit", v, with_text(raw(8, {0x0F}, {0xF}, "X"))}});
    randomize(v, 4, draw);
    check({ValueRow{"four bits, the text stays", v, with_text(raw(8, {0x00}, {0xF}, "X"))}});
    EXPECT_EQ(calls, 5u);
}

}  // namespace
}  // namespace model::signed_value
