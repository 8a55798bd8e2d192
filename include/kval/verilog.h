// verilog.h: values to and from the spelling of Verilog, such as 40'h12345ABCDE and 8'b0X1Z: what streams, formatting
// and the user's own output are made of.
#ifndef KVAL_VERILOG_H
#define KVAL_VERILOG_H

#if __cplusplus < 201703L
#error "kval/verilog.h needs C++17"
#endif

#include <kval.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace kval {

/// The base of a text. The number is how many bits a digit has.
enum class Base {
    kBinary = 1,      ///< `b`
    kOctal = 3,       ///< `o`
    kHexadecimal = 4  ///< `h`
};

namespace detail {

inline char base_letter(Base base) noexcept { return base == Base::kBinary ? 'b' : base == Base::kOctal ? 'o' : 'h'; }

// What a digit without X bits prints as, where a flag decides for all of them; else 0.
inline char flag_letter(const KVAL_UINTEGER& value) noexcept {
    return value.is_z() ? 'Z' : value.is_wl() ? 'L' : value.is_wh() ? 'H' : '\0';
}

// The bits of both planes, most significant first, without those above the width.
class BitsFromTop {
  public:
    explicit BitsFromTop(const KVAL_UINTEGER& value) noexcept
        : value_(value), next_(value.get_size()), left_(value.bitwidth() % 32) {
        if (left_ == 0) return;
        --next_;
        bits_ = value.get_uvalue_at(next_);
        mask_ = value.get_xmask_at(next_);
    }

    // The next bits, as many as a digit has; the digit if none of them is X, else -1.
    int take(unsigned count) noexcept {
        if (left_ < count) refill();
        left_ -= count;
        const std::uint64_t used = (std::uint64_t{1} << count) - 1;
        return (mask_ >> left_ & used) != 0 ? -1 : static_cast<int>(bits_ >> left_ & used);
    }

  private:
    // What is above the bits that are left, taken before or above the width, is shifted on and never taken.
    void refill() noexcept {
        --next_;
        bits_ = bits_ << 32 | value_.get_uvalue_at(next_);
        mask_ = mask_ << 32 | value_.get_xmask_at(next_);
        left_ += 32;
    }

    const KVAL_UINTEGER& value_;
    int next_;       // the words from here on are taken up
    unsigned left_;  // how many bits of those that are taken up are still to be taken
    std::uint64_t bits_ = 0;
    std::uint64_t mask_ = 0;
};

}  // namespace detail

/// The number of digits of a value: leading zeros count, so that the width alone decides. 0 for a moved-from value.
inline std::size_t digit_count(const KVAL_UINTEGER& value, Base base = Base::kHexadecimal) noexcept {
    const std::size_t bits = static_cast<std::size_t>(base);
    return (value.bitwidth() + bits - 1) / bits;
}

/// Writes the digits of a value to an output iterator of characters, most significant first, in one pass over the
/// words; returns the iterator behind them. Allocates nothing and leaves the cached text alone.
///
/// A digit with an X bit is `X`. Any other is `Z` where flag Z is set, else `L` where WL is, else `H` where WH is, else
/// the digit, in upper case. A signed value prints the bits that it has; bits above the width are not looked at.
template <typename OutputIterator>
OutputIterator write_digits(OutputIterator out, const KVAL_UINTEGER& value, Base base = Base::kHexadecimal) {
    const unsigned digit_bits = static_cast<unsigned>(base);
    const char letter = detail::flag_letter(value);
    detail::BitsFromTop bits(value);
    // The first digit has what the others leave.
    unsigned count = (value.bitwidth() + digit_bits - 1) % digit_bits + 1;
    for (std::size_t left = digit_count(value, base); left > 0; --left) {
        const int digit = bits.take(count);
        *out = digit < 0 ? 'X' : letter != '\0' ? letter : "0123456789ABCDEF"[digit];
        ++out;
        count = digit_bits;
    }
    return out;
}

/// The length of what write_prefix() writes.
inline std::size_t prefix_length(const KVAL_UINTEGER& value) noexcept {
    std::size_t length = 3;
    for (unsigned rest = value.bitwidth(); rest >= 10; rest /= 10) ++length;
    return length;
}

/// Writes what stands before the digits, such as `40'h`, to an output iterator of characters; returns the iterator
/// behind it. A signed value has no other prefix than an unsigned one.
template <typename OutputIterator>
OutputIterator write_prefix(OutputIterator out, const KVAL_UINTEGER& value, Base base = Base::kHexadecimal) {
    unsigned unit = 1;
    while (value.bitwidth() / unit >= 10) unit *= 10;
    for (; unit > 0; unit /= 10) {
        *out = static_cast<char>('0' + value.bitwidth() / unit % 10);
        ++out;
    }
    *out = '\'';
    ++out;
    *out = detail::base_letter(base);
    ++out;
    return out;
}

