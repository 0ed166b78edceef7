#include "HotKey/Key.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace {

using hotkey::Key;

struct Expected {
    Key key;
    std::string_view lowerCaseName;
    std::uint32_t carbonKeyCode;
    std::string_view description;
};

// Descriptions in bytes: a wrong code point may look right.
// clang-format off
constexpr std::array<Expected, 114> expectedKeys{{
    {Key::a, "a", 0, "A"},
    {Key::b, "b", 11, "B"},
    {Key::c, "c", 8, "C"},
    {Key::d, "d", 2, "D"},
    {Key::e, "e", 14, "E"},
    {Key::f, "f", 3, "F"},
    {Key::g, "g", 5, "G"},
    {Key::h, "h", 4, "H"},
    {Key::i, "i", 34, "I"},
    {Key::j, "j", 38, "J"},
    {Key::k, "k", 40, "K"},
    {Key::l, "l", 37, "L"},
    {Key::m, "m", 46, "M"},
    {Key::n, "n", 45, "N"},
    {Key::o, "o", 31, "O"},
    {Key::p, "p", 35, "P"},
    {Key::q, "q", 12, "Q"},
    {Key::r, "r", 15, "R"},
    {Key::s, "s", 1, "S"},
    {Key::t, "t", 17, "T"},
    {Key::u, "u", 32, "U"},
    {Key::v, "v", 9, "V"},
    {Key::w, "w", 13, "W"},
    {Key::x, "x", 7, "X"},
    {Key::y, "y", 16, "Y"},
    {Key::z, "z", 6, "Z"},
    {Key::zero, "zero", 29, "0"},
    {Key::one, "one", 18, "1"},
    {Key::two, "two", 19, "2"},
    {Key::three, "three", 20, "3"},
    {Key::four, "four", 21, "4"},
    {Key::five, "five", 23, "5"},
    {Key::six, "six", 22, "6"},
    {Key::seven, "seven", 26, "7"},
    {Key::eight, "eight", 28, "8"},
    {Key::nine, "nine", 25, "9"},
    {Key::period, "period", 47, "."},
    {Key::quote, "quote", 39, "\""},
    {Key::rightBracket, "rightbracket", 30, "]"},
    {Key::semicolon, "semicolon", 41, ";"},
    {Key::slash, "slash", 44, "/"},
    {Key::backslash, "backslash", 42, "\\"},
    {Key::comma, "comma", 43, ","},
    {Key::equal, "equal", 24, "="},
    {Key::grave, "grave", 50, "`"},
    {Key::leftBracket, "leftbracket", 33, "["},
    {Key::minus, "minus", 27, "-"},
    {Key::section, "section", 10, "\xC2\xA7"},
    {Key::space, "space", 49, "\xE2\x90\xA3"},
    {Key::tab, "tab", 48, "\xE2\x87\xA5"},
    {Key::return_, "return", 36, "\xE2\x86\xA9\xEF\xB8\x8E"},
    {Key::command, "command", 55, "\xE2\x8C\x98"},
    {Key::rightCommand, "rightcommand", 54, "\xE2\x8C\x98"},
    {Key::option, "option", 58, "\xE2\x8C\xA5"},
    {Key::rightOption, "rightoption", 61, "\xE2\x8C\xA5"},
    {Key::control, "control", 59, "\xE2\x8C\x83"},
    {Key::rightControl, "rightcontrol", 62, "\xE2\x8C\x83"},
    {Key::shift, "shift", 56, "\xE2\x87\xA7"},
    {Key::rightShift, "rightshift", 60, "\xE2\x87\xA7"},
    {Key::function, "function", 63, "fn"},
    {Key::capsLock, "capslock", 57, "\xE2\x87\xAA"},
    {Key::pageUp, "pageup", 116, "\xE2\x87\x9E"},
    {Key::pageDown, "pagedown", 121, "\xE2\x87\x9F"},
    {Key::home, "home", 115, "\xE2\x86\x96"},
    {Key::end, "end", 119, "\xE2\x86\x98"},
    {Key::upArrow, "uparrow", 126, "\xE2\x86\x91"},
    {Key::rightArrow, "rightarrow", 124, "\xE2\x86\x92"},
    {Key::downArrow, "downarrow", 125, "\xE2\x86\x93"},
    {Key::leftArrow, "leftarrow", 123, "\xE2\x86\x90"},
    {Key::f1, "f1", 122, "\xEF\xA1\xA0" "F1"},
    {Key::f2, "f2", 120, "\xEF\xA1\xA0" "F2"},
    {Key::f3, "f3", 99, "\xEF\xA1\xA0" "F3"},
    {Key::f4, "f4", 118, "\xEF\xA1\xA0" "F4"},
    {Key::f5, "f5", 96, "\xEF\xA1\xA0" "F5"},
    {Key::f6, "f6", 97, "\xEF\xA1\xA0" "F6"},
    {Key::f7, "f7", 98, "\xEF\xA1\xA0" "F7"},
    {Key::f8, "f8", 100, "\xEF\xA1\xA0" "F8"},
    {Key::f9, "f9", 101, "\xEF\xA1\xA0" "F9"},
    {Key::f10, "f10", 109, "\xEF\xA1\xA1" "F10"},
    {Key::f11, "f11", 103, "\xEF\xA1\xA1" "F11"},
    {Key::f12, "f12", 111, "\xEF\xA1\xA1" "F12"},
    {Key::f13, "f13", 105, "\xEF\xA1\xA1" "F13"},
    {Key::f14, "f14", 107, "\xEF\xA1\xA1" "F14"},
    {Key::f15, "f15", 113, "\xEF\xA1\xA1" "F15"},
    {Key::f16, "f16", 106, "\xEF\xA1\xA1" "F16"},
    {Key::f17, "f17", 64, "\xEF\xA1\xA1" "F17"},
    {Key::f18, "f18", 79, "\xEF\xA1\xA1" "F18"},
    {Key::f19, "f19", 80, "\xEF\xA1\xA1" "F19"},
    {Key::f20, "f20", 90, "\xEF\xA1\xA1" "F20"},
    {Key::keypad0, "keypad0", 82, "0"},
    {Key::keypad1, "keypad1", 83, "1"},
    {Key::keypad2, "keypad2", 84, "2"},
    {Key::keypad3, "keypad3", 85, "3"},
    {Key::keypad4, "keypad4", 86, "4"},
    {Key::keypad5, "keypad5", 87, "5"},
    {Key::keypad6, "keypad6", 88, "6"},
    {Key::keypad7, "keypad7", 89, "7"},
    {Key::keypad8, "keypad8", 91, "8"},
    {Key::keypad9, "keypad9", 92, "9"},
    {Key::keypadClear, "keypadclear", 71, "\xE2\x8C\xA7"},
    {Key::keypadDecimal, "keypaddecimal", 65, "."},
    {Key::keypadDivide, "keypaddivide", 75, "/"},
    {Key::keypadEnter, "keypadenter", 76, "\xE2\x86\xA9\xEF\xB8\x8E"},
    {Key::keypadEquals, "keypadequals", 81, "="},
    {Key::keypadMinus, "keypadminus", 78, "-"},
    {Key::keypadMultiply, "keypadmultiply", 67, "\xF0\x9D\x97\x91"},
    {Key::keypadPlus, "keypadplus", 69, "+"},
    {Key::escape, "escape", 53, "\xE2\x8E\x8B"},
    {Key::delete_, "delete", 51, "\xE2\x8C\xAB"},
    {Key::forwardDelete, "forwarddelete", 117, "\xE2\x8C\xA6"},
    {Key::help, "help", 114, "?\xE2\x83\x9D"},
    {Key::volumeUp, "volumeup", 72, "\xF0\x9F\x94\x8A"},
    {Key::volumeDown, "volumedown", 73, "\xF0\x9F\x94\x89"},
    {Key::mute, "mute", 74, "\xF0\x9F\x94\x87"},
}};

