#include "Text/SheetDocument.h"
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

TEST(HtmlEscapeTests, EscapesTheAmpersandOfAnEntity) {
    EXPECT_EQ(escaped("&amp;"), "&amp;amp;");
}

TEST(HtmlEscapeTests, KeepsEveryOtherByte) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        if (std::string_view("&<>\"'").find(text[0]) == std::string_view::npos) {
            EXPECT_EQ(escaped(text), text) << byte;
        }
    }
    EXPECT_EQ(escaped("a\t b   \u00E9\U0001F600"), "a\t b   \u00E9\U0001F600");
}

TEST(HtmlEscapeTests, KeepsAnEmptyTextEmpty) {
    EXPECT_EQ(escaped(""), "");
}

TEST(HtmlEscapeTests, EscapesACharacterAtEveryPosition) {
    for (std::size_t size = 1; size <= 140; ++size) {
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
    std::mt19937_64 random(1); // NOLINT(*-msc51-cpp): the same texts on every run
    for (int i = 0; i < 2000; ++i) {
        std::string text;
        const std::size_t size = random() % 200;
        while (text.size() < size) {
            text += "&<>\"' abcdefgh"[random() % 14];
        }
        ASSERT_EQ(escaped(text), reference::escapeHTML(text));
    }
}

TEST(HtmlEscapeTests, EscapesLongTextsOfMarkupOnly) {
    for (const std::size_t size : {4095U, 4096U, 4097U, 100'000U}) {
        std::string expected;
        for (std::size_t i = 0; i < size; ++i) {
            expected += "&quot;";
        }
        EXPECT_TRUE(escaped(std::string(size, '"')) == expected) << size;
    }
}

TEST(HtmlEscapeTests, AppendsBothTextsRegardlessOfFollowingBytes) {
    for (std::size_t size = 0; size <= 150; ++size) {
        for (std::size_t following = 0; following <= 70; ++following) {
            // Allocated separately, so that a sanitizer detects reads past the end.
            const std::string memory = std::string(size, 'a') + std::string(following, '&');
            foundation::TextBuffer html("<b>");
            foundation::TextBuffer plainText("b\n");
            text::appendEscaped(std::string_view(memory).substr(0, size),
                                memory.data() + memory.size(),
                                html,
                                plainText);
            ASSERT_EQ(html.view(), "<b>" + std::string(size, 'a'));
            ASSERT_EQ(plainText.view(), "b\n" + std::string(size, 'a'));
        }
    }
}

} // namespace
