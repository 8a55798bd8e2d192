// Long sums and differences on x86-64, where the carry stays in its flag from limb to limb: compilers save and restore
// it around every step.
#include "words/carry_steps.h"

namespace kval::words {
namespace {

// One limb of a chain, by "adcq" or "sbbq".
#define KVAL_CARRY_LIMB(instruction, offset)                    \
    "movq " offset "(%[a]), %[limb]\n\t" instruction " " offset \
    "(%[b]), %[limb]\n\t"                                       \
    "movq %[limb], " offset "(%[out])\n\t"

// A function whose loop steps over four limbs with instructions that leave the carry flag alone.
#define KVAL_CARRY_LOOP(name, instruction)                                                                        \
    bool name(Word* out, const Word* a, const Word* b, std::size_t blocks) {                                      \
        bool carry = false;                                                                                       \
        DoubleWord limb = 0;                                                                                      \
        __asm__("clc\n"                                                                                         \
                "1:\n\t"                                                                                        \
                KVAL_CARRY_LIMB(instruction, "0")                                                               \
                KVAL_CARRY_LIMB(instruction, "8")                                                               \
                KVAL_CARRY_LIMB(instruction, "16")                                                              \
                KVAL_CARRY_LIMB(instruction, "24")                                                              \
                "leaq 32(%[a]), %[a]\n\t"                                                                       \
                "leaq 32(%[b]), %[b]\n\t"                                                                       \
                "leaq 32(%[out]), %[out]\n\t"                                                                   \
                "decq %[blocks]\n\t"                                                                            \
                "jnz 1b\n"                                                                                      \
                : [out] "+r"(out), [a] "+r"(a), [b] "+r"(b), [blocks] "+r"(blocks), [limb] "=&r"(limb), "=@ccc"(carry) \
                :                                                                                               \
                : "memory"); \
        return carry;                                                                                             \
    }

}  // namespace

KVAL_CARRY_LOOP(add_blocks, "adcq")
KVAL_CARRY_LOOP(subtract_blocks, "sbbq")

}  // namespace kval::words
