#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Linux/TrayManagerSelection.h"
#include "Platform/StatusBar.h"

#include <QDBusConnection>
#include <memory>

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
    /// `bus` is the session bus, connected or not. `makeManagerSelection` watches for trays that
    /// take windows; empty where the toolkit's windows are not the X server's.
    TrayStatusBar(QDBusConnection bus, TrayManagerSelectionMaker makeManagerSelection);

    /// An item is as wide as the tray makes it, whatever `length` is.
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override;

  private:
    QDBusConnection bus_;
    TrayManagerSelectionMaker makeManagerSelection_;
    foundation::WeakReference<TrayStatusItem> itemInPlace_;
};

} // namespace platform
