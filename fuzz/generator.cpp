// Calls of the generator in buffers of the caller's: what they have to do, and what the bytes of an input mean.
//
// A call is a byte of its name and one of its buffer, and behind them what it takes: a number, an index.
#include <array>
#include <cerrno>
#include <cstring>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "generator_calls.h"
#include "interpret.h"
#include "reader.h"
#include "rows.h"
#include "support/twin.h"

namespace fuzz {

namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

constexpr unsigned kBuffers = 5;
constexpr unsigned kMostCalls = 64;
constexpr unsigned kMostDraws = 200;
constexpr unsigned kWidestValue = 1100;
constexpr std::size_t kWordBytes = sizeof(std::uint64_t);
constexpr unsigned long kTableBytes = 128;  // selects the state that the library's own table has room for
constexpr int kTypes = 5;

// How many bytes of a buffer each type uses.
constexpr std::array<std::size_t, kTypes> kUsed = {16, 64, 128, 256, 512};

int type_of(unsigned long bytes) {
    constexpr std::array<unsigned long, kTypes> least = {8, 32, 64, 128, 256};
    int type = 0;
    while (type + 1 < kTypes && bytes >= least.at(static_cast<std::size_t>(type) + 1)) ++type;
    return type;
}

// A saved position: type and rear index, the latter reduced to 32 bits, or type -1 where it is none.
struct Position {
    explicit Position(std::int64_t word)
        : type(static_cast<int>(word % kTypes)), rear(static_cast<std::int32_t>(word / kTypes)) {
        const bool inside = type == 0 || (type > 0 && rear >= 0 && rear < static_cast<int>(model::degree(type)));
        if (!inside) type = -1;
    }

    int type;
    std::int32_t rear;
};

AssertionResult same_pointer(const void* returned, const void* required, const char* what) {
    if (returned == required) return AssertionSuccess();
    return AssertionFailure() << "  " << what << " returned " << returned << "\n  required " << required;
}

AssertionResult refused(const void* returned, const char* what) {
    if (returned == nullptr && errno == EINVAL) return AssertionSuccess();
    return AssertionFailure() << "  " << what << " returned " << returned << ", errno " << errno
                              << "\n  required null, errno " << EINVAL;
}

// The table in use before any buffer was.
unsigned char* initial_table() {
    static std::array<unsigned char, 16> scratch{};
    static void* const table = kval_initstate(1, scratch.data(), scratch.size());
    return static_cast<unsigned char*>(table);
}

}  // namespace

struct Streams::Named {
    const char* name;
    AssertionResult (Streams::*run)(const Call& call);
};

const std::vector<Streams::Named>& Streams::table() {
    static const std::vector<Named> calls = {
        {"new buffer", &Streams::new_buffer},  // of `number` bytes; the index gives alignment and content
        {"store word", &Streams::store_word},  // a number, at the index
        {"initstate", &Streams::initstate},    // the number is the seed, the index the size in bytes
        {"initstate with null", &Streams::initstate_null},
        {"setstate", &Streams::setstate},
        {"setstate with null", &Streams::setstate_null},
        {"srandom", &Streams::srandom},
        {"random", &Streams::random},        // as many draws as the index says
        {"randomize", &Streams::randomize},  // a value, of so many bits
    };
    return calls;
}

const std::vector<std::string>& call_names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (const Streams::Named& call : Streams::table()) all.emplace_back(call.name);
        return all;
    }();
    return names;
}

Streams::Streams() : buffers_(kBuffers), state_(model::init_generator(1, kTableBytes)) {
    unsigned char* start = initial_table();
    kval_initstate(1, start, kTableBytes);
    buffers_.front() = Buffer(start, kUsed.at(3));
    store_state();
    save_position();
}

// Before the buffers go, the generator leaves them.
Streams::~Streams() { kval_initstate(1, initial_table(), kTableBytes); }

std::int64_t Streams::position_in(unsigned buffer) const {
    std::int64_t word = 0;
    std::memcpy(&word, buffers_.at(buffer).required.data(), sizeof word);
    return word;
}

bool Streams::has_room(unsigned buffer, int type) const {
    return type < 0 || buffers_.at(buffer).required.size() >= kUsed.at(static_cast<std::size_t>(type));
}

void Streams::save_position() {
    const std::int64_t position = model::saved_position(state_);
    std::memcpy(buffers_.at(current_).required.data(), &position, sizeof position);
}

