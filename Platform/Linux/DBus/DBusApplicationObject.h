#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <cstdint>
#include <functional>

namespace platform {

/// What another program asks of this one over the bus.
enum class DBusRequest : std::uint8_t { convert, openPreferences };

/// The program as an object of the interface org.freedesktop.Application, with the actions
/// "convert" and "preferences". Whoever asks is answered before anything is done, so that nobody
/// waits for it. Main thread only.
class DBusApplicationObject final : public QDBusVirtualObject {
  public:
    /// `handle` is called from the event loop.
    explicit DBusApplicationObject(std::function<void(DBusRequest)> handle);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    std::function<void(DBusRequest)> handle_;
};

} // namespace platform
