// Model of the arithmetic: carry and borrow chains over single bits, long multiplication and long division.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bits.h"
#include "model.h"

namespace model {

namespace {

// One column of a sum or difference: the carry (borrow) comes in and goes out through the last argument.
using Column = bool (*)(bool, bool, bool&);

bool add_column(bool l, bool r, bool& carry) {
    const bool sum = (l != r) != carry;
    carry = (l && r) || (l && carry) || (r && carry);
    return sum;
}

bool sub_column(bool l, bool r, bool& borrow) {
    const bool difference = (l != r) != borrow;
    borrow = (!l && r) || (!l && borrow) || (r && borrow);
    return difference;
}

// Runs the chain through the whole storage of the target; a carry that arrives at bit `reach` is dropped there.
// Flags and x-mask are carried along unread.
void chain(Value& target, const Bits& right, Column column, std::size_t reach) {
    bool carry = false;
    for (std::size_t i = 0; i < target.value.size(); ++i) {
        if (i == reach) carry = false;
        target.value[i] = column(target.value[i], at(right, i), carry);
    }
    enforce_width(target);
    delete_string(target);
}

// Between values the carry (borrow) travels at most one word beyond the right operand's last word; what leaves that
// word is dropped. Deliberate. A compact target has one word and meets only the right operand's low word.
void chain(Value& target, const Value& other, Column column) {
    const Bits right = other.value;  // a copy: `other` may be the target itself
    chain(target, right, column, right.size() + kWordBits);
}

// From a plain number the carry (borrow) ripples as far as it needs to.
void chain(Value& target, unsigned number, Column column) {
    chain(target, bits_of(number), column, target.value.size());
}

// A sum grows by one bit when it has a bit just above the width. At a full top word that bit is the carry out of the
// word, and takes a new word with a clear mask. Below a full top word it is a stored bit; a carry out of the word comes
// only from stray bits, and then too the sum grows by one bit, while the carry itself is lost.
void grow(Value& sum, bool carry) {
    const bool full = sum.width % kWordBits == 0;
    if (!carry && !at(sum.value, sum.width)) return;
    if (full) {
        sum.value.resize(sum.value.size() + kWordBits, false);
        sum.mask.resize(sum.mask.size() + kWordBits, false);
        sum.value[sum.width] = true;
    }
    ++sum.width;
}

struct Division {
    unsigned quotient;
    unsigned remainder;
};

Division divide(unsigned dividend, unsigned divisor) {
    unsigned quotient = 0;
    std::uint64_t remainder = 0;
    for (unsigned i = kWordBits; i-- > 0;) {
        remainder = 2 * remainder + (dividend >> i & 1u);
        if (remainder >= divisor) {
            remainder -= divisor;
            quotient |= 1u << i;
        }
    }
    return {quotient, static_cast<unsigned>(remainder)};
}

void require_narrow(const Value& l, const Value& r, const std::string& sign) {
    if (l.width <= kWordBits && r.width <= kWordBits) return;
    throw "KVAL_UINTEGER operator " + sign + " only supports division between 32 bit KVAL_UINTEGERs";
}

Value unknown(unsigned width) {
    Value result = make(0, width);
    force_x(result);
    return result;
}

}  // namespace

void add_assign(Value& target, const Value& other) { chain(target, other, add_column); }

void add_assign(Value& target, unsigned number) { chain(target, number, add_column); }

void sub_assign(Value& target, const Value& other) { chain(target, other, sub_column); }

void sub_assign(Value& target, unsigned number) { chain(target, number, sub_column); }

void increment(Value& target) { chain(target, 1u, add_column); }

void decrement(Value& target) { chain(target, 1u, sub_column); }

// The sum starts as a copy of the wider operand, of the right one between equal widths, with its x-mask and flags.
Value add(const Value& l, const Value& r) {
    const bool left_is_wider = l.width > r.width;
    Value sum = copy(left_is_wider ? l : r);
    const Bits& narrower = left_is_wider ? r.value : l.value;
    bool carry = false;
    for (std::size_t i = 0; i < sum.value.size(); ++i) {
        sum.value[i] = add_column(sum.value[i], at(narrower, i), carry);
    }
    grow(sum, carry);
    enforce_width(sum);
    return sum;
}

// The borrow out of each word is decided by a comparison of its own, of the left word with the right one. A compact
// right operand stands in that comparison with its one word at every index, although beyond index 0 it is not
// subtracted: deliberate. A wide right operand counts as 0 beyond its last word in both.
Value sub(const Value& l, const Value& r) {
    Value difference = copy(l);
    bool borrow = false;
    for (std::size_t base = 0; base < l.value.size(); base += kWordBits) {
        bool below = borrow;
        for (std::size_t i = base; i < base + kWordBits; ++i) {
            difference.value[i] = sub_column(l.value[i], at(r.value, i), borrow);
            sub_column(l.value[i], at(r.value, r.width <= kWordBits ? i - base : i), below);
        }
        borrow = below;
    }
    enforce_width(difference);
    return difference;
}

// Every stored bit of one operand adds the other's stored bits, shifted, to the columns of the product; the carries
// follow in one pass. Columns above the product's words are cut off, and flags other than a forced X stay clear.
Value mul(const Value& l, const Value& r) {
    if (l.x || r.x) return unknown(l.width + r.width);
    Value product = make(0, l.width + r.width);
    const std::size_t size = product.value.size();
    const std::vector<unsigned> addend(r.value.begin(), r.value.end());
    std::vector<unsigned> columns(l.value.size() + addend.size());
    for (std::size_t i = 0; i < l.value.size(); ++i) {
        if (!l.value[i]) continue;
        for (std::size_t j = 0; j < addend.size(); ++j) columns[i + j] += addend[j];
    }
    unsigned carry = 0;
    for (std::size_t i = 0; i < size && i < columns.size(); ++i) {
        const unsigned sum = columns[i] + carry;
        product.value[i] = sum % 2 != 0;
        carry = sum / 2;
    }
    enforce_width(product);
    return product;
}

// The quotient has the dividend's width, the remainder the divisor's: deliberate. A divisor is zero when all its stored
// value bits are, whatever its x-mask holds.
Value div(const Value& l, const Value& r) {
    require_narrow(l, r, "/");
    if (is_zero(r)) return unknown(l.width);
    return make(divide(uint(l), uint(r)).quotient, l.width);
}

Value rem(const Value& l, const Value& r) {
    require_narrow(l, r, "%");
    if (is_zero(r)) return unknown(r.width);
    return make(divide(uint(l), uint(r)).remainder, r.width);
}

}  // namespace model
