#include "Platform/Linux/Tray/TrayStatusBar.h"

#include "Platform/Linux/Tray/TrayStatusItem.h"

#include <utility>

namespace platform {

namespace {

class ItemWithoutPlace final : public StatusItem {
  public:
    [[nodiscard]] std::shared_ptr<StatusBarButton> button() override { return nullptr; }

    void setMenu(std::shared_ptr<Menu> /*menu*/) override {}
};

} // namespace

TrayStatusBar::TrayStatusBar(TrayManagerSelectionMaker makeManagerSelection)
    : makeManagerSelection_(std::move(makeManagerSelection)) {}

void TrayStatusBar::setBus(const QDBusConnection& bus) {
    bus_ = bus;
    if (TrayStatusItem* const item = itemInPlace_.get()) {
        item->setBus(bus);
    }
}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem(double /*length*/) {
    if (itemInPlace_.get() != nullptr) {
        return std::make_unique<ItemWithoutPlace>();
    }
    auto item = std::make_unique<TrayStatusItem>(makeManagerSelection_);
    itemInPlace_ = item->reference();
    if (bus_) {
        item->setBus(*bus_);
    }
    return item;
}

} // namespace platform
