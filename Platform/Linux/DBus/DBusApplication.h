#pragma once

#include "Platform/Application.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// The running program as an object on the session bus: org.freedesktop.Application with the
/// actions "convert", "preferences", "quit", "start-at-login" and "no-start-at-login", under the
/// application's identifier as its name. Callers get their reply before a request is carried out,
/// but after a change of the start at login.
///
/// Needs the QCoreApplication, whose event loop carries out the requests. Main thread only.
class DBusApplication final : public QObject, public Application, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    /// `bringToFront` does so with the program's windows. `setStartsAtLogin` returns the reason if
    /// it fails, else an empty text.
    DBusApplication(std::function<void()> bringToFront,
                    std::function<QString(bool)> setStartsAtLogin);

    /// Exports the program on a bus and takes its name there. If another process owns the name, it
    /// is asked to open its preferences, and this process terminates once it has replied. If it
    /// does not, this process gets the name as soon as it is free.
    void joinBus(QDBusConnection bus);

    /// Asks another process that owns the name to open its preferences. Calls `done` from the event
    /// loop with whether one did, unless `context` is gone by then.
    static void askOtherInstance(const QDBusConnection& bus,
                                 QObject* context,
                                 const std::function<void(bool)>& done);

    /// Requests that came before the first call are carried out from the event loop soon after it.
    void setRequests(Requests requests) override;

    using Request = std::function<void()> Requests::*;

    /// Makes a request as if it came over the bus.
    void carryOutLater(Request request);

    void activateIgnoringOtherApps() override { bringToFront_(); }

    void terminate() override;

    // The names are the interface's own, and `slots` is Qt's addition to the language.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
  public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name,
                        const QVariantList& parameter,
                        const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

  private:
    std::function<void()> bringToFront_;
    std::function<QString(bool)> setStartsAtLogin_;
    std::optional<Requests> requests_;
    std::vector<Request> earlyRequests_;
};

} // namespace platform
