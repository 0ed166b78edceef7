#pragma once

#include "Platform/Permissions.h"

#include <string>

namespace platform {

/// Opens URLs with what the desktop has set up for them. Takes only a URL with a scheme: anything
/// else could be read as the name of a file.
class QtWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override;
};

} // namespace platform
