// Counts what each operation allocates, and what a million live values take; writes JSON to standard output.
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <string>

#include "registry.h"

// Every allocation of the program and its libraries passes here, on the way to the C library's own functions.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* old, std::size_t size);
void __libc_free(void* memory);
}

namespace {

struct Counts {
    long long calls;  // of those whose memory is not free yet, or all of them
    long long bytes;  // as large as the allocator made the blocks
};
Counts asked;
Counts live;

void* counted(void* memory) {
    const auto size = static_cast<long long>(malloc_usable_size(memory));
    for (Counts* counts : {&asked, &live}) {
        ++counts->calls;
        counts->bytes += size;
    }
    return memory;
}

void released(void* memory) {
    if (memory == nullptr) return;
    --live.calls;
    live.bytes -= static_cast<long long>(malloc_usable_size(memory));
}

}  // namespace

extern "C" {
void* malloc(std::size_t size) { return counted(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) { return counted(__libc_calloc(count, size)); }
void* realloc(void* old, std::size_t size) {
    released(old);
    return counted(__libc_realloc(old, size));
}
void free(void* memory) {
    released(memory);
    __libc_free(memory);
}
}

namespace {

constexpr std::size_t kValues = 1000000;
const std::set<unsigned> kWidths = {32, 64, 128, 1024, 65536};

/// A line of /proc/self/status, in bytes.
long long status(const std::string& name) {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, name.size() + 1, name + ':') == 0) return 1024 * std::stoll(line.substr(name.size() + 1));
    }
    return 0;
}

void print(const char* kind, const std::string& operation, const std::string& rival, unsigned width, double allocations,
           double bytes, long long peak) {
    static bool first = true;
    std::cout << (first ? "[\n" : ",\n") << "{\"kind\": \"" << kind << "\", \"operation\": \"" << operation
              << "\", \"rival\": \"" << rival << "\", \"width\": " << width << ", \"allocations\": " << allocations
              << ", \"bytes\": " << bytes << ", \"peak\": " << peak << '}';
    first = false;
}

void count_operation(const bench::Benchmark& benchmark) {
    Counts before{};
    Counts after{};
    benchmark.once({[&before] { before = asked; }, [&after] { after = asked; }});
    print("operation", benchmark.operation, benchmark.rival, benchmark.width,
          static_cast<double>(after.calls - before.calls), static_cast<double>(after.bytes - before.bytes), 0);
}

struct Held {
    Counts counts;
    long long peak;
};

void report_held(const bench::LiveValues& values, int to) {
    const Counts before = live;
    const long long resident = status("VmRSS");
    values.hold(kValues, [&] {
        const Held held{{live.calls - before.calls, live.bytes - before.bytes}, status("VmHWM") - resident};
        if (write(to, &held, sizeof held) != sizeof held) _exit(1);
    });
}

// In a process of its own, whose peak is then that of these values.
void hold(const bench::LiveValues& values) {
    int ends[2];
    if (pipe(ends) != 0) std::exit(1);
    const pid_t child = fork();
    if (child == 0) {
        report_held(values, ends[1]);
        _exit(0);
    }
    close(ends[1]);
    Held held{};
    const bool complete = read(ends[0], &held, sizeof held) == sizeof held;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (!complete) {
        std::cerr << "kval_memory: no room for " << kValues << " values of " << values.rival << '\n';
        std::exit(1);
    }
    print("live", "", values.rival, values.width, static_cast<double>(held.counts.calls) / kValues,
          static_cast<double>(held.counts.bytes) / kValues, held.peak);
}

}  // namespace

int main() {
    for (const bench::Benchmark& benchmark : bench::benchmarks()) {
        if (benchmark.once && benchmark.set == "known" && kWidths.count(benchmark.width) != 0)
            count_operation(benchmark);
    }
    for (const bench::LiveValues& values : bench::live_values()) hold(values);
    std::cout << "\n]\n";
}
