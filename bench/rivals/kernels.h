// kernels.h: what the inner loop of a model does, 1000 steps of it, in terms of a rival's operations.
#ifndef BENCH_RIVALS_KERNELS_H
#define BENCH_RIVALS_KERNELS_H

#include "operations.h"

namespace bench {

constexpr unsigned kSteps = 1000;

/// The operands that step `i` takes: the sets have sixteen pairs at the widths of the kernels.
template <typename Rival>
const Operands<Rival>& operands_at(const std::vector<Operands<Rival>>& list, unsigned i) {
    return list[i % 16];
}

/// A counter, a comparison, and a multiplexer that is switched by it.
template <typename Rival>
auto counter(const std::vector<Operands<Rival>>& list) {
    auto count = Rival::copy(list[0].left);
    auto limit = Rival::copy(list[0].left);
    for (unsigned i = 0; i < kSteps / 2; ++i) Rival::increment(limit);
    auto selected = Rival::copy(list[0].left);
    for (unsigned i = 0; i < kSteps; ++i) {
        const Operands<Rival>& o = operands_at(list, i);
        Rival::increment(count);
        Rival::assign(selected, Rival::less(count, limit) ? o.left : o.right);
        Rival::keep(selected);
    }
    return selected;
}

/// A shift register whose new bit comes from four taps.
template <typename Rival>
auto shift_register(const std::vector<Operands<Rival>>& list) {
    auto value = Rival::copy(list[0].left);
    for (unsigned i = 0; i < kSteps; ++i) {
        const bool in =
            (Rival::bit(value, 63) != Rival::bit(value, 62)) != (Rival::bit(value, 60) != Rival::bit(value, 59));
        Rival::shift_left_assign(value, 1);
        Rival::set_bit(value, 0, in);
    }
    return value;
}

/// acc += (a & b) ^ c.
template <typename Rival>
auto accumulator(const std::vector<Operands<Rival>>& list) {
    auto acc = Rival::copy(list[0].left);
    for (unsigned i = 0; i < kSteps; ++i) {
        const Operands<Rival>& o = operands_at(list, i);
        Rival::accumulate(acc, o.left, o.right, operands_at(list, i + 1).left);
    }
    if constexpr (requires { Rival::wrap(acc, 128U); }) Rival::wrap(acc, 128);
    return acc;
}

template <typename Rival, typename Kernel>
void add_kernel(const char* name, unsigned width, Kernel kernel) {
    for (const char* set : {"known", "x"}) {
        if (set == std::string_view("x") && Rival::kRules == Rules::kTwoState) continue;
        Benchmark benchmark{name, Rival::kName, width, set, Rival::kRules, {}, {}};
        benchmark.results = [=] {
            return std::vector<Outcome>{outcome<Rival>(kernel(operands_of<Rival>(set, width)))};
        };
        benchmark.run = [=](benchmark::State& state) {
            const std::vector<Operands<Rival>> list = operands_of<Rival>(set, width);
            for (auto step : state) {
                static_cast<void>(step);
                use<Rival>(kernel(list));
                benchmark::ClobberMemory();
            }
        };
        benchmarks().push_back(std::move(benchmark));
    }
}

template <typename Rival>
void add_counter() {
    add_kernel<Rival>("kernel_counter", 32, counter<Rival>);
}
template <typename Rival>
void add_shift_register() {
    add_kernel<Rival>("kernel_shift_register", 64, shift_register<Rival>);
}
template <typename Rival>
void add_accumulator() {
    add_kernel<Rival>("kernel_accumulator", 128, accumulator<Rival>);
}

}  // namespace bench

#endif
