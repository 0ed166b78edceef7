#pragma once

#include "Foundation/Interface.h"
#include "Platform/Menu.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// Hears of every new title in a menu for as long as it exists. Keeps the rows.
class TitleObservers : foundation::Pinned {
  public:
    /// `didChange` is given the index of the row.
    TitleObservers(const Menu& menu, const std::function<void(std::size_t)>& didChange) {
        for (std::size_t index = 0; index < menu.items().size(); ++index) {
            const auto& item = menu.items()[index];
            observed_.emplace_back(
                item, item->addTitleObserver([didChange, index] { didChange(index); }));
        }
    }

    ~TitleObservers() {
        for (const auto& [item, token] : observed_) {
            item->removeTitleObserver(token);
        }
    }

  private:
    std::vector<std::pair<std::shared_ptr<MenuItem>, foundation::ObserverToken>> observed_;
};

} // namespace platform
