// kval.h: four-state integer values of any bit width, unsigned and signed, with operators, text, hashes and random
// numbers.
#ifndef KVAL_H
#define KVAL_H

#include <cstddef>
#include <cstdint>

#include "kval/detail/planes.h"

/// The version of this header, as semantic versioning counts; kval_version() is that of the library.
/// @{
#define KVAL_VERSION_MAJOR 0
#define KVAL_VERSION_MINOR 2
#define KVAL_VERSION_PATCH 0
/// @}

/// Marks what the shared library exports; everything without it is inline or internal.
#define KVAL_API __attribute__((visibility("default")))

/// What the headers in kval/ add: text in the spelling of Verilog, streams, vectors of simulators.
namespace kval {
namespace detail {
struct Fields;
}  // namespace detail
}  // namespace kval

/// An unsigned integer of any bit width in which every bit is 0, 1 or X (unknown), and which as a whole may be marked Z
/// (high impedance), WL (weak low) or WH (weak high).
///
/// Storage. A value has two planes of bits: value bits and x-mask. A 1 in the x-mask makes the bit X; the value bit
/// under it is kept and carries no meaning. Both planes are counted in 32-bit words, word 0 least significant. Up to 64
/// bits they are in the object, and no construction, copy, assignment or operator with such a result allocates. From 65
/// bits on they are two owned arrays of get_size() words.
///
/// Rules. Some go by the width: a *compact* value, of 1 to 32 bits, has one word, and many operations take a position
/// or a count modulo 32 there; a *wide* value, of 33 bits and up, has several.
///
/// Invariants, kept by every operation unless its line says otherwise:
///   - the width is at least 1, but in a moved-from value (see the move constructor). Operators may be given one,
///     safely, but what they give for it means nothing;
///   - bits of the top word above the width are 0 in both planes;
///   - any change of value, x-mask, flags or width drops the cached text, and copies start without one;
///   - every value owns its arrays and its text alone.
/// Flag X says that the value holds X bits, but loosely: the raw stores and some operators leave it as it was.
///
/// Widths above 2^31 - 32 bits throw std::bad_alloc; but a product or left shift whose width would come to 2^31 bits or
/// more has 1 bit, or what 32 bits of the sum leave of it. Where memory runs out, std::bad_alloc passes through and
/// every operand, target, flag and cached text is as it was.
///
/// Distinct values may be used by distinct threads at once; one value may not, not even to ask twice for its text.
class KVAL_UINTEGER {
  public:
    // ---- construction, copying, assignment; a width of 0, or negative when read as signed, becomes 1 ----

    /// `value` in `bit_width` bits (mind the order: value, then width), truncated or zero-extended; no X bits or
    /// flags.
    KVAL_UINTEGER(unsigned value, unsigned bit_width);
    /// The same width, bits, x-mask and flags; no text.
    KVAL_UINTEGER(const KVAL_UINTEGER& other);
    /// Takes everything but the text. `other` is left moved-from: width 0, no bits, no flags, no text; it reads as 0,
    /// prints as empty text, and takes the width of the next value assigned to it (32 bits for a number).
    KVAL_UINTEGER(KVAL_UINTEGER&& other) noexcept;
    /// A shifted copy, x-mask moved along, flags kept. Left: `other`'s width + `count` bits, so that nothing is lost.
    /// Right: `other`'s width; a compact one shifts by `count` modulo 32. `count` is not negative.
    KVAL_UINTEGER(const KVAL_UINTEGER& other, int count, bool left);
    ~KVAL_UINTEGER();

    /// Copies bits, x-mask and flags into this value's own width, truncated or zero-extended; the width does not
    /// change, but for that of a moved-from value. Self-assignment changes nothing, not even the text.
    KVAL_UINTEGER& operator=(const KVAL_UINTEGER& other);
    /// As copy assignment; may leave the target's old content in `other`. A moved-from target takes everything instead.
    KVAL_UINTEGER& operator=(KVAL_UINTEGER&& other) noexcept;
    /// The number in this value's own width; X bits and flags are cleared.
    KVAL_UINTEGER& operator=(unsigned value) noexcept;

