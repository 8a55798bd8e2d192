// The end of every large sum, unsigned or signed.
#pragma once

#include "value/storage.h"

namespace kval {

/// Completes a sum and returns its width. The arrays hold the words of its lower `width` bits, without the carry, and
/// have room for one bit more. The sum grows by that bit where it reaches it or carries out. Trims. Throws
/// std::bad_alloc where the sum grows too wide.
unsigned finished_sum(const Arrays& sum, unsigned width, bool carry);

}  // namespace kval
