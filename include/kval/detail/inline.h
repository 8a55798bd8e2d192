// The inline bodies of kval.h: everything with a result of up to 64 bits; what is wider is one call of a ...Wide
// function.
#ifndef KVAL_DETAIL_INLINE_H
#define KVAL_DETAIL_INLINE_H

#include "four_state.h"
#include "stock.h"

namespace kval {
namespace detail {

/// The operators' way to the fields, and the wide half of every free operator.
struct Internals {
    using Word = std::uint32_t;
    using DoubleWord = std::uint64_t;

    static_assert(sizeof(KVAL_UINTEGER) == 40, "the object layout is part of the binary interface");
    static_assert(offsetof(KVAL_UINTEGER, width) == 0 && offsetof(KVAL_UINTEGER, uvalue) == 8 &&
                      offsetof(KVAL_UINTEGER, xmask) == 16 && offsetof(KVAL_UINTEGER, text_cache) == 24 &&
                      offsetof(KVAL_UINTEGER, flags) == 32 && offsetof(KVAL_UINTEGER, capacity) == 36,
                  "the order of the fields is part of the binary interface");

    /// Read access to the stored words of either form: a compact value is an array of one.
    struct View {
        const Word* value;
        const Word* mask;
        std::size_t size;
    };
    static View Words(const KVAL_UINTEGER& v) noexcept {
        if (v.IsCompact()) return {&v.uvalue.word, &v.xmask.word, 1};
        return {v.uvalue.words, v.xmask.words, static_cast<std::size_t>(v.get_size())};
    }

    static bool Compact(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        return l.IsCompact() && r.IsCompact();
    }
    // ---- values of 33 to 64 bits: a pair of words in either array, which one register holds ----

