// The testbench of the multiply-accumulate unit: stimulus, the same computation in machine integers, coverage, verdict.
#include "mac_check.h"

#include <kval.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <unordered_map>

#include "mac.h"

namespace {

constexpr unsigned kVectors = 100000;
constexpr int kLowest = -(1 << (Mac::kOperandBits - 1));
constexpr int kHighest = -kLowest - 1;

// ---- stimulus: all of it is drawn from the library's generator, so that the seed decides it ----

KVAL_UINTEGER draw(unsigned width) { return KVAL_UINTEGER(0, width).randomize(); }

// Bit by bit with set_x, which sets flag X as well: a raw store of the x-mask would leave it clear, and the product
// looks at the flag.
void make_some_bits_unknown(KVAL_SINTEGER& operand) {
    KVAL_UINTEGER chosen = draw(operand.bitwidth());
    while (chosen.is_zero()) chosen.randomize();
    for (unsigned bit = 0; bit < chosen.bitwidth(); ++bit) {
        if (chosen.bit(bit) == 1) operand.set_x(static_cast<int>(bit));
    }
}

// Of 64 cases 4 are the lowest number, 4 are 0 and 4 the highest, each of which an even draw gives once in 4096 times;
// one has unknown bits.
KVAL_SINTEGER draw_operand() {
    KVAL_SINTEGER operand(draw(Mac::kOperandBits));
    const KVAL_UINTEGER die = draw(6);
    if (die < 4) return {kLowest, Mac::kOperandBits};
    if (die < 8) return {0, Mac::kOperandBits};
    if (die < 12) return {kHighest, Mac::kOperandBits};
    if (die == 12) make_some_bits_unknown(operand);
    return operand;
}

// ---- the same computation in machine integers ----

struct Saturations {
    unsigned up = 0;
    unsigned down = 0;
};

std::int64_t clamp(std::int64_t number, unsigned bits, Saturations& count) {
    const std::int64_t limit = std::int64_t{1} << (bits - 1);
    if (number >= limit) {
        ++count.up;
        return limit - 1;
    }
    if (number < -limit) {
        ++count.down;
        return -limit;
    }
    return number;
}

struct MachineMac {
    std::int64_t product = 0;
    std::int64_t accumulator = 0;
    std::int64_t output = 0;
    Saturations accumulator_saturations;
    Saturations output_saturations;

