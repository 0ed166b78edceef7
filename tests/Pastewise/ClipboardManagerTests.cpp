#include "Pastewise/ClipboardManager.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryPasteboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using foundation::LogLevel;
using foundation::TextBuffer;
using pastewise::ClipboardManager;
using pastewise::ConversionPayload;
using platform::PasteboardType;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

std::vector<std::string> linesOf(const text::LineList& list) {
    std::vector<std::string> lines;
    list.forEach([&lines](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

class ClipboardManagerTests : public testing::Test {
  protected:
    /// Reads, generates and writes, as a press of the hot key does.
    std::optional<std::int64_t> convertClipboard() {
        const auto lines = manager_.readClipboard();
        if (!lines) {
            return std::nullopt;
        }
        ConversionPayload payload = manager_.generateHTML(*lines);
        if (!manager_.writeToClipboard(std::move(payload.html), std::move(payload.plainText))) {
            return std::nullopt;
        }
        return payload.stickyCount;
    }

    std::string pasted(PasteboardType type) { return pasteboard_.contents().at(type); }

    platform::MemoryPasteboard pasteboard_;
    platform::MemoryLogSink sink_;
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    ClipboardManager manager_{pasteboard_, loggers_};
};

TEST_F(ClipboardManagerTests, ReadsThePlainTextAsCleanedLines) {
    pasteboard_.copyElsewhere("- milk\r\n\r\n2. eggs");
    const auto lines = manager_.readClipboard();
    ASSERT_TRUE(lines.has_value());
    EXPECT_THAT(linesOf(*lines), ElementsAre("milk", "", "eggs"));
    EXPECT_THAT(pasteboard_.journal()->calls(), ElementsAre("get string"));
}

TEST_F(ClipboardManagerTests, ReadsNothingFromAnImageAndKeepsIt) {
    pasteboard_.copyImageElsewhere();
    EXPECT_FALSE(manager_.readClipboard().has_value());
    EXPECT_TRUE(pasteboard_.holdsImage());
    EXPECT_EQ(pasteboard_.changeCount(), 1U);
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre("debug: Reading from clipboard...", "error: No text found in clipboard"));
}

TEST_F(ClipboardManagerTests, ReadsNothingFromAnEmptyClipboard) {
    EXPECT_FALSE(manager_.readClipboard().has_value());
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre("debug: Reading from clipboard...", "error: No text found in clipboard"));
}

TEST_F(ClipboardManagerTests, TreatsAnEmptyTextAsOneBlankLine) {
    pasteboard_.copyElsewhere("");
    const auto lines = manager_.readClipboard();
    ASSERT_TRUE(lines.has_value());
    EXPECT_THAT(linesOf(*lines), ElementsAre(""));
    EXPECT_EQ(manager_.generateHTML(*lines).stickyCount, 0);
}

TEST_F(ClipboardManagerTests, ConvertsTwoLineFeedsToATableWithoutRows) {
    pasteboard_.copyElsewhere("\n\n");
    EXPECT_EQ(convertClipboard(), 0);
    EXPECT_EQ(pasted(PasteboardType::string), "");
    EXPECT_THAT(pasted(PasteboardType::html), testing::HasSubstr("\"rowCount\": 0,"));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Reading from clipboard...",
                            "debug: Processing text with length: 2",
                            "debug: Split into 3 lines",
                            "debug: Generating Miro-compatible HTML from raw lines: 3",
                            "debug: Sanitized line count after removing blanks: 0",
                            "debug: Generated HTML with sanitized count: 0",
                            "debug: Writing to clipboard - HTML length: 1133, Plain text length: 0",
                            "debug: Successfully wrote to clipboard"));
}

