#pragma once

#include "Platform/Permissions.h"

#include <cstddef>
#include <optional>

namespace platform {

/// Alerts as message boxes. Closing one, or Escape, is no answer. Needs a QApplication.
class QtAlerts final : public Alerts {
  public:
    std::optional<std::size_t> runModal(const Alert& alert) override;
};

} // namespace platform
