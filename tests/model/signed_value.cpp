// Model of the signed value itself: construction, the two assignments, resizing, negation and the 32-bit read-outs.
#include "bits.h"
#include "signed_model.h"

namespace model::signed_value {

namespace {

// The bits of the top word above the width; none when the width fills the word.
unsigned ones_above(const Value& v) {
    const unsigned top = v.width % kWordBits;
    return top == 0 ? 0 : ~0u << top;
}

void store(Value& target, unsigned index, unsigned word, unsigned mask) {
    put_word(target.value, index, word);
    put_word(target.mask, index, mask);
}

void or_word(Value& target, unsigned index, unsigned ones) { put_word(target.value, index, target.word(index) | ones); }

void copy_flags(Value& target, const Value& source) {
    target.x = source.x;
    target.z = source.z;
    target.wl = source.wl;
    target.wh = source.wh;
}

}  // namespace

// A negative number fills whole words: in wide form the bits above the width are ones too, deliberately.
Value make(int number, unsigned width) {
    Value v = model::make(static_cast<unsigned>(number), width);
    for (unsigned i = 1; number < 0 && i < v.words(); ++i) put_word(v.value, i, ~0u);
    return v;
}

// Zero extension. Deliberately not trimmed: bits of a wider source stay in the top word, above the target's width.
void assign_unsigned(Value& target, const Value& source) {
    if (&target == &source) return;
    for (unsigned i = 0; i < target.words(); ++i) store(target, i, source.word(i), source.mask_word(i));
    copy_flags(target, source);
    delete_string(target);
}

// Sign extension. The ones of a negative source start at its width modulo 32, in the word that receives its top word
// (which loses its marks) and in the target's top word, whatever that one holds; a compact target takes them in its
// only word and keeps the marks. All deliberate.
void assign_signed(Value& target, const Value& source) {
    if (&target == &source) return;
    const bool negative = sign(source);
    const unsigned ones = negative ? ones_above(source) : 0;
    const bool wide = target.width > kWordBits;
    for (unsigned i = 0; i < target.words(); ++i) {
        const bool beyond = i >= source.words();
        const bool extended = wide && ones != 0 && i == source.words() - 1;
        store(target, i, beyond && negative ? ~0u : source.word(i), extended ? 0 : source.mask_word(i));
        if (extended) or_word(target, i, ones);
    }
    or_word(target, target.words() - 1, ones);

    // A non-negative source never makes a negative target; a negative one may well make a non-negative target.
    if (!negative && sign(target)) set_bit(target, static_cast<int>(target.width - 1), 0);
    copy_flags(target, source);
    delete_string(target);
    enforce_width(target);
}

// A negative value is continued with ones, known ones: only marks that stood above the old width can reach the new
// bits.
void resize(Value& target, unsigned width) {
    if (!sign(target)) {
        model::resize(target, width);
        return;
    }
    if (width == target.width) return;
    const unsigned old_words = target.words();
    or_word(target, old_words - 1, ones_above(target));
    model::resize(target, width);
    for (unsigned i = old_words; i < target.words(); ++i) put_word(target.value, i, ~0u);
    enforce_width(target);
}

// The marks and the flags stay as they are.
void complement_me(Value& target) {
    flip(target.value);
    enforce_width(target);
    increment(target);
}

Value twos_complement(const Value& v) {
    Value result = copy(v);
    complement_me(result);
    return result;
}

bool sign(const Value& v) { return bit(v, v.width - 1) != 0; }

// The low word, with ones from bit (width - 1) modulo 32 up when the sign bit is 1; at the widths 33, 65, 97 and so on
// the low word as it is. The number itself only up to 32 bits.
int convert_to_signed_representation(const Value& v) {
    const unsigned offset = (v.width - 1) % kWordBits;
    const bool as_it_is = !sign(v) || (offset == 0 && v.words() > 1);
    return static_cast<int>(as_it_is ? uint(v) : uint(v) | ~0u << offset);
}

// The ones above the width are added to the top word whatever the sign.
unsigned SignExtendedChunk(const Value& v, int index) {
    const auto i = static_cast<unsigned>(index);
    const unsigned word = v.word(v.width <= kWordBits ? 0 : i);
    return i == v.words() - 1 ? word | ones_above(v) : word;
}

bool positive(const Value& v) { return convert_to_signed_representation(v) >= 0; }

bool negative(const Value& v) { return !positive(v); }

unsigned absolute_value(const Value& v) {
    return positive(v) ? uint(v) : 0u - static_cast<unsigned>(convert_to_signed_representation(v));
}

unsigned maximum_negative(const Value& v) { return 1u << (v.width - 1) % kWordBits; }

// At width 1 the shift count is 32, which counts as 0: all ones, deliberately.
unsigned maximum_positive(const Value& v) { return v.width > kWordBits ? ~0u : ~0u >> (33 - v.width) % kWordBits; }

}  // namespace model::signed_value
