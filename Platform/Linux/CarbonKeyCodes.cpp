#include "Platform/Linux/CarbonKeyCodes.h"

#include "HotKey/Key.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace platform {

namespace {

using hotkey::Key;

struct Place {
    Key key;
    std::uint16_t evdevKeyCode;
};

// By place, so the names differ where the two worlds print different things on a key: section is
// the extra key beside the left shift of ISO keyboards, help is Insert, clear is NumLock.
constexpr std::array<Place, hotkey::keyCount> places{{
    {Key::a, KEY_A},
    {Key::b, KEY_B},
    {Key::c, KEY_C},
    {Key::d, KEY_D},
    {Key::e, KEY_E},
    {Key::f, KEY_F},
    {Key::g, KEY_G},
    {Key::h, KEY_H},
    {Key::i, KEY_I},
    {Key::j, KEY_J},
    {Key::k, KEY_K},
    {Key::l, KEY_L},
    {Key::m, KEY_M},
    {Key::n, KEY_N},
    {Key::o, KEY_O},
    {Key::p, KEY_P},
    {Key::q, KEY_Q},
    {Key::r, KEY_R},
    {Key::s, KEY_S},
    {Key::t, KEY_T},
    {Key::u, KEY_U},
    {Key::v, KEY_V},
    {Key::w, KEY_W},
    {Key::x, KEY_X},
    {Key::y, KEY_Y},
    {Key::z, KEY_Z},
    {Key::zero, KEY_0},
    {Key::one, KEY_1},
    {Key::two, KEY_2},
    {Key::three, KEY_3},
    {Key::four, KEY_4},
    {Key::five, KEY_5},
    {Key::six, KEY_6},
    {Key::seven, KEY_7},
    {Key::eight, KEY_8},
    {Key::nine, KEY_9},
    {Key::period, KEY_DOT},
    {Key::quote, KEY_APOSTROPHE},
    {Key::rightBracket, KEY_RIGHTBRACE},
    {Key::semicolon, KEY_SEMICOLON},
    {Key::slash, KEY_SLASH},
    {Key::backslash, KEY_BACKSLASH},
    {Key::comma, KEY_COMMA},
    {Key::equal, KEY_EQUAL},
    {Key::grave, KEY_GRAVE},
    {Key::leftBracket, KEY_LEFTBRACE},
    {Key::minus, KEY_MINUS},
    {Key::section, KEY_102ND},
    {Key::space, KEY_SPACE},
    {Key::tab, KEY_TAB},
    {Key::return_, KEY_ENTER},
    {Key::command, KEY_LEFTMETA},
    {Key::rightCommand, KEY_RIGHTMETA},
    {Key::option, KEY_LEFTALT},
    {Key::rightOption, KEY_RIGHTALT},
    {Key::control, KEY_LEFTCTRL},
    {Key::rightControl, KEY_RIGHTCTRL},
    {Key::shift, KEY_LEFTSHIFT},
    {Key::rightShift, KEY_RIGHTSHIFT},
    {Key::function, KEY_FN},
    {Key::capsLock, KEY_CAPSLOCK},
    {Key::pageUp, KEY_PAGEUP},
    {Key::pageDown, KEY_PAGEDOWN},
    {Key::home, KEY_HOME},
    {Key::end, KEY_END},
    {Key::upArrow, KEY_UP},
    {Key::rightArrow, KEY_RIGHT},
    {Key::downArrow, KEY_DOWN},
    {Key::leftArrow, KEY_LEFT},
    {Key::f1, KEY_F1},
    {Key::f2, KEY_F2},
    {Key::f3, KEY_F3},
    {Key::f4, KEY_F4},
    {Key::f5, KEY_F5},
    {Key::f6, KEY_F6},
    {Key::f7, KEY_F7},
    {Key::f8, KEY_F8},
    {Key::f9, KEY_F9},
    {Key::f10, KEY_F10},
    {Key::f11, KEY_F11},
    {Key::f12, KEY_F12},
    {Key::f13, KEY_F13},
    {Key::f14, KEY_F14},
    {Key::f15, KEY_F15},
    {Key::f16, KEY_F16},
    {Key::f17, KEY_F17},
    {Key::f18, KEY_F18},
    {Key::f19, KEY_F19},
    {Key::f20, KEY_F20},
    {Key::keypad0, KEY_KP0},
    {Key::keypad1, KEY_KP1},
    {Key::keypad2, KEY_KP2},
    {Key::keypad3, KEY_KP3},
    {Key::keypad4, KEY_KP4},
    {Key::keypad5, KEY_KP5},
    {Key::keypad6, KEY_KP6},
    {Key::keypad7, KEY_KP7},
    {Key::keypad8, KEY_KP8},
    {Key::keypad9, KEY_KP9},
    {Key::keypadClear, KEY_NUMLOCK},
    {Key::keypadDecimal, KEY_KPDOT},
    {Key::keypadDivide, KEY_KPSLASH},
    {Key::keypadEnter, KEY_KPENTER},
    {Key::keypadEquals, KEY_KPEQUAL},
    {Key::keypadMinus, KEY_KPMINUS},
    {Key::keypadMultiply, KEY_KPASTERISK},
    {Key::keypadPlus, KEY_KPPLUS},
    {Key::escape, KEY_ESC},
    {Key::delete_, KEY_BACKSPACE},
    {Key::forwardDelete, KEY_DELETE},
    {Key::help, KEY_INSERT},
    {Key::volumeUp, KEY_VOLUMEUP},
    {Key::volumeDown, KEY_VOLUMEDOWN},
    {Key::mute, KEY_MUTE},
}};

} // namespace

std::optional<std::uint16_t> evdevKeyCode(std::uint32_t carbonKeyCode) {
    const auto key = hotkey::keyFromCarbonKeyCode(carbonKeyCode);
    if (!key) {
        return std::nullopt;
    }
    const auto* const place =
        std::find_if(places.begin(), places.end(), [&](const Place& candidate) {
            return candidate.key == *key;
        });
    return place == places.end() ? std::nullopt : std::optional(place->evdevKeyCode);
}

std::optional<std::uint32_t> carbonKeyCode(std::uint16_t evdevKeyCode) {
    const auto* const place =
        std::find_if(places.begin(), places.end(), [&](const Place& candidate) {
            return candidate.evdevKeyCode == evdevKeyCode;
        });
    return place == places.end() ? std::nullopt : std::optional(hotkey::carbonKeyCode(place->key));
}

} // namespace platform
