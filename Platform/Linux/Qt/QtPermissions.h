#pragma once

#include "Platform/Permissions.h"

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

/// Alerts as message boxes. The program asks for a permission only where it is not trusted, which
/// no Linux desktop knows, so it shows none here. Needs a QApplication.
class QtAlerts final : public Alerts {
  public:
    std::optional<std::size_t> runModal(const Alert& alert) override;
};

/// Opens URLs with the desktop's handlers. A URL without a scheme is refused: the handlers would
/// take it for the name of a file.
class QtWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override;
};

} // namespace platform
