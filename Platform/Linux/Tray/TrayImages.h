#pragma once

#include "Platform/Images.h"

#include <functional>
#include <memory>
#include <string_view>

namespace platform {

/// Images for TrayStatusBar. There are no system symbols.
class TrayImages final : public Images {
  public:
    [[nodiscard]] std::shared_ptr<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) override;
    [[nodiscard]] std::shared_ptr<Image> draw(Size size,
                                              std::function<void(Canvas&)> draw) override;
};

} // namespace platform
