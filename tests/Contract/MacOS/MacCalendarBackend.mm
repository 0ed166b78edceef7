#import "Platform/MacOS/MacTime.h"
#include "tests/Contract/CalendarContract.h"
#import "tests/Support/MacOS/AppKitLoop.h"

namespace contract {

namespace {

/// Assumes that the user's calendar is Gregorian.
class MacCalendarBackend final : public CalendarBackend {
  public:
    MacCalendarBackend() { setHoursAheadOfUtc(0); }

    ~MacCalendarBackend() override { [NSTimeZone setDefaultTimeZone:[NSTimeZone systemTimeZone]]; }

    const platform::Calendar& calendar() override { return calendar_; }

    void setHoursAheadOfUtc(int hours) override {
        [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:hours * 3600]];
    }

  private:
    testing_support::AppKitLoop loop_;
    platform::MacCalendar calendar_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(MacOS,
                         CalendarContract,
                         (backend<CalendarBackend, MacCalendarBackend>("Mac")),
                         nameOfBackend<CalendarBackend>);

} // namespace contract
