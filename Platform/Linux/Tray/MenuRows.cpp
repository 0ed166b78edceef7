#include "Platform/Linux/Tray/MenuRows.h"

#include <xkbcommon/xkbcommon.h>

#include <QString>
#include <array>

namespace platform {

namespace {

using hotkey::ModifierFlags;

/// The names of the modifiers in `mask`, given those of control, option, shift and command.
QStringList modifierNames(ModifierFlags mask, const std::array<const char*, 4>& names) {
    constexpr std::array modifiers{ModifierFlags::control,
                                   ModifierFlags::option,
                                   ModifierFlags::shift,
                                   ModifierFlags::command};
    QStringList present;
    for (std::size_t index = 0; index < modifiers.size(); ++index) {
        if (mask.contains(modifiers[index])) {
            present.append(names[index]);
        }
    }
    return present;
}

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
    return modifierNames(keyEquivalent.modifierMask, {"Control", "Alt", "Shift", "Super"})
           << keysymName(QString::fromStdString(keyEquivalent.key));
}

QKeySequence keySequence(const KeyEquivalent& keyEquivalent) {
    const QStringList names =
        modifierNames(keyEquivalent.modifierMask, {"Ctrl", "Alt", "Shift", "Meta"})
        << QString::fromStdString(keyEquivalent.key);
    return QKeySequence::fromString(names.join('+'), QKeySequence::PortableText);
}

TitleObservers::TitleObservers(const Menu& menu,
                               const std::function<void(std::size_t)>& didChange) {
    for (std::size_t index = 0; index < menu.items().size(); ++index) {
        const auto& item = menu.items()[index];
        observed_.emplace_back(item,
                               item->addTitleObserver([didChange, index] { didChange(index); }));
    }
}

TitleObservers::~TitleObservers() {
    for (const auto& [item, token] : observed_) {
        item->removeTitleObserver(token);
    }
}

} // namespace platform
