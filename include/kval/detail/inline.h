// The inline bodies of kval.h: compact values, and pairs with a result of up to 64 bits. The rest is one call of a
// ...Large function, which does up to 256 bits here and leaves what is wider, or has operands of unlike forms, to a
// ...Wide function of the library.
#ifndef KVAL_DETAIL_INLINE_H
#define KVAL_DETAIL_INLINE_H

#include "four_state.h"
#include "limbs.h"
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
    /// The bits of a wide value of which only the low 64 are wanted.
    static FourState<DoubleWord> PairOf(const KVAL_UINTEGER& v) noexcept {
        return {words::load_pair(v.uvalue.words), words::load_pair(v.xmask.words)};
    }
    /// The low 64 bits of either plane.
    static DoubleWord LowPair(const KVAL_UINTEGER& v) noexcept {
        return v.IsCompact() ? v.uvalue.word : words::load_pair(v.uvalue.words);
    }
    static DoubleWord LowPairMask(const KVAL_UINTEGER& v) noexcept {
        return v.IsCompact() ? v.xmask.word : words::load_pair(v.xmask.words);
    }
    static FourState<DoubleWord> LowPairs(const KVAL_UINTEGER& v) noexcept { return {LowPair(v), LowPairMask(v)}; }
    static FourState<DoubleWord> PairTrimmed(FourState<DoubleWord> bits, unsigned width) noexcept {
        const DoubleWord used = ~DoubleWord{0} >> (-width & 63U);
        return {bits.value & used, bits.mask & used};
    }
    /// Gives a value that is a pair its bits.
    static void SetPair(KVAL_UINTEGER& v, FourState<DoubleWord> bits) noexcept {
        Word* const value = v.uvalue.words;
        Word* const mask = v.xmask.words;
        words::store_pair(value, bits.value);
        words::store_pair(mask, bits.mask);
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
    /// What every operation in place on a pair ends with.
    static KVAL_UINTEGER& ChangedPair(KVAL_UINTEGER& v, FourState<DoubleWord> bits, bool as_they_are = false) noexcept {
        SetPair(v, as_they_are ? bits : PairTrimmed(bits, v.width));
        v.DeleteString();
        return v;
    }
    /// The value bits alone change in place.
    static KVAL_UINTEGER& ChangedPairValue(KVAL_UINTEGER& v, DoubleWord value) noexcept {
        return ChangedPair(v, {value, words::load_pair(v.xmask.words)});
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

    // ---- wider values; those of 65 to 256 bits are short: a few limbs, which small functions step through here ----

    static bool IsShort(const KVAL_UINTEGER& v) noexcept { return v.width - 65U < 192U; }
    /// Whether both are short and have as many words.
    static bool Short(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        return IsShort(l) && l.get_size() == r.get_size();
    }

    /// The number of words of a value, wide or not.
    static std::size_t Size(const KVAL_UINTEGER& v) noexcept { return static_cast<std::size_t>(v.get_size()); }
    static std::size_t WideSize(unsigned width) noexcept { return (std::size_t{width} + 31) / 32; }
    static Planes PlanesOf(KVAL_UINTEGER& v) noexcept { return {v.uvalue.words, v.xmask.words}; }
    /// Clears the bits above a wide width. Two words at a time where the kernels have written the top word so: what was
    /// written in one piece is slow to read in another.
    static void Trim(const Planes& planes, unsigned width) noexcept {
        const std::size_t top = WideSize(width) - 1;
        Word* const value = planes.value + top;
        Word* const mask = planes.mask + top;
        const Word used = TopMask(width);
        if (top % 2 != 0) {
            const DoubleWord used_pair = static_cast<DoubleWord>(used) << 32 | 0xFFFFFFFFU;
            words::store_pair(value - 1, words::load_pair(value - 1) & used_pair);
            words::store_pair(mask - 1, words::load_pair(mask - 1) & used_pair);
        } else {
            *value &= used;
            *mask &= used;
        }
    }
    static void TrimWide(KVAL_UINTEGER& v) noexcept { Trim(PlanesOf(v), v.width); }
    /// The words of a sum that may grow by a bit.
    static std::size_t SumSize(unsigned width) noexcept { return std::size_t{width / 32} + 1; }
    /// Whether a sum grows by a bit, of whose `width` bits without the carry `sum` has the words, and room for one
    /// more.
    static bool SumGrows(const Planes& sum, unsigned width, bool carry) noexcept {
        const std::size_t size = WideSize(width);
        const unsigned top = width % 32;
        if (top != 0) return carry || (sum.value[size - 1] >> top & 1U) != 0;
        sum.value[size] = static_cast<Word>(carry);
        sum.mask[size] = 0;
        return carry;
    }
    /// The end of every wide sum; returns its width.
    static unsigned FinishedSum(const Planes& sum, unsigned width, bool carry) noexcept {
        const unsigned grown = width + static_cast<unsigned>(SumGrows(sum, width, carry));
        Trim(sum, grown);
        return grown;
    }
    /// What every operation in place on a wide value ends with.
    static KVAL_UINTEGER& ChangedWide(KVAL_UINTEGER& v) noexcept {
        TrimWide(v);
        v.DeleteString();
        return v;
    }
    static void CopyShort(const Planes& to, const KVAL_UINTEGER& from) noexcept {
        words::copy_limbs(to.value, from.uvalue.words, Size(from));
        words::copy_limbs(to.mask, from.xmask.words, Size(from));
    }
    template <typename Rule>
    static void CombineShort(const Planes& to, const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) noexcept {
        words::combine_limbs(to.value, to.mask, l.uvalue.words, l.xmask.words, r.uvalue.words, r.xmask.words, Size(l),
                             rule);
    }
    /// Limb `limb` of both planes.
    static FourState<DoubleWord> LimbAt(const View& of, std::size_t limb) noexcept {
        if (limb < of.size / 2) return {words::load_pair(of.value + 2 * limb), words::load_pair(of.mask + 2 * limb)};
        if (limb == of.size / 2 && of.size % 2 != 0) return {of.value[of.size - 1], of.mask[of.size - 1]};
        return {0, 0};
    }
    static void StoreLimb(const Planes& to, std::size_t size, std::size_t limb, FourState<DoubleWord> bits) noexcept {
        if (limb < size / 2) {
            words::store_pair(to.value + 2 * limb, bits.value);
            words::store_pair(to.mask + 2 * limb, bits.mask);
        } else {
            to.value[size - 1] = static_cast<Word>(bits.value);
            to.mask[size - 1] = static_cast<Word>(bits.mask);
        }
    }
    /// Both planes shifted right by less than the width, to `width` bits in other arrays or in the same ones: upwards,
    /// so that no limb is overwritten before it is read.
    static void ShiftRightShort(const Planes& to, unsigned width, const View& from, unsigned count) noexcept {
        const std::size_t size = WideSize(width);
        const std::size_t skip = count / 64;
        const unsigned bits = count % 64;
        FourState<DoubleWord> low = LimbAt(from, skip);
        for (std::size_t i = 0; 2 * i < size; ++i) {
            const FourState<DoubleWord> high = LimbAt(from, i + skip + 1);
            StoreLimb(
                to, size, i,
                {words::joined_right(high.value, low.value, bits), words::joined_right(high.mask, low.mask, bits)});
            low = high;
        }
        Trim(to, width);
    }
    /// Both planes shifted left, likewise, downwards; nothing is trimmed.
    static void ShiftLeftShort(const Planes& to, unsigned width, const View& from, unsigned count) noexcept {
        const std::size_t size = WideSize(width);
        const std::size_t skip = count / 64;
        const unsigned bits = count % 64;
        std::size_t i = (size + 1) / 2;
        FourState<DoubleWord> high = LimbAt(from, i - 1 - skip);
        while (i-- != 0) {
            const FourState<DoubleWord> low = LimbAt(from, i - 1 - skip);
            StoreLimb(to, size, i,
                      {words::joined_left(high.value, low.value, bits), words::joined_left(high.mask, low.mask, bits)});
            high = low;
        }
    }

    // The arrays of new short values.

    static Planes CopiedShort(const KVAL_UINTEGER& v) {
        const Planes copy = TakePlanes(Size(v));
        CopyShort(copy, v);
        return copy;
    }
    template <typename Rule>
    static Planes CombinedShort(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) {
        const Planes result = TakePlanes(Size(l));
        CombineShort(result, l, r, rule);
        return result;
    }
    /// Without an X flag on either side.
    static Planes XorShort(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const Planes result = TakePlanes(Size(l));
        words::copy_limbs(result.mask, Wider(l, r).xmask.words, Size(l));
        words::map_limbs(result.value, l.uvalue.words, r.uvalue.words, Size(l), Xor());
        return result;
    }
    static Planes NotShort(const KVAL_UINTEGER& v) {
        const Planes result = TakePlanes(Size(v));
        words::copy_limbs(result.mask, v.xmask.words, Size(v));
        words::map_limbs(result.value, v.uvalue.words, v.uvalue.words, Size(v), Not());
        Trim(result, v.width);
        return result;
    }
    /// A sum of 65 bits, of operands of up to 64.
    static Planes AddPairs(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned* width) {
        *width = 65;
        const Planes sum = TakePlanes(SumSize(64));
        words::store_pair(sum.value, LowPair(l) + LowPair(r));
        words::store_pair(sum.mask, LowPairMask(Wider(l, r)));
        sum.value[2] = 1;
        sum.mask[2] = 0;
        return sum;
    }
    static Planes AddShort(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned* width) {
        const KVAL_UINTEGER& wider = Wider(l, r);
        const Planes sum = TakePlanes(SumSize(wider.width));
        words::copy_limbs(sum.mask, wider.xmask.words, Size(l));
        *width = FinishedSum(
            sum, wider.width,
            words::chain_limbs(sum.value, l.uvalue.words, r.uvalue.words, Size(l), false, words::AddStep()));
        return sum;
    }
    static Planes SubShort(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const Planes difference = TakePlanes(Size(l));
        words::copy_limbs(difference.mask, l.xmask.words, Size(l));
        words::chain_limbs(difference.value, l.uvalue.words, r.uvalue.words, Size(l), false, words::SubtractStep());
        Trim(difference, l.width);
        return difference;
    }
    /// Every bit X, over the value bits of an operand, or over zeros.
    static Planes AllXShort(const KVAL_UINTEGER& under) {
        const Planes result = TakePlanes(Size(under));
        words::copy_limbs(result.value, under.uvalue.words, Size(under));
        return AllX(result, under.width);
    }
    static Planes AllXShort(unsigned width) {
        const Planes result = TakePlanes(WideSize(width));
        words::fill_limbs(result.value, 0, WideSize(width));
        return AllX(result, width);
    }
    static Planes AllX(const Planes& planes, unsigned width) noexcept {
        words::fill_limbs(planes.mask, ~Word{0}, WideSize(width));
        Trim(planes, width);
        return planes;
    }
    /// A known number of 65 to 256 bits, trimmed in registers: what is stored in parts is slow to read again.
    static Planes NumberShort(words::QuadWord low, words::QuadWord high, unsigned width) {
        const words::QuadWord used = ~words::QuadWord{0} >> (-width & 127U);
        const std::size_t size = WideSize(width);
        const Planes result = TakePlanes(size);
        words::store_quads(result.value, size, {width <= 128 ? low & used : low, high & used});
        words::store_quads(result.mask, size, {0, 0});
        return result;
    }
    /// An operand of up to 128 bits.
    static words::QuadWord LowQuad(const KVAL_UINTEGER& v) noexcept {
        const View stored = Words(v);
        return words::load_quad(stored.value, stored.size);
    }
    /// A product of operands of up to 128 bits, without flag X.
    static Planes MulShort(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const unsigned width = l.width + r.width;
        if (UpToPairs(l, r)) return NumberShort(static_cast<words::QuadWord>(LowPair(l)) * LowPair(r), 0, width);
        const words::QuadPair product = words::multiply_quads(LowQuad(l), LowQuad(r));
        return NumberShort(product.low, product.high, width);
    }
    static Planes ShlShort(const KVAL_UINTEGER& v, unsigned count, unsigned width) {
        const Planes result = TakePlanes(WideSize(width));
        ShiftLeftShort(result, width, Words(v), count);
        return result;
    }
    static Planes ShrShort(const KVAL_UINTEGER& v, unsigned count, unsigned width) {
        const Planes result = TakePlanes(WideSize(width));
        ShiftRightShort(result, width, Words(v), count);
        return result;
    }
    /// Less than 0, 0 or more than 0 as `l` is less than, equal to or greater than `r` in value bits, where one of them
    /// is wide. What the top words tell of equally long values is told on the spot.
    static int Compared(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        if (UpToPairs(l, r)) return CompareMixed(l, r);
        if (Size(l) == Size(r)) {
            const DoubleWord x = words::load_pair(l.uvalue.words + Size(l) - 2);
            const DoubleWord y = words::load_pair(r.uvalue.words + Size(r) - 2);
            if (x != y) return x > y ? 1 : -1;
        }
        return CompareLarge(l, r);
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
    static unsigned WithX(unsigned flags) noexcept { return flags | static_cast<unsigned>(KVAL_UINTEGER::kX); }
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
        return TrimmedResult(width, {value, 0xFFFFFFFFU}, WithX(flags));
    }
    /// What every operation in place on a compact value ends with.
    static KVAL_UINTEGER& ChangedWord(KVAL_UINTEGER& v, FourState<Word> bits, bool as_they_are = false) noexcept {
        const Word top = as_they_are ? 0xFFFFFFFFU : TopMask(v.width);
        v.uvalue.word = bits.value & top;
        v.xmask.word = bits.mask & top;
        v.DeleteString();
        return v;
    }
    /// The value bits alone change in place.
    static KVAL_UINTEGER& ChangedValue(KVAL_UINTEGER& v, Word value) noexcept {
        return ChangedWord(v, {value, v.xmask.word});
    }

    /// AND or OR. No flag of either operand reaches the result, not even when it holds X bits: deliberate, unlike the
    /// forms in place.
    template <typename Rule>
    static KVAL_UINTEGER Combined(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) {
        if (Compact(l, r)) return CompactResult(Wider(l, r).width, rule(LowWord(l), LowWord(r)), 0);
        if (Pairs(l, r)) return PairResult(Wider(l, r).width, rule(PairOf(l), PairOf(r)), 0);
        return Owner(CombinedLarge(l, r, rule), Wider(l, r).width, 0);
    }
    /// AND or OR in place.
    template <typename Rule>
    static KVAL_UINTEGER& Combine(KVAL_UINTEGER& v, const KVAL_UINTEGER& other, Rule rule) noexcept {
        v.UniteFlags(other);
        if (v.IsCompact()) return ChangedWord(v, rule({v.uvalue.word, v.xmask.word}, LowWord(other)));
        // Beyond a compact operand the upper word would stand as it is.
        if (IsPair(v) && !other.IsCompact()) return ChangedPair(v, rule(PairOf(v), PairOf(other)));
        return CombineLarge(v, other, rule);
    }
    /// The result starts as the wider operand, x-mask included, and keeps them but for the value bits; with an X flag
    /// on either side it becomes all X.
    static KVAL_UINTEGER XorWider(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const KVAL_UINTEGER& wider = Wider(l, r);
        const bool all_x = l.is_x() || r.is_x();
        const unsigned flags = all_x ? WithX(Flags(wider)) : Flags(wider);
        if (!Pairs(l, r)) return Owner(XorLarge(l, r), wider.width, flags);
        const FourState<DoubleWord> bits = {LowPair(l) ^ LowPair(r), LowPairMask(wider)};
        const FourState<DoubleWord> every_x = PairTrimmed({LowPair(wider), ~DoubleWord{0}}, wider.width);
        return PairResult(wider.width, all_x ? every_x : bits, flags);
    }
    static KVAL_UINTEGER NotWider(const KVAL_UINTEGER& v) {
        if (!IsPair(v)) return Owner(NotLarge(v), v.width, Flags(v));
        return TrimmedPair(v.width, {~LowPair(v), LowPairMask(v)}, Flags(v));
    }
    /// The borrow behind a compact right operand has a rule of its own.
    static KVAL_UINTEGER SubWider(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        if (!Pairs(l, r)) return Owner(SubLarge(l, r), l.width, Flags(l));
        return TrimmedPair(l.width, {LowPair(l) - LowPair(r), LowPairMask(l)}, Flags(l));
    }
    /// A left shift with a result that is not compact, or of a count of 32 and more.
    static KVAL_UINTEGER ShlWider(const KVAL_UINTEGER& v, unsigned count) {
        const unsigned width = v.width + count;
        if (count < 64 && v.width <= 64 && IsPair(width))
            return PairResult(width, ShiftedLeft(LowPairs(v), count), Flags(v));
        return KVAL_UINTEGER(v, static_cast<int>(count), true);
    }
    /// The `width` bits, up to 64, of a wide value from bit `count` up, which is below its width.
    static FourState<DoubleWord> UpperBits(const KVAL_UINTEGER& v, unsigned count, unsigned width) noexcept {
        const unsigned bits = count % 64;
        if (IsPair(v)) {
            const FourState<DoubleWord> pair = PairOf(v);
            return PairTrimmed({pair.value >> bits, pair.mask >> bits}, width);
        }
        const FourState<DoubleWord> low = LimbAt(Words(v), count / 64);
        const FourState<DoubleWord> high = LimbAt(Words(v), count / 64 + 1);
        return PairTrimmed(
            {words::joined_right(high.value, low.value, bits), words::joined_right(high.mask, low.mask, bits)}, width);
    }
    /// A right shift of a wide value to a result of the given width, up to 64.
    static KVAL_UINTEGER ShrToPair(const KVAL_UINTEGER& v, unsigned count, unsigned width) {
        const FourState<DoubleWord> bits = count < v.width ? UpperBits(v, count, width) : FourState<DoubleWord>{0, 0};
        if (width > 32) return PairResult(width, bits, Flags(v));
        return CompactResult(width, {static_cast<Word>(bits.value), static_cast<Word>(bits.mask)}, Flags(v));
    }
    /// The sum of operands of which one is wide.
    static KVAL_UINTEGER AddWider(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        const KVAL_UINTEGER& wider = Wider(l, r);
        if (UpToPairs(l, r)) {
            const DoubleWord sum = LowPair(l) + LowPair(r);
            const bool carry = sum < LowPair(l);
            const bool reached = (sum >> 1 >> (wider.width - 1) & 1U) != 0;
            const unsigned grown = wider.width + static_cast<unsigned>(carry || reached);
            if (grown <= 64) return TrimmedPair(grown, {sum, LowPairMask(wider)}, Flags(wider));
        }
        unsigned width = 0;
        const Planes sum = AddLarge(l, r, &width);
        return Owner(sum, width, Flags(wider), SumSize(wider.width));
    }
    static KVAL_UINTEGER CompactProduct(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned width) noexcept {
        if (l.is_x() || r.is_x()) return AllXResult(width, 0, 0);
        return TrimmedResult(width, {l.uint() * r.uint(), 0}, 0);
    }
    /// A product whose width adds up to more than 32.
    static KVAL_UINTEGER MulWider(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned width) {
        // The widths of very wide operands add up to what is read as negative, and becomes 1.
        if (KVAL_UINTEGER::IsCompact(static_cast<int>(width))) return CompactProduct(l, r, 1);
        const bool all_x = l.is_x() || r.is_x();
        if (!UpToPairs(l, r) || width > 64) return Owner(MulLarge(l, r), width, all_x ? WithX(0) : 0);
        const FourState<DoubleWord> product = {LowPair(l) * LowPair(r), 0};
        return TrimmedPair(width, all_x ? FourState<DoubleWord>{0, ~DoubleWord{0}} : product, all_x ? WithX(0) : 0);
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

    // Operators on what is neither compact nor all pairs, or grows beyond a pair. Mostly not inline, but compiled into
    // the program, where a call costs less than one into the library: short values are done here.
    //
    // Of a new value, the arrays alone come back, in two registers, and the caller makes their owner: an object whose
    // address is known nowhere else can stay in registers where its value is compact, and dies for nothing.

    /// A wide value with these arrays of its size, or of as many words as are told.
    static KVAL_UINTEGER Owner(Planes planes, unsigned width, unsigned flags, std::size_t words) noexcept {
        return KVAL_UINTEGER(planes, words, width, flags);
    }
    static KVAL_UINTEGER Owner(Planes planes, unsigned width, unsigned flags) noexcept {
        return Owner(planes, width, flags, WideSize(width));
    }

    __attribute__((noinline)) static KVAL_UINTEGER& AssignLarge(KVAL_UINTEGER& v, const KVAL_UINTEGER& other) noexcept {
        if (!Short(v, other)) return v.AssignWide(other);
        CopyShort(PlanesOf(v), other);
        v.flags = other.flags;
        if (v.width != other.width) TrimWide(v);
        v.DeleteString();
        return v;
    }
    template <typename Rule>
    __attribute__((noinline)) static KVAL_UINTEGER& CombineLarge(KVAL_UINTEGER& v, const KVAL_UINTEGER& other,
                                                                 Rule rule) noexcept {
        if (!Short(v, other)) return CombineWide(v, other, rule);
        CombineShort(PlanesOf(v), v, other, rule);
        return ChangedWide(v);
    }
    __attribute__((noinline)) static KVAL_UINTEGER& AddAssignLarge(KVAL_UINTEGER& v,
                                                                   const KVAL_UINTEGER& other) noexcept {
        if (!Short(v, other)) return v.AddAssignWide(other);
        words::chain_limbs(v.uvalue.words, v.uvalue.words, other.uvalue.words, Size(v), false, words::AddStep());
        return ChangedWide(v);
    }
    __attribute__((noinline)) static KVAL_UINTEGER& SubAssignLarge(KVAL_UINTEGER& v,
                                                                   const KVAL_UINTEGER& other) noexcept {
        if (!Short(v, other)) return v.SubAssignWide(other);
        words::chain_limbs(v.uvalue.words, v.uvalue.words, other.uvalue.words, Size(v), false, words::SubtractStep());
        return ChangedWide(v);
    }
    // A number changes no more than the low limb, but for a carry or borrow that is rare.
    static KVAL_UINTEGER& AddAssignLarge(KVAL_UINTEGER& v, unsigned number) noexcept {
        const DoubleWord sum = LowPair(v) + number;
        if (sum < number) return v.AddAssignWide(number);
        words::store_pair(v.uvalue.words, sum);
        return ChangedWide(v);
    }
    static KVAL_UINTEGER& SubAssignLarge(KVAL_UINTEGER& v, unsigned number) noexcept {
        const DoubleWord low = LowPair(v);
        if (low < number) return v.SubAssignWide(number);
        words::store_pair(v.uvalue.words, low - number);
        return ChangedWide(v);
    }
    __attribute__((noinline)) static KVAL_UINTEGER& ShlAssignLarge(KVAL_UINTEGER& v, unsigned count) noexcept {
        if (!IsShort(v)) return v.ShlAssignWide(count);
        ShiftLeftShort(PlanesOf(v), v.width, Words(v), count);
        return ChangedWide(v);
    }
    __attribute__((noinline)) static KVAL_UINTEGER& ShrAssignLarge(KVAL_UINTEGER& v, unsigned count) noexcept {
        if (!IsShort(v) || count >= v.width) return v.ShrAssignWide(count);
        ShiftRightShort(PlanesOf(v), v.width, Words(v), count);
        v.DeleteString();
        return v;
    }
    /// Of a pair and a compact value.
    __attribute__((noinline)) static int CompareMixed(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        return LowPair(l) < LowPair(r) ? -1 : static_cast<int>(LowPair(l) > LowPair(r));
    }
    __attribute__((noinline)) static int CompareLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        const bool few = Size(l) == Size(r) && Size(l) <= 64;
        return few ? words::compare_limbs(l.uvalue.words, r.uvalue.words, Size(l)) : CompareWide(l, r);
    }
    __attribute__((noinline)) static bool IdenticalLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
        if (Flags(l) != Flags(r)) return false;
        if (Size(l) != Size(r)) return IdenticalWide(l, r);
        return words::same(l.uvalue.words, r.uvalue.words, Size(l)) &&
               words::same(l.xmask.words, r.xmask.words, Size(l));
    }
    __attribute__((noinline)) static Planes CopiedLarge(const KVAL_UINTEGER& v) {
        return IsShort(v) ? CopiedShort(v) : CopiedWide(v);
    }
    template <typename Rule>
    __attribute__((noinline)) static Planes CombinedLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule) {
        return Short(l, r) ? CombinedShort(l, r, rule) : CombinedWide(l, r, rule);
    }
    __attribute__((noinline)) static Planes XorLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        if (!Short(l, r)) return XorWide(l, r);
        return l.is_x() || r.is_x() ? AllXShort(Wider(l, r)) : XorShort(l, r);
    }
    __attribute__((noinline)) static Planes NotLarge(const KVAL_UINTEGER& v) {
        return IsShort(v) ? NotShort(v) : NotWide(v);
    }
    /// Tells the width of the sum as well.
    __attribute__((noinline)) static Planes AddLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned* width) {
        if (UpToPairs(l, r)) return AddPairs(l, r, width);
        return Short(l, r) ? AddShort(l, r, width) : AddWide(l, r, width);
    }
    __attribute__((noinline)) static Planes SubLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        return Short(l, r) ? SubShort(l, r) : SubWide(l, r);
    }
    __attribute__((noinline)) static Planes MulLarge(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
        if (l.width > 128 || r.width > 128) return MulWide(l, r);
        if (l.is_x() || r.is_x()) return AllXShort(l.width + r.width);
        return MulShort(l, r);
    }
    /// Left shifts to a width of which nothing was cut.
    __attribute__((noinline)) static Planes ShlLarge(const KVAL_UINTEGER& v, unsigned count, unsigned width) {
        return width <= 256 ? ShlShort(v, count, width) : ShiftedWide(v, count, true, width);
    }
    __attribute__((noinline)) static Planes ShrLarge(const KVAL_UINTEGER& v, unsigned count, unsigned width) {
        return IsShort(v) ? ShrShort(v, count, width) : ShrWide(v, count, width);
    }

    KVAL_API static Planes ConstructedWide(unsigned value, unsigned width);
    KVAL_API static Planes CopiedWide(const KVAL_UINTEGER& v);
    KVAL_API static Planes ShiftedWide(const KVAL_UINTEGER& v, unsigned count, bool left, unsigned width);
    template <typename Rule>
    KVAL_API static KVAL_UINTEGER& CombineWide(KVAL_UINTEGER& v, const KVAL_UINTEGER& other, Rule rule) noexcept;
    template <typename Rule>
    KVAL_API static Planes CombinedWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, Rule rule);
    /// Takes the text and not the value, whose address would else be known outside: it could not be kept in registers.
    KVAL_API static void DeleteText(const char* text) noexcept;
    KVAL_API static Planes XorWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static Planes NotWide(const KVAL_UINTEGER& v);
    KVAL_API static Planes AddWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r, unsigned* width);
    static void FinishWideSum(KVAL_UINTEGER& sum, unsigned width, bool carry);
    KVAL_API static Planes SubWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static Planes MulWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
    KVAL_API static Planes ShrWide(const KVAL_UINTEGER& v, unsigned count, unsigned width);
    KVAL_API static int CompareWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
    KVAL_API static int CompareWide(const KVAL_UINTEGER& v, unsigned number) noexcept;
    /// Whether both planes hold the same bits, in unlike numbers of words; the caller has compared the flags.
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
    // The shortest work takes the straight way.
    if (__builtin_expect(IsCompact(), true)) {
        uvalue.word = value & TopMask(width);
        xmask.word = 0;
    } else if (kval::detail::Internals::IsPair(width)) {
        AllocateWide(2);
        kval::detail::Internals::SetPair(*this, {value, 0});
    } else {
        OwnPlanes(kval::detail::Internals::ConstructedWide(value, width), kval::detail::Internals::Size(*this));
    }
}

