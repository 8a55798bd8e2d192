// Construction, copying, assignment, resizing and release of large values.
#include <algorithm>
#include <memory>

#include "kval.h"
#include "value/storage.h"
#include "words/fit.h"

namespace kval::detail {

Planes ConstructLarge(unsigned number, unsigned width) {
    const Planes planes = planes_of(arrays_for(width));
    AssignNumberLarge(planes, width, number);
    return planes;
}

Planes CopyLarge(Planes from, unsigned width) {
    const Arrays source = arrays_of(from);
    const Arrays copy = arrays_for(width);
    words::copy(copy.value, source.value, word_count(width));
    words::copy(copy.mask, source.mask, word_count(width));
    return planes_of(copy);
}

Planes AssignLarge(Planes target, Planes from, unsigned width, unsigned from_width) noexcept {
    const Operand source(from, from_width);
    Target to(target, width);
    words::fit(to.value, to.size, source.value, source.size);
    words::fit(to.mask, to.size, source.mask, source.size);
    return width == from_width ? to.planes() : to.trimmed();
}

void AssignNumberLarge(Planes target, unsigned width, unsigned number) noexcept {
    const Arrays arrays = arrays_of(target);
    std::fill_n(arrays.value, word_count(width), Word{0});
    std::fill_n(arrays.mask, word_count(width), Word{0});
    arrays.value[0] = number;
}

// New arrays are taken only where the word count grows; a large value that shrinks keeps its longer ones.
Storage ResizeLarge(Planes old, unsigned capacity, unsigned width, unsigned new_width) {
    const Operand from(old, width);
    if (!is_small(new_width) && word_count(new_width) <= from.size) {
        trim(arrays_of(old), new_width);
        return {old, capacity};
    }
    Target to(new_width);
    words::fit(to.value, to.size, from.value, from.size);
    words::fit(to.mask, to.size, from.mask, from.size);
    ReleaseLarge(old, capacity);
    return {to.trimmed(), capacity_of(new_width)};
}

void TrimLarge(Planes planes, unsigned width) noexcept { trim(arrays_of(planes), width); }

void ReleaseLarge(Planes planes, unsigned capacity) noexcept {
    if (capacity != 0) give_arrays(arrays_of(planes), capacity);
}

void DeleteText(const char* text) noexcept { const std::unique_ptr<const char[]> released(text); }

}  // namespace kval::detail
