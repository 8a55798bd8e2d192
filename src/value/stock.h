// The stock of arrays. Most of the cost of a short-lived large value would be the heap's, so every thread keeps the
// arrays of its dead large values for its next ones.
#pragma once

#include <utility>

#include "kval/detail/planes.h"
#include "words/word.h"

namespace kval {

using words::Word;

/// The two arrays of a large value, of equal length.
struct Arrays {
    Word* value;
    Word* mask;
};

/// Pairs of arrays of one length: a queue in a ring. `taken` and `given` count, modulo 2^32, the pairs that were taken
/// out of it and put into it; it holds `room` of them at most.
///
/// Last in, first out would need only one counter, but every value would wait for what the one before it has just put
/// back. To spare a similar wait, the two addresses of a pair do not stand side by side: compilers would copy both at
/// once out of a value whose fields have just been written one by one, and processors are slow at that.
struct Shelf {
    enum : std::uint32_t { kSlots = 16 };

    std::uint32_t taken;
    std::uint32_t given;
    std::uint32_t room;
    Word* values[kSlots];
    Word* masks[kSlots];

    bool HasOne() const noexcept { return __builtin_expect(taken != given, true); }
    bool HasRoom() const noexcept { return __builtin_expect(given - taken < room, true); }
    Arrays Take() noexcept {
        const std::uint32_t slot = taken++ % kSlots;
        Arrays arrays = {values[slot], masks[slot]};
        __asm__("" : "+r"(arrays.value), "+r"(arrays.mask));  // each in a register of its own, for the same reason
        return arrays;
    }
    void Give(Word* value, Word* mask) noexcept {
        const std::uint32_t slot = given++ % kSlots;
        values[slot] = value;
        masks[slot] = mask;
    }
};

/// A shelf for every length, in words, up to that of a sum of 1024 bits and a little more; longer arrays are kept
/// elsewhere. All zero, it is a stock without room: always empty and always full.
struct Stock {
    enum : std::size_t { kLongest = 36 };
    Shelf shelves[kLongest + 1];
};

/// This thread's stock; before its start and after its end, one without room, which is never written to. The
/// initial-exec model spares a call at every access, and takes one pointer of the few bytes that a library loaded later
/// may have.
extern __thread Stock* stock __attribute__((tls_model("initial-exec")));

/// Two arrays where the shelf has none: from the longer ones that are kept, or new. Throws std::bad_alloc, and then
/// leaves nothing behind.
Arrays new_arrays(std::size_t words);
/// Takes back two arrays for which the shelf has no room: they are kept with the longer ones, or go back to the heap.
void delete_arrays(const Arrays& arrays, std::size_t words) noexcept;

/// Two arrays of `words` words, not yet written. Throws std::bad_alloc, and then leaves nothing behind.
inline Arrays take_arrays(std::size_t words) {
    if (words <= Stock::kLongest) {
        Shelf& shelf = stock->shelves[words];
        if (shelf.HasOne()) return shelf.Take();
    }
    return new_arrays(words);
}

/// Gives back two arrays of exactly `words` words.
inline void give_arrays(const Arrays& arrays, std::size_t words) noexcept {
    if (words <= Stock::kLongest) {
        Shelf& shelf = stock->shelves[words];
        if (shelf.HasRoom()) {
            shelf.Give(arrays.value, arrays.mask);
            return;
        }
    }
    delete_arrays(arrays, words);
}

/// Arrays that go back to the stock unless they are handed out.
class OwnedArrays {
  public:
    /// Throws std::bad_alloc.
    explicit OwnedArrays(std::size_t words) : arrays_(take_arrays(words)), words_(words) {}
    ~OwnedArrays() {
        if (arrays_.value != nullptr) give_arrays(arrays_, words_);
    }
    OwnedArrays(const OwnedArrays&) = delete;
    OwnedArrays& operator=(const OwnedArrays&) = delete;

    [[nodiscard]] const Arrays& get() const { return arrays_; }
    Arrays release() { return std::exchange(arrays_, Arrays{}); }

  private:
    Arrays arrays_;
    std::size_t words_;
};

}  // namespace kval
