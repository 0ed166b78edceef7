#pragma once

#include "Foundation/Interface.h"

#include <string_view>

namespace platform {

/// The process's standard output. Main thread only.
class StandardOutput : public foundation::Interface {
  public:
    /// Writes the UTF-8 text and a line feed, through to whoever reads before it returns. A text
    /// that cannot be written is lost silently.
    virtual void writeLine(std::string_view text) = 0;
};

} // namespace platform
