#pragma once

#include "Platform/Label.h"
#include "Platform/Memory/MemoryViewOf.h"

#include <optional>
#include <string>
#include <utility>

namespace platform {

/// A label in memory, which remembers how it was to look. Main thread only.
class MemoryLabel final : public MemoryViewOf<Label> {
  public:
    MemoryLabel(std::string text, bool wraps) : text_(std::move(text)), wraps_(wraps) {}

    void setText(std::string text) override { text_ = std::move(text); }

    [[nodiscard]] std::string text() const override { return text_; }

    void setFont(SystemFont font) override { font_ = font; }

    void setTextColor(TextColor color) override { textColor_ = color; }

    void setAlignment(TextAlignment alignment) override { alignment_ = alignment; }

    void setEditable(bool isEditable) override { isEditable_ = isEditable; }

    void setSelectable(bool isSelectable) override { isSelectable_ = isSelectable; }

    void setMaximumNumberOfLines(int lines) override { maximumNumberOfLines_ = lines; }

    /// None while nobody has chosen a font.
    [[nodiscard]] std::optional<SystemFont> font() const { return font_; }

    [[nodiscard]] TextColor textColor() const { return textColor_; }

    [[nodiscard]] TextAlignment alignment() const { return alignment_; }

    [[nodiscard]] bool isEditable() const { return isEditable_; }

    [[nodiscard]] bool isSelectable() const { return isSelectable_; }

    /// None without a limit.
    [[nodiscard]] std::optional<int> maximumNumberOfLines() const { return maximumNumberOfLines_; }

    [[nodiscard]] bool wraps() const { return wraps_; }

  private:
    std::string text_;
    std::optional<SystemFont> font_;
    TextColor textColor_ = TextColor::label;
    TextAlignment alignment_ = TextAlignment::natural;
    std::optional<int> maximumNumberOfLines_;
    bool isEditable_ = false;
    bool isSelectable_ = false;
    bool wraps_;
};

} // namespace platform
