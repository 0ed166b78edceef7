#pragma once

#include "Foundation/Interface.h"
#include "Platform/MainQueue.h"

#include <chrono>
#include <memory>

namespace pastewise {

/// Makes one out of many calls that follow each other closely: where the desktop holds the key, it
/// repeats what the key does. Main thread only.
class Debouncer : foundation::Pinned {
  public:
    /// The queue outlives the object.
    Debouncer(platform::MainQueue& queue, std::chrono::milliseconds quiet)
        : queue_(queue), quiet_(quiet) {}

    ~Debouncer();

    /// Whether to act on a call that comes now: not when `quiet` has not yet passed since the call
    /// before it, whether that one was acted on or not.
    [[nodiscard]] bool accepts();

  private:
    platform::MainQueue& queue_;
    std::chrono::milliseconds quiet_;
    /// Runs when the quiet time is over; null when it is.
    std::shared_ptr<platform::WorkItem> endOfQuiet_;
};

} // namespace pastewise
