// The digits that a value is required to print, found bit by bit in a model with the same content.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "kval/verilog.h"
#include "model/model.h"

namespace spelling {

/// What one digit prints: of the bits from `first` up to `end`, all inside the width.
inline char digit(const model::Value& v, std::size_t first, std::size_t end) {
    unsigned number = 0;
    bool unknown = false;
    for (std::size_t pos = first; pos < end; ++pos) {
        unknown = unknown || v.mask[pos] != 0;
        number += static_cast<unsigned>(v.value[pos]) << (pos - first);
    }
    if (unknown) return 'X';
    if (v.z) return 'Z';
    if (v.wl) return 'L';
    if (v.wh) return 'H';
    return "0123456789ABCDEF"[number];
}

/// All digits, from the top.
inline std::string digits(const model::Value& v, kval::Base base) {
    const auto bits = static_cast<std::size_t>(base);
    std::string text;
    for (std::size_t first = 0; first < v.width; first += bits) {
        const std::size_t end = first + bits < v.width ? first + bits : v.width;
        text.insert(text.begin(), digit(v, first, end));
    }
    return text;
}

inline std::string prefix(unsigned width, kval::Base base) {
    const char* letter = base == kval::Base::kBinary ? "'b" : base == kval::Base::kOctal ? "'o" : "'h";
    return std::to_string(width) + letter;
}

constexpr std::array<kval::Base, 3> kBases = {kval::Base::kBinary, kval::Base::kOctal, kval::Base::kHexadecimal};

}  // namespace spelling
