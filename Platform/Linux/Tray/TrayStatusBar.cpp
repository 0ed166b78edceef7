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

TrayStatusBar::TrayStatusBar(QDBusConnection bus, TrayManagerSelectionMaker makeManagerSelection)
    : bus_(std::move(bus)), makeManagerSelection_(std::move(makeManagerSelection)) {}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem(double /*length*/) {
    if (itemInPlace_.get() != nullptr) {
        return std::make_unique<ItemWithoutPlace>();
    }
    auto item = std::make_unique<TrayStatusItem>(bus_, makeManagerSelection_);
    itemInPlace_ = item->reference();
    return item;
}

} // namespace platform
