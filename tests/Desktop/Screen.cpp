#include "tests/Desktop/Screen.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace program_test {

namespace {

constexpr std::size_t bytesPerPixel = 3;

} // namespace

Picture::Picture(const ScreenArea& area, const std::string& ppm) : area_(area) {
    std::istringstream header(ppm);
    std::string magic;
    int width = 0;
    int height = 0;
    int maximum = 0;
    header >> magic >> width >> height >> maximum;
    const std::size_t size = bytesPerPixel * static_cast<std::size_t>(area.width) *
                             static_cast<std::size_t>(area.height);
    if (magic != "P6" || width != area.width || height != area.height || maximum != 255 ||
        ppm.size() < size) {
        throw std::runtime_error("not a picture of that part of the screen");
    }
    pixels_ = ppm.substr(ppm.size() - size);
}

std::optional<ScreenArea> Picture::difference(const Picture& other) const {
    int left = area_.width;
    int right = -1;
    int top = area_.height;
    int bottom = -1;
    for (int y = 0; y < area_.height; ++y) {
        for (int x = 0; x < area_.width; ++x) {
            const std::size_t at = bytesPerPixel * (static_cast<std::size_t>(y) *
                                                        static_cast<std::size_t>(area_.width) +
                                                    static_cast<std::size_t>(x));
            if (pixels_.compare(at, bytesPerPixel, other.pixels_, at, bytesPerPixel) != 0) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    if (right < 0) {
        return std::nullopt;
    }
    return ScreenArea{area_.x + left, area_.y + top, right - left + 1, bottom - top + 1};
}

} // namespace program_test
