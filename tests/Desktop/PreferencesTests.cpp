#include "tests/Desktop/PreferencesTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using program_test::completedStatus;
using program_test::PreferencesTest;
using program_test::readyStatus;
using program_test::recordingStatus;
using program_test::StoredSettings;
using program_test::wroteMessage;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing_support::waitUntil;

constexpr std::string_view triggeredMessage = "Global shortcut triggered";
/// Shortcuts as the settings store them.
constexpr StoredSettings::Shortcut commandShiftK{.keyCode = 40, .modifiers = 0x120000};
constexpr StoredSettings::Shortcut commandG{.keyCode = 5, .modifiers = 0x100000};

class PreferencesTests : public PreferencesTest {
  protected:
    void pressCommandShiftK() { keyboard_.tapTogether({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_K}); }

    /// Records Command+Shift+K and waits until the window is ready for another.
    void recordCommandShiftK() {
        startRecording();
        pressCommandShiftK();
        ASSERT_TRUE(waitUntilShown("⌘⇧K"));
        ASSERT_TRUE(waitUntilShown(readyStatus));
    }

    void expectStored(const StoredSettings::Shortcut& shortcut) {
        EXPECT_TRUE(waitUntil([&] {
            const auto stored = settings();
            return stored && stored->shortcut() == shortcut;
        }));
    }

    /// Presses both shortcuts and expects a conversion for Command+Shift+K only.
    void expectCommandShiftKAlone() {
        const auto owner = startOwner({"normal"});
        const std::size_t before = logged(wroteMessage);
        const std::size_t triggeredBefore = logged(triggeredMessage);
        pressShortcut();
        pressCommandShiftK();
        ASSERT_TRUE(waitForLog(wroteMessage, before + 1));
        EXPECT_EQ(logged(triggeredMessage), triggeredBefore + 1);
    }
};

TEST_F(PreferencesTests, ShowsTheShortcutAndTheButtons) {
    tidyDesktop();
    startReadableProgram();
    openPreferences();
    for (const char* name :
         {"Keyboard Shortcut", "Current Shortcut:", "⌘G", "Record Shortcut", "Reset to Default"}) {
        EXPECT_TRUE(isShown(name)) << name << " is not in " << testing::PrintToString(names());
    }
    EXPECT_TRUE(isShown(readyStatus));
    takeScreenshot("preferences.png", {.x = 390, .y = 190, .width = 500, .height = 420});
}

TEST_F(PreferencesTests, TheWindowHasAnIconAndTheApplicationIdAsItsClass) {
    startReadableProgram();
    openPreferences();
    EXPECT_EQ(runTool({"xprop", "-name", "Pastewise Preferences", "WM_CLASS"}),
              "WM_CLASS(STRING) = \"pastewise\", \"com.app.pastewise\"\n");
    const std::string icon =
        runTool({"xprop", "-name", "Pastewise Preferences", "-len", "1000000", "_NET_WM_ICON"});
    EXPECT_THAT(icon, AllOf(HasSubstr("Icon (48 x 48)"), HasSubstr("Icon (128 x 128)")));
}

TEST_F(PreferencesTests, ARecordedShortcutReplacesTheOldOneNowAndAfterARestart) {
    startTray();
    startReadableProgram();
    ASSERT_TRUE(waitForIcons(1));
    choose("Preferences…");
    awaitPreferences();
    startRecording();
    pressCommandShiftK();
    // This state lasts for 1.5 seconds only, so it is read once.
    std::vector<std::string> shown;
    EXPECT_TRUE(waitUntil([&] {
        shown = names();
        return std::find(shown.begin(), shown.end(), completedStatus) != shown.end();
    }));
    EXPECT_THAT(shown, AllOf(Contains("⌘⇧K"), Contains("Record New Shortcut")));
    EXPECT_TRUE(waitForTitle(3, "Shortcut: Command + Shift K"));
    EXPECT_TRUE(waitUntilShown(readyStatus));
    expectStored(commandShiftK);

    expectCommandShiftKAlone();
    EXPECT_EQ(logged("Shortcut triggered"), 1U);
    endProgram();
    startReadableProgram();
    expectCommandShiftKAlone();
    openPreferences();
    EXPECT_TRUE(isShown("⌘⇧K"));
}

TEST_F(PreferencesTests, ResetToDefaultRestoresTheDefault) {
    startReadableProgram();
    openPreferences();
    recordCommandShiftK();
    pressByKeyboard("Reset to Default");
    EXPECT_TRUE(waitUntilShown("⌘G"));
    EXPECT_TRUE(isShown(readyStatus));
    expectStored(commandG);
    const auto owner = startOwner({"normal"});
    pressCommandShiftK();
    convert();
    EXPECT_EQ(logged(triggeredMessage), 1U);
}

