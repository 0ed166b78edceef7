#include "Platform/Linux/DBus/SessionBus.h"

#include <QByteArray>
#include <QThread>
#include <QUrl>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;

constexpr auto shortestRetryDelay = 1s;
constexpr auto longestRetryDelay = 5s;
const char* const noBus = "disabled:";

QString uniqueConnectionName() {
    static int count = 0;
    return QString("session-bus-%1").arg(++count);
}

} // namespace

std::string SessionBus::addressFromEnvironment() {
    QByteArrayList entries = qgetenv("DBUS_SESSION_BUS_ADDRESS").split(';');
    entries.removeIf(
        [](const auto& entry) { return entry.isEmpty() || entry.startsWith("autolaunch:"); });
    if (!entries.isEmpty()) {
        return entries.join(';').toStdString();
    }
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!folder.startsWith('/')) {
        return noBus;
    }
    return "unix:path=" + QUrl::toPercentEncoding(folder + "/bus", "/", "~").toStdString();
}

SessionBus::SessionBus(const std::string& address,
                       std::function<void(const QDBusConnection&)> didChange)
    : address_(QString::fromStdString(address)),
      connectionName_(uniqueConnectionName()),
      didChange_(std::move(didChange)),
      retryDelay_(shortestRetryDelay) {
    retryTimer_.setSingleShot(true);
    connect(&retryTimer_, &QTimer::timeout, this, &SessionBus::tryToConnect);
    tryToConnect();
}

SessionBus::~SessionBus() {
    if (attempt_ == nullptr) {
        QDBusConnection::disconnectFromBus(connectionName_);
        return;
    }
    // The attempt ends only when the bus answers or after libdbus's time limit of 25 s. Qt waits
    // for it in a static destructor, before which this handler runs.
    static_cast<void>(on_exit([](int status, void* /*argument*/) { _Exit(status); }, nullptr));
}

void SessionBus::tryToConnect() {
    attempt_ = QThread::create([address = address_, name = connectionName_] {
        QDBusConnection::connectToBus(address, name);
    });
    connect(attempt_, &QThread::finished, this, &SessionBus::finishAttempt);
    connect(attempt_, &QThread::finished, attempt_, &QObject::deleteLater);
    attempt_->start();
}

void SessionBus::finishAttempt() {
    attempt_ = nullptr;
    QDBusConnection bus(connectionName_);
    // Watched first, so that a bus that goes away in between is noticed.
    bus.connect({},
                "/org/freedesktop/DBus/Local",
                "org.freedesktop.DBus.Local",
                "Disconnected",
                this,
                SLOT(handleDisconnection()));
    if (bus.isConnected()) {
        retryDelay_ = shortestRetryDelay;
        didChange_(bus);
    } else {
        handleDisconnection();
    }
}

void SessionBus::handleDisconnection() {
    const QDBusConnection bus(connectionName_);
    QDBusConnection::disconnectFromBus(connectionName_);
    if (address_ != noBus) {
        retryTimer_.start(retryDelay_);
        retryDelay_ = std::min<std::chrono::seconds>(2 * retryDelay_, longestRetryDelay);
    }
    didChange_(bus);
}

} // namespace platform
