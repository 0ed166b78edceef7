#pragma once

#include "Platform/Images.h"
#import "Platform/MacOS/MacConversions.h"

namespace platform {

/// An image of the system's. Main thread only.
class MacImage final : public Image {
  public:
    explicit MacImage(NSImage* image) : image_(image) {}

    [[nodiscard]] Size size() const override { return {image_.size.width, image_.size.height}; }

    void setSize(Size size) override { image_.size = nsSize(size); }

    [[nodiscard]] bool isTemplate() const override { return [image_ isTemplate]; }

    void setTemplate(bool isTemplate) override { [image_ setTemplate:isTemplate]; }

    [[nodiscard]] NSImage* nsImage() const { return image_; }

  private:
    NSImage* const image_;
};

} // namespace platform
