// The list of benchmarks, and the comparison of every rival's results with the library's.
#include "registry.h"

#include <cstdlib>
#include <iostream>
#include <map>
#include <tuple>

namespace bench {
namespace {

using Case = std::tuple<std::string, unsigned, std::string>;

Case case_of(const Benchmark& benchmark) { return {benchmark.operation, benchmark.width, benchmark.set}; }

std::uint32_t word_of(const std::vector<std::uint32_t>& plane, std::size_t i) {
    return i < plane.size() ? plane[i] : 0;
}

bool same_text(const std::string& a, const std::string& b) {
    // The rivals write no leading zeros.
    const auto digits = [](const std::string& text) {
        return text.substr(std::min(text.find_first_not_of('0'), text.size()));
    };
    return digits(a) == digits(b);
}

bool agree(const Outcome& ours, const Outcome& theirs, Rules rules) {
    if (!same_text(ours.text, theirs.text)) return false;
    if (rules == Rules::kSame && ours.bits.width != theirs.bits.width) return false;
    if (theirs.bits.flag_x && ours.bits.flag_x != theirs.bits.flag_x) return false;
    const std::size_t size = std::max(ours.bits.value.size(), theirs.bits.value.size());
    for (std::size_t i = 0; i < size; ++i) {
        const std::uint32_t our_mask = word_of(ours.bits.mask, i);
        const std::uint32_t their_mask = word_of(theirs.bits.mask, i);
        if (rules == Rules::kSame && our_mask != their_mask) return false;
        if (rules == Rules::kTwoState && our_mask != 0) return false;
        const std::uint32_t known = ~(our_mask | their_mask);
        if (((word_of(ours.bits.value, i) ^ word_of(theirs.bits.value, i)) & known) != 0) return false;
    }
    return true;
}

// A plane in hexadecimal; the rivals leave out words that are 0.
std::string digits(const std::vector<std::uint32_t>& plane, unsigned width) {
    Bits bits{width, plane, {}, {}};
    bits.value.resize((width + 31) / 32);
    return hexadecimal(bits);
}

std::string describe(const Outcome& outcome) {
    const Bits& bits = outcome.bits;
    return std::to_string(bits.width) + " bits " + digits(bits.value, bits.width) + ", X bits " +
           digits(bits.mask, bits.width) + ", flag X " + (bits.flag_x.value_or(false) ? "set" : "clear") + ", text '" +
           outcome.text + "'";
}

[[noreturn]] void fail(const std::string& name, const std::string& what) {
    std::cerr << "kval_bench: " << name << ": " << what << '\n';
    std::exit(1);
}

}  // namespace

std::vector<Benchmark>& benchmarks() {
    static std::vector<Benchmark> all;
    return all;
}

std::vector<LiveValues>& live_values() {
    static std::vector<LiveValues> all;
    return all;
}

void check(const std::vector<Benchmark*>& selected) {
    std::map<Case, const Benchmark*> ours;
    for (const Benchmark& benchmark : benchmarks()) {
        if (benchmark.rival == "kval") ours[case_of(benchmark)] = &benchmark;
    }
    std::map<Case, std::vector<Outcome>> expected;
    for (Benchmark* benchmark : selected) {
        benchmark->result_width = benchmark->width;
        const auto reference = ours.find(case_of(*benchmark));
        if (benchmark->rules == Rules::kNone || reference == ours.end()) continue;
        std::vector<Outcome>& outcomes = expected[reference->first];
        if (outcomes.empty()) outcomes = reference->second->results();
        if (outcomes.front().bits.width > 1) benchmark->result_width = outcomes.front().bits.width;
        if (benchmark == reference->second) continue;
        const std::vector<Outcome> results = benchmark->results();
        if (results.size() != outcomes.size()) fail(benchmark->name(), "another number of results than the library's");
        for (std::size_t i = 0; i < results.size(); ++i) {
            if (agree(outcomes[i], results[i], benchmark->rules)) continue;
            fail(benchmark->name(), "pair " + std::to_string(i) + " gives " + describe(results[i]) +
                                        ", the library's result is " + describe(outcomes[i]));
        }
    }
}

}  // namespace bench
