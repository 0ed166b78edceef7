#include "HotKey/HotKey.h"
#include "HotKey/HotKeysController.h"
#include "HotKey/KeyCombo.h"
#include "HotKey/ModifierFlags.h"
#include "tests/Platform/Linux/X11/X11HotKeyTest.h"
#include "tests/Support/OtherX11Program.h"
#include "tests/Support/QtTestLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using hotkey::EventHotKeyRef;
using hotkey::noErr;
using testing::ElementsAre;
using testing_support::OtherX11Program;
using testing_support::QtTestLoop;

constexpr std::uint16_t numLockMask = XCB_MOD_MASK_2;
constexpr int mod3Index = XCB_MAP_INDEX_3;
constexpr int mod4Index = XCB_MAP_INDEX_4;

using X11EventHotKeyServiceTests = testing_support::X11HotKeyTest;

TEST_F(X11EventHotKeyServiceTests, IsNullWithoutAServer) {
    EXPECT_EQ(platform::X11EventHotKeyService::open(eventLoop_, mainQueue_, ":98765"), nullptr);
}

TEST_F(X11EventHotKeyServiceTests, CallsTheHandlersOfHotKeys) {
    hotkey::HotKeysController controller(*service_);
    std::string notes;
    hotkey::HotKey hotKey(
        controller,
        hotkey::Key::g,
        hotkey::ModifierFlags::command,
        [&] { notes += 'd'; },
        [&] { notes += 'u'; });
    pressSuperG();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return notes == "du"; })) << notes;
    hotKey.setIsPaused(true);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre());
    hotKey.setIsPaused(false);
    pressSuperG();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return notes == "dudu"; })) << notes;
}

TEST_F(X11EventHotKeyServiceTests, AHeldKeyIsOnePress) {
    // Another program, which counts repeats, shows that this server repeats the key.
    OtherX11Program witness(server_->display());
    ASSERT_TRUE(witness.take(x11KeyG, superMask));
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_TRUE(testing_support::waitUntil([&] { return witness.pressCount() >= 5; }));
    keyboard_->release(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    witness.giveBack(x11KeyG, superMask);

    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_TRUE(turnUntilEvent("down 1"));
    // While the key is held, only its repeats arrive.
    const int readyBefore = eventLoop_.readyCount();
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.readyCount() >= readyBefore + 5; }));
    EXPECT_THAT(events_, ElementsAre("down 1"));
    keyboard_->release(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, DeliversOneReleaseIfSuperIsReleasedFirst) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    keyboard_->release(KEY_G);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresForTheRightSuperKey) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->tapTogether({KEY_RIGHTMETA, KEY_G});
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresWithAllFourModifiers) {
    ASSERT_EQ(registerHotKey(keyG, 0x1B00), noErr);
    keyboard_->tapTogether({KEY_LEFTCTRL, KEY_LEFTALT, KEY_LEFTSHIFT, KEY_LEFTMETA, KEY_G});
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresWithCapsLockOn) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->tap(KEY_CAPSLOCK);
    ASSERT_EQ(keyboard_->modifierState(), XCB_MOD_MASK_LOCK);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresWithNumLockOn) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->tap(KEY_NUMLOCK);
    ASSERT_EQ(keyboard_->modifierState(), numLockMask);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresWithCapsLockAndNumLockOn) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->tap(KEY_CAPSLOCK);
    keyboard_->tap(KEY_NUMLOCK);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresWhileAPointerButtonIsHeld) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->pressButton(1);
    ASSERT_EQ(keyboard_->modifierState(), XCB_BUTTON_MASK_1);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

class X11LayoutTests : public X11EventHotKeyServiceTests,
                       public testing::WithParamInterface<const char*> {};

TEST_P(X11LayoutTests, FiresByKeyPositionIfTheLayoutIsSetBefore) {
    setLayout({GetParam()});
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
    // Only this key was grabbed.
    OtherX11Program otherProgram(server_->display());
    EXPECT_TRUE(otherProgram.take(KEY_H + 8, superMask));
}

TEST_P(X11LayoutTests, FiresByKeyPositionIfTheLayoutIsSetLater) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    setLayout({GetParam()});
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
    setLayout({"us"});
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

