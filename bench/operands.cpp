// The operand sets: random bits from a fixed seed, shaped as the set's name says.
#include "operands.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace bench {
namespace {

constexpr std::size_t kMostPairs = 16;
constexpr std::size_t kCacheWords = 4096;  // 16 KiB of operands, so that results have room beside them

std::size_t word_count(unsigned width) { return (std::size_t{width} + 31) / 32; }

Bits zeros(unsigned width) {
    const std::vector<std::uint32_t> plane(word_count(width));
    return {width, plane, plane, std::nullopt};
}

class Maker {
  public:
    Maker(std::string_view set, unsigned width) : set_(set), width_(width), random_(width + 1) {}

    Pair pair(std::size_t index) {
        Bits left = random();
        Bits right = random();
        if (set_ == "known" || set_ == "x") {
            for (Bits* bits : {&left, &right}) set_top(*bits, false);
        } else if (set_ == "grows") {
            for (Bits* bits : {&left, &right}) set_top(*bits, true);
        } else if (set_ == "carry") {
            std::fill(left.value.begin(), left.value.end(), ~0U);
            std::fill(right.value.begin(), right.value.end(), 0U);
            right.value[0] = 1;
            set_bit(left, width_ - 1, false);
        } else if (set_ == "top") {
            set_bit(left, width_ - 1, index % 2 == 0);
            set_bit(right, width_ - 1, index % 2 != 0);
        } else if (set_ == "divide") {
            shape_division(left, right, index);
        } else {
            right = left;
            if (set_.substr(0, 3) == "low") right.value[0] ^= 1U;
        }
        trim(left);
        trim(right);
        add_unknowns(left, right);
        return {left, right};
    }

  private:
    Bits random() {
        Bits bits = zeros(width_);
        for (std::uint32_t& word : bits.value) word = draw();
        return bits;
    }

    std::uint32_t draw() { return static_cast<std::uint32_t>(random_()); }

    void set_bit(Bits& bits, unsigned position, bool value) const {
        const std::uint32_t bit = 1U << (position % 32);
        std::uint32_t& word = bits.value[position / 32];
        word = value ? word | bit : word & ~bit;
    }

    void set_top(Bits& bits, bool value) const {
        set_bit(bits, width_ - 1, value);
        set_bit(bits, width_ - 2, value);
    }

    void trim(Bits& bits) const {
        const std::uint32_t top = ~0U >> (-width_ % 32);
        bits.value.back() &= top;
        bits.mask.back() &= top;
    }

    void shape_division(Bits& left, Bits& right, std::size_t index) const {
        const bool negative = index % 4 >= 2;
        set_bit(left, width_ - 1, index % 2 != 0);
        for (unsigned position = width_ / 2; position < width_; ++position) set_bit(right, position, negative);
        set_bit(right, 1, true);
    }

    void add_unknowns(Bits& left, Bits& right) {
        if (set_ != "x" && set_.substr(std::min(set_.size(), set_.find('_'))) != "_x") return;
        for (std::uint32_t& word : left.mask) word = draw() & draw() & draw();
        left.mask[0] |= 4U;
        right.mask = left.mask;
        if (set_ == "x") std::rotate(right.mask.begin(), right.mask.begin() + 1, right.mask.end());
        if (set_ == "x") right.mask[0] = (right.mask[0] << 1) | 8U;
        for (Bits* bits : {&left, &right}) {
            trim(*bits);
            set_known(*bits, width_ - 1);
            set_known(*bits, width_ - 2);
        }
    }

    // The top bits stay known: where they decide, each library has its own rule for X bits.
    void set_known(Bits& bits, unsigned position) const { bits.mask[position / 32] &= ~(1U << (position % 32)); }

    std::string_view set_;
    unsigned width_;
    std::mt19937_64 random_;
};

}  // namespace

bool Bits::has_x() const {
    return std::any_of(mask.begin(), mask.end(), [](std::uint32_t word) { return word != 0; });
}

std::vector<std::uint64_t> Bits::limbs(const std::vector<std::uint32_t>& plane) {
    std::vector<std::uint64_t> limbs((plane.size() + 1) / 2);
    for (std::size_t i = 0; i < plane.size(); ++i) limbs[i / 2] |= std::uint64_t{plane[i]} << (32 * (i % 2));
    return limbs;
}

std::vector<std::uint32_t> Bits::words(const std::uint64_t* limbs, std::size_t count, unsigned width) {
    std::vector<std::uint32_t> words(word_count(width));
    for (std::size_t i = 0; i < words.size() && i / 2 < count; ++i)
        words[i] = static_cast<std::uint32_t>(limbs[i / 2] >> (32 * (i % 2)));
    return words;
}

std::vector<Pair> operands(std::string_view set, unsigned width) {
    Maker maker(set, width);
    const std::size_t words_a_pair = 4 * word_count(width);
    std::vector<Pair> pairs(std::clamp<std::size_t>(kCacheWords / words_a_pair, 1, kMostPairs));
    for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = maker.pair(i);
    return pairs;
}

unsigned shift_count(unsigned width) { return width <= 128 ? 5 : 37; }

std::string hexadecimal(const Bits& bits) {
    const std::size_t digits = (std::size_t{bits.width} + 3) / 4;
    std::string text(digits, '0');
    for (std::size_t i = 0; i < digits; ++i)
        text[digits - 1 - i] = "0123456789ABCDEF"[bits.value[i / 8] >> (4 * (i % 8)) & 15U];
    return text;
}

std::string binary(const Bits& bits) {
    std::string text(bits.width, '0');
    for (std::size_t i = 0; i < bits.width; ++i) {
        const auto bit = [i](const std::vector<std::uint32_t>& plane) { return (plane[i / 32] >> (i % 32) & 1U) != 0; };
        const char digit = bit(bits.value) ? '1' : '0';
        text[bits.width - 1 - i] = bit(bits.mask) ? 'X' : digit;
    }
    return text;
}

}  // namespace bench
