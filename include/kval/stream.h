// stream.h: values to output streams.
#ifndef KVAL_STREAM_H
#define KVAL_STREAM_H

#include <kval.h>
#include <kval/verilog.h>

#include <cstddef>
#include <ios>
#include <ostream>
#include <string>

namespace kval {

/// Makes a stream print values in binary, until std::hex, std::oct or std::dec: it clears the stream's base. Numbers of
/// the language print in decimal then.
inline std::ios_base& bin(std::ios_base& stream) {
    stream.unsetf(std::ios_base::basefield);
    return stream;
}

/// The base in which a stream prints values: binary after kval::bin, octal after std::oct, else hexadecimal. So
/// std::dec, which every stream begins with, is hexadecimal too: X has no place in a decimal number, nor has a bus of
/// 1000 bits.
inline Base stream_base(const std::ios_base& stream) noexcept {
    const std::ios_base::fmtflags base = stream.flags() & std::ios_base::basefield;
    if (base == std::ios_base::fmtflags()) return Base::kBinary;
    return base == std::ios_base::oct ? Base::kOctal : Base::kHexadecimal;
}

}  // namespace kval

/// Prints the digits of a value, signed or unsigned, as kval::write_digits() does, in kval::stream_base(); with
/// std::showbase after a prefix such as `40'h`. Honours width, fill and adjustment as a number of the language does
/// (std::internal fills between prefix and digits), and sets the width back to 0. std::uppercase changes nothing.
/// Leaves the cached text alone. Throws std::bad_alloc, and what the stream is told to throw.
inline std::ostream& operator<<(std::ostream& stream, const KVAL_UINTEGER& value) {
    const std::ios_base::fmtflags flags = stream.flags();
    const bool with_prefix = (flags & std::ios_base::showbase) != 0;
    std::string text = kval::to_verilog(value, kval::stream_base(stream), with_prefix);

    // The stream fills text to the left or to the right; what is as wide already it leaves alone.
    const auto width = static_cast<std::size_t>(stream.width() > 0 ? stream.width() : 0);
    if ((flags & std::ios_base::adjustfield) == std::ios_base::internal && text.size() < width)
        text.insert(with_prefix ? kval::prefix_length(value) : 0, width - text.size(), stream.fill());
    return stream << text;
}

#endif
