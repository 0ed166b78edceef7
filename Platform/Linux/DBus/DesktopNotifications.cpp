#include "Platform/Linux/DBus/DesktopNotifications.h"

#include "Platform/Application.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace platform {

namespace {

const QString serviceName = "org.freedesktop.Notifications";
const QString servicePath = "/org/freedesktop/Notifications";
/// The action of a click on the notification itself.
const QString defaultAction = "default";

} // namespace

void DesktopNotifications::setBus(const QDBusConnection& bus) {
    bus_ = bus;
    actions_.clear();
    ++changeCount_;
    if (!bus_.isConnected()) {
        return;
    }
    bus_.connect("org.freedesktop.DBus",
                 "/org/freedesktop/DBus",
                 "org.freedesktop.DBus",
                 "NameOwnerChanged",
                 {serviceName},
                 {},
                 this,
                 SLOT(handleNewService(QString, QString, QString)));
    // Signals are accepted from any sender: given a name, Qt would wait for the bus to resolve it.
    bus_.connect(
        {}, servicePath, serviceName, "ActionInvoked", this, SLOT(handleAction(uint, QString)));
    sendWaiting();
}

void DesktopNotifications::show(DesktopNotification notification) {
    waiting_.push_back(std::move(notification));
    sendWaiting();
}

void DesktopNotifications::handleNewService(const QString& /*name*/,
                                            const QString& /*oldOwner*/,
                                            const QString& newOwner) {
    actions_.clear();
    ++changeCount_;
    if (!newOwner.isEmpty()) {
        sendWaiting();
    }
}

void DesktopNotifications::handleAction(uint id, const QString& action) {
    const auto found = actions_.find(id);
    if (found != actions_.end() && action == defaultAction) {
        found->second();
    }
}

void DesktopNotifications::sendWaiting() {
    if (bus_.isConnected()) {
        for (const auto& notification : std::exchange(waiting_, {})) {
            send(notification);
        }
    }
}

void DesktopNotifications::send(const DesktopNotification& notification) {
    constexpr uint replacesNone = 0;
    constexpr int defaultTimeout = -1;
    auto message = QDBusMessage::createMethodCall(serviceName, servicePath, serviceName, "Notify");
    message.setArguments(
        {"Pastewise",
         replacesNone,
         QString(), // no icon
         QString::fromStdString(notification.title),
         QString::fromStdString(notification.body),
         QStringList{defaultAction, QString::fromStdString(notification.actionTitle)},
         QVariantMap{{"desktop-entry", QString::fromUtf8(applicationId)}},
         defaultTimeout});
    auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    const auto handleReply = [this, watcher, notification, changeCount = changeCount_] {
        watcher->deleteLater();
        if (!watcher->isError()) {
            actions_[watcher->reply().arguments().value(0).toUInt()] = notification.action;
            return;
        }
        waiting_.push_back(notification);
        if (changeCount != changeCount_) {
            sendWaiting();
        }
    };
    connect(watcher, &QDBusPendingCallWatcher::finished, this, handleReply);
}

} // namespace platform
