// The seed and the size of a random run, from the environment or fresh, and printed when the program starts.
#include "run.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace {

#ifdef KVAL_SANITIZED
constexpr unsigned kDefaultPairs = 10'000;
#else
constexpr unsigned kDefaultPairs = 100'000;
#endif

// A number from the environment, or `otherwise` where the variable is not set. Anything else in it ends the program: a
// run that was meant to be a replay must not quietly be another one.
std::uint64_t number_from(const char* variable, std::uint64_t otherwise) {
    const char* text = std::getenv(variable);
    if (text == nullptr) return otherwise;
    char* end = nullptr;
    errno = 0;
    const std::uint64_t number = std::strtoull(text, &end, 10);
    if (errno != 0 || *text < '0' || *text > '9' || *end != '\0') {
        std::cerr << variable << " is not a number: " << text << '\n';
        std::exit(EXIT_FAILURE);
    }
    return number;
}

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
    static const std::uint64_t seed = number_from("KVAL_SEED", fresh_seed());
    return seed;
}

unsigned run_pairs() {
    static const auto pairs = static_cast<unsigned>(number_from("KVAL_PAIRS", kDefaultPairs));
    return pairs;
}

std::string replay_line() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    return "replay: " + settings() + ' ' + program_invocation_name + " --gtest_filter=" + test.test_suite_name() + '.' +
           test.name();
}