// clang-format on

bool isOnKeypad(const Expected& expected) {
    return expected.lowerCaseName.starts_with("keypad");
}

TEST(KeyTests, Has114CasesInOrder) {
    EXPECT_EQ(hotkey::keyCount, 114U);
    for (std::size_t index = 0; index < expectedKeys.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(expectedKeys[index].key), index);
    }
}

TEST(KeyTests, MapsToItsCarbonKeyCode) {
    for (const Expected& expected : expectedKeys) {
        EXPECT_EQ(hotkey::carbonKeyCode(expected.key), expected.carbonKeyCode)
            << expected.lowerCaseName;
    }
}

TEST(KeyTests, HasAUniqueCarbonKeyCode) {
    std::set<std::uint32_t> codes;
    for (const Expected& expected : expectedKeys) {
        codes.insert(hotkey::carbonKeyCode(expected.key));
    }
    EXPECT_EQ(codes.size(), 114U);
}

TEST(KeyTests, RoundTripsThroughItsCarbonKeyCode) {
    for (const Expected& expected : expectedKeys) {
        EXPECT_EQ(hotkey::keyFromCarbonKeyCode(hotkey::carbonKeyCode(expected.key)), expected.key)
            << expected.lowerCaseName;
    }
}

TEST(KeyTests, Code0x0AIsSection) {
    EXPECT_EQ(hotkey::keyFromCarbonKeyCode(0x0A), Key::section);
}

