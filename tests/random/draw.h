// Random draws that are the same everywhere, and operands of the shapes that make carries, borrows and top words go
// wrong.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "model/model.h"
#include "support/operations.h"
#include "support/twin.h"

// The engine is the standard's, the same on every platform; the standard's distributions are not, hence the reductions
// here.
class Draw {
  public:
    explicit Draw(std::uint64_t seed) : engine_(seed) {}

    unsigned word() { return static_cast<unsigned>(engine_() >> 32); }
    // A number less than `limit`; `limit` is not 0.
    unsigned below(unsigned limit) { return static_cast<unsigned>((std::uint64_t{word()} * limit) >> 32); }
    // True once in `times` draws.
    bool once_in(unsigned times) { return below(times) == 0; }
    template <typename Container>
    const auto& one_of(const Container& from) {
        return from[below(static_cast<unsigned>(from.size()))];
    }

  private:
    std::mt19937_64 engine_;
};

// The widths at which words and forms begin and end, and a few small ones.
const std::vector<unsigned>& boundary_widths();

// Both planes of one of the shapes each, the top words dirty at times; most flags X agree with the x-mask, some do not.
twin::Content draw_content(Draw& draw, unsigned width);
// As `other`, but for the width, the text and at most one bit.
twin::Content draw_similar(Draw& draw, unsigned width, const twin::Content& other);

// A number that is worth trying with `value`.
unsigned draw_number(Draw& draw, twin::Argument argument, const model::Value& value);

twin::Text draw_kind(Draw& draw);  // hexadecimal or binary

// Digits of either kind, mixed with what the parsers skip or stop at: 'X', blanks, signs, prefixes, lower case, other
// letters. A prefix may come on top of the length.
std::string draw_text(Draw& draw, unsigned max_length);
