#pragma once

#include "Platform/View.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace platform {

/// Something to press, with the mouse or with the keyboard.
class Button : public View {
  public:
    enum class BezelStyle : std::uint8_t { rounded };

    virtual void setTitle(std::string title) = 0; ///< UTF-8.
    [[nodiscard]] virtual std::string title() const = 0;
    virtual void setBezelStyle(BezelStyle style) = 0;
    /// Whether the system composes the button by itself, as its animation needs.
    virtual void setWantsLayer(bool wantsLayer) = 0;

    /// How strongly the button keeps its width against constraints that would stretch it, from 1
    /// to 1000.
    virtual void setHorizontalContentHuggingPriority(double priority) = 0;

    /// Changes the button's opacity, 0 to 1, in the course of `duration`.
    virtual void animateAlpha(double alpha, std::chrono::milliseconds duration) = 0;
};

} // namespace platform