TEST_F(ClipboardManagerTests, LogsEveryStepInOrder) {
    pasteboard_.copyElsewhere("Plan\n\n \u2022 1. Buy milk \n2 - eggs\n* caf\u00E9\r\n3: Call");
    EXPECT_EQ(convertClipboard(), 5);
    EXPECT_EQ(pasted(PasteboardType::string), "Plan\nBuy milk\neggs\ncaf\u00E9\nCall");
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre("debug: Reading from clipboard...",
                    "debug: Processing text with length: 45",
                    "debug: Removing symbol bullet prefix from line: \u2022 1. Buy milk",
                    "debug: Removing numeric list prefix using pattern ^\\d+\\.\\s+ from line: "
                    "\u2022 1. Buy milk",
                    "debug: Removing numeric list prefix using pattern "
                    "^\\d+\\s*[-\u2013\u2014]\\s+ from line: 2 - eggs",
                    "debug: Removing symbol bullet prefix from line: * caf\u00E9",
                    "debug: Removing numeric list prefix using pattern ^\\d+\\:\\s+ from line: "
                    "3: Call",
                    "debug: Split into 6 lines",
                    "debug: Generating Miro-compatible HTML from raw lines: 6",
                    "debug: Sanitized line count after removing blanks: 5",
                    "debug: Generated HTML with sanitized count: 5",
                    "debug: Writing to clipboard - HTML length: 1711, Plain text length: 28",
                    "debug: Successfully wrote to clipboard"));
}

TEST_F(ClipboardManagerTests, CountsCharactersAsAUserSeesThem) {
    static_cast<void>(manager_.processText(TextBuffer("e\u0301\r\n\U0001F1E9\U0001F1EA")));
    EXPECT_TRUE(manager_.writeToClipboard(TextBuffer("\U0001F44D\U0001F3FD"), TextBuffer("\r\n")));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Processing text with length: 3",
                            "debug: Split into 2 lines",
                            "debug: Writing to clipboard - HTML length: 1, Plain text length: 1",
                            "debug: Successfully wrote to clipboard"));
}

TEST_F(ClipboardManagerTests, LogsLinesAsPrivateValues) {
    static_cast<void>(manager_.processText(TextBuffer("- 1. my secret")));
    ASSERT_EQ(sink_.entries().size(), 4U);
    EXPECT_EQ(sink_.entries()[1].format, "Removing symbol bullet prefix from line: %s");
    EXPECT_EQ(sink_.entries()[1].redacted, "Removing symbol bullet prefix from line: <private>");
    EXPECT_EQ(sink_.entries()[2].format,
              "Removing numeric list prefix using pattern %s from line: %s");
    for (const auto& entry : sink_.entries()) {
        EXPECT_EQ(entry.redacted.find("secret"), std::string::npos);
    }
}

TEST_F(ClipboardManagerTests, LogsNumbersAsPublicValues) {
    pasteboard_.copyElsewhere("- 1. my secret\n");
    EXPECT_EQ(convertClipboard(), 1);
    std::vector<std::string> redacted;
    for (const auto& entry : sink_.entries()) {
        redacted.push_back(entry.redacted);
    }
    const std::string htmlLength = std::to_string(pasted(PasteboardType::html).size());
    EXPECT_THAT(
        redacted,
        ElementsAre("Reading from clipboard...",
                    "Processing text with length: 15",
                    "Removing symbol bullet prefix from line: <private>",
                    "Removing numeric list prefix using pattern <private> from line: <private>",
                    "Split into 2 lines",
                    "Generating Miro-compatible HTML from raw lines: 2",
                    "Sanitized line count after removing blanks: 1",
                    "Generated HTML with sanitized count: 1",
                    "Writing to clipboard - HTML length: " + htmlLength + ", Plain text length: 9",
                    "Successfully wrote to clipboard"));
}

TEST_F(ClipboardManagerTests, LogsUnderItsClassName) {
    static_cast<void>(convertClipboard());
    using Entry = platform::MemoryLogSink::Entry;
    EXPECT_THAT(sink_.entries(), Each(Field(&Entry::subsystem, "com.app.pastewise")));
    EXPECT_THAT(sink_.entries(), Each(Field(&Entry::category, "ClipboardManager")));
    EXPECT_EQ(sink_.entries().size(), 2U);
}

TEST_F(ClipboardManagerTests, GivesTheSameResultWhetherDebugMessagesAreKeptOrNot) {
    constexpr std::string_view text = "\u2022 1. a\n \n2: <b>\r* \rc";
    pasteboard_.copyElsewhere(text);
    EXPECT_EQ(convertClipboard(), 3);
    const auto logged = pasteboard_.contents();

    sink_.setEnabled(LogLevel::debug, false);
    sink_.clear();
    pasteboard_.copyElsewhere(text);
    EXPECT_EQ(convertClipboard(), 3);
    EXPECT_EQ(pasteboard_.contents(), logged);
    EXPECT_THAT(sink_.entries(), IsEmpty());
}