// A wide result whose words the caller writes next.
inline KVAL_UINTEGER::KVAL_UINTEGER(unsigned bit_width, std::size_t words, unsigned state)
    : width(bit_width), text_cache(nullptr), flags(static_cast<std::uint8_t>(state)) {
    AllocateWide(words);
}

inline KVAL_UINTEGER::KVAL_UINTEGER(kval::detail::Planes planes, std::size_t words, unsigned bit_width,
                                    unsigned state) noexcept
    : width(bit_width), text_cache(nullptr), flags(static_cast<std::uint8_t>(state)) {
    OwnPlanes(planes, words);
}

inline void KVAL_UINTEGER::OwnPlanes(kval::detail::Planes planes, std::size_t words) noexcept {
    __asm__("" : "+r"(planes.value), "+r"(planes.mask));  // each in a register of its own
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
    kval::detail::GivePlanes(uvalue.words, xmask.words, capacity);
    uvalue.words = nullptr;
    xmask.words = nullptr;
    capacity = 0;
}

inline KVAL_UINTEGER::KVAL_UINTEGER(const KVAL_UINTEGER& other)
    : width(other.width), text_cache(nullptr), flags(static_cast<std::uint8_t>(other.flags & kFourState)), capacity(0) {
    if (IsCompact()) {
        uvalue.word = other.uvalue.word;
        xmask.word = other.xmask.word;
    } else if (kval::detail::Internals::IsPair(width)) {
        const auto bits = kval::detail::Internals::PairOf(other);
        AllocateWide(2);
        kval::detail::Internals::SetPair(*this, bits);
    } else {
        OwnPlanes(kval::detail::Internals::CopiedLarge(other), kval::detail::Internals::Size(*this));
    }
}

