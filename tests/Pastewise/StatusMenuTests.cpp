#include "tests/Pastewise/AppDelegateTest.h"
#include "tests/Support/CallOrder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using platform::KeyEquivalent;
using testing_support::madeInOrder;

class StatusMenuTests : public delegate_test::AppDelegateTest {};

TEST_F(StatusMenuTests, HasSixRowsInOrder) {
    launch();

    struct Row {
        std::string title;
        bool isEnabled;
        bool isSeparator;
        std::optional<KeyEquivalent> keyEquivalent;
        bool operator==(const Row&) const = default;
    };

    std::vector<Row> rows;
    for (const auto& one : item().menu()->items()) {
        rows.push_back({one->title(), one->isEnabled(), one->isSeparator(), one->keyEquivalent()});
    }
    const auto commandKey = hotkey::ModifierFlags::command;
    EXPECT_EQ(rows,
              (std::vector<Row>{{"Time Saved: 0s", false, false, {}},
                                {"Clear Saved Time…", true, false, {}},
                                {"Preferences…", true, false, KeyEquivalent{",", commandKey}},
                                {"Shortcut: Command G", false, false, {}},
                                {"", false, true, {}},
                                {"Quit", true, false, KeyEquivalent{"q", commandKey}}}));
}

TEST_F(StatusMenuTests, EachEnabledRowHasANamedAction) {
    launch();
    std::vector<std::string> names;
    for (const auto& row : item().menu()->items()) {
        names.push_back(row->action().name);
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{
                  "", "clearSavedTime", "openPreferencesAction", "", "", "quitApp"}));
}

TEST_F(StatusMenuTests, TheItemShowsOnlyItsIcon) {
    launch();
    EXPECT_EQ(item().length(), -1);
    EXPECT_EQ(button().imagePosition(), platform::StatusBarButton::ImagePosition::imageOnly);
    EXPECT_EQ(button().title(), "");
    EXPECT_EQ(button().action().perform, nullptr);
    EXPECT_EQ(shownGlyph(), "P");
}

TEST_F(StatusMenuTests, RowsHaveTheirKeyEquivalents) {
    launch();
    const auto& rows = item().menu()->items();
    EXPECT_EQ(rows[5]->keyEquivalent(), (KeyEquivalent{"q", {0x100000}}));
    EXPECT_EQ(rows[2]->keyEquivalent(), (KeyEquivalent{",", {0x100000}}));
    EXPECT_EQ(rows[0]->keyEquivalent(), std::nullopt);
    EXPECT_EQ(rows[3]->keyEquivalent(), std::nullopt);
}

TEST_F(StatusMenuTests, OpeningTheMenuRefreshesTheTotal) {
    launchQuietly();
    // Clears the row, so that only opening the menu can fill it.
    shared_->analyticsManager().recordConversion(7, pastewise::ConversionSource::hotkey);
    item().menu()->items()[0]->setTitle("");
    item().menu()->items()[3]->setTitle("");
    system_.logSink().clear();
    item().click();
    EXPECT_EQ(rowTitle(0), "Time Saved: 1m 10s");
    EXPECT_EQ(rowTitle(3), "Shortcut: Command G");
    EXPECT_EQ(system_.logSink().messages(),
              (std::vector<std::string>{
                  "debug: Menu about to open; refreshing content to prevent caching"}));
}

TEST_F(StatusMenuTests, ShowsAStoredTotalRoundedToWholeSeconds) {
    system_.userDefaults().setObject("analytics.todaySavedSeconds.1970-01-01", 59.6);
    launch();
    EXPECT_EQ(rowTitle(0), "Time Saved: 1m");
}

TEST_F(StatusMenuTests, ShowsHoursWhenRoundingReachesThem) {
    system_.userDefaults().setObject("analytics.todaySavedSeconds.1970-01-01", 3599.5);
    launch();
    EXPECT_EQ(rowTitle(0), "Time Saved: 1h 00m");
}

TEST_F(StatusMenuTests, ClearSavedTimeActsWithoutADialog) {
    launch();
    copy("a\nb");
    pressShortcut();
    EXPECT_EQ(rowTitle(0), "Time Saved: 20s");
    system_.logSink().clear();
    EXPECT_TRUE(item().choose("Clear Saved Time…"));
    EXPECT_EQ(rowTitle(0), "Time Saved: 0s");
    EXPECT_EQ(shared_->analyticsManager().todaySavedSeconds(), 0);
    EXPECT_TRUE(system_.alerts().shown().empty());
    const auto messages = system_.logSink().messages();
    ASSERT_GE(messages.size(), 3U);
    EXPECT_EQ(messages[1], "debug: Clear Saved Time menu item selected; resetting analytics");
    EXPECT_EQ(messages[2], "debug: resetStats requested");
}

