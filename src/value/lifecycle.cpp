// Construction, copying, assignment, resizing and release of large values.
#include <algorithm>
#include <memory>

#include "kval.h"
#include "value/storage.h"
#include "words/fit.h"

namespace kval::detail {

Planes ConstructLarge(unsigned number, unsigned width) {
    const Planes planes = planes_of(arrays_for(width));
    AssignNumberLarge(planes.value, planes.mask, width, number);
    return planes;
}

Planes CopyLarge(std::uint64_t value, std::uint64_t mask, unsigned width) {
    const Arrays source = arrays_of({value, mask});
    const Arrays copy = arrays_for(width);
    words::copy(copy.value, source.value, word_count(width));
    words::copy(copy.mask, source.mask, word_count(width));
    return planes_of(copy);
}

Planes AssignLarge(std::uint64_t target, std::uint64_t target_mask, std::uint64_t from, std::uint64_t from_mask,
                   unsigned width, unsigned from_width) noexcept {
    Copy source_copy;
    const Operand source({from, from_mask}, from_width, source_copy);
    Copy to_copy;
    Target to({target, target_mask}, width, to_copy);
    words::fit(to.value, to.size, source.value, source.size);
    words::fit(to.mask, to.size, source.mask, source.size);
    return width == from_width ? to.planes() : to.trimmed();
}

void AssignNumberLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned number) noexcept {
    const Arrays arrays = arrays_of({value, mask});
    std::fill_n(arrays.value, word_count(width), Word{0});
    std::fill_n(arrays.mask, word_count(width), Word{0});
    arrays.value[0] = number;
}

// New arrays are taken only where the word count grows. A large value that shrinks and stays large keeps its own.
Storage ResizeLarge(std::uint64_t value, std::uint64_t mask, unsigned width, unsigned capacity, unsigned new_width) {
    const Planes old = {value, mask};
    Copy from_copy;
    const Operand from(old, width, from_copy);
    if (!is_small(new_width) && word_count(new_width) <= from.size) {
        trim(arrays_of(old), new_width);
        return {old, capacity};
    }
    Copy to_copy;
    Target to(new_width, to_copy);
    words::fit(to.value, to.size, from.value, from.size);
    words::fit(to.mask, to.size, from.mask, from.size);
    ReleaseLarge(value, mask, capacity);
    return {to.trimmed(), capacity_of(new_width)};
}

void TrimLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept {
    trim(arrays_of({value, mask}), width);
}

void ReleaseLarge(std::uint64_t value, std::uint64_t mask, unsigned capacity) noexcept {
    if (capacity != 0) give_arrays(arrays_of({value, mask}), capacity);
}

void DeleteText(const char* text) noexcept { const std::unique_ptr<const char[]> released(text); }

}  // namespace kval::detail
