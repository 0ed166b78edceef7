#pragma once

#include "Platform/Linux/Tray/DrawnImage.h"

#include <QIconEngine>
#include <memory>

namespace platform {

/// Makes an icon of the toolkit's out of an image: each size that is asked for is drawn.
class DrawnIconEngine final : public QIconEngine {
  public:
    explicit DrawnIconEngine(std::shared_ptr<const DrawnImage> image);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine* clone() const override;

  private:
    std::shared_ptr<const DrawnImage> image_;
};

} // namespace platform
