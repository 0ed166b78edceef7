#include "Platform/Linux/DBus/DBusApplication.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <utility>

namespace platform {

namespace {

const QString applicationName = QString::fromUtf8(applicationId);
const QString objectPath = '/' + QString(applicationName).replace('.', '/');
const QString applicationInterface = "org.freedesktop.Application";
const QString busName = "org.freedesktop.DBus";

/// Calls `done` with the reply or an error from the event loop, unless `context` is gone by then.
void call(const QDBusConnection& bus,
          QObject* context,
          const QString& service,
          const QString& path,
          const QString& interface,
          const QString& method,
          const QVariantList& arguments,
          std::function<void(const QDBusMessage&)> done) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), context);
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, done = std::move(done)] {
            watcher->deleteLater();
            done(watcher->reply());
        });
}

void callBus(const QDBusConnection& bus,
             QObject* context,
             const QString& method,
             const QVariantList& arguments,
             std::function<void(const QDBusMessage&)> done) {
    call(bus,
         context,
         busName,
         "/org/freedesktop/DBus",
         busName,
         method,
         arguments,
         std::move(done));
}

} // namespace

DBusApplication::DBusApplication(std::function<void()> bringToFront,
                                 std::function<QString(bool)> setStartsAtLogin)
    : bringToFront_(std::move(bringToFront)), setStartsAtLogin_(std::move(setStartsAtLogin)) {}

void DBusApplication::joinBus(QDBusConnection bus) {
    // The object comes before the name: whoever sees the name can call it.
    bus.registerObject(objectPath, this, QDBusConnection::ExportAllSlots);
    constexpr uint noFlags = 0;
    callBus(bus, this, "RequestName", {applicationName, noFlags}, [this, bus](const auto& reply) {
        constexpr uint inQueue = 2;
        if (reply.arguments().value(0).toUInt() == inQueue) {
            askOtherInstance(bus, this, [](bool hasReplied) {
                if (hasReplied) {
                    QCoreApplication::quit();
                }
            });
        }
    });
}

void DBusApplication::askOtherInstance(const QDBusConnection& bus,
                                       QObject* context,
                                       const std::function<void(bool)>& done) {
    // The owner's unique name: the well-known one may become ours before the call arrives.
    callBus(bus, context, "GetNameOwner", {applicationName}, [=](const QDBusMessage& reply) {
        const QString owner = reply.arguments().value(0).toString();
        if (reply.type() != QDBusMessage::ReplyMessage || owner == bus.baseService()) {
            done(false);
            return;
        }
        call(bus,
             context,
             owner,
             objectPath,
             applicationInterface,
             "ActivateAction",
             {"preferences", QVariantList(), QVariantMap()},
             [done](const QDBusMessage& answer) {
                 done(answer.type() == QDBusMessage::ReplyMessage);
             });
    });
}

void DBusApplication::setRequests(Requests requests) {
    requests_ = std::move(requests);
    for (const Request request : std::exchange(earlyRequests_, {})) {
        carryOutLater(request);
    }
}

void DBusApplication::terminate() {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
}

void DBusApplication::Activate(const QVariantMap& /*platformData*/) {
    carryOutLater(&Requests::openPreferences);
}

void DBusApplication::Open(const QStringList& /*uris*/, const QVariantMap& /*platformData*/) {
    carryOutLater(&Requests::openPreferences);
}

void DBusApplication::ActivateAction(const QString& name,
                                     const QVariantList& /*parameter*/,
                                     const QVariantMap& /*platformData*/) {
    if (name == "convert") {
        carryOutLater(&Requests::convert);
    } else if (name == "preferences") {
        carryOutLater(&Requests::openPreferences);
    } else if (name == "quit") {
        terminate();
    } else if (name == "start-at-login" || name == "no-start-at-login") {
        const QString reason = setStartsAtLogin_(name == "start-at-login");
        if (!reason.isEmpty()) {
            sendErrorReply(QDBusError::Failed, reason);
        }
    } else {
        sendErrorReply(QDBusError::InvalidArgs, "There is no such action");
    }
}

void DBusApplication::carryOutLater(Request request) {
    if (!requests_) {
        earlyRequests_.push_back(request);
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this, request] {
            if (const auto carryOut = (*requests_).*request) {
                carryOut();
            }
        },
        Qt::QueuedConnection);
}

} // namespace platform
