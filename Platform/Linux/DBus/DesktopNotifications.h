#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace platform {

/// A message to the user that may stay unread. UTF-8. The texts contain no markup characters, which
/// services treat differently.
struct DesktopNotification {
    std::string title;
    std::string body;
    std::string actionTitle;
    std::function<void()> action; ///< Called if the user chooses the notification.
};

/// Messages through the desktop's notification service (org.freedesktop.Notifications).
///
/// A message waits for the session bus and for a service, and is never shown if there is none.
/// Nothing here waits for the bus. Main thread only; needs the event loop.
class DesktopNotifications final : public QObject {
    Q_OBJECT

  public:
    /// Uses this bus from now on, connected or not.
    void setBus(const QDBusConnection& bus);

    void show(DesktopNotification notification);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): Qt's own kind of section.
  private Q_SLOTS:
    void handleNewService(const QString& name, const QString& oldOwner, const QString& newOwner);
    void handleAction(uint id, const QString& action);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers)
  private:
    void sendWaiting();
    void send(const DesktopNotification& notification);

    QDBusConnection bus_{QString()};
    std::vector<DesktopNotification> waiting_;
    int changeCount_ = 0;                           ///< Of the bus and of the service.
    std::map<uint, std::function<void()>> actions_; ///< Of the notifications shown, by id.
};

} // namespace platform
