#pragma once

#include "Foundation/Date.h"
#include "Platform/Calendar.h"

#include <chrono>
#include <cstdint>
#include <set>

namespace platform {

/// The Gregorian calendar in a zone that is a fixed time ahead of UTC. It cannot tell what a test
/// has it leave out. Main thread only.
class MemoryCalendar final : public Calendar {
  public:
    enum class Component : std::uint8_t { year, month, day };

    [[nodiscard]] DateComponents dateComponents(foundation::Date date) const override;

    /// Moves to another zone; negative is west of Greenwich. At first it is UTC.
    void setUtcOffset(std::chrono::minutes utcOffset) { utcOffset_ = utcOffset; }

    /// From now on that component is none.
    void leaveOut(Component component) { leftOut_.insert(component); }

  private:
    std::chrono::minutes utcOffset_{0};
    std::set<Component> leftOut_;
};

} // namespace platform
