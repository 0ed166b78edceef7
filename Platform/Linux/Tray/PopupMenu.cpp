#include "Platform/Linux/Tray/PopupMenu.h"

#include "HotKey/Key.h"
#include "Platform/Linux/Keys/KeyCodes.h"

#include <QAction>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QScreen>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace platform {

namespace {

/// A single ampersand marks the mnemonic; titles have none.
QString text(const MenuItem& item) {
    return QString::fromStdString(item.title()).replace('&', "&&");
}

/// By the character that the key types. A key that types no Latin letter, as with other scripts,
/// also counts as the key in its place on a US keyboard.
bool isPress(const QKeyEvent& event, const KeyEquivalent& keyEquivalent) {
    const QKeyCombination wanted = keySequence(keyEquivalent)[0];
    if (event.keyCombination() == wanted) {
        return true;
    }
    const bool typesLatinLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    const auto place = keyFromXkbKeyCode(event.nativeScanCode());
    return !typesLatinLetter && place && place == hotkey::keyFromString(keyEquivalent.key) &&
           event.modifiers() == wanted.keyboardModifiers();
}

/// The upper left corner of a menu of that size: above or below the icon, or at its side if it is
/// much closer to the left or right edge of the screen, as in a vertical panel. Qt moves a menu
/// that would leave the screen or cover a panel.
QPoint placeBeside(const QRect& icon, QSize menu, const QRect& screen) {
    const int left = icon.left() - screen.left();
    const int right = screen.right() - icon.right();
    const int above = icon.top() - screen.top();
    const int below = screen.bottom() - icon.bottom();
    if (std::min(left, right) + icon.width() < std::min(above, below)) {
        return {left < right ? icon.right() + 1 : icon.left() - menu.width(), icon.top()};
    }
    return {icon.left(), above < below ? icon.bottom() + 1 : icon.top() - menu.height()};
}

} // namespace

PopupMenu::PopupMenu(std::shared_ptr<Menu> menu) : rows_(std::move(menu)) {
    for (const auto& item : rows_->items()) {
        add(item);
    }
    titleObservers_.emplace(*rows_, [this](std::size_t index) {
        menu_.actions()[static_cast<qsizetype>(index)]->setText(text(*rows_->items()[index]));
    });
    menu_.installEventFilter(this);
}

void PopupMenu::popUp(const QRect& icon) {
    rows_->willOpen();
    const QScreen* const screen = QGuiApplication::screenAt(icon.center());
    menu_.popup(placeBeside(
        icon, menu_.sizeHint(), (screen != nullptr ? screen : menu_.screen())->geometry()));
}

bool PopupMenu::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && chooseByKey(*static_cast<QKeyEvent*>(event))) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void PopupMenu::add(const std::shared_ptr<MenuItem>& item) {
    if (item->isSeparator()) {
        menu_.addSeparator();
        return;
    }
    QAction* const action = menu_.addAction(text(*item));
    action->setEnabled(item->isEnabled());
    if (item->keyEquivalent()) {
        action->setShortcut(keySequence(*item->keyEquivalent()));
        action->setShortcutVisibleInContextMenu(true);
    }
    QObject::connect(
        action, &QAction::triggered, this, [item] { item->perform(); }, Qt::QueuedConnection);
}

bool PopupMenu::chooseByKey(const QKeyEvent& event) {
    const auto actions = menu_.actions();
    for (std::size_t index = 0; index < rows_->items().size(); ++index) {
        const auto& keyEquivalent = rows_->items()[index]->keyEquivalent();
        QAction* const action = actions[static_cast<qsizetype>(index)];
        if (keyEquivalent && action->isEnabled() && isPress(event, *keyEquivalent)) {
            menu_.close();
            action->trigger();
            return true;
        }
    }
    return false;
}

} // namespace platform
