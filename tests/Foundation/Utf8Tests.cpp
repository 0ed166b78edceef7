#include "Foundation/Unicode.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace {

using foundation::decodeFirst;
using foundation::TextBuffer;
using foundation::wellFormedPrefixLength;

std::string repaired(std::string_view bytes) {
    return std::string(foundation::repairUtf8(TextBuffer(bytes)).view());
}

TEST(Utf8Tests, DecodesEveryCodePoint) {
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
        ASSERT_EQ(wellFormedPrefixLength(encoded), encoded.size());
    }
}

TEST(Utf8Tests, DecodesAMaximalSubpartAsOneIllFormedSequence) {
    const auto length = [](std::string_view bytes) {
        const auto first = decodeFirst(bytes);
        EXPECT_FALSE(first.isWellFormed);
        EXPECT_EQ(first.codePoint, U'\uFFFD');
        return first.length;
    };
    EXPECT_EQ(length("\x80"), 1U) << "a continuation byte alone";
    EXPECT_EQ(length("\xC0\x80"), 1U) << "an overlong form";
    EXPECT_EQ(length("\xC3"), 1U) << "a truncated character";
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

TEST(Utf8Tests, FindsAnIllFormedByteAtAnyPositionInALongText) {
    const std::string wellFormed = "0123456789abcdef0123456789abcdef\u20AC0123456789abcdef"
                                   "0123456789abcdef0123456789abcdef\U0001F600";
    EXPECT_EQ(wellFormedPrefixLength(wellFormed), wellFormed.size());
    for (std::size_t i = 0; i <= wellFormed.size(); ++i) {
        std::string broken = wellFormed;
        broken.insert(i, 1, '\xFF');
        // In the middle of a character, the bytes before it are ill-formed as well.
        std::size_t expected = i;
        while (expected > 0 && i < wellFormed.size() &&
               (static_cast<std::uint8_t>(wellFormed[expected]) & 0xC0U) == 0x80U) {
            --expected;
        }
        EXPECT_EQ(wellFormedPrefixLength(broken), expected);
    }
    EXPECT_EQ(wellFormedPrefixLength(""), 0U);
}

TEST(Utf8Tests, ReturnsWellFormedTextWithoutACopy) {
    TextBuffer buffer(std::string_view("caf\u00E9 \u20AC \U0001F600 a\0b", 18));
    const char* address = buffer.view().data();
    const TextBuffer result = foundation::repairUtf8(std::move(buffer));
    EXPECT_EQ(result.view().data(), address);
    EXPECT_EQ(result.view(), std::string_view("caf\u00E9 \u20AC \U0001F600 a\0b", 18));
}

TEST(Utf8Tests, LeavesEmptyTextEmpty) {
    EXPECT_EQ(repaired(""), "");
}

TEST(Utf8Tests, ReplacesEachIllFormedSequenceWithOneReplacementCharacter) {
    EXPECT_EQ(repaired("a\x80z"), "a\uFFFDz");
    EXPECT_EQ(repaired("a\xE2\x82z"), "a\uFFFDz");
    EXPECT_EQ(repaired("a\xED\xA0\x80z"), "a\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(repaired("\xF0\x9F\x98"), "\uFFFD");
    EXPECT_EQ(repaired("\xC0\xAF"), "\uFFFD\uFFFD");
    EXPECT_EQ(repaired("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"),
              "a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd")
        << "the example in the Unicode Standard";
}

TEST(Utf8Tests, MatchesTheReferenceForFourBytesOfEveryKind) {
    constexpr auto kinds = std::to_array<unsigned char>(
        {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
         0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF});
    std::size_t illFormed = 0;
    for (const unsigned char a : kinds) {
        for (const unsigned char b : kinds) {
            for (const unsigned char c : kinds) {
                for (const unsigned char d : kinds) {
                    const std::string bytes{static_cast<char>(a),
                                            static_cast<char>(b),
                                            static_cast<char>(c),
                                            static_cast<char>(d)};
                    const std::string result = repaired(bytes);
                    ASSERT_EQ(result, reference::repairUtf8(bytes));
                    illFormed += result != bytes ? 1U : 0U;
                }
            }
        }
    }
    EXPECT_GT(illFormed, 300'000U);
}

TEST(Utf8Tests, RepairsTextOfInvalidBytesOnly) {
    std::string expected;
    for (int i = 0; i < 100'000; ++i) {
        expected += "\uFFFD";
    }
    EXPECT_EQ(repaired(std::string(100'000, '\xFF')), expected);
}

} // namespace
