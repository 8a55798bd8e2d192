// Large signed values: construction, assignment, resizing and negation in two's complement.
#include <algorithm>

#include "kval.h"
#include "signed/extended.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/fit.h"

namespace kval {

void assign_signed(const Arrays& target, unsigned source_width, bool negative, unsigned width) {
    const auto [value, mask] = target;
    const std::size_t size = word_count(width);
    const std::size_t source_size = stored_words(source_width);
    const unsigned source_top = source_width % words::kWordBits;
    const bool ones = negative && source_top != 0;
    if (source_size < size) {
        std::fill(value + source_size, value + size, negative ? ~Word{0} : Word{0});
        std::fill(mask + source_size, mask + size, Word{0});
    }
    // Deliberate: X marks in the word that is filled up with ones are dropped.
    if (ones && source_size <= size) {
        value[source_size - 1] |= detail::ones_from(source_top);
        mask[source_size - 1] = 0;
    }
    // Deliberate: the target's top word gets the same ones again, although they start at a place that only the source's
    // width gives.
    if (ones) value[size - 1] |= detail::ones_from(source_top);
    const Word top_mask = detail::used_of_top_word(width);
    value[size - 1] &= top_mask;
    mask[size - 1] &= top_mask;
    // A source that is not negative never gives a negative target.
    const Word sign = top_mask ^ top_mask >> 1;
    if (!negative && (value[size - 1] & sign) != 0) {
        value[size - 1] &= ~sign;
        mask[size - 1] &= ~sign;
    }
}

namespace detail {

// Deliberate: the top word is not trimmed, so that a negative value has ones above its width too.
Planes ConstructSignedLarge(int number, unsigned width) {
    const Planes planes = ConstructLarge(static_cast<unsigned>(number), width);
    if (number < 0) std::fill_n(array_of(planes.value) + 1, word_count(width) - 1, ~Word{0});
    return planes;
}

Planes AssignSignedLarge(std::uint64_t target, std::uint64_t target_mask, std::uint64_t from, std::uint64_t from_mask,
                         unsigned width, unsigned from_width) noexcept {
    Copy source_copy;
    const Operand source({from, from_mask}, from_width, source_copy);
    const bool negative = source.is_negative();
    if (is_small(width)) {
        const Planes low = {words::limb_at(source.value, source.size, 0), words::limb_at(source.mask, source.size, 0)};
        return assigned(low, from_width, negative, width);
    }
    const Planes planes = {target, target_mask};
    const Arrays to = arrays_of(planes);
    const std::size_t both = std::min<std::size_t>(source.size, word_count(width));
    if (to.value != source.value) {
        words::copy(to.value, source.value, both);
        words::copy(to.mask, source.mask, both);
    }
    assign_signed(to, from_width, negative, width);
    return planes;
}

Planes AssignUntrimmedLarge(std::uint64_t target, std::uint64_t target_mask, std::uint64_t from,
                            std::uint64_t from_mask, unsigned width, unsigned from_width) noexcept {
    Copy source_copy;
    const Operand source({from, from_mask}, from_width, source_copy);
    Copy to_copy;
    Target to({target, target_mask}, width, to_copy);
    words::fit(to.value, to.size, source.value, source.size);
    words::fit(to.mask, to.size, source.mask, source.size);
    return to.planes();
}

Storage ResizeNegativeLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned capacity,
                            unsigned new_width) {
    const Storage resized = ResizeLarge(value, mask, width, capacity, new_width);
    if (new_width <= width) return resized;
    const Arrays to = arrays_of(resized.planes);
    const std::size_t old_size = stored_words(width);
    if (width % words::kWordBits != 0) to.value[old_size - 1] |= ones_from(width);
    std::fill(to.value + old_size, to.value + word_count(new_width), ~Word{0});
    trim(to, new_width);
    return resized;
}

void NegateLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept {
    const Arrays arrays = arrays_of({value, mask});
    words::negate(arrays.value, arrays.value, word_count(width));
    trim(arrays, width);
}

}  // namespace detail
}  // namespace kval
