// The next random number, and random bits for values.
#ifndef KVAL_DETAIL_RANDOM_H
#define KVAL_DETAIL_RANDOM_H

#include "storage.h"

namespace kval {
namespace detail {

/// Where the generator stands. From `front` up to `stop` all steps are alike: each adds the 64-bit word that lies
/// `distance` words from the front to the word at the front, and moves the front on by one word.
struct GeneratorRun {
    void* front;
    void* stop;
    std::ptrdiff_t distance;
};
extern KVAL_API GeneratorRun generator_run;
/// The next number where `front` has reached `stop`.
KVAL_API std::int64_t DrawAtRunEnd() noexcept;

/// Random words for a small value, each from one number, the lower word first.
KVAL_API std::uint64_t DrawWords(unsigned width) noexcept;
/// Makes every bit of a large value known and random.
KVAL_API void RandomizeLarge(std::uint64_t value, std::uint64_t mask, unsigned width) noexcept;
/// Draws positions below `count`, which is up to 64, from rand() until each has come up. Changes only the state of
/// rand().
KVAL_API void DrawPositions(int count) noexcept;
/// Draws positions in the same way, and inverts those bits of a large value. Throws std::bad_alloc before it draws.
KVAL_API void InvertLarge(std::uint64_t value, int count);

}  // namespace detail
}  // namespace kval

// Inline, because a call into the shared library would cost more than the step itself.
KVAL_INLINE std::int64_t kval_random() noexcept {
    kval::detail::GeneratorRun& run = kval::detail::generator_run;
    char* const front = static_cast<char*>(run.front);
    if (front == run.stop) return kval::detail::DrawAtRunEnd();
    constexpr std::ptrdiff_t word_bytes = sizeof(std::uint64_t);
    std::uint64_t sum;
    std::uint64_t rear;
    __builtin_memcpy(&sum, front, sizeof sum);
    __builtin_memcpy(&rear, front + run.distance * word_bytes, sizeof rear);
    sum += rear;
    __builtin_memcpy(front, &sum, sizeof sum);
    run.front = front + word_bytes;
    return static_cast<std::int64_t>(sum >> 1);
}

KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::randomize() noexcept {
    using namespace kval::detail;
    Fields::set_flags(*this, 0);
    if (is_small(width)) return changed_trimmed(*this, {DrawWords(width), 0});
    unary_large(RandomizeLarge, *this);
    DeleteString();
    return *this;
}

// Deliberate: positions are drawn below `count`, not below the width, until each has come up. And the cached text is
// not dropped.
KVAL_INLINE KVAL_UINTEGER& KVAL_UINTEGER::randomize(int count) {
    using namespace kval::detail;
    if (static_cast<unsigned>(count) > width || count == 0) return *this;  // a negative count too
    if (is_small(width)) {
        DrawPositions(count);
        uvalue.bits ^= used_bits(static_cast<unsigned>(count));
    } else {
        InvertLarge(uvalue.bits, count);
    }
    return *this;
}

#endif
