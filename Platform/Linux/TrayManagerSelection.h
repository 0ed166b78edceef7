#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <memory>

namespace platform {

/// Watches whether the screen has a tray manager: a program that takes icons as windows (XEmbed)
/// and says so by owning a selection. Main thread only.
class TrayManagerSelection : public foundation::Interface {
  public:
    [[nodiscard]] virtual bool hasOwner() const = 0;
};

/// Starts to watch. `didChange` is called from the event loop whenever the owner has changed, until
/// the watch is dropped, which it may be inside the call. Null where nothing can be watched.
using TrayManagerSelectionMaker =
    std::function<std::unique_ptr<TrayManagerSelection>(std::function<void()> didChange)>;

} // namespace platform
