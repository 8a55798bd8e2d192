// kval.h: four-state integer values of any bit width, with their operators, text forms and hashes.
#ifndef KVAL_H
#define KVAL_H

#include <cstddef>
#include <cstdint>

#define KVAL_VERSION_MAJOR 0
#define KVAL_VERSION_MINOR 1
#define KVAL_VERSION_PATCH 0

/// Marks what the shared library exports; everything without it is inline or internal.
#define KVAL_API __attribute__((visibility("default")))

namespace kval {
namespace detail {
struct Internals;
}
}  // namespace kval

/// An unsigned integer of any bit width in which every bit is 0, 1 or X (unknown), and which as a whole may be marked Z
/// (high impedance), WL (weak low) or WH (weak high).
///
/// Storage. A width of 1 to 32 bits is *compact*: one value word and one x-mask word inside the object, and no
/// construction, copy, assignment or operator with a compact result allocates. A width of 33 bits and up is *wide*: two
/// owned arrays of get_size() 32-bit words, word 0 least significant. A 1 in the x-mask makes the bit X; the value bit
/// under it is kept and carries no meaning.
///
/// Invariants, kept by every operation unless its line says otherwise:
///   - the width is at least 1, but in a moved-from value (see the move constructor). Operators may be given one,
///     safely, but what they give for it means nothing;
///   - bits of the top word above the width are 0 in both planes;
///   - any change of value, x-mask, flags or width drops the cached text, and copies start without one;
///   - every value owns its arrays and its text alone.
/// Flag X says that the value holds X bits, but loosely: the raw stores and some operators leave it as it was.
///
/// Widths above 2^31 - 32 bits throw std::bad_alloc. Where memory runs out, std::bad_alloc passes through and every
/// operand, target, flag and cached text is as it was.
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
    /// Right: `other`'s width. Compact forms shift by `count` modulo 32. `count` is not negative.
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

    /// Value bit `pos`, X or not. Throws a const char* when `pos` is greater than the width; `pos` == width passes, and
    /// is 0 above the stored words.
    unsigned bit(unsigned pos) const;
    /// The low 32 value bits, X or not.
    unsigned uint() const noexcept { return IsCompact() ? uvalue.word : uvalue.words[0]; }
    /// Whether every value bit is 0, X or not.
    bool is_zero() const noexcept { return IsCompact() ? uvalue.word == 0 : IsNumberWide(0); }
    /// Whether the value bits read 1, X or not.
    bool is_one() const noexcept { return IsCompact() ? uvalue.word == 1 : IsNumberWide(1); }
    /// Value word `index`, 0 outside the value.
    unsigned get_uvalue_at(int index) const noexcept;
    /// X-mask word `index`, 0 outside the value.
    unsigned get_xmask_at(int index) const noexcept;
    /// Whether bit `pos` is X; with `nibble` == 1, whether any bit of the four-bit group `pos` is, as far as it lies in
    /// the width. False outside the stored words of a wide value; a compact one takes a single `pos` modulo 32.
    bool is_x(int pos, int nibble) const noexcept;
    /// Flag X: the value holds X bits. The operators' all-X decisions look at this flag alone, never at the x-mask.
    bool is_x() const noexcept { return (flags & kX) != 0; }
    /// Flag Z: the whole value is high impedance.
    bool is_z() const noexcept { return (flags & kZ) != 0; }
    /// Flag WL: the whole value is weak low.
    bool is_wl() const noexcept { return (flags & kWeakLow) != 0; }
    /// Flag WH: the whole value is weak high.
    bool is_wh() const noexcept { return (flags & kWeakHigh) != 0; }

    // ---- writing ----

    /// Bit `pos` becomes `value`, known. `value` is not reduced to one bit: 3 sets two. Clears flag X once the x-mask
    /// word of that bit holds no X, whatever the other words hold. Throws a const char* when `pos` is greater than the
    /// width; `pos` == width and negative positions pass, and write nothing outside the stored words. May leave bits
    /// above the width, which the next EnforceWidth() clears.
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
    KVAL_UINTEGER& force_z() noexcept { return SetFlag(kZ); }
    /// Sets flag WL and nothing else.
    KVAL_UINTEGER& force_wl() noexcept { return SetFlag(kWeakLow); }
    /// Sets flag WH and nothing else.
    KVAL_UINTEGER& force_wh() noexcept { return SetFlag(kWeakHigh); }

    // ---- text; the value keeps one at a time, valid until its next change, or until it is asked for the text of the
    //      other base: one expression must not ask for both ----

    /// (width + 3) / 4 upper-case digits with leading zeros, "X" for a digit with an X bit; "Z", "L" or "H" where that
    /// flag is set and the digit has no X, written at the mirrored place. After a hexadecimal parse: the text that was
    /// parsed.
    KVAL_API const char* as_hex_string() const;
    /// One character for every bit, as as_hex_string.
    KVAL_API const char* as_bin_string() const;
    /// Width, bits and cached text from '0', '1' and 'X' characters: "01X0" has one X bit and flag X. One 'X' makes the
    /// whole value X first; then every 0 and 1 sets its bit as set_bit does, flag X included. Other characters leave
    /// their bit as it was. Null counts as empty: width 1, old bit 0.
    KVAL_API KVAL_UINTEGER& set_value_from_bin_string(const char* text);
    /// Width (4 bits a digit), bits and cached text from hexadecimal digits, taken in chunks of eight from the right by
    /// the rules of strtoul. Clears the x-mask, leaves the flags. Null counts as empty: width 1, bit 0 and its X mark
    /// as they were.
    KVAL_API KVAL_UINTEGER& set_value_from_hex_string(const char* text);

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
    bool operator!=(const KVAL_UINTEGER& other) const noexcept { return !(*this == other); }
    /// Whether the value bits read `number` and none of the flags X, Z, WL, WH is set.
    bool operator==(unsigned number) const noexcept;
    bool operator!=(unsigned number) const noexcept { return !(*this == number); }

    // ---- maintenance, for code that stores raw words ----

    /// Whether this width is kept in compact form.
    bool IsCompact() const noexcept { return IsCompact(static_cast<int>(width)); }
    /// Whether a width of `bit_width` is kept in compact form: less than 33.
    static bool IsCompact(int bit_width) noexcept { return bit_width < 33; }
    /// Clears the bits above the width in the top word of value and x-mask; flags and text stay.
    void EnforceWidth() noexcept;
    /// Drops the cached text.
    void DeleteString() noexcept;
    /// Releases the arrays of a wide value, which afterwards may only be destroyed; compact: nothing.
    void DeleteData() noexcept;

  private:
    friend struct kval::detail::Internals;

    // One plane of bits: the word itself in compact form, an owned array in wide form.
    union Plane {
        std::uint32_t word;
        std::uint32_t* words;
    };
    enum Flag : std::uint8_t { kX = 1, kZ = 2, kWeakLow = 4, kWeakHigh = 8, kFourState = 15, kBinaryText = 16 };

    // A compact result as it stands: nothing is trimmed.
    KVAL_UINTEGER(std::uint32_t value, std::uint32_t mask, unsigned bit_width, unsigned state) noexcept;
    // A wide result whose words the caller writes next: two arrays of `words` words.
    KVAL_UINTEGER(unsigned bit_width, std::size_t words, unsigned state);

    // The used bits of the top word: -width & 31 of its bits are above the width, none where the width fills it.
    static std::uint32_t TopMask(unsigned bit_width) noexcept { return 0xFFFFFFFFU >> (-bit_width & 31U); }
    static unsigned AtLeastOne(unsigned bit_width) noexcept { return static_cast<int>(bit_width) > 0 ? bit_width : 1; }

    std::uint32_t LowMask() const noexcept { return IsCompact() ? xmask.word : xmask.words[0]; }
    std::uint32_t WordAt(const Plane& plane, unsigned index) const noexcept;
    void StoreAt(Plane& plane, unsigned index, std::uint32_t word) noexcept;
    KVAL_UINTEGER& SetFlag(Flag flag) noexcept;
    KVAL_UINTEGER& Changed() noexcept;
    void UniteFlags(const KVAL_UINTEGER& other) noexcept;
    void TakeFrom(KVAL_UINTEGER& other) noexcept;
    bool Wrapped(const KVAL_UINTEGER& other, unsigned count) const noexcept;
    template <typename Rule>
    KVAL_UINTEGER& CombineLowWord(const KVAL_UINTEGER& other, Rule rule) noexcept;
    void AllocateWide(std::size_t words);
    const char* KeepText(char* text, std::uint8_t kind) const noexcept;

    // Out of line: what is wide, and what is rare.
    KVAL_API void ConstructWide(unsigned value);
    KVAL_API void CopyWide(const KVAL_UINTEGER& other);
    KVAL_API void ShiftedCopyWide(const KVAL_UINTEGER& other, unsigned count, bool left);
    KVAL_API KVAL_UINTEGER& AssignWide(const KVAL_UINTEGER& other) noexcept;
    KVAL_API KVAL_UINTEGER& AssignWide(unsigned value) noexcept;
    KVAL_API KVAL_UINTEGER& AdoptCopy(const KVAL_UINTEGER& other);
    KVAL_API void ResizeWide(unsigned new_width);
    KVAL_API void ReleaseText() noexcept;
    KVAL_API void ReleaseWide() noexcept;
    KVAL_API bool IsNumberWide(unsigned number) const noexcept;
    KVAL_API KVAL_UINTEGER& ForceXWide() noexcept;
    KVAL_API unsigned HashWide() const noexcept;
    KVAL_API KVAL_UINTEGER& AndAssignWide(const KVAL_UINTEGER& other) noexcept;
    KVAL_API KVAL_UINTEGER& OrAssignWide(const KVAL_UINTEGER& other) noexcept;
    KVAL_API KVAL_UINTEGER& AddAssignWide(const KVAL_UINTEGER& other) noexcept;
    KVAL_API KVAL_UINTEGER& AddAssignWide(unsigned number) noexcept;
    KVAL_API KVAL_UINTEGER& SubAssignWide(const KVAL_UINTEGER& other) noexcept;
    KVAL_API KVAL_UINTEGER& SubAssignWide(unsigned number) noexcept;
    KVAL_API KVAL_UINTEGER& ShlAssignWide(unsigned count) noexcept;
    KVAL_API KVAL_UINTEGER& ShrAssignWide(unsigned count) noexcept;
    [[noreturn]] KVAL_API static void ThrowBitPosition();
    [[noreturn]] KVAL_API static void ThrowSetBitPosition();

    std::uint32_t width;
    Plane uvalue;
    Plane xmask;
    mutable char* text_cache;    // the last text made or parsed, or null
    mutable std::uint8_t flags;  // kX to kWeakHigh; kBinaryText says which kind of text is cached, while one is
    std::uint32_t capacity;      // wide: the length of both arrays in words, at least get_size()
};

