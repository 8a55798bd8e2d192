// The reference model of alu.v: the same registers, clocked with the same inputs.
#pragma once

#include <kval.h>

#include <vector>

// The operations, by their codes in alu.v.
enum class Operation : unsigned {
    kLoad,
    kAnd,
    kOr,
    kXor,
    kNot,
    kAdd,
    kSubtract,
    kMultiply,
    kShiftLeft,
    kShiftRight,
    kShiftRightSigned,
    kSwap,
    kDivide,
    kRemainder,
    kMultiplyAccumulate,
    kClear
};

constexpr unsigned kDataBits = 40;
constexpr unsigned kAccumulatorBits = 2 * kDataBits;
constexpr unsigned kRegisters = 8;

// What drives the ports of alu; all but `data` are known.
struct AluInputs {
    KVAL_UINTEGER op{0, 4};
    KVAL_UINTEGER ra{0, 3};
    KVAL_UINTEGER rb{0, 3};
    KVAL_UINTEGER rd{0, 3};
    KVAL_UINTEGER write{0, 1};
    KVAL_UINTEGER shift{0, 6};
    KVAL_UINTEGER data{0, kDataBits};
};

// The outputs of alu, made without a known bit.
struct AluOutputs {
    AluOutputs();

    KVAL_UINTEGER result{0, kDataBits};
    KVAL_UINTEGER carry{0, 1};
    KVAL_UINTEGER equal{0, 1};
    KVAL_UINTEGER less{0, 1};
    KVAL_UINTEGER accumulator{0, kAccumulatorBits};
};

// A port: its name in alu.v, and where its value is.
template <typename Ports>
struct Port {
    const char* name;
    KVAL_UINTEGER Ports::*value;
};

constexpr Port<AluInputs> kInputPorts[] = {
    {"op", &AluInputs::op},       {"ra", &AluInputs::ra},       {"rb", &AluInputs::rb},     {"rd", &AluInputs::rd},
    {"write", &AluInputs::write}, {"shift", &AluInputs::shift}, {"data", &AluInputs::data},
};

constexpr Port<AluOutputs> kOutputPorts[] = {
    {"result", &AluOutputs::result},
    {"carry", &AluOutputs::carry},
    {"equal", &AluOutputs::equal},
    {"less", &AluOutputs::less},
    {"accumulator", &AluOutputs::accumulator},
};

class AluModel {
  public:
    AluModel();

    // One rising edge.
    void clock(const AluInputs& inputs);

    // As after the last one; before the first, unknown.
    const AluOutputs& outputs() const { return outputs_; }

    // The registers that the inputs name as operands.
    const KVAL_UINTEGER& operand_a(const AluInputs& inputs) const { return registers_[inputs.ra.uint()]; }
    const KVAL_UINTEGER& operand_b(const AluInputs& inputs) const { return registers_[inputs.rb.uint()]; }

  private:
    void accumulate(Operation operation, const KVAL_UINTEGER& a, const KVAL_UINTEGER& b);

    std::vector<KVAL_UINTEGER> registers_;
    AluOutputs outputs_;
};
