// waves FILE: runs a counter, a shift register and a bus with two drivers, all unknown or floating at first, and writes
// what happens to FILE, a waveform in the VCD format.
#include <kval.h>

#include <cstdio>
#include <fstream>

#include "vcd.h"

namespace {

const KVAL_UINTEGER& floating() {
    static const KVAL_UINTEGER nothing = KVAL_UINTEGER(0, 16).force_z();
    return nothing;
}

// What two drivers make of a bus: a bit on which they disagree is unknown.
KVAL_UINTEGER resolve(const KVAL_UINTEGER& a, const KVAL_UINTEGER& b) {
    if (a.is_z()) return b;
    if (b.is_z()) return a;
    KVAL_UINTEGER bus = a;
    const KVAL_UINTEGER conflict = a ^ b;
    for (unsigned pos = 0; pos < bus.bitwidth(); ++pos) {
        if (conflict.bit(pos) != 0) bus.set_x(static_cast<int>(pos));
    }
    return bus;
}

bool within(unsigned long time, unsigned long begin, unsigned long end) { return begin <= time && time < end; }

struct Model {
    KVAL_UINTEGER clock{0, 1};
    KVAL_UINTEGER reset{0, 1};
    KVAL_UINTEGER serial{0, 1};
    KVAL_UINTEGER count{0, 8};
    KVAL_UINTEGER shift{0, 8};
    KVAL_UINTEGER bus{floating()};
    KVAL_UINTEGER ready{0, 1};

    Model() {
        count.force_x();  // registers power up unknown
        shift.force_x();
    }

    // Inputs change with the falling edge.
    void drive_inputs(unsigned long time) {
        static constexpr char bits[] = "110100111001011010010";
        reset = within(time, 10, 30) ? 1U : 0U;
        serial = bits[time / 10] == '1' ? 1U : 0U;
    }

    // An unknown counter stays unknown when it counts, and is known by reset only. A shift register becomes known bit
    // by bit.
    void clock_registers() {
        if (reset == 1U) {
            count = 0U;
        } else {
            ++count;
        }
        shift <<= 1;
        shift.set_bit(0, serial.uint());
    }

    // The processor and the memory drive the bus in turns, but the second time the processor begins too early. Ready is
    // an open-drain line: pulled up, unless the memory pulls it down.
    void drive_bus(unsigned long time) {
        const KVAL_UINTEGER request = KVAL_UINTEGER(0xA500, 16) | count;
        const KVAL_UINTEGER answer(0xBEEF, 16);
        const bool processor = within(time, 40, 80) || within(time, 140, 160);
        bus = resolve(processor ? request : floating(), within(time, 100, 150) ? answer : floating());
        ready = 0U;
        if (!within(time, 80, 100)) ready.force_wh();
    }

    void step(unsigned long time) {
        clock = time % 10 == 5 ? 1U : 0U;
        if (clock == 1U) {
            clock_registers();
        } else {
            drive_inputs(time);
        }
        drive_bus(time);
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: waves FILE\n", stderr);
        return 2;
    }
    std::ofstream file(argv[1]);
    Model model;
    VcdWriter vcd(file, "waves", "1 ns");
    vcd.add("clock", model.clock);
    vcd.add("reset", model.reset);
    vcd.add("serial", model.serial);
    vcd.add("count", model.count);
    vcd.add("shift", model.shift);
    vcd.add("bus", model.bus);
    vcd.add("ready", model.ready);
    for (unsigned long time = 0; time <= 200; time += 5) {
        model.step(time);
        vcd.sample(time);
    }
    file.close();
    if (!file) {
        std::perror(argv[1]);
        return 1;
    }
    return 0;
}
