#include "Platform/Memory/MemoryTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <tuple>

namespace {

using namespace std::chrono_literals;
using foundation::Date;
using platform::MemoryCalendar;

using Day = std::tuple<std::optional<int>, std::optional<int>, std::optional<int>>;

Day day(const MemoryCalendar& calendar, Date date) {
    const platform::DateComponents components = calendar.dateComponents(date);
    return {components.year, components.month, components.day};
}

constexpr Date leapDay = std::chrono::sys_days(2024y / 2 / 29);

TEST(MemoryCalendarTests, TellsTheDayInUtcAtFirst) {
    const MemoryCalendar calendar;
    EXPECT_EQ(day(calendar, leapDay - 1us), Day(2024, 2, 28));
    EXPECT_EQ(day(calendar, leapDay), Day(2024, 2, 29));
    EXPECT_EQ(day(calendar, leapDay + 24h), Day(2024, 3, 1));
}

TEST(MemoryCalendarTests, TellsTheDayBeforeTheBeginningOfItsCount) {
    const MemoryCalendar calendar;
    EXPECT_EQ(day(calendar, Date{-1us}), Day(1969, 12, 31));
    EXPECT_EQ(day(calendar, std::chrono::sys_days(1y / 1 / 1)), Day(1, 1, 1));
}

TEST(MemoryCalendarTests, TellsTheDayInItsZone) {
    MemoryCalendar calendar;
    calendar.setUtcOffset(5h + 45min);
    EXPECT_EQ(day(calendar, leapDay + 18h + 14min), Day(2024, 2, 29));
    EXPECT_EQ(day(calendar, leapDay + 18h + 15min), Day(2024, 3, 1));
    calendar.setUtcOffset(-3h - 30min);
    EXPECT_EQ(day(calendar, leapDay + 3h + 29min), Day(2024, 2, 28));
    EXPECT_EQ(day(calendar, leapDay + 3h + 30min), Day(2024, 2, 29));
}

TEST(MemoryCalendarTests, LeavesOutWhatItIsToldTo) {
    MemoryCalendar calendar;
    calendar.leaveOut(MemoryCalendar::Component::month);
    EXPECT_EQ(day(calendar, leapDay), Day(2024, std::nullopt, 29));
    calendar.leaveOut(MemoryCalendar::Component::year);
    calendar.leaveOut(MemoryCalendar::Component::day);
    EXPECT_EQ(day(calendar, leapDay), Day(std::nullopt, std::nullopt, std::nullopt));
}

} // namespace
