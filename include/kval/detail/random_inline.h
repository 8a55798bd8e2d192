// The inline body of kval_random: a call of the shared library would cost more than the step itself.
#ifndef KVAL_DETAIL_RANDOM_INLINE_H
#define KVAL_DETAIL_RANDOM_INLINE_H

namespace kval {
namespace detail {

/// Where the generator stands: steps from `front` to `stop` add the 64-bit word `distance` words from the front to the
/// one at the front, and differ in nothing else.
struct GeneratorRun {
    void* front;
    void* stop;
    std::ptrdiff_t distance;
};
extern KVAL_API GeneratorRun generator_run;
/// The next number where front and stop meet.
KVAL_API std::int64_t DrawAtRunEnd() noexcept;

}  // namespace detail
}  // namespace kval

inline std::int64_t kval_random() noexcept {
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

#endif
