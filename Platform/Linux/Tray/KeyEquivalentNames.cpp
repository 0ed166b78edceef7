#include "Platform/Linux/Tray/KeyEquivalentNames.h"

#include <xkbcommon/xkbcommon.h>

#include <QString>
#include <array>

namespace platform {

namespace {

using hotkey::ModifierFlags;

QString keysymName(const QString& key) {
    const auto characters = key.toUcs4();
    std::array<char, 64> name{};
    if (characters.size() != 1 ||
        xkb_keysym_get_name(xkb_utf32_to_keysym(characters.front()), name.data(), name.size()) <=
            0) {
        return key;
    }
    return QString::fromLatin1(name.data());
}

} // namespace

QStringList busNames(const KeyEquivalent& keyEquivalent) {
    const ModifierFlags mask = keyEquivalent.modifierMask;
    QStringList names;
    if (mask.contains(ModifierFlags::control)) {
        names.append("Control");
    }
    if (mask.contains(ModifierFlags::option)) {
        names.append("Alt");
    }
    if (mask.contains(ModifierFlags::shift)) {
        names.append("Shift");
    }
    if (mask.contains(ModifierFlags::command)) {
        names.append("Super");
    }
    names.append(keysymName(QString::fromStdString(keyEquivalent.key)));
    return names;
}

QKeySequence keySequence(const KeyEquivalent& keyEquivalent) {
    const ModifierFlags mask = keyEquivalent.modifierMask;
    QString names;
    if (mask.contains(ModifierFlags::control)) {
        names += "Ctrl+";
    }
    if (mask.contains(ModifierFlags::option)) {
        names += "Alt+";
    }
    if (mask.contains(ModifierFlags::shift)) {
        names += "Shift+";
    }
    if (mask.contains(ModifierFlags::command)) {
        names += "Meta+";
    }
    return QKeySequence::fromString(names + QString::fromStdString(keyEquivalent.key),
                                    QKeySequence::PortableText);
}

} // namespace platform
