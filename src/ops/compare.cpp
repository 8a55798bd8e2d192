// Order and identity where an operand is large.
#include "words/compare.h"

#include "kval.h"
#include "value/storage.h"

namespace kval::detail {

int CompareLarge(std::uint64_t l, std::uint64_t r, unsigned l_width, unsigned r_width) noexcept {
    const Operand a({l, 0}, l_width);
    const Operand b({r, 0}, r_width);
    return words::compare(a.value, a.size, b.value, b.size);
}

int CompareNumberLarge(std::uint64_t l, unsigned width, unsigned number) noexcept {
    return words::compare(array_of(l), word_count(width), &number, 1);
}

bool SameBitsLarge(Planes l, Planes r, unsigned l_width, unsigned r_width) noexcept {
    const Operand a(l, l_width);
    const Operand b(r, r_width);
    return words::equal(a.value, a.size, b.value, b.size) && words::equal(a.mask, a.size, b.mask, b.size);
}

}  // namespace kval::detail
