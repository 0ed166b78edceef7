#include "Text/CharacterClasses.h"

#include <gtest/gtest.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdint>

namespace {

constexpr char32_t lastCodePoint = 0x10FFFF;

TEST(CharacterClassesTests, WhiteSpaceIsTheUnicodePropertyOnEveryCodePoint) {
    int count = 0;
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        const bool expected =
            u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_WHITE_SPACE) != 0;
        ASSERT_EQ(text::isWhiteSpace(character), expected) << std::hex << std::uint32_t{character};
        count += expected ? 1 : 0;
    }
    EXPECT_EQ(count, 25);
}

TEST(CharacterClassesTests, DecimalDigitsAreTheUnicodeCategoryOnEveryCodePoint) {
    int count = 0;
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        // A newer ICU may know digits that came after Unicode 15.
        UVersionInfo age{};
        u_charAge(static_cast<UChar32>(character), age);
        const bool expected =
            u_charType(static_cast<UChar32>(character)) == U_DECIMAL_DIGIT_NUMBER && age[0] <= 15;
        ASSERT_EQ(text::isDecimalDigit(character), expected)
            << std::hex << std::uint32_t{character};
        count += expected ? 1 : 0;
    }
    EXPECT_EQ(count, 680);
}

TEST(CharacterClassesTests, BothClassesAreWhatTheExpressionEngineMeansByThem) {
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher whiteSpace(u"\\s", 0, status);
    icu::RegexMatcher digit(u"\\d", 0, status);
    ASSERT_TRUE(U_SUCCESS(status));
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF) {
            continue;
        }
        const icu::UnicodeString text(static_cast<UChar32>(character));
        whiteSpace.reset(text);
        ASSERT_EQ(whiteSpace.matches(status) != 0, text::isWhiteSpace(character))
            << std::hex << std::uint32_t{character};
        digit.reset(text);
        ASSERT_EQ(digit.matches(status) != 0, text::isDecimalDigit(character))
            << std::hex << std::uint32_t{character};
    }
}

TEST(CharacterClassesTests, CharactersThatOtherDefinitionsTakeForWhiteSpaceAreNone) {
    for (const char32_t character : {U'\u200B', U'\uFEFF', U'\u180E', U'\x1C', U'\x1F', U'\0'}) {
        EXPECT_FALSE(text::isWhiteSpace(character));
    }
}

} // namespace
