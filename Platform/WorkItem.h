#pragma once

#include <functional>
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

} // namespace platform
