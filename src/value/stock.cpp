// The arrays of wide values, each from array new and back to array delete, and the stock that each thread keeps of them.
#include <pthread.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "kval.h"

// In programs that have AddressSanitizer, whether this library was built with it or not.
extern "C" __attribute__((weak)) void __asan_init();  // NOLINT(bugprone-reserved-identifier)

namespace kval::detail {
namespace {

// How many pairs of a length are kept: many of the short ones that the temporaries of an expression take.
constexpr std::size_t room_for(std::size_t words) {
    if (words < 2) return 0;  // such values own no arrays
    if (words <= 8) return 32;
    if (words <= 32) return 12;
    return words <= 64 ? 4 : 2;
}

constexpr std::size_t total_room() {
    std::size_t pairs = 0;
    for (std::size_t words = 0; words <= Stock::kLongest; ++words) pairs += room_for(words);
    return pairs;
}

// A stock with its room.
struct FullStock : Stock {
    FullStock() : Stock{} {
        Planes* room = pairs.data();
        for (std::size_t words = 0; words <= kLongest; ++words) {
            shelves[words] = {room, room, room + room_for(words)};
            room += room_for(words);
        }
    }
    ~FullStock() {
        for (Shelf& shelf : shelves) {
            while (shelf.top != shelf.begin) release(*--shelf.top);
        }
    }
    FullStock(const FullStock&) = delete;
    FullStock& operator=(const FullStock&) = delete;

    static void release(Planes planes) noexcept {
        delete[] planes.value;
        delete[] planes.mask;
    }

    std::array<Planes, total_room()> pairs;  // no more of it is written than is kept
};

constexpr std::size_t most_bytes() {
    constexpr std::size_t kHeapOverhead = 16;
    std::size_t bytes = sizeof(FullStock);
    for (std::size_t words = 0; words <= Stock::kLongest; ++words)
        bytes += room_for(words) * 2 * (words * sizeof(std::uint32_t) + kHeapOverhead);
    return bytes;
}
static_assert(most_bytes() <= std::size_t{256} * 1024, "a thread keeps at most 256 KiB");

// Without room: a thread's first, and what it has once it keeps nothing any more.
constinit const Stock unopened{};
constinit const Stock closed{};

// Nothing is stored by way of it: it is as full as it is empty.
Stock* without_room(const Stock& stock) { return const_cast<Stock*>(&stock); }

bool is_open() { return stock != &unopened && stock != &closed; }

// Ends this thread's stock; what its last values give back goes to the heap.
void close_stock() noexcept {
    const std::unique_ptr<FullStock> ended(is_open() ? static_cast<FullStock*>(stock) : nullptr);
    stock = without_room(closed);
}

// The system calls this at the end of a thread that has a stock.
void end_thread(void* /*ended*/) { close_stock(); }

// That of the main thread, which does not end like the others, goes with the library.
struct AtExit {
    ~AtExit() { close_stock(); }
} at_exit;

// Tools that watch every array of the program must see it go and come: AddressSanitizer, and Valgrind's memcheck.
bool is_watched() {
    const char* preloaded = std::getenv("LD_PRELOAD");
    return __asan_init != nullptr || (preloaded != nullptr && std::strstr(preloaded, "vgpreload_memcheck") != nullptr);
}

// The key by which the system calls end_thread; false where there is none, or nothing is to be kept.
struct ThreadEnd {
    ThreadEnd() : exists(!is_watched() && pthread_key_create(&key, end_thread) == 0) {}
    pthread_key_t key{};
    bool exists;
};

// This thread's first stock. It goes on without one where there is no memory for it.
void open_stock() noexcept {
    static const ThreadEnd thread_end;
    stock = without_room(closed);
    if (!thread_end.exists) return;
    std::unique_ptr<FullStock> opened(new (std::nothrow) FullStock);
    if (opened && pthread_setspecific(thread_end.key, opened.get()) == 0) stock = opened.release();
}

}  // namespace

constinit __thread Stock* stock __attribute__((tls_model("initial-exec"))) = const_cast<Stock*>(&unopened);

Planes NewPlanes(std::size_t words) {
    if (stock == &unopened) open_stock();
    auto value = std::make_unique_for_overwrite<std::uint32_t[]>(words);
    auto mask = std::make_unique_for_overwrite<std::uint32_t[]>(words);
    return {value.release(), mask.release()};
}

void DeletePlanes(Planes planes, std::size_t words) noexcept {
    if (stock == &unopened) {
        open_stock();
        if (is_open()) return GivePlanes(planes, words);
    }
    FullStock::release(planes);
}

void KeepArrays(bool keep) noexcept {
    close_stock();
    if (keep) open_stock();
}

}  // namespace kval::detail