/// The text of a value, such as `40'h12345ABCDE`, or its digits alone, as write_digits() writes them. One allocation at
/// most, and std::bad_alloc where that fails. A moved-from value gives `0'h`.
inline std::string to_verilog(const KVAL_UINTEGER& value, Base base = Base::kHexadecimal, bool with_prefix = true) {
    std::string text((with_prefix ? prefix_length(value) : 0) + digit_count(value, base), '\0');
    char* const digits = with_prefix ? write_prefix(text.data(), value, base) : text.data();
    write_digits(digits, value, base);
    return text;
}

/// What from_verilog() has read: a value, or what is wrong with the text and where.
struct ParsedVerilog {
    /// The value, without a cached text; 1 bit of 0 where the text is bad.
    KVAL_UINTEGER value;
    /// Whether the base letter had an `s` before it. It does not change the bits: `KVAL_SINTEGER(parsed.value)` is the
    /// signed reading.
    bool is_signed;
    /// What is expected at `position`, such as "a hexadecimal digit, X, Z, L or H"; null where the text is good.
    const char* expected;
    /// The first bad character, counted from 0; the length of the text where it ends too early or is good.
    std::size_t position;

    /// Whether the text is good.
    explicit operator bool() const noexcept { return expected == nullptr; }
};

namespace detail {

// One digit of a text: its value, or one of the letters X, Z, L and H.
struct Digit {
    unsigned value;
    char letter;  // 0: a known digit
};

// A character as a digit of a base of up to 16, of 16 and above where it is none. '?' is another spelling of Z.
inline Digit digit_of(char c) noexcept {
    if (c >= '0' && c <= '9') return {static_cast<unsigned>(c - '0'), '\0'};
    const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    if (upper >= 'A' && upper <= 'F') return {static_cast<unsigned>(upper - 'A') + 10, '\0'};
    if (upper == 'X' || upper == 'Z' || upper == 'L' || upper == 'H') return {0, upper};
    return upper == '?' ? Digit{0, 'Z'} : Digit{16, '\0'};
}

// Reads one text, in three passes: what the characters are, whether the digits go together and fit the width, and the
// words.
class VerilogReader {
  public:
    explicit VerilogReader(std::string_view text) noexcept : text_(text) {}

    ParsedVerilog read() {
        if (!read_width() || !read_base()) return failure();
        if (digit_bits_ == 0) return read_decimal();
        if (!scan_digits() || !decide_width() || !check_digits()) return failure();
        return success(stored());
    }

  private:
    static constexpr std::uint64_t kMaxWidth = (std::uint64_t{1} << 31) - 32;
    static constexpr const char* kTooMuch = "digits that fit the width";

    // ---- the end of a text that is read, for good or ill ----

    bool bad(const char* expected, std::size_t position) noexcept {
        expected_ = expected;
        position_ = position;
        return false;
    }
    bool bad(const char* expected) noexcept { return bad(expected, position_); }
    ParsedVerilog failure(const char* expected) noexcept {
        bad(expected);
        return failure();
    }
    ParsedVerilog failure() const noexcept { return {KVAL_UINTEGER(0, 1), false, expected_, position_}; }
    ParsedVerilog success(KVAL_UINTEGER&& value) const noexcept {
        return {static_cast<KVAL_UINTEGER&&>(value), is_signed_, nullptr, text_.size()};
    }

    // ---- the characters ----

