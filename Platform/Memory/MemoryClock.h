#pragma once

#include "Foundation/Date.h"
#include "Platform/Clock.h"
#include "Platform/Memory/MemoryMainQueue.h"

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

} // namespace platform
