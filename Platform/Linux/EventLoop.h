#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Keeps a file descriptor watched for as long as it exists.
class FileDescriptorWatch {
  public:
    FileDescriptorWatch() = default;
    virtual ~FileDescriptorWatch() = default;
    FileDescriptorWatch(const FileDescriptorWatch&) = delete;
    FileDescriptorWatch& operator=(const FileDescriptorWatch&) = delete;
    FileDescriptorWatch(FileDescriptorWatch&&) = delete;
    FileDescriptorWatch& operator=(FileDescriptorWatch&&) = delete;
};

/// The part of the main thread's event loop that the backends for display servers and signals
/// need, so that they do not depend on the toolkit that runs the loop. Main thread only.
class EventLoop {
  public:
    EventLoop() = default;
    virtual ~EventLoop() = default;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;
    EventLoop(EventLoop&&) = delete;
    EventLoop& operator=(EventLoop&&) = delete;

    /// Calls `ready` from the loop whenever `descriptor` has something to read, until the watch is
    /// dropped. A watch may be dropped inside its own callback. The descriptor stays the caller's
    /// and outlives the watch.
    [[nodiscard]] virtual std::unique_ptr<FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) = 0;
};

} // namespace platform
