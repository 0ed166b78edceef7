#pragma once

#include "Foundation/Interface.h"
#include "Foundation/Value.h"
#include "HotKey/CarbonEvents.h"

#include <optional>
#include <vector>

namespace hotkey {

/// The system's list of its own keyboard shortcuts. Main thread only.
class SymbolicHotKeys : public foundation::Interface {
  public:
    struct Answer {
        OSStatus status = noErr;
        /// One dictionary per shortcut, with the system's keys and values; none for a null array.
        std::optional<std::vector<foundation::Dictionary>> hotKeys;
    };

    [[nodiscard]] virtual Answer copySymbolicHotKeys() = 0;
};

} // namespace hotkey
