// Every operation of the value with the number of blocks that it may take from the heap: the table of the memory tests.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "kval.h"
#include "state.h"

struct Operation;
enum class Bits { Known, Unknown };

/// What an operation works on, and what comes out of it.
struct Operands {
    /// Ready for the operation, with a text each unless its preparation drops it: hexadecimal on the left, binary on
    /// the right. The signed operands hold the bits of the unsigned ones. Unknown: with X bits, and weak.
    Operands(const Operation& operation, unsigned left_width, unsigned right_width, Bits bits);
    Operands(const Operands&) = delete;  // a copy has no text
    Operands& operator=(const Operands&) = delete;

    std::array<const KVAL_UINTEGER*, 4> all() const { return {&left, &right, &signed_left, &signed_right}; }

    KVAL_UINTEGER left;
    KVAL_UINTEGER right;
    KVAL_SINTEGER signed_left;
    KVAL_SINTEGER signed_right;
    std::optional<KVAL_UINTEGER> result = std::nullopt;  // of a signed operation, too: the storage is the same
    unsigned answer = 0;                                 // of an operation that gives a number or bool
};

/// In place of a number of allocations, where the values decide on the width of the result: as many as it has arrays.
constexpr std::size_t kArraysOfResult = static_cast<std::size_t>(-1);

struct Operation {
    std::string name;
    std::size_t allocations;
    std::function<void(Operands&)> run;
    std::function<void(Operands&)> prepare = [](Operands&) {};  // what comes first and is not counted
    std::size_t temporaries = 0;                                // allocations that may come on top
};

/// What the operation may take at least; `operands` are those that it has worked on.
std::size_t stated_allocations(const Operation& operation, const Operands& operands);

/// Operations that belong together, for operands of two given widths.
struct Theme {
    const char* name;
    std::vector<Operation> (*operations)(unsigned left_width, unsigned right_width);
};
std::ostream& operator<<(std::ostream& out, const Theme& theme);

std::vector<Theme> allocating_themes();
std::vector<Theme> all_themes();

/// What is left after an operation.
struct Outcome {
    std::vector<State> operands;
    std::optional<State> result;
    unsigned answer;
};
Outcome observe(const Operands& operands);
bool operator==(const Outcome& a, const Outcome& b);
std::ostream& operator<<(std::ostream& out, const Outcome& outcome);

/// Calls visit(operation, prepare, name) for every operation of the theme, every left width with every right one, and
/// known and unknown bits; `prepare()` gives operands that are ready for the operation, `name` says what it is done on.
template <typename Visit>
void for_each_operation(const Theme& theme, const std::vector<unsigned>& left_widths,
                        const std::vector<unsigned>& right_widths, Visit visit) {
    for (const unsigned left : left_widths) {
        for (const unsigned right : right_widths) {
            const std::string on = ", " + std::to_string(left) + " and " + std::to_string(right) + " bits";
            for (const Operation& operation : theme.operations(left, right)) {
                for (const Bits bits : {Bits::Known, Bits::Unknown}) {
                    visit(
                        operation, [&operation, left, right, bits] { return Operands(operation, left, right, bits); },
                        operation.name + on + (bits == Bits::Known ? ", known" : ", unknown"));
                }
            }
        }
    }
}

/// The same for every pair of the widths.
template <typename Visit>
void for_each_operation(const Theme& theme, const std::vector<unsigned>& widths, Visit visit) {
    for_each_operation(theme, widths, widths, visit);
}
