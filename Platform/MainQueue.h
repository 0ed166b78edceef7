#pragma once

#include "Platform/WorkItem.h"

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// The queue of work that the main thread's event loop runs.
///
/// async() may be called from any thread, asyncAfter() from the main thread alone. Work runs on
/// the main thread, never inside the call that queued it, in the order of its due times and, among
/// equal ones, in the order of queueing.
class MainQueue {
  public:
    MainQueue() = default;
    virtual ~MainQueue() = default;
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;
    MainQueue(MainQueue&&) = delete;
    MainQueue& operator=(MainQueue&&) = delete;

    [[nodiscard]] virtual bool isMainThread() const = 0;

    virtual void async(std::function<void()> work) = 0;

    /// Runs `item` not earlier than `delay` from now, unless it has been cancelled by then.
    virtual void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) = 0;
};

} // namespace platform
