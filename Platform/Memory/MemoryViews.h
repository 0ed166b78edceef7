#pragma once

#include "Foundation/Interface.h"
#include "Platform/Memory/Journal.h"
#include "Platform/Menu.h"
#include "Platform/Views.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// The state of every view of the in-memory toolkit, whatever its kind. Main thread only.
class MemoryViewNode : foundation::Pinned {
  public:
    using Subviews = std::vector<std::shared_ptr<View>>;

    /// The node of a view of the in-memory toolkit; throws std::bad_cast for any other view.
    [[nodiscard]] static const MemoryViewNode& of(const View& view);

    /// The subviews, rearmost first.
    [[nodiscard]] const Subviews& subviews() const { return subviews_; }

    /// Whether the other view is inside this one, at any depth.
    [[nodiscard]] bool holds(const View& other) const;

    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const {
        return translatesAutoresizingMaskIntoConstraints_;
    }

    /// How many times layoutSubtreeIfNeeded() was called.
    [[nodiscard]] int layoutCount() const { return layoutCount_; }

    /// For windows and tests.
    void setFrame(Rect frame) { frame_ = frame; }

  protected:
    explicit MemoryViewNode(Rect frame) : frame_(frame) {}

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): used by MemoryViewOf
    Rect frame_;
    Subviews subviews_;
    bool translatesAutoresizingMaskIntoConstraints_ = true;
    int layoutCount_ = 0;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

/// The part that all kinds of views share; `Kind` is the interface of one.
template <typename Kind>
class MemoryViewOf : public Kind, public MemoryViewNode {
  public:
    [[nodiscard]] Rect frame() const override { return frame_; }

    void addSubview(std::shared_ptr<View> view) override { subviews_.push_back(std::move(view)); }

    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) override {
        translatesAutoresizingMaskIntoConstraints_ = translates;
    }

    void layoutSubtreeIfNeeded() override { ++layoutCount_; }

  protected:
    explicit MemoryViewOf(Rect frame = {}) : MemoryViewNode(frame) {}
};

/// An empty view. Main thread only.
class MemoryView final : public MemoryViewOf<View> {
  public:
    explicit MemoryView(Rect frame) : MemoryViewOf(frame) {}
};

/// A view whose declared content may change its frame at the next layout. Main thread only.
class MemoryHostingView final : public MemoryViewOf<HostingView> {
  public:
    MemoryHostingView() = default;

    /// The frame from the next layout on.
    void setFrameOfNextLayout(Rect frame) { frameOfNextLayout_ = frame; }

    void layoutSubtreeIfNeeded() override {
        MemoryViewOf::layoutSubtreeIfNeeded();
        setFrame(frameOfNextLayout_.value_or(frame()));
    }

  private:
    std::optional<Rect> frameOfNextLayout_;
};

/// A vertical stack. Its subviews are the arranged ones, topmost first. Main thread only.
class MemoryVerticalStack final : public MemoryViewOf<VerticalStack> {
  public:
    MemoryVerticalStack() = default;

    void setSpacing(double spacing) override { spacing_ = spacing; }

    void setEdgeInsets(EdgeInsets insets) override { edgeInsets_ = insets; }

    void setAlignment(Alignment alignment) override { alignment_ = alignment; }

    void addArrangedSubview(std::shared_ptr<View> view) override { addSubview(std::move(view)); }

    /// None until it is set.
    [[nodiscard]] std::optional<double> spacing() const { return spacing_; }

    [[nodiscard]] EdgeInsets edgeInsets() const { return edgeInsets_; }

    [[nodiscard]] Alignment alignment() const { return alignment_; }

  private:
    std::optional<double> spacing_;
    EdgeInsets edgeInsets_;
    Alignment alignment_ = Alignment::centerX;
};

/// A label that records its attributes. Main thread only.
class MemoryLabel final : public MemoryViewOf<Label>, public Journaled {
  public:
    MemoryLabel(std::string text, bool wraps, std::shared_ptr<Journal> journal)
        : Journaled(std::move(journal)), text_(std::move(text)), wraps_(wraps) {}

    void setText(std::string text) override {
        note("label", text);
        text_ = std::move(text);
    }

    [[nodiscard]] std::string text() const override { return text_; }

    void setFont(SystemFont font) override { font_ = font; }

    void setTextColor(TextColor color) override { textColor_ = color; }

    void setAlignment(TextAlignment alignment) override { alignment_ = alignment; }

    void setEditable(bool isEditable) override { isEditable_ = isEditable; }

    void setSelectable(bool isSelectable) override { isSelectable_ = isSelectable; }

    void setMaximumNumberOfLines(int lines) override { maximumNumberOfLines_ = lines; }

    /// None until it is set.
    [[nodiscard]] std::optional<SystemFont> font() const { return font_; }

    [[nodiscard]] TextColor textColor() const { return textColor_; }

    [[nodiscard]] TextAlignment alignment() const { return alignment_; }

    [[nodiscard]] bool isEditable() const { return isEditable_; }

    [[nodiscard]] bool isSelectable() const { return isSelectable_; }

    /// None without a limit.
    [[nodiscard]] std::optional<int> maximumNumberOfLines() const { return maximumNumberOfLines_; }

    [[nodiscard]] bool wraps() const { return wraps_; }

