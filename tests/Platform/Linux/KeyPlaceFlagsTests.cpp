#include "Platform/Linux/KeyPlaceFlags.h"

#include <gtest/gtest.h>

namespace {

using hotkey::Key;
using hotkey::ModifierFlags;
using platform::keyPlaceFlags;

TEST(KeyPlaceFlagsTests, ArrowsHaveTheFunctionAndTheNumericPadFlag) {
    for (const Key key : {Key::upArrow, Key::downArrow, Key::leftArrow, Key::rightArrow}) {
        EXPECT_EQ(keyPlaceFlags(key).rawValue, 0xA00000U);
    }
}

TEST(KeyPlaceFlagsTests, FKeysAndNavigationKeysHaveTheFunctionFlag) {
    for (const Key key : {Key::f1,
                          Key::f12,
                          Key::f20,
                          Key::home,
                          Key::end,
                          Key::pageUp,
                          Key::pageDown,
                          Key::forwardDelete,
                          Key::help}) {
        EXPECT_EQ(keyPlaceFlags(key), ModifierFlags::function);
    }
}

TEST(KeyPlaceFlagsTests, KeysOfTheNumericPadHaveItsFlagAlone) {
    for (const Key key : {Key::keypad0, Key::keypad9, Key::keypadEnter, Key::keypadPlus}) {
        EXPECT_EQ(keyPlaceFlags(key).rawValue, 0x200000U);
    }
}

TEST(KeyPlaceFlagsTests, OtherKeysHaveNone) {
    for (const Key key : {Key::a,
                          Key::five,
                          Key::escape,
                          Key::tab,
                          Key::space,
                          Key::return_,
                          Key::delete_,
                          Key::section}) {
        EXPECT_EQ(keyPlaceFlags(key), ModifierFlags{});
    }
}

} // namespace
