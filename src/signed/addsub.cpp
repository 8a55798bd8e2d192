// Sums and differences with a signed operand where one is wide.
#include <algorithm>

#include "kval.h"
#include "signed/extended.h"
#include "value/storage.h"
#include "words/carry.h"
#include "words/compare.h"

namespace kval::detail {
namespace {

// Whether `above`, which is not negative, has a smaller magnitude than `below`, which is: whether it is not greater
// than the inverted bits of `below`, which are one less than its magnitude.
bool less_magnitude(const KVAL_SINTEGER& above, const KVAL_SINTEGER& below) {
    const Internals::View a = Internals::Words(above);
    const Internals::View b = Internals::Words(below);
    const std::size_t both = std::min(a.size, b.size);
    if (!words::all_zero(a.value + both, a.size - both)) return false;
    const Word top = ~b.value[b.size - 1] & Internals::TopMask(below.bitwidth());
    if (both < b.size) {
        if (top != 0) return true;
        for (std::size_t i = b.size - 1; i-- > both;) {
            if (b.value[i] != ~Word{0}) return true;
        }
    }
    for (std::size_t i = both; i-- > 0;) {
        const Word inverted = i + 1 == b.size ? top : ~b.value[i];
        if (a.value[i] != inverted) return a.value[i] < inverted;
    }
    return true;
}

// Whether a negative value of more than two words is the lowest of its width, whatever its lowest word is.
bool is_lowest_above_word_0(const KVAL_SINTEGER& v) {
    const Internals::View words = Internals::Words(v);
    const Word top_mask = Internals::TopMask(v.bitwidth());
    return words::all_zero(words.value + 1, words.size - 2) &&
           (words.value[words.size - 1] & top_mask) == (top_mask ^ top_mask >> 1);
}

}  // namespace

// A result under way: wide, with room for the two bits by which it may outgrow the common width.
KVAL_SINTEGER SignedInternals::Room(unsigned width, unsigned flags) {
    const unsigned widest = width + 2;
    return KVAL_SINTEGER(std::min(widest, kMaxWidth), word_count(widest), flags);
}

// One bit wider, by a zero bit.
void SignedInternals::WidenInPlace(KVAL_SINTEGER& v) {
    const std::size_t size = word_count(v.width);
    check_width(v.width + 1);
    ++v.width;
    if (word_count(v.width) > size) v.uvalue.words[size] = v.xmask.words[size] = 0;
}

// As if assigned to a signed value of `width` bits, also wide.
void SignedInternals::AssignInPlace(KVAL_SINTEGER& v, unsigned width) {
    check_width(width);
    assign_signed(v.uvalue.words, v.xmask.words, v.width, Negative(v), width);
    v.width = width;
}

// Where the sign of a sum is not right.
void SignedInternals::RepairWideSum(KVAL_SINTEGER& sum, const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const bool a_negative = Negative(a);
    const bool negative = Negative(sum);
    if (a_negative == Negative(b)) {
        WidenInPlace(sum);
    } else if (less_magnitude(a_negative ? b : a, a_negative ? a : b)) {
        return;
    }
    sum.set_bit(static_cast<int>(sum.width - 1), negative ? 0 : 1);
}

// Where a difference overflowed, its sign moves into one bit more, which set_bit() stores only where it is a 1.
void SignedInternals::WidenWideDifference(KVAL_SINTEGER& difference, bool negative) {
    WidenInPlace(difference);
    if (negative) difference.set_bit(static_cast<int>(difference.width - 1), 1);
}

KVAL_SINTEGER SignedInternals::AddWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    KVAL_SINTEGER sum = Room(width, Internals::Flags(b));
    Word* value = sum.uvalue.words;
    Operand(b).copy_mask(width, sum.xmask.words);
    Internals::FinishWideSum(
        sum, width,
        words::add(value, Operand(a).words(width, value), Operand(b).words(width, value), word_count(width)));
    if (!SignIsRight(Negative(a), Negative(b), Negative(sum))) RepairWideSum(sum, a, b);
    return sum;
}

