#include "Platform/Memory/MemoryMainQueue.h"

namespace platform {

void MemoryMainQueue::async(std::function<void()> work) {
    asyncAfter(std::chrono::milliseconds(0), std::make_shared<WorkItem>(std::move(work)));
}

void MemoryMainQueue::asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) {
    pending_.emplace(DueOrder{now_ + delay, queuedCount_++}, std::move(item));
}

void MemoryMainQueue::advance(std::chrono::milliseconds duration) {
    const auto end = now_ + duration;
    while (!pending_.empty() && pending_.begin()->first.first <= end) {
        const auto next = pending_.extract(pending_.begin());
        now_ = next.key().first;
        next.mapped()->perform();
    }
    now_ = end;
}

} // namespace platform
