// Model of the comparisons: stored bits from the top down, widths never compared.
#include <algorithm>
#include <cstddef>

#include "bits.h"
#include "model.h"

namespace model {

namespace {

// The sign of l - r, with the shorter plane continued by zeros. Ordering knows only value bits: marks and flags are not
// looked at, and stray bits count.
int order(const Bits& l, const Bits& r) {
    for (std::size_t i = std::max(l.size(), r.size()); i-- > 0;) {
        if (at(l, i) != at(r, i)) return at(l, i) ? 1 : -1;
    }
    return 0;
}

}  // namespace

bool greater(const Value& l, const Value& r) { return order(l.value, r.value) > 0; }

bool greater_equal(const Value& l, const Value& r) { return order(l.value, r.value) >= 0; }

bool greater(const Value& l, unsigned number) { return order(l.value, bits_of(number)) > 0; }

bool greater_equal(const Value& l, unsigned number) { return order(l.value, bits_of(number)) >= 0; }

bool greater(unsigned number, const Value& r) { return order(bits_of(number), r.value) > 0; }

bool greater_equal(unsigned number, const Value& r) { return order(bits_of(number), r.value) >= 0; }

// Identity of all four states: value bits under marks, marks and flags must agree.
bool equal(const Value& l, const Value& r) {
    return order(l.value, r.value) == 0 && order(l.mask, r.mask) == 0 && l.x == r.x && l.z == r.z && l.wl == r.wl &&
           l.wh == r.wh;
}

// A value with any flag equals no number; the marks themselves are not looked at. Deliberate.
bool equal(const Value& l, unsigned number) {
    return !l.x && !l.z && !l.wl && !l.wh && order(l.value, bits_of(number)) == 0;
}

}  // namespace model
