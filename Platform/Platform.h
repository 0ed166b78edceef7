#pragma once

#include "Foundation/Interface.h"
#include "Foundation/LogSink.h"
#include "HotKey/EventHotKeyService.h"
#include "Platform/Application.h"
#include "Platform/Images.h"
#include "Platform/KeyDownMonitors.h"
#include "Platform/MainQueue.h"
#include "Platform/Pasteboard.h"
#include "Platform/Permissions.h"
#include "Platform/StatusBar.h"
#include "Platform/Time.h"
#include "Platform/UserDefaults.h"
#include "Platform/Views.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace platform {

/// Every service that the program needs from a system. Made once, before anything else, and
/// outlives everything that uses a service of it. Only the entry and the application delegate see
/// it; every other class is given just the services it uses. Main thread only.
class Platform : public foundation::Interface {
  public:
    /// The identifier of the bundle that the program runs from; none without a bundle.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier() const = 0;

    [[nodiscard]] virtual foundation::LogSink& logSink() = 0;
    [[nodiscard]] virtual MainQueue& mainQueue() = 0;
    [[nodiscard]] virtual Pasteboard& pasteboard() = 0;
    [[nodiscard]] virtual hotkey::EventHotKeyService& eventHotKeyService() = 0;
    [[nodiscard]] virtual Clock& clock() = 0;
    [[nodiscard]] virtual Calendar& calendar() = 0;
    [[nodiscard]] virtual UserDefaults& userDefaults() = 0;
    [[nodiscard]] virtual StandardOutput& standardOutput() = 0;
    [[nodiscard]] virtual AccessibilityTrust& accessibilityTrust() = 0;
    [[nodiscard]] virtual Alerts& alerts() = 0;
    [[nodiscard]] virtual Workspace& workspace() = 0;
    [[nodiscard]] virtual Application& application() = 0;
    [[nodiscard]] virtual Images& images() = 0;
    [[nodiscard]] virtual StatusBar& statusBar() = 0;
    [[nodiscard]] virtual Toolkit& toolkit() = 0;
    [[nodiscard]] virtual KeyDownMonitors& keyDownMonitors() = 0;

    /// Runs the event loop until the program is asked to end, then cleans up. Calls
    /// `didFinishLaunching` once, as soon as the program can show windows and alerts. Returns the
    /// program's exit code.
    virtual int run(const std::function<void()>& didFinishLaunching) = 0;
};

/// The program is already running and has been notified of this start: there is nothing to do.
struct AlreadyRunning {};

/// Why there is no platform, in one line for the user.
struct NoPlatform {
    std::string reason;
};

/// The program was started with an argument that the system's toolkit does not know either.
struct UnknownArgument {
    std::string argument;
};

using PlatformOrNot =
    std::variant<std::unique_ptr<Platform>, AlreadyRunning, NoPlatform, UnknownArgument>;

/// Makes the platform of the system that the program was built for. Called once, before anything
/// else; `argc` and `argv` are main's and outlive the platform.
[[nodiscard]] PlatformOrNot makePlatform(int& argc, char** argv);

} // namespace platform