inline KVAL_UINTEGER::KVAL_UINTEGER(KVAL_UINTEGER&& other) noexcept : text_cache(nullptr) { TakeFrom(other); }

inline KVAL_UINTEGER::KVAL_UINTEGER(const KVAL_UINTEGER& other, int count, bool left)
    : width(left ? AtLeastOne(other.width + static_cast<unsigned>(count)) : other.width),
      text_cache(nullptr),
      flags(static_cast<std::uint8_t>(other.flags & kFourState)),
      capacity(0) {
    using kval::detail::Internals;
    const unsigned bits = static_cast<unsigned>(count);
    const bool wrapped = left && Wrapped(other, bits);
    if (IsCompact()) {
        uvalue.word = left ? other.uint() << (bits & 31U) : other.uvalue.word >> (bits & 31U);
        xmask.word = left ? other.LowMask() << (bits & 31U) : other.xmask.word >> (bits & 31U);
        if (!left || wrapped) EnforceWidth();
    } else if (Internals::IsPair(width) && !wrapped) {
        const auto from = Internals::LowPairs(other);
        AllocateWide(2);
        Internals::SetPair(*this,
                           left ? Internals::ShiftedLeft(from, bits) : Internals::ShiftedRight(from, bits, width));
    } else if (left && !wrapped) {
        OwnPlanes(Internals::ShlLarge(other, bits, width), Internals::Size(*this));
    } else {
        OwnPlanes(Internals::ShiftedWide(other, bits, left, width), Internals::Size(*this));
    }
}

