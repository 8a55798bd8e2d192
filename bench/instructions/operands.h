// The fixed operands of the counted operations, at one width.
#ifndef INSTRUCTIONS_OPERANDS_H
#define INSTRUCTIONS_OPERANDS_H

#include <kval.h>

#include <cstdio>
#include <random>

namespace instructions {

/// Bits from `random`, with `top` as the top bit. Of an unknown value the lowest bit is X, and a random quarter of all.
template <typename Value>
Value random_bits(std::mt19937& random, unsigned width, unsigned top, bool unknown) {
    Value value(0, width);
    for (int i = 0; i < value.get_size(); ++i) {
        value.set_uvalue_at(i, static_cast<unsigned>(random()));
        if (unknown) value.set_xmask_at(i, static_cast<unsigned>(random() & random()));
    }
    value.EnforceWidth();
    value.set_bit(static_cast<int>(width) - 1, top);
    if (unknown) value.set_x(0);
    return value;
}

/// A text that starts at a multiple of 64, as what the C library spends on it depends on that.
struct Text {
    explicit Text(const char* text) { std::snprintf(chars, sizeof chars, "%s", text); }

    alignas(64) char chars[65536 + 1];
};

struct Operands {
    Operands(unsigned bit_width, bool unknown) : Operands(bit_width, unknown, std::mt19937(bit_width)) {}

    unsigned width;
    unsigned count;   // of places to shift by; from 65 bits on more than a word
    KVAL_UINTEGER a;  // its top bit is 0, so that sums with it do not grow
    KVAL_UINTEGER b;
    KVAL_UINTEGER near;    // differs from `a` in the lowest bit only
    KVAL_UINTEGER same;    // equals `a`
    KVAL_UINTEGER ones;    // all ones: sums with it grow, with a carry through all of it
    KVAL_UINTEGER target;  // for what is assigned and parsed
    KVAL_SINTEGER negative;
    KVAL_SINTEGER negative_near;  // differs from `negative` in the lowest bit only
    KVAL_SINTEGER positive;
    Text hexadecimal;
    Text binary;

  private:
    Operands(unsigned bit_width, bool unknown, std::mt19937 random)
        : width(bit_width),
          count(width > 64 ? 37 : 5),
          a(random_bits<KVAL_UINTEGER>(random, width, 0, unknown)),
          b(random_bits<KVAL_UINTEGER>(random, width, 0, unknown)),
          near(a),
          same(a),
          ones(~KVAL_UINTEGER(0, width)),
          target(0, width),
          negative(random_bits<KVAL_SINTEGER>(random, width, 1, unknown)),
          negative_near(negative),
          positive(random_bits<KVAL_SINTEGER>(random, width, 0, unknown)),
          hexadecimal(b.as_hex_string()),
          binary(b.as_bin_string()) {
        near.set_uvalue_at(0, near.uint() ^ 1U);
        negative_near.set_uvalue_at(0, negative.uint() ^ 1U);
        b.DeleteString();
    }
};

}  // namespace instructions

#endif
