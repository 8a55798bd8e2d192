// registry.h: what is measured: every operation of the library and of its rivals under one scheme of names,
// OPERATION/RIVAL/WIDTH/SET, such as logic_and/kval/64/known.
#ifndef BENCH_REGISTRY_H
#define BENCH_REGISTRY_H

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "operands.h"

namespace bench {

/// What an operation gave for one pair of operands: bits, a truth value (as one bit), or a text.
struct Outcome {
    Bits bits;
    std::string text;
};

/// How far a rival's results can be compared with the library's.
enum class Rules {
    kSame,      ///< the same bits, X bits and width
    kTwoState,  ///< the same value bits, of known operands
    kOwn,       ///< another four-state rule: what is known in both results is the same
    kNone,      ///< no result: a plain allocation, or a random number
};

/// What encloses the one call whose allocations are counted.
struct Meter {
    std::function<void()> start;
    std::function<void()> stop;
};

struct Benchmark {
    std::string operation;
    std::string rival;
    unsigned width;
    std::string set;
    Rules rules;
    std::function<std::vector<Outcome>()> results;  ///< one for every pair of the set
    std::function<void(benchmark::State&)> run;
    std::function<void(const Meter&)> once = {};  ///< one call, its operands made and others made before it
    unsigned result_width = 0;                    ///< found when results are checked

    std::string name() const { return operation + '/' + rival + '/' + std::to_string(width) + '/' + set; }
};

/// Many values of a rival, alive at once.
struct LiveValues {
    std::string rival;
    unsigned width;
    std::function<void(std::size_t count, const std::function<void()>& while_alive)> hold;
};

/// All benchmarks that were compiled in.
std::vector<Benchmark>& benchmarks();
std::vector<LiveValues>& live_values();

/// Registers what has no operands and no result to compare.
template <typename Step>
void add_plain(const char* operation, const char* rival, unsigned width, Step step) {
    constexpr benchmark::IterationCount kSteps = 16;
    benchmarks().push_back(
        {operation, rival, width, "known", Rules::kNone, {}, [step](benchmark::State& state) mutable {
             while (state.KeepRunningBatch(kSteps)) {
                 for (benchmark::IterationCount i = 0; i < kSteps; ++i) step();
             }
         }});
}

/// Registers at start-up: a static object for every rival.
struct Registration {
    explicit Registration(void (*add_all)()) { add_all(); }
};

/// Compares each of `selected` with the library's results and fills in the result widths; a difference ends the
/// program.
void check(const std::vector<Benchmark*>& selected);

// ---- what a result is used for, without a store that the measured code does not have itself ----

inline void keep(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned flags) {
    asm volatile("" : : "r"(value), "r"(mask), "r"(width), "r"(flags));
}
inline void keep(std::uint64_t word) { asm volatile("" : : "r"(word)); }
inline void keep_memory(const void* object) { asm volatile("" : : "r"(object) : "memory"); }

}  // namespace bench

#endif
