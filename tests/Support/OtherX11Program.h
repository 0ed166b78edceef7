#pragma once

#include "Foundation/Interface.h"

#include <xcb/xproto.h>

#include <cstdint>
#include <string>

namespace testing_support {

/// Another client of the X server that grabs keys. Key codes and masks are X11's.
class OtherX11Program : foundation::Pinned {
  public:
    explicit OtherX11Program(const std::string& display);
    ~OtherX11Program();

    /// Grabs the key with exactly these modifiers; false if another client has it.
    [[nodiscard]] bool take(std::uint8_t keyCode, std::uint16_t mask);
    void giveBack(std::uint8_t keyCode, std::uint16_t mask);

    /// Grabs the key without modifiers and, when it is pressed, freezes the keyboard.
    [[nodiscard]] bool takeAndFreeze(std::uint8_t keyCode);

    /// Passes the next key on to this client and freezes the keyboard again.
    void receiveNextKey() { allowEvents(XCB_ALLOW_SYNC_KEYBOARD); }

    /// Gives the keyboard back and the last key to the window with the focus, past all grabs.
    void replayKey() { allowEvents(XCB_ALLOW_REPLAY_KEYBOARD); }

    /// Whether a grab of another client is active.
    [[nodiscard]] bool hasAnotherClientTheKeyboard();

    /// The number of presses received so far, repeats included.
    [[nodiscard]] int pressCount();

    /// Moves the keys of one modifier to another, whose own keys stop being modifiers. 0 is Shift,
    /// 7 is Mod5.
    void moveModifierKeys(int from, int to);

    /// Switches to the layout at that index.
    void lockLayoutGroup(std::uint8_t group);

    [[nodiscard]] std::uint8_t layoutGroup();

  private:
    void allowEvents(std::uint8_t mode);

    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
    int pressCount_ = 0;
};

} // namespace testing_support
