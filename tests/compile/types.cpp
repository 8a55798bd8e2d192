// Pins the type of every expression of the public header, what may throw, and what kind of type a value is.
#include "types.h"

namespace {

using Value = KVAL_UINTEGER;
using Reference = KVAL_UINTEGER&;

}  // namespace

// Operands of every category, of which only the type is asked.
Reference v() noexcept;
const KVAL_UINTEGER& c() noexcept;
Value t() noexcept;
unsigned n() noexcept;
int i() noexcept;
const char* s() noexcept;

// ---- the class ----

static_assert(sizeof(Value) == 40 && alignof(Value) == 8, "the object layout is part of the binary interface");
IS(std::is_standard_layout<Value>);
IS_NOT(std::is_polymorphic<Value>);
IS_NOT(std::has_virtual_destructor<Value>);
IS_NOT(std::is_trivially_copyable<Value>);
IS_NOT(std::is_empty<Value>);

IS(std::is_constructible<Value, unsigned, unsigned>);
IS(std::is_constructible<Value, const Value&, int, bool>);
IS(std::is_copy_constructible<Value>);
IS(std::is_nothrow_move_constructible<Value>);
IS(std::is_copy_assignable<Value>);
IS(std::is_nothrow_move_assignable<Value>);
IS(std::is_nothrow_assignable<Reference, unsigned>);
IS(std::is_nothrow_destructible<Value>);
IS_NOT(std::is_nothrow_constructible<Value, unsigned, unsigned>);
IS_NOT(std::is_nothrow_constructible<Value, const Value&, int, bool>);
IS_NOT(std::is_nothrow_copy_constructible<Value>);
IS_NOT(std::is_nothrow_copy_assignable<Value>);  // to a moved-from value it allocates

IS_NOT(std::is_default_constructible<Value>);
IS_NOT(std::is_constructible<Value, unsigned>);
IS_NOT(std::is_constructible<Value, const char*>);
IS_NOT(std::is_convertible<unsigned, Value>);
IS_NOT(std::is_convertible<int, Value>);
IS_NOT(std::is_convertible<Value, unsigned>);
IS_NOT(std::is_constructible<unsigned, Value>);
IS_NOT(std::is_constructible<bool, Value>);
IS_NOT(std::is_assignable<Reference, const char*>);
IS_NOT(std::is_assignable<const Value&, const Value&>);
IS_NOT(std::is_assignable<const Value&, unsigned>);

// ---- binary operators: a new value from operands of any category ----

#define BINARY(op)               \
    HAS_TYPE(Value, v() op v()); \
    HAS_TYPE(Value, v() op c()); \
    HAS_TYPE(Value, v() op t()); \
    HAS_TYPE(Value, c() op v()); \
    HAS_TYPE(Value, c() op c()); \
    HAS_TYPE(Value, c() op t()); \
    HAS_TYPE(Value, t() op v()); \
    HAS_TYPE(Value, t() op c()); \
    HAS_TYPE(Value, t() op t()); \
    MAY_THROW(v() op c())

BINARY(&);
BINARY(|);
BINARY(^);
BINARY(+);
BINARY(-);
BINARY(*);
BINARY(/);
BINARY(%);

#define SHIFT(op)                \
    HAS_TYPE(Value, v() op n()); \
    HAS_TYPE(Value, c() op n()); \
    HAS_TYPE(Value, t() op n()); \
    HAS_TYPE(Value, c() op 1);   \
    MAY_THROW(c() op n())

SHIFT(<<);
SHIFT(>>);

HAS_TYPE(Value, ~v());
HAS_TYPE(Value, ~c());
HAS_TYPE(Value, ~t());
MAY_THROW(~c());

// ---- in place: the left operand itself, and nothing to throw ----

#define IN_PLACE(op, right)            \
    HAS_TYPE(Reference, v() op right); \
    HAS_TYPE(Reference, t() op right); \
    THROWS_NOTHING(v() op right)

IN_PLACE(&=, v());
IN_PLACE(&=, c());
IN_PLACE(&=, t());
IN_PLACE(|=, v());
IN_PLACE(|=, c());
IN_PLACE(|=, t());
IN_PLACE(+=, v());
IN_PLACE(+=, c());
IN_PLACE(+=, t());
IN_PLACE(+=, n());
IN_PLACE(+=, 0);
IN_PLACE(-=, v());
IN_PLACE(-=, c());
IN_PLACE(-=, t());
IN_PLACE(-=, n());
IN_PLACE(-=, 0);
IN_PLACE(<<=, n());
IN_PLACE(<<=, 0);
IN_PLACE(>>=, n());
IN_PLACE(>>=, 0);
IN_PLACE(=, n());
IN_PLACE(=, 0);
IN_PLACE(=, t());

