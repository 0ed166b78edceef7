#pragma once

#include "Foundation/Interface.h"

#include <string>

namespace platform {

/// The desktop around the program. Main thread only.
class Workspace : public foundation::Interface {
  public:
    /// Asks the system to open the URL with whatever program is meant for it. False when the text
    /// is no URL or the system refuses.
    virtual bool openURL(const std::string& url) = 0;
};

} // namespace platform
