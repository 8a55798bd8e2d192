// Tests that the loaded library and the header are of the same version.
#include <gtest/gtest.h>

#include <string>

#include "kval.h"

namespace {

TEST(Version, LibraryAndHeaderAgree) {
    const std::string header = std::to_string(KVAL_VERSION_MAJOR) + "." + std::to_string(KVAL_VERSION_MINOR) + "." +
                               std::to_string(KVAL_VERSION_PATCH);
    EXPECT_EQ(kval_version(), header);
}

TEST(Version, TextStaysTheSame) { EXPECT_EQ(kval_version(), kval_version()); }

}  // namespace
