// Pins the type of every expression with a signed operand, what may throw, and the signatures of the generator.
#include <cstdint>

#include "types.h"

namespace {

using Value = KVAL_UINTEGER;
using Reference = KVAL_UINTEGER&;
using Signed = KVAL_SINTEGER;
using SignedReference = KVAL_SINTEGER&;

}  // namespace

// Operands of every category, of which only the type is asked: signed ones, and unsigned ones whose names begin with u.
SignedReference v() noexcept;
const KVAL_SINTEGER& c() noexcept;
Signed t() noexcept;
Reference uv() noexcept;
const KVAL_UINTEGER& uc() noexcept;
Value ut() noexcept;
unsigned n() noexcept;
int i() noexcept;

// ---- the class: the base's storage and nothing more ----

static_assert(sizeof(Signed) == sizeof(Value) && alignof(Signed) == alignof(Value), "a signed value adds no field");
IS(std::is_base_of<Value, Signed>);
IS(std::is_convertible<Signed*, Value*>);
IS(std::is_standard_layout<Signed>);
IS_NOT(std::is_polymorphic<Signed>);
IS_NOT(std::has_virtual_destructor<Signed>);
IS_NOT(std::is_trivially_copyable<Signed>);

IS(std::is_constructible<Signed, int, unsigned>);
IS(std::is_copy_constructible<Signed>);
IS(std::is_convertible<const Value&, Signed>);
IS(std::is_convertible<const Signed&, Value>);
IS(std::is_nothrow_move_constructible<Signed>);
IS(std::is_nothrow_constructible<Signed, Value>);
IS(std::is_nothrow_constructible<Value, Signed>);
IS(std::is_copy_assignable<Signed>);
IS(std::is_assignable<SignedReference, const Value&>);
IS(std::is_assignable<Reference, const Signed&>);
IS(std::is_nothrow_move_assignable<Signed>);
IS(std::is_nothrow_assignable<SignedReference, Value>);
IS(std::is_nothrow_assignable<Reference, Signed>);
IS(std::is_nothrow_destructible<Signed>);
IS_NOT(std::is_nothrow_constructible<Signed, int, unsigned>);
IS_NOT(std::is_nothrow_copy_constructible<Signed>);
IS_NOT(std::is_nothrow_constructible<Signed, const Value&>);
IS_NOT(std::is_nothrow_copy_assignable<Signed>);  // to a moved-from value it allocates
IS_NOT(std::is_nothrow_assignable<SignedReference, const Value&>);

IS_NOT(std::is_default_constructible<Signed>);
IS_NOT(std::is_constructible<Signed, int>);
IS_NOT(std::is_constructible<Signed, const Signed&, int, bool>);
IS_NOT(std::is_convertible<int, Signed>);
IS_NOT(std::is_convertible<Signed, int>);
IS_NOT(std::is_constructible<bool, Signed>);
// The assignments of the class hide that of the base.
IS_NOT(std::is_assignable<SignedReference, unsigned>);
IS_NOT(std::is_assignable<SignedReference, int>);
IS_NOT(std::is_assignable<const Signed&, const Signed&>);

HAS_TYPE(SignedReference, v() = v());
HAS_TYPE(SignedReference, v() = c());
HAS_TYPE(SignedReference, v() = t());
HAS_TYPE(SignedReference, v() = uv());
HAS_TYPE(SignedReference, v() = uc());
HAS_TYPE(SignedReference, v() = ut());
HAS_TYPE(Reference, uv() = v());
HAS_TYPE(Reference, uv() = c());
HAS_TYPE(Reference, uv() = t());

// ---- two operands of any category, of which one is signed at least ----

#define EVERY_PAIR(type, op)     \
    HAS_TYPE(type, v() op v());  \
    HAS_TYPE(type, v() op c());  \
    HAS_TYPE(type, c() op v());  \
    HAS_TYPE(type, c() op c());  \
    HAS_TYPE(type, c() op t());  \
    HAS_TYPE(type, t() op c());  \
    HAS_TYPE(type, t() op t());  \
    HAS_TYPE(type, v() op uv()); \
    HAS_TYPE(type, v() op uc()); \
    HAS_TYPE(type, c() op uv()); \
    HAS_TYPE(type, c() op uc()); \
    HAS_TYPE(type, t() op uc()); \
    HAS_TYPE(type, c() op ut()); \
    HAS_TYPE(type, t() op ut()); \
    HAS_TYPE(type, uv() op v()); \
    HAS_TYPE(type, uv() op c()); \
    HAS_TYPE(type, uc() op v()); \
    HAS_TYPE(type, uc() op c()); \
    HAS_TYPE(type, ut() op c()); \
    HAS_TYPE(type, uc() op t()); \
    HAS_TYPE(type, ut() op t())

#define MAKES(type, op)   \
    EVERY_PAIR(type, op); \
    MAY_THROW(c() op c())

MAKES(Signed, +);
MAKES(Signed, -);
MAKES(Signed, *);
MAKES(Signed, /);
MAKES(Signed, %);
MAKES(Value, &);
MAKES(Value, |);
MAKES(Value, ^);

#define COMPARES(op)             \
    EVERY_PAIR(bool, op);        \
    THROWS_NOTHING(c() op c());  \
    THROWS_NOTHING(c() op uc()); \
    THROWS_NOTHING(uc() op c()); \
    HAS_TYPE(bool, v() op n());  \
    HAS_TYPE(bool, c() op n());  \
    HAS_TYPE(bool, t() op n());  \
    HAS_TYPE(bool, n() op v());  \
    HAS_TYPE(bool, n() op c());  \
    HAS_TYPE(bool, n() op t());  \
    HAS_TYPE(bool, c() op 0);    \
    HAS_TYPE(bool, 0 op c());    \
    THROWS_NOTHING(c() op n());  \
    THROWS_NOTHING(n() op c())

