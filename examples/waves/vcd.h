// A writer of waveforms in the VCD format (value change dump, IEEE 1364), for values of a model.
#ifndef VCD_H
#define VCD_H

#include <kval.h>

#include <ostream>
#include <string>
#include <vector>

/// Watches values and writes down how they change. The values stay where they are, and as wide as they are, while it
/// lives.
class VcdWriter {
  public:
    /// Writes to `out` about the module `scope`; times count in `unit`, such as "1 ns".
    VcdWriter(std::ostream& out, const std::string& scope, const std::string& unit);

    /// A value to be watched; not after the first sample.
    void add(const std::string& name, const KVAL_UINTEGER& value);
    /// Writes what has changed since the last sample, and all that there is the first time. Times ascend.
    void sample(unsigned long time);

  private:
    struct Signal {
        const KVAL_UINTEGER* value;
        std::string id;
        std::string digits;  // as written last
    };

    std::ostream& out_;
    std::vector<Signal> signals_;
    bool declared_ = false;
};

#endif
