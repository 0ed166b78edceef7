#include "Foundation/Logger.h"
#include "Platform/Linux/Qt/QtLogSink.h"
#include "tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>

namespace {

using foundation::LogLevel;

TEST(QtLogSinkTests, WritesErrorsOnlyUnlessTheRulesSayOtherwise) {
    // Unset: the variable would override the rules that the test sets.
    const testing_support::EnvironmentVariable rules("QT_LOGGING_RULES", nullptr);
    platform::QtLogSink sink;
    const foundation::Logger logger(sink, "com.app.pastewise", "ClipboardManager");
    EXPECT_TRUE(logger.isEnabled(LogLevel::error));
    EXPECT_FALSE(logger.isEnabled(LogLevel::debug));
    QLoggingCategory::setFilterRules("com.app.pastewise.ClipboardManager.debug=true");
    EXPECT_TRUE(logger.isEnabled(LogLevel::debug));
    QLoggingCategory::setFilterRules("com.app.pastewise.ClipboardManager.critical=false");
    EXPECT_FALSE(logger.isEnabled(LogLevel::error));
    QLoggingCategory::setFilterRules({});
}

} // namespace
