#include "Platform/Linux/Qt/QtViews.h"

#include "Foundation/FatalError.h"

#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPainter>
#include <QRectF>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

namespace {

int pixels(double points) {
    return static_cast<int>(std::lround(points));
}

/// Linear light of an sRGB channel, both 0 to 1.
double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return (0.2126 * linear(color.redF())) + (0.7152 * linear(color.greenF())) +
           (0.0722 * linear(color.blueF()));
}

QColor blend(const QColor& background, const QColor& color, float opacity) {
    const auto mix = [opacity](float below, float above) {
        return below + ((above - below) * opacity);
    };
    return QColor::fromRgbF(mix(background.redF(), color.redF()),
                            mix(background.greenF(), color.greenF()),
                            mix(background.blueF(), color.blueF()));
}

} // namespace

QWidget& widgetOf(View& view) {
    return dynamic_cast<QtWidgetView&>(view).widget();
}

Rect QtWidgetView::frameOf(const QWidget& widget) {
    const QRectF frame = widget.geometry();
    const QWidget* const container = widget.parentWidget();
    const double y = container == nullptr ? frame.y() : container->height() - frame.bottom();
    return {{frame.x(), y}, {frame.width(), frame.height()}};
}

/// Layouts of hidden widgets are not updated by Qt before the widgets are shown.
void QtWidgetView::layOutNow(QWidget& widget) {
    QLayout* const layout = widget.layout();
    if (layout == nullptr) {
        return;
    }
    layout->setGeometry(widget.rect());
    for (int index = 0; index < layout->count(); ++index) {
        if (QWidget* const child = layout->itemAt(index)->widget()) {
            layOutNow(*child);
        }
    }
}

void QtWidgetView::adopt(std::shared_ptr<View> view) {
    QWidget& child = widgetOf(*view);
    child.setParent(&widget());
    child.show();
    subviews_.push_back(std::move(view));
}

void QtWidgetView::releaseSubviews() {
    for (const std::shared_ptr<View>& view : subviews_) {
        widgetOf(*view).setParent(nullptr);
    }
}

QtView::QtView(Rect frame) {
    cell_.setContentsMargins(0, 0, 0, 0);
    widget_.setGeometry(
        QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect());
}

QtVerticalStack::QtVerticalStack() {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(0);
    layout_.addStretch(1);
}

void QtVerticalStack::setSpacing(double spacing) {
    layout_.setSpacing(pixels(spacing));
}

void QtVerticalStack::setEdgeInsets(EdgeInsets insets) {
    layout_.setContentsMargins(
        pixels(insets.leading), pixels(insets.top), pixels(insets.trailing), pixels(insets.bottom));
}

void QtVerticalStack::setAlignment(Alignment alignment) {
    alignment_ = alignment == Alignment::centerX ? Qt::AlignHCenter : Qt::AlignLeft;
    for (int index = 0; index < layout_.count(); ++index) {
        layout_.itemAt(index)->setAlignment(alignment_);
    }
    layout_.invalidate();
}

void QtVerticalStack::addArrangedSubview(std::shared_ptr<View> view) {
    // Above the stretch, which is the last item.
    layout_.insertWidget(layout_.count() - 1, &widgetOf(*view), 0, alignment_);
    adopt(std::move(view));
}

QSize QtTextLabel::sizeHint() const {
    ensurePolished();
    return fontMetrics().size(0, text());
}

int QtTextLabel::heightForWidth(int width) const {
    const int height = QLabel::heightForWidth(width);
    return maximumNumberOfLines == 0
               ? height
               : std::min(height, maximumNumberOfLines * fontMetrics().lineSpacing());
}

void QtTextLabel::paintEvent(QPaintEvent* /*event*/) {
    const auto aligned = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    QPainter painter(this);
    // Chosen at each painting, the colour follows the palette.
    painter.setPen(textColor(color, palette()));
    style()->drawItemText(&painter,
                          rect(),
                          aligned | (wordWrap() ? Qt::TextWordWrap : 0),
                          palette(),
                          isEnabled(),
                          text());
}

QtLabel::QtLabel(std::string text, Wrapping wrapping) {
    widget_.setTextFormat(Qt::PlainText);
    if (wrapping == Wrapping::words) {
        widget_.setWordWrap(true);
        // As wide as its text where there is space, it does not ask its containers for any.
        widget_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    setAlignment(TextAlignment::natural);
    setText(std::move(text));
}

void QtLabel::setText(std::string text) {
    widget_.setText(QString::fromStdString(text));
}

std::string QtLabel::text() const {
    return widget_.text().toStdString();
}

void QtLabel::setFont(SystemFont font) {
    // The family stays unset, so the label follows the system's.
    QFont sizeAndWeight;
    sizeAndWeight.setPixelSize(pixels(font.size));
    sizeAndWeight.setBold(font.weight == FontWeight::bold);
    widget_.setFont(sizeAndWeight);
}

void QtLabel::setTextColor(TextColor color) {
    widget_.color = color;
    widget_.update();
}

void QtLabel::setAlignment(TextAlignment alignment) {
    widget_.setAlignment(
        Qt::AlignTop | (alignment == TextAlignment::center ? Qt::AlignHCenter : Qt::AlignLeading));
}

void QtLabel::setEditable(bool isEditable) {
    if (isEditable) {
        foundation::fatalError("labels cannot be edited");
    }
}

void QtLabel::setSelectable(bool isSelectable) {
    if (isSelectable) {
        foundation::fatalError("the text of labels cannot be selected");
    }
}

void QtLabel::setMaximumNumberOfLines(int lines) {
    widget_.maximumNumberOfLines = lines;
    widget_.updateGeometry();
}

QColor textColor(TextColor color, const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    const QColor background = palette.color(QPalette::Window);
    if (color == TextColor::secondaryLabel) {
        for (const float opacity : {0.6F, 0.65F, 0.7F, 0.75F, 0.8F, 0.85F, 0.9F, 0.95F}) {
            const QColor fainter = blend(background, text, opacity);
            if (contrast(fainter, background) >= 4.5) {
                return fainter;
            }
        }
    }
    return text;
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

void QtPushButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QPushButton::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        click();
    }
}

QtButton::QtButton(std::string title, Action action)
    : opacity_(new QGraphicsOpacityEffect), animation_(opacity_, "opacity") {
    setTitle(std::move(title));
    opacity_->setOpacity(1);
    widget_.setGraphicsEffect(opacity_);
    QObject::connect(&widget_, &QPushButton::clicked, &widget_, std::move(action.perform));
}

void QtButton::setTitle(std::string title) {
    title_ = std::move(title);
    // Qt reads a lone & as the mark of a mnemonic.
    widget_.setText(QString::fromStdString(title_).replace(u'&', QStringLiteral("&&")));
}

std::string QtButton::title() const {
    return title_;
}

void QtButton::animateAlpha(double alpha, std::chrono::milliseconds duration) {
    // Without a start value an animation begins at the present one.
    animation_.stop();
    animation_.setEndValue(alpha);
    animation_.setDuration(static_cast<int>(duration.count()));
    animation_.start();
}

} // namespace platform
