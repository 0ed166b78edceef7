#include "Platform/Linux/LocalCalendar.h"
#include "Platform/Memory/MemoryCalendar.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <memory>
#include <optional>
#include <string>

namespace {

using foundation::Date;
using platform::DateComponents;
using namespace std::chrono_literals;
using std::chrono::December;
using std::chrono::February;
using std::chrono::January;
using std::chrono::March;
using std::chrono::sys_days;

/// A calendar and what it takes to move it to another zone.
class Backend {
  public:
    Backend() = default;
    virtual ~Backend() = default;
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;
    Backend(Backend&&) = delete;
    Backend& operator=(Backend&&) = delete;

    virtual const platform::Calendar& calendar() = 0;
    /// East of Greenwich, from then on.
    virtual void setHoursAheadOfUtc(int hours) = 0;
};

class MemoryBackend final : public Backend {
  public:
    const platform::Calendar& calendar() override { return calendar_; }

    void setHoursAheadOfUtc(int hours) override {
        calendar_.setUtcOffset(std::chrono::hours(hours));
    }

  private:
    platform::MemoryCalendar calendar_;
};

class LocalBackend final : public Backend {
  public:
    LocalBackend() { setHoursAheadOfUtc(0); }

    ~LocalBackend() override {
        zone_.reset();
        tzset();
    }

    LocalBackend(const LocalBackend&) = delete;
    LocalBackend& operator=(const LocalBackend&) = delete;
    LocalBackend(LocalBackend&&) = delete;
    LocalBackend& operator=(LocalBackend&&) = delete;

    const platform::Calendar& calendar() override { return calendar_; }

    void setHoursAheadOfUtc(int hours) override {
        // In such a name the hours count to the west.
        zone_.reset();
        zone_.emplace("TZ", ("<zone>" + std::to_string(-hours)).c_str());
    }

  private:
    platform::LocalCalendar calendar_;
    std::optional<testing_support::EnvironmentVariable> zone_;
};

using BackendMaker = contract::BackendMaker<Backend>;

class CalendarContract : public testing::TestWithParam<BackendMaker> {
  protected:
    void expectDay(Date date, int year, int month, int day) {
        const DateComponents components = backend_->calendar().dateComponents(date);
        EXPECT_EQ(components.year, year);
        EXPECT_EQ(components.month, month);
        EXPECT_EQ(components.day, day);
    }

    std::unique_ptr<Backend> backend_ = GetParam().make();
};

TEST_P(CalendarContract, TellsTheDay) {
    expectDay(Date{}, 1970, 1, 1);
    expectDay(sys_days(2024y / March / 7) + 12h, 2024, 3, 7);
}

TEST_P(CalendarContract, BeginsTheDayAtMidnightToTheMicrosecond) {
    const Date midnight = sys_days(2024y / March / 7);
    expectDay(midnight - 1us, 2024, 3, 6);
    expectDay(midnight, 2024, 3, 7);
}

TEST_P(CalendarContract, KnowsLeapDays) {
    expectDay(sys_days(2024y / February / 28) + 24h, 2024, 2, 29);
    expectDay(sys_days(2023y / February / 28) + 24h, 2023, 3, 1);
    expectDay(sys_days(1900y / February / 28) + 24h, 1900, 3, 1);
    expectDay(sys_days(2000y / February / 28) + 24h, 2000, 2, 29);
}

TEST_P(CalendarContract, KnowsDaysLongAgoAndFarAhead) {
    expectDay(Date{} - 1us, 1969, 12, 31);
    expectDay(sys_days(999y / January / 1), 999, 1, 1);
    expectDay(sys_days(12345y / December / 31), 12345, 12, 31);
}

TEST_P(CalendarContract, FollowsTheZoneWhenItChanges) {
    const Date evening = sys_days(2023y / December / 31) + 20h;
    expectDay(evening, 2023, 12, 31);
    backend_->setHoursAheadOfUtc(9);
    expectDay(evening, 2024, 1, 1);
    backend_->setHoursAheadOfUtc(-8);
    expectDay(evening, 2023, 12, 31);
}

INSTANTIATE_TEST_SUITE_P(OfEachBackend,
                         CalendarContract,
                         testing::Values(BackendMaker{"Memory",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<MemoryBackend>();
                                                      }},
                                         BackendMaker{"Local",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<LocalBackend>();
                                                      }}),
                         [](const auto& maker) { return std::string(maker.param.name); });

} // namespace
