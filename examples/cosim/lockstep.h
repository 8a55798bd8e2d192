// A design and its reference model in lock step, whichever simulator runs the design: draws the inputs, clocks the
// model, compares the outputs, and reports.
#pragma once

#include <kval.h>

#include <cstdint>
#include <string>

#include "alu_model.h"

// What the simulator can say of a bit.
enum class States {
    kFour,  // 0, 1, X and Z: where the model has an X, the design must have one
    kTwo    // 0 and 1, unknown ones by chance: where the model has an X, the design may have either
};

struct Settings {
    std::uint64_t cycles = 100000;
    int seed = 1;
    bool progress = false;  // print "progress CYCLES" about ten times
};

// From the simulator's arguments +cycles=N, +seed=N and +progress; others are the simulator's own. Throws
// std::invalid_argument.
Settings read_settings(int argc, const char* const* argv);

class Lockstep {
  public:
    // `instance` is the path of the design's instance, for reports.
    Lockstep(const Settings& settings, States states, std::string instance);

    // One cycle, before the clock rises: compares the outputs with the model's, then draws the next inputs and clocks
    // the model with them. False when the run is over: on the first cycle that differs, or when all have been compared.
    bool step(std::uint64_t time, const AluOutputs& design);

    // To be driven after step().
    const AluInputs& inputs() const { return inputs_; }

    bool failed() const { return failed_; }

  private:
    struct Counts {
        std::uint64_t known = 0;
        std::uint64_t x = 0;
        std::uint64_t z = 0;
    };

    bool matches(const KVAL_UINTEGER& design, const KVAL_UINTEGER& model);
    void compare(std::uint64_t time, const AluOutputs& design);
    void report(const char* port, const KVAL_UINTEGER& design, const KVAL_UINTEGER& model) const;
    void describe_cycle() const;
    void draw_inputs();
    void show_progress() const;
    void summarize() const;

    Settings settings_;
    States states_;
    std::string instance_;
    AluModel model_;
    AluInputs inputs_;
    KVAL_UINTEGER a_{0, kDataBits};  // the operands of the last clock, for reports
    KVAL_UINTEGER b_{0, kDataBits};
    std::uint64_t cycle_ = 0;
    Counts bits_;
    bool failed_ = false;
};
