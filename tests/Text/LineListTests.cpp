#include "Text/LineList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using foundation::TextBuffer;
using testing::ElementsAre;
using text::LineList;

std::vector<std::string> processed(std::string_view text) {
    const LineList list = text::processText(TextBuffer(text));
    return {list.lines().begin(), list.lines().end()};
}

TEST(LineListTests, SplitsAtEachKindOfLineBreak) {
    EXPECT_THAT(processed("a\r\nb\rc\nd"), ElementsAre("a", "b", "c", "d"));
}

TEST(LineListTests, FindsThreeBlankLinesInTwoLineFeeds) {
    EXPECT_THAT(processed("\n\n"), ElementsAre("", "", ""));
}

TEST(LineListTests, FindsOneBlankLineInAnEmptyText) {
    EXPECT_THAT(processed(""), ElementsAre(""));
}

TEST(LineListTests, TakesATextWithoutLineBreaksForOneLine) {
    EXPECT_THAT(processed("Buy milk"), ElementsAre("Buy milk"));
}

TEST(LineListTests, FindsABlankLineBeforeALeadingAndBehindATrailingBreak) {
    EXPECT_THAT(processed("\na\n"), ElementsAre("", "a", ""));
    EXPECT_THAT(processed("\r\na\r\n"), ElementsAre("", "a", ""));
    EXPECT_THAT(processed("\ra\r"), ElementsAre("", "a", ""));
}

TEST(LineListTests, TakesALineFeedBeforeACarriageReturnForTwoBreaks) {
    EXPECT_THAT(processed("a\n\rb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(processed("a\r\r\nb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(processed("a\r\n\nb"), ElementsAre("a", "", "b"));
}

TEST(LineListTests, SplitsAtNoOtherSeparator) {
    EXPECT_THAT(processed("a\u2028b\u2029c\u0085d\fe\vf"),
                ElementsAre("a\u2028b\u2029c\u0085d\fe\vf"));
}

TEST(LineListTests, TrimsEachLineBeforeItTakesPrefixesOff) {
    EXPECT_THAT(processed("   1.   Task  "), ElementsAre("Task"));
    EXPECT_THAT(processed("\u3000\u2022\u00A0x\u2003\n\t- y"), ElementsAre("x", "y"));
}

TEST(LineListTests, KeepsANumberWhoseWhiteSpaceWasTrimmedAway) {
    EXPECT_THAT(processed("1. \n1 - \n3:\t"), ElementsAre("1.", "1 -", "3:"));
}

TEST(LineListTests, KeepsLinesOfPrefixesAloneAsBlankOnes) {
    EXPECT_THAT(processed("\u2022\n-\n* \nx"), ElementsAre("", "", "", "x"));
}

TEST(LineListTests, KeepsZeroBytes) {
    EXPECT_THAT(processed(std::string_view("a\0b\n\0", 5)),
                ElementsAre(std::string("a\0b", 3), std::string("\0", 1)));
}

TEST(LineListTests, CopiesNothing) {
    TextBuffer text("- milk\n2. eggs");
    const char* begin = text.view().data();
    const LineList list = text::processText(std::move(text));
    EXPECT_EQ(list.lines()[0].data(), begin + 2);
    EXPECT_EQ(list.lines()[1].data(), begin + 10);
}

TEST(LineListTests, KeepsItsLinesWhenItIsMoved) {
    LineList list = text::processText(TextBuffer("a\nb"));
    const LineList moved = std::move(list);
    EXPECT_THAT(moved.lines(), ElementsAre("a", "b"));
}

TEST(LineListTests, HoldsCopiesOfLinesThatItIsGivenAsTheyAre) {
    std::string changing = " - a ";
    const std::vector<std::string_view> given{changing, "", "b\nc"};
    const LineList list = LineList::of(given);
    changing = "xxxxx";
    EXPECT_THAT(list.lines(), ElementsAre(" - a ", "", "b\nc"));
    EXPECT_EQ(list.text(), " - a b\nc");
    EXPECT_EQ(LineList::of({}).size(), 0U);
}

TEST(LineListTests, TellsTheObserverOfEachLineThatIsNotBlankInOrder) {
    std::vector<std::string> told;
    const LineList list =
        text::processText(TextBuffer(" - a \n\n \n1. b\nc\n*"),
                          [&told](std::string_view line, const text::SanitizedLine& sanitized) {
                              told.push_back(std::string(line) + "|" + std::string(sanitized.text));
                          });
    EXPECT_THAT(told, ElementsAre("- a|a", "1. b|b", "c|c", "*|"));
}

TEST(LineListTests, ReadsALongTextOfEachKindOfBreakInOnePass) {
    constexpr std::size_t count = 1'000'000;
    for (const std::string_view lineBreak : {"\n", "\r", "\r\n"}) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += "x";
            text += lineBreak;
        }
        const LineList list = text::processText(TextBuffer(text));
        ASSERT_EQ(list.size(), count + 1);
        EXPECT_EQ(list.lines()[count - 1], "x");
        EXPECT_EQ(list.lines()[count], "");
    }
}

TEST(LineListTests, StaysWithinBrokenBytes) {
    EXPECT_THAT(processed("\xE2\n\x80\xE3\r\xF0\x9F"), ElementsAre("\xE2", "\x80\xE3", "\xF0\x9F"));
}

} // namespace
