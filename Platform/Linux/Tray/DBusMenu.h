#pragma once

#include "Platform/Linux/Tray/MenuRows.h"
#include "Platform/Linux/Tray/StatusNotifierTypes.h"
#include "Platform/Menu.h"

#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// A menu as an object on the bus, which the tray shows: com.canonical.dbusmenu. The menu itself
/// has the id 0 and its rows count from 1. Main thread only.
///
/// A tray announces that it will show the menu by either of two calls or by both; the menu's
/// willOpen() is called once each time. The actions of rows run from the event loop, after the call
/// that chose them has been answered.
class DBusMenu final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

  public:
    /// `trayWillOpen` is called when a tray is about to show the menu.
    explicit DBusMenu(std::function<void()> trayWillOpen = [] {});

    /// Null means an empty menu.
    void setMenu(std::shared_ptr<Menu> menu);

    [[nodiscard]] uint version() const { return 3; }

    [[nodiscard]] QString textDirection() const;

    [[nodiscard]] QString status() const { return "normal"; }

    [[nodiscard]] QStringList iconThemePath() const { return {}; }

    // The names are the interface's own, and `slots` and `signals` are Qt's additions.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
  public Q_SLOTS:
    uint GetLayout(int parentId,
                   int recursionDepth,
                   const QStringList& propertyNames,
                   platform::MenuLayout& layout);
    QList<platform::MenuRow> GetGroupProperties(const QList<int>& ids,
                                                const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<platform::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

  Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<platform::MenuRow>& updatedProps,
                                const QList<platform::MenuRowRemovals>& removedProps);
    void LayoutUpdated(uint revision, int parent);
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

  private:
    [[nodiscard]] std::shared_ptr<const MenuItem> row(int id) const;

    [[nodiscard]] bool exists(int id) const { return id == 0 || row(id) != nullptr; }

    [[nodiscard]] QVariantMap properties(int id, const QStringList& names) const;
    void refuse(int id) const;
    [[nodiscard]] bool willOpen();
    void handle(int id, const QString& eventName);

    std::function<void()> trayWillOpen_;
    std::shared_ptr<Menu> menu_;
    std::optional<TitleObservers> titleObservers_;
    uint revision_ = 1;
    uint titleChanges_ = 0;
    /// Set from AboutToShow until the tray reports the menu as opened or closed.
    bool isAnnounced_ = false;
};

} // namespace platform
