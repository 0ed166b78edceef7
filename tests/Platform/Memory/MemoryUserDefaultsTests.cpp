#include "Platform/Memory/MemoryUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace {

using foundation::Value;
using platform::MemoryUserDefaults;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Write = MemoryUserDefaults::Write;

TEST(MemoryUserDefaultsTests, KeepEachValueWithItsType) {
    MemoryUserDefaults defaults;
    defaults.setObject("count", std::uint64_t{5});
    defaults.setObject("flag", false);
    defaults.setObject("seconds", 5.0);
    EXPECT_THAT(defaults.contents(),
                ElementsAre(Pair("count", Value(std::uint64_t{5})),
                            Pair("flag", Value(false)),
                            Pair("seconds", Value(5.0))));
    EXPECT_EQ(defaults.object("seconds"), Value(5.0));
    EXPECT_NE(defaults.object("count"), Value(std::int64_t{5}));
    EXPECT_EQ(defaults.object("other"), std::nullopt);
}

TEST(MemoryUserDefaultsTests, ReplaceAndRemoveValues) {
    MemoryUserDefaults defaults;
    defaults.setObject("key", 5.0);
    defaults.setObject("key", "five");
    EXPECT_EQ(defaults.object("key"), Value("five"));
    defaults.removeObject("key");
    defaults.removeObject("key");
    EXPECT_EQ(defaults.object("key"), std::nullopt);
    EXPECT_THAT(defaults.contents(), IsEmpty());
}

TEST(MemoryUserDefaultsTests, RecordEveryChangeInOrder) {
    MemoryUserDefaults defaults;
    defaults.setObject("key", 5.0);
    defaults.removeObject("key");
    defaults.setObject("key", true);
    EXPECT_THAT(defaults.writes(),
                ElementsAre(Write{"key", 5.0}, Write{"key", std::nullopt}, Write{"key", true}));
    defaults.clearWrites();
    EXPECT_THAT(defaults.writes(), IsEmpty());
    EXPECT_EQ(defaults.object("key"), Value(true));
}

} // namespace
