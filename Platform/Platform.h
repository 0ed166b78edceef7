#pragma once

#include "Foundation/LogSink.h"
#include "HotKey/EventHotKeyService.h"
#include "Platform/MainQueue.h"
#include "Platform/Pasteboard.h"

#include <optional>
#include <string>

namespace platform {

/// Everything that the program needs of a system, in one bundle. Made once, before anything else,
/// and outlives all that was handed a service of it. Only the entry and the application delegate
/// see it; every other class is given just the services it uses. Main thread only.
class Platform {
  public:
    Platform() = default;
    virtual ~Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    Platform(Platform&&) = delete;
    Platform& operator=(Platform&&) = delete;

    /// The identifier of the bundle that the program runs from; none where there are no bundles.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;

    [[nodiscard]] virtual foundation::LogSink& logSink() = 0;
    [[nodiscard]] virtual MainQueue& mainQueue() = 0;
    [[nodiscard]] virtual Pasteboard& pasteboard() = 0;
    [[nodiscard]] virtual hotkey::EventHotKeyService& eventHotKeyService() = 0;

    /// Runs the event loop until the program is asked to end, then leaves the system as it should
    /// be found. Returns the exit code of the program.
    virtual int run() = 0;
};

} // namespace platform
