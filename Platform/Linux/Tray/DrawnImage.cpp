#include "Platform/Linux/Tray/DrawnImage.h"

#include "Platform/Linux/Tray/ContrastOutline.h"
#include "Platform/Linux/Tray/PainterCanvas.h"

#include <QPainter>
#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// In points; at least a pixel.
constexpr double outlineWidth = 0.75;

} // namespace

DrawnImage::DrawnImage(Size size, std::function<void(Canvas&)> draw)
    : drawnSize_(size), size_(size), draw_(std::move(draw)) {}

QImage DrawnImage::render(QSize pixels) const {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    // Pixels for a point of the image, then for one of what is drawn, which fills the image.
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

} // namespace platform
