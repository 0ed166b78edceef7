#include "Platform/Linux/Qt/QtWindow.h"

#include "Platform/Linux/Qt/QtViews.h"

#include <QApplication>
#include <QHideEvent>
#include <QScreen>
#include <QSpacerItem>
#include <QStyle>

namespace platform {

namespace {

Qt::WindowFlags flagsFor(WindowStyle style) {
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    flags.setFlag(Qt::WindowTitleHint, style.isTitled);
    flags.setFlag(Qt::FramelessWindowHint, !style.isTitled);
    flags.setFlag(Qt::WindowCloseButtonHint, style.isClosable);
    flags.setFlag(Qt::WindowMinimizeButtonHint, style.isMiniaturizable);
    flags.setFlag(Qt::WindowMaximizeButtonHint, style.isResizable);
    return flags;
}

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

} // namespace

QtWindow::QtWindow(Rect contentRect, WindowStyle style) : QWidget(nullptr, flagsFor(style)) {
    const QSize size = QSizeF(contentRect.size.width, contentRect.size.height).toSize();
    setAttribute(Qt::WA_QuitOnClose, false);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSizeConstraint(style.isResizable ? QLayout::SetMinimumSize : QLayout::SetFixedSize);
    // In the cell of the content, it keeps that from being smaller.
    layout_.addItem(new QSpacerItem(size.width(), size.height()), 0, 0);
    resize(size);
    const QRect available = screen()->availableGeometry();
    move(available.left() + static_cast<int>(contentRect.origin.x),
         available.bottom() + 1 - static_cast<int>(contentRect.origin.y) - height());
}

QtWindow::~QtWindow() {
    if (content_) {
        // A widget deletes its children, but the content is its controller's.
        widgetOf(*content_).setParent(nullptr);
    }
}

void QtWindow::setTitle(std::string title) {
    setWindowTitle(QString::fromStdString(title));
}

void QtWindow::center() {
    isCentered_ = true;
    // The real height of the title bar is unknown until the window is shown.
    const QSize whole = size() + QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    move(QStyle::alignedRect(
             layoutDirection(), Qt::AlignCenter, whole, screen()->availableGeometry())
             .topLeft());
}

void QtWindow::setContentViewController(ViewController& controller) {
    controller_ = &controller;
    content_ = controller.view();
    layout_.addWidget(&widgetOf(*content_), 0, 0);
    layout_.activate();
    if (isCentered_) {
        center();
    }
}

void QtWindow::makeKeyAndOrderFront() {
    if (!isVisible() && controller_ != nullptr) {
        controller_->viewWillAppear();
    }
    show();
    bringToFront(*this);
}

void QtWindow::close() {
    QWidget::close();
}

bool QtWindow::isVisible() const {
    return QWidget::isVisible();
}

bool QtWindow::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    if ((event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize ||
         event->type() == QEvent::Show) &&
        isVisible() && controller_ != nullptr) {
        controller_->viewDidLayout();
    }
    return isHandled;
}

void QtWindow::hideEvent(QHideEvent* event) {
    // Spontaneous ones come from the window manager, when it minimizes the window for example.
    if (!event->spontaneous() && controller_ != nullptr) {
        controller_->viewDidDisappear();
    }
}

void bringAllToFront() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowType() == Qt::Window) {
            bringToFront(*widget);
        }
    }
}

} // namespace platform
