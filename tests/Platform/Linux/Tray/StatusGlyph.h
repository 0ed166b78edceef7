#pragma once

#include "Platform/Images.h"

#include <memory>
#include <string>

namespace tray_test {

/// A picture of one bold glyph in the middle of 18 x 18 points, half a point lower: what the
/// program shows in the tray.
inline std::shared_ptr<platform::Image> drawGlyph(platform::Images& images,
                                                  const std::string& text) {
    constexpr double side = 18;
    return images.draw({side, side}, [text](platform::Canvas& canvas) {
        const platform::SystemFont font{13, platform::FontWeight::bold};
        canvas.fill({{0, 0}, {side, side}}, platform::Canvas::Color::clear);
        const platform::Size size = canvas.measure(text, font);
        canvas.drawText(text,
                        {(side - size.width) * 0.5, (side - size.height) * 0.5 - 0.5},
                        font,
                        platform::Canvas::Color::white);
    });
}

} // namespace tray_test
