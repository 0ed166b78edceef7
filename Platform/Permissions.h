#pragma once

#include "Foundation/Interface.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Whether the user lets this program control the computer through the system's accessibility
/// service. A system without such permissions trusts every program. Main thread only.
class AccessibilityTrust : public foundation::Interface {
  public:
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    /// The same; without trust the system also tells the user how to grant it. Does not wait for
    /// the user.
    virtual bool isProcessTrustedWithPrompt() = 0;
};

enum class AlertStyle : std::uint8_t { warning, informational, critical };

/// A modal question. Texts are UTF-8.
struct Alert {
    std::string messageText;
    std::string informativeText;
    AlertStyle style = AlertStyle::warning;
    /// The first one is the default.
    std::vector<std::string> buttonTitles;
};

/// Shows alerts. Main thread only.
class Alerts : public foundation::Interface {
  public:
    /// Shows the alert and runs the event loop until the user has answered. The index of the chosen
    /// button; none if the alert was closed without one.
    virtual std::optional<std::size_t> runModal(const Alert& alert) = 0;
};

/// The desktop around the program. Main thread only.
class Workspace : public foundation::Interface {
  public:
    /// Asks the system to open the URL with the program registered for it. False if the text is not
    /// a URL or the system refuses.
    virtual bool openURL(const std::string& url) = 0;
};

} // namespace platform
