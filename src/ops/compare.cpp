// Order and identity where an operand is wide.
#include "words/compare.h"

#include "kval.h"

namespace kval::detail {

int Internals::CompareWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    const View a = Words(l);
    const View b = Words(r);
    return words::compare(a.value, a.size, b.value, b.size);
}

int Internals::CompareWide(const KVAL_UINTEGER& v, unsigned number) noexcept {
    const View a = Words(v);
    return words::compare(a.value, a.size, &number, 1);
}

bool Internals::IdenticalWide(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    const View a = Words(l);
    const View b = Words(r);
    return words::equal(a.value, a.size, b.value, b.size) && words::equal(a.mask, a.size, b.mask, b.size);
}

}  // namespace kval::detail
