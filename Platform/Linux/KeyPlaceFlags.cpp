#include "Platform/Linux/KeyPlaceFlags.h"

namespace platform {

hotkey::ModifierFlags keyPlaceFlags(hotkey::Key key) {
    using hotkey::Key;
    switch (key) {
    case Key::upArrow:
    case Key::downArrow:
    case Key::leftArrow:
    case Key::rightArrow:
        return hotkey::ModifierFlags::function | numericPadFlag;
    case Key::home:
    case Key::end:
    case Key::pageUp:
    case Key::pageDown:
    case Key::forwardDelete:
    case Key::help:
    case Key::f1:
    case Key::f2:
    case Key::f3:
    case Key::f4:
    case Key::f5:
    case Key::f6:
    case Key::f7:
    case Key::f8:
    case Key::f9:
    case Key::f10:
    case Key::f11:
    case Key::f12:
    case Key::f13:
    case Key::f14:
    case Key::f15:
    case Key::f16:
    case Key::f17:
    case Key::f18:
    case Key::f19:
    case Key::f20:
        return hotkey::ModifierFlags::function;
    case Key::keypad0:
    case Key::keypad1:
    case Key::keypad2:
    case Key::keypad3:
    case Key::keypad4:
    case Key::keypad5:
    case Key::keypad6:
    case Key::keypad7:
    case Key::keypad8:
    case Key::keypad9:
    case Key::keypadClear:
    case Key::keypadDecimal:
    case Key::keypadDivide:
    case Key::keypadEnter:
    case Key::keypadEquals:
    case Key::keypadMinus:
    case Key::keypadMultiply:
    case Key::keypadPlus:
        return numericPadFlag;
    default:
        return {};
    }
}

} // namespace platform
