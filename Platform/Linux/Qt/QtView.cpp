#include "Platform/Linux/Qt/QtView.h"

#include "Platform/Linux/Qt/QtConstraintLayout.h"

#include <QRectF>
#include <utility>

namespace platform {

QtView::QtView(Rect frame) : QtViewOf(std::make_unique<QWidget>()) {
    // The layout belongs to the widget.
    new QtConstraintLayout(&widget());
    widget().setGeometry(
        QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect());
}

void QtView::addSubview(std::shared_ptr<View> view) {
    QWidget& child = of(*view).widget();
    widget().layout()->addWidget(&child);
    adopt(std::move(view));
}

} // namespace platform
