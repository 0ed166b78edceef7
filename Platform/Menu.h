#pragma once

#include "Foundation/Interface.h"
#include "Foundation/ObserverList.h"
#include "HotKey/ModifierFlags.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// What a menu's row or a control does. No action if `perform` is empty.
struct Action {
    /// An identifier: the name of the message, where the system sends messages to objects.
    std::string name;
    std::function<void()> perform;
};

/// A key that chooses a row while the menu is open.
struct KeyEquivalent {
    std::string key; ///< The character that the key types, in UTF-8.
    hotkey::ModifierFlags modifierMask = hotkey::ModifierFlags::command;
    bool operator==(const KeyEquivalent&) const = default;
};

/// One row of a menu, as data. Main thread only.
class MenuItem {
  public:
    /// A row without an action is disabled.
    explicit MenuItem(std::string title,
                      Action action = {},
                      std::optional<KeyEquivalent> keyEquivalent = {})
        : title_(std::move(title)),
          action_(std::move(action)),
          keyEquivalent_(std::move(keyEquivalent)) {}

    /// A line between rows.
    [[nodiscard]] static std::shared_ptr<MenuItem> separator() {
        auto item = std::make_shared<MenuItem>(std::string());
        item->isSeparator_ = true;
        return item;
    }

    [[nodiscard]] bool isSeparator() const { return isSeparator_; }

    [[nodiscard]] bool isEnabled() const { return action_.perform != nullptr; }

    /// Its name is empty if the row is disabled.
    [[nodiscard]] const Action& action() const { return action_; }

    [[nodiscard]] const std::string& title() const { return title_; }

    [[nodiscard]] const std::optional<KeyEquivalent>& keyEquivalent() const {
        return keyEquivalent_;
    }

    /// Notifies the observers only if the title changes.
    void setTitle(std::string title) {
        if (std::exchange(title_, std::move(title)) != title_) {
            titleDidChange_.notify();
        }
    }

    /// Performs the row's action; does nothing if it is disabled.
    void perform() const {
        if (action_.perform) {
            action_.perform();
        }
    }

    /// For backends that show the row.
    foundation::ObserverToken addTitleObserver(std::function<void()> handler) {
        return titleDidChange_.add(std::move(handler));
    }

    void removeTitleObserver(foundation::ObserverToken token) { titleDidChange_.remove(token); }

  private:
    std::string title_;
    Action action_;
    std::optional<KeyEquivalent> keyEquivalent_;
    bool isSeparator_ = false;
    foundation::ObserverList<> titleDidChange_;
};

class Menu;

/// Notified of what happens to a menu.
class MenuDelegate : public foundation::Interface {
  public:
    /// Called before the menu is shown, so that its rows can be updated.
    virtual void menuWillOpen(Menu& menu) = 0;
};

/// A menu as data: its rows from top to bottom. Complete before it is first shown; after that only
/// titles change. Main thread only.
class Menu {
  public:
    void addItem(std::shared_ptr<MenuItem> item) { items_.push_back(std::move(item)); }

    [[nodiscard]] const std::vector<std::shared_ptr<MenuItem>>& items() const { return items_; }

    /// The delegate is not owned and resets this to null before it is destroyed.
    void setDelegate(MenuDelegate* delegate) { delegate_ = delegate; }

    /// For backends: called before each time the menu is shown.
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
