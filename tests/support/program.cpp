// The instructions of programs: the table of operations, and what takes more than one operation of it.
#include "program.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "agree.h"
#include "model/signed_model.h"

namespace twin {

namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;
using U = KVAL_UINTEGER;
using S = KVAL_SINTEGER;
using M = model::Value;
namespace ms = model::signed_value;

constexpr unsigned kWidest = 4096;          // of a new value
constexpr unsigned kWidestRegister = 2080;  // of one that is resized
constexpr unsigned kMostBitsDrawn = 300;    // one by one
constexpr unsigned kGeneratorSeed = 1;
constexpr unsigned kGeneratorBytes = 32;  // selects a state of 64

constexpr const char* kReplacing = ", replacing";  // what an action is called whose target becomes the new value

U& base(Twin& v) { return v.value; }
const U& base(const S& v) { return v; }

AssertionResult require(bool holds, const char* what) {
    return holds ? AssertionSuccess() : AssertionFailure() << "  required: " << what;
}

// ---- writing ----

AssertionResult randomize(Machine& m, const Operands& o) {
    m[o.target].value.randomize();
    model::randomize(m[o.target].model, m.generator());
    return AssertionSuccess();
}

// Outside 0 to the width nothing changes. The order in which bits are drawn does not show, but a replay should go the
// same way.
AssertionResult randomize_low_bits(Machine& m, const Operands& o) {
    Twin& target = m[o.target];
    const bool in_range = o.number <= target.model.width;
    if (in_range && o.number > kMostBitsDrawn) return AssertionSuccess();
    std::srand(kGeneratorSeed);
    target.value.randomize(static_cast<int>(o.number));
    int drawn = 0;
    if (in_range) model::randomize(target.model, static_cast<int>(o.number), [&drawn] { return drawn++; });
    return AssertionSuccess();
}

AssertionResult set_bit(Machine& m, const Operands& o) {
    const auto pos = static_cast<int>(o.number);
    if (pos > static_cast<int>(m[o.target].model.width)) return AssertionSuccess();  // throws; in the table
    m[o.target].value.set_bit(pos, o.word);
    model::set_bit(m[o.target].model, pos, o.word);
    return AssertionSuccess();
}

AssertionResult store_value_word(Machine& m, const Operands& o) {
    m[o.target].value.set_uvalue_at(static_cast<int>(o.number), o.word);
    model::set_uvalue_at(m[o.target].model, static_cast<int>(o.number), o.word);
    return AssertionSuccess();
}

AssertionResult store_mask_word(Machine& m, const Operands& o) {
    m[o.target].value.set_xmask_at(static_cast<int>(o.number), o.word);
    model::set_xmask_at(m[o.target].model, static_cast<int>(o.number), o.word);
    return AssertionSuccess();
}

AssertionResult parse_hexadecimal(Machine& m, const Operands& o) {
    parse(m[o.target], o.text, Text::Hexadecimal);
    return AssertionSuccess();
}

AssertionResult parse_binary(Machine& m, const Operands& o) {
    parse(m[o.target], o.text, Text::Binary);
    return AssertionSuccess();
}

AssertionResult parse_null_as_hexadecimal(Machine& m, const Operands& o) {
    m[o.target].value.set_value_from_hex_string(nullptr);
    model::set_value_from_hex_string(m[o.target].model, "");
    return AssertionSuccess();
}

AssertionResult parse_null_as_binary(Machine& m, const Operands& o) {
    m[o.target].value.set_value_from_bin_string(nullptr);
    model::set_value_from_bin_string(m[o.target].model, "");
    return AssertionSuccess();
}

// ---- exchanging ----

AssertionResult swap_signed(Machine& m, const Operands& o) {
    swap(m[o.target].value, m[o.right].value);
    std::swap(m[o.target].model, m[o.right].model);
    return AssertionSuccess();
}

AssertionResult swap_unsigned(Machine& m, const Operands& o) {
    swap(base(m[o.target]), base(m[o.right]));
    std::swap(m[o.target].model, m[o.right].model);
    return AssertionSuccess();
}

// Three moves, which lose the texts.
AssertionResult swap_by_moves(Machine& m, const Operands& o) {
    std::swap<S>(m[o.target].value, m[o.right].value);
    std::swap(m[o.target].model, m[o.right].model);
    model::delete_string(m[o.target].model);
    model::delete_string(m[o.right].model);
    return AssertionSuccess();
}

// The register that was moved from may hold anything of its own width; a number makes it known again.
template <typename Move, typename Assign>
AssertionResult move_register(Machine& m, const Operands& o, Move move, Assign assign) {
    move(m[o.target].value, m[o.right].value);
    if (&m[o.target] == &m[o.right]) return AssertionSuccess();  // nothing changes, not even the text
    assign(m[o.target].model, m[o.right].model);
    base(m[o.right]) = o.number;
    model::assign(m[o.right].model, o.number);
    return AssertionSuccess();
}

AssertionResult move_unsigned(Machine& m, const Operands& o) {
    const auto move = [](U& target, U& source) { target = std::move(source); };
    return move_register(m, o, move, [](M& target, const M& source) { model::assign(target, source); });
}

AssertionResult move_signed(Machine& m, const Operands& o) {
    const auto move = [](S& target, S& source) { target = std::move(source); };
    return move_register(m, o, move, ms::assign_signed);
}

AssertionResult move_unsigned_to_signed(Machine& m, const Operands& o) {
    const auto move = [](S& target, U& source) { target = std::move(source); };
    return move_register(m, o, move, ms::assign_unsigned);
}

// ---- moved-from values ----

AssertionResult is_moved_from(const U& v) {
    return require(v.bitwidth() == 0 && v.get_size() == 0 && v.uint() == 0 && v.is_zero() && !v.is_x() && !v.is_z() &&
                       !v.is_wl() && !v.is_wh() && v.get_xmask_at(0) == 0 && *v.as_hex_string() == '\0' &&
                       *v.as_bin_string() == '\0',
                   "no width, bits, flags and text in a value that was moved from");
}

// Out of the register as an unsigned value, on as a signed one, and back.
AssertionResult move_out_and_back(Machine& m, const Operands& o) {
    Twin& target = m[o.target];
    U held = std::move(base(target));
    AssertionResult result = is_moved_from(target.value);
    S again = std::move(held);
    if (result) result = is_moved_from(held);
    target.value = std::move(again);
    model::delete_string(target.model);
    return result ? is_moved_from(again) : result;
}

// What may be done to a value that was moved from, and what it is then.
struct Revival {
    const char* name;
    unsigned uses;
    Argument argument;
    void (*library)(S& moved_from, const S& source, const Operands& o);
    M (*model)(const M& source, const Operands& o);
};

M copy_of(const M& source, const Operands&) { return model::copy(source); }
M resized(const M&, const Operands& o) { return model::make(0, o.number); }

M parsed(const std::string& text, Text kind) {
    M v = model::make(0, 1);
    kind == Text::Binary ? model::set_value_from_bin_string(v, text) : model::set_value_from_hex_string(v, text);
    return v;
}

const std::vector<Revival>& revivals() {
    static const std::vector<Revival> table = {
        {"=", kRight, Argument::None, [](S& v, const S& from, const Operands&) { v.KVAL_UINTEGER::operator=(from); },
         copy_of},
        {"= moved", kRight, Argument::None,
         [](S& v, const S& from, const Operands&) {
             U copy(from);
             v.KVAL_UINTEGER::operator=(std::move(copy));
         },
         copy_of},
        {"signed = signed", kRight, Argument::None, [](S& v, const S& from, const Operands&) { v = from; }, copy_of},
        {"signed = unsigned", kRight, Argument::None, [](S& v, const S& from, const Operands&) { v = base(from); },
         copy_of},
        {"signed = moved signed", kRight, Argument::None,
         [](S& v, const S& from, const Operands&) {
             S copy(from);
             v = std::move(copy);
         },
         copy_of},
        {"signed = moved unsigned", kRight, Argument::None,
         [](S& v, const S& from, const Operands&) {
             U copy(from);
             v = std::move(copy);
         },
         copy_of},
        {"swap", kRight, Argument::None,
         [](S& v, const S& from, const Operands&) {
             S copy(from);
             swap(v, copy);
         },
         copy_of},
        {"= number", 0, Argument::Number,
         [](S& v, const S&, const Operands& o) { v.KVAL_UINTEGER::operator=(o.number); },
         [](const M&, const Operands& o) { return model::make(o.number, 32); }},
        {"bitwidth", 0, Argument::Width, [](S& v, const S&, const Operands& o) { v.KVAL_UINTEGER::bitwidth(o.number); },
         resized},
        {"signed bitwidth", 0, Argument::Width, [](S& v, const S&, const Operands& o) { v.bitwidth(o.number); },
         resized},
        {"parse hexadecimal", kText, Argument::None,
         [](S& v, const S&, const Operands& o) { v.set_value_from_hex_string(o.text.c_str()); },
         [](const M&, const Operands& o) { return parsed(o.text, Text::Hexadecimal); }},
        {"parse binary", kText, Argument::None,
         [](S& v, const S&, const Operands& o) { v.set_value_from_bin_string(o.text.c_str()); },
         [](const M&, const Operands& o) { return parsed(o.text, Text::Binary); }},
    };
    return table;
}

// Where the source is the register itself, its value is taken from where it went.
AssertionResult revive(const Revival& revival, Machine& m, const Operands& o) {
    Twin& target = m[o.target];
    const Twin& source = m[o.right];
    const S held = std::move(target.value);
    const AssertionResult result = is_moved_from(target.value);
    revival.library(target.value, &target == &source ? held : source.value, o);
    target.model = revival.model(source.model, o);
    return result;
}

// Assigns a moved-from value, copied and moved: zero in the target's own width.
AssertionResult assign_moved_from(Machine& m, const Operands& o) {
    S full(-1, 40);
    const S taken(std::move(full));
    U empty(base(full));
    AssertionResult result = is_moved_from(empty);
    Twin& target = m[o.target];
    switch (o.number % 6) {
        case 0:
            base(target) = empty;
            break;
        case 1:
            base(target) = std::move(empty);
            break;
        case 2:
            target.value = base(full);
            break;
        case 3:
            target.value = std::move(base(full));
            break;
        case 4:
            target.value = full;
            break;
        default:
            target.value = std::move(full);
            break;
    }
    model::assign(target.model, model::make(0, 1));
    return result;
}

// What an operation makes of a moved-from value means nothing; but it may not crash, nor change other operands.
template <typename Table, typename Run>
void run_unless_thrown(const Table& table, unsigned pick, Run run) {
    U moved_from(pick, 40);
    const U taken(std::move(moved_from));
    try {
        run(table[pick % table.size()], moved_from);
    } catch (const char*) {
    }
}

AssertionResult operate_on_moved_from(Machine& m, const Operands& o) {
    const U& other = m[o.right].value;
    const unsigned number = o.word % 128;  // a width, a count or a position, which all may be asked for
    run_unless_thrown(binary_operations(), o.number, [&](const Binary& operation, const U& v) {
        const S moved_from(v);
        operation.library(moved_from, other);
        operation.library(other, moved_from);
        operation.library(moved_from, moved_from);
    });
    run_unless_thrown(relations(), o.number, [&](const Relation& operation, const U& v) {
        const S moved_from(v);
        operation.library(moved_from, other);
        operation.library(other, moved_from);
    });
    run_unless_thrown(in_place_operations(), o.number, [&](const InPlace& operation, const U& v) {
        S moved_from(v);
        operation.library(moved_from, other);
    });
    run_unless_thrown(derived_values(), o.number, [&](const Derived& operation, const U& v) {
        const S moved_from(v);
        operation.library(moved_from, number);
    });
    run_unless_thrown(queries(), o.number, [&](const Query& operation, const U& v) {
        const S moved_from(v);
        operation.library(moved_from, number);
    });
    run_unless_thrown(changes(), o.number, [&](const Change& operation, const U& v) {
        S moved_from(v);
        operation.library(moved_from, number);
    });
    return AssertionSuccess();
}

// After DeleteData only destruction is left; the copy has its own arrays.
AssertionResult delete_data_of_a_copy(Machine& m, const Operands& o) {
    U copy(m[o.left].value);
    copy.DeleteData();
    return AssertionSuccess();
}

std::vector<Action> special_actions() {
    std::vector<Action> actions = {
        {"randomize", kTarget, Argument::None, randomize},
        {"randomize low bits", kTarget, Argument::Position, randomize_low_bits},
        {"set_bit", kTarget | kWord, Argument::Position, set_bit},
        {"store value word", kTarget | kWord, Argument::Index, store_value_word},
        {"store mask word", kTarget | kWord, Argument::Index, store_mask_word},
        {"parse hexadecimal", kTarget | kText, Argument::None, parse_hexadecimal},
        {"parse binary", kTarget | kText, Argument::None, parse_binary},
        {"parse null as hexadecimal", kTarget, Argument::None, parse_null_as_hexadecimal},
        {"parse null as binary", kTarget, Argument::None, parse_null_as_binary},
        {"swap signed", kTarget | kRight, Argument::None, swap_signed},
        {"swap unsigned", kTarget | kRight, Argument::None, swap_unsigned},
        {"swap by moves", kTarget | kRight, Argument::None, swap_by_moves},
        {"= moved register", kTarget | kRight, Argument::Number, move_unsigned},
        {"signed = moved signed register", kTarget | kRight, Argument::Number, move_signed},
        {"signed = moved unsigned register", kTarget | kRight, Argument::Number, move_unsigned_to_signed},
        {"move out and back", kTarget, Argument::None, move_out_and_back},
        {"assignment of a moved-from value", kTarget, Argument::Number, assign_moved_from},
        {"operation on a moved-from value", kRight | kWord, Argument::Number, operate_on_moved_from},
        {"DeleteData of a copy", kLeft, Argument::None, delete_data_of_a_copy},
    };
    for (const Revival& revival : revivals()) {
        actions.push_back({std::string("moved-from ") + revival.name, kTarget | revival.uses, revival.argument,
                           [&revival](Machine& m, const Operands& o) { return revive(revival, m, o); }});
    }
    return actions;
}

// ---- the table of operations ----

std::vector<Action> make_actions() {
    std::vector<Action> actions = special_actions();
    const auto add = [&actions](const char* name, const char* how, unsigned uses, Argument argument, auto run) {
        actions.push_back({std::string(name) + how, uses, argument, run});
    };
    constexpr unsigned all = kTarget | kLeft | kRight;
    for (const InPlace& row : in_place_operations()) {
        add(row.name, "", kTarget | kRight, Argument::None,
            [&row](Machine& m, const Operands& o) { return apply(row, m[o.target], m[o.right]); });
    }
    for (const Relation& row : relations()) {
        add(row.name, "", kLeft | kRight, Argument::None,
            [&row](Machine& m, const Operands& o) { return agree(row, m[o.left], m[o.right]); });
    }
    for (const Query& row : queries()) {
        add(row.name, "", kLeft, row.argument,
            [&row](Machine& m, const Operands& o) { return agree(row, m[o.left], o.number); });
    }
    for (const Change& row : changes()) {
        add(row.name, "", kTarget, row.argument,
            [&row](Machine& m, const Operands& o) { return apply(row, m[o.target], o.number); });
    }
    for (const Binary& row : binary_operations()) {
        add(row.name, "", all, Argument::None,
            [&row](Machine& m, const Operands& o) { return apply(row, m[o.target], m[o.left], m[o.right]); });
        add(row.name, kReplacing, all, Argument::None,
            [&row](Machine& m, const Operands& o) { return replace(row, m[o.target], m[o.left], m[o.right]); });
    }
    for (const Derived& row : derived_values()) {
        add(row.name, "", kTarget | kLeft, row.argument,
            [&row](Machine& m, const Operands& o) { return apply(row, m[o.target], m[o.left], o.number); });
        add(row.name, kReplacing, kTarget | kLeft, row.argument,
            [&row](Machine& m, const Operands& o) { return replace(row, m[o.target], m[o.left], o.number); });
    }
    return actions;
}

// ---- running ----

// A register that a step uses, as the step finds it.
struct Used {
    const char* role;
    Twin* now;
    M before;
};

std::vector<Used> used_registers(Machine& m, const Action& action, const Operands& o) {
    std::vector<Used> used;
    if ((action.uses & kTarget) != 0) used.push_back({"target", &m[o.target], m[o.target].model});
    if ((action.uses & kLeft) != 0) used.push_back({"left  ", &m[o.left], m[o.left].model});
    if ((action.uses & kRight) != 0) used.push_back({"right ", &m[o.right], m[o.right].model});
    return used;
}

Text kind_to_ask(Ask ask, const M& before) {
    switch (ask) {
        case Ask::AsBefore:
            return before.kind;
        case Ask::Nothing:
            return Text::None;
        case Ask::HexText:
            return Text::Hexadecimal;
        case Ask::BinText:
            return Text::Binary;
    }
    return Text::None;
}

AssertionResult compare(Twin& v, Text ask) {
    return v.model.kind == Text::None && ask == Text::None ? same_content(v) : same(v, ask);
}

std::string describe(const Action& action, const Operands& o, const std::vector<Used>& used) {
    std::ostringstream out;
    out << '\n' << action.name << '\n';
    for (const Used& v : used) out << "  " << v.role << "   " << twin::describe(v.before) << '\n';
    if (action.argument != Argument::None) {
        out << "  number   " << o.number << std::hex << " = 0x" << o.number << std::dec << '\n';
    }
    if ((action.uses & kWord) != 0) out << "  word     0x" << std::hex << o.word << '\n';
    if ((action.uses & kText) != 0) out << "  text     " << testing::PrintToString(o.text) << '\n';
    return out.str();
}

}  // namespace

