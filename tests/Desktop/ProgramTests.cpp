#include "tests/Desktop/ProgramTest.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace {

using program_test::countOf;
using program_test::noTextMessage;
using program_test::ProgramTest;
using program_test::wroteMessage;
using testing_support::ChildProcess;
using testing_support::waitUntil;

class ProgramTests : public ProgramTest {};

TEST_F(ProgramTests, OneKeyPressTurnsACopiedListIntoASheet) {
    startProgram();
    const auto owner = startOwner({"normal", "--text", "• Buy milk\n\n2. Call Ann"});
    convert();
    EXPECT_TRUE(owner->waitForOutput("lost"));
    EXPECT_EQ(paste("UTF8_STRING"), "Buy milk\nCall Ann");
    EXPECT_EQ(paste("text/plain;charset=utf-8"), "Buy milk\nCall Ann");

    ChildProcess filter({PASTEWISE_CONVERT}, {.standardInput = "• Buy milk\n\n2. Call Ann"});
    EXPECT_EQ(filter.waitForExit(), 0);
    EXPECT_EQ(paste("text/html"), filter.standardOutput());
}

TEST_F(ProgramTests, ConvertsAnEmptyTextToASheetWithoutRows) {
    startProgram();
    const auto owner = startOwner({"empty"});
    convert();
    EXPECT_EQ(paste("UTF8_STRING"), "");
    EXPECT_NE(paste("text/html").find("\"rowCount\": 0,"), std::string::npos);
}

TEST_F(ProgramTests, RepairsIllFormedTextInsteadOfPassingItOn) {
    startProgram();
    const auto owner = startOwner({"ill-formed"});
    convert();
    EXPECT_EQ(paste("UTF8_STRING"), "a\uFFFD\uFFFD(b");
}

TEST_F(ProgramTests, OneConversionIsOneChangeOfOwnershipWithBothTextsAtOnce) {
    startProgram();
    const auto owner = startOwner({"normal"});
    ChildProcess watcher({PASTEWISE_CLIPBOARD_READER, "changes"},
                         {.environment = session_.environment()});
    ASSERT_TRUE(watcher.waitForOutput("ready"));
    convert();
    ASSERT_TRUE(watcher.waitForOutput("change 1:"));
    convert();
    ASSERT_TRUE(watcher.waitForOutput("change 2:"));
    EXPECT_EQ(paste("UTF8_STRING"), "milk\nbread");
    // A late change would be listed before that of another owner.
    const auto lastOwner = startOwner({"image"});
    ASSERT_TRUE(watcher.waitForOutput("image/png"));
    EXPECT_NE(watcher.standardOutput().find("change 3:"), std::string::npos);
    EXPECT_EQ(countOf(watcher.standardOutput(), "change "), 3U) << watcher.standardOutput();
    EXPECT_EQ(countOf(watcher.standardOutput(), " text/html"), 2U);
}

TEST_F(ProgramTests, AHeldKeyConvertsOnce) {
    startProgram();
    const auto owner = startOwner({"normal"});
    keyboard_.press(KEY_LEFTMETA);
    keyboard_.press(KEY_G);
    ASSERT_TRUE(waitForLog(wroteMessage));
    // Long enough for auto-repeat, which starts after 660 ms, at 25 repeats a second.
    EXPECT_FALSE(waitUntil([this] { return logged("Global shortcut triggered") > 1; },
                           std::chrono::milliseconds(1500)));
    keyboard_.release(KEY_G);
    keyboard_.release(KEY_LEFTMETA);
    convert();
    EXPECT_EQ(logged("Global shortcut triggered"), 2U);
}

TEST_F(ProgramTests, ConvertsWithCapsLockAndNumLockOn) {
    startProgram();
    const auto owner = startOwner({"normal"});
    constexpr int capsLock = XCB_MOD_MASK_LOCK;
    constexpr int numLock = XCB_MOD_MASK_2;
    keyboard_.tap(KEY_CAPSLOCK);
    EXPECT_EQ(keyboard_.modifierState(), capsLock);
    convert();
    keyboard_.tap(KEY_NUMLOCK);
    EXPECT_EQ(keyboard_.modifierState(), capsLock | numLock);
    convert();
    keyboard_.tap(KEY_CAPSLOCK);
    EXPECT_EQ(keyboard_.modifierState(), numLock);
    convert();
}

class LayoutTests : public ProgramTests, public testing::WithParamInterface<const char*> {};

TEST_P(LayoutTests, TheShortcutStaysOnItsKeyUnderALayoutSetBeforeTheStart) {
    runTool({"setxkbmap", GetParam()});
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
}

TEST_P(LayoutTests, TheShortcutStaysOnItsKeyWhenTheLayoutChanges) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    runTool({"setxkbmap", GetParam()});
    convert();
    runTool({"setxkbmap", "us"});
    convert();
}

INSTANTIATE_TEST_SUITE_P(Each,
                         LayoutTests,
                         testing::Values("de", "fr", "ru"),
                         [](const auto& layout) { return std::string(layout.param); });

class TextlessOwnerTests : public ProgramTests, public testing::WithParamInterface<const char*> {};

TEST_P(TextlessOwnerTests, TheClipboardIsUnchangedAndTheNextConversionWorks) {
    startProgram();
    {
        const auto owner = startOwner({GetParam()});
        expectNoText(*owner);
    }
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_EQ(paste("UTF8_STRING"), "milk\nbread");
}

