#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace hotkey {

/// One physical key of a keyboard. Tables of keys are in the order of the cases.
// clang-format off
enum class Key : std::uint8_t {
    a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y, z,

    zero, one, two, three, four, five, six, seven, eight, nine,

    period, quote, rightBracket, semicolon, slash, backslash, comma, equal, grave, leftBracket,
    minus, section,

    space, tab,
    return_, // NOLINT(readability-identifier-naming): a keyword

    command, rightCommand, option, rightOption, control, rightControl, shift, rightShift, function,
    capsLock,

    pageUp, pageDown, home, end, upArrow, rightArrow, downArrow, leftArrow,

    f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,

    keypad0, keypad1, keypad2, keypad3, keypad4, keypad5, keypad6, keypad7, keypad8, keypad9,
    keypadClear, keypadDecimal, keypadDivide, keypadEnter, keypadEquals, keypadMinus,
    keypadMultiply, keypadPlus,

    escape,
    delete_, // NOLINT(readability-identifier-naming): a keyword
    forwardDelete, help, volumeUp, volumeDown, mute,
};
// clang-format on

inline constexpr std::size_t keyCount = 114;

/// The key's Carbon virtual key code (kVK_... in HIToolbox's Events.h): its position on the
/// keyboard, whatever the layout prints on it.
[[nodiscard]] std::uint32_t carbonKeyCode(Key key);

/// The inverse of carbonKeyCode(); nullopt if no key has this code.
[[nodiscard]] std::optional<Key> keyFromCarbonKeyCode(std::uint32_t carbonKeyCode);

/// The key's display text in UTF-8. It does not identify the key: keypad keys share the text of
/// their counterparts on the main keyboard, right modifiers that of the left ones. Texts of F-keys
/// begin with a private-use character that makes a Mac's text renderer draw one grouped glyph.
[[nodiscard]] std::string_view description(Key key);

/// The key with this name ("rightCommand"), description or alias, in UTF-8 and in any case; nullopt
/// for any other text. Keypad keys are found by their names only, since their descriptions belong
/// to the main keyboard.
[[nodiscard]] std::optional<Key> keyFromString(std::string_view text);

} // namespace hotkey
