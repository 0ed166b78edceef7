#include "Platform/Linux/Tray/TrayStatusBar.h"

#include "Platform/Linux/Tray/TrayStatusItem.h"

#include <utility>

namespace platform {

TrayStatusBar::TrayStatusBar(TrayManagerSelectionMaker makeManagerSelection)
    : makeManagerSelection_(std::move(makeManagerSelection)) {}

void TrayStatusBar::setBus(const QDBusConnection& bus) {
    bus_ = bus;
    if (TrayStatusItem* const item = item_.get()) {
        item->setBus(bus);
    }
}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem(double /*length*/) {
    auto item = std::make_unique<TrayStatusItem>(makeManagerSelection_);
    item_ = item->reference();
    if (bus_) {
        item->setBus(*bus_);
    }
    return item;
}

} // namespace platform
