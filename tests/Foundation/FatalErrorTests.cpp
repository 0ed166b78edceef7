#include "Foundation/FatalError.h"

#include <gtest/gtest.h>

namespace {

TEST(FatalErrorDeathTest, AbortsWithTheMessageOnStandardError) {
    EXPECT_DEATH(foundation::fatalError("the count is negative"),
                 "Fatal error: the count is negative\n");
}

} // namespace
