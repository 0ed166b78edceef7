#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <memory>

namespace platform {

/// Watches a file descriptor for as long as it exists.
class FileDescriptorWatch : public foundation::Interface {};

/// The main thread's event loop, for code that does not use the toolkit that runs it. Main thread
/// only.
class EventLoop : public foundation::Interface {
  public:
    /// Calls `ready` from the loop whenever `descriptor` is readable, until the watch is destroyed,
    /// which may happen inside the callback. The caller keeps the descriptor open for longer.
    [[nodiscard]] virtual std::unique_ptr<FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) = 0;
};

} // namespace platform
