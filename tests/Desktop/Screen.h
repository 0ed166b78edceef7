#pragma once

#include <optional>
#include <string>

namespace program_test {

/// An area of the screen, in pixels from its upper left corner.
struct ScreenArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A picture of an area of the screen.
class Picture {
  public:
    Picture() = default;

    /// From the bytes of a PPM image with 8 bits per colour.
    Picture(const ScreenArea& area, const std::string& ppm);

    /// The bounding box, on the screen, of the differences from another picture of the same area;
    /// nullopt if they are equal.
    [[nodiscard]] std::optional<ScreenArea> difference(const Picture& other) const;

  private:
    ScreenArea area_;
    std::string pixels_;
};

} // namespace program_test
