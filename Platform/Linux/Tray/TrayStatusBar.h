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
/// where there is none, one on the X server that takes windows (XEmbed).
///
/// Trays come late, go, return, and give one protocol up for the other; the icon moves along and is
/// always in one place. Nothing here waits for the tray, looks twice at what has not changed, or
/// makes a widget before one is needed. Where there is neither bus nor X server, nothing is shown
/// and all else works.
///
/// There is room for one item at a time. One more has no button.
///
/// Needs a QApplication. Main thread only.
class TrayStatusBar final : public StatusBar {
  public:
    /// `makeManagerSelection` watches for trays that embed windows; empty where Qt's windows are
    /// not the X server's.
    explicit TrayStatusBar(TrayManagerSelectionMaker makeManagerSelection);

    /// To be called with each new connection to the session bus, and with one that is not connected
    /// when there is no bus. Until the first call, nothing is shown.
    void setBus(const QDBusConnection& bus);

    /// An item is as wide as the tray makes it, whatever `length` is.
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override;

  private:
    std::optional<QDBusConnection> bus_;
    TrayManagerSelectionMaker makeManagerSelection_;
    foundation::WeakReference<TrayStatusItem> itemInPlace_;
};

} // namespace platform
