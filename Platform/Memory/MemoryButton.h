#pragma once

#include "Platform/Action.h"
#include "Platform/Button.h"
#include "Platform/Memory/MemoryViewOf.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A button in memory, which a test can press. Main thread only.
class MemoryButton final : public MemoryViewOf<Button> {
  public:
    struct AlphaAnimation {
        double alpha = 1;
        std::chrono::milliseconds duration{0};
        bool operator==(const AlphaAnimation&) const = default;
    };

    MemoryButton(std::string title, Action action)
        : title_(std::move(title)), action_(std::move(action)) {}

    void setTitle(std::string title) override { title_ = std::move(title); }

    [[nodiscard]] std::string title() const override { return title_; }

    void setBezelStyle(BezelStyle style) override { bezelStyle_ = style; }

    void setWantsLayer(bool wantsLayer) override { wantsLayer_ = wantsLayer; }

    void setHorizontalContentHuggingPriority(double priority) override {
        horizontalContentHuggingPriority_ = priority;
    }

    void animateAlpha(double alpha, std::chrono::milliseconds duration) override {
        alphaAnimations_.push_back({.alpha = alpha, .duration = duration});
    }

    /// The user presses the button, which may be the end of it.
    void press() const {
        const auto perform = action_.perform;
        perform();
    }

    [[nodiscard]] const std::string& actionName() const { return action_.name; }

    /// None while nobody has chosen one.
    [[nodiscard]] std::optional<BezelStyle> bezelStyle() const { return bezelStyle_; }

    [[nodiscard]] bool wantsLayer() const { return wantsLayer_; }

    /// None while nobody has chosen one.
    [[nodiscard]] std::optional<double> horizontalContentHuggingPriority() const {
        return horizontalContentHuggingPriority_;
    }

    /// All animations so far, the first one first.
    [[nodiscard]] const std::vector<AlphaAnimation>& alphaAnimations() const {
        return alphaAnimations_;
    }

  private:
    std::string title_;
    Action action_;
    std::optional<BezelStyle> bezelStyle_;
    std::optional<double> horizontalContentHuggingPriority_;
    std::vector<AlphaAnimation> alphaAnimations_;
    bool wantsLayer_ = false;
};

} // namespace platform
