#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Linux/LinuxInterfaces.h"
#include "Platform/Linux/Tray/DBusMenu.h"
#include "Platform/Linux/Tray/PopupMenu.h"
#include "Platform/Linux/Tray/StatusNotifierItem.h"
#include "Platform/Linux/Tray/TrayHosts.h"
#include "Platform/Linux/Tray/XEmbedIcon.h"
#include "Platform/StatusBar.h"

#include <QDBusConnection>
#include <QRect>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>

namespace platform {

/// A status item in whatever tray there is at the moment; see TrayStatusBar.
class TrayStatusItem final : public StatusItem {
  public:
    explicit TrayStatusItem(TrayManagerSelectionMaker makeManagerSelection);
    ~TrayStatusItem() override;

    /// See TrayStatusBar::setBus.
    void setBus(const QDBusConnection& bus);

    [[nodiscard]] foundation::WeakReference<TrayStatusItem> reference() const {
        return self_.reference();
    }

    [[nodiscard]] std::shared_ptr<StatusBarButton> button() override;
    void setMenu(std::shared_ptr<Menu> menu) override;

  private:
    class Button;

    void showImage();
    void moveToHost();
    void makeWindow();
    void handleClick();
    void leaveMenuToTray();
    [[nodiscard]] QRect iconGeometry() const;

    std::optional<QDBusConnection> bus_;
    QString service_;
    std::shared_ptr<Button> button_;
    std::shared_ptr<Menu> menu_;
    DBusMenu busMenu_;
    StatusNotifierItem busItem_;
    QTimer settling_;
    QTimer trayMenuWait_;
    std::optional<XEmbedIcon> xEmbedIcon_;
    std::optional<PopupMenu> popupMenu_;
    TrayHosts hosts_;
    foundation::WeakReferenceSource<TrayStatusItem> self_{this};
};

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
