#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Linux/TrayManagerSelection.h"
#include "Platform/StatusBar.h"

#include <QDBusConnection>
#include <memory>
#include <optional>

namespace platform {

class TrayStatusItem;

/// The tray of a Linux desktop: a program on the session bus that shows status notifier items or,
/// if there is none, one on the X server that embeds windows (XEmbed).
///
/// Trays start late, quit, come back, and replace one protocol by the other; the icon follows and
/// is always in one place only. Nothing here waits for the tray, and no widget is made before it is
/// needed. With neither bus nor X server nothing is shown.
///
/// Has one item at a time. Needs a QApplication. Main thread only.
class TrayStatusBar final : public StatusBar {
  public:
    /// `makeManagerSelection` watches for trays that embed windows; empty where Qt's windows are
    /// not the X server's.
    explicit TrayStatusBar(TrayManagerSelectionMaker makeManagerSelection);

    /// To be called with each new connection to the session bus, and with one that is not connected
    /// when there is no bus. Until the first call, nothing is shown.
    void setBus(const QDBusConnection& bus);

    /// The tray decides on the width of the item; `length` is ignored.
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override;

  private:
    std::optional<QDBusConnection> bus_;
    TrayManagerSelectionMaker makeManagerSelection_;
    foundation::WeakReference<TrayStatusItem> item_;
};

} // namespace platform
