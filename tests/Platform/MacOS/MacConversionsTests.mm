#import "Platform/MacOS/MacConversions.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using foundation::Dictionary;
using foundation::Value;

class MacConversionsTests : public testing::Test {
    testing_support::AppKitLoop loop_;
};

TEST_F(MacConversionsTests, ATextComesBackByteForByte) {
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

TEST_F(MacConversionsTests, NullIsAnEmptyText) {
    EXPECT_EQ(platform::utf8String(nil), "");
}

TEST_F(MacConversionsTests, EachValueComesBackWithItsType) {
    for (const Value& value : {Value(true),
                               Value(false),
                               Value(std::int64_t{-5}),
                               Value(std::uint64_t{1} << 63),
                               Value(0.5),
                               Value(std::string("text"))}) {
        EXPECT_EQ(platform::valueOf(platform::nsObject(value)), value);
    }
}

TEST_F(MacConversionsTests, AnObjectOfAnotherTypeIsNoValue) {
    EXPECT_EQ(platform::valueOf([NSDate date]), std::nullopt);
    EXPECT_EQ(platform::valueOf(@[]), std::nullopt);
}

TEST_F(MacConversionsTests, ADictionaryIsReadWithoutWhatItCannotHold) {
    EXPECT_EQ(platform::dictionaryOf(
                  @{@"a" : @0.5,
                    @"b" : @[],
                    @1 : @2}),
              (Dictionary{{"a", 0.5}}));
}

TEST_F(MacConversionsTests, ADictionaryComesBack) {
    const Dictionary dictionary{{"flag", true}, {"keyCode", std::int64_t{5}}, {"name", "g"}};
    EXPECT_EQ(platform::dictionaryOf(platform::nsDictionary(dictionary)), dictionary);
}

} // namespace
