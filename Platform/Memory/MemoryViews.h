#pragma once

#include "Foundation/Interface.h"
#include "Platform/Menu.h"
#include "Platform/Views.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// What every view of the in-memory toolkit, whatever its kind, tells about itself. Main thread
/// only.
class MemoryViewNode : foundation::Pinned {
  public:
    using Subviews = std::vector<std::shared_ptr<View>>;

    /// The node of a view of the in-memory toolkit; any other view throws std::bad_cast.
    [[nodiscard]] static const MemoryViewNode& of(const View& view);

    /// What was put into the view, the rearmost first. The view keeps it alive.
    [[nodiscard]] const Subviews& subviews() const { return subviews_; }

    /// Whether the other view stands in this one, at any depth.
    [[nodiscard]] bool holds(const View& other) const;

    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const {
        return translatesAutoresizingMaskIntoConstraints_;
    }

    /// How often the view was told to lay out what is inside.
    [[nodiscard]] int layoutCount() const { return layoutCount_; }

    /// For windows and for tests, which give a view its place.
    void setFrame(Rect frame) { frame_ = frame; }

  protected:
    explicit MemoryViewNode(Rect frame) : frame_(frame) {}

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): the view's other half
    Rect frame_;
    Subviews subviews_;
    bool translatesAutoresizingMaskIntoConstraints_ = true;
    int layoutCount_ = 0;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

/// The part that is the same in every kind of view, `Kind` being the interface of one.
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

/// An empty view in memory. Main thread only.
class MemoryView final : public MemoryViewOf<View> {
  public:
    explicit MemoryView(Rect frame) : MemoryViewOf(frame) {}
};

/// A view in memory that stands for declared content, which takes its room when it is laid out.
/// Main thread only.
class MemoryHostingView final : public MemoryViewOf<HostingView> {
  public:
    MemoryHostingView() = default;

    /// The frame that the view has from its next layout on.
    void setFrameOfNextLayout(Rect frame) { frameOfNextLayout_ = frame; }

    void layoutSubtreeIfNeeded() override {
        MemoryViewOf::layoutSubtreeIfNeeded();
        setFrame(frameOfNextLayout_.value_or(frame()));
    }

  private:
    std::optional<Rect> frameOfNextLayout_;
};

/// A vertical stack in memory. Its subviews are the arranged ones, the topmost first. Main thread
/// only.
class MemoryVerticalStack final : public MemoryViewOf<VerticalStack> {
  public:
    MemoryVerticalStack() = default;

    void setSpacing(double spacing) override { spacing_ = spacing; }

    void setEdgeInsets(EdgeInsets insets) override { edgeInsets_ = insets; }

    void setAlignment(Alignment alignment) override { alignment_ = alignment; }

    void addArrangedSubview(std::shared_ptr<View> view) override { addSubview(std::move(view)); }

    /// None while nobody has chosen one.
    [[nodiscard]] std::optional<double> spacing() const { return spacing_; }

    [[nodiscard]] EdgeInsets edgeInsets() const { return edgeInsets_; }

    [[nodiscard]] Alignment alignment() const { return alignment_; }

  private:
    std::optional<double> spacing_;
    EdgeInsets edgeInsets_;
    Alignment alignment_ = Alignment::centerX;
};

/// A label in memory, which remembers how it was to look. Main thread only.
class MemoryLabel final : public MemoryViewOf<Label> {
  public:
    MemoryLabel(std::string text, bool wraps) : text_(std::move(text)), wraps_(wraps) {}

    void setText(std::string text) override { text_ = std::move(text); }

    [[nodiscard]] std::string text() const override { return text_; }

    void setFont(SystemFont font) override { font_ = font; }

    void setTextColor(TextColor color) override { textColor_ = color; }

    void setAlignment(TextAlignment alignment) override { alignment_ = alignment; }

    void setEditable(bool isEditable) override { isEditable_ = isEditable; }

    void setSelectable(bool isSelectable) override { isSelectable_ = isSelectable; }

    void setMaximumNumberOfLines(int lines) override { maximumNumberOfLines_ = lines; }

    /// None while nobody has chosen a font.
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

/// A button in memory, which a test can press. Main thread only.
class MemoryButton final : public MemoryViewOf<Button> {
  public:
    struct AlphaAnimation {
        double alpha = 1;
        std::chrono::milliseconds duration{0};
        bool operator==(const AlphaAnimation&) const = default;
    };

