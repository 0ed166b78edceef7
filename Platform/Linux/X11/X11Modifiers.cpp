#include "Platform/Linux/X11/X11Modifiers.h"

#include "Platform/Linux/Keys/KeyCodes.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>

namespace platform {

namespace {

using hotkey::Key;
using hotkey::ModifierFlags;

constexpr xcb_keysym_t numLock = 0xFF7F;
constexpr xcb_keysym_t scrollLock = 0xFF14;
constexpr xcb_keysym_t metaLeft = 0xFFE7;
constexpr xcb_keysym_t metaRight = 0xFFE8;
constexpr xcb_keysym_t altLeft = 0xFFE9;
constexpr xcb_keysym_t altRight = 0xFFEA;
constexpr xcb_keysym_t superLeft = 0xFFEB;
constexpr xcb_keysym_t superRight = 0xFFEC;

/// The keys of one modifier and the keysyms on them.
struct ModifierKeys {
    std::vector<std::uint32_t> keyCodes;
    std::vector<std::uint32_t> keysyms;
};

/// By the number of the modifier's bit.
using Keyboard = std::array<ModifierKeys, 8>;

std::optional<Keyboard> queryKeyboard(xcb_connection_t* connection) {
    const auto* const setup = xcb_get_setup(connection);
    const auto keyCount = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mapRequest = xcb_get_modifier_mapping(connection);
    const auto keysymsRequest = xcb_get_keyboard_mapping(connection, setup->min_keycode, keyCount);
    const XcbPointer<xcb_get_modifier_mapping_reply_t> map(
        xcb_get_modifier_mapping_reply(connection, mapRequest, nullptr));
    const XcbPointer<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(connection, keysymsRequest, nullptr));
    if (!map || !mapping) {
        return std::nullopt;
    }
    const std::span keysyms(
        xcb_get_keyboard_mapping_keysyms(mapping.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(mapping.get())));
    const std::size_t perKey = mapping->keysyms_per_keycode;
    const xcb_keycode_t* keyCode = xcb_get_modifier_mapping_keycodes(map.get());
    Keyboard keyboard;
    for (ModifierKeys& modifier : keyboard) {
        for (int i = 0; i < map->keycodes_per_modifier; ++i, ++keyCode) {
            // The map is filled up with key code 0.
            if (*keyCode < setup->min_keycode) {
                continue;
            }
            modifier.keyCodes.push_back(*keyCode);
            const std::size_t first = (*keyCode - setup->min_keycode) * perKey;
            for (std::size_t j = first; j < std::min(first + perKey, keysyms.size()); ++j) {
                modifier.keysyms.push_back(keysyms[j]);
            }
        }
    }
    return keyboard;
}

/// The bit of the first modifier that has any of these key codes or keysyms; 0 if there is none.
std::uint16_t bitWith(const Keyboard& keyboard,
                      std::vector<std::uint32_t> ModifierKeys::*codes,
                      std::initializer_list<std::uint32_t> wanted) {
    const auto found =
        std::find_if(keyboard.begin(), keyboard.end(), [&](const ModifierKeys& modifier) {
            const auto& present = modifier.*codes;
            return std::find_first_of(
                       present.begin(), present.end(), wanted.begin(), wanted.end()) !=
                   present.end();
        });
    return found == keyboard.end() ? std::uint16_t{0}
                                   : static_cast<std::uint16_t>(1U << (found - keyboard.begin()));
}

} // namespace

std::optional<X11Modifiers> X11Modifiers::query(const X11Connection& connection) {
    const auto keyboard = queryKeyboard(connection.get());
    if (!keyboard) {
        return std::nullopt;
    }
    const auto withKeysym = [&](std::initializer_list<xcb_keysym_t> keysyms) {
        return bitWith(*keyboard, &ModifierKeys::keysyms, keysyms);
    };
    const auto withKeyCode = [&](std::initializer_list<std::uint32_t> keyCodes) {
        return bitWith(*keyboard, &ModifierKeys::keyCodes, keyCodes);
    };
    // A layout may put other keysyms on these keys, Meta on Alt or Super for example. Then their
    // position decides.
    auto command = withKeysym({superLeft, superRight});
    if (command == 0) {
        command = withKeyCode({xkbKeyCode(Key::command), xkbKeyCode(Key::rightCommand)});
    }
    auto option = withKeysym({altLeft, altRight});
    if (option == 0) {
        option = withKeyCode({xkbKeyCode(Key::option)});
    }
    if (option == 0) {
        option = withKeysym({metaLeft, metaRight});
    }
    const auto ifPresent = [&](xcb_mod_mask_t bit, xcb_map_index_t index) {
        return static_cast<std::uint16_t>((*keyboard)[index].keyCodes.empty() ? 0 : bit);
    };
    X11Modifiers modifiers;
    modifiers.bits_ = {
        {{ModifierFlags::command, command},
         {ModifierFlags::option, option},
         {ModifierFlags::control, ifPresent(XCB_MOD_MASK_CONTROL, XCB_MAP_INDEX_CONTROL)},
         {ModifierFlags::shift, ifPresent(XCB_MOD_MASK_SHIFT, XCB_MAP_INDEX_SHIFT)}}};
    unsigned locks = XCB_MOD_MASK_LOCK | withKeysym({numLock}) | withKeysym({scrollLock});
    // A bit that a lock shares with a modifier stands for the modifier.
    for (const auto& [flag, bit] : modifiers.bits_) {
        locks &= ~unsigned{bit};
    }
    modifiers.locks_ = static_cast<std::uint16_t>(locks);
    return modifiers;
}

std::optional<std::uint16_t> X11Modifiers::mask(std::uint32_t carbonModifiers) const {
    const auto wanted = ModifierFlags::fromCarbonFlags(carbonModifiers);
    if (wanted.carbonFlags() != carbonModifiers) {
        return std::nullopt;
    }
    unsigned mask = 0;
    for (const auto& [flag, bit] : bits_) {
        if (wanted.contains(flag)) {
            if (bit == 0) {
                return std::nullopt;
            }
            mask |= bit;
        }
    }
    return static_cast<std::uint16_t>(mask);
}

ModifierFlags X11Modifiers::modifierFlags(std::uint32_t state) const {
    ModifierFlags flags;
    if ((state & XCB_MOD_MASK_LOCK) != 0) {
        flags = ModifierFlags::capsLock;
    }
    for (const auto& [flag, bit] : bits_) {
        if ((state & bit) != 0) {
            flags = flags | flag;
        }
    }
    return flags;
}

std::uint16_t X11Modifiers::heldModifiers(std::uint16_t state) const {
    constexpr unsigned everyModifier = 0xFF;
    return static_cast<std::uint16_t>(state & everyModifier & ~unsigned{locks_});
}

std::vector<std::uint16_t> X11Modifiers::lockStates() const {
    std::vector<std::uint16_t> states;
    // Counts down through all subsets of the bits.
    for (unsigned subset = locks_;; subset = (subset - 1) & locks_) {
        states.push_back(static_cast<std::uint16_t>(subset));
        if (subset == 0) {
            return states;
        }
    }
}

} // namespace platform
