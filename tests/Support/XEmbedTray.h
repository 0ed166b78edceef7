#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace testing_support {

/// A tray on a test's X server that takes icons as windows, and nothing else. It stands there as
/// long as the object exists, and acts when it is asked something.
class XEmbedTray : foundation::Pinned {
  public:
    /// In pixels, of an icon.
    static constexpr std::uint16_t iconSide = 22;

    explicit XEmbedTray(const std::string& display);
    ~XEmbedTray();

    /// How many icons stand in the tray.
    [[nodiscard]] std::size_t iconCount();

    /// What the screen shows where the only icon is; empty when there is none, or more.
    [[nodiscard]] std::vector<std::uint8_t> iconPixels();

    /// Clicks the only icon with a button of the pointer, 1 for the left one, by real input.
    void clickIcon(int button);

  private:
    void handleEvents();
    void take(std::uint32_t icon);
    [[nodiscard]] std::uint32_t atom(const std::string& name);

    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
    std::uint32_t window_ = 0;
    std::uint32_t opcodeAtom_ = 0;
    std::uint32_t embedAtom_ = 0;
    std::vector<std::uint32_t> icons_;
};

} // namespace testing_support
