#include "Platform/Linux/LinuxServices.h"
#include "tests/Contract/CalendarContract.h"
#include "tests/Support/EnvironmentVariable.h"

#include <ctime>
#include <optional>
#include <string>

namespace contract {

namespace {

class LocalCalendarBackend final : public CalendarBackend {
  public:
    LocalCalendarBackend() { setHoursAheadOfUtc(0); }

    ~LocalCalendarBackend() override {
        zone_.reset();
        tzset();
    }

    const platform::Calendar& calendar() override { return calendar_; }

    void setHoursAheadOfUtc(int hours) override {
        // The offset in a POSIX time zone counts west of UTC.
        zone_.reset();
        zone_.emplace("TZ", ("<zone>" + std::to_string(-hours)).c_str());
    }

  private:
    platform::LocalCalendar calendar_;
    std::optional<testing_support::EnvironmentVariable> zone_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         CalendarContract,
                         (backend<CalendarBackend, LocalCalendarBackend>("Local")),
                         nameOfBackend<CalendarBackend>);

} // namespace contract