INSTANTIATE_TEST_SUITE_P(Layouts,
                         X11LayoutTests,
                         testing::Values("de", "fr", "ru", "gr"),
                         [](const auto& layout) { return std::string(layout.param); });

TEST_F(X11EventHotKeyServiceTests, FiresInTheSecondLayoutGroup) {
    setLayout({"us,ru"});
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    OtherX11Program switcher(server_->display());
    switcher.lockLayoutGroup(1);
    ASSERT_EQ(switcher.layoutGroup(), 1);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, AKeyHeldDuringALayoutChangeIsOnePress) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_TRUE(turnUntilEvent("down 1"));
    const int readyBefore = eventLoop_.readyCount();
    setLayout({"ru"});
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.readyCount() > readyBefore; }));
    keyboard_->release(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FollowsSuperToAnotherModifier) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    OtherX11Program remapper(server_->display());
    remapper.moveModifierKeys(mod4Index, mod3Index);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return remapper.take(x11KeyG, superMask); }));
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
    EXPECT_FALSE(remapper.take(x11KeyG, XCB_MOD_MASK_3));
}

TEST_F(X11EventHotKeyServiceTests, RegistersWithTheModifiersOfAChangedKeyboard) {
    OtherX11Program remapper(server_->display());
    remapper.moveModifierKeys(mod4Index, mod3Index);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_FALSE(remapper.take(x11KeyG, XCB_MOD_MASK_3));
    EXPECT_TRUE(remapper.take(x11KeyG, superMask));
}

TEST_F(X11EventHotKeyServiceTests, ReadsModifiersOfKeyEventsAfterAKeyboardChange) {
    using hotkey::ModifierFlags;
    EXPECT_EQ(service_->modifierFlags(superMask | XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK),
              ModifierFlags::command | ModifierFlags::option | ModifierFlags::capsLock);
    OtherX11Program remapper(server_->display());
    remapper.moveModifierKeys(mod4Index, mod3Index);
    EXPECT_EQ(service_->modifierFlags(XCB_MOD_MASK_3 | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT),
              ModifierFlags::command | ModifierFlags::control | ModifierFlags::shift);
    EXPECT_EQ(service_->modifierFlags(superMask | XCB_BUTTON_MASK_1), ModifierFlags{});
}

TEST_F(X11EventHotKeyServiceTests, RefusesAModifierThatTheKeyboardLacks) {
    OtherX11Program remapper(server_->display());
    remapper.moveModifierKeys(mod3Index, mod4Index);
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_TRUE(reference_.isNull());
    EXPECT_TRUE(remapper.take(x11KeyG, 0));
}

