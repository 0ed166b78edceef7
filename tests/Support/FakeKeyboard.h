#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace testing_support {

/// A keyboard on an X server of the test's own, played through the server's test extension: what it
/// types goes the way of real keys, auto-repeat included. Keys are named by the kernel's (evdev)
/// key codes, KEY_G for example. When a call returns, the server has acted on it.
///
/// Lets go of everything and switches Caps Lock and NumLock off in the end.
class FakeKeyboard : foundation::Pinned {
  public:
    explicit FakeKeyboard(const std::string& display);
    ~FakeKeyboard();

    void press(int evdevKeyCode);
    void release(int evdevKeyCode);
    void tap(int evdevKeyCode);

    /// Presses the keys in that order and lets go of them in the reverse one.
    void tapTogether(std::initializer_list<int> evdevKeyCodes);

    /// Buttons of the pointer, 1 for the left one.
    void pressButton(int button);
    void releaseButton(int button);

    /// The server's modifier state, in the bits of X11's key events.
    [[nodiscard]] std::uint16_t modifierState() const;

  private:
    void send(std::uint8_t eventType, int detail);

    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
    std::vector<int> pressedKeys_;
    std::vector<int> pressedButtons_;
};

} // namespace testing_support
