#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Value.h"

#include <optional>

namespace platform {

/// The wall clock. It may jump, also backwards, if the user or the network sets it. Main thread
/// only.
class Clock : public foundation::Interface {
  public:
    [[nodiscard]] virtual foundation::Date now() const = 0;
};

/// A calendar day. A component that the calendar does not know is none.
struct DateComponents {
    std::optional<int> year;
    std::optional<int> month; ///< From 1.
    std::optional<int> day;   ///< From 1.
};

/// The user's calendar in the user's current time zone. Main thread only.
class Calendar : public foundation::Interface {
  public:
    [[nodiscard]] virtual DateComponents dateComponents(foundation::Date date) const = 0;
};

} // namespace platform
