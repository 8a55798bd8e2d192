// Hashes of large values and of byte strings.
#include "kval.h"
#include "value/storage.h"

unsigned kval::detail::HashLarge(std::uint64_t value, unsigned width) noexcept {
    unsigned hash = 0;
    for (std::size_t i = 0; i < kval::word_count(width); ++i) hash ^= twang_uinthash(array_of(value)[i]);
    return hash;
}

// Deliberate: the state and every byte are signed, so that right shifts keep the sign. The hash therefore differs from
// the unsigned variant for bytes of 0x80 and above, and for states with the top bit set. Sums and left shifts wrap, and
// are done on unsigned numbers.
int one_at_a_time(const char* key, int len) noexcept {
    const auto plus_shifted_left = [](int hash, unsigned count) {
        const auto bits = static_cast<unsigned>(hash);
        return static_cast<int>(bits + (bits << count));
    };
    int hash = 0;
    for (int i = 0; i < len; ++i) {
        const int byte = static_cast<signed char>(key[i]);
        hash = static_cast<int>(static_cast<unsigned>(hash) + static_cast<unsigned>(byte));
        hash = plus_shifted_left(hash, 10);
        hash ^= hash >> 6;
    }
    hash = plus_shifted_left(hash, 3);
    hash ^= hash >> 11;
    return plus_shifted_left(hash, 15);
}
