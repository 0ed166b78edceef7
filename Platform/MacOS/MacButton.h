#pragma once

#include "Platform/Button.h"
#import "Platform/MacOS/MacConversions.h"
#import "Platform/MacOS/MacView.h"
#import "Platform/MacOS/PWActionTarget.h"

namespace platform {

/// A push button. Main thread only.
class MacButton final : public MacViewOf<Button, NSButton> {
  public:
    /// `target` is what `button` sends its action to.
    MacButton(NSButton* button, PWActionTarget* target) : MacViewOf(button), target_(target) {}

    void setTitle(std::string title) override { typedView().title = nsString(title); }

    [[nodiscard]] std::string title() const override { return utf8String(typedView().title); }

    void setBezelStyle(BezelStyle /*style*/) override {
        typedView().bezelStyle = NSBezelStyleRounded;
    }

    void setWantsLayer(bool wantsLayer) override { typedView().wantsLayer = wantsLayer; }

    void setHorizontalContentHuggingPriority(double priority) override {
        [typedView() setContentHuggingPriority:static_cast<NSLayoutPriority>(priority)
                                forOrientation:NSLayoutConstraintOrientationHorizontal];
    }

    void animateAlpha(double alpha, std::chrono::milliseconds duration) override {
        NSButton* const button = typedView();
        const std::chrono::duration<double> seconds = duration;
        const auto changes = ^(NSAnimationContext* context) {
          context.duration = seconds.count();
          button.animator.alphaValue = alpha;
        };
        [NSAnimationContext runAnimationGroup:changes completionHandler:nil];
    }

  private:
    PWActionTarget* const target_;
};

} // namespace platform
