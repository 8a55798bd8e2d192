// demo [FILE] [--seed=N]: the values in typical use, in a SHA-256 core that hashes FILE (README.md), in a 4-bit
// datapath, and in a multiply-accumulate unit that is checked with random vectors from seed N (1).
#include <kval.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "mac_check.h"
#include "sha256.h"

namespace {

// A text sets the width as well, so that the one given here does not matter.
KVAL_UINTEGER from_hex(const char* digits) {
    KVAL_UINTEGER value(0, 1);
    value.set_value_from_hex_string(digits);
    return value;
}

KVAL_UINTEGER from_bin(const char* bits) {
    KVAL_UINTEGER value(0, 1);
    value.set_value_from_bin_string(bits);
    return value;
}

// ---- 1. typical use ----

// A value keeps one text at a time, and asking for the binary one ends the hexadecimal one: so one call for each.
void print_value(const char* name, const KVAL_UINTEGER& value) {
    std::printf("  %-8s%2u bits  %10s", name, value.bitwidth(), value.as_hex_string());
    std::printf("  %40s\n", value.as_bin_string());
}

void print_answer(const char* question, bool answer, const char* remark) {
    std::printf("  %-16s%-5s%s\n", question, answer ? "yes" : "no", remark);
}

void show_typical_use() {
    const KVAL_UINTEGER base = from_hex("12345ABCDE");
    const KVAL_UINTEGER offset(0xFEDCBA98, 32);
    const KVAL_UINTEGER limit = from_hex("1400000000");
    const KVAL_UINTEGER sum = base + offset;
    KVAL_UINTEGER partly = sum;
    for (int bit = 4; bit < 8; ++bit) partly.set_x(bit);

    std::printf("1. Values of any width, with unknown bits\n\n");
    print_value("base", base);
    print_value("offset", offset);
    print_value("sum", sum);
    print_value("limit", limit);
    print_value("partly", partly);
    std::printf("\n");
    print_answer("sum < limit", sum < limit, "order compares as numbers, whatever the widths");
    print_answer("partly == sum", partly == sum, "identity looks at the unknown bits too");
    print_answer("partly < limit", partly < limit, "but order does not: it reads the value bits under every X");
}

// ---- 2. a SHA-256 core ----

struct HashRun {
    std::string digest;
    unsigned long long rounds;
    double seconds;
};

HashRun hash_file(const char* path) {
    const auto start = std::chrono::steady_clock::now();
    Sha256Core core;
    std::ifstream file(path, std::ios::binary);
    if (file) compress_message(core, file);
    // The end of the file sets fail as well; what could not be opened or read (a folder opens) is not at its end.
    if (!file.eof()) throw std::system_error(errno, std::generic_category(), path);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return {core.digest(), core.rounds(), elapsed.count()};
}

void show_hash(const HashRun& run, const char* path) {
    std::printf("\n2. A SHA-256 core in 32-bit registers\n\n");
    std::printf("sha256  %s  %s\n", run.digest.c_str(), path);
    std::printf("rate    %.3g rounds per second (%llu rounds in %.3g s, opening and reading the file included)\n",
                static_cast<double>(run.rounds) / run.seconds, run.rounds, run.seconds);
}

// ---- 3. a 4-bit datapath ----

// One bit on every line of a bus. Whether it is unknown is asked of the bit, not of the value: what & and | give may
// hold X bits and yet not be flagged X.
KVAL_UINTEGER replicate(const KVAL_UINTEGER& bit, unsigned width) {
    KVAL_UINTEGER bus(0, width);
    if (bit.is_x(0, 0)) return bus.force_x();
    return bit.bit(0) == 1 ? ~bus : bus;
}

// `b` where `select` is 1, `a` where it is 0.
KVAL_UINTEGER multiplex(const KVAL_UINTEGER& select, const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    const KVAL_UINTEGER lines = replicate(select, a.bitwidth());
    return (~lines & a) | (lines & b);
}

void print_row(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    std::printf("%7s%7s", a.as_bin_string(), b.as_bin_string());
    for (const KVAL_UINTEGER& gate : {a & b, a | b, a ^ b, ~a}) std::printf("%7s", gate.as_bin_string());
    for (const char* select : {"0", "1", "X"}) {
        std::printf("%7s", multiplex(from_bin(select), a, b).as_bin_string());
    }
    std::printf("\n");
}

void show_datapath() {
    std::printf("\n3. A 4-bit datapath with unknown bits; mux = (~s & a) | (s & b), with s on all four lines\n\n");
    std::printf("      a      b  a & b  a | b  a ^ b     ~a  s = 0  s = 1  s = X\n");
    print_row(from_bin("0011"), from_bin("0101"));
    print_row(from_bin("01XX"), from_bin("XX01"));
    print_row(from_bin("000X"), from_bin("000X"));
    print_row(from_bin("1010"), from_bin("1010"));
    std::printf(
        "\n"
        "  &   X & X is a known 0: only a known 1 on the other side lets an unknown through an AND.\n"
        "  ^   one unknown bit in an operand makes every bit of the result unknown. What decides is the operand's\n"
        "      flag X, which set_x and texts set; results of & and | have unknown bits without it.\n"
        "  mux with s = X a line is X where a or b is a known 1, else 0. So equal data of 1 comes out unknown\n"
        "      (each AND passes X on, and the OR cannot tell that one of them must be 1), equal data of 0 comes\n"
        "      out as 0, and unknown data meets the unknown s in the ANDs and comes out as a known 0.\n");
}

// ---- the command line ----

constexpr std::string_view kSeedOption = "--seed=";

struct Arguments {
    const char* path = "README.md";
    unsigned seed = 1;
};

unsigned parse_seed(std::string_view digits) {
    unsigned seed = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, seed);
    if (error != std::errc() || rest != end) throw std::invalid_argument("a seed is a number from 0 to 4294967295");
    return seed;
}

Arguments parse_arguments(int argc, char* argv[]) {
    Arguments arguments;
    bool has_path = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.substr(0, kSeedOption.size()) == kSeedOption) {
            arguments.seed = parse_seed(argument.substr(kSeedOption.size()));
        } else if (argument.substr(0, 1) == "-" || has_path) {
            throw std::invalid_argument("usage: demo [FILE] [--seed=N]");
        } else {
            arguments.path = argv[i];
            has_path = true;
        }
    }
    return arguments;
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        const auto [path, seed] = parse_arguments(argc, argv);
        // First of all, so that a file that cannot be read is reported before anything is printed.
        const HashRun run = hash_file(path);
        show_typical_use();
        show_hash(run, path);
        show_datapath();
        return check_mac(seed) ? 0 : 1;
    } catch (const char* message) {  // what the library throws
        std::fprintf(stderr, "demo: %s\n", message);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "demo: %s\n", error.what());
    }
    return 1;
}
