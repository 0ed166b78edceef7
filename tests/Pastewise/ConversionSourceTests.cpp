#include "Pastewise/ConversionSource.h"

#include <gtest/gtest.h>

namespace {

using pastewise::ConversionSource;

TEST(ConversionSourceTests, HasAWordForTheLog) {
    EXPECT_EQ(description(ConversionSource::hotkey), "hotkey");
    EXPECT_EQ(description(ConversionSource::manual), "manual");
}

} // namespace
