#include "Platform/Linux/LinuxServices.h"
#include "tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>

namespace {

using foundation::Date;
using testing_support::EnvironmentVariable;
using namespace std::chrono_literals;
using std::chrono::December;
using std::chrono::February;
using std::chrono::January;
using std::chrono::March;
using std::chrono::October;
using std::chrono::sys_days;

std::string dayOf(Date date) {
    const platform::DateComponents day = platform::LocalCalendar().dateComponents(date);
    return std::to_string(day.year.value_or(0)) + "-" + std::to_string(day.month.value_or(0)) +
           "-" + std::to_string(day.day.value_or(0));
}

class LocalCalendarTests : public testing::Test {
  protected:
    void TearDown() override { tzset(); }
};

TEST_F(LocalCalendarTests, FollowsAChangeOfTimeZone) {
    const Date evening = sys_days(2024y / March / 7) + 22h;
    {
        const EnvironmentVariable zone("TZ", "Pacific/Auckland");
        EXPECT_EQ(dayOf(evening), "2024-3-8");
    }
    {
        const EnvironmentVariable zone("TZ", "America/Los_Angeles");
        EXPECT_EQ(dayOf(evening), "2024-3-7");
    }
    const EnvironmentVariable zone("TZ", "UTC");
    EXPECT_EQ(dayOf(evening), "2024-3-7");
}

TEST_F(LocalCalendarTests, ChangesTheDayAtMidnightToTheMicrosecond) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    const Date midnight = sys_days(2024y / March / 7) - 1h;
    EXPECT_EQ(dayOf(midnight - 1us), "2024-3-6");
    EXPECT_EQ(dayOf(midnight), "2024-3-7");
}

TEST_F(LocalCalendarTests, ChangesTheDayAtMidnightWhenClocksGoForward) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    // This day has 23 hours.
    const Date begin = sys_days(2024y / March / 31) - 1h;
    EXPECT_EQ(dayOf(begin - 1us), "2024-3-30");
    EXPECT_EQ(dayOf(begin), "2024-3-31");
    EXPECT_EQ(dayOf(begin + 23h - 1us), "2024-3-31");
    EXPECT_EQ(dayOf(begin + 23h), "2024-4-1");
}

TEST_F(LocalCalendarTests, ChangesTheDayAtMidnightWhenClocksGoBack) {
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    // This day has 25 hours.
    const Date begin = sys_days(2024y / October / 27) - 2h;
    EXPECT_EQ(dayOf(begin - 1us), "2024-10-26");
    EXPECT_EQ(dayOf(begin), "2024-10-27");
    EXPECT_EQ(dayOf(begin + 25h - 1us), "2024-10-27");
    EXPECT_EQ(dayOf(begin + 25h), "2024-10-28");
}

TEST_F(LocalCalendarTests, SkipsADayThatTheTimeZoneSkipped) {
    const EnvironmentVariable zone("TZ", "Pacific/Apia");
    // Samoa went from the 29th to the 31st of December 2011.
    const Date change = sys_days(2011y / December / 30) + 10h;
    EXPECT_EQ(dayOf(change - 1us), "2011-12-29");
    EXPECT_EQ(dayOf(change), "2011-12-31");
}

TEST_F(LocalCalendarTests, HandlesDaysBefore1970) {
    const EnvironmentVariable zone("TZ", "UTC");
    EXPECT_EQ(dayOf(Date{-1us}), "1969-12-31");
    EXPECT_EQ(dayOf(sys_days(1582y / January / 1)), "1582-1-1");
    EXPECT_EQ(dayOf(sys_days(999y / January / 1)), "999-1-1");
    EXPECT_EQ(dayOf(sys_days(1900y / February / 28) + 24h), "1900-3-1");
}

TEST_F(LocalCalendarTests, HandlesTheEarliestAndLatestDates) {
    const EnvironmentVariable zone("TZ", "UTC");
    EXPECT_EQ(dayOf(Date::max()), "294247-1-10");
    EXPECT_EQ(dayOf(Date::min() + 1s), "-290308-12-21");
}

TEST_F(LocalCalendarTests, TreatsAnUnknownTimeZoneAsUtc) {
    const EnvironmentVariable zone("TZ", "Nowhere/AtAll");
    EXPECT_EQ(dayOf(sys_days(2024y / March / 7)), "2024-3-7");
}

} // namespace
