#include "Platform/Memory/MemoryTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <tuple>

namespace {

using namespace std::chrono_literals;
using foundation::Date;
using platform::MemoryCalendar;
using platform::MemoryClock;
using platform::MemoryMainQueue;

using Day = std::tuple<std::optional<int>, std::optional<int>, std::optional<int>>;

Day day(const MemoryCalendar& calendar, Date date) {
    const platform::DateComponents components = calendar.dateComponents(date);
    return {components.year, components.month, components.day};
}

constexpr Date leapDay = std::chrono::sys_days(2024y / 2 / 29);

TEST(MemoryCalendarTests, UsesUtcAtFirst) {
    const MemoryCalendar calendar;
    EXPECT_EQ(day(calendar, leapDay - 1us), Day(2024, 2, 28));
    EXPECT_EQ(day(calendar, leapDay), Day(2024, 2, 29));
    EXPECT_EQ(day(calendar, leapDay + 24h), Day(2024, 3, 1));
}

TEST(MemoryCalendarTests, KnowsDaysBefore1970) {
    const MemoryCalendar calendar;
    EXPECT_EQ(day(calendar, Date{-1us}), Day(1969, 12, 31));
    EXPECT_EQ(day(calendar, std::chrono::sys_days(1y / 1 / 1)), Day(1, 1, 1));
}

TEST(MemoryCalendarTests, UsesTheUtcOffset) {
    MemoryCalendar calendar;
    calendar.setUtcOffset(5h + 45min);
    EXPECT_EQ(day(calendar, leapDay + 18h + 14min), Day(2024, 2, 29));
    EXPECT_EQ(day(calendar, leapDay + 18h + 15min), Day(2024, 3, 1));
    calendar.setUtcOffset(-3h - 30min);
    EXPECT_EQ(day(calendar, leapDay + 3h + 29min), Day(2024, 2, 28));
    EXPECT_EQ(day(calendar, leapDay + 3h + 30min), Day(2024, 2, 29));
}

TEST(MemoryCalendarTests, LeavesOutComponents) {
    MemoryCalendar calendar;
    calendar.leaveOut(MemoryCalendar::Component::month);
    EXPECT_EQ(day(calendar, leapDay), Day(2024, std::nullopt, 29));
    calendar.leaveOut(MemoryCalendar::Component::year);
    calendar.leaveOut(MemoryCalendar::Component::day);
    EXPECT_EQ(day(calendar, leapDay), Day(std::nullopt, std::nullopt, std::nullopt));
}

TEST(MemoryClockTests, FollowsTheQueue) {
    MemoryMainQueue queue;
    const MemoryClock clock(queue);
    EXPECT_EQ(clock.now(), Date{});
    queue.advance(1500ms);
    EXPECT_EQ(clock.now(), Date{1500ms});
}

TEST(MemoryClockTests, ContinuesFromTheTimeItIsSetTo) {
    MemoryMainQueue queue;
    queue.advance(10s);
    MemoryClock clock(queue);
    clock.setNow(Date{1h});
    EXPECT_EQ(clock.now(), Date{1h});
    queue.advance(1s);
    EXPECT_EQ(clock.now(), Date{1h + 1s});
    clock.setNow(Date{1us});
    EXPECT_EQ(clock.now(), Date{1us});
}

TEST(MemoryClockTests, DoesNotChangeTheDueTimeOfDelayedWork) {
    MemoryMainQueue queue;
    MemoryClock clock(queue);
    std::optional<Date> ranAt;
    queue.asyncAfter(900ms, std::make_shared<platform::WorkItem>([&] { ranAt = clock.now(); }));
    clock.setNow(Date{24h});
    queue.advance(899ms);
    EXPECT_EQ(ranAt, std::nullopt);
    queue.advance(1ms);
    EXPECT_EQ(ranAt, Date{24h + 900ms});
}

} // namespace
