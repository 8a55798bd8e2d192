// Every operation on all values of 1 to 4 bits: all x-masks, both states of flag X, and bits above the width.
// KVAL_MAX_WIDTH=n in the environment ends at n bits.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

#include "support/agree.h"
#include "support/environment.h"
#include "support/operations.h"
#include "support/twin.h"

namespace {

using twin::Argument;
using twin::Content;
using twin::Text;
using twin::Twin;

#ifdef KVAL_SANITIZED
constexpr unsigned kDefaultMaxWidth = 3;
#else
constexpr unsigned kDefaultMaxWidth = 4;
#endif

unsigned max_width() {
    static const auto width = static_cast<unsigned>(twin::number_from("KVAL_MAX_WIDTH", kDefaultMaxWidth));
    return width;
}

// Values of up to half that width come with every combination of Z, weak low and weak high too.
std::vector<std::string> flag_sets(unsigned width) {
    if (width > max_width() / 2) return {"", "X"};
    std::vector<std::string> sets = {""};
    for (const char letter : {'X', 'Z', 'L', 'H'}) {
        const std::size_t without = sets.size();
        for (std::size_t i = 0; i < without; ++i) sets.push_back(sets[i] + letter);
    }
    return sets;
}

std::vector<Twin> all_values(Text text) {
    std::vector<Twin> values;
    for (unsigned width = 1; width <= max_width(); ++width) {
        for (unsigned word = 0; word >> width == 0; ++word) {
            for (unsigned mask = 0; mask >> width == 0; ++mask) {
                for (const std::string& flags : flag_sets(width)) {
                    values.emplace_back(Content{width, {word}, {mask}, flags, text});
                }
            }
            // Bits above the width: all of them, and the one that a sum reaches first.
            for (const unsigned stray : {~0U << width, 1U << width}) {
                values.emplace_back(Content{width, {word | stray}, {0}, "", text});
            }
        }
    }
    return values;
}

// All values three times: without text, with hexadecimal and with binary text.
const std::array<std::vector<Twin>, 3>& all_texts() {
    static const std::array<std::vector<Twin>, 3> values = {all_values(Text::None), all_values(Text::Hexadecimal),
                                                            all_values(Text::Binary)};
    return values;
}

std::size_t count() { return all_texts().front().size(); }

// The cached text of an operand and the text that is asked for go round with the pairs (with value and number): all six
// combinations occur with every value.
const Twin& value(std::size_t index, std::size_t round) { return all_texts()[round % 3][index]; }
Text asked(std::size_t round) { return round % 2 == 0 ? Text::Hexadecimal : Text::Binary; }

// Numbers that are worth trying, every one of them with every value.
std::vector<unsigned> numbers_for(Argument argument) {
    const auto up_to = [](unsigned last) {
        std::vector<unsigned> numbers;
        for (unsigned n = 0; n <= last; ++n) numbers.push_back(n);
        return numbers;
    };
    const auto with = [](std::vector<unsigned> numbers, const std::vector<unsigned>& more) {
        numbers.insert(numbers.end(), more.begin(), more.end());
        return numbers;
    };
    switch (argument) {
        case Argument::None:
            return {0};
        case Argument::Number:
            return with(up_to(33), {0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFE, 0xFFFFFFFF});
        case Argument::Count:
            return with(up_to(40), {63, 64, 65, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF});
        case Argument::Distance:
            return with(up_to(40), {63, 64, 65, 0x7FFFFFFF});
        case Argument::Growth:
            return with(up_to(40), {63, 64, 65});
        case Argument::Position:
            return with(up_to(40), {0x7FFFFFFF, 0x80000000, 0xFFFFFFFC, 0xFFFFFFFE, 0xFFFFFFFF});
        case Argument::Index:
            return with(up_to(2), {0xFFFFFFFF});
        case Argument::Width:
            return with(up_to(70), {0x80000000, 0xFFFFFFFF});
    }
    return {};
}

void report(const std::string& name, std::size_t runs, const char* of_what) {
    std::cout << "exhaustive: " << runs << ' ' << of_what << "  " << name << '\n';
    testing::Test::RecordProperty(name, std::to_string(runs));
}

// Checks stop at the first difference of an operation; the next operation goes on.
template <typename Check>
void on_all_pairs(const char* name, Check check) {
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < count(); ++i) {
        for (std::size_t j = 0; j < count(); ++j) {
            const testing::AssertionResult result = check(value(i, i + j), value(j, i + 2 * j), asked(i + j));
            if (!result) {
                ADD_FAILURE() << result.message();
                return;
            }
            ++pairs;
        }
    }
    report(name, pairs, "operand pairs");
}

template <typename Check>
void on_all_values(const char* name, Argument argument, Check check) {
    const std::vector<unsigned> numbers = numbers_for(argument);
    std::size_t runs = 0;
    for (std::size_t i = 0; i < count(); ++i) {
        for (std::size_t n = 0; n < std::max<std::size_t>(6, numbers.size()); ++n) {
            const testing::AssertionResult result = check(value(i, i + n), numbers[n % numbers.size()], asked(i + n));
            if (!result) {
                ADD_FAILURE() << result.message();
                return;
            }
            ++runs;
        }
    }
    report(name, runs, "runs on one value");
}

// No operation may have changed an operand that it does not assign to, nor its cached text.
class Exhaustive : public testing::Test {
  protected:
    void TearDown() override {
        for (const std::vector<Twin>& values : all_texts()) {
            for (const Twin& operand : values) {
                model::Value required = operand.model;
                ASSERT_TRUE(twin::same(operand.value, required, Text::Hexadecimal)) << "an operand was changed";
            }
        }
    }
};

TEST_F(Exhaustive, BinaryOperators) {
    for (const twin::Binary& operation : twin::binary_operations()) {
        on_all_pairs(operation.name,
                     [&](const Twin& l, const Twin& r, Text ask) { return agree(operation, l, r, ask); });
    }
}

TEST_F(Exhaustive, Comparisons) {
    for (const twin::Relation& operation : twin::relations()) {
        on_all_pairs(operation.name, [&](const Twin& l, const Twin& r, Text) { return agree(operation, l, r); });
    }
}

TEST_F(Exhaustive, InPlaceOperators) {
    for (const twin::InPlace& operation : twin::in_place_operations()) {
        on_all_pairs(operation.name,
                     [&](const Twin& l, const Twin& r, Text ask) { return agree(operation, l, r, ask); });
    }
}

TEST_F(Exhaustive, InPlaceOperatorsOnTheirOwnOperand) {
    for (const twin::InPlace& operation : twin::in_place_operations()) {
        on_all_values(operation.name, Argument::None,
                      [&](const Twin& v, unsigned, Text ask) { return agree_on_itself(operation, v, ask); });
    }
}

TEST_F(Exhaustive, DerivedValues) {
    for (const twin::Derived& operation : twin::derived_values()) {
        on_all_values(operation.name, operation.argument,
                      [&](const Twin& v, unsigned number, Text ask) { return agree(operation, v, number, ask); });
    }
}

TEST_F(Exhaustive, Queries) {
    for (const twin::Query& operation : twin::queries()) {
        on_all_values(operation.name, operation.argument,
                      [&](const Twin& v, unsigned number, Text) { return agree(operation, v, number); });
    }
}

TEST_F(Exhaustive, Changes) {
    for (const twin::Change& operation : twin::changes()) {
        on_all_values(operation.name, operation.argument,
                      [&](const Twin& v, unsigned number, Text ask) { return agree(operation, v, number, ask); });
    }
}

}  // namespace
