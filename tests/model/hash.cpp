// Model of hashing: the integer hash, the string hash and the hash of a value.
#include <string>

#include "model.h"

namespace model {

namespace {

// The right shift of a signed 32-bit number: the sign bit moves in from the left.
unsigned arithmetic_shift_right(unsigned number, unsigned count) {
    const unsigned filled = (number >> 31) != 0 ? ~(~0u >> count) : 0;
    return number >> count | filled;
}

}  // namespace

// Only value bits enter, whole stored words of them. Zero bits wanted means all 32: deliberate.
unsigned get_hash(const Value& v, unsigned bits) {
    unsigned hash = 0;
    for (unsigned i = 0; i < v.words(); ++i) hash ^= twang_uinthash(v.word(i));
    return bits >= 1 && bits <= 31 ? hash % (1u << bits) : hash;
}

unsigned twang_uinthash(unsigned key) {
    key += ~(key << 15);
    key ^= key >> 10;
    key += key << 3;
    key ^= key >> 6;
    key += ~(key << 11);
    key ^= key >> 16;
    return key;
}

// The running hash and the bytes are signed: right shifts carry the sign along and a byte of 0x80 or more is added as
// a negative number. Both deliberate. Sums and left shifts wrap, hence the unsigned arithmetic.
int one_at_a_time(const std::string& key) {
    unsigned hash = 0;
    for (const char byte : key) {
        hash += static_cast<unsigned>(int{static_cast<signed char>(byte)});
        hash += hash << 10;
        hash ^= arithmetic_shift_right(hash, 6);
    }
    hash += hash << 3;
    hash ^= arithmetic_shift_right(hash, 11);
    hash += hash << 15;
    return static_cast<int>(hash);
}

}  // namespace model
