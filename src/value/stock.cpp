// The arrays of wide values: two of them, each from array new and back to array delete.
#include "value/storage.h"

#include <memory>
#include <new>

namespace kval {

Planes allocate_planes(std::size_t size) {
    auto value = std::make_unique_for_overwrite<words::Word[]>(size);
    auto mask = std::make_unique_for_overwrite<words::Word[]>(size);
    return {value.release(), mask.release()};
}

void check_width(std::size_t width) {
    if (width > kMaxWidth) throw std::bad_alloc();
}

void release_planes(Planes planes) noexcept {
    delete[] planes.value;
    delete[] planes.mask;
}

}  // namespace kval
