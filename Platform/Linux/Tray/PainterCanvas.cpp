#include "Platform/Linux/Tray/PainterCanvas.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QString>

namespace platform {

namespace {

/// A font's measures are whole pixels, so they are taken from a large one and scaled down.
constexpr int referencePixelSize = 512;

QFont referenceFont(FontWeight weight) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(referencePixelSize);
    font.setBold(weight == FontWeight::bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QColor painted(Canvas::Color color) {
    return color == Canvas::Color::white ? Qt::white : Qt::transparent;
}

} // namespace

void PainterCanvas::fill(Rect rect, Color color) {
    painter_.save();
    painter_.setCompositionMode(QPainter::CompositionMode_Source);
    painter_.fillRect(QRectF(rect.origin.x,
                             height_ - rect.origin.y - rect.size.height,
                             rect.size.width,
                             rect.size.height),
                      painted(color));
    painter_.restore();
}

Size PainterCanvas::measure(std::string_view text, SystemFont font) {
    const QFontMetricsF metrics(referenceFont(font.weight));
    const double scale = font.size / referencePixelSize;
    return {metrics.horizontalAdvance(fromUtf8(text)) * scale, metrics.height() * scale};
}

void PainterCanvas::drawText(std::string_view text, Point at, SystemFont font, Color color) {
    const QFont reference = referenceFont(font.weight);
    const double scale = font.size / referencePixelSize;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addText(0, -QFontMetricsF(reference).descent(), reference, fromUtf8(text));
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.translate(at.x, height_ - at.y);
    painter_.scale(scale, scale);
    painter_.fillPath(path, painted(color));
    painter_.restore();
}

} // namespace platform