    static bool IsPair(unsigned width) noexcept { return width - 33U < 32U; }
    static bool IsPair(const KVAL_UINTEGER& v) noexcept { return IsPair(v.width); }
    static bool Pairs(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept { return IsPair(l) && IsPair(r); }
    /// Whether neither operand is wider than a pair.
    static bool UpToPairs(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        return l.width <= 64 && r.width <= 64;
    }
    static DoubleWord LoadPair(const Word* words) noexcept {
        DoubleWord pair;
        __builtin_memcpy(&pair, words, sizeof pair);
        return pair;
    }
    static void StorePair(Word* words, DoubleWord pair) noexcept { __builtin_memcpy(words, &pair, sizeof pair); }
    /// The low 64 bits of either plane.
    static DoubleWord LowPair(const KVAL_UINTEGER& v) noexcept {
        return v.IsCompact() ? v.uvalue.word : LoadPair(v.uvalue.words);
    }
    static DoubleWord LowPairMask(const KVAL_UINTEGER& v) noexcept {
        return v.IsCompact() ? v.xmask.word : LoadPair(v.xmask.words);
    }
    static FourState<DoubleWord> LowPairs(const KVAL_UINTEGER& v) noexcept { return {LowPair(v), LowPairMask(v)}; }
    /// The used bits of a value of 33 to 64 bits.
    static DoubleWord PairTop(unsigned width) noexcept { return ~DoubleWord{0} >> (-width & 63U); }
    static FourState<DoubleWord> PairTrimmed(FourState<DoubleWord> bits, unsigned width) noexcept {
        return {bits.value & PairTop(width), bits.mask & PairTop(width)};
    }
    /// Gives a value that is a pair its bits.
    static void SetPair(KVAL_UINTEGER& v, FourState<DoubleWord> bits) noexcept {
        StorePair(v.uvalue.words, bits.value);
        StorePair(v.xmask.words, bits.mask);
    }
    /// A new value of 33 to 64 bits with its bits as they are.
    static KVAL_UINTEGER PairResult(unsigned width, FourState<DoubleWord> bits, unsigned flags) {
        KVAL_UINTEGER result(width, std::size_t{2}, flags);
        SetPair(result, bits);
        return result;
    }
    static KVAL_UINTEGER TrimmedPair(unsigned width, FourState<DoubleWord> bits, unsigned flags) {
        return PairResult(width, PairTrimmed(bits, width), flags);
    }
    /// A new value of 33 to 64 bits, every one X over the given value bits.
    static KVAL_UINTEGER AllXPair(unsigned width, DoubleWord value, unsigned flags) {
        return TrimmedPair(width, {value, ~DoubleWord{0}}, flags | KVAL_UINTEGER::kX);
    }
    /// What every operation in place on a pair ends with.
    static KVAL_UINTEGER& ChangedPair(KVAL_UINTEGER& v, FourState<DoubleWord> bits) noexcept {
        SetPair(v, PairTrimmed(bits, v.width));
        v.DeleteString();
        return v;
    }
    /// The value bits alone change in place.
    static KVAL_UINTEGER& ChangedPairValue(KVAL_UINTEGER& v, DoubleWord value) noexcept {
        return ChangedPair(v, {value, LoadPair(v.xmask.words)});
    }

    // From 64 on, a left shift leaves nothing; a right shift leaves nothing from the width on, not even the bits that
    // were stored above it.
    static FourState<DoubleWord> ShiftedLeft(FourState<DoubleWord> bits, unsigned count) noexcept {
        if (count >= 64) return {0, 0};
        return {bits.value << count, bits.mask << count};
    }
    static FourState<DoubleWord> ShiftedRight(FourState<DoubleWord> bits, unsigned count, unsigned width) noexcept {
        if (count >= width) return {0, 0};
        return PairTrimmed({bits.value >> count, bits.mask >> count}, width);
    }

    /// The operand that a result starts from where the rule says the wider one: the right one of two equally wide.
    static const KVAL_UINTEGER& Wider(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        return l.width > r.width ? l : r;
    }
    /// The value bit at width - 1, X or not.
    static bool TopBit(const KVAL_UINTEGER& v) noexcept {
        const Word top = v.IsCompact() ? v.uvalue.word : v.uvalue.words[v.get_size() - 1];
        return (top >> ((v.width - 1) & 31U) & 1U) != 0;
    }
    static FourState<Word> LowWord(const KVAL_UINTEGER& v) noexcept { return {v.uint(), v.LowMask()}; }
    static Word LowMask(const KVAL_UINTEGER& v) noexcept { return v.LowMask(); }
    static unsigned Flags(const KVAL_UINTEGER& v) noexcept { return v.flags & KVAL_UINTEGER::kFourState; }
    static unsigned WithoutX(unsigned flags) noexcept { return flags & ~static_cast<unsigned>(KVAL_UINTEGER::kX); }
    static Word TopMask(unsigned width) noexcept { return KVAL_UINTEGER::TopMask(width); }

    /// A compact result with its bits as they are.
    static KVAL_UINTEGER CompactResult(unsigned width, FourState<Word> bits, unsigned flags) noexcept {
        return KVAL_UINTEGER(bits.value, bits.mask, width, flags);
    }
    /// A compact result with both planes trimmed to the width.
    static KVAL_UINTEGER TrimmedResult(unsigned width, FourState<Word> bits, unsigned flags) noexcept {
        const Word top = TopMask(width);
        return KVAL_UINTEGER(bits.value & top, bits.mask & top, width, flags);
    }
    /// A compact result with every bit X over the given value bits.
    static KVAL_UINTEGER AllXResult(unsigned width, Word value, unsigned flags) noexcept {
        return TrimmedResult(width, {value, 0xFFFFFFFFU}, flags | KVAL_UINTEGER::kX);
    }
    /// The AND or OR of compact operands. No flag of either reaches the result, not even when it holds X bits:
    /// deliberate, unlike the forms in place.
    template <typename Rule>
    static KVAL_UINTEGER Combined(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) noexcept {
        return CompactResult(Wider(l, r).width, rule(LowWord(l), LowWord(r)), 0);
    }
    /// The same for pairs.
    template <typename Rule>
    static KVAL_UINTEGER CombinedPairs(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) {
        return PairResult(Wider(l, r).width, rule(LowPairs(l), LowPairs(r)), 0);
    }

    /// The result starts as the wider operand, x-mask included, and keeps them but for the value bits; with an X flag on
    /// either side it becomes all X.
    static KVAL_UINTEGER XorPairs(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const KVAL_UINTEGER& wider = Wider(l, r);
        const unsigned flags = Flags(wider);
        if (l.is_x() || r.is_x()) return AllXPair(wider.width, LowPair(wider), flags);
        return PairResult(wider.width, {LowPair(l) ^ LowPair(r), LowPairMask(wider)}, flags);
    }

    /// The sum of operands of up to 64 bits, one of them wide.
    static KVAL_UINTEGER AddPairs(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const KVAL_UINTEGER& wider = Wider(l, r);
        const DoubleWord sum = LowPair(l) + LowPair(r);
        const bool carry = sum < LowPair(l);
        const bool reached = (sum >> 1 >> (wider.width - 1) & 1U) != 0;
        const unsigned grown = wider.width + static_cast<unsigned>(carry || reached);
        if (grown > 64) return AddWide(l, r);
        return TrimmedPair(grown, {sum, LowPairMask(wider)}, Flags(wider));
    }

    template <typename Field>
    static void Exchange(Field& a, Field& b) noexcept {
        const Field held = a;
        a = b;
        b = held;
    }
    static void Swap(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept {
        Exchange(a.width, b.width);
        Exchange(a.uvalue, b.uvalue);
        Exchange(a.xmask, b.xmask);
        Exchange(a.text_cache, b.text_cache);
        Exchange(a.flags, b.flags);
        Exchange(a.capacity, b.capacity);
    }

    KVAL_API static KVAL_UINTEGER AndWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static KVAL_UINTEGER OrWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static KVAL_UINTEGER XorWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static KVAL_UINTEGER NotWide(const KVAL_UINTEGER& v);
    KVAL_API static KVAL_UINTEGER AddWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    static void FinishSum(KVAL_UINTEGER& result, unsigned width, bool carry);
    KVAL_API static KVAL_UINTEGER SubWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static KVAL_UINTEGER MulWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static KVAL_UINTEGER ShrWide(const KVAL_UINTEGER& v, unsigned count, unsigned width);
    /// Less than 0, 0 or more than 0 as `l` is less than, equal to or greater than `r` in value bits.
    KVAL_API static int CompareWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
    KVAL_API static int CompareWide(const KVAL_UINTEGER& v, unsigned number) noexcept;
    KVAL_API static bool IdenticalWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
    [[noreturn]] KVAL_API static void ThrowDivideWidth();
    [[noreturn]] KVAL_API static void ThrowRemainderWidth();
};

}  // namespace detail
}  // namespace kval

// ---- construction, copying, assignment ----

inline KVAL_UINTEGER::KVAL_UINTEGER(std::uint32_t value, std::uint32_t mask, unsigned bit_width,
                                    unsigned state) noexcept
    : width(bit_width), text_cache(nullptr), flags(static_cast<std::uint8_t>(state)), capacity(0) {
    uvalue.word = value;
    xmask.word = mask;
}

inline KVAL_UINTEGER::KVAL_UINTEGER(unsigned value, unsigned bit_width)
    : width(AtLeastOne(bit_width)), text_cache(nullptr), flags(0), capacity(0) {
    if (kval::detail::Internals::IsPair(width)) {
        AllocateWide(2);
        kval::detail::Internals::SetPair(*this, {value, 0});
        return;
    }
    if (!IsCompact()) {
        ConstructWide(value);
        return;
    }
    uvalue.word = value & TopMask(width);
    xmask.word = 0;
}

// A wide result whose words the caller writes next.
inline KVAL_UINTEGER::KVAL_UINTEGER(unsigned bit_width, std::size_t words, unsigned state)
    : width(bit_width), text_cache(nullptr), flags(static_cast<std::uint8_t>(state)) {
    AllocateWide(words);
}

inline void KVAL_UINTEGER::OwnPlanes(const kval::detail::Planes& planes, std::size_t words) noexcept {
    uvalue.words = planes.value;
    xmask.words = planes.mask;
    capacity = static_cast<std::uint32_t>(words);
}

/// Gives a wide value that owns no arrays its own, not yet written.
inline void KVAL_UINTEGER::AllocateWide(std::size_t words) {
    if (words > kval::detail::Stock::kLongest) {
        AllocateLong(words);
    } else {
        OwnPlanes(kval::detail::TakePlanes(words), words);
    }
}

inline void KVAL_UINTEGER::ReleaseWide() noexcept {
    kval::detail::GivePlanes({uvalue.words, xmask.words}, capacity);
    uvalue.words = nullptr;
    xmask.words = nullptr;
    capacity = 0;
}

inline KVAL_UINTEGER::KVAL_UINTEGER(const KVAL_UINTEGER& other)
    : width(other.width), text_cache(nullptr), flags(static_cast<std::uint8_t>(other.flags & kFourState)), capacity(0) {
    if (kval::detail::Internals::IsPair(width)) {
        AllocateWide(2);
        kval::detail::Internals::SetPair(*this, kval::detail::Internals::LowPairs(other));
        return;
    }
    if (!IsCompact()) {
        CopyWide(other);
        return;
    }
    uvalue.word = other.uvalue.word;
    xmask.word = other.xmask.word;
}

inline KVAL_UINTEGER::KVAL_UINTEGER(KVAL_UINTEGER&& other) noexcept : text_cache(nullptr) { TakeFrom(other); }

inline KVAL_UINTEGER::KVAL_UINTEGER(const KVAL_UINTEGER& other, int count, bool left)
    : width(left ? AtLeastOne(other.width + static_cast<unsigned>(count)) : other.width),
      text_cache(nullptr),
      flags(static_cast<std::uint8_t>(other.flags & kFourState)),
      capacity(0) {
    using kval::detail::Internals;
    if (Internals::IsPair(width) && !(left && Wrapped(other, static_cast<unsigned>(count)))) {
        AllocateWide(2);
        const auto bits = Internals::LowPairs(other);
        const auto shifted = left ? Internals::ShiftedLeft(bits, static_cast<unsigned>(count))
                                  : Internals::ShiftedRight(bits, static_cast<unsigned>(count), width);
        Internals::SetPair(*this, shifted);
        return;
    }
    if (!IsCompact()) {
        ShiftedCopyWide(other, static_cast<unsigned>(count), left);
        return;
    }
    const unsigned shift = static_cast<unsigned>(count) & 31U;
    uvalue.word = left ? other.uint() << shift : other.uvalue.word >> shift;
    xmask.word = left ? other.LowMask() << shift : other.xmask.word >> shift;
    if (!left || Wrapped(other, static_cast<unsigned>(count))) EnforceWidth();
}

/// Whether a left shift by `count` has no room for every bit, because the sum of width and count wrapped.
inline bool KVAL_UINTEGER::Wrapped(const KVAL_UINTEGER& other, unsigned count) const noexcept {
    return std::uint64_t{other.width} + count != width;
}

inline KVAL_UINTEGER::~KVAL_UINTEGER() {
    DeleteString();
    if (!IsCompact()) ReleaseWide();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator=(const KVAL_UINTEGER& other) {
    using kval::detail::Internals;
    if (this == &other) return *this;
    if (Internals::IsPair(*this)) {
        const auto bits = Internals::LowPairs(other);
        flags = other.flags;
        Internals::SetPair(*this, width != other.width ? Internals::PairTrimmed(bits, width) : bits);
        DeleteString();
        return *this;
    }
    if (!IsCompact()) return AssignWide(other);
    if (width != other.width && width == 0) return AdoptCopy(other);
    uvalue.word = other.uint();
    xmask.word = other.LowMask();
    flags = other.flags;
    if (width != other.width) EnforceWidth();
    DeleteString();
    return *this;
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator=(KVAL_UINTEGER&& other) noexcept {
    if (width != other.width) {
        if (width == 0) {
            TakeFrom(other);
            return *this;
        }
    } else if (!IsCompact() && this != &other) {
        kval::detail::Internals::Swap(*this, other);
        DeleteString();
        other.DeleteString();
        return *this;
    }
    return *this = static_cast<const KVAL_UINTEGER&>(other);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator=(unsigned value) noexcept {
    if (kval::detail::Internals::IsPair(*this)) {
        flags = static_cast<std::uint8_t>(flags & ~kFourState);
        kval::detail::Internals::SetPair(*this, {value, 0});
        DeleteString();
        return *this;
    }
    if (!IsCompact()) return AssignWide(value);
    if (width == 0) width = 32;
    uvalue.word = value & TopMask(width);
    xmask.word = 0;
    flags = static_cast<std::uint8_t>(flags & ~kFourState);
    DeleteString();
    return *this;
}

/// Moves everything but the text out of `other` into storage that owns nothing but, perhaps, a text.
inline void KVAL_UINTEGER::TakeFrom(KVAL_UINTEGER& other) noexcept {
    DeleteString();
    width = other.width;
    uvalue = other.uvalue;
    xmask = other.xmask;
    flags = static_cast<std::uint8_t>(other.flags & kFourState);
    capacity = other.capacity;
    other.DeleteString();
    other.width = 0;
    other.uvalue.word = 0;
    other.xmask.word = 0;
    other.flags = 0;
    other.capacity = 0;
}

inline void swap(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept { kval::detail::Internals::Swap(a, b); }

// ---- width ----

inline KVAL_UINTEGER& KVAL_UINTEGER::bitwidth(unsigned new_width) {
    // A moved-from value has no width to keep, not even when asked for 0 bits, which means 1.
    if (new_width == width && width != 0) return *this;
    new_width = AtLeastOne(new_width);
    if (!IsCompact() || !IsCompact(static_cast<int>(new_width))) {
        ResizeWide(new_width);
        return *this;
    }
    width = new_width;
    return Changed();
}

/// Whether the value bits read `number`.
inline bool KVAL_UINTEGER::ReadsNumber(unsigned number) const noexcept {
    return width <= 64 ? kval::detail::Internals::LowPair(*this) == number : IsNumberWide(number);
}

inline void KVAL_UINTEGER::EnforceWidth() noexcept {
    const std::uint32_t top = TopMask(width);
    std::uint32_t& value = IsCompact() ? uvalue.word : uvalue.words[get_size() - 1];
    std::uint32_t& mask = IsCompact() ? xmask.word : xmask.words[get_size() - 1];
    value &= top;
    mask &= top;
}

/// What every operation ends with that changed the bits: trims to the width and drops the text.
inline KVAL_UINTEGER& KVAL_UINTEGER::Changed() noexcept {
    EnforceWidth();
    DeleteString();
    return *this;
}

inline void KVAL_UINTEGER::DeleteString() noexcept {
    if (text_cache != nullptr) ReleaseText();
}

inline void KVAL_UINTEGER::DeleteData() noexcept {
    if (!IsCompact()) ReleaseWide();
}

// ---- reading ----

inline std::uint32_t KVAL_UINTEGER::WordAt(const Plane& plane, unsigned index) const noexcept {
    if (IsCompact()) return index == 0 ? plane.word : 0;
    return index < static_cast<unsigned>(get_size()) ? plane.words[index] : 0;
}

inline unsigned KVAL_UINTEGER::get_uvalue_at(int index) const noexcept {
    return WordAt(uvalue, static_cast<unsigned>(index));
}

inline unsigned KVAL_UINTEGER::get_xmask_at(int index) const noexcept {
    return WordAt(xmask, static_cast<unsigned>(index));
}

inline unsigned KVAL_UINTEGER::bit(unsigned pos) const {
    if (pos > width) ThrowBitPosition();
    const std::uint32_t word = IsCompact() ? uvalue.word : WordAt(uvalue, pos >> 5);
    return (word >> (pos & 31U)) & 1U;
}

inline bool KVAL_UINTEGER::is_x(int pos, int nibble) const noexcept {
    // In compact form every position falls into the one word, modulo 32.
    const auto mask_word = [this](int index) {
        return IsCompact() ? xmask.word : WordAt(xmask, static_cast<unsigned>(index));
    };
    if (nibble != 1) return ((mask_word(pos >> 5) >> (static_cast<unsigned>(pos) & 31U)) & 1U) != 0;
    std::uint32_t group = mask_word(pos >> 3) >> (4U * (static_cast<unsigned>(pos) & 7U)) & 15U;
    // The partial top group ends at the width, and a group above the width has no bits.
    const std::int64_t rest = static_cast<std::int64_t>(width) - 4 * static_cast<std::int64_t>(pos);
    if (rest <= 3) group &= rest > 0 ? (1U << rest) - 1U : 0U;
    return group != 0;
}

// ---- writing ----

inline void KVAL_UINTEGER::StoreAt(Plane& plane, unsigned index, std::uint32_t word) noexcept {
    if (IsCompact()) {
        plane.word = word;
    } else if (index < static_cast<unsigned>(get_size())) {
        plane.words[index] = word;
    }
}

inline KVAL_UINTEGER& KVAL_UINTEGER::set_uvalue_at(int index, unsigned word) noexcept {
    StoreAt(uvalue, static_cast<unsigned>(index), word);
    return *this;
}

inline KVAL_UINTEGER& KVAL_UINTEGER::set_xmask_at(int index, unsigned word) noexcept {
    StoreAt(xmask, static_cast<unsigned>(index), word);
    return *this;
}

inline KVAL_UINTEGER& KVAL_UINTEGER::set_bit(int pos, unsigned value) {
    if (static_cast<int>(width) < pos) ThrowSetBitPosition();
    const unsigned index = IsCompact() ? 0 : static_cast<unsigned>(pos) >> 5;
    if (IsCompact() || index < static_cast<unsigned>(get_size())) {
        const unsigned shift = static_cast<unsigned>(pos) & 31U;
        const std::uint32_t others = ~(1U << shift);
        const std::uint32_t mask = WordAt(xmask, index) & others;
        StoreAt(uvalue, index, (WordAt(uvalue, index) & others) | value << shift);
        StoreAt(xmask, index, mask);
        // Deliberate: this one x-mask word decides, even where another word still holds X bits.
        if (mask == 0) flags = static_cast<std::uint8_t>(flags & ~kX);
    }
    DeleteString();
    return *this;
}

inline KVAL_UINTEGER& KVAL_UINTEGER::set_x(int pos) noexcept {
    if (pos < 0 || pos >= static_cast<int>(width)) return *this;
    const unsigned index = static_cast<unsigned>(pos) >> 5;
    StoreAt(xmask, index, WordAt(xmask, index) | 1U << (static_cast<unsigned>(pos) & 31U));
    return SetFlag(kX);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::force_x() noexcept {
    if (!IsCompact()) return ForceXWide();
    xmask.word = 0xFFFFFFFFU;
    EnforceWidth();
    return SetFlag(kX);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::SetFlag(Flag flag) noexcept {
    flags = static_cast<std::uint8_t>(flags | flag);
    DeleteString();
    return *this;
}

inline void KVAL_UINTEGER::UniteFlags(const KVAL_UINTEGER& other) noexcept {
    flags = static_cast<std::uint8_t>(flags | (other.flags & kFourState));
}

inline void KVAL_UINTEGER::CopyFlags(const KVAL_UINTEGER& other) noexcept {
    flags = static_cast<std::uint8_t>((flags & ~kFourState) | (other.flags & kFourState));
}

// ---- hashing ----

inline unsigned twang_uinthash(unsigned key) noexcept {
    key += ~(key << 15);
    key ^= key >> 10;
    key += key << 3;
    key ^= key >> 6;
    key += ~(key << 11);
    key ^= key >> 16;
    return key;
}

inline unsigned KVAL_UINTEGER::get_hash(unsigned bits) const noexcept {
    const unsigned hash = IsCompact() ? twang_uinthash(uvalue.word) : HashWide();
    // No bits asked for means all of them: deliberate, the mask for 0 is that for 32.
    return bits < 32 ? hash & TopMask(bits) : hash;
}

// ---- bitwise logic ----

template <typename Rule>
KVAL_UINTEGER& KVAL_UINTEGER::CombineLowWord(const KVAL_UINTEGER& other, Rule rule) noexcept {
    using kval::detail::Internals;
    const auto bits = rule(Internals::LowWord(*this), Internals::LowWord(other));
    uvalue.word = bits.value;
    xmask.word = bits.mask;
    UniteFlags(other);
    return Changed();
}

template <typename Rule>
KVAL_UINTEGER& KVAL_UINTEGER::CombineLowPair(const KVAL_UINTEGER& other, Rule rule) noexcept {
    using kval::detail::Internals;
    UniteFlags(other);
    return Internals::ChangedPair(*this, rule(Internals::LowPairs(*this), Internals::LowPairs(other)));
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator&=(const KVAL_UINTEGER& other) noexcept {
    // Deliberate: a value ANDed into itself keeps even its X bits and its text.
    if (this == &other) return *this;
    if (IsCompact()) return CombineLowWord(other, kval::detail::FourStateAnd());
    // Beyond a compact operand the upper word would stand as it is.
    if (kval::detail::Internals::IsPair(*this) && !other.IsCompact())
        return CombineLowPair(other, kval::detail::FourStateAnd());
    return AndAssignWide(other);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator|=(const KVAL_UINTEGER& other) noexcept {
    if (this == &other) return *this;
    if (IsCompact()) return CombineLowWord(other, kval::detail::FourStateOr());
    if (kval::detail::Internals::IsPair(*this) && !other.IsCompact())
        return CombineLowPair(other, kval::detail::FourStateOr());
    return OrAssignWide(other);
}

inline KVAL_UINTEGER operator&(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (Internals::Compact(l, r)) return Internals::Combined(l, r, kval::detail::FourStateAnd());
    if (Internals::Pairs(l, r)) return Internals::CombinedPairs(l, r, kval::detail::FourStateAnd());
    return Internals::AndWide(l, r);
}

inline KVAL_UINTEGER operator|(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (Internals::Compact(l, r)) return Internals::Combined(l, r, kval::detail::FourStateOr());
    if (Internals::Pairs(l, r)) return Internals::CombinedPairs(l, r, kval::detail::FourStateOr());
    return Internals::OrWide(l, r);
}

inline KVAL_UINTEGER operator^(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (Internals::Pairs(l, r)) return Internals::XorPairs(l, r);
    if (!Internals::Compact(l, r)) return Internals::XorWide(l, r);
    const KVAL_UINTEGER& wider = Internals::Wider(l, r);
    const unsigned flags = Internals::Flags(wider);
    if (l.is_x() || r.is_x()) return Internals::AllXResult(wider.bitwidth(), wider.uint(), flags);
    // X marks without flag X cancel like value bits: deliberate.
    return Internals::CompactResult(wider.bitwidth(),
                                    {l.uint() ^ r.uint(), Internals::LowMask(l) ^ Internals::LowMask(r)}, flags);
}

inline KVAL_UINTEGER operator~(const KVAL_UINTEGER& v) {
    using kval::detail::Internals;
    if (Internals::IsPair(v))
        return Internals::TrimmedPair(v.bitwidth(), {~Internals::LowPair(v), Internals::LowPairMask(v)},
                                      Internals::Flags(v));
    if (!v.IsCompact()) return Internals::NotWide(v);
    return Internals::TrimmedResult(v.bitwidth(), {~v.uint(), Internals::LowMask(v)}, Internals::Flags(v));
}

// ---- addition and subtraction ----

inline KVAL_UINTEGER& KVAL_UINTEGER::operator+=(const KVAL_UINTEGER& other) noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this))
        return Internals::ChangedPairValue(*this, Internals::LowPair(*this) + Internals::LowPair(other));
    if (!IsCompact()) return AddAssignWide(other);
    uvalue.word += other.uint();
    return Changed();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator+=(unsigned number) noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this)) return Internals::ChangedPairValue(*this, Internals::LowPair(*this) + number);
    if (!IsCompact()) return AddAssignWide(number);
    uvalue.word += number;
    return Changed();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator-=(const KVAL_UINTEGER& other) noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this))
        return Internals::ChangedPairValue(*this, Internals::LowPair(*this) - Internals::LowPair(other));
    if (!IsCompact()) return SubAssignWide(other);
    uvalue.word -= other.uint();
    return Changed();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator-=(unsigned number) noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this)) return Internals::ChangedPairValue(*this, Internals::LowPair(*this) - number);
    if (!IsCompact()) return SubAssignWide(number);
    uvalue.word -= number;
    return Changed();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator++() noexcept { return *this += 1U; }

inline KVAL_UINTEGER& KVAL_UINTEGER::operator--() noexcept { return *this -= 1U; }

inline KVAL_UINTEGER operator+(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (!Internals::UpToPairs(l, r)) return Internals::AddWide(l, r);
    const KVAL_UINTEGER& wider = Internals::Wider(l, r);
    const unsigned width = wider.bitwidth();
    const unsigned flags = Internals::Flags(wider);
    if (!wider.IsCompact()) return Internals::AddPairs(l, r);
    const std::uint64_t sum = static_cast<std::uint64_t>(l.uint()) + r.uint();
    // Grown by one bit when the sum reaches the bit above the width; bit 32 too, for operands with bits above their
    // width.
    const unsigned grown = width + static_cast<unsigned>((sum >> width | sum >> 32) & 1U);
    if (!KVAL_UINTEGER::IsCompact(static_cast<int>(grown)))
        return Internals::PairResult(grown, {sum, Internals::LowMask(wider)}, flags);
    return Internals::TrimmedResult(grown, {static_cast<std::uint32_t>(sum), Internals::LowMask(wider)}, flags);
}

inline KVAL_UINTEGER operator-(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    // The borrow behind a compact right operand has a rule of its own.
    if (Internals::Pairs(l, r)) {
        return Internals::TrimmedPair(l.bitwidth(),
                                      {Internals::LowPair(l) - Internals::LowPair(r), Internals::LowPairMask(l)},
                                      Internals::Flags(l));
    }
    if (!l.IsCompact()) return Internals::SubWide(l, r);
    return Internals::TrimmedResult(l.bitwidth(), {l.uint() - r.uint(), Internals::LowMask(l)}, Internals::Flags(l));
}

// ---- shifts ----

inline KVAL_UINTEGER& KVAL_UINTEGER::operator<<=(unsigned count) noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this))
        return Internals::ChangedPair(*this, Internals::ShiftedLeft(Internals::LowPairs(*this), count));
    if (!IsCompact()) return ShlAssignWide(count);
    // Deliberate, here and in every compact shift: the count is taken modulo 32, and 32 shifts by nothing.
    uvalue.word <<= count & 31U;
    xmask.word <<= count & 31U;
    return Changed();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator>>=(unsigned count) noexcept {
    using kval::detail::Internals;
    if (Internals::IsPair(*this))
        return Internals::ChangedPair(*this, Internals::ShiftedRight(Internals::LowPairs(*this), count, width));
    if (!IsCompact()) return ShrAssignWide(count);
    uvalue.word >>= count & 31U;
    xmask.word >>= count & 31U;
    return Changed();
}

