// The inline bodies of the signed value: everything with a compact result, and what is short with up to 64 bits; the
// rest is one call of a ...Large or ...Wide function.
#ifndef KVAL_DETAIL_SIGNED_INLINE_H
#define KVAL_DETAIL_SIGNED_INLINE_H

namespace kval {
namespace detail {

/// Ones from bit `count` modulo 32 up.
inline std::uint32_t OnesFrom(unsigned count) noexcept { return 0xFFFFFFFFU << (count & 31U); }

/// An operand or result of up to 64 bits in registers. Of one that turns out wider no more can be told than that its
/// width is more than 64.
struct Register {
    unsigned width;
    std::uint64_t value;
    std::uint64_t mask;
    unsigned flags;

    __attribute__((always_inline)) bool Negative() const noexcept { return (value >> ((width - 1) & 63U) & 1U) != 0; }
    Register Trimmed() const noexcept {
        const std::uint64_t used = ~std::uint64_t{0} >> (-width & 63U);
        return {width, value & used, mask & used, flags};
    }
    Register Negated() const noexcept { return Register{width, 0 - value, mask, flags}.Trimmed(); }
    // In place, and results in one variable each: else compilers keep the whole in memory.

    /// Sets the top bit as set_bit() does it: the bit is known, and flag X goes when its word holds no X mark.
    void SetTop(bool top) noexcept {
        const unsigned place = (width - 1) & 63U;
        const std::uint64_t bit = std::uint64_t{1} << place;
        value = top ? value | bit : value & ~bit;
        mask &= ~bit;
        if (mask >> (place & 32U) == 0) flags = Internals::WithoutX(flags);
    }
    /// One bit wider, the new bit set as set_bit() does it.
    void Widen(bool top) noexcept {
        ++width;
        SetTop(top);
    }
};

/// What a division comes to: X, or a number that is first put into `width` bits and then assigned to the result.
struct Quotient {
    bool is_x;
    unsigned number;
    unsigned width;
};

struct Operand;

/// The signed operators' way to the fields, and the wide half of every signed operator.
struct SignedInternals {
    using Word = std::uint32_t;
    using DoubleWord = std::uint64_t;

    static_assert(sizeof(KVAL_SINTEGER) == sizeof(KVAL_UINTEGER), "a signed value adds nothing to the object");

    // ---- signs and extension ----

    /// The value bit at width - 1, X or not.
    static bool Negative(const KVAL_SINTEGER& v) noexcept { return Internals::TopBit(v); }
    /// A bit's place in its unit of some words.
    template <typename Unit>
    static unsigned Place(unsigned bit) noexcept {
        return bit % (8 * static_cast<unsigned>(sizeof(Unit)));
    }
    template <typename Unit>
    static bool Negative(Unit value, unsigned width) noexcept {
        return (value >> Place<Unit>(width - 1) & 1U) != 0;
    }
    static const KVAL_UINTEGER& Unsigned(const KVAL_SINTEGER& v) noexcept { return v; }
    static bool Wide(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) noexcept { return !Internals::Compact(a, b); }
    static unsigned CommonWidth(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) noexcept {
        return Internals::Wider(a, b).bitwidth();
    }
    /// An operand of up to 64 bits at such a common width; one that has this width already is read as it is.
    __attribute__((always_inline)) static Register Extended(const KVAL_UINTEGER& v, unsigned width,
                                                            bool negative) noexcept {
        const Register same = {width, Internals::LowPair(v), Internals::LowPairMask(v), Internals::Flags(v)};
        if (v.bitwidth() == width) return same;
        const DoubleWord ones = negative ? ~DoubleWord{0} << (v.bitwidth() & 63U) : 0;
        return Register{width, same.value | ones, same.mask, same.flags}.Trimmed();
    }
    __attribute__((always_inline)) static Register Extended(const KVAL_SINTEGER& v, unsigned width) noexcept {
        return Extended(v, width, Negative(v));
    }
    __attribute__((always_inline)) static Register Extended(const KVAL_UINTEGER& v, unsigned width) noexcept {
        return Extended(v, width, false);
    }

    // ---- the unsigned sum and difference of two equally wide operands, which are stored in units of some words ----

    template <typename Unit>
    __attribute__((always_inline)) static Register UnsignedSum(const Register& a, const Register& b) noexcept {
        const DoubleWord sum = a.value + b.value;
        const bool carry = sizeof(Unit) < sizeof sum ? sum >> 32 != 0 : sum < a.value;
        const bool reached = (sum >> 1 >> ((a.width - 1) & 63U) & 1U) != 0;
        return Register{a.width + static_cast<unsigned>(reached || carry), sum, b.mask, b.flags}.Trimmed();
    }
    __attribute__((always_inline)) static Register UnsignedDifference(const Register& a, const Register& b) noexcept {
        return Register{a.width, a.value - b.value, a.mask, a.flags}.Trimmed();
    }

    /// Whether a sum reads right by its sign alone. Where it does not: operands of equal signs overflowed into the bit
    /// above; with unequal signs, the larger magnitude gives the sign.
    static bool SignIsRight(bool a_negative, bool b_negative, bool negative) noexcept {
        return a_negative == b_negative ? negative == a_negative : !negative;
    }

    // ---- signed assignment ----

