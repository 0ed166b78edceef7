#pragma once

#include "Foundation/Interface.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace testing_support {

/// A keyboard on a private X server, simulated through XTEST: the server treats its keys like real
/// ones, including auto-repeat. Keys are evdev codes such as KEY_G. The server has processed the
/// event when a call returns.
///
/// The destructor releases all keys and buttons and switches Caps Lock and NumLock off.
class FakeKeyboard : foundation::Pinned {
  public:
    explicit FakeKeyboard(const std::string& display);
    ~FakeKeyboard();

    void press(int evdevKeyCode);
    void release(int evdevKeyCode);
    void tap(int evdevKeyCode);

    /// Presses the keys in order and releases them in reverse order.
    void tapTogether(std::initializer_list<int> evdevKeyCodes);

    /// Pointer buttons; 1 is the left one.
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