  private:
    std::string text_;
    std::optional<SystemFont> font_;
    TextColor textColor_ = TextColor::label;
    TextAlignment alignment_ = TextAlignment::natural;
    std::optional<int> maximumNumberOfLines_;
    bool isEditable_ = false;
    bool isSelectable_ = false;
    bool wraps_;
};

/// A button that a test can press. Main thread only.
class MemoryButton final : public MemoryViewOf<Button>, public Journaled {
  public:
    struct AlphaAnimation {
        double alpha = 1;
        std::chrono::milliseconds duration{0};
        bool operator==(const AlphaAnimation&) const = default;
    };

    MemoryButton(std::string title, Action action, std::shared_ptr<Journal> journal)
        : Journaled(std::move(journal)), title_(std::move(title)), action_(std::move(action)) {}

    void setTitle(std::string title) override {
        note("button", title);
        title_ = std::move(title);
    }

    [[nodiscard]] std::string title() const override { return title_; }

    void setBezelStyle(BezelStyle style) override { bezelStyle_ = style; }

    void setWantsLayer(bool wantsLayer) override { wantsLayer_ = wantsLayer; }

    void setHorizontalContentHuggingPriority(double priority) override {
        horizontalContentHuggingPriority_ = priority;
    }

    void animateAlpha(double alpha, std::chrono::milliseconds duration) override {
        note("animate");
        alphaAnimations_.push_back({.alpha = alpha, .duration = duration});
    }

    /// Presses the button, whose action may destroy it.
    void press() const {
        const auto perform = action_.perform;
        perform();
    }

    [[nodiscard]] const std::string& actionName() const { return action_.name; }

    /// None until it is set.
    [[nodiscard]] std::optional<BezelStyle> bezelStyle() const { return bezelStyle_; }

    [[nodiscard]] bool wantsLayer() const { return wantsLayer_; }

    /// None until it is set.
    [[nodiscard]] std::optional<double> horizontalContentHuggingPriority() const {
        return horizontalContentHuggingPriority_;
    }

    /// All animations so far, in order.
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

/// An active constraint. Does not own its views.
struct MemoryLayoutConstraint {
    std::weak_ptr<View> first;
    LayoutConstraint::Anchor anchor = LayoutConstraint::Anchor::top;
    LayoutConstraint::Relation relation = LayoutConstraint::Relation::equal;
    std::weak_ptr<View> second;
    double constant = 0;
};

/// A window. Showing and closing it notify its controller as a real one does. Main thread only.
class MemoryWindow final : public Window, public Journaled {
  public:
    /// The window is in `windows` as long as it exists.
    MemoryWindow(Rect contentRect,
                 WindowStyle style,
                 WindowBacking backing,
                 std::vector<MemoryWindow*>& windows,
                 std::shared_ptr<Journal> journal);
    ~MemoryWindow() override;

    void setTitle(std::string title) override {
        note("title", title);
        title_ = std::move(title);
    }

    void center() override {
        note("center");
        isCentered_ = true;
    }

    void setContentViewController(ViewController& controller) override;
    void makeKeyAndOrderFront() override;
    void close() override;

    [[nodiscard]] bool isVisible() const override { return isVisible_; }

    [[nodiscard]] Rect contentRect() const { return contentRect_; }

    [[nodiscard]] WindowStyle style() const { return style_; }

    [[nodiscard]] WindowBacking backing() const { return backing_; }

    [[nodiscard]] const std::string& title() const { return title_; }

    [[nodiscard]] bool isCentered() const { return isCentered_; }

    /// Null until it is set.
    [[nodiscard]] ViewController* contentViewController() const { return contentViewController_; }

    /// How many times makeKeyAndOrderFront() was called.
    [[nodiscard]] int keyAndFrontCount() const { return keyAndFrontCount_; }

  private:
    Rect contentRect_;
    WindowStyle style_;
    WindowBacking backing_;
    std::vector<MemoryWindow*>& windows_;
    std::string title_;
    ViewController* contentViewController_ = nullptr;
    int keyAndFrontCount_ = 0;
    bool isCentered_ = false;
    bool isVisible_ = false;
};

/// Makes windows and views that record what is done to them. Main thread only.
class MemoryToolkit final : public Toolkit, public Journaled {
  public:
    using Journaled::Journaled;

    [[nodiscard]] std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) override;
    [[nodiscard]] std::shared_ptr<View> makeView(Rect frame) override;
    [[nodiscard]] std::shared_ptr<VerticalStack> makeVerticalStack() override;
    [[nodiscard]] std::shared_ptr<Label> makeLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Label> makeWrappingLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Button> makeButton(std::string title, Action action) override;

    /// It is a fatal error if a first view is not inside its second one.
    void activateConstraints(const std::vector<LayoutConstraint>& constraints) override;

    /// The existing windows, oldest first.
    [[nodiscard]] const std::vector<MemoryWindow*>& windows() const { return windows_; }

    /// The active constraints, one group for each call.
    [[nodiscard]] const std::vector<std::vector<MemoryLayoutConstraint>>& constraintGroups() const {
        return constraintGroups_;
    }

  private:
    std::vector<MemoryWindow*> windows_;
    std::vector<std::vector<MemoryLayoutConstraint>> constraintGroups_;
};

} // namespace platform
