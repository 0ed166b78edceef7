#pragma once

#include "Platform/Images.h"
#include "Platform/Memory/Journal.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Records what is drawn on it. In its only font every byte is 10 points wide and every line 16
/// high, whatever the size.
class MemoryCanvas final : public Canvas {
  public:
    struct Fill {
        Rect rect;
        Color color;
        bool operator==(const Fill&) const = default;
    };

    struct Text {
        std::string text;
        Point at;
        SystemFont font;
        Color color;
        bool operator==(const Text&) const = default;
    };

    void fill(Rect rect, Color color) override { fills_.push_back({rect, color}); }

    [[nodiscard]] Size measure(std::string_view text, SystemFont /*font*/) override {
        return {10.0 * static_cast<double>(text.size()), 16};
    }

    void drawText(std::string_view text, Point at, SystemFont font, Color color) override {
        texts_.push_back({std::string(text), at, font, color});
    }

    [[nodiscard]] const std::vector<Fill>& fills() const { return fills_; }

    [[nodiscard]] const std::vector<Text>& texts() const { return texts_; }

  private:
    std::vector<Fill> fills_;
    std::vector<Text> texts_;
};

/// An image that records how it was made.
class MemoryImage final : public Image {
  public:
    /// A system symbol with the description given for it.
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

    /// Draws the image if it is a drawn one.
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

/// Makes images that record how they were made. Has no symbols but those added by addSymbol().
class MemoryImages final : public Images, public Journaled {
  public:
    using Journaled::Journaled;

    [[nodiscard]] std::shared_ptr<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) override {
        note("symbol", name);
        requestedSymbols_.emplace_back(name);
        if (!symbols_.contains(name)) {
            return nullptr;
        }
        return std::make_shared<MemoryImage>(std::string(name),
                                             std::string(accessibilityDescription));
    }

    [[nodiscard]] std::shared_ptr<Image> draw(Size size,
                                              std::function<void(Canvas&)> draw) override {
        note("draw image");
        ++drawnCount_;
        return std::make_shared<MemoryImage>(size, std::move(draw));
    }

    void addSymbol(std::string name) { symbols_.insert(std::move(name)); }

    /// The symbol names requested so far, in order.
    [[nodiscard]] const std::vector<std::string>& requestedSymbols() const {
        return requestedSymbols_;
    }

    /// How many images have been drawn.
    [[nodiscard]] int drawnCount() const { return drawnCount_; }

  private:
    std::set<std::string, std::less<>> symbols_;
    std::vector<std::string> requestedSymbols_;
    int drawnCount_ = 0;
};

} // namespace platform
