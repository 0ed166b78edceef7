#pragma once

#import "Platform/MacOS/MacMenu.h"
#import "Platform/MacOS/MacStatusBarButton.h"

namespace platform {

/// An item of the menu bar, which stands there until this object goes. Main thread only.
class MacStatusItem final : public StatusItem {
  public:
    explicit MacStatusItem(NSStatusItem* item) : item_(item) {
        if (NSStatusBarButton* const button = item.button) {
            button_ = std::make_shared<MacStatusBarButton>(button);
        }
    }

    ~MacStatusItem() override { [[NSStatusBar systemStatusBar] removeStatusItem:item_]; }

    [[nodiscard]] std::shared_ptr<StatusBarButton> button() override { return button_; }

    void setMenu(std::shared_ptr<Menu> menu) override {
        auto next = std::make_unique<MacMenu>(std::move(menu));
        item_.menu = next->nsMenu();
        menu_ = std::move(next);
    }

  private:
    NSStatusItem* const item_;
    std::shared_ptr<StatusBarButton> button_;
    std::unique_ptr<MacMenu> menu_;
};

} // namespace platform
