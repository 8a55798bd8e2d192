// Model of the signed comparisons: the sign bits decide first, everything else is the unsigned comparison.
#include "signed_model.h"

namespace model::signed_value {

namespace {

bool less(const Value& l, const Value& r) { return model::greater(r, l); }

bool less_equal(const Value& l, const Value& r) { return model::greater_equal(r, l); }

// Two negative values, sign-extended word by word. Marks and flags play no part.
bool equal_negatives(const Value& a, const Value& b) {
    const Value& longer = a.width > b.width ? a : b;
    const Value& other = a.width > b.width ? b : a;
    for (unsigned i = 0; i < longer.words(); ++i) {
        const int index = static_cast<int>(i);
        const unsigned expected = i < other.words() ? SignExtendedChunk(other, index) : ~0u;
        if (SignExtendedChunk(longer, index) != expected) return false;
    }
    return true;
}

}  // namespace

bool equal_ss(const Value& a, const Value& b) {
    if (sign(a) != sign(b)) return false;
    return sign(a) ? equal_negatives(a, b) : equal(a, b);
}

// Two negative values are ordered at the larger width by their stored words: only the one that is widened gets its bits
// above the width made ones, stray bits of the other count as they are.
bool less_ss(const Value& a, const Value& b) {
    if (sign(a) != sign(b)) return sign(a);
    if (!sign(a)) return less(a, b);
    Value left = copy(a);
    Value right = copy(b);
    if (a.width < b.width) signed_value::resize(left, b.width);
    if (b.width < a.width) signed_value::resize(right, a.width);
    return less(left, right);
}

bool less_equal_ss(const Value& a, const Value& b) { return !less_ss(b, a); }

bool greater_ss(const Value& a, const Value& b) { return less_ss(b, a); }

bool greater_equal_ss(const Value& a, const Value& b) { return !less_ss(a, b); }

// A negative value is below every unsigned one and equal to none.
bool equal_su(const Value& a, const Value& b) { return !sign(a) && equal(a, b); }

bool equal_us(const Value& a, const Value& b) { return !sign(b) && equal(a, b); }

bool less_su(const Value& a, const Value& b) { return sign(a) || less(a, b); }

bool less_us(const Value& a, const Value& b) { return !sign(b) && less(a, b); }

bool less_equal_su(const Value& a, const Value& b) { return sign(a) || less_equal(a, b); }

bool less_equal_us(const Value& a, const Value& b) { return !sign(b) && less_equal(a, b); }

bool greater_su(const Value& a, const Value& b) { return !sign(a) && greater(a, b); }

bool greater_us(const Value& a, const Value& b) { return sign(b) || greater(a, b); }

bool greater_equal_su(const Value& a, const Value& b) { return !sign(a) && greater_equal(a, b); }

bool greater_equal_us(const Value& a, const Value& b) { return sign(b) || greater_equal(a, b); }

}  // namespace model::signed_value
