#pragma once

#include "Foundation/Interface.h"
#include "Platform/MainQueue.h"

#include <chrono>
#include <memory>

namespace pastewise {

/// Reduces calls in quick succession to one: a desktop whose shortcut key is held down repeats the
/// shortcut. Main thread only.
class Debouncer : foundation::Pinned {
  public:
    /// The queue outlives the object.
    Debouncer(platform::MainQueue& queue, std::chrono::milliseconds quiet)
        : queue_(queue), quiet_(quiet) {}

    ~Debouncer() {
        if (endOfQuiet_) {
            endOfQuiet_->cancel();
        }
    }

    /// Whether to act on a call that comes now: only if the one before it, acted on or not, was at
    /// least `quiet` ago.
    [[nodiscard]] bool accepts() {
        const bool isQuiet = endOfQuiet_ == nullptr;
        if (!isQuiet) {
            endOfQuiet_->cancel();
        }
        endOfQuiet_ = std::make_shared<platform::WorkItem>([this] { endOfQuiet_.reset(); });
        queue_.asyncAfter(quiet_, endOfQuiet_);
        return isQuiet;
    }

  private:
    platform::MainQueue& queue_;
    std::chrono::milliseconds quiet_;
    /// Null once the quiet time is over.
    std::shared_ptr<platform::WorkItem> endOfQuiet_;
};

} // namespace pastewise
