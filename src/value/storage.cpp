// The arrays of wide values: two of them, each from array new and back to array delete.
#include "value/storage.h"

#include <memory>
#include <new>

namespace kval {

Planes allocate_planes(std::size_t size) {
    std::unique_ptr<words::Word[]> value(new words::Word[size]);
    words::Word* mask = new words::Word[size];
    return {value.release(), mask};
}

void check_width(std::size_t width) {
    if (width > kMaxWidth) throw std::bad_alloc();
}

void release_planes(Planes planes) noexcept {
    delete[] planes.value;
    delete[] planes.mask;
}

}  // namespace kval