    // ---- width ----

    /// The width in bits.
    unsigned bitwidth() const noexcept { return width; }
    /// Resizes to `new_width` bits, zero-extended or truncated, x-mask likewise; flags stay. The width as it is:
    /// nothing changes.
    KVAL_UINTEGER& bitwidth(unsigned new_width);
    /// The number of 32-bit words of this width.
    int get_size() const noexcept { return get_size(static_cast<int>(width)); }
    /// The number of 32-bit words of a width of `bit_width`: (bit_width + 31) >> 5.
    static int get_size(int bit_width) noexcept {
        return static_cast<int>(static_cast<unsigned>(bit_width) + 31U) >> 5;
    }
    /// The number of used bits in the top word, 0 meaning all 32.
    unsigned get_top() const noexcept { return width & 31U; }

    // ---- reading; none of these looks at the flags but the four that name one ----

    /// Value bit `pos`, X or not. Throws a const char* when `pos` is greater than the width. `pos` == width passes. It
    /// reads what is stored above the width, mostly 0, and 0 above the stored words. Of 32 bits it reads bit 0: a
    /// compact value takes positions modulo 32.
    unsigned bit(unsigned pos) const;
    /// The low 32 value bits, X or not.
    unsigned uint() const noexcept;
    /// Whether every value bit is 0, X or not.
    bool is_zero() const noexcept;
    /// Whether the value bits read 1, X or not.
    bool is_one() const noexcept;
    /// Value word `index`, 0 outside the value.
    unsigned get_uvalue_at(int index) const noexcept;
    /// X-mask word `index`, 0 outside the value.
    unsigned get_xmask_at(int index) const noexcept;
    /// Whether bit `pos` is X; with `nibble` == 1, whether any bit of the four-bit group `pos` is, as far as it lies in
    /// the width. False outside the stored words of a wide value; a compact one takes a single `pos` modulo 32.
    bool is_x(int pos, int nibble) const noexcept;
    /// Flag X: the value holds X bits. The operators' all-X decisions look at this flag alone, never at the x-mask.
    bool is_x() const noexcept { return (flags & kval::detail::kX) != 0; }
    /// Flag Z: the whole value is high impedance.
    bool is_z() const noexcept { return (flags & kval::detail::kZ) != 0; }
    /// Flag WL: the whole value is weak low.
    bool is_wl() const noexcept { return (flags & kval::detail::kWeakLow) != 0; }
    /// Flag WH: the whole value is weak high.
    bool is_wh() const noexcept { return (flags & kval::detail::kWeakHigh) != 0; }

    // ---- writing ----

    /// Bit `pos` becomes `value`, known. `value` is not reduced to one bit: 3 sets two. Clears flag X once the x-mask
    /// word of that bit holds no X, whatever the other words hold. Throws a const char* when `pos` is greater than the
    /// width. `pos` == width and negative positions pass: outside the stored words they write nothing, but a compact
    /// value takes them modulo 32, so that 32 means bit 0 of 32 bits. May leave bits above the width, which the next
    /// EnforceWidth() clears.
    KVAL_UINTEGER& set_bit(int pos, unsigned value);
    /// Raw store of value word `index` (of the only word, whatever `index`, in compact form): no trimming, flags and
    /// cached text as they were. Ends with EnforceWidth() and DeleteString() by the caller.
    KVAL_UINTEGER& set_uvalue_at(int index, unsigned word) noexcept;
    /// Raw store of x-mask word `index`; as set_uvalue_at.
    KVAL_UINTEGER& set_xmask_at(int index, unsigned word) noexcept;
    /// Bit `pos` becomes X, and flag X is set; positions outside the width change nothing, not even the text.
    KVAL_UINTEGER& set_x(int pos) noexcept;
    /// Every bit becomes X, and flag X is set; the value bits stay underneath.
    KVAL_UINTEGER& force_x() noexcept;
    /// Sets flag Z and nothing else. Assignment of a known value clears it.
    KVAL_UINTEGER& force_z() noexcept;
    /// Sets flag WL and nothing else.
    KVAL_UINTEGER& force_wl() noexcept;
    /// Sets flag WH and nothing else.
    KVAL_UINTEGER& force_wh() noexcept;

