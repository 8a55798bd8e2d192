// The generator against its model: the numbers of every type, in turn from several buffers, and values filled from it.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "draw.h"
#include "model/generator_model.h"
#include "run.h"
#include "support/twin.h"

namespace {

using twin::Twin;

constexpr int kNumbers = 1000;

// The first numbers that this process draws, before main and before any test seeds anything.
const std::vector<std::int64_t> first_numbers = [] {
    std::vector<std::int64_t> numbers;
    for (int i = 0; i < kNumbers; ++i) numbers.push_back(kval_random());
    return numbers;
}();

// Sizes that select each of the five types: the smallest, the largest, and one between.
constexpr std::array<unsigned long, 14> kSizes = {8, 16, 31, 32, 50, 63, 64, 100, 127, 128, 200, 255, 256, 100000};

// Where the generator starts from: the buffer in use before any other was.
void* initial_table() {
    static unsigned char scratch[512];
    static void* const table = kval_initstate(0, scratch, 256);
    return table;
}

// A state of the library's beside one of the model's, in a buffer that begins at an odd address.
struct State {
    State(unsigned seed, unsigned long size) : model(model::init_generator(seed, size)) {
        initial_table();
        kval_initstate(seed, start(), size);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    // Before the buffer goes, the generator leaves it for the initial table.
    ~State() { kval_setstate(initial_table()); }

    unsigned char* start() { return bytes + 1; }
    [[nodiscard]] std::int64_t saved_position() const {
        std::int64_t position = 0;
        std::memcpy(&position, bytes + 1, sizeof position);
        return position;
    }

    unsigned char bytes[1 + 512] = {};
    model::Generator model;
};

class Generator : public testing::Test {
  protected:
    const testing::ScopedTrace trace_{__FILE__, __LINE__, replay_line()};
    Draw draw_{run_seed()};
};

TEST(GeneratorAtLoadTime, DrawsFromTheInitialTable) {
    model::Generator required = model::initial_generator();
    for (int i = 0; i < kNumbers; ++i) {
        ASSERT_EQ(first_numbers[static_cast<std::size_t>(i)], model::next(required)) << "number " << i;
    }
}

TEST_F(Generator, FirstNumbersOfEveryType) {
    for (const unsigned long size : kSizes) {
        for (const unsigned seed : {0U, 1U, 42U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, draw_.word()}) {
            State state(seed, size);
            ASSERT_EQ(state.saved_position(), model::saved_position(state.model)) << size << " bytes, seed " << seed;
            for (int i = 0; i < kNumbers; ++i) {
                ASSERT_EQ(kval_random(), model::next(state.model))
                    << size << " bytes, seed " << seed << ", number " << i;
            }
        }
    }
}

TEST_F(Generator, ReseedingInPlace) {
    for (const unsigned long size : kSizes) {
        State state(1, size);
        for (unsigned drawn = 0; drawn < 70; ++drawn) {
            const unsigned seed = draw_.word();
            kval_srandom(seed);
            model::seed_generator(state.model, seed);
            for (unsigned i = 0; i < drawn; ++i) ASSERT_EQ(kval_random(), model::next(state.model)) << size << " bytes";
        }
    }
}

// Streams of all types, each drawn from for a while before another one goes on.
TEST_F(Generator, StreamsInTurn) {
    std::vector<std::unique_ptr<State>> streams;
    for (const unsigned long size : kSizes) streams.push_back(std::make_unique<State>(draw_.word(), size));
    State* current = streams.back().get();
    for (int turn = 0; turn < 2000; ++turn) {
        State* next = draw_.one_of(streams).get();
        if (next == current) continue;
        const std::int64_t position = model::saved_position(current->model);
        ASSERT_EQ(kval_setstate(next->start()), current->start());
        ASSERT_EQ(current->saved_position(), position);
        current = next;
        for (unsigned i = draw_.below(80); i > 0; --i) ASSERT_EQ(kval_random(), model::next(current->model));
    }
}

TEST_F(Generator, FillsValues) {
    State state(draw_.word(), 256);
    for (unsigned run = 0; run < run_pairs() / 10; ++run) {
        Twin v(draw_content(draw_, draw_.one_of(boundary_widths())));
        ASSERT_EQ(&v.value.randomize(), &v.value);
        model::randomize(v.model, state.model);
        ASSERT_TRUE(same(v, draw_kind(draw_)));
    }
    ASSERT_EQ(kval_random(), model::next(state.model)) << "as many draws as words";
}

// Whatever rand() says, the low bits are inverted, and nothing else changes: not even the cached text.
TEST_F(Generator, InvertsLowBits) {
    for (unsigned run = 0; run < run_pairs() / 100; ++run) {
        Twin v(draw_content(draw_, draw_.one_of(boundary_widths())));
        const auto count = static_cast<int>(draw_.below(v.value.bitwidth() + 1));
        ASSERT_EQ(&v.value.randomize(count), &v.value);
        int drawn = 0;
        model::randomize(v.model, count, [&drawn] { return drawn++; });
        ASSERT_TRUE(same(v, draw_kind(draw_))) << count << " bits";
    }
}

}  // namespace
