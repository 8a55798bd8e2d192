// Model of the shifts: value bits and marks move together, in place at the same width or into a wider or narrower copy.
#include <cassert>
#include <climits>
#include <cstddef>

#include "bits.h"
#include "model.h"

namespace model {

namespace {

// The stored bit that reaches position `i` of a plane of `size` bits; what comes from outside the plane is 0.
bool from_below(const Bits& plane, std::size_t i, std::size_t count) { return i >= count && at(plane, i - count); }

bool from_above(const Bits& plane, std::size_t i, std::size_t count) { return at(plane, i + count); }

using Source = bool (*)(const Bits&, std::size_t, std::size_t);

void move(Bits& plane, Source source, std::size_t count) {
    const Bits old = plane;
    for (std::size_t i = 0; i < plane.size(); ++i) plane[i] = source(old, i, count);
}

// In compact form the count is taken modulo 32, so 32 changes nothing: deliberate.
void shift_in_place(Value& target, Source source, unsigned count) {
    const std::size_t distance = target.width <= kWordBits ? count % kWordBits : count;
    move(target.value, source, distance);
    move(target.mask, source, distance);
    enforce_width(target);
    delete_string(target);
}

}  // namespace

void shl_assign(Value& target, unsigned count) { shift_in_place(target, from_below, count); }

// A wide value shifted right by its width or more is 0, stray bits above the width included.
void shr_assign(Value& target, unsigned count) {
    if (target.width > kWordBits && count >= target.width) {
        target.value.assign(target.value.size(), false);
        target.mask.assign(target.mask.size(), false);
    }
    shift_in_place(target, from_above, count);
}

// Widened by the count. Deliberately not trimmed: nothing below the old width is lost, and stray bits move up as they
// are. To the right the width stays.
Value shifted_copy(const Value& other, int count, bool left) {
    Value result = copy(other);
    if (!left) {
        shr_assign(result, static_cast<unsigned>(count));
        return result;
    }
    assert(count >= 0 && count <= INT_MAX - static_cast<int>(other.width));
    const std::size_t distance = static_cast<unsigned>(count);
    result.width += static_cast<unsigned>(count);
    result.value.resize(std::size_t{kWordBits} * result.words(), false);
    result.mask.resize(std::size_t{kWordBits} * result.words(), false);
    move(result.value, from_below, distance);
    move(result.mask, from_below, distance);
    return result;
}

Value shl(const Value& v, unsigned count) {
    assert(count <= INT_MAX);
    return shifted_copy(v, static_cast<int>(count), true);
}

// Shifted at the old width, trimmed, then narrowed by the count. A count of the width or more leaves 1 bit: 0 for a
// wide operand, and for a compact one, whose count is taken modulo 32, the stored bit at that position: deliberate.
Value shr(const Value& v, unsigned count) {
    Value result = copy(v);
    shr_assign(result, count);
    resize(result, count < v.width ? v.width - count : 1);
    return result;
}

}  // namespace model
