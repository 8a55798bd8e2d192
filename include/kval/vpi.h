// vpi.h: values to and from the vectors of the simulator interfaces: s_vpi_vecval of VPI, svLogicVecVal and svBitVecVal
// of DPI-C.
//
// No header of a simulator is needed, and none is included: a four-state vector is an array of any struct with two
// 32-bit integers `aval` and `bval`, signed or not, as vpi_user.h and svdpi.h each define it. Element 0 holds bits 0 to
// 31.
//
//   aval bval | bit     A value has X for each bit, but Z for the whole only. So a vector that is Z in every bit comes
//     0    0  |  0      in as a value with flag Z, and a Z beside other bits as an X.
//     1    0  |  1
//     0    1  |  Z
//     1    1  |  X
#ifndef KVAL_VPI_H
#define KVAL_VPI_H

#include <kval.h>

#include <cstdint>

namespace kval {

namespace detail {

// The bits of word `index` that lie inside a width of `width`, which reaches into that word.
inline std::uint32_t WidthMask(unsigned width, int index) noexcept {
    const unsigned left = width - 32U * static_cast<unsigned>(index);
    return left < 32 ? (1U << left) - 1 : 0xFFFFFFFFU;
}

// Whether all of the first `width` bits are Z; at least 1 of them.
template <typename Vec>
bool IsAllZ(const Vec* vec, unsigned width, int words) noexcept {
    for (int i = 0; i < words; ++i) {
        const std::uint32_t inside = WidthMask(width, i);
        if ((static_cast<std::uint32_t>(vec[i].aval) & inside) != 0) return false;
        if ((static_cast<std::uint32_t>(vec[i].bval) & inside) != inside) return false;
    }
    return true;
}

template <typename Vec>
bool HasXOrZ(const Vec* vec, unsigned width, int words) noexcept {
    for (int i = 0; i < words; ++i) {
        if ((static_cast<std::uint32_t>(vec[i].bval) & WidthMask(width, i)) != 0) return true;
    }
    return false;
}

// The value bits of word `index` as a two-state reader sees them where they are not X: all 0 where the value is Z or
// weak low, all 1 where it is weak high.
inline std::uint32_t DrivenWord(const KVAL_UINTEGER& value, int index) noexcept {
    if (value.is_z() || value.is_wl()) return 0;
    return value.is_wh() ? 0xFFFFFFFFU : value.get_uvalue_at(index);
}

}  // namespace detail

/// The value of a four-state vector of `width` bits, which has (width + 31) / 32 elements; linear in these. Bits of the
/// last element above the width are ignored. An X bit becomes X and sets flag X, with a value bit of 0 underneath. Z in
/// every bit becomes flag Z, with known bits of 0; any other Z becomes X. No other flag is set, and no text. A width of
/// 0, or above 2^31 - 1, gives 1 bit of 0, and `vec` is not read. Throws std::bad_alloc where memory runs out. For a
/// signed value, construct a KVAL_SINTEGER from the result.
template <typename Vec>
KVAL_UINTEGER from_vecval(const Vec* vec, unsigned width) {
    static_assert(sizeof(vec->aval) == 4 && sizeof(vec->bval) == 4, "aval and bval are words of 32 bits");
    KVAL_UINTEGER value(0, width);
    if (value.bitwidth() != width) return value;

    const int words = value.get_size();
    if (detail::IsAllZ(vec, width, words)) {
        value.force_z();
        return value;
    }
    const bool has_x = detail::HasXOrZ(vec, width, words);
    if (has_x) value.force_x();
    for (int i = 0; i < words; ++i) {
        const std::uint32_t inside = detail::WidthMask(width, i);
        const std::uint32_t aval = static_cast<std::uint32_t>(vec[i].aval) & inside;
        const std::uint32_t bval = static_cast<std::uint32_t>(vec[i].bval) & inside;
        value.set_uvalue_at(i, aval & ~bval);
        if (has_x) value.set_xmask_at(i, bval);
    }
    return value;
}

/// Writes a value as a four-state vector into the get_size() elements at `vec`, linear in these; bits of the last
/// element above the width are written 0, whatever a signed value holds there. A bit that is X by the x-mask goes out
/// as X. Every other bit goes out as Z where flag Z is set, else as 0 where the value is weak low, else as 1 where it
/// is weak high, else as it is; flag X alone does not show. A moved-from value has no elements: nothing is written. The
/// value stays as it is, cached text included.
template <typename Vec>
void to_vecval(const KVAL_UINTEGER& value, Vec* vec) noexcept {
    static_assert(sizeof(vec->aval) == 4 && sizeof(vec->bval) == 4, "aval and bval are words of 32 bits");
    using Word = decltype(vec->aval);
    const unsigned width = value.bitwidth();
    const int words = value.get_size();
    for (int i = 0; i < words; ++i) {
        const std::uint32_t inside = detail::WidthMask(width, i);
        const std::uint32_t x = value.get_xmask_at(i) & inside;
        vec[i].aval = static_cast<Word>((detail::DrivenWord(value, i) & inside) | x);
        vec[i].bval = static_cast<Word>(value.is_z() ? inside : x);
    }
}

/// The value of a two-state vector (svBitVecVal) of `width` bits: known bits, no flags. Bits of the last word above the
/// width are ignored; a width of 0, or above 2^31 - 1, gives 1 bit of 0, and `vec` is not read. Linear in the words.
/// Throws std::bad_alloc where memory runs out.
inline KVAL_UINTEGER from_bitvec(const std::uint32_t* vec, unsigned width) {
    KVAL_UINTEGER value(0, width);
    if (value.bitwidth() != width) return value;
    for (int i = 0; i < value.get_size(); ++i) value.set_uvalue_at(i, vec[i] & detail::WidthMask(width, i));
    return value;
}

/// Writes a value as a two-state vector into the get_size() words at `vec`, bits above the width as 0. X bits and every
/// bit of a value that is Z go out as 0, as SystemVerilog converts `logic` to `bit`; weak low goes out as 0 and weak
/// high as 1. A moved-from value writes nothing. Linear in the words; the value stays as it is, cached text included.
inline void to_bitvec(const KVAL_UINTEGER& value, std::uint32_t* vec) noexcept {
    const unsigned width = value.bitwidth();
    const int words = value.get_size();
    for (int i = 0; i < words; ++i) {
        vec[i] = detail::DrivenWord(value, i) & ~value.get_xmask_at(i) & detail::WidthMask(width, i);
    }
}

}  // namespace kval

#endif
