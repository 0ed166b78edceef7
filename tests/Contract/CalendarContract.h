#pragma once

#include "Foundation/Interface.h"
#include "Platform/Time.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>

namespace contract {

/// A calendar in an adjustable time zone.
class CalendarBackend : public foundation::Interface {
  public:
    virtual const platform::Calendar& calendar() = 0;
    /// Sets the offset from UTC, positive to the east.
    virtual void setHoursAheadOfUtc(int hours) = 0;
};

class CalendarContract : public testing::TestWithParam<BackendMaker<CalendarBackend>> {
  protected:
    void expectDay(foundation::Date date, int year, int month, int day) {
        const platform::DateComponents components = backend_->calendar().dateComponents(date);
        EXPECT_EQ(components.year, year);
        EXPECT_EQ(components.month, month);
        EXPECT_EQ(components.day, day);
    }

    std::unique_ptr<CalendarBackend> backend_ = GetParam().make();
};

} // namespace contract
