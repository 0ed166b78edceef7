#pragma once

#include "Foundation/Interface.h"
#include "Platform/MenuItem.h"

#include <memory>
#include <utility>
#include <vector>

namespace platform {

class Menu;

/// Hears what happens to a menu.
class MenuDelegate : public foundation::Interface {
  public:
    /// Called before the menu is shown, so that its rows can be brought up to date.
    virtual void menuWillOpen(Menu& menu) = 0;
};

/// A menu as data: its rows from top to bottom. Shared by whoever made it and whoever shows it;
/// built before it is shown for the first time, after which only titles change. Main thread only.
class Menu {
  public:
    void addItem(std::shared_ptr<MenuItem> item) { items_.push_back(std::move(item)); }

    [[nodiscard]] const std::vector<std::shared_ptr<MenuItem>>& items() const { return items_; }

    /// The delegate is not owned and takes itself away before it ends; null for none.
    void setDelegate(MenuDelegate* delegate) { delegate_ = delegate; }

    /// For whoever shows the menu: to be called before each showing.
    void willOpen() {
        if (delegate_ != nullptr) {
            delegate_->menuWillOpen(*this);
        }
    }

  private:
    std::vector<std::shared_ptr<MenuItem>> items_;
    MenuDelegate* delegate_ = nullptr;
};

} // namespace platform
