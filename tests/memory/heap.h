// The heap of the memory tests: new and delete of the whole program, those of the shared library included, use it.
#pragma once

#include <cstddef>

namespace heap {

/// Blocks given out so far.
std::size_t allocations();
/// Blocks given out and not yet released.
std::size_t live_blocks();
/// The bytes in them.
std::size_t live_bytes();
/// Releases, since the last call, of a block with an overwritten guard or by the wrong form of delete.
std::size_t take_damages();
/// What fresh memory holds from now on, byte by byte.
void fill_fresh_memory_with(unsigned char pattern);

/// While it lives, its n-th allocation (the first is 1) throws std::bad_alloc.
class FailingAllocation {
  public:
    explicit FailingAllocation(std::size_t n);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

/// While it lives, this thread keeps the arrays of dead values for its next ones. Else they go to the heap at once, so
/// that the tests see every one.
class KeptArrays {
  public:
    KeptArrays();
    ~KeptArrays();
    KeptArrays(const KeptArrays&) = delete;
    KeptArrays& operator=(const KeptArrays&) = delete;
};

}  // namespace heap
