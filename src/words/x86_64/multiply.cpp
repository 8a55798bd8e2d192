// The rows of long multiplication on x86-64, with and without the two carry flags that newer processors can add by.
//
// Both loops keep the part of the sum that is not stored yet in `w0` to `w3`: every limb of `a` adds four products to
// it, and its lowest limb is finished.
#include <cpuid.h>

#include "words/multiply_rows.h"

namespace kval::words {
namespace {

// clang-format off

#define KVAL_STORE_WINDOW(out, w0, w1, w2, w3) \
    store_pair(out, w0);                       \
    store_pair((out) + 2, w1);                 \
    store_pair((out) + 4, w2);                 \
    store_pair((out) + 6, w3)

// rdx : top = b[row] * limb + top: a product's low half joins the products so far, its high half is their next top.
#define KVAL_JOIN_PRODUCT(row, top)    \
    "movq 8*" row "(%[b]), %%rax\n\t"  \
    "mulq (%[a])\n\t"                  \
    "addq %%rax, %[" top "]\n\t"       \
    "adcq $0, %%rdx\n\t"

// Compilers add every product to the sum as it comes, so that each addition waits for the one before. Here the products
// of a limb are joined first, and then added in one chain of carries.
#define KVAL_PLAIN_LOOP(name, add_out)                                                                                \
    void name(Word* out, const Word* a, std::size_t limbs, const Word* b) {                                           \
        DoubleWord w0 = 0, w1 = 0, w2 = 0, w3 = 0, p1, p2, p3;                                                        \
        __asm__("1:\n\t"                                                                                              \
                "movq (%[b]), %%rax\n\t"                                                                              \
                "mulq (%[a])\n\t"                                                                                     \
                add_out                                                                                               \
                "addq %[w0], %%rax\n\t"                                                                               \
                "adcq $0, %%rdx\n\t"                                                                                  \
                "movq %%rax, (%[out])\n\t"                                                                            \
                "movq %%rdx, %[p1]\n\t"                                                                               \
                KVAL_JOIN_PRODUCT("1", "p1")                                                                          \
                "movq %%rdx, %[p2]\n\t"                                                                               \
                KVAL_JOIN_PRODUCT("2", "p2")                                                                          \
                "movq %%rdx, %[p3]\n\t"                                                                               \
                KVAL_JOIN_PRODUCT("3", "p3")                                                                          \
                "addq %[p1], %[w1]\n\t"                                                                               \
                "movq %[w1], %[w0]\n\t"                                                                               \
                "adcq %[p2], %[w2]\n\t"                                                                               \
                "movq %[w2], %[w1]\n\t"                                                                               \
                "adcq %[p3], %[w3]\n\t"                                                                               \
                "movq %[w3], %[w2]\n\t"                                                                               \
                "adcq $0, %%rdx\n\t"                                                                                  \
                "movq %%rdx, %[w3]\n\t"                                                                               \
                "addq $8, %[a]\n\t"                                                                                   \
                "addq $8, %[out]\n\t"                                                                                 \
                "decq %[limbs]\n\t"                                                                                   \
                "jnz 1b\n"                                                                                            \
                : [out] "+r"(out), [a] "+r"(a), [limbs] "+r"(limbs), [w0] "+r"(w0), [w1] "+r"(w1), [w2] "+r"(w2),     \
                  [w3] "+r"(w3), [p1] "=&r"(p1), [p2] "=&r"(p2), [p3] "=&r"(p3)                                       \
                : [b] "r"(b)                                                                                          \
                : "rax", "rdx", "cc", "memory");                                                                      \
        KVAL_STORE_WINDOW(out, w0, w1, w2, w3);                                                                       \
    }

KVAL_PLAIN_LOOP(plain_multiply, )
KVAL_PLAIN_LOOP(plain_add, "addq (%[out]), %%rax\n\t" "adcq $0, %%rdx\n\t")

constexpr RowLoops kPlain = {plain_multiply, plain_add};

#ifndef KVAL_BASELINE

// w += low half of the product, by adcx's carry, and next += high half, by adox's: two chains that do not wait for each
// other.
#define KVAL_ADD_PRODUCT(row, w, next)                 \
    "mulxq 8*" row "(%[b]), %[low], %[high]\n\t"       \
    "adcxq %[low], %[" w "]\n\t"                       \
    "adoxq %[high], %[" next "]\n\t"

#define KVAL_TWO_CARRIES_LOOP(name, add_out)                                                                          \
    void name(Word* out, const Word* a, std::size_t limbs, const Word* b) {                                           \
        DoubleWord w0 = 0, w1 = 0, w2 = 0, w3 = 0, low, high;                                                         \
        __asm__("1:\n\t"                                                                                              \
                "movq (%[a]), %%rdx\n\t"                                                                              \
                "xorl %k[low], %k[low]\n\t" /* no carries yet */                                                      \
                add_out                                                                                               \
                KVAL_ADD_PRODUCT("0", "w0", "w1")                                                                     \
                "movq %[w0], (%[out])\n\t"                                                                            \
                KVAL_ADD_PRODUCT("1", "w1", "w2")                                                                     \
                "movq %[w1], %[w0]\n\t"                                                                               \
                KVAL_ADD_PRODUCT("2", "w2", "w3")                                                                     \
                "movq %[w2], %[w1]\n\t"                                                                               \
                "mulxq 24(%[b]), %[low], %[high]\n\t"                                                                 \
                "adcxq %[low], %[w3]\n\t"                                                                             \
                "movq %[w3], %[w2]\n\t"                                                                               \
                "movl $0, %k[w3]\n\t"                                                                                 \
                "adoxq %[w3], %[high]\n\t"                                                                            \
                "adcxq %[high], %[w3]\n\t"                                                                            \
                "addq $8, %[a]\n\t"                                                                                   \
                "addq $8, %[out]\n\t"                                                                                 \
                "decq %[limbs]\n\t"                                                                                   \
                "jnz 1b\n"                                                                                            \
                : [out] "+r"(out), [a] "+r"(a), [limbs] "+r"(limbs), [w0] "+r"(w0), [w1] "+r"(w1), [w2] "+r"(w2),     \
                  [w3] "+r"(w3), [low] "=&r"(low), [high] "=&r"(high)                                                 \
                : [b] "r"(b)                                                                                          \
                : "rdx", "cc", "memory");                                                                             \
        KVAL_STORE_WINDOW(out, w0, w1, w2, w3);                                                                       \
    }

KVAL_TWO_CARRIES_LOOP(two_carries_multiply, )
KVAL_TWO_CARRIES_LOOP(two_carries_add, "adoxq (%[out]), %[w0]\n\t")

// clang-format on

constexpr RowLoops kTwoCarries = {two_carries_multiply, two_carries_add};

bool has_two_carries() {
    constexpr unsigned needed = bit_BMI2 | bit_ADX;
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    return __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) != 0 && (ebx & needed) == needed;
}

// What uses the kernels before this is initialised finds it false, and has the plain loops.
const bool kHasTwoCarries = has_two_carries();

#endif

}  // namespace

#ifdef KVAL_BASELINE
const RowLoops& row_loops() { return kPlain; }
#else
const RowLoops& row_loops() { return kHasTwoCarries ? kTwoCarries : kPlain; }
#endif

const RowLoops& plain_row_loops() { return kPlain; }

}  // namespace kval::words
