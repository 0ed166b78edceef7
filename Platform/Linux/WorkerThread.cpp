#include "Platform/Linux/WorkerThread.h"

#include <system_error>
#include <utility>

namespace platform {

WorkerThread::~WorkerThread() {
    if (!thread_.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    hasWork_.notify_one();
    thread_.join();
}

void WorkerThread::perform(std::function<void()> work) {
    if (!thread_.joinable()) {
        try {
            thread_ = std::thread([this] { run(); });
        } catch (const std::system_error&) {
            work();
            return;
        }
    }
    {
        const std::lock_guard lock(mutex_);
        work_.push_back(std::move(work));
    }
    hasWork_.notify_one();
}

void WorkerThread::waitUntilDone() {
    std::unique_lock lock(mutex_);
    isDone_.wait(lock, [this] { return work_.empty(); });
}

void WorkerThread::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        hasWork_.wait(lock, [this] { return isEnding_ || !work_.empty(); });
        if (work_.empty()) {
            return;
        }
        const auto& piece = work_.front(); // A deque keeps it in place while others are added.
        lock.unlock();
        piece();
        lock.lock();
        work_.pop_front();
        if (work_.empty()) {
            isDone_.notify_all();
        }
    }
}

} // namespace platform
