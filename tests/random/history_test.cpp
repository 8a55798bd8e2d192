// Random programs over a few registers, library and model in lock step; and the same digits reached by many routes.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "draw.h"
#include "run.h"
#include "support/program.h"

namespace {

using twin::Machine;
using twin::Text;

constexpr unsigned kRegisters = 4;

// One instruction. What it needs beside its registers (a number, a word, a text) is drawn from `seed`.
struct Step {
    unsigned action = 0;
    unsigned target = 0;
    unsigned left = 0;
    unsigned right = 0;
    unsigned seed = 0;
};

const twin::Action& action_of(const Step& step) { return twin::actions()[step.action]; }

twin::Operands draw_operands(Machine& machine, const Step& step) {
    Draw draw(step.seed);
    twin::Operands o{step.target, step.left, step.right, 0, draw.word(), "", static_cast<twin::Ask>(draw.below(4))};
    o.number = draw_number(draw, action_of(step).argument, subject(machine, action_of(step), o).model);
    o.text = draw_text(draw, 80).c_str();  // to the first zero byte
    return o;
}

std::ostream& operator<<(std::ostream& out, const Step& step) {
    return out << "\n  " << action_of(step).name << ": target r" << step.target << ", left r" << step.left
               << ", right r" << step.right << ", seed " << step.seed;
}

rc::Gen<Step> any_step() {
    const auto any_register = [] { return rc::gen::inRange(0u, kRegisters); };
    const auto action_count = static_cast<unsigned>(twin::actions().size());
    return rc::gen::build<Step>(rc::gen::set(&Step::action, rc::gen::inRange(0u, action_count)),
                                rc::gen::set(&Step::target, any_register()), rc::gen::set(&Step::left, any_register()),
                                rc::gen::set(&Step::right, any_register()),
                                rc::gen::set(&Step::seed, rc::gen::inRange(0u, 1'000'000u)));
}

std::vector<twin::Content> draw_contents(unsigned seed) {
    Draw draw(seed);
    std::vector<twin::Content> contents;
    for (unsigned i = 0; i < kRegisters; ++i) contents.push_back(draw_content(draw, draw.one_of(boundary_widths())));
    return contents;
}

void run_program(unsigned seed, const std::vector<Step>& program) {
    Machine machine(draw_contents(seed));
    for (const Step& step : program) {
        testing::AssertionResult result = run(machine, action_of(step), draw_operands(machine, step));
        for (unsigned i = 0; result && i < kRegisters; ++i) result = same_content(machine[i]);
        if (!result) {
            std::ostringstream message;
            message << step << result.message();
            RC_FAIL(message.str());
        }
    }
    const testing::AssertionResult result = same(machine, seed % 2 == 0 ? Text::Hexadecimal : Text::Binary);
    if (!result) RC_FAIL(std::string("at the end\n") + result.message());
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
