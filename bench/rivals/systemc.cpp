// SystemC: sc_lv, vectors of four-state bits of any length, and sc_unsigned, two-state integers, for what sc_lv lacks.
#define SC_DISABLE_API_VERSION_CHECK  // which asks for the language mode that the library was compiled in
#include <systemc>

#include "operations.h"
#include "rivals/kernels.h"
#include "rivals/operators.h"

// The library's main program would call it.
int sc_main(int, char**) { return 0; }

namespace bench {
namespace {

using Logic = sc_dt::sc_lv_base;
using Integer = sc_dt::sc_unsigned;

int length(unsigned width) { return static_cast<int>(width); }

/// A bit is 0 or 1 in the data word, and Z or X where the control word has a 1.
struct FourState : NewValues<Logic> {
    using Value = Logic;
    static constexpr const char* kName = "systemc";
    static constexpr Rules kRules = Rules::kOwn;
    static bool takes(unsigned, unsigned) { return true; }
    static Logic from(const Bits& bits) {
        Logic v(length(bits.width));
        for (int i = 0; i < v.size(); ++i) {
            const auto at = static_cast<std::size_t>(i);
            v.set_word(i, bits.value[at] | bits.mask[at]);
            v.set_cword(i, bits.mask[at]);
        }
        return v;
    }
    static Bits bits(const Logic& v) {
        Bits bits{static_cast<unsigned>(v.length()), {}, {}, {}};
        for (int i = 0; i < v.size(); ++i) {
            bits.value.push_back(v.get_word(i));
            bits.mask.push_back(v.get_cword(i));
        }
        return bits;
    }
    static void keep(const Logic& v) {
        bench::keep(v.get_word(0), v.get_cword(0), static_cast<unsigned>(v.length()), 0);
    }

    static Logic construct(unsigned number, unsigned width) {
        Logic v(length(width));
        v = number;
        return v;
    }
    static Logic shift_right(const Logic& v, unsigned count) { return v >> static_cast<int>(count); }
    static Logic shift_left(const Logic& v, unsigned count) { return v << static_cast<int>(count); }
    static Logic& and_assign(Logic& l, const Logic& r) { return l &= r; }
    static Logic& or_assign(Logic& l, const Logic& r) { return l |= r; }
    static Logic& shift_left_assign(Logic& v, unsigned count) { return v <<= static_cast<int>(count); }
    static Logic& shift_right_assign(Logic& v, unsigned count) { return v >>= static_cast<int>(count); }
    static Logic& assign(Logic& to, const Logic& from) { return to = from; }
    static Logic& assign(Logic& to, unsigned number) {
        to = number;
        return to;
    }
    static bool equal(const Logic& l, const Logic& r) { return l == r; }
};

struct TwoState {
    using Value = Integer;
    static constexpr const char* kName = "systemc";
    static constexpr Rules kRules = Rules::kTwoState;
    static bool takes(unsigned, unsigned) { return true; }
    static Integer from(const Bits& bits) {
        // A word more than the bits need, as the integer has a bit for its sign.
        std::vector<std::uint32_t> words = bits.value;
        words.push_back(0);
        Integer v(length(bits.width));
        v.set_packed_rep(words.data());
        return v;
    }
    static Bits bits(const Integer& v) {
        const auto width = static_cast<unsigned>(v.length());
        Bits bits{width, std::vector<std::uint32_t>(width / 32 + 2), {}, {}};
        v.get_packed_rep(bits.value.data());
        if (width % 32 != 0) bits.value[width / 32] &= (1U << (width % 32)) - 1;
        bits.value.resize((width + 31) / 32);
        return bits;
    }
    static void keep(const Integer& v) { keep_memory(&v); }

    static constexpr unsigned kWidestProduct = 65536;  // schoolbook: seconds beyond
    static Integer add(const Integer& l, const Integer& r) { return l + r; }
    static Integer multiply(const Integer& l, const Integer& r) { return l * r; }
    static Integer& add_assign(Integer& l, const Integer& r) {
        l += r;
        return l;
    }
    static Integer& increment(Integer& v) {
        ++v;
        return v;
    }
    static Integer& decrement(Integer& v) {
        --v;
        return v;
    }
    static bool less(const Integer& l, const Integer& r) { return sc_dt::operator<(l, r); }
};

const Registration registration([] {
    add_operations<FourState>();
    add_operations<TwoState>();
});

}  // namespace
}  // namespace bench
