// Replaces operator new and delete by forms that count, guard, fill and, when told to, fail.
#include "heap.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "kval.h"

namespace {

enum class Form : std::size_t { Single, Array };

constexpr unsigned char kGuard = 0xFD;
constexpr unsigned char kReleased = 0xDD;

using Guard = unsigned char[16];

// Stands before each block; another guard follows the block.
struct Header {
    std::size_t size;
    Form form;
    Guard guard;
};
static_assert(sizeof(Header) % alignof(std::max_align_t) == 0, "blocks must be aligned for every type");

// Plain numbers: they are in use before the first constructor runs and after the last destructor.
std::size_t allocation_count = 0;
std::size_t release_count = 0;
std::size_t byte_count = 0;
std::size_t damage_count = 0;
std::size_t allocations_until_failure = 0;  // 1: the next one fails; 0: none does
unsigned char fresh_pattern = 0xA5;

bool is_intact(const unsigned char* guard) {
    return std::all_of(guard, guard + sizeof(Guard), [](unsigned char byte) { return byte == kGuard; });
}

void* allocate(std::size_t size, Form form) {
    if (allocations_until_failure != 0 && --allocations_until_failure == 0) throw std::bad_alloc();
    auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size + sizeof(Guard)));
    if (header == nullptr) throw std::bad_alloc();
    ++allocation_count;
    byte_count += size;
    header->size = size;
    header->form = form;
    std::memset(header->guard, kGuard, sizeof(Guard));
    auto* block = reinterpret_cast<unsigned char*>(header + 1);
    std::memset(block, fresh_pattern, size);
    std::memset(block + size, kGuard, sizeof(Guard));
    return block;
}

void release(void* pointer, Form form) {
    if (pointer == nullptr) return;
    ++release_count;
    auto* block = static_cast<unsigned char*>(pointer);
    auto* header = reinterpret_cast<Header*>(block) - 1;
    // The size can be trusted only while the guard behind it is intact.
    const bool intact = is_intact(header->guard) && is_intact(block + header->size) && header->form == form;
    if (!intact) ++damage_count;
    if (intact) {
        byte_count -= header->size;
        std::memset(block, kReleased, header->size);
    }
    std::free(header);
}

[[maybe_unused]] const bool nothing_is_kept = (kval::detail::KeepArrays(false), true);

}  // namespace

namespace heap {

std::size_t allocations() { return allocation_count; }
std::size_t live_blocks() { return allocation_count - release_count; }

std::size_t live_bytes() { return byte_count; }

std::size_t take_damages() {
    const std::size_t damages = damage_count;
    damage_count = 0;
    return damages;
}

void fill_fresh_memory_with(unsigned char pattern) { fresh_pattern = pattern; }

FailingAllocation::FailingAllocation(std::size_t n) { allocations_until_failure = n; }
FailingAllocation::~FailingAllocation() { allocations_until_failure = 0; }

KeptArrays::KeptArrays() { kval::detail::KeepArrays(true); }
KeptArrays::~KeptArrays() { kval::detail::KeepArrays(false); }

}  // namespace heap

// The nothrow forms of the standard library call these.
void* operator new(std::size_t size) { return allocate(size, Form::Single); }
void* operator new[](std::size_t size) { return allocate(size, Form::Array); }
void operator delete(void* block) noexcept { release(block, Form::Single); }
void operator delete[](void* block) noexcept { release(block, Form::Array); }
void operator delete(void* block, std::size_t) noexcept { release(block, Form::Single); }
void operator delete[](void* block, std::size_t) noexcept { release(block, Form::Array); }
