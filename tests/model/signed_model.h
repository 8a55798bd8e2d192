// The reference model of the signed value: the same stored bits, read as two's complement, computed bit by bit.
#pragma once

#include "model/model.h"

namespace model::signed_value {

// Construction, assignment, resizing; a plain copy is model::copy. Assignments keep the target's width.
Value make(int number, unsigned width);
void assign_unsigned(Value& target, const Value& source);  // a signed target, an unsigned source
void assign_signed(Value& target, const Value& source);    // a signed target, a signed source
void resize(Value& target, unsigned width);
void complement_me(Value& target);
Value twos_complement(const Value& v);

// Reading.
bool sign(const Value& v);  // the value bit at width - 1
int convert_to_signed_representation(const Value& v);
unsigned SignExtendedChunk(const Value& v, int index);  // index within the storage words; any index in compact form
bool positive(const Value& v);
bool negative(const Value& v);
unsigned absolute_value(const Value& v);
unsigned maximum_negative(const Value& v);
unsigned maximum_positive(const Value& v);

// Operators; the letters tell which operands are signed: ss, su (signed left), us (signed right). Division functions
// throw a std::string with the message.
Value add_ss(const Value& a, const Value& b);
Value add_su(const Value& a, const Value& b);
Value add_us(const Value& a, const Value& b);
Value sub_ss(const Value& a, const Value& b);
Value sub_su(const Value& a, const Value& b);
Value sub_us(const Value& a, const Value& b);
Value mul_ss(const Value& a, const Value& b);
Value mul_su(const Value& a, const Value& b);
Value mul_us(const Value& a, const Value& b);
Value shr(const Value& a, unsigned count);
void shr_assign(Value& target, unsigned count);
bool equal_ss(const Value& a, const Value& b);
bool equal_su(const Value& a, const Value& b);
bool equal_us(const Value& a, const Value& b);
bool less_ss(const Value& a, const Value& b);
bool less_su(const Value& a, const Value& b);
bool less_us(const Value& a, const Value& b);
bool less_equal_ss(const Value& a, const Value& b);
bool less_equal_su(const Value& a, const Value& b);
bool less_equal_us(const Value& a, const Value& b);
bool greater_ss(const Value& a, const Value& b);
bool greater_su(const Value& a, const Value& b);
bool greater_us(const Value& a, const Value& b);
bool greater_equal_ss(const Value& a, const Value& b);
bool greater_equal_su(const Value& a, const Value& b);
bool greater_equal_us(const Value& a, const Value& b);
Value div_ss(const Value& a, const Value& b);
Value div_su(const Value& a, const Value& b);
Value div_us(const Value& a, const Value& b);
Value rem_ss(const Value& a, const Value& b);
Value rem_su(const Value& a, const Value& b);
Value rem_us(const Value& a, const Value& b);
Value posr_div_ss(const Value& a, const Value& b);
Value posr_div_su(const Value& a, const Value& b);
Value posr_div_us(const Value& a, const Value& b);
Value posr_mod_ss(const Value& a, const Value& b);
Value posr_mod_su(const Value& a, const Value& b);
Value posr_mod_us(const Value& a, const Value& b);

}  // namespace model::signed_value
