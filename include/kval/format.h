// format.h: values in std::format, where the standard library has it, and in {fmt}, where one of its headers is
// included before this one.
#ifndef KVAL_FORMAT_H
#define KVAL_FORMAT_H

#include <kval.h>
#include <kval/verilog.h>

#include <cstddef>
#include <limits>
#include <type_traits>

#if __has_include(<version>)
#include <version>
#endif
#if defined(__cpp_lib_format)
#include <format>
#endif

namespace kval {
namespace detail {

// What stands between the colon and the closing brace of a replacement field. `Error` is what a bad one throws; where
// the compiler reads it, it does not compile. `Id` is the type of an argument's number.
template <typename Error, typename Id>
class FormatSpec {
  public:
    // Reads `[[fill]align][#][0][width][type]`; returns where it ends.
    template <typename ParseContext>
    constexpr auto parse(ParseContext& context) {
        auto at = context.begin();
        const auto end = context.end();
        at = parse_alignment(at, end);
        alternate_ = skip(at, end, '#');
        zeros_ = skip(at, end, '0');
        at = parse_width(at, end, context);
        at = parse_type(at, end);
        if (at != end && *at != '}') throw Error("kval: the format is [[fill]align][#][0][width][type]");
        return at;
    }

    template <typename FormatContext>
    auto format(const KVAL_UINTEGER& value, FormatContext& context) const {
        const std::size_t length = (alternate_ ? prefix_length(value) : 0) + digit_count(value, base_);
        const std::size_t width = total_width(context);
        const std::size_t padding = width > length ? width - length : 0;
        const bool zeros = zeros_ && alignment_ == '\0';
        const std::size_t before = zeros || alignment_ == '<' ? 0 : alignment_ == '^' ? padding / 2 : padding;

        auto out = write_fill(context.out(), before);
        if (alternate_) out = write_prefix(out, value, base_);
        for (std::size_t i = zeros ? padding : 0; i > 0; --i) *out++ = '0';
        out = write_digits(out, value, base_);
        return write_fill(out, zeros ? 0 : padding - before);
    }

  private:
    static constexpr unsigned kMaxWidth = static_cast<unsigned>(std::numeric_limits<int>::max());

    static constexpr bool is_alignment(char c) { return c == '<' || c == '>' || c == '^'; }
    // The bytes of the character in UTF-8 that begins with this one.
    static constexpr unsigned length_of(char first) {
        const auto byte = static_cast<unsigned char>(first);
        return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    }

    template <typename Iterator>
    static constexpr bool skip(Iterator& at, Iterator end, char c) {
        if (at == end || *at != c) return false;
        ++at;
        return true;
    }

    template <typename Iterator>
    constexpr Iterator parse_alignment(Iterator at, Iterator end) {
        if (at == end) return at;
        const unsigned length = length_of(*at);
        if (static_cast<std::size_t>(end - at) > length && is_alignment(at[static_cast<int>(length)])) {
            if (*at == '{' || *at == '}') throw Error("kval: a brace is no fill");
            fill_length_ = length;
            for (unsigned i = 0; i < length; ++i) fill_[i] = *at++;
        }
        if (at != end && is_alignment(*at)) alignment_ = *at++;
        return at;
    }

    // A number, or the place of an argument that is one: `{}` or `{1}`.
    template <typename Iterator, typename ParseContext>
    constexpr Iterator parse_width(Iterator at, Iterator end, ParseContext& context) {
        if (!skip(at, end, '{')) return parse_number(at, end, width_);
        has_width_argument_ = true;
        if (at != end && *at == '}') {
            width_ = static_cast<unsigned>(context.next_arg_id());
        } else {
            const Iterator digits = at;
            at = parse_number(at, end, width_);
            if (at == digits) throw Error("kval: a width in braces is the number of an argument");
            context.check_arg_id(static_cast<Id>(width_));
        }
        if (!skip(at, end, '}')) throw Error("kval: the width lacks its closing brace");
        return at;
    }

    template <typename Iterator>
    static constexpr Iterator parse_number(Iterator at, Iterator end, unsigned& number) {
        for (; at != end && *at >= '0' && *at <= '9'; ++at) {
            const auto digit = static_cast<unsigned>(*at - '0');
            if (number > (kMaxWidth - digit) / 10) throw Error("kval: the width is too large");
            number = number * 10 + digit;
        }
        return at;
    }

