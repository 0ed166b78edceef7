#include "Platform/Linux/Tray/XEmbedIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <utility>

namespace platform {

namespace {

class DrawnIconEngine final : public QIconEngine {
  public:
    explicit DrawnIconEngine(std::shared_ptr<const DrawnImage> image) : image_(std::move(image)) {}

    void paint(QPainter* painter,
               const QRect& rect,
               QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override {
        const double pixelsPerPoint = painter->device()->devicePixelRatioF();
        QImage image = image_->render((rect.size().toSizeF() * pixelsPerPoint).toSize());
        image.setDevicePixelRatio(pixelsPerPoint);
        painter->drawImage(rect.topLeft(), image);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return QPixmap::fromImage(image_->render(size));
    }

    [[nodiscard]] QIconEngine* clone() const override { return new DrawnIconEngine(*this); }

  private:
    std::shared_ptr<const DrawnImage> image_;
};

} // namespace

QIcon drawnIcon(std::shared_ptr<const DrawnImage> image) {
    return QIcon(new DrawnIconEngine(std::move(image)));
}

XEmbedIcon::XEmbedIcon(std::function<void()> clicked) {
    icon_.setToolTip("Pastewise");
    QObject::connect(&icon_,
                     &QSystemTrayIcon::activated,
                     &icon_,
                     [clicked = std::move(clicked)](QSystemTrayIcon::ActivationReason reason) {
                         // The second press of a double click has been a click already.
                         if (reason != QSystemTrayIcon::DoubleClick) {
                             clicked();
                         }
                     });
}

void XEmbedIcon::setImage(std::shared_ptr<const DrawnImage> image) {
    if (!image) {
        icon_.hide();
        return;
    }
    icon_.setIcon(drawnIcon(std::move(image)));
    icon_.show();
}

} // namespace platform
