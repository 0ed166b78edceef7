#include "Text/LineSanitiser.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace {

using text::sanitizeLine;

std::string sanitized(std::string_view line) {
    return std::string(sanitizeLine(line).text);
}

TEST(LineSanitiserTests, PatternNamesMatchTheLog) {
    EXPECT_EQ(text::bulletPrefixPattern,
              "^[\xE2\x80\xA2\\-*\xC2\xB7+\xE2\x86\x92\xE2\x81\x83\xE2\x80\xA3\xE2\x81\x8C"
              "\xE2\x81\x8D]\\s*");
    EXPECT_EQ(text::numericPrefixPatterns[0], "^\\d+\\.\\s+");
    EXPECT_EQ(text::numericPrefixPatterns[1], "^\\d+\\s*[-\xE2\x80\x93\xE2\x80\x94]\\s+");
    EXPECT_EQ(text::numericPrefixPatterns[2], "^\\d+\\:\\s+");
}

TEST(LineSanitiserTests, RemovesEachOfTheTenBullets) {
    for (const std::string_view bullet :
         {"\u2022", "-", "*", "\u00B7", "+", "\u2192", "\u2043", "\u2023", "\u204C", "\u204D"}) {
        const std::string line = std::string(bullet) + " milk";
        const auto result = sanitizeLine(line);
        EXPECT_EQ(result.text, "milk");
        EXPECT_TRUE(result.hadBullet);
        EXPECT_FALSE(result.numericPattern.has_value());
    }
}

TEST(LineSanitiserTests, KeepsCharactersThatResembleBullets) {
    for (const std::string_view line : {"\u2013 milk", "\u25CF milk", "_ milk", "# milk", "> a"}) {
        const auto result = sanitizeLine(line);
        EXPECT_EQ(result.text, line);
        EXPECT_FALSE(result.hadBullet);
    }
}

TEST(LineSanitiserTests, RemovesOneBulletOnly) {
    EXPECT_EQ(sanitized("\u2022 \u2022 item"), "\u2022 item");
    EXPECT_EQ(sanitized("--- item"), "-- item");
}

TEST(LineSanitiserTests, RemovesABulletWithoutWhiteSpaceAfterIt) {
    EXPECT_EQ(sanitized("-5 degrees"), "5 degrees");
    EXPECT_EQ(sanitized("+1 555 0100"), "1 555 0100");
    EXPECT_EQ(sanitized("*bold*"), "bold*");
}

TEST(LineSanitiserTests, LineOfOnlyABulletBecomesEmpty) {
    for (const std::string_view line : {"\u2022", "-", "*"}) {
        EXPECT_EQ(sanitized(line), "");
        EXPECT_TRUE(sanitizeLine(line).hadBullet);
    }
}

TEST(LineSanitiserTests, RemovesEachKindOfNumberAndReportsItsPattern) {
    const auto expect = [](std::string_view line, std::size_t pattern) {
        const auto result = sanitizeLine(line);
        EXPECT_EQ(result.text, "milk") << line;
        EXPECT_EQ(result.numericPattern, std::optional<std::size_t>(pattern)) << line;
        EXPECT_FALSE(result.hadBullet) << line;
    };
    expect("1. milk", 0);
    expect("12.\u00A0milk", 0);
    expect("1 - milk", 1);
    expect("1- milk", 1);
    expect("2\u2013 milk", 1);
    expect("2 \t \u2014 \u3000milk", 1);
    expect("3: milk", 2);
    expect("345:  milk", 2);
}

TEST(LineSanitiserTests, RemovesANumberWithADashBetweenSpaces) {
    EXPECT_EQ(sanitized("12 \u2014 done"), "done");
}

TEST(LineSanitiserTests, KeepsANumberWithoutWhiteSpaceAfterItsMark) {
    for (const std::string_view line :
         {"1.", "1 -", "1:", "1", "1.x", "12:30 lunch", "1\u200B. milk"}) {
        const auto result = sanitizeLine(line);
        EXPECT_EQ(result.text, line);
        EXPECT_FALSE(result.numericPattern.has_value()) << line;
    }
}

TEST(LineSanitiserTests, KeepsADate) {
    EXPECT_EQ(sanitizeLine("2024-01-05 meeting").text, "2024-01-05 meeting");
    EXPECT_FALSE(sanitizeLine("2024-01-05 meeting").numericPattern.has_value());
}

TEST(LineSanitiserTests, KeepsADecimalNumberButRemovesANumberBeforeADash) {
    EXPECT_EQ(sanitizeLine("1.2 million").text, "1.2 million");
    EXPECT_EQ(sanitizeLine("12 \u2014 done").text, "done");
}

