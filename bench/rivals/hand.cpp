// The plain code of hand.h: structs up to 64 bits, preallocated arrays above.
#include "hand.h"

#include <algorithm>

#include "operations.h"
#include "rivals/kernels.h"
#include "rivals/operators.h"

namespace bench {
namespace {

constexpr unsigned kSmallWidth = hand::kLimbBits;
constexpr unsigned kSchoolbookLimit = 65536;  // products take seconds beyond

void set_flags(std::uint8_t& flags, const Bits& bits) { flags = bits.has_x() ? hand::kX : 0; }

template <typename V>
struct Small {
    using Value = V;
    static constexpr const char* kName = "hand";
    static constexpr Rules kRules = Rules::kSame;
    static bool takes(unsigned, unsigned result_width) { return result_width <= kSmallWidth; }
    static V from(const Bits& bits) {
        V v{hand::make(Bits::limbs(bits.value)[0], bits.width)};
        v.mask = Bits::limbs(bits.mask)[0];
        set_flags(v.flags, bits);
        return v;
    }
    static Bits bits(const V& v) {
        return {v.width, Bits::words(&v.value, 1, v.width), Bits::words(&v.mask, 1, v.width),
                (v.flags & hand::kX) != 0};
    }
    static void keep(const V& v) { bench::keep(v.value, v.mask, v.width, v.flags & hand::kX); }
};

struct SmallUnsigned : Small<hand::Small>, NewValues<hand::Small>, InPlace<hand::Small>, Comparisons<hand::Small> {
    static hand::Small construct(unsigned number, unsigned width) { return hand::make(number, width); }
    static hand::Small& assign(hand::Small& to, const hand::Small& from) { return hand::assign(to, from); }
    static hand::Small& assign(hand::Small& to, unsigned number) { return hand::assign(to, number); }
    static bool bit(const hand::Small& v, unsigned position) { return (v.value >> position & 1) != 0; }
    static void set_bit(hand::Small& v, unsigned position, bool value) {
        const hand::Limb others = ~(hand::Limb{1} << position);
        v.value = (v.value & others) | hand::Limb{value} << position;
        v.mask &= others;
        // The library's rule: the 32-bit word of the bit decides about the flag.
        if ((v.mask >> (position & 32U) & 0xFFFFFFFF) == 0) v.flags &= static_cast<std::uint8_t>(~hand::kX);
    }
    static hand::Small divide(const hand::Small& l, const hand::Small& r) { return l / r; }
    static hand::Small remainder(const hand::Small& l, const hand::Small& r) { return l % r; }
};

struct SmallSigned : Small<hand::SmallSigned> {
    using V = hand::SmallSigned;
    static V signed_construct(unsigned number, unsigned width) {
        return hand::make_signed(static_cast<int>(number), width);
    }
    static V signed_copy(const V& v) { return v; }
    static V signed_add(const V& l, const V& r) { return l + r; }
    static V signed_subtract(const V& l, const V& r) { return l - r; }
    static V signed_multiply(const V& l, const V& r) { return l * r; }
    static bool signed_less(const V& l, const V& r) { return l < r; }
    static V signed_divide(const V& l, const V& r) { return l / r; }
    static V signed_remainder(const V& l, const V& r) { return l % r; }
};

/// Right shifts of signed values lose their X bits up to 32 bits only.
struct CompactSigned : Small<hand::SmallSigned> {
    static bool takes(unsigned width, unsigned) { return width <= 32; }
    static hand::SmallSigned signed_shift_right(const hand::SmallSigned& v, unsigned count) { return v >> count; }
};

// What the results above 64 bits are written into; its arrays grow with the operands that are made.
hand::Large out(kSmallWidth);

void reserve(unsigned width) {
    static unsigned reserved = kSmallWidth;
    if (width <= reserved) return;
    out = hand::Large(width);
    reserved = width;
}

struct Large : InPlace<hand::Large>, Comparisons<hand::Large> {
    using Value = hand::Large;
    using V = hand::Large;
    static constexpr const char* kName = "hand";
    static constexpr Rules kRules = Rules::kSame;
    static bool takes(unsigned, unsigned result_width) { return result_width > kSmallWidth; }
    static V from(const Bits& bits) {
        V v(bits.width + hand::kLimbBits);
        v.width = bits.width;
        const std::vector<std::uint64_t> value = Bits::limbs(bits.value);
        const std::vector<std::uint64_t> mask = Bits::limbs(bits.mask);
        std::copy(value.begin(), value.end(), v.value.get());
        std::copy(mask.begin(), mask.end(), v.mask.get());
        set_flags(v.flags, bits);
        reserve(2 * bits.width + hand::kLimbBits);
        return v;
    }
    static Bits bits(const V& v) {
        return {v.width, Bits::words(v.value.get(), v.size(), v.width), Bits::words(v.mask.get(), v.size(), v.width),
                (v.flags & hand::kX) != 0};
    }
    static void keep(const V& v) { keep_memory(&v); }

    template <auto operation, typename... Operand>
    static const V& written(const Operand&... operand) {
        operation(out, operand...);
        return out;
    }
    static const V& construct(unsigned number, unsigned width) {
        hand::make(out, number, width);
        return out;
    }
    static const V& copy(const V& v) { return written<hand::copy>(v); }
    static const V& logic_and(const V& l, const V& r) { return written<hand::bit_and>(l, r); }
    static const V& logic_or(const V& l, const V& r) { return written<hand::bit_or>(l, r); }
    static const V& logic_xor(const V& l, const V& r) { return written<hand::bit_xor>(l, r); }
    static const V& logic_not(const V& v) { return written<hand::bit_not>(v); }
    static const V& shift_right(const V& v, unsigned count) { return written<hand::shift_right>(v, count); }
    static const V& shift_left(const V& v, unsigned count) { return written<hand::shift_left>(v, count); }
    static const V& add(const V& l, const V& r) { return written<hand::add>(l, r); }
    static const V& subtract(const V& l, const V& r) { return written<hand::subtract>(l, r); }
    static constexpr unsigned kWidestProduct = kSchoolbookLimit;
    static const V& multiply(const V& l, const V& r) { return written<hand::multiply>(l, r); }
    static const V& signed_add(const V& l, const V& r) { return written<hand::add_signed>(l, r); }
    static const V& signed_subtract(const V& l, const V& r) { return written<hand::subtract_signed>(l, r); }
    static bool signed_less(const V& l, const V& r) { return hand::less_signed(l, r); }
    static V& assign(V& to, const V& from) {
        hand::assign(to, from);
        return to;
    }
    static V& assign(V& to, unsigned number) {
        hand::assign(to, number);
        return to;
    }
};

const Registration registration([] {
    add_operations<SmallUnsigned>();
    add_operations<SmallSigned>();
    add_operations<CompactSigned>();
    add_operations<Large>();
    add_counter<SmallUnsigned>();
    add_shift_register<SmallUnsigned>();
});

}  // namespace
}  // namespace bench
