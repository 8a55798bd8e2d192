// The reference model: every operation of the unsigned value computed bit by bit, the slow and obvious way.
//
// The model shares no code, no type and no algorithm with the library. A test runs the same operation on both and
// compares all that a caller can see: width, stored bits, x-mask, flags and cached text.
#pragma once

#include <string>
#include <vector>

namespace model {

enum class Text { None, Hexadecimal, Binary };

// A value as the library stores it. `value` and `mask` have one entry per stored bit, 32 for every storage word, so the
// positions between the width and the end of the top word ("stray bits") can be modelled too. A width of 1 to 32 has
// one word, a wider one (width + 31) / 32 words.
struct Value {
    unsigned width = 1;
    std::vector<unsigned char> value;  // one 0 or 1 in each
    std::vector<unsigned char> mask;
    bool x = false;
    bool z = false;
    bool wl = false;
    bool wh = false;
    Text kind = Text::None;  // which text is cached, if any
    std::string text;        // the cached text; may hold zero bytes when marks and flag letters collide

    [[nodiscard]] unsigned words() const;               // storage words
    [[nodiscard]] unsigned word(unsigned index) const;  // 32 stored value bits, 0 beyond the storage
    [[nodiscard]] unsigned mask_word(unsigned index) const;
};

// Construction, copying, resizing. Copies never carry text.
Value make(unsigned number, unsigned width);
Value copy(const Value& other);
Value shifted_copy(const Value& other, int count, bool left);
void assign(Value& target, const Value& source);  // `target` and `source` may be the same object
void assign(Value& target, unsigned number);
void resize(Value& target, unsigned width);
void enforce_width(Value& target);
void delete_string(Value& target);

// Access. `bit` and `set_bit` throw a std::string with the message where the library throws one.
unsigned bit(const Value& v, unsigned pos);
unsigned uint(const Value& v);
bool is_zero(const Value& v);
bool is_one(const Value& v);
unsigned get_uvalue_at(const Value& v, int index);
unsigned get_xmask_at(const Value& v, int index);
bool is_x(const Value& v, int pos, int nibble);
void set_bit(Value& target, int pos, unsigned bits);
void set_uvalue_at(Value& target, int index, unsigned word);
void set_xmask_at(Value& target, int index, unsigned word);
void set_x(Value& target, int pos);
void force_x(Value& target);
void force_z(Value& target);
void force_wl(Value& target);
void force_wh(Value& target);

// Text: the returned text is also what is cached afterwards.
std::string as_hex_string(Value& v);
std::string as_bin_string(Value& v);
void set_value_from_bin_string(Value& target, const std::string& text);
void set_value_from_hex_string(Value& target, const std::string& text);

// Hashing.
unsigned get_hash(const Value& v, unsigned bits);
unsigned twang_uinthash(unsigned key);
int one_at_a_time(const std::string& key);

// Bitwise logic. In-place forms take the right operand by reference: it may be the target itself.
void and_assign(Value& target, const Value& other);
void or_assign(Value& target, const Value& other);
Value bit_and(const Value& l, const Value& r);
Value bit_or(const Value& l, const Value& r);
Value bit_xor(const Value& l, const Value& r);
Value bit_not(const Value& v);

// Addition and subtraction.
void add_assign(Value& target, const Value& other);
void add_assign(Value& target, unsigned number);
void sub_assign(Value& target, const Value& other);
void sub_assign(Value& target, unsigned number);
void increment(Value& target);
void decrement(Value& target);
Value add(const Value& l, const Value& r);
Value sub(const Value& l, const Value& r);

// Shifts.
void shl_assign(Value& target, unsigned count);
void shr_assign(Value& target, unsigned count);
Value shl(const Value& v, unsigned count);
Value shr(const Value& v, unsigned count);

// Multiplication, division, remainder. Division and remainder throw a std::string with the message.
Value mul(const Value& l, const Value& r);
Value div(const Value& l, const Value& r);
Value rem(const Value& l, const Value& r);

// Comparison.
bool greater(const Value& l, const Value& r);
bool greater_equal(const Value& l, const Value& r);
bool greater(const Value& l, unsigned number);
bool greater_equal(const Value& l, unsigned number);
bool greater(unsigned number, const Value& r);
bool greater_equal(unsigned number, const Value& r);
bool equal(const Value& l, const Value& r);
bool equal(const Value& l, unsigned number);

}  // namespace model