    template <typename Iterator>
    constexpr Iterator parse_type(Iterator at, Iterator end) {
        if (at == end) return at;
        switch (*at) {
            case 'x':
            case 'X':
                base_ = Base::kHexadecimal;
                return ++at;
            case 'o':
                base_ = Base::kOctal;
                return ++at;
            case 'b':
            case 'B':
                base_ = Base::kBinary;
                return ++at;
            default:
                return at;
        }
    }

    template <typename FormatContext>
    std::size_t total_width(FormatContext& context) const {
        if (!has_width_argument_) return width_;
        return visit(context.arg(static_cast<Id>(width_)), WidthOf(), 0);
    }

    struct WidthOf {
        template <typename Argument>
        std::size_t operator()(const Argument& argument) const {
            if constexpr (std::is_integral_v<Argument> && !std::is_same_v<Argument, bool> &&
                          !std::is_same_v<Argument, char>) {
                if constexpr (std::is_signed_v<Argument>) {
                    if (argument < 0) throw Error("kval: the width is negative");
                }
                if (static_cast<std::make_unsigned_t<Argument>>(argument) > kMaxWidth)
                    throw Error("kval: the width is too large");
                return static_cast<std::size_t>(argument);
            } else {
                throw Error("kval: the width is no integer");
            }
        }
    };
    // An argument's visit() where it has one, which is preferred by its int; else the free function.
    template <typename Argument, typename Visitor>
    static auto visit(const Argument& argument, const Visitor& visitor, int) -> decltype(argument.visit(visitor)) {
        return argument.visit(visitor);
    }
    template <typename Argument, typename Visitor>
    static std::size_t visit(const Argument& argument, const Visitor& visitor, long) {
        return visit_format_arg(visitor, argument);
    }

    template <typename Out>
    Out write_fill(Out out, std::size_t count) const {
        for (; count > 0; --count) {
            for (unsigned i = 0; i < fill_length_; ++i) *out++ = fill_[i];
        }
        return out;
    }

    char fill_[4] = {' '};
    unsigned fill_length_ = 1;
    char alignment_ = '\0';
    bool alternate_ = false;
    bool zeros_ = false;
    bool has_width_argument_ = false;
    unsigned width_ = 0;  // or the argument's number
    Base base_ = Base::kHexadecimal;
};

}  // namespace detail
}  // namespace kval

#if defined(__cpp_lib_format)
/// Formats a value by `{:[[fill]align][#][0][width][type]}`, as the standard does numbers.
///
/// The types are `x` and `X` (hexadecimal, also where there is none), `o`, `b` and `B`; letters and digits are in upper
/// case with either. `#` puts a prefix such as `40'h` before the digits, `0` pads with zeros behind it. The width may
/// be that of an argument, `{:{}}`. Without an alignment, a value is on the right. The digits are those of
/// kval::write_digits(); nothing is allocated, and the cached text is left alone. A bad format is std::format_error, or
/// does not compile.
template <>
struct std::formatter<KVAL_UINTEGER, char> {
    /// Reads the format.
    constexpr auto parse(std::format_parse_context& context) { return spec_.parse(context); }
    /// Writes the value.
    template <typename FormatContext>
    auto format(const KVAL_UINTEGER& value, FormatContext& context) const {
        return spec_.format(value, context);
    }

  private:
    kval::detail::FormatSpec<std::format_error, std::size_t> spec_;
};

/// As that of an unsigned value: the bits that it has.
template <>
struct std::formatter<KVAL_SINTEGER, char> : std::formatter<KVAL_UINTEGER, char> {};
#endif

#endif

// Outside the guard: {fmt} may come between two inclusions of this file.
#if defined(FMT_VERSION) && !defined(KVAL_FORMAT_FMT)
#define KVAL_FORMAT_FMT

#include <fmt/format.h>

namespace fmt {

/// As std::formatter<KVAL_UINTEGER>; a bad format is fmt::format_error, or does not compile.
template <>
struct formatter<KVAL_UINTEGER, char> {
    /// Reads the format.
    constexpr auto parse(format_parse_context& context) { return spec_.parse(context); }
    /// Writes the value.
    template <typename FormatContext>
    auto format(const KVAL_UINTEGER& value, FormatContext& context) const {
        return spec_.format(value, context);
    }

  private:
    kval::detail::FormatSpec<format_error, int> spec_;
};

/// As that of an unsigned value: the bits that it has.
template <>
struct formatter<KVAL_SINTEGER, char> : formatter<KVAL_UINTEGER, char> {};

}  // namespace fmt

#endif
