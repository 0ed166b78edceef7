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

std::vector<std::string> linesOf(const LineList& list) {
    std::vector<std::string> lines;
    list.forEach([&lines](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

std::vector<std::string> processed(std::string_view text) {
    return linesOf(LineList(TextBuffer(text)));
}

TEST(LineListTests, SplitsAtEachKindOfLineBreak) {
    EXPECT_THAT(processed("a\r\nb\rc\nd"), ElementsAre("a", "b", "c", "d"));
}

TEST(LineListTests, SplitsTwoLineFeedsIntoThreeBlankLines) {
    EXPECT_THAT(processed("\n\n"), ElementsAre("", "", ""));
}

TEST(LineListTests, TreatsAnEmptyTextAsOneBlankLine) {
    EXPECT_THAT(processed(""), ElementsAre(""));
}

TEST(LineListTests, TreatsATextWithoutLineBreaksAsOneLine) {
    EXPECT_THAT(processed("Buy milk"), ElementsAre("Buy milk"));
}

TEST(LineListTests, HasABlankLineBeforeALeadingAndAfterATrailingBreak) {
    EXPECT_THAT(processed("\na\n"), ElementsAre("", "a", ""));
    EXPECT_THAT(processed("\r\na\r\n"), ElementsAre("", "a", ""));
    EXPECT_THAT(processed("\ra\r"), ElementsAre("", "a", ""));
}

TEST(LineListTests, TreatsALineFeedBeforeACarriageReturnAsTwoBreaks) {
    EXPECT_THAT(processed("a\n\rb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(processed("a\r\r\nb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(processed("a\r\n\nb"), ElementsAre("a", "", "b"));
}

TEST(LineListTests, SplitsAtNoOtherSeparator) {
    EXPECT_THAT(processed("a\u2028b\u2029c\u0085d\fe\vf"),
                ElementsAre("a\u2028b\u2029c\u0085d\fe\vf"));
}

TEST(LineListTests, TrimsEachLineBeforeRemovingPrefixes) {
    EXPECT_THAT(processed("   1.   Task  "), ElementsAre("Task"));
    EXPECT_THAT(processed("\u3000\u2022\u00A0x\u2003\n\t- y"), ElementsAre("x", "y"));
}

TEST(LineListTests, KeepsANumberWhoseWhiteSpaceWasTrimmedAway) {
    EXPECT_THAT(processed("1. \n1 - \n3:\t"), ElementsAre("1.", "1 -", "3:"));
}

TEST(LineListTests, KeepsLinesOfOnlyAPrefixAsBlankLines) {
    EXPECT_THAT(processed("\u2022\n-\n* \nx"), ElementsAre("", "", "", "x"));
}

TEST(LineListTests, KeepsZeroBytes) {
    EXPECT_THAT(processed(std::string_view("a\0b\n\0", 5)),
                ElementsAre(std::string("a\0b", 3), std::string("\0", 1)));
}

TEST(LineListTests, LinesPointIntoTheOriginalText) {
    const LineList list(TextBuffer("- milk\n2. eggs"));
    std::vector<std::ptrdiff_t> offsets;
    list.forEach(
        [&](std::string_view line) { offsets.push_back(line.data() - list.text().data()); });
    EXPECT_THAT(offsets, ElementsAre(2, 10));
}

TEST(LineListTests, CountsItsLinesIncludingBlankOnes) {
    EXPECT_EQ(LineList(TextBuffer("")).size(), 1);
    EXPECT_EQ(LineList(TextBuffer("a\r\n\n- \rb")).size(), 4);
}

TEST(LineListTests, SurvivesAMove) {
    LineList list(TextBuffer("a\nb"));
    const LineList moved = std::move(list);
    EXPECT_THAT(linesOf(moved), ElementsAre("a", "b"));
}

TEST(LineListTests, FindsALineBreakAtEveryPosition) {
    for (const char lineBreak : {'\n', '\r'}) {
        for (std::size_t size = 0; size <= 200; ++size) {
            // Bytes with their highest bit set must not be mistaken for line breaks.
            std::string text(size, '\x8D');
            EXPECT_EQ(text::findLineBreak(text), size);
            text += lineBreak;
            EXPECT_EQ(text::findLineBreak(text), size);
            text += std::string(100, '\n');
            EXPECT_EQ(text::findLineBreak(text), size);
        }
    }
}

TEST(LineListTests, SplitsALongTextAtEachKindOfLineBreak) {
    constexpr std::size_t count = 100'000;
    for (const std::string_view lineBreak : {"\n", "\r", "\r\n"}) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += "x";
            text += lineBreak;
        }
        std::vector<std::string> expected(count, "x");
        expected.emplace_back();
        EXPECT_TRUE(processed(text) == expected);
    }
}

TEST(LineListTests, AcceptsIllFormedUtf8) {
    EXPECT_THAT(processed("\xE2\n\x80\xE3\r\xF0\x9F"), ElementsAre("\xE2", "\x80\xE3", "\xF0\x9F"));
}

} // namespace
