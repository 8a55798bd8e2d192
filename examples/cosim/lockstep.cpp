// A design and its reference model in lock step: stimulus, comparison, report.
#include "lockstep.h"

#include <kval/verilog.h>
#include <kval/vpi.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "verilog_rules.h"

namespace {

constexpr unsigned kProgressLines = 10;

constexpr const char* kOperationNames[] = {"LOAD", "AND", "OR",  "XOR",  "NOT", "ADD", "SUB", "MUL",
                                           "SHL",  "SHR", "SAR", "SWAP", "DIV", "REM", "MAC", "CLEAR"};

// ---- settings ----

// Whether `argument` is `name` with a number behind it, which `number` then is.
template <typename Number>
bool read_number(std::string_view argument, std::string_view name, Number& number) {
    if (argument.substr(0, name.size()) != name) return false;
    argument.remove_prefix(name.size());
    const char* const end = argument.data() + argument.size();
    const auto [stopped, error] = std::from_chars(argument.data(), end, number);
    if (error != std::errc() || stopped != end || number < 1) {
        throw std::invalid_argument(std::string(name) + std::string(argument) + ": a number from 1 up is wanted");
    }
    return true;
}

// ---- stimulus: all of it is drawn from the library's generator, so that the seed decides it ----

KVAL_UINTEGER draw(unsigned width) { return KVAL_UINTEGER(0, width).randomize(); }

bool one_in(unsigned number) { return draw(32) < 0xFFFFFFFFU / number; }

// Half of the numbers are ones that an even draw would hardly give: small, 0, all ones, the signed limits.
KVAL_UINTEGER draw_number() {
    KVAL_UINTEGER number = draw(kDataBits);
    switch (draw(4).uint()) {
        case 0:
            return {0, kDataBits};
        case 1:
            return ~KVAL_UINTEGER(0, kDataBits);
        case 2:
            return KVAL_UINTEGER(1, kDataBits) <<= kDataBits - 1;
        case 3:
            return ~(KVAL_UINTEGER(1, kDataBits) <<= kDataBits - 1);
        case 4:
        case 5:
        case 6:
        case 7:
            return number >>= kDataBits - 5;
        default:
            return number;
    }
}

// Some bits of X, or all, or a bus that nobody drives.
void make_unknown(KVAL_UINTEGER& number) {
    switch (draw(2).uint()) {
        case 0:
            number.force_x();
            break;
        case 1:
            (number = 0).force_z();
            break;
        default:
            for (unsigned i = draw(3).uint() + 1; i != 0; --i)
                number.set_x(static_cast<int>(draw(16).uint() % kDataBits));
    }
}

// ---- comparison, by the bits as the simulators' vectors have them ----

struct Vec {
    std::uint32_t aval, bval;
};

std::vector<Vec> vector_of(const KVAL_UINTEGER& value) {
    std::vector<Vec> vec(static_cast<std::size_t>(value.get_size()));
    kval::to_vecval(value, vec.data());
    return vec;
}

unsigned count_ones(std::uint32_t word) {
    unsigned ones = 0;
    for (; word != 0; word &= word - 1) ++ones;
    return ones;
}

// ---- report ----

// Hexadecimal, but bit by bit where some are unknown.
std::string spelled(const KVAL_UINTEGER& value) {
    return kval::to_verilog(value, verilog::has_unknown(value) ? kval::Base::kBinary : kval::Base::kHexadecimal);
}

// For printf.
unsigned long long number(std::uint64_t count) { return count; }

}  // namespace

Settings read_settings(int argc, const char* const* argv) {
    Settings settings;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (read_number(argument, "+cycles=", settings.cycles)) continue;
        if (read_number(argument, "+seed=", settings.seed)) continue;
        if (argument == "+progress") settings.progress = true;
    }
    return settings;
}

Lockstep::Lockstep(const Settings& settings, States states, std::string instance)
    : settings_(settings), states_(states), instance_(std::move(instance)) {
    kval_srandom(static_cast<unsigned>(settings.seed));
    std::printf("%llu cycles with +seed=%d\n", number(settings.cycles), settings.seed);
}

