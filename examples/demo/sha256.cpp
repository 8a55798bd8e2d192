// The SHA-256 core: the functions, registers and rounds of FIPS 180-4, under the names they have there.
#include "sha256.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr unsigned kWordBits = 32;
constexpr std::size_t kRounds = 64;
constexpr std::size_t kLengthAt = 56;  // the last 8 bytes of a message's last block hold its length

constexpr std::array<unsigned, 8> kInitial = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

constexpr std::array<unsigned, kRounds> K = {  // NOLINT(readability-identifier-naming): the standard's name
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

KVAL_UINTEGER reg() { return KVAL_UINTEGER(0, kWordBits); }

// `x << n` would be n bits wider; a copy shifted in place stays at its 32 bits.
inline KVAL_UINTEGER rotr(const KVAL_UINTEGER& x, unsigned n) {
    KVAL_UINTEGER upper(x);
    upper <<= kWordBits - n;
    return upper | x >> n;
}

// n bits narrower than x; the operators below fill up with zeros on the left.
KVAL_UINTEGER shr(const KVAL_UINTEGER& x, unsigned n) { return x >> n; }

KVAL_UINTEGER Ch(const KVAL_UINTEGER& x, const KVAL_UINTEGER& y, const KVAL_UINTEGER& z) { return (x & y) ^ (~x & z); }

KVAL_UINTEGER Maj(const KVAL_UINTEGER& x, const KVAL_UINTEGER& y, const KVAL_UINTEGER& z) {
    return (x & y) ^ (x & z) ^ (y & z);
}

// The four sigmas: capital ones for the rounds, small ones for the message schedule.
KVAL_UINTEGER Sigma0(const KVAL_UINTEGER& x) { return rotr(x, 2) ^ rotr(x, 13) ^ rotr(x, 22); }
KVAL_UINTEGER Sigma1(const KVAL_UINTEGER& x) { return rotr(x, 6) ^ rotr(x, 11) ^ rotr(x, 25); }
KVAL_UINTEGER sigma0(const KVAL_UINTEGER& x) { return rotr(x, 7) ^ rotr(x, 18) ^ shr(x, 3); }
KVAL_UINTEGER sigma1(const KVAL_UINTEGER& x) { return rotr(x, 17) ^ rotr(x, 19) ^ shr(x, 10); }

// The four bytes from `at` on as one number, the first byte on top.
unsigned big_endian(const Sha256Block& block, std::size_t at) {
    unsigned number = 0;
    for (std::size_t i = at; i < at + 4; ++i) number = number << 8 | static_cast<unsigned char>(block[i]);
    return number;
}

}  // namespace

Sha256Core::Sha256Core()
    : W(16, reg()), a(reg()), b(reg()), c(reg()), d(reg()), e(reg()), f(reg()), g(reg()), h(reg()) {
    for (const unsigned value : kInitial) H.emplace_back(value, kWordBits);
}

void Sha256Core::load_schedule(const Sha256Block& block) {
    for (std::size_t t = 0; t < W.size(); ++t) W[t] = big_endian(block, 4 * t);
}

// Wt. From the sixteenth on each is computed in the register of W(t-16), which is the first term of its sum.
const KVAL_UINTEGER& Sha256Core::schedule_word(std::size_t t) {
    KVAL_UINTEGER& word = W[t % 16];
    if (t >= 16) {
        word += sigma0(W[(t - 15) % 16]);
        word += W[(t - 7) % 16];
        word += sigma1(W[(t - 2) % 16]);
    }
    return word;
}

// `x + y` would be a bit wider whenever it carries; += keeps the 32 bits and wraps, as the standard's sums do.
void Sha256Core::round(std::size_t t) {
    KVAL_UINTEGER T1 = Sigma1(e);  // NOLINT(readability-identifier-naming): the standard's name
    T1 += h;
    T1 += Ch(e, f, g);
    T1 += K[t];
    T1 += schedule_word(t);
    KVAL_UINTEGER T2 = Sigma0(a);  // NOLINT(readability-identifier-naming): the standard's name
    T2 += Maj(a, b, c);

    h = g;
    g = f;
    f = e;
    e = d;
    e += T1;
    d = c;
    c = b;
    b = a;
    a = T1;
    a += T2;
    ++clock;
}

void Sha256Core::compress(const Sha256Block& block) {
    const std::array<KVAL_UINTEGER*, 8> working = {&a, &b, &c, &d, &e, &f, &g, &h};
    for (std::size_t i = 0; i < H.size(); ++i) *working[i] = H[i];
    load_schedule(block);
    for (std::size_t t = 0; t < kRounds; ++t) round(t);
    for (std::size_t i = 0; i < H.size(); ++i) H[i] += *working[i];
}

std::string Sha256Core::digest() const {
    std::string text;
    for (const KVAL_UINTEGER& word : H) text += word.as_hex_string();
    for (char& digit : text) digit = static_cast<char>(std::tolower(static_cast<unsigned char>(digit)));
    return text;
}

void compress_message(Sha256Core& core, std::istream& in) {
    Sha256Block block;
    KVAL_UINTEGER length(0, 64);  // in bits
    while (in.read(block.data(), block.size())) {
        core.compress(block);
        length += 512;
    }
    if (in.bad()) return;

    // The padding: a 1 bit, zeros up to the last 64 bits of a block, and there the length; in a block more if need be.
    auto used = static_cast<std::size_t>(in.gcount());
    length += static_cast<unsigned>(8 * used);
    block[used++] = '\x80';
    std::fill(block.begin() + static_cast<std::ptrdiff_t>(used), block.end(), '\0');
    if (used > kLengthAt) {
        core.compress(block);
        block.fill('\0');
    }
    for (std::size_t i = block.size(); i-- > kLengthAt; length >>= 8)
        block[i] = static_cast<char>(length.uint() & 0xFFU);
    core.compress(block);
}
