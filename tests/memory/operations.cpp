// The table of operations and allocations, made for any pair of widths.
#include "operations.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "table.h"

namespace {

// ---- preparations ----

void move_left_away(Operands& o) { move_away(o.left); }

void fill_both_with_ones(Operands& o) {
    o.left = ~KVAL_UINTEGER(0, o.left.bitwidth());
    o.right = ~KVAL_UINTEGER(0, o.right.bitwidth());
}

void drop_texts(Operands& o) {
    o.left.DeleteString();
    o.right.DeleteString();
}

// Changes drop the text.
void set_some_x(Operands& o) { o.left.set_x(0).set_x(static_cast<int>(o.left.bitwidth() / 2)); }

// ---- themes ----

Operations construction(unsigned l, unsigned) {
    Operations table{
        {"construct from a number", arrays(l), [l](Operands& o) { o.result.emplace(0xC0FFEEU, l); }},
        {"copy", arrays(l), [](Operands& o) { o.result.emplace(o.left); }},
        {"move", 0, [](Operands& o) { o.result.emplace(std::move(o.left)); }},
        {"copy a moved-from value", 0, [](Operands& o) { o.result.emplace(o.left); }, move_left_away},
    };
    for (const int count : {0, 1, 31, 32, 33, 70}) {
        const std::string by = " by " + std::to_string(count);
        table.push_back({"copy shifted left" + by, arrays(l + static_cast<unsigned>(count)),
                         [count](Operands& o) { o.result.emplace(o.left, count, true); }});
        table.push_back(
            {"copy shifted right" + by, arrays(l), [count](Operands& o) { o.result.emplace(o.left, count, false); }});
    }
    return table;
}

Operations assignment(unsigned, unsigned r) {
    return {
        {"copy assignment", 0, [](Operands& o) { o.left = o.right; }},
        {"copy assignment to itself", 0, [](Operands& o) { o.left = static_cast<const KVAL_UINTEGER&>(o.left); }},
        {"copy assignment to a moved-from value", arrays(r), [](Operands& o) { o.left = o.right; }, move_left_away},
        {"move assignment", 0, [](Operands& o) { o.left = std::move(o.right); }},
        {"move assignment to a moved-from value", 0, [](Operands& o) { o.left = std::move(o.right); }, move_left_away},
        {"assignment of a number", 0, [](Operands& o) { o.left = 7U; }},
        {"assignment of a number to a moved-from value", 0, [](Operands& o) { o.left = 7U; }, move_left_away},
        {"swap", 0, [](Operands& o) { swap(o.left, o.right); }},
        {"std::swap", 0, [](Operands& o) { std::swap(o.left, o.right); }},
        {"swap with a moved-from value", 0, [](Operands& o) { swap(o.left, o.right); }, move_left_away},
    };
}

Operations resizing(unsigned l, unsigned r) {
    return {
        {"resize", growth(l, r), [r](Operands& o) { o.left.bitwidth(r); }},
        {"resize to 1 bit", 0, [](Operands& o) { o.left.bitwidth(1); }},
        {"resize to 0 bits", 0, [](Operands& o) { o.left.bitwidth(0); }},
        {"resize a moved-from value", arrays(r), [r](Operands& o) { o.left.bitwidth(r); }, move_left_away},
        {"resize a value that was wider", growth(l, r), [r](Operands& o) { o.left.bitwidth(r); },
         [l](Operands& o) { o.left.bitwidth(l + 100).bitwidth(l); }},
        {"trim", 0,
         [](Operands& o) {
             o.left.EnforceWidth();
             o.left.DeleteString();
         }},
    };
}

Operations logic(unsigned l, unsigned r) {
    const std::size_t wider = arrays(std::max(l, r));
    return {
        {"&", wider, giving([](Operands& o) { return o.left & o.right; })},
        {"|", wider, giving([](Operands& o) { return o.left | o.right; })},
        {"^", wider, giving([](Operands& o) { return o.left ^ o.right; })},
        {"~", arrays(l), giving([](Operands& o) { return ~o.left; })},
        {"&=", 0, [](Operands& o) { o.left &= o.right; }},
        {"|=", 0, [](Operands& o) { o.left |= o.right; }},
        {"&= itself", 0, [](Operands& o) { o.left &= static_cast<const KVAL_UINTEGER&>(o.left); }},
        {"|= itself", 0, [](Operands& o) { o.left |= static_cast<const KVAL_UINTEGER&>(o.left); }},
    };
}

Operations arithmetic(unsigned l, unsigned r) {
    const unsigned wider = std::max(l, r);
    const std::size_t product = arrays(l + r);
    const auto zero_both = [](Operands& o) {
        o.left = 0U;
        o.right = 0U;
    };
    Operations table{
        {"+", arrays(wider), giving([](Operands& o) { return o.left + o.right; }), zero_both},
        {"+ that grows", arrays(wider + 1), giving([](Operands& o) { return o.left + o.right; }), fill_both_with_ones},
        {"a = a + a", arrays(l), [](Operands& o) { o.left = o.left + o.left; }, zero_both},
        {"-", arrays(l), giving([](Operands& o) { return o.left - o.right; })},
        {"*", product, giving([](Operands& o) { return o.left * o.right; }), [](Operands&) {}, product / 2},
        {"* of ones", product, giving([](Operands& o) { return o.left * o.right; }), fill_both_with_ones, product / 2},
        {"+=", 0, [](Operands& o) { o.left += o.right; }},
        {"+= itself", 0, [](Operands& o) { o.left += static_cast<const KVAL_UINTEGER&>(o.left); }},
        {"+= number", 0, [](Operands& o) { o.left += 0xFFFFFFFFU; }},
        {"+= that carries", 0, [](Operands& o) { o.left += o.right; }, fill_both_with_ones},
        {"+= number that carries", 0, [](Operands& o) { o.left += 1U; }, fill_both_with_ones},
        {"-=", 0, [](Operands& o) { o.left -= o.right; }},
        {"-= itself", 0, [](Operands& o) { o.left -= static_cast<const KVAL_UINTEGER&>(o.left); }},
        {"-= number", 0, [](Operands& o) { o.left -= 0xFFFFFFFFU; }},
        {"-= number that borrows", 0, [](Operands& o) { o.left -= 1U; }, zero_both},
        {"++", 0, [](Operands& o) { ++o.left; }},
        {"++ that carries", 0, [](Operands& o) { ++o.left; }, fill_both_with_ones},
        {"--", 0, [](Operands& o) { --o.left; }},
        {"-- that borrows", 0, [](Operands& o) { --o.left; }, zero_both},
    };
    if (wider <= 32) {
        table.push_back({"/", 0, giving([](Operands& o) { return o.left / o.right; })});
        table.push_back({"%", 0, giving([](Operands& o) { return o.left % o.right; })});
        table.push_back({"/ by zero", 0, giving([](Operands& o) { return o.left / o.right; }), zero_both});
        table.push_back({"% by zero", 0, giving([](Operands& o) { return o.left % o.right; }), zero_both});
    } else {
        table.push_back({"/ that throws", 0, throwing([](Operands& o) { return o.left / o.right; })});
        table.push_back({"% that throws", 0, throwing([](Operands& o) { return o.left % o.right; })});
    }
    return table;
}

Operations shifts(unsigned l, unsigned) {
    Operations table;
    for (const unsigned count : {0U, 1U, 31U, 32U, 33U, 35U, 36U, 70U, l - 1, l, l + 1}) {
        const std::string by = " by " + std::to_string(count);
        const unsigned narrowed = count < l ? l - count : 1;
        table.push_back({"<<" + by, arrays(l + count), giving([count](Operands& o) { return o.left << count; })});
        table.push_back({">>" + by, arrays(narrowed), giving([count](Operands& o) { return o.left >> count; })});
        table.push_back({"<<=" + by, 0, [count](Operands& o) { o.left <<= count; }});
        table.push_back({">>=" + by, 0, [count](Operands& o) { o.left >>= count; }});
    }
    return table;
}

void compare(Operands& o) {
    const KVAL_UINTEGER& l = o.left;
    const KVAL_UINTEGER& r = o.right;
    for (const bool holds : {l > r, l >= r, l < r, l <= r, l == r, l != r, l == l, l != l})
        o.answer = o.answer * 2 + holds;
}

void compare_with_number(Operands& o) {
    const KVAL_UINTEGER& v = o.left;
    const unsigned n = 0x12345678;
    for (const bool holds : {v > n, v >= n, v<n, v <= n, v == n, v != n, n> v, n >= v, n < v, n <= v, n == v, n != v}) {
        o.answer = o.answer * 2 + holds;
    }
}

void read(Operands& o) {
    const KVAL_UINTEGER& v = o.left;
    for (const unsigned number :
         {v.bitwidth(), v.get_top(), v.bit(0), v.bit(v.bitwidth()), v.uint(), v.get_uvalue_at(0), v.get_xmask_at(0),
          v.get_uvalue_at(v.get_size()), v.get_xmask_at(-1)}) {
        o.answer = o.answer * 31 + number;
    }
    for (const bool holds : {v.is_zero(), v.is_one(), v.IsCompact(), v.is_x(0, 0), v.is_x(0, 1), v.is_x(), v.is_z(),
                             v.is_wl(), v.is_wh()}) {
        o.answer = o.answer * 2 + holds;
    }
}

// A moved-from operand gives results that mean nothing, safely.
Operations moved_from(unsigned, unsigned) {
    const auto nothing = [](Operands&) {};
    const Operation rows[] = {
        {"&", kArraysOfResult, giving([](Operands& o) { return o.left & o.right; })},
        {"|", kArraysOfResult, giving([](Operands& o) { return o.left | o.right; })},
        {"^", kArraysOfResult, giving([](Operands& o) { return o.left ^ o.right; })},
        {"~", kArraysOfResult, giving([](Operands& o) { return ~o.left; })},
        {"+", kArraysOfResult, giving([](Operands& o) { return o.left + o.right; })},
        {"-", kArraysOfResult, giving([](Operands& o) { return o.left - o.right; })},
        {"*", kArraysOfResult, giving([](Operands& o) { return o.left * o.right; }), nothing, 1},
        {"<< 33", kArraysOfResult, giving([](Operands& o) { return o.left << 33U; })},
        {">> 33", kArraysOfResult, giving([](Operands& o) { return o.left >> 33U; })},
        {"copy shifted left by 33", kArraysOfResult, [](Operands& o) { o.result.emplace(o.left, 33, true); }},
        {"copy shifted right by 33", kArraysOfResult, [](Operands& o) { o.result.emplace(o.left, 33, false); }},
        {"&=", 0, [](Operands& o) { o.left &= o.right; }},
        {"|=", 0, [](Operands& o) { o.left |= o.right; }},
        {"+=", 0, [](Operands& o) { o.left += o.right; }},
        {"+= number", 0, [](Operands& o) { o.left += 1U; }},
        {"-=", 0, [](Operands& o) { o.left -= o.right; }},
        {"-= number", 0, [](Operands& o) { o.left -= 1U; }},
        {"<<= 33", 0, [](Operands& o) { o.left <<= 33U; }},
        {">>= 33", 0, [](Operands& o) { o.left >>= 33U; }},
        {"++", 0, [](Operands& o) { ++o.left; }},
        {"--", 0, [](Operands& o) { --o.left; }},
        {"comparisons", 0, compare},
        {"comparisons with a number", 0, compare_with_number},
    };
    return with_moved_from(rows, move_left_away, [](Operands& o) { move_away(o.right); });
}

Operations access(unsigned l, unsigned) {
    const int top = static_cast<int>(l) - 1;
    return {
        {"comparisons", 0, compare},
        {"comparisons with a number", 0, compare_with_number},
        {"hash", 0, [](Operands& o) { o.answer = o.left.get_hash(0) ^ o.left.get_hash(20); }},
        {"hashes of a number and of bytes", 0,
         [](Operands& o) { o.answer = twang_uinthash(7) ^ static_cast<unsigned>(one_at_a_time("bytes", 5)); }},
        {"readers", 0, read},
        {"set_bit", 0, [top](Operands& o) { o.left.set_bit(0, 1).set_bit(top, 1); }},
        {"set_bit at the width", 0, [top](Operands& o) { o.left.set_bit(top + 1, 1).EnforceWidth(); }},
        {"raw stores", 0,
         [](Operands& o) {
             o.left.set_uvalue_at(0, 5).set_xmask_at(o.left.get_size() - 1, 1);
             o.left.set_uvalue_at(o.left.get_size(), 5).set_xmask_at(-1, 5);
         }},
        {"set_x", 0, [top](Operands& o) { o.left.set_x(0).set_x(top).set_x(top + 1); }},
        {"force_x", 0, [](Operands& o) { o.left.force_x(); }},
        {"force_z", 0, [](Operands& o) { o.left.force_z(); }},
        {"force_wl", 0, [](Operands& o) { o.left.force_wl(); }},
        {"force_wh", 0, [](Operands& o) { o.left.force_wh(); }},
    };
}

Operations text(unsigned l, unsigned r) {
    const unsigned digits = (r + 3) / 4;
    std::string hexadecimal(digits, 'b');
    std::string binary(r, '1');
    std::string lenient = hexadecimal;
    lenient[digits / 2] = '-';
    std::string unknown = binary;
    unknown[r / 2] = 'X';
    const std::string long_hexadecimal(300, 'b');
    const std::string long_binary(1200, '1');
    const std::size_t hexadecimal_parse = 1 + growth(l, digits * 4);
    const std::size_t binary_parse = 1 + growth(l, r);
    return {
        {"first hexadecimal text", 1, [](Operands& o) { o.left.as_hex_string(); }, drop_texts},
        {"first binary text", 1, [](Operands& o) { o.left.as_bin_string(); }, drop_texts},
        {"hexadecimal text with X digits", 1, [](Operands& o) { o.left.as_hex_string(); }, set_some_x},
        {"binary text with X digits", 1, [](Operands& o) { o.left.as_bin_string(); }, set_some_x},
        {"second hexadecimal text", 0, [](Operands& o) { o.left.as_hex_string(); }},
        {"second binary text", 0, [](Operands& o) { o.right.as_bin_string(); }},
        {"binary text in place of hexadecimal", 1, [](Operands& o) { o.left.as_bin_string(); }},
        {"hexadecimal text in place of binary", 1, [](Operands& o) { o.right.as_hex_string(); }},
        {"hexadecimal parse", hexadecimal_parse,
         [hexadecimal](Operands& o) { o.left.set_value_from_hex_string(hexadecimal.c_str()); }, drop_texts},
        {"hexadecimal parse of other characters", hexadecimal_parse,
         [lenient](Operands& o) { o.left.set_value_from_hex_string(lenient.c_str()); }, drop_texts},
        {"binary parse", binary_parse, [binary](Operands& o) { o.left.set_value_from_bin_string(binary.c_str()); },
         drop_texts},
        {"binary parse of an X", binary_parse,
         [unknown](Operands& o) { o.left.set_value_from_bin_string(unknown.c_str()); }, drop_texts},
        {"hexadecimal parse of more digits than any text has", 1 + growth(l, 1200),
         [long_hexadecimal](Operands& o) { o.left.set_value_from_hex_string(long_hexadecimal.c_str()); }},
        {"binary parse of more digits than any text has", 1 + growth(l, 1200),
         [long_binary](Operands& o) { o.left.set_value_from_bin_string(long_binary.c_str()); }},
        {"hexadecimal parse in place of a text of the same length", 0,
         [hexadecimal](Operands& o) { o.left.set_value_from_hex_string(hexadecimal.c_str()); },
         [lenient](Operands& o) { o.left.set_value_from_hex_string(lenient.c_str()); }},
        {"binary parse in place of a text of the same length", 0,
         [binary](Operands& o) { o.left.set_value_from_bin_string(binary.c_str()); },
         [unknown](Operands& o) { o.left.set_value_from_bin_string(unknown.c_str()); }},
        {"hexadecimal parse of the empty text", 1, [](Operands& o) { o.left.set_value_from_hex_string(""); },
         drop_texts},
        {"binary parse of the empty text", 1, [](Operands& o) { o.left.set_value_from_bin_string(""); }, drop_texts},
        {"hexadecimal parse of null", 1, [](Operands& o) { o.left.set_value_from_hex_string(nullptr); }, drop_texts},
        {"binary parse of null", 1, [](Operands& o) { o.left.set_value_from_bin_string(nullptr); }, drop_texts},
        {"hexadecimal parse of its own text", 0,
         [](Operands& o) { o.left.set_value_from_hex_string(o.left.as_hex_string()); }},
        {"binary parse of its own text", 0,
         [](Operands& o) { o.right.set_value_from_bin_string(o.right.as_bin_string()); }},
        {"hexadecimal parse into a moved-from value", 1 + arrays(digits * 4),
         [hexadecimal](Operands& o) { o.left.set_value_from_hex_string(hexadecimal.c_str()); }, move_left_away},
        {"binary parse into a moved-from value", 1 + arrays(r),
         [binary](Operands& o) { o.left.set_value_from_bin_string(binary.c_str()); }, move_left_away},
    };
}

void draw_from_two_streams(Operands& o) {
    char buffer[256];
    void* standard = kval_initstate(7, buffer, 128);
    o.answer = static_cast<unsigned>(kval_random());
    kval_setstate(standard);
    kval_srandom(8);
    o.answer ^= static_cast<unsigned>(kval_random());
}

Operations random_bits(unsigned l, unsigned) {
    const std::size_t bitmap = l > 64 ? 1 : 0;
    Operations table{{"randomize", 0, [](Operands& o) { o.left.randomize(); }, [](Operands&) { kval_srandom(1); }},
                     {"randomize a signed value", 0, [](Operands& o) { o.signed_left.randomize(); },
                      [](Operands&) { kval_srandom(1); }},
                     {"the generator", 0, draw_from_two_streams}};
    const int width = static_cast<int>(l);
    for (const int count : {0, 1, width / 2, width, width + 1, -1}) {
        const std::string bits = "randomize " + std::to_string(count) + " bits";
        table.push_back({bits, 0, [count](Operands& o) { o.left.randomize(count); }, [](Operands&) {}, bitmap});
        table.push_back({bits + " of a signed value", 0, [count](Operands& o) { o.signed_left.randomize(count); },
                         [](Operands&) {}, bitmap});
    }
    return table;
}

KVAL_UINTEGER make_value(unsigned width, unsigned seed, Bits bits) {
    KVAL_UINTEGER v(0, width);
    unsigned word = seed;
    for (int i = 0; i < v.get_size(); ++i) {
        word = word * 1664525U + 1013904223U;
        v.set_uvalue_at(i, word);
    }
    v.EnforceWidth();
    v.set_bit(0, 1);  // never zero
    if (bits == Bits::Unknown) v.set_x(0).set_x(static_cast<int>(width) - 1).force_wl();
    return v;
}

}  // namespace

