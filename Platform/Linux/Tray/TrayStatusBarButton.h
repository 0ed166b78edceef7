#pragma once

#include "Platform/Linux/Tray/DrawnImage.h"
#include "Platform/StatusBar.h"

#include <functional>
#include <memory>
#include <string>

namespace platform {

/// What a status item in a tray shows. A tray has no room for a title. May outlive its item.
class TrayStatusBarButton final : public StatusBarButton {
  public:
    /// `imageDidChange` is called by the setters.
    explicit TrayStatusBarButton(std::function<void()> imageDidChange);

    /// The image comes from TrayImages.
    void setImage(std::shared_ptr<const Image> image) override;
    void setImagePosition(ImagePosition position) override;
    void setTitle(std::string title) override;
    void setAction(Action action) override;

    /// What is to be seen; null for nothing.
    [[nodiscard]] std::shared_ptr<const DrawnImage> visibleImage() const;

    void performAction() const;

    /// Nobody shows this button any more.
    void detach() {
        imageDidChange_ = [] {};
    }

  private:
    std::function<void()> imageDidChange_;
    std::shared_ptr<const DrawnImage> image_;
    ImagePosition position_ = ImagePosition::imageLeading;
    Action action_;
};

} // namespace platform
