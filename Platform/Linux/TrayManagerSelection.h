#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <memory>

namespace platform {

/// Watches whether the screen has a tray manager: a program that embeds icons as windows (XEmbed)
/// and owns a selection to announce it. Main thread only.
class TrayManagerSelection : public foundation::Interface {
  public:
    [[nodiscard]] virtual bool hasOwner() const = 0;
};

/// Starts to watch. Calls `didChange` from the event loop whenever the owner has changed, until the
/// result is destroyed, which may happen inside the call. Null if watching is not possible.
using TrayManagerSelectionMaker =
    std::function<std::unique_ptr<TrayManagerSelection>(std::function<void()> didChange)>;

} // namespace platform
