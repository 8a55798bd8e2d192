// Tests of values in std::format, for a standard library that has it; says what is wrong, and fails if anything is.
#include <kval/format.h>

#include <cstdio>
#include <iterator>
#include <optional>
#include <string>

#include "format_cases.h"

#ifndef __cpp_lib_format
#error "this standard library has no std::format"
#endif

namespace {

struct {
    template <typename Value>
    std::optional<std::string> operator()(const std::string& format, const Value& value, long long width) const {
        try {
            return std::vformat(format, std::make_format_args(value, width));
        } catch (const std::format_error&) {
            return {};
        }
    }
} const kFormat;

int faults = 0;

void expect(const std::string& required, const std::string& got) {
    if (required == got) return;
    std::printf("gives \"%s\", required is \"%s\"\n", got.c_str(), required.c_str());
    ++faults;
}

void check_calls() {
    const KVAL_UINTEGER value(0x5A, 8);
    expect("8'h5A and 01011010", std::format("{:#} and {:b}", value, value));
    expect("     5A", std::format("{:>{}}", value, 7));
    expect("     5A", std::format("{1:{0}}", 7U, value));
    std::string text = ">";
    std::format_to(std::back_inserter(text), "{:#o}", KVAL_SINTEGER(-1, 7));
    expect(">7'o177", text);
    expect("9", std::to_string(std::formatted_size("{:9}", value)));
    char buffer[] = ".....";
    std::format_to_n(buffer, 4, "{:b}", value);
    expect("0101.", buffer);
}

template <typename Width>
void check_refused(const Width& width) {
    const KVAL_UINTEGER value(0x5A, 8);
    try {
        expect("an error", std::vformat("{:{}}", std::make_format_args(value, width)));
    } catch (const std::format_error&) {
    }
}

}  // namespace

int main() {
    for (const std::string& fault : format_cases::faults(kFormat)) {
        std::puts(fault.c_str());
        ++faults;
    }
    check_calls();
    check_refused("6");
    check_refused('6');
    check_refused(true);
    check_refused(6.0);
    return faults == 0 ? 0 : 1;
}
