#include "Platform/Linux/Qt/QtWidgetView.h"

#include "Foundation/FatalError.h"

#include <QLayout>

namespace platform {

namespace {

/// A hidden widget hears of its new size only when it is shown, so its layout is told here.
void layOutInside(const QWidget& widget) {
    QLayout* const layout = widget.layout();
    if (layout == nullptr) {
        return;
    }
    layout->setGeometry(widget.rect());
    for (int index = 0; index < layout->count(); ++index) {
        if (const QWidget* const child = layout->itemAt(index)->widget()) {
            layOutInside(*child);
        }
    }
}

} // namespace

QtWidgetView::QtWidgetView(std::unique_ptr<QWidget> widget) : widget_(std::move(widget)) {}

QtWidgetView::~QtWidgetView() {
    // A widget deletes its children, but these belong to their own views.
    for (const std::shared_ptr<View>& view : subviews_) {
        QWidget& child = of(*view).widget();
        if (child.parentWidget() == widget_.get()) {
            child.setParent(nullptr);
        }
    }
}

QtWidgetView& QtWidgetView::of(View& view) {
    auto* const widgetView = dynamic_cast<QtWidgetView*>(&view);
    if (widgetView == nullptr) {
        foundation::fatalError("a view of another toolkit");
    }
    return *widgetView;
}

Rect QtWidgetView::widgetFrame() const {
    const QRect geometry = widget_->geometry();
    const QWidget* const container = widget_->parentWidget();
    const int bottom = geometry.y() + geometry.height();
    const int distance = container == nullptr ? geometry.y() : container->height() - bottom;
    return {.origin = {.x = static_cast<double>(geometry.x()), .y = static_cast<double>(distance)},
            .size = {.width = static_cast<double>(geometry.width()),
                     .height = static_cast<double>(geometry.height())}};
}

void QtWidgetView::adopt(std::shared_ptr<View> view) {
    QWidget& child = of(*view).widget();
    child.setParent(widget_.get());
    child.show();
    subviews_.push_back(std::move(view));
}

void QtWidgetView::layOutNow() const {
    forgetSizesInside(*widget_);
    layOutInside(*widget_);
}

void QtWidgetView::forgetSizesInside(const QWidget& widget) {
    const QLayout* const layout = widget.layout();
    for (int index = 0; layout != nullptr && index < layout->count(); ++index) {
        if (QWidget* const child = layout->itemAt(index)->widget()) {
            forgetSizesInside(*child);
            child->updateGeometry();
        }
    }
}

} // namespace platform
