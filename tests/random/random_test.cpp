// Random operands at the widths where words begin and end: every operation, and texts in and out, against the model.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

#include "draw.h"
#include "run.h"
#include "support/agree.h"

namespace {

using twin::Content;
using twin::Text;
using twin::Twin;

struct Widths {
    unsigned left;
    unsigned right;
};

// Goes through all pairs of widths evenly.
Widths widths_of(unsigned pair) {
    const std::vector<unsigned>& widths = boundary_widths();
    const auto count = static_cast<unsigned>(widths.size());
    return {widths[pair % count], widths[pair / count % count]};
}

Content draw_right(Draw& draw, unsigned width, const Content& left) {
    return draw.once_in(6) ? draw_similar(draw, width, left) : draw_content(draw, width);
}

template <typename Row>
void report(const std::vector<Row>& table, const char* of_what) {
    for (const Row& operation : table) {
        std::cout << "random: " << run_pairs() << ' ' << of_what << "  " << operation.name << '\n';
        testing::Test::RecordProperty(operation.name, std::to_string(run_pairs()));
    }
}

class Random : public testing::Test {
  protected:
    const testing::ScopedTrace trace{__FILE__, __LINE__, replay_line()};
    Draw draw{run_seed()};
};

TEST_F(Random, PairsOfValues) {
    for (unsigned pair = 0; pair < run_pairs(); ++pair) {
        const Widths widths = widths_of(pair);
        const Content left = draw_content(draw, widths.left);
        Twin l(left);
        Twin r(draw_right(draw, widths.right, left));
        const Text ask = draw_kind(draw);
        for (const twin::Binary& operation : twin::binary_operations()) ASSERT_TRUE(agree(operation, l, r, ask));
        for (const twin::Relation& operation : twin::relations()) ASSERT_TRUE(agree(operation, l, r));
        for (const twin::InPlace& operation : twin::in_place_operations()) {
            ASSERT_TRUE(agree(operation, l, r, ask));
            ASSERT_TRUE(agree_on_itself(operation, l, ask));
        }
        ASSERT_TRUE(same(l, ask)) << "the left operand was changed";
        ASSERT_TRUE(same(r, ask)) << "the right operand was changed";
    }
    report(twin::binary_operations(), "pairs");
    report(twin::relations(), "pairs");
    report(twin::in_place_operations(), "pairs, and as many values with themselves");
}

// Division wants compact operands, which are few among the pairs above.
TEST_F(Random, PairsOfCompactValues) {
    for (unsigned pair = 0; pair < run_pairs(); ++pair) {
        const Content left = draw_content(draw, 1 + draw.below(32));
        const Twin l(left);
        const Twin r(draw_right(draw, 1 + draw.below(32), left));
        const Text ask = draw_kind(draw);
        for (const twin::Binary& operation : twin::binary_operations()) ASSERT_TRUE(agree(operation, l, r, ask));
    }
    report(twin::binary_operations(), "compact pairs");
}

TEST_F(Random, ValuesAndNumbers) {
    for (unsigned run = 0; run < run_pairs(); ++run) {
        Twin v(draw_content(draw, widths_of(run).left));
        const Text ask = draw_kind(draw);
        const auto number_for = [&](const auto& operation) { return draw_number(draw, operation.argument, v.model); };
        for (const twin::Derived& operation : twin::derived_values()) {
            ASSERT_TRUE(agree(operation, v, number_for(operation), ask));
        }
        for (const twin::Query& operation : twin::queries()) ASSERT_TRUE(agree(operation, v, number_for(operation)));
        for (const twin::Change& operation : twin::changes()) {
            ASSERT_TRUE(agree(operation, v, number_for(operation), ask));
        }
        ASSERT_TRUE(same(v, ask)) << "the operand was changed";
    }
    report(twin::derived_values(), "values");
    report(twin::queries(), "values");
    report(twin::changes(), "values");
}

TEST_F(Random, ParsedTexts) {
    for (unsigned run = 0; run < run_pairs(); ++run) {
        Twin v(draw_content(draw, widths_of(run).left));
        const std::string before = twin::describe(v.model);
        const std::string text = draw_text(draw, draw.once_in(8) ? 300 : 40);
        const Text kind = draw_kind(draw);
        parse(v, text, kind);
        const std::string what = (kind == Text::Binary ? "binary " : "hexadecimal ") + testing::PrintToString(text) +
                                 " parsed into " + before;
        ASSERT_TRUE(same(v, draw_kind(draw))) << what;
        // The parsed text itself has been asked for; without it the digits show.
        v.value.DeleteString();
        model::delete_string(v.model);
        ASSERT_TRUE(same(v, draw_kind(draw))) << what;
    }
}

// A known value that is printed and parsed is the same value, in the width of the text.
TEST_F(Random, PrintedTextsParseBack) {
    for (unsigned run = 0; run < run_pairs(); ++run) {
        Content content = draw_content(draw, widths_of(run).left);
        content.mask.clear();
        content.flags.clear();
        content.text = Text::None;
        KVAL_UINTEGER v = Twin(content).value;
        v.EnforceWidth();
        KVAL_UINTEGER parsed{draw.word(), 1 + draw.below(200)};

        parsed.set_value_from_bin_string(v.as_bin_string());
        ASSERT_TRUE(parsed == v) << twin::describe(v);
        ASSERT_EQ(parsed.bitwidth(), v.bitwidth());
        parsed.set_value_from_hex_string(v.as_hex_string());
        ASSERT_TRUE(parsed == v) << twin::describe(v);
        ASSERT_EQ(parsed.bitwidth(), (v.bitwidth() + 3) / 4 * 4);
    }
}

TEST_F(Random, Hashes) {
    for (unsigned run = 0; run < run_pairs(); ++run) {
        const unsigned key = draw.word();
        ASSERT_EQ(twang_uinthash(key), model::twang_uinthash(key)) << key;
        std::string bytes(draw.below(20), '\0');
        for (char& byte : bytes) byte = static_cast<char>(draw.below(256));
        ASSERT_EQ(one_at_a_time(bytes.data(), static_cast<int>(bytes.size())), model::one_at_a_time(bytes))
            << testing::PrintToString(bytes);
    }
}

// Counts of 2^31 and above wrap the width, and any content will do; but nothing may be written outside the storage, and
// the result must be a value like any other.
TEST_F(Random, WidthsThatWrapInLeftShifts) {
    for (unsigned run = 0; run < run_pairs(); ++run) {
        Content content = draw_content(draw, widths_of(run).left);
        content.flags.clear();  // letters would leave zero bytes in the text
        const KVAL_UINTEGER v = Twin(content).value;
        const unsigned count = draw.once_in(2) ? 0 - draw.below(2 * v.bitwidth()) - 1 : 0x80000000 | draw.word();
        const unsigned sum = v.bitwidth() + count;
        const unsigned required_width = sum == 0 || sum > 0x7FFFFFFF ? 1 : sum;
        for (KVAL_UINTEGER result : {v << count, KVAL_UINTEGER(v, static_cast<int>(count), true)}) {
            ASSERT_EQ(result.bitwidth(), required_width) << twin::describe(v) << " << " << count;
            if (required_width == 1) {
                ASSERT_LE(result.uint(), 1u) << twin::describe(v) << " << " << count;
            }
            ++result <<= 1;
            ASSERT_EQ(std::string(result.as_bin_string()).size(), required_width);
        }
    }
}

}  // namespace
