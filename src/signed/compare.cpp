// Equality and order of negative values, one of them large.
#include "words/compare.h"

#include "kval.h"
#include "signed/extended.h"

namespace kval::detail {
namespace {

// Compares two negative values at the width of `a`, the wider one if they differ: less than 0, 0 or more than 0 as `a`
// is less than, equal to or greater than `b`. Only the `used` bits of the top word of `a` count.
int compare_negative(const Operand& a, const Operand& b, Word used) {
    const Word top_mask = used_of_top_word(a.width);
    const bool longer = a.size > b.size;
    const Word top = a.value[a.size - 1] & used;
    const Word other_top = b.value[b.size - 1] | by_sign(b).top_ones();
    const Word joint = longer ? top_mask : other_top & top_mask;
    if (top != joint) return top < joint ? -1 : 1;
    if (longer) {
        // `b` is extended by ones, and nothing is greater than those.
        for (std::size_t i = a.size - 1; i-- > b.size;) {
            if (a.value[i] != ~Word{0}) return -1;
        }
        const Word word = a.value[b.size - 1];
        if (word != other_top) return word < other_top ? -1 : 1;
    }
    return words::compare(a.value, b.size - 1, b.value, b.size - 1);
}

}  // namespace

bool EqualNegativeLarge(std::uint64_t a, std::uint64_t b, unsigned a_width, unsigned b_width) noexcept {
    Copy x_copy;
    const Operand x({a, 0}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, 0}, b_width, y_copy);
    // The lowest words tell most different values apart.
    const bool both_large = x.size > 2 && y.size > 2;
    if (both_large && words::load_pair(x.value) != words::load_pair(y.value)) return false;
    const bool b_wider = a_width < b_width;
    return compare_negative(b_wider ? y : x, b_wider ? x : y, used_of_top_word(b_wider ? b_width : a_width)) == 0;
}

bool LessNegativeLarge(std::uint64_t a, std::uint64_t b, unsigned a_width, unsigned b_width) noexcept {
    Copy x_copy;
    const Operand x({a, 0}, a_width, x_copy);
    Copy y_copy;
    const Operand y({b, 0}, b_width, y_copy);
    return a_width < b_width ? compare_negative(y, x, ~Word{0}) > 0 : compare_negative(x, y, ~Word{0}) < 0;
}

}  // namespace kval::detail
