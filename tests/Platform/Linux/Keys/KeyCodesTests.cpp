#include "HotKey/Key.h"
#include "HotKey/ModifierFlags.h"
#include "Platform/Linux/Keys/KeyCodes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

namespace {

using hotkey::Key;
using hotkey::ModifierFlags;

// clang-format off
constexpr std::array<std::pair<Key, std::uint32_t>, hotkey::keyCount> evdevKeyCodes{{
    {Key::a, 30},
    {Key::b, 48},
    {Key::c, 46},
    {Key::d, 32},
    {Key::e, 18},
    {Key::f, 33},
    {Key::g, 34},
    {Key::h, 35},
    {Key::i, 23},
    {Key::j, 36},
    {Key::k, 37},
    {Key::l, 38},
    {Key::m, 50},
    {Key::n, 49},
    {Key::o, 24},
    {Key::p, 25},
    {Key::q, 16},
    {Key::r, 19},
    {Key::s, 31},
    {Key::t, 20},
    {Key::u, 22},
    {Key::v, 47},
    {Key::w, 17},
    {Key::x, 45},
    {Key::y, 21},
    {Key::z, 44},
    {Key::zero, 11},
    {Key::one, 2},
    {Key::two, 3},
    {Key::three, 4},
    {Key::four, 5},
    {Key::five, 6},
    {Key::six, 7},
    {Key::seven, 8},
    {Key::eight, 9},
    {Key::nine, 10},
    {Key::period, 52},
    {Key::quote, 40},
    {Key::rightBracket, 27},
    {Key::semicolon, 39},
    {Key::slash, 53},
    {Key::backslash, 43},
    {Key::comma, 51},
    {Key::equal, 13},
    {Key::grave, 41},
    {Key::leftBracket, 26},
    {Key::minus, 12},
    {Key::section, 86},
    {Key::space, 57},
    {Key::tab, 15},
    {Key::return_, 28},
    {Key::command, 125},
    {Key::rightCommand, 126},
    {Key::option, 56},
    {Key::rightOption, 100},
    {Key::control, 29},
    {Key::rightControl, 97},
    {Key::shift, 42},
    {Key::rightShift, 54},
    {Key::function, 464},
    {Key::capsLock, 58},
    {Key::pageUp, 104},
    {Key::pageDown, 109},
    {Key::home, 102},
    {Key::end, 107},
    {Key::upArrow, 103},
    {Key::rightArrow, 106},
    {Key::downArrow, 108},
    {Key::leftArrow, 105},
    {Key::f1, 59},
    {Key::f2, 60},
    {Key::f3, 61},
    {Key::f4, 62},
    {Key::f5, 63},
    {Key::f6, 64},
    {Key::f7, 65},
    {Key::f8, 66},
    {Key::f9, 67},
    {Key::f10, 68},
    {Key::f11, 87},
    {Key::f12, 88},
    {Key::f13, 183},
    {Key::f14, 184},
    {Key::f15, 185},
    {Key::f16, 186},
    {Key::f17, 187},
    {Key::f18, 188},
    {Key::f19, 189},
    {Key::f20, 190},
    {Key::keypad0, 82},
    {Key::keypad1, 79},
    {Key::keypad2, 80},
    {Key::keypad3, 81},
    {Key::keypad4, 75},
    {Key::keypad5, 76},
    {Key::keypad6, 77},
    {Key::keypad7, 71},
    {Key::keypad8, 72},
    {Key::keypad9, 73},
    {Key::keypadClear, 69},
    {Key::keypadDecimal, 83},
    {Key::keypadDivide, 98},
    {Key::keypadEnter, 96},
    {Key::keypadEquals, 117},
    {Key::keypadMinus, 74},
    {Key::keypadMultiply, 55},
    {Key::keypadPlus, 78},
    {Key::escape, 1},
    {Key::delete_, 14},
    {Key::forwardDelete, 111},
    {Key::help, 110},
    {Key::volumeUp, 115},
    {Key::volumeDown, 114},
    {Key::mute, 113},
}};

// clang-format on

TEST(KeyCodesTests, MapsEveryKeyToItsEvdevCodePlus8) {
    for (const auto& [key, evdevKeyCode] : evdevKeyCodes) {
        EXPECT_EQ(platform::xkbKeyCode(key), evdevKeyCode + 8) << hotkey::description(key);
    }
}

TEST(KeyCodesTests, MapsEveryCodeBackToItsKey) {
    for (const auto& [key, evdevKeyCode] : evdevKeyCodes) {
        EXPECT_EQ(platform::keyFromXkbKeyCode(evdevKeyCode + 8), key) << evdevKeyCode;
    }
}

TEST(KeyCodesTests, GivesEachKeyACodeOfItsOwn) {
    std::set<std::uint32_t> codes;
    for (const auto& [key, evdevKeyCode] : evdevKeyCodes) {
        codes.insert(platform::xkbKeyCode(key));
    }
    EXPECT_EQ(codes.size(), hotkey::keyCount);
}

TEST(KeyCodesTests, MapsNoOtherCodeToAKey) {
    std::size_t known = 0;
    for (std::uint32_t code = 0; code <= 0x10007; ++code) {
        known += platform::keyFromXkbKeyCode(code) ? 1U : 0U;
    }
    EXPECT_EQ(known, hotkey::keyCount);
    EXPECT_EQ(platform::keyFromXkbKeyCode(0xFFFFFFFF), std::nullopt);
}

TEST(KeyCodesTests, GivesArrowsFKeysAndNavigationKeysTheFunctionFlag) {
    for (const Key key : {Key::upArrow,
                          Key::downArrow,
                          Key::leftArrow,
                          Key::rightArrow,
                          Key::f1,
                          Key::f12,
                          Key::f20,
                          Key::home,
                          Key::end,
                          Key::pageUp,
                          Key::pageDown,
                          Key::forwardDelete,
                          Key::help}) {
        EXPECT_EQ(platform::positionFlags(key), ModifierFlags::function);
    }
}

TEST(KeyCodesTests, GivesOtherKeysNoFlags) {
    for (const Key key : {Key::a,
                          Key::five,
                          Key::capsLock,
                          Key::escape,
                          Key::tab,
                          Key::space,
                          Key::return_,
                          Key::delete_,
                          Key::section,
                          Key::mute,
                          Key::keypad0,
                          Key::keypad9,
                          Key::keypadEnter,
                          Key::keypadPlus}) {
        EXPECT_EQ(platform::positionFlags(key), ModifierFlags{});
    }
}

TEST(ShortcutTextTests, NamesKeysAsLinuxUsersKnowThem) {
    using platform::shortcutText;
    EXPECT_EQ(shortcutText(Key::g, ModifierFlags::command), "Super+G");
    EXPECT_EQ(shortcutText(Key::k,
                           ModifierFlags::shift | ModifierFlags::option | ModifierFlags::control |
                               ModifierFlags::command | ModifierFlags::capsLock),
              "Super+Ctrl+Alt+Shift+K");
    EXPECT_EQ(shortcutText(Key::comma, ModifierFlags::option), "Alt+,");
    EXPECT_EQ(shortcutText(Key::return_, ModifierFlags::control), "Ctrl+Enter");
    EXPECT_EQ(shortcutText(Key::space, ModifierFlags::capsLock), "Space");
    EXPECT_EQ(shortcutText(Key::delete_, ModifierFlags::command), "Super+Backspace");
    EXPECT_EQ(shortcutText(Key::keypad7, ModifierFlags::command), "Super+Keypad 7");
    EXPECT_EQ(shortcutText(Key::keypadMultiply, ModifierFlags::command), "Super+Keypad *");
    EXPECT_EQ(shortcutText(Key::keypadEnter, ModifierFlags::command), "Super+Keypad Enter");
}

} // namespace
