#include "Platform/Memory/MemoryTime.h"
#include "tests/Contract/CalendarContract.h"

#include <chrono>

namespace contract {

namespace {

class MemoryCalendarBackend final : public CalendarBackend {
  public:
    const platform::Calendar& calendar() override { return calendar_; }

    void setHoursAheadOfUtc(int hours) override {
        calendar_.setUtcOffset(std::chrono::hours(hours));
    }

  private:
    platform::MemoryCalendar calendar_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory,
                         CalendarContract,
                         (backend<CalendarBackend, MemoryCalendarBackend>("Memory")),
                         nameOfBackend<CalendarBackend>);

using foundation::Date;
using namespace std::chrono_literals;
using std::chrono::December;
using std::chrono::February;
using std::chrono::January;
using std::chrono::March;
using std::chrono::sys_days;

TEST_P(CalendarContract, ReturnsTheDay) {
    expectDay(Date{}, 1970, 1, 1);
    expectDay(sys_days(2024y / March / 7) + 12h, 2024, 3, 7);
}

TEST_P(CalendarContract, StartsTheDayAtMidnightToTheMicrosecond) {
    const Date midnight = sys_days(2024y / March / 7);
    expectDay(midnight - 1us, 2024, 3, 6);
    expectDay(midnight, 2024, 3, 7);
}

TEST_P(CalendarContract, HandlesLeapDays) {
    expectDay(sys_days(2024y / February / 28) + 24h, 2024, 2, 29);
    expectDay(sys_days(2023y / February / 28) + 24h, 2023, 3, 1);
    expectDay(sys_days(1900y / February / 28) + 24h, 1900, 3, 1);
    expectDay(sys_days(2000y / February / 28) + 24h, 2000, 2, 29);
}

TEST_P(CalendarContract, HandlesDistantPastAndFuture) {
    expectDay(Date{} - 1us, 1969, 12, 31);
    // Calendars differ on days before October 1582.
    expectDay(sys_days(1601y / January / 1), 1601, 1, 1);
    expectDay(sys_days(12345y / December / 31), 12345, 12, 31);
}

TEST_P(CalendarContract, FollowsTimeZoneChanges) {
    const Date evening = sys_days(2023y / December / 31) + 20h;
    expectDay(evening, 2023, 12, 31);
    backend_->setHoursAheadOfUtc(9);
    expectDay(evening, 2024, 1, 1);
    backend_->setHoursAheadOfUtc(-8);
    expectDay(evening, 2023, 12, 31);
}

} // namespace contract
