// What the tables of operations share: the numbers in them, preparations, and the tables of signed values.
#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "operations.h"

using Operations = std::vector<Operation>;
using Run = std::function<void(Operands&)>;

constexpr unsigned words(unsigned width) { return (width + 31) / 32; }

/// The two arrays of a large value; a small one, of up to 64 bits, has none.
constexpr std::size_t arrays(unsigned width) { return width > 64 ? 2 : 0; }

/// A value that becomes large, or that is large and grows in words, takes two new arrays.
constexpr std::size_t growth(unsigned from, unsigned to) { return words(to) > words(from) ? arrays(to) : 0; }

inline void move_away(KVAL_UINTEGER& v) { const KVAL_UINTEGER taken(std::move(v)); }

/// The texts that every operand has before its operation.
inline void make_texts(Operands& o) {
    o.left.as_hex_string();
    o.right.as_bin_string();
    o.signed_left.as_hex_string();
    o.signed_right.as_bin_string();
}

/// Every row with a moved-from left operand, with a moved-from right one, and with both.
template <typename Rows>
Operations with_moved_from(const Rows& rows, void (*move_left)(Operands&), void (*move_right)(Operands&)) {
    const std::pair<const char*, std::function<void(Operands&)>> cases[] = {
        {", left moved-from", move_left},
        {", right moved-from", move_right},
        {", both moved-from",
         [=](Operands& o) {
             move_left(o);
             move_right(o);
         }},
    };
    Operations table;
    for (const auto& [name, prepare] : cases) {
        for (const Operation& row : rows)
            table.push_back({row.name + name, row.allocations, row.run, prepare, row.temporaries});
    }
    return table;
}

/// An operation that gives a value, kept in o.result.
template <typename Make>
Run giving(Make make) {
    return [make](Operands& o) { o.result.emplace(make(o)); };
}

/// An operation that throws the message of divisions, which are for operands of up to 32 bits.
template <typename Divide>
Run throwing(Divide divide) {
    return [divide](Operands& o) {
        try {
            divide(o);
        } catch (const char*) {
            return;
        }
        throw std::logic_error("wide operands were divided");
    };
}

std::vector<Theme> allocating_signed_themes();
Operations signed_access(unsigned left_width, unsigned right_width);
