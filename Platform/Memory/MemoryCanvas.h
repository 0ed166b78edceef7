#pragma once

#include "Platform/Images.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A canvas that writes down what is drawn on it. Its font is simple: every byte of a text is 10
/// points wide and every line 16 high, whatever the size.
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

} // namespace platform
