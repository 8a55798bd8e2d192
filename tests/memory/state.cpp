// Copies out what can be seen of a value, its cached text included.
#include "state.h"

#include <cstdint>
#include <cstring>
#include <tuple>

namespace {

// Where the fields stand is part of the binary interface; no member tells whether there is a text without making one.
constexpr std::size_t kTextOffset = 24;
constexpr std::size_t kFlagsOffset = 32;
constexpr unsigned kBinaryText = 16;

template <typename Field>
Field field_at(const KVAL_UINTEGER& v, std::size_t offset) {
    Field field;
    std::memcpy(&field, reinterpret_cast<const char*>(&v) + offset, sizeof field);
    return field;
}

TextKind kind_of_text(const KVAL_UINTEGER& v) {
    if (cached_text(v) == nullptr) return TextKind::None;
    const bool binary = (field_at<std::uint8_t>(v, kFlagsOffset) & kBinaryText) != 0;
    return binary ? TextKind::Binary : TextKind::Hexadecimal;
}

}  // namespace

const char* cached_text(const KVAL_UINTEGER& v) { return field_at<const char*>(v, kTextOffset); }

State observe(const KVAL_UINTEGER& v) {
    State state{};
    state.width = v.bitwidth();
    for (int i = 0; i < v.get_size(); ++i) {
        state.value.push_back(v.get_uvalue_at(i));
        state.mask.push_back(v.get_xmask_at(i));
    }
    for (const bool flag : {v.is_wh(), v.is_wl(), v.is_z(), v.is_x()}) state.four_state = state.four_state * 2 + flag;
    state.kind = kind_of_text(v);
    if (state.kind != TextKind::None) state.text = cached_text(v);
    return state;
}

bool operator==(const State& a, const State& b) {
    const auto all = [](const State& s) { return std::tie(s.width, s.value, s.mask, s.four_state, s.kind, s.text); };
    return all(a) == all(b);
}

std::ostream& operator<<(std::ostream& out, const State& state) {
    out << state.width << " bits, value" << std::hex;
    for (const unsigned word : state.value) out << ' ' << word;
    out << ", x-mask";
    for (const unsigned word : state.mask) out << ' ' << word;
    out << ", flags " << state.four_state << std::dec;
    if (state.kind == TextKind::None) return out << ", no text";
    return out << (state.kind == TextKind::Binary ? ", binary" : ", hexadecimal") << " text " << state.text;
}
