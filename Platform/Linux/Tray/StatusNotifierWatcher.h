#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <cstdint>
#include <functional>

namespace platform {

/// Tells the watcher of the bus, the meeting point of items and trays, of our item, also each time
/// that another watcher takes over; and knows whether a tray is there. Nothing here waits for an
/// answer. Main thread only.
class StatusNotifierWatcher final : public QObject {
    Q_OBJECT

  public:
    enum class Host : std::uint8_t { unknown, absent, present };

    /// `service` is the name on the bus under which the item is found. `hostDidChange` is called
    /// from the event loop.
    StatusNotifierWatcher(QDBusConnection bus,
                          QString service,
                          std::function<void()> hostDidChange);

    /// Unknown until the bus has answered; absent where there is no bus.
    [[nodiscard]] Host host() const { return host_; }

    /// Asks the watcher once more, and calls `done` from the event loop when host() is what it
    /// answered, or when there is none to ask. Takes the place of a `done` that still waits.
    void lookAgain(std::function<void()> done);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): the toolkit's own kind of section.
  private Q_SLOTS:
    void ownerDidChange(const QString& name, const QString& oldOwner, const QString& newOwner);
    void queryHost();
    void busDidEnd();

    // NOLINTNEXTLINE(readability-redundant-access-specifiers)
  private:
    void registerItem();
    void learn(Host host);

    QDBusConnection bus_;
    QString service_;
    std::function<void()> hostDidChange_;
    std::function<void()> whenLearnt_;
    Host host_ = Host::unknown;
    /// Only the answer to the latest question counts.
    int question_ = 0;
};

} // namespace platform
