// Programs of random operations over sixteen registers: what the bytes of an input mean.
//
// A step is the action, a byte of target (high) and left register, one of right register (low) and what to ask for, and
// whatever the action uses beside them: a number, a word, a text.
#include <array>
#include <ostream>
#include <string>
#include <vector>

#include "interpret.h"
#include "reader.h"
#include "rows.h"
#include "support/program.h"

namespace fuzz {

namespace {

using twin::Action;
using twin::Argument;
using twin::Ask;
using twin::Operands;

constexpr unsigned kMostSteps = 64;
constexpr unsigned kForms = 4;

// What the fuzzer takes for new beside new code: every action with compact and wide operands.
__attribute__((used, section("__libfuzzer_extra_counters"))) std::array<std::uint8_t, 256 * kForms> seen;

void count(twin::Machine& machine, const Action& action, const Operands& o) {
    const auto number = static_cast<std::size_t>(&action - twin::actions().data());
    const twin::Twin& left = subject(machine, action, o);
    const twin::Twin& right = (action.uses & twin::kRight) != 0 ? machine[o.right] : left;
    const unsigned left_form = left.model.width > 32 ? 1 : 0;
    const unsigned right_form = right.model.width > 32 ? 2 : 0;
    ++seen.at(number * kForms + left_form + right_form);
}

// Number by number a byte, or that and two or four more: small ones, those near a width, powers of two, the numbers
// below them, negative ones, and any.
unsigned read_number(Reader& reader, unsigned width) {
    const unsigned code = reader.byte();
    const unsigned low = code & 31;
    switch (code >> 5) {
        case 4:
            return width - 16 + low;
        case 5:
            return 1U << low;
        case 6:
            return (1U << low) - 1;
        case 7:
            if (low < 16) return ~low;
            return static_cast<unsigned>(reader.number(low < 24 ? 2 : 4));
        default:
            return code;
    }
}

Operands read_operands(Reader& reader, twin::Machine& machine, const Action& action) {
    Operands o;
    const unsigned first = reader.byte();
    o.target = first >> 4;
    o.left = first & 15;
    const unsigned second = reader.byte();
    o.right = second & 15;
    o.ask = static_cast<Ask>(second >> 4 & 3);
    const unsigned width = subject(machine, action, o).model.width;
    if (action.argument != Argument::None) o.number = read_number(reader, width);
    if (action.argument == Argument::Distance) o.number &= 0x7FFFFFFF;
    if ((action.uses & twin::kWord) != 0) o.word = read_number(reader, width);
    if ((action.uses & twin::kText) != 0) o.text = reader.text(reader.byte());
    o.text.resize(o.text.find('\0') == std::string::npos ? o.text.size() : o.text.find('\0'));
    return o;
}

void tell(std::ostream& rows, const Action& action, const Operands& o) {
    static constexpr std::array<const char*, 4> asks = {"Ask::AsBefore", "Ask::Nothing", "Ask::HexText",
                                                        "Ask::BinText"};
    rows << "    {" << literal(action.name) << ", {" << o.target << ", " << o.left << ", " << o.right << ", "
         << o.number << ", " << o.word << ", " << literal(o.text) << ", " << asks.at(static_cast<unsigned>(o.ask))
         << "}},\n"
         << std::flush;
}

}  // namespace

// Words of ones and zeros, through which carries and borrows run on, at the widths at which words and forms begin and
// end, and some others.
const std::vector<twin::Content>& first_contents() {
    static const std::vector<twin::Content> contents = [] {
        std::vector<twin::Content> all;
        for (const unsigned width : {1, 2, 4, 8, 16, 31, 32, 33, 40, 63, 64, 65, 96, 97, 129, 200}) {
            constexpr std::array<unsigned, 4> lowest = {~0U, 0, 1, 0x80000000};
            constexpr std::array<unsigned, 4> others = {~0U, ~0U, 0, 1};
            std::vector<unsigned> words((width + 31) / 32, others.at(all.size() % 4));
            words.front() = lowest.at(all.size() % 4);
            words.back() &= ~0U >> (32 - 1 - (width - 1) % 32);
            all.push_back({width, words, {}, {}, twin::Text::None});
        }
        return all;
    }();
    return contents;
}

testing::AssertionResult run_program(const std::uint8_t* data, std::size_t size, std::ostream* rows) {
    twin::Machine machine(first_contents());
    Reader reader(data, size);
    for (unsigned steps = 0; steps < kMostSteps && !reader.empty(); ++steps) {
        const Action& action = twin::actions()[reader.byte() % twin::actions().size()];
        const Operands operands = read_operands(reader, machine, action);
        if (is_too_wide(machine, action, operands)) continue;
        if (rows != nullptr) tell(*rows, action, operands);
        count(machine, action, operands);
        const testing::AssertionResult result = run(machine, action, operands);
        if (!result) return result;
    }
    return same(machine, twin::Text::Hexadecimal);
}

}  // namespace fuzz
