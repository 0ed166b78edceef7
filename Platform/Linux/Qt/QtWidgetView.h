#pragma once

#include "Foundation/Interface.h"
#include "Platform/Views.h"

#include <QWidget>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// What every view of this toolkit has: a widget, and the views that were put into it. Main thread
/// only.
class QtWidgetView : foundation::Pinned {
  public:
    explicit QtWidgetView(std::unique_ptr<QWidget> widget);
    virtual ~QtWidgetView();

    /// The view as one of this toolkit; another toolkit's is a programming error and stops the
    /// program.
    [[nodiscard]] static QtWidgetView& of(View& view);

    /// Lives as long as the view.
    [[nodiscard]] QWidget& widget() const { return *widget_; }

    /// The widget's place, counted from its container's lower left corner.
    [[nodiscard]] Rect widgetFrame() const;

    /// Makes the view's widget a child of this one's, and keeps the view.
    void adopt(std::shared_ptr<View> view);

    /// Lays out the widget and everything in it now, whether it is visible or not.
    void layOutNow() const;

    /// Has sizes asked for anew at every level inside: while a widget is hidden, changes deep
    /// inside do not come up by themselves.
    static void forgetSizesInside(const QWidget& widget);

  private:
    std::unique_ptr<QWidget> widget_;
    std::vector<std::shared_ptr<View>> subviews_;
};

/// A view, stack, label or button (the interface) on a widget.
template <typename Interface>
class QtViewOf : public Interface, public QtWidgetView {
  public:
    explicit QtViewOf(std::unique_ptr<QWidget> widget) : QtWidgetView(std::move(widget)) {}

    [[nodiscard]] Rect frame() const override { return widgetFrame(); }

    void addSubview(std::shared_ptr<View> view) override { adopt(std::move(view)); }

    /// Says nothing new here: a view follows its constraints as soon as it has some, and keeps its
    /// frame without.
    void setTranslatesAutoresizingMaskIntoConstraints(bool /*translates*/) override {}

    void layoutSubtreeIfNeeded() override { layOutNow(); }
};

} // namespace platform
