#pragma once

#include "Foundation/Interface.h"
#include "Platform/Images.h"
#include "Platform/Menu.h"

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// The visible part of a status item. Main thread only.
class StatusBarButton : public foundation::Interface {
  public:
    enum class ImagePosition : std::uint8_t { noImage, imageOnly, imageLeading };

    /// Null shows no image.
    virtual void setImage(std::shared_ptr<const Image> image) = 0;
    virtual void setImagePosition(ImagePosition position) = 0;
    virtual void setTitle(std::string title) = 0;

    /// What a click does if the item has no menu.
    virtual void setAction(Action action) = 0;
};

/// The program's item in the desktop's status bar (menu bar, tray), which exists as long as the
/// object. It appears as soon as there is a bar. Main thread only.
class StatusItem : public foundation::Interface {
  public:
    /// Null if the item has no visible part.
    [[nodiscard]] virtual std::shared_ptr<StatusBarButton> button() = 0;

    /// A click opens this menu from now on: Menu::willOpen(), then its rows. The rows stay up to
    /// date while the menu is open.
    virtual void setMenu(std::shared_ptr<Menu> menu) = 0;
};

/// The desktop's status bar. Main thread only.
class StatusBar : public foundation::Interface {
  public:
    /// The length of an item that is as wide as its contents.
    static constexpr double variableLength = -1;

    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(double length) = 0;
};

} // namespace platform
