// GMP's mpz: two-state integers of any size. A new value is an mpz_t that is initialised, written and cleared.
#include <gmp.h>

#include <cstdlib>
#include <memory>
#include <utility>

#include "operations.h"
#include "rivals/operators.h"

namespace bench {
namespace {

constexpr unsigned kWordBits = 32;

class Mpz {
  public:
    Mpz() { mpz_init(z_); }
    Mpz(const Mpz& other) { mpz_init_set(z_, other.z_); }
    Mpz(Mpz&& other) noexcept {
        mpz_init(z_);
        mpz_swap(z_, other.z_);
    }
    Mpz& operator=(const Mpz& other) = delete;
    ~Mpz() { mpz_clear(z_); }

    mpz_ptr get() { return z_; }
    mpz_srcptr get() const { return z_; }

    bool operator<(const Mpz& r) const { return mpz_cmp(z_, r.z_) < 0; }
    bool operator==(const Mpz& r) const { return mpz_cmp(z_, r.z_) == 0; }

  private:
    mpz_t z_;
};

template <auto function, typename Second>
Mpz result(const Mpz& first, const Second& second) {
    Mpz r;
    function(r.get(), first.get(), second);
    return r;
}

Mpz operator&(const Mpz& l, const Mpz& r) { return result<mpz_and>(l, r.get()); }
Mpz operator|(const Mpz& l, const Mpz& r) { return result<mpz_ior>(l, r.get()); }
Mpz operator^(const Mpz& l, const Mpz& r) { return result<mpz_xor>(l, r.get()); }
Mpz operator+(const Mpz& l, const Mpz& r) { return result<mpz_add>(l, r.get()); }
Mpz operator*(const Mpz& l, const Mpz& r) { return result<mpz_mul>(l, r.get()); }
Mpz operator>>(const Mpz& v, unsigned count) { return result<mpz_fdiv_q_2exp>(v, count); }
Mpz operator<<(const Mpz& v, unsigned count) { return result<mpz_mul_2exp>(v, count); }

/// A text in memory of the C library's, as mpz_get_str(NULL, ...) makes it.
class Text {
  public:
    explicit Text(char* chars) : chars_(chars, std::free) {}
    const char* chars() const { return chars_.get(); }
    std::string text() const {
        std::string upper = chars_.get();
        for (char& digit : upper) {
            if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
        }
        return upper;
    }

  private:
    std::unique_ptr<char, void (*)(void*)> chars_;
};

struct Gmp : NewValues<Mpz>, Comparisons<Mpz> {
    using Value = Mpz;
    static constexpr const char* kName = "mpz";
    static constexpr Rules kRules = Rules::kTwoState;
    static bool takes(unsigned, unsigned) { return true; }
    static Mpz from(const Bits& bits) {
        Mpz v;
        mpz_import(v.get(), bits.value.size(), -1, sizeof(std::uint32_t), 0, 0, bits.value.data());
        return v;
    }
    static Bits bits(const Mpz& v) {
        const std::size_t width = mpz_sizeinbase(v.get(), 2);
        Bits bits{
            static_cast<unsigned>(width), std::vector<std::uint32_t>((width + kWordBits - 1) / kWordBits), {}, {}};
        mpz_export(bits.value.data(), nullptr, -1, sizeof(std::uint32_t), 0, 0, v.get());
        return bits;
    }
    static void keep(const Mpz& v) { bench::keep(mpz_getlimbn(v.get(), 0)); }

    static Mpz construct(unsigned number, unsigned) {
        Mpz r;
        mpz_set_ui(r.get(), number);
        return r;
    }
    static Text hexadecimal_text(const Mpz& v) { return Text(mpz_get_str(nullptr, 16, v.get())); }
    static Text binary_text(const Mpz& v) { return Text(mpz_get_str(nullptr, 2, v.get())); }
    static Mpz& parse_hexadecimal(Mpz& v, const std::string& text) {
        mpz_set_str(v.get(), text.c_str(), 16);
        return v;
    }
    static Mpz& parse_binary(Mpz& v, const std::string& text) {
        mpz_set_str(v.get(), text.c_str(), 2);
        return v;
    }
};

const Registration registration([] { add_operations<Gmp>(); });

}  // namespace
}  // namespace bench
