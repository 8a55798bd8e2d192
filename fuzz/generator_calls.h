// Calls of the generator in turn, in buffers of exactly the bytes that they need: run in lock step with the model.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/generator_model.h"

namespace fuzz {

struct Call {
    std::string name;
    unsigned buffer = 0;  // 0 is the library's own table, 1 to 4 are the caller's buffers, none of them there at first
    std::uint64_t number = 0;
    unsigned index = 0;
};

// The bytes of a buffer, and what they have to be.
struct Buffer {
    Buffer() = default;
    Buffer(unsigned char* begin, std::size_t size) : start(begin), required(begin, begin + size) {}

    unsigned char* start = nullptr;
    std::vector<unsigned char> required;
    std::unique_ptr<unsigned char[]> own;
};

class Streams {
  public:
    Streams();
    Streams(const Streams&) = delete;
    Streams& operator=(const Streams&) = delete;
    ~Streams();

    // Whether the call keeps to what the interface asks of its callers.
    [[nodiscard]] bool is_allowed(const Call& call) const;
    // Compares what is returned, errno and every byte of every buffer.
    testing::AssertionResult run(const Call& call);

  private:
    struct Named;
    static const std::vector<Named>& table();
    friend const std::vector<std::string>& call_names();

    [[nodiscard]] std::int64_t position_in(unsigned buffer) const;
    [[nodiscard]] bool has_room(unsigned buffer, int type) const;
    void save_position();
    void load_state();
    void store_state();
    template <typename Change>
    void change_state(Change change);

    testing::AssertionResult new_buffer(const Call& call);
    testing::AssertionResult store_word(const Call& call);
    testing::AssertionResult initstate(const Call& call);
    testing::AssertionResult initstate_null(const Call& call);
    testing::AssertionResult setstate(const Call& call);
    testing::AssertionResult setstate_null(const Call& call);
    testing::AssertionResult srandom(const Call& call);
    testing::AssertionResult random(const Call& call);
    testing::AssertionResult randomize(const Call& call);

    std::vector<Buffer> buffers_;
    unsigned current_ = 0;
    model::Generator state_;
};

// What a call can be named.
const std::vector<std::string>& call_names();

}  // namespace fuzz