KVAL_SINTEGER SignedInternals::AddWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    KVAL_SINTEGER sum = Room(width, Internals::Flags(b));
    Word* value = sum.uvalue.words;
    Operand(b).copy_mask(width, sum.xmask.words);
    const bool carry =
        words::add(value, Operand(a).words(width, value), Operand(b).words(width, value), word_count(width));
    if (Negative(a)) {
        // b minus the magnitude of a, which wraps at the common width.
        sum.width = width;
        sum.EnforceWidth();
        AssignInPlace(sum, width + 1);
        return sum;
    }
    Internals::FinishWideSum(sum, width, carry);
    AssignInPlace(sum, width + 1);
    if (Negative(sum)) {
        // Deliberate: a sign is cleared where no operand has one, but a width of whole words keeps it and grows by a
        // zero bit.
        if (sum.get_top() == 0) WidenInPlace(sum);
        sum.set_bit(static_cast<int>(sum.width - 1), 0);
    }
    return sum;
}

// a - b, which wraps at the common width; x-mask and flags of a.
KVAL_SINTEGER SignedInternals::WideDifference(const Operand& a, const Operand& b) {
    const unsigned width = CommonWidth(a.number, b.number);
    KVAL_SINTEGER difference = Room(width, Internals::Flags(a.number));
    Word* value = difference.uvalue.words;
    difference.width = width;
    a.copy_mask(width, difference.xmask.words);
    words::subtract(value, a.words(width, value), b.words(width, value), word_count(width));
    difference.EnforceWidth();
    return difference;
}

KVAL_SINTEGER SignedInternals::SubWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    KVAL_SINTEGER difference = WideDifference(a, b);
    Settle(difference);
    if (Overflowed(a, b, difference)) WidenWideDifference(difference, Negative(a));
    return difference;
}

KVAL_SINTEGER SignedInternals::SubWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) { return WideDifference(a, b); }

// The width comes from one operand, and may be narrower than the common one: deliberate, and bits beyond it are lost.
KVAL_SINTEGER SignedInternals::SubWide(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    if (Negative(b)) return SumWithMagnitude(a, b);
    const bool less = a < Unsigned(b);
    const unsigned result_width = less ? b.bitwidth() : a.bitwidth();
    if (result_width <= 32) {
        const FourState<Word> low = {a.uint() - b.uint(), Internals::LowMask(a)};
        return Result(result_width, Assigned(low, CommonWidth(a, b), less, result_width), Internals::Flags(a));
    }
    KVAL_SINTEGER difference = WideDifference(a, b);
    AssignInPlace(difference, result_width);
    return difference;
}

// a - b for a negative b: a plus its magnitude, assigned to a result one bit wider than a; x-mask and flags of b.
KVAL_SINTEGER SignedInternals::SumWithMagnitude(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    const unsigned result_width = a.bitwidth() + 1;
    const unsigned flags = Internals::Flags(b);
    if (result_width <= 32) {
        // The sum reads negative where it reaches half of its range: where the magnitude is less than half of it by no
        // more than a.
        const FourState<Word> low = {a.uint() - b.uint(), Internals::LowMask(b)};
        const bool negative = is_lowest_above_word_0(b) && b.uint() <= a.uint();
        return Result(result_width, Assigned(low, width, negative, result_width), flags);
    }
    KVAL_SINTEGER sum = Room(width, flags);
    const std::size_t size = word_count(width);
    Word* value = sum.uvalue.words;
    // The mask's array holds the magnitude until it is added.
    Word* magnitude = sum.xmask.words;
    words::negate(magnitude, Operand(b).words(width, magnitude), size);
    magnitude[size - 1] &= Internals::TopMask(width);
    const bool carry = words::add(value, Operand(a).words(width, value), magnitude, size);
    Operand(b).copy_mask(width, sum.xmask.words);
    // The magnitude was trimmed, x-mask included, before it was added.
    sum.xmask.words[size - 1] &= Internals::TopMask(width);
    Internals::FinishWideSum(sum, width, carry);
    AssignInPlace(sum, result_width);
    return sum;
}

}  // namespace kval::detail
