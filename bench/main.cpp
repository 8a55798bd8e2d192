// The benchmark program: Google Benchmark's options, names as in registry.h. Whatever is selected is checked first.
#include <iostream>
#include <regex>

#include "registry.h"

namespace {

#ifdef __clang__
const char* const kCompiler = __VERSION__;
#else
const char* const kCompiler = "g++ " __VERSION__;
#endif

bool selects(const std::string& filter, const std::string& name) {
    const bool negated = !filter.empty() && filter[0] == '-';
    return std::regex_search(name, std::regex(filter.substr(negated ? 1 : 0), std::regex::extended)) != negated;
}

void add(bench::Benchmark& benchmark) {
    benchmark::RegisterBenchmark(benchmark.name().c_str(), [&benchmark](benchmark::State& state) {
        benchmark.run(state);
        state.counters["bits"] = benchmark.result_width;
    });
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::AddCustomContext("compiler", kCompiler);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    std::string filter = benchmark::GetBenchmarkFilter();
    if (filter.empty() || filter == "all") filter = ".";

    std::vector<bench::Benchmark*> selected;
    for (bench::Benchmark& benchmark : bench::benchmarks()) {
        if (selects(filter, benchmark.name())) selected.push_back(&benchmark);
    }
    bench::check(selected);
    for (bench::Benchmark* benchmark : selected) add(*benchmark);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