    /// The bits that a compact target of `width` bits gets from the low word of a source of `source_width` bits.
    static FourState<Word> Assigned(FourState<Word> low, unsigned source_width, bool negative,
                                    unsigned width) noexcept {
        // Deliberate: the ones start at the source's width modulo 32, even where the source has more words than one.
        if (negative && source_width % 32U != 0) low.value |= OnesFrom(source_width);
        // A source that is not negative never gives a negative target.
        const Word sign = 1U << ((width - 1) & 31U);
        if (!negative && (low.value & sign) != 0) low = {low.value & ~sign, low.mask & ~sign};
        const Word top = Internals::TopMask(width);
        return {low.value & top, low.mask & top};
    }
    /// The bits that a target of 33 to 64 bits gets from the low 64 of the source.
    __attribute__((always_inline)) static FourState<DoubleWord> AssignedPair(FourState<DoubleWord> low,
                                                                             unsigned source_width, bool negative,
                                                                             unsigned width) noexcept {
        const DoubleWord sign = DoubleWord{1} << ((width - 1) & 63U);
        if (!negative) {
            if ((low.value & sign) != 0) low = {low.value & ~sign, low.mask & ~sign};
        } else if (source_width % 32U == 0) {
            if (source_width == 32) low.value |= ~DoubleWord{0} << 32;
        } else if (source_width < 32) {
            // Deliberate: unknown bits in the word that is filled up with ones are dropped.
            low = {low.value | ~DoubleWord{0} << source_width, 0};
        } else {
            // Deliberate: the ones start where the source's width says, even where the source has more words.
            low.value |= DoubleWord{OnesFrom(source_width)} << 32;
            if (source_width < 64) low.mask &= 0xFFFFFFFFU;
        }
        return Internals::PairTrimmed(low, width);
    }
    /// As assigned to a value of `width` bits.
    __attribute__((always_inline)) static Register Assigned(Register r, unsigned width) noexcept {
        if (width > 32) {
            const FourState<DoubleWord> bits = AssignedPair({r.value, r.mask}, r.width, r.Negative(), width);
            r.value = bits.value;
            r.mask = bits.mask;
        } else {
            const FourState<Word> low = {static_cast<Word>(r.value), static_cast<Word>(r.mask)};
            const FourState<Word> bits = Assigned(low, r.width, r.Negative(), width);
            r.value = bits.value;
            r.mask = bits.mask;
        }
        r.width = width;
        return r;
    }
    /// The same from a value of the same width.
    static FourState<DoubleWord> SettledPair(FourState<DoubleWord> bits, bool negative, unsigned width) noexcept {
        if (negative && width != 64) bits.mask &= 0xFFFFFFFFU;
        return Internals::PairTrimmed(bits, width);
    }
    /// What assignment from a value of the same width makes of the words that a wide target has got from it.
    /// Deliberate: unknown bits in the top word of a negative value are dropped, unless it is full.
    static void Settle(KVAL_SINTEGER& v) noexcept {
        const std::size_t top = Internals::Size(v) - 1;
        Word* const mask = v.xmask.words + top;
        if (Negative(v) && v.get_top() != 0) {
            if (top % 2 != 0) {
                words::store_pair(mask - 1, mask[-1]);
            } else {
                *mask = 0;
            }
        }
        Internals::TrimWide(v);
    }

    // ---- results ----

    static KVAL_SINTEGER Result(unsigned width, FourState<Word> bits, unsigned flags) noexcept {
        return KVAL_SINTEGER(bits.value, bits.mask, width, flags);
    }
    static KVAL_SINTEGER PairResult(unsigned width, DoubleWord value, DoubleWord mask, unsigned flags) {
        KVAL_SINTEGER result(width, std::size_t{2}, flags);
        Internals::SetPair(result, {value, mask});
        return result;
    }
    /// A wide result of compact operands, which is rare.
    __attribute__((noinline)) static KVAL_SINTEGER GrownResult(unsigned width, DoubleWord value, DoubleWord mask,
                                                               unsigned flags) {
        return PairResult(width, value, mask, flags);
    }
    static KVAL_SINTEGER CompactResult(const Register& r) noexcept {
        return Result(r.width, {static_cast<Word>(r.value), static_cast<Word>(r.mask)}, r.flags);
    }
    static KVAL_SINTEGER Result(const Register& r) {
        return r.width <= 32 ? CompactResult(r) : GrownResult(r.width, r.value, r.mask, r.flags);
    }
    /// The same where most are wide.
    static KVAL_SINTEGER LargeResult(const Register& r) {
        return r.width <= 32 ? CompactResult(r) : PairResult(r.width, r.value, r.mask, r.flags);
    }
    static KVAL_SINTEGER Owner(Planes planes, unsigned width, unsigned flags) noexcept {
        return KVAL_SINTEGER(planes, Internals::WideSize(width), width, flags);
    }
    /// A wide value shifted right by less than its width. No bit needs to be filled in: the sign comes down to the new
    /// top bit.
    static KVAL_SINTEGER ShrWider(const KVAL_SINTEGER& a, unsigned count) {
        const unsigned width = a.width - count;
        const unsigned flags = Internals::Flags(a);
        if (width > 64) return Owner(Internals::ShrLarge(a, count, width), width, flags);
        const FourState<DoubleWord> bits = Internals::UpperBits(a, count, width);
        return LargeResult({width, bits.value, bits.mask, flags});
    }
    /// The magnitude of a value of up to 64 bits, as a number of its own width.
    static DoubleWord Magnitude(const KVAL_SINTEGER& v) noexcept {
        const DoubleWord low = Internals::LowPair(v);
        return Negative(v) ? (0 - low) & ~DoubleWord{0} >> (-v.bitwidth() & 63U) : low;
    }
    /// An operand of up to 64 bits, extended to all of them.
    static DoubleWord Number(const KVAL_SINTEGER& v) noexcept {
        return Internals::LowPair(v) | (0 - static_cast<DoubleWord>(Negative(v))) << ((v.bitwidth() - 1) & 63U);
    }
    static DoubleWord Number(const KVAL_UINTEGER& v) noexcept { return Internals::LowPair(v); }
    /// A product that is not wider than 64 bits; X as the base's product gives it.
    template <typename Right>
    static Register Product(const KVAL_SINTEGER& a, const Right& b) noexcept {
        const unsigned width = a.width + b.bitwidth();
        const DoubleWord used = ~DoubleWord{0} >> (-width & 63U);
        if (a.is_x() || b.is_x()) return {width, 0, used, KVAL_UINTEGER::kX};
        return {width, Number(a) * Number(b) & used, 0, 0};
    }