COMPARES(==);
COMPARES(!=);
COMPARES(<);
COMPARES(<=);
COMPARES(>);
COMPARES(>=);

#define DIVIDES(function)                  \
    HAS_TYPE(Signed, function(v(), v()));  \
    HAS_TYPE(Signed, function(c(), c()));  \
    HAS_TYPE(Signed, function(t(), t()));  \
    HAS_TYPE(Signed, function(v(), uv())); \
    HAS_TYPE(Signed, function(c(), uc())); \
    HAS_TYPE(Signed, function(t(), ut())); \
    HAS_TYPE(Signed, function(uv(), v())); \
    HAS_TYPE(Signed, function(uc(), c())); \
    HAS_TYPE(Signed, function(ut(), t())); \
    MAY_THROW(function(c(), c()))

DIVIDES(posr_div);
DIVIDES(posr_mod);

// ---- one operand: only the right shifts are signed ----

HAS_TYPE(Signed, v() >> n());
HAS_TYPE(Signed, c() >> n());
HAS_TYPE(Signed, t() >> n());
HAS_TYPE(Signed, c() >> 1);
MAY_THROW(c() >> n());
HAS_TYPE(Value, v() << n());
HAS_TYPE(Value, c() << n());
HAS_TYPE(Value, t() << n());
HAS_TYPE(Value, c() << 1);
HAS_TYPE(Value, ~v());
HAS_TYPE(Value, ~c());
HAS_TYPE(Value, ~t());

// ---- in place: but for >>=, the base's ----

#define IN_PLACE(type, op, right) \
    HAS_TYPE(type, v() op right); \
    THROWS_NOTHING(v() op right)

IN_PLACE(SignedReference, >>=, n());
IN_PLACE(SignedReference, >>=, 0);
IN_PLACE(Reference, <<=, n());
IN_PLACE(Reference, <<=, 0);
IN_PLACE(Reference, &=, c());
IN_PLACE(Reference, &=, uc());
IN_PLACE(Reference, |=, c());
IN_PLACE(Reference, |=, uc());
IN_PLACE(Reference, +=, c());
IN_PLACE(Reference, +=, uc());
IN_PLACE(Reference, +=, t());
IN_PLACE(Reference, +=, n());
IN_PLACE(Reference, +=, 0);
IN_PLACE(Reference, -=, c());
IN_PLACE(Reference, -=, uc());
IN_PLACE(Reference, -=, t());
IN_PLACE(Reference, -=, n());
IN_PLACE(Reference, -=, 0);
HAS_TYPE(Reference, ++v());
HAS_TYPE(Reference, --v());
HAS_TYPE(Reference, uv() += c());
HAS_TYPE(Reference, uv() &= c());
THROWS_NOTHING(++v());
THROWS_NOTHING(--v());

// ---- members ----

#define READER(type, member)    \
    HAS_TYPE(type, c().member); \
    THROWS_NOTHING(c().member)

READER(unsigned, bitwidth());
READER(int, convert_to_signed_representation());
READER(int, signed_value());
READER(unsigned, SignExtendedChunk(i()));
READER(bool, positive());
READER(bool, negative());
READER(unsigned, absolute_value());
READER(unsigned, maximum_negative());
READER(unsigned, maximum_positive());
READER(unsigned, uint());

HAS_TYPE(SignedReference, v().bitwidth(n()));
HAS_TYPE(SignedReference, v().complement_me());
HAS_TYPE(Signed, c().twos_complement());
MAY_THROW(v().bitwidth(n()));
THROWS_NOTHING(v().complement_me());
MAY_THROW(c().twos_complement());

HAS_TYPE(Reference, v().set_bit(i(), n()));
HAS_TYPE(Reference, v().force_x());

// ---- swap ----

HAS_TYPE(void, swap(v(), v()));
THROWS_NOTHING(swap(v(), v()));

// ---- random numbers ----

HAS_TYPE(Reference, uv().randomize());
HAS_TYPE(Reference, uv().randomize(i()));
HAS_TYPE(Reference, v().randomize());
HAS_TYPE(Reference, v().randomize(i()));
THROWS_NOTHING(uv().randomize());
MAY_THROW(uv().randomize(i()));

using Randomizer = std::int64_t();
using Seeder = void(unsigned);
using Initializer = void*(unsigned, void*, unsigned long);
using Switcher = void*(void*);

// The address says nothing about exceptions: that a function throws none is part of its type only since C++17.
IS(std::is_convertible<decltype(&kval_random), Randomizer*>);
IS(std::is_convertible<decltype(&kval_srandom), Seeder*>);
IS(std::is_convertible<decltype(&kval_initstate), Initializer*>);
IS(std::is_convertible<decltype(&kval_setstate), Switcher*>);

HAS_TYPE(std::int64_t, kval_random());
HAS_TYPE(void, kval_srandom(n()));
HAS_TYPE(void*, kval_initstate(n(), nullptr, 8));
HAS_TYPE(void*, kval_setstate(nullptr));
THROWS_NOTHING(kval_random());
THROWS_NOTHING(kval_srandom(n()));
THROWS_NOTHING(kval_initstate(n(), nullptr, 8));
THROWS_NOTHING(kval_setstate(nullptr));
