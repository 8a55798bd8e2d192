// The reference model of the additive feedback generator and of randomising, on state held in plain vectors.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "model/model.h"

namespace model {

// One generator. The state is kept as words; index 0 of `buffer` is the saved-position word, the state follows.
struct Generator {
    int type;
    unsigned front;  // indices into the state (buffer index - 1)
    unsigned rear;
    std::vector<std::uint64_t> buffer;
};

Generator initial_generator();  // as at load time
Generator init_generator(std::uint32_t seed,
                         unsigned long buffer_bytes);   // buffer_bytes >= 8: a fresh, seeded generator
void seed_generator(Generator& g, std::uint32_t seed);  // reseeds in place
std::int64_t next(Generator& g);
std::int64_t saved_position(const Generator& g);
unsigned degree(int type);  // state words of a type

void randomize(Value& target, Generator& g);
// `draw` plays rand(): one call for every draw. `count` is 0 to width.
void randomize(Value& target, int count, const std::function<int()>& draw);

}  // namespace model
