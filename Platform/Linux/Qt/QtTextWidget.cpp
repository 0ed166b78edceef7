#include "Platform/Linux/Qt/QtTextWidget.h"

#include "Platform/Linux/Qt/QtTextColor.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace platform {

namespace {

/// Wider than any screen, and still exact in the layout's fixed-point numbers.
constexpr qreal endlessWidth = 1 << 20;

int roundedUp(qreal length) {
    return static_cast<int>(std::ceil(length));
}

} // namespace

QtTextWidget::QtTextWidget(Wrapping wrapping)
    : maximumNumberOfLines_(wrapping == Wrapping::oneLine ? 1 : 0) {
    setTextFormat(Qt::PlainText);
    setWordWrap(wrapping == Wrapping::wrapped);
    setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    resize(0, 0);
}

void QtTextWidget::setMaximumNumberOfLines(int lines) {
    maximumNumberOfLines_ = lines;
    updateGeometry();
    update();
}

void QtTextWidget::setTextColor(TextColor color) {
    color_ = color;
    update();
}

QSize QtTextWidget::sizeHint() const {
    ensurePolished();
    const QSizeF size = layOut(endlessWidth, 0, nullptr);
    return {roundedUp(size.width()), roundedUp(size.height())};
}

QSize QtTextWidget::minimumSizeHint() const {
    const QSize natural = sizeHint();
    constexpr int widthInLineHeights = 4;
    return wordWrap() ? QSize(std::min(natural.width(), natural.height() * widthInLineHeights),
                              natural.height())
                      : natural;
}

int QtTextWidget::heightForWidth(int width) const {
    ensurePolished();
    return roundedUp(layOut(width, 0, nullptr).height());
}

void QtTextWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(platform::textColor(color_, palette()));
    const qreal textHeight = layOut(width(), 0, nullptr).height();
    layOut(width(), std::floor(std::max(0.0, height() - textHeight) / 2), &painter);
}

QSizeF QtTextWidget::layOut(qreal width, qreal top, QPainter* painter) const {
    const QString lines = text().replace(u'\n', QChar::LineSeparator);
    QTextOption option(alignment() & Qt::AlignHorizontal_Mask);
    option.setTextDirection(layoutDirection());
    option.setWrapMode(wordWrap() ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                  : QTextOption::ManualWrap);

    QTextLayout layout(lines, font(), this);
    layout.setTextOption(option);
    layout.beginLayout();
    QSizeF size(0, 0);
    int count = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        ++count;
        const auto end = line.textStart() + line.textLength();
        const bool isLast = maximumNumberOfLines_ > 0 && count == maximumNumberOfLines_;
        const bool isCut = (isLast && end < lines.size()) || line.naturalTextWidth() > width;
        size = {std::max(size.width(), std::min(line.naturalTextWidth(), width)),
                size.height() + line.height()};
        if (painter != nullptr) {
            const QPointF position(0, top + size.height() - line.height());
            if (isCut) {
                const QString rest = isLast ? lines.mid(line.textStart())
                                            : lines.mid(line.textStart(), line.textLength());
                QTextLayout cut(QFontMetricsF(font(), this)
                                    .elidedText(QString(rest).replace(QChar::LineSeparator, u' '),
                                                Qt::ElideRight,
                                                width),
                                font(),
                                this);
                option.setWrapMode(QTextOption::ManualWrap);
                cut.setTextOption(option);
                cut.beginLayout();
                cut.createLine().setLineWidth(width);
                cut.endLayout();
                cut.draw(painter, position);
            } else {
                line.draw(painter, position);
            }
        }
        if (isLast) {
            break;
        }
    }
    layout.endLayout();
    return size;
}

} // namespace platform
