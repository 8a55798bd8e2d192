// What the bytes of an input mean to each target: run in lock step with the model, and told as rows of a test.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <vector>

#include "support/twin.h"

namespace fuzz {

// Runs an input, and says where library and model differ. Every step is told to `rows`, if there is one, before it is
// run: in the form of the tables of tests/regression.
using Target = testing::AssertionResult(const std::uint8_t* data, std::size_t size, std::ostream* rows);

Target run_program;    // operations over registers
Target run_text;       // one text, parsed and printed
Target run_generator;  // calls of the generator, in buffers

// What the registers of every program hold at first.
const std::vector<twin::Content>& first_contents();

}  // namespace fuzz
