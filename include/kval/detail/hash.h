// Hashes of values.
#ifndef KVAL_DETAIL_HASH_H
#define KVAL_DETAIL_HASH_H

#include "storage.h"

namespace kval {
namespace detail {

/// The hashes of all words of a large value, combined.
KVAL_API unsigned HashLarge(std::uint64_t value, unsigned width) noexcept;

}  // namespace detail
}  // namespace kval

KVAL_INLINE unsigned twang_uinthash(unsigned key) noexcept {
    key += ~(key << 15);
    key ^= key >> 10;
    key += key << 3;
    key ^= key >> 6;
    key += ~(key << 11);
    key ^= key >> 16;
    return key;
}

KVAL_INLINE unsigned KVAL_UINTEGER::get_hash(unsigned bits) const noexcept {
    using namespace kval::detail;
    unsigned hash = 0;
    if (is_small(width)) {
        hash = twang_uinthash(static_cast<unsigned>(uvalue.bits));
        if (width > 32) hash ^= twang_uinthash(static_cast<unsigned>(uvalue.bits >> 32));
    } else {
        hash = HashLarge(uvalue.bits, width);
    }
    // Deliberate: 0 asks for all 32 bits, because the mask for 0 is the same as that for 32.
    return bits < 32 ? hash & used_of_top_word(bits) : hash;
}

#endif
