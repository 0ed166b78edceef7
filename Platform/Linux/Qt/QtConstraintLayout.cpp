#include "Platform/Linux/Qt/QtConstraintLayout.h"

#include "Foundation/FatalError.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace platform {

QtConstraintLayout::QtConstraintLayout(QWidget* container) : QLayout(container) {
    setContentsMargins(0, 0, 0, 0);
}

QtConstraintLayout::~QtConstraintLayout() = default;

void QtConstraintLayout::tie(const QWidget& widget, LayoutConstraint::Anchor anchor) {
    const auto place = std::find_if(places_.begin(), places_.end(), [&](const Place& candidate) {
        return candidate.item->widget() == &widget;
    });
    if (place == places_.end()) {
        foundation::fatalError("a layout constraint for a view that does not stand in the other");
    }
    switch (anchor) {
    case LayoutConstraint::Anchor::top:
        place->top = true;
        break;
    case LayoutConstraint::Anchor::bottom:
        place->bottom = true;
        break;
    case LayoutConstraint::Anchor::leading:
        place->leading = true;
        break;
    case LayoutConstraint::Anchor::trailing:
        place->trailing = true;
        break;
    case LayoutConstraint::Anchor::centerX:
        place->centerX = true;
        break;
    case LayoutConstraint::Anchor::width:
        place->leading = true;
        place->trailing = true;
        break;
    }
    invalidate();
}

void QtConstraintLayout::addItem(QLayoutItem* item) {
    Place place;
    place.item.reset(item);
    place.frame = item->widget()->geometry();
    places_.push_back(std::move(place));
}

QLayoutItem* QtConstraintLayout::itemAt(int index) const {
    const auto position = static_cast<std::size_t>(index);
    return position < places_.size() ? places_[position].item.get() : nullptr;
}

QLayoutItem* QtConstraintLayout::takeAt(int index) {
    if (static_cast<std::size_t>(index) >= places_.size()) {
        return nullptr;
    }
    const auto place = places_.begin() + index;
    QLayoutItem* const item = place->item.release();
    places_.erase(place);
    return item;
}

int QtConstraintLayout::count() const {
    return static_cast<int>(places_.size());
}

QSize QtConstraintLayout::sizeHint() const {
    QSize size(0, 0);
    for (const Place& place : places_) {
        const int width = naturalWidth(place);
        size = size.expandedTo({place.isTiedAcross() ? width : 0,
                                place.isTiedDown() ? naturalHeight(place, width) : 0});
    }
    return size;
}

QSize QtConstraintLayout::minimumSize() const {
    QSize size(0, 0);
    for (const Place& place : places_) {
        const QSize minimum = place.item->minimumSize();
        size = size.expandedTo({place.isTiedAcross() ? minimum.width() : 0,
                                place.isTiedDown() ? minimum.height() : 0});
    }
    return size;
}

bool QtConstraintLayout::hasHeightForWidth() const {
    return std::any_of(places_.begin(), places_.end(), [](const Place& place) {
        return place.isTiedDown() && place.item->hasHeightForWidth();
    });
}

int QtConstraintLayout::heightForWidth(int width) const {
    int height = 0;
    for (const Place& place : places_) {
        if (place.isTiedDown()) {
            height = std::max(height, naturalHeight(place, widthIn(place, width)));
        }
    }
    return height;
}

void QtConstraintLayout::setGeometry(const QRect& rectangle) {
    QLayout::setGeometry(rectangle);
    const Qt::LayoutDirection direction = parentWidget()->layoutDirection();
    for (const Place& place : places_) {
        const QRect inside = rectangleIn(place, rectangle.size()).translated(rectangle.topLeft());
        place.item->setGeometry(QStyle::visualRect(direction, rectangle, inside));
    }
}

int QtConstraintLayout::naturalWidth(const Place& place) {
    return std::max(place.item->sizeHint().width(), place.item->minimumSize().width());
}

int QtConstraintLayout::widthIn(const Place& place, int containerWidth) {
    if (place.leading && place.trailing) {
        return containerWidth;
    }
    if (!place.isTiedAcross() && !place.frame.isEmpty()) {
        return place.frame.width();
    }
    return std::min(naturalWidth(place), containerWidth);
}

int QtConstraintLayout::naturalHeight(const Place& place, int width) {
    return place.item->hasHeightForWidth()
               ? place.item->heightForWidth(width)
               : std::max(place.item->sizeHint().height(), place.item->minimumSize().height());
}

QRect QtConstraintLayout::rectangleIn(const Place& place, QSize container) {
    const int width = widthIn(place, container.width());
    int x = place.frame.x();
    if (place.leading) {
        x = 0;
    } else if (place.trailing) {
        x = container.width() - width;
    } else if (place.centerX) {
        x = (container.width() - width) / 2;
    }

    int height = naturalHeight(place, width);
    if (place.top && place.bottom) {
        height = container.height();
    } else if (!place.isTiedDown() && !place.frame.isEmpty()) {
        height = place.frame.height();
    }
    int y = container.height() - place.frame.y() - height;
    if (place.top) {
        y = 0;
    } else if (place.bottom) {
        y = container.height() - height;
    }
    return {x, y, width, height};
}

} // namespace platform