INSTANTIATE_TEST_SUITE_P(
    Each,
    TextlessOwnerTests,
    testing::Values("refuse", "refuse-text", "hang", "hang-text", "stall", "image", "files"),
    [](const auto& mode) {
        std::string name = mode.param;
        name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
        return name;
    });

TEST_F(ProgramTests, NothingOnTheClipboardIsReportedAsNoText) {
    startProgram();
    pressShortcut();
    EXPECT_TRUE(waitForLog(noTextMessage));
    EXPECT_TRUE(waitForLog("Clipboard read failed: empty or non-text content"));
}

TEST_F(ProgramTests, ConvertsAHundredThousandLines) {
    startProgram();
    std::string list;
    std::string cleaned;
    for (int i = 0; i < 100'000; ++i) {
        list += std::to_string(i) + ". task & more " + std::to_string(i) + "\n";
        cleaned += (i > 0 ? "\n" : "") + std::string("task & more ") + std::to_string(i);
    }
    const auto owner = startOwner({"normal", "--text", "-"}, list);
    convert();
    EXPECT_TRUE(paste("UTF8_STRING") == cleaned);
    const std::string html = paste("text/html");
    EXPECT_EQ(countOf(html, "<tr "), 100'000U);
    EXPECT_NE(html.find("\"rowCount\": 100000,"), std::string::npos);
}

TEST_F(ProgramTests, NeverWritesWhatWasCopiedToTheLog) {
    startProgram();
    const auto owner = startOwner({"normal", "--text", "• 1. swordfish\nswordfish"});
    convert();
    EXPECT_EQ(countOf(program_->standardError(), "swordfish"), 0U);
    // Two lines with their prefixes, and the pattern that matched one of them.
    EXPECT_EQ(countOf(program_->standardError(), "from line: <private>"), 2U);
    EXPECT_EQ(countOf(program_->standardError(), "using pattern <private>"), 1U);
}

TEST_F(ProgramTests, AShortcutTakenByAnotherProgramConvertsThereAlone) {
    startProgram();
    auto environment = session_.environment();
    environment["QT_FORCE_STDERR_LOGGING"] = "1";
    environment["QT_LOGGING_RULES"] = "com.app.pastewise.*=true";
    environment["QT_MESSAGE_PATTERN"] = "%{type}: %{message}";
    // On the bus or with the folders of the first instance it would not start.
    environment["DBUS_SESSION_BUS_ADDRESS"] = "";
    environment["XDG_RUNTIME_DIR"] = "";
    ChildProcess second({PASTEWISE_PROGRAM}, {.environment = environment});
    ASSERT_TRUE(second.waitForOutput("Application launched successfully"))
        << second.standardError();
    const auto owner = startOwner({"normal"});
    convert();
    EXPECT_TRUE(second.isRunning());
    EXPECT_EQ(countOf(second.standardError(), "Global shortcut triggered"), 0U);
    EXPECT_EQ(countOf(second.standardError(), "critical: "), 1U);
    EXPECT_EQ(countOf(second.standardError(), "Another program has the shortcut Super+G"), 1U);
    EXPECT_EQ(logged("Global shortcut triggered"), 1U);
}

class EndTests : public ProgramTests, public testing::WithParamInterface<int> {};

TEST_P(EndTests, EndsCleanlyAtASignalAndReleasesTheShortcut) {
    startProgram();
    const auto owner = startOwner({"normal"});
    convert();
    program_->sendSignal(GetParam());
    EXPECT_EQ(program_->waitForExit(), 0) << program_->standardError();
    startProgram();
    const auto newOwner = startOwner({"normal"});
    convert();
}

INSTANTIATE_TEST_SUITE_P(Each, EndTests, testing::Values(SIGTERM, SIGINT), [](const auto& signal) {
    return signal.param == SIGTERM ? "SIGTERM" : "SIGINT";
});

TEST_F(ProgramTests, ReportsAMissingDisplayAndEnds) {
    for (const char* display : {"", ":987654"}) {
        auto environment = session_.environment();
        environment["DISPLAY"] = display;
        ChildProcess displayless({PASTEWISE_PROGRAM}, {.environment = environment});
        EXPECT_EQ(displayless.waitForExit(), 1);
        EXPECT_EQ(countOf(displayless.standardError(), "\n"), 1U) << displayless.standardError();
        EXPECT_TRUE(displayless.standardError().starts_with("pastewise: "));
    }
}

TEST_F(ProgramTests, ReportsInAWaylandSessionThatItsShortcutIsNotGlobal) {
    auto environment = session_.environment();
    environment["WAYLAND_DISPLAY"] = "wayland-of-nobody";
    environment["QT_FORCE_STDERR_LOGGING"] = "1";
    ChildProcess inWayland({PASTEWISE_PROGRAM}, {.environment = environment});
    EXPECT_TRUE(inWayland.waitForOutput("In a Wayland session the shortcut works only"));
    EXPECT_TRUE(inWayland.isRunning());
}

TEST_F(ProgramTests, EndsWithoutACrashWhenTheXServerEnds) {
    startProgram();
    session_.killXServer();
    const auto exitCode = program_->waitForExit();
    ASSERT_TRUE(exitCode.has_value());
    EXPECT_LT(*exitCode, 128) << program_->standardError();
}

} // namespace