TEST_F(X11EventHotKeyServiceTests, ReleasesItsGrabsWhileTheKeyboardLacksTheModifier) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey | hotkey::shiftKey), noErr);
    constexpr auto grabbed = static_cast<std::uint16_t>(superMask | XCB_MOD_MASK_SHIFT);
    OtherX11Program remapper(server_->display());
    remapper.moveModifierKeys(mod3Index, mod4Index);
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return remapper.take(x11KeyG, grabbed); }));
    remapper.giveBack(x11KeyG, grabbed);
    keyboard_->tapTogether({KEY_LEFTSHIFT, KEY_G});
    EXPECT_THAT(events(), ElementsAre());
    setLayout({"us"});
    ASSERT_TRUE(QtTestLoop::turnUntil([&] {
        const bool isFree = remapper.take(x11KeyG, grabbed);
        remapper.giveBack(x11KeyG, grabbed);
        return !isFree;
    }));
    keyboard_->tapTogether({KEY_LEFTSHIFT, KEY_LEFTMETA, KEY_G});
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, RefusesACombinationIfAnotherProgramHasOneVariant) {
    OtherX11Program otherProgram(server_->display());
    ASSERT_TRUE(otherProgram.take(x11KeyG, static_cast<std::uint16_t>(superMask | numLockMask)));
    testing::internal::CaptureStderr();
    EXPECT_EQ(registerHotKey(keyG, hotkey::cmdKey), hotkey::eventHotKeyExistsErr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(reference_.isNull());
    // None of the other variants stays grabbed.
    OtherX11Program thirdProgram(server_->display());
    EXPECT_TRUE(thirdProgram.take(x11KeyG, superMask));
    EXPECT_TRUE(
        thirdProgram.take(x11KeyG, static_cast<std::uint16_t>(superMask | XCB_MOD_MASK_LOCK)));
}

class X11RefusalTests : public X11EventHotKeyServiceTests {
  protected:
    X11RefusalTests() {
        EXPECT_TRUE(otherProgram_.take(x11KeyG, superMask));
        service_->setRefusalHandlers({.didRefuse =
                                          [this](const hotkey::KeyCombo& combo) {
                                              EXPECT_EQ(combo.carbonKeyCode, keyG);
                                              EXPECT_EQ(combo.carbonModifiers, hotkey::cmdKey);
                                              ++refusalCount_;
                                          },
                                      .didBecomeFree = [this] { ++freeCount_; }});
    }

    /// Presses and releases Super, which the service has handled on return.
    void tapSuper() {
        keyboard_->tap(KEY_LEFTMETA);
        static_cast<void>(service_->modifierFlags(0));
        QtTestLoop::turn();
    }

    OtherX11Program otherProgram_{server_->display()};
    int refusalCount_ = 0;
    int freeCount_ = 0;
};

TEST_F(X11RefusalTests, ReportsACombinationOnce) {
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_EQ(refusalCount_, 1);
    tapSuper();
    setLayout({"de"});
    tapSuper();
    EXPECT_EQ(refusalCount_, 1);
    EXPECT_EQ(freeCount_, 0);
}

TEST_F(X11RefusalTests, NoticesAFreeCombinationWhenItsModifiersArePressed) {
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    tapSuper();
    otherProgram_.giveBack(x11KeyG, superMask);
    keyboard_->tap(KEY_LEFTSHIFT);
    EXPECT_EQ(freeCount_, 0);
    tapSuper();
    EXPECT_EQ(freeCount_, 1);
    tapSuper();
    EXPECT_EQ(freeCount_, 1);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
    EXPECT_EQ(refusalCount_, 1);
}

TEST_F(X11RefusalTests, NoticesAFreeCombinationWhenTheKeyboardChanges) {
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    otherProgram_.giveBack(x11KeyG, superMask);
    setLayout({"de"});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return freeCount_ == 1; }));
}

TEST_F(X11RefusalTests, NoticesAModifierThatTheKeyboardLacked) {
    otherProgram_.giveBack(x11KeyG, superMask);
    otherProgram_.moveModifierKeys(mod3Index, mod4Index);
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_EQ(refusalCount_, 0);
    setLayout({"us"});
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return freeCount_ == 1; }));
}

TEST_F(X11RefusalTests, ForgetsARefusedCombinationThatIsNoLongerWanted) {
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_NE(service_->unregisterEventHotKey(reference_), noErr);
    otherProgram_.giveBack(x11KeyG, superMask);
    tapSuper();
    EXPECT_EQ(freeCount_, 0);
}

TEST_F(X11RefusalTests, DoesNotReportACombinationOfItsOwn) {
    otherProgram_.giveBack(x11KeyG, superMask);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey, 1), noErr);
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey, 2), noErr);
    EXPECT_EQ(refusalCount_, 0);
}

TEST_F(X11EventHotKeyServiceTests, AnotherProgramsKeyWorksAfterUnregistering) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    ASSERT_EQ(service_->unregisterEventHotKey(reference_), noErr);
    OtherX11Program otherProgram(server_->display());
    ASSERT_TRUE(otherProgram.take(x11KeyG, superMask));
    pressSuperG();
    EXPECT_TRUE(testing_support::waitUntil([&] { return otherProgram.pressCount() == 1; }));
    EXPECT_THAT(events(), ElementsAre());
}

