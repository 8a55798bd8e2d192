// Shifts of large values: value bits and x-mask alike.
#include "words/shift.h"

#include "kval.h"
#include "value/storage.h"

namespace kval::detail {

// Bits are lost only where the sum of width and count is too large to be a width. A compact result is then shifted
// modulo 32, as every compact shift is.
Planes ShlLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count, unsigned new_width) {
    Copy from_copy;
    const Operand from({value, mask}, width, from_copy);
    Copy out_copy;
    Target out(new_width, out_copy);
    const unsigned places = new_width <= words::kWordBits ? count % 32 : count;
    words::shift_left(out.value, out.size, from.value, from.size, places);
    words::shift_left(out.mask, out.size, from.mask, from.size, places);
    return std::uint64_t{width} + count == new_width ? out.planes() : out.trimmed();
}

// Only the words that the result needs are shifted. Once the count reaches the width, nothing is left, not even bits
// that were stored above the width.
Planes ShrLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count, unsigned new_width) {
    Copy from_copy;
    const Operand from({value, mask}, width, from_copy);
    Copy out_copy;
    Target out(new_width, out_copy);
    const std::size_t kept = count < width ? from.size : 0;
    words::shift_right(out.value, out.size, from.value, kept, count);
    words::shift_right(out.mask, out.size, from.mask, kept, count);
    return out.trimmed();
}

void ShlAssignLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count) noexcept {
    Copy out_copy;
    const Target out({value, mask}, width, out_copy);
    words::shift_left(out.value, out.size, out.value, out.size, count);
    words::shift_left(out.mask, out.size, out.mask, out.size, count);
    out.trim();
}

void ShrAssignLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned count) noexcept {
    Copy out_copy;
    const Target out({value, mask}, width, out_copy);
    const std::size_t kept = count < width ? out.size : 0;
    words::shift_right(out.value, out.size, out.value, kept, count);
    words::shift_right(out.mask, out.size, out.mask, kept, count);
    out.trim();
}

}  // namespace kval::detail
