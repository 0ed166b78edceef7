#pragma once

#include "Platform/Images.h"

#include <string_view>

class QPainter;

namespace platform {

/// Draws with a painter whose coordinates are points, the origin in the upper left corner.
///
/// Texts are drawn as outlines and measured without rounding to pixels, so that a drawing is the
/// same picture at every number of pixels. The font is the application's, with what it lacks taken
/// from other installed fonts.
class PainterCanvas final : public Canvas {
  public:
    /// `height` is that of the drawing in points. The painter outlives the canvas.
    PainterCanvas(QPainter& painter, double height) : painter_(painter), height_(height) {}

    void fill(Rect rect, Color color) override;
    [[nodiscard]] Size measure(std::string_view text, SystemFont font) override;
    void drawText(std::string_view text, Point at, SystemFont font, Color color) override;

  private:
    QPainter& painter_;
    double height_;
};

} // namespace platform