// The state words live in the buffer in use.
void Streams::load_state() {
    std::memcpy(state_.buffer.data() + 1, buffers_.at(current_).required.data() + kWordBytes,
                (state_.buffer.size() - 1) * kWordBytes);
}

void Streams::store_state() {
    std::memcpy(buffers_.at(current_).required.data() + kWordBytes, state_.buffer.data() + 1,
                (state_.buffer.size() - 1) * kWordBytes);
}

template <typename Change>
void Streams::change_state(Change change) {
    load_state();
    change(state_);
    store_state();
}

bool Streams::is_allowed(const Call& call) const {
    if (call.buffer >= kBuffers) return false;
    const Buffer& buffer = buffers_[call.buffer];
    if (call.name == "new buffer") {
        return call.buffer != 0 && call.buffer != current_ && call.number <= kUsed.back();
    }
    if (call.name == "store word") {
        return call.buffer != 0 && call.index < 64 && (call.index + 1) * kWordBytes <= buffer.required.size();
    }
    if (call.name == "initstate") {
        return buffer.start != nullptr && (call.index < 8 || has_room(call.buffer, type_of(call.index)));
    }
    if (call.name == "setstate") {
        return buffer.required.size() >= kWordBytes && has_room(call.buffer, Position(position_in(call.buffer)).type);
    }
    if (call.name == "random") return call.index <= kMostDraws;
    if (call.name == "randomize") return call.index <= kWidestValue;
    return true;
}

AssertionResult Streams::new_buffer(const Call& call) {
    const std::size_t offset = call.index & 7;
    const std::size_t size = call.number;
    std::unique_ptr<unsigned char[]> block(new unsigned char[offset + size]);
    std::memset(block.get(), static_cast<int>(call.index >> 3 & 255), offset + size);
    buffers_[call.buffer] = Buffer(block.get() + offset, size);
    buffers_[call.buffer].own = std::move(block);
    return AssertionSuccess();
}

AssertionResult Streams::store_word(const Call& call) {
    Buffer& buffer = buffers_[call.buffer];
    const std::size_t offset = call.index * kWordBytes;
    std::memcpy(buffer.start + offset, &call.number, kWordBytes);
    std::memcpy(buffer.required.data() + offset, &call.number, kWordBytes);
    return AssertionSuccess();
}

// Even a refused call saves the position of the state in use.
AssertionResult Streams::initstate(const Call& call) {
    const auto seed = static_cast<unsigned>(call.number);
    const void* former = buffers_[current_].start;
    const void* returned = kval_initstate(seed, buffers_[call.buffer].start, call.index);
    save_position();
    if (call.index < 8) return refused(returned, "kval_initstate");
    current_ = call.buffer;
    state_ = model::init_generator(seed, call.index);
    store_state();
    save_position();
    return same_pointer(returned, former, "kval_initstate");
}

AssertionResult Streams::initstate_null(const Call& call) {
    const void* returned = kval_initstate(static_cast<unsigned>(call.number), nullptr, call.index);
    save_position();
    return refused(returned, "kval_initstate");
}

// The position is read before that of the state in use is saved, which may be the same word.
AssertionResult Streams::setstate(const Call& call) {
    const Position position(position_in(call.buffer));
    const void* former = buffers_[current_].start;
    const void* returned = kval_setstate(buffers_[call.buffer].start);
    save_position();
    if (position.type < 0) return refused(returned, "kval_setstate");
    current_ = call.buffer;
    state_.type = position.type;
    state_.buffer.resize(kUsed.at(static_cast<std::size_t>(position.type)) / kWordBytes);
    if (position.type > 0) {
        const unsigned separation = position.type % 2 == 0 ? 1 : 3;
        state_.rear = static_cast<unsigned>(position.rear);
        state_.front = (state_.rear + separation) % model::degree(position.type);
    }
    return same_pointer(returned, former, "kval_setstate");
}

AssertionResult Streams::setstate_null(const Call&) {
    const void* returned = kval_setstate(nullptr);
    save_position();
    return refused(returned, "kval_setstate");
}

AssertionResult Streams::srandom(const Call& call) {
    const auto seed = static_cast<unsigned>(call.number);
    kval_srandom(seed);
    change_state([seed](model::Generator& state) { model::seed_generator(state, seed); });
    return AssertionSuccess();
}