Machine::Machine(const std::vector<Content>& registers)
    : registers_(registers.begin(), registers.end()),
      generator_(model::init_generator(kGeneratorSeed, kGeneratorBytes)),
      former_buffer_(kval_initstate(kGeneratorSeed, buffer_.data(), kGeneratorBytes)) {}

Machine::~Machine() { kval_setstate(former_buffer_); }

const std::vector<Action>& actions() {
    static const std::vector<Action> table = make_actions();
    return table;
}

const Action& action_named(const std::string& name) {
    static const std::unordered_map<std::string, const Action*> table = [] {
        std::unordered_map<std::string, const Action*> by_name;
        for (const Action& action : actions()) {
            if (!by_name.emplace(action.name, &action).second) throw std::logic_error("two actions: " + action.name);
        }
        return by_name;
    }();
    const auto found = table.find(name);
    if (found == table.end()) throw std::out_of_range("no action is called " + name);
    return *found->second;
}

const Twin& subject(Machine& machine, const Action& action, const Operands& operands) {
    return machine[(action.uses & kLeft) != 0 ? operands.left : operands.target];
}

bool is_too_wide(Machine& machine, const Action& action, const Operands& operands) {
    const unsigned number = operands.number;
    const unsigned width = subject(machine, action, operands).model.width;
    if (action.argument == Argument::Growth) return number > kWidest || width + number > kWidest;
    if (action.argument == Argument::Width) return number > kWidestRegister && number < 0x80000000;  // or else 1
    const bool product = action.name.find('*') != std::string::npos;
    return product && width + machine[operands.right].model.width > kWidest;
}

AssertionResult run(Machine& machine, const Action& action, const Operands& operands) {
    if (is_too_wide(machine, action, operands)) return AssertionSuccess();
    const std::vector<Used> used = used_registers(machine, action, operands);
    AssertionResult result = action.run(machine, operands);
    for (const Used& v : used) {
        if (result) result = compare(*v.now, kind_to_ask(operands.ask, v.before));
    }
    return result ? result : AssertionFailure() << describe(action, operands, used) << result.message();
}

AssertionResult same(Machine& machine, Text kind) {
    for (unsigned i = 0; i < machine.size(); ++i) {
        const AssertionResult result = same(machine[i], kind);
        if (!result) return AssertionFailure() << "\nregister " << i << '\n' << result.message();
    }
    return AssertionSuccess();
}

}  // namespace twin
