#import "Platform/MacOS/MacConversions.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace std::chrono_literals;
using foundation::Date;
using foundation::Dictionary;
using foundation::Other;
using foundation::Value;

class MacConversionsTests : public testing::Test {
    testing_support::AppKitLoop loop_;
};

TEST_F(MacConversionsTests, ATextRoundTrips) {
    for (const std::string_view text : {std::string_view(),
                                        std::string_view("a\0b", 3),
                                        std::string_view("e\u0301 \u20AC \U0001F35E \r\n")}) {
        EXPECT_EQ(platform::utf8String(platform::nsString(text)), text);
    }
}

TEST_F(MacConversionsTests, ATextKeepsItsLeadingByteOrderMarks) {
    constexpr std::string_view text = "\xEF\xBB\xBF\xEF\xBB\xBF!";
    EXPECT_EQ(platform::utf8String(platform::nsString(text)), text);
}

TEST_F(MacConversionsTests, HalfASurrogatePairBecomesTheReplacementCharacter) {
    constexpr unichar half = 0xD83C;
    EXPECT_EQ(platform::utf8String([NSString stringWithFormat:@"a%Cb", half]), "a\uFFFDb");
}

TEST_F(MacConversionsTests, NilIsAnEmptyText) {
    EXPECT_EQ(platform::utf8String(nil), "");
}

TEST_F(MacConversionsTests, EachValueRoundTripsWithItsType) {
    for (const Value& value :
         {Value(true),
          Value(false),
          Value(std::int64_t{-5}),
          Value(std::uint64_t{1} << 63),
          Value(0.5),
          Value(std::string("text")),
          Value(Date(1'700'000'000s)),
          Value(Dictionary{{"flag", true}, {"inner", Dictionary{{"a", 0.5}}}})}) {
        EXPECT_EQ(platform::valueOf(platform::nsObject(value)), value);
    }
}

TEST_F(MacConversionsTests, AnObjectOfAnotherTypeIsOther) {
    EXPECT_EQ(platform::valueOf(@[]), Value(Other{}));
    EXPECT_EQ(platform::valueOf(nil), Value(Other{}));
    EXPECT_EQ(platform::valueOf([NSDate dateWithTimeIntervalSince1970:1e13]), Value(Other{}));
}

TEST_F(MacConversionsTests, NothingIsMadeOfOther) {
    EXPECT_EQ(platform::nsObject(Other{}), nil);
    EXPECT_EQ(platform::nsObject(Dictionary{{"a", 0.5}, {"b", Other{}}}), nil);
}

TEST_F(MacConversionsTests, ADictionaryIsReadWithoutKeysThatAreNotStrings) {
    EXPECT_EQ(platform::dictionaryOf(
                  @{@"a" : @0.5,
                    @"b" : @[],
                    @1 : @2}),
              (Dictionary{{"a", 0.5}, {"b", Other{}}}));
}

} // namespace
