// The additive feedback generator: one process-wide state, in its own table or in a buffer of the caller's.
#include "random/generator.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "kval.h"

namespace {

using kval::words::Word;
using State = std::uint64_t;

constexpr int kTypes = 5;
constexpr std::array<int, kTypes> kDegree = {0, 7, 15, 31, 63};
constexpr std::array<int, kTypes> kSeparation = {0, 3, 1, 3, 1};
// The smallest buffer of each type, in bytes. Deliberate: counted as if a state word had 4 bytes, though it has 8.
constexpr std::array<unsigned long, kTypes> kThreshold = {8, 32, 64, 128, 256};

constexpr State kLinearFactor = 1103515245;   // one step of type 0
constexpr State kSeedingFactor = 1103515145;  // deliberate: another factor fills a state from its seed
constexpr State kIncrement = 12345;

constexpr std::size_t kMany = 16;  // so many words are worth the preparations of draw_many

// Signed 32-bit values, stored sign-extended. Fixed data: no seed gives them.
consteval State initial(std::uint32_t word) { return static_cast<State>(static_cast<std::int32_t>(word)); }

// The saved position, then the state.
constinit State initial_table[32] = {
    3,
    initial(0xCD38F625),
    initial(0xFD6391EC),
    initial(0x8704647A),
    initial(0x52DD5FC6),
    initial(0x8E07A05C),
    initial(0xE30E3211),
    initial(0x7568F70A),
    initial(0xA133749B),
    initial(0x8C2019FF),
    initial(0x1B2D07B8),
    initial(0x1E47D3A0),
    initial(0x99CE5185),
    initial(0x6B5449A3),
    initial(0x87E0F6D7),
    initial(0x270454D3),
    initial(0xBB834BE6),
    initial(0xA8617ED2),
    initial(0xBBDB4C08),
    initial(0xB0FD4A7D),
    initial(0xA28A30A3),
    initial(0x4C00CB06),
    initial(0xDBCA2929),
    initial(0xF3B8B22A),
    initial(0x9ADB7D38),
    initial(0x58F1591F),
    initial(0xA4E87E18),
    initial(0xC7413378),
    initial(0xF4BAD37B),
    initial(0x1598ED22),
    initial(0x54EF7F47),
    initial(0x798F8829),
};

}  // namespace

constinit kval::detail::GeneratorRun kval::detail::generator_run = {initial_table + 4, initial_table + 32, -3};

namespace {

constexpr kval::detail::GeneratorRun& run = kval::detail::generator_run;

State load(const void* address) {
    State word;
    std::memcpy(&word, address, sizeof word);
    return word;
}

void store(void* address, State word) { std::memcpy(address, &word, sizeof word); }

// The address of the state word that is `words` after the one at `start`. A buffer may have any alignment, so it is not
// an array of State.
void* plus(void* start, std::ptrdiff_t words) {
    return static_cast<char*>(start) + words * static_cast<std::ptrdiff_t>(sizeof(State));
}

// A buffer holds one word for the saved position, and then the state. A step adds the state word at the rear to the one
// at the front, and both move on, cyclically. Between two wraps of either, their distance stays the same: such a run
// needs to move only one address, the front, up to where the run ends. Type 0 has no runs: its front and stop are
// always equal.
struct Generator {
    void*& front = run.front;
    void*& stop = run.stop;
    std::ptrdiff_t& distance = run.distance;
    void* buffer = initial_table;
    int type = 3;

    [[nodiscard]] int degree() const { return kDegree[static_cast<std::size_t>(type)]; }
    [[nodiscard]] int separation() const { return kSeparation[static_cast<std::size_t>(type)]; }
    [[nodiscard]] void* word(std::ptrdiff_t index) const { return plus(buffer, 1 + index); }
    [[nodiscard]] void* end() const { return word(degree()); }

    State next_at_run_end() {
        if (type == 0) return next_linear();
        start_run(front);
        return static_cast<State>(kval_random());
    }

    [[nodiscard]] State next_linear() const {
        const State drawn = (load(word(0)) * kLinearFactor + kIncrement) & 0x7FFFFFFFFFFFFFFF;
        store(word(0), drawn);
        return drawn;
    }

    // Starts a run with the front at `start`, or at the first word if `start` is the end of the state.
    void start_run(void* start) {
        front = start == end() ? word(0) : start;
        const bool wrapped = front < word(separation());  // but the rear has not: it leads, up to the end of the state
        stop = wrapped ? word(separation()) : end();
        distance = wrapped ? degree() - separation() : -separation();
    }