    bool at_end() const noexcept { return position_ == text_.size(); }
    // The character here in lower case; 0 at the end.
    char lower() const noexcept {
        if (at_end()) return '\0';
        const char c = text_[position_];
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    bool at_decimal() const noexcept { return lower() >= '0' && lower() <= '9'; }

    // The width, or none, and the apostrophe.
    bool read_width() noexcept {
        if (!at_decimal() && lower() != '\'') return bad("a width or an apostrophe");
        if (at_decimal()) {
            for (; at_decimal() || lower() == '_'; ++position_) {
                if (lower() == '_') continue;
                width_ = width_ * 10 + digit_of(lower()).value;
                if (width_ > kMaxWidth) width_ = kMaxWidth + 1;
            }
            if (width_ == 0 || width_ > kMaxWidth) return bad("a width of 1 to 2147483616 bits", 0);
        }
        if (lower() != '\'') return bad("an apostrophe");
        ++position_;
        return true;
    }

    bool read_base() noexcept {
        is_signed_ = lower() == 's';
        if (is_signed_) ++position_;
        switch (lower()) {
            case 'b':
                return found_base(1, 2, "a binary digit, X, Z, L or H");
            case 'o':
                return found_base(3, 8, "an octal digit, X, Z, L or H");
            case 'd':
                return found_base(0, 10, "a decimal digit");
            case 'h':
                return found_base(4, 16, "a hexadecimal digit, X, Z, L or H");
            default:
                return bad(is_signed_ ? "the letter b, o, d or h" : "the letter s, b, o, d or h");
        }
    }
    bool found_base(unsigned digit_bits, unsigned radix, const char* digit) noexcept {
        digit_bits_ = digit_bits;
        radix_ = radix;
        digit_expected_ = digit;
        first_digit_ = ++position_;
        return true;
    }

    // Counts the digits. Underscores may stand behind the first.
    bool scan_digits() noexcept {
        for (; !at_end(); ++position_) {
            const char c = text_[position_];
            if (c == '_' && digits_ > 0) continue;
            if (digit_of(c).value >= radix_) return bad(digit_expected_);
            ++digits_;
        }
        return digits_ > 0 || bad(digit_expected_);
    }

    // Without a width, a text has 32 bits, or as many as its digits where these are more.
    bool decide_width() noexcept {
        if (width_ == 0) {
            width_ = std::uint64_t{digits_} * digit_bits_;
            if (width_ < 32) width_ = 32;
            if (width_ > kMaxWidth) return bad("digits of up to 2147483616 bits", first_digit_);
        }
        places_ = static_cast<std::size_t>((width_ + digit_bits_ - 1) / digit_bits_);
        return true;
    }

    // ---- the digits together ----

    // Left to right: what lies above the width must be 0, and weak levels go with nothing but X.
    bool check_digits() noexcept {
        std::size_t left = digits_;
        for (position_ = first_digit_; !at_end(); ++position_) {
            if (text_[position_] == '_') continue;
            const Digit digit = digit_of(text_[position_]);
            if (!fits(digit, --left)) return bad(kTooMuch);
            if (left < places_ && !goes_along(digit)) return bad("the same weak level, or X, at every place");
        }
        first_ = digit_of(text_[first_digit_]);
        return true;
    }
    bool fits(Digit digit, std::size_t place) const noexcept {
        if (place >= places_) return digit.letter == '\0' && digit.value == 0;
        const std::uint64_t room = width_ - std::uint64_t{place} * digit_bits_;
        return room >= digit_bits_ || digit.value >> room == 0;
    }
    bool goes_along(Digit digit) noexcept {
        if (digit.letter == 'X') return true;
        const bool weak = digit.letter == 'L' || digit.letter == 'H';
        const bool first = !has_known_ && !has_z_ && weak_ == '\0';
        if (!first && weak_ != (weak ? digit.letter : '\0')) return false;
        has_known_ = has_known_ || digit.letter == '\0';
        has_z_ = has_z_ || digit.letter == 'Z';
        if (weak) weak_ = digit.letter;
        return true;
    }

    // ---- the words ----

    // Z beside known digits is no state of a value: such places become X.
    bool is_unknown(Digit digit) const noexcept { return digit.letter == 'X' || (digit.letter == 'Z' && has_known_); }

    KVAL_UINTEGER stored() const {
        KVAL_UINTEGER value(0, static_cast<unsigned>(width_));
        // A letter in front goes on up to the width, where there are fewer digits.
        const std::size_t end = first_.letter == '\0' && digits_ < places_ ? digits_ : places_;
        const unsigned ones = (1U << digit_bits_) - 1;
        std::size_t from = text_.size();
        std::uint64_t bits = 0;
        std::uint64_t mask = 0;
        unsigned held = 0;  // bits that wait for their word to be full
        int index = 0;
        int some_x = -1;
        for (std::size_t place = 0; place < end; ++place) {
            const Digit digit = place < digits_ ? digit_before(from) : first_;
            bits |= std::uint64_t{digit.value} << held;
            if (is_unknown(digit)) {
                mask |= std::uint64_t{ones} << held;
                some_x = static_cast<int>(place * digit_bits_);
            }
            held += digit_bits_;
            if (held >= 32) {
                store(value, index++, bits, mask);
                bits >>= 32;
                mask >>= 32;
                held -= 32;
            }
        }
        if (held > 0 && index < value.get_size()) store(value, index, bits, mask);
        value.EnforceWidth();
        value.DeleteString();
        set_flags(value, some_x);
        return value;
    }
    static void store(KVAL_UINTEGER& value, int index, std::uint64_t bits, std::uint64_t mask) noexcept {
        value.set_uvalue_at(index, static_cast<unsigned>(bits));
        value.set_xmask_at(index, static_cast<unsigned>(mask));
    }
    // The digit before this position, which moves there.
    Digit digit_before(std::size_t& position) const noexcept {
        do --position;
        while (text_[position] == '_');
        return digit_of(text_[position]);
    }
    void set_flags(KVAL_UINTEGER& value, int some_x) const noexcept {
        if (some_x >= 0) value.set_x(some_x);
        mark(value, has_z_ && !has_known_ ? 'Z' : weak_);
    }
    static void mark(KVAL_UINTEGER& value, char letter) noexcept {
        if (letter == 'X') value.force_x();
        if (letter == 'Z') value.force_z();
        if (letter == 'L') value.force_wl();
        if (letter == 'H') value.force_wh();
    }

    // ---- decimal digits, a number of up to 64 bits or one letter for the whole value ----

    ParsedVerilog read_decimal() {
        const Digit first = at_end() ? Digit{16, '\0'} : digit_of(text_[position_]);
        if (first.value >= radix_) return failure("a decimal digit, X, Z, L or H");
        return first.letter != '\0' ? read_letter(first) : read_number();
    }

    ParsedVerilog read_number() {
        const bool narrow = width_ > 0 && width_ < 64;
        const std::uint64_t limit =
            narrow ? (std::uint64_t{1} << width_) - 1 : std::numeric_limits<std::uint64_t>::max();
        std::uint64_t number = 0;
        for (; !at_end(); ++position_) {
            if (text_[position_] == '_') continue;
            const Digit digit = digit_of(text_[position_]);
            if (digit.value >= radix_ || digit.letter != '\0') return failure(digit_expected_);
            if (digit.value > limit || number > (limit - digit.value) / 10)
                return failure(narrow ? kTooMuch : "a decimal number of up to 64 bits");
            number = number * 10 + digit.value;
        }
        return success(numbered(number));
    }
    KVAL_UINTEGER numbered(std::uint64_t number) const {
        const auto high = static_cast<unsigned>(number >> 32);
        unsigned width = width_ > 0 ? static_cast<unsigned>(width_) : 32;
        if (width_ == 0) {
            for (unsigned rest = high; rest != 0; rest >>= 1) ++width;
        }
        KVAL_UINTEGER value(static_cast<unsigned>(number), width);
        if (width > 32) value.set_uvalue_at(1, high);
        return value;
    }

    ParsedVerilog read_letter(Digit letter) {
        while (++position_ < text_.size()) {
            if (text_[position_] != '_') return failure("nothing more");
        }
        KVAL_UINTEGER value(0, width_ > 0 ? static_cast<unsigned>(width_) : 32);
        mark(value, letter.letter);
        return success(static_cast<KVAL_UINTEGER&&>(value));
    }

    std::string_view text_;
    std::size_t position_ = 0;
    const char* expected_ = nullptr;
    std::uint64_t width_ = 0;  // 0: the text names none
    bool is_signed_ = false;
    unsigned digit_bits_ = 0;  // 0: decimal
    unsigned radix_ = 0;
    const char* digit_expected_ = nullptr;
    std::size_t first_digit_ = 0;
    std::size_t digits_ = 0;  // how many the text has
    std::size_t places_ = 0;  // how many the width has room for, the top one in part perhaps
    Digit first_ = {0, '\0'};
    // What is found inside the width besides X.
    bool has_known_ = false;
    bool has_z_ = false;
    char weak_ = '\0';
};

}  // namespace detail

/// Reads a text ``[width]'[s](b|o|d|h)digits``, in upper or lower case, such as `40'h12345ABCDE`, `8'b0x1z_1010`,
/// `'hFF`, `8'dX`: from end to end, without blanks. Throws nothing but std::bad_alloc, and calls nothing that knows a
/// locale.
///
/// - Without a width there are 32 bits, or as many as the digits have where these are more. Without an apostrophe the
///   text is bad: whether its digits are decimal or hexadecimal would be a guess.
/// - Digits may be followed by underscores, those of the width too.
/// - A digit `X`, `Z` (or `?`), `L` or `H` stands for all of its bits.
/// - Fewer digits than the width are continued by zeros, or by the first digit if that is a letter. More digits are
///   good if all bits above the width are 0.
/// - Any X sets flag X. `Z` at every place that is not X sets flag Z; beside known digits, a Z becomes an X. `L` (weak
///   low) and `H` (weak high) set their flag; such a text may have X besides, and nothing else. The value bits under
///   letters are 0.
/// - Decimal digits tell a number of up to 64 bits, in a width of any size; or a letter stands alone, for every bit.
///
/// So what to_verilog() prints with a prefix reads back as what was printed, but for the `0'h` of a moved-from value.
inline ParsedVerilog from_verilog(std::string_view text) { return detail::VerilogReader(text).read(); }

}  // namespace kval

#endif
