#pragma once

#include <optional>
#include <string>

namespace program_test {

/// A part of the screen, in pixels from its upper left corner.
struct ScreenArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// What a part of the screen showed at one moment.
class Picture {
  public:
    Picture() = default;

    /// From the bytes of a PPM image with 8 bits per colour.
    Picture(const ScreenArea& area, const std::string& ppm);

    /// The smallest part of the screen that holds all in which this picture differs from another of
    /// the same part; none when they are alike.
    [[nodiscard]] std::optional<ScreenArea> difference(const Picture& other) const;

  private:
    ScreenArea area_;
    std::string pixels_;
};

} // namespace program_test
