// The loops of tests/registers/kernels.h beside their twins: the same loops on machine integers, as one would write
// them by hand. callgrind, under which this is run, writes the instructions of each to a file, at few steps and at
// many: what the steps between take is the loop alone, without what comes before it and behind it.
#include "kernels.h"

#include <valgrind/callgrind.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using kernels::Result;
using kernels::Unknown;
using kernels::Word;

constexpr unsigned kFewSteps = 1000;
constexpr unsigned kManySteps = 11000;

/// Known values alone: where the kernel has X bits, its twin has them not.
namespace twins {

constexpr std::uint64_t k40Bits = 0xFFFFFFFFFF;

unsigned mixer(unsigned steps) {
    std::uint32_t a = 0x12345678;
    std::uint32_t b = 0x9ABCDEF0;
    for (unsigned i = 0; i < steps; ++i) {
        a = ((a << 5U) ^ (b >> 3U)) + a;
        b = (b & a) | ~a;
    }
    return a;
}

unsigned sum(unsigned steps) {
    std::uint64_t a = 1;
    std::uint64_t sum = 0;
    const std::uint64_t mask = 0x5555;
    for (unsigned i = 0; i < steps; ++i) {
        sum = (sum + (a & mask)) & k40Bits;
        a = (a - sum) & k40Bits;
        if (a < sum) sum = mask;
    }
    return static_cast<unsigned>(sum);
}

unsigned counter(unsigned steps) {
    std::uint32_t count = 0;
    std::uint32_t out = 0;
    std::uint32_t total = 0;
    const std::uint32_t low = 5;
    const std::uint32_t high = 900;
    const std::uint32_t limit = 500;
    for (unsigned i = 0; i < steps; ++i) {
        count += 3U;
        if (count > 1000U) count = 0U;
        out = count < limit ? low : high;
        total += out;
    }
    return total;
}

unsigned feedback(unsigned steps) {
    std::uint64_t r = 1;
    std::uint64_t f = 0;
    for (unsigned i = 0; i < steps; ++i) {
        f = ((r >> 63U) ^ (r >> 62U)) & 1U;
        r <<= 1U;
        r |= f;
    }
    return static_cast<unsigned>(r);
}

/// The low 40 bits as a signed number.
inline std::int64_t signed40(std::int64_t number) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(number) << 24U) >> 24U;
}

unsigned signed_sum(unsigned steps) {
    std::int64_t level = -5000;
    std::int64_t rate = 7;
    std::int64_t distance = 0;
    const std::int64_t step = 3;
    const std::int64_t limit = 1000;
    for (unsigned i = 0; i < steps; ++i) {
        level = signed40(level + rate);
        distance = signed40(level - limit);
        if (distance < 0) {
            rate = signed40(step + rate);
        } else {
            rate = signed40(rate - step);
        }
    }
    return static_cast<unsigned>(level);
}

unsigned sha256(unsigned steps) {
    std::uint32_t a = 0x6A09E667;
    std::uint32_t b = 0xBB67AE85;
    std::uint32_t c = 0x3C6EF372;
    std::uint32_t d = 0xA54FF53A;
    std::uint32_t e = 0x510E527F;
    std::uint32_t f = 0x9B05688C;
    std::uint32_t g = 0x1F83D9AB;
    std::uint32_t h = 0x5BE0CD19;
    std::uint32_t t1 = 0;
    std::uint32_t t2 = 0;
    for (unsigned i = 0; i < steps; ++i) {
        t1 = h + (0x428A2F98U + i);
        t1 = t1 + 0x9E3779B9U * i;
        t1 = t1 + ((e & f) ^ (~e & g));
        t1 = t1 + (((e >> 6U) | (e << 26U)) ^ ((e >> 11U) | (e << 21U)) ^ ((e >> 25U) | (e << 7U)));
        t2 = (a & b) ^ (a & c) ^ (b & c);
        t2 = t2 + (((a >> 2U) | (a << 30U)) ^ ((a >> 13U) | (a << 19U)) ^ ((a >> 22U) | (a << 10U)));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    return a;
}

}  // namespace twins

/// A loop as a function of its own; the number of steps is not known in it.
template <Word (*kKernel)(unsigned)>
[[gnu::noinline]] Word own(unsigned steps) {
    return kKernel(steps);
}
template <unsigned (*kTwin)(unsigned)>
[[gnu::noinline]] Word own(unsigned steps) {
    return {kTwin(steps), 0};
}

using Loop = Word (*)(unsigned steps);

struct Kernel {
    const char* name;
    Loop twin;
    Loop known;
    Loop known_printed;
    Loop x;
    Loop x_printed;
    Loop hidden_x;
};

#define TWIN(name) &own<twins::name>
#define LOOP(name, unknown, result) &own<kernels::name<Unknown::unknown, Result::result>>
#define LOOPS(name)                                                                                      \
    TWIN(name), LOOP(name, kNone, kReturned), LOOP(name, kNone, kPrinted), LOOP(name, kSome, kReturned), \
        LOOP(name, kSome, kPrinted), LOOP(name, kHidden, kReturned)

const Kernel counted[] = {
    {"mixer", LOOPS(mixer)},           {"sum", LOOPS(sum)},
    {"counter", LOOPS(counter)},       {"feedback", LOOPS(feedback)},
    {"signed_sum", LOOPS(signed_sum)}, {"sha256", LOOPS(sha256)},
};

/// Counts one loop, after a first call, which may do what later ones do not.
void count(const Kernel& kernel, const char* operands, Loop loop, bool unknown) {
    for (const unsigned steps : {kFewSteps, kManySteps}) {
        const std::string name = std::string(kernel.name) + ' ' + operands + ' ' + std::to_string(steps);
        const Word result = loop(steps);
        // It must compute what it is there for: known bits as the twin does, and X bits to the end.
        if (unknown ? result.mask == 0 : result.value != kernel.twin(steps).value) {
            std::fprintf(stderr, "%s steps: %08X, X %08X\n", name.c_str(), result.value, result.mask);
            std::exit(1);
        }
        CALLGRIND_ZERO_STATS;
        loop(steps);
        CALLGRIND_DUMP_STATS_AT(name.c_str());
    }
}

}  // namespace

int main() {
    for (const Kernel& kernel : counted) {
        count(kernel, "twin", kernel.twin, false);
        count(kernel, "known", kernel.known, false);
        count(kernel, "known_printed", kernel.known_printed, false);
        count(kernel, "x", kernel.x, true);
        count(kernel, "x_printed", kernel.x_printed, true);
        count(kernel, "hidden_x", kernel.hidden_x, true);
    }
}
