#pragma once

#include "Foundation/Threads.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace platform {

/// Deferred work that can be cancelled. Shared by the queue that runs it and the caller that may
/// cancel it. Main thread only.
class WorkItem {
  public:
    explicit WorkItem(std::function<void()> work) : work_(std::move(work)) {}

    /// Keeps work that has not started from running; does nothing after that.
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
/// async() may be called from any thread, asyncAfter() only from the main thread. Work runs on the
/// main thread, never within the call that queued it, ordered by due time and then by queueing.
class MainQueue : public foundation::MainThread {
  public:
    /// Runs `item` no earlier than `delay` from now, unless it is cancelled by then.
    virtual void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) = 0;
};

} // namespace platform
