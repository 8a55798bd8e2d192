// Random programs over a few registers, library and model in lock step; and the same digits reached by many routes.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "draw.h"
#include "run.h"
#include "support/agree.h"

namespace {

using twin::Text;
using twin::Twin;

constexpr unsigned kRegisters = 4;

using Registers = std::array<Twin, kRegisters>;

// One instruction. What an operation needs beside its registers (a number, a text) is drawn from `seed`.
struct Step {
    unsigned action = 0;
    unsigned target = 0;
    unsigned left = 0;
    unsigned right = 0;
    unsigned seed = 0;
};

struct Action {
    std::string name;
    std::function<testing::AssertionResult(Registers&, const Step&)> run;
};

// The value leaves its register and returns to it; only the text is lost.
testing::AssertionResult move_out_and_back(Twin& target) {
    KVAL_UINTEGER held = std::move(target.value);
    target.value = std::move(held);
    model::delete_string(target.model);
    return same_content(target);
}

testing::AssertionResult exchange(Twin& a, Twin& b) {
    swap(a.value, b.value);
    std::swap(a.model, b.model);
    return same_content(a);
}

std::vector<Action> make_actions() {
    std::vector<Action> actions = {
        {"text request",
         [](Registers& r, const Step& s) {
             Draw draw(s.seed);
             return same(r[s.target], draw_kind(draw));
         }},
        {"parse",
         [](Registers& r, const Step& s) {
             Draw draw(s.seed);
             const std::string text = draw_text(draw, 80);
             parse(r[s.target], text, draw_kind(draw));
             return same_content(r[s.target]);
         }},
        {"move out and back", [](Registers& r, const Step& s) { return move_out_and_back(r[s.target]); }},
        {"swap", [](Registers& r, const Step& s) { return exchange(r[s.target], r[s.right]); }},
    };
    for (const twin::InPlace& operation : twin::in_place_operations()) {
        actions.push_back({operation.name, [&operation](Registers& r, const Step& s) {
                               return apply(operation, r[s.target], r[s.right]);
                           }});
    }
    for (const twin::Binary& operation : twin::binary_operations()) {
        actions.push_back({operation.name, [&operation](Registers& r, const Step& s) {
                               return apply(operation, r[s.target], r[s.left], r[s.right]);
                           }});
    }
    for (const twin::Relation& operation : twin::relations()) {
        actions.push_back({operation.name, [&operation](Registers& r, const Step& s) {
                               return agree(operation, r[s.left], r[s.right]);
                           }});
    }
    const auto number_for = [](const auto& operation, const Twin& operand, const Step& s) {
        Draw draw(s.seed);
        return draw_number(draw, operation.argument, operand.model);
    };
    for (const twin::Change& operation : twin::changes()) {
        actions.push_back({operation.name, [&operation, number_for](Registers& r, const Step& s) {
                               return apply(operation, r[s.target], number_for(operation, r[s.target], s));
                           }});
    }
    for (const twin::Derived& operation : twin::derived_values()) {
        actions.push_back({operation.name, [&operation, number_for](Registers& r, const Step& s) {
                               return apply(operation, r[s.target], r[s.left], number_for(operation, r[s.left], s));
                           }});
    }
    for (const twin::Query& operation : twin::queries()) {
        actions.push_back({operation.name, [&operation, number_for](Registers& r, const Step& s) {
                               return agree(operation, r[s.left], number_for(operation, r[s.left], s));
                           }});
    }
    return actions;
}

const std::vector<Action>& actions() {
    static const std::vector<Action> table = make_actions();
    return table;
}

std::ostream& operator<<(std::ostream& out, const Step& step) {
    return out << "\n  " << actions()[step.action].name << ": target r" << step.target << ", left r" << step.left
               << ", right r" << step.right << ", seed " << step.seed;
}

rc::Gen<Step> any_step() {
    const auto any_register = [] { return rc::gen::inRange(0u, kRegisters); };
    const auto action_count = static_cast<unsigned>(actions().size());
    return rc::gen::build<Step>(rc::gen::set(&Step::action, rc::gen::inRange(0u, action_count)),
                                rc::gen::set(&Step::target, any_register()), rc::gen::set(&Step::left, any_register()),
                                rc::gen::set(&Step::right, any_register()),
                                rc::gen::set(&Step::seed, rc::gen::inRange(0u, 1'000'000u)));
}

Registers draw_registers(unsigned seed) {
    Draw draw(seed);
    const auto any = [&draw] { return draw_content(draw, draw.one_of(boundary_widths())); };
    return {Twin(any()), Twin(any()), Twin(any()), Twin(any())};
}

// The registers as the step found them.
std::string describe(const std::vector<model::Value>& registers) {
    std::ostringstream out;
    for (std::size_t i = 0; i < registers.size(); ++i) out << "\n  r" << i << ' ' << twin::describe(registers[i]);
    return out.str();
}

void run_program(unsigned seed, const std::vector<Step>& program) {
    Registers registers = draw_registers(seed);
    for (const Step& step : program) {
        std::vector<model::Value> before;
        for (const Twin& v : registers) before.push_back(v.model);
        testing::AssertionResult result = actions()[step.action].run(registers, step);
        for (const Twin& v : registers) {
            if (result) result = same_content(v);
        }
        if (!result) {
            std::ostringstream message;
            message << step << describe(before) << '\n' << result.message();
            RC_FAIL(message.str());
        }
    }
    for (Twin& v : registers) {
        const testing::AssertionResult result = same(v, seed % 2 == 0 ? Text::Hexadecimal : Text::Binary);
        if (!result) RC_FAIL(std::string("at the end\n") + result.message());
    }
}

// Programs follow the seed of the run.
class History : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        const std::string parameters = "seed=" + std::to_string(run_seed()) +
                                       " max_success=" + std::to_string(1 + run_pairs() / 10) + " max_size=200";
        setenv("RC_PARAMS", parameters.c_str(), 0);  // what is there already is meant for a replay
    }
    const testing::ScopedTrace trace{__FILE__, __LINE__, replay_line()};
};

