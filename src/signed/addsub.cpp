// Sums and differences with a signed operand where one is wide, and the compact ones that grow wide.
#include <algorithm>

#include "kval.h"
#include "signed/extended.h"
#include "value/storage.h"
#include "words/carry.h"

namespace kval::detail {
namespace {

// Calls store(i, word) for the words of a + b, the lowest first, from word `start` and its `carry` on; returns the
// carry out.
template <typename A, typename B, typename Store>
bool add_words(std::size_t start, const A& a, const B& b, bool carry, Store store) {
    for (std::size_t i = start; i < a.size(); ++i) {
        const DoubleWord sum = DoubleWord{a.value(i)} + b.value(i) + DoubleWord{carry};
        store(i, static_cast<Word>(sum));
        carry = sum >> words::kWordBits != 0;
    }
    return carry;
}

// The same for a - b and its borrow.
template <typename A, typename B, typename Store>
void subtract_words(std::size_t start, const A& a, const B& b, bool borrow, Store store) {
    for (std::size_t i = start; i < a.size(); ++i) {
        const DoubleWord difference = DoubleWord{a.value(i)} - b.value(i) - DoubleWord{borrow};
        store(i, static_cast<Word>(difference));
        borrow = difference >> words::kWordBits != 0;
    }
}

// Words that both operands store as they are go through the kernels; extension begins above them.
bool add(Word* out, const ExtendedWords& a, const ExtendedWords& b) {
    const std::size_t plain = std::min(a.plain(), b.plain());
    const bool carry = words::add(out, a.stored(), b.stored(), plain);
    return add_words(plain, a, b, carry, [out](std::size_t i, Word word) { out[i] = word; });
}

void subtract(Word* out, const ExtendedWords& a, const ExtendedWords& b) {
    const std::size_t plain = std::min(a.plain(), b.plain());
    const bool borrow = words::subtract(out, a.stored(), b.stored(), plain);
    subtract_words(plain, a, b, borrow, [out](std::size_t i, Word word) { out[i] = word; });
}

// Whether `above`, which is not negative, has a smaller magnitude than `below`, which is.
bool less_magnitude(const KVAL_SINTEGER& above, const KVAL_SINTEGER& below) {
    const ExtendedWords x(above, above.bitwidth());
    const ExtendedWords y(below, below.bitwidth());
    return less(x, NegatedWords(y, below.bitwidth()));
}

// The ends of a sum or difference of which only the low word goes into the result.
struct Ends {
    void put(std::size_t i, Word word) {
        if (i == 0) low = word;
        top = word;
    }
    Word low = 0;
    Word top = 0;
};

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

// The result of compact operands that does not fit a compact value.
KVAL_SINTEGER SignedInternals::WideResult(const Register& r) {
    KVAL_SINTEGER result(0, r.width);
    result.set_uvalue_at(0, static_cast<Word>(r.value));
    result.set_uvalue_at(1, static_cast<Word>(r.value >> words::kWordBits));
    result.set_xmask_at(0, r.mask);
    result.flags = static_cast<std::uint8_t>(r.flags);
    return result;
}

KVAL_SINTEGER SignedInternals::AddWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    const ExtendedWords x(a, width);
    const ExtendedWords y(b, width);
    KVAL_SINTEGER sum = Room(width, Internals::Flags(b));
    y.copy_mask(sum.xmask.words);
    Internals::FinishWideSum(sum, width, add(sum.uvalue.words, x, y));
    const bool a_negative = Negative(a);
    const bool b_negative = Negative(b);
    const bool less = a_negative != b_negative && (a_negative ? less_magnitude(b, a) : less_magnitude(a, b));
    const bool negative = Negative(sum);
    const SumRepair repair = Repair(a_negative, b_negative, negative, less);
    if (repair == SumRepair::kNone) return sum;
    if (repair == SumRepair::kWiden) WidenInPlace(sum);
    sum.set_bit(static_cast<int>(sum.width - 1), negative ? 0 : 1);
    return sum;
}

KVAL_SINTEGER SignedInternals::AddWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    const ExtendedWords x(a, width);
    const ExtendedWords y(b, width);
    KVAL_SINTEGER sum = Room(width, Internals::Flags(b));
    y.copy_mask(sum.xmask.words);
    const bool carry = add(sum.uvalue.words, x, y);
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
KVAL_SINTEGER SignedInternals::WideDifference(unsigned width, const ExtendedWords& a, const ExtendedWords& b,
                                              unsigned flags) {
    KVAL_SINTEGER difference = Room(width, flags);
    difference.width = width;
    a.copy_mask(difference.xmask.words);
    subtract(difference.uvalue.words, a, b);
    difference.EnforceWidth();
    return difference;
}

KVAL_SINTEGER SignedInternals::SubWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    KVAL_SINTEGER difference =
        WideDifference(width, ExtendedWords(a, width), ExtendedWords(b, width), Internals::Flags(a));
    AssignInPlace(difference, width);
    const bool a_negative = Negative(a);
    if (a_negative != Negative(b) && Negative(difference) != a_negative) {
        // Overflow: the sign moves into one bit more, which set_bit() stores only where it is a 1.
        WidenInPlace(difference);
        if (a_negative) difference.set_bit(static_cast<int>(width), 1);
    }
    return difference;
}

