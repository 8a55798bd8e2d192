// sha256.h: a SHA-256 core modelled register by register with four-state values.
#ifndef DEMO_SHA256_H
#define DEMO_SHA256_H

#include <kval.h>

#include <array>
#include <cstddef>
#include <istream>
#include <string>
#include <vector>

/// One message block of 512 bits, as bytes.
using Sha256Block = std::array<char, 64>;

/// The compression unit of FIPS 180-4, Secure Hash Standard: one call of `compress` is one block, one round is one
/// clock of the working registers. All registers are 32 bits wide, and additions in them wrap.
class Sha256Core {
  public:
    Sha256Core();

    /// Feeds one block through the 64 rounds.
    void compress(const Sha256Block& block);
    /// The hash registers as 64 hexadecimal digits in lower case.
    std::string digest() const;
    /// The rounds computed so far.
    unsigned long long rounds() const { return clock; }

  private:
    void load_schedule(const Sha256Block& block);
    const KVAL_UINTEGER& schedule_word(std::size_t t);
    void round(std::size_t t);

    std::vector<KVAL_UINTEGER> H;  // the hash registers H0 to H7
    std::vector<KVAL_UINTEGER> W;  // the message schedule: its last sixteen words, Wt in register t modulo 16
    KVAL_UINTEGER a, b, c, d, e, f, g, h;
    unsigned long long clock = 0;
};

/// Feeds all of `in` to `core`, padded as the standard asks. Stops early where `in` goes bad: the caller looks.
void compress_message(Sha256Core& core, std::istream& in);

#endif
