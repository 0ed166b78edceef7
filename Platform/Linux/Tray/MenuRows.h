#pragma once

#include "Foundation/Interface.h"
#include "Platform/Menu.h"

#include <QKeySequence>
#include <QStringList>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

// What menus on the bus and Qt's own have in common.
namespace platform {

/// The modifiers, then the key, by their names in menus on the bus: "Control", "Alt" for option,
/// "Shift", "Super" for command; and the key's keysym name, such as "q" or "comma".
[[nodiscard]] QStringList busNames(const KeyEquivalent& keyEquivalent);

/// The same for Qt's menus, where command is Meta.
[[nodiscard]] QKeySequence keySequence(const KeyEquivalent& keyEquivalent);

/// Observes the titles of a menu for as long as it exists. Keeps the rows alive.
class TitleObservers : foundation::Pinned {
  public:
    /// `didChange` gets the index of the row.
    TitleObservers(const Menu& menu, const std::function<void(std::size_t)>& didChange);
    ~TitleObservers();

  private:
    std::vector<std::pair<std::shared_ptr<MenuItem>, foundation::ObserverToken>> observed_;
};

} // namespace platform
