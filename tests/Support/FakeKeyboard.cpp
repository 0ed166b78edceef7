#include "tests/Support/FakeKeyboard.h"

#include "Platform/Linux/X11/X11Connection.h"

#include <linux/input-event-codes.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <stdexcept>

namespace testing_support {

namespace {

constexpr int firstX11KeyCode = 8;
constexpr std::uint16_t numLockMask = XCB_MOD_MASK_2;

} // namespace

FakeKeyboard::FakeKeyboard(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    const auto* const extension = xcb_get_extension_data(connection_, &xcb_test_id);
    if (extension == nullptr || extension->present == 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("no X server with the test extension at " + display);
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

FakeKeyboard::~FakeKeyboard() {
    while (!pressedKeys_.empty()) {
        release(pressedKeys_.back());
    }
    while (!pressedButtons_.empty()) {
        releaseButton(pressedButtons_.back());
    }
    if ((modifierState() & XCB_MOD_MASK_LOCK) != 0) {
        tap(KEY_CAPSLOCK);
    }
    if ((modifierState() & numLockMask) != 0) {
        tap(KEY_NUMLOCK);
    }
    xcb_disconnect(connection_);
}

void FakeKeyboard::press(int evdevKeyCode) {
    pressedKeys_.push_back(evdevKeyCode);
    send(XCB_KEY_PRESS, evdevKeyCode + firstX11KeyCode);
}

void FakeKeyboard::release(int evdevKeyCode) {
    std::erase(pressedKeys_, evdevKeyCode);
    send(XCB_KEY_RELEASE, evdevKeyCode + firstX11KeyCode);
}

void FakeKeyboard::tap(int evdevKeyCode) {
    press(evdevKeyCode);
    release(evdevKeyCode);
}

void FakeKeyboard::tapTogether(std::initializer_list<int> evdevKeyCodes) {
    for (const int key : evdevKeyCodes) {
        press(key);
    }
    for (const int* key = evdevKeyCodes.end(); key != evdevKeyCodes.begin();) {
        release(*--key);
    }
}

void FakeKeyboard::pressButton(int button) {
    pressedButtons_.push_back(button);
    send(XCB_BUTTON_PRESS, button);
}

void FakeKeyboard::releaseButton(int button) {
    std::erase(pressedButtons_, button);
    send(XCB_BUTTON_RELEASE, button);
}

std::uint16_t FakeKeyboard::modifierState() const {
    const platform::XcbPointer<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root_), nullptr));
    return reply ? reply->mask : std::uint16_t{0};
}

void FakeKeyboard::send(std::uint8_t eventType, int detail) {
    // A checked request waits for the server.
    const platform::XcbPointer<xcb_generic_error_t> error(xcb_request_check(
        connection_,
        xcb_test_fake_input_checked(
            connection_, eventType, static_cast<std::uint8_t>(detail), 0, XCB_NONE, 0, 0, 0)));
}

} // namespace testing_support
