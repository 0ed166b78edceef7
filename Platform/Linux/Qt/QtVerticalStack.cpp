#include "Platform/Linux/Qt/QtVerticalStack.h"

#include <QVBoxLayout>
#include <cmath>
#include <utility>

namespace platform {

namespace {

int pixels(double points) {
    return static_cast<int>(std::lround(points));
}

} // namespace

QtVerticalStack::QtVerticalStack()
    : QtViewOf(std::make_unique<QWidget>()), layout_(new QVBoxLayout(&widget())) {
    widget().resize(0, 0);
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);
    layout_->addStretch(1);
}

void QtVerticalStack::setSpacing(double spacing) {
    layout_->setSpacing(pixels(spacing));
}

void QtVerticalStack::setEdgeInsets(EdgeInsets insets) {
    const bool isRightToLeft = widget().layoutDirection() == Qt::RightToLeft;
    layout_->setContentsMargins(pixels(isRightToLeft ? insets.trailing : insets.leading),
                                pixels(insets.top),
                                pixels(isRightToLeft ? insets.leading : insets.trailing),
                                pixels(insets.bottom));
}

void QtVerticalStack::setAlignment(Alignment alignment) {
    alignment_ = alignment == Alignment::centerX ? Qt::AlignHCenter : Qt::AlignLeading;
    for (int index = 0; index < layout_->count(); ++index) {
        QLayoutItem* const item = layout_->itemAt(index);
        if (item->widget() != nullptr) {
            item->setAlignment(alignment_);
        }
    }
    layout_->invalidate();
}

void QtVerticalStack::addArrangedSubview(std::shared_ptr<View> view) {
    // The last item is the room below all views.
    layout_->insertWidget(layout_->count() - 1, &of(*view).widget(), 0, alignment_);
    adopt(std::move(view));
}

} // namespace platform