TEST_F(X11EventHotKeyServiceTests, RefusesKeysThatX11CannotSend) {
    constexpr std::uint32_t functionKey = 0x3F;
    constexpr std::uint32_t noKey = 0x34;
    for (const std::uint32_t key : {functionKey, noKey, 0xFFFFFFFFU}) {
        EXPECT_NE(registerHotKey(key, hotkey::cmdKey), noErr) << key;
    }
    // A grab of every key would conflict with this one.
    OtherX11Program otherProgram(server_->display());
    EXPECT_TRUE(otherProgram.take(XCB_GRAB_ANY, superMask));
}

TEST_F(X11EventHotKeyServiceTests, RefusesUnknownModifiers) {
    constexpr std::uint32_t alphaLock = 0x400;
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey | alphaLock), noErr);
    OtherX11Program otherProgram(server_->display());
    EXPECT_TRUE(otherProgram.take(x11KeyG, superMask));
}

TEST_F(X11EventHotKeyServiceTests, DeliversEventsReadWhileWaitingForAReply) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    QtTestLoop::turn();
    pressSuperG();
    // The replies come after the events, which are read with them.
    ASSERT_EQ(registerHotKey(keyF1, hotkey::cmdKey, 2), noErr);
    EXPECT_TRUE(events_.empty());
    EXPECT_TRUE(turnUntilEvent("up 1"));
    EXPECT_THAT(events_, ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, DoesNotFireForAHeldKeyThatIsRegisteredAgain) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_TRUE(turnUntilEvent("down 1"));
    ASSERT_EQ(service_->unregisterEventHotKey(reference_), noErr);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey, 2), noErr);
    const int readyBefore = eventLoop_.readyCount();
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.readyCount() > readyBefore + 4; }));
    keyboard_->release(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "down 2", "up 2"));
}

TEST_F(X11EventHotKeyServiceTests, DoesNotFireForAKeyHeldDuringItsFirstRegistration) {
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    const int readyBefore = eventLoop_.readyCount();
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.readyCount() > readyBefore + 4; }));
    keyboard_->release(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    EXPECT_THAT(events(), ElementsAre());
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, FiresAfterAHeldKeyIsReleasedBeforeItRepeats) {
    keyboard_->press(KEY_LEFTMETA);
    keyboard_->press(KEY_G);
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_->release(KEY_G);
    keyboard_->release(KEY_LEFTMETA);
    EXPECT_TRUE(QtTestLoop::turnUntil([this] {
        pressSuperG();
        return !this->events().empty();
    }));
    pressSuperG();
    EXPECT_THAT(events(), ElementsAre("down 1", "up 1"));
}

TEST_F(X11EventHotKeyServiceTests, AHandlerMayDestroyTheService) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    onEvent_ = [this](const std::string& /*event*/) { service_.reset(); };
    pressSuperG();
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return service_ == nullptr; }));
    QtTestLoop::turn();
    EXPECT_THAT(events_, ElementsAre("down 1"));
    EXPECT_EQ(eventLoop_.watchCount(), 0);
}

TEST_F(X11EventHotKeyServiceTests, SendsNothingAfterTheServerIsLost) {
    ASSERT_EQ(registerHotKey(keyG, hotkey::cmdKey), noErr);
    keyboard_.reset();
    ASSERT_EQ(eventLoop_.watchCount(), 1);
    server_.reset();
    ASSERT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.watchCount() == 0; }));
    const int readyBefore = eventLoop_.readyCount();
    const EventHotKeyRef mine = reference_;
    EXPECT_NE(registerHotKey(keyF1, hotkey::cmdKey, 2), noErr);
    EXPECT_EQ(service_->unregisterEventHotKey(mine), noErr);
    for (int turn = 0; turn < 100; ++turn) {
        QtTestLoop::turn();
    }
    EXPECT_EQ(eventLoop_.readyCount(), readyBefore);
}

TEST_F(X11EventHotKeyServiceTests, RefusesARegistrationAfterTheServerIsLost) {
    keyboard_.reset();
    server_.reset();
    EXPECT_NE(registerHotKey(keyG, hotkey::cmdKey), noErr);
    EXPECT_TRUE(reference_.isNull());
    EXPECT_TRUE(QtTestLoop::turnUntil([&] { return eventLoop_.watchCount() == 0; }));
}

} // namespace
