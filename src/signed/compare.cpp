// Equality and order of negative values of different widths, one of them wide.
#include "words/compare.h"

#include "kval.h"
#include "signed/extended.h"

namespace kval::detail {
namespace {

// Less than 0, 0 or more than 0 as a negative value is less than, equal to or greater than one that is not wider, at
// its own width. Of its top word, the `used` bits count.
int compare_negative(const KVAL_SINTEGER& wider, const KVAL_SINTEGER& other, Word used) {
    const Internals::View a = Internals::Words(wider);
    const Internals::View b = Internals::Words(other);
    const Word top_mask = Internals::TopMask(wider.bitwidth());
    const bool longer = a.size > b.size;
    const Word top = a.value[a.size - 1] & used;
    const Word other_top = b.value[b.size - 1] | Operand(other).top_ones();
    const Word joint = longer ? top_mask : other_top & top_mask;
    if (top != joint) return top < joint ? -1 : 1;
    if (longer) {
        // Nothing is greater than the ones that the other one is extended by.
        for (std::size_t i = a.size - 1; i-- > b.size;) {
            if (a.value[i] != ~Word{0}) return -1;
        }
        const Word word = a.value[b.size - 1];
        if (word != other_top) return word < other_top ? -1 : 1;
    }
    return words::compare(a.value, b.size - 1, b.value, b.size - 1);
}

}  // namespace

bool SignedInternals::EqualNegativeWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    const bool b_wider = a.width < b.width;
    return compare_negative(b_wider ? b : a, b_wider ? a : b, Internals::TopMask(CommonWidth(a, b))) == 0;
}

bool SignedInternals::LessNegativeWide(const KVAL_SINTEGER& a, const KVAL_SINTEGER& b) noexcept {
    return a.width < b.width ? compare_negative(b, a, ~Word{0}) > 0 : compare_negative(a, b, ~Word{0}) < 0;
}

}  // namespace kval::detail
