#include "HotKey/ModifierFlags.h"
#include "Platform/Linux/X11/X11Connection.h"
#include "Platform/Linux/X11/X11Modifiers.h"
#include "tests/Support/OtherX11Program.h"
#include "tests/Support/PrivateXServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/xproto.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace {

using platform::X11Modifiers;
using testing::UnorderedElementsAre;

class X11ModifiersTests : public testing::Test {
  protected:
    testing_support::PrivateXServer server_;
    std::unique_ptr<platform::X11Connection> connection_ =
        platform::X11Connection::open(server_.display());
};

TEST_F(X11ModifiersTests, FindsTheModifiersOfAUsualKeyboard) {
    const auto modifiers = X11Modifiers::query(*connection_);
    ASSERT_TRUE(modifiers.has_value());
    EXPECT_EQ(modifiers->mask(hotkey::cmdKey), XCB_MOD_MASK_4);
    EXPECT_EQ(modifiers->mask(hotkey::optionKey), XCB_MOD_MASK_1);
    EXPECT_EQ(modifiers->mask(hotkey::shiftKey), XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(modifiers->mask(hotkey::controlKey), XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(modifiers->mask(hotkey::cmdKey | hotkey::shiftKey),
              XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(modifiers->mask(0), 0);
}

TEST_F(X11ModifiersTests, HasNoMaskForModifiersThatTheKeyboardOrX11Lacks) {
    testing_support::OtherX11Program remapper(server_.display());
    remapper.moveModifierKeys(XCB_MAP_INDEX_3, XCB_MAP_INDEX_4);
    remapper.moveModifierKeys(XCB_MAP_INDEX_3, XCB_MAP_INDEX_CONTROL);
    const auto modifiers = X11Modifiers::query(*connection_);
    ASSERT_TRUE(modifiers.has_value());
    EXPECT_EQ(modifiers->mask(hotkey::cmdKey), std::nullopt);
    EXPECT_EQ(modifiers->mask(hotkey::controlKey | hotkey::shiftKey), std::nullopt);
    EXPECT_EQ(modifiers->mask(0x400), std::nullopt);
    EXPECT_EQ(modifiers->mask(hotkey::optionKey), XCB_MOD_MASK_1);
}

TEST_F(X11ModifiersTests, ListsEveryStateOfTheLocks) {
    const auto modifiers = X11Modifiers::query(*connection_);
    ASSERT_TRUE(modifiers.has_value());
    EXPECT_THAT(modifiers->lockStates(),
                UnorderedElementsAre(
                    0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
}

TEST_F(X11ModifiersTests, HeldModifiersExcludeLocksButtonsAndLayoutGroup) {
    constexpr std::uint16_t layoutGroups = 0x6000;
    constexpr std::uint16_t buttons = 0x1F00;
    const auto modifiers = X11Modifiers::query(*connection_);
    ASSERT_TRUE(modifiers.has_value());
    EXPECT_EQ(modifiers->heldModifiers(static_cast<std::uint16_t>(
                  XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 |
                  buttons | layoutGroups)),
              XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT);
    // A modifier that no hot key uses still distinguishes combinations.
    EXPECT_EQ(modifiers->heldModifiers(XCB_MOD_MASK_5), XCB_MOD_MASK_5);
}

TEST_F(X11ModifiersTests, IsEqualOnlyForAnUnchangedKeyboard) {
    const auto before = X11Modifiers::query(*connection_);
    EXPECT_EQ(before, X11Modifiers::query(*connection_));
    testing_support::OtherX11Program remapper(server_.display());
    remapper.moveModifierKeys(XCB_MAP_INDEX_4, XCB_MAP_INDEX_3);
    EXPECT_NE(before, X11Modifiers::query(*connection_));
}

} // namespace
