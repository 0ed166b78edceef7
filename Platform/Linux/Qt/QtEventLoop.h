#pragma once

#include "Platform/Linux/EventLoop.h"

#include <functional>
#include <memory>

namespace platform {

/// The event loop of the thread's QCoreApplication, which outlives every watch. Main thread only.
class QtEventLoop final : public EventLoop {
  public:
    [[nodiscard]] std::unique_ptr<FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) override;
};

} // namespace platform
