#include "HotKey/CarbonEvents.h"
#include "Pastewise/PastewiseApp.h"
#include "Platform/Memory/MemoryPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using platform::MemoryPlatform;
using platform::PasteboardType;

const platform::MemoryEventHotKeyService::Combination commandG{5, 0x100};

/// The whole program on a system in memory; the user acts once it has been launched.
class ConversionFlowTests : public testing::Test {
  protected:
    template <typename User>
    void run(User user) {
        system_.setUser([this, &user] {
            system_.logSink().clear();
            user();
        });
        pastewise::PastewiseApp app(system_);
        exitCode_ = app.main();
    }

    void pressShortcut() {
        EXPECT_EQ(system_.eventHotKeyService().press(commandG), hotkey::noErr);
        static_cast<void>(system_.eventHotKeyService().release(commandG));
    }

    [[nodiscard]] std::string title() {
        return system_.statusBar().item()->menu()->items().front()->title();
    }

    [[nodiscard]] std::string clipboard(PasteboardType type) {
        return system_.pasteboard().contents().at(type);
    }

    MemoryPlatform system_;
    int exitCode_ = -1;
};

TEST_F(ConversionFlowTests, RegistersTheShortcutAtLaunchAndUnregistersItAtTheEnd) {
    run([this] {
        EXPECT_EQ(system_.eventHotKeyService().registered(),
                  std::vector<platform::MemoryEventHotKeyService::Combination>{commandG});
    });
    EXPECT_TRUE(system_.eventHotKeyService().registered().empty());
    EXPECT_EQ(exitCode_, 0);
}

TEST_F(ConversionFlowTests, OneKeyPressConvertsTheListAndLogsEachStep) {
    system_.pasteboard().copyElsewhere("• Buy milk\r\n\r\n2. Call Ann");
    run([this] {
        pressShortcut();
        system_.mainQueue().advance(1s);
    });
    EXPECT_EQ(clipboard(PasteboardType::string), "Buy milk\nCall Ann");
    EXPECT_NE(clipboard(PasteboardType::html).find(">Buy milk</td>"), std::string::npos);
    EXPECT_NE(clipboard(PasteboardType::html).find("\"rowCount\": 2,"), std::string::npos);
    EXPECT_EQ(system_.journal().only({"get string", "clear", "set string", "set html"}),
              (std::vector<std::string>{"get string", "clear", "set string", "set html"}));

    const std::string htmlLength = std::to_string(clipboard(PasteboardType::html).size());
    EXPECT_EQ(
        system_.logSink().messages(),
        (std::vector<std::string>{
            "debug: Global shortcut triggered; attempting clipboard conversion",
            "debug: Reading from clipboard...",
            "debug: Processing text with length: 23",
            "debug: Removing symbol bullet prefix from line: • Buy milk",
            "debug: Removing numeric list prefix using pattern ^\\d+\\.\\s+ from line: 2. Call Ann",
            "debug: Split into 3 lines",
            "debug: Generating Miro-compatible HTML from raw lines: 3",
            "debug: Sanitized line count after removing blanks: 2",
            "debug: Generated HTML with sanitized count: 2",
            "debug: Writing to clipboard - HTML length: " + htmlLength + ", Plain text length: 17",
            "debug: Successfully wrote to clipboard",
            "debug: Clipboard updated with Miro-compatible content; recording analytics",
            "debug: Falling back to drawn glyph for checkmark flash",
            "debug: Flashing checkmark icon in menu bar",
            "debug: Recording conversion - stickies: 2, source: hotkey",
            "debug: Applying confirmed savings: 20.000000 seconds",
            "debug: Persisting savings on main thread",
            // There are two states: the delegate's and the application's own.
            "debug: AppState received analytics update with seconds = 20.000000",
            "debug: AppState received analytics update with seconds = 20.000000",
            "debug: Received analytics update; last interaction saved 20.000000 seconds",
            "debug: Updated time saved display to: 20s",
            "debug: Restoring base status icon after flash"}));
}

TEST_F(ConversionFlowTests, TheRedactedLogContainsNothingPrivate) {
    system_.pasteboard().copyElsewhere("• confidential\n1. secret");
    run([this] { pressShortcut(); });
    ASSERT_FALSE(system_.logSink().entries().empty());
    for (const auto& entry : system_.logSink().entries()) {
        EXPECT_EQ(entry.redacted.find("confidential"), std::string::npos) << entry.format;
        EXPECT_EQ(entry.redacted.find("secret"), std::string::npos) << entry.format;
    }
}

TEST_F(ConversionFlowTests, TwoPressesDuringOneFlashBothConvertAndCount) {
    system_.pasteboard().copyElsewhere("a");
    run([this] {
        pressShortcut();
        system_.mainQueue().advance(500ms);
        system_.pasteboard().copyElsewhere("b\nc");
        pressShortcut();
        EXPECT_EQ(clipboard(PasteboardType::string), "b\nc");
        EXPECT_EQ(system_.statusBar().item()->menu()->items()[0]->title(), "Time Saved: 30s");
    });
}

