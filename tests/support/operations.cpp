// The rows of the table of operations.
#include "operations.h"

#include <string>
#include <utility>

#include "signed_operations.h"
#include "twin.h"

namespace twin {

namespace {

using U = KVAL_UINTEGER;
using M = model::Value;

constexpr unsigned kWordPattern = 0x9E3779B9;  // a word without any regularity, for stores that take an index

// The source of a move has a text of its own, which must not reach the target.
U& move_assign(U& target, const U& source, Text text) {
    if (&target == &source) {
        U& self = target;
        return target = std::move(self);
    }
    U moved(source);
    cache_odd_text(moved, text);
    return target = std::move(moved);
}

U move_construct(const U& source) {
    U moved(source);
    cache_odd_text(moved, Text::Hexadecimal);
    return U(std::move(moved));
}

template <typename Row>
std::vector<Row> joined(std::vector<Row> rows, const std::vector<Row>& more) {
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

// The rest of a text, which may be empty from the start: a parsed one, or one that begins with a zero byte.
const char* without_first(const char* text) { return *text == '\0' ? text : text + 1; }
std::string without_first(const std::string& text) { return without_first(text.c_str()); }

}  // namespace

const std::vector<Binary>& binary_operations() {
    static const std::vector<Binary> table = joined<Binary>(
        {
            {"&", [](const U& l, const U& r) { return l & r; }, model::bit_and},
            {"|", [](const U& l, const U& r) { return l | r; }, model::bit_or},
            {"^", [](const U& l, const U& r) { return l ^ r; }, model::bit_xor},
            {"+", [](const U& l, const U& r) { return l + r; }, model::add},
            {"-", [](const U& l, const U& r) { return l - r; }, model::sub},
            {"*", [](const U& l, const U& r) { return l * r; }, model::mul},
            {"/", [](const U& l, const U& r) { return l / r; }, model::div},
            {"%", [](const U& l, const U& r) { return l % r; }, model::rem},
        },
        signed_binary_operations());
    return table;
}

const std::vector<Relation>& relations() {
    static const std::vector<Relation> table = joined<Relation>(
        {
            {">", [](const U& l, const U& r) { return l > r; }, model::greater},
            {">=", [](const U& l, const U& r) { return l >= r; }, model::greater_equal},
            {"<", [](const U& l, const U& r) { return l < r; },
             [](const M& l, const M& r) { return model::greater(r, l); }},
            {"<=", [](const U& l, const U& r) { return l <= r; },
             [](const M& l, const M& r) { return model::greater_equal(r, l); }},
            {"==", [](const U& l, const U& r) { return l == r; }, model::equal},
            {"!=", [](const U& l, const U& r) { return l != r; },
             [](const M& l, const M& r) { return !model::equal(l, r); }},
        },
        signed_relations());
    return table;
}

const std::vector<InPlace>& in_place_operations() {
    static const std::vector<InPlace> table = joined<InPlace>(
        {
            {"&=", [](U& l, const U& r) -> U& { return l &= r; }, model::and_assign},
            {"|=", [](U& l, const U& r) -> U& { return l |= r; }, model::or_assign},
            {"+=", [](U& l, const U& r) -> U& { return l += r; }, model::add_assign},
            {"-=", [](U& l, const U& r) -> U& { return l -= r; }, model::sub_assign},
            {"=", [](U& l, const U& r) -> U& { return l = r; }, model::assign},
            {"= moved value with hexadecimal text",
             [](U& l, const U& r) -> U& { return move_assign(l, r, Text::Hexadecimal); }, model::assign},
            {"= moved value with binary text", [](U& l, const U& r) -> U& { return move_assign(l, r, Text::Binary); },
             model::assign},
        },
        signed_in_place_operations());
    return table;
}

const std::vector<Derived>& derived_values() {
    static const std::vector<Derived> table = joined<Derived>(
        {
            {"~", Argument::None, [](const U& v, unsigned) { return ~v; },
             [](const M& v, unsigned) { return model::bit_not(v); }},
            {"copy", Argument::None, [](const U& v, unsigned) { return U(v); },
             [](const M& v, unsigned) { return model::copy(v); }},
            {"move construction", Argument::None, [](const U& v, unsigned) { return move_construct(v); },
             [](const M& v, unsigned) { return model::copy(v); }},
            {"construction from a number, width of", Argument::Number,
             [](const U& v, unsigned n) { return U(n, v.bitwidth()); },
             [](const M& v, unsigned n) { return model::make(n, v.width); }},
            {"construction from the low word, width", Argument::Width,
             [](const U& v, unsigned n) { return U(v.uint(), n); },
             [](const M& v, unsigned n) { return model::make(model::uint(v), n); }},
            {"<<", Argument::Growth, [](const U& v, unsigned n) { return v << n; }, model::shl},
            {">>", Argument::Count, [](const U& v, unsigned n) { return v >> n; }, model::shr},
            {"copy shifted left", Argument::Growth,
             [](const U& v, unsigned n) { return U(v, static_cast<int>(n), true); },
             [](const M& v, unsigned n) { return model::shifted_copy(v, static_cast<int>(n), true); }},
            {"copy shifted right", Argument::Distance,
             [](const U& v, unsigned n) { return U(v, static_cast<int>(n), false); },
             [](const M& v, unsigned n) { return model::shifted_copy(v, static_cast<int>(n), false); }},
        },
        signed_derived_values());
    return table;
}

const std::vector<Query>& queries() {
    static const std::vector<Query> table = joined<Query>(
        {
            {"value > number", Argument::Number, [](const U& v, unsigned n) -> unsigned { return v > n; },
             [](const M& v, unsigned n) -> unsigned { return model::greater(v, n); }},
            {"value >= number", Argument::Number, [](const U& v, unsigned n) -> unsigned { return v >= n; },
             [](const M& v, unsigned n) -> unsigned { return model::greater_equal(v, n); }},
            {"value < number", Argument::Number, [](const U& v, unsigned n) -> unsigned { return v < n; },
             [](const M& v, unsigned n) -> unsigned { return model::greater(n, v); }},
            {"value <= number", Argument::Number, [](const U& v, unsigned n) -> unsigned { return v <= n; },
             [](const M& v, unsigned n) -> unsigned { return model::greater_equal(n, v); }},
            {"value == number", Argument::Number, [](const U& v, unsigned n) -> unsigned { return v == n; },
             [](const M& v, unsigned n) -> unsigned { return model::equal(v, n); }},
            {"value != number", Argument::Number, [](const U& v, unsigned n) -> unsigned { return v != n; },
             [](const M& v, unsigned n) -> unsigned { return !model::equal(v, n); }},
            {"number > value", Argument::Number, [](const U& v, unsigned n) -> unsigned { return n > v; },
             [](const M& v, unsigned n) -> unsigned { return model::greater(n, v); }},
            {"number >= value", Argument::Number, [](const U& v, unsigned n) -> unsigned { return n >= v; },
             [](const M& v, unsigned n) -> unsigned { return model::greater_equal(n, v); }},
            {"number < value", Argument::Number, [](const U& v, unsigned n) -> unsigned { return n < v; },
             [](const M& v, unsigned n) -> unsigned { return model::greater(v, n); }},
            {"number <= value", Argument::Number, [](const U& v, unsigned n) -> unsigned { return n <= v; },
             [](const M& v, unsigned n) -> unsigned { return model::greater_equal(v, n); }},
            {"number == value", Argument::Number, [](const U& v, unsigned n) -> unsigned { return n == v; },
             [](const M& v, unsigned n) -> unsigned { return model::equal(v, n); }},
            {"number != value", Argument::Number, [](const U& v, unsigned n) -> unsigned { return n != v; },
             [](const M& v, unsigned n) -> unsigned { return !model::equal(v, n); }},

            {"uint", Argument::None, [](const U& v, unsigned) -> unsigned { return v.uint(); },
             [](const M& v, unsigned) -> unsigned { return model::uint(v); }},
            {"is_zero", Argument::None, [](const U& v, unsigned) -> unsigned { return v.is_zero(); },
             [](const M& v, unsigned) -> unsigned { return model::is_zero(v); }},
            {"is_one", Argument::None, [](const U& v, unsigned) -> unsigned { return v.is_one(); },
             [](const M& v, unsigned) -> unsigned { return model::is_one(v); }},
            {"get_hash", Argument::Count, [](const U& v, unsigned n) -> unsigned { return v.get_hash(n); },
             model::get_hash},
            {"bit", Argument::Position, [](const U& v, unsigned n) -> unsigned { return v.bit(n); }, model::bit},
            {"is_x of a bit", Argument::Position,
             [](const U& v, unsigned n) -> unsigned { return v.is_x(static_cast<int>(n), 0); },
             [](const M& v, unsigned n) -> unsigned { return model::is_x(v, static_cast<int>(n), 0); }},
            {"is_x of a nibble", Argument::Position,
             [](const U& v, unsigned n) -> unsigned { return v.is_x(static_cast<int>(n), 1); },
             [](const M& v, unsigned n) -> unsigned { return model::is_x(v, static_cast<int>(n), 1); }},
            {"get_uvalue_at", Argument::Index,
             [](const U& v, unsigned n) -> unsigned { return v.get_uvalue_at(static_cast<int>(n)); },
             [](const M& v, unsigned n) -> unsigned { return model::get_uvalue_at(v, static_cast<int>(n)); }},
            {"get_xmask_at", Argument::Index,
             [](const U& v, unsigned n) -> unsigned { return v.get_xmask_at(static_cast<int>(n)); },
             [](const M& v, unsigned n) -> unsigned { return model::get_xmask_at(v, static_cast<int>(n)); }},
        },
        signed_queries());
    return table;
}

const std::vector<Change>& changes() {
    static const std::vector<Change> table = joined<Change>(
        {
            {"+= number", Argument::Number, [](U& v, unsigned n) -> U& { return v += n; }, model::add_assign},
            {"-= number", Argument::Number, [](U& v, unsigned n) -> U& { return v -= n; }, model::sub_assign},
            {"= number", Argument::Number, [](U& v, unsigned n) -> U& { return v = n; }, model::assign},
            {"++", Argument::None, [](U& v, unsigned) -> U& { return ++v; },
             [](M& v, unsigned) { model::increment(v); }},
            {"--", Argument::None, [](U& v, unsigned) -> U& { return --v; },
             [](M& v, unsigned) { model::decrement(v); }},
            {"<<=", Argument::Count, [](U& v, unsigned n) -> U& { return v <<= n; }, model::shl_assign},
            {">>=", Argument::Count, [](U& v, unsigned n) -> U& { return v >>= n; }, model::shr_assign},
            {"bitwidth", Argument::Width, [](U& v, unsigned n) -> U& { return v.bitwidth(n); }, model::resize},

            {"set_bit to 0", Argument::Position,
             [](U& v, unsigned n) -> U& { return v.set_bit(static_cast<int>(n), 0); },
             [](M& v, unsigned n) { model::set_bit(v, static_cast<int>(n), 0); }},
            {"set_bit to 1", Argument::Position,
             [](U& v, unsigned n) -> U& { return v.set_bit(static_cast<int>(n), 1); },
             [](M& v, unsigned n) { model::set_bit(v, static_cast<int>(n), 1); }},
            {"set_bit to 6", Argument::Position,
             [](U& v, unsigned n) -> U& { return v.set_bit(static_cast<int>(n), 6); },
             [](M& v, unsigned n) { model::set_bit(v, static_cast<int>(n), 6); }},
            {"set_x", Argument::Position, [](U& v, unsigned n) -> U& { return v.set_x(static_cast<int>(n)); },
             [](M& v, unsigned n) { model::set_x(v, static_cast<int>(n)); }},
            {"force_x", Argument::None, [](U& v, unsigned) -> U& { return v.force_x(); },
             [](M& v, unsigned) { model::force_x(v); }},
            {"force_z", Argument::None, [](U& v, unsigned) -> U& { return v.force_z(); },
             [](M& v, unsigned) { model::force_z(v); }},
            {"force_wl", Argument::None, [](U& v, unsigned) -> U& { return v.force_wl(); },
             [](M& v, unsigned) { model::force_wl(v); }},
            {"force_wh", Argument::None, [](U& v, unsigned) -> U& { return v.force_wh(); },
             [](M& v, unsigned) { model::force_wh(v); }},

            {"set_uvalue_at", Argument::Index,
             [](U& v, unsigned n) -> U& { return v.set_uvalue_at(static_cast<int>(n), kWordPattern); },
             [](M& v, unsigned n) { model::set_uvalue_at(v, static_cast<int>(n), kWordPattern); }},
            {"set_xmask_at", Argument::Index,
             [](U& v, unsigned n) -> U& { return v.set_xmask_at(static_cast<int>(n), kWordPattern); },
             [](M& v, unsigned n) { model::set_xmask_at(v, static_cast<int>(n), kWordPattern); }},
            {"EnforceWidth", Argument::None,
             [](U& v, unsigned) -> U& {
                 v.EnforceWidth();
                 return v;
             },
             [](M& v, unsigned) { model::enforce_width(v); }},
            {"DeleteString", Argument::None,
             [](U& v, unsigned) -> U& {
                 v.DeleteString();
                 return v;
             },
             [](M& v, unsigned) { model::delete_string(v); }},

            {"as_hex_string", Argument::None,
             [](U& v, unsigned) -> U& {
                 v.as_hex_string();
                 return v;
             },
             [](M& v, unsigned) { model::as_hex_string(v); }},
            {"as_bin_string", Argument::None,
             [](U& v, unsigned) -> U& {
                 v.as_bin_string();
                 return v;
             },
             [](M& v, unsigned) { model::as_bin_string(v); }},
            {"parse of its own hexadecimal text", Argument::None,
             [](U& v, unsigned) -> U& { return v.set_value_from_hex_string(v.as_hex_string()); },
             [](M& v, unsigned) { model::set_value_from_hex_string(v, model::as_hex_string(v)); }},
            {"parse of its own binary text", Argument::None,
             [](U& v, unsigned) -> U& { return v.set_value_from_bin_string(v.as_bin_string()); },
             [](M& v, unsigned) { model::set_value_from_bin_string(v, model::as_bin_string(v)); }},
            {"parse of its own hexadecimal text but the first digit", Argument::None,
             [](U& v, unsigned) -> U& { return v.set_value_from_hex_string(without_first(v.as_hex_string())); },
             [](M& v, unsigned) { model::set_value_from_hex_string(v, without_first(model::as_hex_string(v))); }},
            {"parse of its own binary text but the first digit", Argument::None,
             [](U& v, unsigned) -> U& { return v.set_value_from_bin_string(without_first(v.as_bin_string())); },
             [](M& v, unsigned) { model::set_value_from_bin_string(v, without_first(model::as_bin_string(v))); }},
        },
        signed_changes());
    return table;
}

}  // namespace twin
