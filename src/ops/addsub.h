// The end of every large sum, unsigned or signed.
#pragma once

#include "value/storage.h"

namespace kval {

/// The width of a sum, of whose `width` bits without the carry the arrays have the words, and room for one bit more: it
/// has grown by that bit where the sum reached it or carried out. Trims. Throws std::bad_alloc where it grew too wide.
unsigned finished_sum(const Arrays& sum, unsigned width, bool carry);

}  // namespace kval
