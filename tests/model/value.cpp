// Model of the value itself: construction, copying, resizing, and access to bits, words, marks and flags.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>

#include "bits.h"
#include "model.h"

namespace model {

namespace {

bool is_compact(const Value& v) { return v.width <= kWordBits; }

// A width that is 0, or negative when read as a signed number, becomes 1.
unsigned valid_width(unsigned width) { return width == 0 || width > INT_MAX ? 1 : width; }

// Gives both planes the words that the width calls for: new words are 0, words beyond are dropped.
void fit_storage(Value& v) {
    const std::size_t bits = std::size_t{kWordBits} * v.words();
    v.value.resize(bits, false);
    v.mask.resize(bits, false);
}

void trim(Bits& plane, unsigned width) {
    for (std::size_t i = width; i < plane.size(); ++i) plane[i] = false;
}

// In compact form a position is taken modulo 32 in the one word; in wide form positions outside the storage read as 0.
bool read(const Value& v, const Bits& plane, std::int64_t pos) {
    const auto index = static_cast<std::size_t>(pos);  // a negative position becomes one far outside
    return at(plane, is_compact(v) ? index % kWordBits : index);
}

// A raw word store: in compact form the one word is written whatever the index is.
void store_word(const Value& v, Bits& plane, int index, unsigned word) {
    if (is_compact(v)) {
        put_word(plane, 0, word);
    } else if (index >= 0) {
        put_word(plane, static_cast<std::size_t>(index), word);
    }
}

}  // namespace

unsigned Value::words() const { return width / kWordBits + (width % kWordBits != 0 ? 1 : 0); }

unsigned Value::word(unsigned index) const { return word_at(value, index); }

unsigned Value::mask_word(unsigned index) const { return word_at(mask, index); }

Value make(unsigned number, unsigned width) {
    Value v;
    v.width = valid_width(width);
    fit_storage(v);
    put_word(v.value, 0, number);
    enforce_width(v);
    return v;
}

Value copy(const Value& other) {
    Value result = other;
    delete_string(result);
    return result;
}

// The target keeps its own width. Between equal widths nothing is trimmed, so stray bits are copied too.
void assign(Value& target, const Value& source) {
    if (&target == &source) return;
    for (unsigned i = 0; i < target.words(); ++i) {
        put_word(target.value, i, source.word(i));
        put_word(target.mask, i, source.mask_word(i));
    }
    target.x = source.x;
    target.z = source.z;
    target.wl = source.wl;
    target.wh = source.wh;
    if (target.width != source.width) enforce_width(target);
    delete_string(target);
}

void assign(Value& target, unsigned number) {
    target.value.assign(target.value.size(), false);
    target.mask.assign(target.mask.size(), false);
    put_word(target.value, 0, number);
    enforce_width(target);
    target.x = target.z = target.wl = target.wh = false;
    delete_string(target);
}

// Only the width as asked for is compared: asking a 1-bit value for width 0 trims it and drops its text.
void resize(Value& target, unsigned width) {
    if (width == target.width) return;
    target.width = valid_width(width);
    fit_storage(target);
    enforce_width(target);
    delete_string(target);
}

void enforce_width(Value& target) {
    trim(target.value, target.width);
    trim(target.mask, target.width);
}

void delete_string(Value& target) {
    target.kind = Text::None;
    target.text.clear();
}

// A position equal to the width passes the check: deliberately one past the last bit.
unsigned bit(const Value& v, unsigned pos) {
    if (pos > v.width) throw std::string("KVAL_UINTEGER::bit() called with illegal bit_position");
    return read(v, v.value, pos) ? 1 : 0;
}

unsigned uint(const Value& v) { return v.word(0); }

bool is_zero(const Value& v) {
    for (const bool stored : v.value) {
        if (stored) return false;
    }
    return true;
}

bool is_one(const Value& v) {
    for (std::size_t i = 0; i < v.value.size(); ++i) {
        if (v.value[i] != (i == 0)) return false;
    }
    return at(v.value, 0);
}

unsigned get_uvalue_at(const Value& v, int index) { return index < 0 ? 0 : v.word(static_cast<unsigned>(index)); }

unsigned get_xmask_at(const Value& v, int index) { return index < 0 ? 0 : v.mask_word(static_cast<unsigned>(index)); }

bool is_x(const Value& v, int pos, int nibble) {
    if (nibble != 1) return read(v, v.mask, pos);
    const std::int64_t first = std::int64_t{4} * pos;
    const std::int64_t width = v.width;
    // A group that reaches beyond the width looks only at the bits below it; one wholly above it has none.
    const std::int64_t end = width - first <= 3 ? width : first + 4;
    for (std::int64_t i = first; i < end; ++i) {
        if (read(v, v.mask, i)) return true;
    }
    return false;
}

// The check compares as signed numbers and lets a negative position and one equal to the width pass. In compact form
// such a position is taken modulo 32; in wide form one outside the storage writes nothing and leaves the flags alone.
void set_bit(Value& target, int pos, unsigned bits) {
    if (static_cast<int>(target.width) < pos) {
        throw std::string("KVAL_UINTEGER::set_bit() called with illegal bit_position");
    }
    delete_string(target);
    const unsigned index = is_compact(target) ? 0 : static_cast<unsigned>(pos) / kWordBits;
    if (index >= target.words()) return;

    // `bits` is not reduced to one bit: it is ORed into the rest of the word from the position up.
    const unsigned offset = static_cast<unsigned>(pos) % kWordBits;
    const std::size_t base = std::size_t{kWordBits} * index;
    target.value[base + offset] = false;
    target.mask[base + offset] = false;
    for (unsigned i = offset; i < kWordBits; ++i) {
        if ((bits >> (i - offset) & 1u) != 0) target.value[base + i] = true;
    }
    // Only the mask word that held the bit decides: flag X falls although other words may still hold marks. Required.
    if (target.mask_word(index) == 0) target.x = false;
}

void set_uvalue_at(Value& target, int index, unsigned word) { store_word(target, target.value, index, word); }

void set_xmask_at(Value& target, int index, unsigned word) { store_word(target, target.mask, index, word); }

void set_x(Value& target, int pos) {
    if (pos < 0 || static_cast<unsigned>(pos) >= target.width) return;
    target.mask[static_cast<unsigned>(pos)] = true;
    target.x = true;
    delete_string(target);
}

void force_x(Value& target) {
    target.x = true;
    target.mask.assign(target.mask.size(), true);
    enforce_width(target);
    delete_string(target);
}

void force_z(Value& target) {
    target.z = true;
    delete_string(target);
}

void force_wl(Value& target) {
    target.wl = true;
    delete_string(target);
}

void force_wh(Value& target) {
    target.wh = true;
    delete_string(target);
}

}  // namespace model
