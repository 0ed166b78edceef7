#pragma once

#include "Platform/Linux/Qt/QtAlphaAnimation.h"
#include "Platform/Linux/Qt/QtWidgetView.h"
#include "Platform/Menu.h"
#include "Platform/Views.h"

#include <chrono>
#include <memory>
#include <string>

class QPushButton;

namespace platform {

/// A push button that Space and Return press while it has the focus.
class QtButton final : public QtViewOf<Button> {
  public:
    QtButton(const std::string& title, Action action);

    void setTitle(std::string title) override;
    [[nodiscard]] std::string title() const override;

    /// The style of the user's desktop decides about the bezel.
    void setBezelStyle(BezelStyle style) override;

    /// Needs nothing here: any widget can be animated.
    void setWantsLayer(bool wantsLayer) override;

    /// Needs nothing here: only constraints stretch a view, and they are stronger than its wish.
    void setHorizontalContentHuggingPriority(double priority) override;

    void animateAlpha(double alpha, std::chrono::milliseconds duration) override;

  private:
    explicit QtButton(std::unique_ptr<QPushButton> button);

    QPushButton* button_; ///< The view's widget.
    std::string title_;
    QtAlphaAnimation alphaAnimation_;
};

} // namespace platform
