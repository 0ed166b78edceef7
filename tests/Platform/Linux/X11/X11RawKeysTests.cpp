#include "HotKey/ModifierFlags.h"
#include "tests/Platform/Linux/X11/X11HotKeyTest.h"
#include "tests/Support/OtherX11Program.h"
#include "tests/Support/QtTestLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using hotkey::noErr;
using testing::ElementsAre;
using testing_support::OtherX11Program;
using testing_support::QtTestLoop;

constexpr std::uint8_t x11LeftSuper = KEY_LEFTMETA + 8;

/// Another client that has the left Super key: its grab takes all keys until Super is released.
class X11RawKeysTests : public testing_support::X11HotKeyTest {
  protected:
    X11RawKeysTests() {
        EXPECT_TRUE(desktop_.take(x11LeftSuper, XCB_MOD_MASK_ANY));
        // The first key makes the server announce another keyboard.
        keyboard_->tap(KEY_H);
    }

    /// Presses or releases a modifier key, after which the service has handled the change.
    void pressModifier(int evdevKeyCode) {
        keyboard_->press(evdevKeyCode);
        handleEvents();
    }

    void releaseModifier(int evdevKeyCode) {
        keyboard_->release(evdevKeyCode);
        handleEvents();
    }

    /// Whether pressing the key, with what is held, wakes the service up.
    bool seesKey(int evdevKeyCode) {
        handleEvents();
        const int before = eventLoop_.readyCount();
        keyboard_->tap(evdevKeyCode);
        return QtTestLoop::turnUntil([&] { return eventLoop_.readyCount() > before; },
                                     std::chrono::milliseconds(200));
    }

    /// Has the service handle all events that the server has sent.
    void handleEvents() {
        // Reads the events with the server's reply.
        static_cast<void>(service_->modifierFlags(0));
        QtTestLoop::turn();
    }

    OtherX11Program desktop_{server_->display()};
};

TEST_F(X11RawKeysTests, FiresOncePerPress) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    for (int i = 0; i < 2; ++i) {
        pressModifier(KEY_LEFTMETA);
        keyboard_->tap(KEY_G);
        keyboard_->tap(KEY_G);
        releaseModifier(KEY_LEFTMETA);
        EXPECT_THAT(events(), ElementsAre("down 1", "up 1", "down 1", "up 1"));
    }
}

TEST_F(X11RawKeysTests, FiresOnceWithEveryCombinationOfModifiers) {
    struct Modifier {
        std::uint32_t carbonFlag;
        int evdevKeyCode;
    };

    const std::vector<Modifier> others{{hotkey::shiftKey, KEY_LEFTSHIFT},
                                       {hotkey::controlKey, KEY_LEFTCTRL},
                                       {hotkey::optionKey, KEY_LEFTALT}};
    for (unsigned subset = 0; subset < 8; ++subset) {
        std::uint32_t modifiers = hotkey::cmdKey;
        std::vector<int> keys{KEY_LEFTMETA};
        for (unsigned i = 0; i < others.size(); ++i) {
            if ((subset >> i & 1U) != 0) {
                modifiers |= others[i].carbonFlag;
                keys.push_back(others[i].evdevKeyCode);
            }
        }
        ASSERT_EQ(registerHotKey(keyG, modifiers), noErr);
        // With Super first and with Super last.
        for (int order = 0; order < 2; ++order) {
            for (const int key : keys) {
                pressModifier(key);
            }
            keyboard_->tap(KEY_G);
            for (const int key : keys) {
                releaseModifier(key);
            }
            EXPECT_THAT(events(), ElementsAre("down 1", "up 1")) << subset << ' ' << order;
            std::reverse(keys.begin(), keys.end());
        }
        ASSERT_EQ(service_->unregisterEventHotKey(reference_), noErr);
    }
}

