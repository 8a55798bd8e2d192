// The four-state rules of AND and OR, and the value bits of XOR and NOT, stated once, for one word or for as many bits
// at once as a type holds.
#ifndef KVAL_DETAIL_FOUR_STATE_H
#define KVAL_DETAIL_FOUR_STATE_H

namespace kval {
namespace detail {

/// The same run of bit positions from both planes, value bits and x-mask.
template <typename Word>
struct FourState {
    Word value;
    Word mask;
};

//   left right | AND OR
//    0     0   |  0   0
//    0     1   |  0   1
//    0     X   |  0   X
//    1     1   |  1   1
//    1     X   |  X   1
//    X     X   |  0   X      AND of two unknowns is a known 0. Deliberate: only a known 1 on the other
//                            side lets an unknown through. Do not "correct" it.
// The value bit under an X of the result is 0.

struct __attribute__((visibility("default"))) FourStateAnd {  // names functions of the library
    template <typename Word>
    FourState<Word> operator()(FourState<Word> l, FourState<Word> r) const noexcept {
        const Word l_ones = l.value & ~l.mask;
        const Word r_ones = r.value & ~r.mask;
        return {l_ones & r_ones, (l_ones & r.mask) | (r_ones & l.mask)};
    }
};

struct __attribute__((visibility("default"))) FourStateOr {
    template <typename Word>
    FourState<Word> operator()(FourState<Word> l, FourState<Word> r) const noexcept {
        const Word l_ones = l.value & ~l.mask;
        const Word r_ones = r.value & ~r.mask;
        return {l_ones | r_ones, (l.mask & ~r_ones) | (r.mask & ~l_ones)};
    }
};

/// XOR and NOT of value bits alone.
struct Xor {
    template <typename Word>
    Word operator()(Word l, Word r) const noexcept {
        return l ^ r;
    }
};

struct Not {
    template <typename Word>
    Word operator()(Word v, Word) const noexcept {
        return ~v;
    }
};

}  // namespace detail
}  // namespace kval

#endif
