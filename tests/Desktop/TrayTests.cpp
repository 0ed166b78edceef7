#include "tests/Desktop/TrayTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using program_test::creditedMessage;
using program_test::TrayTest;
using testing_support::ChildProcess;
using testing_support::waitUntil;

constexpr std::string_view restoredMessage = "Restoring base status icon after flash";
constexpr auto flashDuration = 900ms;

/// The clock of the tray host's time stamps.
std::chrono::nanoseconds now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

class TrayTests : public TrayTest {
  protected:
    /// Converts and waits until the accounting is done.
    void convertAndCredit() {
        const std::size_t before = logged(creditedMessage);
        convert();
        ASSERT_TRUE(waitForLog(creditedMessage, before + 1));
    }

    /// Whether the tray was told, without asking, that a row now has this title.
    bool waitForUpdate(const std::string& title) {
        return waitUntil([&] {
            for (const auto& event : tray_->all("rows-updated")) {
                for (const auto& label : event.at("rows")) {
                    if (label == title) {
                        return true;
                    }
                }
            }
            return false;
        });
    }
};

TEST_F(TrayTests, TheMenuHasItsSixRows) {
    startProgramInTray();
    EXPECT_EQ(
        openMenu(),
        (std::vector<Row>{{.title = "Time Saved: 0s"},
                          {.title = "Clear Saved Time…", .isEnabled = true},
                          {.title = "Preferences…", .isEnabled = true, .keys = {"Super", "comma"}},
                          {.title = "Shortcut: Command G"},
                          {.isEnabled = true, .isSeparator = true},
                          {.title = "Quit", .isEnabled = true, .keys = {"Super", "q"}}}));
}

TEST_F(TrayTests, EachOpeningRefreshesTheMenuOnce) {
    startProgramInTray();
    constexpr std::string_view opening =
        "Menu about to open; refreshing content to prevent caching";
    EXPECT_EQ(logged(opening), 0U);
    static_cast<void>(openMenu());
    ASSERT_TRUE(waitForLog(opening, 1));
    static_cast<void>(openMenu());
    ASSERT_TRUE(waitForLog(opening, 2));
    EXPECT_EQ(logged(opening), 2U);
}

TEST_F(TrayTests, TheTotalFollowsConversionsWithoutOpeningTheMenu) {
    startProgramInTray();
    EXPECT_EQ(titles().at(0), "Time Saved: 0s");
    const auto owner = startOwner({"normal"});
    convertAndCredit();
    EXPECT_TRUE(waitForUpdate("Time Saved: 20s"));
    for (int i = 0; i < 2; ++i) {
        convertAndCredit();
    }
    EXPECT_TRUE(waitForUpdate("Time Saved: 1m"));
    EXPECT_EQ(titles().at(0), "Time Saved: 1m");
    EXPECT_EQ(logged("Menu about to open"), 0U);
    EXPECT_EQ(openMenu().at(0).title, "Time Saved: 1m");
}

TEST_F(TrayTests, OpeningTheMenuRightAfterAConversionShowsTheNewTotal) {
    startProgramInTray();
    const auto owner = startOwner({"normal"});
    convertAndCredit();
    EXPECT_EQ(openMenu().at(0).title, "Time Saved: 20s");
}

TEST_F(TrayTests, ClearSavedTimeActsAtOnceAndWithoutADialog) {
    startProgramInTray();
    const auto owner = startOwner({"normal"});
    convertAndCredit();
    ASSERT_TRUE(waitForTitle(0, "Time Saved: 20s"));
    choose("Clear Saved Time…");
    EXPECT_TRUE(waitForUpdate("Time Saved: 0s"));
    EXPECT_EQ(titles().at(0), "Time Saved: 0s");
    EXPECT_EQ(logged("Clear Saved Time menu item selected; resetting analytics"), 1U);
    EXPECT_TRUE(waitUntil([this] {
        const auto stored = settings();
        return stored && stored->savedSeconds() == 0 &&
               !stored->holds("analytics.lastInteractionDate");
    }));
    // No window of any kind has opened.
    EXPECT_TRUE(runTool({"xprop", "-root", "_NET_CLIENT_LIST"}).find("0x") == std::string::npos);
}

TEST_F(TrayTests, PreferencesOpensOneWindowAndBringsItToTheFrontAgain) {
    startProgramInTray();
    choose("Preferences…");
    EXPECT_TRUE(waitForPreferencesInFront());
    const auto other = openOtherWindow();
    choose("Preferences…");
    EXPECT_TRUE(waitForPreferencesInFront());
    EXPECT_EQ(logged("Instantiating PreferencesWindowController"), 1U);
}

