#pragma once

#include "Foundation/Interface.h"

#include <functional>

namespace foundation {

/// The way to the main thread. Any thread.
class MainThread : public Interface {
  public:
    [[nodiscard]] virtual bool isMainThread() const = 0;

    /// Runs the work on the main thread, never inside this call.
    virtual void async(std::function<void()> work) = 0;
};

} // namespace foundation
