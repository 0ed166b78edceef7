#pragma once

#include "Platform/Application.h"
#include "Platform/Linux/DBus/DBusApplicationObject.h"

#include <QDBusConnection>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The running program, which is on the session bus under a name that only one process can have:
/// com.app.pastewise. Other programs start it a second time, open its preferences or have it
/// convert through that name.
///
/// When the bus goes away the program goes on without it and does not come back to a new one.
/// Needs the QCoreApplication, whose event loop calls what is asked for, and ends before it. Main
/// thread only.
class DBusApplication final : public Application {
  public:
    enum class Claim : std::uint8_t {
        first,          ///< The name is this process's until the object goes.
        alreadyRunning, ///< Another process keeps the name.
        noBus           ///< There is no session bus, or none that answers in time.
    };

    /// What becomes of a start beside a process that has the name.
    enum class SecondStart : std::uint8_t {
        opensPreferences, ///< The other process is asked to open its preferences.
        endsQuietly       ///< The other process is not told.
    };

    /// `bringToFront` does so with the program's windows.
    explicit DBusApplication(std::function<void()> bringToFront);

    /// Gives the name back.
    ~DBusApplication() override;

    /// Takes the name, or does what a second start does. Waits at most a few seconds for a bus or a
    /// process that hangs, or that ends instead of opening its preferences. Called once.
    Claim claim(SecondStart secondStart = SecondStart::opensPreferences);

    /// The connection that the name belongs to, for whoever has other business on the bus; one that
    /// is not connected where there is no bus. Valid once the name was asked for.
    [[nodiscard]] QDBusConnection connection() const { return QDBusConnection(connectionName_); }

    /// Answers requests that came before the first call from the event loop soon after it.
    void setRequests(Requests requests) override;

    void activateIgnoringOtherApps() override { bringToFront_(); }

    void terminate() override;

  private:
    void handle(DBusRequest request);
    void perform(DBusRequest request) const;

    std::function<void()> bringToFront_;
    QString connectionName_;
    DBusApplicationObject object_;
    std::optional<Requests> requests_;
    std::vector<DBusRequest> earlyRequests_;
};

} // namespace platform
