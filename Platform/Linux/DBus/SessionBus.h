#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <string>

class QThread;

namespace platform {

/// Keeps a connection to the session bus, which may hang, start late, go away and come back.
///
/// Nothing waits for the bus: Qt connects on a thread of its own, which exists only for that long.
/// While there is no bus, it tries again every few seconds, so do not make Qt D-Bus calls on the
/// main thread except with the connection given here. Main thread only; needs the event loop.
class SessionBus final : public QObject {
    Q_OBJECT

  public:
    /// The D-Bus address of the session bus: $DBUS_SESSION_BUS_ADDRESS, else the socket in
    /// $XDG_RUNTIME_DIR, else "disabled:". Never one that has libdbus start a bus.
    [[nodiscard]] static std::string addressFromEnvironment();

    /// `didChange` gets a connection that is connected whenever one has been made, and one that is
    /// not whenever it is lost or cannot be made.
    SessionBus(const std::string& address, std::function<void(const QDBusConnection&)> didChange);

    /// Closes the connection. If the bus still hangs, the process will leave out Qt's static
    /// destructors at its exit, because they would wait for the bus.
    ~SessionBus() override;

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): Qt's own kind of section.
  private Q_SLOTS:
    void handleDisconnection();

    // NOLINTNEXTLINE(readability-redundant-access-specifiers)
  private:
    void tryToConnect();
    void finishAttempt();

    const QString address_;
    const QString connectionName_;
    std::function<void(const QDBusConnection&)> didChange_;
    QThread* attempt_ = nullptr; ///< Null unless connecting.
    QTimer retryTimer_;
    std::chrono::seconds retryDelay_;
};

} // namespace platform
