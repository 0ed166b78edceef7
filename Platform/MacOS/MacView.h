#pragma once

#include "Platform/View.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// What every view of this toolkit has. Main thread only.
class MacViewNode {
  public:
    explicit MacViewNode(NSView* view) : view_(view) {}

    virtual ~MacViewNode() = default;

    /// The system's view behind one of this toolkit; another toolkit's stops the program.
    [[nodiscard]] static NSView* nsView(View& view) {
        return dynamic_cast<MacViewNode&>(view).view_;
    }

  protected:
    NSView* const view_;
    std::vector<std::shared_ptr<View>> subviews_;
};

/// A view, stack, label or button (the interface) that is a view of the system's class.
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

} // namespace platform
