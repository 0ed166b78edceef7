#pragma once

#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/MainQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// The event loop of the thread's QCoreApplication, which outlives every watch. Main thread only.
class QtEventLoop final : public EventLoop {
  public:
    [[nodiscard]] std::unique_ptr<FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) override;
};

/// The main queue on the event loop of the QCoreApplication, which outlives it.
class QtMainQueue final : public MainQueue {
  public:
    [[nodiscard]] bool isMainThread() const override;
    void async(std::function<void()> work) override;
    void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) override;
};

} // namespace platform
