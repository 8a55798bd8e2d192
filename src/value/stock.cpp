// The arrays of large values, each from array new and back to array delete, and the stock that each thread keeps of
// them.
#include <pthread.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "kval.h"
#include "value/stock.h"

// Exists only in programs that have AddressSanitizer, whether this library was built with it or not.
extern "C" __attribute__((weak)) void __asan_init();  // NOLINT(bugprone-reserved-identifier)

namespace kval {
namespace {

// How many pairs of a length are kept: many of the short ones that the temporaries of an expression take.
constexpr std::uint32_t room_for(std::size_t words) {
    if (words < 3) return 0;  // such values are small
    if (words <= 16) return Shelf::kSlots;
    return 8;
}

// How many more pairs are made when one is missing. A loop that takes and gives back one pair at a time then has
// several to go round. Only lengths that cost little get more.
constexpr int more_of(std::size_t words) { return words <= 8 ? 3 : 0; }

void release(const Arrays& arrays) noexcept {
    delete[] arrays.value;
    delete[] arrays.mask;
}

// The last few pairs of longer arrays, of any length up to kLongestPair.
class LongPairs {
  public:
    static constexpr std::size_t kLongestPair = 65536 / 32 + 32;
    static constexpr std::size_t kPairs = 8;

    ~LongPairs() {
        for (const Pair& pair : pairs_) release(pair.arrays);
    }

    bool take(std::size_t words, Arrays& arrays) noexcept {
        for (Pair& pair : pairs_) {
            if (pair.words != words) continue;
            arrays = std::exchange(pair, Pair{}).arrays;
            return true;
        }
        return false;
    }
    // Puts a pair in place of the one that has been here longest.
    void give(const Arrays& arrays, std::size_t words) noexcept {
        Pair& pair = pairs_[next_];
        next_ = (next_ + 1) % kPairs;
        release(pair.arrays);
        pair = {words, arrays};
    }

  private:
    struct Pair {
        std::size_t words = 0;
        Arrays arrays{};
    };
    std::array<Pair, kPairs> pairs_;
    std::size_t next_ = 0;
};

// A stock with room on its shelves: that of a thread which keeps arrays.
struct FullStock : Stock {
    FullStock() : Stock{} {
        for (std::size_t words = 0; words <= kLongest; ++words) shelves[words].room = room_for(words);
    }
    ~FullStock() {
        for (Shelf& shelf : shelves) {
            while (shelf.HasOne()) release(shelf.Take());
        }
    }
    FullStock(const FullStock&) = delete;
    FullStock& operator=(const FullStock&) = delete;

    LongPairs longer;
};

consteval std::size_t bytes_of(std::size_t pairs, std::size_t words) {
    constexpr std::size_t heap_overhead = 16;
    return pairs * 2 * (words * sizeof(Word) + heap_overhead);
}

consteval std::size_t most_bytes() {
    std::size_t bytes = sizeof(FullStock) + bytes_of(LongPairs::kPairs, LongPairs::kLongestPair);
    for (std::size_t words = 0; words <= Stock::kLongest; ++words) bytes += bytes_of(room_for(words), words);
    return bytes;
}
static_assert(most_bytes() <= std::size_t{256} * 1024, "a thread keeps at most 256 KiB");

// Two stocks without room: a thread starts with the first, and ends with the second.
constinit Stock unopened{};
constinit Stock closed{};

bool is_open() { return stock != &unopened && stock != &closed; }

FullStock& opened_stock() { return *static_cast<FullStock*>(stock); }

bool is_kept_longer(std::size_t words) {
    return is_open() && words > Stock::kLongest && words <= LongPairs::kLongestPair;
}

// Ends this thread's stock. What the thread's last values give back then goes to the heap.
void close_stock() noexcept {
    const std::unique_ptr<FullStock> ended(is_open() ? &opened_stock() : nullptr);
    stock = &closed;
}

// The system calls this at the end of a thread that has a stock.
void end_thread(void* /*ended*/) { close_stock(); }

// The main thread does not end like the others; its stock ends with the library.
struct AtExit {
    ~AtExit() { close_stock(); }
} at_exit;

// AddressSanitizer and Valgrind's memcheck watch every array of the program, and so must see each one come and go.
bool is_watched() {
    const char* preloaded = std::getenv("LD_PRELOAD");
    return __asan_init != nullptr || (preloaded != nullptr && std::strstr(preloaded, "vgpreload_memcheck") != nullptr);
}

// The key by which the system calls end_thread. There is none where the system has run out, or nothing is to be kept.
struct ThreadEnd {
    ThreadEnd() : exists(!is_watched() && pthread_key_create(&key, end_thread) == 0) {}
    pthread_key_t key{};
    bool exists;
};

// Opens this thread's stock. The thread goes on without one where there is no memory for it.
void open_stock() noexcept {
    static const ThreadEnd thread_end;
    stock = &closed;
    if (!thread_end.exists) return;
    std::unique_ptr<FullStock> opened(new (std::nothrow) FullStock);
    if (opened && pthread_setspecific(thread_end.key, opened.get()) == 0) stock = opened.release();
}

Arrays new_pair(std::size_t words) {
    auto value = std::make_unique_for_overwrite<Word[]>(words);
    auto mask = std::make_unique_for_overwrite<Word[]>(words);
    return {value.release(), mask.release()};
}

// Adds more pairs where one was missing, as far as there is memory for them.
void add_more(std::size_t words) noexcept {
    try {
        for (int i = 0; i < more_of(words); ++i) {
            give_arrays(new_pair(words), words);
        }
    } catch (...) {
        return;
    }
}

}  // namespace

constinit __thread Stock* stock __attribute__((tls_model("initial-exec"))) = &unopened;

Arrays new_arrays(std::size_t words) {
    if (stock == &unopened) open_stock();
    Arrays arrays{};
    if (is_kept_longer(words) && opened_stock().longer.take(words, arrays)) return arrays;
    arrays = new_pair(words);
    if (is_open() && words <= Stock::kLongest) add_more(words);
    return arrays;
}

void delete_arrays(const Arrays& arrays, std::size_t words) noexcept {
    if (stock == &unopened) {
        open_stock();
        if (is_open()) return give_arrays(arrays, words);
    }
    if (is_kept_longer(words)) return opened_stock().longer.give(arrays, words);
    release(arrays);
}

void detail::KeepArrays(bool keep) noexcept {
    close_stock();
    if (keep) open_stock();
}

}  // namespace kval
