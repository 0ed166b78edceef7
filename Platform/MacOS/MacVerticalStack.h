#pragma once

#import "Platform/MacOS/MacView.h"

namespace platform {

/// A stack view. Main thread only.
class MacVerticalStack final : public MacViewOf<VerticalStack, NSStackView> {
  public:
    explicit MacVerticalStack(NSStackView* stack) : MacViewOf(stack) {
        stack.orientation = NSUserInterfaceLayoutOrientationVertical;
        setAlignment(Alignment::centerX);
    }

    void setSpacing(double spacing) override { typedView().spacing = spacing; }

    void setEdgeInsets(EdgeInsets insets) override {
        typedView().edgeInsets =
            NSEdgeInsetsMake(insets.top, insets.leading, insets.bottom, insets.trailing);
    }

    void setAlignment(Alignment alignment) override {
        typedView().alignment =
            alignment == Alignment::centerX ? NSLayoutAttributeCenterX : NSLayoutAttributeLeading;
    }

    void addArrangedSubview(std::shared_ptr<View> view) override {
        [typedView() addArrangedSubview:nsView(*view)];
        subviews_.push_back(std::move(view));
    }
};

} // namespace platform
