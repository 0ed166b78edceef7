#pragma once

#include "Foundation/Interface.h"
#include "Platform/Geometry.h"
#include "Platform/Menu.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A rectangle in a window. A view keeps the views that were put into it alive. Main thread only.
class View : public foundation::Interface {
  public:
    /// In points, as laid out last.
    [[nodiscard]] virtual Rect frame() const = 0;

    /// Puts the view into this one, in front of those before it. Both are of the same toolkit.
    virtual void addSubview(std::shared_ptr<View> view) = 0;

    /// Whether the view's frame is kept by fixed margins to its container, as it is at first,
    /// instead of by constraints.
    virtual void setTranslatesAutoresizingMaskIntoConstraints(bool translates) = 0;

    /// Brings the frames of everything inside up to date now.
    virtual void layoutSubtreeIfNeeded() = 0;
};

/// A view that shows what is described elsewhere, by the system's own declarative means.
class HostingView : public View {};

/// An arrangement of views from top to bottom.
class VerticalStack : public View {
  public:
    enum class Alignment : std::uint8_t { leading, centerX };

    virtual void setSpacing(double spacing) = 0;
    virtual void setEdgeInsets(EdgeInsets insets) = 0;
    /// How the arranged views stand in the width; centerX at first.
    virtual void setAlignment(Alignment alignment) = 0;
    virtual void addArrangedSubview(std::shared_ptr<View> view) = 0;
};

enum class TextAlignment : std::uint8_t { natural, center };

/// A text that cannot be changed or selected by the user unless it is said so.
class Label : public View {
  public:
    virtual void setText(std::string text) = 0; ///< UTF-8.
    [[nodiscard]] virtual std::string text() const = 0;
    virtual void setFont(SystemFont font) = 0;
    virtual void setTextColor(TextColor color) = 0;
    virtual void setAlignment(TextAlignment alignment) = 0;
    virtual void setEditable(bool isEditable) = 0;
    virtual void setSelectable(bool isSelectable) = 0;
    /// Of a wrapping label; what does not fit is cut off.
    virtual void setMaximumNumberOfLines(int lines) = 0;
};

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

/// A rule for the place or size of a view. Two anchors equal, or one at least a constant.
struct LayoutConstraint {
    enum class Anchor : std::uint8_t { top, leading, trailing, bottom, centerX, width };
    enum class Relation : std::uint8_t { equal, greaterThanOrEqual };

    std::shared_ptr<View> first;
    Anchor anchor = Anchor::top;
    Relation relation = Relation::equal;
    /// The view whose same anchor is meant; null for a rule with a constant alone.
    std::shared_ptr<View> second;
    double constant = 0;

    [[nodiscard]] static LayoutConstraint
    equal(const std::shared_ptr<View>& first, Anchor anchor, const std::shared_ptr<View>& second) {
        return {first, anchor, Relation::equal, second, 0};
    }

    [[nodiscard]] static LayoutConstraint
    atLeast(const std::shared_ptr<View>& first, Anchor anchor, double constant) {
        return {first, anchor, Relation::greaterThanOrEqual, nullptr, constant};
    }
};

/// Makes the view that fills a window and hears what happens to it. Main thread only.
class ViewController : public foundation::Interface {
  public:
    /// The controller's view; the first call makes it: loadView(), then viewDidLoad().
    [[nodiscard]] const std::shared_ptr<View>& view() {
        if (!view_) {
            loadView();
            viewDidLoad();
        }
        return view_;
    }

    /// Makes the view and hands it to setView().
    virtual void loadView() = 0;

    virtual void viewDidLoad() {}

    /// For windows: the view is about to be shown, was laid out, is not shown any more.
    virtual void viewWillAppear() {}

    virtual void viewDidLayout() {}

    virtual void viewDidDisappear() {}

  protected:
    void setView(std::shared_ptr<View> view) { view_ = std::move(view); }

  private:
    std::shared_ptr<View> view_;
};

/// What a window's frame offers.
struct WindowStyle {
    bool isTitled = false;
    bool isClosable = false;
    bool isMiniaturizable = false;
    bool isResizable = false;
    bool operator==(const WindowStyle&) const = default;
};

/// How and when a window gets the memory that it is drawn into.
struct WindowBacking {
    bool isBuffered = true;
    bool isDeferred = true;
    bool operator==(const WindowBacking&) const = default;
};

/// A window of the program. It is hidden at first, and closing it only hides it: neither ends the
/// window or the program. Main thread only.
class Window : public foundation::Interface {
  public:
    virtual void setTitle(std::string title) = 0; ///< UTF-8.

    /// Moves the window to the middle of the screen.
    virtual void center() = 0;

    /// Fills the window with the controller's view, which is made now; the size of the window's
    /// content stays. The controller is not owned and outlives the window; it is told when the view
    /// appears, is laid out and disappears.
    virtual void setContentViewController(ViewController& controller) = 0;

    /// Shows the window and gives it the keyboard; nothing new when it is shown already.
    virtual void makeKeyAndOrderFront() = 0;

    virtual void close() = 0;

    [[nodiscard]] virtual bool isVisible() const = 0;
};

/// Makes windows and what stands in them. Everything made belongs to whoever asked for it and ends
/// before the toolkit. Main thread only.
class Toolkit : public foundation::Interface {
  public:
    /// `contentRect` is the place of the window's content; its origin counts from the lower left
    /// corner of the screen.
    [[nodiscard]] virtual std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) = 0;

    /// An empty view to put others into.
    [[nodiscard]] virtual std::shared_ptr<View> makeView(Rect frame) = 0;
    [[nodiscard]] virtual std::shared_ptr<VerticalStack> makeVerticalStack() = 0;

    /// A label of one line, or one that wraps what is longer.
    [[nodiscard]] virtual std::shared_ptr<Label> makeLabel(std::string text) = 0;
    [[nodiscard]] virtual std::shared_ptr<Label> makeWrappingLabel(std::string text) = 0;

    /// `action` is called from the event loop each time the user presses the button.
    [[nodiscard]] virtual std::shared_ptr<Button> makeButton(std::string title, Action action) = 0;

    /// Puts all these rules into force together. Their views stand in each other already.
    virtual void activateConstraints(const std::vector<LayoutConstraint>& constraints) = 0;
};

} // namespace platform