HAS_TYPE(Reference, v() = v());
HAS_TYPE(Reference, v() = c());
HAS_TYPE(Reference, ++v());
HAS_TYPE(Reference, --v());
THROWS_NOTHING(++v());
THROWS_NOTHING(--v());

// ---- comparisons: bool, and nothing to throw ----

#define COMPARISON_OF(l, op, r) \
    HAS_TYPE(bool, l op r);     \
    THROWS_NOTHING(l op r)

#define COMPARISON(op)           \
    COMPARISON_OF(v(), op, v()); \
    COMPARISON_OF(v(), op, c()); \
    COMPARISON_OF(c(), op, v()); \
    COMPARISON_OF(c(), op, c()); \
    COMPARISON_OF(c(), op, t()); \
    COMPARISON_OF(t(), op, c()); \
    COMPARISON_OF(t(), op, t()); \
    COMPARISON_OF(v(), op, n()); \
    COMPARISON_OF(c(), op, n()); \
    COMPARISON_OF(t(), op, n()); \
    COMPARISON_OF(n(), op, v()); \
    COMPARISON_OF(n(), op, c()); \
    COMPARISON_OF(n(), op, t()); \
    COMPARISON_OF(c(), op, 0);   \
    COMPARISON_OF(0, op, c())

COMPARISON(==);
COMPARISON(!=);
COMPARISON(>);
COMPARISON(>=);
COMPARISON(<);
COMPARISON(<=);

// ---- readers: of constant values too ----

#define READER(type, member)    \
    HAS_TYPE(type, c().member); \
    THROWS_NOTHING(c().member)

READER(unsigned, bitwidth());
READER(int, get_size());
READER(unsigned, get_top());
READER(bool, IsCompact());
READER(unsigned, uint());
READER(bool, is_zero());
READER(bool, is_one());
READER(unsigned, get_uvalue_at(i()));
READER(unsigned, get_xmask_at(i()));
READER(bool, is_x(i(), i()));
READER(bool, is_x());
READER(bool, is_z());
READER(bool, is_wl());
READER(bool, is_wh());
READER(unsigned, get_hash(n()));

HAS_TYPE(unsigned, c().bit(n()));
HAS_TYPE(const char*, c().as_hex_string());
HAS_TYPE(const char*, c().as_bin_string());
MAY_THROW(c().bit(n()));
MAY_THROW(c().as_hex_string());
MAY_THROW(c().as_bin_string());

HAS_TYPE(int, Value::get_size(i()));
HAS_TYPE(bool, Value::IsCompact(i()));
THROWS_NOTHING(Value::get_size(i()));
THROWS_NOTHING(Value::IsCompact(i()));

// ---- writers: the value itself ----

#define WRITER(member)               \
    HAS_TYPE(Reference, v().member); \
    THROWS_NOTHING(v().member)

WRITER(set_uvalue_at(i(), n()));
WRITER(set_xmask_at(i(), n()));
WRITER(set_x(i()));
WRITER(force_x());
WRITER(force_z());
WRITER(force_wl());
WRITER(force_wh());

HAS_TYPE(Reference, v().set_bit(i(), n()));
HAS_TYPE(Reference, v().bitwidth(n()));
HAS_TYPE(Reference, v().set_value_from_hex_string(s()));
HAS_TYPE(Reference, v().set_value_from_bin_string(s()));
MAY_THROW(v().set_bit(i(), n()));
MAY_THROW(v().bitwidth(n()));
MAY_THROW(v().set_value_from_hex_string(s()));
MAY_THROW(v().set_value_from_bin_string(s()));

HAS_TYPE(void, v().EnforceWidth());
HAS_TYPE(void, v().DeleteString());
HAS_TYPE(void, v().DeleteData());
THROWS_NOTHING(v().EnforceWidth());
THROWS_NOTHING(v().DeleteString());
THROWS_NOTHING(v().DeleteData());

// ---- free functions ----

HAS_TYPE(void, swap(v(), v()));
HAS_TYPE(unsigned, twang_uinthash(n()));
HAS_TYPE(int, one_at_a_time(s(), i()));
HAS_TYPE(const char*, kval_version());
THROWS_NOTHING(swap(v(), v()));
THROWS_NOTHING(twang_uinthash(n()));
THROWS_NOTHING(one_at_a_time(s(), i()));
THROWS_NOTHING(kval_version());
