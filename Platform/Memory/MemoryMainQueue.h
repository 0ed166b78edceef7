#pragma once

#include "Platform/MainQueue.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace platform {

/// A main queue whose time is virtual: it stands still until somebody advances it. Every thread
/// passes for the main one until a test says otherwise.
class MemoryMainQueue final : public MainQueue {
  public:
    [[nodiscard]] bool isMainThread() const override { return isMainThread_; }

    void async(std::function<void()> work) override;
    void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) override;

    /// What isMainThread() answers from now on.
    void setIsMainThread(bool isMainThread) { isMainThread_ = isMainThread; }

    /// Moves time on by `duration`, running what becomes due on the way, each at its own time.
    void advance(std::chrono::milliseconds duration);

    /// Runs what is due now, and what that queues for now.
    void drain() { advance(std::chrono::milliseconds(0)); }

    /// Virtual time since the queue was made.
    [[nodiscard]] std::chrono::milliseconds now() const { return now_; }

    /// How many pieces of work wait, cancelled ones included.
    [[nodiscard]] std::size_t pendingCount() const { return pending_.size(); }

  private:
    using DueOrder = std::pair<std::chrono::milliseconds, std::uint64_t>;

    std::map<DueOrder, std::shared_ptr<WorkItem>> pending_;
    std::chrono::milliseconds now_{0};
    std::uint64_t queuedCount_ = 0;
    bool isMainThread_ = true;
};

} // namespace platform
