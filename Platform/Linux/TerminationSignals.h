#pragma once

#include "Foundation/Interface.h"
#include "Platform/Linux/EventLoop.h"

#include <csignal>
#include <functional>
#include <memory>

namespace platform {

/// Turns SIGTERM, SIGINT and SIGHUP into a call from the event loop, so that the program ends as it
/// does by choice: for as long as the object lives they no longer end the process by themselves. A
/// signal that the process was started to ignore stays ignored.
///
/// Made once per process, on the main thread, before anything starts another thread: a thread that
/// does not inherit the blocked signals would take them and end the process.
class TerminationSignals : foundation::Pinned {
  public:
    TerminationSignals();
    ~TerminationSignals();

    /// Has `terminate` called once for each signal, those since the construction included, until
    /// the watch is dropped, which this object outlives. None without a descriptor to watch.
    [[nodiscard]] std::unique_ptr<FileDescriptorWatch>
    deliver(EventLoop& eventLoop, std::function<void()> terminate) const;

  private:
    sigset_t signals_;
    int descriptor_ = -1;
};

} // namespace platform
