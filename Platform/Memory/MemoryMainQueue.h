#pragma once

#include "Platform/MainQueue.h"
#include "Platform/Memory/Journal.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace platform {

/// A main queue with virtual time, which moves only by advance(). Every thread counts as the main
/// one until a test says otherwise.
class MemoryMainQueue final : public MainQueue, public Journaled {
  public:
    using Journaled::Journaled;

    [[nodiscard]] bool isMainThread() const override { return isMainThread_; }

    void async(std::function<void()> work) override {
        asyncAfter(std::chrono::milliseconds(0), std::make_shared<WorkItem>(std::move(work)));
    }

    void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) override {
        note("queue", std::to_string(delay.count()) + " ms");
        pending_.emplace(DueOrder{now_ + delay, queuedCount_++}, std::move(item));
    }

    /// What isMainThread() returns from now on.
    void setIsMainThread(bool isMainThread) { isMainThread_ = isMainThread; }

    /// Advances time by `duration` and runs the work that becomes due, each at its own time.
    void advance(std::chrono::milliseconds duration) {
        const auto end = now_ + duration;
        while (!pending_.empty() && pending_.begin()->first.first <= end) {
            const auto next = pending_.extract(pending_.begin());
            now_ = next.key().first;
            next.mapped()->perform();
        }
        now_ = end;
    }

    /// Runs the work that is due now, including what it queues for now.
    void drain() { advance(std::chrono::milliseconds(0)); }

    /// Virtual time since the queue was made.
    [[nodiscard]] std::chrono::milliseconds now() const { return now_; }

    /// How many work items are pending, including cancelled ones.
    [[nodiscard]] std::size_t pendingCount() const { return pending_.size(); }

  private:
    using DueOrder = std::pair<std::chrono::milliseconds, std::uint64_t>;

    std::map<DueOrder, std::shared_ptr<WorkItem>> pending_;
    std::chrono::milliseconds now_{0};
    std::uint64_t queuedCount_ = 0;
    bool isMainThread_ = true;
};

} // namespace platform