/// Whether a left shift by `count` has no room for every bit, because the sum of width and count wrapped.
inline bool KVAL_UINTEGER::Wrapped(const KVAL_UINTEGER& other, unsigned count) const noexcept {
    return std::uint64_t{other.width} + count != width;
}

inline KVAL_UINTEGER::~KVAL_UINTEGER() {
    DeleteString();
    if (capacity != 0) ReleaseWide();
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator=(const KVAL_UINTEGER& other) {
    using kval::detail::Internals;
    if (this == &other) return *this;
    if (IsCompact()) {
        if (width != other.width && width == 0) return AdoptCopy(other);
        flags = other.flags;
        return Internals::ChangedWord(*this, Internals::LowWord(other), width == other.width);
    }
    if (!Internals::IsPair(*this)) return Internals::AssignLarge(*this, other);
    flags = other.flags;
    return Internals::ChangedPair(*this, Internals::LowPairs(other), width == other.width);
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
    using kval::detail::Internals;
    flags = static_cast<std::uint8_t>(flags & ~kFourState);
    if (IsCompact()) {
        if (width == 0) width = 32;
        return Internals::ChangedWord(*this, {value, 0});
    }
    return Internals::IsPair(*this) ? Internals::ChangedPair(*this, {value, 0}) : AssignWide(value);
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
    if (!IsCompact()) {
        kval::detail::Internals::TrimWide(*this);
        return;
    }
    uvalue.word &= TopMask(width);
    xmask.word &= TopMask(width);
}

/// What every operation ends with that changed the bits: trims to the width and drops the text.
inline KVAL_UINTEGER& KVAL_UINTEGER::Changed() noexcept {
    EnforceWidth();
    DeleteString();
    return *this;
}

inline void KVAL_UINTEGER::DeleteString() noexcept {
    if (__builtin_expect(text_cache == nullptr, true)) return;
    kval::detail::Internals::DeleteText(text_cache);
    text_cache = nullptr;
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

inline KVAL_UINTEGER& KVAL_UINTEGER::operator&=(const KVAL_UINTEGER& other) noexcept {
    // Deliberate: a value ANDed into itself keeps even its X bits and its text.
    if (this == &other) return *this;
    return kval::detail::Internals::Combine(*this, other, kval::detail::FourStateAnd());
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator|=(const KVAL_UINTEGER& other) noexcept {
    if (this == &other) return *this;
    return kval::detail::Internals::Combine(*this, other, kval::detail::FourStateOr());
}

inline KVAL_UINTEGER operator&(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    return kval::detail::Internals::Combined(l, r, kval::detail::FourStateAnd());
}

inline KVAL_UINTEGER operator|(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    return kval::detail::Internals::Combined(l, r, kval::detail::FourStateOr());
}

inline KVAL_UINTEGER operator^(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (!Internals::Compact(l, r)) return Internals::XorWider(l, r);
    const KVAL_UINTEGER& wider = Internals::Wider(l, r);
    const unsigned flags = Internals::Flags(wider);
    if (l.is_x() || r.is_x()) return Internals::AllXResult(wider.bitwidth(), wider.uint(), flags);
    // X marks without flag X cancel like value bits: deliberate.
    return Internals::CompactResult(wider.bitwidth(),
                                    {l.uint() ^ r.uint(), Internals::LowMask(l) ^ Internals::LowMask(r)}, flags);
}

inline KVAL_UINTEGER operator~(const KVAL_UINTEGER& v) {
    using kval::detail::Internals;
    if (!v.IsCompact()) return Internals::NotWider(v);
    return Internals::TrimmedResult(v.bitwidth(), {~v.uint(), Internals::LowMask(v)}, Internals::Flags(v));
}

// ---- addition and subtraction ----

inline KVAL_UINTEGER& KVAL_UINTEGER::operator+=(const KVAL_UINTEGER& other) noexcept {
    using kval::detail::Internals;
    if (IsCompact()) return Internals::ChangedValue(*this, uvalue.word + other.uint());
    if (Internals::IsPair(*this))
        return Internals::ChangedPairValue(*this, Internals::LowPair(*this) + Internals::LowPair(other));
    return Internals::AddAssignLarge(*this, other);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator+=(unsigned number) noexcept {
    using kval::detail::Internals;
    if (IsCompact()) return Internals::ChangedValue(*this, uvalue.word + number);
    if (Internals::IsPair(*this)) return Internals::ChangedPairValue(*this, Internals::LowPair(*this) + number);
    return Internals::AddAssignLarge(*this, number);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator-=(const KVAL_UINTEGER& other) noexcept {
    using kval::detail::Internals;
    if (IsCompact()) return Internals::ChangedValue(*this, uvalue.word - other.uint());
    if (Internals::IsPair(*this))
        return Internals::ChangedPairValue(*this, Internals::LowPair(*this) - Internals::LowPair(other));
    return Internals::SubAssignLarge(*this, other);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator-=(unsigned number) noexcept {
    using kval::detail::Internals;
    if (IsCompact()) return Internals::ChangedValue(*this, uvalue.word - number);
    if (Internals::IsPair(*this)) return Internals::ChangedPairValue(*this, Internals::LowPair(*this) - number);
    return Internals::SubAssignLarge(*this, number);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator++() noexcept { return *this += 1U; }

inline KVAL_UINTEGER& KVAL_UINTEGER::operator--() noexcept { return *this -= 1U; }

__attribute__((always_inline)) inline KVAL_UINTEGER operator+(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (!Internals::Compact(l, r)) return Internals::AddWider(l, r);
    const KVAL_UINTEGER& wider = Internals::Wider(l, r);
    const unsigned width = wider.bitwidth();
    const std::uint64_t sum = static_cast<std::uint64_t>(l.uint()) + r.uint();
    // Grown by one bit when the sum reaches the bit above the width; bit 32 too, for operands with bits above their
    // width.
    const unsigned grown = width + static_cast<unsigned>((sum >> width | sum >> 32) & 1U);
    if (grown > 32) return Internals::PairResult(grown, {sum, Internals::LowMask(wider)}, Internals::Flags(wider));
    return Internals::TrimmedResult(grown, {static_cast<std::uint32_t>(sum), Internals::LowMask(wider)},
                                    Internals::Flags(wider));
}

inline KVAL_UINTEGER operator-(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    if (!l.IsCompact()) return Internals::SubWider(l, r);
    return Internals::TrimmedResult(l.bitwidth(), {l.uint() - r.uint(), Internals::LowMask(l)}, Internals::Flags(l));
}

// ---- shifts ----

inline KVAL_UINTEGER& KVAL_UINTEGER::operator<<=(unsigned count) noexcept {
    using kval::detail::Internals;
    // Deliberate, here and in every compact shift: the count is taken modulo 32, and 32 shifts by nothing.
    if (IsCompact()) return Internals::ChangedWord(*this, {uvalue.word << (count & 31U), xmask.word << (count & 31U)});
    if (Internals::IsPair(*this))
        return Internals::ChangedPair(*this, Internals::ShiftedLeft(Internals::PairOf(*this), count));
    return Internals::ShlAssignLarge(*this, count);
}

inline KVAL_UINTEGER& KVAL_UINTEGER::operator>>=(unsigned count) noexcept {
    using kval::detail::Internals;
    if (IsCompact()) return Internals::ChangedWord(*this, {uvalue.word >> (count & 31U), xmask.word >> (count & 31U)});
    if (Internals::IsPair(*this))
        return Internals::ChangedPair(*this, Internals::ShiftedRight(Internals::PairOf(*this), count, width));
    return Internals::ShrAssignLarge(*this, count);
}

inline KVAL_UINTEGER operator<<(const KVAL_UINTEGER& v, unsigned count) {
    using kval::detail::Internals;
    const unsigned width = v.bitwidth() + count;
    if (count < 32 && v.IsCompact() && width - 1 < 32)
        return Internals::CompactResult(width, {v.uint() << count, Internals::LowMask(v) << count},
                                        Internals::Flags(v));
    return Internals::ShlWider(v, count);
}

inline KVAL_UINTEGER operator>>(const KVAL_UINTEGER& v, unsigned count) {
    using kval::detail::Internals;
    const unsigned width = count < v.bitwidth() ? v.bitwidth() - count : 1;
    if (v.IsCompact())
        return Internals::TrimmedResult(width, {v.uint() >> (count & 31U), Internals::LowMask(v) >> (count & 31U)},
                                        Internals::Flags(v));
    if (width <= 64) return Internals::ShrToPair(v, count, width);
    return Internals::Owner(Internals::ShrLarge(v, count, width), width, Internals::Flags(v));
}

// ---- multiplication, division, remainder ----

inline KVAL_UINTEGER operator*(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) {
    using kval::detail::Internals;
    const unsigned width = l.bitwidth() + r.bitwidth();
    return width <= 32 ? Internals::CompactProduct(l, r, width) : Internals::MulWider(l, r, width);
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
    if (Internals::Pairs(l, r)) return Internals::LowPair(l) > Internals::LowPair(r);
    return Internals::Compared(l, r) > 0;
}

inline bool operator>=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    using kval::detail::Internals;
    if (Internals::Compact(l, r)) return l.uint() >= r.uint();
    if (Internals::Pairs(l, r)) return Internals::LowPair(l) >= Internals::LowPair(r);
    return Internals::Compared(l, r) >= 0;
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
    // Value bits first: they tell most different values apart.
    if (Internals::Compact(*this, other))
        return uvalue.word == other.uvalue.word && xmask.word == other.xmask.word &&
               Internals::Flags(*this) == Internals::Flags(other);
    if (!Internals::Pairs(*this, other))
        return Internals::LowPair(*this) == Internals::LowPair(other) && Internals::IdenticalLarge(*this, other);
    return Internals::LowPair(*this) == Internals::LowPair(other) &&
           Internals::LowPairMask(*this) == Internals::LowPairMask(other) &&
           Internals::Flags(*this) == Internals::Flags(other);
}

inline bool KVAL_UINTEGER::operator==(unsigned number) const noexcept {
    if (kval::detail::Internals::Flags(*this) != 0) return false;
    return ReadsNumber(number);
}

inline bool operator==(unsigned number, const KVAL_UINTEGER& v) noexcept { return v == number; }
inline bool operator!=(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v == number); }

#endif
