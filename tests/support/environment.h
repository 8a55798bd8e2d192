// Settings of a test run that come from the environment.
#pragma once

#include <cstdint>

namespace twin {

// The number in the environment's `variable`, or `otherwise` where it is not set. Anything else in it ends the program:
// a run that was meant to be a replay must not quietly be another one.
std::uint64_t number_from(const char* variable, std::uint64_t otherwise);

}  // namespace twin
