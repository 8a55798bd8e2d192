// LLVM's APInt: alone, two-state, and in pairs of value and mask as a user would make a four-state value of it.
#include <llvm/ADT/APInt.h>
#include <llvm/ADT/ArrayRef.h>
#include <llvm/ADT/SmallString.h>
#include <llvm/ADT/StringRef.h>

#include "operations.h"
#include "rivals/kernels.h"
#include "rivals/operators.h"

namespace bench {
namespace {

using llvm::APInt;

constexpr unsigned kQuadraticLimit = 65536;  // products and texts take seconds beyond

APInt made(const std::vector<std::uint32_t>& plane, unsigned width) { return APInt(width, Bits::limbs(plane)); }

std::vector<std::uint32_t> words(const APInt& v) {
    return Bits::words(v.getRawData(), v.getNumWords(), v.getBitWidth());
}

// ---- alone, under the library's rule for widths of results: an APInt's own results are as wide as its operands ----

APInt wide_sum(const APInt& l, const APInt& r) {
    bool carry = false;
    APInt sum = l.uadd_ov(r, carry);
    if (carry) {
        sum = sum.zext(l.getBitWidth() + 1);
        sum.setBit(l.getBitWidth());
    }
    return sum;
}

APInt wide_shift_left(const APInt& v, unsigned count) { return v.zext(v.getBitWidth() + count) << count; }

APInt narrow_shift_right(const APInt& v, unsigned count) { return v.lshr(count).trunc(v.getBitWidth() - count); }

APInt product(const APInt& l, const APInt& r) {
    const unsigned width = l.getBitWidth() + r.getBitWidth();
    return l.zext(width) * r.zext(width);
}

class Text {
  public:
    Text(const APInt& v, unsigned radix) { v.toString(text_, radix, false); }
    const char* chars() const { return text_.data(); }
    std::string text() const { return text_.str().str(); }

  private:
    llvm::SmallString<40> text_;
};

struct Alone : InPlace<APInt> {
    using Value = APInt;
    static constexpr const char* kName = "apint";
    static constexpr Rules kRules = Rules::kTwoState;
    static bool takes(unsigned, unsigned) { return true; }
    static APInt from(const Bits& bits) { return made(bits.value, bits.width); }
    static Bits bits(const APInt& v) { return {v.getBitWidth(), words(v), {}, {}}; }
    static void keep(const APInt& v) { bench::keep(*v.getRawData(), 0, v.getBitWidth(), 0); }

