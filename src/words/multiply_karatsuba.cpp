// Karatsuba's method (A. Karatsuba, Yu. Ofman, "Multiplication of Multidigit Numbers on Automata"): the product of two
// factors of two parts each from three products of parts instead of four.
//
// With a = a1 B + a0 and b = b1 B + b0, the product is z2 B^2 + z1 B + z0, where z0 = a0 b0, z2 = a1 b1 and
// z1 = a0 b1 + a1 b0 = z0 + z2 - (a0 - a1)(b0 - b1).
#include "words/multiply_parts.h"

namespace kval::words {
namespace {

// The words of z1, for parts of `part` words: it may have one bit more than the other two.
std::size_t middle_size(std::size_t part) { return 2 * part + 1; }

}  // namespace

std::size_t karatsuba_scratch(std::size_t a_size, std::size_t b_size, const MultiplyPlan& plan) {
    const std::size_t part = part_size(a_size, 2);
    return middle_size(part) + std::max(plan.scratch(part, part), plan.scratch(a_size - part, b_size - part));
}

void multiply_karatsuba(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size, Word* scratch,
                        const MultiplyPlan& plan) {
    const std::size_t part = part_size(a_size, 2);
    const std::size_t size = a_size + b_size;
    Word* z0 = out;
    Word* z1 = scratch;
    Word* z2 = out + 2 * part;
    Word* rest = scratch + middle_size(part);

    const bool a_negative = difference(out, a, part, a + part, a_size - part);
    const bool b_negative = difference(out + part, b, part, b + part, b_size - part);
    plan.multiply(z1, out, part, out + part, part, rest);
    plan.multiply(z0, a, part, b, part, rest);
    plan.multiply(z2, a + part, a_size - part, b + part, b_size - part, rest);

    // z1 is never negative, so that the borrow of its first step is among the carries of its second.
    const bool negative = a_negative != b_negative;
    const bool first = negative ? add(z1, z0, z1, 2 * part) : subtract(z1, z0, z1, 2 * part);
    const bool second = add_to(z1, 2 * part, z2, size - 2 * part);
    z1[2 * part] = negative ? Word{first} + Word{second} : Word{second} - Word{first};
    add_to(out + part, size - part, z1, middle_size(part));
}

}  // namespace kval::words
