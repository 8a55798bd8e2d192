// A program for the packages: prints a value, which a debugger at breakpoint() shows likewise.
#include <kval/stream.h>

#include <iostream>

extern "C" void breakpoint() { asm volatile(""); }

int main() {
    KVAL_UINTEGER address(0, 1);
    address.set_value_from_hex_string("12345ABCDE");
    breakpoint();
    std::cout << std::hex << std::showbase << address << '\n';
}
