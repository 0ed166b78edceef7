#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Memory/MemoryStatusBarButton.h"
#include "Platform/StatusBar.h"

#include <memory>
#include <string_view>
#include <utility>

namespace platform {

/// A status item that a test can open and choose from as the user does.
class MemoryStatusItem final : public StatusItem {
  public:
    MemoryStatusItem(double length, std::shared_ptr<MemoryStatusBarButton> button)
        : length_(length), button_(std::move(button)) {}

    [[nodiscard]] std::shared_ptr<StatusBarButton> button() override { return button_; }

    /// The same button, with what only a button in memory can tell.
    [[nodiscard]] const std::shared_ptr<MemoryStatusBarButton>& memoryButton() const {
        return button_;
    }

    void setMenu(std::shared_ptr<Menu> menu) override { menu_ = std::move(menu); }

    [[nodiscard]] foundation::WeakReference<MemoryStatusItem> weakReference() const {
        return self_.reference();
    }

    [[nodiscard]] double length() const { return length_; }

    [[nodiscard]] const std::shared_ptr<Menu>& menu() const { return menu_; }

    /// A click: opens the menu where there is one.
    void click() const {
        if (menu_) {
            menu_->willOpen();
        }
    }

    /// Opens the menu and chooses the enabled row with that title; false when there is none.
    [[nodiscard]] bool choose(std::string_view title) const {
        click();
        if (!menu_) {
            return false;
        }
        for (const auto& item : menu_->items()) {
            if (item->isEnabled() && item->title() == title) {
                item->perform();
                return true;
            }
        }
        return false;
    }

  private:
    double length_;
    std::shared_ptr<MemoryStatusBarButton> button_;
    std::shared_ptr<Menu> menu_;
    foundation::WeakReferenceSource<MemoryStatusItem> self_{this};
};

} // namespace platform
