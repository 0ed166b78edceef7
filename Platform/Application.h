#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <string_view>

namespace platform {

/// Names the program wherever a system wants a reverse domain name: bundle, bus, log, settings.
inline constexpr std::string_view applicationId = "com.app.pastewise";

/// The running program as the system sees it. Main thread only.
class Application : public foundation::Interface {
  public:
    /// What the desktop can ask of the program besides keys and menus: through a shortcut of its
    /// own, a launcher's action, a second start of the program. Called from the event loop.
    struct Requests {
        std::function<void()> convert;
        std::function<void()> openPreferences;
        /// Registers the shortcut again, which the system refused before.
        std::function<void()> retryShortcut;
    };

    /// Replaces the handlers. Requests that came before the first call are answered by it.
    virtual void setRequests(Requests requests) = 0;

    /// Brings the program's windows to the front, whichever program is active.
    virtual void activateIgnoringOtherApps() = 0;

    /// Asks the event loop to end; the program ends some time after this returns.
    virtual void terminate() = 0;
};

/// The process's standard output. Main thread only.
class StandardOutput : public foundation::Interface {
  public:
    /// Writes the UTF-8 text and a line feed, unbuffered. A text that cannot be written is lost
    /// silently.
    virtual void writeLine(std::string_view text) = 0;
};

} // namespace platform
