// Everything that can be seen of a value, copied out of it, to compare states before and after an operation.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "kval.h"

enum class TextKind { None, Hexadecimal, Binary };

struct State {
    unsigned width;
    std::vector<unsigned> value;
    std::vector<unsigned> mask;
    unsigned four_state;  // X 1, Z 2, WL 4, WH 8
    TextKind kind;
    std::string text;
};

bool operator==(const State& a, const State& b);
std::ostream& operator<<(std::ostream& out, const State& state);

State observe(const KVAL_UINTEGER& v);
/// The text that the value keeps, or null; asking does not make one.
const char* cached_text(const KVAL_UINTEGER& v);
