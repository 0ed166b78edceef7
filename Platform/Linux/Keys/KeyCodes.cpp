#include "Platform/Linux/Keys/KeyCodes.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace platform {

namespace {

using hotkey::Key;
using hotkey::ModifierFlags;

constexpr std::uint32_t firstXkbKeyCode = 8;

// In the order of hotkey::Key, by position. Names differ where keyboards print different things on
// a key: section is the extra key of ISO keyboards, help is Insert, keypadClear is NumLock.
// clang-format off
constexpr std::array<std::uint16_t, hotkey::keyCount> evdevKeyCodes{
    KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I, KEY_J, KEY_K, KEY_L, KEY_M,
    KEY_N, KEY_O, KEY_P, KEY_Q, KEY_R, KEY_S, KEY_T, KEY_U, KEY_V, KEY_W, KEY_X, KEY_Y, KEY_Z,

    KEY_0, KEY_1, KEY_2, KEY_3, KEY_4, KEY_5, KEY_6, KEY_7, KEY_8, KEY_9,

    KEY_DOT, KEY_APOSTROPHE, KEY_RIGHTBRACE, KEY_SEMICOLON, KEY_SLASH, KEY_BACKSLASH, KEY_COMMA,
    KEY_EQUAL, KEY_GRAVE, KEY_LEFTBRACE, KEY_MINUS, KEY_102ND,

    KEY_SPACE, KEY_TAB, KEY_ENTER,

    KEY_LEFTMETA, KEY_RIGHTMETA, KEY_LEFTALT, KEY_RIGHTALT, KEY_LEFTCTRL, KEY_RIGHTCTRL,
    KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_FN, KEY_CAPSLOCK,

    KEY_PAGEUP, KEY_PAGEDOWN, KEY_HOME, KEY_END, KEY_UP, KEY_RIGHT, KEY_DOWN, KEY_LEFT,

    KEY_F1, KEY_F2, KEY_F3, KEY_F4, KEY_F5, KEY_F6, KEY_F7, KEY_F8, KEY_F9, KEY_F10,
    KEY_F11, KEY_F12, KEY_F13, KEY_F14, KEY_F15, KEY_F16, KEY_F17, KEY_F18, KEY_F19, KEY_F20,

    KEY_KP0, KEY_KP1, KEY_KP2, KEY_KP3, KEY_KP4, KEY_KP5, KEY_KP6, KEY_KP7, KEY_KP8, KEY_KP9,
    KEY_NUMLOCK, KEY_KPDOT, KEY_KPSLASH, KEY_KPENTER, KEY_KPEQUAL, KEY_KPMINUS, KEY_KPASTERISK,
    KEY_KPPLUS,

    KEY_ESC, KEY_BACKSPACE, KEY_DELETE, KEY_INSERT, KEY_VOLUMEUP, KEY_VOLUMEDOWN, KEY_MUTE,
};

// clang-format on

constexpr bool isBetween(Key key, Key first, Key last) {
    return key >= first && key <= last;
}

} // namespace

std::uint32_t xkbKeyCode(Key key) {
    return evdevKeyCodes[static_cast<std::size_t>(key)] + firstXkbKeyCode;
}

std::optional<Key> keyFromXkbKeyCode(std::uint32_t keyCode) {
    const auto* const found =
        std::find_if(evdevKeyCodes.begin(), evdevKeyCodes.end(), [&](std::uint16_t evdevKeyCode) {
            return evdevKeyCode + firstXkbKeyCode == keyCode;
        });
    return found == evdevKeyCodes.end()
               ? std::nullopt
               : std::optional(static_cast<Key>(found - evdevKeyCodes.begin()));
}

ModifierFlags positionFlags(Key key) {
    const bool isFunctionKey =
        isBetween(key, Key::pageUp, Key::f20) || key == Key::forwardDelete || key == Key::help;
    return isFunctionKey ? ModifierFlags::function : ModifierFlags{};
}

std::string shortcutText(Key key, ModifierFlags modifiers) {
    constexpr std::array<std::pair<ModifierFlags, std::string_view>, 4> modifierNames{
        {{ModifierFlags::command, "Super+"},
         {ModifierFlags::control, "Ctrl+"},
         {ModifierFlags::option, "Alt+"},
         {ModifierFlags::shift, "Shift+"}}};
    // Keys that a Mac shows as glyphs.
    constexpr std::array<std::pair<Key, std::string_view>, 5> keyNames{
        {{Key::space, "Space"},
         {Key::return_, "Enter"},
         {Key::keypadEnter, "Enter"},
         {Key::keypadMultiply, "*"},
         {Key::delete_, "Backspace"}}};
    std::string text;
    for (const auto& [modifier, name] : modifierNames) {
        if (modifiers.contains(modifier)) {
            text += name;
        }
    }
    if (isBetween(key, Key::keypad0, Key::keypadPlus)) {
        text += "Keypad ";
    }
    const auto* const found = std::find_if(
        keyNames.begin(), keyNames.end(), [key](const auto& entry) { return entry.first == key; });
    return text.append(found == keyNames.end() ? hotkey::description(key) : found->second);
}

} // namespace platform
