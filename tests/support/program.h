// Programs over registers: every operation of the table as an instruction, library and model in lock step.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "model/generator_model.h"
#include "operations.h"
#include "twin.h"

namespace twin {

// What a step asks a register for that has no cached text afterwards: the text it had before, so that one that was
// wrongly kept shows; nothing; or a text of either kind. Cached texts are compared in any case.
enum class Ask { AsBefore, Nothing, HexText, BinText };

// The registers of an instruction, and what it takes beside them.
struct Operands {
    unsigned target = 0;
    unsigned left = 0;
    unsigned right = 0;
    unsigned number = 0;  // what it stands for, the action's argument says
    unsigned word = 0;    // what is stored
    std::string text;     // what is parsed
    Ask ask = Ask::AsBefore;
};

// The registers, and a generator of their own that randomising draws from, beside its model. Every register may be read
// as signed and as unsigned. There is one machine at a time.
class Machine {
  public:
    explicit Machine(const std::vector<Content>& registers);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine();

    Twin& operator[](unsigned index) { return registers_[index % size()]; }
    [[nodiscard]] unsigned size() const { return static_cast<unsigned>(registers_.size()); }
    model::Generator& generator() { return generator_; }

  private:
    std::vector<Twin> registers_;
    model::Generator generator_;
    std::array<unsigned char, 64> buffer_{};  // of the library's generator
    void* former_buffer_;
};

// Which of the operands an action looks at, beside the number.
enum Uses : unsigned { kTarget = 1, kLeft = 2, kRight = 4, kWord = 8, kText = 16 };

struct Action {
    std::string name;
    unsigned uses;
    Argument argument;  // what the number stands for
    std::function<testing::AssertionResult(Machine&, const Operands&)> run;
};

// Rows of the table of operations that give new values are here twice: assigned to the target, and replacing it.
const std::vector<Action>& actions();

// The action of this name; throws std::out_of_range where there is none.
const Action& action_named(const std::string& name);

// The register that decides which numbers are worth trying.
const Twin& subject(Machine& machine, const Action& action, const Operands& operands);

// Whether this step would make a value that is too wide for a test; run() passes it over.
bool is_too_wide(Machine& machine, const Action& action, const Operands& operands);

// Runs one step and compares all registers that it uses, texts included. A failure shows the registers as they were.
testing::AssertionResult run(Machine& machine, const Action& action, const Operands& operands);

// Compares all registers, and their texts of this kind.
testing::AssertionResult same(Machine& machine, Text kind);

}  // namespace twin
