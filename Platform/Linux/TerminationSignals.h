#pragma once

#include "Platform/Linux/EventLoop.h"

#include <functional>
#include <memory>

namespace platform {

/// Turns SIGTERM, SIGINT and SIGHUP into a call from the event loop, so that the program ends as it
/// does by choice: for as long as the object lives they no longer end the process by themselves.
/// Made on the main thread before any other thread starts, once per process.
class TerminationSignals {
  public:
    TerminationSignals(EventLoop& eventLoop, std::function<void()> terminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    TerminationSignals(TerminationSignals&&) = delete;
    TerminationSignals& operator=(TerminationSignals&&) = delete;

  private:
    int descriptor_ = -1;
    std::unique_ptr<FileDescriptorWatch> watch_;
};

} // namespace platform