    /// An operand of up to 64 bits, extended to 128.
    static words::QuadWord ExtendedPair(const KVAL_SINTEGER& v) noexcept {
        const DoubleWord sign = 0 - static_cast<DoubleWord>(Negative(v));
        return static_cast<words::QuadWord>(sign) << 64 | Number(v);
    }
    static words::QuadWord ExtendedPair(const KVAL_UINTEGER& v) noexcept { return Internals::LowPair(v); }
    /// An operand of up to 128 bits, extended to all of them, and the ones that say whether it is negative.
    struct Quad {
        explicit Quad(const KVAL_SINTEGER& v) noexcept
            : sign(words::QuadWord{0} - static_cast<words::QuadWord>(Negative(v))),
              number(Internals::LowQuad(v) | sign << ((v.bitwidth() - 1) & 127U)) {}
        explicit Quad(const KVAL_UINTEGER& v) noexcept : sign(0), number(Internals::LowQuad(v)) {}

        words::QuadWord sign;
        words::QuadWord number;
    };
    /// A product of operands of up to 128 bits, without flag X. Each negative operand counts 2^128 too much, which
    /// multiplies the other one.
    template <typename Right>
    static Planes MulShort(const KVAL_SINTEGER& l, const Right& r) {
        const unsigned width = l.width + r.bitwidth();
        // The product of two pairs has no more than 128 bits.
        if (Internals::UpToPairs(l, r)) return Internals::NumberShort(ExtendedPair(l) * ExtendedPair(r), 0, width);
        const Quad a(l);
        const Quad b(r);
        const words::QuadPair product = words::multiply_quads(a.number, b.number);
        const words::QuadWord excess = (a.sign & b.number) + (b.sign & a.number);
        return Internals::NumberShort(product.low, product.high - excess, width);
    }

    // ---- sums and differences by the rules of each operator, of operands of up to 64 bits ----

