#include "Platform/Linux/Tray/TrayHostMonitor.h"

#include <utility>

namespace platform {

TrayHostMonitor::TrayHostMonitor(const QDBusConnection& bus,
                                 const QString& service,
                                 TrayManagerSelectionMaker makeManagerSelection,
                                 std::function<void()> didChange)
    : makeManagerSelection_(std::move(makeManagerSelection)),
      didChange_(std::move(didChange)),
      watcher_(bus, service, [this] { update(); }) {}

void TrayHostMonitor::update() {
    Kind kind = Kind::none;
    if (watcher_.host() == StatusNotifierWatcher::Host::present) {
        managerSelection_.reset();
        kind = Kind::statusNotifier;
    } else {
        if (!managerSelection_ && makeManagerSelection_) {
            managerSelection_ = makeManagerSelection_([this] { update(); });
        }
        if (managerSelection_ && managerSelection_->hasOwner()) {
            kind = Kind::xEmbed;
        }
    }
    if (std::exchange(kind_, kind) != kind) {
        didChange_();
    }
}

} // namespace platform
