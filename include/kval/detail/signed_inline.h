// The inline bodies of the signed value: everything with a compact result; the rest is one call to a ...Wide function.
#ifndef KVAL_DETAIL_SIGNED_INLINE_H
#define KVAL_DETAIL_SIGNED_INLINE_H

namespace kval {
namespace detail {

/// Ones from bit `count` modulo 32 up.
inline std::uint32_t OnesFrom(unsigned count) noexcept { return 0xFFFFFFFFU << (count & 31U); }

/// A sum or difference of compact operands, in registers: up to 34 value bits, since both steps that widen may happen.
struct Register {
    unsigned width;
    std::uint64_t value;
    std::uint32_t mask;
    unsigned flags;

    bool Negative() const noexcept { return (value >> ((width - 1) & 63U) & 1U) != 0; }
    Register Trimmed() const noexcept {
        const std::uint64_t bits = (std::uint64_t{1} << width) - 1;
        return {width, value & bits, mask & static_cast<std::uint32_t>(bits), flags};
    }
    Register Negated() const noexcept { return Register{width, 0 - value, mask, flags}.Trimmed(); }
    /// With the top bit set as set_bit() does it: the bit is known, and flag X goes when its word holds no X mark.
    Register WithTop(bool top) const noexcept {
        const std::uint64_t bit = std::uint64_t{1} << (width - 1);
        const std::uint32_t known = mask & static_cast<std::uint32_t>(~bit);
        const bool x_free = known == 0 || width > 32;
        return {width, top ? value | bit : value & ~bit, known, x_free ? Internals::WithoutX(flags) : flags};
    }
    /// One bit wider, the new bit set as set_bit() does it.
    Register Widened(bool top) const noexcept { return Register{width + 1, value, mask, flags}.WithTop(top); }
};

/// What the sum of two signed values needs to read right.
enum class SumRepair { kNone, kClearTop, kWiden };

/// What a division comes to: X, or a number that is first put into `width` bits and then assigned to the result.
struct Quotient {
    bool is_x;
    unsigned number;
    unsigned width;
};

class ExtendedWords;

/// The signed operators' way to the fields, and the wide half of every signed operator.
struct SignedInternals {
    using Word = std::uint32_t;

    static_assert(sizeof(KVAL_SINTEGER) == sizeof(KVAL_UINTEGER), "a signed value adds nothing to the object");

    // ---- signs and extension ----

    /// The value bit at width - 1, X or not.
    static bool Negative(const KVAL_SINTEGER& v) noexcept { return Internals::TopBit(v); }
    static const KVAL_UINTEGER& Unsigned(const KVAL_SINTEGER& v) noexcept { return v; }
    static bool Wide(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) noexcept { return !Internals::Compact(a, b); }
    static unsigned CommonWidth(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) noexcept {
        return Internals::Wider(a, b).bitwidth();
    }
    /// A compact operand at a compact common width; one that has this width already is read as it is.
    static Register Extended(const KVAL_UINTEGER& v, unsigned width, bool negative) noexcept {
        const Register same = {width, v.uint(), Internals::LowMask(v), Internals::Flags(v)};
        if (v.bitwidth() == width) return same;
        const std::uint64_t ones = negative ? OnesFrom(v.bitwidth()) : 0;
        return Register{width, same.value | ones, same.mask, same.flags}.Trimmed();
    }
    static Register Extended(const KVAL_SINTEGER& v, unsigned width) noexcept {
        return Extended(v, width, Negative(v));
    }
    static Register Extended(const KVAL_UINTEGER& v, unsigned width) noexcept { return Extended(v, width, false); }

    // ---- the unsigned sum and difference of two equally wide operands ----

    static Register Sum(const Register& a, const Register& b) noexcept {
        const std::uint64_t sum = a.value + b.value;
        const unsigned grown = a.width + static_cast<unsigned>((sum >> a.width | sum >> 32) & 1U);
        return Register{grown, sum, b.mask, b.flags}.Trimmed();
    }
    static Register Difference(const Register& a, const Register& b) noexcept {
        return Register{a.width, a.value - b.value, a.mask, a.flags}.Trimmed();
    }

    /// What is wrong with a sum whose sign is `negative`; `less`: where the operands' signs differ, whether the
    /// magnitude of the one above zero is less than that of the one below.
    static SumRepair Repair(bool a_negative, bool b_negative, bool negative, bool less) noexcept {
        // Equal signs, and the sum has the other one: it overflowed into the bit above.
        if (a_negative == b_negative) return negative != a_negative ? SumRepair::kWiden : SumRepair::kNone;
        // Unequal signs: the larger magnitude gives the sign, and a bit that was carried out is cleared. There is no
        // other repair: where the magnitude below zero is the larger one, the sum has its sign.
        return negative && !less ? SumRepair::kClearTop : SumRepair::kNone;
    }

