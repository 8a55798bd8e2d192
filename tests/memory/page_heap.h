// A heap for arrays only, each of them alone on its page between two unmapped ones: one byte too far is a fault.
#pragma once

#include <cstddef>

namespace page_heap {

/// Where an array lies on its page: its end, or its beginning, is that of the page.
enum class Placement { End, Beginning };

/// Of every array from now on.
void place_at(Placement placement);
/// Arrays given out so far.
std::size_t allocations();

/// While it lives, a fault is reported to standard error as one in this task; the name must live as long.
class Task {
  public:
    explicit Task(const char* name);
    ~Task();
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
};

/// While it lives, the page of a released array faults, until all the other pages have been used.
class ReleasedFaults {
  public:
    ReleasedFaults();
    ~ReleasedFaults();
    ReleasedFaults(const ReleasedFaults&) = delete;
    ReleasedFaults& operator=(const ReleasedFaults&) = delete;
};

}  // namespace page_heap