AssertionResult Streams::random(const Call& call) {
    AssertionResult result = AssertionSuccess();
    change_state([&](model::Generator& state) {
        for (unsigned i = 0; i < call.index && result; ++i) {
            const std::int64_t number = kval_random();
            const std::int64_t required = model::next(state);
            if (number != required) {
                result = AssertionFailure() << "  draw " << i << " gave " << number << "\n  required " << required;
            }
        }
    });
    return result;
}

AssertionResult Streams::randomize(const Call& call) {
    const std::vector<unsigned> unknown((call.index + 31) / 32, ~0U);
    twin::Twin v({call.index, {}, unknown, "XZLH", twin::Text::Binary});
    v.value.randomize();
    change_state([&v](model::Generator& state) { model::randomize(v.model, state); });
    return same(v, twin::Text::Binary);
}

AssertionResult Streams::run(const Call& call) {
    for (const Named& named : table()) {
        if (call.name != named.name) continue;
        errno = 0;
        AssertionResult result = (this->*named.run)(call);
        for (unsigned i = 0; result && i < kBuffers; ++i) {
            const Buffer& buffer = buffers_[i];
            const std::size_t size = buffer.required.size();
            if (size == 0 || std::memcmp(buffer.start, buffer.required.data(), size) == 0) continue;
            result = AssertionFailure() << "  buffer " << i << ' '
                                        << testing::PrintToString(std::vector<int>(buffer.start, buffer.start + size))
                                        << "\n  required " << testing::PrintToString(buffer.required);
        }
        if (result) return result;
        return AssertionFailure() << '\n'
                                  << call.name << " (buffer " << call.buffer << ", number " << call.number << ", index "
                                  << call.index << ")\n"
                                  << result.message();
    }
    throw std::out_of_range("no call is named " + call.name);
}

namespace {

// Near the borders of the types, or any other.
unsigned read_size(Reader& reader) {
    const unsigned code = reader.byte();
    constexpr std::array<unsigned, 8> sizes = {8, 16, 32, 64, 128, 256, 512, 1U << 20};
    return code < 128 ? code : sizes.at(code & 7) - 2 + (code >> 3 & 3);
}

// A word that is a position of some type, or nearly one, or any word.
std::uint64_t read_word(Reader& reader) {
    const unsigned code = reader.byte();
    switch (code & 7) {
        case 0:
            return reader.number(8);
        case 1:
            return ~reader.number(2);
        case 2:
            return (std::uint64_t{kTypes} << 32) + reader.number(2);  // a rear index that is reduced
        case 4: {                                                     // the last rear index of a type, or one beyond it
            const unsigned type = (code >> 3) % kTypes;
            return kTypes * (model::degree(static_cast<int>(type)) - (code >> 7)) + type;
        }
        case 3:
            return std::uint64_t{1} << (code >> 3) << 31;
        default:
            return reader.number(2) % 400;
    }
}

Call read_call(Reader& reader) {
    Call call;
    call.name = call_names()[reader.byte() % call_names().size()];
    const unsigned buffer = reader.byte();
    call.buffer = buffer % kBuffers;
    if (call.name == "new buffer") {
        constexpr std::array<unsigned, 8> sizes = {8, 16, 64, 128, 256, 512, 8, 1};
        call.number = sizes.at(buffer / kBuffers % sizes.size());
        call.index = reader.byte() | reader.byte() << 8;
    } else if (call.name == "store word") {
        const unsigned index = reader.byte();
        call.index = index < 128 ? 0 : index % 64;  // most of all the saved position
        call.number = read_word(reader);
    } else if (call.name == "initstate" || call.name == "initstate with null") {
        call.index = read_size(reader);
        call.number = reader.number(2) * 0x10001;
    } else if (call.name == "srandom") {
        call.number = reader.number(4);
    } else if (call.name == "random") {
        call.index = reader.byte();
    } else if (call.name == "randomize") {
        call.index = 1 + buffer / kBuffers * 256 / 12 + reader.byte();
    }
    return call;
}

}  // namespace

AssertionResult run_generator(const std::uint8_t* data, std::size_t size, std::ostream* rows) {
    Streams streams;
    Reader reader(data, size);
    for (unsigned count = 0; count < kMostCalls && !reader.empty(); ++count) {
        const Call call = read_call(reader);
        if (!streams.is_allowed(call)) continue;
        if (rows != nullptr) {
            *rows << "    {" << literal(call.name) << ", " << call.buffer << ", " << call.number << "U, " << call.index
                  << "},\n"
                  << std::flush;
        }
        const AssertionResult result = streams.run(call);
        if (!result) return result;
    }
    return AssertionSuccess();
}

}  // namespace fuzz
