// Model of the signed sums and differences: the unsigned ones at a common width, and six different repairs after them.
#include "bits.h"
#include "signed_model.h"

namespace model::signed_value {

namespace {

using Resize = void (*)(Value&, unsigned);

struct Pair {
    Value left;
    Value right;
};

// Copies of both operands at the larger width. Operands of equal width are left as they are, stray bits included.
Pair align(const Value& l, Resize resize_left, const Value& r, Resize resize_right) {
    Pair pair{copy(l), copy(r)};
    if (l.width < r.width) resize_left(pair.left, r.width);
    if (r.width < l.width) resize_right(pair.right, l.width);
    return pair;
}

Value magnitude(const Value& v) { return sign(v) ? twos_complement(v) : copy(v); }

void set_top_bit(Value& v, unsigned top) { set_bit(v, static_cast<int>(v.width - 1), top); }

enum class Repair { None, Widen, ClearSign };

// What the sum of two signed values needs. The magnitudes have their operands' own widths. With mixed signs a sum that
// reads negative although the positive operand prevails carries a stray bit; the opposite case hardly ever arises.
Repair repair_of_sum(const Value& a, const Value& b, const Value& sum) {
    if (sign(a) == sign(b)) return sign(sum) != sign(a) ? Repair::Widen : Repair::None;
    const bool negative_prevails = sign(a) ? greater(magnitude(a), magnitude(b)) : greater(magnitude(b), magnitude(a));
    if (sign(sum)) return negative_prevails ? Repair::None : Repair::ClearSign;
    return negative_prevails ? Repair::Widen : Repair::None;
}

}  // namespace

Value add_ss(const Value& a, const Value& b) {
    const Pair extended = align(a, signed_value::resize, b, signed_value::resize);
    Value sum = add(extended.left, extended.right);
    const Repair repair = repair_of_sum(a, b, sum);
    if (repair == Repair::ClearSign) set_top_bit(sum, 0);
    if (repair == Repair::Widen) {
        const unsigned top = sign(sum) ? 0 : 1;  // the opposite of the sign before widening
        signed_value::resize(sum, sum.width + 1);
        set_top_bit(sum, top);
    }
    return sum;
}

// The result has room for one more bit. With a non-negative signed operand a sum that reads negative loses its sign
// bit, except where the width is a multiple of 32: there it gets one more bit, a 0, in a new word. Deliberate.
Value add_su(const Value& a, const Value& b) {
    const Pair extended = align(a, signed_value::resize, b, model::resize);
    Value result = make(0, extended.left.width + 1);
    if (sign(a)) {
        assign_signed(result, sub(extended.right, twos_complement(extended.left)));
        return result;
    }
    assign_signed(result, add(extended.left, extended.right));
    if (sign(result)) {
        if (result.width % kWordBits == 0) model::resize(result, result.width + 1);
        set_top_bit(result, 0);
    }
    return result;
}

Value add_us(const Value& a, const Value& b) { return add_su(b, a); }

// Exact: where the common width does not hold the difference, one more bit does.
Value sub_ss(const Value& a, const Value& b) {
    const Pair extended = align(a, signed_value::resize, b, signed_value::resize);
    Value result = make(0, extended.left.width);
    assign_signed(result, sub(extended.left, extended.right));
    if (sign(a) != sign(b) && sign(result) != sign(a)) {
        model::resize(result, result.width + 1);
        if (sign(a)) set_top_bit(result, 1);
    }
    return result;
}

// Wraps at the common width, with no repair.
Value sub_su(const Value& a, const Value& b) {
    const Pair extended = align(a, signed_value::resize, b, model::resize);
    return sub(extended.left, extended.right);
}

// The width alone, chosen by comparing the operands, provides for the sign of the result.
Value sub_us(const Value& a, const Value& b) {
    const Pair extended = align(a, model::resize, b, signed_value::resize);
    if (sign(b)) {
        Value result = make(0, (greater_us(a, b) ? a.width : b.width) + 1);
        assign_signed(result, add(extended.left, twos_complement(extended.right)));
        return result;
    }
    Value result = make(0, greater_equal_us(a, b) ? a.width : b.width);
    assign_signed(result, sub(extended.left, extended.right));
    return result;
}

}  // namespace model::signed_value
