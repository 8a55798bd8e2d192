// Toom's method in three parts (A. L. Toom, "The Complexity of a Scheme of Functional Elements Realizing the
// Multiplication of Integers"; S. A. Cook, "On the Minimum Computation Time of Functions").
//
// Each factor is a polynomial of its three parts, and the product one of five coefficients c0 to c4. It follows from
// its values at 0, 1, -1, 2 and infinity, each of which is the product of the factors' values there: five products of
// parts instead of nine. The steps from the values to the coefficients are after M. Bodrato, "Towards Optimal
// Toom-Cook Multiplication", adapted to the point 2.
#include <algorithm>

#include "words/fit.h"
#include "words/multiply_parts.h"
#include "words/quad_word.h"
#include "words/shift.h"

namespace kval::words {
namespace {

// The words of a factor's value at a point, for parts of `part` words: up to seven times the largest part.
std::size_t point_size(std::size_t part) { return part + 2; }

// The parts of a factor: two of `part` words, and a high one of one word at least.
struct Thirds {
    Thirds(const Word* factor, std::size_t size, std::size_t part_words)
        : low(factor),
          middle(factor + part_words),
          high(middle + part_words),
          part(part_words),
          high_size(size - 2 * part_words) {}

    // The values at three points, of point_size(part) words each.
    void at_one(Word* out) const {
        fit(out, point_size(part), low, part);
        add_to(out, point_size(part), middle, part);
        add_to(out, point_size(part), high, high_size);
    }
    // Gives the magnitude, and returns whether the value is negative.
    bool at_minus_one(Word* out) const {
        fit(out, point_size(part), low, part);
        add_to(out, point_size(part), high, high_size);
        return difference(out, out, point_size(part), middle, part);
    }
    void at_two(Word* out) const {
        shift_left(out, point_size(part), high, high_size, 1);
        add_to(out, point_size(part), middle, part);
        shift_left(out, point_size(part), out, point_size(part), 1);
        add_to(out, point_size(part), low, part);
    }

    const Word* low;
    const Word* middle;
    const Word* high;
    std::size_t part;
    std::size_t high_size;
};

// number /= 3, which leaves no remainder; `size` is even. As 3 t = B - 1, where B is one more than the largest limb,
// the quotient is number * t / (B - 1), and dividing by B - 1 from the lowest limb up takes subtractions only
// (T. Jebelean, "An Algorithm for Exact Division").
void divide_by_three(Word* number, std::size_t size) {
    constexpr DoubleWord third = ~DoubleWord{0} / 3;
    DoubleWord quotient = 0;
    for (std::size_t i = 0; i < size; i += 2) {
        const QuadWord product = static_cast<QuadWord>(load_pair(number + i)) * third;
        const bool borrow = quotient < low_half(product);
        quotient -= low_half(product);
        store_pair(number + i, quotient);
        quotient -= high_half(product) + DoubleWord{borrow};
    }
}

// The values of the product at 1, -1 and 2, which become its coefficients c2, c1 and c3.
struct Values {
    Word* one;
    Word* minus_one;
    Word* two;
    std::size_t size;
};
constexpr std::size_t kValues = 3;

// From the value at -1 only sums and differences with its magnitude are taken; no step has a negative result.
void interpolate(const Values& v, bool negative, const Word* c0, std::size_t c0_size, const Word* c4,
                 std::size_t c4_size) {
    const auto half = [&v](Word* number) { shift_right(number, v.size, number, v.size, 1); };
    if (negative) {
        add(v.two, v.two, v.minus_one, v.size);
        add(v.minus_one, v.one, v.minus_one, v.size);
    } else {
        subtract(v.two, v.two, v.minus_one, v.size);
        subtract(v.minus_one, v.one, v.minus_one, v.size);
    }
    divide_by_three(v.two, v.size);                     // c1 + c2 + 3 c3 + 5 c4
    half(v.minus_one);                                  // c1 + c3
    subtract_from(v.one, v.size, c0, c0_size);          // c1 + c2 + c3 + c4
    subtract(v.two, v.two, v.one, v.size);              // 2 c3 + 4 c4
    half(v.two);                                        // c3 + 2 c4
    subtract(v.one, v.one, v.minus_one, v.size);        // c2 + c4
    subtract_from(v.one, v.size, c4, c4_size);          // c2
    subtract_from(v.two, v.size, c4, c4_size);          // c3 + c4
    subtract_from(v.two, v.size, c4, c4_size);          // c3
    subtract(v.minus_one, v.minus_one, v.two, v.size);  // c1
}

}  // namespace

std::size_t toom_scratch(std::size_t a_size, std::size_t b_size, const MultiplyPlan& plan) {
    const std::size_t part = part_size(a_size, 3);
    const std::size_t point = point_size(part);
    const std::size_t outer = std::max(plan.scratch(part, part), plan.scratch(a_size - 2 * part, b_size - 2 * part));
    return kValues * 2 * point + std::max(plan.scratch(point, point), outer);
}

void multiply_toom(Word* out, const Word* a, std::size_t a_size, const Word* b, std::size_t b_size, Word* scratch,
                   const MultiplyPlan& plan) {
    const std::size_t part = part_size(a_size, 3);
    const std::size_t point = point_size(part);
    const std::size_t size = a_size + b_size;
    const Thirds x(a, a_size, part);
    const Thirds y(b, b_size, part);
    const Values v = {scratch, scratch + 2 * point, scratch + 4 * point, 2 * point};
    Word* rest = scratch + kValues * 2 * point;

    // Until the outer coefficients are there, `out` has room for the factors' values at a point.
    Word* x_value = out;
    Word* y_value = out + point;
    const auto multiply_values = [&](Word* product) { plan.multiply(product, x_value, point, y_value, point, rest); };
    x.at_one(x_value);
    y.at_one(y_value);
    multiply_values(v.one);
    const bool x_negative = x.at_minus_one(x_value);
    const bool y_negative = y.at_minus_one(y_value);
    multiply_values(v.minus_one);
    x.at_two(x_value);
    y.at_two(y_value);
    multiply_values(v.two);

    Word* c4 = out + 4 * part;
    const std::size_t c4_size = size - 4 * part;
    plan.multiply(out, x.low, part, y.low, part, rest);
    plan.multiply(c4, x.high, x.high_size, y.high, y.high_size, rest);
    interpolate(v, x_negative != y_negative, out, 2 * part, c4, c4_size);

    std::copy_n(v.one, 2 * part, out + 2 * part);
    add_to(c4, c4_size, v.one + 2 * part, v.size - 2 * part);
    add_to(out + part, size - part, v.minus_one, v.size);
    add_to(out + 3 * part, size - 3 * part, v.two, v.size);
}

}  // namespace kval::words
