#pragma once

#include "Platform/Linux/Tray/StatusNotifierWatcher.h"
#include "Platform/Linux/TrayManagerSelection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace platform {

/// Knows where an icon is shown at the moment: by a tray on the bus where there is one, else by one
/// that takes windows, else nowhere. The latter is looked for only without the former. Main thread
/// only.
class TrayHostMonitor {
  public:
    enum class Kind : std::uint8_t { none, statusNotifier, xEmbed };

    /// `didChange` is called from the event loop. `makeManagerSelection` is empty where windows
    /// cannot be icons.
    TrayHostMonitor(const QDBusConnection& bus,
                    const QString& service,
                    TrayManagerSelectionMaker makeManagerSelection,
                    std::function<void()> didChange);

    [[nodiscard]] Kind kind() const { return kind_; }

    /// Asks the bus once more and calls `done` from the event loop when kind() counts what it
    /// answered.
    void lookAgain(std::function<void()> done) { watcher_.lookAgain(std::move(done)); }

  private:
    void update();

    TrayManagerSelectionMaker makeManagerSelection_;
    std::function<void()> didChange_;
    Kind kind_ = Kind::none;
    std::unique_ptr<TrayManagerSelection> managerSelection_;
    StatusNotifierWatcher watcher_;
};

} // namespace platform
