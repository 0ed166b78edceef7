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
    /// Of the pixel by the disc, from 0 to 1.
    double coverage;
};

/// The pixels of a disc around the pixel at the origin; the radius counts from that pixel's edge.
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

/// Grows `shape`, an image of opacities, by `width` pixels on all sides. Half opacity counts as
/// full, because a stroke thinner than a pixel is opaque nowhere.
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

/// An area of one colour with the opacity of `shape`.
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
