#pragma once

#include "Platform/Images.h"

#include <QImage>
#include <functional>
#include <memory>
#include <string_view>

namespace platform {

/// An image that is drawn for each number of pixels and never scaled. Texts are measured without
/// rounding to pixels; their outlines are fitted to the pixels of each size, so that edges are
/// sharp.
class DrawnImage final : public Image {
  public:
    DrawnImage(Size size, std::function<void(Canvas&)> draw);

    [[nodiscard]] Size size() const override { return size_; }

    void setSize(Size size) override { size_ = size; }

    [[nodiscard]] bool isTemplate() const override { return isTemplate_; }

    void setTemplate(bool isTemplate) override { isTemplate_ = isTemplate; }

    /// The image as large as it fits into that many pixels, centred. A template has an outline that
    /// makes it visible on any background.
    [[nodiscard]] QImage render(QSize pixels) const;

  private:
    Size drawnSize_;
    Size size_;
    bool isTemplate_ = false;
    std::function<void(Canvas&)> draw_;
};

/// Images for TrayStatusBar. There are no system symbols. Needs the QGuiApplication, whose font is
/// the system font.
class TrayImages final : public Images {
  public:
    [[nodiscard]] std::shared_ptr<Image>
    systemSymbol(std::string_view /*name*/,
                 std::string_view /*accessibilityDescription*/) override {
        return nullptr;
    }

    [[nodiscard]] std::shared_ptr<Image> draw(Size size,
                                              std::function<void(Canvas&)> draw) override;
};

} // namespace platform
