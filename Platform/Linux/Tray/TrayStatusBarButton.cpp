#include "Platform/Linux/Tray/TrayStatusBarButton.h"

#include <utility>

namespace platform {

TrayStatusBarButton::TrayStatusBarButton(std::function<void()> imageDidChange)
    : imageDidChange_(std::move(imageDidChange)) {}

void TrayStatusBarButton::setImage(std::shared_ptr<const Image> image) {
    image_ = std::dynamic_pointer_cast<const DrawnImage>(image);
    imageDidChange_();
}

void TrayStatusBarButton::setImagePosition(ImagePosition position) {
    if (std::exchange(position_, position) != position) {
        imageDidChange_();
    }
}

void TrayStatusBarButton::setTitle(std::string /*title*/) {}

void TrayStatusBarButton::setAction(Action action) {
    action_ = std::move(action);
}

std::shared_ptr<const DrawnImage> TrayStatusBarButton::visibleImage() const {
    return position_ == ImagePosition::noImage ? nullptr : image_;
}

void TrayStatusBarButton::performAction() const {
    if (const auto perform = action_.perform) {
        perform();
    }
}

} // namespace platform
