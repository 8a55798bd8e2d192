// Tests of values on output streams: base, prefix, width, fill and adjustment as the stream says.
#include <gtest/gtest.h>

#include <cstddef>
#include <iomanip>
#include <ios>
#include <locale>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

#include "kval/stream.h"
#include "spelling.h"
#include "support/twin.h"
#include "unit/unit_support.h"

// Where a namespace has an operator<< of its own, values are found all the same.
namespace elsewhere {

struct Other {};
[[maybe_unused]] std::ostream& operator<<(std::ostream& stream, Other) { return stream << "other"; }

std::string shown(const KVAL_UINTEGER& value) {
    std::ostringstream stream;
    stream << Other() << ' ' << value;
    return stream.str();
}

}  // namespace elsewhere

namespace {

using kval::Base;

template <typename... Parts>
std::string streamed(const Parts&... parts) {
    std::ostringstream stream;
    (stream << ... << parts);
    return stream.str();
}

const KVAL_UINTEGER kAddress = from_words(40, {0x345ABCDE, 0x12});
const KVAL_UINTEGER kUnknown = from_words(8, {0x8A}, {0x10}, true);

TEST(Stream, BaseAndPrefix) {
    EXPECT_EQ("12345ABCDE", streamed(kAddress));
    EXPECT_EQ("12345ABCDE", streamed(std::dec, kAddress));
    EXPECT_EQ("12345ABCDE", streamed(std::hex, kAddress));
    EXPECT_EQ("01106426536336", streamed(std::oct, kAddress));
    EXPECT_EQ("0001001000110100010110101011110011011110", streamed(kval::bin, kAddress));

    EXPECT_EQ("40'h12345ABCDE", streamed(std::showbase, kAddress));
    EXPECT_EQ("40'h12345ABCDE", streamed(std::showbase, std::hex, kAddress));
    EXPECT_EQ("40'o01106426536336", streamed(std::showbase, std::oct, kAddress));
    EXPECT_EQ("8'b100X1010", streamed(std::showbase, kval::bin, kUnknown));
    EXPECT_EQ("8'hXA", streamed(std::showbase, kUnknown));
    EXPECT_EQ("16'hZZZZ", streamed(std::showbase, marked(KVAL_UINTEGER(0, 16), "Z")));
}

TEST(Stream, TheLastBaseHolds) {
    EXPECT_EQ("100X1010 XA 2X2 100X1010 XA", streamed(kval::bin, kUnknown, ' ', std::hex, kUnknown, ' ', std::oct,
                                                      kUnknown, ' ', kval::bin, kUnknown, ' ', std::dec, kUnknown));
    EXPECT_EQ("100X1010", streamed(std::hex, std::resetiosflags(std::ios_base::basefield), kUnknown));
    EXPECT_EQ("XA", streamed(kval::bin, std::setbase(16), kUnknown));
    EXPECT_EQ("10 a", streamed(kval::bin, 10, ' ', std::hex, 10));  // numbers have no binary
}

TEST(Stream, UppercaseAndLocaleChangeNothing) {
    struct Grouped : std::numpunct<char> {
        char do_thousands_sep() const override { return ','; }
        std::string do_grouping() const override { return "\1"; }
    };
    EXPECT_EQ("40'h12345ABCDE", streamed(std::showbase, std::nouppercase, kAddress));
    EXPECT_EQ("40'h12345ABCDE", streamed(std::showbase, std::uppercase, kAddress));
    std::ostringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new Grouped));
    stream << 1234 << ' ' << std::showbase << kAddress;
    EXPECT_EQ("1,2,3,4 40'h12345ABCDE", stream.str());
}

TEST(Stream, SignedValuesPrintTheBitsTheyHave) {
    EXPECT_EQ("40'hFFFFFFFFFD", streamed(std::showbase, KVAL_SINTEGER(-3, 40)));
    EXPECT_EQ("1101", streamed(kval::bin, KVAL_SINTEGER(-3, 4)));
}

// What a stream is required to print: the fill goes right of the text, left of it, or behind the prefix.
std::string filled(const std::string& prefix, const std::string& digits, std::size_t width, char fill,
                   std::ios_base::fmtflags adjust) {
    const std::size_t length = prefix.size() + digits.size();
    const std::string padding(width > length ? width - length : 0, fill);
    if (adjust == std::ios_base::left) return prefix + digits + padding;
    if (adjust == std::ios_base::internal) return prefix + padding + digits;
    return padding + prefix + digits;
}

