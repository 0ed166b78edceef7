#pragma once

#include "Foundation/Value.h"
#include "HotKey/CarbonEvents.h"
#include "HotKey/Key.h"
#include "HotKey/ModifierFlags.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace hotkey {

/// What the system answers when it is asked for its own keyboard shortcuts.
struct SymbolicHotKeys {
    OSStatus status = noErr;
    /// One dictionary per shortcut, with the system's keys and values; nullopt for a null array.
    std::optional<std::vector<foundation::Dictionary>> hotKeys;
};

/// An item of the application's main menu, as far as keyboard shortcuts go.
struct MainMenuItem {
    std::string keyEquivalent; ///< In UTF-8; empty for an item without a shortcut.
    ModifierFlags keyEquivalentModifierMask;
    /// From top to bottom. nullopt stands for an element of the system's array that is no item.
    std::vector<std::optional<MainMenuItem>> submenu;
};

/// A key with modifiers, as the Carbon values that a hot key is registered with. Values without a
/// meaning are kept unchanged. Any thread.
struct KeyCombo {
    std::uint32_t carbonKeyCode = 0;
    std::uint32_t carbonModifiers = 0;

    KeyCombo(std::uint32_t keyCode, std::uint32_t modifierMask)
        : carbonKeyCode(keyCode), carbonModifiers(modifierMask) {}

    KeyCombo(Key key, ModifierFlags modifiers)
        : carbonKeyCode(hotkey::carbonKeyCode(key)), carbonModifiers(modifiers.carbonFlags()) {}

    /// The inverse of dictionary(). nullopt unless both entries are present and signed integers; a
    /// fatal error if such an integer does not fit an unsigned 32-bit value.
    [[nodiscard]] static std::optional<KeyCombo>
    fromDictionary(const foundation::Dictionary& dictionary);

    /// nullopt if no key has the stored code.
    [[nodiscard]] std::optional<Key> key() const;

    /// nullopt is stored as code 0, which reads back as `a`: there is no code for no key.
    void setKey(std::optional<Key> key);

    [[nodiscard]] ModifierFlags modifiers() const;
    void setModifiers(ModifierFlags modifiers);

    /// The modifiers' glyphs and the key's text in UTF-8; the glyphs alone if there is no key.
    [[nodiscard]] std::string description() const;

    /// "keyCode" and "modifiers", as signed integers.
    [[nodiscard]] foundation::Dictionary dictionary() const;

    bool operator==(const KeyCombo&) const = default;

    /// The combinations that applications conventionally use.
    [[nodiscard]] static std::span<const KeyCombo> standardKeyCombos();

    /// The enabled combinations among the system's own; empty if the system answered with an error.
    [[nodiscard]] static std::vector<KeyCombo>
    systemKeyCombos(const SymbolicHotKeys& symbolicHotKeys);

    /// The combinations of the main menu's items, each item before its submenu. nullopt among them
    /// is a fatal error.
    [[nodiscard]] static std::vector<KeyCombo>
    mainMenuKeyCombos(const std::vector<std::optional<MainMenuItem>>& items);
};

} // namespace hotkey
