// Values of every kind, for gdb to print: what it must say of them at the breakpoint `reached` is in expected.txt.
#include <kval.h>

#include <cstring>
#include <map>
#include <new>
#include <utility>
#include <vector>

namespace {

struct Port {
    KVAL_UINTEGER data;
    int number;
};

struct Register : KVAL_SINTEGER {
    Register(int value, unsigned width) : KVAL_SINTEGER(value, width) {}
    int resets = 3;
};

using Byte = const KVAL_UINTEGER;

// The fields of a value, to be filled with what no value holds.
struct Fields {
    unsigned width;
    const void* uvalue;
    const void* xmask;
    char* text;
    unsigned char flags;
    unsigned capacity;
};
static_assert(sizeof(Fields) == sizeof(KVAL_UINTEGER), "the layout of values has changed");

// Memory for one value, whatever is in it.
struct alignas(KVAL_UINTEGER) Place {
    unsigned char bytes[sizeof(KVAL_UINTEGER)];
    KVAL_UINTEGER* value() { return reinterpret_cast<KVAL_UINTEGER*>(bytes); }
};

// Makes the compiler believe that the object is read and written here.
template <class Object>
void use(Object& object) {
    asm volatile("" : : "r"(&object) : "memory");
}

KVAL_UINTEGER hex(const char* digits) {
    KVAL_UINTEGER value(0, 1);
    value.set_value_from_hex_string(digits);
    return value;
}

KVAL_UINTEGER bin(const char* digits) {
    KVAL_UINTEGER value(0, 1);
    value.set_value_from_bin_string(digits);
    return value;
}

__attribute__((noinline)) void reached(const KVAL_UINTEGER& first, KVAL_SINTEGER second) {
    use(first);
    use(second);
}

}  // namespace

int main() {
    KVAL_UINTEGER address = hex("12345ABCDE");
    KVAL_UINTEGER odd(0x1F, 5), bit(1, 1), word(0xDEADBEEF, 32), pair = hex("FEDCBA9876543210");
    KVAL_UINTEGER bus = hex("123456789ABCDEF012");
    KVAL_UINTEGER wide = (KVAL_UINTEGER(0xABC, 12) << 4084) + KVAL_UINTEGER(0xDEF, 12);

    KVAL_UINTEGER x = bin("X010010X"), all_x(0xA5, 8), unflagged = x & KVAL_UINTEGER(0x0F, 8);
    KVAL_UINTEGER shifted_out = bin("1010010X"), x33(0, 33), x64(0, 64), x65(0, 65), wide_x = wide;
    all_x.force_x();
    shifted_out >>= 1;
    x33.set_x(32);
    x64.set_x(63).set_x(0);
    x65.set_x(64).set_x(4);
    wide_x.set_x(4095).set_x(1);

    KVAL_UINTEGER z(0xA5A5, 16), low(9, 4), high(9, 4), x_z(0xFF, 8), z_low(0, 8), all_flags(0, 8), wide_z(0, 40);
    z.force_z();
    low.force_wl();
    high.force_wh();
    x_z.force_z().set_x(4);
    z_low.force_wl().force_z();
    all_flags.force_wh().force_wl().force_z().set_x(0);
    wide_z.force_z().set_x(39);
    wide_z.bitwidth(72);
    KVAL_UINTEGER low_high(0, 8);
    low_high.force_wh().force_wl();

    KVAL_SINTEGER minus(-1, 8), plus(127, 8), one_bit(-1, 1), least32(-2147483647 - 1, 32), stray(-1, 40);
    KVAL_SINTEGER least64(KVAL_UINTEGER(1, 1) << 63), greatest64(hex("7FFFFFFFFFFFFFFF")), minus65(-1, 65);
    KVAL_SINTEGER signed_x(-1, 8), signed_z(-1, 8), signed_unflagged(unflagged);
    signed_x.set_x(7);
    signed_z.force_z();

    const KVAL_UINTEGER& reference = address;
    KVAL_SINTEGER&& rvalue = std::move(minus);
    KVAL_UINTEGER *pointer = &x, *null = nullptr;
    Byte constant(0x3C, 8);
    std::vector<KVAL_UINTEGER> values{address, x, z};
    std::map<int, KVAL_SINTEGER> by_number{{1, minus}, {2, plus}};
    KVAL_UINTEGER array[2] = {odd, bit};
    Port port{address, 7};
    Register derived(-2, 8);

    KVAL_UINTEGER moved = bus, taken(std::move(moved)), small_moved = x, small_taken(std::move(small_moved));
    Place destroyed, destroyed_large;
    (new (destroyed.bytes) KVAL_UINTEGER(0xA5, 8))->~KVAL_UINTEGER();
    (new (destroyed_large.bytes) KVAL_UINTEGER(0xA5, 72))->~KVAL_UINTEGER();
    auto* freed = new KVAL_UINTEGER(0xA5, 72);
    delete freed;

    Place garbage, zeros;
    std::memset(garbage.bytes, 0xDB, sizeof garbage.bytes);
    std::memset(zeros.bytes, 0, sizeof zeros.bytes);
    const void* nowhere = reinterpret_cast<const void*>(16);
    Fields no_width{0, nowhere, nowhere, nullptr, 0, 2}, too_wide{0x7FFFFFE1, nowhere, nowhere, nullptr, 0, 0x04000000};
    Fields strange_flags{8, nullptr, nullptr, nullptr, 32, 0}, small_with_arrays{8, nowhere, nowhere, nullptr, 0, 2};
    Fields pair_with_arrays{64, nowhere, nowhere, nullptr, 0, 2}, short_arrays{65, nowhere, nowhere, nullptr, 0, 2};
    Fields released{65, nullptr, nullptr, nullptr, 0, 0}, bad_arrays{72, nowhere, nowhere, nullptr, 0, 3};
    Fields bad_mask{72, &address, nowhere, nullptr, 0, 3};

    for (auto* value : {&address, &odd, &bit, &word, &pair, &wide, &x, &all_x, &unflagged, &shifted_out, &x33, &x64}) {
        use(*value);
    }
    for (auto* value : {&bus, &x65, &wide_x, &z, &low, &high, &x_z, &z_low, &all_flags, &wide_z, &low_high, &taken}) {
        use(*value);
    }
    for (auto* value : {&minus, &plus, &one_bit, &least32, &stray, &least64, &greatest64, &minus65, &signed_x}) {
        use(*value);
    }
    for (auto* place : {&destroyed, &destroyed_large, &garbage, &zeros}) use(*place);
    for (auto* fields : {&no_width, &too_wide, &strange_flags, &small_with_arrays, &pair_with_arrays, &short_arrays}) {
        use(*fields);
    }
    use(released), use(bad_arrays);
    use(signed_z), use(signed_unflagged), use(reference), use(rvalue), use(pointer), use(null), use(constant),
        use(values), use(by_number);
    use(array), use(port), use(derived), use(moved), use(small_moved), use(small_taken), use(freed), use(bad_mask);

    reached(z, minus);
    const bool as_ever = address.bitwidth() == 40 && x.is_x() && garbage.bytes[0] == 0xDB;
    use(values);  // and what is used here was not thrown away before
    use(pointer), use(null), use(freed);
    return as_ever ? 0 : 1;
}