    static APInt construct(unsigned number, unsigned width) { return APInt(width, number); }
    static APInt copy(const APInt& v) { return v; }
    static APInt logic_and(const APInt& l, const APInt& r) { return l & r; }
    static APInt logic_or(const APInt& l, const APInt& r) { return l | r; }
    static APInt logic_xor(const APInt& l, const APInt& r) { return l ^ r; }
    static APInt logic_not(const APInt& v) { return ~v; }
    static APInt add(const APInt& l, const APInt& r) { return wide_sum(l, r); }
    static APInt subtract(const APInt& l, const APInt& r) { return l - r; }
    static APInt shift_left(const APInt& v, unsigned count) { return wide_shift_left(v, count); }
    static APInt shift_right(const APInt& v, unsigned count) { return narrow_shift_right(v, count); }
    static APInt& shift_right_assign(APInt& v, unsigned count) {
        v.lshrInPlace(count);
        return v;
    }
    static APInt& assign(APInt& to, const APInt& from) { return to = from; }
    static APInt& assign(APInt& to, unsigned number) { return to = number; }
    static bool less(const APInt& l, const APInt& r) { return l.ult(r); }
    static bool equal(const APInt& l, const APInt& r) { return l == r; }
    static bool signed_less(const APInt& l, const APInt& r) { return l.slt(r); }
    static constexpr unsigned kWidestText = kQuadraticLimit;
    static Text hexadecimal_text(const APInt& v) { return Text(v, 16); }
    static Text binary_text(const APInt& v) { return Text(v, 2); }
    static APInt& parse_hexadecimal(APInt& v, const std::string& text) { return v = APInt(v.getBitWidth(), text, 16); }
    static APInt& parse_binary(APInt& v, const std::string& text) { return v = APInt(v.getBitWidth(), text, 2); }
    static constexpr unsigned kWidestProduct = kQuadraticLimit;
    static APInt multiply(const APInt& l, const APInt& r) { return product(l, r); }
    static bool bit(const APInt& v, unsigned position) { return v[position]; }
    static void set_bit(APInt& v, unsigned position, bool value) { v.setBitVal(position, value); }
    static void accumulate(APInt& acc, const APInt& a, const APInt& b, const APInt& c) { acc += (a & b) ^ c; }
    static APInt divide(const APInt& l, const APInt& r) { return l.udiv(r); }
    static APInt remainder(const APInt& l, const APInt& r) { return l.urem(r); }
};

// ---- in pairs ----

struct FourState {
    APInt value;
    APInt mask;
};

FourState operator&(const FourState& l, const FourState& r) {
    const APInt l_ones = l.value & ~l.mask;
    const APInt r_ones = r.value & ~r.mask;
    return {l_ones & r_ones, (l_ones & r.mask) | (r_ones & l.mask)};
}

FourState operator|(const FourState& l, const FourState& r) {
    const APInt l_ones = l.value & ~l.mask;
    const APInt r_ones = r.value & ~r.mask;
    return {l_ones | r_ones, (l.mask & ~r_ones) | (r.mask & ~l_ones)};
}

bool has_x(const FourState& v) { return v.mask != 0; }

FourState all_x(const APInt& value) { return {value, APInt::getAllOnes(value.getBitWidth())}; }

FourState operator^(const FourState& l, const FourState& r) {
    if (has_x(l) || has_x(r)) return all_x(r.value);
    return {l.value ^ r.value, r.mask};
}

FourState operator~(const FourState& v) { return {~v.value, v.mask}; }

FourState operator+(const FourState& l, const FourState& r) {
    APInt sum = wide_sum(l.value, r.value);
    const unsigned width = sum.getBitWidth();
    return {std::move(sum), width == r.mask.getBitWidth() ? r.mask : r.mask.zext(width)};
}

FourState operator-(const FourState& l, const FourState& r) { return {l.value - r.value, l.mask}; }

FourState operator*(const FourState& l, const FourState& r) {
    const unsigned width = l.value.getBitWidth() + r.value.getBitWidth();
    if (has_x(l) || has_x(r)) return all_x(APInt(width, 0));
    return {product(l.value, r.value), APInt(width, 0)};
}

FourState operator<<(const FourState& v, unsigned count) {
    return {wide_shift_left(v.value, count), wide_shift_left(v.mask, count)};
}

FourState operator>>(const FourState& v, unsigned count) {
    return {narrow_shift_right(v.value, count), narrow_shift_right(v.mask, count)};
}

FourState& operator&=(FourState& l, const FourState& r) { return l = l & r; }

FourState& operator|=(FourState& l, const FourState& r) { return l = l | r; }

FourState& operator+=(FourState& l, const FourState& r) {
    l.value += r.value;
    return l;
}

FourState& operator-=(FourState& l, const FourState& r) {
    l.value -= r.value;
    return l;
}

FourState& operator<<=(FourState& v, unsigned count) {
    v.value <<= count;
    v.mask <<= count;
    return v;
}

FourState& operator>>=(FourState& v, unsigned count) {
    v.value.lshrInPlace(count);
    v.mask.lshrInPlace(count);
    return v;
}

FourState& operator++(FourState& v) {
    ++v.value;
    return v;
}

FourState& operator--(FourState& v) {
    --v.value;
    return v;
}

bool operator<(const FourState& l, const FourState& r) { return l.value.ult(r.value); }

bool operator==(const FourState& l, const FourState& r) { return l.value == r.value && l.mask == r.mask; }

struct Pairs : InPlace<FourState>, Comparisons<FourState> {
    using Value = FourState;
    static constexpr const char* kName = "apint_pair";
    static constexpr Rules kRules = Rules::kSame;
    static FourState from(const Bits& bits) { return {made(bits.value, bits.width), made(bits.mask, bits.width)}; }
    static Bits bits(const FourState& v) { return {v.value.getBitWidth(), words(v.value), words(v.mask), {}}; }
    static void keep(const FourState& v) {
        bench::keep(*v.value.getRawData(), *v.mask.getRawData(), v.value.getBitWidth(), 0);
    }
    static bool takes(unsigned, unsigned) { return true; }
    static FourState construct(unsigned number, unsigned width) { return {APInt(width, number), APInt(width, 0)}; }
    static FourState copy(const FourState& v) { return v; }
    static FourState logic_and(const FourState& l, const FourState& r) { return l & r; }
    static FourState logic_or(const FourState& l, const FourState& r) { return l | r; }
    static FourState logic_xor(const FourState& l, const FourState& r) { return l ^ r; }
    static FourState logic_not(const FourState& v) { return ~v; }
    static FourState shift_right(const FourState& v, unsigned count) { return v >> count; }
    static FourState shift_left(const FourState& v, unsigned count) { return v << count; }
    static FourState add(const FourState& l, const FourState& r) { return l + r; }
    static FourState subtract(const FourState& l, const FourState& r) { return l - r; }
    static bool bit(const FourState& v, unsigned position) { return v.value[position]; }
    static void set_bit(FourState& v, unsigned position, bool value) {
        v.value.setBitVal(position, value);
        v.mask.clearBit(position);
    }
    static void accumulate(FourState& acc, const FourState& a, const FourState& b, const FourState& c) {
        acc += (a & b) ^ c;
    }
    static constexpr unsigned kWidestProduct = kQuadraticLimit;
    static FourState multiply(const FourState& l, const FourState& r) { return l * r; }
    static FourState& assign(FourState& to, const FourState& from) { return to = from; }
    static FourState& assign(FourState& to, unsigned number) {
        to.value = number;
        to.mask = 0;
        return to;
    }
};

const Registration registration([] {
    add_operations<Alone>();
    add_operations<Pairs>();
    add_counter<Alone>();
    add_shift_register<Alone>();
    add_accumulator<Alone>();
    add_counter<Pairs>();
    add_shift_register<Pairs>();
    add_accumulator<Pairs>();
});

}  // namespace
}  // namespace bench
