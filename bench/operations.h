// operations.h: the table of operations. A rival is a class with a type Value and a static function for every
// operation that it takes part in; what it lacks is not measured.
//
//   static Value from(const Bits&);          makes an operand
//   static Bits bits(const Value&);          reads a result
//   static void keep(const Value&);          uses a result
//   static constexpr const char* kName;      the rival's name
//   static constexpr Rules kRules;           how far its results are the library's
//   static bool takes(unsigned width, unsigned result_width);
//   static constexpr unsigned kWidestProduct;  optional: the widest operands that it multiplies
//   static constexpr unsigned kWidestText;     optional: the widest value that it prints
//
// The functions return their result, by value where it is a new one; operations in place return their left operand.
#ifndef BENCH_OPERATIONS_H
#define BENCH_OPERATIONS_H

#include <algorithm>
#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

#include "registry.h"

namespace bench {

constexpr unsigned kWidestParsed = 65536;

/// The operands of one measured call, as values of the rival.
template <typename Rival>
struct Operands {
    explicit Operands(const Pair& pair)
        : left(Rival::from(pair.left)),
          right(Rival::from(pair.right)),
          width(pair.left.width),
          count(shift_count(pair.left.width)),
          number(pair.right.value[0] >> (width < 32 ? 32 - width : 0)),
          hexadecimal(width <= kWidestParsed ? bench::hexadecimal(pair.left) : std::string()),
          binary(width <= kWidestParsed ? bench::binary(pair.left) : std::string()) {}

    typename Rival::Value left;
    typename Rival::Value right;
    unsigned width;
    unsigned count;
    unsigned number;
    std::string hexadecimal;
    std::string binary;
};

/// A call of the rival's function of that name with some of the operands `o`, where the rival has it.
#define BENCH_CALL(function, ...) \
    []<typename Any>(Operands<Any>& o) -> decltype(Any::function(__VA_ARGS__)) { return Any::function(__VA_ARGS__); }

using Widths = std::vector<unsigned>;
using Sets = std::vector<const char*>;

/// The width of the widest result for operands of a width.
using ResultWidth = unsigned (*)(unsigned width);

inline unsigned same_width(unsigned width) { return width; }
inline unsigned sum_width(unsigned width) { return width + 1; }
inline unsigned left_shift_width(unsigned width) { return width + shift_count(width); }
inline unsigned product_width(unsigned width) { return 2 * width; }

template <typename Rival, typename Result>
Outcome outcome(const Result& result) {
    if constexpr (std::integral<Result>) {
        return {{1, {static_cast<std::uint32_t>(result)}, {0}, std::nullopt}, {}};
    } else if constexpr (std::same_as<Result, typename Rival::Value>) {
        return {Rival::bits(result), {}};
    } else {
        return {{}, result.text()};
    }
}

template <typename Rival, typename Result>
void use(const Result& result) {
    if constexpr (std::integral<Result>) {
        keep(std::uint64_t{result});
    } else if constexpr (std::same_as<Result, typename Rival::Value>) {
        Rival::keep(result);
    } else {
        keep_memory(result.chars());
    }
}

template <typename Rival>
std::vector<Operands<Rival>> operands_of(const char* set, unsigned width) {
    std::vector<Operands<Rival>> list;
    for (const Pair& pair : operands(set, width)) list.emplace_back(pair);
    return list;
}

template <typename Rival, typename Call>
std::vector<Outcome> results_of(const char* set, unsigned width, Call call) {
    std::vector<Outcome> results;
    for (Operands<Rival>& o : operands_of<Rival>(set, width)) {
        decltype(auto) result = call(o);
        results.push_back(outcome<Rival>(std::as_const(result)));
    }
    return results;
}

/// Rotates through the pairs of the set; one pass over them is one step of the outer loop.
template <typename Rival, typename Call>
void run_over(const char* set, unsigned width, Call call, benchmark::State& state) {
    std::vector<Operands<Rival>> list = operands_of<Rival>(set, width);
    Operands<Rival>* const first = list.data();
    const std::size_t size = list.size();
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(size))) {
        for (std::size_t i = 0; i < size; ++i) {
            decltype(auto) result = call(first[i]);
            use<Rival>(std::as_const(result));
        }
        benchmark::ClobberMemory();
    }
}