TEST_F(X11RawKeysTests, AHeldKeyIsOnePress) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressModifier(KEY_LEFTMETA);
    const int before = desktop_.pressCount();
    keyboard_->press(KEY_G);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return desktop_.pressCount() >= before + 5; }));
    keyboard_->release(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11RawKeysTests, DeliversOneReleaseIfSuperIsReleasedFirst) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressModifier(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    ASSERT_TRUE(turnUntilEvent("down 1"));
    keyboard_->release(KEY_G);
    ASSERT_TRUE(turnUntilEvent("up 1"));
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11RawKeysTests, FiresWithLocksOnAndInTheSecondLayoutGroup) {
    setLayout({"us,ru"});
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    desktop_.lockLayoutGroup(1);
    keyboard_->tap(KEY_CAPSLOCK);
    keyboard_->tap(KEY_NUMLOCK);
    pressModifier(KEY_LEFTMETA);
    keyboard_->tap(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11RawKeysTests, FollowsSuperToAnotherModifier) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    OtherX11Program remapper(server_->display());
    remapper.moveModifierKeys(XCB_MAP_INDEX_4, XCB_MAP_INDEX_3);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return remapper.take(x11KeyG, superMask); }));
    pressModifier(KEY_LEFTMETA);
    keyboard_->tap(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11RawKeysTests, DistinguishesSeveralCombinations) {
    constexpr std::uint32_t keyH = 0x04;
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey, 1), noErr);
    ASSERT_EQ(registerHotKey(keyH, hotkey::cmdKey, 2), noErr);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey | hotkey::shiftKey, 3), noErr);
    pressModifier(KEY_LEFTMETA);
    keyboard_->tap(KEY_H);
    keyboard_->tap(KEY_G);
    keyboard_->tap(KEY_F1);
    pressModifier(KEY_LEFTSHIFT);
    keyboard_->tap(KEY_G);
    keyboard_->tap(KEY_H);
    releaseModifier(KEY_LEFTSHIFT);
    keyboard_->tap(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(
        events(),
        ElementsAre("down 2", "up 2", "down 1", "up 1", "down 3", "up 3", "down 1", "up 1"));
}

TEST_F(X11RawKeysTests, DoesNotFireForACombinationThatAnotherProgramHas) {
    ASSERT_TRUE(desktop_.take(x11KeyG, superMask));
    ASSERT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressModifier(KEY_LEFTMETA);
    EXPECT_FALSE(seesKey(KEY_G));
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre());
}

TEST_F(X11RawKeysTests, FollowsRegistrationsWhileTheModifiersAreHeld) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressModifier(KEY_LEFTMETA);
    ASSERT_EQ(service_->unregisterEventHotKey(reference_), noErr);
    EXPECT_FALSE(seesKey(KEY_G));
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey, 2), noErr);
    keyboard_->tap(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 2", "up 2"));
}

TEST_F(X11RawKeysTests, DoesNotFireForAKeyHeldDuringItsRegistration) {
    pressModifier(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->release(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre());
}

TEST_F(X11RawKeysTests, SeesOnlyKeysPressedWithTheModifiers) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_FALSE(seesKey(KEY_G));
    pressModifier(KEY_LEFTMETA);
    EXPECT_TRUE(seesKey(KEY_H));
    pressModifier(KEY_LEFTSHIFT);
    EXPECT_FALSE(seesKey(KEY_H));
    releaseModifier(KEY_LEFTSHIFT);
    EXPECT_TRUE(seesKey(KEY_H));
    releaseModifier(KEY_LEFTMETA);
    EXPECT_FALSE(seesKey(KEY_H));
    EXPECT_THAT(events(), ElementsAre());
}

TEST_F(X11RawKeysTests, SeesNoOtherKeyUnlessAnotherClientHasTheKeyboard) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    desktop_.giveBack(x11LeftSuper, XCB_MOD_MASK_ANY);
    pressModifier(KEY_LEFTMETA);
    EXPECT_FALSE(seesKey(KEY_H));
    keyboard_->tap(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11RawKeysTests, SeesNoKeyForCombinationsWithoutSuper) {
    ASSERT_TRUE(desktop_.take(KEY_LEFTSHIFT + 8, XCB_MOD_MASK_ANY));
    ASSERT_EQ(registerHotKey(keyG, hotkey::shiftKey), noErr);
    pressModifier(KEY_LEFTSHIFT);
    EXPECT_FALSE(seesKey(KEY_H));
    releaseModifier(KEY_LEFTSHIFT);
}

TEST_F(X11RawKeysTests, FiresOnceIfTheKeyAlsoArrivesThroughTheGrab) {
    // A desktop that lets go of the keyboard at the second key, which it takes from us.
    desktop_.giveBack(x11LeftSuper, XCB_MOD_MASK_ANY);
    ASSERT_TRUE(desktop_.takeAndFreeze(x11LeftSuper));
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressModifier(KEY_LEFTMETA);
    desktop_.receiveNextKey();
    keyboard_->press(KEY_G);
    desktop_.replayKey();
    keyboard_->release(KEY_G);
    ASSERT_TRUE(turnUntilEvent("up 1"));
    keyboard_->tap(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1", "down 1", "up 1"));
}

TEST_F(X11RawKeysTests, AKeyThatRepeatsThroughTheGrabIsOnePress) {
    desktop_.giveBack(x11LeftSuper, XCB_MOD_MASK_ANY);
    ASSERT_TRUE(desktop_.takeAndFreeze(x11LeftSuper));
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressModifier(KEY_LEFTMETA);
    desktop_.receiveNextKey();
    keyboard_->press(KEY_G);
    desktop_.replayKey();
    ASSERT_TRUE(turnUntilEvent("down 1"));
    const int before = eventLoop_.readyCount();
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.readyCount() >= before + 5; }));
    keyboard_->release(KEY_G);
    releaseModifier(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

} // namespace