Operands::Operands(const Operation& operation, unsigned left_width, unsigned right_width, Bits bits)
    : left(make_value(left_width, 1, bits)),
      right(make_value(right_width, 2, bits)),
      signed_left(left),
      signed_right(right) {
    make_texts(*this);
    operation.prepare(*this);
}

std::size_t stated_allocations(const Operation& operation, const Operands& operands) {
    if (operation.allocations != kArraysOfResult) return operation.allocations;
    return arrays(operands.result.value().bitwidth());
}

std::vector<Theme> allocating_themes() {
    std::vector<Theme> themes{
        {"construction", construction}, {"assignment", assignment}, {"resizing", resizing}, {"logic", logic},
        {"arithmetic", arithmetic},     {"shifts", shifts},         {"text", text},         {"random", random_bits},
        {"moved_from", moved_from}};
    for (const Theme& theme : allocating_signed_themes()) themes.push_back(theme);
    return themes;
}

std::vector<Theme> all_themes() {
    std::vector<Theme> themes = allocating_themes();
    themes.push_back({"access", access});
    themes.push_back({"signed_access", signed_access});
    return themes;
}

std::ostream& operator<<(std::ostream& out, const Theme& theme) { return out << theme.name; }

Outcome observe(const Operands& operands) {
    Outcome outcome{{}, std::nullopt, operands.answer};
    for (const KVAL_UINTEGER* operand : operands.all()) outcome.operands.push_back(observe(*operand));
    if (operands.result) outcome.result = observe(*operands.result);
    return outcome;
}

bool operator==(const Outcome& a, const Outcome& b) {
    return std::tie(a.operands, a.result, a.answer) == std::tie(b.operands, b.result, b.answer);
}

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    const char* const names[] = {"left", "right", "signed left", "signed right"};
    for (std::size_t i = 0; i < outcome.operands.size(); ++i) out << "\n  " << names[i] << ": " << outcome.operands[i];
    if (outcome.result) out << "\n  result: " << *outcome.result;
    return out << "\n  answer: " << outcome.answer;
}
