// A program outside of the project: adds two values and checks the sum's text, its width and the library's version.
#include <kval.h>

#include <cstdio>
#include <string>

int main() {
    const std::string header_version = std::to_string(KVAL_VERSION_MAJOR) + "." + std::to_string(KVAL_VERSION_MINOR) +
                                       "." + std::to_string(KVAL_VERSION_PATCH);
    if (kval_version() != header_version) {
        std::printf("header %s, library %s\n", header_version.c_str(), kval_version());
        return 1;
    }

    const KVAL_UINTEGER a(5, 8);
    const KVAL_UINTEGER b(0xFF, 72);  // large: its operators are calls into the library
    const KVAL_UINTEGER sum = a + b;
    std::printf("5 + FF = %s in %u bits\n", sum.as_hex_string(), sum.bitwidth());
    return std::string(sum.as_hex_string()) == "000000000000000104" && sum.bitwidth() == 72 ? 0 : 1;
}
