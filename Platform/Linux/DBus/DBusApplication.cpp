#include "Platform/Linux/DBus/DBusApplication.h"

#include "Platform/Linux/SessionBus.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QMetaObject>
#include <QVariant>
#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Claim = DBusApplication::Claim;
using SecondStart = DBusApplication::SecondStart;

/// For a bus that answers at all, both are far more than it needs.
constexpr auto patienceWithBus = 1000ms;
constexpr auto patienceWithFirstInstance = 2000ms;

const QString& applicationName() {
    static const QString name = QStringLiteral("com.app.pastewise");
    return name;
}

const QString& objectPath() {
    static const QString path = QStringLiteral("/com/app/pastewise");
    return path;
}

enum class Ownership : std::uint8_t { ours, another, unknown };

Ownership requestName(const QDBusConnection& connection) {
    // Neither waiting for the name nor giving it away to whoever wants it.
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    constexpr uint exists = 3;
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                       QStringLiteral("/org/freedesktop/DBus"),
                                                       QStringLiteral("org.freedesktop.DBus"),
                                                       QStringLiteral("RequestName"));
    call << applicationName() << doNotQueue;
    const QDBusMessage reply =
        connection.call(call, QDBus::Block, static_cast<int>(patienceWithBus.count()));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return Ownership::unknown;
    }
    const uint answer = reply.arguments().constFirst().toUInt();
    return answer == primaryOwner ? Ownership::ours
           : answer == exists     ? Ownership::another
                                  : Ownership::unknown;
}

/// Returns false when the other process has not done what it is asked for: it may have gone.
bool askOwnerForPreferences(const QDBusConnection& connection, milliseconds limit) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(applicationName(),
                                       objectPath(),
                                       QStringLiteral("org.freedesktop.Application"),
                                       QStringLiteral("ActivateAction"));
    call << QStringLiteral("preferences") << QVariantList() << QVariantMap();
    call.setAutoStartService(false);
    const QDBusMessage reply = connection.call(call, QDBus::Block, static_cast<int>(limit.count()));
    return reply.type() == QDBusMessage::ReplyMessage;
}

Claim claimName(const QDBusConnection& connection, SecondStart secondStart) {
    // A process that is about to end keeps its name for a while and answers no more. Once it has
    // gone, the name may be another new start's, which is asked as well.
    constexpr int askedOwnerCount = 3;
    const auto deadline = steady_clock::now() + patienceWithFirstInstance;
    for (int askedCount = 0;; ++askedCount) {
        switch (requestName(connection)) {
        case Ownership::ours:
            return Claim::first;
        case Ownership::unknown:
            return Claim::noBus;
        case Ownership::another:
            break;
        }
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (secondStart == SecondStart::endsQuietly || askedCount == askedOwnerCount ||
            left <= 0ms || askOwnerForPreferences(connection, left)) {
            return Claim::alreadyRunning;
        }
    }
}

} // namespace

DBusApplication::DBusApplication(std::function<void()> bringToFront)
    : bringToFront_(std::move(bringToFront)),
      connectionName_(applicationName() +
                      QString::number(reinterpret_cast<quintptr>(this))), // NOLINT: a number
      object_([this](DBusRequest request) { handle(request); }) {}

DBusApplication::~DBusApplication() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

DBusApplication::Claim DBusApplication::claim(SecondStart secondStart) {
    const auto address = findSessionBus(patienceWithBus);
    if (!address) {
        return Claim::noBus;
    }
    QDBusConnection connection =
        QDBusConnection::connectToBus(QString::fromStdString(*address), connectionName_);
    if (!connection.isConnected()) {
        return Claim::noBus;
    }
    // The object is there before the name, so that nobody who sees the name calls in vain.
    connection.registerVirtualObject(objectPath(), &object_);
    return claimName(connection, secondStart);
}

void DBusApplication::setRequests(Requests requests) {
    requests_ = std::move(requests);
    for (const DBusRequest request : std::exchange(earlyRequests_, {})) {
        QMetaObject::invokeMethod(
            &object_, [this, request] { perform(request); }, Qt::QueuedConnection);
    }
}

void DBusApplication::terminate() {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
}

void DBusApplication::handle(DBusRequest request) {
    if (requests_) {
        perform(request);
    } else {
        earlyRequests_.push_back(request);
    }
}

void DBusApplication::perform(DBusRequest request) const {
    const std::function<void()> answer =
        request == DBusRequest::convert ? requests_->convert : requests_->openPreferences;
    if (answer) {
        answer();
    }
}

} // namespace platform
