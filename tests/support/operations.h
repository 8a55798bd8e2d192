// The table of operations: each operator named once, with what the library does beside what the model does.
#pragma once

#include <vector>

#include "kval.h"
#include "model/model.h"

namespace twin {

// What the number that some operations take stands for; it decides which numbers are worth trying.
enum class Argument {
    None,      // nothing: the operation does not look at it
    Number,    // an operand
    Count,     // a shift count, or another one where every number goes
    Distance,  // a shift count that is not negative when read as signed
    Growth,    // a shift count by which the result grows
    Position,  // a bit position, read as signed where the operation takes a signed one
    Index,     // a word index, read as signed
    Width      // a width in bits
};

template <typename Library, typename Model>
struct Operation {
    const char* name;
    Library* library;
    Model* model;
};

template <typename Library, typename Model>
struct NumberOperation {
    const char* name;
    Argument argument;
    Library* library;
    Model* model;
};

// Between two values. The in-place ones return their left operand; both operands may be the same object.
using Binary = Operation<KVAL_UINTEGER(const KVAL_UINTEGER&, const KVAL_UINTEGER&),
                         model::Value(const model::Value&, const model::Value&)>;
using Relation =
    Operation<bool(const KVAL_UINTEGER&, const KVAL_UINTEGER&), bool(const model::Value&, const model::Value&)>;
using InPlace =
    Operation<KVAL_UINTEGER&(KVAL_UINTEGER&, const KVAL_UINTEGER&), void(model::Value&, const model::Value&)>;

// Of one value, most of them with a number: a new value, an answer, and a change in place.
using Derived =
    NumberOperation<KVAL_UINTEGER(const KVAL_UINTEGER&, unsigned), model::Value(const model::Value&, unsigned)>;
using Query = NumberOperation<unsigned(const KVAL_UINTEGER&, unsigned), unsigned(const model::Value&, unsigned)>;
using Change = NumberOperation<KVAL_UINTEGER&(KVAL_UINTEGER&, unsigned), void(model::Value&, unsigned)>;

// The rows of the unsigned operators, and behind them those of the signed and mixed ones.
const std::vector<Binary>& binary_operations();
const std::vector<Relation>& relations();
const std::vector<InPlace>& in_place_operations();
const std::vector<Derived>& derived_values();
const std::vector<Query>& queries();
const std::vector<Change>& changes();

}  // namespace twin