    template <typename Unit>
    static Register Sum(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
    template <typename Unit>
    static Register Sum(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
    template <typename Unit>
    static Register Difference(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
    template <typename Unit>
    static Register Difference(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
    template <typename Unit>
    static Register Difference(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;

    // ---- in place ----

    /// Whether nothing of a negative value is left after a shift in place. Deliberate: compared as signed numbers, so
    /// that counts of 2^31 and above do not count.
    static bool ShiftedOut(unsigned width, unsigned count) noexcept {
        return static_cast<int>(count) >= static_cast<int>(width);
    }
    /// How many words of a wide negative value become all ones in a shift in place, from the top down. Deliberate, and
    /// not to be fixed: that is more than was shifted out.
    static unsigned FilledWords(unsigned top, unsigned count) noexcept { return (top + count + 31U) / 32U; }
    /// Where the ones of a negative value shifted in place begin. Deliberate: exact only where the width is no multiple
    /// of 32; where it is one, the ones are shifted to the right place once, and that pattern is taken for the place.
    static unsigned FillStart(unsigned top, unsigned count) noexcept {
        return (top != 0 ? top - count : OnesFrom(32U - count)) & 31U;
    }

    /// In place, of a negative pair.
    static KVAL_SINTEGER& ShrAssignPair(KVAL_SINTEGER& v, unsigned count) noexcept {
        FourState<DoubleWord> bits = Internals::PairOf(v);
        if (ShiftedOut(v.width, count)) {
            bits.value = ~DoubleWord{0};
        } else {
            bits = Internals::ShiftedRight(bits, count, v.width);
            const unsigned whole = FilledWords(v.get_top(), count);
            bits.value |= ~DoubleWord{0} << (whole < 2 ? 32 - 32 * whole + FillStart(v.get_top(), count) : 0);
        }
        Internals::ChangedPair(v, bits);
        return v;
    }

    // ---- division ----

    static unsigned MaximumNegative(unsigned width) noexcept { return 1U << ((width - 1) & 31U); }
    static unsigned MaximumPositive(unsigned width) noexcept {
        // Deliberate: the shift is taken modulo 32, so that a width of 1 gives all ones.
        return width > 32 ? 0xFFFFFFFFU : 0xFFFFFFFFU >> ((33U - width) & 31U);
    }
    /// A remainder's magnitude against the range of its width, on the side of the dividend's sign.
    static bool OutOfRange(const KVAL_SINTEGER& a, unsigned magnitude, unsigned width) noexcept {
        return magnitude > (a.positive() ? MaximumPositive(width) : MaximumNegative(width));
    }
    /// The bits that a compact result stores of a quotient, and the number that they read as.
    static Word StoredBits(const Quotient& quotient, unsigned width) noexcept {
        const Word low = quotient.number & Internals::TopMask(quotient.width);
        const bool negative = (low & MaximumNegative(quotient.width)) != 0;
        return Assigned({low, 0}, quotient.width, negative, width).value;
    }
    static int StoredNumber(const Quotient& quotient, unsigned width) noexcept {
        const Word bits = StoredBits(quotient, width);
        const bool negative = (bits & MaximumNegative(width)) != 0;
        return static_cast<int>(negative ? bits | OnesFrom(width - 1) : bits);
    }
    static Quotient X() noexcept { return {true, 0, 0}; }
    static Quotient SignedQuotient(bool negative, unsigned magnitude, unsigned width) noexcept {
        return {false, negative ? 0U - magnitude : magnitude, width};
    }
    static bool QuotientOverflows(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
    static Quotient Divide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    static Quotient Divide(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
    static Quotient Divide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    static Quotient Remainder(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    static Quotient Remainder(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
    static Quotient Remainder(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    static Quotient EuclideanQuotient(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    static Quotient EuclideanQuotient(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    static Quotient EuclideanRemainder(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    static Quotient EuclideanRemainder(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    static KVAL_SINTEGER Result(const Quotient& quotient, unsigned width) {
        if (width > 32) return Owner(DivisionWide(quotient, width), width, quotient.is_x ? Internals::WithX(0) : 0);
        if (quotient.is_x) return KVAL_SINTEGER(Internals::AllXResult(width, 0, 0));
        return Result(width, {StoredBits(quotient, width), 0}, 0);
    }

    // ---- what the operators below leave aside, wide values above all: mostly not inline, but compiled into the
    //      program, where up to 64 bits and short values are done; the rest is in the library ----

    /// Whether both are wide, of one width, and not longer than a short value.
    static bool Short(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
        return a.width == b.width && a.width - 33U < 224U;
    }
    __attribute__((noinline)) static KVAL_SINTEGER AddShort(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
        const std::size_t size = Internals::Size(a);
        KVAL_SINTEGER sum(a.width, Internals::SumSize(a.width + 1), Internals::Flags(b));
        words::copy_limbs(sum.xmask.words, b.xmask.words, size);
        sum.width = Internals::FinishedSum(
            Internals::PlanesOf(sum), a.width,
            words::chain_limbs(sum.uvalue.words, a.uvalue.words, b.uvalue.words, size, false, words::AddStep()));
        if (!SignIsRight(Negative(a), Negative(b), Negative(sum))) RepairWideSum(sum, a, b);
        return sum;
    }
    __attribute__((noinline)) static KVAL_SINTEGER SubShort(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
        const std::size_t size = Internals::Size(a);
        KVAL_SINTEGER difference(a.width, Internals::SumSize(a.width), Internals::Flags(a));
        words::copy_limbs(difference.xmask.words, a.xmask.words, size);
        words::chain_limbs(difference.uvalue.words, a.uvalue.words, b.uvalue.words, size, false, words::SubtractStep());
        Settle(difference);
        if (Overflowed(a, b, difference)) WidenWideDifference(difference, Negative(a));
        return difference;
    }
    static bool Overflowed(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b, const KVAL_SINTEGER& difference) noexcept {
        return Negative(a) != Negative(b) && Negative(difference) != Negative(a);
    }
    __attribute__((noinline)) static KVAL_SINTEGER AddLarge(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
        if (Internals::UpToPairs(a, b)) {
            const Register sum = Sum<DoubleWord>(a, b);
            if (sum.width <= 64) return LargeResult(sum);
        }
        return Short(a, b) ? AddShort(a, b) : AddWide(a, b);
    }
    __attribute__((noinline)) static KVAL_SINTEGER AddLarge(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
        if (Internals::UpToPairs(a, b)) {
            const Register sum = Sum<DoubleWord>(a, b);
            if (sum.width <= 64) return LargeResult(sum);
        }
        return AddWide(a, b);
    }
    __attribute__((noinline)) static KVAL_SINTEGER SubLarge(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
        if (Internals::UpToPairs(a, b)) {
            const Register difference = Difference<DoubleWord>(a, b);
            if (difference.width <= 64) return LargeResult(difference);
        }
        return Short(a, b) ? SubShort(a, b) : SubWide(a, b);
    }
    __attribute__((noinline)) static KVAL_SINTEGER SubLarge(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
        return Internals::UpToPairs(a, b) ? LargeResult(Difference<DoubleWord>(a, b)) : SubWide(a, b);
    }
    __attribute__((noinline)) static KVAL_SINTEGER SubLarge(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
        if (Internals::UpToPairs(a, b)) {
            const Register difference = Difference<DoubleWord>(a, b);
            if (difference.width <= 64) return LargeResult(difference);
        }
        return SubWide(a, b);
    }
    /// A product that is wider than 64 bits.
    template <typename Right>
    __attribute__((noinline)) static KVAL_SINTEGER MulLarge(const KVAL_SINTEGER& a, const Right& b) {
        const unsigned width = a.width + b.bitwidth();
        if (a.width > 128 || b.bitwidth() > 128) return MulWide(a, b);
        if (a.is_x() || b.is_x()) return Owner(Internals::AllXShort(width), width, KVAL_UINTEGER::kX);
        return Owner(MulShort(a, b), width, 0);
    }
    __attribute__((noinline)) static KVAL_SINTEGER& AssignLarge(KVAL_SINTEGER& v, const KVAL_SINTEGER& other) noexcept {
        v.CopyFlags(other);
        v.DeleteString();
        if (Internals::IsPair(v)) {
            Internals::SetPair(v, AssignedPair(Internals::LowPairs(other), other.width, Negative(other), v.width));
        } else if (Short(v, other)) {
            Internals::CopyShort(Internals::PlanesOf(v), other);
            Settle(v);
        } else {
            return v.AssignSignedWide(other);
        }
        return v;
    }
    /// Whether two values of one width with these bits are equal. Equal numbers that are negative are so by their value
    /// bits alone: x-masks and flags play no part, and neither do bits above the width. Without a branch on the sign,
    /// which is hard to foretell.
    template <typename Unit>
    __attribute__((always_inline)) static bool Equal(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b, FourState<Unit> x,
                                                     FourState<Unit> y) noexcept {
        const Unit value = x.value ^ y.value;
        if (value << Place<Unit>(-a.width) != 0) return false;
        const Unit others = value | (x.mask ^ y.mask) | (Internals::Flags(a) ^ Internals::Flags(b));
        return (static_cast<unsigned>(Negative(x.value, a.width)) | static_cast<unsigned>(others == 0)) != 0;
    }
    /// Whether one of two values of one width with these value bits is less than the other, likewise. Negative patterns
    /// order as unsigned numbers do; bits above the width count.
    template <typename Unit>
    __attribute__((always_inline)) static bool Less(Unit x, Unit y, unsigned width) noexcept {
        const unsigned less = static_cast<unsigned>(x < y);
        const unsigned negative = static_cast<unsigned>(Negative(x, width));
        return (negative == static_cast<unsigned>(Negative(y, width)) ? less : negative) != 0;
    }
    /// The same of more than 64 bits. The top words tell, or are equal, and with them the signs.
    static bool LessLarge(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
        const std::size_t top = Internals::Size(a) - 2;
        const DoubleWord x = words::load_pair(a.uvalue.words + top);
        const DoubleWord y = words::load_pair(b.uvalue.words + top);
        return x == y ? Internals::CompareLarge(a, b) < 0 : Less(x, y, 33U + (a.width - 1) % 32U);
    }
    /// Whether they are equal, of different widths.
    __attribute__((noinline)) static bool EqualExtended(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
        const bool negative = Negative(a);
        if (negative != Negative(b)) return false;
        if (!negative) return Unsigned(a) == Unsigned(b);
        return Internals::UpToPairs(a, b) ? Number(a) == Number(b) : EqualNegativeWide(a, b);
    }
    /// Whether one is less than the other, of different widths.
    __attribute__((noinline)) static bool LessExtended(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
        const bool negative = Negative(a);
        if (negative != Negative(b)) return negative;
        if (!negative) return Unsigned(a) < Unsigned(b);
        if (!Internals::UpToPairs(a, b)) return LessNegativeWide(a, b);
        const unsigned width = CommonWidth(a, b);
        return Extended(a, width).value < Extended(b, width).value;
    }
    /// Of one width, of more than 64 bits.
    __attribute__((noinline)) static bool EqualLarge(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
        const bool negative = Negative(a);
        if (negative != Negative(b)) return false;
        if (!negative) return Internals::IdenticalLarge(a, b);
        const std::size_t top = Internals::Size(a) - 1;
        return words::same(a.uvalue.words, b.uvalue.words, top) &&
               ((a.uvalue.words[top] ^ b.uvalue.words[top]) & Internals::TopMask(a.width)) == 0;
    }
    template <typename Right>
    static KVAL_SINTEGER Mul(const KVAL_SINTEGER& a, const Right& b) {
        const unsigned width = a.width + b.bitwidth();
        if (!Wide(a, b) && width <= 32) return CompactResult(Product(a, b));
        return Internals::UpToPairs(a, b) && width <= 64 ? LargeResult(Product(a, b)) : MulLarge(a, b);
    }

    /// A right shift by the width or more.
    __attribute__((noinline)) static KVAL_SINTEGER ShrOut(const KVAL_SINTEGER& a, unsigned count) {
        const int rest = static_cast<int>(a.width - count);
        if (rest <= 0 && Negative(a)) return Result(1, {1, 0}, 0);
        // Deliberate: a compact value is shifted modulo 32 and not trimmed, and has no flags. Of a wide one the flags
        // alone are left.
        const Word bits = a.IsCompact() ? a.uvalue.word >> (count & 31U) : 0;
        const unsigned flags = a.IsCompact() ? 0 : Internals::Flags(a);
        const unsigned width = rest < 1 ? 1 : static_cast<unsigned>(rest);
        if (width <= 32) return Result(width, {bits, 0}, flags);
        return Owner(Internals::ConstructedWide(bits, width), width, flags);
    }

    static KVAL_SINTEGER Room(unsigned width, unsigned flags);
    static void WidenInPlace(KVAL_SINTEGER& v);
    static void AssignInPlace(KVAL_SINTEGER& v, unsigned width);
    static KVAL_SINTEGER WideDifference(const Operand& a, const Operand& b);
    static KVAL_SINTEGER SumWithMagnitude(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static void RepairWideSum(KVAL_SINTEGER& sum, const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static void WidenWideDifference(KVAL_SINTEGER& difference, bool negative);
    KVAL_API static KVAL_SINTEGER AddWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static KVAL_SINTEGER AddWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    KVAL_API static KVAL_SINTEGER SubWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static KVAL_SINTEGER SubWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    KVAL_API static KVAL_SINTEGER SubWide(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
    static KVAL_SINTEGER ProductWide(const KVAL_UINTEGER& a, bool a_negative, const KVAL_UINTEGER& b, bool b_negative);
    KVAL_API static KVAL_SINTEGER MulWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static KVAL_SINTEGER MulWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    KVAL_API static Planes DivisionWide(Quotient quotient, unsigned width);
    /// Equality and order of two negative values of different widths, one of more than 64 bits.
    KVAL_API static bool EqualNegativeWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
    KVAL_API static bool LessNegativeWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
    [[noreturn]] KVAL_API static void ThrowDivideUnsignedWidth();
    [[noreturn]] KVAL_API static void ThrowDivideSignedWidth();
    [[noreturn]] KVAL_API static void ThrowRemainderWidth();
};

}  // namespace detail
}  // namespace kval

// ---- construction, assignment, width ----

inline KVAL_SINTEGER::KVAL_SINTEGER(int value, unsigned bit_width)
    : KVAL_UINTEGER(static_cast<unsigned>(value), bit_width) {
    if (value >= 0 || IsCompact()) return;
    if (kval::detail::Internals::IsPair(*this)) {
        // Deliberate: the top word is not trimmed, so that its bits above the width are ones too.
        kval::words::store_pair(uvalue.words, static_cast<std::uint64_t>(value));
    } else {
        FillOnesWide();
    }
}

inline KVAL_SINTEGER::KVAL_SINTEGER(std::uint32_t value, std::uint32_t mask, unsigned bit_width,
                                    unsigned state) noexcept
    : KVAL_UINTEGER(value, mask, bit_width, state) {}

inline KVAL_SINTEGER::KVAL_SINTEGER(unsigned bit_width, std::size_t words, unsigned state)
    : KVAL_UINTEGER(bit_width, words, state) {}

inline KVAL_SINTEGER::KVAL_SINTEGER(kval::detail::Planes planes, std::size_t words, unsigned bit_width,
                                    unsigned state) noexcept
    : KVAL_UINTEGER(planes, words, bit_width, state) {}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator=(const KVAL_UINTEGER& other) {
    using kval::detail::Internals;
    if (this == &other) return *this;
    // Deliberate: not trimmed, so that bits of a wider source stay above the width.
    if (Internals::IsPair(*this)) {
        Internals::SetPair(*this, Internals::LowPairs(other));
        CopyFlags(other);
        DeleteString();
        return *this;
    }
    if (!IsCompact()) return AssignUnsignedWide(other);
    if (width != other.width && width == 0) {
        AdoptCopy(other);
        return *this;
    }
    uvalue.word = other.uint();
    xmask.word = other.LowMask();
    CopyFlags(other);
    DeleteString();
    return *this;
}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator=(const KVAL_SINTEGER& other) {
    using kval::detail::Internals;
    using kval::detail::SignedInternals;
    if (this == &other) return *this;
    if (Internals::IsPair(*this) && width == other.width) {
        Internals::SetPair(
            *this, SignedInternals::SettledPair(Internals::PairOf(other), SignedInternals::Negative(other), width));
        CopyFlags(other);
        DeleteString();
        return *this;
    }
    if (!IsCompact()) return SignedInternals::AssignLarge(*this, other);
    if (width != other.width && width == 0) {
        AdoptCopy(other);
        return *this;
    }
    const kval::detail::FourState<std::uint32_t> bits =
        SignedInternals::Assigned(Internals::LowWord(other), other.width, SignedInternals::Negative(other), width);
    uvalue.word = bits.value;
    xmask.word = bits.mask;
    CopyFlags(other);
    DeleteString();
    return *this;
}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator=(KVAL_UINTEGER&& other) noexcept {
    // The base's move is this one where it takes over storage; where it copies, it trims, and this one must not.
    if (width == 0 || (width == other.width && !IsCompact())) {
        KVAL_UINTEGER::operator=(static_cast<KVAL_UINTEGER&&>(other));
        return *this;
    }
    return *this = static_cast<const KVAL_UINTEGER&>(other);
}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator=(KVAL_SINTEGER&& other) noexcept {
    if (width == 0) {
        KVAL_UINTEGER::operator=(static_cast<KVAL_UINTEGER&&>(other));
        return *this;
    }
    if (width != other.width || IsCompact() || this == &other) return *this = static_cast<const KVAL_SINTEGER&>(other);
    // What copy assignment gives, on exchanged arrays.
    kval::detail::Internals::Swap(*this, other);
    kval::detail::SignedInternals::Settle(*this);
    DeleteString();
    other.DeleteString();
    return *this;
}

inline void swap(KVAL_SINTEGER& a, KVAL_SINTEGER& b) noexcept { kval::detail::Internals::Swap(a, b); }

inline KVAL_SINTEGER& KVAL_SINTEGER::bitwidth(unsigned new_width) {
    if (!kval::detail::SignedInternals::Negative(*this)) {
        KVAL_UINTEGER::bitwidth(new_width);
        return *this;
    }
    if (new_width == width && width != 0) return *this;
    new_width = AtLeastOne(new_width);
    if (!IsCompact() || !KVAL_UINTEGER::IsCompact(static_cast<int>(new_width))) {
        ResizeNegativeWide(new_width);
        return *this;
    }
    if (get_top() != 0) uvalue.word |= kval::detail::OnesFrom(width);
    width = new_width;
    Changed();
    return *this;
}

// ---- negation and readings ----

inline KVAL_SINTEGER& KVAL_SINTEGER::complement_me() noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this)) {
        Internals::ChangedPairValue(*this, 0 - Internals::LowPair(*this));
        return *this;
    }
    if (!IsCompact()) return ComplementWide();
    uvalue.word = 0U - uvalue.word;
    Changed();
    return *this;
}

inline KVAL_SINTEGER KVAL_SINTEGER::twos_complement() const {
    KVAL_SINTEGER copy(*this);
    copy.complement_me();
    return copy;
}

inline int KVAL_SINTEGER::convert_to_signed_representation() const noexcept {
    const unsigned place = (width - 1) & 31U;
    // Deliberate: a sign alone in its word leaves the low word as it is.
    const bool alone = place == 0 && !IsCompact();
    const bool fill = kval::detail::SignedInternals::Negative(*this) && !alone;
    return static_cast<int>(fill ? uint() | kval::detail::OnesFrom(place) : uint());
}

inline unsigned KVAL_SINTEGER::SignExtendedChunk(int index) const noexcept {
    const unsigned word = IsCompact() ? uvalue.word : get_uvalue_at(index);
    return index == get_size() - 1 && get_top() != 0 ? word | kval::detail::OnesFrom(get_top()) : word;
}

inline unsigned KVAL_SINTEGER::maximum_negative() const noexcept {
    return kval::detail::SignedInternals::MaximumNegative(width);
}

inline unsigned KVAL_SINTEGER::maximum_positive() const noexcept {
    return kval::detail::SignedInternals::MaximumPositive(width);
}

// ---- addition and subtraction ----

namespace kval {
namespace detail {

template <typename Unit>
__attribute__((always_inline)) inline Register SignedInternals::Sum(const KVAL_SINTEGER& a,
                                                                    const KVAL_SINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    Register sum = UnsignedSum<Unit>(Extended(a, width), Extended(b, width));
    const bool a_negative = Negative(a);
    const bool negative = sum.Negative();
    if (SignIsRight(a_negative, Negative(b), negative)) return sum;
    if (a_negative == Negative(b)) {
        sum.Widen(!negative);
    } else if (Magnitude(a_negative ? b : a) >= Magnitude(a_negative ? a : b)) {
        sum.SetTop(false);  // a bit was carried out
    }
    return sum;
}

template <typename Unit>
__attribute__((always_inline)) inline Register SignedInternals::Sum(const KVAL_SINTEGER& a,
                                                                    const KVAL_UINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    Register sum = UnsignedSum<Unit>(Extended(a, width), Extended(b, width));
    if (Negative(a)) {
        // b minus the magnitude of a, which wraps at the common width.
        sum.width = width;
        sum = sum.Trimmed();
    }
    sum = Assigned(sum, width + 1);
    if (!Negative(a) && sum.Negative()) {
        // Deliberate: a sign is cleared where no operand has one, but a width of whole words keeps it and grows by a
        // zero bit.
        sum.width += static_cast<unsigned>(sum.width % 32U == 0);
        sum.SetTop(false);
    }
    return sum;
}

template <typename Unit>
__attribute__((always_inline)) inline Register SignedInternals::Difference(const KVAL_SINTEGER& a,
                                                                           const KVAL_SINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    Register difference = UnsignedDifference(Extended(a, width), Extended(b, width));
    if (sizeof(Unit) > sizeof(Word)) difference = Assigned(difference, width);
    const bool a_negative = Negative(a);
    if (a_negative != Negative(b) && difference.Negative() != a_negative) {
        // Overflow: the sign moves into one bit more, which set_bit() stores only where it is a 1.
        difference.width = width + 1;
        if (a_negative) difference.SetTop(true);
    }
    return difference;
}

template <typename Unit>
__attribute__((always_inline)) inline Register SignedInternals::Difference(const KVAL_SINTEGER& a,
                                                                           const KVAL_UINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    return UnsignedDifference(Extended(a, width), Extended(b, width));
}

template <typename Unit>
__attribute__((always_inline)) inline Register SignedInternals::Difference(const KVAL_UINTEGER& a,
                                                                           const KVAL_SINTEGER& b) noexcept {
    const unsigned width = CommonWidth(a, b);
    const Register x = Extended(a, width);
    const Register y = Extended(b, width);
    // Either way the width comes from one operand: deliberate, and bits beyond it are lost.
    const bool less = Internals::LowPair(a) < Internals::LowPair(b);
    unsigned result_width = less ? b.bitwidth() : a.bitwidth();
    Register result = UnsignedDifference(x, y);
    if (Negative(b)) {
        result_width = a.bitwidth() + 1;
        result = UnsignedSum<Unit>(x, y.Negated());
    }
    if (result.width <= 64) result = Assigned(result, result_width);
    return result;
}

}  // namespace detail
}  // namespace kval

inline KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::AddLarge(a, b);
    return SignedInternals::Result(SignedInternals::Sum<std::uint32_t>(a, b));
}

inline KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::AddLarge(a, b);
    return SignedInternals::Result(SignedInternals::Sum<std::uint32_t>(a, b));
}

inline KVAL_SINTEGER operator+(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return b + a; }

inline KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::SubLarge(a, b);
    return SignedInternals::Result(SignedInternals::Difference<std::uint32_t>(a, b));
}

inline KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::SubLarge(a, b);
    return SignedInternals::Result(SignedInternals::Difference<std::uint32_t>(a, b));
}

inline KVAL_SINTEGER operator-(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::SubLarge(a, b);
    return SignedInternals::Result(SignedInternals::Difference<std::uint32_t>(a, b));
}

// ---- multiplication and shifts ----

inline KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    return kval::detail::SignedInternals::Mul(a, b);
}

inline KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    return kval::detail::SignedInternals::Mul(a, b);
}

inline KVAL_SINTEGER operator*(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return b * a; }

inline KVAL_SINTEGER operator>>(const KVAL_SINTEGER& a, unsigned count) {
    using kval::detail::SignedInternals;
    const unsigned width = a.bitwidth() - count;
    // Deliberate: of a compact value neither X bits nor flags come along.
    if (a.IsCompact() && width - 1U < 32U) return SignedInternals::Result(width, {a.uint() >> (count & 31U), 0}, 0);
    if (!a.IsCompact() && count < a.bitwidth()) return SignedInternals::ShrWider(a, count);
    return SignedInternals::ShrOut(a, count);
}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator>>=(unsigned count) noexcept {
    using kval::detail::Internals;
    using kval::detail::SignedInternals;
    if (!SignedInternals::Negative(*this)) {
        KVAL_UINTEGER::operator>>=(count);
        return *this;
    }
    if (Internals::IsPair(*this)) return SignedInternals::ShrAssignPair(*this, count);
    if (!IsCompact()) return ShrAssignNegativeWide(count);
    if (SignedInternals::ShiftedOut(width, count)) {
        uvalue.word = 0xFFFFFFFFU;
    } else {
        uvalue.word =
            uvalue.word >> (count & 31U) | kval::detail::OnesFrom(SignedInternals::FillStart(get_top(), count));
        xmask.word >>= count & 31U;
    }
    Changed();
    return *this;
}

// ---- division ----
//
// Each function tests in this order: a zero divisor gives X, a wide operand throws, a result out of range gives X. The
// texts that are thrown, and the bounds that some tests compare with, are deliberate.

namespace kval {
namespace detail {

/// Whether the most negative number is divided by -1.
inline bool SignedInternals::QuotientOverflows(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return static_cast<int>(Number(b)) == -1 && a.negative() && a.absolute_value() >= a.maximum_negative();
}

inline Quotient SignedInternals::Divide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return X();
    if (Wide(a, b)) ThrowDivideUnsignedWidth();
    if (QuotientOverflows(a, b)) return X();
    return {false, static_cast<unsigned>(static_cast<int>(Number(a)) / static_cast<int>(Number(b))), 32};
}

inline Quotient SignedInternals::Divide(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return X();
    if (Wide(a, b)) ThrowDivideSignedWidth();
    const unsigned magnitude = a.uint() / b.absolute_value();
    // The magnitude alone decides, even where the quotient will be negative.
    if (magnitude > MaximumPositive(a.bitwidth())) return X();
    return SignedQuotient(b.negative(), magnitude, a.bitwidth());
}

inline Quotient SignedInternals::Divide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (b.uint() == 0) return X();
    if (Wide(a, b)) ThrowDivideSignedWidth();
    return SignedQuotient(a.negative(), a.absolute_value() / b.uint(), a.bitwidth());
}

inline Quotient SignedInternals::Remainder(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return X();
    if (Wide(a, b)) ThrowRemainderWidth();
    if (QuotientOverflows(a, b)) return X();
    // Deliberate: the range is tested with the divisor's bits, not with its magnitude.
    if (OutOfRange(a, a.absolute_value() % b.uint(), b.bitwidth())) return X();
    return {false, static_cast<unsigned>(static_cast<int>(Number(a)) % static_cast<int>(Number(b))), b.bitwidth()};
}

inline Quotient SignedInternals::Remainder(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    if (Divide(a, b).is_x) return X();
    return {false, a.uint() % b.absolute_value(), 32};
}

inline Quotient SignedInternals::Remainder(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (Divide(a, b).is_x) return X();
    const unsigned magnitude = a.absolute_value() % b.uint();
    if (OutOfRange(a, magnitude, b.bitwidth())) return X();
    return SignedQuotient(a.negative(), magnitude, b.bitwidth());
}

inline Quotient SignedInternals::EuclideanQuotient(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    const Quotient remainder = Remainder(a, b);
    if (remainder.is_x) return X();
    if (StoredNumber(remainder, b.bitwidth()) >= 0) return Divide(a, b);
    const unsigned magnitude = a.absolute_value() / b.absolute_value();
    const bool negative = a.positive() != b.positive();
    if (negative && b.positive() && a.maximum_negative() <= magnitude) return X();
    if (!negative && b.negative() && a.maximum_positive() <= magnitude) return X();
    const unsigned truncated = negative ? 0U - magnitude : magnitude;
    return {false, b.positive() ? truncated - 1 : truncated + 1, a.bitwidth()};
}

inline Quotient SignedInternals::EuclideanQuotient(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (b.uint() == 0) return X();
    if (a.positive() || a.absolute_value() % b.uint() == 0) return Divide(a, b);
    // Deliberate: wide operands pass here, and are divided by their low words.
    const unsigned magnitude = a.absolute_value() / b.uint();
    if (a.maximum_negative() <= magnitude) return X();
    return SignedQuotient(true, magnitude + 1, a.bitwidth());
}

inline Quotient SignedInternals::EuclideanRemainder(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (EuclideanQuotient(a, b).is_x) return X();
    const Quotient remainder = Remainder(a, b);
    const int number = StoredNumber(remainder, b.bitwidth());
    if (number >= 0) return remainder;
    const unsigned sum = static_cast<unsigned>(number) + b.absolute_value();
    if (sum > b.maximum_positive()) return X();
    return {false, sum, b.bitwidth()};
}

inline Quotient SignedInternals::EuclideanRemainder(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    if (EuclideanQuotient(a, b).is_x) return X();
    const unsigned rest = a.absolute_value() % b.uint();
    if (rest == 0 || a.positive()) return Remainder(a, b);
    const unsigned sum = b.uint() - rest;
    if (sum > MaximumPositive(b.bitwidth())) return X();
    return {false, sum, b.bitwidth()};
}

}  // namespace detail
}  // namespace kval

inline KVAL_SINTEGER operator/(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::Divide(a, b), a.bitwidth());
}

inline KVAL_SINTEGER operator/(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::Divide(a, b), a.bitwidth());
}

inline KVAL_SINTEGER operator/(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::Divide(a, b), a.bitwidth());
}

inline KVAL_SINTEGER operator%(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::Remainder(a, b), b.bitwidth());
}

inline KVAL_SINTEGER operator%(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::Remainder(a, b), b.bitwidth());
}

inline KVAL_SINTEGER operator%(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::Remainder(a, b), b.bitwidth());
}

