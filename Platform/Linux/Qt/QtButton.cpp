#include "Platform/Linux/Qt/QtButton.h"

#include "Platform/Linux/Qt/QtPlainTitle.h"

#include <QKeyEvent>
#include <QPushButton>
#include <optional>
#include <utility>

namespace platform {

namespace {

/// Qt's own answers to Return only in dialogs.
class PushButton final : public QPushButton {
  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
            QPushButton::keyPressEvent(event);
        } else if (!event->isAutoRepeat() && lastRelease_ != identity(*event)) {
            click();
        }
    }

    void keyReleaseEvent(QKeyEvent* event) override {
        lastRelease_ = identity(*event);
        QPushButton::keyReleaseEvent(event);
    }

  private:
    using KeyAndTime = std::pair<quint32, quint64>;

    static KeyAndTime identity(const QKeyEvent& event) {
        return {event.nativeScanCode(), event.timestamp()};
    }

    /// Which key was released last, and when. The press of a repetition has the same time; Qt does
    /// not always recognise it as one.
    std::optional<KeyAndTime> lastRelease_;
};

} // namespace

QtButton::QtButton(const std::string& title, Action action)
    : QtButton(std::make_unique<PushButton>()) {
    setTitle(title);
    // The action lives in the connection, which Qt keeps alive while it is being called.
    QObject::connect(button_, &QPushButton::clicked, button_, std::move(action.perform));
}

QtButton::QtButton(std::unique_ptr<QPushButton> button)
    : QtViewOf(std::move(button)),
      button_(static_cast<QPushButton*>(&widget())),
      alphaAnimation_(*button_) {
    button_->resize(0, 0);
}

void QtButton::setTitle(std::string title) {
    title_ = std::move(title);
    button_->setText(plainTitle(title_));
    button_->setAccessibleName(QString::fromStdString(title_));
}

std::string QtButton::title() const {
    return title_;
}

void QtButton::setBezelStyle(BezelStyle /*style*/) {}

void QtButton::setWantsLayer(bool /*wantsLayer*/) {}

void QtButton::setHorizontalContentHuggingPriority(double /*priority*/) {}

void QtButton::animateAlpha(double alpha, std::chrono::milliseconds duration) {
    alphaAnimation_.animateTo(alpha, duration);
}

} // namespace platform