TEST_F(StatusMenuTests, ChoosingPreferencesTwiceShowsTheSameWindowTwice) {
    launchQuietly();
    EXPECT_TRUE(item().choose("Preferences…"));
    EXPECT_EQ(system_.application().activationCount(), 1);
    EXPECT_TRUE(shared_->analyticsStateBridge().appState.isPreferencesWindowShown());
    EXPECT_TRUE(item().choose("Preferences…"));
    EXPECT_EQ(system_.application().activationCount(), 2);
    ASSERT_EQ(system_.toolkit().windows().size(), 1U);
    EXPECT_TRUE(system_.toolkit().windows().front()->isVisible());
    EXPECT_EQ(logged("debug: Instantiating PreferencesWindowController"), 1);
}

TEST_F(StatusMenuTests, ShowsThePreferencesThenActivatesThenMarksThemAsShown) {
    launch();
    auto& appState = shared_->analyticsStateBridge().appState;
    bool wereMarkedWhenActivated = true;
    system_.journal().setWhileCalled([&](std::string_view call) {
        if (call == "activate") {
            wereMarkedWhenActivated = appState.isPreferencesWindowShown();
        }
    });
    EXPECT_TRUE(item().choose("Preferences…"));
    EXPECT_TRUE(madeInOrder(system_.journal(),
                            {"log debug: Instantiating PreferencesWindowController",
                             "make window",
                             "show window",
                             "activate"}));
    EXPECT_FALSE(wereMarkedWhenActivated);
    EXPECT_TRUE(appState.isPreferencesWindowShown());
}

TEST_F(StatusMenuTests, ClosedPreferencesReopenInTheSameWindow) {
    launch();
    EXPECT_TRUE(item().choose("Preferences…"));
    system_.toolkit().windows().front()->close();
    EXPECT_FALSE(system_.toolkit().windows().front()->isVisible());
    EXPECT_TRUE(shared_->analyticsStateBridge().appState.isPreferencesWindowShown());
    EXPECT_TRUE(item().choose("Preferences…"));
    ASSERT_EQ(system_.toolkit().windows().size(), 1U);
    EXPECT_TRUE(system_.toolkit().windows().front()->isVisible());
}

TEST_F(StatusMenuTests, QuitTerminatesTheApplication) {
    launchQuietly();
    EXPECT_TRUE(item().choose("Quit"));
    EXPECT_TRUE(system_.application().isTerminated());
    EXPECT_TRUE(
        madeInOrder(system_.journal(),
                    {"log debug: Quit menu item selected; terminating application", "terminate"}));
}

TEST_F(StatusMenuTests, TheShortcutRowFollowsANewShortcutAndTheDefault) {
    launchQuietly();
    shared_->shortcutManager().setShortcut(
        hotkey::Key::k, hotkey::ModifierFlags::command | hotkey::ModifierFlags::shift);
    EXPECT_EQ(rowTitle(3), "Shortcut: Command + Shift K");
    EXPECT_EQ(logged("debug: Updated shortcut display row to: Command + Shift K"), 1);
    shared_->shortcutManager().clearShortcut();
    EXPECT_EQ(rowTitle(3), "Shortcut: Command G");
    EXPECT_EQ(logged("debug: Updated shortcut display row to: Command G"), 1);
}

TEST_F(StatusMenuTests, WithoutAButtonThereIsNoMenuButTheShortcutConverts) {
    system_.statusBar().refuseButtons();
    launch();
    EXPECT_EQ(logged("error: Failed to create status bar button"), 1);
    EXPECT_EQ(item().menu(), nullptr);
    system_.logSink().clear();
    copy("a\nb\nc");
    pressShortcut();
    EXPECT_EQ(system_.pasteboard().contents().at(platform::PasteboardType::string), "a\nb\nc");
    EXPECT_EQ(logged("debug: Updated time saved display to: 30s"), 1);
    EXPECT_EQ(logged("debug: Flashing checkmark icon in menu bar"), 0);
    EXPECT_EQ(system_.mainQueue().pendingCount(), 0U);
    EXPECT_TRUE(system_.images().requestedSymbols().empty());
    EXPECT_EQ(system_.images().drawnCount(), 0);
}

TEST_F(StatusMenuTests, RowsDoNothingOnceTheDelegateIsGone) {
    launchQuietly();
    const auto menu = item().menu();
    delegate_.reset();
    EXPECT_EQ(system_.statusBar().item(), nullptr);
    menu->willOpen();
    menu->items()[5]->perform();
    EXPECT_FALSE(system_.application().isTerminated());
    EXPECT_TRUE(system_.logSink().messages().empty());
}

} // namespace
