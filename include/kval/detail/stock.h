// The arrays of dead wide values, which every thread keeps for its next ones: most of the cost of a short-lived wide
// value is otherwise the heap's.
#ifndef KVAL_DETAIL_STOCK_H
#define KVAL_DETAIL_STOCK_H

namespace kval {
namespace detail {

/// The two arrays of a wide value, of equal length.
struct Planes {
    std::uint32_t* value;
    std::uint32_t* mask;
};

/// Pairs of arrays of one length: a queue in a ring. `taken` and `given` count, modulo 2^32, the pairs that were taken
/// out of it and put into it; it holds `room` of them at most.
///
/// Last in, first out would need one counter, but every value would wait for what the one before it has just put back.
/// For the same reason the two addresses of a pair do not stand side by side: compilers would copy both at once out of
/// a value whose fields have just been written one by one, which processors are slow at.
struct Shelf {
    enum : std::uint32_t { kSlots = 16 };

    std::uint32_t taken;
    std::uint32_t given;
    std::uint32_t room;
    std::uint32_t* values[kSlots];
    std::uint32_t* masks[kSlots];

    bool HasOne() const noexcept { return __builtin_expect(taken != given, true); }
    bool HasRoom() const noexcept { return __builtin_expect(given - taken < room, true); }
    Planes Take() noexcept {
        const std::uint32_t slot = taken++ % kSlots;
        Planes planes = {values[slot], masks[slot]};
        __asm__("" : "+r"(planes.value), "+r"(planes.mask));  // each in a register of its own, for the same reason
        return planes;
    }
    void Give(std::uint32_t* value, std::uint32_t* mask) noexcept {
        const std::uint32_t slot = given++ % kSlots;
        values[slot] = value;
        masks[slot] = mask;
    }
};

/// A shelf for every length, in words, up to that of a sum of 1024 bits and a little more; what is longer is kept
/// elsewhere. All zero, it is a stock without room, always empty and always full.
struct Stock {
    enum : std::size_t { kLongest = 36 };
    Shelf shelves[kLongest + 1];
};

/// This thread's stock. While it has none, and after its end, this is one without room, which is never written to. Of
/// the initial-exec model: one pointer of the few bytes that a library loaded later may have.
extern KVAL_API __thread Stock* stock __attribute__((tls_model("initial-exec")));

/// What the stock does not have: two new arrays. Throws std::bad_alloc, and leaves nothing behind.
KVAL_API Planes NewPlanes(std::size_t words);
/// What the stock does not take: the arrays go back to the heap.
KVAL_API void DeletePlanes(std::uint32_t* value, std::uint32_t* mask, std::size_t words) noexcept;

/// Two arrays of `words` words, not yet written. Throws std::bad_alloc, and leaves nothing behind.
inline Planes TakePlanes(std::size_t words) {
    if (words <= Stock::kLongest) {
        Shelf& shelf = stock->shelves[words];
        if (shelf.HasOne()) return shelf.Take();
    }
    return NewPlanes(words);
}

/// Gives back two arrays of exactly `words` words.
inline void GivePlanes(std::uint32_t* value, std::uint32_t* mask, std::size_t words) noexcept {
    if (words <= Stock::kLongest) {
        Shelf& shelf = stock->shelves[words];
        if (shelf.HasRoom()) {
            shelf.Give(value, mask);
            return;
        }
    }
    DeletePlanes(value, mask, words);
}

/// Whether this thread keeps arrays from now on; those that it has go back to the heap. For tests and tools that count
/// what is taken from the heap, or watch its bounds.
KVAL_API void KeepArrays(bool keep) noexcept;

}  // namespace detail
}  // namespace kval

#endif
