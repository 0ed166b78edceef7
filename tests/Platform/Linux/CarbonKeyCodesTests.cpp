#include "HotKey/Key.h"
#include "Platform/Linux/CarbonKeyCodes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

namespace {

using hotkey::Key;

// clang-format off
constexpr std::array<std::pair<Key, std::uint16_t>, hotkey::keyCount> places{{
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

TEST(CarbonKeyCodesTests, GiveEveryKeyItsPlaceOnTheKeyboard) {
    for (const auto& [key, evdevKeyCode] : places) {
        EXPECT_EQ(platform::evdevKeyCode(hotkey::carbonKeyCode(key)), evdevKeyCode)
            << hotkey::description(key);
    }
}

TEST(CarbonKeyCodesTests, LeadBackFromEveryPlaceToItsKey) {
    for (const auto& [key, evdevKeyCode] : places) {
        EXPECT_EQ(platform::carbonKeyCode(evdevKeyCode), hotkey::carbonKeyCode(key))
            << evdevKeyCode;
    }
}

TEST(CarbonKeyCodesTests, GiveNoTwoKeysOnePlace) {
    std::set<std::uint16_t> seen;
    for (std::uint32_t code = 0; code <= 0xFF; ++code) {
        const auto evdevKeyCode = platform::evdevKeyCode(code);
        if (evdevKeyCode) {
            EXPECT_NE(*evdevKeyCode, 0);
            EXPECT_TRUE(seen.insert(*evdevKeyCode).second) << code;
            EXPECT_EQ(platform::carbonKeyCode(*evdevKeyCode), code);
        }
    }
    EXPECT_EQ(seen.size(), hotkey::keyCount);
}

TEST(CarbonKeyCodesTests, KnowNothingElse) {
    EXPECT_EQ(platform::evdevKeyCode(0x34), std::nullopt);
    EXPECT_EQ(platform::evdevKeyCode(0xFFFFFFFF), std::nullopt);
    int known = 0;
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        known += platform::carbonKeyCode(static_cast<std::uint16_t>(code)) ? 1 : 0;
    }
    EXPECT_EQ(known, 114);
}

} // namespace
