// The kernels as functions of their own, whose machine code `check` reads; and two functions that do not stay in
// registers, which it must find out.
#include "kernels.h"

using kernels::Result;
using kernels::Unknown;

#define KERNEL(name)                                                                                                   \
    extern "C" unsigned name(unsigned steps) { return kernels::name<Unknown::kNone, Result::kReturned>(steps).value; } \
    extern "C" unsigned name##_printed(unsigned steps) {                                                               \
        return kernels::name<Unknown::kNone, Result::kPrinted>(steps).value;                                           \
    }

KERNEL(mixer)
KERNEL(sum)
KERNEL(counter)
KERNEL(feedback)
KERNEL(signed_sum)
KERNEL(sha256)

// The values may be large, whose bits are in arrays.
extern "C" unsigned width_at_run_time(unsigned steps, unsigned width) {
    KVAL_UINTEGER a(1, width);
    KVAL_UINTEGER b(0x5555, width);
    for (unsigned i = 0; i < steps; ++i) {
        a = a - b;
        b = b & a;
    }
    return b.uint();
}

// Others may read the value in every step.
extern "C" unsigned address_given_away(unsigned steps) {
    KVAL_UINTEGER a(1, 32);
    for (unsigned i = 0; i < steps; ++i) {
        a += 3U;
        asm volatile("" : : "r"(&a) : "memory");
    }
    return a.uint();
}
