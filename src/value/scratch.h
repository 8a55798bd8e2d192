// The one temporary array of an operation.
#pragma once

#include <memory>

#include "words/word.h"

namespace kval {

/// `size` words, not yet written, on the heap unless there are few. Throws std::bad_alloc.
class Scratch {
  public:
    explicit Scratch(std::size_t size)
        : many_(size > kFew ? std::make_unique_for_overwrite<words::Word[]>(size) : nullptr) {}
    words::Word* words() { return many_ ? many_.get() : few_; }

  private:
    static constexpr std::size_t kFew = 4;
    words::Word few_[kFew];
    std::unique_ptr<words::Word[]> many_;
};

}  // namespace kval
