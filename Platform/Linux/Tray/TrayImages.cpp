#include "Platform/Linux/Tray/TrayImages.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QString>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace platform {

namespace {

/// In points; rounded to whole pixels, at least one.
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

/// Returns `shape` in white with a dark line of `width` pixels around it, at the same size and
/// premultiplied. Only the opacity of `shape` counts.
///
/// Trays cannot recolour pixels, and their background is unknown: panels are dark under light
/// desktops and the other way round. So the shape brings its own contrast.
QImage withContrastOutline(const QImage& shape, double width) {
    const QImage opacities = shape.convertToFormat(QImage::Format_Alpha8);
    QImage result = colored(grown(opacities, width), Qt::black);
    QPainter painter(&result);
    painter.drawImage(0, 0, colored(opacities, Qt::white));
    return result;
}

/// The edges of an outline along one axis, in order: where they are, and the pixel where they
/// belong.
using Edges = std::vector<std::pair<double, double>>;

/// Keeps distances from the first edge: strokes of one width stay so.
Edges wholePixels(std::vector<double> positions) {
    std::sort(positions.begin(), positions.end());
    const double first = positions.front();
    Edges edges{{first, std::round(first)}};
    for (const double position : positions) {
        // What is closer to the edge before it is no stroke, but part of a curve.
        if (position - edges.back().first > 0.5) {
            const double pixel = edges.front().second + std::round(position - first);
            edges.emplace_back(position, std::max(pixel, edges.back().second + 1));
        }
    }
    return edges;
}

/// Moves a position with the edges around it.
double moved(double position, const Edges& edges) {
    const auto next =
        std::lower_bound(edges.begin() + 1, edges.end() - 1, std::pair(position, 0.0));
    const auto& [low, lowPixel] = *(next - 1);
    const auto& [high, highPixel] = *next;
    return lowPixel + ((position - low) * (highPixel - lowPixel) / (high - low));
}

/// Fits an outline, in pixels, to whole pixels: its extent, and its horizontal and vertical edges.
/// Otherwise they are grey at the sizes of tray icons.
QPainterPath fitted(QPainterPath outline) {
    const QRectF extent = outline.boundingRect();
    std::vector<double> columns{extent.left(), extent.right()};
    std::vector<double> rows{extent.top(), extent.bottom()};
    for (int index = 1; index < outline.elementCount(); ++index) {
        const QPointF from = outline.elementAt(index - 1);
        const QPainterPath::Element to = outline.elementAt(index);
        constexpr double tolerance = 0.01;
        if (to.isLineTo() && std::abs(to.x - from.x()) < tolerance) {
            columns.push_back(to.x);
        }
        if (to.isLineTo() && std::abs(to.y - from.y()) < tolerance) {
            rows.push_back(to.y);
        }
    }
    const Edges vertical = wholePixels(std::move(columns));
    const Edges horizontal = wholePixels(std::move(rows));
    if (vertical.size() < 2 || horizontal.size() < 2) {
        return outline;
    }
    for (int index = 0; index < outline.elementCount(); ++index) {
        const QPointF point = outline.elementAt(index);
        outline.setElementPositionAt(
            index, moved(point.x(), vertical), moved(point.y(), horizontal));
    }
    return outline;
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
        path = fitted(painter_.transform().map(path));
        painter_.resetTransform();
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
    return isTemplate_ ? withContrastOutline(image, std::max(1.0, std::round(outlineWidth * scale)))
                       : image;
}

std::shared_ptr<Image> TrayImages::draw(Size size, std::function<void(Canvas&)> draw) {
    return std::make_shared<DrawnImage>(size, std::move(draw));
}

} // namespace platform