/// One call after others have left behind what they keep.
template <typename Rival, typename Call>
void call_once(const char* set, unsigned width, Call call, const Meter& meter) {
    std::vector<Operands<Rival>> list = operands_of<Rival>(set, width);
    const auto measure = [&](const std::function<void()>& start, const std::function<void()>& stop) {
        start();
        decltype(auto) result = call(list.front());
        use<Rival>(std::as_const(result));
        stop();
    };
    const auto nothing = [] {};
    for (int i = 0; i < 4; ++i) measure(nothing, nothing);
    measure(meter.start, meter.stop);
}

template <typename Rival>
void hold(unsigned width, std::size_t count, const std::function<void()>& while_alive) {
    const Bits bits = operands("known", width).front().left;
    std::vector<typename Rival::Value> values;
    values.reserve(count);
    for (std::size_t i = 0; i < count; ++i) values.push_back(Rival::from(bits));
    while_alive();
}

/// Registers one operation of one rival for all sets and widths; nothing where the rival does not have it.
template <typename Rival, typename Call>
void add(const char* operation, const Sets& sets, const Widths& widths, ResultWidth result_width, Call call) {
    if constexpr (std::invocable<Call, Operands<Rival>&>) {
        for (const char* set : sets) {
            const bool unknowns = operands(set, 32).front().left.has_x();
            if (unknowns && Rival::kRules == Rules::kTwoState) continue;
            for (const unsigned width : widths) {
                if (!Rival::takes(width, result_width(width))) continue;
                benchmarks().push_back({operation, Rival::kName, width, set, Rival::kRules,
                                        [=] { return results_of<Rival>(set, width, call); },
                                        [=](benchmark::State& state) { run_over<Rival>(set, width, call, state); },
                                        [=](const Meter& meter) { call_once<Rival>(set, width, call, meter); }});
            }
        }
    }
}

/// What a rival can multiply, or print, in reasonable time.
template <typename Rival>
unsigned widest_product() {
    if constexpr (requires { Rival::kWidestProduct; }) return Rival::kWidestProduct;
    return ~0U;
}
template <typename Rival>
unsigned widest_text() {
    if constexpr (requires { Rival::kWidestText; }) return Rival::kWidestText;
    return ~0U;
}

inline Widths up_to(unsigned most, Widths widths) {
    widths.erase(std::remove_if(widths.begin(), widths.end(), [most](unsigned width) { return width > most; }),
                 widths.end());
    return widths;
}

