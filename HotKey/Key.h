#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace hotkey {

/// One physical key of a keyboard. The order of the cases is the order of the table behind the
/// functions below. No key at all is an empty optional.
enum class Key : std::uint8_t {
    a,
    b,
    c,
    d,
    e,
    f,
    g,
    h,
    i,
    j,
    k,
    l,
    m,
    n,
    o,
    p,
    q,
    r,
    s,
    t,
    u,
    v,
    w,
    x,
    y,
    z,

    zero,
    one,
    two,
    three,
    four,
    five,
    six,
    seven,
    eight,
    nine,

    period,
    quote,
    rightBracket,
    semicolon,
    slash,
    backslash,
    comma,
    equal,
    grave,
    leftBracket,
    minus,
    section,

    space,
    tab,
    return_, // NOLINT(readability-identifier-naming): a keyword

    command,
    rightCommand,
    option,
    rightOption,
    control,
    rightControl,
    shift,
    rightShift,
    function,
    capsLock,

    pageUp,
    pageDown,
    home,
    end,
    upArrow,
    rightArrow,
    downArrow,
    leftArrow,

    f1,
    f2,
    f3,
    f4,
    f5,
    f6,
    f7,
    f8,
    f9,
    f10,
    f11,
    f12,
    f13,
    f14,
    f15,
    f16,
    f17,
    f18,
    f19,
    f20,

    keypad0,
    keypad1,
    keypad2,
    keypad3,
    keypad4,
    keypad5,
    keypad6,
    keypad7,
    keypad8,
    keypad9,
    keypadClear,
    keypadDecimal,
    keypadDivide,
    keypadEnter,
    keypadEquals,
    keypadMinus,
    keypadMultiply,
    keypadPlus,

    escape,
    delete_, // NOLINT(readability-identifier-naming): a keyword
    forwardDelete,
    help,
    volumeUp,
    volumeDown,
    mute,
};

inline constexpr std::size_t keyCount = 114;

/// The key's Carbon virtual key code (the system header Events.h of HIToolbox calls it kVK_...).
/// It names the key's place on the keyboard, whatever the layout prints on it.
[[nodiscard]] std::uint32_t carbonKeyCode(Key key);

/// The key whose carbonKeyCode() that is; none when no key has it.
[[nodiscard]] std::optional<Key> keyFromCarbonKeyCode(std::uint32_t carbonKeyCode);

/// The text to show for the key, in UTF-8. A key of the keypad has the text of its twin on the main
/// keyboard, and right modifiers that of the left ones, so it does not identify the key. F-keys
/// begin with a private-use character that makes the system's text renderer group what follows.
[[nodiscard]] std::string_view description(Key key);

/// The key of that name ("rightCommand") or description, in UTF-8 and in any case; a few keys go by
/// other texts too. Keys of the keypad are known by their names only, since their descriptions
/// belong to the main keyboard. None for any other text.
[[nodiscard]] std::optional<Key> keyFromString(std::string_view text);

} // namespace hotkey
