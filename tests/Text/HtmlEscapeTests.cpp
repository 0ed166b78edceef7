#include "Text/HtmlEscape.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace {

std::string escaped(std::string_view text) {
    return std::string(text::escapeHTML(text).view());
}

TEST(HtmlEscapeTests, ReplacesTheFiveCharacters) {
    EXPECT_EQ(escaped("&<>\"'"), "&amp;&lt;&gt;&quot;&#39;");
}

TEST(HtmlEscapeTests, EscapesALineOfText) {
    EXPECT_EQ(escaped("Tom & Jerry <3 \"quotes\" 'x'"),
              "Tom &amp; Jerry &lt;3 &quot;quotes&quot; &#39;x&#39;");
}

TEST(HtmlEscapeTests, RecognisesNoEntity) {
    EXPECT_EQ(escaped("&amp;"), "&amp;amp;");
}

TEST(HtmlEscapeTests, LeavesEveryOtherByteAsItIs) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        if (std::string_view("&<>\"'").find(text[0]) == std::string_view::npos) {
            EXPECT_EQ(escaped(text), text) << byte;
        }
    }
    EXPECT_EQ(escaped("a\t b   \u00E9\U0001F600"), "a\t b   \u00E9\U0001F600");
}

TEST(HtmlEscapeTests, LeavesAnEmptyTextEmpty) {
    EXPECT_EQ(escaped(""), "");
}

TEST(HtmlEscapeTests, EscapesACharacterWhereverItStands) {
    for (std::size_t size = 1; size <= 70; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            std::string text(size, 'x');
            text[at] = '"';
            const std::string expected =
                std::string(at, 'x') + "&quot;" + std::string(size - at - 1, 'x');
            ASSERT_EQ(escaped(text), expected);
        }
    }
}

TEST(HtmlEscapeTests, AgreesWithTheReferenceOnRandomTexts) {
    std::mt19937_64 random(1); // NOLINT(*-msc51-cpp): the same texts every time
    for (int i = 0; i < 2000; ++i) {
        std::string text;
        const std::size_t size = random() % 100;
        while (text.size() < size) {
            text += "&<>\"' abcdefgh"[random() % 14];
        }
        ASSERT_EQ(escaped(text), reference::escapeHTML(text));
    }
}

TEST(HtmlEscapeTests, EscapesLongTextsThatAreAllMarkup) {
    for (const std::size_t size : {4095U, 4096U, 4097U, 100'000U}) {
        std::string expected;
        for (std::size_t i = 0; i < size; ++i) {
            expected += "&quot;";
        }
        EXPECT_TRUE(escaped(std::string(size, '"')) == expected) << size;
    }
}

TEST(HtmlEscapeTests, WritesNoFurtherThanItsSlackAndReadsNoFurtherThanItMay) {
    const std::string_view text = "0123456789 & <";
    const std::string_view expected = "0123456789 &amp; &lt;";
    // All that stands around the text, in a block of its own so that a sanitizer sees its ends.
    for (std::size_t behind = 0; behind <= 80; ++behind) {
        const std::string around = std::string(text) + std::string(behind, '"');
        std::string memory(expected.size() + text::escapeSlack + 10, '#');
        EXPECT_EQ(text::writeEscaped(memory.data(),
                                     std::string_view(around).substr(0, text.size()),
                                     around.data() + around.size()),
                  memory.data() + expected.size());
        EXPECT_EQ(memory.substr(0, expected.size()), expected);
        EXPECT_EQ(memory.substr(expected.size() + text::escapeSlack), std::string(10, '#'));
    }
}

TEST(HtmlEscapeTests, TakesNothingFromWhatStandsBehindAText) {
    for (std::size_t size = 0; size <= 70; ++size) {
        for (const char behind : {'x', '&'}) {
            const std::string around = std::string(size, 'a') + std::string(100, behind);
            std::string memory(size + text::escapeSlack, '#');
            char* const end = text::writeEscaped(memory.data(),
                                                 std::string_view(around).substr(0, size),
                                                 around.data() + around.size());
            EXPECT_EQ(std::string_view(memory.data(), end), std::string(size, 'a'));
        }
    }
}

} // namespace
