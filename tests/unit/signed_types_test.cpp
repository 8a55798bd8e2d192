// What the compiler has to know of signed values: result types, what cannot throw, what is not there.
#include <type_traits>
#include <utility>

#include "kval.h"

namespace signed_types {

using S = KVAL_SINTEGER;
using U = KVAL_UINTEGER;

template <class Left, class Right>
constexpr bool same = std::is_same<Left, Right>::value;

// Operands, named for use in unevaluated expressions only.
const S& s() noexcept;
const U& u() noexcept;
S& changeable() noexcept;
S&& expiring() noexcept;
U&& expiring_unsigned() noexcept;

// ---- the class ----

static_assert(std::is_base_of<U, S>::value, "");
static_assert(std::is_convertible<S*, U*>::value, "the derivation is public");
static_assert(sizeof(S) == sizeof(U), "no field is added");
static_assert(alignof(S) == alignof(U), "");
static_assert(!std::is_polymorphic<S>::value && !std::is_polymorphic<U>::value, "neither class has virtual members");
static_assert(std::is_constructible<S, int, unsigned>::value, "");
static_assert(std::is_constructible<S, const U&>::value, "");
static_assert(!std::is_default_constructible<S>::value, "");
static_assert(!std::is_constructible<S, unsigned>::value, "a width is needed");
static_assert(std::is_nothrow_move_constructible<S>::value, "else a growing vector would copy");
static_assert(std::is_nothrow_constructible<S, U&&>::value, "");
static_assert(std::is_nothrow_constructible<U, S&&>::value, "");
static_assert(std::is_nothrow_move_assignable<S>::value, "");
static_assert(std::is_nothrow_assignable<S&, U&&>::value, "");
static_assert(std::is_nothrow_assignable<U&, S&&>::value, "");
static_assert(std::is_nothrow_destructible<S>::value, "");

// ---- assignment; that from a number is hidden (required) ----

static_assert(!std::is_assignable<S&, unsigned>::value, "");
static_assert(!std::is_assignable<S&, int>::value, "");
static_assert(std::is_assignable<U&, unsigned>::value, "");
static_assert(same<decltype(changeable() = s()), S&>, "");
static_assert(same<decltype(changeable() = u()), S&>, "");
static_assert(same<decltype(changeable() = expiring()), S&>, "");
static_assert(same<decltype(changeable() = expiring_unsigned()), S&>, "");
static_assert(same<decltype(std::declval<U&>() = s()), U&>, "");

// ---- members ----

static_assert(same<decltype(s().bitwidth()), unsigned>, "");
static_assert(same<decltype(changeable().bitwidth(8U)), S&>, "");
static_assert(same<decltype(changeable().complement_me()), S&>, "");
static_assert(same<decltype(s().twos_complement()), S>, "");
static_assert(same<decltype(s().convert_to_signed_representation()), int>, "");
static_assert(same<decltype(s().signed_value()), int>, "");
static_assert(same<decltype(s().SignExtendedChunk(0)), unsigned>, "");
static_assert(same<decltype(s().positive()), bool>, "");
static_assert(same<decltype(s().negative()), bool>, "");
static_assert(same<decltype(s().absolute_value()), unsigned>, "");
static_assert(same<decltype(s().maximum_negative()), unsigned>, "");
static_assert(same<decltype(s().maximum_positive()), unsigned>, "");
static_assert(noexcept(s().bitwidth()), "");
static_assert(noexcept(changeable().complement_me()), "");
static_assert(noexcept(s().signed_value()) && noexcept(s().convert_to_signed_representation()), "");
static_assert(noexcept(s().SignExtendedChunk(0)), "");
static_assert(noexcept(s().positive()) && noexcept(s().negative()) && noexcept(s().absolute_value()), "");
static_assert(noexcept(s().maximum_negative()) && noexcept(s().maximum_positive()), "");

// ---- signed operators ----

static_assert(same<decltype(s() + s()), S> && same<decltype(s() + u()), S> && same<decltype(u() + s()), S>, "");
static_assert(same<decltype(s() - s()), S> && same<decltype(s() - u()), S> && same<decltype(u() - s()), S>, "");
static_assert(same<decltype(s() * s()), S> && same<decltype(s() * u()), S> && same<decltype(u() * s()), S>, "");
static_assert(same<decltype(s() / s()), S> && same<decltype(s() / u()), S> && same<decltype(u() / s()), S>, "");
static_assert(same<decltype(s() % s()), S> && same<decltype(s() % u()), S> && same<decltype(u() % s()), S>, "");
static_assert(same<decltype(posr_div(s(), s())), S> && same<decltype(posr_div(s(), u())), S> &&
                  same<decltype(posr_div(u(), s())), S>,
              "");
static_assert(same<decltype(posr_mod(s(), s())), S> && same<decltype(posr_mod(s(), u())), S> &&
                  same<decltype(posr_mod(u(), s())), S>,
              "");
static_assert(same<decltype(s() >> 1U), S>, "");
static_assert(same<decltype(changeable() >>= 1U), S&>, "");
static_assert(noexcept(changeable() >>= 1U), "");

static_assert(same<decltype(s() == s()), bool> && same<decltype(s() == u()), bool> && same<decltype(u() == s()), bool>,
              "");
static_assert(same<decltype(s() < s()), bool> && same<decltype(s() < u()), bool> && same<decltype(u() < s()), bool>,
              "");
static_assert(same<decltype(s() <= s()), bool> && same<decltype(s() <= u()), bool> && same<decltype(u() <= s()), bool>,
              "");
static_assert(same<decltype(s() > s()), bool> && same<decltype(s() > u()), bool> && same<decltype(u() > s()), bool>,
              "");
static_assert(same<decltype(s() >= s()), bool> && same<decltype(s() >= u()), bool> && same<decltype(u() >= s()), bool>,
              "");
static_assert(same<decltype(s() != s()), bool> && same<decltype(s() != u()), bool> && same<decltype(u() != s()), bool>,
              "");
static_assert(noexcept(s() == s()) && noexcept(s() == u()) && noexcept(u() == s()), "");
static_assert(noexcept(s() != s()) && noexcept(s() != u()) && noexcept(u() != s()), "");
static_assert(noexcept(s() < s()) && noexcept(s() < u()) && noexcept(u() < s()), "");
static_assert(noexcept(s() <= s()) && noexcept(s() <= u()) && noexcept(u() <= s()), "");
static_assert(noexcept(s() > s()) && noexcept(s() > u()) && noexcept(u() > s()), "");
static_assert(noexcept(s() >= s()) && noexcept(s() >= u()) && noexcept(u() >= s()), "");
static_assert(same<decltype(s() == 1U), bool> && same<decltype(1U == s()), bool>, "");
static_assert(same<decltype(s() != 1U), bool> && same<decltype(1U != s()), bool>, "");
static_assert(same<decltype(s() < 1U), bool> && same<decltype(1U < s()), bool>, "");
static_assert(same<decltype(s() >= 1U), bool> && same<decltype(1U >= s()), bool>, "");

// ---- operators that are the base's, and answer in its types ----

static_assert(same<decltype(s() << 1U), U>, "");
static_assert(same<decltype(s() & s()), U> && same<decltype(s() & u()), U> && same<decltype(u() & s()), U>, "");
static_assert(same<decltype(s() | s()), U> && same<decltype(s() | u()), U> && same<decltype(u() | s()), U>, "");
static_assert(same<decltype(s() ^ s()), U> && same<decltype(s() ^ u()), U> && same<decltype(u() ^ s()), U>, "");
static_assert(same<decltype(~s()), U>, "");
static_assert(same<decltype(changeable() <<= 1U), U&>, "");
static_assert(same<decltype(changeable() += s()), U&> && same<decltype(changeable() += 1U), U&>, "");
static_assert(same<decltype(changeable() -= s()), U&> && same<decltype(changeable() -= 1U), U&>, "");
static_assert(same<decltype(changeable() &= s()), U&> && same<decltype(changeable() |= s()), U&>, "");
static_assert(same<decltype(++changeable()), U&> && same<decltype(--changeable()), U&>, "");
static_assert(same<decltype(changeable().set_bit(0, 1U)), U&>, "");
static_assert(same<decltype(changeable().randomize()), U&>, "");

// Two unsigned operands stay with the unsigned operators, although a signed value can be made of each.
static_assert(same<decltype(u() + u()), U> && same<decltype(u() - u()), U> && same<decltype(u() * u()), U>, "");
static_assert(same<decltype(u() / u()), U> && same<decltype(u() % u()), U> && same<decltype(u() >> 1U), U>, "");
static_assert(same<decltype(u() == u()), bool> && same<decltype(u() < u()), bool>, "");

}  // namespace signed_types