KVAL_SINTEGER SignedInternals::SubWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    return WideDifference(width, ExtendedWords(a, width), ExtendedWords(b, width), Internals::Flags(a));
}

// The width comes from one operand, and may be narrower than the common one: deliberate, and bits beyond it are lost.
KVAL_SINTEGER SignedInternals::SubWide(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    const unsigned width = CommonWidth(a, b);
    const ExtendedWords x(a, width);
    const ExtendedWords y(b, width);
    if (Negative(b)) return SumWithMagnitude(a.bitwidth() + 1, width, x, y, Internals::Flags(b));
    const unsigned result_width = a >= Unsigned(b) ? a.bitwidth() : b.bitwidth();
    if (result_width <= 32) {
        Ends ends;
        subtract_words(0, x, y, false, [&ends](std::size_t i, Word word) { ends.put(i, word); });
        const bool negative = (ends.top >> ((width - 1) % words::kWordBits) & 1U) != 0;
        return Result(result_width, Assigned({ends.low, x.low_mask()}, width, negative, result_width),
                      Internals::Flags(a));
    }
    KVAL_SINTEGER difference = WideDifference(width, x, y, Internals::Flags(a));
    AssignInPlace(difference, result_width);
    return difference;
}

// a - b for a negative b: a plus its magnitude, assigned to a result of `result_width` bits; x-mask and flags of b.
KVAL_SINTEGER SignedInternals::SumWithMagnitude(unsigned result_width, unsigned width, const ExtendedWords& a,
                                                const ExtendedWords& b, unsigned flags) {
    const NegatedWords magnitude(b, width);
    if (result_width > 32) {
        KVAL_SINTEGER sum = Room(width, flags);
        Word* value = sum.uvalue.words;
        b.copy_mask(sum.xmask.words);
        // The magnitude is trimmed, x-mask included, before it is added.
        sum.xmask.words[b.size() - 1] &= Internals::TopMask(width);
        const auto store = [value](std::size_t i, Word word) { value[i] = word; };
        Internals::FinishWideSum(sum, width, add_words(0, a, magnitude, false, store));
        AssignInPlace(sum, result_width);
        return sum;
    }
    Ends ends;
    add_words(0, a, magnitude, false, [&ends](std::size_t i, Word word) { ends.put(i, word); });
    // The sum fits: the magnitude is half of its range at most, and a compact number is less than the other half.
    const bool negative = (ends.top >> ((width - 1) % words::kWordBits) & 1U) != 0;
    return Result(result_width, Assigned({ends.low, b.low_mask()}, width, negative, result_width), flags);
}

}  // namespace kval::detail
