// The entry of every target: libFuzzer calls it with one input after the other.
#include <cstdlib>
#include <iostream>

#include "interpret.h"

// With KVAL_FUZZ_ROWS in the environment, standard output gets the steps of every input as rows of a test.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::ostream* const rows = std::getenv("KVAL_FUZZ_ROWS") != nullptr ? &std::cout : nullptr;
    const testing::AssertionResult result = fuzz::KVAL_FUZZ_TARGET(data, size, rows);
    if (result) return 0;
    std::cerr << result.message() << std::endl;
    std::abort();
}
