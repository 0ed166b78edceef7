#pragma once

#include "Foundation/Value.h"
#include "HotKey/Key.h"
#include "HotKey/MainMenu.h"
#include "HotKey/ModifierFlags.h"
#include "HotKey/SymbolicHotKeys.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace hotkey {

/// A key together with modifiers, as the Carbon values that a hot key is registered with. Values
/// without meaning are kept as they are. Any thread, but for the two queries that ask the system.
struct KeyCombo {
    std::uint32_t carbonKeyCode = 0;
    std::uint32_t carbonModifiers = 0;

    KeyCombo(std::uint32_t keyCode, std::uint32_t modifierMask)
        : carbonKeyCode(keyCode), carbonModifiers(modifierMask) {}

    KeyCombo(Key key, ModifierFlags modifiers)
        : carbonKeyCode(hotkey::carbonKeyCode(key)), carbonModifiers(modifiers.carbonFlags()) {}

    /// The inverse of dictionary(). None unless both entries are there and are signed integers;
    /// a fatal error when such an integer does not fit 32 bits unsigned.
    [[nodiscard]] static std::optional<KeyCombo>
    fromDictionary(const foundation::Dictionary& dictionary);

    /// None when no key has the stored code.
    [[nodiscard]] std::optional<Key> key() const;

    /// No key is stored as code 0, which reads back as `a`: no code means no key.
    void setKey(std::optional<Key> key);

    [[nodiscard]] ModifierFlags modifiers() const;
    void setModifiers(ModifierFlags modifiers);

    /// The modifiers' glyphs and the key's text in UTF-8; the glyphs alone when there is no key.
    [[nodiscard]] std::string description() const;

    /// "keyCode" and "modifiers", as signed integers.
    [[nodiscard]] foundation::Dictionary dictionary() const;

    bool operator==(const KeyCombo&) const = default;

    /// The combinations that applications use by convention.
    [[nodiscard]] static std::span<const KeyCombo> standardKeyCombos();

    /// The combinations that the system has taken and enabled; empty when it does not say.
    [[nodiscard]] static std::vector<KeyCombo> systemKeyCombos(SymbolicHotKeys& symbolicHotKeys);

    /// The combinations of the application's main menu, each item before its submenu. An element
    /// that is not a menu item is a fatal error.
    [[nodiscard]] static std::vector<KeyCombo> mainMenuKeyCombos(MainMenu& mainMenu);
};

} // namespace hotkey
