// Sums and differences with a signed operand where one is large.
#include <algorithm>

#include "kval.h"
#include "signed/extended.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/compare.h"

namespace kval {

Growing::Growing(unsigned common_width, unsigned result_flags)
    : width(common_width),
      flags(result_flags),
      common_width_(common_width),
      arrays_(is_large(common_width) ? take_arrays(capacity()) : Arrays{few_, few_ + 3}) {}

Result Growing::result() {
    if (is_large(common_width_)) {
        const Result made = {{planes_of(arrays_), static_cast<unsigned>(capacity())}, width, flags};
        arrays_ = {};
        return made;
    }
    Copy copy;
    const Target out(width, copy);
    words::copy(out.value, arrays_.value, out.size);
    words::copy(out.mask, arrays_.mask, out.size);
    return {{out.planes(), detail::capacity_of(width)}, width, flags};
}

void Growing::widen() {
    const std::size_t size = word_count(width);
    check_width(width + 1);
    ++width;
    if (word_count(width) > size) arrays_.value[size] = arrays_.mask[size] = 0;
}

void Growing::set_top(bool top) {
    const std::size_t index = (width - 1) / words::kWordBits;
    const Word bit = Word{1} << (width - 1) % words::kWordBits;
    Word& word = arrays_.value[index];
    word = top ? word | bit : word & ~bit;
    arrays_.mask[index] &= ~bit;
    if (arrays_.mask[index] == 0) flags = detail::without_x(flags);
}

void Growing::assign(unsigned new_width) {
    check_width(new_width);
    assign_signed(arrays_, width, is_negative(), new_width);
    width = new_width;
}

namespace detail {
namespace {

// How a sum of signed values gets the right sign.
enum class Repair { kNone, kWiden, kClearSign };

// `negative` is the sign that the unsigned sum shows. `less` tells whether the operand that is not negative has the
// smaller magnitude.
template <typename Less>
Repair repair_of_sum(bool a_negative, bool b_negative, bool negative, Less less) {
    // With equal signs, a sum that shows the other sign has overflowed into the bit above.
    if (a_negative == b_negative) return negative == a_negative ? Repair::kNone : Repair::kWiden;
    // With unequal signs, the larger magnitude gives the sign.
    return negative && !less() ? Repair::kClearSign : Repair::kNone;
}

// Whether `above`, which is not negative, has a smaller magnitude than `below`, which is negative. The inverted bits of
// `below` are its magnitude minus one, so this asks whether `above` is not greater than they are.
bool less_magnitude(const Operand& above, const Operand& below) {
    const std::size_t both = std::min(above.size, below.size);
    if (!words::all_zero(above.value + both, above.size - both)) return false;
    const Word top = ~below.value[below.size - 1] & used_of_top_word(below.width);
    if (both < below.size) {
        if (top != 0) return true;
        for (std::size_t i = below.size - 1; i-- > both;) {
            if (below.value[i] != ~Word{0}) return true;
        }
    }
    for (std::size_t i = both; i-- > 0;) {
        const Word inverted = i + 1 == below.size ? top : ~below.value[i];
        if (above.value[i] != inverted) return above.value[i] < inverted;
    }
    return true;
}

// Writes the unsigned sum at the common width, and returns its carry.
bool add_extended(const Growing& sum, const Extended& a, const Extended& b) {
    const std::size_t size = word_count(sum.width);
    return words::add(sum.value(), a.words(sum.width, sum.value()), b.words(sum.width, sum.value()), size);
}

// Writes a - b, which wraps at the common width, with the x-mask of a.
void subtract_extended(const Growing& difference, const Extended& a, const Extended& b) {
    const unsigned width = difference.width;
    Word* const value = difference.value();
    a.copy_mask(width, difference.mask());
    words::subtract(value, a.words(width, value), b.words(width, value), word_count(width));
    difference.trim();
}

// Whether a negative large value is the lowest of its width, whatever its low 64 bits are.
bool is_lowest_above_limb_0(const Operand& v) {
    const Word used = used_of_top_word(v.width);
    return words::all_zero(v.value + 2, v.size - 3) && (v.value[v.size - 1] & used) == (used ^ used >> 1);
}

// a - b for a negative b: a plus the magnitude of b, assigned to a result one bit wider than a; x-mask of b.
Result sum_with_magnitude(const Operand& a, const Operand& b, unsigned flags) {
    const unsigned width = std::max(a.width, b.width);
    Growing sum(width, flags);
    const std::size_t size = word_count(width);
    // The mask's array holds the magnitude until it is added.
    Word* magnitude = sum.mask();
    words::negate(magnitude, by_sign(b).words(width, magnitude), size);
    magnitude[size - 1] &= used_of_top_word(width);
    const bool carry = words::add(sum.value(), by_zeros(a).words(width, sum.value()), magnitude, size);
    by_sign(b).copy_mask(width, sum.mask());
    // By the rule, the magnitude is trimmed, x-mask included, before it is added.
    sum.mask()[size - 1] &= used_of_top_word(width);
    sum.finish_sum(carry);
    sum.assign(a.width + 1);
    return sum.result();
}

// A small difference where one operand is large. All it needs is the low 64 bits, and the sign that the difference has
// at the common width.
Result small_difference(const Operand& a, const Operand& b, bool less, unsigned width, unsigned flags) {
    const Operand& named = b.is_negative() ? b : a;
    const std::uint64_t value_of_a = words::limb_at(a.value, a.size, 0);
    const std::uint64_t value_of_b = words::limb_at(b.value, b.size, 0);
    // With a negative b, the difference is a plus the magnitude of b. It reads negative where it reaches half of the
    // range: where the magnitude falls short of that half by no more than a.
    const bool negative = b.is_negative() ? is_lowest_above_limb_0(b) && value_of_b <= value_of_a : less;
    const Planes low = {value_of_a - value_of_b, words::limb_at(named.mask, named.size, 0)};
    return {{assigned(low, std::max(a.width, b.width), negative, width), 0}, width, flags};
}

}  // namespace

Result AddSignedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask, unsigned a_width,
                      unsigned b_width, unsigned flags) {
    Copy x_copy;
    const Operand x({a, a_mask}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, b_mask}, b_width, y_copy);
    Growing sum(std::max(a_width, b_width), flags);
    by_sign(y).copy_mask(sum.width, sum.mask());
    sum.finish_sum(add_extended(sum, by_sign(x), by_sign(y)));
    const bool negative = sum.is_negative();
    const auto less = [&x, &y] { return x.is_negative() ? less_magnitude(y, x) : less_magnitude(x, y); };
    const Repair repair = repair_of_sum(x.is_negative(), y.is_negative(), negative, less);
    if (repair == Repair::kWiden) sum.widen();
    if (repair != Repair::kNone) sum.set_top(repair == Repair::kWiden && !negative);
    return sum.result();
}

