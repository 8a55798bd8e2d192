// Model of the additive feedback generator and of the two ways of randomising a value.
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "bits.h"
#include "generator_model.h"

namespace model {

namespace {

constexpr unsigned kTypes = 5;
constexpr std::array<unsigned, kTypes> kDegrees{0, 7, 15, 31, 63};
constexpr std::array<unsigned, kTypes> kSeparations{0, 3, 1, 3, 1};

// Fixed data, not the outcome of any seed.
constexpr std::array<std::int32_t, 31> kInitialState{
    -851904987,  -43806228,   -2029755270, 1390239686,  -1912102820, -485608943,  1969813258, -1590463333,
    -1944053249, 455935928,   508023712,   -1714531963, 1800685987,  -2015299881, 654595283,  -1149023258,
    -1470005550, -1143256056, -1325577603, -1568001885, 1275120390,  -607508183,  -205999574, -1696891592,
    1492211999,  -1528267240, -952028296,  -189082757,  362343714,   1424981831,  2039449641};

unsigned separation(int type) { return kSeparations.at(static_cast<std::size_t>(type)); }

std::uint64_t& state(Generator& g, unsigned index) { return g.buffer.at(std::size_t{index} + 1); }

// The sizes count bytes as if a state word had four of them: deliberate.
int type_of_size(unsigned long bytes) {
    if (bytes < 32) return 0;
    if (bytes < 64) return 1;
    if (bytes < 128) return 2;
    return bytes < 256 ? 3 : 4;
}

void save_position(Generator& g) { g.buffer.at(0) = static_cast<std::uint64_t>(saved_position(g)); }

}  // namespace

unsigned degree(int type) { return kDegrees.at(static_cast<std::size_t>(type)); }

Generator initial_generator() {
    Generator g{3, separation(3), 0, std::vector<std::uint64_t>(std::size_t{degree(3)} + 1)};
    save_position(g);
    for (unsigned i = 0; i < degree(3); ++i) {
        state(g, i) = static_cast<std::uint64_t>(std::int64_t{kInitialState.at(i)});
    }
    return g;
}

Generator init_generator(std::uint32_t seed, unsigned long buffer_bytes) {
    const int type = type_of_size(buffer_bytes);
    const std::size_t state_words = type == 0 ? 1 : degree(type);  // type 0 steps its first state word
    Generator g{type, separation(type), 0, std::vector<std::uint64_t>(state_words + 1)};
    seed_generator(g, seed);
    save_position(g);
    return g;
}

// The multiplier differs in one digit from that of a type-0 step: deliberate.
void seed_generator(Generator& g, std::uint32_t seed) {
    state(g, 0) = seed;
    if (g.type == 0) return;
    for (unsigned i = 1; i < degree(g.type); ++i) state(g, i) = state(g, i - 1) * 1103515145u + 12345u;
    g.front = separation(g.type);
    g.rear = 0;
    for (unsigned i = 0; i < 10 * degree(g.type); ++i) next(g);
}

std::int64_t next(Generator& g) {
    if (g.type == 0) {
        state(g, 0) = (state(g, 0) * 1103515245u + 12345u) % (std::uint64_t{1} << 63);
        return static_cast<std::int64_t>(state(g, 0));
    }
    state(g, g.front) += state(g, g.rear);
    const std::uint64_t result = state(g, g.front) >> 1;
    g.front = (g.front + 1) % degree(g.type);
    g.rear = (g.rear + 1) % degree(g.type);
    return static_cast<std::int64_t>(result);
}

std::int64_t saved_position(const Generator& g) { return g.type == 0 ? 0 : std::int64_t{kTypes} * g.rear + g.type; }

// One call for every word, low word first.
void randomize(Value& target, Generator& g) {
    for (unsigned i = 0; i < target.words(); ++i) put_word(target.value, i, static_cast<unsigned>(next(g)));
    target.mask.assign(target.mask.size(), false);
    target.x = target.z = target.wl = target.wh = false;
    enforce_width(target);
    delete_string(target);
}

// Inverts the bits below `count`, each once, drawn until all have come up. The cached text, the marks and the flags
// stay as they were: deliberate.
void randomize(Value& target, int count, const std::function<int()>& draw) {
    std::vector<bool> inverted(static_cast<std::size_t>(count));
    for (int done = 0; done < count;) {
        const auto pos = static_cast<std::size_t>(draw() % count);
        if (inverted[pos]) continue;
        target.value[pos] = !target.value[pos];
        inverted[pos] = true;
        ++done;
    }
}

}  // namespace model
