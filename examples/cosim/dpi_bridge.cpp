// The program around the simulated design: the clock, and kval_cycle, which the testbench calls through DPI-C and which
// exchanges the values of its signals with the lock step.
#include <Vtb.h>
#include <Vtb__Dpi.h>
#include <svdpi.h>
#include <verilated.h>

#include <kval/vpi.h>

#include <cstdio>
#include <exception>

#include "lockstep.h"

namespace {

constexpr unsigned kHalfPeriod = 5;
constexpr int kRandomBits = 2;  // for rand+reset: every bit of the power-up values is drawn

Lockstep* running = nullptr;
bool broken = false;

KVAL_UINTEGER one_bit(svBit bit) { return {bit, 1}; }

bool run_cycle(std::uint64_t now, const AluOutputs& outputs) {
    try {
        return running->step(now, outputs);
    } catch (const std::exception& error) {
        std::printf("kval_cycle: %s\n", error.what());
    } catch (const char* message) {  // what the library throws itself
        std::printf("kval_cycle: %s\n", message);
    }
    broken = true;
    return false;
}

void run(VerilatedContext& context) {
    Vtb testbench(&context);
    for (testbench.clk = 1; !context.gotFinish(); testbench.clk ^= 1) {
        testbench.eval();
        context.timeInc(kHalfPeriod);
    }
    testbench.final();
}

}  // namespace

int kval_cycle(long long now, const svBitVecVal* result, svBit carry, svBit equal, svBit less,
               const svBitVecVal* accumulator, svBitVecVal* op, svBitVecVal* ra, svBitVecVal* rb, svBitVecVal* rd,
               svBit* write, svBitVecVal* shift, svLogicVecVal* data) {
    AluOutputs outputs;
    outputs.result = kval::from_bitvec(result, kDataBits);
    outputs.carry = one_bit(carry);
    outputs.equal = one_bit(equal);
    outputs.less = one_bit(less);
    outputs.accumulator = kval::from_bitvec(accumulator, kAccumulatorBits);

    const bool goes_on = run_cycle(static_cast<std::uint64_t>(now), outputs);
    const AluInputs& inputs = running->inputs();
    kval::to_bitvec(inputs.op, op);
    kval::to_bitvec(inputs.ra, ra);
    kval::to_bitvec(inputs.rb, rb);
    kval::to_bitvec(inputs.rd, rd);
    *write = inputs.write.is_one() ? 1 : 0;
    kval::to_bitvec(inputs.shift, shift);
    kval::to_vecval(inputs.data, data);
    return goes_on ? 1 : 0;
}

int main(int argc, char** argv) {
    try {
        const Settings settings = read_settings(argc, argv);
        VerilatedContext context;
        context.randReset(kRandomBits);
        context.randSeed(settings.seed);
        context.commandArgs(argc, argv);  // +verilator+seed+N and +verilator+rand+reset+N override
        Lockstep lockstep(settings, States::kTwo, "tb.alu");
        std::printf("power-up values by +verilator+rand+reset+%d +verilator+seed+%d\n", context.randReset(),
                    context.randSeed());
        running = &lockstep;
        run(context);
        return lockstep.failed() || broken ? 1 : 0;
    } catch (const std::exception& error) {
        std::printf("%s\n", error.what());
        return 1;
    }
}
