#pragma once

#include "Platform/Images.h"

#include <QImage>
#include <functional>

namespace platform {

/// An image that is drawn anew for each number of pixels, never scaled.
class DrawnImage final : public Image {
  public:
    DrawnImage(Size size, std::function<void(Canvas&)> draw);

    [[nodiscard]] Size size() const override { return size_; }

    void setSize(Size size) override { size_ = size; }

    [[nodiscard]] bool isTemplate() const override { return isTemplate_; }

    void setTemplate(bool isTemplate) override { isTemplate_ = isTemplate; }

    /// The image as large as it fits into that many pixels, in their middle. A template has an
    /// outline and shows on any background; see withContrastOutline().
    [[nodiscard]] QImage render(QSize pixels) const;

  private:
    Size drawnSize_;
    Size size_;
    bool isTemplate_ = false;
    std::function<void(Canvas&)> draw_;
};

} // namespace platform
