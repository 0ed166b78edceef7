#pragma once

#include "Foundation/MainThread.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace platform {

/// A piece of work that was put off and can still be called off. Shared by the queue that will run
/// it and by whoever may cancel it. Main thread only.
class WorkItem {
  public:
    explicit WorkItem(std::function<void()> work) : work_(std::move(work)) {}

    /// Keeps work that has not begun from running; later calls and calls after it ran do nothing.
    void cancel() { isCancelled_ = true; }

    [[nodiscard]] bool isCancelled() const { return isCancelled_; }

    /// For queues: runs the work unless it was cancelled.
    void perform() const {
        if (!isCancelled_) {
            work_();
        }
    }

  private:
    std::function<void()> work_;
    bool isCancelled_ = false;
};

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