TEST(LineSanitiserTests, KeepsANumberSeparatedFromItsFullStopOrColon) {
    EXPECT_EQ(sanitized("1 . milk"), "1 . milk");
    EXPECT_EQ(sanitized("1 : milk"), "1 : milk");
}

TEST(LineSanitiserTests, KeepsOtherMarks) {
    EXPECT_EQ(sanitized("1) milk"), "1) milk");
    EXPECT_EQ(sanitized("(1) milk"), "(1) milk");
    EXPECT_EQ(sanitized("a. milk"), "a. milk");
    EXPECT_EQ(sanitized("1\u2010 milk"), "1\u2010 milk");
}

TEST(LineSanitiserTests, RemovesOneNumberOnly) {
    EXPECT_EQ(sanitized("1. 2. milk"), "2. milk");
    EXPECT_EQ(sanitized("1: 2 - 3. milk"), "2 - 3. milk");
}

TEST(LineSanitiserTests, RemovesABulletAndThenANumber) {
    const auto result = sanitizeLine("\u2022 1. Buy milk");
    EXPECT_EQ(result.text, "Buy milk");
    EXPECT_TRUE(result.hadBullet);
    EXPECT_EQ(result.numericPattern, std::optional<std::size_t>(0));
}

TEST(LineSanitiserTests, RemovesABulletAndANumberWithAColon) {
    EXPECT_EQ(sanitized("\u2022 3: Call"), "Call");
}

TEST(LineSanitiserTests, KeepsABulletAfterANumber) {
    EXPECT_EQ(sanitized("1. \u2022 Buy milk"), "\u2022 Buy milk");
}

TEST(LineSanitiserTests, RemovesNumbersInTheDigitsOfAnyScript) {
    EXPECT_EQ(sanitized("\u0661. item"), "item");
    EXPECT_EQ(sanitized("\u0967\u0968: item"), "item");
    EXPECT_EQ(sanitized("\uFF11\uFF12 - item"), "item");
    EXPECT_EQ(sanitized("\U0001D7D8\U0001D7FF. item"), "item");
    EXPECT_EQ(sanitized("\U0001E4F9. item"), "item");
}

TEST(LineSanitiserTests, KeepsNumbersThatAreNotDecimalDigits) {
    for (const std::string_view line : {"\u00B2. item", "\u2160. item", "\u4E00. item"}) {
        EXPECT_EQ(sanitized(line), line);
    }
}

TEST(LineSanitiserTests, RemovesANumberOfAMillionDigits) {
    const std::string number(1'000'000, '7');
    EXPECT_EQ(sanitized(number + ". milk"), "milk");
    EXPECT_EQ(sanitized(number + " milk"), number + " milk");
}

TEST(LineSanitiserTests, RemovesAMillionSpacesAfterAPrefix) {
    const std::string spaces(1'000'000, ' ');
    EXPECT_EQ(sanitized("-" + spaces + "milk"), "milk");
    EXPECT_EQ(sanitized("1." + spaces + "milk"), "milk");
    EXPECT_EQ(sanitized("1" + spaces + "-" + spaces + "milk"), "milk");
}

TEST(LineSanitiserTests, TrimsTheLineBeforeRemovingPrefixes) {
    EXPECT_EQ(sanitized(" milk "), "milk");
    EXPECT_EQ(sanitized("\u3000- 1. milk\t"), "milk");
    EXPECT_EQ(sanitized("1. "), "1.");
    EXPECT_EQ(sanitized(" "), "");
    EXPECT_EQ(sanitized(""), "");
}

TEST(LineSanitiserTests, StaysWithinIllFormedUtf8) {
    EXPECT_EQ(sanitized("-\xE2\x80"), "\xE2\x80");
    EXPECT_EQ(sanitized("1.\xE2"), "1.\xE2");
    EXPECT_EQ(sanitized("1\xD9"), "1\xD9");
    EXPECT_EQ(sanitized("\xFF"), "\xFF");
}

TEST(LineSanitiserTests, AgreesWithTheExpressionsOnEveryShortLine) {
    // Every text of up to six of these characters, including untrimmed ones.
    constexpr std::string_view alphabet = "1a.-: ";
    std::size_t changed = 0;
    for (std::size_t length = 0; length <= 6; ++length) {
        std::size_t total = 1;
        for (std::size_t i = 0; i < length; ++i) {
            total *= alphabet.size();
        }
        for (std::size_t number = 0; number < total; ++number) {
            std::string line;
            for (std::size_t rest = number; line.size() < length; rest /= alphabet.size()) {
                line += alphabet[rest % alphabet.size()];
            }
            const std::string trimmed(text::trim(line));
            ASSERT_EQ(sanitized(line), reference::sanitizeLine(trimmed)) << line;
            changed += sanitized(line) != line ? 1U : 0U;
        }
    }
    EXPECT_GT(changed, 10'000U);
}

} // namespace
