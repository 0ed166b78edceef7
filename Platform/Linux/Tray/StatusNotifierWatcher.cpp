#include "Platform/Linux/Tray/StatusNotifierWatcher.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace platform {

namespace {

const QString watcherName = "org.kde.StatusNotifierWatcher";
const QString watcherPath = "/StatusNotifierWatcher";

/// A call that starts no watcher where there is none.
QDBusMessage call(const QString& interface, const QString& method) {
    auto message = QDBusMessage::createMethodCall(watcherName, watcherPath, interface, method);
    message.setAutoStartService(false);
    return message;
}

} // namespace

StatusNotifierWatcher::StatusNotifierWatcher(QDBusConnection bus,
                                             QString service,
                                             std::function<void()> hostDidChange)
    : bus_(std::move(bus)), service_(std::move(service)), hostDidChange_(std::move(hostDidChange)) {
    // Signals are taken from whoever sends them: to name the sender, the toolkit would have to wait
    // for the bus to say who that is.
    bus_.connect("org.freedesktop.DBus",
                 "/org/freedesktop/DBus",
                 "org.freedesktop.DBus",
                 "NameOwnerChanged",
                 {watcherName},
                 {},
                 this,
                 SLOT(ownerDidChange(QString, QString, QString)));
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_.connect({}, watcherPath, watcherName, signal, this, SLOT(queryHost()));
    }
    bus_.connect({},
                 "/org/freedesktop/DBus/Local",
                 "org.freedesktop.DBus.Local",
                 "Disconnected",
                 this,
                 SLOT(busDidEnd()));
    registerItem();
    queryHost();
}

void StatusNotifierWatcher::ownerDidChange(const QString& /*name*/,
                                           const QString& /*oldOwner*/,
                                           const QString& newOwner) {
    if (newOwner.isEmpty()) {
        ++question_;
        learn(Host::absent);
    } else {
        registerItem();
        queryHost();
    }
}

void StatusNotifierWatcher::queryHost() {
    const int question = ++question_;
    if (!bus_.isConnected()) {
        QMetaObject::invokeMethod(this, &StatusNotifierWatcher::busDidEnd, Qt::QueuedConnection);
        return;
    }
    auto message = call("org.freedesktop.DBus.Properties", "Get");
    message << watcherName << "IsStatusNotifierHostRegistered";
    auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, question] {
        answer->deleteLater();
        if (question == question_) {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            learn(reply.isValid() && reply.value().variant().toBool() ? Host::present
                                                                      : Host::absent);
        }
    });
}

void StatusNotifierWatcher::busDidEnd() {
    ++question_;
    learn(Host::absent);
}

void StatusNotifierWatcher::lookAgain(std::function<void()> done) {
    whenLearnt_ = std::move(done);
    queryHost();
}

void StatusNotifierWatcher::registerItem() {
    auto message = call(watcherName, "RegisterStatusNotifierItem");
    message << service_;
    bus_.asyncCall(message);
}

void StatusNotifierWatcher::learn(Host host) {
    if (std::exchange(host_, host) != host) {
        hostDidChange_();
    }
    if (const auto done = std::exchange(whenLearnt_, nullptr)) {
        done();
    }
}

} // namespace platform