inline KVAL_SINTEGER posr_div(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::EuclideanQuotient(a, b), a.bitwidth());
}

inline KVAL_SINTEGER posr_div(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::EuclideanQuotient(a, b), a.bitwidth());
}

inline KVAL_SINTEGER posr_mod(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::EuclideanRemainder(a, b), b.bitwidth());
}

inline KVAL_SINTEGER posr_mod(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    return SignedInternals::Result(SignedInternals::EuclideanRemainder(a, b), b.bitwidth());
}

// A dividend that is never negative leaves no negative remainder.
inline KVAL_SINTEGER posr_div(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return a / b; }
inline KVAL_SINTEGER posr_mod(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return a % b; }

// ---- comparison: of one width by the value bits, of different widths or classes by the signs first ----

inline bool operator==(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using kval::detail::Internals;
    using kval::detail::SignedInternals;
    if (a.bitwidth() != b.bitwidth()) return SignedInternals::EqualExtended(a, b);
    if (a.IsCompact()) return SignedInternals::Equal(a, b, Internals::LowWord(a), Internals::LowWord(b));
    if (Internals::IsPair(a)) return SignedInternals::Equal(a, b, Internals::PairOf(a), Internals::PairOf(b));
    return Internals::LowPair(a) == Internals::LowPair(b) && SignedInternals::EqualLarge(a, b);
}

