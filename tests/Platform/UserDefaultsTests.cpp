#include "Platform/Memory/MemoryUserDefaults.h"
#include "Platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace {

using foundation::Date;
using foundation::Dictionary;
using foundation::Value;
using platform::UserDefaults;

const Date someDate{std::chrono::microseconds(1709812800123456)};
const Dictionary someDictionary{{"keyCode", std::uint64_t{5}}};

class UserDefaultsTests : public testing::Test {
  protected:
    /// The settings with that value under "key".
    const UserDefaults& with(Value object) {
        defaults_.setObject("key", std::move(object));
        return defaults_;
    }

    platform::MemoryUserDefaults defaults_;
};

TEST_F(UserDefaultsTests, ReadDefaultsWithoutAValue) {
    const UserDefaults& defaults = defaults_;
    EXPECT_EQ(defaults.doubleForKey("key"), 0);
    EXPECT_FALSE(defaults.boolForKey("key"));
    EXPECT_EQ(defaults.dateForKey("key"), std::nullopt);
    EXPECT_EQ(defaults.dictionaryForKey("key"), std::nullopt);
}

TEST_F(UserDefaultsTests, ReadEveryNumberAsADouble) {
    EXPECT_EQ(with(2.5).doubleForKey("key"), 2.5);
    EXPECT_EQ(with(std::int64_t{-3}).doubleForKey("key"), -3);
    EXPECT_EQ(with(std::uint64_t{7}).doubleForKey("key"), 7);
    EXPECT_EQ(with(true).doubleForKey("key"), 1);
}

TEST_F(UserDefaultsTests, ReadZeroForOtherTypes) {
    for (const Value& object :
         std::vector<Value>{foundation::Other{}, "2.5", someDate, someDictionary}) {
        EXPECT_EQ(with(object).doubleForKey("key"), 0) << "alternative " << object.index();
    }
}

TEST_F(UserDefaultsTests, ReadEveryNumberAsABoolean) {
    EXPECT_TRUE(with(true).boolForKey("key"));
    EXPECT_TRUE(with(0.5).boolForKey("key"));
    EXPECT_TRUE(with(std::int64_t{-1}).boolForKey("key"));
    EXPECT_TRUE(with(std::uint64_t{1}).boolForKey("key"));
    EXPECT_FALSE(with(false).boolForKey("key"));
    EXPECT_FALSE(with(0.0).boolForKey("key"));
    EXPECT_FALSE(with(std::int64_t{0}).boolForKey("key"));
}

TEST_F(UserDefaultsTests, ReadFalseForOtherTypes) {
    for (const Value& object :
         std::vector<Value>{foundation::Other{}, "true", someDate, someDictionary}) {
        EXPECT_FALSE(with(object).boolForKey("key")) << "alternative " << object.index();
    }
}

TEST_F(UserDefaultsTests, ReadNoDateFromOtherTypes) {
    EXPECT_EQ(with(someDate).dateForKey("key"), someDate);
    for (const Value& object : std::vector<Value>{foundation::Other{},
                                                  true,
                                                  std::int64_t{1709812800},
                                                  std::uint64_t{1709812800},
                                                  1709812800.0,
                                                  "2024-03-07",
                                                  someDictionary}) {
        EXPECT_EQ(with(object).dateForKey("key"), std::nullopt) << "alternative " << object.index();
    }
}

TEST_F(UserDefaultsTests, ReadNoDictionaryFromOtherTypes) {
    EXPECT_EQ(with(someDictionary).dictionaryForKey("key"), someDictionary);
    EXPECT_EQ(with(Dictionary{}).dictionaryForKey("key"), Dictionary{});
    for (const Value& object : std::vector<Value>{foundation::Other{},
                                                  true,
                                                  std::int64_t{5},
                                                  std::uint64_t{5},
                                                  5.0,
                                                  "[\"keyCode\": 5]",
                                                  someDate}) {
        EXPECT_EQ(with(object).dictionaryForKey("key"), std::nullopt)
            << "alternative " << object.index();
    }
}

} // namespace
