#include "Platform/Linux/Tray/TrayHosts.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace platform {

namespace {

const QString watcherName = "org.kde.StatusNotifierWatcher";
const QString watcherPath = "/StatusNotifierWatcher";

/// A call that does not start a watcher if there is none.
QDBusMessage
callOfWatcher(const QString& interface, const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(watcherName, watcherPath, interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return message;
}

} // namespace

TrayHosts::TrayHosts(QString service,
                     TrayManagerSelectionMaker makeManagerSelection,
                     std::function<void()> didChange)
    : service_(std::move(service)),
      makeManagerSelection_(std::move(makeManagerSelection)),
      didChange_(std::move(didChange)) {}

void TrayHosts::setBus(const QDBusConnection& bus) {
    bus_ = bus;
    if (!bus.isConnected()) {
        ++queryCount_;
        setHasHost(false);
        return;
    }
    // Signals are accepted from any sender: given a name, Qt would wait for the bus to resolve it.
    bus_->connect("org.freedesktop.DBus",
                  "/org/freedesktop/DBus",
                  "org.freedesktop.DBus",
                  "NameOwnerChanged",
                  {watcherName},
                  {},
                  this,
                  SLOT(handleNewWatcher(QString, QString, QString)));
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_->connect({}, watcherPath, watcherName, signal, this, SLOT(queryHost()));
    }
    registerItem();
    queryHost();
}

void TrayHosts::handleNewWatcher(const QString& /*name*/,
                                 const QString& /*oldOwner*/,
                                 const QString& newOwner) {
    if (newOwner.isEmpty()) {
        ++queryCount_;
        setHasHost(false);
    } else {
        registerItem();
        queryHost();
    }
}

void TrayHosts::queryHost() {
    const int query = ++queryCount_;
    const auto handle = [this, query](bool hasHost) {
        if (query == queryCount_) {
            setHasHost(hasHost);
        }
    };
    if (!bus_ || !bus_->isConnected()) {
        QMetaObject::invokeMethod(
            this, [handle] { handle(false); }, Qt::QueuedConnection);
        return;
    }
    const auto message = callOfWatcher(
        "org.freedesktop.DBus.Properties", "Get", {watcherName, "IsStatusNotifierHostRegistered"});
    auto* const answer = new QDBusPendingCallWatcher(bus_->asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, handle] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        handle(reply.isValid() && reply.value().variant().toBool());
    });
}

void TrayHosts::lookAgain(std::function<void()> done) {
    didLookAgain_ = std::move(done);
    queryHost();
}

void TrayHosts::registerItem() {
    bus_->asyncCall(callOfWatcher(watcherName, "RegisterStatusNotifierItem", {service_}));
}

void TrayHosts::setHasHost(bool hasHost) {
    if (std::exchange(hasHost_, hasHost) != hasHost) {
        update();
    }
    if (const auto done = std::exchange(didLookAgain_, nullptr)) {
        done();
    }
}

void TrayHosts::update() {
    Kind kind = Kind::none;
    if (hasHost_ == true) {
        managerSelection_.reset();
        kind = Kind::statusNotifier;
    } else {
        if (!managerSelection_ && makeManagerSelection_) {
            managerSelection_ = makeManagerSelection_([this] { update(); });
        }
        if (managerSelection_ && managerSelection_->hasOwner()) {
            kind = Kind::xEmbed;
        }
    }
    if (std::exchange(kind_, kind) != kind) {
        didChange_();
    }
}

} // namespace platform
