#pragma once

#include "Foundation/Interface.h"
#include "Platform/Geometry.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace platform {

/// A picture for the status bar. Main thread only.
class Image : public foundation::Interface {
  public:
    /// In points.
    [[nodiscard]] virtual Size size() const = 0;
    virtual void setSize(Size size) = 0;

    /// Only a template's opacity counts: the system paints it in a colour that stands out from the
    /// background.
    [[nodiscard]] virtual bool isTemplate() const = 0;
    virtual void setTemplate(bool isTemplate) = 0;
};

/// What an image is drawn on. The origin is the lower left corner and y grows upwards. Valid only
/// while the drawing function runs.
class Canvas : public foundation::Interface {
  public:
    enum class Color : std::uint8_t { clear, white };

    /// Replaces the contents of the rectangle.
    virtual void fill(Rect rect, Color color) = 0;

    /// The size that a line of UTF-8 text takes.
    [[nodiscard]] virtual Size measure(std::string_view text, SystemFont font) = 0;

    /// Draws a line of UTF-8 text whose box, of the measured size, has its lower left corner at
    /// `at`.
    virtual void drawText(std::string_view text, Point at, SystemFont font, Color color) = 0;
};

/// Makes images. Main thread only.
class Images : public foundation::Interface {
  public:
    /// The system's picture of that name; null if there is none.
    [[nodiscard]] virtual std::shared_ptr<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) = 0;

    /// An image of that size that `draw` paints: whenever the system needs another resolution, now
    /// or later, always with the same size in points.
    [[nodiscard]] virtual std::shared_ptr<Image> draw(Size size,
                                                      std::function<void(Canvas&)> draw) = 0;
};

} // namespace platform
