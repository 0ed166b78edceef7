#pragma once

#include "Platform/Application.h"
#include "Platform/Linux/Tray/StatusNotifierTypes.h"
#include "Platform/Linux/Tray/TrayImages.h"

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <functional>
#include <memory>

namespace platform {

/// The program's icon as an object on the bus, which a tray shows: org.kde.StatusNotifierItem. Main
/// thread only.
///
/// A tray that follows the protocol opens the menu by itself. Others report clicks. While there is
/// a menu, Activate, the left button's, is refused as unknown: most of these trays then open it.
class StatusNotifierItem final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(QList<platform::IconPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(platform::ToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ isMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menuPath)

  public:
    /// Called from the event loop: `refused` when Activate was refused, `clicked` for other clicks.
    StatusNotifierItem(std::function<void()> clicked, std::function<void()> refused);

    /// Null shows no icon.
    void setImage(std::shared_ptr<const DrawnImage> image);

    /// The object path of the menu; empty for none.
    void setMenuPath(const QString& path) { menuPath_ = path; }

    [[nodiscard]] QString category() const { return "ApplicationStatus"; }

    [[nodiscard]] QString id() const { return QString::fromUtf8(applicationId); }

    [[nodiscard]] QString title() const { return "Pastewise"; }

    [[nodiscard]] QString status() const { return "Active"; }

    [[nodiscard]] int windowId() const { return 0; }

    /// Empty: trays prefer a named icon to pixels.
    [[nodiscard]] QString iconName() const { return {}; }

    /// In each size that trays use, so that none has to scale.
    [[nodiscard]] QList<platform::IconPixmap> iconPixmap() const;
    [[nodiscard]] platform::ToolTip toolTip() const;

    [[nodiscard]] bool isMenu() const { return !menuPath_.isEmpty(); }

    [[nodiscard]] QDBusObjectPath menuPath() const;

    // The names are the interface's own, and `slots` and `signals` are Qt's additions.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
  public Q_SLOTS:

    // Coordinates are ignored: they are in physical pixels, and some trays send none.
    void Activate(int x, int y);

    void SecondaryActivate(int /*x*/, int /*y*/) { report(clicked_); }

    void ContextMenu(int /*x*/, int /*y*/) { report(clicked_); }

    void Scroll(int /*delta*/, const QString& /*orientation*/) {}

  Q_SIGNALS:
    void NewIcon();
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

  private:
    void report(const std::function<void()>& handler);

    std::function<void()> clicked_;
    std::function<void()> refused_;
    std::shared_ptr<const DrawnImage> image_;
    QString menuPath_;
};

} // namespace platform
