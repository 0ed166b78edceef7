#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <string>

struct xcb_connection_t;

namespace testing_support {

/// Another program on the test's X server that wants keys for itself: to the server it is a client
/// like any. Key codes are X11's, masks those of X11's key events.
class OtherX11Program : foundation::Pinned {
  public:
    explicit OtherX11Program(const std::string& display);
    ~OtherX11Program();

    /// Grabs the key with exactly these modifiers; false when somebody else has it.
    [[nodiscard]] bool take(std::uint8_t keyCode, std::uint16_t mask);
    void giveBack(std::uint8_t keyCode, std::uint16_t mask);

    /// How many presses this program has received so far; each repetition of a held key counts.
    [[nodiscard]] int pressCount();

    /// Moves the keys of one modifier to another, from 0 for Shift to 7 for Mod5; what was there is
    /// none any more.
    void moveModifierKeys(int from, int to);

    /// Switches to the layout with that number among those that are set, 0 for the first.
    void lockLayoutGroup(std::uint8_t group);

    [[nodiscard]] std::uint8_t layoutGroup();

  private:
    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
    int pressCount_ = 0;
};

} // namespace testing_support
