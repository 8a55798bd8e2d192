// Two new[]/delete[] pairs, one for each plane: what a result costs that takes its arrays from the allocator.
#include <cstdint>

#include "registry.h"

namespace bench {
namespace {

void new_and_delete(std::size_t words) {
    auto* value = new std::uint32_t[words];
    keep_memory(value);
    auto* mask = new std::uint32_t[words];
    keep_memory(mask);
    delete[] value;
    delete[] mask;
}

const Registration registration([] {
    for (const unsigned width : {64, 96, 128, 160, 256, 288, 1024, 4096, 65536})
        add_plain("pair2", "pair2", width, [words = width / 32] { new_and_delete(words); });
});

}  // namespace
}  // namespace bench