inline KVAL_UINTEGER operator<<(const KVAL_UINTEGER& v, unsigned count) {
    return KVAL_UINTEGER(v, static_cast<int>(count), true);
}

inline KVAL_UINTEGER operator>>(const KVAL_UINTEGER& v, unsigned count) {
    using kval::detail::Internals;
    const unsigned width = count < v.bitwidth() ? v.bitwidth() - count : 1;
    if (Internals::IsPair(width) && Internals::IsPair(v))
        return Internals::PairResult(width, Internals::ShiftedRight(Internals::LowPairs(v), count, width),
                                     Internals::Flags(v));
    if (!KVAL_UINTEGER::IsCompact(static_cast<int>(width))) return Internals::ShrWide(v, count, width);
    if (v.IsCompact()) {
        return Internals::TrimmedResult(width, {v.uint() >> (count & 31U), Internals::LowMask(v) >> (count & 31U)},
                                        Internals::Flags(v));
    }
    if (count >= v.bitwidth()) return Internals::CompactResult(1, {0, 0}, Internals::Flags(v));
    // The result straddles at most two words; joined in 64 bits, a shift by 0 needs no case of its own.
    const Internals::View words = Internals::Words(v);
    const auto straddle = [count, &words](const std::uint32_t* plane) {
        const std::size_t low = count / 32U;
        const std::uint64_t high = low + 1 < words.size ? plane[low + 1] : 0;
        return static_cast<std::uint32_t>((high << 32 | plane[low]) >> (count & 31U));
    };
    return Internals::TrimmedResult(width, {straddle(words.value), straddle(words.mask)}, Internals::Flags(v));
}

