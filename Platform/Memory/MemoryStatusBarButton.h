#pragma once

#include "Platform/Memory/MemoryImage.h"
#include "Platform/StatusBar.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A status item's button whose state can be read. It takes images of MemoryImages only.
class MemoryStatusBarButton final : public StatusBarButton {
  public:
    void setImage(std::shared_ptr<const Image> image) override {
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

} // namespace platform
