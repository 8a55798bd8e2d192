// Order and identity where an operand is large.
#include "words/compare.h"

#include "kval.h"
#include "value/storage.h"

namespace kval::detail {
namespace {

// The top words tell most different values apart.
int compare_equally_long(const Word* a, const Word* b, std::size_t size) {
    const words::DoubleWord x = words::load_pair(a + size - 2);
    const words::DoubleWord y = words::load_pair(b + size - 2);
    if (x != y) return x > y ? 1 : -1;
    return words::compare(a, size, b, size);
}

}  // namespace

int CompareLarge(std::uint64_t l, std::uint64_t r, unsigned l_width, unsigned r_width) noexcept {
    Copy a_copy;
    const Operand a({l, 0}, l_width, a_copy);
    Copy b_copy;
    const Operand b({r, 0}, r_width, b_copy);
    return a.size == b.size ? compare_equally_long(a.value, b.value, a.size)
                            : words::compare(a.value, a.size, b.value, b.size);
}

int CompareNumberLarge(std::uint64_t l, unsigned width, unsigned number) noexcept {
    return words::compare(array_of(l), word_count(width), &number, 1);
}

bool SameBitsLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask, unsigned l_width,
                   unsigned r_width) noexcept {
    Copy a_copy;
    const Operand a({l, l_mask}, l_width, a_copy);
    Copy b_copy;
    const Operand b({r, r_mask}, r_width, b_copy);
    if (a.size == b.size) return words::same(a.value, b.value, a.size) && words::same(a.mask, b.mask, a.size);
    return words::equal(a.value, a.size, b.value, b.size) && words::equal(a.mask, a.size, b.mask, b.size);
}

}  // namespace kval::detail
