#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Memory/Journal.h"
#include "Platform/Memory/MemoryImages.h"
#include "Platform/StatusBar.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// A status item's button whose state can be read. Takes only images of MemoryImages.
class MemoryStatusBarButton final : public StatusBarButton, public Journaled {
  public:
    using Journaled::Journaled;

    void setImage(std::shared_ptr<const Image> image) override {
        note("show icon");
        image_ = std::dynamic_pointer_cast<const MemoryImage>(std::move(image));
        imageHistory_.push_back(image_);
    }

    void setImagePosition(ImagePosition position) override { imagePosition_ = position; }

    void setTitle(std::string title) override { title_ = std::move(title); }

    void setAction(Action action) override { action_ = std::move(action); }

    [[nodiscard]] const std::shared_ptr<const MemoryImage>& image() const { return image_; }

    /// Every image that was set, in order.
    [[nodiscard]] const std::vector<std::shared_ptr<const MemoryImage>>& imageHistory() const {
        return imageHistory_;
    }

    [[nodiscard]] ImagePosition imagePosition() const { return imagePosition_; }

    [[nodiscard]] const std::string& title() const { return title_; }

    [[nodiscard]] const Action& action() const { return action_; }

  private:
    std::shared_ptr<const MemoryImage> image_;
    std::vector<std::shared_ptr<const MemoryImage>> imageHistory_;
    ImagePosition imagePosition_ = ImagePosition::noImage;
    std::string title_ = "Item";
    Action action_{.name = "perform", .perform = [] {}};
};

/// A status item that a test can click and choose from as the user does.
class MemoryStatusItem final : public StatusItem, public Journaled {
  public:
    MemoryStatusItem(double length,
                     std::shared_ptr<MemoryStatusBarButton> button,
                     std::shared_ptr<Journal> journal)
        : Journaled(std::move(journal)), length_(length), button_(std::move(button)) {}

    [[nodiscard]] std::shared_ptr<StatusBarButton> button() override { return button_; }

    /// The same button with its own type.
    [[nodiscard]] const std::shared_ptr<MemoryStatusBarButton>& memoryButton() const {
        return button_;
    }

    void setMenu(std::shared_ptr<Menu> menu) override {
        note("set menu");
        menu_ = std::move(menu);
    }

    [[nodiscard]] foundation::WeakReference<MemoryStatusItem> weakReference() const {
        return self_.reference();
    }

    [[nodiscard]] double length() const { return length_; }

    [[nodiscard]] const std::shared_ptr<Menu>& menu() const { return menu_; }

    /// Clicks the item, which opens its menu, if any.
    void click() const {
        if (menu_) {
            menu_->willOpen();
        }
    }

    /// Opens the menu and chooses the enabled row with that title; false if there is none.
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

/// A status bar whose newest item can be read.
class MemoryStatusBar final : public StatusBar, public Journaled {
  public:
    using Journaled::Journaled;

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override {
        note("make status item");
        auto button =
            refusesButtons_ ? nullptr : std::make_shared<MemoryStatusBarButton>(journal());
        auto item = std::make_unique<MemoryStatusItem>(length, std::move(button), journal());
        item_ = item->weakReference();
        return item;
    }

    /// The newest item while it exists; otherwise null.
    [[nodiscard]] MemoryStatusItem* item() const { return item_.get(); }

    /// Items made from now on have no button.
    void refuseButtons() { refusesButtons_ = true; }

  private:
    foundation::WeakReference<MemoryStatusItem> item_;
    bool refusesButtons_ = false;
};

} // namespace platform
