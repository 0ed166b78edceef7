#include "Text/CharacterClasses.h"

#include <gtest/gtest.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdint>

namespace {

constexpr char32_t lastCodePoint = 0x10FFFF;

/// Whether both our Unicode version and ICU's assign the character, or both leave it unassigned.
bool isInBothVersions(char32_t character) {
    UVersionInfo age{};
    u_charAge(static_cast<UChar32>(character), age);
    if (age[0] == 0) {
        UVersionInfo known{};
        u_getUnicodeVersion(known);
        return known[0] >= text::unicodeVersion;
    }
    return age[0] <= text::unicodeVersion;
}

template <typename Predicate>
int count(Predicate predicate) {
    int result = 0;
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        result += predicate(character) ? 1 : 0;
    }
    return result;
}

TEST(CharacterClassesTests, ClassesHaveTheSizesOfThePinnedUnicodeVersion) {
    EXPECT_EQ(count(text::isWhiteSpace), 25);
    EXPECT_EQ(count(text::isDecimalDigit), 680);
}

TEST(CharacterClassesTests, WhiteSpaceMatchesTheUnicodePropertyForEveryCodePoint) {
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        if (isInBothVersions(character)) {
            ASSERT_EQ(text::isWhiteSpace(character),
                      u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_WHITE_SPACE) != 0)
                << std::hex << std::uint32_t{character};
        }
    }
}

TEST(CharacterClassesTests, DecimalDigitsMatchTheUnicodeCategoryForEveryCodePoint) {
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        if (isInBothVersions(character)) {
            ASSERT_EQ(text::isDecimalDigit(character),
                      u_charType(static_cast<UChar32>(character)) == U_DECIMAL_DIGIT_NUMBER)
                << std::hex << std::uint32_t{character};
        }
    }
}

TEST(CharacterClassesTests, DigitsOfLaterVersionsAreNotDigits) {
    EXPECT_FALSE(text::isDecimalDigit(U'\U00010D40')); // Unicode 16
    EXPECT_FALSE(text::isDecimalDigit(U'\U00011DE0')); // Unicode 17
}

TEST(CharacterClassesTests, BothClassesMatchTheRegularExpressionEngine) {
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher whiteSpace(u"\\s", 0, status);
    icu::RegexMatcher digit(u"\\d", 0, status);
    ASSERT_TRUE(U_SUCCESS(status));
    for (char32_t character = 0; character <= lastCodePoint; ++character) {
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (isSurrogate || !isInBothVersions(character)) {
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

TEST(CharacterClassesTests, WhiteSpaceByOtherDefinitionsIsExcluded) {
    for (const char32_t character : {U'\u200B', U'\uFEFF', U'\u180E', U'\x1C', U'\x1F', U'\0'}) {
        EXPECT_FALSE(text::isWhiteSpace(character));
    }
}

} // namespace