TEST_F(History, ProgramsKeepLibraryAndModelInStep) {
    EXPECT_TRUE(rc::check("random programs", [] {
        const unsigned seed = *rc::gen::inRange(0u, 1'000'000u);
        run_program(seed, *rc::gen::container<std::vector<Step>>(any_step()));
    }));
}

// ---- the same digits by many routes ----

using Route = KVAL_UINTEGER (*)(const KVAL_UINTEGER&, unsigned);  // the value again, and a width to go through

KVAL_UINTEGER parsed(const KVAL_UINTEGER& v, unsigned between) {
    KVAL_UINTEGER result(0, between);
    result.set_value_from_bin_string(KVAL_UINTEGER(v).as_bin_string());
    return result;
}

// An X cannot be parsed from hexadecimal digits; such a value stays as it is.
KVAL_UINTEGER parsed_from_hexadecimal(const KVAL_UINTEGER& v, unsigned between) {
    const std::string text = KVAL_UINTEGER(v).as_hex_string();
    if (text.find('X') != std::string::npos) return v;
    KVAL_UINTEGER result(0xA5A5A5A5, between);
    result.set_value_from_hex_string(text.c_str()).bitwidth(v.bitwidth());
    return result;
}

KVAL_UINTEGER resized_up_and_down(const KVAL_UINTEGER& v, unsigned between) {
    KVAL_UINTEGER result(v);
    result.bitwidth(v.bitwidth() + between).bitwidth(v.bitwidth());
    return result;
}

KVAL_UINTEGER shifted_there_and_back(const KVAL_UINTEGER& v, unsigned between) { return (v << between) >> between; }

// A compact value takes its counts modulo 32, hence the wide one.
KVAL_UINTEGER shifted_in_place(const KVAL_UINTEGER& v, unsigned between) {
    KVAL_UINTEGER result(v);
    result.bitwidth(v.bitwidth() + between + 32);
    result <<= between;
    result >>= between;
    result.bitwidth(v.bitwidth());
    return result;
}