    MemoryButton(std::string title, Action action)
        : title_(std::move(title)), action_(std::move(action)) {}

    void setTitle(std::string title) override { title_ = std::move(title); }

    [[nodiscard]] std::string title() const override { return title_; }

    void setBezelStyle(BezelStyle style) override { bezelStyle_ = style; }

    void setWantsLayer(bool wantsLayer) override { wantsLayer_ = wantsLayer; }

    void setHorizontalContentHuggingPriority(double priority) override {
        horizontalContentHuggingPriority_ = priority;
    }

    void animateAlpha(double alpha, std::chrono::milliseconds duration) override {
        alphaAnimations_.push_back({.alpha = alpha, .duration = duration});
    }

    /// The user presses the button, which may be the end of it.
    void press() const {
        const auto perform = action_.perform;
        perform();
    }

    [[nodiscard]] const std::string& actionName() const { return action_.name; }

    /// None while nobody has chosen one.
    [[nodiscard]] std::optional<BezelStyle> bezelStyle() const { return bezelStyle_; }

    [[nodiscard]] bool wantsLayer() const { return wantsLayer_; }

    /// None while nobody has chosen one.
    [[nodiscard]] std::optional<double> horizontalContentHuggingPriority() const {
        return horizontalContentHuggingPriority_;
    }

    /// All animations so far, the first one first.
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

/// A constraint in force, which leaves its views to their owners.
struct MemoryLayoutConstraint {
    std::weak_ptr<View> first;
    LayoutConstraint::Anchor anchor = LayoutConstraint::Anchor::top;
    LayoutConstraint::Relation relation = LayoutConstraint::Relation::equal;
    std::weak_ptr<View> second;
    double constant = 0;
};

/// A window in memory. Showing and closing it do what the user would see and what the user would
/// do. Main thread only.
class MemoryWindow final : public Window {
  public:
    /// The window stands in `windows` for as long as it exists.
    MemoryWindow(Rect contentRect,
                 WindowStyle style,
                 WindowBacking backing,
                 std::vector<MemoryWindow*>& windows);
    ~MemoryWindow() override;

    void setTitle(std::string title) override { title_ = std::move(title); }

    void center() override { isCentered_ = true; }

    void setContentViewController(ViewController& controller) override;
    void makeKeyAndOrderFront() override;
    void close() override;

    [[nodiscard]] bool isVisible() const override { return isVisible_; }

    [[nodiscard]] Rect contentRect() const { return contentRect_; }

    [[nodiscard]] WindowStyle style() const { return style_; }

    [[nodiscard]] WindowBacking backing() const { return backing_; }

    [[nodiscard]] const std::string& title() const { return title_; }

    [[nodiscard]] bool isCentered() const { return isCentered_; }

    /// Null while the window has no content.
    [[nodiscard]] ViewController* contentViewController() const { return contentViewController_; }

    /// How often the window was brought to the front and given the keyboard.
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

/// A toolkit whose windows and views exist in memory alone and tell what was done to them. Main
/// thread only.
class MemoryToolkit final : public Toolkit {
  public:
    [[nodiscard]] std::unique_ptr<Window>
    makeWindow(Rect contentRect, WindowStyle style, WindowBacking backing) override;
    [[nodiscard]] std::shared_ptr<View> makeView(Rect frame) override;
    [[nodiscard]] std::shared_ptr<VerticalStack> makeVerticalStack() override;
    [[nodiscard]] std::shared_ptr<Label> makeLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Label> makeWrappingLabel(std::string text) override;
    [[nodiscard]] std::shared_ptr<Button> makeButton(std::string title, Action action) override;

    /// A constraint between views that do not stand in each other is a fatal error.
    void activateConstraints(const std::vector<LayoutConstraint>& constraints) override;

    /// The windows that exist, the oldest first.
    [[nodiscard]] const std::vector<MemoryWindow*>& windows() const { return windows_; }

    /// What was put into force, one group for each call.
    [[nodiscard]] const std::vector<std::vector<MemoryLayoutConstraint>>& constraintGroups() const {
        return constraintGroups_;
    }

  private:
    std::vector<MemoryWindow*> windows_;
    std::vector<std::vector<MemoryLayoutConstraint>> constraintGroups_;
};

} // namespace platform
