#pragma once

#include "Platform/Memory/MemoryEventHotKeyService.h"
#include "Platform/Memory/MemoryLogSink.h"
#include "Platform/Memory/MemoryMainQueue.h"
#include "Platform/Memory/MemoryPasteboard.h"
#include "Platform/Platform.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// A whole system in memory, for running the program where nothing is real. Main thread only.
class MemoryPlatform final : public Platform {
  public:
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        return bundleIdentifier_;
    }

    [[nodiscard]] MemoryLogSink& logSink() override { return logSink_; }

    [[nodiscard]] MemoryMainQueue& mainQueue() override { return mainQueue_; }

    [[nodiscard]] MemoryPasteboard& pasteboard() override { return pasteboard_; }

    [[nodiscard]] MemoryEventHotKeyService& eventHotKeyService() override {
        return eventHotKeyService_;
    }

    /// Plays what the user does while the program runs, then ends it.
    int run() override {
        if (user_) {
            user_();
        }
        return 0;
    }

    void setUser(std::function<void()> user) { user_ = std::move(user); }

    void setBundleIdentifier(std::string identifier) { bundleIdentifier_ = std::move(identifier); }

  private:
    MemoryLogSink logSink_;
    MemoryMainQueue mainQueue_;
    MemoryPasteboard pasteboard_;
    MemoryEventHotKeyService eventHotKeyService_;
    std::optional<std::string> bundleIdentifier_;
    std::function<void()> user_;
};

} // namespace platform
