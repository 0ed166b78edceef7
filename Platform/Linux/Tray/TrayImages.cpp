#include "Platform/Linux/Tray/TrayImages.h"

#include "Platform/Linux/Tray/DrawnImage.h"

#include <utility>

namespace platform {

std::shared_ptr<Image> TrayImages::systemSymbol(std::string_view /*name*/,
                                                std::string_view /*accessibilityDescription*/) {
    return nullptr;
}

std::shared_ptr<Image> TrayImages::draw(Size size, std::function<void(Canvas&)> draw) {
    return std::make_shared<DrawnImage>(size, std::move(draw));
}

} // namespace platform
