#include "Platform/Linux/Qt/QtActivation.h"

#include <QApplication>
#include <QWidget>

namespace platform {

namespace {

bool isWindowOfItsOwn(const QWidget& widget) {
    return widget.isVisible() &&
           (widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog);
}

} // namespace

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

void bringAllToFront() {
    const QWidget* const active = QApplication::activeWindow();
    QWidget* front = QApplication::activeModalWidget();
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (isWindowOfItsOwn(*widget)) {
            widget->raise();
            if (front == nullptr ||
                (widget == active && front != QApplication::activeModalWidget())) {
                front = widget;
            }
        }
    }
    if (front != nullptr) {
        bringToFront(*front);
    }
}

} // namespace platform
