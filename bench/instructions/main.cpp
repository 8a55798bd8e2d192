// Runs every operation at several widths, and has callgrind, under which it is run, write the count of each to a file.
#include <kval.h>
#include <valgrind/callgrind.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "operands.h"

namespace {

using instructions::Operands;
using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

/// Has the compiler believe that the value is read.
template <typename Value>
void use(const Value& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

/// `calls` calls in a row, which is what is counted.
using Loop = void (*)(Operands&, int calls);

template <auto kCall>
[[gnu::noinline]] void loop(Operands& operands, int calls) {
    for (int i = 0; i < calls; ++i) {
        kCall(operands);
        asm volatile("" : : : "memory");
    }
}

/// The loop over an expression in the operands `o`.
#define LOOP(...) &loop<[]([[maybe_unused]] Operands& o) { use(__VA_ARGS__); }>

using Widths = std::initializer_list<unsigned>;
constexpr Widths kAll = {8, 32, 33, 64, 65, 128, 256, 1024, 4096, 65536};
constexpr Widths kSome = {8, 32, 33, 64, 128, 1024, 65536};
constexpr Widths kCompact = {8, 32};
constexpr Widths kOne = {64};

struct Operation {
    const char* name;
    Widths widths;
    bool with_unknown;  // counted with X bits too, as NAME_x
    Loop loop;
};

const Operation operations[] = {
    {"nothing", kAll, false, LOOP(o)},  // what the loop itself costs

    {"construct", kAll, false, LOOP(U(5, o.width))},
    {"copy", kAll, true, LOOP(U(o.a))},
    {"move_there_and_back", kAll, false, LOOP(o.a = U(std::move(o.a)))},
    {"resize_there_and_back", kSome, false, LOOP(o.a.bitwidth(o.width + 9).bitwidth(o.width))},
    {"assign", kAll, true, LOOP(o.target = o.a)},
    {"assign_number", kAll, false, LOOP(o.target = 5)},
    {"bit", kSome, false, LOOP(o.a.bit(o.width - 3))},
    {"set_bit", kSome, false, LOOP(o.target.set_bit(static_cast<int>(o.width) - 3, 1))},
    {"set_x", kSome, false, LOOP(o.target.set_x(static_cast<int>(o.width) - 3))},
    {"force_x", kSome, false, LOOP(o.target.force_x())},

    {"and", kAll, true, LOOP(o.a& o.b)},
    {"or", kAll, true, LOOP(o.a | o.b)},
    {"xor", kAll, true, LOOP(o.a ^ o.b)},
    {"not", kAll, true, LOOP(~o.a)},
    {"add", kAll, true, LOOP(o.a + o.b)},
    {"add_growing", kAll, false, LOOP(o.ones + o.ones)},
    {"subtract", kAll, true, LOOP(o.a - o.b)},
    {"multiply", kAll, true, LOOP(o.a* o.b)},
    {"divide", kCompact, true, LOOP(o.a / o.b)},
    {"remainder", kCompact, true, LOOP(o.a % o.b)},
    {"shift_left", kAll, true, LOOP(o.a << o.count)},
    {"shift_right", kAll, true, LOOP(o.a >> o.count)},
    {"two_temporaries", kAll, false, LOOP((o.a & o.b) ^ o.ones)},

    {"and_assign", kAll, true, LOOP(o.a &= o.b)},
    {"or_assign", kAll, true, LOOP(o.a |= o.b)},
    {"add_assign", kAll, true, LOOP(o.a += o.b)},
    {"add_assign_number", kAll, false, LOOP(o.a += 5)},
    {"subtract_assign", kAll, true, LOOP(o.a -= o.b)},
    {"subtract_assign_number", kAll, false, LOOP(o.a -= 5)},
    {"shift_left_assign", kAll, true, LOOP(o.a <<= o.count)},
    {"shift_right_assign", kAll, true, LOOP(o.a >>= o.count)},
    {"increment", kAll, false, LOOP(++o.a)},
    {"decrement", kAll, false, LOOP(--o.a)},

    {"less", kAll, false, LOOP(o.a < o.near)},
    {"less_number", kSome, false, LOOP(o.a < 5)},
    {"equal", kAll, true, LOOP(o.a == o.same)},
    {"equal_number", kSome, false, LOOP(o.a == 5)},
    {"is_zero", kSome, false, LOOP(o.target.is_zero())},

    {"hexadecimal_text", kAll, true, LOOP((o.a.DeleteString(), o.a.as_hex_string()))},
    {"binary_text", kAll, true, LOOP((o.a.DeleteString(), o.a.as_bin_string()))},
    {"hexadecimal_parse", kAll, false, LOOP(o.target.set_value_from_hex_string(o.hexadecimal.chars))},
    {"binary_parse", kAll, true, LOOP(o.target.set_value_from_bin_string(o.binary.chars))},
    {"hash", kAll, false, LOOP(o.a.get_hash(32))},
    {"random", kOne, false, LOOP(kval_random())},
    {"randomize", kAll, false, LOOP(o.target.randomize())},

    {"signed_construct", kSome, false, LOOP(S(-5, o.width))},
    {"signed_assign", kSome, true, LOOP(o.positive = o.negative)},
    {"signed_add", kAll, true, LOOP(o.negative + o.positive)},
    {"signed_add_growing", kAll, false, LOOP(o.negative + o.negative)},
    {"signed_add_unsigned", kSome, false, LOOP(o.negative + o.a)},
    {"signed_subtract", kAll, true, LOOP(o.negative - o.positive)},
    {"signed_multiply", kAll, true, LOOP(o.negative* o.positive)},
    {"signed_shift_right", kAll, true, LOOP(o.negative >> o.count)},
    {"signed_shift_right_assign", kAll, false, LOOP(o.negative >>= o.count)},
    {"signed_less", kAll, false, LOOP(o.negative < o.negative_near)},
    {"signed_equal", kSome, false, LOOP(o.negative == o.negative_near)},
    {"signed_divide", kCompact, false, LOOP(o.negative / o.positive)},
    {"posr_mod", kCompact, false, LOOP(posr_mod(o.negative, o.positive))},
};

/// How many calls are counted. Many enough for the generator to be in each of its 31 positions, where they are short.
int calls_at(unsigned width) {
    if (width <= 256) return 62;
    return width <= 4096 ? 8 : 2;
}

void count(const Operation& operation, unsigned width, bool unknown) {
    const int calls = calls_at(width);
    const std::string name =
        std::string(operation.name) + (unknown ? "_x " : " ") + std::to_string(width) + ' ' + std::to_string(calls);
    kval_srandom(1);
    Operands operands(width, unknown);
    operation.loop(operands, calls);  // what only the first calls do
    CALLGRIND_ZERO_STATS;
    operation.loop(operands, calls);
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

}  // namespace

int main() {
    for (const Operation& operation : operations) {
        for (const unsigned width : operation.widths) {
            count(operation, width, false);
            if (operation.with_unknown) count(operation, width, true);
        }
    }
}
