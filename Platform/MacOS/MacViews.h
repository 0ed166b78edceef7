#pragma once

#include "Foundation/FatalError.h"
#import "Platform/MacOS/MacConversions.h"
#include "Platform/Views.h"

#import <AppKit/AppKit.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Closes and quits by Command+W and Command+Q, which no menu bar offers here. Its title bar says
/// when it has no keyboard.
@interface PWWindow : NSWindow
@end

namespace platform {

/// The part that all views of this toolkit share. Main thread only.
class MacViewNode {
  public:
    explicit MacViewNode(NSView* view) : view_(view) {}

    virtual ~MacViewNode() = default;

    /// The system's view of a view of this toolkit; throws std::bad_cast for any other view.
    [[nodiscard]] static NSView* nsView(View& view) {
        return dynamic_cast<MacViewNode&>(view).view_;
    }

  protected:
    NSView* const view_;
    std::vector<std::shared_ptr<View>> subviews_;
};

/// A view, stack, label or button on a view of the system's class.
template <typename Interface, typename NSViewType>
class MacViewOf : public Interface, public MacViewNode {
  public:
    explicit MacViewOf(NSViewType* view) : MacViewNode(view) {}

    [[nodiscard]] Rect frame() const override {
        const NSRect frame = view_.frame;
        return {{frame.origin.x, frame.origin.y}, {frame.size.width, frame.size.height}};
    }

    void addSubview(std::shared_ptr<View> view) override {
        [view_ addSubview:nsView(*view)];
        subviews_.push_back(std::move(view));
    }

    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) override {
        view_.translatesAutoresizingMaskIntoConstraints = translates;
    }

    void layoutSubtreeIfNeeded() override { [view_ layoutSubtreeIfNeeded]; }

  protected:
    [[nodiscard]] NSViewType* typedView() const { return static_cast<NSViewType*>(view_); }
};

using MacView = MacViewOf<View, NSView>;

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

/// A text field as a label. Main thread only.
class MacLabel final : public MacViewOf<Label, NSTextField> {
  public:
    using MacViewOf::MacViewOf;

    void setText(std::string text) override { typedView().stringValue = nsString(text); }

    [[nodiscard]] std::string text() const override { return utf8String(typedView().stringValue); }

    void setFont(SystemFont font) override { typedView().font = nsFont(font); }

    void setTextColor(TextColor color) override {
        typedView().textColor =
            color == TextColor::label ? [NSColor labelColor] : [NSColor secondaryLabelColor];
    }

    void setAlignment(TextAlignment alignment) override {
        typedView().alignment =
            alignment == TextAlignment::center ? NSTextAlignmentCenter : NSTextAlignmentNatural;
    }

    void setEditable(bool isEditable) override { typedView().editable = isEditable; }

    void setSelectable(bool isSelectable) override { typedView().selectable = isSelectable; }

    void setMaximumNumberOfLines(int lines) override { typedView().maximumNumberOfLines = lines; }
};

/// A push button. Main thread only.
class MacButton final : public MacViewOf<Button, NSButton> {
  public:
    /// `target` is the button's, which refers to it weakly.
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
    [[maybe_unused]] PWActionTarget* const target_;
};

/// A window, closed when this object is destroyed. Main thread only.
class MacWindow final : public Window {
  public:
    explicit MacWindow(NSWindow* window) : window_(window) { window.releasedWhenClosed = NO; }

    ~MacWindow() override {
        [window_ close];
        window_.contentViewController = nil;
    }

    void setTitle(std::string title) override { window_.title = nsString(title); }

    void center() override { [window_ center]; }

    void setContentViewController(ViewController& controller) override;

    void makeKeyAndOrderFront() override {
        [window_ makeKeyAndOrderFront:nil];
        // The system may refuse to activate the program, which leaves the window behind others.
        [window_ orderFrontRegardless];
    }

    void close() override { [window_ close]; }

    [[nodiscard]] bool isVisible() const override { return [window_ isVisible]; }

  private:
    NSWindow* const window_;
};

/// Makes windows, all of them buffered, and views. Main thread only.
class MacToolkit final : public Toolkit {
  public:
    [[nodiscard]] std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) override {
        return std::make_unique<MacWindow>([[PWWindow alloc]
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
            if (constraint.anchor == LayoutConstraint::Anchor::centerX) {
                [group addObject:widthOfContainer(constraint)];
            }
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

    /// Without it a container may be narrower than the view centred in it, which gets no clicks
    /// where it sticks out.
    static NSLayoutConstraint* widthOfContainer(const LayoutConstraint& centred) {
        return [NSLayoutConstraint constraintWithItem:MacViewNode::nsView(*centred.second)
                                            attribute:NSLayoutAttributeWidth
                                            relatedBy:NSLayoutRelationGreaterThanOrEqual
                                               toItem:MacViewNode::nsView(*centred.first)
                                            attribute:NSLayoutAttributeWidth
                                           multiplier:1
                                             constant:0];
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
            foundation::fatalError("a constraint's first view is not inside its second one");
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
