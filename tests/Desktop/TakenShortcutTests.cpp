#include "tests/Desktop/ResidentTest.h"
#include "tests/Support/OtherX11Program.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using program_test::countOf;
using program_test::ResidentTest;
using program_test::wroteMessage;
using testing_support::ChildProcess;
using testing_support::OtherX11Program;

constexpr std::string_view takenMessage = "Another program has the shortcut Super+G";
constexpr std::string_view takenTitle = "Pastewise|Super+G is used by another program|";
constexpr std::uint8_t x11KeyG = KEY_G + 8;
constexpr std::uint16_t superMask = XCB_MOD_MASK_4;

/// The program on a desktop where another program has the shortcut.
class TakenShortcutTests : public ResidentTest {
  protected:
    void SetUp() override { ASSERT_TRUE(otherProgram_.take(x11KeyG, superMask)); }

    void startNotificationService() {
        service_ = std::make_unique<ChildProcess>(
            std::vector<std::string>{PASTEWISE_NOTIFICATION_SERVICE},
            ChildProcess::Options{.environment = session_.environment()});
        ASSERT_TRUE(service_->waitForOutput("ready")) << service_->standardError();
    }

    /// Presses the shortcut as slowly as a person.
    void pressSlowly() {
        keyboard_.press(KEY_LEFTMETA);
        awaitEventLoop();
        keyboard_.tap(KEY_G);
        keyboard_.release(KEY_LEFTMETA);
        awaitEventLoop();
    }

    OtherX11Program otherProgram_{session_.display()};
    std::unique_ptr<ChildProcess> service_;
};

TEST_F(TakenShortcutTests, IsNotifiedOnceAndOpensThePreferencesIfChosen) {
    startNotificationService();
    startProgram();
    waitForName();
    ASSERT_TRUE(service_->waitForOutput(takenTitle)) << program_->standardError();
    EXPECT_NE(service_->standardOutput().find("|default,Open Preferences\n"), std::string::npos);
    pressSlowly();
    EXPECT_EQ(logged(takenMessage), 1U);
    EXPECT_EQ(preferencesWindowCount(), 0U);
    runTool({"gdbus",
             "emit",
             "--session",
             "--object-path=/org/freedesktop/Notifications",
             "--signal=org.freedesktop.Notifications.ActionInvoked",
             "uint32 1",
             "'default'"});
    EXPECT_TRUE(waitForPreferencesInFront());
    EXPECT_EQ(countOf(service_->standardOutput(), takenTitle), 1U);
}

TEST_F(TakenShortcutTests, IsLoggedIfThereIsNoNotificationService) {
    startProgram();
    EXPECT_TRUE(waitForLog(takenMessage)) << program_->standardError();
    const auto owner = startOwner({"normal"});
    activate("convert");
    EXPECT_TRUE(waitForLog(wroteMessage)) << program_->standardError();
}

TEST_F(TakenShortcutTests, WorksAtTheFirstPressAfterTheOtherProgramGaveItUp) {
    startNotificationService();
    startProgram();
    waitForName();
    const auto owner = startOwner({"normal"});
    pressSlowly();
    EXPECT_EQ(logged(wroteMessage), 0U);
    EXPECT_EQ(otherProgram_.pressCount(), 1);
    otherProgram_.giveBack(x11KeyG, superMask);
    pressSlowly();
    EXPECT_TRUE(waitForLog(wroteMessage)) << program_->standardError();
    pressSlowly();
    EXPECT_TRUE(waitForLog(wroteMessage, 2)) << program_->standardError();
    EXPECT_EQ(logged(wroteMessage), 2U);
    EXPECT_EQ(logged(takenMessage), 1U);
    EXPECT_EQ(countOf(service_->standardOutput(), takenTitle), 1U);
}

} // namespace
