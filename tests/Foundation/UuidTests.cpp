#include "Foundation/Uuid.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using foundation::Uuid;

TEST(UuidTests, IsAnotherOneEachTime) {
    std::set<std::array<std::uint8_t, 16>> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(Uuid::random().bytes);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

TEST(UuidTests, SaysThatItIsRandom) {
    const Uuid uuid = Uuid::random();
    EXPECT_EQ(uuid.bytes[6] >> 4U, 4);
    EXPECT_EQ(uuid.bytes[8] >> 6U, 2);
}

TEST(UuidTests, IsEqualToItsCopyOnly) {
    const Uuid uuid = Uuid::random();
    Uuid copy = uuid;
    EXPECT_EQ(copy, uuid);
    copy.bytes[15] ^= 1U;
    EXPECT_NE(copy, uuid);
}

} // namespace
