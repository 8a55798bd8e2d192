// The VPI module: brings $kval_cycle, which exchanges the values of the testbench's signals with the lock step.
#include <vpi_user.h>

#include <kval/vpi.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "lockstep.h"

#ifndef ICARUS_VPI_CONST
#define ICARUS_VPI_CONST
#endif

namespace {

vpiHandle signal(vpiHandle scope, const std::string& name, unsigned width) {
    vpiHandle handle = vpi_handle_by_name(name.c_str(), scope);
    if (handle == nullptr) throw std::runtime_error("the testbench has no signal " + name);
    if (vpi_get(vpiSize, handle) != static_cast<PLI_INT32>(width)) {
        throw std::runtime_error("the width of " + name + " is not what the model has");
    }
    return handle;
}

void read(vpiHandle handle, KVAL_UINTEGER& value) {
    s_vpi_value simulated{};
    simulated.format = vpiVectorVal;
    vpi_get_value(handle, &simulated);  // points the vector at memory of the simulator's
    value = kval::from_vecval(simulated.value.vector, value.bitwidth());
}

void drive(vpiHandle handle, const KVAL_UINTEGER& value) {
    std::vector<s_vpi_vecval> vec(static_cast<std::size_t>(value.get_size()));
    kval::to_vecval(value, vec.data());
    s_vpi_value simulated{};
    simulated.format = vpiVectorVal;
    simulated.value.vector = vec.data();
    vpi_put_value(handle, &simulated, nullptr, vpiNoDelay);
}

std::uint64_t now() {
    s_vpi_time time{};
    time.type = vpiSimTime;
    vpi_get_time(nullptr, &time);
    return std::uint64_t{time.high} << 32 | time.low;
}

Settings settings() {
    s_vpi_vlog_info info{};
    vpi_get_vlog_info(&info);
    return read_settings(info.argc, info.argv);
}

// The signals of the module that calls $kval_cycle, found once, and the run.
class Testbench {
  public:
    explicit Testbench(vpiHandle scope)
        : lockstep_(settings(), States::kFour, std::string(vpi_get_str(vpiFullName, scope)) + ".alu") {
        for (const auto& port : kOutputPorts)
            outputs_.push_back(signal(scope, port.name, (AluOutputs().*port.value).bitwidth()));
        for (const auto& port : kInputPorts)
            inputs_.push_back(signal(scope, port.name, (AluInputs().*port.value).bitwidth()));
    }

    void cycle() {
        AluOutputs outputs;
        std::size_t i = 0;
        for (const auto& port : kOutputPorts) read(outputs_[i++], outputs.*port.value);
        if (!lockstep_.step(now(), outputs)) return finish(lockstep_.failed());
        i = 0;
        for (const auto& port : kInputPorts) drive(inputs_[i++], lockstep_.inputs().*port.value);
    }

    // The exit status is an extension of Icarus Verilog; the standard has none.
    static void finish(bool failed) {
        vpip_set_return_value(failed ? 1 : 0);
        vpi_control(vpiFinish, 0);
    }

  private:
    Lockstep lockstep_;
    std::vector<vpiHandle> outputs_;
    std::vector<vpiHandle> inputs_;
};

void cycle() {
    static Testbench testbench(vpi_handle(vpiScope, vpi_handle(vpiSysTfCall, nullptr)));
    testbench.cycle();
}

// Nothing may be thrown through the simulator, which is written in another language or built without exceptions.
PLI_INT32 call(ICARUS_VPI_CONST PLI_BYTE8* /*unused*/) {
    try {
        cycle();
        return 0;
    } catch (const std::exception& error) {
        std::printf("$kval_cycle: %s\n", error.what());
    } catch (const char* message) {  // what the library throws itself
        std::printf("$kval_cycle: %s\n", message);
    }
    Testbench::finish(true);
    return 0;
}

void register_task() {
    s_vpi_systf_data task{};
    task.type = vpiSysTask;
    task.tfname = "$kval_cycle";
    task.calltf = call;
    vpi_register_systf(&task);
}

}  // namespace

extern "C" {
// What the simulator looks for when it has loaded the module.
void (*vlog_startup_routines[])() = {register_task, nullptr};
}
