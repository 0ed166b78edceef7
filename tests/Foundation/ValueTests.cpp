#include "Foundation/Value.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>

namespace {

using foundation::boolValue;
using foundation::uint32Value;
using foundation::Value;

TEST(ValueTests, HoldsATextForATextInTheSource) {
    EXPECT_TRUE(std::holds_alternative<std::string>(Value("5")));
}

TEST(ValueTests, IsTrueForEveryNumberButZero) {
    EXPECT_EQ(boolValue(true), true);
    EXPECT_EQ(boolValue(std::int64_t{-1}), true);
    EXPECT_EQ(boolValue(std::uint64_t{1} << 63), true);
    EXPECT_EQ(boolValue(0.5), true);
    EXPECT_EQ(boolValue(false), false);
    EXPECT_EQ(boolValue(std::int64_t{0}), false);
    EXPECT_EQ(boolValue(std::uint64_t{0}), false);
    EXPECT_EQ(boolValue(-0.0), false);
}

TEST(ValueTests, IsNoNumberWhenItIsAText) {
    EXPECT_EQ(boolValue("1"), std::nullopt);
    EXPECT_EQ(uint32Value("1"), std::nullopt);
}

TEST(ValueTests, GivesTheLowThirtyTwoBitsOfANumber) {
    EXPECT_EQ(uint32Value(true), 1U);
    EXPECT_EQ(uint32Value(std::int64_t{-1}), 0xFFFFFFFFU);
    EXPECT_EQ(uint32Value((std::uint64_t{1} << 63) + 7), 7U);
    EXPECT_EQ(uint32Value(5.9), 5U);
    EXPECT_EQ(uint32Value(-1.5), 0xFFFFFFFFU);
}

TEST(ValueTests, GivesZeroForFloatingPointNumbersThatNoIntegerReaches) {
    EXPECT_EQ(uint32Value(1e300), 0U);
    EXPECT_EQ(uint32Value(-1e300), 0U);
    EXPECT_EQ(uint32Value(9223372036854775808.0), 0U);
    EXPECT_EQ(uint32Value(std::numeric_limits<double>::quiet_NaN()), 0U);
}

} // namespace
