// Loops over local values whose widths stand in the source, as models have them innermost: code that must stay in
// registers. tests/registers reads what the compilers make of them, bench/instructions counts their instructions.
#ifndef REGISTERS_KERNELS_H
#define REGISTERS_KERNELS_H

#include <kval.h>

#include <cstdio>

namespace kernels {

/// Which bits of the operands are X.
enum class Unknown {
    kNone,
    kSome,    // some, and the compiler sees which
    kHidden,  // some, and it does not: it must do with both planes and with flag X as they are at run time
};

/// What happens to the result behind the loop. Printing takes its address, which must not cost the loop its registers.
enum class Result { kReturned, kPrinted };

/// Value bits and x-mask of the low word. Where every bit is known, the x-mask is left out, as few models read it.
struct Word {
    unsigned value;
    unsigned mask;
};

// These take a reference to a value, so they are inlined whatever the compiler thinks of it, as in kval.h. The kernels
// are as well, so that the loop is in the function that is asked about.
#define KERNEL [[gnu::always_inline]] inline

/// Makes bit `pos` X, where some bits are to be.
template <Unknown kUnknown>
KERNEL void spoil(KVAL_UINTEGER& v, int pos) {
    if constexpr (kUnknown == Unknown::kHidden) asm("" : "+r"(pos));
    if constexpr (kUnknown != Unknown::kNone) v.set_x(pos);
}

template <Unknown kUnknown, Result kResult>
KERNEL Word finish(const KVAL_UINTEGER& v) {
    if constexpr (kResult == Result::kPrinted) std::puts(v.as_hex_string());
    return {v.uint(), kUnknown == Unknown::kNone ? 0 : v.get_xmask_at(0)};
}

/// Shifts, logic and a sum, in 32 bits.
template <Unknown kUnknown, Result kResult>
KERNEL Word mixer(unsigned steps) {
    KVAL_UINTEGER a(0x12345678, 32);
    KVAL_UINTEGER b(0x9ABCDEF0, 32);
    spoil<kUnknown>(a, 3);
    spoil<kUnknown>(b, 17);
    for (unsigned i = 0; i < steps; ++i) {
        a = ((a << 5U) ^ (b >> 3U)) + a;
        b = (b & a) | ~a;
    }
    return finish<kUnknown, kResult>(a);
}

/// Sums and differences that wrap, in 40 bits.
template <Unknown kUnknown, Result kResult>
KERNEL Word sum(unsigned steps) {
    KVAL_UINTEGER a(1, 40);
    KVAL_UINTEGER sum(0, 40);
    KVAL_UINTEGER mask(0x5555, 40);
    spoil<kUnknown>(a, 4);
    spoil<kUnknown>(mask, 2);
    for (unsigned i = 0; i < steps; ++i) {
        sum = sum + (a & mask);
        a = a - sum;
        if (a < sum) sum = mask;
    }
    return finish<kUnknown, kResult>(sum);
}

/// A counter that starts again, and a multiplexer, in 32 bits.
template <Unknown kUnknown, Result kResult>
KERNEL Word counter(unsigned steps) {
    KVAL_UINTEGER count(0, 32);
    KVAL_UINTEGER out(0, 32);
    KVAL_UINTEGER total(0, 32);
    KVAL_UINTEGER low(5, 32);
    KVAL_UINTEGER high(900, 32);
    KVAL_UINTEGER limit(500, 32);
    spoil<kUnknown>(total, 6);
    spoil<kUnknown>(low, 1);
    spoil<kUnknown>(high, 3);
    for (unsigned i = 0; i < steps; ++i) {
        count += 3U;
        if (count > 1000U) count = 0U;
        out = count < limit ? low : high;
        total += out;
    }
    return finish<kUnknown, kResult>(total);
}

/// A shift register with feedback, in 64 bits.
template <Unknown kUnknown, Result kResult>
KERNEL Word feedback(unsigned steps) {
    KVAL_UINTEGER r(1, 64);
    KVAL_UINTEGER f(0, 1);
    spoil<kUnknown>(r, 5);
    for (unsigned i = 0; i < steps; ++i) {
        f = (r >> 63U) ^ (r >> 62U);
        r <<= 1U;
        r |= f;
    }
    return finish<kUnknown, kResult>(r);
}

/// Signed sums and differences, in 40 bits: a level that swings around a limit.
template <Unknown kUnknown, Result kResult>
KERNEL Word signed_sum(unsigned steps) {
    KVAL_SINTEGER level(-5000, 40);
    KVAL_SINTEGER rate(7, 40);
    KVAL_SINTEGER distance(0, 40);
    KVAL_SINTEGER step(3, 40);
    KVAL_SINTEGER limit(1000, 40);
    KVAL_SINTEGER zero(0, 40);
    spoil<kUnknown>(level, 4);
    spoil<kUnknown>(rate, 2);
    for (unsigned i = 0; i < steps; ++i) {
        level = level + rate;
        distance = level - limit;
        if (distance < zero) {
            rate = step + rate;
        } else {
            rate = rate - step;
        }
    }
    return finish<kUnknown, kResult>(level);
}

/// Rounds of SHA-256, with made-up words for the message.
template <Unknown kUnknown, Result kResult>
KERNEL Word sha256(unsigned steps) {
    KVAL_UINTEGER a(0x6A09E667, 32);
    KVAL_UINTEGER b(0xBB67AE85, 32);
    KVAL_UINTEGER c(0x3C6EF372, 32);
    KVAL_UINTEGER d(0xA54FF53A, 32);
    KVAL_UINTEGER e(0x510E527F, 32);
    KVAL_UINTEGER f(0x9B05688C, 32);
    KVAL_UINTEGER g(0x1F83D9AB, 32);
    KVAL_UINTEGER h(0x5BE0CD19, 32);
    KVAL_UINTEGER t1(0, 32);
    KVAL_UINTEGER t2(0, 32);
    spoil<kUnknown>(a, 9);
    spoil<kUnknown>(e, 30);
    for (unsigned i = 0; i < steps; ++i) {
        t1 = h + KVAL_UINTEGER(0x428A2F98U + i, 32);
        t1 = t1 + KVAL_UINTEGER(0x9E3779B9U * i, 32);
        t1 = t1 + ((e & f) ^ (~e & g));
        t1 = t1 + (((e >> 6U) | (e << 26U)) ^ ((e >> 11U) | (e << 21U)) ^ ((e >> 25U) | (e << 7U)));
        t2 = (a & b) ^ (a & c) ^ (b & c);
        t2 = t2 + (((a >> 2U) | (a << 30U)) ^ ((a >> 13U) | (a << 19U)) ^ ((a >> 22U) | (a << 10U)));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    return finish<kUnknown, kResult>(a);
}

#undef KERNEL

}  // namespace kernels

#endif