TEST_F(PreferencesTests, KeysThatCannotBeAShortcutAreSwallowedAndRecordingContinues) {
    startReadableProgram();
    openPreferences();
    startRecording();
    keyboard_.tap(KEY_G);
    keyboard_.tap(KEY_ESC);
    keyboard_.tap(KEY_TAB);
    keyboard_.tap(KEY_KP5);
    keyboard_.tap(KEY_KPPLUS);
    keyboard_.tap(KEY_KPENTER);
    keyboard_.tapTogether({KEY_LEFTMETA, KEY_LEFT});
    keyboard_.tapTogether({KEY_LEFTMETA, KEY_F5});
    // Events arrive in order. Had one of them been recorded, this would come too late.
    pressCommandShiftK();
    EXPECT_TRUE(waitUntilShown("⌘⇧K"));
    EXPECT_EQ(logged("Setting shortcut - "), 1U);
    EXPECT_EQ(preferencesWindowCount(), 1U);
}

TEST_F(PreferencesTests, AFocusedButtonDoesNotReactToASwallowedKey) {
    startReadableProgram();
    openPreferences();
    startRecording();
    keyboard_.tap(KEY_SPACE);
    keyboard_.tap(KEY_ENTER);
    keyboard_.tap(KEY_SPACE);
    pressCommandShiftK();
    // A button that had reacted would have ended the recording.
    EXPECT_TRUE(waitUntilShown("⌘⇧K"));
    EXPECT_TRUE(waitUntilShown(readyStatus));
    expectStored(commandShiftK);
}

TEST_F(PreferencesTests, TheKeyThatStartsARecordingIsNotRecordedWhileItIsHeld) {
    runTool({"xset", "r", "rate", "50", "100"});
    startReadableProgram();
    openPreferences();
    focus("Record Shortcut");
    keyboard_.tap(KEY_CAPSLOCK);
    keyboard_.press(KEY_ENTER);
    // It is repeated every 10 ms meanwhile.
    EXPECT_TRUE(waitUntilShown(recordingStatus));
    keyboard_.release(KEY_ENTER);
    keyboard_.tap(KEY_CAPSLOCK);
    pressCommandShiftK();
    EXPECT_TRUE(waitUntilShown("⌘⇧K"));
    EXPECT_EQ(logged("Setting shortcut - "), 1U);
}

TEST_F(PreferencesTests, ResetToDefaultStopsTheRecording) {
    startReadableProgram();
    openPreferences();
    startRecording();
    click("Reset to Default");
    EXPECT_TRUE(waitUntilShown(readyStatus));
    pressCommandShiftK();
    // Tab would be swallowed in a recording.
    pressByKeyboard("Record Shortcut");
    EXPECT_TRUE(waitUntilShown(recordingStatus));
    EXPECT_TRUE(isShown("⌘G"));
}

TEST_F(PreferencesTests, PressingTheButtonAgainStopsTheRecording) {
    startReadableProgram();
    openPreferences();
    startRecording();
    click("Stop Recording");
    EXPECT_TRUE(waitUntilShown(readyStatus));
    pressCommandShiftK();
    pressByKeyboard("Record Shortcut");
    EXPECT_TRUE(waitUntilShown(recordingStatus));
    EXPECT_TRUE(isShown("⌘G"));
}

TEST_F(PreferencesTests, ADigitIsRecordedAndShownAsItsModifiersOnly) {
    startReadableProgram();
    openPreferences();
    startRecording();
    keyboard_.tapTogether({KEY_LEFTCTRL, KEY_LEFTALT, KEY_5});
    EXPECT_TRUE(waitUntilShown("⌥⌃"));
    const auto owner = startOwner({"normal"});
    keyboard_.tapTogether({KEY_LEFTCTRL, KEY_LEFTALT, KEY_5});
    EXPECT_TRUE(waitForLog(wroteMessage));
}

TEST_F(PreferencesTests, ClosingTheWindowStopsTheRecordingButNotTheProgram) {
    startReadableProgram();
    openPreferences();
    startRecording();
    closePreferences();
    const auto owner = startOwner({"normal"});
    convert();
    pressCommandShiftK();
    openPreferences();
    EXPECT_TRUE(isShown(readyStatus));
    EXPECT_TRUE(isShown("Record Shortcut"));
    EXPECT_TRUE(isShown("⌘G"));
    recordCommandShiftK();
    EXPECT_EQ(logged("Instantiating PreferencesWindowController"), 1U);
}

TEST_F(PreferencesTests, TheShortcutWorksWhileTheWindowHasTheFocus) {
    startReadableProgram();
    openPreferences();
    const auto owner = startOwner({"normal", "--text", "- tea"});
    convert();
    EXPECT_EQ(paste("UTF8_STRING"), "tea");
    EXPECT_TRUE(isShown(readyStatus));
}

} // namespace
