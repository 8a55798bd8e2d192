// A model in a plugin: a register that the host clocks.
#include <kval.h>

#include <cstring>

// Adds 2^64 to a 72-bit register three times; whether it reads 3 * 2^64 then. The arrays of the values that die here go
// to the thread's stock.
extern "C" __attribute__((visibility("default"))) int run_model() {
    KVAL_UINTEGER reg(0, 72);
    KVAL_UINTEGER increment(1, 72);
    increment <<= 64;
    for (int clock = 0; clock < 3; ++clock) {
        reg = reg + increment;
    }
    return std::strcmp(reg.as_hex_string(), "030000000000000000") == 0;
}