template <typename Rival>
void add_operations() {
    const Widths widths = {8, 32, 33, 64, 65, 128, 256, 1024, 4096, 65536};
    const Widths wider = {16384, 262144, 1048576, 4194304, 16777216};  // for the growth with the width
    const Widths narrow = {8, 16, 24, 32};
    const Widths products = up_to(widest_product<Rival>(), {8, 16, 32, 33, 64, 65, 128, 256, 512, 1024, 2048, 4096,
                                                            16384, 32768, 65536, 262144, 524288, 1048576});
    const Sets plain = {"known", "x"};
    const Sets sums = {"known", "grows", "carry", "x"};

    if constexpr (requires(const typename Rival::Value& v) { Rival::copy(v); }) {
        for (const unsigned width : {32, 64, 1024}) {
            if (!Rival::takes(width, width)) continue;
            live_values().push_back({Rival::kName, width, [width](std::size_t count, const auto& while_alive) {
                                         hold<Rival>(width, count, while_alive);
                                     }});
        }
    }

    const auto add_unary_and_binary = [&](const char* name, auto call) {
        add<Rival>(name, plain, widths, same_width, call);
    };
    const auto scale = [&](const char* name, ResultWidth result_width, auto call) {
        add<Rival>(name, {"known"}, wider, result_width, call);
    };

    add<Rival>("construct", {"known"}, widths, same_width, BENCH_CALL(construct, o.number, o.width));
    add_unary_and_binary("copy", BENCH_CALL(copy, o.left));
    add_unary_and_binary("logic_and", BENCH_CALL(logic_and, o.left, o.right));
    add_unary_and_binary("logic_or", BENCH_CALL(logic_or, o.left, o.right));
    add_unary_and_binary("logic_xor", BENCH_CALL(logic_xor, o.left, o.right));
    add_unary_and_binary("logic_not", BENCH_CALL(logic_not, o.left));
    add_unary_and_binary("shift_right", BENCH_CALL(shift_right, o.left, o.count));
    add<Rival>("shift_left", plain, widths, left_shift_width, BENCH_CALL(shift_left, o.left, o.count));
    add<Rival>("add", sums, widths, sum_width, BENCH_CALL(add, o.left, o.right));
    add<Rival>("subtract", plain, widths, same_width, BENCH_CALL(subtract, o.left, o.right));
    add<Rival>("multiply", plain, products, product_width, BENCH_CALL(multiply, o.left, o.right));
    scale("copy", same_width, BENCH_CALL(copy, o.left));
    scale("add", sum_width, BENCH_CALL(add, o.left, o.right));
    scale("shift_right", same_width, BENCH_CALL(shift_right, o.left, o.count));

    add_unary_and_binary("and_assign", BENCH_CALL(and_assign, o.left, o.right));
    add_unary_and_binary("or_assign", BENCH_CALL(or_assign, o.left, o.right));
    add_unary_and_binary("add_assign", BENCH_CALL(add_assign, o.left, o.right));
    add_unary_and_binary("subtract_assign", BENCH_CALL(subtract_assign, o.left, o.right));
    add_unary_and_binary("shift_left_assign", BENCH_CALL(shift_left_assign, o.left, o.count));
    add_unary_and_binary("shift_right_assign", BENCH_CALL(shift_right_assign, o.left, o.count));
    add_unary_and_binary("increment", BENCH_CALL(increment, o.left));
    add_unary_and_binary("decrement", BENCH_CALL(decrement, o.left));
    add_unary_and_binary("assign", BENCH_CALL(assign, o.left, o.right));
    add_unary_and_binary("assign_number", BENCH_CALL(assign, o.left, o.number));

    add<Rival>("less", {"low", "top", "low_x"}, widths, same_width, BENCH_CALL(less, o.left, o.right));
    add<Rival>("equal", {"equal", "low", "equal_x"}, widths, same_width, BENCH_CALL(equal, o.left, o.right));

    add_unary_and_binary("hexadecimal_text", BENCH_CALL(hexadecimal_text, o.left));
    add_unary_and_binary("binary_text", BENCH_CALL(binary_text, o.left));
    add<Rival>("hexadecimal_text", {"known"}, up_to(widest_text<Rival>(), wider), same_width,
               BENCH_CALL(hexadecimal_text, o.left));
    add<Rival>("parse_hexadecimal", {"known"}, widths, same_width,
               BENCH_CALL(parse_hexadecimal, o.left, o.hexadecimal));
    add<Rival>("parse_binary", plain, widths, same_width, BENCH_CALL(parse_binary, o.left, o.binary));
    add<Rival>("hash", {"known"}, widths, same_width, BENCH_CALL(hash, o.left));
    add<Rival>("random_fill", {"known"}, widths, same_width, BENCH_CALL(random_fill, o.left));

    const Sets signs = {"known", "grows", "x"};
    const auto add_signed = [&](const char* name, ResultWidth result_width, auto call) {
        add<Rival>(name, signs, widths, result_width, call);
    };
    add<Rival>("signed_construct", {"known", "grows"}, widths, same_width,
               BENCH_CALL(signed_construct, o.number, o.width));
    add_signed("signed_copy", same_width, BENCH_CALL(signed_copy, o.left));
    add_signed("signed_add", sum_width, BENCH_CALL(signed_add, o.left, o.right));
    add_signed("signed_subtract", sum_width, BENCH_CALL(signed_subtract, o.left, o.right));
    add_signed("signed_shift_right", same_width, BENCH_CALL(signed_shift_right, o.left, o.count));
    add_signed("signed_shift_right_assign", same_width, BENCH_CALL(signed_shift_right_assign, o.left, o.count));
    add_signed("signed_assign", same_width, BENCH_CALL(signed_assign, o.left, o.right));
    add<Rival>("signed_multiply", signs, products, product_width, BENCH_CALL(signed_multiply, o.left, o.right));
    add<Rival>("signed_less", {"low", "top", "low_x"}, widths, same_width, BENCH_CALL(signed_less, o.left, o.right));
    add<Rival>("signed_equal", {"equal", "low", "equal_x"}, widths, same_width,
               BENCH_CALL(signed_equal, o.left, o.right));
    add<Rival>("divide", {"divide"}, narrow, same_width, BENCH_CALL(divide, o.left, o.right));
    add<Rival>("remainder", {"divide"}, narrow, same_width, BENCH_CALL(remainder, o.left, o.right));
    add<Rival>("signed_divide", {"divide"}, narrow, same_width, BENCH_CALL(signed_divide, o.left, o.right));
    add<Rival>("signed_remainder", {"divide"}, narrow, same_width, BENCH_CALL(signed_remainder, o.left, o.right));
}

}  // namespace bench

#endif
