#include "tests/Desktop/TrayTest.h"
#include "tests/Support/XEmbedTray.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using program_test::creditedMessage;
using program_test::TrayTest;
using testing_support::waitUntil;
using testing_support::XEmbedTray;

/// Whether the pixels, of four bytes each, are not all of one colour.
bool isDrawn(const std::vector<std::uint8_t>& pixels) {
    constexpr std::ptrdiff_t bytesPerPixel = 4;
    return !pixels.empty() &&
           !std::equal(pixels.begin() + bytesPerPixel, pixels.end(), pixels.begin());
}

/// The program on desktops whose tray starts late, quits, comes back, or is missing.
class TrayPresenceTests : public TrayTest {
  protected:
    /// Whether the tray shows the program's icon, follows a flash of it, and has its menu.
    void expectWorkingTray() {
        ASSERT_TRUE(waitForIcons(1)) << program_->standardError();
        ASSERT_TRUE(waitForEndOfFlash());
        const auto owner = startOwner({"normal"});
        const std::size_t before = icons().size();
        convert();
        EXPECT_TRUE(waitForIcons(before + 2));
        EXPECT_EQ(openMenu().size(), 6U);
    }
};

TEST_F(TrayPresenceTests, TheIconAppearsInATrayThatStartsLater) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    ASSERT_TRUE(waitForLog(creditedMessage));
    ASSERT_TRUE(waitForEndOfFlash());
    startTray();
    expectWorkingTray();
    EXPECT_EQ(openMenu().at(0).title, "Time Saved: 40s");
}

TEST_F(TrayPresenceTests, TheIconAppearsWhenAHostJoinsTheWatcher) {
    startTray({"--no-host"});
    startProgram();
    ask("host on");
    expectWorkingTray();
}

TEST_F(TrayPresenceTests, TheIconComesBackWithARestartedTray) {
    startProgramInTray();
    constexpr int restartCount = 3;
    for (int i = 0; i < restartCount; ++i) {
        tray_.reset();
        startTray();
        expectWorkingTray();
    }
}

TEST_F(TrayPresenceTests, TheIconComesBackWhenTheTrayTakesItsNameAgain) {
    startProgramInTray();
    ask("watcher off");
    const auto owner = startOwner({"normal"});
    convert();
    ASSERT_TRUE(waitForEndOfFlash());
    ask("watcher on");
    ASSERT_TRUE(waitForTrayEvents("registered", 2));
    expectWorkingTray();
}

TEST_F(TrayPresenceTests, IconAndNameAppearWhenASessionBusThatHungAtTheStartAnswers) {
    startTray();
    session_.suspendBus(true);
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    ASSERT_TRUE(waitForEndOfFlash());
    session_.suspendBus(false);
    expectWorkingTray();
    activate("preferences");
    EXPECT_TRUE(waitForPreferencesInFront());
}

TEST_F(TrayPresenceTests, IconAndNameComeBackWhenTheSessionBusWasRestarted) {
    startProgramInTray();
    session_.restartBus();
    startTray();
    expectWorkingTray();
    activate("preferences");
    EXPECT_TRUE(waitForPreferencesInFront());
}

TEST_F(TrayPresenceTests, WithoutATrayTheProgramConvertsAndASecondStartShowsThePreferences) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitForLog(creditedMessage));
    const auto second = startAgain();
    EXPECT_EQ(second->waitForExit(), 0) << second->standardError();
    EXPECT_TRUE(waitForPreferencesInFront());
    convert();
}

TEST_F(TrayPresenceTests, TheIconMovesToATrayOfTheOtherKindAndBack) {
    startProgramInTray();
    XEmbedTray windows(session_.display());
    EXPECT_EQ(windows.iconCount(), 0U);
    ask("watcher off");
    std::vector<std::uint8_t> usual;
    ASSERT_TRUE(waitUntil([&] {
        usual = windows.iconPixels();
        return isDrawn(usual);
    })) << program_->standardError();
    EXPECT_EQ(windows.iconCount(), 1U);
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(waitUntil([&] { return windows.iconPixels() != usual; }));
    EXPECT_TRUE(waitUntil([&] { return windows.iconPixels() == usual; }));
    ask("watcher on");
    EXPECT_TRUE(waitUntil([&] { return windows.iconCount() == 0; }));
    expectWorkingTray();
}

TEST_F(TrayPresenceTests, AClickAtAnIconThatIsAWindowOpensTheMenuWhoseKeysChooseRows) {
    XEmbedTray windows(session_.display());
    startProgram();
    ASSERT_TRUE(waitUntil([&] { return windows.iconCount() == 1; })) << program_->standardError();
    windows.clickIcon(1);
    ASSERT_TRUE(waitForLog("Menu about to open; refreshing content to prevent caching"));
    // The menu has the keyboard once it is on the screen.
    EXPECT_TRUE(waitUntil([this] {
        keyboard_.tapTogether({KEY_LEFTMETA, KEY_COMMA});
        return preferencesWindowCount() == 1;
    }));
    EXPECT_EQ(logged("Menu about to open"), 1U);
}

} // namespace
