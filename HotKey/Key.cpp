#include "HotKey/Key.h"

#include <algorithm>
#include <array>
#include <string>

namespace hotkey {

namespace {

struct KeyFacts {
    Key key;
    std::string_view name;
    std::uint8_t carbonKeyCode;
    std::string_view description;
};

// The glyphs are escaped because several look alike or are invisible in an editor.
// clang-format off
constexpr std::array<KeyFacts, keyCount> keys{{
    {Key::a, "a", 0x00, "A"},
    {Key::b, "b", 0x0B, "B"},
    {Key::c, "c", 0x08, "C"},
    {Key::d, "d", 0x02, "D"},
    {Key::e, "e", 0x0E, "E"},
    {Key::f, "f", 0x03, "F"},
    {Key::g, "g", 0x05, "G"},
    {Key::h, "h", 0x04, "H"},
    {Key::i, "i", 0x22, "I"},
    {Key::j, "j", 0x26, "J"},
    {Key::k, "k", 0x28, "K"},
    {Key::l, "l", 0x25, "L"},
    {Key::m, "m", 0x2E, "M"},
    {Key::n, "n", 0x2D, "N"},
    {Key::o, "o", 0x1F, "O"},
    {Key::p, "p", 0x23, "P"},
    {Key::q, "q", 0x0C, "Q"},
    {Key::r, "r", 0x0F, "R"},
    {Key::s, "s", 0x01, "S"},
    {Key::t, "t", 0x11, "T"},
    {Key::u, "u", 0x20, "U"},
    {Key::v, "v", 0x09, "V"},
    {Key::w, "w", 0x0D, "W"},
    {Key::x, "x", 0x07, "X"},
    {Key::y, "y", 0x10, "Y"},
    {Key::z, "z", 0x06, "Z"},
    {Key::zero, "zero", 0x1D, "0"},
    {Key::one, "one", 0x12, "1"},
    {Key::two, "two", 0x13, "2"},
    {Key::three, "three", 0x14, "3"},
    {Key::four, "four", 0x15, "4"},
    {Key::five, "five", 0x17, "5"},
    {Key::six, "six", 0x16, "6"},
    {Key::seven, "seven", 0x1A, "7"},
    {Key::eight, "eight", 0x1C, "8"},
    {Key::nine, "nine", 0x19, "9"},
    {Key::period, "period", 0x2F, "."},
    {Key::quote, "quote", 0x27, "\""},
    {Key::rightBracket, "rightBracket", 0x1E, "]"},
    {Key::semicolon, "semicolon", 0x29, ";"},
    {Key::slash, "slash", 0x2C, "/"},
    {Key::backslash, "backslash", 0x2A, "\\"},
    {Key::comma, "comma", 0x2B, ","},
    {Key::equal, "equal", 0x18, "="},
    {Key::grave, "grave", 0x32, "`"},
    {Key::leftBracket, "leftBracket", 0x21, "["},
    {Key::minus, "minus", 0x1B, "-"},
    {Key::section, "section", 0x0A, "\u00A7"},
    {Key::space, "space", 0x31, "\u2423"},
    {Key::tab, "tab", 0x30, "\u21E5"},
    {Key::return_, "return", 0x24, "\u21A9\uFE0E"},
    {Key::command, "command", 0x37, "\u2318"},
    {Key::rightCommand, "rightCommand", 0x36, "\u2318"},
    {Key::option, "option", 0x3A, "\u2325"},
    {Key::rightOption, "rightOption", 0x3D, "\u2325"},
    {Key::control, "control", 0x3B, "\u2303"},
    {Key::rightControl, "rightControl", 0x3E, "\u2303"},
    {Key::shift, "shift", 0x38, "\u21E7"},
    {Key::rightShift, "rightShift", 0x3C, "\u21E7"},
    {Key::function, "function", 0x3F, "fn"},
    {Key::capsLock, "capsLock", 0x39, "\u21EA"},
    {Key::pageUp, "pageUp", 0x74, "\u21DE"},
    {Key::pageDown, "pageDown", 0x79, "\u21DF"},
    {Key::home, "home", 0x73, "\u2196"},
    {Key::end, "end", 0x77, "\u2198"},
    {Key::upArrow, "upArrow", 0x7E, "\u2191"},
    {Key::rightArrow, "rightArrow", 0x7C, "\u2192"},
    {Key::downArrow, "downArrow", 0x7D, "\u2193"},
    {Key::leftArrow, "leftArrow", 0x7B, "\u2190"},
    {Key::f1, "f1", 0x7A, "\uF860F1"},
    {Key::f2, "f2", 0x78, "\uF860F2"},
    {Key::f3, "f3", 0x63, "\uF860F3"},
    {Key::f4, "f4", 0x76, "\uF860F4"},
    {Key::f5, "f5", 0x60, "\uF860F5"},
    {Key::f6, "f6", 0x61, "\uF860F6"},
    {Key::f7, "f7", 0x62, "\uF860F7"},
    {Key::f8, "f8", 0x64, "\uF860F8"},
    {Key::f9, "f9", 0x65, "\uF860F9"},
    {Key::f10, "f10", 0x6D, "\uF861F10"},
    {Key::f11, "f11", 0x67, "\uF861F11"},
    {Key::f12, "f12", 0x6F, "\uF861F12"},
    {Key::f13, "f13", 0x69, "\uF861F13"},
    {Key::f14, "f14", 0x6B, "\uF861F14"},
    {Key::f15, "f15", 0x71, "\uF861F15"},
    {Key::f16, "f16", 0x6A, "\uF861F16"},
    {Key::f17, "f17", 0x40, "\uF861F17"},
    {Key::f18, "f18", 0x4F, "\uF861F18"},
    {Key::f19, "f19", 0x50, "\uF861F19"},
    {Key::f20, "f20", 0x5A, "\uF861F20"},
    {Key::keypad0, "keypad0", 0x52, "0"},
    {Key::keypad1, "keypad1", 0x53, "1"},
    {Key::keypad2, "keypad2", 0x54, "2"},
    {Key::keypad3, "keypad3", 0x55, "3"},
    {Key::keypad4, "keypad4", 0x56, "4"},
    {Key::keypad5, "keypad5", 0x57, "5"},
    {Key::keypad6, "keypad6", 0x58, "6"},
    {Key::keypad7, "keypad7", 0x59, "7"},
    {Key::keypad8, "keypad8", 0x5B, "8"},
    {Key::keypad9, "keypad9", 0x5C, "9"},
    {Key::keypadClear, "keypadClear", 0x47, "\u2327"},
    {Key::keypadDecimal, "keypadDecimal", 0x41, "."},
    {Key::keypadDivide, "keypadDivide", 0x4B, "/"},
    {Key::keypadEnter, "keypadEnter", 0x4C, "\u21A9\uFE0E"},
    {Key::keypadEquals, "keypadEquals", 0x51, "="},
    {Key::keypadMinus, "keypadMinus", 0x4E, "-"},
    {Key::keypadMultiply, "keypadMultiply", 0x43, "\U0001D5D1"},
    {Key::keypadPlus, "keypadPlus", 0x45, "+"},
    {Key::escape, "escape", 0x35, "\u238B"},
    {Key::delete_, "delete", 0x33, "\u232B"},
    {Key::forwardDelete, "forwardDelete", 0x75, "\u2326"},
    {Key::help, "help", 0x72, "?\u20DD"},
    {Key::volumeUp, "volumeUp", 0x48, "\U0001F50A"},
    {Key::volumeDown, "volumeDown", 0x49, "\U0001F509"},
    {Key::mute, "mute", 0x4A, "\U0001F507"},
}};

// clang-format on

constexpr bool isIndexedByCase() {
    for (std::size_t index = 0; index < keys.size(); ++index) {
        if (static_cast<std::size_t>(keys[index].key) != index) {
            return false;
        }
    }
    return true;
}

static_assert(isIndexedByCase());

struct Alias {
    Key key;
    std::string_view text;
};

constexpr std::array aliases{
    Alias{Key::return_, "\r"},
    Alias{Key::return_, "\u23CE"},
    Alias{Key::return_, "\u2B90"},
    Alias{Key::tab, "\t"},
    Alias{Key::space, " "},
    Alias{Key::command, "\uF8FF"},
    Alias{Key::grave, "\u02CB"},
    Alias{Key::grave, "\uFF40"},
};

const KeyFacts& facts(Key key) {
    return keys[static_cast<std::size_t>(key)];
}

/// Lower-cases A to Z and the Kelvin sign, the only characters whose lower-case form occurs in
/// names and descriptions.
std::string lowerCased(std::string_view text) {
    constexpr std::string_view kelvinSign = "\u212A";
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        if (text.starts_with(kelvinSign)) {
            result += 'k';
            text.remove_prefix(kelvinSign.size());
            continue;
        }
        const char character = text.front();
        const bool isUpper = character >= 'A' && character <= 'Z';
        result += isUpper ? static_cast<char>(character - 'A' + 'a') : character;
        text.remove_prefix(1);
    }
    return result;
}

bool isOnKeypad(Key key) {
    return key >= Key::keypad0 && key <= Key::keypadPlus;
}

} // namespace

std::uint32_t carbonKeyCode(Key key) {
    return facts(key).carbonKeyCode;
}

std::optional<Key> keyFromCarbonKeyCode(std::uint32_t carbonKeyCode) {
    const auto* const found =
        std::find_if(keys.begin(), keys.end(), [&](const KeyFacts& candidate) {
            return candidate.carbonKeyCode == carbonKeyCode;
        });
    return found == keys.end() ? std::nullopt : std::optional(found->key);
}

std::string_view description(Key key) {
    return facts(key).description;
}

std::optional<Key> keyFromString(std::string_view text) {
    const std::string wanted = lowerCased(text);
    // The first match wins: the left one of two modifier keys that share a description.
    for (const KeyFacts& candidate : keys) {
        if (wanted == lowerCased(candidate.name) ||
            (!isOnKeypad(candidate.key) && wanted == lowerCased(candidate.description))) {
            return candidate.key;
        }
    }
    for (const Alias& alias : aliases) {
        if (wanted == alias.text) {
            return alias.key;
        }
    }
    return std::nullopt;
}

} // namespace hotkey
