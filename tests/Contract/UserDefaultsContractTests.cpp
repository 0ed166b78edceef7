#include "Platform/Memory/MemoryUserDefaults.h"
#include "tests/Contract/UserDefaultsContract.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace contract {

namespace {

/// Lives as long as the test, across restarts.
class MemoryUserDefaultsBackend final : public UserDefaultsBackend {
  public:
    platform::UserDefaults& defaults() override { return defaults_; }

    void restart() override {}

  private:
    platform::MemoryUserDefaults defaults_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         UserDefaultsContract,
                         (backend<UserDefaultsBackend, MemoryUserDefaultsBackend>("Memory")),
                         nameOfBackend<UserDefaultsBackend>);

using foundation::Date;
using foundation::Dictionary;
using foundation::Value;

TEST_P(UserDefaultsContract, IsEmptyAtFirst) {
    EXPECT_EQ(defaults().object("key"), std::nullopt);
    EXPECT_EQ(defaults().doubleForKey("key"), 0.0);
    EXPECT_FALSE(defaults().boolForKey("key"));
    EXPECT_EQ(defaults().dateForKey("key"), std::nullopt);
    EXPECT_EQ(defaults().dictionaryForKey("key"), std::nullopt);
}

TEST_P(UserDefaultsContract, KeepsEachType) {
    expectIsKept(true);
    expectIsKept(false);
    expectIsKept(std::int64_t{-5});
    expectIsKept(0.1);
    expectIsKept(std::string("\xE2\x98\x83"));
    expectIsKept(std::string());
    expectIsKept(Date{std::chrono::seconds(1'700'000'000)});
    expectIsKept(Dictionary{{"flag", true}, {"modifiers", std::int64_t{-1}}, {"name", "g"}});
    expectIsKept(Dictionary{});
    expectIsKept(Dictionary{{"date", Date{std::chrono::seconds(1'700'000'000)}},
                            {"inner", Dictionary{{"number", 0.5}}}});
}

TEST_P(UserDefaultsContract, KeepsTheLargestInteger) {
    expectIsKept(std::numeric_limits<std::uint64_t>::max());
}

TEST_P(UserDefaultsContract, KeepsADateToTheMicrosecond) {
    expectIsKept(Date{std::chrono::microseconds(1'700'000'000'123'457)});
    expectIsKept(Date{std::chrono::microseconds(-1)});
}

TEST_P(UserDefaultsContract, AWholeDoubleStaysADouble) {
    expectIsKept(350.0);
    expectIsKept(0.0);
    EXPECT_TRUE(std::holds_alternative<double>(defaults().object("key").value()));
}

TEST_P(UserDefaultsContract, KeepsTheSignOfZero) {
    defaults().setObject("key", -0.0);
    backend_->restart();
    EXPECT_TRUE(std::signbit(defaults().doubleForKey("key")));
}

TEST_P(UserDefaultsContract, KeepsAnUnsignedIntegerAsANumber) {
    defaults().setObject("key", Dictionary{{"keyCode", std::uint64_t{5}}});
    backend_->restart();
    const auto dictionary = defaults().dictionaryForKey("key");
    ASSERT_TRUE(dictionary);
    EXPECT_EQ(foundation::exactUint32Value(dictionary->at("keyCode")), 5U);
}

TEST_P(UserDefaultsContract, ReplacesAnObjectByOneOfAnotherType) {
    defaults().setObject("key", 1.0);
    defaults().setObject("key", true);
    backend_->restart();
    EXPECT_EQ(defaults().object("key"), Value(true));
    defaults().setObject("key", std::int64_t{1});
    backend_->restart();
    EXPECT_EQ(defaults().object("key"), Value(std::int64_t{1}));
}

TEST_P(UserDefaultsContract, RemovesOnlyTheGivenObject) {
    defaults().setObject("a", 1.0);
    defaults().setObject("b", 2.0);
    backend_->restart();
    defaults().removeObject("a");
    defaults().removeObject("never there");
    EXPECT_EQ(defaults().object("a"), std::nullopt);
    backend_->restart();
    EXPECT_EQ(defaults().object("a"), std::nullopt);
    EXPECT_EQ(defaults().object("b"), Value(2.0));
}

TEST_P(UserDefaultsContract, DistinguishesKeysByteForByte) {
    defaults().setObject("analytics.todaySavedSeconds.2024-03-07", 1.0);
    defaults().setObject("analytics.todaySavedSeconds.2024-03-08", 2.0);
    defaults().setObject("Key", 3.0);
    defaults().setObject("key", 4.0);
    defaults().setObject("k\xC3\xA9y", 5.0);
    backend_->restart();
    EXPECT_EQ(defaults().doubleForKey("analytics.todaySavedSeconds.2024-03-07"), 1.0);
    EXPECT_EQ(defaults().doubleForKey("analytics.todaySavedSeconds.2024-03-08"), 2.0);
    EXPECT_EQ(defaults().doubleForKey("Key"), 3.0);
    EXPECT_EQ(defaults().doubleForKey("key"), 4.0);
    EXPECT_EQ(defaults().doubleForKey("k\xC3\xA9y"), 5.0);
}

TEST_P(UserDefaultsContract, AcceptsAnEmptyKey) {
    defaults().setObject("", 1.0);
    defaults().setObject("key", 2.0);
    backend_->restart();
    EXPECT_EQ(defaults().doubleForKey(""), 1.0);
    EXPECT_EQ(defaults().doubleForKey("key"), 2.0);
}

TEST_P(UserDefaultsContract, AcceptsAKeyThatIsNotZeroTerminated) {
    defaults().setObject("key", 1.0);
    EXPECT_EQ(defaults().doubleForKey(std::string_view("key and more").substr(0, 3)), 1.0);
}

TEST_P(UserDefaultsContract, ReadsAValueOfAnotherTypeAsMissing) {
    defaults().setObject("text", std::string("10"));
    defaults().setObject("date", Date{});
    defaults().setObject("dictionary", Dictionary{{"a", 1.0}});
    defaults().setObject("number", 10.0);
    backend_->restart();
    for (const char* key : {"text", "date", "dictionary"}) {
        EXPECT_EQ(defaults().doubleForKey(key), 0.0) << key;
        EXPECT_FALSE(defaults().boolForKey(key)) << key;
    }
    for (const char* key : {"text", "dictionary", "number"}) {
        EXPECT_EQ(defaults().dateForKey(key), std::nullopt) << key;
    }
    for (const char* key : {"text", "date", "number"}) {
        EXPECT_EQ(defaults().dictionaryForKey(key), std::nullopt) << key;
    }
}

TEST_P(UserDefaultsContract, ReadsBooleansAndIntegersAsNumbers) {
    defaults().setObject("bool", true);
    defaults().setObject("integer", std::int64_t{-3});
    backend_->restart();
    EXPECT_EQ(defaults().doubleForKey("bool"), 1.0);
    EXPECT_EQ(defaults().doubleForKey("integer"), -3.0);
    EXPECT_TRUE(defaults().boolForKey("integer"));
}

} // namespace contract
