// Replaces operator new[] and delete[], which the library takes its words and texts from, by forms over whole pages.
#include "page_heap.h"

#include <sys/mman.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>

#include "kval.h"

namespace {

using page_heap::Placement;

// Pages are used in turn, so that the page of a released array rests for long.
constexpr std::size_t kPages = 256;
constexpr unsigned char kFresh = 0xA5;

// Plain variables: they are in use before the first constructor runs and after the last destructor.
unsigned char* pool = nullptr;  // page 0; between any two pages, and around them, is one without access
std::size_t page_size = 0;
std::size_t resting[kPages];  // the numbers of the free pages, the longest free one first
std::size_t first_resting = 0;
std::size_t resting_count = 0;
bool closed[kPages];  // without access until they are used again
std::size_t allocation_count = 0;
Placement placement = Placement::End;
bool released_faults = false;
const char* task_name = nullptr;

unsigned char* page(std::size_t number) { return pool + number * 2 * page_size; }

void set_access(std::size_t number, int access) {
    if (mprotect(page(number), page_size, access) != 0) std::abort();
}

void rest(std::size_t number) { resting[(first_resting + resting_count++) % kPages] = number; }

void write_out(const char* text) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
}

// The signal's former action is back when this runs: the access is done again, and ends the program.
void report_fault(int) {
    write_out("fault in ");
    write_out(task_name != nullptr ? task_name : "no task");
    write_out(placement == Placement::End ? ", arrays end where their page ends\n"
                                          : ", arrays begin where their page begins\n");
}

void report_faults() {
    struct sigaction action {};
    action.sa_handler = report_fault;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    if (sigaction(SIGSEGV, &action, nullptr) != 0) std::abort();
}

void create_pool() {
    page_size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* reserved =
        mmap(nullptr, (2 * kPages + 1) * page_size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (reserved == MAP_FAILED) std::abort();
    pool = static_cast<unsigned char*>(reserved) + page_size;
    for (std::size_t number = 0; number < kPages; ++number) {
        set_access(number, PROT_READ | PROT_WRITE);
        rest(number);
    }
    report_faults();
}

bool is_guarded(const unsigned char* block) { return block >= pool && block < page(kPages); }

// The test framework takes arrays of more than a page; those of the values under test are shorter.
void* allocate_unguarded(std::size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void* allocate(std::size_t size) {
    if (pool == nullptr) create_pool();
    if (size > page_size) return allocate_unguarded(size);
    if (resting_count == 0) throw std::bad_alloc();
    const std::size_t number = resting[first_resting];
    first_resting = (first_resting + 1) % kPages;
    --resting_count;
    if (closed[number]) set_access(number, PROT_READ | PROT_WRITE);
    closed[number] = false;
    ++allocation_count;
    // An array that ends with its page is aligned as far as its size is, which is all that its elements need.
    unsigned char* block = page(number) + (placement == Placement::End ? page_size - size : 0);
    std::memset(block, kFresh, size);
    return block;
}

void release(void* pointer) {
    if (pointer == nullptr) return;
    auto* block = static_cast<unsigned char*>(pointer);
    if (!is_guarded(block)) return std::free(block);
    const std::size_t number = static_cast<std::size_t>(block - pool) / (2 * page_size);
    if (released_faults) {
        set_access(number, PROT_NONE);
        closed[number] = true;
    }
    rest(number);
}

// Every array is to have a page of its own, and to be gone once its value is.
[[maybe_unused]] const bool nothing_is_kept = (kval::detail::KeepArrays(false), true);

}  // namespace

namespace page_heap {

void place_at(Placement new_placement) { placement = new_placement; }
std::size_t allocations() { return allocation_count; }

Task::Task(const char* name) { task_name = name; }
Task::~Task() { task_name = nullptr; }

ReleasedFaults::ReleasedFaults() { released_faults = true; }
ReleasedFaults::~ReleasedFaults() { released_faults = false; }

}  // namespace page_heap

void* operator new[](std::size_t size) { return allocate(size); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