TEST(Stream, EveryWayOfFilling) {
    const twin::Content contents[] = {{1, {1}, {}, {}, {}},
                                      {8, {0x8A}, {0x10}, "X", {}},
                                      {12, {0}, {0x800}, "XZ", {}},
                                      {33, {0x80000001, 1}, {}, {}, {}},
                                      {70, {1, 2, 3}, {0, 4, 0}, "XL", {}}};
    const std::ios_base::fmtflags none{};
    const std::ios_base::fmtflags both = std::ios_base::left | std::ios_base::internal;
    for (const twin::Content& content : contents) {
        const twin::Twin v(content);
        for (const auto adjust : {std::ios_base::left, std::ios_base::right, std::ios_base::internal, none, both}) {
            for (const Base base : spelling::kBases) {
                for (const bool showbase : {false, true}) {
                    for (const char fill : {' ', '0', '*'}) {
                        for (const int width : {-3, 0, 1, 2, 5, 6, 12, 13, 40, 75, 100}) {
                            std::ostringstream stream;
                            stream.setf(adjust, std::ios_base::adjustfield);
                            stream.setf(showbase ? std::ios_base::showbase : none, std::ios_base::showbase);
                            if (base == Base::kBinary) stream << kval::bin;
                            if (base == Base::kOctal) stream << std::oct;
                            stream << std::setfill(fill) << std::setw(width) << v.value;
                            const std::string prefix = showbase ? spelling::prefix(content.width, base) : "";
                            ASSERT_EQ(filled(prefix, spelling::digits(v.model, base),
                                             static_cast<std::size_t>(width > 0 ? width : 0), fill, adjust),
                                      stream.str());
                            ASSERT_EQ(0, stream.width());
                            ASSERT_EQ(fill, stream.fill());
                        }
                    }
                }
            }
        }
    }
}

TEST(Stream, TheWidthIsForOneValue) {
    EXPECT_EQ("    XA|XA", streamed(std::setw(6), kUnknown, '|', kUnknown));
    EXPECT_EQ("  8'hXA 8'h000XA", streamed(std::showbase, std::setw(7), kUnknown, ' ', std::internal, std::setfill('0'),
                                           std::setw(8), kUnknown));
}

TEST(Stream, MovedFromValuesPrintNoDigits) {
    KVAL_UINTEGER moved(1, 80);
    const KVAL_UINTEGER taken(std::move(moved));
    EXPECT_EQ("[]", streamed('[', moved, ']'));
    EXPECT_EQ("0'h", streamed(std::showbase, moved));
    EXPECT_EQ("0'b___", streamed(std::showbase, kval::bin, std::internal, std::setfill('_'), std::setw(6), moved));
}

TEST(Stream, FailedStreamsStayAsTheyAre) {
    std::ostringstream stream;
    stream.setstate(std::ios_base::failbit);
    stream << kUnknown;
    EXPECT_EQ("", stream.str());

    // Without a buffer nothing can be written.
    std::ostream nowhere(nullptr);
    nowhere << kUnknown;
    EXPECT_TRUE(nowhere.bad());
}

TEST(Stream, WriteErrorsReachTheStream) {
    struct Full : std::streambuf {};  // takes no character
    Full full;
    std::ostream stream(&full);
    stream << kUnknown;
    EXPECT_FALSE(stream.good());
    stream.clear();
    stream.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    EXPECT_THROW(stream << kUnknown, std::ios_base::failure);
}

TEST(Stream, TemporaryStreamsAndOtherNamespaces) {
    EXPECT_EQ("other XA", elsewhere::shown(kUnknown));
    std::ostringstream stream;
    EXPECT_EQ(&stream, &(stream << kUnknown));
    EXPECT_EQ("XA", static_cast<std::ostringstream&&>(std::ostringstream() << kUnknown).str());
}

TEST(Stream, ShiftsAreStillShifts) { EXPECT_EQ("14'h0148", streamed(std::showbase, KVAL_UINTEGER(0x29, 11) << 3U)); }

TEST(Stream, KeepsTheCachedText) {
    for (const unsigned width : {9U, 65U}) {
        KVAL_UINTEGER v(0x155, width);
        const char* const before = v.as_bin_string();
        streamed(v, kval::bin, v, std::oct, std::showbase, v);
        EXPECT_EQ(before, v.as_bin_string());
        cache_text(v);
        streamed(v, kval::bin, v);
        EXPECT_TRUE(keeps_text(v));
    }
}

}  // namespace