Result AddMixedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask, unsigned a_width,
                     unsigned b_width, unsigned flags) {
    Copy x_copy;
    const Operand x({a, a_mask}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, b_mask}, b_width, y_copy);
    const unsigned width = std::max(a_width, b_width);
    Growing sum(width, flags);
    by_zeros(y).copy_mask(width, sum.mask());
    const bool carry = add_extended(sum, by_sign(x), by_zeros(y));
    if (x.is_negative()) {
        // This is b minus the magnitude of a; it wraps at the common width.
        sum.trim();
        sum.assign(width + 1);
        return sum.result();
    }
    sum.finish_sum(carry);
    sum.assign(width + 1);
    if (sum.is_negative()) {
        // Deliberate: the sum shows a sign although no operand has one. The sign is cleared; but where the width of the
        // sum is a multiple of 32, it stays, and the sum grows by a zero bit.
        if (sum.width % words::kWordBits == 0) sum.widen();
        sum.set_top(false);
    }
    return sum.result();
}

Result SubSignedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask, unsigned a_width,
                      unsigned b_width, unsigned flags) {
    Copy x_copy;
    const Operand x({a, a_mask}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, b_mask}, b_width, y_copy);
    Growing difference(std::max(a_width, b_width), flags);
    subtract_extended(difference, by_sign(x), by_sign(y));
    // As signed assignment to the same width does, this drops the X marks in the top word of a negative value.
    difference.assign(difference.width);
    if (difference_overflows(x.is_negative(), y.is_negative(), difference.is_negative())) {
        // The sign moves up into one more bit. Only a sign of 1 is stored there, as set_bit() does.
        difference.widen();
        if (x.is_negative()) difference.set_top(true);
    }
    return difference.result();
}

Result SubMixedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask, unsigned a_width,
                     unsigned b_width, unsigned flags) {
    Copy x_copy;
    const Operand x({a, a_mask}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, b_mask}, b_width, y_copy);
    Growing difference(std::max(a_width, b_width), flags);
    subtract_extended(difference, by_sign(x), by_zeros(y));
    return difference.result();
}

Result SubFromUnsignedLarge(std::uint64_t a, std::uint64_t a_mask, std::uint64_t b, std::uint64_t b_mask,
                            unsigned a_width, unsigned b_width, unsigned flags) {
    Copy x_copy;
    const Operand x({a, a_mask}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, b_mask}, b_width, y_copy);
    const bool less = !y.is_negative() && words::compare(x.value, x.size, y.value, y.size) < 0;
    const unsigned width = width_of_difference(a_width, b_width, y.is_negative(), less);
    if (is_small(width)) return small_difference(x, y, less, width, flags);
    if (y.is_negative()) return sum_with_magnitude(x, y, flags);
    Growing difference(std::max(a_width, b_width), flags);
    subtract_extended(difference, by_zeros(x), by_sign(y));
    difference.assign(width);
    return difference.result();
}

}  // namespace detail
}  // namespace kval
