// The reference model of alu.v: what it does at a rising edge. How unknown operands count is verilog_rules.h's
// business.
#include "alu_model.h"

#include "verilog_rules.h"

namespace {

constexpr unsigned kHalf = kDataBits / 2;
constexpr unsigned kDividerBits = 32;

KVAL_UINTEGER swapped(const KVAL_UINTEGER& a) {
    if (a.is_z()) return a;
    return verilog::part(a, kHalf, kDataBits) | verilog::shift_left(a, kHalf);
}

// The combinational part: the result; of an addition or subtraction {carry, result}; of a division 32 bits, which the
// assignment to the output extends by zeros. Assignment copies X bits and flag Z too, as Verilog's does.
KVAL_UINTEGER computed(Operation operation, const KVAL_UINTEGER& a, const KVAL_UINTEGER& b, const AluInputs& inputs) {
    const unsigned shift = inputs.shift.uint();
    switch (operation) {
        case Operation::kLoad:
            return inputs.data;
        case Operation::kAnd:
            return verilog::bit_and(a, b);
        case Operation::kOr:
            return verilog::bit_or(a, b);
        case Operation::kXor:
            return verilog::bit_xor(a, b);
        case Operation::kNot:
            return verilog::bit_not(a);
        case Operation::kAdd:
            return verilog::add(a, b);
        case Operation::kSubtract:
            return verilog::subtract(a, b);
        case Operation::kMultiply:
            return verilog::part(verilog::multiply(a, b), 0, kDataBits);
        case Operation::kShiftLeft:
            return verilog::shift_left(a, shift);
        case Operation::kShiftRight:
            return verilog::shift_right(a, shift);
        case Operation::kShiftRightSigned:
            return verilog::shift_right_signed(a, shift);
        case Operation::kSwap:
            return swapped(a);
        case Operation::kDivide:
            return verilog::divide(verilog::part(a, 0, kDividerBits), verilog::part(b, 0, kDividerBits));
        case Operation::kRemainder:
            return verilog::remainder(verilog::part(a, 0, kDividerBits), verilog::part(b, 0, kDividerBits));
        case Operation::kMultiplyAccumulate:
            return a;
        case Operation::kClear:
            return b;
    }
    return verilog::unknown(kDataBits);
}

bool carries(Operation operation) { return operation == Operation::kAdd || operation == Operation::kSubtract; }

}  // namespace

AluOutputs::AluOutputs() {
    for (const auto& port : kOutputPorts) (this->*port.value).force_x();
}

AluModel::AluModel() : registers_(kRegisters, verilog::unknown(kDataBits)) {}

// += keeps the width: the sum wraps.
void AluModel::accumulate(Operation operation, const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    KVAL_UINTEGER& accumulator = outputs_.accumulator;
    if (operation == Operation::kClear) accumulator = 0;
    if (operation != Operation::kMultiplyAccumulate) return;
    const KVAL_UINTEGER product = verilog::multiply_signed(a, b);
    if (verilog::has_unknown(product) || verilog::has_unknown(accumulator)) {
        accumulator.force_x();
        return;
    }
    accumulator += product;
}

void AluModel::clock(const AluInputs& inputs) {
    const Operation operation = static_cast<Operation>(inputs.op.uint());
    const KVAL_UINTEGER& a = operand_a(inputs);
    const KVAL_UINTEGER& b = operand_b(inputs);

    const KVAL_UINTEGER sum = computed(operation, a, b, inputs);
    outputs_.result = sum;  // cut to its width
    outputs_.carry = carries(operation) ? verilog::part(sum, kDataBits, 1) : KVAL_UINTEGER(0, 1);
    outputs_.equal = verilog::equal(a, b);
    outputs_.less = verilog::less_signed(a, b);
    accumulate(operation, a, b);
    if (inputs.write.is_one()) registers_[inputs.rd.uint()] = outputs_.result;
}
