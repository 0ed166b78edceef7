#include "Platform/Linux/Tray/DBusMenu.h"

#include "Platform/Linux/Tray/MenuRows.h"

#include <QDBusError>
#include <QGuiApplication>
#include <utility>

namespace platform {

namespace {

/// A single underscore in a label marks the mnemonic; titles have none.
QString label(const MenuItem& item) {
    return QString::fromStdString(item.title()).replace('_', "__");
}

/// Without those that have their default value.
QVariantMap properties(const MenuItem& item) {
    if (item.isSeparator()) {
        return {{"type", "separator"}};
    }
    QVariantMap all{{"label", label(item)}, {"enabled", item.isEnabled()}, {"visible", true}};
    if (item.keyEquivalent()) {
        all.insert("shortcut",
                   QVariant::fromValue(QList<QStringList>{busNames(*item.keyEquivalent())}));
    }
    return all;
}

} // namespace

DBusMenu::DBusMenu(std::function<void()> trayWillOpen) : trayWillOpen_(std::move(trayWillOpen)) {
    registerStatusNotifierTypes();
}

void DBusMenu::setMenu(std::shared_ptr<Menu> menu) {
    titleObservers_.reset();
    menu_ = std::move(menu);
    if (menu_) {
        titleObservers_.emplace(*menu_, [this](std::size_t index) {
            ++titleChanges_;
            Q_EMIT ItemsPropertiesUpdated(
                {{static_cast<int>(index) + 1, {{"label", label(*menu_->items()[index])}}}}, {});
        });
    }
    Q_EMIT LayoutUpdated(++revision_, 0);
}

QString DBusMenu::textDirection() const {
    return QGuiApplication::isRightToLeft() ? "rtl" : "ltr";
}

uint DBusMenu::GetLayout(int parentId,
                         int recursionDepth,
                         const QStringList& propertyNames,
                         MenuLayout& layout) {
    if (!exists(parentId)) {
        refuse(parentId);
        return revision_;
    }
    layout = {parentId, properties(parentId, propertyNames), {}};
    if (parentId == 0 && recursionDepth != 0 && menu_) {
        const int count = static_cast<int>(menu_->items().size());
        for (int id = 1; id <= count; ++id) {
            layout.children.append(
                QVariant::fromValue(MenuLayout{id, properties(id, propertyNames), {}}));
        }
    }
    return revision_;
}

QList<MenuRow> DBusMenu::GetGroupProperties(const QList<int>& ids,
                                            const QStringList& propertyNames) {
    QList<MenuRow> rows;
    const int count = menu_ ? static_cast<int>(menu_->items().size()) : 0;
    for (int id = 0; id <= count; ++id) {
        if (ids.isEmpty() || ids.contains(id)) {
            rows.append({id, properties(id, propertyNames)});
        }
    }
    return rows;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString& name) {
    const QVariant value = exists(id) ? properties(id, {name}).value(name) : QVariant();
    if (!value.isValid()) {
        refuse(id);
    }
    return QDBusVariant(value);
}

void DBusMenu::Event(int id,
                     const QString& eventId,
                     const QDBusVariant& /*data*/,
                     uint /*timestamp*/) {
    if (!exists(id)) {
        refuse(id);
        return;
    }
    handle(id, eventId);
}

QList<int> DBusMenu::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        if (exists(event.id)) {
            handle(event.id, event.name);
        } else {
            unknown.append(event.id);
        }
    }
    return unknown;
}

bool DBusMenu::AboutToShow(int id) {
    if (!exists(id)) {
        refuse(id);
        return false;
    }
    return id == 0 && willOpen();
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    QList<int> updated;
    for (const int id : ids) {
        if (!exists(id)) {
            idErrors.append(id);
        } else if (id == 0 && willOpen()) {
            updated.append(id);
        }
    }
    return updated;
}

std::shared_ptr<const MenuItem> DBusMenu::row(int id) const {
    if (!menu_ || id < 1 || std::cmp_greater(id, menu_->items().size())) {
        return nullptr;
    }
    return menu_->items()[static_cast<std::size_t>(id) - 1];
}

QVariantMap DBusMenu::properties(int id, const QStringList& names) const {
    const auto item = row(id);
    QVariantMap all =
        item ? platform::properties(*item) : QVariantMap{{"children-display", "submenu"}};
    if (!names.isEmpty()) {
        all.removeIf([&names](const auto& property) { return !names.contains(property.key()); });
    }
    return all;
}

void DBusMenu::refuse(int id) const {
    if (calledFromDBus()) {
        sendErrorReply(QDBusError::InvalidArgs,
                       QString("The menu does not have that row or property: %1").arg(id));
    }
}

/// Returns whether titles have changed that the caller may already have read.
bool DBusMenu::willOpen() {
    isAnnounced_ = true;
    trayWillOpen_();
    const uint before = titleChanges_;
    if (const auto menu = menu_) {
        menu->willOpen();
    }
    return titleChanges_ != before;
}

void DBusMenu::handle(int id, const QString& eventName) {
    if (id == 0 && eventName == "opened" && !std::exchange(isAnnounced_, false)) {
        static_cast<void>(willOpen());
        isAnnounced_ = false;
    } else if (id == 0 && eventName == "closed") {
        isAnnounced_ = false;
    } else if (const auto item = row(id); item && eventName == "clicked") {
        QMetaObject::invokeMethod(
            this, [item] { item->perform(); }, Qt::QueuedConnection);
    }
}

} // namespace platform