TEST_F(ClipboardManagerTests, StillReportsFailuresWhenDebugMessagesAreOff) {
    sink_.setEnabled(LogLevel::debug, false);
    static_cast<void>(manager_.readClipboard());
    EXPECT_THAT(sink_.messages(), ElementsAre("error: No text found in clipboard"));
}

TEST_F(ClipboardManagerTests, LogsWhatItRemovesFromWhichLine) {
    EXPECT_EQ(manager_.sanitizeLine("\u2022 1. Buy milk"), "Buy milk");
    EXPECT_EQ(manager_.sanitizeLine("plain"), "plain");
    EXPECT_THAT(
        sink_.messages(),
        ElementsAre("debug: Removing symbol bullet prefix from line: \u2022 1. Buy milk",
                    "debug: Removing numeric list prefix using pattern ^\\d+\\.\\s+ from line: "
                    "\u2022 1. Buy milk"));
}

TEST_F(ClipboardManagerTests, GeneratesAPayloadFromTheLinesThatAreNotBlank) {
    const ConversionPayload payload =
        manager_.generateHTML(text::LineList(TextBuffer("\n a \n\u2003\n- b")));
    EXPECT_EQ(payload.plainText.view(), "a\nb");
    EXPECT_EQ(payload.stickyCount, 2);
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Generating Miro-compatible HTML from raw lines: 4",
                            "debug: Sanitized line count after removing blanks: 2",
                            "debug: Generated HTML with sanitized count: 2"));
}

TEST_F(ClipboardManagerTests, EscapesText) {
    EXPECT_EQ(ClipboardManager::escapeHTML("Tom & Jerry <3").view(), "Tom &amp; Jerry &lt;3");
}

TEST_F(ClipboardManagerTests, ClearsOnceThenWritesThePlainTextBeforeTheHtml) {
    pasteboard_.copyElsewhere("old");
    EXPECT_TRUE(manager_.writeToClipboard(TextBuffer("<b>"), TextBuffer("b")));
    EXPECT_THAT(pasteboard_.journal()->calls(), ElementsAre("clear", "set string", "set html"));
    EXPECT_THAT(
        pasteboard_.contents(),
        UnorderedElementsAre(Pair(PasteboardType::string, "b"), Pair(PasteboardType::html, "<b>")));
}

TEST_F(ClipboardManagerTests, NeverSetsTheHtmlWhenThePlainTextIsRefused) {
    pasteboard_.copyElsewhere("old");
    pasteboard_.refuse(PasteboardType::string);
    EXPECT_FALSE(manager_.writeToClipboard(TextBuffer("<b>"), TextBuffer("b")));
    EXPECT_THAT(pasteboard_.journal()->calls(), ElementsAre("clear", "set string refused"));
    EXPECT_THAT(pasteboard_.contents(), IsEmpty());
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Writing to clipboard - HTML length: 3, Plain text length: 1",
                            "error: Failed to write to clipboard"));
}

TEST_F(ClipboardManagerTests, KeepsThePlainTextWhenTheHtmlIsRefused) {
    pasteboard_.copyElsewhere("old");
    pasteboard_.refuse(PasteboardType::html);
    EXPECT_FALSE(manager_.writeToClipboard(TextBuffer("<b>"), TextBuffer("b")));
    EXPECT_THAT(pasteboard_.journal()->calls(),
                ElementsAre("clear", "set string", "set html refused"));
    EXPECT_THAT(pasteboard_.contents(), UnorderedElementsAre(Pair(PasteboardType::string, "b")));
    EXPECT_THAT(sink_.messages(),
                ElementsAre("debug: Writing to clipboard - HTML length: 3, Plain text length: 1",
                            "error: Failed to write to clipboard"));
}

TEST_F(ClipboardManagerTests, ConvertsItsOwnPlainTextToTheSamePayload) {
    pasteboard_.copyElsewhere("- a\n2. b & c");
    EXPECT_EQ(convertClipboard(), 2);
    const auto first = pasteboard_.contents();
    EXPECT_EQ(convertClipboard(), 2);
    EXPECT_EQ(pasteboard_.contents(), first);
}

TEST(ConverterEngineTests, IsEmpty) {
    EXPECT_TRUE(std::is_empty_v<pastewise::ConverterEngine>);
}

} // namespace