// ---- multiplication, division, remainder ----

inline KVAL_UINTEGER operator*(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    const unsigned width = l.bitwidth() + r.bitwidth();
    if (!Internals::UpToPairs(l, r) || width > 64) return Internals::MulWide(l, r);
    const bool all_x = l.is_x() || r.is_x();
    if (KVAL_UINTEGER::IsCompact(static_cast<int>(width))) {
        if (all_x) return Internals::AllXResult(width, 0, 0);
        return Internals::TrimmedResult(width, {l.uint() * r.uint(), 0}, 0);
    }
    if (all_x) return Internals::AllXPair(width, 0, 0);
    return Internals::TrimmedPair(width, {Internals::LowPair(l) * Internals::LowPair(r), 0}, 0);
}

inline KVAL_UINTEGER operator/(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (!Internals::Compact(l, r)) Internals::ThrowDivideWidth();
    if (r.is_zero()) return Internals::AllXResult(l.bitwidth(), 0, 0);
    return Internals::TrimmedResult(l.bitwidth(), {l.uint() / r.uint(), 0}, 0);
}

inline KVAL_UINTEGER operator%(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (!Internals::Compact(l, r)) Internals::ThrowRemainderWidth();
    if (r.is_zero()) return Internals::AllXResult(r.bitwidth(), 0, 0);
    return Internals::TrimmedResult(r.bitwidth(), {l.uint() % r.uint(), 0}, 0);
}