    // ---- text; the value keeps one at a time, valid until its next change, or until it is asked for the text of the
    //      other base: one expression must not ask for both ----

    /// (width + 3) / 4 upper-case digits with leading zeros, "X" for a digit with an X bit; "Z", "L" or "H" where that
    /// flag is set and the digit has no X, written at the mirrored place: a value with X bits and such a flag may print
    /// a text that ends early. After a hexadecimal parse: the text that was parsed.
    KVAL_API const char* as_hex_string() const;
    /// One character for every bit, as as_hex_string.
    KVAL_API const char* as_bin_string() const;
    /// Width, bits and cached text from '0', '1' and 'X' characters: "01X0" has one X bit and flag X. One 'X' makes the
    /// whole value X first; then every 0 and 1 sets its bit as set_bit does, flag X included. Other characters leave
    /// their bit as it was. Flags Z, WL and WH stay. Null counts as empty: width 1, old bit 0.
    KVAL_UINTEGER& set_value_from_bin_string(const char* text);
    /// Width (4 bits a digit), bits and cached text from hexadecimal digits, taken in chunks of eight from the right by
    /// the rules of strtoul. Clears the x-mask, leaves the flags. Null counts as empty: width 1, bit 0 and its X mark
    /// as they were.
    KVAL_UINTEGER& set_value_from_hex_string(const char* text);

    // ---- random bits ----

    /// Every bit known and random, from one kval_random() a word, word 0 first; flags cleared.
    KVAL_UINTEGER& randomize() noexcept;
    /// Inverts bits 0 to `count` - 1, each once, in an order drawn from rand(). X-mask, flags and, deliberately, the
    /// cached text stay. A `count` below 0 or above the width changes and draws nothing.
    KVAL_UINTEGER& randomize(int count);

    // ---- hashing ----

    /// A hash of the value words, reduced to the low `bits` bits (1 to 31; else 32 bits). X bits and flags are not
    /// hashed, and the same number in more words hashes differently: not a companion of ==.
    unsigned get_hash(unsigned bits) const noexcept;

    // ---- operators in place: the width stays, results wrap; see the tables after the class for the rest ----

    /// Four-state AND; flags of both sides are united. Words beyond the shorter right operand stay as they are. Into
    /// itself it changes nothing.
    KVAL_UINTEGER& operator&=(const KVAL_UINTEGER& other) noexcept;
    /// Four-state OR; as operator&=.
    KVAL_UINTEGER& operator|=(const KVAL_UINTEGER& other) noexcept;
    /// Adds the value bits; X bits and flags stay. A carry travels one word beyond the right operand's last word, no
    /// further.
    KVAL_UINTEGER& operator+=(const KVAL_UINTEGER& other) noexcept;
    /// Adds a number, with a carry as far as it goes.
    KVAL_UINTEGER& operator+=(unsigned number) noexcept;
    /// Subtracts the value bits; X bits and flags stay. A borrow travels as the carry of += does.
    KVAL_UINTEGER& operator-=(const KVAL_UINTEGER& other) noexcept;
    /// Subtracts a number, with a borrow as far as it goes.
    KVAL_UINTEGER& operator-=(unsigned number) noexcept;
    /// Shifts value bits and x-mask left, zeros in; flags stay. Compact: by `count` modulo 32.
    KVAL_UINTEGER& operator<<=(unsigned count) noexcept;
    /// Shifts value bits and x-mask right, zeros in; flags stay. Compact: by `count` modulo 32.
    KVAL_UINTEGER& operator>>=(unsigned count) noexcept;
    /// Adds 1; X bits and flags stay.
    KVAL_UINTEGER& operator++() noexcept;
    /// Subtracts 1; X bits and flags stay.
    KVAL_UINTEGER& operator--() noexcept;

    /// Four-state identity: value bits, x-masks and the four flags agree; a missing word counts as 0, the width not at
    /// all.
    bool operator==(const KVAL_UINTEGER& other) const noexcept;
    /// The opposite.
    bool operator!=(const KVAL_UINTEGER& other) const noexcept;
    /// Whether the value bits read `number` and none of the flags X, Z, WL, WH is set.
    bool operator==(unsigned number) const noexcept;
    /// The opposite.
    bool operator!=(unsigned number) const noexcept;

