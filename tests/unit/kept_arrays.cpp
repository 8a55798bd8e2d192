// A program for stock_test.cpp, which tells by its exit status whether the arrays of a dead value are kept (0) or not
// (3): kept_arrays plain | no-key | no-memory-for-the-stock | no-memory-for-the-key | no-memory-for-more
//
// All but the first let the system refuse something on the way; a value must be right all the same.
#include <pthread.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <thread>
#include <utility>

#include "kval.h"
#include "value/stock.h"

namespace {

int allocations_until_failure = 0;  // 1: the next one fails; 0: none does
bool zeroed_memory_fails = false;

}  // namespace

void* operator new(std::size_t size) {
    if (allocations_until_failure != 0 && --allocations_until_failure == 0) throw std::bad_alloc();
    void* block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }

// What the C library takes for the values of the later keys of a thread.
extern "C" void* calloc(std::size_t count, std::size_t size) {
    if (zeroed_memory_fails) return nullptr;
    void* block = std::malloc(count * size);
    // Byte by byte and volatile: compilers make a call of calloc of whatever else clears new memory.
    auto* byte = static_cast<volatile char*>(block);
    for (std::size_t i = 0; block != nullptr && i < count * size; ++i) byte[i] = 0;
    return block;
}

int main(int count, char** arguments) {
    const char* mode = count == 2 ? arguments[1] : "";
    const auto is = [mode](const char* name) { return std::strcmp(mode, name) == 0; };
    pthread_key_t key;
    if (is("no-key")) {
        while (pthread_key_create(&key, nullptr) == 0) continue;
    } else if (is("no-memory-for-the-key")) {
        // The values of a thread's first 32 keys have their place already.
        while (pthread_key_create(&key, nullptr) == 0 && key < 31) continue;
        zeroed_memory_fails = true;
    } else if (is("no-memory-for-the-stock")) {
        allocations_until_failure = 1;
    } else if (is("no-memory-for-more")) {
        allocations_until_failure = 4;  // after the stock and two arrays
    } else if (!is("plain")) {
        return 2;
    }
    {
        const KVAL_UINTEGER dead(7, 100);
        if (dead.uint() != 7) return 1;
    }
    zeroed_memory_fails = false;
    const bool kept = kval::stock->shelves[4].HasOne();
    std::optional<KVAL_UINTEGER> next(std::in_place, 9U, 100U);
    if (next->uint() != 9 || allocations_until_failure != 0) return 1;
    std::thread([&next] { next.reset(); }).join();  // the first that this thread has to do with values
    return kept ? 0 : 3;
}
