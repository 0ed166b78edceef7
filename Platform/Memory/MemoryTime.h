#pragma once

#include "Foundation/Value.h"
#include "Platform/Memory/Journal.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Time.h"

#include <chrono>
#include <cstdint>
#include <set>

namespace platform {

/// A clock that follows the virtual time of a main queue, which outlives it and whose journal it
/// shares. It starts in 1970. Main thread only.
class MemoryClock final : public Clock, public Journaled {
  public:
    explicit MemoryClock(const MemoryMainQueue& queue)
        : Journaled(queue.journal()), queue_(queue) {}

    [[nodiscard]] foundation::Date now() const override {
        note("read clock");
        return base_ + queue_.now();
    }

    /// Sets the clock, forwards or backwards. Delayed work keeps its due time.
    void setNow(foundation::Date now) { base_ = now - queue_.now(); }

  private:
    const MemoryMainQueue& queue_;
    foundation::Date base_{};
};

/// The Gregorian calendar in a time zone with a fixed offset. A test may have it leave components
/// out. Main thread only.
class MemoryCalendar final : public Calendar {
  public:
    enum class Component : std::uint8_t { year, month, day };

    [[nodiscard]] DateComponents dateComponents(foundation::Date date) const override {
        const std::chrono::year_month_day day(
            std::chrono::floor<std::chrono::days>(date + utcOffset_));
        DateComponents components;
        if (!leftOut_.contains(Component::year)) {
            components.year = static_cast<int>(day.year());
        }
        if (!leftOut_.contains(Component::month)) {
            components.month = static_cast<int>(static_cast<unsigned>(day.month()));
        }
        if (!leftOut_.contains(Component::day)) {
            components.day = static_cast<int>(static_cast<unsigned>(day.day()));
        }
        return components;
    }

    /// Changes the time zone, which is UTC at first; negative is west of Greenwich.
    void setUtcOffset(std::chrono::minutes utcOffset) { utcOffset_ = utcOffset; }

    /// The component is none from now on.
    void leaveOut(Component component) { leftOut_.insert(component); }

  private:
    std::chrono::minutes utcOffset_{0};
    std::set<Component> leftOut_;
};

} // namespace platform
