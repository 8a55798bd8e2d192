// The additive feedback generator: one process-wide state, in its own table or in a buffer of the caller's.
#include <array>
#include <cerrno>
#include <cstring>

#include "kval.h"

namespace {

using State = std::uint64_t;

constexpr int kTypes = 5;
constexpr std::array<int, kTypes> kDegree = {0, 7, 15, 31, 63};
constexpr std::array<int, kTypes> kSeparation = {0, 3, 1, 3, 1};
// The smallest buffer of each type, in bytes. Deliberate: counted as if a state word had 4 bytes, though it has 8.
constexpr std::array<unsigned long, kTypes> kThreshold = {8, 32, 64, 128, 256};

constexpr State kLinearFactor = 1103515245;   // one step of type 0
constexpr State kSeedingFactor = 1103515145;  // deliberate: another factor fills a state from its seed
constexpr State kIncrement = 12345;

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

// A buffer of any alignment: a saved-position word, and the state behind it.
class Buffer {
  public:
    constexpr explicit Buffer(void* start) : start_(start) {}

    [[nodiscard]] void* start() const { return start_; }
    [[nodiscard]] State position() const { return load(0); }
    void save_position(State position) const { store(0, position); }
    [[nodiscard]] State word(int index) const { return load(index + 1); }
    void set_word(int index, State word) const { store(index + 1, word); }

  private:
    [[nodiscard]] State load(int index) const {
        State word;
        std::memcpy(&word, static_cast<const char*>(start_) + index * static_cast<long>(sizeof word), sizeof word);
        return word;
    }
    void store(int index, State word) const {
        std::memcpy(static_cast<char*>(start_) + index * static_cast<long>(sizeof word), &word, sizeof word);
    }

    void* start_;
};

struct Generator {
    int type = 3;
    int front = 3;  // indices of state words: the one that is updated next, and the one that is added to it
    int rear = 0;
    Buffer buffer = Buffer(initial_table);

    [[nodiscard]] int degree() const { return kDegree[static_cast<std::size_t>(type)]; }
    [[nodiscard]] int separation() const { return kSeparation[static_cast<std::size_t>(type)]; }

    State next() {
        if (type == 0) {
            const State word = (buffer.word(0) * kLinearFactor + kIncrement) & 0x7FFFFFFFFFFFFFFF;
            buffer.set_word(0, word);
            return word;
        }
        const State sum = buffer.word(front) + buffer.word(rear);
        buffer.set_word(front, sum);
        front = following(front);
        rear = following(rear);
        return sum >> 1;
    }
    [[nodiscard]] int following(int index) const { return index + 1 == degree() ? 0 : index + 1; }

    void restart(std::uint32_t seed) {
        State word = seed;
        buffer.set_word(0, word);
        if (type == 0) return;
        for (int i = 1; i < degree(); ++i) {
            word = word * kSeedingFactor + kIncrement;
            buffer.set_word(i, word);
        }
        front = separation();
        rear = 0;
        for (int i = 0; i < 10 * degree(); ++i) next();
    }

    void save_position() const { buffer.save_position(type == 0 ? 0 : static_cast<State>(kTypes * rear + type)); }
};

// In use before any static constructor runs.
constinit Generator generator;

void* refuse() {
    errno = EINVAL;
    return nullptr;
}

}  // namespace

std::int64_t kval_random() noexcept { return static_cast<std::int64_t>(generator.next()); }

void kval_srandom(unsigned seed) noexcept { generator.restart(seed); }

void* kval_initstate(unsigned seed, void* buffer, unsigned long bytes) noexcept {
    void* previous = generator.buffer.start();
    generator.save_position();
    if (bytes < kThreshold[0] || buffer == nullptr) return refuse();
    int type = 0;
    while (type + 1 < kTypes && bytes >= kThreshold[static_cast<std::size_t>(type) + 1]) ++type;
    generator.type = type;
    generator.buffer = Buffer(buffer);
    generator.restart(seed);
    generator.save_position();
    return previous;
}

void* kval_setstate(void* buffer) noexcept {
    void* previous = generator.buffer.start();
    // Read before the current position is saved: it may be the same buffer.
    const auto position = buffer != nullptr ? static_cast<std::int64_t>(Buffer(buffer).position()) : -1;
    generator.save_position();
    const auto type = static_cast<int>(position % kTypes);
    const auto rear = static_cast<int>(position / kTypes);
    if (type < 0) return refuse();
    // A rear index outside the state would have the generator write outside the buffer.
    const int degree = kDegree[static_cast<std::size_t>(type)];
    if (type != 0 && (rear < 0 || rear >= degree)) return refuse();
    generator.type = type;
    generator.buffer = Buffer(buffer);
    if (type != 0) {
        generator.rear = rear;
        generator.front = (rear + generator.separation()) % degree;
    }
    return previous;
}
