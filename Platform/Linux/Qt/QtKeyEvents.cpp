#include "Platform/Linux/Qt/QtKeyEvents.h"

#include "HotKey/Key.h"
#include "Platform/Linux/Keys/KeyCodes.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace platform {

namespace {

using hotkey::Key;
using hotkey::ModifierFlags;

/// The lock bit of X11's and Wayland's modifier states, which is that of Caps Lock alone.
constexpr quint32 lockBit = 0x2;

/// First and last symbols of the keyboard that stand for modifiers, of X11's numbering: ISO level
/// and group shifts, the plain ones, and by themselves Mode_switch and Num_Lock.
constexpr std::array<std::pair<quint32, quint32>, 4> modifierSymbols{
    {{0xFE01, 0xFE13}, {0xFFE1, 0xFFEE}, {0xFF7E, 0xFF7E}, {0xFF7F, 0xFF7F}}};

bool isModifierPlace(Key key) {
    return (key >= Key::command && key <= Key::capsLock) || key == Key::keypadClear;
}

std::optional<Key> keyAt(quint32 nativeKeyCode) {
    const auto key = keyFromXkbKeyCode(nativeKeyCode);
    return key && isModifierPlace(*key) ? std::nullopt : key;
}

ModifierFlags heldModifiers(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    ModifierFlags flags;
    const auto add = [&flags](bool isHeld, ModifierFlags flag) {
        flags = isHeld ? flags | flag : flags;
    };
    add(held.testFlag(Qt::MetaModifier), ModifierFlags::command);
    add(held.testFlag(Qt::AltModifier), ModifierFlags::option);
    add(held.testFlag(Qt::ControlModifier), ModifierFlags::control);
    add(held.testFlag(Qt::ShiftModifier), ModifierFlags::shift);
    add((event.nativeModifiers() & lockBit) != 0, ModifierFlags::capsLock);
    return flags;
}

} // namespace

bool isModifierKey(const QKeyEvent& event) {
    const quint32 symbol = event.nativeVirtualKey();
    if (symbol != 0) {
        return std::any_of(
            modifierSymbols.begin(), modifierSymbols.end(), [symbol](const auto& range) {
                return symbol >= range.first && symbol <= range.second;
            });
    }
    constexpr std::array keys{Qt::Key_Shift,
                              Qt::Key_Control,
                              Qt::Key_Meta,
                              Qt::Key_Alt,
                              Qt::Key_AltGr,
                              Qt::Key_CapsLock,
                              Qt::Key_NumLock,
                              Qt::Key_Super_L,
                              Qt::Key_Super_R,
                              Qt::Key_Hyper_L,
                              Qt::Key_Hyper_R};
    return std::find(keys.begin(), keys.end(), event.key()) != keys.end();
}

KeyEvent keyEvent(const QKeyEvent& event, const NativeModifiers& nativeModifiers) {
    KeyEvent translated;
    translated.modifierFlags =
        nativeModifiers ? nativeModifiers(event.nativeModifiers()) : heldModifiers(event);
    if (const auto key = keyAt(event.nativeScanCode())) {
        translated.keyCode = hotkey::carbonKeyCode(*key);
        translated.modifierFlags = translated.modifierFlags | positionFlags(*key);
    }
    return translated;
}

} // namespace platform
