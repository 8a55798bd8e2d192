// Order by value bits, and four-state identity.
#ifndef KVAL_DETAIL_COMPARE_H
#define KVAL_DETAIL_COMPARE_H

#include "storage.h"

namespace kval {
namespace detail {

/// Less than 0, 0 or more than 0 as the left number is less than, equal to or greater than the right one, where one of
/// them is large.
KVAL_API int CompareLarge(std::uint64_t l, std::uint64_t r, unsigned l_width, unsigned r_width) noexcept;
KVAL_API int CompareNumberLarge(std::uint64_t l, unsigned width, unsigned number) noexcept;
/// Whether both planes hold the same bits, where one operand is large.
KVAL_API bool SameBitsLarge(std::uint64_t l, std::uint64_t l_mask, std::uint64_t r, std::uint64_t r_mask,
                            unsigned l_width, unsigned r_width) noexcept;

KVAL_INLINE int compared_large(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    return CompareLarge(Fields::value(l), Fields::value(r), l.bitwidth(), r.bitwidth());
}
KVAL_INLINE int compared_large(const KVAL_UINTEGER& v, unsigned number) noexcept {
    return CompareNumberLarge(Fields::value(v), v.bitwidth(), number);
}

}  // namespace detail
}  // namespace kval

KVAL_INLINE bool operator>(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    using namespace kval::detail;
    return are_small(l, r) ? Fields::value(l) > Fields::value(r) : compared_large(l, r) > 0;
}

KVAL_INLINE bool operator>=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept {
    using namespace kval::detail;
    return are_small(l, r) ? Fields::value(l) >= Fields::value(r) : compared_large(l, r) >= 0;
}

KVAL_INLINE bool operator<(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept { return r > l; }
KVAL_INLINE bool operator<=(const KVAL_UINTEGER& l, const KVAL_UINTEGER& r) noexcept { return r >= l; }

KVAL_INLINE bool operator>(const KVAL_UINTEGER& v, unsigned number) noexcept {
    using namespace kval::detail;
    return is_small(v) ? Fields::value(v) > number : compared_large(v, number) > 0;
}

KVAL_INLINE bool operator>=(const KVAL_UINTEGER& v, unsigned number) noexcept {
    using namespace kval::detail;
    return is_small(v) ? Fields::value(v) >= number : compared_large(v, number) >= 0;
}

KVAL_INLINE bool operator>(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v >= number); }
KVAL_INLINE bool operator>=(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v > number); }
KVAL_INLINE bool operator<(const KVAL_UINTEGER& v, unsigned number) noexcept { return number > v; }
KVAL_INLINE bool operator<=(const KVAL_UINTEGER& v, unsigned number) noexcept { return number >= v; }
KVAL_INLINE bool operator<(unsigned number, const KVAL_UINTEGER& v) noexcept { return v > number; }
KVAL_INLINE bool operator<=(unsigned number, const KVAL_UINTEGER& v) noexcept { return v >= number; }

KVAL_INLINE bool KVAL_UINTEGER::operator==(const KVAL_UINTEGER& other) const noexcept {
    using namespace kval::detail;
    if (!are_small(*this, other)) {
        return Fields::marks(*this) == Fields::marks(other) && binary_large(SameBitsLarge, *this, other);
    }
    // Value bits first: they tell most different values apart.
    return uvalue.bits == other.uvalue.bits && xmask.bits == other.xmask.bits &&
           Fields::marks(*this) == Fields::marks(other);
}

KVAL_INLINE bool KVAL_UINTEGER::operator!=(const KVAL_UINTEGER& other) const noexcept { return !(*this == other); }

KVAL_INLINE bool KVAL_UINTEGER::operator==(unsigned number) const noexcept {
    using namespace kval::detail;
    return Fields::marks(*this) == 0 && reads_number(*this, number);
}

KVAL_INLINE bool KVAL_UINTEGER::operator!=(unsigned number) const noexcept { return !(*this == number); }

KVAL_INLINE bool operator==(unsigned number, const KVAL_UINTEGER& v) noexcept { return v == number; }
KVAL_INLINE bool operator!=(unsigned number, const KVAL_UINTEGER& v) noexcept { return !(v == number); }

#endif
