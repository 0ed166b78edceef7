#pragma once

#include "Foundation/Interface.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Whether the user lets this program control the computer through the system's accessibility
/// service. A system without such a service trusts every program. Main thread only.
class AccessibilityTrust : public foundation::Interface {
  public:
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    /// The same question, and the system explains to the user how to grant trust where
    /// there is none. Does not wait for the user.
    virtual bool isProcessTrustedWithPrompt() = 0;
};

enum class AlertStyle : std::uint8_t { warning, informational, critical };

/// A question that stops the program until it is answered. Texts are UTF-8.
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
    /// button; none when the alert went away without one.
    virtual std::optional<std::size_t> runModal(const Alert& alert) = 0;
};

/// The desktop around the program. Main thread only.
class Workspace : public foundation::Interface {
  public:
    /// Asks the system to open the URL with whatever program is meant for it. False when the text
    /// is no URL or the system refuses.
    virtual bool openURL(const std::string& url) = 0;
};

} // namespace platform