    // ---- signed assignment to a compact target ----

    /// The bits that a target of `width` bits gets from the low word of a source of `source_width` bits.
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
    /// As assigned to a value of `width` bits, which may be 33 where the source has 32 at least.
    static Register Assigned(const Register& source, unsigned width) noexcept {
        if (width > 32) {
            const std::uint64_t sign = source.Negative() ? ~std::uint64_t{0} << source.width : 0;
            return Register{width, source.value | sign, source.mask, source.flags}.Trimmed();
        }
        const FourState<Word> low = {static_cast<Word>(source.value), source.mask};
        const FourState<Word> bits = Assigned(low, source.width, source.Negative(), width);
        return {width, bits.value, bits.mask, source.flags};
    }

    // ---- results ----

    static KVAL_SINTEGER Result(unsigned width, FourState<Word> bits, unsigned flags) noexcept {
        return KVAL_SINTEGER(bits.value, bits.mask, width, flags);
    }
    static KVAL_SINTEGER Result(const Register& r) {
        return r.width <= 32 ? Result(r.width, {static_cast<Word>(r.value), r.mask}, r.flags) : WideResult(r);
    }
    KVAL_API static KVAL_SINTEGER WideResult(const Register& r);
    /// The magnitude of a compact value, as a number of its own width.
    static Word Magnitude(const KVAL_SINTEGER& v) noexcept {
        return Negative(v) ? (0U - v.uint()) & Internals::TopMask(v.bitwidth()) : v.uint();
    }
    /// The compact product of two magnitudes; X as the base's product gives it.
    static KVAL_SINTEGER Product(unsigned width, Word a, Word b, bool x, bool negative) noexcept {
        if (x) return KVAL_SINTEGER(Internals::AllXResult(width, 0, 0));
        const Word product = negative ? 0U - a * b : a * b;
        return Result(width, {product & Internals::TopMask(width), 0}, 0);
    }

    // ---- in place ----

    /// Where the ones of a negative value shifted in place begin. Deliberate: exact only where the width is no multiple
    /// of 32; where it is one, the ones are shifted to the right place once, and that pattern is taken for the place.
    static unsigned FillStart(unsigned top, unsigned count) noexcept {
        return (top != 0 ? top - count : OnesFrom(32U - count)) & 31U;
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
        if (width > 32) return DivisionWide(quotient, width);
        if (quotient.is_x) return KVAL_SINTEGER(Internals::AllXResult(width, 0, 0));
        return Result(width, {StoredBits(quotient, width), 0}, 0);
    }

