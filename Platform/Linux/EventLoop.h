#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <memory>

namespace platform {

/// Keeps a file descriptor watched for as long as it exists.
class FileDescriptorWatch : public foundation::Interface {};

/// The part of the main thread's event loop that the backends for display servers and signals
/// need, so that they do not depend on the toolkit that runs the loop. Main thread only.
class EventLoop : public foundation::Interface {
  public:
    /// Calls `ready` from the loop whenever `descriptor` has something to read, until the watch is
    /// dropped. A watch may be dropped inside its own callback. The descriptor stays the caller's
    /// and outlives the watch.
    [[nodiscard]] virtual std::unique_ptr<FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) = 0;
};

} // namespace platform
