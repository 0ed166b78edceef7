#pragma once

#include "Platform/Geometry.h"

#include <QLabel>
#include <QSize>
#include <QSizeF>

namespace platform {

/// A plain text on a window's background, on one line or wrapped. What does not fit ends in an
/// ellipsis; assistive programs get all of it. Glyphs of any font have the height that they need.
class QtTextWidget final : public QLabel {
  public:
    enum class Wrapping { oneLine, wrapped };

    explicit QtTextWidget(Wrapping wrapping);

    /// 0 for as many as the text needs.
    void setMaximumNumberOfLines(int lines);

    /// The colour is chosen at each painting, so it follows the palette.
    void setTextColor(TextColor color);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    /// Lays the text out in lines of that width, from `top` downwards, and draws them unless
    /// `painter` is null. Returns the room that the lines need.
    QSizeF layOut(qreal width, qreal top, QPainter* painter) const;

    int maximumNumberOfLines_;
    TextColor color_ = TextColor::label;
};

} // namespace platform
