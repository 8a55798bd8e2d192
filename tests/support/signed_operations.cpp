// The rows of the signed and mixed operators. The values of twins are signed objects, read here as what they are.
#include "signed_operations.h"

#include <utility>

#include "model/signed_model.h"
#include "twin.h"

namespace twin {

namespace {

using U = KVAL_UINTEGER;
using S = KVAL_SINTEGER;
using M = model::Value;
namespace ms = model::signed_value;

const S& s(const U& v) { return static_cast<const S&>(v); }
S& s(U& v) { return static_cast<S&>(v); }

// The source of a move has a text of its own, which must not reach the target.
template <typename Source>
U& move_assign(U& target, const Source& source) {
    if (&target == &source) {
        S& self = s(target);
        return s(target) = std::move(self);
    }
    Source moved(source);
    cache_odd_text(moved, Text::Hexadecimal);
    return s(target) = std::move(moved);
}

}  // namespace

std::vector<Binary> signed_binary_operations() {
    return {
        {"signed + signed", [](const U& l, const U& r) -> U { return s(l) + s(r); }, ms::add_ss},
        {"signed + unsigned", [](const U& l, const U& r) -> U { return s(l) + r; }, ms::add_su},
        {"unsigned + signed", [](const U& l, const U& r) -> U { return l + s(r); }, ms::add_us},
        {"signed - signed", [](const U& l, const U& r) -> U { return s(l) - s(r); }, ms::sub_ss},
        {"signed - unsigned", [](const U& l, const U& r) -> U { return s(l) - r; }, ms::sub_su},
        {"unsigned - signed", [](const U& l, const U& r) -> U { return l - s(r); }, ms::sub_us},
        {"signed * signed", [](const U& l, const U& r) -> U { return s(l) * s(r); }, ms::mul_ss},
        {"signed * unsigned", [](const U& l, const U& r) -> U { return s(l) * r; }, ms::mul_su},
        {"unsigned * signed", [](const U& l, const U& r) -> U { return l * s(r); }, ms::mul_us},
        {"signed / signed", [](const U& l, const U& r) -> U { return s(l) / s(r); }, ms::div_ss},
        {"signed / unsigned", [](const U& l, const U& r) -> U { return s(l) / r; }, ms::div_su},
        {"unsigned / signed", [](const U& l, const U& r) -> U { return l / s(r); }, ms::div_us},
        {"signed % signed", [](const U& l, const U& r) -> U { return s(l) % s(r); }, ms::rem_ss},
        {"signed % unsigned", [](const U& l, const U& r) -> U { return s(l) % r; }, ms::rem_su},
        {"unsigned % signed", [](const U& l, const U& r) -> U { return l % s(r); }, ms::rem_us},
        {"posr_div(signed, signed)", [](const U& l, const U& r) -> U { return posr_div(s(l), s(r)); }, ms::posr_div_ss},
        {"posr_div(signed, unsigned)", [](const U& l, const U& r) -> U { return posr_div(s(l), r); }, ms::posr_div_su},
        {"posr_div(unsigned, signed)", [](const U& l, const U& r) -> U { return posr_div(l, s(r)); }, ms::posr_div_us},
        {"posr_mod(signed, signed)", [](const U& l, const U& r) -> U { return posr_mod(s(l), s(r)); }, ms::posr_mod_ss},
        {"posr_mod(signed, unsigned)", [](const U& l, const U& r) -> U { return posr_mod(s(l), r); }, ms::posr_mod_su},
        {"posr_mod(unsigned, signed)", [](const U& l, const U& r) -> U { return posr_mod(l, s(r)); }, ms::posr_mod_us},
    };
}

std::vector<Relation> signed_relations() {
    return {
        {"signed == signed", [](const U& l, const U& r) { return s(l) == s(r); }, ms::equal_ss},
        {"signed == unsigned", [](const U& l, const U& r) { return s(l) == r; }, ms::equal_su},
        {"unsigned == signed", [](const U& l, const U& r) { return l == s(r); }, ms::equal_us},
        {"signed != signed", [](const U& l, const U& r) { return s(l) != s(r); },
         [](const M& l, const M& r) { return !model::equal(l, r); }},
        {"signed != unsigned", [](const U& l, const U& r) { return s(l) != r; },
         [](const M& l, const M& r) { return !model::equal(l, r); }},
        {"unsigned != signed", [](const U& l, const U& r) { return l != s(r); },
         [](const M& l, const M& r) { return !model::equal(l, r); }},
        {"signed < signed", [](const U& l, const U& r) { return s(l) < s(r); }, ms::less_ss},
        {"signed < unsigned", [](const U& l, const U& r) { return s(l) < r; }, ms::less_su},
        {"unsigned < signed", [](const U& l, const U& r) { return l < s(r); }, ms::less_us},
        {"signed <= signed", [](const U& l, const U& r) { return s(l) <= s(r); }, ms::less_equal_ss},
        {"signed <= unsigned", [](const U& l, const U& r) { return s(l) <= r; }, ms::less_equal_su},
        {"unsigned <= signed", [](const U& l, const U& r) { return l <= s(r); }, ms::less_equal_us},
        {"signed > signed", [](const U& l, const U& r) { return s(l) > s(r); }, ms::greater_ss},
        {"signed > unsigned", [](const U& l, const U& r) { return s(l) > r; }, ms::greater_su},
        {"unsigned > signed", [](const U& l, const U& r) { return l > s(r); }, ms::greater_us},
        {"signed >= signed", [](const U& l, const U& r) { return s(l) >= s(r); }, ms::greater_equal_ss},
        {"signed >= unsigned", [](const U& l, const U& r) { return s(l) >= r; }, ms::greater_equal_su},
        {"unsigned >= signed", [](const U& l, const U& r) { return l >= s(r); }, ms::greater_equal_us},
    };
}

std::vector<InPlace> signed_in_place_operations() {
    return {
        {"signed = signed", [](U& l, const U& r) -> U& { return s(l) = s(r); }, ms::assign_signed},
        {"signed = unsigned", [](U& l, const U& r) -> U& { return s(l) = r; }, ms::assign_unsigned},
        {"signed = moved signed", [](U& l, const U& r) -> U& { return move_assign(l, s(r)); }, ms::assign_signed},
        {"signed = moved unsigned", [](U& l, const U& r) -> U& { return move_assign(l, r); },
         [](M& l, const M& r) { &l == &r ? ms::assign_signed(l, r) : ms::assign_unsigned(l, r); }},
    };
}

std::vector<Derived> signed_derived_values() {
    return {
        {"signed copy", Argument::None, [](const U& v, unsigned) -> U { return S(s(v)); },
         [](const M& v, unsigned) { return model::copy(v); }},
        {"signed copy of unsigned", Argument::None, [](const U& v, unsigned) -> U { return S(v); },
         [](const M& v, unsigned) { return model::copy(v); }},
        {"construction from a signed number, width of", Argument::Number,
         [](const U& v, unsigned n) -> U { return S(static_cast<int>(n), v.bitwidth()); },
         [](const M& v, unsigned n) { return ms::make(static_cast<int>(n), v.width); }},
        {"twos_complement", Argument::None, [](const U& v, unsigned) -> U { return s(v).twos_complement(); },
         [](const M& v, unsigned) { return ms::twos_complement(v); }},
        {"signed >>", Argument::Distance, [](const U& v, unsigned n) -> U { return s(v) >> n; }, ms::shr},
    };
}

std::vector<Query> signed_queries() {
    return {
        {"signed_value", Argument::None,
         [](const U& v, unsigned) { return static_cast<unsigned>(s(v).signed_value()); },
         [](const M& v, unsigned) { return static_cast<unsigned>(ms::convert_to_signed_representation(v)); }},
        {"convert_to_signed_representation", Argument::None,
         [](const U& v, unsigned) { return static_cast<unsigned>(s(v).convert_to_signed_representation()); },
         [](const M& v, unsigned) { return static_cast<unsigned>(ms::convert_to_signed_representation(v)); }},
        {"positive", Argument::None, [](const U& v, unsigned) -> unsigned { return s(v).positive(); },
         [](const M& v, unsigned) -> unsigned { return ms::positive(v); }},
        {"negative", Argument::None, [](const U& v, unsigned) -> unsigned { return s(v).negative(); },
         [](const M& v, unsigned) -> unsigned { return ms::negative(v); }},
        {"absolute_value", Argument::None, [](const U& v, unsigned) { return s(v).absolute_value(); },
         [](const M& v, unsigned) { return ms::absolute_value(v); }},
        {"maximum_negative", Argument::None, [](const U& v, unsigned) { return s(v).maximum_negative(); },
         [](const M& v, unsigned) { return ms::maximum_negative(v); }},
        {"maximum_positive", Argument::None, [](const U& v, unsigned) { return s(v).maximum_positive(); },
         [](const M& v, unsigned) { return ms::maximum_positive(v); }},
        {"SignExtendedChunk", Argument::Index,
         [](const U& v, unsigned n) { return s(v).SignExtendedChunk(static_cast<int>(n)); },
         [](const M& v, unsigned n) { return ms::SignExtendedChunk(v, static_cast<int>(n)); }},
    };
}

std::vector<Change> signed_changes() {
    return {
        {"signed bitwidth", Argument::Width, [](U& v, unsigned n) -> U& { return s(v).bitwidth(n); }, ms::resize},
        {"complement_me", Argument::None, [](U& v, unsigned) -> U& { return s(v).complement_me(); },
         [](M& v, unsigned) { ms::complement_me(v); }},
        {"signed >>=", Argument::Count, [](U& v, unsigned n) -> U& { return s(v) >>= n; }, ms::shr_assign},
    };
}

}  // namespace twin
