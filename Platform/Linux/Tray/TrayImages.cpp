#include "Platform/Linux/Tray/TrayImages.h"

#include "Platform/Linux/Tray/ContrastOutline.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QString>
#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// In points; at least a pixel.
constexpr double outlineWidth = 0.75;

/// Font metrics are whole pixels, so they are taken from a large font and scaled down.
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

/// Draws with a painter whose coordinates are points with the origin in the upper left corner.
class PainterCanvas final : public Canvas {
  public:
    PainterCanvas(QPainter& painter, double height) : painter_(painter), height_(height) {}

    void fill(Rect rect, Color color) override {
        painter_.setCompositionMode(QPainter::CompositionMode_Source);
        painter_.fillRect(QRectF(rect.origin.x,
                                 height_ - rect.origin.y - rect.size.height,
                                 rect.size.width,
                                 rect.size.height),
                          painted(color));
        painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }

    [[nodiscard]] Size measure(std::string_view text, SystemFont font) override {
        const QFontMetricsF metrics(referenceFont(font.weight));
        const double scale = font.size / referencePixelSize;
        return {metrics.horizontalAdvance(fromUtf8(text)) * scale, metrics.height() * scale};
    }

    void drawText(std::string_view text, Point at, SystemFont font, Color color) override {
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

  private:
    QPainter& painter_;
    double height_; ///< Of the drawing, in points.
};

} // namespace

DrawnImage::DrawnImage(Size size, std::function<void(Canvas&)> draw)
    : drawnSize_(size), size_(size), draw_(std::move(draw)) {}

QImage DrawnImage::render(QSize pixels) const {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    // Pixels per point of the image; the drawing is stretched to fill the image.
    const double scale = std::min(pixels.width() / size_.width, pixels.height() / size_.height);
    QPainter painter(&image);
    painter.translate((pixels.width() - size_.width * scale) / 2,
                      (pixels.height() - size_.height * scale) / 2);
    painter.scale(scale * size_.width / drawnSize_.width, scale * size_.height / drawnSize_.height);
    PainterCanvas canvas(painter, drawnSize_.height);
    draw_(canvas);
    painter.end();
    return isTemplate_ ? withContrastOutline(image, std::max(1.0, outlineWidth * scale)) : image;
}

std::shared_ptr<Image> TrayImages::draw(Size size, std::function<void(Canvas&)> draw) {
    return std::make_shared<DrawnImage>(size, std::move(draw));
}

} // namespace platform
