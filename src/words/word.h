// The storage word, and the units of several words that the kernels take where they can.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "words/limbs.h"

namespace kval::words {

/// Four words at once, for long loops.
using Vector = DoubleWord __attribute__((vector_size(16)));

}  // namespace kval::words
