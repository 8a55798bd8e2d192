// The random number generators of the C and C++ libraries: one draw, and a fill of 32 bits a draw.
#include <cstdlib>
#include <random>

#include "registry.h"

namespace bench {
namespace {

template <typename Draw>
void add_generator(const char* name, Draw draw) {
    add_plain("draw", name, 64, [draw]() mutable { keep(static_cast<std::uint64_t>(draw())); });
    for (const unsigned width : {32, 64, 128, 1024, 4096, 65536}) {
        std::vector<std::uint32_t> words((width + 31) / 32);
        add_plain("random_fill", name, width, [draw, words]() mutable {
            for (std::uint32_t& word : words) word = static_cast<std::uint32_t>(draw());
            keep_memory(words.data());
        });
    }
}

const Registration registration([] {
    add_generator("random", [] { return random(); });
    add_generator("mt19937_64", std::mt19937_64(1));
});

}  // namespace
}  // namespace bench
