#include "HotKey/KeyCombo.h"

#include "Foundation/FatalError.h"

#include <array>
#include <limits>
#include <string_view>

namespace hotkey {

namespace {

using foundation::Dictionary;
using foundation::Value;

template <typename Type>
const Type* entry(const Dictionary& dictionary, std::string_view key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? nullptr : std::get_if<Type>(&found->second);
}

std::uint32_t narrowed(std::int64_t value) {
    if (value < 0) {
        foundation::fatalError("Negative value is not representable");
    }
    if (value > std::numeric_limits<std::uint32_t>::max()) {
        foundation::fatalError("Not enough bits to represent the passed value");
    }
    return static_cast<std::uint32_t>(value);
}

std::optional<KeyCombo> enabledCombo(const Dictionary& hotKey) {
    const auto enabled = hotKey.find("kHISymbolicHotKeyEnabled");
    const auto code = hotKey.find("kHISymbolicHotKeyCode");
    const auto modifiers = hotKey.find("kHISymbolicHotKeyModifiers");
    if (enabled == hotKey.end() || code == hotKey.end() || modifiers == hotKey.end() ||
        !foundation::boolValue(enabled->second).value_or(false)) {
        return std::nullopt;
    }
    const auto keyCode = foundation::uint32Value(code->second);
    const auto modifierMask = foundation::uint32Value(modifiers->second);
    if (!keyCode || !modifierMask) {
        return std::nullopt;
    }
    return KeyCombo(*keyCode, *modifierMask);
}

void appendCombos(const std::vector<std::optional<MainMenuItem>>& items,
                  std::vector<KeyCombo>& combos) {
    for (const auto& item : items) {
        if (!item) {
            foundation::fatalError("NSArray element failed to match the Swift Array Element type");
        }
        if (const auto key = keyFromString(item->keyEquivalent)) {
            combos.emplace_back(*key, item->keyEquivalentModifierMask);
        }
        appendCombos(item->submenu, combos);
    }
}

} // namespace

std::optional<KeyCombo> KeyCombo::fromDictionary(const Dictionary& dictionary) {
    const auto* const keyCode = entry<std::int64_t>(dictionary, "keyCode");
    const auto* const modifiers = entry<std::int64_t>(dictionary, "modifiers");
    if (keyCode == nullptr || modifiers == nullptr) {
        return std::nullopt;
    }
    return KeyCombo(narrowed(*keyCode), narrowed(*modifiers));
}

std::optional<Key> KeyCombo::key() const {
    return keyFromCarbonKeyCode(carbonKeyCode);
}

void KeyCombo::setKey(std::optional<Key> key) {
    carbonKeyCode = key ? hotkey::carbonKeyCode(*key) : 0;
}

ModifierFlags KeyCombo::modifiers() const {
    return ModifierFlags::fromCarbonFlags(carbonModifiers);
}

void KeyCombo::setModifiers(ModifierFlags modifiers) {
    carbonModifiers = modifiers.carbonFlags();
}

std::string KeyCombo::description() const {
    std::string text = modifiers().description();
    if (const auto present = key()) {
        text += hotkey::description(*present);
    }
    return text;
}

Dictionary KeyCombo::dictionary() const {
    return {{"keyCode", static_cast<std::int64_t>(carbonKeyCode)},
            {"modifiers", static_cast<std::int64_t>(carbonModifiers)}};
}

std::span<const KeyCombo> KeyCombo::standardKeyCombos() {
    constexpr auto command = ModifierFlags::command;
    constexpr auto shift = ModifierFlags::shift;
    constexpr auto option = ModifierFlags::option;
    constexpr auto control = ModifierFlags::control;
    static const std::array combos{
        KeyCombo(Key::comma, command),
        KeyCombo(Key::h, command),
        KeyCombo(Key::h, option | command),
        KeyCombo(Key::q, command),
        KeyCombo(Key::n, command),
        KeyCombo(Key::o, command),
        KeyCombo(Key::w, command),
        KeyCombo(Key::s, command),
        KeyCombo(Key::s, shift | command),
        KeyCombo(Key::r, command),
        KeyCombo(Key::p, shift | command),
        KeyCombo(Key::p, command),
        KeyCombo(Key::z, command),
        KeyCombo(Key::z, shift | command),
        KeyCombo(Key::x, command),
        KeyCombo(Key::c, command),
        KeyCombo(Key::v, command),
        KeyCombo(Key::v, option | shift | command),
        KeyCombo(Key::a, command),
        KeyCombo(Key::f, command),
        KeyCombo(Key::f, option | command),
        KeyCombo(Key::g, command),
        KeyCombo(Key::g, shift | command),
        KeyCombo(Key::e, command),
        KeyCombo(Key::j, command),
        KeyCombo(Key::semicolon, shift | command),
        KeyCombo(Key::semicolon, command),
        KeyCombo(Key::t, command),
        KeyCombo(Key::b, command),
        KeyCombo(Key::i, command),
        KeyCombo(Key::u, command),
        KeyCombo(Key::equal, shift | command),
        KeyCombo(Key::minus, command),
        KeyCombo(Key::c, shift | command),
        KeyCombo(Key::c, option | command),
        KeyCombo(Key::v, option | command),
        KeyCombo(Key::leftBracket, shift | command),
        KeyCombo(Key::backslash, shift | command),
        KeyCombo(Key::rightBracket, shift | command),
        KeyCombo(Key::c, control | command),
        KeyCombo(Key::v, control | command),
        KeyCombo(Key::t, option | command),
        KeyCombo(Key::s, control | command),
        KeyCombo(Key::f, control | command),
        KeyCombo(Key::m, command),
        KeyCombo(Key::slash, shift | command),
    };
    static_assert(combos.size() == 46);
    return combos;
}

std::vector<KeyCombo> KeyCombo::systemKeyCombos(const SymbolicHotKeys& symbolicHotKeys) {
    std::vector<KeyCombo> combos;
    if (symbolicHotKeys.status != noErr || !symbolicHotKeys.hotKeys) {
        return combos;
    }
    for (const Dictionary& hotKey : *symbolicHotKeys.hotKeys) {
        if (const auto combo = enabledCombo(hotKey)) {
            combos.push_back(*combo);
        }
    }
    return combos;
}

std::vector<KeyCombo>
KeyCombo::mainMenuKeyCombos(const std::vector<std::optional<MainMenuItem>>& items) {
    std::vector<KeyCombo> combos;
    appendCombos(items, combos);
    return combos;
}

} // namespace hotkey
