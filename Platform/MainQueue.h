#pragma once

#include "Foundation/MainThread.h"
#include "Platform/WorkItem.h"

#include <chrono>
#include <memory>

namespace platform {

/// The queue of work that the main thread's event loop runs.
///
/// async() may be called from any thread, asyncAfter() from the main thread alone. Work runs on
/// the main thread, never inside the call that queued it, in the order of its due times and, among
/// equal ones, in the order of queueing.
class MainQueue : public foundation::MainThread {
  public:
    /// Runs `item` not earlier than `delay` from now, unless it has been cancelled by then.
    virtual void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) = 0;
};

} // namespace platform
