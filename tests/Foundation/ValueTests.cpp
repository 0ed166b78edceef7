#include "Foundation/Value.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>

namespace {

using foundation::boolValue;
using foundation::Dictionary;
using foundation::doubleValue;
using foundation::exactUint32Value;
using foundation::exactUint64Value;
using foundation::Other;
using foundation::uint32Value;
using foundation::Uuid;
using foundation::Value;

TEST(ValueTests, HoldsAStringForALiteral) {
    EXPECT_TRUE(std::holds_alternative<std::string>(Value("5")));
}

TEST(ValueTests, EveryNumberExceptZeroIsTrue) {
    EXPECT_EQ(boolValue(true), true);
    EXPECT_EQ(boolValue(std::int64_t{-1}), true);
    EXPECT_EQ(boolValue(std::uint64_t{1} << 63), true);
    EXPECT_EQ(boolValue(0.5), true);
    EXPECT_EQ(boolValue(false), false);
    EXPECT_EQ(boolValue(std::int64_t{0}), false);
    EXPECT_EQ(boolValue(std::uint64_t{0}), false);
    EXPECT_EQ(boolValue(-0.0), false);
}

TEST(ValueTests, OtherTypesAreNotNumbers) {
    for (const Value& value : {Value("1"),
                               Value(Other{}),
                               Value(foundation::Date{}),
                               Value(Dictionary{{"1", std::int64_t{1}}})}) {
        EXPECT_EQ(boolValue(value), std::nullopt) << "alternative " << value.index();
        EXPECT_EQ(uint32Value(value), std::nullopt) << "alternative " << value.index();
        EXPECT_EQ(exactUint32Value(value), std::nullopt) << "alternative " << value.index();
        EXPECT_EQ(exactUint64Value(value), std::nullopt) << "alternative " << value.index();
        EXPECT_EQ(doubleValue(value), std::nullopt) << "alternative " << value.index();
    }
}

TEST(ValueTests, DictionariesHoldEveryTypeOfValue) {
    const Dictionary dictionary{
        {"date", foundation::Date{}}, {"inner", Dictionary{{"flag", true}}}, {"other", Other{}}};
    EXPECT_EQ(std::get<Dictionary>(dictionary.at("inner")).at("flag"), Value(true));
    EXPECT_EQ(Value(dictionary), Value(Dictionary(dictionary)));
    EXPECT_NE(dictionary.at("other"), dictionary.at("date"));
}

TEST(ValueTests, Uint32ValueIsTheLowBits) {
    EXPECT_EQ(uint32Value(true), 1U);
    EXPECT_EQ(uint32Value(std::int64_t{-1}), 0xFFFFFFFFU);
    EXPECT_EQ(uint32Value((std::uint64_t{1} << 63) + 7), 7U);
    EXPECT_EQ(uint32Value(5.9), 5U);
    EXPECT_EQ(uint32Value(-1.5), 0xFFFFFFFFU);
}

TEST(ValueTests, Uint32ValueIsZeroForDoublesOutOfRange) {
    EXPECT_EQ(uint32Value(1e300), 0U);
    EXPECT_EQ(uint32Value(-1e300), 0U);
    EXPECT_EQ(uint32Value(9223372036854775808.0), 0U);
    EXPECT_EQ(uint32Value(std::numeric_limits<double>::quiet_NaN()), 0U);
}

TEST(ValueTests, ExactValuesAcceptUnsignedIntegersOfAnyType) {
    EXPECT_EQ(exactUint32Value(std::uint64_t{5}), 5U);
    EXPECT_EQ(exactUint32Value(std::int64_t{5}), 5U);
    EXPECT_EQ(exactUint32Value(5.0), 5U);
    EXPECT_EQ(exactUint32Value(-0.0), 0U);
    EXPECT_EQ(exactUint32Value(false), 0U);
    EXPECT_EQ(exactUint64Value(true), 1U);
    EXPECT_EQ(exactUint64Value(std::int64_t{0}), 0U);
}

TEST(ValueTests, ExactValuesRejectNegativeNumbersAndFractions) {
    for (const Value& value : {Value(std::int64_t{-1}),
                               Value(std::numeric_limits<std::int64_t>::min()),
                               Value(-1.0),
                               Value(-0.5),
                               Value(5.5),
                               Value(std::numeric_limits<double>::denorm_min()),
                               Value(std::numeric_limits<double>::quiet_NaN()),
                               Value(std::numeric_limits<double>::infinity()),
                               Value(-std::numeric_limits<double>::infinity())}) {
        EXPECT_EQ(exactUint32Value(value), std::nullopt);
        EXPECT_EQ(exactUint64Value(value), std::nullopt);
    }
}

TEST(ValueTests, ExactValuesRejectNumbersOutOfRange) {
    EXPECT_EQ(exactUint32Value(std::uint64_t{4294967295}), 4294967295U);
    EXPECT_EQ(exactUint32Value(4294967295.0), 4294967295U);
    EXPECT_EQ(exactUint32Value(std::uint64_t{4294967296}), std::nullopt);
    EXPECT_EQ(exactUint32Value(std::int64_t{4294967296}), std::nullopt);
    EXPECT_EQ(exactUint32Value(4294967296.0), std::nullopt);
    EXPECT_EQ(exactUint64Value(std::numeric_limits<std::uint64_t>::max()), 18446744073709551615U);
    // The largest double below 2 to the 64th.
    EXPECT_EQ(exactUint64Value(18446744073709549568.0), 18446744073709549568U);
    EXPECT_EQ(exactUint64Value(18446744073709551616.0), std::nullopt);
    EXPECT_EQ(exactUint64Value(1e300), std::nullopt);
}

TEST(ValueTests, EveryNumberIsADouble) {
    EXPECT_EQ(doubleValue(2.5), 2.5);
    EXPECT_EQ(doubleValue(true), 1.0);
    EXPECT_EQ(doubleValue(std::int64_t{-3}), -3.0);
    EXPECT_EQ(doubleValue(std::uint64_t{1} << 63), 9223372036854775808.0);
    // One more than 2 to the 53rd has more digits than a double.
    EXPECT_EQ(doubleValue(std::int64_t{9007199254740993}), 9007199254740992.0);
}

TEST(UuidTests, IsDifferentEachTime) {
    std::set<std::array<std::uint8_t, 16>> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(Uuid::random().bytes);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

TEST(UuidTests, IsMarkedAsRandom) {
    const Uuid uuid = Uuid::random();
    EXPECT_EQ(uuid.bytes[6] >> 4U, 4);
    EXPECT_EQ(uuid.bytes[8] >> 6U, 2);
}

TEST(UuidTests, EqualsOnlyItsCopy) {
    const Uuid uuid = Uuid::random();
    Uuid copy = uuid;
    EXPECT_EQ(copy, uuid);
    copy.bytes[15] ^= 1U;
    EXPECT_NE(copy, uuid);
}

} // namespace
