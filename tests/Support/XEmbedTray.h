#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace testing_support {

/// An XEmbed tray on a private X server. It exists as long as the object and processes its events
/// inside the calls below.
class XEmbedTray : foundation::Pinned {
  public:
    /// The width and height of an icon in pixels.
    static constexpr std::uint16_t iconSide = 22;

    /// `x` and `y` are the place of its upper left corner, where the only icon is.
    explicit XEmbedTray(const std::string& display, std::int16_t x = 0, std::int16_t y = 0);
    ~XEmbedTray();

    /// The number of icons in the tray.
    [[nodiscard]] std::size_t iconCount();

    /// The pixels of the only icon on the screen; empty unless there is exactly one.
    [[nodiscard]] std::vector<std::uint8_t> iconPixels();

    /// Clicks the only icon with a pointer button; 1 is the left one.
    void clickIcon(int button);

  private:
    void handleEvents();
    void take(std::uint32_t icon);
    [[nodiscard]] std::uint32_t atom(const std::string& name);

    xcb_connection_t* connection_;
    std::int16_t x_;
    std::int16_t y_;
    std::uint32_t root_ = 0;
    std::uint32_t window_ = 0;
    std::uint32_t opcodeAtom_ = 0;
    std::uint32_t embedAtom_ = 0;
    std::vector<std::uint32_t> icons_;
};

} // namespace testing_support
