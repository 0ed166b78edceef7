#pragma once

#include "Platform/Linux/Worker.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace platform {

/// A worker on a thread of its own, which is started with the first piece of work and sleeps
/// between them. Where no thread can be started the work is done by the caller.
class WorkerThread final : public Worker {
  public:
    WorkerThread() = default;

    /// Finishes what was given.
    ~WorkerThread() override;

    void perform(std::function<void()> work) override;
    void waitUntilDone() override;

  private:
    void run();

    std::mutex mutex_;
    std::condition_variable hasWork_;
    std::condition_variable isDone_;
    /// What is not done yet, the piece that is being done at the front.
    std::deque<std::function<void()>> work_;
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace platform