TEST(KeyTests, Code0x34IsNoKey) {
    EXPECT_EQ(hotkey::keyFromCarbonKeyCode(0x34), std::nullopt);
}

TEST(KeyTests, NoOtherCodeIsAKey) {
    int found = 0;
    for (std::uint32_t code = 0; code <= 0x2FFFF; ++code) {
        const auto key = hotkey::keyFromCarbonKeyCode(code);
        found += key ? 1 : 0;
        if (code > 0x7E) {
            EXPECT_EQ(key, std::nullopt) << code;
        }
    }
    EXPECT_EQ(found, 114);
    EXPECT_EQ(hotkey::keyFromCarbonKeyCode(0x42), std::nullopt);
    EXPECT_EQ(hotkey::keyFromCarbonKeyCode(0xFFFFFFFF), std::nullopt);
}

TEST(KeyTests, HasADescription) {
    for (const Expected& expected : expectedKeys) {
        EXPECT_EQ(hotkey::description(expected.key), expected.description)
            << expected.lowerCaseName;
    }
}

TEST(KeyTests, IsFoundByItsName) {
    for (const Expected& expected : expectedKeys) {
        EXPECT_EQ(hotkey::keyFromString(expected.lowerCaseName), expected.key)
            << expected.lowerCaseName;
    }
}

TEST(KeyTests, IsFoundByItsNameInAnyCase) {
    EXPECT_EQ(hotkey::keyFromString("RETURN"), Key::return_);
    EXPECT_EQ(hotkey::keyFromString("CapsLock"), Key::capsLock);
    EXPECT_EQ(hotkey::keyFromString("rightCommand"), Key::rightCommand);
    EXPECT_EQ(hotkey::keyFromString("KEYPAD7"), Key::keypad7);
}

TEST(KeyTests, IsFoundByItsDescriptionExceptKeypadAndRightModifiers) {
    for (const Expected& expected : expectedKeys) {
        if (isOnKeypad(expected) || expected.lowerCaseName.starts_with("right")) {
            continue;
        }
        EXPECT_EQ(hotkey::keyFromString(expected.description), expected.key)
            << expected.lowerCaseName;
    }
    EXPECT_EQ(hotkey::keyFromString("]"), Key::rightBracket);
    EXPECT_EQ(hotkey::keyFromString("\u2192"), Key::rightArrow);
}

