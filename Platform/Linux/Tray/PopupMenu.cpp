#include "Platform/Linux/Tray/PopupMenu.h"

#include <QAction>
#include <QKeyEvent>
#include <QKeySequence>
#include <utility>

namespace platform {

namespace {

/// A single ampersand marks the mnemonic; titles have none.
QString text(const MenuItem& item) {
    return QString::fromStdString(item.title()).replace('&', "&&");
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

void PopupMenu::popUp(QPoint place) {
    rows_->willOpen();
    menu_.popup(place);
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
    const QKeySequence pressed(event.keyCombination());
    for (QAction* const action : menu_.actions()) {
        if (action->isEnabled() && action->shortcut() == pressed) {
            menu_.close();
            action->trigger();
            return true;
        }
    }
    return false;
}

} // namespace platform
