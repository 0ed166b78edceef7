#pragma once

#include "Platform/MainQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// The main queue on the event loop of the QCoreApplication, which outlives it.
class QtMainQueue final : public MainQueue {
  public:
    [[nodiscard]] bool isMainThread() const override;
    void async(std::function<void()> work) override;
    void asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) override;
};

} // namespace platform