// ---- comparison ----

inline bool operator>(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    using kval::detail::Internals;
    if (Internals::Compact(l, r)) return l.uint() > r.uint();
    return Internals::UpToPairs(l, r) ? Internals::LowPair(l) > Internals::LowPair(r)
                                      : Internals::CompareWide(l, r) > 0;
}

inline bool operator>=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    using kval::detail::Internals;
    if (Internals::Compact(l, r)) return l.uint() >= r.uint();
    return Internals::UpToPairs(l, r) ? Internals::LowPair(l) >= Internals::LowPair(r)
                                      : Internals::CompareWide(l, r) >= 0;
}

inline bool operator<(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept { return r > l; }
inline bool operator<=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept { return r >= l; }

inline bool operator>(const KVAL_UINTEGER& v, unsigned number) noexcept {
    using kval::detail::Internals;
    return v.bitwidth() <= 64 ? Internals::LowPair(v) > number : Internals::CompareWide(v, number) > 0;
}

inline bool operator>=(const KVAL_UINTEGER& v, unsigned number) noexcept {
    using kval::detail::Internals;
    return v.bitwidth() <= 64 ? Internals::LowPair(v) >= number : Internals::CompareWide(v, number) >= 0;
}

inline bool operator>(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v >= number); }
inline bool operator>=(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v > number); }
inline bool operator<(const KVAL_UINTEGER& v, unsigned number) noexcept { return number > v; }
inline bool operator<=(const KVAL_UINTEGER& v, unsigned number) noexcept { return number >= v; }
inline bool operator<(unsigned number, const KVAL_UINTEGER& v) noexcept { return v > number; }
inline bool operator<=(unsigned number, const KVAL_UINTEGER& v) noexcept { return v >= number; }

inline bool KVAL_UINTEGER::operator==(const KVAL_UINTEGER& other) const noexcept {
    using kval::detail::Internals;
    if (!Internals::UpToPairs(*this, other)) return Internals::IdenticalWide(*this, other);
    if (!Internals::Compact(*this, other)) {
        return Internals::LowPair(*this) == Internals::LowPair(other) &&
               Internals::LowPairMask(*this) == Internals::LowPairMask(other) &&
               Internals::Flags(*this) == Internals::Flags(other);
    }
    return uvalue.word == other.uvalue.word && xmask.word == other.xmask.word &&
           Internals::Flags(*this) == Internals::Flags(other);
}

inline bool KVAL_UINTEGER::operator==(unsigned number) const noexcept {
    if (kval::detail::Internals::Flags(*this) != 0) return false;
    return ReadsNumber(number);
}

inline bool operator==(unsigned number, const KVAL_UINTEGER& v) noexcept { return v == number; }
inline bool operator!=(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v == number); }

#endif
