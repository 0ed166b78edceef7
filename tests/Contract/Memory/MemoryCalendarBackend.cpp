#include "Platform/Memory/MemoryCalendar.h"
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

} // namespace contract
