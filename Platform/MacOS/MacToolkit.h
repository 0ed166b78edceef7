#pragma once

#include "Foundation/FatalError.h"
#import "Platform/MacOS/MacButton.h"
#import "Platform/MacOS/MacLabel.h"
#import "Platform/MacOS/MacVerticalStack.h"
#import "Platform/MacOS/MacWindow.h"
#include "Platform/Toolkit.h"

namespace platform {

/// The system's windows, all of them buffered, and views. Main thread only.
class MacToolkit final : public Toolkit {
  public:
    [[nodiscard]] std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) override {
        return std::make_unique<MacWindow>([[NSWindow alloc]
            initWithContentRect:nsRect(contentRect)
                      styleMask:nsStyle(style)
                        backing:NSBackingStoreBuffered
                          defer:backing.isDeferred]);
    }

    [[nodiscard]] std::shared_ptr<View> makeView(Rect frame) override {
        return std::make_shared<MacView>([[NSView alloc] initWithFrame:nsRect(frame)]);
    }

    [[nodiscard]] std::shared_ptr<VerticalStack> makeVerticalStack() override {
        return std::make_shared<MacVerticalStack>([[NSStackView alloc] init]);
    }

    [[nodiscard]] std::shared_ptr<Label> makeLabel(std::string text) override {
        return std::make_shared<MacLabel>([NSTextField labelWithString:nsString(text)]);
    }

    [[nodiscard]] std::shared_ptr<Label> makeWrappingLabel(std::string text) override {
        NSTextField* const label = [NSTextField wrappingLabelWithString:nsString(text)];
        label.selectable = NO;
        return std::make_shared<MacLabel>(label);
    }

    [[nodiscard]] std::shared_ptr<Button> makeButton(std::string title, Action action) override {
        PWActionTarget* const target = [[PWActionTarget alloc] initWithAction:std::move(action)];
        NSButton* const button = [NSButton buttonWithTitle:nsString(title)
                                                    target:target
                                                    action:target.selector];
        return std::make_shared<MacButton>(button, target);
    }

    void activateConstraints(const std::vector<LayoutConstraint>& constraints) override {
        NSMutableArray<NSLayoutConstraint*>* const group = [NSMutableArray array];
        for (const LayoutConstraint& constraint : constraints) {
            [group addObject:nsConstraint(constraint)];
        }
        [NSLayoutConstraint activateConstraints:group];
    }

  private:
    static NSWindowStyleMask nsStyle(WindowStyle style) {
        return (style.isTitled ? NSWindowStyleMaskTitled : NSWindowStyleMaskBorderless) |
               (style.isClosable ? NSWindowStyleMaskClosable : 0) |
               (style.isMiniaturizable ? NSWindowStyleMaskMiniaturizable : 0) |
               (style.isResizable ? NSWindowStyleMaskResizable : 0);
    }

    static NSLayoutConstraint* nsConstraint(const LayoutConstraint& constraint) {
        constexpr NSLayoutAttribute attributes[] = {NSLayoutAttributeTop,
                                                    NSLayoutAttributeLeading,
                                                    NSLayoutAttributeTrailing,
                                                    NSLayoutAttributeBottom,
                                                    NSLayoutAttributeCenterX,
                                                    NSLayoutAttributeWidth};
        constexpr NSLayoutRelation relations[] = {NSLayoutRelationEqual,
                                                  NSLayoutRelationGreaterThanOrEqual};
        const NSLayoutAttribute attribute = attributes[static_cast<int>(constraint.anchor)];
        NSView* const first = MacViewNode::nsView(*constraint.first);
        NSView* const second = constraint.second ? MacViewNode::nsView(*constraint.second) : nil;
        if (second != nil && ![first isDescendantOf:second]) {
            foundation::fatalError("a constraint's first view does not stand in its second one");
        }
        return [NSLayoutConstraint
            constraintWithItem:first
                     attribute:attribute
                     relatedBy:relations[static_cast<int>(constraint.relation)]
                        toItem:second
                     attribute:second != nil ? attribute : NSLayoutAttributeNotAnAttribute
                    multiplier:1
                      constant:constraint.constant];
    }
};

} // namespace platform
