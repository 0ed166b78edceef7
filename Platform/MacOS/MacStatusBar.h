#pragma once

#include "Foundation/Interface.h"
#import "Platform/MacOS/MacImages.h"
#include "Platform/Menu.h"
#include "Platform/StatusBar.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// The system's menu for a Menu, whose titles it follows as long as it exists. Main thread only.
class MacMenu : foundation::Pinned {
  public:
    explicit MacMenu(std::shared_ptr<Menu> menu);
    ~MacMenu();

    [[nodiscard]] NSMenu* nsMenu() const { return nsMenu_; }

  private:
    NSMenuItem* followingItem(MenuItem& item);

    std::shared_ptr<Menu> menu_;
    NSMenu* const nsMenu_ = [[NSMenu alloc] init];
    /// The system's items and menus refer to their targets weakly.
    NSMutableArray* const targets_ = [NSMutableArray array];
    std::vector<std::pair<MenuItem&, foundation::ObserverToken>> followed_;
};

/// The button of an item in the menu bar. Takes only images of MacImages. Main thread only.
class MacStatusBarButton final : public StatusBarButton {
  public:
    explicit MacStatusBarButton(NSStatusBarButton* button) : button_(button) {}

    void setImage(std::shared_ptr<const Image> image) override {
        const auto macImage = std::dynamic_pointer_cast<const MacImage>(image);
        button_.image = macImage ? macImage->nsImage() : nil;
    }

    void setImagePosition(ImagePosition position) override {
        constexpr NSCellImagePosition positions[] = {NSNoImage, NSImageOnly, NSImageLeading};
        button_.imagePosition = positions[static_cast<int>(position)];
    }

    void setTitle(std::string title) override { button_.title = nsString(title); }

    void setAction(Action action) override {
        target_ = action.perform ? [[PWActionTarget alloc] initWithAction:std::move(action)] : nil;
        button_.target = target_;
        button_.action = target_.selector;
    }

  private:
    NSStatusBarButton* const button_;
    PWActionTarget* target_ = nil;
};

/// An item in the menu bar, which exists as long as this object. Main thread only.
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

/// The menu bar's status items. Main thread only.
class MacStatusBar final : public StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override {
        return std::make_unique<MacStatusItem>(
            [[NSStatusBar systemStatusBar] statusItemWithLength:length]);
    }
};

} // namespace platform
