#pragma once

#include "Platform/Time.h"

namespace platform {

/// The Gregorian calendar in the zone of the variable TZ or else of /etc/localtime, looked at anew
/// each time. All components are none where the C library cannot tell the day. Main thread only.
class LocalCalendar final : public Calendar {
  public:
    [[nodiscard]] DateComponents dateComponents(foundation::Date date) const override;
};

} // namespace platform
