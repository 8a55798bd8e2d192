// The tables of operations on signed values, and on signed and unsigned values together.
#include <algorithm>
#include <string>
#include <utility>

#include "table.h"

namespace {

// ---- operands of every kind ----

// Raw: ones in all stored words. In a signed value that is one bits above the width too, as assignment from a wider
// unsigned value and, in wide form, construction from -1 leave them; an unsigned value never holds such bits.
enum class Kind { NotNegative, Negative, Largest, Smallest, Raw };

const struct {
    Kind kind;
    std::string name;
} kKinds[] = {{Kind::NotNegative, "not negative"},
              {Kind::Negative, "negative"},
              {Kind::Largest, "largest"},
              {Kind::Smallest, "smallest"},
              {Kind::Raw, "raw -1"}};

void fill(KVAL_UINTEGER& v, unsigned word) {
    for (int i = 0; i < v.get_size(); ++i) v.set_uvalue_at(i, word);
    v.EnforceWidth();
}

// X marks and flags stay; the other bits do too, where the kind leaves a choice.
template <typename Value>
void set(Value& v, Kind kind) {
    if (kind == Kind::Raw) {
        KVAL_UINTEGER wider = ~KVAL_UINTEGER(0, v.bitwidth() + 64);
        if (v.is_x()) wider.force_x().force_wl();
        v = wider;
        return;
    }
    if (kind == Kind::Largest) fill(v, 0xFFFFFFFF);
    if (kind == Kind::Smallest) fill(v, 0);
    const int top = v.get_size() - 1;
    const unsigned sign = 1U << ((v.bitwidth() - 1) % 32);
    const bool negative = kind == Kind::Negative || kind == Kind::Smallest;
    v.set_uvalue_at(top, negative ? v.get_uvalue_at(top) | sign : v.get_uvalue_at(top) & ~sign);
}

void drop_texts(Operands& o) {
    o.left.DeleteString();
    o.right.DeleteString();
    o.signed_left.DeleteString();
    o.signed_right.DeleteString();
}

Run preparing(Kind left, Kind right) {
    return [left, right](Operands& o) {
        set(o.left, left);
        set(o.right, right);
        set(o.signed_left, left);
        set(o.signed_right, right);
        drop_texts(o);
        make_texts(o);
    };
}

// A row for every kind of left operand.
void add_for_every_kind(Operations& table, const Operation& row) {
    for (const auto& left : kKinds) {
        table.push_back({row.name + ", " + left.name, row.allocations, row.run, preparing(left.kind, Kind::NotNegative),
                         row.temporaries});
    }
}

// A row for every kind of right operand.
void add_for_every_right_kind(Operations& table, const Operation& row) {
    for (const auto& right : kKinds) {
        table.push_back({row.name + ", " + right.name, row.allocations, row.run, preparing(Kind::Negative, right.kind),
                         row.temporaries});
    }
}

// A row for every two kinds of operands.
void add_for_every_pair(Operations& table, const Operation& row) {
    for (const auto& left : kKinds) {
        for (const auto& right : kKinds) {
            table.push_back({row.name + ", " + left.name + " and " + right.name, row.allocations, row.run,
                             preparing(left.kind, right.kind), row.temporaries});
        }
    }
}

void move_left_away(Operands& o) { move_away(o.signed_left); }
void move_right_away(Operands& o) {
    move_away(o.right);
    move_away(o.signed_right);
}

// ---- themes ----

Operations construction(unsigned l, unsigned) {
    Operations table{
        {"move from a moved-from value", 0, giving([](Operands& o) { return KVAL_SINTEGER(std::move(o.signed_left)); }),
         move_left_away},
        {"copy a moved-from value", 0, giving([](Operands& o) { return KVAL_SINTEGER(o.signed_left); }),
         move_left_away},
    };
    for (const int number : {0, 5, -1, -0x7FFFFFFF - 1}) {
        table.push_back({"construct from " + std::to_string(number), arrays(l),
                         giving([number, l](Operands&) { return KVAL_SINTEGER(number, l); })});
    }
    const Operation rows[] = {
        {"copy", arrays(l), giving([](Operands& o) { return KVAL_SINTEGER(o.signed_left); })},
        {"copy an unsigned value", arrays(l), giving([](Operands& o) { return KVAL_SINTEGER(o.left); })},
        {"copy into an unsigned value", arrays(l), giving([](Operands& o) { return KVAL_UINTEGER(o.signed_left); })},
        {"move", 0, giving([](Operands& o) { return KVAL_SINTEGER(std::move(o.signed_left)); })},
        {"move an unsigned value", 0, giving([](Operands& o) { return KVAL_SINTEGER(std::move(o.left)); })},
        {"move into an unsigned value", 0, giving([](Operands& o) { return KVAL_UINTEGER(std::move(o.signed_left)); })},
    };
    for (const Operation& row : rows) add_for_every_kind(table, row);
    return table;
}

Operations assignment(unsigned l, unsigned r) {
    struct Assignment {
        const char* name;
        Run run;
        bool copies;
    };
    const Assignment assignments[] = {
        {"copy assignment", [](Operands& o) { o.signed_left = o.signed_right; }, true},
        {"copy assignment of an unsigned value", [](Operands& o) { o.signed_left = o.right; }, true},
        {"copy assignment to an unsigned value", [](Operands& o) { o.left = o.signed_right; }, true},
        {"move assignment", [](Operands& o) { o.signed_left = std::move(o.signed_right); }, false},
        {"move assignment of an unsigned value", [](Operands& o) { o.signed_left = std::move(o.right); }, false},
        {"move assignment to an unsigned value", [](Operands& o) { o.left = std::move(o.signed_right); }, false},
    };
    const auto move_targets_away = [](Operands& o) {
        move_away(o.left);
        move_away(o.signed_left);
    };
    Operations table{
        {"copy assignment to itself", 0,
         [](Operands& o) { o.signed_left = static_cast<const KVAL_SINTEGER&>(o.signed_left); }},
        {"copy assignment to itself through the base", 0,
         [](Operands& o) { o.signed_left = static_cast<const KVAL_UINTEGER&>(o.signed_left); }},
        {"assignment of a number through the base", 0,
         [](Operands& o) { static_cast<KVAL_UINTEGER&>(o.signed_left) = 7U; }},
        {"swap with a moved-from value", 0, [](Operands& o) { swap(o.signed_left, o.signed_right); }, move_left_away},
        {"std::swap with a moved-from value", 0, [](Operands& o) { std::swap(o.signed_left, o.signed_right); },
         move_left_away},
        {"a = a + a", arrays(l), [](Operands& o) { o.signed_left = o.signed_left + o.signed_left; },
         [](Operands& o) { fill(o.signed_left, 0); }},
    };
    for (const Assignment& a : assignments) {
        const std::string name = a.name;
        add_for_every_right_kind(table, {name, 0, a.run});
        table.push_back({name + ", from moved-from", 0, a.run, move_right_away});
        for (const auto& right : kKinds) {
            const auto prepare = [kind = right.kind, move_targets_away](Operands& o) {
                preparing(Kind::NotNegative, kind)(o);
                move_targets_away(o);
            };
            table.push_back({name + ", " + right.name + " to moved-from", a.copies ? arrays(r) : 0, a.run, prepare});
        }
    }
    add_for_every_right_kind(table, {"swap", 0, [](Operands& o) { swap(o.signed_left, o.signed_right); }});
    add_for_every_right_kind(table, {"std::swap", 0, [](Operands& o) { std::swap(o.signed_left, o.signed_right); }});
    return table;
}

Operations resizing(unsigned l, unsigned r) {
    Operations table{
        {"resize a moved-from value", arrays(r), [r](Operands& o) { o.signed_left.bitwidth(r); }, move_left_away},
    };
    const Operation rows[] = {
        {"resize", growth(l, r), [r](Operands& o) { o.signed_left.bitwidth(r); }},
        {"resize to 1 bit", 0, [](Operands& o) { o.signed_left.bitwidth(1); }},
        {"resize to 0 bits", 0, [](Operands& o) { o.signed_left.bitwidth(0); }},
        {"complement_me", 0, [](Operands& o) { o.signed_left.complement_me(); }},
        {"twos_complement", arrays(l), giving([](Operands& o) { return o.signed_left.twos_complement(); })},
    };
    for (const Operation& row : rows) add_for_every_kind(table, row);
    for (const auto& left : kKinds) {
        const auto prepare = [kind = left.kind, l](Operands& o) {
            o.signed_left.bitwidth(l + 100).bitwidth(l);
            set(o.signed_left, kind);
        };
        table.push_back({"resize what was wider, " + left.name, growth(l, r),
                         [r](Operands& o) { o.signed_left.bitwidth(r); }, prepare});
    }
    return table;
}

Operations sums(unsigned l, unsigned r) {
    const std::size_t wider = arrays(std::max(l, r));
    const Operation rows[] = {
        {"S + S", kArraysOfResult, giving([](Operands& o) { return o.signed_left + o.signed_right; })},
        {"S + U", kArraysOfResult, giving([](Operands& o) { return o.signed_left + o.right; })},
        {"U + S", kArraysOfResult, giving([](Operands& o) { return o.left + o.signed_right; })},
        {"S - S", kArraysOfResult, giving([](Operands& o) { return o.signed_left - o.signed_right; })},
        {"S - U", wider, giving([](Operands& o) { return o.signed_left - o.right; })},
        {"U - S", kArraysOfResult, giving([](Operands& o) { return o.left - o.signed_right; })},
    };
    Operations table;
    for (const Operation& row : rows) add_for_every_pair(table, row);
    return table;
}

Operations products(unsigned l, unsigned r) {
    const std::size_t product = arrays(l + r);
    const Run nothing = [](Operands&) {};
    const Operation rows[] = {
        {"S * S", product, giving([](Operands& o) { return o.signed_left * o.signed_right; }), nothing, product / 2},
        {"S * U", product, giving([](Operands& o) { return o.signed_left * o.right; }), nothing, product / 2},
        {"U * S", product, giving([](Operands& o) { return o.left * o.signed_right; }), nothing, product / 2},
    };
    Operations table;
    for (const Operation& row : rows) add_for_every_pair(table, row);
    return table;
}

Operations shifts(unsigned l, unsigned) {
    Operations table;
    const auto add = [&table](unsigned count, unsigned width) {
        const std::string by = " by " + std::to_string(count);
        add_for_every_kind(table,
                           {">>" + by, arrays(width), giving([count](Operands& o) { return o.signed_left >> count; })});
        add_for_every_kind(table, {">>=" + by, 0, [count](Operands& o) { o.signed_left >>= count; }});
    };
    for (const unsigned count : {0U, 1U, 31U, 32U, 33U, 35U, 36U, 70U, l - 1, l, l + 1, 0x7FFFFFFFU, 0x80000000U})
        add(count, count < l ? l - count : 1);
    // The count is subtracted in 32 bits: -1 and -32 as signed numbers.
    add(0xFFFFFFFF, l + 1);
    add(0xFFFFFFE0, l + 32);
    return table;
}

const struct {
    const char* name;
    bool gives_remainder;
    KVAL_SINTEGER (*divide)(const Operands&);
} kDivisions[] = {
    {"S / S", false, [](const Operands& o) { return o.signed_left / o.signed_right; }},
    {"U / S", false, [](const Operands& o) { return o.left / o.signed_right; }},
    {"S / U", false, [](const Operands& o) { return o.signed_left / o.right; }},
    {"S % S", true, [](const Operands& o) { return o.signed_left % o.signed_right; }},
    {"U % S", true, [](const Operands& o) { return o.left % o.signed_right; }},
    {"S % U", true, [](const Operands& o) { return o.signed_left % o.right; }},
    {"posr_div(S, S)", false, [](const Operands& o) { return posr_div(o.signed_left, o.signed_right); }},
    {"posr_div(U, S)", false, [](const Operands& o) { return posr_div(o.left, o.signed_right); }},
    {"posr_div(S, U)", false, [](const Operands& o) { return posr_div(o.signed_left, o.right); }},
    {"posr_mod(S, S)", true, [](const Operands& o) { return posr_mod(o.signed_left, o.signed_right); }},
    {"posr_mod(U, S)", true, [](const Operands& o) { return posr_mod(o.left, o.signed_right); }},
    {"posr_mod(S, U)", true, [](const Operands& o) { return posr_mod(o.signed_left, o.right); }},
};

// The low word alone makes a divisor zero.
void clear_low_words_of_divisors(Operands& o) {
    o.right.set_uvalue_at(0, 0);
    o.signed_right.set_uvalue_at(0, 0);
}

void clear_dividends(Operands& o) {
    fill(o.left, 0);
    fill(o.signed_left, 0);
}

Operations division(unsigned l, unsigned r) {
    Operations table;
    for (const auto& division : kDivisions) {
        const std::string name = division.name;
        const std::size_t result = arrays(division.gives_remainder ? r : l);
        table.push_back({name + " by zero", result, giving(division.divide), clear_low_words_of_divisors});
        if (std::max(l, r) <= 32) {
            add_for_every_pair(table, {name, result, giving(division.divide)});
        } else {
            table.push_back({name + " that throws", 0, throwing(division.divide), clear_dividends, result});
        }
    }
    // A negative dividend that leaves a remainder is divided by low words, however wide the operands are.
    const auto divide_minus_7_by_2 = [l](Operands& o) {
        o.signed_left = KVAL_SINTEGER(-7, l);
        o.right = 2U;
    };
    if (l >= 4 && r >= 3) {
        table.push_back({"posr_div(S, U) of -7", arrays(l),
                         giving([](Operands& o) { return posr_div(o.signed_left, o.right); }), divide_minus_7_by_2});
        table.push_back({"posr_mod(S, U) of -7", arrays(r),
                         giving([](Operands& o) { return posr_mod(o.signed_left, o.right); }), divide_minus_7_by_2});
    }
    return table;
}

// What signed operands have from the unsigned class.
Operations inherited(unsigned l, unsigned r) {
    const std::size_t wider = arrays(std::max(l, r));
    const std::string binary(1200, '1');  // longer than any cached text
    const std::string hexadecimal(300, 'b');
    const Operation between_two[] = {
        {"&", wider, giving([](Operands& o) { return o.signed_left & o.signed_right; })},
        {"|", wider, giving([](Operands& o) { return o.signed_left | o.signed_right; })},
        {"^", wider, giving([](Operands& o) { return o.signed_left ^ o.signed_right; })},
        {"&=", 0, [](Operands& o) { o.signed_left &= o.signed_right; }},
        {"|=", 0, [](Operands& o) { o.signed_left |= o.signed_right; }},
        {"+=", 0, [](Operands& o) { o.signed_left += o.signed_right; }},
        {"-=", 0, [](Operands& o) { o.signed_left -= o.signed_right; }},
    };
    const Operation of_one[] = {
        {"~", arrays(l), giving([](Operands& o) { return ~o.signed_left; })},
        {"<< 1", arrays(l + 1), giving([](Operands& o) { return o.signed_left << 1U; })},
        {"<< 33", arrays(l + 33), giving([](Operands& o) { return o.signed_left << 33U; })},
        {"copy shifted left by 33", arrays(l + 33), [](Operands& o) { o.result.emplace(o.signed_left, 33, true); }},
        {"copy shifted right by 33", arrays(l), [](Operands& o) { o.result.emplace(o.signed_left, 33, false); }},
        {"<<= 1", 0, [](Operands& o) { o.signed_left <<= 1U; }},
        {"<<= 33", 0, [](Operands& o) { o.signed_left <<= 33U; }},
        {"+= number", 0, [](Operands& o) { o.signed_left += 0xFFFFFFFFU; }},
        {"-= number", 0, [](Operands& o) { o.signed_left -= 0xFFFFFFFFU; }},
        {"++", 0, [](Operands& o) { ++o.signed_left; }},
        {"--", 0, [](Operands& o) { --o.signed_left; }},
        {"binary text in place of hexadecimal", 1, [](Operands& o) { o.signed_left.as_bin_string(); }},
        {"binary parse", 1 + growth(l, 1200),
         [binary](Operands& o) { o.signed_left.set_value_from_bin_string(binary.c_str()); }},
        {"hexadecimal parse", 1 + growth(l, 1200),
         [hexadecimal](Operands& o) { o.signed_left.set_value_from_hex_string(hexadecimal.c_str()); }},
    };
    Operations table;
    for (const Operation& row : between_two) add_for_every_right_kind(table, row);
    for (const Operation& row : of_one) add_for_every_kind(table, row);
    add_for_every_right_kind(
        table, {"hexadecimal text in place of binary", 1, [](Operands& o) { o.signed_right.as_hex_string(); }});
    return table;
}

template <typename Left, typename Right>
void compare(Operands& o, const Left& l, const Right& r) {
    for (const bool holds : {l == r, l != r, l<r, l <= r, l> r, l >= r}) o.answer = o.answer * 2 + holds;
}

void compare_all(Operands& o) {
    compare(o, o.signed_left, o.signed_right);
    compare(o, o.signed_left, o.signed_left);
    compare(o, o.signed_left, o.right);
    compare(o, o.left, o.signed_right);
    compare(o, o.signed_left, 0xFFFFFFFFU);
    compare(o, 0xFFFFFFFFU, o.signed_left);
}

void read(Operands& o) {
    const KVAL_SINTEGER& v = o.signed_left;
    for (const unsigned number :
         {v.bitwidth(), static_cast<unsigned>(v.convert_to_signed_representation()),
          static_cast<unsigned>(v.signed_value()), v.absolute_value(), v.maximum_negative(), v.maximum_positive(),
          v.SignExtendedChunk(0), v.SignExtendedChunk(v.get_size() - 1), v.get_hash(0)}) {
        o.answer = o.answer * 31 + number;
    }
    o.answer = o.answer * 4 + v.positive() * 2U + v.negative();
}

// A moved-from operand gives results that mean nothing, safely.
Operations moved_from(unsigned, unsigned) {
    const auto nothing = [](Operands&) {};
    const Operation rows[] = {
        {"S + S", kArraysOfResult, giving([](Operands& o) { return o.signed_left + o.signed_right; })},
        {"S + U", kArraysOfResult, giving([](Operands& o) { return o.signed_left + o.right; })},
        {"U + S", kArraysOfResult, giving([](Operands& o) { return o.left + o.signed_right; })},
        {"S - S", kArraysOfResult, giving([](Operands& o) { return o.signed_left - o.signed_right; })},
        {"S - U", kArraysOfResult, giving([](Operands& o) { return o.signed_left - o.right; })},
        {"U - S", kArraysOfResult, giving([](Operands& o) { return o.left - o.signed_right; })},
        {"S * S", kArraysOfResult, giving([](Operands& o) { return o.signed_left * o.signed_right; }), nothing, 1},
        {"S * U", kArraysOfResult, giving([](Operands& o) { return o.signed_left * o.right; }), nothing, 1},
        {"U * S", kArraysOfResult, giving([](Operands& o) { return o.left * o.signed_right; }), nothing, 1},
        {"twos_complement", kArraysOfResult, giving([](Operands& o) { return o.signed_left.twos_complement(); })},
        {"complement_me", 0, [](Operands& o) { o.signed_left.complement_me(); }},
        {">> 33", kArraysOfResult, giving([](Operands& o) { return o.signed_left >> 33U; })},
        {">>= 33", 0, [](Operands& o) { o.signed_left >>= 33U; }},
        {"comparisons", 0, compare_all},
        {"readers", 0, read},
    };
    Operations table = with_moved_from(rows, move_left_away, move_right_away);
    for (const auto& division : kDivisions) {
        table.push_back({std::string(division.name) + ", right moved-from", kArraysOfResult, giving(division.divide),
                         move_right_away});
    }
    return table;
}

}  // namespace

std::vector<Theme> allocating_signed_themes() {
    return {{"signed_construction", construction}, {"signed_assignment", assignment},
            {"signed_resizing", resizing},         {"signed_sums", sums},
            {"signed_products", products},         {"signed_shifts", shifts},
            {"signed_division", division},         {"signed_inherited", inherited},
            {"signed_moved_from", moved_from}};
}

Operations signed_access(unsigned, unsigned) {
    Operations table;
    add_for_every_pair(table, {"comparisons", 0, compare_all});
    add_for_every_kind(table, {"readers", 0, read});
    return table;
}
