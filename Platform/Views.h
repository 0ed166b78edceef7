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

/// A rectangle in a window. A view owns its subviews. Main thread only.
class View : public foundation::Interface {
  public:
    /// In points, as of the last layout.
    [[nodiscard]] virtual Rect frame() const = 0;

    /// Adds a view of the same toolkit, in front of the earlier ones.
    virtual void addSubview(std::shared_ptr<View> view) = 0;

    /// Whether fixed margins to its container determine the view's frame, as they do at first,
    /// instead of constraints.
    virtual void setTranslatesAutoresizingMaskIntoConstraints(bool translates) = 0;

    /// Lays out everything inside now.
    virtual void layoutSubtreeIfNeeded() = 0;
};

/// A view whose content is declared by the system's own means.
class HostingView : public View {};

/// An arrangement of views from top to bottom.
class VerticalStack : public View {
  public:
    enum class Alignment : std::uint8_t { leading, centerX };

    virtual void setSpacing(double spacing) = 0;
    virtual void setEdgeInsets(EdgeInsets insets) = 0;
    /// The horizontal alignment of the arranged views; centerX at first.
    virtual void setAlignment(Alignment alignment) = 0;
    virtual void addArrangedSubview(std::shared_ptr<View> view) = 0;
};

enum class TextAlignment : std::uint8_t { natural, center };

/// A text that the user can neither edit nor select, unless allowed to.
class Label : public View {
  public:
    virtual void setText(std::string text) = 0; ///< UTF-8.
    [[nodiscard]] virtual std::string text() const = 0;
    virtual void setFont(SystemFont font) = 0;
    virtual void setTextColor(TextColor color) = 0;
    virtual void setAlignment(TextAlignment alignment) = 0;
    virtual void setEditable(bool isEditable) = 0;
    virtual void setSelectable(bool isSelectable) = 0;
    /// For a wrapping label; text that does not fit is cut off.
    virtual void setMaximumNumberOfLines(int lines) = 0;
};

/// A push button.
class Button : public View {
  public:
    enum class BezelStyle : std::uint8_t { rounded };

    virtual void setTitle(std::string title) = 0; ///< UTF-8.
    [[nodiscard]] virtual std::string title() const = 0;
    virtual void setBezelStyle(BezelStyle style) = 0;
    /// Whether the button gets a layer of its own, which animation needs.
    virtual void setWantsLayer(bool wantsLayer) = 0;

    /// How strongly the button resists being stretched, from 1 to 1000.
    virtual void setHorizontalContentHuggingPriority(double priority) = 0;

    /// Fades the button to that opacity, 0 to 1, over `duration`.
    virtual void animateAlpha(double alpha, std::chrono::milliseconds duration) = 0;
};

/// A constraint on the place or size of a view: two equal anchors, or a minimum for one.
struct LayoutConstraint {
    enum class Anchor : std::uint8_t { top, leading, trailing, bottom, centerX, width };
    enum class Relation : std::uint8_t { equal, greaterThanOrEqual };

    std::shared_ptr<View> first;
    Anchor anchor = Anchor::top;
    Relation relation = Relation::equal;
    /// The view whose same anchor the first one equals; null for a minimum.
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

/// Makes the view that fills a window and is notified of what happens to it. Main thread only.
class ViewController : public foundation::Interface {
  public:
    /// The controller's view, made by the first call: loadView(), then viewDidLoad().
    [[nodiscard]] const std::shared_ptr<View>& view() {
        if (!view_) {
            loadView();
            viewDidLoad();
        }
        return view_;
    }

    /// Makes the view and passes it to setView().
    virtual void loadView() = 0;

    virtual void viewDidLoad() {}

    /// Called by windows: the view is about to be shown, was laid out, is no longer shown.
    virtual void viewWillAppear() {}

    virtual void viewDidLayout() {}

    virtual void viewDidDisappear() {}

  protected:
    void setView(std::shared_ptr<View> view) { view_ = std::move(view); }

  private:
    std::shared_ptr<View> view_;
};

/// A window's title bar and its controls.
struct WindowStyle {
    bool isTitled = false;
    bool isClosable = false;
    bool isMiniaturizable = false;
    bool isResizable = false;
    bool operator==(const WindowStyle&) const = default;
};

/// How and when a window gets its backing store.
struct WindowBacking {
    bool isBuffered = true;
    bool isDeferred = true;
    bool operator==(const WindowBacking&) const = default;
};

/// A window of the program, hidden at first. Closing it only hides it. Main thread only.
class Window : public foundation::Interface {
  public:
    virtual void setTitle(std::string title) = 0; ///< UTF-8.

    /// Moves the window to the middle of the screen.
    virtual void center() = 0;

    /// Fills the window, whose size stays, with the controller's view, which is made now. The
    /// controller is not owned and outlives the window; it is notified when the view appears, is
    /// laid out and disappears.
    virtual void setContentViewController(ViewController& controller) = 0;

    /// Shows the window in front, with the keyboard focus.
    virtual void makeKeyAndOrderFront() = 0;

    virtual void close() = 0;

    [[nodiscard]] virtual bool isVisible() const = 0;
};

/// Makes windows and views. The caller owns what it makes and destroys it before the toolkit. Main
/// thread only.
class Toolkit : public foundation::Interface {
  public:
    /// `contentRect` is the rectangle of the window's content; the origin is the lower left corner
    /// of the screen.
    [[nodiscard]] virtual std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) = 0;

    /// An empty view, as a container.
    [[nodiscard]] virtual std::shared_ptr<View> makeView(Rect frame) = 0;
    [[nodiscard]] virtual std::shared_ptr<VerticalStack> makeVerticalStack() = 0;

    /// A label of one line, or one that wraps.
    [[nodiscard]] virtual std::shared_ptr<Label> makeLabel(std::string text) = 0;
    [[nodiscard]] virtual std::shared_ptr<Label> makeWrappingLabel(std::string text) = 0;

    /// `action` is called from the event loop each time the user presses the button.
    [[nodiscard]] virtual std::shared_ptr<Button> makeButton(std::string title, Action action) = 0;

    /// Activates the constraints. A first view is already inside its second one.
    virtual void activateConstraints(const std::vector<LayoutConstraint>& constraints) = 0;
};

} // namespace platform
