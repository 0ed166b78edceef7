#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

namespace tray_host {

/// Writes a line of JSON with the event's name and the time to standard output.
void print(const QString& event, QJsonObject values = {});

/// A StatusNotifier watcher, and a host that reads the item that registered last. TrayHostMain.cpp
/// describes the output and the commands.
class TrayHost final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion CONSTANT)

  public:
    explicit TrayHost(bool hasHost);

    [[nodiscard]] QStringList registeredItems() const { return registeredItems_; }

    [[nodiscard]] bool hasHost() const { return hasHost_; }

    [[nodiscard]] int protocolVersion() const { return 0; }

    /// Claims the watcher's name; false if another process owns it.
    [[nodiscard]] bool start();

    /// Executes a command and prints the result.
    void run(const QString& line);

    // The names are the interface's; the toolkit adds access specifiers.
    // NOLINTBEGIN(readability-identifier-naming, readability-redundant-access-specifiers)
  public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& serviceOrPath);

    void RegisterStatusNotifierHost(const QString& /*service*/) {}

  Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierItemUnregistered(const QString& service);
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();
    // NOLINTEND(readability-identifier-naming, readability-redundant-access-specifiers)

  private Q_SLOTS:
    void readIcon();
    void readRowUpdates(const QDBusMessage& signal);
    void readLayoutUpdate(const QDBusMessage& signal);

    // Not slots.
  private: // NOLINT(readability-redundant-access-specifiers)
    struct Item {
        QString service;
        QString path;
        QString menuPath;
    };

    void stop();
    void forgetService(const QString& service);
    [[nodiscard]] QDBusMessage call(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage getProperty(const QString& name) const;
    [[nodiscard]] QDBusMessage menuCall(const QString& method) const;
    [[nodiscard]] bool findMenu();
    [[nodiscard]] QJsonObject runOnItem(const QString& name, const QString& argument);
    [[nodiscard]] QJsonObject readProperties() const;
    [[nodiscard]] QJsonObject readIconNow(const QString& file) const;
    [[nodiscard]] QDBusMessage sendEvent(int id, const QString& event) const;
    [[nodiscard]] QJsonObject readLayout() const;
    [[nodiscard]] QJsonObject runOnMenu(const QString& name, const QString& argument) const;

    QDBusConnection bus_ = QDBusConnection::sessionBus();
    QDBusServiceWatcher goneServices_{{}, bus_, QDBusServiceWatcher::WatchForUnregistration};
    QStringList registeredItems_;
    std::optional<Item> item_;
    bool hasHost_;
};

} // namespace tray_host