inline bool operator==(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    return !SignedInternals::Negative(a) && SignedInternals::Unsigned(a) == b;
}

inline bool operator==(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b == a; }

inline bool operator<(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using kval::detail::Internals;
    using kval::detail::SignedInternals;
    if (a.bitwidth() != b.bitwidth()) return SignedInternals::LessExtended(a, b);
    if (a.IsCompact()) return SignedInternals::Less(a.uint(), b.uint(), a.bitwidth());
    if (Internals::IsPair(a)) return SignedInternals::Less(Internals::LowPair(a), Internals::LowPair(b), a.bitwidth());
    return SignedInternals::LessLarge(a, b);
}

inline bool operator<(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    return SignedInternals::Negative(a) || SignedInternals::Unsigned(a) < b;
}

inline bool operator<(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    return !SignedInternals::Negative(b) && a < SignedInternals::Unsigned(b);
}

inline bool operator>(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b < a; }
inline bool operator>(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept { return b < a; }
inline bool operator>(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b < a; }
inline bool operator<=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(b < a); }
inline bool operator<=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept { return !(b < a); }
inline bool operator<=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(b < a); }
inline bool operator>=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(a < b); }
inline bool operator>=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept { return !(a < b); }
inline bool operator>=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return !(a < b); }

inline bool operator!=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    return SignedInternals::Unsigned(a) != SignedInternals::Unsigned(b);
}

inline bool operator!=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    return kval::detail::SignedInternals::Unsigned(a) != b;
}

inline bool operator!=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return a != kval::detail::SignedInternals::Unsigned(b);
}

#endif
