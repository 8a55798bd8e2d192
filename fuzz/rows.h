// C++ source text for the rows of a test.
#pragma once

#include <string>

namespace fuzz {

// A string literal; what cannot be read is an octal escape of three digits, which no character after it can continue.
std::string literal(const std::string& text);

}  // namespace fuzz
