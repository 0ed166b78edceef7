#pragma once

#include "Platform/Images.h"
#include "Platform/Memory/MemoryCanvas.h"

#include <functional>
#include <string>
#include <utility>

namespace platform {

/// An image that knows what it was made from.
class MemoryImage final : public Image {
  public:
    /// A symbol of the system, with the description that it was asked for with.
    MemoryImage(std::string symbolName, std::string accessibilityDescription)
        : symbolName_(std::move(symbolName)),
          accessibilityDescription_(std::move(accessibilityDescription)) {}

    MemoryImage(Size size, std::function<void(Canvas&)> draw)
        : size_(size), draw_(std::move(draw)) {}

    [[nodiscard]] Size size() const override { return size_; }

    void setSize(Size size) override { size_ = size; }

    [[nodiscard]] bool isTemplate() const override { return isTemplate_; }

    void setTemplate(bool isTemplate) override { isTemplate_ = isTemplate; }

    /// Empty for a drawn image.
    [[nodiscard]] const std::string& symbolName() const { return symbolName_; }

    [[nodiscard]] const std::string& accessibilityDescription() const {
        return accessibilityDescription_;
    }

    /// Draws what a drawn image shows; nothing for a symbol.
    void drawOn(MemoryCanvas& canvas) const {
        if (draw_) {
            draw_(canvas);
        }
    }

  private:
    std::string symbolName_;
    std::string accessibilityDescription_;
    Size size_{};
    bool isTemplate_ = false;
    std::function<void(Canvas&)> draw_;
};

} // namespace platform