    static KVAL_SINTEGER Room(unsigned width, unsigned flags);
    static void WidenInPlace(KVAL_SINTEGER& v);
    static void AssignInPlace(KVAL_SINTEGER& v, unsigned width);
    static KVAL_SINTEGER WideDifference(unsigned width, const ExtendedWords& a, const ExtendedWords& b, unsigned flags);
    static KVAL_SINTEGER SumWithMagnitude(unsigned result_width, unsigned width, const ExtendedWords& a,
                                          const ExtendedWords& b, unsigned flags);
    KVAL_API static KVAL_SINTEGER AddWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static KVAL_SINTEGER AddWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    KVAL_API static KVAL_SINTEGER SubWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static KVAL_SINTEGER SubWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    KVAL_API static KVAL_SINTEGER SubWide(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
    static KVAL_SINTEGER ProductWide(const KVAL_UINTEGER& a, bool a_negative, const KVAL_UINTEGER& b, bool b_negative);
    KVAL_API static KVAL_SINTEGER MulWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
    KVAL_API static KVAL_SINTEGER MulWide(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
    KVAL_API static KVAL_SINTEGER ShrWide(const KVAL_SINTEGER& a, unsigned count, unsigned width);
    KVAL_API static KVAL_SINTEGER DivisionWide(const Quotient& quotient, unsigned width);
    /// Equality and order of two negative values.
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
    if (value < 0 && !IsCompact()) FillOnesWide();
}

inline KVAL_SINTEGER::KVAL_SINTEGER(std::uint32_t value, std::uint32_t mask, unsigned bit_width,
                                    unsigned state) noexcept
    : KVAL_UINTEGER(value, mask, bit_width, state) {}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator=(const KVAL_UINTEGER& other) {
    if (this == &other) return *this;
    if (!IsCompact()) return AssignUnsignedWide(other);
    if (width != other.width && width == 0) {
        AdoptCopy(other);
        return *this;
    }
    // Deliberate: not trimmed, so that bits of a wider source stay above the width.
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
    if (!IsCompact()) return AssignSignedWide(other);
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
    if (width == other.width && !IsCompact()) return ExchangeWide(other);
    return *this = static_cast<const KVAL_SINTEGER&>(other);
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

inline KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    using kval::detail::SumRepair;
    if (SignedInternals::Wide(a, b)) return SignedInternals::AddWide(a, b);
    const unsigned width = SignedInternals::CommonWidth(a, b);
    const kval::detail::Register sum =
        SignedInternals::Sum(SignedInternals::Extended(a, width), SignedInternals::Extended(b, width));
    const bool a_negative = SignedInternals::Negative(a);
    const bool b_negative = SignedInternals::Negative(b);
    const bool less = SignedInternals::Magnitude(a_negative ? b : a) < SignedInternals::Magnitude(a_negative ? a : b);
    switch (SignedInternals::Repair(a_negative, b_negative, sum.Negative(), less)) {
        case SumRepair::kClearTop:
            return SignedInternals::Result(sum.WithTop(false));
        case SumRepair::kWiden:
            return SignedInternals::Result(sum.Widened(!sum.Negative()));
        default:
            return SignedInternals::Result(sum);
    }
}

inline KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::Register;
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::AddWide(a, b);
    const unsigned width = SignedInternals::CommonWidth(a, b);
    const Register x = SignedInternals::Extended(a, width);
    const Register y = SignedInternals::Extended(b, width);
    if (SignedInternals::Negative(a)) {
        return SignedInternals::Result(
            SignedInternals::Assigned(SignedInternals::Difference(y, x.Negated()), width + 1));
    }
    const Register sum = SignedInternals::Assigned(SignedInternals::Sum(x, y), width + 1);
    if (!sum.Negative()) return SignedInternals::Result(sum);
    // Deliberate: a sign is cleared where no operand has one, but a width of whole words keeps it and grows by a zero
    // bit.
    return SignedInternals::Result(sum.width % 32U == 0 ? sum.Widened(false) : sum.WithTop(false));
}

inline KVAL_SINTEGER operator+(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return b + a; }

inline KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::Register;
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::SubWide(a, b);
    const unsigned width = SignedInternals::CommonWidth(a, b);
    Register difference =
        SignedInternals::Difference(SignedInternals::Extended(a, width), SignedInternals::Extended(b, width));
    const bool a_negative = SignedInternals::Negative(a);
    if (a_negative != SignedInternals::Negative(b) && difference.Negative() != a_negative) {
        // Overflow: the sign moves into one bit more, which set_bit() stores only where it is a 1.
        difference.width = width + 1;
        if (a_negative) difference = difference.WithTop(true);
    }
    return SignedInternals::Result(difference);
}

inline KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::SubWide(a, b);
    const unsigned width = SignedInternals::CommonWidth(a, b);
    return SignedInternals::Result(
        SignedInternals::Difference(SignedInternals::Extended(a, width), SignedInternals::Extended(b, width)));
}

inline KVAL_SINTEGER operator-(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::Register;
    using kval::detail::SignedInternals;
    if (SignedInternals::Wide(a, b)) return SignedInternals::SubWide(a, b);
    const unsigned width = SignedInternals::CommonWidth(a, b);
    const Register x = SignedInternals::Extended(a, width);
    const Register y = SignedInternals::Extended(b, width);
    // Either way the width comes from one operand: deliberate, and bits beyond it are lost.
    if (SignedInternals::Negative(b)) {
        return SignedInternals::Result(
            SignedInternals::Assigned(SignedInternals::Sum(x, y.Negated()), a.bitwidth() + 1));
    }
    const unsigned result_width = a.uint() >= b.uint() ? a.bitwidth() : b.bitwidth();
    return SignedInternals::Result(SignedInternals::Assigned(SignedInternals::Difference(x, y), result_width));
}

// ---- multiplication and shifts ----

inline KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    using kval::detail::SignedInternals;
    const unsigned width = a.bitwidth() + b.bitwidth();
    if (SignedInternals::Wide(a, b) || width > 32) return SignedInternals::MulWide(a, b);
    return SignedInternals::Product(width, SignedInternals::Magnitude(a), SignedInternals::Magnitude(b),
                                    a.is_x() || b.is_x(), SignedInternals::Negative(a) != SignedInternals::Negative(b));
}

