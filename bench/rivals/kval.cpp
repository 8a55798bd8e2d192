// The library's own values, as the rivals are measured: everything through the public interface.
#include <kval.h>

#include <stdexcept>

#include "operations.h"
#include "rivals/kernels.h"
#include "rivals/operators.h"
#include "sha256.h"

namespace bench {
namespace {

template <typename V>
V made_from(const Bits& bits) {
    V v(0, bits.width);
    for (std::size_t i = 0; i < bits.value.size(); ++i) {
        v.set_uvalue_at(static_cast<int>(i), bits.value[i]);
        v.set_xmask_at(static_cast<int>(i), bits.mask[i]);
    }
    // Sets flag X too, by marking again what is marked.
    for (unsigned position = 0; position < bits.width; ++position) {
        if (!v.is_x(static_cast<int>(position), 0)) continue;
        v.set_x(static_cast<int>(position));
        break;
    }
    v.DeleteString();
    return v;
}

Bits read(const KVAL_UINTEGER& v) {
    Bits bits{v.bitwidth(), {}, {}, v.is_x()};
    for (int i = 0; i < v.get_size(); ++i) {
        bits.value.push_back(v.get_uvalue_at(i));
        bits.mask.push_back(v.get_xmask_at(i));
    }
    // Signed values may hold bits above their width.
    if (v.get_top() != 0) bits.value.back() &= (1U << v.get_top()) - 1U;
    return bits;
}

template <typename V>
struct Library {
    using Value = V;
    static constexpr const char* kName = "kval";
    static constexpr Rules kRules = Rules::kSame;
    static bool takes(unsigned, unsigned) { return true; }
    static V from(const Bits& bits) { return made_from<V>(bits); }
    static Bits bits(const V& v) { return read(v); }
    static void keep(const V& v) { bench::keep(v.uint(), v.get_xmask_at(0), v.bitwidth(), v.is_x()); }
};

/// A text, and with its end the end of the value's cached copy, so that the next one is made anew.
class Text {
  public:
    Text(KVAL_UINTEGER& owner, const char* chars) : owner_(owner), chars_(chars) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { owner_.DeleteString(); }
    const char* chars() const { return chars_; }
    std::string text() const { return chars_; }

  private:
    KVAL_UINTEGER& owner_;
    const char* chars_;
};

struct Unsigned : Library<KVAL_UINTEGER>, NewValues<KVAL_UINTEGER>, InPlace<KVAL_UINTEGER>, Comparisons<KVAL_UINTEGER> {
    static KVAL_UINTEGER construct(unsigned number, unsigned width) { return KVAL_UINTEGER(number, width); }
    static KVAL_UINTEGER& assign(KVAL_UINTEGER& to, const KVAL_UINTEGER& from) { return to = from; }
    static KVAL_UINTEGER& assign(KVAL_UINTEGER& to, unsigned number) { return to = number; }
    static Text hexadecimal_text(KVAL_UINTEGER& v) { return Text(v, v.as_hex_string()); }
    static Text binary_text(KVAL_UINTEGER& v) { return Text(v, v.as_bin_string()); }
    static KVAL_UINTEGER& parse_hexadecimal(KVAL_UINTEGER& v, const std::string& text) {
        return v.set_value_from_hex_string(text.c_str());
    }
    static KVAL_UINTEGER& parse_binary(KVAL_UINTEGER& v, const std::string& text) {
        return v.set_value_from_bin_string(text.c_str());
    }
    static unsigned hash(const KVAL_UINTEGER& v) { return v.get_hash(0); }
    static KVAL_UINTEGER& random_fill(KVAL_UINTEGER& v) { return v.randomize(); }
    static bool bit(const KVAL_UINTEGER& v, unsigned position) { return v.bit(position) != 0; }
    static void set_bit(KVAL_UINTEGER& v, int position, bool value) { v.set_bit(position, value); }
    static void accumulate(KVAL_UINTEGER& acc, const KVAL_UINTEGER& a, const KVAL_UINTEGER& b, const KVAL_UINTEGER& c) {
        acc += (a & b) ^ c;
    }
    static KVAL_UINTEGER divide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l / r; }
    static KVAL_UINTEGER remainder(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l % r; }
};

struct Signed : Library<KVAL_SINTEGER> {
    static KVAL_SINTEGER signed_construct(unsigned number, unsigned width) {
        return KVAL_SINTEGER(static_cast<int>(number), width);
    }
    static KVAL_SINTEGER signed_copy(const KVAL_SINTEGER& v) { return v; }
    static KVAL_SINTEGER signed_add(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l + r; }
    static KVAL_SINTEGER signed_subtract(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l - r; }
    static KVAL_SINTEGER signed_multiply(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l * r; }
    static KVAL_SINTEGER signed_shift_right(const KVAL_SINTEGER& v, unsigned count) { return v >> count; }
    static KVAL_SINTEGER& signed_shift_right_assign(KVAL_SINTEGER& v, unsigned count) { return v >>= count; }
    static KVAL_SINTEGER& signed_assign(KVAL_SINTEGER& to, const KVAL_SINTEGER& from) { return to = from; }
    static bool signed_less(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l < r; }
    static bool signed_equal(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l == r; }
    static KVAL_SINTEGER signed_divide(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l / r; }
    static KVAL_SINTEGER signed_remainder(const KVAL_SINTEGER& l, const KVAL_SINTEGER& r) { return l % r; }
};

// The demo's SHA-256 core, one block a step: 64 rounds on 32-bit registers.
void add_sha256() {
    Sha256Block block = {'a', 'b', 'c', '\x80'};
    block.back() = 24;  // the length in bits
    Sha256Core core;
    core.compress(block);
    if (core.digest() != "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad")
        throw std::logic_error("the SHA-256 of \"abc\" is not that of the standard");
    add_plain("kernel_sha256", "kval", 32, [core, block]() mutable {
        core.compress(block);
        keep_memory(&core);
    });
}

const Registration registration([] {
    add_operations<Unsigned>();
    add_operations<Signed>();
    add_counter<Unsigned>();
    add_shift_register<Unsigned>();
    add_accumulator<Unsigned>();
    add_sha256();
    add_plain("draw", "kval", 64, [] { keep(static_cast<std::uint64_t>(kval_random())); });
});

}  // namespace
}  // namespace bench
