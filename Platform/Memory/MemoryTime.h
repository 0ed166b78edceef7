#pragma once

#include "Foundation/Value.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Time.h"

#include <chrono>
#include <cstdint>
#include <set>

namespace platform {

/// A clock that goes with the virtual time of a main queue, which outlives it. It shows the
/// beginning of 1970 when that time begins. Main thread only.
class MemoryClock final : public Clock {
  public:
    explicit MemoryClock(const MemoryMainQueue& queue) : queue_(queue) {}

    [[nodiscard]] foundation::Date now() const override { return base_ + queue_.now(); }

    /// Sets the clock, forwards or backwards. Delayed work keeps its due time.
    void setNow(foundation::Date now) { base_ = now - queue_.now(); }

  private:
    const MemoryMainQueue& queue_;
    foundation::Date base_{};
};

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
