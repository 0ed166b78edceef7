#include "Platform/Linux/Qt/QtWindow.h"

#include "Platform/Linux/Qt/QtActivation.h"
#include "Platform/Linux/Qt/QtWidgetView.h"

#include <QCloseEvent>
#include <QRectF>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>
#include <utility>

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

/// Has Tab go through the widgets inside in the order in which their layouts list them: from top to
/// bottom, whatever the order in which they were made. `last` is the one before them; returns the
/// new last one.
QWidget* chainTabOrder(const QWidget& container, QWidget* last) {
    const QLayout* const layout = container.layout();
    for (int index = 0; layout != nullptr && index < layout->count(); ++index) {
        QWidget* const widget = layout->itemAt(index)->widget();
        if (widget == nullptr) {
            continue;
        }
        if (widget->focusPolicy() != Qt::NoFocus) {
            QWidget::setTabOrder(last, widget);
            last = widget;
        }
        last = chainTabOrder(*widget, last);
    }
    return last;
}

} // namespace

class QtWindow::Frame final : public QWidget {
  public:
    Frame(Rect contentRect, WindowStyle style)
        : QWidget(nullptr, flagsFor(style)),
          style_(style),
          layout_(new QVBoxLayout(this)),
          contentSize_(QSizeF(contentRect.size.width, contentRect.size.height).toSize()) {
        setAttribute(Qt::WA_QuitOnClose, false);
        layout_->setContentsMargins(0, 0, 0, 0);
        layout_->setSizeConstraint(QLayout::SetNoConstraint);
        const QRect available = screen()->availableGeometry();
        resize(contentSize_);
        fit();
        move(available.left() + static_cast<int>(contentRect.origin.x),
             available.bottom() + 1 - static_cast<int>(contentRect.origin.y) - height());
    }

    ~Frame() override {
        if (content_) {
            // The content is its controller's.
            QtWidgetView::of(*content_).widget().setParent(nullptr);
        }
    }

    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    Frame(Frame&&) = delete;
    Frame& operator=(Frame&&) = delete;

    void moveToMiddle() {
        // The frame around the content is known once the window has been shown.
        const QSize decoration = frameGeometry().size() - size();
        const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
        const QSize whole = size() + (decoration.isNull() ? QSize(0, titleBar) : decoration);
        const QRect available = screen()->availableGeometry();
        move(available.topLeft() + QPoint((available.width() - whole.width()) / 2,
                                          (available.height() - whole.height()) / 2));
        isInTheMiddle_ = true;
    }

    void setController(ViewController& controller) {
        if (content_) {
            QtWidgetView::of(*content_).widget().setParent(nullptr);
        }
        content_ = controller.view();
        controller_ = &controller;
        QWidget& widget = QtWidgetView::of(*content_).widget();
        layout_->addWidget(&widget);
        widget.show();
        chainTabOrder(*this, this);
        QtWidgetView::forgetSizesInside(*this);
        fit();
        layout_->setGeometry(rect());
        QtWidgetView::of(*content_).layOutNow();
    }

    void present() {
        if (!isVisible() && controller_ != nullptr) {
            controller_->viewWillAppear();
            QtWidgetView::forgetSizesInside(*this);
            fit();
        }
        show();
        bringToFront(*this);
    }

  protected:
    bool event(QEvent* event) override {
        const bool isHandled = QWidget::event(event);
        if (event->type() == QEvent::LayoutRequest) {
            fit();
        }
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize ||
            event->type() == QEvent::Show) {
            tellOfLayout();
        }
        return isHandled;
    }

    void closeEvent(QCloseEvent* event) override {
        event->setAccepted(style_.isClosable || !event->spontaneous());
    }

    void hideEvent(QHideEvent* event) override {
        // A spontaneous one is the window manager's, who shows another desktop for example.
        if (!event->spontaneous() && controller_ != nullptr) {
            controller_->viewDidDisappear();
        }
    }

  private:
    /// Gives the window the size that was asked for, or what its content needs.
    void fit() {
        QSize needed = layout_->totalMinimumSize();
        if (layout_->hasHeightForWidth()) {
            const int width = std::max(needed.width(), contentSize_.width());
            needed.setHeight(layout_->totalMinimumHeightForWidth(width));
        }
        const QSize fitting = contentSize_.expandedTo(needed);
        if (style_.isResizable) {
            setMinimumSize(needed);
            if (!isVisible()) {
                resize(size().expandedTo(fitting));
            }
        } else if (size() != fitting || minimumSize() != fitting) {
            setFixedSize(fitting);
            if (isInTheMiddle_ && !isVisible()) {
                moveToMiddle();
            }
        }
    }

    void tellOfLayout() {
        if (isVisible() && controller_ != nullptr) {
            controller_->viewDidLayout();
        }
    }

    WindowStyle style_;
    QVBoxLayout* layout_; ///< The widget's.
    QSize contentSize_;
    bool isInTheMiddle_ = false;
    std::shared_ptr<View> content_;
    ViewController* controller_ = nullptr;
};

QtWindow::QtWindow(Rect contentRect, WindowStyle style)
    : frame_(std::make_unique<Frame>(contentRect, style)) {}

QtWindow::~QtWindow() = default;

void QtWindow::setTitle(std::string title) {
    frame_->setWindowTitle(QString::fromStdString(title));
}

void QtWindow::center() {
    frame_->moveToMiddle();
}

void QtWindow::setContentViewController(ViewController& controller) {
    frame_->setController(controller);
}

void QtWindow::makeKeyAndOrderFront() {
    frame_->present();
}

void QtWindow::close() {
    frame_->close();
}

bool QtWindow::isVisible() const {
    return frame_->isVisible();
}

} // namespace platform
