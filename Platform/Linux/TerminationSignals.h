#pragma once

#include "Foundation/Interface.h"
#include "Platform/Linux/LinuxInterfaces.h"

#include <csignal>
#include <functional>
#include <memory>

namespace platform {

/// Turns SIGTERM, SIGINT and SIGHUP into a call from the event loop, so that the program quits in
/// order, and blocks them for as long as the object exists. A signal that the process was started
/// to ignore stays ignored.
///
/// Made once per process, on the main thread, before any other thread starts: a thread that did not
/// inherit the blocked signals would receive them, and they would kill the process.
class TerminationSignals : foundation::Pinned {
  public:
    TerminationSignals();
    ~TerminationSignals();

    /// Calls `terminate` once per signal, including those since the construction, until the watch
    /// is destroyed. This object outlives the watch. Null if signals cannot be received.
    [[nodiscard]] std::unique_ptr<FileDescriptorWatch>
    deliver(EventLoop& eventLoop, std::function<void()> terminate) const;

  private:
    sigset_t signals_;
    int descriptor_ = -1;
};

} // namespace platform
