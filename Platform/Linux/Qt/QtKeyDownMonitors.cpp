#include "Platform/Linux/Qt/QtKeyDownMonitors.h"

#include "HotKey/Key.h"
#include "Platform/Linux/Keys/KeyCodes.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

namespace platform {

namespace {

using hotkey::ModifierFlags;

/// Caps Lock in X11's and Wayland's modifier states.
constexpr quint32 lockBit = 0x2;

/// Whether the key is a modifier or a lock on the user's layout, by its X11 keysym: the ISO level
/// and group shifts, Shift_L to Hyper_R, Mode_switch and Num_Lock.
bool isModifierKey(const QKeyEvent& event) {
    const quint32 keysym = event.nativeVirtualKey();
    return (keysym >= 0xFE01 && keysym <= 0xFE13) || (keysym >= 0xFFE1 && keysym <= 0xFFEE) ||
           keysym == 0xFF7E || keysym == 0xFF7F;
}

ModifierFlags qtModifiers(const QKeyEvent& event) {
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

/// nullopt also for the places of modifiers, which a layout may use for another key.
std::optional<hotkey::Key> keyAt(quint32 nativeScanCode) {
    const auto key = keyFromXkbKeyCode(nativeScanCode);
    const bool isModifierPlace =
        key && ((*key >= hotkey::Key::command && *key <= hotkey::Key::capsLock) ||
                *key == hotkey::Key::keypadClear);
    return isModifierPlace ? std::nullopt : key;
}

} // namespace

QtKeyDownMonitors::QtKeyDownMonitors(NativeModifiers nativeModifiers)
    : nativeModifiers_(std::move(nativeModifiers)) {
    QCoreApplication::instance()->installEventFilter(this);
}

foundation::ObserverToken QtKeyDownMonitors::addLocalMonitor(Handler handler) {
    for (auto& [nativeScanCode, key] : keys_) {
        key.isMonitored = false;
    }
    return handlers_.add([handler = std::move(handler)](std::optional<KeyEvent>& event) {
        if (event) {
            event = handler(*event);
        }
    });
}

void QtKeyDownMonitors::removeMonitor(foundation::ObserverToken token) {
    handlers_.remove(token);
}

bool QtKeyDownMonitors::eventFilter(QObject* receiver, QEvent* event) {
    // The windowing system's event comes to the window first and from there to the widgets.
    if (!receiver->isWindowType()) {
        return false;
    }
    if (event->type() == QEvent::ShortcutOverride && isMonitoring()) {
        // An accepted override keeps Qt from looking for a shortcut: the press itself follows.
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        return swallowsPress(static_cast<const QKeyEvent&>(*event));
    }
    return event->type() == QEvent::KeyRelease &&
           swallowsRelease(static_cast<const QKeyEvent&>(*event));
}

KeyEvent QtKeyDownMonitors::keyEvent(const QKeyEvent& event) const {
    KeyEvent translated;
    translated.modifierFlags =
        nativeModifiers_ ? nativeModifiers_(event.nativeModifiers()) : qtModifiers(event);
    if (const auto key = keyAt(event.nativeScanCode())) {
        translated.keyCode = hotkey::carbonKeyCode(*key);
        translated.modifierFlags = translated.modifierFlags | positionFlags(*key);
    }
    return translated;
}

/// While a menu is open, the window passes its keys on to the menu.
bool QtKeyDownMonitors::isMonitoring() const {
    return handlers_.size() > 0 && QApplication::activePopupWidget() == nullptr;
}

bool QtKeyDownMonitors::swallowsPress(const QKeyEvent& event) {
    if (isModifierKey(event)) {
        return false;
    }
    const quint32 code = event.nativeScanCode();
    Key& key = keys_[code];
    // A repetition is a release and a press of the same time, which Qt does not always recognize.
    const bool isRepetition =
        event.isAutoRepeat() || lastRelease_ == std::pair(code, event.timestamp());
    if (!isRepetition) {
        key.isMonitored = isMonitoring();
        key.isSwallowed = false;
    }
    if (isMonitoring()) {
        key.isSwallowed = !key.isMonitored || !passesMonitors(event);
    }
    return key.isSwallowed;
}

bool QtKeyDownMonitors::passesMonitors(const QKeyEvent& event) {
    std::optional<KeyEvent> remaining = keyEvent(event);
    handlers_.notify(remaining);
    return remaining.has_value();
}

bool QtKeyDownMonitors::swallowsRelease(const QKeyEvent& event) {
    const quint32 code = event.nativeScanCode();
    lastRelease_.emplace(code, event.timestamp());
    return keys_[code].isSwallowed;
}

} // namespace platform
