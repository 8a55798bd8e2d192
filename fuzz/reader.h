// The bytes of an input, read one after the other; beyond the end they are 0.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

class Reader {
  public:
    Reader(const std::uint8_t* data, std::size_t size) : data_(data), rest_(size) {}

    [[nodiscard]] bool empty() const { return rest_ == 0; }

    unsigned byte() {
        if (rest_ == 0) return 0;
        --rest_;
        return *data_++;
    }
    // The low byte first.
    std::uint64_t number(unsigned bytes) {
        std::uint64_t number = 0;
        for (unsigned i = 0; i < bytes; ++i) number |= std::uint64_t{byte()} << 8 * i;
        return number;
    }
    std::string text(std::size_t length) {
        const std::size_t size = std::min(length, rest_);
        std::string text(data_, data_ + size);
        data_ += size;
        rest_ -= size;
        return text;
    }
    std::string rest() { return text(rest_); }

  private:
    const std::uint8_t* data_;
    std::size_t rest_;
};

}  // namespace fuzz
