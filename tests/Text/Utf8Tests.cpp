#include "Text/Utf8.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using text::decodeFirst;
using text::decodeLast;
using text::wellFormedPrefixLength;

TEST(Utf8Tests, DecodesEveryCodePointFromBothEnds) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            continue;
        }
        std::string encoded;
        icu::UnicodeString(static_cast<UChar32>(codePoint)).toUTF8String(encoded);
        const auto first = decodeFirst(encoded + "x");
        ASSERT_TRUE(first.isWellFormed);
        ASSERT_EQ(first.codePoint, codePoint);
        ASSERT_EQ(first.length, encoded.size());
        const auto last = decodeLast("\xE2\x82" + encoded);
        ASSERT_TRUE(last.isWellFormed);
        ASSERT_EQ(last.codePoint, codePoint);
        ASSERT_EQ(last.length, encoded.size());
        ASSERT_EQ(wellFormedPrefixLength(encoded), encoded.size());
    }
}

TEST(Utf8Tests, TakesTheLongestPartThatCouldHaveBegunACharacterForOneIllFormedSequence) {
    const auto length = [](std::string_view bytes) {
        const auto first = decodeFirst(bytes);
        EXPECT_FALSE(first.isWellFormed);
        EXPECT_EQ(first.codePoint, U'\uFFFD');
        return first.length;
    };
    EXPECT_EQ(length("\x80"), 1U) << "a continuation byte alone";
    EXPECT_EQ(length("\xC0\x80"), 1U) << "a form that is longer than needed";
    EXPECT_EQ(length("\xC3"), 1U) << "an end within a character";
    EXPECT_EQ(length("\xE2\x82"), 2U);
    EXPECT_EQ(length("\xE2\x82 "), 2U);
    EXPECT_EQ(length("\xE0\x9F\xBF"), 1U);
    EXPECT_EQ(length("\xED\xA0\x80"), 1U) << "a surrogate";
    EXPECT_EQ(length("\xF0\x9F\x98"), 3U);
    EXPECT_EQ(length("\xF0\x8F\xBF\xBF"), 1U);
    EXPECT_EQ(length("\xF4\x90\x80\x80"), 1U) << "beyond the last code point";
    EXPECT_EQ(length("\xF5\x80\x80\x80"), 1U);
    EXPECT_EQ(length("\xFF"), 1U);
}

TEST(Utf8Tests, TakesTheLastByteAloneWhenNoCharacterEndsThere) {
    for (const std::string_view bytes :
         {"\x80", "a\x80", "\xC3", "a\xE2\x82", "\x80\x80\x80\x80\x80", "\xC3\xA9\xA9"}) {
        const auto last = decodeLast(bytes);
        EXPECT_FALSE(last.isWellFormed);
        EXPECT_EQ(last.length, 1U);
    }
}

TEST(Utf8Tests, FindsAnIllFormedByteWhereverItStandsInALongText) {
    const std::string wellFormed = "0123456789abcdef0123456789abcdef\u20AC0123456789abcdef"
                                   "0123456789abcdef0123456789abcdef\U0001F600";
    EXPECT_EQ(wellFormedPrefixLength(wellFormed), wellFormed.size());
    for (std::size_t i = 0; i <= wellFormed.size(); ++i) {
        std::string broken = wellFormed;
        broken.insert(i, 1, '\xFF');
        // Within a character, the part before the byte is ill-formed as well.
        std::size_t expected = i;
        while (expected > 0 && i < wellFormed.size() &&
               (static_cast<std::uint8_t>(wellFormed[expected]) & 0xC0U) == 0x80U) {
            --expected;
        }
        EXPECT_EQ(wellFormedPrefixLength(broken), expected);
    }
    EXPECT_EQ(wellFormedPrefixLength(""), 0U);
}

} // namespace
