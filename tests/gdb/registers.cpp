// Short-lived values that an optimising compiler keeps in registers, as far as it keeps them at all.
#include <kval.h>

unsigned look(const KVAL_UINTEGER& value);

__attribute__((noinline)) void stop(unsigned number) { asm volatile("" : : "r"(number)); }

__attribute__((noinline)) unsigned calculate(unsigned number) {
    KVAL_UINTEGER sum(number, 8);
    KVAL_SINTEGER minus(-static_cast<int>(number), 8);
    sum += 3;
    stop(1);
    const unsigned result = sum.uint() + minus.uint();
    stop(2);
    return result;
}

int main(int argc, char**) {
    const KVAL_UINTEGER value(0xA5, 8);
    return look(value) + calculate(static_cast<unsigned>(argc) + 4) == 0xA5 + 0x08 + 0xFB ? 0 : 1;
}