    // ---- maintenance, for code that stores raw words ----

    /// Whether the rules for compact values apply: a width of up to 32 bits.
    bool IsCompact() const noexcept { return IsCompact(static_cast<int>(width)); }
    /// Whether they apply to a width of `bit_width`: less than 33.
    static bool IsCompact(int bit_width) noexcept { return bit_width < 33; }
    /// Clears the bits above the width in the top word of value and x-mask; flags and text stay.
    void EnforceWidth() noexcept;
    /// Drops the cached text.
    void DeleteString() noexcept;
    /// Releases the arrays of a wide value, which afterwards may only be destroyed; compact: nothing.
    void DeleteData() noexcept;

  private:
    friend class KVAL_SINTEGER;
    friend struct kval::detail::Fields;

    // One plane of bits: up to 64 bits the bits themselves, above that the address of an owned array. The code uses the
    // number, whatever it stands for; the pointer is there for debuggers.
    union Plane {
        std::uint64_t bits;
        std::uint32_t* words;
    };

    // A value with these fields, as they are.
    KVAL_UINTEGER(unsigned bit_width, kval::detail::Planes planes, unsigned state, unsigned words) noexcept;

    std::uint32_t width;
    Plane uvalue;
    Plane xmask;
    mutable char* text_cache;    // the last text made or parsed, or null
    mutable std::uint8_t flags;  // kval::detail::Flag
    std::uint32_t capacity;      // of a value that owns arrays: the length of both in words, at least get_size()
};

/// The signed reading of the same storage: two's complement, the sign at bit width - 1. Adds no field.
///
/// The sign is the value bit alone, X or not. Unlike the base, a signed value may hold bits above its width in the top
/// word: a wide one made from a negative number, one assigned from a wider unsigned value, and a compact one shifted
/// right by 32 or more. Every operator reads them as they are.
///
/// What is not here is the base's and answers in its types: `!=`, `<<`, `<<=`, `&`, `|`, `^`, `~`, `+=`, `-=`, `++`,
/// `--`. So `==` and `!=` are not complements: 4-bit 1111 and 8-bit 11111111 are `==` (both -1) and `!=` (15 against
/// 255).
class KVAL_SINTEGER : public KVAL_UINTEGER {
  public:
    /// `value` in `bit_width` bits (value, then width), truncated or sign-extended. Wide and negative: ones up to the
    /// top word's end.
    KVAL_SINTEGER(int value, unsigned bit_width);
    /// The same width, bits, x-mask and flags; a set top bit makes it negative.
    /// @{
    KVAL_SINTEGER(const KVAL_UINTEGER& other);
    KVAL_SINTEGER(KVAL_UINTEGER&& other) noexcept;
    KVAL_SINTEGER(const KVAL_SINTEGER& other);
    KVAL_SINTEGER(KVAL_SINTEGER&& other) noexcept;
    /// @}
    ~KVAL_SINTEGER();

    /// Copies bits and x-mask into this value's own width, zero-extended or truncated (not trimmed in the top word),
    /// and the four flags.
    KVAL_SINTEGER& operator=(const KVAL_UINTEGER& other);
    /// Copies bits and x-mask into this value's own width, sign-extended or truncated, and the four flags. A source
    /// that is not negative never gives a negative target: its sign bit is cleared. A negative source that is cut also
    /// gets ones in the target's top word from bit (source width % 32) up, unless that is 0. Wide: the x-mask word that
    /// gets the sign is cleared.
    KVAL_SINTEGER& operator=(const KVAL_SINTEGER& other);
    /// As copy assignment; may leave the target's old content in `other`. A moved-from target takes everything instead.
    /// @{
    KVAL_SINTEGER& operator=(KVAL_UINTEGER&& other) noexcept;
    KVAL_SINTEGER& operator=(KVAL_SINTEGER&& other) noexcept;
    /// @}