    void seek(int rear) {
        if (type == 0) {
            front = stop = buffer;
        } else {
            start_run(word((rear + separation()) % degree()));
        }
    }
    [[nodiscard]] int rear_index() const {
        if (type == 0) return 0;
        const std::ptrdiff_t bytes = static_cast<char*>(front) - static_cast<char*>(word(0));
        return (static_cast<int>(bytes / static_cast<std::ptrdiff_t>(sizeof(State))) + degree() - separation()) %
               degree();
    }

    void draw(Word* out, std::size_t count) {
        if (type == 0 || count < kMany) {
            for (std::size_t i = 0; i < count; ++i) out[i] = static_cast<Word>(kval_random());
        } else if (separation() == 1) {
            draw_many<1>(out, count);
        } else {
            draw_many<3>(out, count);
        }
    }

    // The sum that a step stored, `steps` steps ago.
    [[nodiscard]] State latest(int steps) const {
        return load(word((rear_index() + separation() + degree() - steps) % degree()));
    }

    // The rear meets the sum of one or three steps ago. With the three latest sums at hand, it need not be read again,
    // and only the front wraps. Not inline, because short draws would then save and restore its registers too.
    template <int kSeparated>
    [[gnu::noinline]] void draw_many(Word* out, std::size_t count) {
        State third = latest(3);
        State second = latest(2);
        State first = latest(1);
        void* at = front;
        while (count > 0) {
            if (at == end()) at = word(0);
            const auto to_end = static_cast<std::size_t>(static_cast<char*>(end()) - static_cast<char*>(at));
            const std::size_t steps = std::min(count, to_end / sizeof(State));
            for (std::size_t i = 0; i < steps; ++i, at = plus(at, 1)) {
                const State sum = load(at) + (kSeparated == 1 ? first : third);
                third = second;
                second = first;
                first = sum;
                store(at, sum);
                out[i] = static_cast<Word>(sum >> 1);
            }
            out += steps;
            count -= steps;
        }
        start_run(at);
    }

    void restart(std::uint32_t seed) {
        State filling = seed;
        store(word(0), filling);
        for (int i = 1; i < degree(); ++i) {
            filling = filling * kSeedingFactor + kIncrement;
            store(word(i), filling);
        }
        seek(0);
        for (int i = 0; i < 10 * degree(); ++i) kval_random();
    }

    void save_position() const {
        const int position = kTypes * rear_index() + type;
        store(buffer, static_cast<State>(position));
    }
};

// May be used before any static constructor has run.
constinit Generator generator;

void* refuse() {
    errno = EINVAL;
    return nullptr;
}

}  // namespace

namespace kval {

std::int64_t detail::DrawAtRunEnd() noexcept { return static_cast<std::int64_t>(generator.next_at_run_end()); }

void draw_words(words::Word* out, std::size_t count) { generator.draw(out, count); }

}  // namespace kval

void kval_srandom(unsigned seed) noexcept { generator.restart(seed); }

void* kval_initstate(unsigned seed, void* buffer, unsigned long bytes) noexcept {
    void* previous = generator.buffer;
    generator.save_position();
    if (bytes < kThreshold[0] || buffer == nullptr) return refuse();
    int type = 0;
    while (type + 1 < kTypes && bytes >= kThreshold[static_cast<std::size_t>(type) + 1]) ++type;
    generator.type = type;
    generator.buffer = buffer;
    generator.restart(seed);
    generator.save_position();
    return previous;
}

void* kval_setstate(void* buffer) noexcept {
    void* previous = generator.buffer;
    // Read before the current position is saved: it may be the same buffer.
    const auto position = buffer != nullptr ? static_cast<std::int64_t>(load(buffer)) : -1;
    generator.save_position();
    const auto type = static_cast<int>(position % kTypes);
    const auto rear = static_cast<int>(position / kTypes);
    if (type < 0) return refuse();
    // A rear index outside the state would have the generator write outside the buffer.
    const int degree = kDegree[static_cast<std::size_t>(type)];
    if (type != 0 && (rear < 0 || rear >= degree)) return refuse();
    generator.type = type;
    generator.buffer = buffer;
    generator.seek(rear);
    return previous;
}

// Inline everywhere, and yet in the library as well, for programs that ask the loader for it by name.
[[gnu::used]] constexpr std::int64_t (*kCallableByItsName)() noexcept = &kval_random;
