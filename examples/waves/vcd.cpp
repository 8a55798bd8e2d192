// The text of a VCD file.
#include "vcd.h"

#include <kval/verilog.h>

namespace {

// VCD has 0, 1, x and z for every bit, and no weak levels: weak low becomes 0, weak high 1.
char vcd_digit(char digit) {
    switch (digit) {
        case 'X':
            return 'x';
        case 'Z':
            return 'z';
        case 'L':
            return '0';
        case 'H':
            return '1';
        default:
            return digit;
    }
}

std::string vcd_digits(const KVAL_UINTEGER& value) {
    std::string digits = kval::to_verilog(value, kval::Base::kBinary, false);
    for (char& digit : digits) digit = vcd_digit(digit);
    return digits;
}

// A short name of printable characters: !, ", #, ..., ~, !!, "!, ...
std::string vcd_id(std::size_t number) {
    constexpr std::size_t characters = '~' - '!' + 1;
    std::string id(1, static_cast<char>('!' + number % characters));
    return number < characters ? id : id + vcd_id(number / characters - 1);
}

}  // namespace

VcdWriter::VcdWriter(std::ostream& out, const std::string& scope, const std::string& unit) : out_(out) {
    out_ << "$timescale " << unit << " $end\n$scope module " << scope << " $end\n";
}

void VcdWriter::add(const std::string& name, const KVAL_UINTEGER& value) {
    const unsigned width = value.bitwidth();
    const std::string id = vcd_id(signals_.size());
    out_ << "$var reg " << width << ' ' << id << ' ' << name;
    if (width > 1) out_ << " [" << width - 1 << ":0]";
    out_ << " $end\n";
    signals_.push_back({&value, id, {}});
}

void VcdWriter::sample(unsigned long time) {
    const bool first = !declared_;
    if (first) out_ << "$upscope $end\n$enddefinitions $end\n";
    declared_ = true;

    bool at_new_time = true;
    for (Signal& signal : signals_) {
        std::string digits = vcd_digits(*signal.value);
        if (digits == signal.digits) continue;
        if (at_new_time) out_ << '#' << time << '\n' << (first ? "$dumpvars\n" : "");
        at_new_time = false;
        if (digits.size() > 1) {
            out_ << 'b' << digits << ' ' << signal.id << '\n';
        } else {
            out_ << digits << signal.id << '\n';
        }
        signal.digits = std::move(digits);
    }
    if (first) out_ << "$end\n";
}
