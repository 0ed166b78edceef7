#pragma once

#include "Platform/Linux/LinuxInterfaces.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// Knows which kind of tray can show an icon at the moment: one on the session bus if there is one,
/// else one that embeds windows (XEmbed), which is looked for only then. Registers our item with
/// the bus's watcher, through which items and trays find each other, and with each new watcher.
/// Nothing here waits for an answer. Main thread only.
class TrayHosts final : public QObject {
    Q_OBJECT

  public:
    enum class Kind : std::uint8_t { none, statusNotifier, xEmbed };

    /// `service` is the item's name on the bus. `makeManagerSelection` is empty where windows
    /// cannot be icons. `didChange` is called when kind() has changed.
    TrayHosts(QString service,
              TrayManagerSelectionMaker makeManagerSelection,
              std::function<void()> didChange);

    /// From now on looks for trays on this bus, or for none on a bus if it is not connected.
    void setBus(const QDBusConnection& bus);

    [[nodiscard]] Kind kind() const { return kind_; }

    /// Asks the bus once more and calls `done`, replacing an earlier one, from the event loop when
    /// kind() takes the answer into account.
    void lookAgain(std::function<void()> done);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): Qt's own kind of section.
  private Q_SLOTS:
    void handleNewWatcher(const QString& name, const QString& oldOwner, const QString& newOwner);
    void queryHost();

    // NOLINTNEXTLINE(readability-redundant-access-specifiers)
  private:
    void registerItem();
    void setHasHost(bool hasHost);
    void update();

    const QString service_;
    const TrayManagerSelectionMaker makeManagerSelection_;
    const std::function<void()> didChange_;
    std::function<void()> didLookAgain_;
    std::optional<QDBusConnection> bus_;
    /// Whether there is a tray on the bus; nullopt until the bus has answered.
    std::optional<bool> hasHost_;
    int queryCount_ = 0; ///< Only the answer to the latest query counts.
    std::unique_ptr<TrayManagerSelection> managerSelection_;
    Kind kind_ = Kind::none;
};

} // namespace platform
