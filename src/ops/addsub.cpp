// Addition and subtraction of large values. Value bits only: x-masks are carried along.
#include "ops/addsub.h"

#include <algorithm>

#include "kval.h"
#include "words/carry.h"
#include "words/transform.h"

namespace kval {
namespace {

// Subtracts a compact right operand. Deliberate, and not to be fixed: beyond the first word, the borrow is still
// decided by a comparison with that operand's word, although it is no longer subtracted there.
void subtract_compact(Word* out, const Word* l, std::size_t size, Word r) {
    bool borrow = false;
    for (std::size_t i = 0; i < size; ++i) {
        const Word word = l[i];
        out[i] = word - (i == 0 ? r : 0) - static_cast<Word>(borrow);
        borrow = word < r || (word == r && borrow);
    }
}

}  // namespace

unsigned finished_sum(const Arrays& sum, unsigned width, bool carry) {
    const std::size_t size = word_count(width);
    const unsigned top = width % words::kWordBits;
    bool grown = carry;
    if (top == 0) {
        sum.value[size] = static_cast<Word>(carry);
        sum.mask[size] = 0;
    } else {
        grown = carry || (sum.value[size - 1] >> top & 1U) != 0;
    }
    const unsigned grown_width = width + static_cast<unsigned>(grown);
    check_width(grown_width);
    trim(sum, grown_width);
    return grown_width;
}

namespace detail {

Sum AddLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
             unsigned r_width) {
    const bool left = l_width > r_width;
    Copy wide_copy;
    const Operand wide(left ? Planes{l, l_mask} : Planes{r, r_mask}, left ? l_width : r_width, wide_copy);
    Copy narrow_copy;
    const Operand narrow(left ? Planes{r, r_mask} : Planes{l, l_mask}, left ? r_width : l_width, narrow_copy);
    OwnedArrays owned(capacity_of_sum(wide.width));
    const Arrays& sum = owned.get();
    const std::size_t both = narrow.size;
    bool carry = words::add(sum.value, wide.value, narrow.value, both);
    if (both < wide.size) carry = words::add_carry(sum.value + both, wide.value + both, wide.size - both, carry);
    words::copy(sum.mask, wide.mask, wide.size);
    const unsigned width = finished_sum(sum, wide.width, carry);
    return {planes_of(owned.release()), width};
}

Planes CarryOut(std::uint64_t value, std::uint64_t mask) {
    const Arrays sum = take_arrays(3);
    words::store_pair(sum.value, value);
    words::store_pair(sum.mask, mask);
    sum.value[2] = 1;
    sum.mask[2] = 0;
    return planes_of(sum);
}

Planes SubLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                unsigned r_width) {
    Copy from_copy;
    const Operand from({l, l_mask}, l_width, from_copy);
    Copy less_copy;
    const Operand less({r, r_mask}, r_width, less_copy);
    Copy out_copy;
    Target out(l_width, out_copy);
    if (r_width <= words::kWordBits) {
        subtract_compact(out.value, from.value, from.size, less.value[0]);
    } else {
        const std::size_t both = std::min(from.size, less.size);
        const bool borrow = words::subtract(out.value, from.value, less.value, both);
        if (both < from.size) words::subtract_borrow(out.value + both, from.value + both, from.size - both, borrow);
    }
    words::copy(out.mask, from.mask, from.size);
    return out.trimmed();
}

Planes AddAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                      unsigned r_width) noexcept {
    Copy sum_copy;
    Target sum({l, l_mask}, l_width, sum_copy);
    Copy more_copy;
    const Operand more({r, r_mask}, r_width, more_copy);
    const std::size_t both = std::min(sum.size, more.size);
    const bool carry = words::add(sum.value, sum.value, more.value, both);
    // Deliberate: the carry changes one word beyond the right operand and is then dropped, while += with a number
    // carries on.
    if (both < sum.size) sum.value[both] += static_cast<Word>(carry);
    return sum.trimmed();
}

Planes SubAssignLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                      unsigned r_width) noexcept {
    Copy difference_copy;
    Target difference({l, l_mask}, l_width, difference_copy);
    Copy less_copy;
    const Operand less({r, r_mask}, r_width, less_copy);
    const std::size_t both = std::min(difference.size, less.size);
    const bool borrow = words::subtract(difference.value, difference.value, less.value, both);
    // Deliberate: as the carry of +=, the borrow changes one word beyond the right operand and is then dropped.
    if (both < difference.size) difference.value[both] -= static_cast<Word>(borrow);
    return difference.trimmed();
}

// A number changes only the low limb, two words, except where there is a carry or borrow, which is rare.

void AddNumberLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned number) noexcept {
    const Arrays sum = arrays_of({value, mask});
    const words::DoubleWord low = words::load_pair(sum.value) + number;
    words::store_pair(sum.value, low);
    if (low < number) words::add_carry(sum.value + 2, sum.value + 2, word_count(width) - 2, true);
    trim(sum, width);
}

void SubNumberLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned number) noexcept {
    const Arrays difference = arrays_of({value, mask});
    const words::DoubleWord low = words::load_pair(difference.value);
    words::store_pair(difference.value, low - number);
    if (low < number) {
        words::subtract_borrow(difference.value + 2, difference.value + 2, word_count(width) - 2, true);
    }
    trim(difference, width);
}

}  // namespace detail
}  // namespace kval