KVAL_UINTEGER assigned(const KVAL_UINTEGER& v, unsigned) {
    KVAL_UINTEGER result(0xFFFFFFFF, v.bitwidth());
    result.force_wl();
    result = v;
    return result;
}

KVAL_UINTEGER assigned_through_a_wider_one(const KVAL_UINTEGER& v, unsigned between) {
    KVAL_UINTEGER wider(0xFFFFFFFF, v.bitwidth() + between);
    wider = v;
    KVAL_UINTEGER result(0, v.bitwidth());
    result = wider;
    return result;
}

KVAL_UINTEGER moved(const KVAL_UINTEGER& v, unsigned between) {
    KVAL_UINTEGER source(v);
    source.as_hex_string();
    KVAL_UINTEGER same_width(1, v.bitwidth());
    same_width = std::move(source);
    KVAL_UINTEGER wider(2, v.bitwidth() + between);
    wider = std::move(same_width);
    KVAL_UINTEGER result(std::move(wider));
    result.bitwidth(v.bitwidth());
    return result;
}

KVAL_UINTEGER stored_word_by_word(const KVAL_UINTEGER& v, unsigned) {
    KVAL_UINTEGER result(0, v.bitwidth());
    if (v.is_x()) result.force_x();
    for (int i = 0; i < v.get_size(); ++i) {
        result.set_uvalue_at(i, v.get_uvalue_at(i)).set_xmask_at(i, v.get_xmask_at(i));
    }
    return result;
}

KVAL_UINTEGER added_and_subtracted(const KVAL_UINTEGER& v, unsigned between) {
    KVAL_UINTEGER result(v);
    result += v;
    result += between;
    ++result;
    result -= between;
    --result;
    result -= v;
    return result;
}

KVAL_UINTEGER inverted_twice(const KVAL_UINTEGER& v, unsigned) { return ~~v; }

constexpr std::array<Route, 11> kRoutes = {parsed,
                                           parsed_from_hexadecimal,
                                           resized_up_and_down,
                                           shifted_there_and_back,
                                           shifted_in_place,
                                           assigned,
                                           assigned_through_a_wider_one,
                                           moved,
                                           stored_word_by_word,
                                           added_and_subtracted,
                                           inverted_twice};

void answers_alike(KVAL_UINTEGER& v, const std::string& digits, const KVAL_UINTEGER& first,
                   const KVAL_UINTEGER& other) {
    RC_ASSERT(v.bitwidth() == digits.size());
    RC_ASSERT(v == first);
    RC_ASSERT(!(v != first));
    RC_ASSERT(v >= first && v <= first && !(v > first) && !(v < first));
    RC_ASSERT((v > other) == (first > other) && (v >= other) == (first >= other));
    RC_ASSERT((other > v) == (other > first) && (other >= v) == (other >= first));
    RC_ASSERT((v == other) == (first == other));
    RC_ASSERT(v.get_hash(32) == first.get_hash(32) && v.get_hash(7) == first.get_hash(7));
    RC_ASSERT(std::string(v.as_hex_string()) == first.as_hex_string());
    RC_ASSERT(v.as_bin_string() == digits);
}

TEST_F(History, SameDigitsAnswerAlikeOnEveryRoute) {
    EXPECT_TRUE(rc::check("same digits", [] {
        const auto any_width = rc::gen::oneOf(rc::gen::inRange(1u, 200u), rc::gen::elementOf(boundary_widths()));
        const auto any_alphabet =
            rc::gen::element<std::string>("01", "01111111", "00000001", "01X", "000000000000000000000000000000000001X");
        const auto digits = *rc::gen::container<std::string>(*any_width, rc::gen::elementOf(*any_alphabet));
        const unsigned between = *rc::gen::inRange(1u, 140u);
        const unsigned other_number = *rc::gen::arbitrary<unsigned>();
        KVAL_UINTEGER first(0, 1);
        first.set_value_from_bin_string(digits.c_str());
        KVAL_UINTEGER other(first);
        other += other_number;
        for (const Route route : kRoutes) {
            KVAL_UINTEGER v = route(first, between);
            answers_alike(v, digits, first, other);
        }
    }));
}

}  // namespace
