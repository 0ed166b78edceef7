#pragma once

#include "Platform/Menu.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// A menu of the system's with the rows of a Menu, which it follows for as long as it exists. Main
/// thread only.
class MacMenu {
  public:
    explicit MacMenu(std::shared_ptr<Menu> menu);
    MacMenu(const MacMenu&) = delete;
    MacMenu& operator=(const MacMenu&) = delete;
    ~MacMenu();

    [[nodiscard]] NSMenu* nsMenu() const { return nsMenu_; }

  private:
    NSMenuItem* followingItem(MenuItem& item);

    std::shared_ptr<Menu> menu_;
    NSMenu* const nsMenu_ = [[NSMenu alloc] init];
    /// The system's items and menus do not keep what they call alive.
    NSMutableArray* const targets_ = [NSMutableArray array];
    std::vector<std::pair<MenuItem&, foundation::ObserverToken>> followed_;
};

} // namespace platform
