#include "tests/Pastewise/AppDelegateTest.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

class AppDelegateTests : public delegate_test::AppDelegateTest {
  protected:
    /// The messages of the delegate itself.
    std::vector<std::string> ownLines() {
        std::vector<std::string> lines;
        for (const auto& entry : system_.logSink().entries()) {
            if (entry.category == "AppDelegate") {
                lines.push_back(entry.whole);
            }
        }
        return lines;
    }
};

TEST_F(AppDelegateTests, ACreditIsLoggedByBothObserversInOrder) {
    launchQuietly();
    shared_->notificationCenter().post({std::string(pastewise::analyticsSavingsApplied), 12.5});
    EXPECT_EQ(ownLines(),
              (std::vector<std::string>{
                  "Received analytics update; last interaction saved 12.500000 seconds",
                  "Updated time saved display to: 0s"}));
}

TEST_F(AppDelegateTests, ANotificationWithoutADoubleCountsAsZero) {
    launchQuietly();
    shared_->notificationCenter().post({std::string(pastewise::analyticsSavingsApplied), {}});
    shared_->notificationCenter().post(
        {std::string(pastewise::analyticsSavingsApplied), foundation::Value("12")});
    shared_->notificationCenter().post(
        {std::string(pastewise::analyticsSavingsApplied), std::int64_t{12}});
    const auto lines = ownLines();
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[0], "Received analytics update; last interaction saved 0.000000 seconds");
    EXPECT_EQ(lines[2], "Received analytics update; last interaction saved 0.000000 seconds");
    EXPECT_EQ(lines[4], "Received analytics update; last interaction saved 0.000000 seconds");
}

TEST_F(AppDelegateTests, TheRowShowsTheStateNotTheNotification) {
    launchQuietly();
    shared_->analyticsManager().applyConfirmedSavings(75);
    shared_->notificationCenter().post({std::string(pastewise::analyticsSavingsApplied), 1.0});
    EXPECT_EQ(rowTitle(0), "Time Saved: 1m 15s");
}

TEST_F(AppDelegateTests, SetsATitleBeforeLoggingIt) {
    launchQuietly();
    std::vector<std::string> titles;
    system_.journal().setWhileCalled([&](std::string_view call) {
        if (call == "log debug: Updated time saved display to: 20s") {
            titles.push_back(rowTitle(0));
        } else if (call == "log debug: Updated shortcut display row to: Command K") {
            titles.push_back(rowTitle(3));
        }
    });
    shared_->analyticsManager().applyConfirmedSavings(20);
    shared_->shortcutManager().setShortcut(hotkey::Key::k, hotkey::ModifierFlags::command);
    EXPECT_EQ(titles, (std::vector<std::string>{"Time Saved: 20s", "Shortcut: Command K"}));
}

TEST_F(AppDelegateTests, AnImageOnTheClipboardIsLoggedAsAnErrorWithoutAFlash) {
    launchQuietly();
    system_.pasteboard().copyImageElsewhere();
    pressShortcut();
    EXPECT_EQ(
        ownLines(),
        (std::vector<std::string>{"Global shortcut triggered; attempting clipboard conversion",
                                  "Clipboard read failed: empty or non-text content"}));
    EXPECT_EQ(shownGlyph(), "P");
    EXPECT_EQ(rowTitle(0), "Time Saved: 0s");
}

TEST_F(AppDelegateTests, ARefusedWriteCreditsNothing) {
    launchQuietly();
    copy("a");
    system_.pasteboard().refuse(platform::PasteboardType::string);
    pressShortcut();
    EXPECT_EQ(ownLines().back(), "Clipboard write failed; unable to update content for Miro");
    EXPECT_EQ(rowTitle(0), "Time Saved: 0s");
}

TEST_F(AppDelegateTests, RunningOutOfMemoryLeavesTheClipboardUnchanged) {
    launchQuietly();
    copy("• a");
    system_.pasteboard().runOutOfMemory();
    pressShortcut();
    EXPECT_EQ(
        ownLines(),
        (std::vector<std::string>{"Global shortcut triggered; attempting clipboard conversion",
                                  "Not enough memory to go on with the conversion"}));
    EXPECT_EQ(system_.pasteboard().contents().at(platform::PasteboardType::string), "• a");
    EXPECT_EQ(shownGlyph(), "P");
    EXPECT_EQ(rowTitle(0), "Time Saved: 0s");
}

TEST_F(AppDelegateTests, LogsNoPrivateValues) {
    system_.images().addSymbol("p.square");
    system_.images().addSymbol("checkmark");
    launch();
    copy("a");
    pressShortcut();
    shared_->shortcutManager().setShortcut(hotkey::Key::k, hotkey::ModifierFlags::command);
    for (const auto& entry : system_.logSink().entries()) {
        if (entry.category == "AppDelegate") {
            EXPECT_EQ(entry.redacted, entry.whole);
        }
    }
    EXPECT_EQ(logged("debug: Using SF Symbol for base status icon: p.square"), 1);
    EXPECT_EQ(logged("debug: Using SF Symbol for checkmark flash: checkmark"), 1);
    EXPECT_EQ(logged("debug: Updated time saved display to: 10s"), 1);
    EXPECT_EQ(logged("debug: Updated shortcut display row to: Command K"), 1);
}

TEST_F(AppDelegateTests, FlashesBeforeRecordingTheConversion) {
    launchQuietly();
    copy("a");
    pressShortcut();
    const auto messages = system_.logSink().messages();
    const auto flash =
        std::find(messages.begin(), messages.end(), "debug: Flashing checkmark icon in menu bar");
    const auto credit = std::find(messages.begin(),
                                  messages.end(),
                                  "debug: Recording conversion - stickies: 1, source: hotkey");
    ASSERT_NE(flash, messages.end());
    ASSERT_NE(credit, messages.end());
    EXPECT_LT(flash, credit);
}

TEST_F(AppDelegateTests, NothingHappensOnceTheDelegateIsGone) {
    launch();
    delegate_.reset();
    system_.logSink().clear();
    copy("• a");
    pressShortcut();
    shared_->notificationCenter().post({std::string(pastewise::analyticsSavingsApplied), 1.0});
    shared_->notificationCenter().post({std::string(pastewise::shortcutChanged), {}});
    EXPECT_EQ(system_.pasteboard().contents().at(platform::PasteboardType::string), "• a");
    EXPECT_TRUE(ownLines().empty());
}

} // namespace