TEST_F(ConversionFlowTests, ACreditAfterMidnightBelongsToTheNewDay) {
    system_.clock().setNow(
        foundation::Date(std::chrono::sys_days(std::chrono::year(2026) / 3 / 7) + 23h + 59min));
    system_.pasteboard().copyElsewhere("a\nb\nc");
    run([this] {
        pressShortcut();
        EXPECT_EQ(title(), "Time Saved: 30s");
        system_.mainQueue().advance(2min);
        // Nothing watches the date: the day's total stays until the next conversion.
        system_.statusBar().item()->click();
        EXPECT_EQ(title(), "Time Saved: 30s");
        system_.pasteboard().copyElsewhere("d");
        pressShortcut();
        EXPECT_EQ(title(), "Time Saved: 10s");
    });
    EXPECT_EQ(system_.userDefaults().doubleForKey("analytics.todaySavedSeconds.2026-03-07"), 30);
    EXPECT_EQ(system_.userDefaults().doubleForKey("analytics.todaySavedSeconds.2026-03-08"), 10);
}

TEST_F(ConversionFlowTests, ASecondStartOnTheSameDayContinuesTheTotal) {
    system_.pasteboard().copyElsewhere("a\nb");
    run([this] { pressShortcut(); });
    system_.pasteboard().copyElsewhere("c");
    run([this] {
        EXPECT_EQ(title(), "Time Saved: 20s");
        pressShortcut();
        EXPECT_EQ(title(), "Time Saved: 30s");
    });
}

TEST_F(ConversionFlowTests, AFullResetLeavesNoDate) {
    system_.pasteboard().copyElsewhere("a\nb");
    run([this] {
        pressShortcut();
        EXPECT_TRUE(system_.userDefaults().dateForKey("analytics.lastInteractionDate"));
        EXPECT_TRUE(system_.statusBar().item()->choose("Clear Saved Time…"));
        EXPECT_EQ(title(), "Time Saved: 0s");
        EXPECT_FALSE(system_.userDefaults().object("analytics.lastInteractionDate"));
    });
}

TEST_F(ConversionFlowTests, AnImageOnTheClipboardStaysThereAndIsReported) {
    system_.pasteboard().copyImageElsewhere();
    run([this] { pressShortcut(); });
    EXPECT_TRUE(system_.pasteboard().holdsImage());
    EXPECT_EQ(system_.pasteboard().changeCount(), 1U);
    EXPECT_EQ(system_.logSink().messages(),
              (std::vector<std::string>{
                  "debug: Global shortcut triggered; attempting clipboard conversion",
                  "debug: Reading from clipboard...",
                  "error: No text found in clipboard",
                  "error: Clipboard read failed: empty or non-text content"}));
}

TEST_F(ConversionFlowTests, ARefusedWriteIsReported) {
    system_.pasteboard().copyElsewhere("a");
    system_.pasteboard().refuse(PasteboardType::html);
    run([this] { pressShortcut(); });
    const auto messages = system_.logSink().messages();
    ASSERT_GE(messages.size(), 2U);
    EXPECT_EQ(messages[messages.size() - 2], "error: Failed to write to clipboard");
    EXPECT_EQ(messages.back(), "error: Clipboard write failed; unable to update content for Miro");
}

TEST_F(ConversionFlowTests, TextWithoutContentMakesASheetWithoutRows) {
    system_.pasteboard().copyElsewhere(" \n• \n");
    run([this] { pressShortcut(); });
    EXPECT_EQ(clipboard(PasteboardType::string), "");
    EXPECT_NE(clipboard(PasteboardType::html).find("\"rowCount\": 0,"), std::string::npos);
    const auto messages = system_.logSink().messages();
    ASSERT_GE(messages.size(), 5U);
    EXPECT_EQ(std::vector<std::string>(messages.end() - 5, messages.end()),
              (std::vector<std::string>{
                  "debug: Clipboard updated with Miro-compatible content; recording analytics",
                  "debug: Falling back to drawn glyph for checkmark flash",
                  "debug: Flashing checkmark icon in menu bar",
                  "debug: Recording conversion - stickies: 0, source: hotkey",
                  "debug: Conversion produced no stickies; skipping savings computation"}));
}

TEST_F(ConversionFlowTests, ConvertingTheResultAgainKeepsTheLines) {
    system_.pasteboard().copyElsewhere("a\nb");
    run([this] {
        pressShortcut();
        const std::string html = clipboard(PasteboardType::html);
        pressShortcut();
        EXPECT_EQ(clipboard(PasteboardType::html), html);
        EXPECT_EQ(clipboard(PasteboardType::string), "a\nb");
    });
}

TEST_F(ConversionFlowTests, LogsUnderTheBundleIdentifier) {
    system_.setBundleIdentifier("org.example.bundle");
    run([this] { pressShortcut(); });
    ASSERT_FALSE(system_.logSink().entries().empty());
    EXPECT_EQ(system_.logSink().entries().front().subsystem, "org.example.bundle");
}

TEST_F(ConversionFlowTests, LogsUnderTheApplicationIdWithoutABundle) {
    run([this] { pressShortcut(); });
    ASSERT_FALSE(system_.logSink().entries().empty());
    EXPECT_EQ(system_.logSink().entries().front().subsystem, "com.app.pastewise");
}

TEST_F(ConversionFlowTests, ARefusedShortcutIsSilentAndTheProgramRuns) {
    system_.eventHotKeyService().takeElsewhere(commandG);
    system_.setUser([] {});
    pastewise::PastewiseApp app(system_);
    EXPECT_EQ(app.main(), 0);
    EXPECT_TRUE(system_.eventHotKeyService().registered().empty());
    EXPECT_FALSE(system_.logSink().entries().empty());
    for (const auto& entry : system_.logSink().entries()) {
        EXPECT_EQ(entry.level, foundation::LogLevel::debug) << entry.whole;
    }
}

} // namespace