TEST(KeyTests, ASharedDescriptionFindsTheMainKey) {
    EXPECT_EQ(hotkey::keyFromString("7"), Key::seven);
    EXPECT_EQ(hotkey::keyFromString("."), Key::period);
    EXPECT_EQ(hotkey::keyFromString("/"), Key::slash);
    EXPECT_EQ(hotkey::keyFromString("="), Key::equal);
    EXPECT_EQ(hotkey::keyFromString("-"), Key::minus);
    EXPECT_EQ(hotkey::keyFromString("\u21A9\uFE0E"), Key::return_);
}

TEST(KeyTests, AKeypadDescriptionFindsNoKey) {
    EXPECT_EQ(hotkey::keyFromString("+"), std::nullopt);
    EXPECT_EQ(hotkey::keyFromString("\u2327"), std::nullopt);
    EXPECT_EQ(hotkey::keyFromString("\U0001D5D1"), std::nullopt);
}

TEST(KeyTests, AModifierGlyphFindsTheLeftKey) {
    EXPECT_EQ(hotkey::keyFromString("\u2318"), Key::command);
    EXPECT_EQ(hotkey::keyFromString("\u2325"), Key::option);
    EXPECT_EQ(hotkey::keyFromString("\u2303"), Key::control);
    EXPECT_EQ(hotkey::keyFromString("\u21E7"), Key::shift);
}

TEST(KeyTests, IsFoundByItsAliases) {
    EXPECT_EQ(hotkey::keyFromString("\r"), Key::return_);
    EXPECT_EQ(hotkey::keyFromString("\u23CE"), Key::return_);
    EXPECT_EQ(hotkey::keyFromString("\u2B90"), Key::return_);
    EXPECT_EQ(hotkey::keyFromString("\t"), Key::tab);
    EXPECT_EQ(hotkey::keyFromString(" "), Key::space);
    EXPECT_EQ(hotkey::keyFromString("\uF8FF"), Key::command);
    EXPECT_EQ(hotkey::keyFromString("\u02CB"), Key::grave);
    EXPECT_EQ(hotkey::keyFromString("\uFF40"), Key::grave);
    EXPECT_EQ(hotkey::keyFromString("one"), Key::one);
    EXPECT_EQ(hotkey::keyFromString("1"), Key::one);
}

TEST(KeyTests, AnFKeyIsFoundByItsDescriptionInAnyCase) {
    EXPECT_EQ(hotkey::keyFromString("\uF860F1"), Key::f1);
    EXPECT_EQ(hotkey::keyFromString("\uF860f1"), Key::f1);
    EXPECT_EQ(hotkey::keyFromString("\uF861F20"), Key::f20);
}

TEST(KeyTests, LowerCasesTheKelvinSignToK) {
    EXPECT_EQ(hotkey::keyFromString("\u212A"), Key::k);
    EXPECT_EQ(hotkey::keyFromString("\u212AEYPAD0"), Key::keypad0);
}

TEST(KeyTests, IsNotFoundByAnyOtherText) {
    for (const char* text : {"",
                             "aa",
                             "return ",
                             "enter",
                             "f21",
                             "\uF861F1",
                             "ü",
                             "\u21A9",
                             "\r\n",
                             "keypad",
                             "left",
                             "\xE2\x84"}) {
        EXPECT_EQ(hotkey::keyFromString(text), std::nullopt) << text;
    }
    EXPECT_EQ(hotkey::keyFromString(std::string_view("a\0", 2)), std::nullopt);
}

TEST(KeyTests, HashesByItsCase) {
    EXPECT_EQ(std::hash<Key>{}(Key::g), std::hash<Key>{}(Key::g));
    EXPECT_NE(std::hash<Key>{}(Key::g), std::hash<Key>{}(Key::h));
    EXPECT_EQ(sizeof(Key), 1U);
}

} // namespace