// An X of the model takes a Z too: a value is Z as a whole or not at all, so that a Z beside other bits becomes X here,
// and may have come together to a whole Z again in the design.
bool Lockstep::matches(const KVAL_UINTEGER& design, const KVAL_UINTEGER& model) {
    const std::vector<Vec> actual = vector_of(design);
    const std::vector<Vec> expected = vector_of(model);
    std::uint32_t wrong = 0;
    unsigned x_bits = 0;
    unsigned z_bits = 0;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const std::uint32_t x = expected[i].bval & expected[i].aval;
        const std::uint32_t z = expected[i].bval & ~expected[i].aval;
        wrong |= ~expected[i].bval & ((actual[i].aval ^ expected[i].aval) | actual[i].bval);
        if (states_ == States::kFour) wrong |= (x & ~actual[i].bval) | (z & ~(actual[i].bval & ~actual[i].aval));
        x_bits += count_ones(x);
        z_bits += count_ones(z);
    }
    bits_.x += x_bits;
    bits_.z += z_bits;
    bits_.known += model.bitwidth() - x_bits - z_bits;
    return wrong == 0;
}

void Lockstep::compare(std::uint64_t time, const AluOutputs& design) {
    const AluOutputs& model = model_.outputs();
    for (const auto& port : kOutputPorts) {
        if (matches(design.*port.value, model.*port.value)) continue;
        if (!failed_) std::printf("MISMATCH at time %llu, cycle %llu\n", number(time), number(cycle_));
        failed_ = true;
        report(port.name, design.*port.value, model.*port.value);
    }
    if (failed_) describe_cycle();
}

void Lockstep::describe_cycle() const {
    if (cycle_ == 0) {
        std::printf("  after     power-up\n");
    } else {
        std::printf("  after     %s of a = %s, b = %s, shift = %u, data = %s\n", kOperationNames[inputs_.op.uint()],
                    spelled(a_).c_str(), spelled(b_).c_str(), inputs_.shift.uint(), spelled(inputs_.data).c_str());
    }
    std::printf("  again by  +seed=%d\n", settings_.seed);
}

// Both in the same base.
void Lockstep::report(const char* port, const KVAL_UINTEGER& design, const KVAL_UINTEGER& model) const {
    const bool binary = verilog::has_unknown(design) || verilog::has_unknown(model);
    const kval::Base base = binary ? kval::Base::kBinary : kval::Base::kHexadecimal;
    std::printf("  signal    %s.%s\n", instance_.c_str(), port);
    std::printf("  expected  %s\n", kval::to_verilog(model, base).c_str());
    std::printf("  actual    %s\n", kval::to_verilog(design, base).c_str());
}

// A quarter of the operations are loads, so that registers become known, and unknown again.
void Lockstep::draw_inputs() {
    for (const auto& port : kInputPorts) (inputs_.*port.value).randomize();
    if (one_in(4)) inputs_.op = static_cast<unsigned>(Operation::kLoad);
    inputs_.data = draw_number();
    if (states_ == States::kFour && one_in(8)) make_unknown(inputs_.data);
}

bool Lockstep::step(std::uint64_t time, const AluOutputs& design) {
    compare(time, design);
    show_progress();
    if (failed_) return false;
    if (cycle_ == settings_.cycles) {
        summarize();
        return false;
    }
    ++cycle_;
    draw_inputs();
    a_ = model_.operand_a(inputs_);
    b_ = model_.operand_b(inputs_);
    model_.clock(inputs_);
    return true;
}

void Lockstep::show_progress() const {
    if (!settings_.progress || cycle_ == 0 || cycle_ == settings_.cycles) return;
    if (cycle_ % std::max<std::uint64_t>(settings_.cycles / kProgressLines, 1) != 0) return;
    std::printf("progress %llu\n", number(cycle_));
    std::fflush(stdout);
}

void Lockstep::summarize() const {
    std::printf("%llu cycles agree: outputs of %llu known bits, ", number(cycle_), number(bits_.known));
    if (states_ == States::kFour) {
        std::printf("%llu X and %llu Z\n", number(bits_.x), number(bits_.z));
    } else {
        std::printf("and %llu that the model does not know\n", number(bits_.x));
    }
}
