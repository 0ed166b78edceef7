#pragma once

#include "Foundation/Interface.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

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

} // namespace platform