// ---- free operators; each returns a new value without text, and leaves its operands alone ----
//
// Bitwise: the wider operand's width. `&` and `|` follow the four-state rules bit by bit and give no flags, so that
// their result may hold X bits without flag X; AND of two unknowns is a known 0. `^` is all X when either flag X is
// set, and has the wider operand's flags (equal widths: the right one's). X marks without flag X do not spread in `^`:
// compact, the two x-masks are XORed; wide, the wider operand's is kept.

KVAL_UINTEGER operator&(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
KVAL_UINTEGER operator|(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r);
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

// Shifts: value bits and x-mask together, zeros in, flags kept.

/// Wider by `count` bits, so that nothing is lost.
KVAL_UINTEGER operator<<(const KVAL_UINTEGER& v, unsigned count);
/// Narrower by `count` bits, at least 1 bit. Compact: shifts by `count` modulo 32.
KVAL_UINTEGER operator>>(const KVAL_UINTEGER& v, unsigned count);

// Order: value bits as unsigned numbers of any width; X bits and flags play no part.

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

// Identity with the number on the left: as the members with the number on the right.

bool operator==(unsigned number, const KVAL_UINTEGER& v) noexcept;
bool operator!=(unsigned number, const KVAL_UINTEGER& v) noexcept;

/// Exchanges everything: width, bits, x-mask, flags and cached text.
void swap(KVAL_UINTEGER& a, KVAL_UINTEGER& b) noexcept;

// ---- hashes and version ----

/// The 32-bit integer hash of Thomas Wang ("Integer Hash Function", the 32-bit mix).
unsigned twang_uinthash(unsigned key) noexcept;
/// The one-at-a-time hash of Bob Jenkins ("A Hash Function for Hash Table Lookup") over `len` bytes, on a signed 32-bit
/// state: bytes are read as signed and right shifts keep the sign. A `len` of 0 or less gives 0.
KVAL_API int one_at_a_time(const char* key, int len) noexcept;
/// The version of the library that is loaded, such as "0.1.0"; the header's is KVAL_VERSION_MAJOR, _MINOR and _PATCH.
KVAL_API const char* kval_version() noexcept;

#include "kval/detail/inline.h"

#endif