inline KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) {
    using kval::detail::SignedInternals;
    const unsigned width = a.bitwidth() + b.bitwidth();
    if (SignedInternals::Wide(a, b) || width > 32) return SignedInternals::MulWide(a, b);
    return SignedInternals::Product(width, SignedInternals::Magnitude(a), b.uint(), a.is_x() || b.is_x(),
                                    SignedInternals::Negative(a));
}

inline KVAL_SINTEGER operator*(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) { return b * a; }

inline KVAL_SINTEGER operator>>(const KVAL_SINTEGER& a, unsigned count) {
    using kval::detail::SignedInternals;
    const int rest = static_cast<int>(a.bitwidth() - count);
    if (rest <= 0 && SignedInternals::Negative(a)) return SignedInternals::Result(1, {1, 0}, 0);
    // No bit needs to be filled in: the sign comes down to the new top bit.
    if (!a.IsCompact() && count < a.bitwidth()) return KVAL_SINTEGER(SignedInternals::Unsigned(a) >> count);
    const unsigned width = rest < 1 ? 1 : static_cast<unsigned>(rest);
    if (!a.IsCompact() || width > 32) return SignedInternals::ShrWide(a, count, width);
    // Deliberate: not trimmed, which shows for counts of 32 and more, and neither X bits nor flags come along.
    return SignedInternals::Result(width, {a.uint() >> (count & 31U), 0}, 0);
}

inline KVAL_SINTEGER& KVAL_SINTEGER::operator>>=(unsigned count) noexcept {
    using kval::detail::SignedInternals;
    if (!IsCompact()) return ShrAssignSignedWide(count);
    const bool negative = SignedInternals::Negative(*this);
    // Compared as signed numbers: counts of 2^31 and above shift by their value modulo 32.
    if (negative && static_cast<int>(count) >= static_cast<int>(width)) {
        uvalue.word = 0xFFFFFFFFU;
        Changed();
        return *this;
    }
    KVAL_UINTEGER::operator>>=(count);
    if (negative) {
        uvalue.word |= kval::detail::OnesFrom(SignedInternals::FillStart(get_top(), count));
        EnforceWidth();
    }
    return *this;
}

// ---- division ----
//
// Each function tests in this order: a zero divisor gives X, a wide operand throws, a result out of range gives X. The
// texts that are thrown, and the bounds that some tests compare with, are deliberate.

namespace kval {
namespace detail {

inline Quotient SignedInternals::Divide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) {
    if (b.uint() == 0) return X();
    if (Wide(a, b)) ThrowDivideUnsignedWidth();
    if (a.negative() && a.absolute_value() >= a.maximum_negative() && b.signed_value() == -1) return X();
    return {false, static_cast<unsigned>(a.signed_value() / b.signed_value()), 32};
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
    if (Divide(a, b).is_x) return X();
    // Deliberate: the range is tested with the divisor's bits, not with its magnitude.
    if (OutOfRange(a, a.absolute_value() % b.uint(), b.bitwidth())) return X();
    return {false, static_cast<unsigned>(a.signed_value() % b.signed_value()), b.bitwidth()};
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

// ---- comparison: signs first, then the base ----

inline bool operator==(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    const bool negative = SignedInternals::Negative(a);
    if (negative != SignedInternals::Negative(b)) return false;
    if (!negative) return SignedInternals::Unsigned(a) == SignedInternals::Unsigned(b);
    if (SignedInternals::Wide(a, b)) return SignedInternals::EqualNegativeWide(a, b);
    return a.SignExtendedChunk(0) == b.SignExtendedChunk(0);
}

inline bool operator==(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    return !SignedInternals::Negative(a) && SignedInternals::Unsigned(a) == b;
}

inline bool operator==(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept { return b == a; }

inline bool operator<(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    using kval::detail::SignedInternals;
    const bool negative = SignedInternals::Negative(a);
    if (negative != SignedInternals::Negative(b)) return negative;
    if (!negative) return SignedInternals::Unsigned(a) < SignedInternals::Unsigned(b);
    if (SignedInternals::Wide(a, b)) return SignedInternals::LessNegativeWide(a, b);
    // At one width, negative patterns order as unsigned numbers do.
    const unsigned width = SignedInternals::CommonWidth(a, b);
    return SignedInternals::Extended(a, width).value < SignedInternals::Extended(b, width).value;
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