    /// The width in bits.
    unsigned bitwidth() const noexcept { return KVAL_UINTEGER::bitwidth(); }
    /// Resizes to `new_width` bits, sign-extended or truncated; the x-mask is zero-extended, flags stay.
    KVAL_SINTEGER& bitwidth(unsigned new_width);

    /// Negates within the width; x-mask and flags stay. The most negative number stays what it is.
    KVAL_SINTEGER& complement_me() noexcept;
    /// A negated copy.
    KVAL_SINTEGER twos_complement() const;

    // ---- 32-bit readings of the low word, exact up to 32 bits ----

    /// The number. Wide and negative: the low word with ones from bit (width - 1) % 32 up, or as it is where that is
    /// bit 0.
    int convert_to_signed_representation() const noexcept;
    /// The same.
    int signed_value() const noexcept;
    /// Value word `index` (compact: the only word), with ones above the width in the top word, whatever the sign.
    unsigned SignExtendedChunk(int index) const noexcept;
    /// Whether signed_value() is 0 or more.
    bool positive() const noexcept;
    /// Whether signed_value() is less than 0.
    bool negative() const noexcept;
    /// The magnitude of signed_value(); of the low word where positive().
    unsigned absolute_value() const noexcept;
    /// 2^((width - 1) % 32): up to 32 bits the magnitude of the most negative number.
    unsigned maximum_negative() const noexcept;
    /// Up to 32 bits the largest number; 0xFFFFFFFF for 1 bit (deliberate) and for wide values.
    unsigned maximum_positive() const noexcept;

    /// Arithmetic shift right, the width stays. A negative value gets its sign filled in from above: exactly where it
    /// is compact and not of 32 bits, else with more ones than were shifted out. By the width and more, up to
    /// 2^31 - 1: all ones. X bits shift unfilled.
    KVAL_SINTEGER& operator>>=(unsigned count) noexcept;

  private:
    friend struct kval::detail::Fields;

    // As the base's.
    KVAL_SINTEGER(unsigned bit_width, kval::detail::Planes planes, unsigned state, unsigned words) noexcept;
};

// ---- free operators; each returns a new value without text, and leaves its operands alone ----

