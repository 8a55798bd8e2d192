// The seed and the size of a random run, from the environment or fresh, and printed when the program starts.
#include "run.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <iostream>
#include <random>
#include <string>

#include "support/environment.h"

namespace {

#ifdef KVAL_SANITIZED
constexpr unsigned kDefaultPairs = 10'000;
#else
constexpr unsigned kDefaultPairs = 100'000;
#endif

std::uint64_t fresh_seed() {
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
}

std::string settings() {
    return "KVAL_SEED=" + std::to_string(run_seed()) + " KVAL_PAIRS=" + std::to_string(run_pairs());
}

class Announcement : public testing::Environment {
  public:
    void SetUp() override { std::cout << "random: " << settings() << std::endl; }
};

[[maybe_unused]] const testing::Environment* const kAnnouncement =
    testing::AddGlobalTestEnvironment(new Announcement);  // owned by the test framework

}  // namespace

std::uint64_t run_seed() {
    static const std::uint64_t seed = twin::number_from("KVAL_SEED", fresh_seed());
    return seed;
}

unsigned run_pairs() {
    static const auto pairs = static_cast<unsigned>(twin::number_from("KVAL_PAIRS", kDefaultPairs));
    return pairs;
}

std::string replay_line() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    return "replay: " + settings() + ' ' + program_invocation_name + " --gtest_filter=" + test.test_suite_name() + '.' +
           test.name();
}
