// One text that is parsed into one value: run in lock step with the model.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/twin.h"

namespace fuzz {

struct TextCase {
    twin::Content content;    // what the value holds before
    bool moved_from = false;  // or that it was moved from
    twin::Text kind = twin::Text::Hexadecimal;
    bool null = false;  // no text at all
    std::string text;
};

// Parses and prints, in both bases and back again.
testing::AssertionResult run(const TextCase& test);

}  // namespace fuzz
