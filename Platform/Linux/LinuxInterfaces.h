#pragma once

#include "Foundation/Interface.h"
#include "HotKey/KeyCombo.h"

#include <functional>
#include <memory>

namespace platform {

/// Watches a file descriptor for as long as it exists.
class FileDescriptorWatch : public foundation::Interface {};

/// The main thread's event loop, for code that does not use the toolkit that runs it. Main thread
/// only.
class EventLoop : public foundation::Interface {
  public:
    /// Calls `ready` from the loop whenever `descriptor` is readable, until the watch is destroyed,
    /// which may happen inside the callback. The caller keeps the descriptor open for longer.
    [[nodiscard]] virtual std::unique_ptr<FileDescriptorWatch>
    watchReadable(int descriptor, std::function<void()> ready) = 0;
};

/// What a hot-key service reports besides the status of a call.
struct RefusalHandlers {
    /// Called from within registerEventHotKey() if another program has the combination.
    std::function<void(const hotkey::KeyCombo&)> didRefuse;
    /// Called from the event loop if the combination that was refused last is free when its
    /// modifiers are pressed or the keyboard changes. A later registration or unregistration, even
    /// if it fails, ends the wait.
    std::function<void()> didBecomeFree;
};

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
