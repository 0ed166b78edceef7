#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Linux/Tray/DBusMenu.h"
#include "Platform/Linux/Tray/PopupMenu.h"
#include "Platform/Linux/Tray/StatusNotifierItem.h"
#include "Platform/Linux/Tray/TrayHosts.h"
#include "Platform/Linux/Tray/XEmbedIcon.h"
#include "Platform/Linux/TrayManagerSelection.h"
#include "Platform/StatusBar.h"

#include <QDBusConnection>
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

    std::optional<QDBusConnection> bus_;
    QString service_;
    std::shared_ptr<Button> button_;
    std::shared_ptr<Menu> menu_;
    DBusMenu busMenu_;
    StatusNotifierItem busItem_;
    QTimer settling_;
    std::optional<XEmbedIcon> xEmbedIcon_;
    std::optional<PopupMenu> popupMenu_;
    TrayHosts hosts_;
    foundation::WeakReferenceSource<TrayStatusItem> self_{this};
};

} // namespace platform
