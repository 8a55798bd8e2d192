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

/// Pairs of arrays of one length, from `begin` up to `top`; there is room for more up to `end`.
struct Shelf {
    Planes* top;
    Planes* begin;
    Planes* end;
};

/// A shelf for every length, in words, up to the longest that is kept.
struct Stock {
    enum : std::size_t { kLongest = 128 };
    Shelf shelves[kLongest + 1];
};

/// This thread's stock. While it has none, and after its end, this is one without room, which is never written to.
/// Of the initial-exec model: one pointer of the few bytes that a library loaded later may have.
extern KVAL_API __thread Stock* stock __attribute__((tls_model("initial-exec")));

/// What the stock does not have: two new arrays. Throws std::bad_alloc, and leaves nothing behind.
KVAL_API Planes NewPlanes(std::size_t words);
/// What the stock does not take: the arrays go back to the heap.
KVAL_API void DeletePlanes(Planes planes, std::size_t words) noexcept;

/// Two arrays of `words` words, not yet written. Throws std::bad_alloc, and leaves nothing behind.
inline Planes TakePlanes(std::size_t words) {
    if (words <= Stock::kLongest) {
        Shelf& shelf = stock->shelves[words];
        if (shelf.top != shelf.begin) return *--shelf.top;
    }
    return NewPlanes(words);
}

/// Gives back two arrays of exactly `words` words.
inline void GivePlanes(Planes planes, std::size_t words) noexcept {
    if (words <= Stock::kLongest) {
        Shelf& shelf = stock->shelves[words];
        if (shelf.top != shelf.end) {
            *shelf.top++ = planes;
            return;
        }
    }
    DeletePlanes(planes, words);
}

/// Whether this thread keeps arrays from now on; those that it has go back to the heap. For tests and tools that count
/// what is taken from the heap, or watch its bounds.
KVAL_API void KeepArrays(bool keep) noexcept;

}  // namespace detail
}  // namespace kval

#endif
