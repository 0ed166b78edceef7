#pragma once

#include "Platform/Time.h"

#import <Foundation/Foundation.h>

#include <chrono>

namespace platform {

/// The calendar chosen in the system's settings. Main thread only.
class MacCalendar final : public Calendar {
  public:
    [[nodiscard]] DateComponents dateComponents(foundation::Date date) const override {
        const std::chrono::duration<double> time = date.time_since_epoch();
        NSDateComponents* const components = [[NSCalendar currentCalendar]
            components:NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay
              fromDate:[NSDate dateWithTimeIntervalSince1970:time.count()]];
        return {.year = component(components.year),
                .month = component(components.month),
                .day = component(components.day)};
    }

  private:
    static std::optional<int> component(NSInteger value) {
        return value == NSDateComponentUndefined ? std::nullopt
                                                 : std::optional(static_cast<int>(value));
    }
};

} // namespace platform