/// Four-state AND or OR, bit by bit, in the wider operand's width; words beyond the shorter operand's last are the
/// longer one's. No flags, so that the result may hold X bits without flag X; AND of two unknowns is a known 0.
/// @{
KVAL_UINTEGER operator&(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
KVAL_UINTEGER operator|(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
/// @}
/// XOR, in the wider operand's width; words beyond the shorter operand's last are the longer one's. All X when either
/// flag X is set; the wider operand's flags (equal widths: the right one's). X marks without flag X do not spread:
/// compact, the two x-masks are XORed; wide, the wider operand's is kept.
KVAL_UINTEGER operator^(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
KVAL_UINTEGER operator~(const KVAL_UINTEGER& v);  ///< Inverts the value bits; width, x-mask and flags kept.

// Arithmetic on the value bits.

/// The wider operand's width, one bit more when the sum carries out of it; x-mask and flags of the wider operand (equal
/// widths: the right one's).
KVAL_UINTEGER operator+(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
/// The left operand's width, x-mask and flags; wraps.
KVAL_UINTEGER operator-(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
/// The full product, as wide as both operands together; all X when either flag X is set, else no flags.
KVAL_UINTEGER operator*(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
/// The dividend's width; all X for a zero divisor. Operands of up to 32 bits: else throws a char*.
KVAL_UINTEGER operator/(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
/// The divisor's width; all X for a zero divisor. Operands of up to 32 bits: else throws a char*.
KVAL_UINTEGER operator%(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);

/// Value bits and x-mask shifted left together, zeros in, flags kept. Wider by `count` bits, so that nothing is lost.
KVAL_UINTEGER operator<<(const KVAL_UINTEGER& v, unsigned count);
/// Value bits and x-mask shifted right together, flags kept. Narrower by `count` bits, at least 1 bit. Compact: shifts
/// by `count` modulo 32.
KVAL_UINTEGER operator>>(const KVAL_UINTEGER& v, unsigned count);

/// Order: value bits as unsigned numbers of any width; X bits and flags play no part.
/// @{
bool operator>(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
bool operator>=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
bool operator<(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
bool operator<=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept;
bool operator>(const KVAL_UINTEGER& v, unsigned number) noexcept;
bool operator>=(const KVAL_UINTEGER& v, unsigned number) noexcept;
bool operator<(const KVAL_UINTEGER& v, unsigned number) noexcept;
bool operator<=(const KVAL_UINTEGER& v, unsigned number) noexcept;
bool operator>(unsigned number, const KVAL_UINTEGER& v) noexcept;
bool operator>=(unsigned number, const KVAL_UINTEGER& v) noexcept;
bool operator<(unsigned number, const KVAL_UINTEGER& v) noexcept;
bool operator<=(unsigned number, const KVAL_UINTEGER& v) noexcept;
/// @}

/// Identity with the number on the left: as the members with the number on the right.
/// @{
bool operator==(unsigned number, const KVAL_UINTEGER& v) noexcept;
bool operator!=(unsigned number, const KVAL_UINTEGER& v) noexcept;
/// @}

/// Exchanges everything: width, bits, x-mask, flags and cached text.
void swap(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept;

// ---- free operators with a signed operand ----
//
// Where widths differ, the narrower operand is first extended to the common width, the larger of both: a signed one by
// its sign, an unsigned one by zeros. Only value bits decide; x-mask and flags of the result are those of the operand
// that is named.

/// The common width, one bit more when the extended bits carry out or the sum would not fit; exact. x-mask and flags of
/// `b`.
KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
/// The common width + 1, one more where that is a multiple of 32 and `a` is not negative and the sum reads negative.
/// Exact while the unsigned operand leaves the top bit of the common width clear: at 8 bits, 1 + 255 reads 0. x-mask
/// and flags of `b`.
KVAL_SINTEGER operator+(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
KVAL_SINTEGER operator+(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);  ///< The same with the operands swapped.
/// The common width, one bit more when the difference would not fit; exact. x-mask and flags of `a`.
KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
/// The common width; wraps. x-mask and flags of `a`.
KVAL_SINTEGER operator-(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
/// `b` not negative: the width of `a` if a >= b, else that of `b`, assigned as a signed value is, so that a result that
/// must not be negative loses a top bit of 1; x-mask and flags of `a`. `b` negative: the width of `a` + 1, of which the
/// added bit is no reliable carry; x-mask and flags of `b`. Bits beyond are lost.
KVAL_SINTEGER operator-(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);

/// The full product of the magnitudes, as wide as both operands together, negated when the signs differ; all X when
/// either flag X is set, else no flags.
/// @{
KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER operator*(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
KVAL_SINTEGER operator*(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
/// @}

/// Narrower by `count` bits (the difference read as signed), at least 1 bit: floor(a / 2^count) for counts below the
/// width. From the width on, a negative value gives a 1-bit -1 without X bits and flags, and a compact one that is not
/// negative is shifted by `count` modulo 32, untrimmed. Compact values always lose their X bits and flags, wide ones
/// otherwise keep them.
KVAL_SINTEGER operator>>(const KVAL_SINTEGER& a, unsigned count);

/// Division: `/` truncates toward zero, `%` has the sign of the dividend, and posr_div and posr_mod are Euclidean: a =
/// b * posr_div(a, b) + posr_mod(a, b) with a remainder from 0 to |b| - 1. For operands of up to 32 bits: else throws a
/// const char*, unless the divisor's low word is 0. Results are as wide as the dividend (quotients) or the divisor
/// (remainders). A zero divisor, and a result out of range, give all X; the range is tested before the sign and with
/// the divisor's bits, so that some results that would fit are X too, and a remainder is X whenever its quotient is.
/// posr_div and posr_mod of a negative dividend by an unsigned divisor that leaves a remainder work on the low words
/// and do not throw. X bits and flags of the operands play no part.
/// @{
KVAL_SINTEGER operator/(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER operator/(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER operator/(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
KVAL_SINTEGER operator%(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER operator%(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER operator%(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
KVAL_SINTEGER posr_div(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER posr_div(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER posr_div(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
KVAL_SINTEGER posr_mod(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER posr_mod(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b);
KVAL_SINTEGER posr_mod(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b);
/// @}

/// Order as numbers. A negative value is less than every unsigned one and equal to none. Where nothing is negative, ==
/// is the identity of the base, X bits and flags included; two negative values are == when their value bits are,
/// sign-extended.
/// @{
bool operator==(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator==(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
bool operator==(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator<(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator<(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
bool operator<(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator<=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator<=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
bool operator<=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator>(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator>(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
bool operator>(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator>=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator>=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
bool operator>=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;
/// @}

/// The base's !=, in every language mode: C++20 would make it the opposite of the signed ==.
/// @{
bool operator!=(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept;
bool operator!=(const KVAL_SINTEGER& a, const KVAL_UINTEGER& b) noexcept;
bool operator!=(const KVAL_UINTEGER& a, const KVAL_SINTEGER& b) noexcept;
/// @}

/// Exchanges everything; a signed and an unsigned value do not swap.
void swap(KVAL_SINTEGER& a, KVAL_SINTEGER& b) noexcept;
void swap(KVAL_SINTEGER& a, KVAL_UINTEGER& b) = delete;
void swap(KVAL_UINTEGER& a, KVAL_SINTEGER& b) = delete;

// ---- random numbers ----
//
// One process-wide additive feedback (lagged Fibonacci) generator on 64-bit words, as described by G. J. Mitchell and
// D. P. Moore (Knuth, The Art of Computer Programming, volume 2, 3.2.2). It works before main, from a fixed initial
// table. Calls from several threads must take turns; independent streams live in buffers of the caller's own.

/// The next number, 0 to 2^63 - 1.
KVAL_API std::int64_t kval_random() noexcept;
/// Restarts the current state from a seed.
KVAL_API void kval_srandom(unsigned seed) noexcept;
/// Moves the generator into a buffer of the caller's, of any alignment, and seeds it. Returns the buffer that was in
/// use, for kval_setstate. `bytes` selects the type, 0 to 4 from 8, 32, 64, 128 and 256 on. Mind that these use 16, 64,
/// 128, 256 and 512 bytes of the buffer, however few `bytes` says. Less than 8 bytes, or a null buffer: returns null,
/// and errno is EINVAL.
KVAL_API void* kval_initstate(unsigned seed, void* buffer, unsigned long bytes) noexcept;
/// Continues from the position last saved in this buffer, as it is whenever the generator leaves it; so the buffer in
/// use goes back. Returns the buffer that was in use. Null, with errno EINVAL, where `buffer` is null or holds no saved
/// position; the generator then goes on as it was.
KVAL_API void* kval_setstate(void* buffer) noexcept;

// ---- hashes and version ----

/// The 32-bit integer hash of Thomas Wang ("Integer Hash Function", the 32-bit mix).
unsigned twang_uinthash(unsigned key) noexcept;
/// The one-at-a-time hash of Bob Jenkins ("A Hash Function for Hash Table Lookup") over `len` bytes, on a signed 32-bit
/// state: bytes are read as signed and right shifts keep the sign. A `len` of 0 or less gives 0.
KVAL_API int one_at_a_time(const char* key, int len) noexcept;
/// The version of the library that is loaded, such as "0.2.0"; the header's is KVAL_VERSION_MAJOR, _MINOR and _PATCH.
KVAL_API const char* kval_version() noexcept;

// The small half of every family of operations; src/ has the large half of each under the same name.
#include "kval/detail/access.h"
#include "kval/detail/addsub.h"
#include "kval/detail/compare.h"
#include "kval/detail/hash.h"
#include "kval/detail/lifecycle.h"
#include "kval/detail/logic.h"
#include "kval/detail/muldiv.h"
#include "kval/detail/random.h"
#include "kval/detail/shift.h"
#include "kval/detail/signed/addsub.h"
#include "kval/detail/signed/compare.h"
#include "kval/detail/signed/division.h"
#include "kval/detail/signed/mulshift.h"
#include "kval/detail/signed/representation.h"
#include "kval/detail/text.h"

#endif
