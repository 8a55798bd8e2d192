// Tests of every operator at every length of storage that has a way of its own through the library: up to 64 bits, up
// to 256 bits, and longer arrays in blocks, each with what a loop leaves over. Single bits and runs of ones at the
// edges of words and limbs are followed from the operands to the result.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kval.h"
#include "operator_checks.h"
#include "unit_support.h"

namespace {

using Positions = std::vector<unsigned>;

// One width and the next of every kind: odd and even numbers of words and of limbs, full and partial top words.
const std::vector<unsigned> kWidths = {33,  48,  63,  64,  65,  80,  96,  97,  127, 128, 129, 160, 191,  192,
                                       200, 224, 255, 256, 257, 288, 320, 500, 512, 513, 544, 545, 1000, 1056};

// The same and compact ones.
std::vector<unsigned> all_widths() {
    std::vector<unsigned> all = {1, 2, 31, 32};
    all.insert(all.end(), kWidths.begin(), kWidths.end());
    return all;
}

// Bits at the edges of words and limbs, of the short forms and of the value.
Positions edges(unsigned width) {
    const unsigned candidates[] = {0,   1,   30,  31,  32,  33,  62,  63,  64,        65,        95,
                                   96,  127, 128, 129, 191, 192, 255, 256, 257,       287,       288,
                                   511, 512, 513, 543, 544, 999, 767, 768, width / 2, width - 2, width - 1};
    Positions all;
    for (const unsigned position : candidates) {
        if (position < width) all.push_back(position);
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

Positions run(unsigned first, unsigned end) {
    Positions all;
    for (unsigned position = first; position < end; ++position) all.push_back(position);
    return all;
}

// Every second or third of the positions.
Positions some_of(const Positions& positions, unsigned step, unsigned first) {
    Positions some;
    for (std::size_t i = first; i < positions.size(); i += step) some.push_back(positions[i]);
    return some;
}

// Ones and X marks at these positions; those beyond the width are left out.
KVAL_UINTEGER with_bits(unsigned width, const Positions& ones, const Positions& unknown = {}, bool x_flag = false) {
    KVAL_UINTEGER v = from_words(width, {}, {}, x_flag);
    for (const unsigned position : ones) {
        const int index = static_cast<int>(position / 32);
        if (position < width) v.set_uvalue_at(index, v.get_uvalue_at(index) | 1U << position % 32);
    }
    for (const unsigned position : unknown) {
        const int index = static_cast<int>(position / 32);
        if (position < width) v.set_xmask_at(index, v.get_xmask_at(index) | 1U << position % 32);
    }
    return v;
}

Positions moved_up(const Positions& positions, unsigned count) {
    Positions moved;
    for (const unsigned position : positions) moved.push_back(position + count);
    return moved;
}

Positions moved_down(const Positions& positions, unsigned count) {
    Positions moved;
    for (const unsigned position : positions) {
        if (position >= count) moved.push_back(position - count);
    }
    return moved;
}

std::string text_of(unsigned left, const char* sign, unsigned right) {
    return std::to_string(left) + " bits " + sign + " " + std::to_string(right);
}

// ---- copies and widths ----

TEST(Lengths, CopyAndAssignment) {
    for (const unsigned width : all_widths()) {
        const KVAL_UINTEGER source =
            marked(with_bits(width, some_of(edges(width), 2, 0), some_of(edges(width), 3, 1), true), "L");
        const KVAL_UINTEGER copy(source);
        EXPECT_EQ(printed(copy), printed(source));
        for (const unsigned other : all_widths()) {
            SCOPED_TRACE(text_of(width, "into", other));
            KVAL_UINTEGER target = marked(with_bits(other, run(0, other), run(0, other)), "H");
            cache_text(target);
            target = source;
            EXPECT_EQ(
                printed(target),
                printed(marked(with_bits(other, some_of(edges(width), 2, 0), some_of(edges(width), 3, 1), true), "L")));
            EXPECT_FALSE(keeps_text(target));
        }
    }
}

TEST(Lengths, AssignmentOfANumber) {
    for (const unsigned width : kWidths) {
        KVAL_UINTEGER target = marked(with_bits(width, run(0, width), run(0, width), true), "ZLH");
        cache_text(target);
        target = 0x80000001U;
        EXPECT_EQ(printed(target), printed(with_bits(width, {0, 31})));
        EXPECT_FALSE(keeps_text(target));
    }
}

TEST(Lengths, Resizing) {
    for (const unsigned width : all_widths()) {
        for (const unsigned other : {1U, 32U, 33U, 64U, 65U, 256U, 257U, 512U, 1056U, 4096U, 4097U, 5000U}) {
            SCOPED_TRACE(text_of(width, "to", other));
            KVAL_UINTEGER v = marked(with_bits(width, edges(width), some_of(edges(width), 2, 1), true), "Z");
            v.bitwidth(other);
            EXPECT_EQ(printed(v),
                      printed(marked(with_bits(other, edges(width), some_of(edges(width), 2, 1), true), "Z")));
        }
    }
}

// ---- shifts ----

std::vector<unsigned> counts(unsigned width) {
    return {0, 1, 31, 32, 33, 63, 64, 65, 100, 127, 128, 160, 191, 255, 256, 300, 512, width - 1, width, width + 1};
}

TEST(Lengths, ShiftsInPlace) {
    for (const unsigned width : kWidths) {
        const Positions ones = edges(width);
        const Positions unknown = some_of(ones, 2, 1);
        const KVAL_UINTEGER v = marked(with_bits(width, ones, unknown, true), "ZH");
        for (const unsigned count : counts(width)) {
            const std::string name = text_of(width, "by", count);
            const std::string up =
                printed(marked(with_bits(width, moved_up(ones, count), moved_up(unknown, count), true), "ZH"));
            const std::string down =
                printed(marked(with_bits(width, moved_down(ones, count), moved_down(unknown, count), true), "ZH"));
            check_in_place({name.c_str(), v, count, up.c_str()},
                           [](KVAL_UINTEGER& target, unsigned by) -> KVAL_UINTEGER& { return target <<= by; });
            check_in_place({name.c_str(), v, count, down.c_str()},
                           [](KVAL_UINTEGER& target, unsigned by) -> KVAL_UINTEGER& { return target >>= by; });
        }
    }
}

TEST(Lengths, FreeShifts) {
    for (const unsigned width : kWidths) {
        const Positions ones = edges(width);
        const Positions unknown = some_of(ones, 2, 1);
        const KVAL_UINTEGER v = marked(with_bits(width, ones, unknown, true), "L");
        for (const unsigned count : counts(width)) {
            const std::string name = text_of(width, "by", count);
            const unsigned narrower = count < width ? width - count : 1;
            const std::string up =
                printed(marked(with_bits(width + count, moved_up(ones, count), moved_up(unknown, count), true), "L"));
            const std::string down =
                printed(marked(with_bits(narrower, moved_down(ones, count), moved_down(unknown, count), true), "L"));
            check_free({name.c_str(), v, count, up.c_str()},
                       [](const KVAL_UINTEGER& operand, unsigned by) { return operand << by; });
            check_free({name.c_str(), v, count, down.c_str()},
                       [](const KVAL_UINTEGER& operand, unsigned by) { return operand >> by; });
        }
    }
}

// Compact values whose bits move into words and limbs of their own.
TEST(Lengths, LeftShiftsOfCompactValues) {
    for (const unsigned width : {1U, 5U, 32U}) {
        const Positions ones = edges(width);
        const KVAL_UINTEGER v = with_bits(width, ones, {0}, true);
        for (const unsigned count : {0U, 1U, 27U, 31U, 32U, 33U, 59U, 63U, 64U, 65U, 224U, 255U, 256U, 1000U}) {
            const std::string name = text_of(width, "by", count);
            const std::string up = printed(with_bits(width + count, moved_up(ones, count), {count}, true));
            check_free({name.c_str(), v, count, up.c_str()},
                       [](const KVAL_UINTEGER& operand, unsigned by) { return operand << by; });
        }
    }
}

TEST(Lengths, ShiftedCopies) {
    for (const unsigned width : kWidths) {
        const Positions ones = edges(width);
        const Positions unknown = some_of(ones, 2, 1);
        const KVAL_UINTEGER v = marked(with_bits(width, ones, unknown, true), "Z");
        for (const unsigned count : counts(width)) {
            SCOPED_TRACE(text_of(width, "by", count));
            const KVAL_UINTEGER up(v, static_cast<int>(count), true);
            const KVAL_UINTEGER down(v, static_cast<int>(count), false);
            EXPECT_EQ(
                printed(up),
                printed(marked(with_bits(width + count, moved_up(ones, count), moved_up(unknown, count), true), "Z")));
            EXPECT_EQ(
                printed(down),
                printed(marked(with_bits(width, moved_down(ones, count), moved_down(unknown, count), true), "Z")));
        }
    }
}

// Only a right copy trims: what is stored above the width comes in from there.
TEST(Lengths, ShiftedCopiesOfStrayBits) {
    for (const unsigned width : {100U, 500U}) {
        KVAL_UINTEGER v(0, width);
        const int top = v.get_size() - 1;
        v.set_uvalue_at(top, 0xFFFFFFFF).set_xmask_at(top, 0x80000000);
        const unsigned words = 32 * static_cast<unsigned>(v.get_size());
        const KVAL_UINTEGER up = with_bits(words + 8, run(words - 32 + 8, words + 8), {words - 1 + 8});
        const KVAL_UINTEGER shifted(v, 8, true);
        EXPECT_EQ(shifted.bitwidth(), width + 8);
        for (int i = 0; i < shifted.get_size(); ++i) {
            EXPECT_EQ(shifted.get_uvalue_at(i), up.get_uvalue_at(i)) << width << " bits, word " << i;
            EXPECT_EQ(shifted.get_xmask_at(i), up.get_xmask_at(i)) << width << " bits, word " << i;
        }
        EXPECT_EQ(printed(KVAL_UINTEGER(v, 30, false)),
                  printed(with_bits(width, run(words - 62, words - 30), {words - 31})));
        EXPECT_EQ(printed(KVAL_UINTEGER(v, static_cast<int>(width), false)), printed(KVAL_UINTEGER(0, width)));
    }
}

// ---- sums and differences ----

// A carry that starts at the bottom goes up to bit `end` and no further: (2^end - 1) + 1 = 2^end, and back.
TEST(Lengths, CarriesAndBorrowsGoAsFarAsTheOnesAndZeros) {
    const auto plus = [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l + r; };
    const auto minus = [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l - r; };
    for (const unsigned width : all_widths()) {
        for (const unsigned end : edges(width)) {
            const std::string name = text_of(width, "up to", end);
            const KVAL_UINTEGER ones = with_bits(width, run(0, end), {width - 1}, true);
            const KVAL_UINTEGER one = with_bits(width, {0}, {0});
            const std::string sum = printed(with_bits(width, {end}, {0}));
            const std::string other_sum = printed(with_bits(width, {end}, {width - 1}, true));
            check_free({name.c_str(), ones, one, sum.c_str()}, plus);
            check_free({name.c_str(), one, ones, other_sum.c_str()}, plus);
            const KVAL_UINTEGER power = marked(with_bits(width, {end}, {0}, true), "H");
            const std::string difference = printed(marked(with_bits(width, run(0, end), {0}, true), "H"));
            check_free({name.c_str(), power, one, difference.c_str()}, minus);
        }
        const std::string name = std::to_string(width) + " bits";
        const KVAL_UINTEGER all = with_bits(width, run(0, width));
        const std::string grown = printed(with_bits(width + 1, {width}));
        const std::string largest = printed(with_bits(width + 1, run(1, width + 1)));
        check_free({name.c_str(), all, with_bits(width, {0}), grown.c_str()}, plus);
        check_free({name.c_str(), all, all, largest.c_str()}, plus);
        const std::string below_zero = printed(all);
        check_free({name.c_str(), KVAL_UINTEGER(0, width), with_bits(width, {0}), below_zero.c_str()}, minus);
    }
}

// The narrower operand is zero-extended, and the wider one gives width, x-mask and flags, on whichever side it stands.
TEST(Lengths, SumsOfOperandsOfTwoLengths) {
    const auto plus = [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l + r; };
    for (const unsigned width : all_widths()) {
        for (const unsigned other : all_widths()) {
            if (other <= width) continue;
            const std::string name = text_of(width, "and", other);
            const KVAL_UINTEGER narrow = marked(with_bits(width, run(0, width), {0}, true), "Z");
            const KVAL_UINTEGER wide = marked(with_bits(other, {0, width + 1}, {0, width}), "L");
            const std::string sum = printed(marked(with_bits(other, {width, width + 1}, {0, width}), "L"));
            if (width + 1 < other) {
                check_free({name.c_str(), narrow, wide, sum.c_str()}, plus);
                check_free({name.c_str(), wide, narrow, sum.c_str()}, plus);
            }
            const KVAL_UINTEGER all = with_bits(other, run(0, other));
            const std::string grown = printed(with_bits(other + 1, {other}));
            check_free({name.c_str(), all, with_bits(width, {0}), grown.c_str()}, plus);
            check_free({name.c_str(), with_bits(width, {0}), all, grown.c_str()}, plus);
        }
    }
}

TEST(Lengths, DifferencesOfOperandsOfTwoLengths) {
    const auto minus = [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l - r; };
    for (const unsigned width : kWidths) {  // a compact right operand has a rule of its own
        for (const unsigned other : kWidths) {
            const std::string name = text_of(other, "less", width);
            // Less 1, a power of two leaves the ones below it; a further bit is taken out of them, or borrowed.
            const KVAL_UINTEGER from = marked(with_bits(other, {other - 1}, {1}), "L");
            const KVAL_UINTEGER less = marked(with_bits(width, {0, width - 1}, {0}, true), "Z");
            Positions left = width == other ? run(0, other) : run(0, other - 1);
            if (width < other) left.erase(left.begin() + width - 1);
            const std::string want = printed(marked(with_bits(other, left, {1}), "L"));
            check_free({name.c_str(), from, less, want.c_str()}, minus);
        }
    }
}

TEST(Lengths, SumsAndDifferencesInPlace) {
    const auto add = [](KVAL_UINTEGER& l, const KVAL_UINTEGER& r) -> KVAL_UINTEGER& { return l += r; };
    const auto subtract = [](KVAL_UINTEGER& l, const KVAL_UINTEGER& r) -> KVAL_UINTEGER& { return l -= r; };
    const auto word_end = [](unsigned width) { return (width + 31) / 32 * 32; };
    for (const unsigned width : kWidths) {
        for (const unsigned other : all_widths()) {
            const std::string name = text_of(width, "and", other);
            const KVAL_UINTEGER one = marked(with_bits(other, {0}, {0}, true), "ZL");
            // The carry gets into the word beyond the right operand, but not out of it.
            const unsigned end = std::min(width, word_end(other) + 32);
            const KVAL_UINTEGER ones = marked(with_bits(width, run(0, width), {width - 1}), "H");
            const std::string sum = printed(marked(with_bits(width, run(end, width), {width - 1}), "H"));
            check_in_place({name.c_str(), ones, one, sum.c_str()}, add);
            const KVAL_UINTEGER zeros = marked(with_bits(width, {}, {width - 1}), "H");
            const std::string difference = printed(marked(with_bits(width, run(0, end), {width - 1}), "H"));
            check_in_place({name.c_str(), zeros, one, difference.c_str()}, subtract);
        }
    }
}

TEST(Lengths, SumsAndDifferencesInPlaceWithANumber) {
    const auto add = [](KVAL_UINTEGER& v, unsigned number) -> KVAL_UINTEGER& { return v += number; };
    const auto subtract = [](KVAL_UINTEGER& v, unsigned number) -> KVAL_UINTEGER& { return v -= number; };
    for (const unsigned width : kWidths) {
        for (const unsigned end : edges(width)) {
            if (end == 0) continue;
            const std::string name = text_of(width, "up to", end);
            const KVAL_UINTEGER ones = marked(with_bits(width, run(0, end), {0}, true), "Z");
            const std::string power = printed(marked(with_bits(width, {end}, {0}, true), "Z"));
            check_in_place({name.c_str(), ones, 1, power.c_str()}, add);
            const KVAL_UINTEGER from = marked(with_bits(width, {end}, {0}, true), "Z");
            const std::string less = printed(ones);
            check_in_place({name.c_str(), from, 1, less.c_str()}, subtract);
        }
        const std::string name = std::to_string(width) + " bits";
        const std::string zero = printed(KVAL_UINTEGER(0, width));
        const std::string all = printed(with_bits(width, run(0, width)));
        check_in_place({name.c_str(), with_bits(width, run(0, width)), 1, zero.c_str()}, add);
        check_in_place({name.c_str(), KVAL_UINTEGER(0, width), 1, all.c_str()}, subtract);
        // Without a carry, whatever the other words hold.
        const std::string number = printed(with_bits(width, run(0, width)));
        check_in_place({name.c_str(), with_bits(width, run(32, width)), 0xFFFFFFFF, number.c_str()}, add);
        const std::string rest = printed(with_bits(width, run(32, width)));
        check_in_place({name.c_str(), with_bits(width, run(0, width)), 0xFFFFFFFF, rest.c_str()}, subtract);
    }
}

// ---- logic ----

// Every pair of bit states at every place of a word: position p holds the left state p % 3 and the right one p / 3 % 3,
// with 0, 1 and X for 0, 1 and 2, the value bit under an X set.
Positions where(unsigned width, bool (*holds)(unsigned left, unsigned right)) {
    Positions all;
    for (unsigned position = 0; position < width; ++position) {
        if (holds(position % 3, position / 3 % 3)) all.push_back(position);
    }
    return all;
}

KVAL_UINTEGER left_states(unsigned width, bool x_flag = false) {
    return with_bits(width, where(width, [](unsigned left, unsigned) { return left != 0; }),
                     where(width, [](unsigned left, unsigned) { return left == 2; }), x_flag);
}

KVAL_UINTEGER right_states(unsigned width, bool x_flag = false) {
    return with_bits(width, where(width, [](unsigned, unsigned right) { return right != 0; }),
                     where(width, [](unsigned, unsigned right) { return right == 2; }), x_flag);
}

TEST(Lengths, And) {
    for (const unsigned width : all_widths()) {
        const std::string name = std::to_string(width) + " bits";
        const KVAL_UINTEGER result =
            with_bits(width, where(width, [](unsigned left, unsigned right) { return left == 1 && right == 1; }),
                      where(width, [](unsigned left, unsigned right) {
                          return (left == 1 && right == 2) || (left == 2 && right == 1);
                      }));
        const std::string want = printed(result);
        const KVAL_UINTEGER left = marked(left_states(width), "Z");
        const KVAL_UINTEGER right = marked(right_states(width), "H");
        check_free({name.c_str(), left, right, want.c_str()},
                   [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l & r; });
        const std::string in_place = printed(marked(result, "ZH"));
        check_in_place({name.c_str(), left, right, in_place.c_str()},
                       [](KVAL_UINTEGER& l, const KVAL_UINTEGER& r) -> KVAL_UINTEGER& { return l &= r; });
    }
}

TEST(Lengths, Or) {
    for (const unsigned width : all_widths()) {
        const std::string name = std::to_string(width) + " bits";
        const KVAL_UINTEGER result = with_bits(
            width, where(width, [](unsigned left, unsigned right) { return left == 1 || right == 1; }),
            where(width,
                  [](unsigned left, unsigned right) { return left != 1 && right != 1 && (left == 2 || right == 2); }));
        const std::string want = printed(result);
        const KVAL_UINTEGER left = marked(left_states(width), "L");
        const KVAL_UINTEGER right = marked(right_states(width), "Z");
        check_free({name.c_str(), left, right, want.c_str()},
                   [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l | r; });
        const std::string in_place = printed(marked(result, "ZL"));
        check_in_place({name.c_str(), left, right, in_place.c_str()},
                       [](KVAL_UINTEGER& l, const KVAL_UINTEGER& r) -> KVAL_UINTEGER& { return l |= r; });
    }
}

// Value bits alone, with the x-mask of the right one of two equally wide operands, unless flag X of either makes all X.
TEST(Lengths, Xor) {
    const auto exclusive = [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l ^ r; };
    for (const unsigned width : kWidths) {
        const std::string name = std::to_string(width) + " bits";
        const Positions different =
            where(width, [](unsigned left, unsigned right) { return (left != 0) != (right != 0); });
        const Positions right_ones = where(width, [](unsigned, unsigned right) { return right != 0; });
        const Positions right_x = where(width, [](unsigned, unsigned right) { return right == 2; });
        const std::string known = printed(marked(with_bits(width, different, right_x), "H"));
        check_free({name.c_str(), marked(left_states(width), "Z"), marked(right_states(width), "H"), known.c_str()},
                   exclusive);
        const std::string all_x = printed(marked(with_bits(width, right_ones, run(0, width), true), "H"));
        check_free({name.c_str(), left_states(width, true), marked(right_states(width), "H"), all_x.c_str()},
                   exclusive);
        check_free({name.c_str(), left_states(width), marked(right_states(width, true), "H"), all_x.c_str()},
                   exclusive);
    }
}

TEST(Lengths, Not) {
    for (const unsigned width : all_widths()) {
        const std::string name = std::to_string(width) + " bits";
        const std::string want =
            printed(marked(with_bits(width, where(width, [](unsigned left, unsigned) { return left == 0; }),
                                     where(width, [](unsigned left, unsigned) { return left == 2; }), true),
                           "Z"));
        check_free({name.c_str(), marked(left_states(width, true), "Z"), 0, want.c_str()},
                   [](const KVAL_UINTEGER& v, unsigned) { return ~v; });
    }
}

// ---- comparison ----

TEST(Lengths, OrderGoesByTheHighestDifference) {
    for (const unsigned width : all_widths()) {
        for (const unsigned other : all_widths()) {
            for (const unsigned high : edges(width)) {
                SCOPED_TRACE(text_of(width, "and", other) + ", bit " + std::to_string(high));
                const KVAL_UINTEGER v = with_bits(width, {high}, {0}, true);
                const KVAL_UINTEGER less = with_bits(other, run(0, high));
                EXPECT_TRUE(v > less && v >= less && less < v && less <= v);
                EXPECT_FALSE(v < less || v <= less || less > v || less >= v);
                if (high >= other) continue;
                const KVAL_UINTEGER same = with_bits(other, {high});
                EXPECT_TRUE(v >= same && v <= same && same >= v && same <= v);
                EXPECT_FALSE(v > same || v < same || same > v || same < v);
            }
        }
    }
}

// More words than are compared on the spot, of which the highest are equal.
TEST(Lengths, OrderOfValuesOfManyWords) {
    for (const unsigned width : {2015U, 2048U, 2049U, 2112U, 4096U}) {
        for (const unsigned high : {0U, 31U, 32U, 500U, 1983U}) {
            SCOPED_TRACE(text_of(width, "bits, bit", high));
            const KVAL_UINTEGER v = with_bits(width, {high, width - 1}, {0}, true);
            Positions below = run(0, high);
            below.push_back(width - 1);
            const KVAL_UINTEGER less = with_bits(width, below);
            EXPECT_TRUE(v > less && v >= less && less < v && less <= v && v != less);
            EXPECT_FALSE(v < less || v <= less || less > v || less >= v || v == less);
            const KVAL_UINTEGER same = with_bits(width, {high, width - 1});
            EXPECT_TRUE(v >= same && v <= same && same >= v && same <= v && less != same);
            EXPECT_FALSE(v > same || v < same || same > v || same < v || v == same);
            EXPECT_TRUE(same == with_bits(width, {high, width - 1}));
        }
    }
}

TEST(Lengths, IdentityWantsEveryBitOfBothPlanes) {
    for (const unsigned width : all_widths()) {
        const KVAL_UINTEGER v = marked(with_bits(width, {0, width - 1}, {width / 2}), "Z");
        for (const unsigned other : all_widths()) {
            if (other < width) continue;
            SCOPED_TRACE(text_of(width, "and", other));
            const KVAL_UINTEGER same = marked(with_bits(other, {0, width - 1}, {width / 2}), "Z");
            EXPECT_TRUE(v == same && same == v);
            EXPECT_FALSE(v != same || same != v);
            EXPECT_FALSE(v == marked(same, "L") || marked(same, "L") == v);
            for (const unsigned position : edges(other)) {
                const int index = static_cast<int>(position / 32);
                const unsigned bit = 1U << position % 32;
                KVAL_UINTEGER value_differs(same);
                value_differs.set_uvalue_at(index, same.get_uvalue_at(index) ^ bit);
                KVAL_UINTEGER mask_differs(same);
                mask_differs.set_xmask_at(index, same.get_xmask_at(index) ^ bit);
                EXPECT_FALSE(v == value_differs || value_differs == v) << "bit " << position;
                EXPECT_FALSE(v == mask_differs || mask_differs == v) << "X mark " << position;
            }
        }
    }
}

// ---- products ----

TEST(Lengths, ProductsOfPowersOfTwo) {
    const auto times = [](const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) { return l * r; };
    for (const unsigned width : all_widths()) {
        for (const unsigned other : all_widths()) {
            const std::string name = text_of(width, "by", other);
            for (const unsigned high : some_of(edges(width), 3, 0)) {
                const std::string want = printed(with_bits(width + other, {high, high + other - 1}));
                check_free({name.c_str(), with_bits(width, {high}, {0}), marked(with_bits(other, {0, other - 1}), "Z"),
                            want.c_str()},
                           times);
            }
            const std::string all_x = printed(with_bits(width + other, {}, run(0, width + other), true));
            check_free({name.c_str(), with_bits(width, {0}, {}, true), with_bits(other, {0}), all_x.c_str()}, times);
            check_free({name.c_str(), with_bits(width, {0}), with_bits(other, {0}, {}, true), all_x.c_str()}, times);
        }
    }
}

}  // namespace
