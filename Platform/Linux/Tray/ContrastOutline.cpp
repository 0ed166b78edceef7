#include "Platform/Linux/Tray/ContrastOutline.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace platform {

namespace {

struct DiscPixel {
    int x;
    int y;
    /// How far the disc covers the pixel, from 0 to 1.
    double coverage;
};

/// The pixels of a disc around the pixel at the origin, from whose rim the radius counts.
std::vector<DiscPixel> disc(double radius) {
    const int reach = static_cast<int>(std::ceil(radius));
    std::vector<DiscPixel> pixels;
    for (int y = -reach; y <= reach; ++y) {
        for (int x = -reach; x <= reach; ++x) {
            const double coverage = std::clamp(radius + 1 - std::hypot(x, y), 0.0, 1.0);
            if (coverage > 0) {
                pixels.push_back({x, y, coverage});
            }
        }
    }
    return pixels;
}

/// Grows `shape`, a picture of opacities, by `width` pixels on all sides. Counts as opaque what is
/// half so: a stroke thinner than a pixel is opaque nowhere.
QImage grown(const QImage& shape, double width) {
    const auto pixels = disc(width);
    QImage result(shape.size(), QImage::Format_Alpha8);
    result.fill(0);
    for (int y = 0; y < shape.height(); ++y) {
        for (int x = 0; x < shape.width(); ++x) {
            const uchar opacity = shape.constScanLine(y)[x];
            if (opacity == 0) {
                continue;
            }
            const double solid = std::min(255.0, 2.0 * opacity);
            for (const DiscPixel& pixel : pixels) {
                if (result.valid(x + pixel.x, y + pixel.y)) {
                    uchar& target = result.scanLine(y + pixel.y)[x + pixel.x];
                    target = std::max(target, static_cast<uchar>(solid * pixel.coverage));
                }
            }
        }
    }
    return result;
}

/// A surface of one colour that is opaque where `shape` is.
QImage colored(const QImage& shape, const QColor& color) {
    QImage result(shape.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(color);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, shape);
    return result;
}

} // namespace

QImage withContrastOutline(const QImage& shape, double width) {
    const QImage opacities = shape.convertToFormat(QImage::Format_Alpha8);
    QImage result = colored(grown(opacities, width), Qt::black);
    QPainter painter(&result);
    painter.drawImage(0, 0, colored(opacities, Qt::white));
    return result;
}

} // namespace platform