TEST_F(TrayTests, QuitEndsTheProgramWithTheClipboardAndTheTotalKept) {
    ChildProcess clipboardManager({"xfsettingsd", "--no-daemon"},
                                  {.environment = session_.environment()});
    ASSERT_TRUE(waitUntil([this] {
        ChildProcess query({PASTEWISE_CLIPBOARD_READER,
                            "targets",
                            "--selection",
                            "CLIPBOARD_MANAGER",
                            "--timeout",
                            "1000"},
                           {.environment = session_.environment()});
        return query.waitForExit() == 0;
    })) << clipboardManager.standardError();
    startProgramInTray();
    const auto owner = startOwner({"normal", "--text", "- tea\n- cake\n- jam"});
    convertAndCredit();
    const std::string html = paste("text/html");
    choose("Quit");
    EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
    EXPECT_EQ(logged("Quit menu item selected; terminating application"), 1U);
    EXPECT_EQ(paste("UTF8_STRING"), "tea\ncake\njam");
    EXPECT_EQ(paste("text/html"), html);
    const auto stored = settings();
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->savedSeconds(), 30);
    EXPECT_TRUE(waitForTrayEvents("unregistered", 1));
}

TEST_F(TrayTests, AConversionFlashesACheckmarkAndThenRestoresTheIcon) {
    startProgramInTray();
    const auto owner = startOwner({"normal"});
    const auto pressed = now();
    convert();
    ASSERT_TRUE(waitForIcons(3)) << program_->standardError();
    const auto shown = icons();
    EXPECT_EQ(shown.at(2).at("digest"), shown.at(0).at("digest"));
    const std::chrono::nanoseconds restored(shown.at(2).at("time").get<std::int64_t>());
    EXPECT_GE(restored - pressed, flashDuration);
    EXPECT_LT(restored - pressed, flashDuration + testing_support::patience);
    EXPECT_EQ(logged("Falling back to drawn glyph for checkmark flash"), 1U);
    EXPECT_EQ(logged(restoredMessage), 1U);
}

TEST_F(TrayTests, SuccessiveConversionsKeepTheCheckmarkUntilTheLastFlashEnds) {
    startProgramInTray();
    const auto owner = startOwner({"normal"});
    auto lastPress = now();
    for (int i = 0; i < 3; ++i) {
        if (i > 0) {
            std::this_thread::sleep_for(500ms); // as somebody does who presses again
        }
        lastPress = now();
        convert();
    }
    ASSERT_TRUE(waitForLog(restoredMessage));
    ASSERT_TRUE(waitForIcons(3));
    const std::chrono::nanoseconds restored(icons().at(2).at("time").get<std::int64_t>());
    EXPECT_GE(restored - lastPress, flashDuration);
    // A restoration that should have been cancelled would come before those of one more flash.
    convert();
    ASSERT_TRUE(waitForIcons(5));
    EXPECT_EQ(logged(restoredMessage), 2U);
    EXPECT_EQ(logged("Flashing checkmark icon in menu bar"), 4U);
    EXPECT_EQ(icons().size(), 5U);
    EXPECT_EQ(logged("Falling back to drawn glyph for checkmark flash"), 1U);
}

TEST_F(TrayTests, AnImageOnTheClipboardCausesNoFlash) {
    startProgramInTray();
    const auto owner = startOwner({"image"});
    expectNoText(*owner);
    EXPECT_EQ(logged("Clipboard read failed: empty or non-text content"), 1U);
    EXPECT_EQ(logged("Flashing checkmark icon in menu bar"), 0U);
    EXPECT_EQ(icons().size(), 1U);
}

TEST_F(TrayTests, ATextOfBlankLinesFlashesAndCreditsNothing) {
    startProgramInTray();
    const auto owner = startOwner({"normal", "--text", " \n\n "});
    convert();
    EXPECT_TRUE(waitForLog("Conversion produced no stickies; skipping savings computation"));
    EXPECT_TRUE(waitForIcons(2));
    EXPECT_EQ(logged(creditedMessage), 0U);
    EXPECT_EQ(titles().at(0), "Time Saved: 0s");
}

TEST_F(TrayTests, TheIconIsOfferedInEverySizeThatPanelsUse) {
    startProgramInTray();
    const auto sizes = icons().at(0).at("sizes").get<std::vector<std::string>>();
    for (const char* size : {"16x16", "22x22", "24x24", "32x32", "48x48", "64x64"}) {
        EXPECT_NE(std::find(sizes.begin(), sizes.end(), size), sizes.end()) << size;
    }
}

} // namespace
