#include "Platform/Linux/Tray/DrawnIconEngine.h"

#include <QPainter>
#include <QPixmap>
#include <utility>

namespace platform {

DrawnIconEngine::DrawnIconEngine(std::shared_ptr<const DrawnImage> image)
    : image_(std::move(image)) {}

void DrawnIconEngine::paint(QPainter* painter,
                            const QRect& rect,
                            QIcon::Mode /*mode*/,
                            QIcon::State /*state*/) {
    const double pixelsPerPoint = painter->device()->devicePixelRatioF();
    QImage image = image_->render((rect.size().toSizeF() * pixelsPerPoint).toSize());
    image.setDevicePixelRatio(pixelsPerPoint);
    painter->drawImage(rect.topLeft(), image);
}

QPixmap DrawnIconEngine::pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) {
    return QPixmap::fromImage(image_->render(size));
}

QIconEngine* DrawnIconEngine::clone() const {
    return new DrawnIconEngine(*this);
}

} // namespace platform
