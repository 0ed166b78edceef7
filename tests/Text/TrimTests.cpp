#include "Text/CharacterClasses.h"
#include "Text/LineSanitiser.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using text::trim;

constexpr std::string_view allWhiteSpace =
    "\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009"
    "\u200A\u2028\u2029\u202F\u205F\u3000";

TEST(TrimTests, RemovesEveryWhiteSpaceCharacterFromBothEnds) {
    const std::string around(allWhiteSpace);
    EXPECT_EQ(trim(around + "milk" + around), "milk");
}

TEST(TrimTests, TextOfOnlyWhiteSpaceBecomesEmpty) {
    EXPECT_EQ(trim(allWhiteSpace), "");
    EXPECT_EQ(trim(""), "");
}

TEST(TrimTests, KeepsInnerWhiteSpace) {
    EXPECT_EQ(trim(" a \t\u3000 b "), "a \t\u3000 b");
}

TEST(TrimTests, KeepsCharactersThatAreNotWhiteSpace) {
    for (const std::string_view text : {"\u200Ba\u200B",
                                        "\uFEFFa\uFEFF",
                                        "\u180Ea\u180E",
                                        "\x1C"
                                        "a\x1F",
                                        "\xA0"
                                        "a\xA0",
                                        "\x85"
                                        "a\x85",
                                        "\xE2\x80"
                                        "a\xE2\x80"}) {
        EXPECT_EQ(trim(text), text);
    }
}

TEST(TrimTests, KeepsZeroBytes) {
    EXPECT_EQ(trim(std::string_view(" \0 ", 3)), std::string_view("\0", 1));
}

TEST(TrimTests, RemovesExactlyTheWhiteSpaceCharacters) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            continue;
        }
        std::string character;
        icu::UnicodeString(static_cast<UChar32>(codePoint)).toUTF8String(character);
        const std::string text = character + "x" + character;
        ASSERT_EQ(trim(text), text::isWhiteSpace(codePoint) ? "x" : text)
            << std::uint32_t{codePoint};
    }
}

TEST(TrimTests, KeepsIllFormedBytesBeforeWhiteSpace) {
    for (const std::string_view bytes :
         {"\x80", "a\x80", "\xC3", "a\xE2\x82", "\x80\x80\x80\x80\x80", "\xC2\xA0\xA0"}) {
        EXPECT_EQ(trim("x" + std::string(bytes) + "\u2003 "), "x" + std::string(bytes));
    }
}

TEST(TrimTests, ReturnsAViewIntoTheGivenText) {
    const std::string_view text = "  milk ";
    EXPECT_EQ(trim(text).data(), text.data() + 2);
}

} // namespace
