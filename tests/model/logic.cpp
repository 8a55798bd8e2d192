// Model of the bitwise logic: four-state AND and OR, exclusive-or and NOT, one bit at a time.
#include <cstddef>

#include "bits.h"
#include "model.h"

namespace model {

namespace {

struct Bit {
    bool value;
    bool x;
};

using Rule = Bit (*)(Bit, Bit);

bool known_one(Bit b) { return b.value && !b.x; }

//   left right | AND OR      X AND X is a known 0, deliberately: only a known 1 on the other side lets an X through.
//    0     0   |  0   0      The value bit under every X of the result is 0.
//    0     1   |  0   1
//    0     X   |  0   X
//    1     0   |  0   1
//    1     1   |  1   1
//    1     X   |  X   1
//    X     0   |  0   X
//    X     1   |  X   1
//    X     X   |  0   X
Bit and_rule(Bit l, Bit r) { return {known_one(l) && known_one(r), (known_one(l) && r.x) || (known_one(r) && l.x)}; }

Bit or_rule(Bit l, Bit r) { return {known_one(l) || known_one(r), (l.x && !known_one(r)) || (r.x && !known_one(l))}; }

Bit load(const Value& v, std::size_t i) { return {v.value[i] != 0, v.mask[i] != 0}; }

void store(Value& v, std::size_t i, Bit b) {
    v.value[i] = b.value;
    v.mask[i] = b.x;
}

// Whole words beyond the right operand's last word are kept, for AND too; bits above its width inside a shared word
// meet the zeros stored there. Deliberate.
void combine_into(Value& target, const Value& other, Rule rule) {
    if (&target == &other) return;  // nothing changes, neither flags nor text, although X AND X is 0
    for (std::size_t i = 0; i < target.value.size() && i < other.value.size(); ++i) {
        store(target, i, rule(load(target, i), load(other, i)));
    }
    target.x = target.x || other.x;
    target.z = target.z || other.z;
    target.wl = target.wl || other.wl;
    target.wh = target.wh || other.wh;
    enforce_width(target);
    delete_string(target);
}

// Whole words that one operand lacks are copied from the other. No flag reaches the result, even where it holds X bits,
// and nothing is trimmed: deliberately unlike the in-place forms.
Value combine(const Value& l, const Value& r, Rule rule) {
    Value result = make(0, l.width > r.width ? l.width : r.width);
    for (std::size_t i = 0; i < result.value.size(); ++i) {
        if (i >= l.value.size()) {
            store(result, i, load(r, i));
        } else if (i >= r.value.size()) {
            store(result, i, load(l, i));
        } else {
            store(result, i, rule(load(l, i), load(r, i)));
        }
    }
    return result;
}

}  // namespace

void and_assign(Value& target, const Value& other) { combine_into(target, other, and_rule); }

void or_assign(Value& target, const Value& other) { combine_into(target, other, or_rule); }

Value bit_and(const Value& l, const Value& r) { return combine(l, r, and_rule); }

Value bit_or(const Value& l, const Value& r) { return combine(l, r, or_rule); }

// The result starts as a copy of the wider operand, of the right one between equal widths, with its x-mask and flags.
// Compact operands have their x-masks exclusive-ored, wide results keep the wider operand's x-mask: deliberate.
// Nothing is trimmed.
Value bit_xor(const Value& l, const Value& r) {
    Value result = copy(l.width > r.width ? l : r);
    if (l.x || r.x) {
        force_x(result);
        return result;
    }
    for (std::size_t i = 0; i < l.value.size() && i < r.value.size(); ++i) {
        result.value[i] = l.value[i] != r.value[i];
        if (result.width <= kWordBits) result.mask[i] = l.mask[i] != r.mask[i];
    }
    return result;
}

Value bit_not(const Value& v) {
    Value result = copy(v);
    flip(result.value);
    enforce_width(result);
    return result;
}

}  // namespace model
