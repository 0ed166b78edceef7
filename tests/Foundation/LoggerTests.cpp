#include "Foundation/LogFormat.h"
#include "Foundation/Logger.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "tests/Support/CommaLocale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using foundation::Logger;
using foundation::LogLevel;
using platform::MemoryLogSink;

class LoggerTests : public testing::Test {
  protected:
    MemoryLogSink sink_;
    foundation::LoggerFactory loggers_{sink_, "com.app.pastewise"};
    Logger logger_ = loggers_.logger("ClipboardManager");
};

TEST_F(LoggerTests, NamesSubsystemCategoryAndLevel) {
    logger_.debug("Reading from clipboard...");
    logger_.error("No text found in clipboard");
    ASSERT_EQ(sink_.entries().size(), 2U);
    EXPECT_EQ(sink_.entries()[0].subsystem, "com.app.pastewise");
    EXPECT_EQ(sink_.entries()[0].category, "ClipboardManager");
    EXPECT_EQ(sink_.entries()[0].level, LogLevel::debug);
    EXPECT_EQ(sink_.entries()[1].level, LogLevel::error);
    EXPECT_EQ(sink_.entries()[1].whole, "No text found in clipboard");
}

TEST_F(LoggerTests, NumbersArePublicAndTextsPrivateByDefault) {
    logger_.debug(
        "%ld %s %{public}s %{private}ld", std::int64_t{-3}, "secret", "open", std::int64_t{4});
    EXPECT_EQ(sink_.entries().at(0).redacted, "-3 <private> open <private>");
    EXPECT_EQ(sink_.entries().at(0).whole, "-3 secret open 4");
}

TEST_F(LoggerTests, RecordsTheFormatWithItsPrivacyMarks) {
    logger_.debug("Using SF Symbol for base status icon: %{public}s", std::string("p.square"));
    EXPECT_EQ(sink_.entries().at(0).format, "Using SF Symbol for base status icon: %{public}s");
}

TEST_F(LoggerTests, PrintsEveryKindOfValue) {
    logger_.debug("%d %ld %u %lu %f %{bool}d %{bool,public}d %{public}s",
                  -1,
                  std::int64_t{-2},
                  3U,
                  std::uint64_t{4},
                  0.5,
                  true,
                  false,
                  std::string_view("x"));
    EXPECT_EQ(sink_.entries().at(0).redacted, "-1 -2 3 4 0.500000 true false x");
}

using LoggerDeathTests = LoggerTests;

TEST_F(LoggerDeathTests, PrintsADecimalPointInEveryLocale) {
    const testing_support::CommaLocale locale;
    // The locale is the whole process's.
    const auto logInThatLocale = [&] {
        for (const auto& [name, value] : locale.environment()) {
            setenv(name.c_str(), value.c_str(), 1);
        }
        std::setlocale(LC_ALL, "");
        logger_.debug("%f %f %f", 20.5, -0.25, 1234567.0);
        std::fprintf(stderr, "%.1f; %s\n", 0.5, sink_.messages().back().c_str());
        std::exit(EXIT_SUCCESS);
    };
    EXPECT_EXIT(logInThatLocale(),
                testing::ExitedWithCode(EXIT_SUCCESS),
                "0,5; debug: 20[.]500000 -0[.]250000 1234567[.]000000");
}

TEST_F(LoggerTests, CallsAFunctionOnlyIfTheLevelIsOn) {
    int computed = 0;
    const auto length = [&computed]() -> std::int64_t { return ++computed; };
    sink_.setEnabled(LogLevel::debug, false);
    logger_.debug("Processing text with length: %ld", length);
    EXPECT_EQ(computed, 0);
    EXPECT_TRUE(sink_.entries().empty());

    sink_.setEnabled(LogLevel::debug, true);
    logger_.debug("Processing text with length: %ld", length);
    EXPECT_EQ(computed, 1);
    EXPECT_EQ(sink_.messages().at(0), "debug: Processing text with length: 1");
}

TEST_F(LoggerTests, KeepsTheResultOfAFunctionUntilItIsWritten) {
    logger_.debug("%{public}s", [] { return std::string(100, 'x'); });
    EXPECT_EQ(sink_.entries().at(0).redacted, std::string(100, 'x'));
}

TEST_F(LoggerTests, APercentSignInAValueIsNotAPlaceholder) {
    logger_.debug("%{public}s and %{public}s", "100 %s", "%{public}d");
    EXPECT_EQ(sink_.entries().at(0).redacted, "100 %s and %{public}d");
}

TEST_F(LoggerTests, SplitsAMessageIntoAlternatelyPublicAndPrivatePieces) {
    const std::vector<foundation::LogRecord::Value> values{
        std::string_view("K"), std::int64_t{7}, std::string_view("shift")};
    const auto pieces = foundation::logPieces({.subsystem = {},
                                               .category = {},
                                               .level = LogLevel::debug,
                                               .format = "Key: %s (%ld), Modifiers: %s",
                                               .values = values});
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        texts.push_back(pieces[i].text);
        EXPECT_EQ(pieces[i].privacy,
                  i % 2 == 0 ? foundation::LogPrivacy::isPublic
                             : foundation::LogPrivacy::isPrivate);
    }
    EXPECT_EQ(texts, (std::vector<std::string>{"Key: ", "K", " (7), Modifiers: ", "shift", ""}));
}

} // namespace