    void clock(std::int64_t a, std::int64_t b) {
        product = a * b;
        accumulator = clamp(accumulator + product, Mac::kAccumulatorBits, accumulator_saturations);
        output = clamp(accumulator >> Mac::kDroppedBits, Mac::kOutputBits, output_saturations);
    }
};

// From the bits, and not by signed_value(): the machine's side is to owe the library as little as it can.
std::int64_t operand_number(const KVAL_SINTEGER& operand) {
    const std::int64_t bits = operand.uint();
    return bits > kHighest ? bits - (1 << Mac::kOperandBits) : bits;
}

// ---- comparison ----

bool has_unknown_bits(const KVAL_SINTEGER& value) { return value.get_xmask_at(0) != 0; }

// Not by ==, which for negative numbers looks at the value bits alone.
bool reads(const KVAL_SINTEGER& value, std::int64_t number) {
    return !value.is_x() && !has_unknown_bits(value) && value.signed_value() == number;
}

bool product_agrees(const KVAL_SINTEGER& product, const MachineMac& machine, bool unknown) {
    const unsigned all_bits = (1U << Mac::kProductBits) - 1;
    return unknown ? product.is_x() && product.get_xmask_at(0) == all_bits : reads(product, machine.product);
}

// Clocks both units; where the product is unknown the machine's is not clocked: the other has to hold its registers.
bool vector_agrees(Mac& mac, MachineMac& machine, const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const bool unknown = has_unknown_bits(a) || has_unknown_bits(b);
    mac.clock(a, b);
    if (!unknown) machine.clock(operand_number(a), operand_number(b));
    return product_agrees(mac.product, machine, unknown) && reads(mac.accumulator, machine.accumulator) &&
           reads(mac.output, machine.output);
}

// ---- coverage: how often each class of `a` met each class of `b` ----

enum OperandClass : unsigned { kIsLowest, kIsNegative, kIsZero, kIsPositive, kIsHighest, kIsUnknown, kClasses };
constexpr unsigned kClassBits = 3;
constexpr const char* kClassNames[kClasses] = {"lowest", "negative", "zero", "positive", "highest", "unknown"};

OperandClass class_of(const KVAL_SINTEGER& operand) {
    if (has_unknown_bits(operand)) return kIsUnknown;
    const std::int64_t number = operand_number(operand);
    if (number == kLowest) return kIsLowest;
    if (number == kHighest) return kIsHighest;
    if (number == 0) return kIsZero;
    return number < 0 ? kIsNegative : kIsPositive;
}

// Both classes side by side.
KVAL_UINTEGER coverage_key(OperandClass a, OperandClass b) {
    return KVAL_UINTEGER(a, kClassBits) << kClassBits | KVAL_UINTEGER(b, kClassBits);
}

// get_hash goes with the table's == because all keys have the same width. In general it does not: 5 in 8 bits is == 5
// in 40 bits, but the second has a word more, and hashes differently.
struct KeyHash {
    std::size_t operator()(const KVAL_UINTEGER& key) const noexcept { return key.get_hash(32); }
};

using Coverage = std::unordered_map<KVAL_UINTEGER, unsigned, KeyHash>;

// In the order of the classes: that of the hash table means nothing.
void print_coverage(const Coverage& coverage) {
    std::printf("  %-12s", "a \\ b");
    for (const char* name : kClassNames) std::printf("%10s", name);
    std::printf("\n");
    for (unsigned a = 0; a < kClasses; ++a) {
        std::printf("  %-12s", kClassNames[a]);
        for (unsigned b = 0; b < kClasses; ++b) {
            const auto cell = coverage.find(coverage_key(OperandClass(a), OperandClass(b)));
            std::printf("%10u", cell == coverage.end() ? 0 : cell->second);
        }
        std::printf("\n");
    }
}

void print_saturations(const char* name, const Saturations& count) {
    std::printf("  %-12s%6u times saturated up, %6u down\n", name, count.up, count.down);
}

// ---- verdict ----

struct Mismatch {
    unsigned vector;  // counted from 1
    KVAL_SINTEGER a;
    KVAL_SINTEGER b;
    Mac mac;  // as they are after the vector
    MachineMac machine;
};

struct Verdict {
    unsigned mismatches = 0;
    std::optional<Mismatch> first;
};

void print_register(const char* name, const KVAL_SINTEGER& value, const std::string& expected) {
    std::printf("  %-12s%28s  expected %s\n", name, value.as_bin_string(), expected.c_str());
}

void print_mismatch(const Mismatch& mismatch) {
    const auto& [vector, a, b, mac, machine] = mismatch;
    const bool unknown = has_unknown_bits(a) || has_unknown_bits(b);
    std::printf("  vector %u: a = %s, b = %s\n", vector, a.as_bin_string(), b.as_bin_string());
    print_register("product", mac.product, unknown ? "all X" : std::to_string(machine.product));
    print_register("accumulator", mac.accumulator, std::to_string(machine.accumulator));
    print_register("output", mac.output, std::to_string(machine.output));
}

void print_verdict(const Verdict& verdict, unsigned seed) {
    if (!verdict.first) {
        std::printf("mac     %u vectors agree with machine integers, seed %u\n", kVectors, seed);
        return;
    }
    std::printf("mac     %u of %u vectors differ from machine integers, seed %u; the first is\n", verdict.mismatches,
                kVectors, seed);
    print_mismatch(*verdict.first);
}

}  // namespace

bool check_mac(unsigned seed) {
    Mac mac;
    MachineMac machine;
    Coverage coverage;
    Verdict verdict;
    kval_srandom(seed);
    for (unsigned vector = 1; vector <= kVectors; ++vector) {
        const KVAL_SINTEGER a = draw_operand();
        const KVAL_SINTEGER b = draw_operand();
        ++coverage[coverage_key(class_of(a), class_of(b))];
        if (vector_agrees(mac, machine, a, b)) continue;
        ++verdict.mismatches;
        if (!verdict.first) verdict.first = Mismatch{vector, a, b, mac, machine};
    }
    std::printf("\n4. A signed 12-bit multiply-accumulate unit, driven by random vectors: the operands that met\n\n");
    print_coverage(coverage);
    std::printf("\n");
    print_saturations("accumulator", machine.accumulator_saturations);
    print_saturations("output", machine.output_saturations);
    std::printf("\n");
    print_verdict(verdict, seed);
    return !verdict.first;
}
