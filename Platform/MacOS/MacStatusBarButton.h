#pragma once

#import "Platform/MacOS/MacImage.h"
#import "Platform/MacOS/PWActionTarget.h"
#include "Platform/StatusBar.h"

#include <utility>

namespace platform {

/// The button of an item of the menu bar. Its images come from MacImages. Main thread only.
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

} // namespace platform
