#include "HotKey/ModifierFlags.h"

#include <gtest/gtest.h>

namespace {

using hotkey::ModifierFlags;

constexpr auto all =
    ModifierFlags::command | ModifierFlags::option | ModifierFlags::control | ModifierFlags::shift;

TEST(ModifierFlagsTests, HasTheBitsOfMacEventFlags) {
    EXPECT_EQ(ModifierFlags::capsLock.rawValue, 0x10000U);
    EXPECT_EQ(ModifierFlags::shift.rawValue, 0x20000U);
    EXPECT_EQ(ModifierFlags::control.rawValue, 0x40000U);
    EXPECT_EQ(ModifierFlags::option.rawValue, 0x80000U);
    EXPECT_EQ(ModifierFlags::command.rawValue, 0x100000U);
    EXPECT_EQ(ModifierFlags::function.rawValue, 0x800000U);
}

TEST(ModifierFlagsTests, CarbonMask0x1B00HasAllFourModifiers) {
    EXPECT_EQ(ModifierFlags::fromCarbonFlags(0x1B00), all);
    EXPECT_EQ(ModifierFlags::fromCarbonFlags(0x1B00).description(), "\u2303\u2325\u21E7\u2318");
}

TEST(ModifierFlagsTests, ConvertsEachModifierToItsCarbonMask) {
    EXPECT_EQ(ModifierFlags::command.carbonFlags(), 0x100U);
    EXPECT_EQ(ModifierFlags::shift.carbonFlags(), 0x200U);
    EXPECT_EQ(ModifierFlags::option.carbonFlags(), 0x800U);
    EXPECT_EQ(ModifierFlags::control.carbonFlags(), 0x1000U);
    EXPECT_EQ(all.carbonFlags(), 0x1B00U);
    EXPECT_EQ(
        (ModifierFlags::command | ModifierFlags::option | ModifierFlags::control).carbonFlags(),
        0x1900U);
}

TEST(ModifierFlagsTests, RoundTripsThroughCarbonMasks) {
    for (const auto flag : {ModifierFlags::command,
                            ModifierFlags::shift,
                            ModifierFlags::option,
                            ModifierFlags::control}) {
        EXPECT_EQ(ModifierFlags::fromCarbonFlags(flag.carbonFlags()), flag);
    }
}

TEST(ModifierFlagsTests, DropsOtherCarbonBits) {
    EXPECT_EQ(ModifierFlags::fromCarbonFlags(0xFFFFE4FF), ModifierFlags{});
    EXPECT_EQ(ModifierFlags::fromCarbonFlags(0xFFFFFFFF), all);
}

TEST(ModifierFlagsTests, IgnoresCapsLockAndFunction) {
    for (const auto flags : {ModifierFlags::capsLock, ModifierFlags::function}) {
        EXPECT_EQ(flags.description(), "");
        EXPECT_EQ(flags.carbonFlags(), 0U);
    }
}

TEST(ModifierFlagsTests, TheEmptySetHasAnEmptyDescription) {
    EXPECT_EQ(ModifierFlags{}.description(), "");
}

TEST(ModifierFlagsTests, IgnoresOtherBitsButKeepsThem) {
    const ModifierFlags flags{ModifierFlags::command.rawValue | 0x8000000000800008U};
    EXPECT_EQ(flags.description(), "\u2318");
    EXPECT_EQ(flags.carbonFlags(), 0x100U);
    EXPECT_EQ(flags.rawValue, 0x8000000000900008U);
}

TEST(ModifierFlagsTests, ContainsItsParts) {
    EXPECT_TRUE(all.contains(ModifierFlags::shift));
    EXPECT_FALSE(ModifierFlags::shift.contains(all));
    EXPECT_TRUE(ModifierFlags::shift.contains({}));
}

} // namespace
