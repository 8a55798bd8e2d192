// Boost's cpp_int: two-state integers of any size, header only.
#include <algorithm>
#include <boost/multiprecision/cpp_int.hpp>
#include <iterator>

#include "operations.h"
#include "rivals/kernels.h"
#include "rivals/operators.h"

namespace bench {
namespace {

using Int = boost::multiprecision::cpp_int;

class Text {
  public:
    explicit Text(std::string&& text) : text_(std::move(text)) {}
    const char* chars() const { return text_.data(); }
    std::string text() const {
        std::string upper = text_;
        for (char& digit : upper) {
            if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
        }
        return upper;
    }

  private:
    std::string text_;
};

struct CppInt : NewValues<Int>, Comparisons<Int> {
    using Value = Int;
    static constexpr const char* kName = "cpp_int";
    static constexpr Rules kRules = Rules::kTwoState;
    static bool takes(unsigned, unsigned) { return true; }
    static Int from(const Bits& bits) {
        Int v;
        boost::multiprecision::import_bits(v, bits.value.begin(), bits.value.end(), 32, false);
        return v;
    }
    static Bits bits(const Int& v) {
        Bits bits;
        boost::multiprecision::export_bits(v, std::back_inserter(bits.value), 32, false);
        bits.width = static_cast<unsigned>(32 * bits.value.size());
        return bits;
    }
    static void keep(const Int& v) { bench::keep(*v.backend().limbs()); }

    // The sum may grow while the kernel runs, which is less work than to wrap it in every step.
    static void accumulate(Int& acc, const Int& a, const Int& b, const Int& c) { acc += (a & b) ^ c; }
    static void wrap(Int& acc, unsigned width) { acc &= (Int(1) << width) - 1; }

    static Int construct(unsigned number, unsigned) { return Int(number); }
    static constexpr unsigned kWidestText = 65536;  // quadratic: beyond, it takes seconds
    static Text hexadecimal_text(const Int& v) { return Text(v.str(0, std::ios::hex)); }
    // Without a width neither a complement nor a difference wraps; binary text does not exist.
    static Int logic_not(const Int&) = delete;
    static Int subtract(const Int&, const Int&) = delete;
    static Int& parse_hexadecimal(Int& v, const std::string& text) { return v = Int("0x" + text); }
};

const Registration registration([] {
    add_operations<CppInt>();
    add_accumulator<CppInt>();
});

}  // namespace
}  // namespace bench
