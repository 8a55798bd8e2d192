// Tests of values in {fmt}.
#include <gtest/gtest.h>

// First without {fmt}, as another header may have included it.
#include <kval/format.h>

#include <fmt/format.h>

#include <kval/format.h>

#include <iterator>
#include <optional>
#include <string>

#include "format_cases.h"

namespace {

struct {
    template <typename Value>
    std::optional<std::string> operator()(const std::string& format, const Value& value, long long width) const {
        try {
            return fmt::vformat(format, fmt::make_format_args(value, width));
        } catch (const fmt::format_error&) {
            return {};
        }
    }
} const kFormat;

TEST(Fmt, EveryFormat) {
    for (const std::string& fault : format_cases::faults(kFormat)) ADD_FAILURE() << fault;
}

TEST(Fmt, AsUsersCallIt) {
    const KVAL_UINTEGER value(0x5A, 8);
    EXPECT_EQ("8'h5A and 0'b01011010", fmt::format("{:#} and 0'b{:b}", value, value));
    EXPECT_EQ("     5A", fmt::format("{:>{}}", value, 7));
    EXPECT_EQ("     5A", fmt::format("{1:{0}}", 7U, value));
    std::string text = ">";
    fmt::format_to(std::back_inserter(text), "{:#o}", KVAL_SINTEGER(-1, 7));
    EXPECT_EQ(">7'o177", text);
    EXPECT_EQ(9U, fmt::formatted_size("{:9}", value));
}

TEST(Fmt, WidthsThatAreNoNumbers) {
    const KVAL_UINTEGER value(0x5A, 8);
    const auto with_width = [&](const auto& width) {
        return fmt::vformat("{:{}}", fmt::make_format_args(value, width));
    };
    EXPECT_EQ("    5A", with_width(6));
    EXPECT_THROW(with_width("6"), fmt::format_error);
    EXPECT_THROW(with_width('6'), fmt::format_error);
    EXPECT_THROW(with_width(true), fmt::format_error);
    EXPECT_THROW(with_width(6.0), fmt::format_error);
    EXPECT_THROW(with_width(value), fmt::format_error);
}

}  // namespace
