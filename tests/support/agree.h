// Runs one operation of the table on twins and tells, with all operands, whether library and model agree.
#pragma once

#include <gtest/gtest.h>

#include "operations.h"
#include "twin.h"

namespace twin {

// The operands stay as they are; an operation in place gets a copy with the same cached text. The text of a result is
// looked at too: `ask` is the kind to ask for where none may be cached.
testing::AssertionResult agree(const Binary& operation, const Twin& l, const Twin& r, Text ask);
testing::AssertionResult agree(const Relation& operation, const Twin& l, const Twin& r);
testing::AssertionResult agree(const InPlace& operation, const Twin& l, const Twin& r, Text ask);
testing::AssertionResult agree_on_itself(const InPlace& operation, const Twin& v, Text ask);
testing::AssertionResult agree(const Derived& operation, const Twin& v, unsigned number, Text ask);
testing::AssertionResult agree(const Query& operation, const Twin& v, unsigned number);
testing::AssertionResult agree(const Change& operation, const Twin& v, unsigned number, Text ask);

// Runs an operation that changes `target` and compares everything but the text, which stays cached or dropped as the
// operation left it. New values are assigned to `target`; where an operator throws, it stays as it is.
testing::AssertionResult apply(const InPlace& operation, Twin& target, const Twin& other);
testing::AssertionResult apply(const Change& operation, Twin& target, unsigned number);
testing::AssertionResult apply(const Binary& operation, Twin& target, const Twin& l, const Twin& r);
testing::AssertionResult apply(const Derived& operation, Twin& target, const Twin& v, unsigned number);

// As apply, but `target` becomes the new value, width and all, after that was compared.
testing::AssertionResult replace(const Binary& operation, Twin& target, const Twin& l, const Twin& r);
testing::AssertionResult replace(const Derived& operation, Twin& target, const Twin& v, unsigned number);

}  // namespace twin
